// The figures of an answer. Texts keep their size, the drawing takes the room that it is given.
#include "plots/sheet.h"
#include "runtime/number_text.h"
#include "sheet/svg.h"
#include "survey/answer.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <limits>

namespace korvane::study {

namespace {

constexpr double Margin = 150;  // twips, around everything
constexpr double TextRow = 240; // a line of text with its room
constexpr double TickLength = 60;
constexpr double TickRoom = 1300; // of a number below an axis
constexpr Colour Ruled{165, 165, 165};
constexpr Colour LowColour{30, 90, 160};
constexpr Colour HighColour{200, 95, 20};
constexpr Colour CurveColours[] = {{30, 90, 160}, {200, 95, 20}, {20, 120, 70}, {150, 30, 110},
                                   {70, 70, 70},  {130, 75, 20}, {0, 120, 140}, {170, 20, 40}};

/// Numbers between two ends, with the places that they have.
struct Axis {
    double least = 0;
    double most = 1;
    double from = 0; ///< twips, of the least
    double to = 1;

    double at(double value) const { return from + (value - least) / (most - least) * (to - from); }
};

/// An axis that holds all numbers at hand, with some room at both ends.
Axis axisOver(const std::vector<double>& values, double from, double to, double room) {
    constexpr double endless = std::numeric_limits<double>::infinity();
    Axis axis{.least = endless, .most = -endless, .from = from, .to = to};
    for (const double value : values) {
        if (!std::isnan(value)) {
            axis.least = std::min(axis.least, value);
            axis.most = std::max(axis.most, value);
        }
    }
    if (!(axis.least <= axis.most)) {
        axis.least = 0;
        axis.most = 1;
    }
    double reach = (axis.most - axis.least) * room;
    if (axis.most == axis.least) {
        reach = axis.most == 0 ? 1 : 0.1 * std::abs(axis.most);
    }
    axis.least -= reach;
    axis.most += reach;
    return axis;
}

/// "2.5", "2.5e+06".
std::string tickText(double value) {
    constexpr int Digits = 6;
    constexpr double Longest = 1e6;
    std::string text;
    if (value == 0 || std::abs(value) < Longest) {
        appendShortest(text, roundedTo(value, Digits));
        return text;
    }
    const double exponent = std::floor(std::log10(std::abs(value)));
    appendShortest(text, roundedTo(value / std::pow(10.0, exponent), Digits));
    return text + "E+" + (exponent < 10 ? "0" : "") + std::to_string(static_cast<int>(exponent));
}

std::vector<double> ticksOf(const Axis& axis, double room) {
    const int most = static_cast<int>(std::abs(axis.to - axis.from) / room);
    return sheet::roundTicks(axis.least, axis.most, std::clamp(most, 2, 12));
}

std::string withUnit(const std::string& title, Quantity quantity, UnitSystem units) {
    const std::string unit = unitOf(quantity, units).name;
    return unit.empty() ? title : title + ", " + unit;
}

/// Ruled lines, numbers and title of the axis below a box.
void drawAcross(Sheet& sheet, const Axis& axis, double top, double bottom,
                const std::string& title) {
    sheet.lineWidth(1);
    for (const double tick : ticksOf(axis, TickRoom)) {
        const double x = axis.at(tick);
        sheet.line({x, top}, {x, bottom}, Ruled);
        sheet.line({x, bottom}, {x, bottom + TickLength});
        sheet.centred(x, bottom + TickLength, tickText(tick));
    }
    sheet.centred((axis.from + axis.to) / 2, bottom + TickLength + TextRow, title);
}

// ---- tornado ------------------------------------------------------------------------------------

constexpr double BarHeight = 190;
constexpr double BarGap = 90; // between variables
constexpr double RowHeight = 2 * BarHeight + BarGap;
constexpr std::size_t MostBars = 20;
constexpr double LabelRoom = 90; // between a bar and its number

struct TornadoFrame {
    const Tornado& tornado;
    std::size_t bars;
    double width;
    double left = 0;
    double top = Margin + 2 * TextRow + 100;

