// The echo has eight sections; each has a procedure of its own below, in their order.
#include "reports/input_echo.h"

#include "problem/loads.h"
#include "reports/report_parts.h"
#include "runtime/number_text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>

namespace korvane {

namespace {

constexpr NumberFormat fixed2 = "####0.00";

/// A labelled value with its unit, behind ten blanks.
void labelledValue(PrintLines& lines, std::string_view label, double value, NumberFormat format,
                   std::string_view unit) {
    lines.spc(10).text(label).text(formatNumber(value, format)).text(unit).end();
}

void controlSection(PrintLines& lines, const Problem& problem) {
    const bool design = problem.ProgramMode == Mode::Design;
    lines.line(5, "  II.--CONTROL");
    lines.spc(10).text(problem.WallType == WallKind::Cantilever ? "CANTILEVER WALL "
                                                                : "ANCHORED WALL ");
    lines.text(design ? "DESIGN" : "ANALYSIS").end();
    if (!design && problem.FSKind == FactorKind::OneForBoth) {
        lines.line(10, "SAME FACTOR OF SAFETY APPLIED TO BOTH ACTIVE AND PASSIVE PRESSURES.");
    } else {
        labelledValue(lines, "FACTOR OF SAFETY FOR ACTIVE PRESSURES  = ", problem.FSActive, "#0.00",
                      "");
    }
    if (design) {
        labelledValue(lines, "FACTOR OF SAFETY FOR PASSIVE PRESSURES = ", problem.FSPassive,
                      "#0.00", "");
    }
    lines.empty();
}

void wallSection(PrintLines& lines, const Problem& problem) {
    lines.line(5, " III.--WALL DATA");
    labelledValue(lines, "ELEVATION AT TOP OF WALL    = ", problem.WallTopElev, fixed2, " FT.");
    if (problem.WallType == WallKind::Anchored) {
        labelledValue(lines, "ELEVATION AT ANCHOR         = ", problem.AnchorElev, fixed2, " FT.");
    }
    if (problem.ProgramMode == Mode::Analysis) {
        labelledValue(lines, "ELEVATION AT BOTTOM OF WALL = ", problem.WallBottomElev, fixed2,
                      " FT.");
        labelledValue(lines, "WALL MODULUS OF ELLASTACITY  = ", problem.WallModulus, "0.000E+00",
                      " PSI.");
        labelledValue(lines, "WALL MOMENT OF INERTIA      = ", problem.WallInertia, fixed2,
                      " IN^4.");
    }
    lines.empty();
}

void surfaceSection(PrintLines& lines, const Problem& problem) {
    lines.line(5, "  IV.--SURFACE POINT DATA");
    for (const int side : {Right, Left}) {
        lines.empty();
        lines.line(10, side == Right ? "  IV.A.--RIGHTSIDE" : "  IV.B.--LEFTSIDE");
        pieceLine(lines, {{15, "DIST. FROM"}, {5, "ELEVATION"}});
        pieceLine(lines, {{15, "WALL (FT)"}, {9, "(FT)"}});
        for (int i = 1; i <= problem.SurfacePointCount(side); ++i) {
            lines.right(25, problem.SurfaceDist(side, i), fixed2);
            lines.right(39, problem.SurfaceElev(side, i), fixed2).end();
        }
    }
    lines.empty();
}

void coefficientLayers(PrintLines& lines, const Problem& problem, int side) {
    pieceLine(lines, {{16, "SAT."}, {5, "MOIST"}, {7, "ACTIVE"}, {8, "PASSIVE"}, {7, "BOTTOM"}});
    pieceLine(
        lines,
        {{15, "WEIGHT"}, {5, "WEIGHT"}, {4, "COEFFICIENT"}, {3, "COEFFICIENT"}, {3, "ELEVATION"}});
    pieceLine(lines, {{16, "(PCF)"}, {5, "(PCF)"}, {35, "(FT)"}});
    const int count = problem.SoilLayerCount(side);
    for (int i = 1; i <= count; ++i) {
        lines.right(21, problem.SoilSatWeight(side, i), "##0.00");
        lines.right(31, problem.SoilMoistWeight(side, i), "##0.00");
        lines.right(44, problem.SoilCoefActive(side, i), "#0.00");
        lines.right(58, problem.SoilCoefPassive(side, i), "###0.00");
        lines.right(71, i < count ? formatNumber(problem.SoilBottomElev(side, i), fixed2) : " ");
        lines.end();
    }
}

/// A factor of safety, or the word for one that is left to the default.
std::string factorText(double factor, NumberFormat format, std::string_view defaultWord) {
    return factor > 0 ? formatNumber(factor, format) : std::string(defaultWord);
}

void strengthLayers(PrintLines& lines, const Problem& problem, int side) {
    lines.spc(15).text("LEVEL 2 FACTOR OF SAFETY FOR ACTIVE PRESSURE  = ");
    lines.text(factorText(problem.Level2FSActive(side), "#0.00", "DEFAULT")).end();
    lines.spc(15).text("LEVEL 2 FACTOR OF SAFETY FOR PASSIVE PRESSURE = ");
    lines.text(factorText(problem.Level2FSPassive(side), "#0.00", "DEFAULT")).end();
    lines.empty();
    pieceLine(lines, {{17, "ANGLE OF"}, {9, "ANGLE OF"}, {24, "<-SAFETY->"}});
    lines.line(0, "   SAT.   MOIST  INTERNAL  COH-     WALL    ADH-    <--BOTTOM-->  <-FACTOR->");
    lines.line(0, "  WGHT.   WGHT.  FRICTION  ESION  FRICTION  ESION   ELEV.  SLOPE  ACT. PASS.");
    lines.line(0, "  (PCF)   (PCF)    (DEG)   (PSF)    (DEG)   (PSF)   (FT)  (FT/FT)");
    const int count = problem.SoilLayerCount(side);
    for (int i = 1; i <= count; ++i) {
        lines.right(8, problem.SoilSatWeight(side, i), "##0.00");
        lines.right(16, problem.SoilMoistWeight(side, i), "##0.00");
        lines.right(25, problem.SoilFriction(side, i), "#0.00");
        lines.right(33, problem.SoilCohesion(side, i), "###0.00");
        lines.right(42, problem.SoilWallFriction(side, i), "#0.00");
        lines.right(50, problem.SoilAdhesion(side, i), "###0.00");
        lines.right(58, i < count ? formatNumber(problem.SoilBottomElev(side, i), fixed2) : " ");
        lines.right(65, i < count ? formatNumber(problem.SoilBottomSlope(side, i), "#0.00") : " ");
        lines.right(71, factorText(problem.SoilFSActive(side, i), "0.00", "DEF"));
        lines.right(76, factorText(problem.SoilFSPassive(side, i), "0.00", "DEF")).end();
    }
}

void soilSection(PrintLines& lines, const Problem& problem) {
    lines.line(5, "   V.--SOIL LAYER DATA");
    for (const int side : {Right, Left}) {
        lines.empty();
        lines.line(10, side == Right ? " V.A.--RIGHTSIDE" : " V.B.--LEFTSIDE");
        if (problem.SoilDataKind(side) == SoilData::Coefficients) {
            coefficientLayers(lines, problem, side);
        } else if (problem.SoilDataKind(side) == SoilData::Strengths) {
            strengthLayers(lines, problem, side);
        }
    }
    lines.empty();
}

void waterElevations(PrintLines& lines, const Problem& problem) {
    labelledValue(lines, "UNIT WEIGHT         = ", problem.WaterUnitWeight, fixed2, " (PCF)");
    labelledValue(lines, "RIGHTSIDE ELEVATION = ", problem.WaterElev(Right), fixed2, " (FT)");
    labelledValue(lines, "LEFTSIDE ELEVATION  = ", problem.WaterElev(Left), fixed2, " (FT)");
    if (problem.SeepageKind == Seepage::None) {
        lines.line(10, "NO SEEPAGE");
        return;
    }
    labelledValue(lines, "SEEPAGE ELEVATION   = ", problem.SeepageElev, fixed2, " (FT)");
    if (problem.SeepageKind == Seepage::Automatic) {
        lines.line(10, "SEEPAGE GRADIENT    = AUTOMATIC");
    } else {
        labelledValue(lines, "SEEPAGE GRADIENT    = ", problem.SeepageGradient(1), "##0.0000",
                      " (FT/FT)");
    }
}

void waterSection(PrintLines& lines, const Problem& problem) {
    lines.line(5, "  VI.--WATER DATA");
    if (problem.WaterDataKind == WaterData::Elevations) {
        waterElevations(lines, problem);
    } else if (problem.WaterDataKind == WaterData::Pressures) {
        pieceLine(lines, {{10, "ELEVATION"}, {6, "NET WATER"}});
        pieceLine(lines, {{13, "(FT)"}, {6, "PRESSURE (PSF)"}});
        for (int i = 1; i <= problem.WaterPressCount; ++i) {
            lines.right(19, problem.WaterPressElev(i), fixed2);
            lines.right(34, problem.WaterPressure(i), fixed2).end();
        }
    } else {
        lines.line(10, "NONE");
    }
    lines.empty();
}

/// A kind of vertical surcharge with a table for each side.
struct SurchargeTable {
    Load load;
    std::string_view title; ///< its first six characters open the side titles too
    std::array<std::array<Piece, 4>, 3> heads; ///< head lines of pieces; unused ones are empty
    std::array<int, 4> columns;                ///< where the values of a row end
};

const SurchargeTable lineLoads = {
    Load::Line,
    "VII.A.--VERTICAL LINE LOADS",
    {{{{{20, "DIST. FROM"}, {5, "LINE LOAD"}}}, {{{20, "WALL (FT)"}, {8, " (PLF)"}}}}},
    {30, 44}};

const SurchargeTable stripLoads = {Load::Strip,
                                   "VII.C.--VERTICAL STRIP LOADS",
                                   {{{{{15, "<-DIST. FROM WALL->"}}},
                                     {{{17, "START"}, {7, "END"}, {6, "STRIP LOAD"}}},
                                     {{{18, "(FT)"}, {7, "(FT)"}, {8, "(PSF)"}}}}},
                                   {23, 34, 47}};

const SurchargeTable rampLoads = {Load::Ramp,
                                  "VII.D.--VERTICAL RAMP LOADS",
                                  {{{{{15, "<---DIST. FORM WALL--->"}}},
                                    {{{15, "START RAMP"}, {5, "END RAMP"}, {5, "RAMP LOAD"}}},
                                    {{{18, "(FT)"}, {10, "(FT)"}, {9, "(PSF)"}}}}},
                                  {23, 37, 51}};

const SurchargeTable triangularLoads = {
    Load::Triangle,
    "VII.E.--VERTICAL TRIANGULAR LOADS",
    {{{{{15, "<------DIST. FROM WALL------->"}}},
      {{{18, "START"}, {5, "PEAK"}, {7, "END"}, {5, "PEAK LOAD"}}},
      {{{18, "(FT)"}, {6, "(FT)"}, {6, "(FT)"}, {8, "(PSF)"}}}}},
    {23, 33, 44, 56}};

const SurchargeTable variableLoads = {
    Load::Variable,
    "VII.F.--VERTICAL VARIABLE LOADS",
    {{{{{15, "DIST. FROM"}, {6, "VARIABLE"}}}, {{{15, "WALL (FT)"}, {6, "LOAD (PSF)"}}}}},
    {23, 39}};

void surchargeSide(PrintLines& lines, const Problem& problem, const SurchargeTable& table,
                   int side) {
    lines.empty();
    lines.spc(15).text(table.title.substr(0, 6));
    lines.text(side == Right ? "1.--RIGHTSIDE" : "2.--LEFTSIDE").end();
    const LoadRules& load = rulesOf(table.load);
    const int count = load.rows(problem, side);
    if (count == 0) {
        lines.line(20, "NONE");
        return;
    }
    for (const auto& head : table.heads) {
        if (!head.front().text.empty()) {
            pieceLine(lines, {head[0], head[1], head[2], head[3]});
        }
    }
    for (int i = 1; i <= count; ++i) {
        for (int column = 0; column < load.width(); ++column) {
            lines.right(table.columns.at(static_cast<std::size_t>(column)),
                        load.value(problem, column, side, i), fixed2);
        }
        lines.end();
    }
}

void surchargeTable(PrintLines& lines, const Problem& problem, const SurchargeTable& table) {
    lines.line(10, table.title);
    if (rulesOf(table.load).isGiven(problem)) {
        surchargeSide(lines, problem, table, Right);
        surchargeSide(lines, problem, table, Left);
    } else {
        lines.line(15, "NONE");
    }
    lines.empty();
}

/// The left side stands first here, unlike everywhere else in the report.
void uniformLoads(PrintLines& lines, const Problem& problem) {
    const auto load = [&problem](int side) {
        return problem.VUniformCount(side) > 0 ? problem.VUniformLoad(side) : 0.0;
    };
    lines.line(10, "VII.B.--VERTICAL UNIFORM LOADS");
    if (problem.VUniformCount(Right) == 0 && problem.VUniformCount(Left) == 0) {
        lines.line(20, "NONE");
    } else {
        pieceLine(lines, {{20, "LEFTSIDE"}, {5, "RIGHTSIDE"}});
        pieceLine(lines, {{22, "(PSF)"}, {8, "(PSF)"}});
        lines.right(28, load(Left), fixed2).right(42, load(Right), fixed2).end();
    }
    lines.empty();
}

void verticalSection(PrintLines& lines, const Problem& problem) {
    lines.line(5, " VII.--VERTICAL SURCHARGE LOADS");
    if (std::none_of(GroundLoads.begin(), GroundLoads.end(),
                     [&](const LoadRules& load) { return load.isGiven(problem); })) {
        lines.line(10, "NONE");
        lines.empty();
        return;
    }
    lines.empty();
    surchargeTable(lines, problem, lineLoads);
    uniformLoads(lines, problem);
    for (const SurchargeTable* table :
         {&stripLoads, &rampLoads, &triangularLoads, &variableLoads}) {
        surchargeTable(lines, problem, *table);
    }
}

void horizontalSection(PrintLines& lines, const Problem& problem) {
    lines.line(5, "VIII.--HORIZONTAL LOADS");
    if (problem.HLineCount == 0 && problem.HDistCount == 0) {
        lines.line(10, "NONE");
        return;
    }
    lines.empty();
    lines.line(10, "VIII.A.--HORIZONTAL LINE LOADS");
    if (problem.HLineCount > 0) {
        pieceLine(lines, {{15, "ELEVATION"}, {5, "LINE LOAD"}});
        pieceLine(lines, {{18, "(FT)"}, {9, "(PLF)"}});
    } else {
        lines.line(20, "NONE");
    }
    for (int i = 1; i <= problem.HLineCount; ++i) {
        lines.right(23, problem.HLineElev(i), fixed2);
        lines.right(37, problem.HLineLoad(i), fixed2).end();
    }
    lines.empty();
    lines.line(10, "VIII.B.--HORIZONTAL DISTRIBUTED LOADS");
    if (problem.HDistCount > 0) {
        pieceLine(lines, {{15, "ELEVATION"}, {4, "DIST. LOAD"}});
        pieceLine(lines, {{18, "(FT)"}, {9, "(PSF)"}});
    } else {
        lines.line(15, "NONE");
    }
    for (int i = 1; i <= problem.HDistCount; ++i) {
        lines.right(23, problem.HDistElev(i), fixed2);
        lines.right(37, problem.HDistLoad(i), fixed2).end();
    }
}

} // namespace

PrintLines inputEcho(const Problem& problem) {
    PrintLines lines;
    programHead(lines);
    banner(lines, 30, {"****************", "*  INPUT DATA  *", "****************"});
    headingSection(lines, problem, "   I.--HEADING");
    controlSection(lines, problem);
    wallSection(lines, problem);
    surfaceSection(lines, problem);
    soilSection(lines, problem);
    waterSection(lines, problem);
    verticalSection(lines, problem);
    horizontalSection(lines, problem);
    lines.empty(5);

    return lines;
}

} // namespace korvane
