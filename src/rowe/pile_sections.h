// The table of sheet pile sections.
#pragma once

#include "state/results.h"

namespace korvane {

inline constexpr double DefaultAllowStress = 24.0E3; ///< PSI, of the sections always there
inline constexpr double DefaultModulus = 29.0E6;     ///< PSI, likewise

/// Sections that are always there.
inline constexpr int DefaultSectionCount = 8;

/// Loads the eight default sections and clears places 9 to 13.
void LoadPileDefaults(PileSections& sections);

/// True where a section stands behind the default ones, in use or offered again.
bool hasAddedSections(const PileSections& sections);

/// Stress and modulus (PSI) of the eight default sections.
void acceptDefaults(PileSections& sections, double allowStress, double modulus);

} // namespace korvane
