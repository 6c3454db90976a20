// A finished study as its report takes it: the file of rows, the study that made them, the base.
#pragma once

#include "study/store.h"

#include <cstdint>
#include <string>
#include <vector>

namespace korvane::study {

/// Variants that ended alike, whatever their numbers.
struct Ending {
    std::string outcome;
    std::string reason;  ///< with "…" for its numbers where they differ
    std::string example; ///< the reason of the first one
    std::uint64_t count = 0;
    std::uint64_t first = 0; ///< id
};

/// The probability of a limit state at a value of the variable along which it is asked.
struct FragilityPoint {
    double value = 0;
    double probability = 0;
    double low = 0; ///< of its interval of 95 %
    double high = 0;
};

/// DIR/results.sqlite with what is asked of it again and again. StoreFault where there is none, or
/// where it is damaged, not finished or of another version.
struct FinishedStudy {
    explicit FinishedStudy(const std::string& folder);
    FinishedStudy(const FinishedStudy&) = delete;
    FinishedStudy& operator=(const FinishedStudy&) = delete;

    Store store;
    Study study;
    std::vector<Statistic> statistics;
    std::uint64_t rows = 0;
    /// Of variants without a solution, most frequent first, `MostEndings` of them at the most.
    std::vector<Ending> endings;
    std::uint64_t lost = 0; ///< variants without a solution

    PileSections sections;
    Workspace workspace;
    Solved base;                     ///< the base as it stands, solved
    std::vector<double> baseOutputs; ///< by column, in the study's units; NaN where there is none

    /// Null where there is none.
    const Statistic* find(const std::string& subject, const std::string& name) const;
    /// Its value; NaN where there is none.
    double value(const std::string& subject, const std::string& name) const;
    /// The curve of a limit state, by rising value.
    std::vector<FragilityPoint> fragility(const std::string& limit) const;
    /// Columns for plots: numbers of levels, without the elevations of extremes.
    std::vector<std::size_t> plotted() const;
    /// Indices of the variables with distributions.
    std::vector<std::size_t> random() const;
    /// What a query for rows of the wall's own distribution is limited to: " WHERE ..."; of a
    /// sensitivity the first sample, as the others share coordinates with it.
    std::string drawnRows() const;
};

inline constexpr std::size_t MostEndings = 12;

/// "13.84": four significant digits.
std::string told(double value);
/// "penetration (FT)".
std::string titleOf(const OutputColumn& column, UnitSystem units);
std::string titleOf(const Variable& variable, UnitSystem units);
/// "13.84 FT".
std::string toldWithUnit(double value, const OutputColumn& column, UnitSystem units);
std::string toldWithUnit(double value, const Variable& variable, UnitSystem units);

} // namespace korvane::study
