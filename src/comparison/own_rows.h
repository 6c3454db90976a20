// Rows of a comparison of one's own, from a TOML file. Such a file:
//
//     units = "si"                     # of the values; default those of the input
//
//     [[row]]
//     name = "loose sand"
//     SoilFriction.left.1 = 28         # a number of the problem by its address
//     "SoilFriction.right.1" = 28
//
//     [[row]]
//     name = "light soil, more load"
//     multiply = { SoilMoistWeight.right.1 = 0.95 }
//     add = { VUniformLoad.right = 5 }
//
//     [[row]]
//     name = "both slopes of the surface"
//     amendments = ["surface-limit", "surface-slope"]
#pragma once

#include "problem/field_address.h"
#include "state/amendments.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace korvane {

struct FieldChange {
    enum class Kind { Set, Add, Multiply };
    FieldAddress address;
    Kind kind = Kind::Set;
    double value = 0; ///< of Set and Add in the units of the row

    bool operator==(const FieldChange&) const = default;
};

struct OwnRow {
    std::string name;
    std::optional<UnitSystem> units = {}; ///< without them those of the input
    std::vector<FieldChange> changes = {};
    Amendments amendments = {};
};

/// The rows of a file, or its first fault: what is wrong, and what is known instead.
struct ReadOwnRows {
    std::vector<OwnRow> rows = {};
    int line = 0; ///< of the fault, from 1
    std::string fault = {};
};
ReadOwnRows readOwnRows(std::string_view text);

/// Applies a change; `units` are those of its value. False where the problem has no such number.
bool applyChange(const FieldChange& change, UnitSystem units, Problem& problem);

} // namespace korvane
