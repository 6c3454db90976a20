// Tolerances that more than one stage of a solution works with.
#pragma once

namespace korvane {

/// FT; computed elevations no farther apart are one point: floating-point noise is no distance.
inline constexpr double SamePoint = 1e-9;

/// FT; elevations of rows and data no farther apart are one elevation where a row is looked up.
inline constexpr double SameElevation = 0.0001;

/// PSF; a pressure, or a step of one, no larger is none.
inline constexpr double PressureNoise = 0.0001;

/// Share of an interval between two breaks of a diagram: a row nearer to the lower one is that.
inline constexpr double BreakShare = 0.0001;

/// An active factor of safety no larger is none: an analysis looks for one factor of both sides.
inline constexpr double NoFactor = 0.0001;

/// FT/FT; the seepage gradient of a design's first pass. At it or below seepage has not been worked
/// out yet.
inline constexpr double StartGradient = 0.0001;

} // namespace korvane
