// Speed of the wedge method: the load on one piece of plane, and the forces of one side.
#include "pressures/elevation_grid.h"
#include "pressures/wedge_description.h"
#include "pressures/wedge_forces.h"
#include "pressures/wedge_load.h"
#include "pressures/wedge_pressures.h"
#include "pressures/wedge_regions.h"
#include "state/kept_work.h"
#include "state/state.h"

#include <benchmark/benchmark.h>

#include <memory>

namespace {

using namespace korvane;

/// A wall of 20 FT with broken ground on the right; with `layered`, three layers, water on both
/// sides and seepage.
struct Wall {
    explicit Wall(bool layered) {
        clearProblemData(problem);
        problem.WallType = WallKind::Cantilever;
        problem.ProgramMode = Mode::Design;
        setGround(problem);
        for (const int side : {Right, Left}) {
            problem.SoilDataKind(side) = SoilData::Strengths;
            problem.SoilLayerCount(side) = layered ? 3 : 1;
            for (int layer = 1; layer <= problem.SoilLayerCount(side); ++layer) {
                problem.SoilSatWeight(side, layer) = 122 + 2 * layer;
                problem.SoilMoistWeight(side, layer) = 112 + 2 * layer;
                problem.SoilFriction(side, layer) = 28 + 2 * layer;
                problem.SoilWallFriction(side, layer) = 14;
                state->preparation.LayerFSActive(side, layer, 1) = 1;
                state->preparation.LayerFSPassive(side, layer, 1) = 1.5;
            }
            problem.SoilBottomElev(side, problem.SoilLayerCount(side)) = NoLayerBottom;
            if (layered) {
                problem.SoilBottomElev(side, 1) = -23;
                problem.SoilBottomElev(side, 2) = -31;
                problem.SoilBottomSlope(side, 1) = 0.05;
            }
        }
        if (layered) {
            problem.WaterDataKind = WaterData::Elevations;
            problem.WaterUnitWeight = 62.4;
            problem.WaterElev(Right) = -8;
            problem.WaterElev(Left) = -18;
            problem.SeepageKind = Seepage::Given;
            problem.SeepageElev = -10;
            problem.SeepageGradient(1) = 0.15;
            state->preparation.SeepageKind = problem.SeepageKind;
            state->preparation.SeepageGradient = problem.SeepageGradient;
            state->preparation.SeepageEndElev(1) = -47;
        }
        for (const int side : {Right, Left}) {
            BuildWedgeRegions(*state, side);
            BuildSeepageEndRegions(*state, side, 1);
        }
        BuildElevationGrid(*state, 1);
    }

    static void setGround(Problem& problem) {
        problem.SurfacePointCount(Right) = 4;
        problem.SurfacePointCount(Left) = 2;
        const double rightDist[] = {0, 12, 30, 60};
        const double rightElev[] = {0, 3, 9, 10};
        for (int p = 1; p <= 4; ++p) {
            problem.SurfaceDist(Right, p) = rightDist[p - 1];
            problem.SurfaceElev(Right, p) = rightElev[p - 1];
        }
        problem.SurfaceElev(Left, 1) = -20;
        problem.SurfaceDist(Left, 2) = 40;
        problem.SurfaceElev(Left, 2) = -24;
    }

    Problem problem;
    KeptWork kept;
    std::unique_ptr<State> state = std::make_unique<State>(problem, kept);
};

/// A plane from (0, -30) at 30 degrees from the vertical, up to x = 20: one dry layer.
void WedgeWeightOneLayer(benchmark::State& run) {
    const Wall wall(false);
    const double k = 1.7320508;
    WedgeSide side;
    describeWedgeSide(*wall.state, Right, 1, side);
    for (auto _ : run) {
        benchmark::DoNotOptimize(WedgeWeight(side, -30, k, 0, -30, 20, 1));
    }
}
BENCHMARK(WedgeWeightOneLayer);

/// A piece in the third of three layers, with water and seepage.
void WedgeWeightThirdLayer(benchmark::State& run) {
    const Wall wall(true);
    const double k = 1.7320508;
    WedgeSide side;
    describeWedgeSide(*wall.state, Right, 1, side);
    for (auto _ : run) {
        benchmark::DoNotOptimize(WedgeWeight(side, -45, k, 0, -45, 8, 3));
    }
}
BENCHMARK(WedgeWeightThirdLayer);

/// What stands in front of the planes of each trial.
void DescribeWedgeSide(benchmark::State& run) {
    const Wall wall(true);
    WedgeSide side;
    for (auto _ : run) {
        describeWedgeSide(*wall.state, Right, 1, side);
        benchmark::DoNotOptimize(side.layers.data());
    }
}
BENCHMARK(DescribeWedgeSide);

void SweepOneSide(benchmark::State& run, bool layered, bool surcharge) {
    Wall wall(layered);
    Problem& problem = wall.problem;
    if (surcharge) {
        problem.VStripCount(Right) = 1;
        problem.VStripStart(Right, 1) = 5;
        problem.VStripEnd(Right, 1) = 15;
        problem.VStripLoad(Right, 1) = 250;
        wall.state->preparation.NumSurchargesOnSide(Right) = 1;
    }
    for (auto _ : run) {
        SweepSearchForces(*wall.state, Right, 1);
    }
    run.counters["rows"] = wall.state->grid.NumElevs;
}
BENCHMARK_CAPTURE(SweepOneSide, OneLayer, false, false)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(SweepOneSide, OneLayerStrip, false, true)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(SweepOneSide, LayersSeepage, true, false)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(SweepOneSide, LayersSeepageStrip, true, true)->Unit(benchmark::kMicrosecond);

void FixedSurfaceOneSide(benchmark::State& run) {
    const Wall wall(true);
    for (auto _ : run) {
        benchmark::DoNotOptimize(FixedSurfaceForces(*wall.state, Right, 1));
    }
}
BENCHMARK(FixedSurfaceOneSide)->Unit(benchmark::kMicrosecond);

} // namespace
