// The tornado of a study with one variable at a time.
#include "study/pictures.h"

#include "study/chart.h"
#include "study/plan.h"
#include "survey/answer.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace korvane::study {

using namespace sheet;

namespace {

constexpr double None = std::numeric_limits<double>::quiet_NaN();
// Pixels
constexpr double Width = 420;
constexpr double RowHeight = 26;
constexpr double BarHeight = 16;
constexpr double TextGap = 5;
constexpr double TickLength = 4;
constexpr int MostTicks = 7;
constexpr double NumberRoom = 0.05; // share of the axis, at each end for the numbers of variables

/// The drawing of one output.
struct TornadoChart {
    const FinishedStudy& finished;
    const OutputColumn& column;
    std::vector<Swing> swings;
    double base = None;
    double low = 0;
    double high = 1;
    Svg svg = {};
    std::vector<FigureLabel> labels = {};

    double x(double value) const { return (value - low) / (high - low) * Width; }
    double height() const { return static_cast<double>(swings.size()) * RowHeight; }
};

void span(TornadoChart& tornado) {
    std::vector<double> numbers{tornado.base};
    for (const Swing& swing : tornado.swings) {
        numbers.insert(numbers.end(), {swing.low, swing.high});
    }
    const Axis axis = axisOver("", numbers);
    const double room = NumberRoom * (axis.high - axis.low);
    tornado.low = axis.low - room;
    tornado.high = axis.high + room;
}

void drawAxis(TornadoChart& tornado) {
    for (const double tick : roundTicks(tornado.low, tornado.high, MostTicks)) {
        const double x = tornado.x(tick);
        tornado.svg.line({x, 0}, {x, tornado.height()}, "grid");
        const std::string text = tickText(tick);
        tornado.labels.push_back(
            {labelBox({text}, {x, tornado.height() + TickLength}, TextAnchor::Middle),
             {text},
             TextAnchor::Middle,
             {},
             "axisname"});
    }
    const std::string title = titleOf(tornado.column, tornado.finished.study.units);
    tornado.labels.push_back(
        {labelBox({title}, {Width / 2, tornado.height() + TickLength + FigureLine + 3},
                  TextAnchor::Middle),
         {title},
         TextAnchor::Middle,
         {},
         "name"});
}

/// A bar from the base to one end, with the number of the variable behind it. Of two bars on the
/// same side of the base each has half of the row.
void drawEnd(TornadoChart& tornado, double end, double number, double top, double bottom,
             bool isHigh) {
    const double from = tornado.x(tornado.base);
    const double to = tornado.x(end);
    tornado.svg.polygon({{from, top}, {to, top}, {to, bottom}, {from, bottom}},
                        isHigh ? "bar" : "bar second");
    const bool toRight = to > from;
    const std::string text = told(number);
    const TextAnchor anchor = toRight ? TextAnchor::Start : TextAnchor::End;
    tornado.labels.push_back(
        {labelBox({text},
                  {to + (toRight ? TextGap : -TextGap), (top + bottom) / 2 - FigureLine / 2},
                  anchor),
         {text},
         anchor,
         {},
         "over"});
}

void drawRow(TornadoChart& tornado, std::size_t row) {
    const Swing& swing = tornado.swings[row];
    const Variable& variable = tornado.finished.study.variables[swing.variable];
    const double middle = (static_cast<double>(row) + 0.5) * RowHeight;
    const std::string name = titleOf(variable, tornado.finished.study.units);
    tornado.labels.push_back(
        {labelBox({name}, {-TextGap - TextGap, middle - FigureLine / 2}, TextAnchor::End),
         {name},
         TextAnchor::End});
    const bool sameSide = (swing.low - tornado.base) * (swing.high - tornado.base) > 0;
    const double top = middle - BarHeight / 2;
    const double bottom = middle + BarHeight / 2;
    std::string missing;
    for (const bool isHigh : {false, true}) {
        const double end = isHigh ? swing.high : swing.low;
        const double number = isHigh ? swing.highNumber : swing.lowNumber;
        if (std::isfinite(end)) {
            drawEnd(tornado, end, number, sameSide && isHigh ? middle : top,
                    sameSide && !isHigh ? middle : bottom, isHigh);
        } else {
            missing += (missing.empty() ? "no solution at " : " and ") + told(number);
        }
    }
    if (!missing.empty()) {
        tornado.labels.push_back(
            {labelBox({missing}, {Width + 8 * TextGap, middle - FigureLine / 2}, TextAnchor::Start),
             {missing},
             TextAnchor::Start});
    }
}

Picture pictureOf(const FinishedStudy& finished, std::size_t output) {
    const OutputColumn& column = finished.study.outputs[output];
    TornadoChart tornado{.finished = finished,
                         .column = column,
                         .swings = swingsOf(finished, output),
                         .base = finished.baseOutputs[output]};
    span(tornado);
    if (!std::isfinite(tornado.base)) {
        tornado.base = tornado.low; // a base without a solution: bars from the edge
    }
    drawAxis(tornado);
    for (std::size_t row = 0; row < tornado.swings.size(); ++row) {
        drawRow(tornado, row);
    }
    const double x = tornado.x(tornado.base);
    tornado.svg.line({x, 0}, {x, tornado.height()}, "axis");
    drawLabels(tornado.svg, tornado.labels);
    const LabelBox view = viewOf(Width, tornado.height(), tornado.labels);
    return {tornado.svg.finish(view, "chart", "Tornado of " + column.name),
            column.name + " with each variable alone at its low (orange) and its high number "
                          "(blue); the line in the middle is the base."};
}

} // namespace

double Swing::size() const {
    return swingOf(base, low, high);
}

std::vector<Swing> swingsOf(const FinishedStudy& finished, std::size_t output) {
    const Study& study = finished.study;
    std::vector<Swing> swings;
    for (std::size_t n = 0; n < study.variables.size(); ++n) {
        Swing swing{n, None, None, None, None, finished.baseOutputs[output]};
        const auto rowOf = [&](std::size_t id, double& number, double& result) {
            finished.store.query("SELECT " + quoted(study.variables[n].name) + ", " +
                                     quoted(study.outputs[output].name) +
                                     " FROM variants WHERE id = ?",
                                 [&](const std::vector<double>& row) {
                                     number = row[0];
                                     result = row[1];
                                 },
                                 {static_cast<double>(id)});
        };
        rowOf(1 + 2 * n, swing.lowNumber, swing.low);
        rowOf(2 + 2 * n, swing.highNumber, swing.high);
        swings.push_back(swing);
    }
    std::stable_sort(swings.begin(), swings.end(),
                     [](const Swing& a, const Swing& b) { return a.size() > b.size(); });
    return swings;
}

void addTornados(std::vector<PictureGroup>& groups, const FinishedStudy& finished) {
    PictureGroup group{"Tornado", {}};
    for (const std::size_t output : finished.plotted()) {
        group.pictures.push_back(pictureOf(finished, output));
    }
    groups.push_back(std::move(group));
}

} // namespace korvane::study
