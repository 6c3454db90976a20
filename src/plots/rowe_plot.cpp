#include "plots/rowe_plot.h"

#include "runtime/number_text.h"

#include <algorithm>
#include <string>

namespace korvane {

namespace {

constexpr double GridLeft = 1440;
constexpr double GridRight = 8640;
constexpr double GridTop = 432;
constexpr double GridBottom = 4752;
constexpr double GridMiddle = (GridLeft + GridRight) / 2;
constexpr int GridWidth = 1;
constexpr int RoweCurveWidth = 3;

/// Where a section or a curve's name stands from the point that it belongs to.
constexpr Point LeaderStep{360, -576};
constexpr double NameStep = 432;
constexpr double CurveNameRise = 612;

/// Of a value of LOG(H^4/EI).
double gridX(double logRigidity) {
    return (logRigidity + 3.5) / 2 * (GridRight - GridLeft) + GridLeft;
}

/// Of a moment ratio.
double gridY(double ratio) {
    return GridBottom - ratio / 1.2 * (GridBottom - GridTop);
}

/// "M" over "Mo" beside the vertical axis.
void drawRatioLabel(Sheet& sheet) {
    constexpr double X = 432;
    constexpr double MomentY = 2484;
    constexpr double FreeEarthY = 2538;
    const double h = sheet.textHeight();
    const double halfBar = sheet.textWidth("Mo") / 2;
    const double upper = MomentY - h / 2;
    const double lower = FreeEarthY + h / 2;
    const double barY = (upper + h + lower) / 2;
    sheet.centred(X, upper, "M");
    sheet.centred(X, lower, "Mo");
    sheet.line({X - halfBar, barY}, {X + halfBar, barY});
}

void drawGrid(Sheet& sheet) {
    const double h = sheet.textHeight();
    sheet.lineWidth(GridWidth);
    for (int j = 0; j <= 6; ++j) {
        const double y = GridTop + 720 * j;
        sheet.line({GridLeft, y}, {GridRight, y});
        sheet.text(1152, Across::RightEdge, y, Down::Middle,
                   formatNumber((12 - 2 * j) / 10.0, "0.0"));
    }
    drawRatioLabel(sheet);
    for (int j = 0; j <= 4; ++j) {
        const double x = GridLeft + 1800 * j;
        sheet.line({x, GridTop}, {x, GridBottom});
        sheet.centred(x, GridBottom + h / 2, formatNumber((j - 7) / 2.0, "0.0"));
    }
    sheet.centred(GridMiddle, 5256 - h / 2, "LOG(H^4/EI)");
}

void drawCurveName(Sheet& sheet, Point from, Colour colour, const char* name) {
    sheet.line(from, {from.x + LeaderStep.x, from.y + LeaderStep.y}, colour);
    sheet.text(from.x + NameStep, Across::LeftEdge, from.y - CurveNameRise, Down::UpperEdge, name);
}

/// The cubic through the points at x = -3.5, -3.0, -2.5 and -2.0, flat from there.
void drawLooseCurve(Sheet& sheet, const Array<double, 2, 5>& RoweSandCurve) {
    const auto c = [&](int q) { return RoweSandCurve(1, q); };
    sheet.startCurve({GridLeft, gridY(c(1))}, Green);
    for (int n = 1; n <= 151; ++n) {
        const double x = (n - 351) / 100.0;
        const double A = (x + 3) * (x + 2.5) * (x + 2) * c(1);
        const double B = (x + 3.5) * (x + 2.5) * (x + 2) * c(2);
        const double C = (x + 3.5) * (x + 3) * (x + 2) * c(3);
        const double D = (x + 3.5) * (x + 3) * (x + 2.5) * c(4);
        const double ratio = -A / 0.75 + B / 0.25 - C / 0.25 + D / 0.75;
        sheet.lineTo({gridX(x), gridY(ratio)}, Green);
    }
    const Point flat{gridX(-2.0), gridY(c(4))};
    sheet.line(flat, {GridRight, flat.y}, Green);
    drawCurveName(sheet, flat, Green, "LOOSE");
}

/// The quartic through five points, whose fifth term takes the value at x = -2.0 (deliberate, and
/// unlike the report's); the curve never rises.
void drawDenseCurve(Sheet& sheet, const Array<double, 2, 5>& RoweSandCurve) {
    const auto c = [&](int q) { return RoweSandCurve(2, q); };
    double y = gridY(c(1));
    sheet.startCurve({GridLeft, y}, Blue);
    for (int n = 1; n <= 201; ++n) {
        const double x = (n - 351) / 100.0;
        const double A = (x + 3) * (x + 2.5) * (x + 2) * (x + 1.5) * c(1);
        const double B = (x + 3.5) * (x + 2.5) * (x + 2) * (x + 1.5) * c(2);
        const double C = (x + 3.5) * (x + 3) * (x + 2) * (x + 1.5) * c(3);
        const double D = (x + 3.5) * (x + 3) * (x + 2.5) * (x + 1.5) * c(4);
        const double E = (x + 3.5) * (x + 3) * (x + 2.5) * (x + 2) * c(4);
        const double ratio = A / 1.5 - B / 0.375 + C / 0.25 - D / 0.375 + E / 1.5;
        y = std::max(y, gridY(ratio));
        sheet.lineTo({gridX(x), y}, Blue);
    }
    drawCurveName(sheet, {7200, gridY(c(4))}, Blue, "DENSE");
}

/// Sections outside the diagram are left out without note.
void drawSections(Sheet& sheet, const PileSections& sections, const MomentReduction& rowe) {
    constexpr double Radius = 72;
    for (int p = 1; p <= sections.PileSectionCount; ++p) {
        const double x = rowe.PileLogRigidity(p);
        const double ratio = rowe.PileMomentRatio(p);
        if (!(x > -3.5 && x <= -1.5 && ratio <= 1.2)) {
            continue;
        }
        const Point at{gridX(x), gridY(ratio)};
        sheet.circle(at, Radius, Red);
        sheet.point(at, StartGrey);
        sheet.lineTo({at.x + LeaderStep.x, at.y + LeaderStep.y}, Red);
        sheet.text(at.x + NameStep, Across::LeftEdge, at.y + LeaderStep.y, Down::Middle,
                   sections.PileName(p));
    }
}

} // namespace

void drawRowePlot(Surface& surface, const PileSections& sections, const MomentReduction& rowe,
                  Medium medium) {
    Sheet sheet(surface, medium);
    sheet.text(GridMiddle, Across::Middle, 288, Down::Middle,
               "ROWE'S MOMENT REDUCTION FOR SAND (ALPHA= " + formatNumber(rowe.RoweAlpha, "0.00") +
                   ")");
    drawGrid(sheet);
    sheet.lineWidth(RoweCurveWidth);
    drawLooseCurve(sheet, rowe.RoweSandCurve);
    drawDenseCurve(sheet, rowe.RoweSandCurve);
    drawSections(sheet, sections, rowe);
}

} // namespace korvane
