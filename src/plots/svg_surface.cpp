#include "plots/svg_surface.h"

#include "runtime/number_format.h"
#include "runtime/utf8_text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <span>

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

constexpr const char* EmptyEnd = "/>\n"; ///< of an element without content
constexpr const char* PathEnd = "\"/>\n";

/// Room for a number and what stands before it.
using Room = std::array<char, 64>;

/// Puts twips to one decimal behind a lead at the end of a text.
void addTwips(std::string& text, std::string_view lead, double twips) {
    Room room; // uninitialised: only what is put is read
    const std::string_view piece = putTenthsLast(room, lead, twips);
    if (!piece.empty()) {
        text += piece;
        return;
    }
    appendNumber(text += lead, twips, "0.#");
    if (text.back() == '.') {
        text.pop_back();
    }
}

void addPoint(std::string& text, std::string_view lead, Point point) {
    Room room; // uninitialised: only what is put is read
    const std::string_view y = putTenthsLast(room, " ", point.y);
    const std::string_view x =
        putTenthsLast(std::span(room).first(room.size() - y.size()), lead, point.x);
    if (!x.empty() && !y.empty()) { // they stand one behind the other
        text.append(x.data(), x.size() + y.size());
        return;
    }
    addTwips(text, lead, point.x);
    addTwips(text, " ", point.y);
}

void addColour(std::string& text, Colour colour) {
    constexpr std::string_view Digits = "0123456789abcdef";
    text += '#';
    for (const int part : {colour.red, colour.green, colour.blue}) {
        text += Digits[static_cast<std::size_t>(part / 16)];
        text += Digits[static_cast<std::size_t>(part % 16)];
    }
}

/// Each adds an attribute to an element that is open at the end of the text.
void attribute(std::string& text, std::string_view name, std::string_view value) {
    ((((text += ' ') += name) += "=\"") += value) += '"';
}
void attribute(std::string& text, std::string_view name, double twips) {
    (text += ' ') += name;
    addTwips(text, "=\"", twips);
    text += '"';
}
void attribute(std::string& text, std::string_view name, Colour colour) {
    ((text += ' ') += name) += "=\"";
    addColour(text, colour);
    text += '"';
}

void stroke(std::string& text, Colour colour, int width) {
    attribute(text, "stroke", colour);
    attribute(text, "stroke-width", width * LineWidthUnit);
}

void rectangleFrame(std::string& text, const Corners& corners) {
    attribute(text, "x", std::min(corners.a.x, corners.b.x));
    attribute(text, "y", std::min(corners.a.y, corners.b.y));
    attribute(text, "width", std::abs(corners.b.x - corners.a.x));
    attribute(text, "height", std::abs(corners.b.y - corners.a.y));
}

void circleFrame(std::string& text, Point centre, double radius) {
    attribute(text, "cx", centre.x);
    attribute(text, "cy", centre.y);
    attribute(text, "r", radius);
}

/// Text as the content of an element. XML knows no control characters: they become blanks, as do
/// U+FFFE and U+FFFF, which no file may hold.
void addEscaped(std::string& content, std::string_view text) {
    const auto needsCare = [](char c) {
        const auto code = static_cast<unsigned char>(c);
        return code < 0x20 || code >= 0x80 || c == '&' || c == '<' || c == '>';
    };
    if (std::none_of(text.begin(), text.end(), needsCare)) {
        content += text;
        return;
    }
    std::string characters = utf8Text(text);
    for (const std::string_view outlaw : {"\xEF\xBF\xBE", "\xEF\xBF\xBF"}) {
        for (auto at = characters.find(outlaw); at != std::string::npos;
             at = characters.find(outlaw)) {
            characters.replace(at, outlaw.size(), " ");
        }
    }
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
}

void addElement(std::string& text, std::string_view name, std::string_view content) {
    if (!content.empty()) {
        ((text += '<') += name) += '>';
        addEscaped(text, content);
        ((text += "</") += name) += ">\n";
    }
}

} // namespace

