// Net water pressures and the seepage values.
#pragma once

#include "state/state.h"

namespace korvane {

/// Fills WaterPressures (PSF, right less left) on the present grid with the seepage of `level`.
void ComputeWaterPressures(State& state, int level);

/// The lower of the left water and the left surface at the wall (FT): where seepage leaves the
/// soil.
double seepageExitElev(const Problem& problem);

/// The head that seepage uses up (FT): right less left water elevation.
double seepageHead(const Problem& problem);

/// The seepage gradient (FT/FT) of a wall with its bottom at `bottomElev` (FT): head over the flow
/// path down the right face and up the left one. RuntimeError 11 where there is no path.
double seepageGradientForBottom(const Problem& problem, double bottomElev);

/// Sets SeepageGradient(level) for a wall bottom (FT), cut to SeepageGradientLimit, and
/// SeepageEndElev(level) to match.
void setSeepageForBottom(State& state, int level, double bottomElev);

/// The elevation (FT) at which seepage with `gradient` has used up the head.
double seepageEndElevation(const Problem& problem, double gradient);

} // namespace korvane
