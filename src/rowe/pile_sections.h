// The table of sheet pile sections.
#pragma once

#include "state/state.h"

#include <string>

namespace korvane {

/// The texts that the two default fields show.
inline constexpr const char* DefaultAllowStressText = "24.0E3"; ///< PSI
inline constexpr const char* DefaultModulusText = "29.0E6";     ///< PSI

/// Loads the eight default sections and clears places 9 to 13.
void LoadPileDefaults(RoweData& rowe);

/// Stress and modulus (PSI) of the eight default sections.
void acceptDefaults(RoweData& rowe, double allowStress, double modulus);

} // namespace korvane
