// The quantities that a case can name, each worked out by the code that every solution runs.
#pragma once

#include "solution/solution.h"

#include <optional>
#include <string_view>
#include <vector>

namespace korvane {

/// The wall of a case and what it was solved to.
struct CaseWall {
    Problem problem;
    Workspace workspace;
    bool solved = false;

    const Results& results() const { return workspace.results(); }
    /// The first pressures; those of an analysis have no rows.
    const PressureDiagrams& first() const { return workspace.review().diagrams; }
};

using Arguments = std::vector<double>;

/// A row of the table of quantities. `arguments` has a letter for each: L level, S side, Z depth
/// below the wall's top (FT), N number, F support of a beam ("fixed" 1 or "simple" 0).
struct CaseQuantity {
    const char* name;
    const char* arguments;
    bool ofWall; ///< a wall is needed, which then is not null
    /// The value; nothing where the wall has no such level or no grid row at the depth.
    std::optional<double> (*evaluate)(const CaseWall* wall, const Arguments& a);
};

/// Null where there is no such quantity.
const CaseQuantity* quantityNamed(std::string_view name);

} // namespace korvane
