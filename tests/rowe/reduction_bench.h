// A wall on which the moment reduction can be worked by hand.
#pragma once

#include "rowe/moment_reduction.h"
#include "support/support.h"

#include <fstream>
#include <sstream>

namespace korvane::test {

/// Wall from 10 to 0, so that H^4 is 1E4; anchor at 8 (BETA .2), left surface at 2 (ALPHA .8).
/// Sections of E = 1E6 PSI: "STIFF" with I 10 IN^4 (x = -3), "SOFT" with I 1 IN^4 (x = -2); the
/// free earth moment of -24,000 LB-FT makes their ratios 1 and .5.
struct ReductionBench : Bench {
    ReductionBench() {
        problem.NumHeadingLines = 2;
        problem.HeadingLines(1) = "'QUAY WALL";
        problem.HeadingLines(2) = "'SECTION 2";
        problem.WallTopElev = 10;
        problem.AnchorElev = 8;
        problem.SurfaceElev(Right, 1) = 10;
        problem.SurfaceElev(Left, 1) = 2;
        for (const int side : {Right, Left}) {
            problem.SoilDataKind(side) = SoilData::Strengths;
            problem.SoilLayerCount(side) = 1;
            problem.SoilMoistWeight(side, 1) = 100;
            problem.SoilBottomElev(side, 1) = NoLayerBottom;
        }
        int& NumElevs = state->grid.NumElevs;
        for (const double z : {10, 8, 2, 0, -100000}) {
            state->grid.ElevGrid(++NumElevs) = z;
        }
        state->preparation.LayerFSPassive.fill(1);
        state->solution.SolvedBottomElev(1) = 0;
        state->results.MaxMoment(1) = -24000;
        state->report.CurrentOutputName = (folder->path() / "wall.out").string();

        rowe().PileSectionCount = 2;
        rowe().PileName(1) = "STIFF";
        rowe().PileName(2) = "SOFT";
        for (const int p : {1, 2}) {
            rowe().PileSectionData(p, 1) = p == 1 ? 12 : 6;
            rowe().PileSectionData(p, 2) = p == 1 ? 10 : 1;
            rowe().PileAllowStress(p) = 24000;
            rowe().PileModulus(p) = 1e6;
        }
    }

    RoweData& rowe() { return state->rowe; }
    void reduce() {
        ReduceRoweMoments(*state, [this] { ++shown; });
    }
    /// The output file, empty where there is none.
    std::string report() const {
        std::ifstream file(state->report.CurrentOutputName, std::ios::binary);
        std::ostringstream text;
        text << file.rdbuf();
        return text.str();
    }

    std::unique_ptr<TemporaryFolder> folder = std::make_unique<TemporaryFolder>();
    int shown = 0; ///< how often the sections were shown
};

inline ReductionBench sandBench() {
    ReductionBench bench;
    bench.problem.SoilFriction(Left, 1) = 30;
    return bench;
}

/// 8 FT of 100 PCF above the left surface and 1,600 PSF of cohesion: S = 2.
inline ReductionBench clayBench() {
    ReductionBench bench;
    bench.problem.SoilCohesion(Left, 1) = 1600;
    return bench;
}

} // namespace korvane::test
