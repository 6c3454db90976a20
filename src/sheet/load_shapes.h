// The loads on the ground and on the wall as shapes of a figure, and what their labels say.
#pragma once

#include "problem/problem.h"
#include "problem/quantities.h"
#include "sheet/svg.h"

#include <string>
#include <vector>

namespace korvane::sheet {

/// A value with its unit as a figure tells it: "1200.0 LB/FT", "19.000 kN/m³".
std::string figureText(Quantity quantity, double value, UnitSystem units);

/// What stands at a place of a load.
struct LoadLabel {
    double distance = 0; ///< FT from the wall
    std::string text;
};

/// A vertical load on the ground of a side.
struct GroundLoad {
    bool isLine = false;
    /// (distance FT, PSF) from the wall outward; of a line load its distance alone.
    std::vector<SvgPoint> profile;
    std::vector<LoadLabel> labels;
    int track = 0; ///< loads of one track do not overlap; 0 lies on the ground

    double from() const { return profile.front().x; }
    double to() const { return profile.back().x; }
    /// PSF at a distance within the profile; of equal distances the outer value.
    double intensityAt(double distance) const;
};

/// The loads of a side that reach into the view, cut at `reach`, with their tracks. A load beyond
/// it comes as a label at the edge.
std::vector<GroundLoad> groundLoads(const Problem& problem, int side, double reach,
                                    UnitSystem units);

/// The tracks that loads take.
int trackCount(const std::vector<GroundLoad>& loads);

/// PSF, the largest distributed load of all.
double largestIntensity(const std::vector<GroundLoad>& loads);

} // namespace korvane::sheet
