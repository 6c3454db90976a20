#include "study/chart.h"

#include "runtime/number_format.h"
#include "sheet/sheet_writer.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace korvane::study {

using namespace sheet;

namespace {

// Pixels
constexpr double TickLength = 4;
constexpr double TextGap = 5;
constexpr double Radius = 3.5;
constexpr double Baseline = 4; // from the middle of a line of text to where it stands
constexpr double RowHeight = 24;
constexpr double RowBar = 14;
constexpr double BarWidth = 380;

constexpr int BarDigits = 3;
constexpr double Nothing = 1e-6; // share of the largest bar below which one is told as 0
constexpr int MostXTicks = 9;
constexpr int MostYTicks = 6;
constexpr double AxisMargin = 0.04; // of the numbers' range

constexpr std::string_view Style = R"(
svg.chart { display: block; margin: .3rem 0; }
svg.chart text { font-size: 11px; }
svg.chart .line { fill: none; stroke: var(--accent); stroke-width: 1.8; }
svg.chart .line.s1 { stroke: var(--load); stroke-dasharray: 8 3; }
svg.chart .line.s2 { stroke: var(--good); stroke-dasharray: 2 2.5; }
svg.chart .line.s3 { stroke: var(--water); stroke-dasharray: 9 3 2 3; }
svg.chart .line.s4 { stroke: var(--soilline); stroke-dasharray: 5 2; }
svg.chart .line.s5 { stroke: var(--soft); stroke-dasharray: 1.5 2; }
svg.chart .limit { fill: none; stroke: var(--bad); stroke-width: 1.8; }
svg.chart .band { fill: var(--accent); fill-opacity: .16; stroke: none; }
svg.chart .bar { fill: var(--accent); fill-opacity: .55; stroke: var(--accent);
 stroke-width: .6; }
svg.chart .bar.second { fill: var(--load); stroke: var(--load); fill-opacity: .4; }
svg.chart .whisker { fill: none; stroke: var(--ink); stroke-width: 1.1; }
svg.chart .dot { fill: none; stroke: var(--accent); stroke-width: 3; stroke-linecap: round;
 stroke-opacity: .5; }
svg.chart .dot.bad { stroke: var(--bad); stroke-opacity: .75; }
svg.chart .mark { fill: none; stroke: var(--ink); stroke-width: 1; stroke-dasharray: 4 3; }
svg.chart .mark.faint { stroke: var(--soft); stroke-dasharray: 1.5 2.5; }
svg.chart .point { fill: var(--paper); stroke: var(--accent); stroke-width: 1.6; }
svg.chart .point.bad { stroke: var(--bad); fill: var(--bad); }
svg.chart .cell { fill: var(--accent); stroke: none; }
svg.chart .cell.none { fill: none; stroke: var(--line); stroke-width: .6; }
svg.chart text.on { fill: var(--paper); }
p.study { white-space: pre-wrap; max-width: none; font: .8rem/1.35 "Liberation Mono", monospace;
 border: 1px solid var(--line); background: var(--band); padding: .5rem .8rem;
 overflow-wrap: anywhere; }
.answers p { max-width: none; }
.words2 th:nth-child(-n+2), .words5 th:nth-child(-n+5) { text-align: left; }
@media print { svg.chart .grid { stroke: #ccc; } }
.charts { display: flex; flex-wrap: wrap; gap: .4rem 1.6rem; align-items: flex-start; }
)";

std::vector<FigureLabel> tickLabels(const std::vector<double>& ticks,
                                    const std::vector<double>& places, double y) {
    std::vector<FigureLabel> labels;
    for (std::size_t n = 0; n < ticks.size(); ++n) {
        const std::string text = tickText(ticks[n]);
        labels.push_back({labelBox({text}, {places[n], y}, TextAnchor::Middle),
                          {text},
                          TextAnchor::Middle,
                          {},
                          "axisname"});
    }
    return labels;
}

bool haveRoom(const std::vector<FigureLabel>& labels) {
    for (std::size_t n = 1; n < labels.size(); ++n) {
        if (labels[n].box.left < labels[n - 1].box.right() + 2 * TextGap) {
            return false;
        }
    }
    return true;
}

std::string pathOfDots(const std::vector<SvgPoint>& points) {
    std::string path;
    for (const SvgPoint& point : points) {
        path += "M" + svgNumber(point.x) + " " + svgNumber(point.y) + "h.1";
    }
    return path;
}

} // namespace

Axis axisOver(std::string title, const std::vector<double>& numbers) {
    double low = std::numeric_limits<double>::infinity();
    double high = -low;
    for (const double number : numbers) {
        if (std::isfinite(number)) {
            low = std::min(low, number);
            high = std::max(high, number);
        }
    }
    if (low > high) {
        return {std::move(title), 0, 1};
    }
    // Numbers that differ by the last digits of a search are one: an axis has no ticks there.
    constexpr double same = 1e-9;
    const bool isRange = high - low > same * std::max(std::abs(low), std::abs(high));
    const double margin =
        isRange ? AxisMargin * (high - low) : std::max(1e-3, 0.1 * std::abs(high));
    return {std::move(title), low - margin, high + margin};
}

Chart::Chart(Axis x, Axis y, double width, double height)
    : x_(std::move(x)), y_(std::move(y)), width_(width), height_(height) {}

SvgPoint Chart::place(SvgPoint at) const {
    return {(at.x - x_.low) / (x_.high - x_.low) * width_,
            (y_.high - at.y) / (y_.high - y_.low) * height_};
}

std::vector<SvgPoint> Chart::places(const std::vector<SvgPoint>& points) const {
    std::vector<SvgPoint> all;
    for (const SvgPoint& point : points) {
        if (std::isfinite(point.x) && std::isfinite(point.y)) {
            all.push_back(place(point));
        }
    }
    return all;
}

void Chart::curve(const std::vector<SvgPoint>& points, std::string_view cssClass) {
    std::vector<SvgPoint> run; // up to a gap
    for (std::size_t n = 0; n <= points.size(); ++n) {
        if (n < points.size() && std::isfinite(points[n].x) && std::isfinite(points[n].y)) {
            run.push_back(place(points[n]));
            continue;
        }
        if (run.size() > 1) {
            inside_.polyline(run, cssClass);
        }
        run.clear();
    }
}

void Chart::pieces(const std::vector<SvgPoint>& ends, std::string_view cssClass) {
    std::vector<std::vector<SvgPoint>> lines;
    for (std::size_t n = 0; n + 1 < ends.size(); n += 2) {
        lines.push_back({place(ends[n]), place(ends[n + 1])});
    }
    if (!lines.empty()) {
        inside_.lines(lines, cssClass);
    }
}

void Chart::band(const std::vector<SvgPoint>& low, const std::vector<SvgPoint>& high) {
    std::vector<SvgPoint> outline = places(low);
    const std::vector<SvgPoint> back = places(high);
    outline.insert(outline.end(), back.rbegin(), back.rend());
    if (outline.size() > 2) {
        inside_.polygon(outline, "band");
    }
}

void Chart::dots(const std::vector<SvgPoint>& points, std::string_view cssClass) {
    if (!points.empty()) {
        inside_.markup("<path d=\"" + pathOfDots(places(points)) + "\" class=\"" +
                       std::string(cssClass) + "\"/>\n");
    }
}

void Chart::circle(SvgPoint at, std::string_view cssClass) {
    if (std::isfinite(at.x) && std::isfinite(at.y)) {
        over_.circle(place(at), Radius, cssClass);
    }
}

std::vector<SvgPoint> Chart::corners(const ChartBox& box) const {
    const SvgPoint a = place({box.left, box.top});
    const SvgPoint b = place({box.right, box.bottom});
    return {a, {b.x, a.y}, b, {a.x, b.y}};
}

void Chart::box(const ChartBox& box, std::string_view cssClass) {
    inside_.polygon(corners(box), cssClass);
}

void Chart::shade(const ChartBox& box, double darkness) {
    const std::vector<SvgPoint> corner = corners(box);
    std::string opacity;
    appendShortest(opacity, std::round(darkness * 100) / 100);
    inside_.markup("<rect x=\"" + svgNumber(corner[0].x) + "\" y=\"" + svgNumber(corner[0].y) +
                   "\" width=\"" + svgNumber(corner[2].x - corner[0].x) + "\" height=\"" +
                   svgNumber(corner[2].y - corner[0].y) + "\" fill-opacity=\"" + opacity +
                   "\" class=\"cell\"/>\n");
}

void Chart::nameCells(std::vector<std::string> x, std::vector<std::string> y) {
    xNames_ = std::move(x);
    yNames_ = std::move(y);
}

void Chart::markX(double x, const std::string& label, std::string_view cssClass) {
    const double at = place({x, 0}).x;
    if (!std::isfinite(at) || at < 0 || at > width_) {
        return;
    }
    over_.line({at, 0}, {at, height_}, cssClass);
    marks_.push_back({at, label});
}

void Chart::markY(double y, const std::string& label, std::string_view cssClass) {
    const double at = place({0, y}).y;
    if (!std::isfinite(at) || at < 0 || at > height_) {
        return;
    }
    over_.line({0, at}, {width_, at}, cssClass);
    column_.push_back({{width_, at}, {label}});
}

void Chart::label(SvgPoint at, const std::string& text) {
    if (std::isfinite(at.x) && std::isfinite(at.y)) {
        column_.push_back({place(at), {text}});
    }
}

void Chart::text(SvgPoint at, const std::string& text, std::string_view cssClass) {
    SvgPoint middle = place(at);
    middle.y += Baseline;
    over_.text(middle, TextAnchor::Middle, text, cssClass);
}

/// As many ticks as have room for their numbers.
void Chart::drawXTicks(Svg& under) {
    std::vector<double> ticks;
    std::vector<double> at;
    std::vector<FigureLabel> labels;
    int most = MostXTicks;
    do {
        ticks = roundTicks(x_.low, x_.high, most);
        at.clear();
        for (const double tick : ticks) {
            at.push_back(place({tick, 0}).x);
        }
        labels = tickLabels(ticks, at, height_ + TickLength);
    } while (!haveRoom(labels) && --most > 0);
    for (const double x : at) {
        under.line({x, 0}, {x, height_}, "grid");
    }
    labels_.insert(labels_.end(), labels.begin(), labels.end());
}

void Chart::drawYTicks(Svg& under) {
    for (const double tick : roundTicks(y_.low, y_.high, MostYTicks)) {
        const double y = place({0, tick}).y;
        under.line({0, y}, {width_, y}, "grid");
        const std::string text = tickText(tick);
        labels_.push_back({labelBox({text}, {-TextGap, y - FigureLine / 2}, TextAnchor::End),
                           {text},
                           TextAnchor::End,
                           {},
                           "axisname"});
    }
}

/// Names in the middle of their cells, as many as have room.
void Chart::placeCellNames() {
    std::vector<FigureLabel> across;
    std::size_t step = 0;
    do {
        ++step;
        across.clear();
        for (std::size_t n = 0; n < xNames_.size(); n += step) {
            const double x = place({static_cast<double>(n) + 0.5, 0}).x;
            across.push_back({labelBox({xNames_[n]}, {x, height_ + TickLength}, TextAnchor::Middle),
                              {xNames_[n]},
                              TextAnchor::Middle,
                              {},
                              "axisname"});
        }
    } while (!haveRoom(across));
    labels_.insert(labels_.end(), across.begin(), across.end());
    const double room = height_ / static_cast<double>(std::max<std::size_t>(yNames_.size(), 1));
    const auto stepUp = static_cast<std::size_t>(std::ceil(FigureLine / room));
    for (std::size_t n = 0; n < yNames_.size(); n += stepUp) {
        const double y = place({0, static_cast<double>(n) + 0.5}).y;
        labels_.push_back({labelBox({yNames_[n]}, {-TextGap, y - FigureLine / 2}, TextAnchor::End),
                           {yNames_[n]},
                           TextAnchor::End,
                           {},
                           "axisname"});
    }
}

/// Labels of marks in rows above the plot, none over another.
void Chart::placeMarks() {
    std::stable_sort(marks_.begin(), marks_.end(),
                     [](const Mark& a, const Mark& b) { return a.x < b.x; });
    std::vector<double> ends; // of each row
    for (const Mark& mark : marks_) {
        const double width = textWidth(mark.text, FigureType);
        std::size_t row = 0;
        while (row < ends.size() && ends[row] > mark.x - width / 2) {
            ++row;
        }
        ends.resize(std::max(ends.size(), row + 1));
        ends[row] = mark.x + width / 2 + TextGap;
        const double top = -static_cast<double>(row + 1) * FigureLine - 2;
        highest_ = std::min(highest_, top);
        labels_.push_back({labelBox({mark.text}, {mark.x, top}, TextAnchor::Middle),
                           {mark.text},
                           TextAnchor::Middle,
                           row == 0 ? std::vector<SvgPoint>{}
                                    : std::vector<SvgPoint>{{mark.x, 0}, {mark.x, top + 12}}});
    }
}

void Chart::placeTitles(double top) {
    if (!y_.title.empty()) {
        labels_.push_back({labelBox({y_.title}, {0, top - FigureLine - 3}, TextAnchor::Start),
                           {y_.title},
                           TextAnchor::Start,
                           {},
                           "name"});
    }
    if (!x_.title.empty()) {
        labels_.push_back({labelBox({x_.title}, {width_ / 2, height_ + TickLength + FigureLine + 3},
                                    TextAnchor::Middle),
                           {x_.title},
                           TextAnchor::Middle,
                           {},
                           "name"});
    }
}

std::string Chart::finish(std::string_view title) {
    Svg svg;
    if (xNames_.empty()) {
        drawXTicks(svg);
        drawYTicks(svg);
    } else {
        placeCellNames();
    }
    svg.markup(inside_.body());
    svg.polygon({{0, 0}, {width_, 0}, {width_, height_}, {0, height_}}, "panel");
    svg.markup(over_.body());
    placeMarks();
    placeTitles(highest_);
    const auto column = placeColumn(column_, {width_, true, 0, height_});
    labels_.insert(labels_.end(), column.begin(), column.end());
    drawLabels(svg, labels_);
    return svg.finish(viewOf(width_, height_, labels_), "chart", title);
}

namespace {

/// A bar chart on its way.
struct BarDrawing {
    double least = 0;
    double largest = 0;
    double height = 0;
    Svg svg = {};
    std::vector<FigureLabel> labels = {};

