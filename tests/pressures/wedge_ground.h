// Ground for the wedge methods in tests: built by hand or drawn at random, and a second way to work
// out what lies on a piece of plane.
#pragma once

#include "support/pressure_bench.h"

#include <cstdint>
#include <utility>
#include <vector>

namespace korvane::test {

/// A repeatable source of random numbers, the same with every library.
class Dice {
  public:
    explicit Dice(std::uint64_t seed) : state_(seed * 2654435769U + 88172645463325252U) {}

    /// Evenly drawn from low to high.
    double between(double low, double high) { return low + (high - low) * unit(); }
    int whole(int low, int high) { return low + static_cast<int>(unit() * (high - low + 1)); }
    bool chance(double share) { return unit() < share; }

  private:
    double unit() {
        state_ ^= state_ << 13;
        state_ ^= state_ >> 7;
        state_ ^= state_ << 17;
        return static_cast<double>(state_ >> 11) * 0x1p-53;
    }
    std::uint64_t state_;
};

/// A problem with its wedge regions, grid and water. The plain cantilever until a test changes it:
/// right ground at 0, left ground at -10, dry sand of 120 PCF and 30 degrees, factors 1.
struct WedgeBench : PressureBench {
    WedgeBench() { setFactors(1, 1); }

    /// Regions, grid and water of both sides, and the number of surcharges.
    void buildGround(int level = 1);
    /// Pressures of one side by "S" or "F".
    void press(PressureMethod method, int side = Right, int level = 1);

    void setGround(int side, const std::vector<std::pair<double, double>>& points);
    /// Layer bottoms at the wall with their slopes; the strengths are those of the first layer.
    void setLayers(int side, const std::vector<std::pair<double, double>>& bottoms);
    void setWater(double right, double left, double unitWeight = 60);
    /// A given gradient with the elevation at which seepage starts on the right.
    void setSeepage(double elevation, double gradient);

    /// Soil and loads of a side as they are now.
    WedgeSide described(int side, int level = 1) const;
    double weight(int side, double x1, double y1, double x2, double y2, int layer) const;
};

/// Ground and layers of one side, seen point by point instead of as polygons.
class PointGround {
  public:
    PointGround(const State& state, int side, int level)
        : state_(state), problem_(*state.problem), side_(side), level_(level) {}

    double surface(double x) const;
    double boundary(int b, double x) const {
        return problem_.SoilBottomElev(side_, b) + problem_.SoilBottomSlope(side_, b) * x;
    }
    /// False from where a boundary has come to the ground for the first time.
    bool boundaryExists(int b, double x) const;
    /// The layer at a point below the ground.
    int layerAt(double x, double y) const;
    /// PCF at a point, as the load on a plane in `planeLayer` takes it.
    double unitWeight(double x, double y, int planeLayer) const;
    /// Weight of the soil above a piece of plane by `slices` vertical slices.
    double slicedWeight(double x1, double y1, double x2, double y2, int layer, int slices) const;
    /// PSF of the distributed surcharges at a distance.
    double surchargeAt(double x) const;

  private:
    const State& state_;
    const Problem& problem_;
    int side_;
    int level_;
};

/// Broken ground, 1 to 4 layers, strengths, perhaps water, seepage and surcharges on both sides, in
/// reach of a 20 FT wall. Layer boundaries never cross one another. `slopingLayers` false keeps
/// them level.
void drawWedgeProblem(WedgeBench& bench, Dice& dice, bool slopingLayers);

} // namespace korvane::test
