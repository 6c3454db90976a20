// The numbers of a wall that a study may move, with a low and a high one for each to begin with.
#pragma once

#include "problem/field_address.h"

#include <string>
#include <vector>

namespace korvane::study {

/// A number of the wall, in the units asked for.
struct Varying {
    FieldAddress address;
    std::string section; ///< "Soil, right side, layer 1"
    double present = 0;
    double low = 0; ///< below the present number as far as the rules of input files let it
    double high = 0;
    bool hasTwin = false; ///< right side: the left one has the same number at the same place
};

/// Every number of the problem, section by section.
std::vector<Varying> varyingIn(const Problem& problem, UnitSystem units);

/// The same number on the other side.
FieldAddress twinOf(const FieldAddress& address);

/// Which values the rules for the number alone take (FT, PCF ... in the units given).
Limits limitsOf(const Problem& problem, const FieldAddress& address, UnitSystem units);

} // namespace korvane::study