    double x(double value) const {
        return (value - least) / (largest > least ? largest - least : 1) * BarWidth;
    }
    void label(const std::string& text, SvgPoint at, TextAnchor anchor, const char* cssClass = "") {
        labels.push_back({labelBox({text}, at, anchor), {text}, anchor, {}, cssClass});
    }
};

/// Zero included.
void spanBars(BarDrawing& drawing, const std::vector<Bar>& bars) {
    for (const Bar& bar : bars) {
        for (const double end : {bar.value, bar.low, bar.high}) {
            if (std::isfinite(end)) {
                drawing.least = std::min(drawing.least, end);
                drawing.largest = std::max(drawing.largest, end);
            }
        }
    }
    drawing.height = static_cast<double>(bars.size()) * RowHeight;
}

void drawBar(BarDrawing& drawing, const Bar& bar, double y) {
    const double half = RowBar / 2;
    const double end = drawing.x(bar.value);
    const double zero = drawing.x(0);
    drawing.svg.polygon({{zero, y - half}, {end, y - half}, {end, y + half}, {zero, y + half}},
                        "bar");
    if (std::isfinite(bar.low) && std::isfinite(bar.high)) {
        const double low = drawing.x(bar.low);
        const double high = drawing.x(bar.high);
        drawing.svg.lines({{{low, y}, {high, y}},
                           {{low, y - half / 2}, {low, y + half / 2}},
                           {{high, y - half / 2}, {high, y + half / 2}}},
                          "whisker");
    }
    std::string number;
    const bool isNothing = std::abs(bar.value) < Nothing * drawing.largest;
    appendShortest(number, isNothing ? 0 : roundedTo(bar.value, BarDigits));
    drawing.label(bar.name, {-TextGap, y - FigureLine / 2}, TextAnchor::End);
    drawing.label(number, {BarWidth + TextGap, y - FigureLine / 2}, TextAnchor::Start);
}

} // namespace

std::string barChart(const std::vector<Bar>& bars, const std::string& title,
                     std::string_view description) {
    BarDrawing drawing;
    spanBars(drawing, bars);
    const double below = drawing.height + TickLength;
    for (const double tick : roundTicks(drawing.least, drawing.largest, MostYTicks)) {
        const double x = drawing.x(tick);
        drawing.svg.line({x, 0}, {x, drawing.height}, tick == 0 ? "axis" : "grid");
        drawing.label(tickText(tick), {x, below}, TextAnchor::Middle, "axisname");
    }
    for (std::size_t n = 0; n < bars.size(); ++n) {
        drawBar(drawing, bars[n], (static_cast<double>(n) + 0.5) * RowHeight);
    }
    drawing.label(title, {BarWidth / 2, below + FigureLine + 3}, TextAnchor::Middle, "name");
    drawLabels(drawing.svg, drawing.labels);
    return drawing.svg.finish(viewOf(BarWidth, drawing.height, drawing.labels), "chart",
                              description);
}

std::string seriesClass(std::size_t n) {
    return "line s" + std::to_string(n % MostSeries);
}

std::string_view chartStyle() {
    return Style;
}

} // namespace korvane::study
