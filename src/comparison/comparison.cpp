#include "comparison/comparison.h"

#include "comparison/comparison_rows.h"
#include "notes/rules.h"
#include "pressures/coefficient_pressures.h"
#include "runtime/arithmetic.h"
#include "runtime/run_guarded.h"
#include "wall/preparation.h"

#include <algorithm>
#include <cmath>

namespace korvane {

namespace {

constexpr const char* NotApplicable = "not-applicable";

/// How a value differs from the told one.
struct ValueRules {
    ComparedValue value;
    bool bySize; ///< its sign says only where to: shear, moment, deflection
};
constexpr ValueRules Values[] = {
    {ComparedValue::Penetration, false},    {ComparedValue::Length, false},
    {ComparedValue::AnchorForce, false},    {ComparedValue::MaxMoment, true},
    {ComparedValue::MaxShear, true},        {ComparedValue::MaxDeflection, true},
    {ComparedValue::FactorOfSafety, false},
};
static_assert(std::size(Values) == ComparedValueCount);

/// A failure in one line, without what every box of a failure ends with.
std::string wordsOf(const Failure& failure) {
    if (!hasBox(failure)) {
        return "the search for the factor of safety stopped at its limit";
    }
    std::string text = failureBox(failure).text;
    std::string words;
    for (const char c : text) {
        const bool blank = c == ' ' || c == '\n';
        if (!blank || (!words.empty() && words.back() != ' ')) {
            words += blank ? ' ' : c;
        }
    }
    for (const std::string_view end : {"Unable to continue.", "UNABLE TO CONTINUE.", " ", "."}) {
        if (words.ends_with(end)) {
            words.erase(words.size() - end.size());
        }
    }
    return words;
}

/// The layer whose developed friction is beyond the columns of the table of passive coefficients;
/// empty where another fault has ended a design's soil pressures.
std::string missingCoefficient(const Variant& variant, const Failure& failure) {
    const Problem& problem = variant.problem;
    const int side = failure.stage.side;
    if (failure.stage.doing != Doing::SoilPressures || problem.ProgramMode != Mode::Design ||
        problem.SoilDataKind(side) != SoilData::Strengths ||
        sideMethod(problem, side) != PressureMethod::Coefficients) {
        return {};
    }
    const Solved unsolved;
    const NoteRequest request{.problem = problem};
    const Wall wall{.request = request, .problem = problem, .solved = &unsolved};
    for (int layer = 1; layer <= problem.SoilLayerCount(side); ++layer) {
        const PassiveAngles angles = passiveAngles(wall, side, layer);
        if (!hasPassiveCoefficient(angles.friction * DegreesToRadians,
                                   angles.wallFriction * DegreesToRadians)) {
            return "the passive coefficient has no value for a developed friction of " +
                   wall.say(Quantity::Angle, angles.friction) + " (layer " + std::to_string(layer) +
                   " on the " + sideText(side) + "): its table ends at 44.5 degrees";
        }
    }
    return {};
}

/// Why a row has no result.
std::string reasonOf(const Variant& variant, const Failure& failure) {
    if (failure.code != FailureCode::RunTimeError) {
        return wordsOf(failure);
    }
    const std::string missing = missingCoefficient(variant, failure);
    return missing.empty()
               ? wordsOf(failure) + ", while " + stageText(failure.stage, variant.problem.WallType)
               : missing;
}

ComparedLevel levelOf(const Variant& variant, const LevelResult& solved) {
    const Problem& problem = variant.problem;
    const bool anchored = solved.method != SolutionMethod::Cantilever;
    const bool design = problem.ProgramMode == Mode::Design;
    const double ground = solved.bottomElev + solved.penetration;
    const double penetration = solved.penetration * variant.depthFactor;
    ComparedLevel level;
    level.method = solved.method;
    const auto put = [&level](ComparedValue value, double number) {
        level.values[static_cast<std::size_t>(value)] = number;
    };
    put(ComparedValue::Penetration, penetration);
    put(ComparedValue::Length, problem.WallTopElev - (ground - penetration));
    if (anchored) {
        put(ComparedValue::AnchorForce, solved.anchorForce);
    }
    put(ComparedValue::MaxMoment, solved.diagrams.MaxMoment.value);
    put(ComparedValue::MaxShear, solved.maxShear.value);
    put(ComparedValue::MaxDeflection, solved.diagrams.MaxDeflection.value);
    if (!design) {
        put(ComparedValue::FactorOfSafety, solved.factorOfSafety);
    }
    return level;
}

/// The reason of a row that is not solved, or its levels.
void solveRow(const Variant& variant, Workspace& workspace, ComparedRow& row) {
    Failure failure = reviewWall(variant.problem, variant.options, workspace).failure();
    if (!failure) {
        failure = solveWall(workspace).failure();
    }
    throwOnMemory(failure.error);
    const Results& results = workspace.results();
    for (int level = 1; level <= results.levelCount; ++level) {
        if (variant.level == 0 || variant.level == level) {
            row.levels.push_back(levelOf(variant, results.levels(level)));
        }
    }
    const bool complete = variant.level != 0 && !row.levels.empty();
    if (failure && !complete) {
        row.code = failureName(failure.code);
        row.reason = reasonOf(variant, failure);
    }
}

/// Runs a step on a row; a fault that says nothing of memory is the row's reason.
template <class Step>
void guarded(ComparedRow& row, Step step) {
    if (const auto fault = runGuarded(step)) {
        throwOnMemory(fault->number());
        row.code = failureName(FailureCode::RunTimeError);
        row.reason = wordsOf({.code = FailureCode::RunTimeError, .error = fault->number()});
    }
}

ComparedRow notApplicable(ComparedRow row, std::string reason) {
    row.code = NotApplicable;
    row.reason = std::move(reason);
    return row;
}

ComparedRow compareRow(const ComparisonRow& rules, const Variant& told, Workspace& workspace) {
    ComparedRow row{.name = std::string(rules.name), .title = std::string(rules.title)};
    guarded(row, [&] {
        if (std::string reason = rules.reason(told, rules.value); !reason.empty()) {
            row = notApplicable(std::move(row), std::move(reason));
            return;
        }
        Variant variant = told;
        rules.change(variant, rules.value);
        solveRow(variant, workspace, row);
    });
    return row;
}

ComparedRow compareOwnRow(const OwnRow& own, UnitSystem units, const Variant& told,
                          Workspace& workspace) {
    ComparedRow row{.name = own.name, .title = own.name};
    Variant variant = told;
    variant.options.amendments = own.amendments;
    for (const FieldChange& change : own.changes) {
        if (!applyChange(change, own.units.value_or(units), variant.problem)) {
            return notApplicable(std::move(row), addressName(change.address) + ": " +
                                                     absence(change.address, variant.problem));
        }
    }
    guarded(row, [&] { solveRow(variant, workspace, row); });
    return row;
}

/// Differences of a row to the levels of the told solution.
void tellPercent(const std::vector<ComparedLevel>& told, std::vector<ComparedLevel>& levels) {
    for (std::size_t level = 0; level < std::min(told.size(), levels.size()); ++level) {
        for (const auto& [value, bySize] : Values) {
            const auto before = told[level].value(value);
            const auto now = levels[level].value(value);
            if (!before || !now || *before == 0) {
                continue;
            }
            const double difference = bySize ? std::abs(*now) - std::abs(*before) : *now - *before;
            levels[level].percent[static_cast<std::size_t>(value)] =
                100 * difference / std::abs(*before);
        }
    }
}

} // namespace

Comparison compareWall(const ComparisonRequest& request, Workspace& workspace,
                       const ComparisonProgress& progress) {
    static const std::vector<OwnRow> none;
    const std::vector<OwnRow>& ownRows = request.ownRows != nullptr ? *request.ownRows : none;
    const std::size_t total = factorRows().size() + wallRows().size() + ownRows.size();
    Variant told{.problem = request.problem, .options = request.options};
    told.options.factorLimit.ask = nullptr;
    told.options.keepDetails = false;
    Comparison comparison;
    comparison.rows.reserve(total);
    const auto add = [&](ComparedRow row) {
        comparison.rows.push_back(std::move(row));
        tellPercent(comparison.rows.front().levels, comparison.rows.back().levels);
        const int done = static_cast<int>(comparison.rows.size());
        comparison.cancelled = progress && !progress(done, static_cast<int>(total));
        return !comparison.cancelled;
    };
    for (const auto rows : {factorRows(), wallRows()}) {
        for (const ComparisonRow& row : rows) {
            if (!add(compareRow(row, told, workspace))) {
                return comparison;
            }
        }
    }
    for (const OwnRow& row : ownRows) {
        if (!add(compareOwnRow(row, request.units, told, workspace))) {
            return comparison;
        }
    }
    return comparison;
}

bool isComparisonRow(std::string_view name) {
    for (const auto rows : {factorRows(), wallRows()}) {
        for (const ComparisonRow& row : rows) {
            if (row.name == name) {
                return true;
            }
        }
    }
    return false;
}

} // namespace korvane
