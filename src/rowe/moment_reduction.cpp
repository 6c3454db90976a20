#include "rowe/moment_reduction.h"

#include "reports/report_file.h"
#include "rowe/clay_reduction.h"
#include "rowe/reduction_report.h"
#include "rowe/sand_reduction.h"
#include "runtime/arithmetic.h"
#include "runtime/number_text.h"

#include <cmath>
#include <optional>

namespace korvane {

namespace {

constexpr int Sand = 1;
constexpr int Clay = 2;

/// Left layers down to the one in which the wall ends, that one included.
int layersAlongWall(const State& state) {
    const Problem& problem = state.problem;
    int layer = 1;
    while (layer < problem.SoilLayerCount(Left) &&
           problem.SoilBottomElev(Left, layer) > state.solution.SolvedBottomElev(1)) {
        ++layer;
    }
    return layer;
}

bool anyPositive(const Array<double, 2, 11>& values, int layers) {
    for (int layer = 1; layer <= layers; ++layer) {
        if (values(Left, layer) > 0) {
            return true;
        }
    }
    return false;
}

/// Sand or clay by the left side's first layer, 0 for neither; nothing where the other property
/// occurs along the wall. Soil given by coefficients is neither.
std::optional<int> testSoil(const State& state) {
    const Problem& problem = state.problem;
    if (problem.SoilDataKind(Left) != SoilData::Strengths) {
        return 0;
    }
    const int layers = layersAlongWall(state);
    int type = 0;
    if (problem.SoilFriction(Left, 1) > 0) {
        if (anyPositive(problem.SoilCohesion, layers)) {
            return std::nullopt;
        }
        type = Sand;
    }
    if (problem.SoilCohesion(Left, 1) > 0) {
        if (anyPositive(problem.SoilFriction, layers)) {
            return std::nullopt;
        }
        type = Clay;
    }
    return type;
}

/// Flexibility number and ratio of allowable to free earth moment of every section.
void rateSections(State& state) {
    RoweData& rowe = state.rowe;
    const double H = rowe.RoweHeight;
    const double freeEarthMoment = std::fabs(state.results.MaxMoment(1));
    for (int p = 1; p <= rowe.PileSectionCount; ++p) {
        rowe.PileLogRigidity(p) =
            pileLogRigidity(H, rowe.PileSectionData(p, 2), rowe.PileModulus(p));
        rowe.PileMomentRatio(p) =
            divide(rowe.PileSectionData(p, 1) * rowe.PileAllowStress(p), 12 * freeEarthMoment);
    }
}

/// The broken conditions of the method, in the order of the notes.
std::vector<RoweNote> brokenConditions(const State& state, int soil) {
    const Problem& problem = state.problem;
    const RoweData& rowe = state.rowe;
    const double rightSurface = problem.SurfaceElev(Right, 1);
    std::vector<RoweNote> notes;
    if (rowe.RoweAlpha < 0.6) {
        notes.push_back({"ALPHA LESS THAN 0.6.", "", 0});
    }
    if (rowe.RoweAlpha > 0.8) {
        notes.push_back({"ALPHA GREATER THAN 0.8.", "", 0});
    }
    if (rowe.RoweBeta > 0.3) {
        notes.push_back({"BETA GREATER THAN 0.3.", "", 0});
    }
    if (rightSurface < problem.WallTopElev) {
        notes.push_back({"RIGHTSIDE SURFACE", "    BELOW TOP OF WALL.", 10});
    }
    if (rightSurface <= problem.SurfaceElev(Left, 1)) {
        // Deliberate: the second line stands farther left in the sand report.
        const int blanks = soil == Sand ? 1 : 10;
        notes.push_back({"RIGHTSIDE SURFACE", "    AT OR BELOW LEFTSIDE SURFACE.", blanks});
    }
    if (soil == Clay && rowe.RoweStability < 0.5) {
        notes.push_back({"STABILITY NUMBER", "    LESS THAN 0.5.", 1});
    }
    if (soil == Clay && rowe.RoweStability > 2.5) {
        notes.push_back({"STABILITY NUMBER", "    GREATER THAN 2.5.", 1});
    }
    return notes;
}

/// Coefficients and ratios of the sections within the curves; those outside keep their ratio.
void reduceSections(RoweData& rowe, int soil) {
    RoweOutcome& outcome = rowe.outcome;
    for (int p = 1; p <= rowe.PileSectionCount; ++p) {
        const double x = rowe.PileLogRigidity(p);
        outcome.inRange(p) = outcome.applicable && (soil == Sand ? inSandRange(x) : inClayRange(x));
        for (int k = 1; k <= 2; ++k) {
            outcome.reducedRatio(p, k) = rowe.PileMomentRatio(p);
        }
        if (!outcome.inRange(p)) {
            continue;
        }
        if (soil == Sand) {
            outcome.coefficient(p, 1) = looseCoefficient(rowe.RoweSandCurve, x);
            outcome.coefficient(p, 2) = denseCoefficient(rowe.RoweSandCurve, x);
        } else {
            outcome.coefficient(p, 1) = clayCoefficient(rowe.RoweStability, rowe.RoweAlpha, x);
        }
        const int columns = soil == Sand ? 2 : 1;
        for (int k = 1; k <= columns; ++k) {
            outcome.reducedRatio(p, k) = divide(rowe.PileMomentRatio(p), outcome.coefficient(p, k));
        }
    }
}

bool anyOutOfRange(const RoweData& rowe) {
    for (int p = 1; p <= rowe.PileSectionCount; ++p) {
        if (!rowe.outcome.inRange(p)) {
            return true;
        }
    }
    return false;
}

/// The report's notes in one line each, without their asterisks.
std::vector<std::string> plainNotes(const std::vector<RoweNote>& notes, bool sandOutOfRange) {
    std::vector<std::string> plain;
    plain.reserve(notes.size() + 1);
    for (const RoweNote& note : notes) {
        plain.push_back(trimmed("REDUCTION NOT APPLICABLE DUE TO " + std::string(note.cause) + " " +
                                trimmed(note.secondLine)));
    }
    if (sandOutOfRange) {
        plain.push_back(std::string(SandRangeNote[0].substr(2)) + " " + trimmed(SandRangeNote[1]));
    }
    return plain;
}

/// All values first, so that a fault leaves no part of a report; then the report.
void reduceAndReport(State& state, int soil) {
    RoweData& rowe = state.rowe;
    rateSections(state);
    rowe.RoweStability = soil == Clay ? stabilityNumber(state) : 0.0;
    const std::vector<RoweNote> notes = brokenConditions(state, soil);
    rowe.outcome.applicable = notes.empty();
    if (soil == Sand && rowe.outcome.applicable) {
        rowe.RoweSandCurve = sandCurve(rowe.RoweAlpha);
    }
    reduceSections(rowe, soil);
    const bool sandOutOfRange = soil == Sand && notes.empty() && anyOutOfRange(rowe);
    rowe.outcome.notes = plainNotes(notes, sandOutOfRange);
    const PrintLines lines = reductionReport(state, soil, {notes, sandOutOfRange});

    rowe.RoweSoilType = rowe.outcome.applicable ? soil : 0;
    appendReport(state, lines);
    rowe.outcome.soil = soil;
}

} // namespace

double pileLogRigidity(double height, double inertia, double modulus) {
    return commonLog(divide(height * height * height * height, inertia * modulus));
}

void clearReduction(RoweData& rowe) {
    rowe.RoweSoilType = 0;
    rowe.RoweHeight = 0;
    rowe.RoweAlpha = 0;
    rowe.RoweBeta = 0;
    rowe.RoweStability = 0;
    rowe.PileLogRigidity.fill(0);
    rowe.PileMomentRatio.fill(0);
    rowe.RoweSandCurve.fill(0);
    rowe.outcome = {};
}

// Purpose: compares sheet pile sections by Rowe's moment reduction after a free earth design.
// Reads:   SolvedBottomElev(1) FT, MaxMoment(1) LB-FT, the left side's soil, the section table.
// Writes:  RoweSoilType, H FT, ALPHA, BETA, S, the sections' values, the report.
// Source:  P. W. Rowe, anchored sheet-pile walls (sand) and sheet-pile walls in clay.
void ReduceRoweMoments(State& state, const std::function<void()>& showSections) {
    const Problem& problem = state.problem;
    RoweData& rowe = state.rowe;
    clearReduction(rowe);
    const std::optional<int> type = testSoil(state);
    if (!type) {
        return;
    }
    rowe.RoweSoilType = *type;
    rowe.RoweHeight = problem.WallTopElev - state.solution.SolvedBottomElev(1);
    rowe.RoweAlpha = divide(problem.WallTopElev - problem.SurfaceElev(Left, 1), rowe.RoweHeight);
    rowe.RoweBeta = divide(problem.WallTopElev - problem.AnchorElev, rowe.RoweHeight);

    showSections();
    if (state.SolutionFailed != 0) {
        return;
    }
    if (*type == Sand) {
        ReportRoweSand(state);
    } else if (*type == Clay) {
        ReportRoweClay(state);
    }
}

void ReportRoweSand(State& state) {
    reduceAndReport(state, Sand);
}

void ReportRoweClay(State& state) {
    reduceAndReport(state, Clay);
}

} // namespace korvane
