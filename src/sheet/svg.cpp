#include "sheet/svg.h"

#include "runtime/number_format.h"
#include "sheet/sheet_writer.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace korvane::sheet {

namespace {

constexpr double HeadLength = 5;
constexpr double HeadHalfWidth = 2.2;

/// Browsers keep coordinates in single precision; nothing that is seen stands farther out.
constexpr double Farthest = 1e5;

std::string attribute(std::string_view name, std::string_view value) {
    return value.empty() ? std::string()
                         : " " + std::string(name) + "=\"" + std::string(value) + "\"";
}

std::string number(std::string_view name, double value) {
    return attribute(name, svgNumber(value));
}

/// Two numbers of a path.
std::string pair(double x, double y) {
    const std::string second = svgNumber(y);
    return svgNumber(x) + (second.starts_with('-') ? "" : " ") + second;
}

/// A step of a path to a point, along an axis where the last one is on it.
std::string stepTo(SvgPoint from, SvgPoint to) {
    const std::string x = svgNumber(to.x);
    const std::string y = svgNumber(to.y);
    return svgNumber(from.y) == y   ? "H" + x
           : svgNumber(from.x) == x ? "V" + y
                                    : "L" + pair(to.x, to.y);
}

std::string pointList(const std::vector<SvgPoint>& points) {
    std::string list;
    for (const SvgPoint& point : points) {
        list += (list.empty() ? "" : " ") + svgNumber(point.x) + "," + svgNumber(point.y);
    }
    return list;
}

} // namespace

std::string svgNumber(double value) {
    const double held = std::isfinite(value) ? std::clamp(value, -Farthest, Farthest) : 0;
    std::string text;
    appendShortest(text, std::round(held * 10) / 10 + 0.0);
    return text == "-0" ? "0" : text;
}

void Svg::line(SvgPoint from, SvgPoint to, std::string_view cssClass) {
    body_ += "<line" + number("x1", from.x) + number("y1", from.y) + number("x2", to.x) +
             number("y2", to.y) + attribute("class", cssClass) + "/>\n";
}

void Svg::lines(const std::vector<std::vector<SvgPoint>>& lines, std::string_view cssClass) {
    std::string path;
    for (const std::vector<SvgPoint>& line : lines) {
        for (std::size_t i = 0; i < line.size(); ++i) {
            path += i == 0 ? "M" + pair(line[i].x, line[i].y) : stepTo(line[i - 1], line[i]);
        }
    }
    if (!path.empty()) {
        body_ += "<path" + attribute("d", path) + attribute("class", cssClass) + "/>\n";
    }
}

void Svg::polyline(const std::vector<SvgPoint>& points, std::string_view cssClass) {
    body_ += "<polyline" + attribute("points", pointList(points)) + attribute("class", cssClass) +
             "/>\n";
}

void Svg::polygon(const std::vector<SvgPoint>& points, std::string_view cssClass,
                  std::string_view fill) {
    body_ += "<polygon" + attribute("points", pointList(points)) + attribute("class", cssClass) +
             attribute("fill", fill) + "/>\n";
}

void Svg::circle(SvgPoint middle, double radius, std::string_view cssClass) {
    body_ += "<circle" + number("cx", middle.x) + number("cy", middle.y) + number("r", radius) +
             attribute("class", cssClass) + "/>\n";
}

void Svg::arrows(const std::vector<std::pair<SvgPoint, SvgPoint>>& ends,
                 std::string_view cssClass) {
    std::string path;
    for (const auto& [from, to] : ends) {
        const double length = std::hypot(to.x - from.x, to.y - from.y);
        if (length == 0) {
            continue;
        }
        const double head = std::min(HeadLength, length);
        const double dx = (to.x - from.x) / length * head;
        const double dy = (to.y - from.y) / length * head;
        const double half = HeadHalfWidth / HeadLength;
        path += "M" + pair(from.x, from.y) + stepTo(from, {to.x - dx, to.y - dy}) + "M" +
                pair(to.x, to.y) + "l" + pair(-dx - dy * half, -dy + dx * half) + "l" +
                pair(2 * dy * half, -2 * dx * half) + "z";
    }
    if (!path.empty()) {
        body_ += "<path" + attribute("d", path) +
                 attribute("class", std::string(cssClass) + " arrow") + "/>\n";
    }
}

void Svg::text(SvgPoint at, TextAnchor anchor, std::string_view text, std::string_view cssClass) {
    const char* name = anchor == TextAnchor::Middle ? "middle"
                       : anchor == TextAnchor::End  ? "end"
                                                    : "";
    body_ += "<text" + number("x", at.x) + number("y", at.y) + attribute("text-anchor", name) +
             attribute("class", cssClass) + ">" + escaped(text) + "</text>\n";
}

void Svg::group(std::string_view cssClass, std::string_view clipId) {
    const std::string clip = clipId.empty() ? "" : "url(#" + std::string(clipId) + ")";
    body_ += "<g" + attribute("class", cssClass) + attribute("clip-path", clip) + ">\n";
}

std::string Svg::finish(const LabelBox& view, std::string_view cssClass,
                        std::string_view title) const {
    const std::string box = svgNumber(view.left) + " " + svgNumber(view.top) + " " +
                            svgNumber(view.width) + " " + svgNumber(view.height);
    return "<svg xmlns=\"http://www.w3.org/2000/svg\" role=\"img\"" + attribute("viewBox", box) +
           number("width", view.width) + number("height", view.height) +
           attribute("class", cssClass) + ">\n<title>" + escaped(title) + "</title>\n" + body_ +
           "</svg>\n";
}

std::vector<SvgPoint> withoutStraightOnes(const std::vector<SvgPoint>& points, double noise) {
    std::vector<SvgPoint> kept;
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (i > 0 && i + 1 < points.size()) {
            const SvgPoint& a = kept.back();
            const SvgPoint& b = points[i + 1];
            const double dx = b.x - a.x;
            const double dy = b.y - a.y;
            const double across = (points[i].x - a.x) * dy - (points[i].y - a.y) * dx;
            const double along = (points[i].x - a.x) * dx + (points[i].y - a.y) * dy;
            if (std::fabs(across) <= noise * std::hypot(dx, dy) && along >= 0 &&
                along <= dx * dx + dy * dy) {
                continue;
            }
        }
        kept.push_back(points[i]);
    }
    return kept;
}

std::vector<double> roundTicks(double low, double high, int most) {
    std::vector<double> ticks;
    if (!(high > low) || most < 1) {
        return ticks;
    }
    const double least = (high - low) / most;
    double step = std::pow(10, std::floor(std::log10(least)));
    for (const double factor : {2.0, 2.5, 2.0}) { // 1, 2, 5, 10
        if (step >= least) {
            break;
        }
        step *= factor;
    }
    for (double n = std::ceil(low / step - 1e-9); n * step <= high + 1e-9 * step; ++n) {
        ticks.push_back(n * step + 0.0);
    }
    return ticks;
}

} // namespace korvane::sheet
