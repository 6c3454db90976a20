// The rows of a comparison as data: what each changes of the told run, and where it applies.
#pragma once

#include "solution/solution.h"

#include <span>
#include <string>
#include <string_view>

namespace korvane {

/// The told run with the changes of a row.
struct Variant {
    Problem problem;
    Options options;
    double depthFactor = 1; ///< times the penetration that the solution has
    int level = 0;          ///< the one that counts; 0 all
};

struct ComparisonRow {
    std::string_view name; ///< stable
    std::string_view title;
    double value; ///< of the change: a factor
    /// Why the row does not apply to a told run; empty where it does.
    std::string (*reason)(const Variant& told, double value);
    void (*change)(Variant& variant, double value);
};

/// All rows in their order; the first one changes nothing.
std::span<const ComparisonRow> factorRows(); ///< factors on strengths, coefficients, depth
std::span<const ComparisonRow> wallRows();   ///< support, methods, amendments, water

/// True for the name of a row.
bool isComparisonRow(std::string_view name);

/// The control data's factors of a design become `active` and `passive`; those of sides and layers
/// go. An analysis searches its own: only a given active factor is set.
void setFactors(Problem& problem, double active, double passive);

/// True where both sides are given by pressure coefficients.
bool hasCoefficientsAlone(const Problem& problem);

} // namespace korvane
