// Sketches of the vertical surcharges.
#include "plots/frame.h"
#include "plots/input_plots.h"
#include "runtime/number_text.h"
#include "runtime/runtime_error.h"

#include <algorithm>
#include <string>

namespace korvane {

namespace {

constexpr double AxisLeft = 1440;
constexpr double AxisRight = 8640;
constexpr double AxisY = 3744;
constexpr double BaseLine = 3024;   ///< of the loads
constexpr double LoadHeight = 1440; ///< of the largest load
constexpr double FullReach = 3600;  ///< of the largest distance
constexpr double RampReach = 2880;  ///< likewise: a ramp goes on behind its end
constexpr NumberFormat LoadFormat = "####0.00";

/// The scales of the kind of surcharge on show, and its mapping to twips on the screen.
struct SurchargeScale {
    double farthest = 0; ///< FT, on either side; 0 puts every distance at the wall
    double largest = 0;  ///< load, on either side; 0 puts every load on the base line
    double reach = FullReach;

    double x(int side, double distance) const {
        const double part = farthest > 0 ? distance / farthest : 0;
        return side == Right ? WallX + part * reach : WallX - part * reach;
    }
    double y(double load) const {
        return BaseLine - (largest > 0 ? load / largest : 0) * LoadHeight;
    }
};

Colour sideColour(int side) {
    return side == Right ? Red : PassiveGreen;
}

double sideEdge(int side) {
    return side == Right ? AxisRight : AxisLeft;
}

/// The largest value of a column on both sides, at least 0.
double largestOf(const Problem& problem, const LoadRules& load, int column) {
    double largest = 0;
    for (const int side : {Right, Left}) {
        for (int row = 1; row <= load.rows(problem, side); ++row) {
            largest = std::max(largest, load.value(problem, column, side, row));
        }
    }
    return largest;
}

/// The last distance of a row reaches farthest; a uniform load has none.
SurchargeScale surchargeScale(const Problem& problem, Load kind) {
    const LoadRules& load = rulesOf(kind);
    const int loadColumn = load.width() - 1;
    return {loadColumn > 0 ? largestOf(problem, load, loadColumn - 1) : 0,
            largestOf(problem, load, loadColumn), kind == Load::Ramp ? RampReach : FullReach};
}

std::string surchargeTitle(Load kind, double largest) {
    const std::string load = formatNumber(largest, LoadFormat);
    switch (kind) {
    case Load::Line:
        return "VERTICAL LINE LOADS (MAX. = " + load + " PLF)";
    case Load::Uniform:
        return "UNIFORM SURCHARGE LOADS";
    case Load::Strip:
        return "VERTICAL STRIP LOADS (MAX. = " + load + " PSF)";
    case Load::Ramp:
        return "VERTICAL RAMP LOADS (PSF)";
    case Load::Triangle:
        return "VERTICAL TRIANGULAR LOADS (MAX. = " + load + " PSF)";
    case Load::Variable:
        return "VERTICAL VARIABLE LOADS (MAX. = " + load + " PSF)";
    default:
        throwRuntimeError(5);
    }
}

/// Axis of distances, wall and ground.
void drawGround(Sheet& sheet) {
    sheet.lineWidth(FrameWidth);
    sheet.line({AxisLeft, AxisY}, {AxisRight, AxisY});
    for (const double x : {AxisLeft, WallX, AxisRight}) {
        sheet.line({x, AxisY - 72}, {x, AxisY + 72});
    }
    for (const double y : {AxisY - 36, AxisY + 36}) {
        sheet.line({AxisLeft + 72, y}, {AxisLeft, AxisY});
        sheet.line({AxisRight - 72, y}, {AxisRight, AxisY});
    }
    sheet.filledBox({4968, 3888}, {5112, 5328});
    sheet.line({5184, 3888}, {AxisRight, 3888});
    sheet.line({4896, 3888}, {AxisLeft, 3888});
}

void drawLineLoads(Sheet& sheet, const Problem& p, const SurchargeScale& scale, int side) {
    const Colour colour = sideColour(side);
    for (int i = 1; i <= p.VLineCount(side); ++i) {
        const double x = scale.x(side, p.VLineDist(side, i));
        sheet.line({x, scale.y(p.VLineLoad(side, i))}, {x, BaseLine}, colour);
        sheet.line({x, BaseLine}, {x - 72, BaseLine - 72}, colour);
        sheet.line({x, BaseLine}, {x + 72, BaseLine - 72}, colour);
    }
}

void drawUniformLoad(Sheet& sheet, const Problem& p, const SurchargeScale& scale, int side) {
    if (p.VUniformCount(side) < 1) {
        return;
    }
    const double load = p.VUniformLoad(side);
    sheet.box({WallX, scale.y(load)}, {sideEdge(side), BaseLine}, sideColour(side));
    sheet.centred((WallX + sideEdge(side)) / 2, 1008,
                  (side == Right ? "RIGHTSIDE " : "LEFTSIDE ") + formatNumber(load, LoadFormat) +
                      " (PSF)");
}

void drawStripLoads(Sheet& sheet, const Problem& p, const SurchargeScale& scale, int side) {
    for (int i = 1; i <= p.VStripCount(side); ++i) {
        sheet.box({scale.x(side, p.VStripStart(side, i)), scale.y(p.VStripLoad(side, i))},
                  {scale.x(side, p.VStripEnd(side, i)), BaseLine}, sideColour(side));
    }
}

/// Level from the ramp's end to the edge, where it closes.
void drawRampLoad(Sheet& sheet, const Problem& p, const SurchargeScale& scale, int side) {
    if (p.VRampCount(side) < 1) {
        return;
    }
    const Colour colour = sideColour(side);
    const double y = scale.y(p.VRampLoad(side));
    sheet.line({scale.x(side, p.VRampStart(side)), BaseLine}, {scale.x(side, p.VRampEnd(side)), y},
               colour);
    sheet.lineTo({sideEdge(side), y}, colour);
    sheet.lineTo({sideEdge(side), BaseLine}, colour);
}

void drawTriangularLoads(Sheet& sheet, const Problem& p, const SurchargeScale& scale, int side) {
    const Colour colour = sideColour(side);
    for (int i = 1; i <= p.VTriCount(side); ++i) {
        sheet.line({scale.x(side, p.VTriStart(side, i)), BaseLine},
                   {scale.x(side, p.VTriPeak(side, i)), scale.y(p.VTriLoad(side, i))}, colour);
        sheet.lineTo({scale.x(side, p.VTriEnd(side, i)), BaseLine}, colour);
    }
}

void drawVariableLoad(Sheet& sheet, const Problem& p, const SurchargeScale& scale, int side) {
    const int points = p.VVarCount(side);
    if (points < 1) {
        return;
    }
    const Colour colour = sideColour(side);
    const auto at = [&](int i) {
        return Point{scale.x(side, p.VVarDist(side, i)), scale.y(p.VVarLoad(side, i))};
    };
    sheet.line({at(1).x, BaseLine}, at(1), colour);
    for (int i = 2; i <= points; ++i) {
        sheet.lineTo(at(i), colour);
    }
    sheet.lineTo({at(points).x, BaseLine}, colour);
}

void drawLoads(Sheet& sheet, const Problem& p, const SurchargeScale& scale, Load kind, int side) {
    switch (kind) {
    case Load::Line:
        return drawLineLoads(sheet, p, scale, side);
    case Load::Uniform:
        return drawUniformLoad(sheet, p, scale, side);
    case Load::Strip:
        return drawStripLoads(sheet, p, scale, side);
    case Load::Ramp:
        return drawRampLoad(sheet, p, scale, side);
    case Load::Triangle:
        return drawTriangularLoads(sheet, p, scale, side);
    case Load::Variable:
        return drawVariableLoad(sheet, p, scale, side);
    default:
        throwRuntimeError(5);
    }
}

} // namespace

void drawSurchargePlot(Surface& surface, const Problem& problem, Load kind, Medium medium) {
    Sheet sheet(surface, medium);
    const SurchargeScale scale = surchargeScale(problem, kind);

    drawGround(sheet);
    if (kind != Load::Uniform) {
        const std::string distance = formatNumber(scale.farthest, LoadFormat) + " (FT)";
        for (const double x : {(WallX + AxisRight) / 2, (WallX + AxisLeft) / 2}) {
            sheet.text(x, Across::Middle, AxisY - 72, Down::LowerEdge, distance);
        }
    }
    sheet.centred(WallX, 852, surchargeTitle(kind, scale.largest));
    sheet.lineWidth(CurveWidth);
    for (const int side : {Right, Left}) {
        drawLoads(sheet, problem, scale, kind, side);
    }
}

} // namespace korvane
