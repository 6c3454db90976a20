// The same wall under other factors of safety, methods, supports and water: one row each, with its
// difference to the told solution or the reason why there is none.
//
//     Workspace workspace;
//     const Comparison comparison = compareWall({problem, options}, workspace);
#pragma once

#include "comparison/own_rows.h"
#include "solution/solution.h"

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace korvane {

/// The values of a level that are compared.
enum class ComparedValue {
    Penetration,
    Length, ///< from the wall's top to its bottom
    AnchorForce,
    MaxMoment,
    MaxShear,
    MaxDeflection,
    FactorOfSafety,
};
inline constexpr std::size_t ComparedValueCount =
    static_cast<std::size_t>(ComparedValue::FactorOfSafety) + 1;
using ComparedValues = std::array<std::optional<double>, ComparedValueCount>;

/// A level of a row. Units as in LevelResult.
struct ComparedLevel {
    SolutionMethod method = SolutionMethod::Cantilever;
    ComparedValues values; ///< nothing where a value does not apply
    /// To the told solution's level of the same number, of extremes by their sizes; nothing where
    /// there is none or where it is 0.
    ComparedValues percent;

    std::optional<double> value(ComparedValue which) const {
        return values[static_cast<std::size_t>(which)];
    }
    std::optional<double> percentOf(ComparedValue which) const {
        return percent[static_cast<std::size_t>(which)];
    }
};

struct ComparedRow {
    std::string name;  ///< stable: "passive-1.5"
    std::string title; ///< "passive factor 1.5"
    /// Why the row has no result: "not-applicable" or the name of a failure, and words for it.
    std::string code = {};
    std::string reason = {};
    std::vector<ComparedLevel> levels = {}; ///< of a failure those that were solved before it
};

struct Comparison {
    std::vector<ComparedRow> rows; ///< the first one is the wall as given
    bool cancelled = false;        ///< later rows were not worked out
};

/// What is compared. Questions of the told run are not asked again: a search for a factor of safety
/// ends where `options` say without them.
struct ComparisonRequest {
    const Problem& problem;
    const Options& options; ///< of the told run
    const std::vector<OwnRow>* ownRows = nullptr;
    UnitSystem units = UnitSystem::US; ///< of own rows that name none
};

/// Is told after each row how many are done of how many; false ends the comparison.
using ComparisonProgress = std::function<bool(int done, int total)>;

/// Solves the wall once a row. A fault of memory is thrown; every other one is the row's reason.
Comparison compareWall(const ComparisonRequest& request, Workspace& workspace,
                       const ComparisonProgress& progress = {});

} // namespace korvane