    double bottom() const { return top + static_cast<double>(bars) * RowHeight + BarGap; }
};

/// What stands at an end of a bar.
std::string endText(const std::string& number, double value) {
    return std::isnan(value) ? number + ": no solution" : number;
}

/// Room that the titles of the bars on show need, and the texts at their ends.
double widestTitle(const Sheet& sheet, const TornadoFrame& frame) {
    double widest = 0;
    for (std::size_t n = 0; n < frame.bars; ++n) {
        widest = std::max(widest, sheet.textWidth(frame.tornado.bars[n].title));
    }
    return widest;
}
double widestEnd(const Sheet& sheet, const TornadoFrame& frame) {
    double widest = 0;
    for (std::size_t n = 0; n < frame.bars; ++n) {
        const TornadoBar& bar = frame.tornado.bars[n];
        widest = std::max({widest, sheet.textWidth(endText(bar.lowText, bar.low)),
                           sheet.textWidth(endText(bar.highText, bar.high))});
    }
    return widest;
}

/// The bar from the wall as it is to one end of a variable, its number behind it.
void drawBar(Sheet& sheet, Surface& surface, const Axis& axis, double base, double value,
             double top, const std::string& number, Colour colour) {
    // Without a solution of the wall as it is a bar is a mark at the output.
    constexpr double Mark = 60;
    const bool hasBase = !std::isnan(base);
    if (std::isnan(value)) {
        sheet.text((hasBase ? axis.at(base) : axis.from) + LabelRoom, Across::LeftEdge, top,
                   Down::UpperEdge, endText(number, value));
        return;
    }
    const double x = axis.at(value);
    const double x0 = hasBase ? axis.at(base) : x - Mark;
    surface.filledRectangle({{std::min(x0, x), top}, {std::max(x0, x), top + BarHeight}}, colour);
    const bool right = x >= x0;
    sheet.text(right ? x + LabelRoom : x - LabelRoom, right ? Across::LeftEdge : Across::RightEdge,
               top, Down::UpperEdge, number);
}

/// What the two colours mean.
void drawKey(Sheet& sheet, Surface& surface, const TornadoFrame& frame) {
    constexpr double Side = 150;
    double x = frame.left;
    const double y = Margin + TextRow;
    for (const auto& [words, colour] :
         {std::pair{"low number", LowColour}, std::pair{"high number", HighColour}}) {
        surface.filledRectangle({{x, y + 20}, {x + Side, y + 20 + Side}}, colour);
        sheet.text(x + Side + LabelRoom, Across::LeftEdge, y, Down::UpperEdge, words);
        x += Side + 4 * LabelRoom + sheet.textWidth(words);
    }
    if (frame.bars < frame.tornado.bars.size()) {
        sheet.text(frame.width - Margin, Across::RightEdge, y, Down::UpperEdge,
                   "the " + std::to_string(frame.bars) + " widest of " +
                       std::to_string(frame.tornado.bars.size()));
    }
}

void drawTornado(Surface& surface, TornadoFrame frame) {
    Sheet sheet(surface, Medium::Screen);
    const Tornado& tornado = frame.tornado;
    frame.left = Margin + widestTitle(sheet, frame) + 2 * LabelRoom;
    const double numbers = widestEnd(sheet, frame) + 2 * LabelRoom;
    std::vector<double> all{tornado.base};
    for (std::size_t n = 0; n < frame.bars; ++n) {
        all.insert(all.end(), {tornado.bars[n].low, tornado.bars[n].high});
    }
    const double right = std::max(frame.left + 2 * numbers + TickRoom, frame.width - Margin);
    const Axis inner = axisOver(all, frame.left + numbers, right - numbers, 0);
    // The same scale from edge to edge, so that the numbers at the bars stay inside.
    const double perTwip = (inner.most - inner.least) / (inner.to - inner.from);
    const Axis axis{inner.least - numbers * perTwip, inner.most + numbers * perTwip, frame.left,
                    right};
    const std::string title = withUnit(tornado.title, tornado.quantity, tornado.units);
    sheet.centred((frame.left + right) / 2, Margin, title);
    drawKey(sheet, surface, frame);
    drawAcross(sheet, axis, frame.top, frame.bottom(), title);
    for (std::size_t n = 0; n < frame.bars; ++n) {
        const TornadoBar& bar = tornado.bars[n];
        const double top = frame.top + BarGap + static_cast<double>(n) * RowHeight;
        sheet.text(frame.left - LabelRoom, Across::RightEdge, top + BarHeight, Down::Middle,
                   bar.title);
        drawBar(sheet, surface, axis, tornado.base, bar.low, top, bar.lowText, LowColour);
        drawBar(sheet, surface, axis, tornado.base, bar.high, top + BarHeight, bar.highText,
                HighColour);
    }
    sheet.lineWidth(2);
    if (!std::isnan(tornado.base)) {
        sheet.line({axis.at(tornado.base), frame.top}, {axis.at(tornado.base), frame.bottom()});
    }
    sheet.box({frame.left, frame.top}, {right, frame.bottom()});
}

std::string descriptionOf(const Tornado& tornado) {
    const auto text = [&](double value) {
        return std::isnan(value)
                   ? std::string("no solution")
                   : quantityWithUnit(tornado.quantity,
                                      fromUnits(tornado.quantity, value, tornado.units),
                                      tornado.units);
    };
    std::string words = "As given: " + text(tornado.base) + ".";
    for (const TornadoBar& bar : tornado.bars) {
        words += " " + bar.title + " " + bar.lowText + ": " + text(bar.low) + ", " + bar.highText +
                 ": " + text(bar.high) + ".";
    }
    return words;
}

// ---- curves -------------------------------------------------------------------------------------

constexpr std::size_t MostCurves = 12;
constexpr int DotWidth = 5;

/// The curves on show: all, or some with the first and the last among them.
std::vector<std::size_t> shownCurves(const Curves& curves) {
    const std::size_t count = curves.curves.size();
    const std::size_t shown = std::min(count, MostCurves);
    std::vector<std::size_t> places;
    for (std::size_t n = 0; n < shown; ++n) {
        places.push_back(shown == 1 ? 0 : n * (count - 1) / (shown - 1));
    }
    return places;
}

struct CurveFrame {
    Axis across;
    Axis up; ///< from is the lower edge
};

void drawCurve(Sheet& sheet, const CurveFrame& frame, const Curves& curves, const Curve& curve,
               Colour colour, const std::string& mark) {
    Point last;
    bool joins = false; // a gap where there is no solution
    bool drawn = false;
    sheet.lineWidth(2);
    for (std::size_t k = 0; k < curve.outputs.size(); ++k) {
        if (std::isnan(curve.outputs[k])) {
            joins = false;
            continue;
        }
        const Point at{frame.across.at(curves.along[k]), frame.up.at(curve.outputs[k])};
        if (joins) {
            sheet.line(last, at, colour);
        }
        sheet.lineWidth(DotWidth);
        sheet.point(at, colour);
        sheet.lineWidth(2);
        last = at;
        joins = drawn = true;
    }
    if (drawn && !mark.empty()) {
        sheet.text(last.x + LabelRoom, Across::LeftEdge, last.y, Down::Middle, mark);
    }
}

std::vector<std::string> legendOf(const Curves& curves, const std::vector<std::size_t>& shown) {
    std::vector<std::string> lines;
    if (shown.size() > 1) {
        for (std::size_t n = 0; n < shown.size(); ++n) {
            lines.push_back(std::to_string(n + 1) + ": " + curves.curves[shown[n]].title);
        }
    }
    return lines;
}

constexpr double LegendLine = 300; // length of a sample

void drawLegend(Sheet& sheet, const Curves& curves, const std::vector<std::string>& lines,
                double left, double top) {
    for (std::size_t n = 0; n < lines.size(); ++n) {
        const double y = top + static_cast<double>(n) * TextRow;
        sheet.lineWidth(3);
        sheet.line({left, y + TextRow / 2}, {left + LegendLine, y + TextRow / 2},
                   CurveColours[n % std::size(CurveColours)]);
        sheet.text(left + LegendLine + LabelRoom, Across::LeftEdge, y, Down::UpperEdge, lines[n]);
    }
    if (lines.size() < curves.curves.size() && !lines.empty()) {
        sheet.text(left, Across::LeftEdge, top + static_cast<double>(lines.size()) * TextRow,
                   Down::UpperEdge,
                   std::to_string(lines.size()) + " of " + std::to_string(curves.curves.size()) +
                       " values");
    }
}

void drawUp(Sheet& sheet, const Axis& axis, double left, double right) {
    constexpr double Room = 500;
    sheet.lineWidth(1);
    for (const double tick : ticksOf(axis, Room)) {
        const double y = axis.at(tick);
        sheet.line({left, y}, {right, y}, Ruled);
        sheet.line({left - TickLength, y}, {left, y});
        sheet.text(left - TickLength - 30, Across::RightEdge, y, Down::Middle, tickText(tick));
    }
}

void drawCurves(Surface& surface, const Curves& curves, double width, double height) {
    Sheet sheet(surface, Medium::Screen);
    const std::vector<std::size_t> shown = shownCurves(curves);
    const std::vector<std::string> legend = legendOf(curves, shown);
    double legendWidth = 0;
    for (const std::string& line : legend) {
        legendWidth = std::max(legendWidth, sheet.textWidth(line) + LegendLine + 4 * LabelRoom);
    }
    const double top = Margin + (curves.fixed.empty() ? 1 : 2) * TextRow + 100;
    const double bottom = height - Margin - 2 * TextRow - TickLength;
    std::vector<double> all;
    for (const std::size_t place : shown) {
        const auto& outputs = curves.curves[place].outputs;
        all.insert(all.end(), outputs.begin(), outputs.end());
    }
    CurveFrame frame{.across = {}, .up = axisOver(all, bottom, top, 0.06)};
    double numbers = 0;
    for (const double tick : ticksOf(frame.up, 500)) {
        numbers = std::max(numbers, sheet.textWidth(tickText(tick)));
    }
    const double left = Margin + numbers + TickLength + 60;
    const double right = std::max(left + TickRoom, width - Margin - legendWidth);
    constexpr double MarkRoom = 0.04;
    frame.across = axisOver(curves.along, left, right, MarkRoom);
    const std::string title = withUnit(curves.title, curves.quantity, curves.units);
    sheet.centred((left + right) / 2, Margin, title);
    if (!curves.fixed.empty()) {
        sheet.centred((left + right) / 2, Margin + TextRow, curves.fixed);
    }
    drawAcross(sheet, frame.across, top, bottom,
               withUnit(curves.alongTitle, curves.alongQuantity, curves.units));
    drawUp(sheet, frame.up, left, right);
    for (std::size_t n = 0; n < shown.size(); ++n) {
        drawCurve(sheet, frame, curves, curves.curves[shown[n]],
                  CurveColours[n % std::size(CurveColours)],
                  legend.empty() ? "" : std::to_string(n + 1));
    }
    drawLegend(sheet, curves, legend, right + 2 * LabelRoom, top);
    sheet.lineWidth(2);
    sheet.box({left, top}, {right, bottom});
}

std::string descriptionOf(const Curves& curves) {
    std::string words = withUnit(curves.title, curves.quantity, curves.units) + " along " +
                        withUnit(curves.alongTitle, curves.alongQuantity, curves.units) + ", " +
                        std::to_string(curves.along.size()) + " values";
    for (const Curve& curve : curves.curves) {
        words += curve.title.empty() ? "" : "; " + curve.title;
    }
    return words + ".";
}

} // namespace

SizedFigure figureOf(const Tornado& tornado, double width) {
    const TornadoFrame frame{
        .tornado = tornado, .bars = std::min(tornado.bars.size(), MostBars), .width = width};
    const double height = frame.bottom() + TickLength + 2 * TextRow + Margin;
    return {.figure = {.name = "tornado",
                       .title = tornado.title,
                       .description = descriptionOf(tornado),
                       .draw =
                           [tornado, bars = frame.bars, width](Surface& surface) {
                               drawTornado(surface,
                                           {.tornado = tornado, .bars = bars, .width = width});
                           }},
            .width = width,
            .height = height};
}

SizedFigure figureOf(const Curves& curves, double width, double height) {
    return {
        .figure = {.name = "curves",
                   .title = curves.title + " along " + curves.alongTitle,
                   .description = descriptionOf(curves),
                   .draw = [curves, width, height](
                               Surface& surface) { drawCurves(surface, curves, width, height); }},
        .width = width,
        .height = height};
}

} // namespace korvane::study
