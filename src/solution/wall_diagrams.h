// The diagrams of a solved wall from its top down to its bottom, each row in step with the others.
#pragma once

#include "state/results.h"

namespace korvane {

/// The diagrams with the water of every row at its own elevation; reports show it a row behind from
/// a point on that was put in below a zero of the net active pressure.
PressureDiagrams withWaterInStep(const PressureDiagrams& diagrams);

/// Grid and pressures as the level's balance used them, PSF.
///
/// NetPassive is right passive less left active plus water plus horizontal distributed load, below
/// the lower ground the mean of its two values; NetActive likewise, but below a cantilever wall's
/// transition the straight line to the bottom. A row that the solution put in (a zero of net active
/// pressure, the point below it, the transition) has all its values on the straight lines between
/// its neighbours. The last row stands at the level's bottomElev, with values on the straight lines
/// where no grid row stands there.
///
/// `level.solved` has instead what reports and plots show: NetPassive and water a row behind from
/// the transition down, the pressures of the grid row below it at the bottom, and rows below that.
PressureDiagrams wallDiagrams(const LevelResult& level);

} // namespace korvane
