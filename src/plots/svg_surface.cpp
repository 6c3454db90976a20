#include "plots/svg_surface.h"

#include "runtime/number_text.h"
#include "runtime/utf8_text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace korvane {

namespace {

/// Advance widths of the characters from blank to tilde, in 1/2048 of the font's height.
constexpr std::array<int, 95> AdvanceWidths{
    569, 569, 727, 1139, 1139, 1821, 1366, 391, 682, 682, 797, 1196, //   ! " # $ % & ' ( ) *
                                                                     //   +
    569, 682, 569, 569,                                              // , - . /
    1139, 1139, 1139, 1139, 1139, 1139, 1139, 1139, 1139, 1139,      // 0 to 9
    569, 569, 1196, 1196, 1196, 1139, 2079,                          // : ; < = > ? @
    1366, 1366, 1479, 1479, 1366, 1251, 1593, 1479, 569, 1024, 1366, 1139, 1706,  // A to M
    1479, 1593, 1366, 1593, 1479, 1366, 1251, 1479, 1366, 1933, 1366, 1366, 1251, // N to Z
    569, 569, 569, 961, 1139, 682,                                                // [ \ ] ^ _ `
    1139, 1139, 1024, 1139, 1139, 569, 1139, 1139, 455, 455, 1024, 455, 1706,     // a to m
    1139, 1139, 1139, 1139, 682, 1024, 569, 1139, 1024, 1479, 1024, 1024, 1024,   // n to z
    684, 532, 684, 1196,                                                          // { | } ~
};
constexpr int OtherWidth = 1139; ///< of most letters beyond ASCII
constexpr double UnitsPerEm = 2048;
constexpr double Ascent = 1854 / UnitsPerEm;
constexpr double Descent = 434 / UnitsPerEm;
constexpr double TwipsPerInch = 1440;

std::string number(double twips) {
    std::string text = formatNumber(twips, "0.#");
    if (text.back() == '.') {
        text.pop_back();
    }
    return text;
}

std::string attribute(std::string_view name, std::string_view value) {
    std::string text(" ");
    text += name;
    text += "=\"";
    text += value;
    return text += '"';
}

std::string colourText(Colour colour) {
    constexpr std::string_view Digits = "0123456789abcdef";
    std::string text = "#";
    for (const int part : {colour.red, colour.green, colour.blue}) {
        text += Digits[static_cast<std::size_t>(part / 16)];
        text += Digits[static_cast<std::size_t>(part % 16)];
    }
    return text;
}

std::string stroke(Colour colour, int width) {
    return attribute("stroke", colourText(colour)) +
           attribute("stroke-width", number(width * LineWidthUnit));
}

std::string rectangleFrame(const Corners& corners) {
    return attribute("x", number(std::min(corners.a.x, corners.b.x))) +
           attribute("y", number(std::min(corners.a.y, corners.b.y))) +
           attribute("width", number(std::abs(corners.b.x - corners.a.x))) +
           attribute("height", number(std::abs(corners.b.y - corners.a.y)));
}

std::string circleFrame(Point centre, double radius) {
    return attribute("cx", number(centre.x)) + attribute("cy", number(centre.y)) +
           attribute("r", number(radius));
}

/// Text as the content of an element. XML knows no control characters: they become blanks, as do
/// U+FFFE and U+FFFF, which no file may hold.
std::string escaped(std::string_view text) {
    std::string characters = utf8Text(text);
    for (const std::string_view outlaw : {"\xEF\xBF\xBE", "\xEF\xBF\xBF"}) {
        for (auto at = characters.find(outlaw); at != std::string::npos;
             at = characters.find(outlaw)) {
            characters.replace(at, outlaw.size(), " ");
        }
    }
    std::string content;
    for (const char c : characters) {
        if (c == '&') {
            content += "&amp;";
        } else if (c == '<') {
            content += "&lt;";
        } else if (c == '>') {
            content += "&gt;";
        } else {
            content += static_cast<unsigned char>(c) < 0x20 ? ' ' : c;
        }
    }
    return content;
}

} // namespace

