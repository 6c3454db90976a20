// Rowe's moment reduction for sheet pile walls in sand and clay.
#pragma once

#include "state/results.h"

#include <optional>

namespace korvane {

/// The left side's soil along a wall solved by the free earth method: sand or clay by its first
/// layer, None for neither (soil given by coefficients is neither); nothing where both friction and
/// cohesion occur, so that no section table is asked for.
std::optional<RoweSoil> soilForReduction(const Problem& problem, const Results& results);

/// The reduction for a table of sections; `soil` is None where there is nothing to report. Faults
/// are RuntimeErrors.
MomentReduction reduceMoments(const Problem& problem, const Results& results,
                              const PileSections& sections);

/// Rowe's flexibility number log10(H^4 / EI): wall height in FT, moment of inertia in IN^4 per foot
/// of wall, modulus of elasticity in PSI; feet and inches are not brought together, as in Rowe's
/// curves. RuntimeError 11 or 5 where EI is not above zero.
double pileLogRigidity(double height, double inertia, double modulus);

} // namespace korvane
