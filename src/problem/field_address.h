// Any number of a problem by a name: the field's as in JSON, its side and its entry, as in
// "SoilFriction.left.1", "WaterElev.right", "HLineLoad.2", "AnchorElev".
#pragma once

#include "problem/fields.h"

#include <string>
#include <string_view>
#include <vector>

namespace korvane {

/// Where a number stands. A field without sides or entries has side Right and row 1.
struct FieldAddress {
    ProblemField field = ProblemField::WallTopElev;
    int side = Right;
    int row = 1; ///< entry, from 1: soil layer, point, load

    bool operator==(const FieldAddress&) const = default;
};

/// An address, or what is wrong with its text and what would be right.
struct ReadAddress {
    FieldAddress address;
    std::string fault; ///< empty where there is an address
};

/// The number that a text names. Whether a problem has it, `absence` tells.
ReadAddress readAddress(std::string_view text);

/// "SoilFriction.left.1"
std::string addressName(const FieldAddress& address);

/// Why a problem has no such number, to stand behind its name: "there are 2 entries"; empty where
/// it has. Numbers that its choices leave unused (coefficients of a side given by strengths) are
/// none of it. Where absent, neither `valueAt` nor `setValueAt` may be called.
std::string absence(const FieldAddress& address, const Problem& problem);

/// Every number of a problem, in the order of the fields.
std::vector<FieldAddress> addressesIn(const Problem& problem);

Quantity quantityOf(const FieldAddress& address);
/// In the units given; the record holds US customary ones.
double valueAt(const Problem& problem, const FieldAddress& address,
               UnitSystem units = UnitSystem::US);
/// No rule is tested: `validate` tells what is wrong with the problem then.
void setValueAt(Problem& problem, const FieldAddress& address, double value,
                UnitSystem units = UnitSystem::US);

/// Those of the names known that are written most like a text, nearest first; at most three.
std::vector<std::string_view> nearestNames(std::string_view text,
                                           const std::vector<std::string_view>& known);

/// "; near it are A, B, C", or nothing where none is near.
std::string nearestText(std::string_view text, const std::vector<std::string_view>& known);

} // namespace korvane