double SvgSurface::textWidth(std::string_view text) const {
    int units = 0;
    const bool ascii = std::all_of(text.begin(), text.end(),
                                   [](char c) { return static_cast<unsigned char>(c) < 0x80; });
    const std::string valid = ascii ? std::string{} : utf8Text(text);
    for (const char c : ascii ? text : std::string_view(valid)) {
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
    reach_.take(corners.a, corners.b, pen.halfWidth());
    endPath();
    elements_ += "<rect";
    rectangleFrame(elements_, corners);
    stroke(elements_, pen.colour, pen.width);
    elements_ += EmptyEnd;
}

void SvgSurface::fillRectangle(const Corners& corners, Colour colour) {
    reach_.take(corners.a, corners.b, 0);
    endPath();
    elements_ += "<rect";
    rectangleFrame(elements_, corners);
    attribute(elements_, "fill", colour);
    elements_ += EmptyEnd;
}

void SvgSurface::drawLine(Point from, Point to, Pen pen) {
    reach_.take(from, to, pen.halfWidth());
    const bool goesOn = pathOpen_ && from == pathEnd_ && pen.colour == pathPen_.colour &&
                        pen.width == pathPen_.width;
    if (!goesOn) {
        endPath();
        elements_ += "<path";
        stroke(elements_, pen.colour, pen.width);
        addPoint(elements_, " d=\"M ", from);
        pathPen_ = pen;
        pathOpen_ = true;
    }
    addPoint(elements_, " L ", to);
    pathEnd_ = to;
}

void SvgSurface::endPath() {
    if (pathOpen_) {
        elements_ += PathEnd;
        pathOpen_ = false;
    }
}

void SvgSurface::drawPoint(Point at, Pen pen) {
    reach_.take(at, at, pen.halfWidth());
    endPath();
    elements_ += "<circle";
    circleFrame(elements_, at, pen.halfWidth());
    attribute(elements_, "fill", pen.colour);
    elements_ += EmptyEnd;
}

void SvgSurface::drawCircle(Point centre, double radius, Pen pen) {
    reach_.take(centre, centre, radius + pen.halfWidth());
    endPath();
    elements_ += "<circle";
    circleFrame(elements_, centre, radius);
    stroke(elements_, pen.colour, pen.width);
    elements_ += EmptyEnd;
}

void SvgSurface::drawText(Point upperLeft, std::string_view text) {
    reach_.take(upperLeft, {upperLeft.x + textWidth(text), upperLeft.y + textHeight()}, 0);
    endPath();
    elements_ += "<text";
    addTwips(elements_, " x=\"", upperLeft.x);
    addTwips(elements_, "\" y=\"", upperLeft.y + Ascent * PlotFontHeight); // the base line
    elements_ += '"';
    attribute(elements_, "fill", Black);
    elements_ += '>';
    addEscaped(elements_, text);
    elements_ += "</text>\n";
}

std::string SvgSurface::document(const Corners& view, std::string_view title,
                                 std::string_view description) const {
    const Point size{view.b.x - view.a.x, view.b.y - view.a.y};
    const auto inches = [](double twips) {
        return formatNumber(twips / TwipsPerInch, "0.####") + "in";
    };
    std::string text;
    text.reserve(elements_.size() + description.size() + 1000);
    text += "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg";
    attribute(text, "xmlns", "http://www.w3.org/2000/svg");
    attribute(text, "width", inches(size.x));
    attribute(text, "height", inches(size.y));
    addPoint(text, " viewBox=\"", view.a);
    addPoint(text, " ", size);
    text += '"';
    attribute(text, "overflow", "hidden");
    attribute(text, "role", "img");
    text += ">\n";
    addElement(text, "title", title);
    addElement(text, "desc", description);
    text += "<rect";
    rectangleFrame(text, view);
    attribute(text, "fill", White);
    text += "/>\n<g";
    attribute(text, "fill", "none");
    attribute(text, "stroke-linecap", "round");
    attribute(text, "stroke-linejoin", "round");
    attribute(text, "font-family", "Arial, Liberation Sans, Helvetica, sans-serif");
    attribute(text, "font-size", PlotFontHeight);
    attribute(text, "xml:space", "preserve");
    text += ">\n";
    text += elements_;
    text += pathOpen_ ? PathEnd : "";
    text += "</g>\n</svg>\n";
    return text;
}

} // namespace korvane