double SvgSurface::textWidth(std::string_view text) const {
    int units = 0;
    for (const char c : utf8Text(text)) {
        if (c >= ' ' && c <= '~') {
            units += AdvanceWidths[static_cast<std::size_t>(c - ' ')];
        } else if ((static_cast<unsigned char>(c) & 0xC0) !=
                   0x80) { // the first byte of a character
            units += OtherWidth;
        }
    }
    return units / UnitsPerEm * PlotFontHeight;
}

double SvgSurface::textHeight() const {
    return (Ascent + Descent) * PlotFontHeight;
}

void SvgSurface::drawRectangle(const Corners& corners, Pen pen) {
    endPath();
    elements_ += "<rect" + rectangleFrame(corners) + stroke(pen.colour, pen.width) + "/>\n";
}

void SvgSurface::fillRectangle(const Corners& corners, Colour colour) {
    endPath();
    elements_ += "<rect" + rectangleFrame(corners) + attribute("fill", colourText(colour)) + "/>\n";
}

void SvgSurface::drawLine(Point from, Point to, Pen pen) {
    const bool goesOn = !path_.empty() && from == pathEnd_ && pen.colour == pathPen_.colour &&
                        pen.width == pathPen_.width;
    if (!goesOn) {
        endPath();
        path_ = "M " + number(from.x) + ' ' + number(from.y);
        pathPen_ = pen;
    }
    path_ += " L " + number(to.x) + ' ' + number(to.y);
    pathEnd_ = to;
}

std::string SvgSurface::pathElement() const {
    if (path_.empty()) {
        return {};
    }
    return "<path" + stroke(pathPen_.colour, pathPen_.width) + attribute("d", path_) + "/>\n";
}

void SvgSurface::endPath() {
    elements_ += pathElement();
    path_.clear();
}

void SvgSurface::drawPoint(Point at, Pen pen) {
    endPath();
    elements_ += "<circle" + circleFrame(at, pen.width * LineWidthUnit / 2) +
                 attribute("fill", colourText(pen.colour)) + "/>\n";
}

void SvgSurface::drawCircle(Point centre, double radius, Pen pen) {
    endPath();
    elements_ += "<circle" + circleFrame(centre, radius) + stroke(pen.colour, pen.width) + "/>\n";
}

void SvgSurface::drawText(Point upperLeft, std::string_view text) {
    endPath();
    const double baseLine = upperLeft.y + Ascent * PlotFontHeight;
    elements_ += "<text" + attribute("x", number(upperLeft.x)) + attribute("y", number(baseLine)) +
                 attribute("fill", colourText(Black)) + '>' + escaped(text) + "</text>\n";
}

std::string SvgSurface::document(const Corners& view, std::string_view title,
                                 std::string_view description) const {
    const auto element = [](const std::string& name, std::string_view text) {
        return text.empty() ? "" : '<' + name + '>' + escaped(text) + "</" + name + ">\n";
    };
    const double width = view.b.x - view.a.x;
    const double height = view.b.y - view.a.y;
    const auto inches = [](double twips) {
        return formatNumber(twips / TwipsPerInch, "0.####") + "in";
    };
    const std::string viewBox =
        number(view.a.x) + ' ' + number(view.a.y) + ' ' + number(width) + ' ' + number(height);
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg" +
           attribute("xmlns", "http://www.w3.org/2000/svg") + attribute("width", inches(width)) +
           attribute("height", inches(height)) + attribute("viewBox", viewBox) +
           attribute("overflow", "hidden") + attribute("role", "img") + ">\n" +
           element("title", title) + element("desc", description) + "<rect" + rectangleFrame(view) +
           attribute("fill", "#ffffff") + "/>\n<g" + attribute("fill", "none") +
           attribute("stroke-linecap", "round") + attribute("stroke-linejoin", "round") +
           attribute("font-family", "Arial, Liberation Sans, Helvetica, sans-serif") +
           attribute("font-size", number(PlotFontHeight)) + attribute("xml:space", "preserve") +
           ">\n" + elements_ + pathElement() + "</g>\n</svg>\n";
}

} // namespace korvane
