// The table of sheet pile sections as typed on its screen.
#pragma once

#include "state/message_box.h"
#include "state/results.h"

#include <array>
#include <string>
#include <string_view>

namespace korvane {

/// The texts that the two default fields show.
inline constexpr const char* DefaultAllowStressText = "24.0E3"; ///< PSI
inline constexpr const char* DefaultModulusText = "29.0E6";     ///< PSI

/// One additional section as typed.
struct PileEntry {
    std::string name;
    std::string sectionModulus; ///< IN^3 per foot of wall
    std::string inertia;        ///< IN^4 per foot of wall
    std::string allowStress;    ///< PSI
    std::string modulus;        ///< PSI
};

/// Gives the default sections the stress and the modulus of the two default fields; false where
/// one of them is invalid: the stress must be a number above zero, the modulus a number of any
/// sign.
bool acceptDefaultTexts(PileSections& sections, std::string_view allowStress,
                        std::string_view modulus);

/// Adds the rows up to the first without a name to the default sections. False at the first value
/// that is not a number above zero; the count and the values before it then stand, and the caller
/// offers to correct the row or goes back to LoadPileDefaults.
bool addSections(PileSections& sections, const std::array<PileEntry, 5>& rows);

/// The box of an invalid value: OK continues the entry, Cancel returns to the defaults.
MessageBox invalidSectionsBox();

} // namespace korvane
