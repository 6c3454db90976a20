#include "problem/input_writer.h"

#include "problem/loads.h"
#include "problem/unit_conversion.h"
#include "runtime/number_text.h"
#include "runtime/print_lines.h"

#include <initializer_list>
#include <string_view>

namespace korvane {

namespace {

constexpr int gap = 2;            // blanks between the pieces of a line
constexpr int pointIndent = 17;   // blanks before a further point of surface or water
constexpr int loadIndent = 20;    // blanks before a further load or point of a load
constexpr const char* none = " "; // what a missing value leaves

const char* sideName(int side) {
    return side == Right ? "RIGHTSIDE" : "LEFTSIDE";
}

/// Numbers as pieces of a line: `blanks` before the first, a gap before each other one.
void numbers(PrintLines& lines, int blanks, std::initializer_list<double> values) {
    for (const double value : values) {
        lines.spc(blanks).number(value);
        blanks = gap;
    }
}

/// Values as one piece: each with its leading blank, joined by two blanks.
std::string composed(std::initializer_list<double> values) {
    std::string piece;
    for (const double value : values) {
        piece += piece.empty() ? "" : "  ";
        piece += generalForm(value);
    }
    return piece;
}

std::string factorOrNone(double factor) {
    return factor == 0 ? none : generalForm(factor);
}

void writeControl(PrintLines& lines, const Problem& problem) {
    const auto factor = [](double value) { return formatNumber(value, "#0.00"); };
    const bool design = problem.ProgramMode == Mode::Design;
    const bool firstGiven = design || problem.FSKind != FactorKind::OneForBoth;
    lines.text("CONTROL").spc(gap).text(problem.WallType == WallKind::Cantilever ? "CANTILEVER"
                                                                                 : "ANCHORED");
    lines.spc(gap).text(design ? "DESIGN" : "ANALYSIS");
    lines.spc(gap).text(firstGiven ? factor(problem.FSActive) : "");
    lines.spc(gap).text(design ? factor(problem.FSPassive) : "").end();
}

void writeWall(PrintLines& lines, const Problem& problem) {
    lines.text("WALL");
    numbers(lines, gap, {problem.WallTopElev});
    lines.spc(gap).text(problem.WallType == WallKind::Anchored ? generalForm(problem.AnchorElev)
                                                               : none);
    lines.spc(gap)
        .text(problem.ProgramMode == Mode::Analysis
                  ? composed({problem.WallBottomElev, problem.WallModulus, problem.WallInertia})
                  : none)
        .end();
}

void writeSurface(PrintLines& lines, const Problem& problem, int side) {
    auto& SurfacePointCount = problem.SurfacePointCount;

    lines.text("SURFACE ").text(sideName(side));
    numbers(lines, gap, {1.0 * SurfacePointCount(side)});
    for (int point = 1; point <= SurfacePointCount(side); ++point) {
        numbers(lines, point == 1 ? gap : pointIndent,
                {problem.SurfaceDist(side, point), problem.SurfaceElev(side, point)});
        lines.end();
    }
}

void writeCoefficientLayer(PrintLines& lines, const Problem& problem, int side, int layer) {
    const bool last = layer == problem.SoilLayerCount(side);
    numbers(lines, gap,
            {problem.SoilSatWeight(side, layer), problem.SoilMoistWeight(side, layer),
             problem.SoilCoefActive(side, layer), problem.SoilCoefPassive(side, layer)});
    lines.spc(gap).text(last ? none : generalForm(problem.SoilBottomElev(side, layer))).end();
}

void writeStrengthLayer(PrintLines& lines, const Problem& problem, int side, int layer) {
    const bool last = layer == problem.SoilLayerCount(side);
    numbers(lines, gap,
            {problem.SoilSatWeight(side, layer), problem.SoilMoistWeight(side, layer),
             problem.SoilFriction(side, layer), problem.SoilCohesion(side, layer),
             problem.SoilWallFriction(side, layer), problem.SoilAdhesion(side, layer)});
    lines.spc(gap).text(last ? none
                             : composed({problem.SoilBottomElev(side, layer),
                                         problem.SoilBottomSlope(side, layer)}));
    lines.spc(gap).text(factorOrNone(problem.SoilFSActive(side, layer)));
    lines.spc(gap).text(factorOrNone(problem.SoilFSPassive(side, layer))).end();
}

void writeSoil(PrintLines& lines, const Problem& problem, int side) {
    const bool strengths = problem.SoilDataKind(side) == SoilData::Strengths;

    lines.text("SOIL ").text(sideName(side)).spc(gap);
    lines.text(strengths ? "STRENGTHS" : "COEFFICIENTS");
    numbers(lines, gap, {1.0 * problem.SoilLayerCount(side)});
    if (strengths) {
        lines.spc(gap).text(factorOrNone(problem.Level2FSActive(side)));
        lines.spc(gap).text(factorOrNone(problem.Level2FSPassive(side)));
    }
    lines.end();
    for (int layer = 1; layer <= problem.SoilLayerCount(side); ++layer) {
        (strengths ? writeStrengthLayer : writeCoefficientLayer)(lines, problem, side, layer);
    }
}

/// The gradient of a given seepage is entry 1.
std::string seepageText(const Problem& problem) {
    if (problem.SeepageKind == Seepage::Automatic) {
        return composed({problem.SeepageElev}) + "  AUTOMATIC";
    }
    return problem.SeepageKind == Seepage::Given
               ? composed({problem.SeepageElev, problem.SeepageGradient(1)})
               : none;
}

void writeWater(PrintLines& lines, const Problem& problem) {
    if (problem.WaterDataKind == WaterData::Elevations) {
        lines.text("WATER ELEVATIONS");
        numbers(lines, gap,
                {problem.WaterUnitWeight, problem.WaterElev(Right), problem.WaterElev(Left)});
        lines.spc(gap).text(seepageText(problem)).end();
    } else if (problem.WaterDataKind == WaterData::Pressures) {
        lines.text("WATER PRESSURES");
        numbers(lines, gap, {1.0 * problem.WaterPressCount});
        for (int point = 1; point <= problem.WaterPressCount; ++point) {
            numbers(lines, point <= 2 ? gap : pointIndent,
                    {problem.WaterPressElev(point), problem.WaterPressure(point)});
            if (point >= 2) {
                lines.end();
            }
        }
    }
}

/// A side without a uniform load shows 0, whatever its load entry still holds.
void writeUniform(PrintLines& lines, const Problem& problem) {
    const auto load = [&problem](int side) {
        return problem.VUniformCount(side) == 0 ? 0 : problem.VUniformLoad(side);
    };
    lines.text("VERTICAL UNIFORM");
    numbers(lines, gap, {load(Right), load(Left)});
    lines.end();
}

/// Number of rows and all of them as one piece of a line.
void writeOneLine(PrintLines& lines, const Problem& problem, const LoadRules& load, int side) {
    std::string piece = generalForm(load.rows(problem, side));
    for (int row = 1; row <= load.rows(problem, side); ++row) {
        for (int column = 0; column < load.width(); ++column) {
            piece += "  " + generalForm(load.value(problem, column, side, row));
        }
    }
    lines.spc(gap).text(piece).end();
}

/// The screens let a variable load of one point pass, which no file can give back.
void writeRows(PrintLines& lines, const Problem& problem, const LoadRules& load, int side) {
    const int rows = load.rows(problem, side);
    if (load.countsInFile) {
        numbers(lines, gap, {1.0 * rows});
    }
    for (int row = 1; row <= rows; ++row) {
        for (int column = 0; column < load.width(); ++column) {
            const bool opensLine = column == 0 && row > load.rowsOfFirstLine;
            numbers(lines, opensLine ? loadIndent : gap, {load.value(problem, column, side, row)});
        }
        if (row >= load.rowsOfFirstLine || row == rows) {
            lines.end();
        }
    }
}

/// Rows that fill one line, a number of them before, form one piece.
void writeLoad(PrintLines& lines, const Problem& problem, const LoadRules& load, int side) {
    const bool isOneLine = load.countsInFile && load.rowsOfFirstLine == load.mostRows();
    (isOneLine ? writeOneLine : writeRows)(lines, problem, load, side);
}

void writeVerticalLoads(PrintLines& lines, const Problem& problem) {
    for (const LoadRules& load : GroundLoads) {
        if (load.load == Load::Uniform) {
            if (load.isGiven(problem)) {
                writeUniform(lines, problem);
            }
            continue;
        }
        for (const int side : {Right, Left}) {
            if (load.rows(problem, side) > 0) {
                lines.text("VERTICAL ").text(load.word).text("  ").text(sideName(side));
                writeLoad(lines, problem, load, side);
            }
        }
    }
}

void writeHorizontalLoads(PrintLines& lines, const Problem& problem) {
    for (const LoadRules& load : WallLoads) {
        if (load.isGiven(problem)) {
            lines.text("HORIZONTAL ").text(load.word);
            writeLoad(lines, problem, load, Right);
        }
    }
}

} // namespace

std::string inputFileText(const Problem& problem, UnitSystem units) {
    if (units == UnitSystem::SI) {
        return PrintLines().text("UNITS SI").end().content() +
               inputFileText(problemForFile(problem, units));
    }
    PrintLines lines;
    for (int line = 1; line <= problem.NumHeadingLines; ++line) {
        lines.text(problem.HeadingLines(line)).end();
    }
    writeControl(lines, problem);
    writeWall(lines, problem);
    for (const int side : {Right, Left}) {
        writeSurface(lines, problem, side);
    }
    for (const int side : {Right, Left}) {
        writeSoil(lines, problem, side);
    }
    writeWater(lines, problem);
    writeVerticalLoads(lines, problem);
    writeHorizontalLoads(lines, problem);
    return lines.text("FINISHED").end().content();
}

} // namespace korvane
