#include "problem/input_reader.h"

#include "problem/load_sections.h"
#include "problem/reading.h"
#include "problem/validate.h"
#include "runtime/file_text.h"
#include "runtime/runtime_error.h"

#include <initializer_list>
#include <utility>

namespace korvane {

namespace {

/// "UNITS SI" or "UNITS US" as the whole first line. Any other line there is left to the heading,
/// which refuses it. True where a line of units is wrong.
bool readUnits(Reading& reading) {
    InputLines& input = reading.input;
    const std::size_t before = input.linesRead;
    const bool isUnits = NextInputLine(input) && takeToken(input, 1) == "UNITS";
    if (isUnits && input.TokenCount == 2) {
        if (const auto units = unitsNamed(takeToken(input, 2))) {
            reading.units = *units;
            if (reading.numbers != nullptr) {
                reading.numbers->units = *units;
                reading.numbers->unitsLine = input.linesRead;
            }
            return false;
        }
    }
    input.linesRead = before;
    return isUnits;
}

/// One to four lines that begin with an apostrophe. The first other line is the control line and
/// becomes the current one.
bool readHeading(Reading& reading, bool wrongUnits) {
    auto& NumHeadingLines = reading.problem.NumHeadingLines;
    auto& HeadingLines = reading.problem.HeadingLines;
    auto& InputLine = reading.input.InputLine;

    const auto currentLine = [&InputLine] {
        return "Current input line is:\n\n" + InputLine + "\n\nUnable to continue.";
    };
    while (nextLine(reading)) {
        if (!beginsWith(reading, "'")) {
            return NumHeadingLines > 0 ||
                   refuse(reading, "At least one HEADING LINE is required.\n" + currentLine(),
                          wrongUnits ? "UNITS US, UNITS SI or a line that begins with '"
                                     : "a line that begins with '",
                          "HeadingLines");
        }
        if (NumHeadingLines == mostOf(ProblemCount::NumHeadingLines)) {
            // No line break between the two sentences: deliberate.
            return refuse(reading, "Number of HEADING LINES is greater than 4." + currentLine(),
                          "one of at most 4 lines", "HeadingLines");
        }
        HeadingLines(++NumHeadingLines) = InputLine;
    }
    return false;
}

/// A design takes both factors of safety, the first alone serving for both; an analysis takes one,
/// which is then given for active pressures (`FactorKind::ActiveGiven`).
bool readControl(Reading& reading) {
    Problem& problem = reading.problem;
    auto& FSActive = problem.FSActive;
    auto& FSPassive = problem.FSPassive;

    reading.SectionName = "CONTROL DATA";
    if (!(keyword(reading, "C") && needTokens(reading, 3) &&
          choice(reading, 2, {"WallType"}, problem.WallType) &&
          choice(reading, 3, {"ProgramMode"}, problem.ProgramMode))) {
        return false;
    }
    const bool hasFactor = hasToken(reading.input, 4);
    if (problem.ProgramMode == Mode::Analysis) {
        problem.FSKind = hasFactor ? FactorKind::ActiveGiven : FactorKind::OneForBoth;
        return !hasFactor || number(reading, 4, ProblemField::FSActive);
    }
    FSActive = 1.0;
    FSPassive = 1.5;
    if (!hasFactor) {
        remark(reading, ReadRemark::Kind::DefaultFactors);
        return true;
    }
    if (!number(reading, 4, ProblemField::FSActive)) {
        return false;
    }
    FSPassive = FSActive;
    if (!hasToken(reading.input, 5)) {
        remark(reading, ReadRemark::Kind::OneFactorForBoth);
        return true;
    }
    return number(reading, 5, ProblemField::FSPassive);
}

/// Top; for an anchored wall the anchor; for an analysis bottom, modulus and inertia.
bool readWall(Reading& reading) {
    Problem& problem = reading.problem;
    const bool anchored = problem.WallType == WallKind::Anchored;
    const bool analysis = problem.ProgramMode == Mode::Analysis;

    reading.SectionName = "WALL DATA";
    const int lastElevation = anchored ? 3 : 2; // before those of an analysis
    if (!(nextLine(reading) && keyword(reading, "WAL") &&
          needTokens(reading, analysis ? lastElevation + 3 : lastElevation) &&
          number(reading, 2, ProblemField::WallTopElev))) {
        return false;
    }
    if (anchored && !number(reading, 3, ProblemField::AnchorElev)) {
        return false;
    }
    return !analysis || (number(reading, lastElevation + 1, ProblemField::WallBottomElev) &&
                         number(reading, lastElevation + 2, ProblemField::WallModulus) &&
                         number(reading, lastElevation + 3, ProblemField::WallInertia));
}

bool readSurfaceOfSide(Reading& reading) {
    Problem& problem = reading.problem;
    auto& SurfacePointCount = problem.SurfacePointCount;
    auto& SurfaceDist = problem.SurfaceDist;
    auto& SurfaceElev = problem.SurfaceElev;

    SideWord word;
    if (!(nextLine(reading) && keyword(reading, "SU") && needTokens(reading, 5) &&
          sideWord(reading, 2, ProblemCount::SurfacePointCount, true, word))) {
        return false;
    }
    const int side = word.side;
    const Limits ground = limitsBetween(ProblemField::SurfaceElev, ByReader, problem, side);
    if (!(count(reading, 3, ProblemCount::SurfacePointCount, side) &&
          number(reading, 4, ProblemField::SurfaceDist, side, 1) &&
          number(reading, 5, {"SurfaceElev", side, 1, Quantity::Length}, SurfaceElev(side, 1),
                 notAbove(ground.high)))) {
        return false;
    }
    for (int point = 2; point <= SurfacePointCount(side); ++point) {
        if (!(nextLine(reading, 2) && number(reading, 1, ProblemField::SurfaceDist, side, point) &&
              number(reading, 2, ProblemField::SurfaceElev, side, point))) {
            return false;
        }
    }
    if (word.both) {
        copyToLeft(SurfacePointCount);
        copyToLeft(SurfaceDist, SurfacePointCount(Left));
        copyToLeft(SurfaceElev, SurfacePointCount(Left));
    }
    return true;
}

/// Side R and then side L, or both in one. In an analysis the ground at the wall must stand above
/// the wall's bottom on both sides.
bool readSurface(Reading& reading) {
    Problem& problem = reading.problem;

    reading.SectionName = "SOIL SURFACE DATA";
    while (problem.SurfacePointCount(Left) == 0) {
        if (!readSurfaceOfSide(reading)) {
            return false;
        }
    }
    const auto aboveBottom = [&](int side) {
        return problem.SurfaceElev(side, 1) >
               limitsBetween(ProblemField::SurfaceElev, ByReader, problem, side).low;
    };
    return problem.ProgramMode != Mode::Analysis || (aboveBottom(Right) && aboveBottom(Left)) ||
           refuse(reading,
                  "WALL BOTTOM ELEVATION AND SOIL SURFACE ELEVATIONS\n"
                  "     ARE INCONSISTENT.\n\n  Unable to continue.",
                  "above the wall's bottom at both sides of the wall", "SurfaceElev");
}

bool readCoefficientLayer(Reading& reading, int side, int layer, bool last) {
    return nextLine(reading, last ? 4 : 5) &&
           number(reading, 1, ProblemField::SoilSatWeight, side, layer) &&
           number(reading, 2, ProblemField::SoilMoistWeight, side, layer) &&
           number(reading, 3, ProblemField::SoilCoefActive, side, layer) &&
           number(reading, 4, ProblemField::SoilCoefPassive, side, layer) &&
           (last || number(reading, 5, ProblemField::SoilBottomElev, side, layer));
}

void remarkOnFactors(Reading& reading, double active, double passive, int side, int layer) {
    if (passive > 0 && !(active > 0)) {
        remark(reading, ReadRemark::Kind::PassiveFactorAlone, side, layer);
    }
}

bool readStrengthLayer(Reading& reading, int side, int layer, bool last) {
    if (!(nextLine(reading, last ? 6 : 8) &&
          number(reading, 1, ProblemField::SoilSatWeight, side, layer) &&
          number(reading, 2, ProblemField::SoilMoistWeight, side, layer) &&
          number(reading, 3, ProblemField::SoilFriction, side, layer) &&
          number(reading, 4, ProblemField::SoilCohesion, side, layer) &&
          number(reading, 5, ProblemField::SoilWallFriction, side, layer) &&
          number(reading, 6, ProblemField::SoilAdhesion, side, layer))) {
        return false;
    }
    // The slope of a layer's bottom must be a number and is dropped: the screens alone set it.
    double slope = 0;
    if (!last && !(number(reading, 7, ProblemField::SoilBottomElev, side, layer) &&
                   number(reading, 8, {"SoilBottomSlope", side, layer}, slope))) {
        return false;
    }
    if (slope != 0) {
        remark(reading, ReadRemark::Kind::SlopeDropped, side, layer);
    }
    const int factors = last ? 7 : 9;
    if (!(optionalNumber(reading, factors, ProblemField::SoilFSActive, side, layer) &&
          optionalNumber(reading, factors + 1, ProblemField::SoilFSPassive, side, layer))) {
        return false;
    }
    if (last && hasToken(reading.input, factors)) {
        remark(reading, ReadRemark::Kind::LastLayerFactors, side, layer);
    }
    remarkOnFactors(reading, reading.problem.SoilFSActive(side, layer),
                    reading.problem.SoilFSPassive(side, layer), side, layer);
    return true;
}

/// The level 2 factors of safety stay with the right side: deliberate.
void copySoilToLeft(Problem& problem) {
    copyToLeft(problem.SoilDataKind);
    copyToLeft(problem.SoilLayerCount);
    using Layers = Array<double, 2, 11>;
    const auto copyAll = [&problem](std::initializer_list<Layers Problem::*> lists) {
        for (const auto list : lists) {
            copyToLeft(problem.*list, problem.SoilLayerCount(Left));
        }
    };
    copyAll({&Problem::SoilSatWeight, &Problem::SoilMoistWeight, &Problem::SoilBottomElev});
    if (problem.SoilDataKind(Left) == SoilData::Strengths) {
        copyAll({&Problem::SoilFriction, &Problem::SoilCohesion, &Problem::SoilWallFriction,
                 &Problem::SoilAdhesion, &Problem::SoilBottomSlope, &Problem::SoilFSActive,
                 &Problem::SoilFSPassive});
    } else {
        copyAll({&Problem::SoilCoefActive, &Problem::SoilCoefPassive});
    }
}

bool readSoilOfSide(Reading& reading) {
    Problem& problem = reading.problem;
    auto& SoilLayerCount = problem.SoilLayerCount;

    SideWord word;
    if (!(nextLine(reading) && keyword(reading, "SO") && needTokens(reading, 4) &&
          sideWord(reading, 2, ProblemCount::SoilLayerCount, true, word))) {
        return false;
    }
    const int side = word.side;
    if (!(choice(reading, 3, {"SoilDataKind", side}, problem.SoilDataKind(side)) &&
          count(reading, 4, ProblemCount::SoilLayerCount, side) &&
          optionalNumber(reading, 5, ProblemField::Level2FSActive, side) &&
          optionalNumber(reading, 6, ProblemField::Level2FSPassive, side))) {
        return false;
    }
    remarkOnFactors(reading, problem.Level2FSActive(side), problem.Level2FSPassive(side), side, 0);
    const auto readLayer = problem.SoilDataKind(side) == SoilData::Strengths ? readStrengthLayer
                                                                             : readCoefficientLayer;
    for (int layer = 1; layer <= SoilLayerCount(side); ++layer) {
        if (!readLayer(reading, side, layer, layer == SoilLayerCount(side))) {
            return false;
        }
    }
    problem.SoilBottomElev(side, SoilLayerCount(side)) = NoLayerBottom;
    if (word.both) {
        copySoilToLeft(problem);
    }
    return true;
}

/// Side R and then side L, or both in one.
bool readSoil(Reading& reading) {
    reading.SectionName = "SOIL LAYER DATA";
    while (reading.problem.SoilLayerCount(Left) == 0) {
        if (!readSoilOfSide(reading)) {
            return false;
        }
    }
    return true;
}

/// Seepage stands on a left water level below the right one, and its elevation between the lower
/// of ground and water on either side.
bool readSeepage(Reading& reading) {
    Problem& problem = reading.problem;
    auto& SeepageGradient = problem.SeepageGradient;

    problem.SeepageKind = Seepage::None;
    SeepageGradient.fill(0);
    if (!hasToken(reading.input, 6)) {
        return true;
    }
    const auto limits = [&problem](ProblemField field, int side) {
        return limitsBetween(field, ByReader, problem, side);
    };
    if (!limits(ProblemField::WaterElev, Left).hold(problem.WaterElev(Left))) {
        return refuseWord(reading, 5, {"WaterElev", Left}, "below that of the right side");
    }
    if (!(needTokens(reading, 7) &&
          number(reading, 6, {"SeepageElev", 0, 0, Quantity::Length}, problem.SeepageElev,
                 limits(ProblemField::SeepageElev, Right)))) {
        return false;
    }
    if (firstLetter(reading, 7) == 'A') {
        problem.SeepageKind = Seepage::Automatic;
        return true;
    }
    problem.SeepageKind = Seepage::Given;
    double gradient = 0;
    if (!number(reading, 7, {"SeepageGradient"}, gradient, positive)) {
        return false;
    }
    SeepageGradient.fill(gradient);
    // Deliberate: a given gradient goes on to a third entry, which does not exist, so that it can
    // be entered on the screens alone.
    throw RuntimeError(9);
}

bool readWaterElevations(Reading& reading) {
    return needTokens(reading, 5) && number(reading, 3, ProblemField::WaterUnitWeight) &&
           number(reading, 4, ProblemField::WaterElev, Right) &&
           number(reading, 5, ProblemField::WaterElev, Left) && readSeepage(reading);
}

bool readWaterPressures(Reading& reading) {
    Problem& problem = reading.problem;
    if (!(needTokens(reading, 7) && count(reading, 3, ProblemCount::WaterPressCount))) {
        return false;
    }
    for (int point = 1; point <= problem.WaterPressCount; ++point) {
        if (point > 2 && !nextLine(reading, 2)) {
            return false;
        }
        const int token = point <= 2 ? 2 * point + 2 : 1;
        if (!(number(reading, token, ProblemField::WaterPressElev, Right, point) &&
              number(reading, token + 1, ProblemField::WaterPressure, Right, point))) {
            return false;
        }
    }
    return true;
}

/// Optional. The line behind the water data becomes the current one.
bool readWater(Reading& reading) {
    auto& WaterDataKind = reading.problem.WaterDataKind;

    if (!beginsWith(reading, "WAT")) {
        return true;
    }
    reading.SectionName = "WATER DATA";
    if (!(needTokens(reading, 2) && choice(reading, 2, {"WaterDataKind"}, WaterDataKind))) {
        return false;
    }
    return (WaterDataKind == WaterData::Elevations ? readWaterElevations(reading)
                                                   : readWaterPressures(reading)) &&
           nextLine(reading);
}

/// Whatever fits no section ends up here.
bool readTermination(Reading& reading) {
    reading.SectionName = "TERMINATION";
    return keyword(reading, "F");
}

} // namespace

ReadResult readProblem(Problem& problem, std::string_view fileText, const std::string& fileName,
                       InputFault* fault, FileNumbers* numbers, std::vector<ReadRemark>* remarks) {
    InputLines input;
    input.lines = splitLines(fileText);
    Reading reading{problem, std::move(input), fileName, {},     {},
                    {},      UnitSystem::US,   numbers,  remarks};
    const bool wrongUnits = readUnits(reading);
    // The required sections read their own first lines; an optional one finds the line that may be
    // its first already read.
    reading.result.complete =
        readHeading(reading, wrongUnits) && readControl(reading) && readWall(reading) &&
        readSurface(reading) && readSoil(reading) && nextLine(reading) && readWater(reading) &&
        readVerticalLoads(reading) && readHorizontalLoads(reading) && readTermination(reading);
    reading.result.units = reading.units;
    if (fault != nullptr) {
        *fault = reading.fault;
    }
    return reading.result;
}

} // namespace korvane
