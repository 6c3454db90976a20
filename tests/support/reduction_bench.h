// A wall on which the moment reduction can be worked by hand.
#pragma once

#include "rowe/moment_reduction.h"
#include "support/result_bench.h"

#include <optional>

namespace korvane::test {

/// Wall from 10 to 0, so that H^4 is 1E4; anchor at 8 (BETA .2), left surface at 2 (ALPHA .8).
/// Sections of E = 1E6 PSI: "STIFF" with I 10 IN^4 (x = -3), "SOFT" with I 1 IN^4 (x = -2); the
/// free earth moment of -24,000 LB-FT makes their ratios 1 and .5.
struct ReductionBench : ResultBench {
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
        results.levelCount = 2;
        setElevations(lastGrid(), {10, 8, 2, 0, -100000});
        freeEarth().bottomElev = 0;
        freeEarth().diagrams.MaxMoment.value = -24000;
        for (int layer = 1; layer <= 11; ++layer) {
            freeEarth().layers(Left, layer).fsPassive = 1;
        }

        sections.PileSectionCount = 2;
        sections.PileName(1) = "STIFF";
        sections.PileName(2) = "SOFT";
        for (const int p : {1, 2}) {
            sections.PileSectionData(p, 1) = p == 1 ? 12 : 6;
            sections.PileSectionData(p, 2) = p == 1 ? 10 : 1;
            sections.PileAllowStress(p) = 24000;
            sections.PileModulus(p) = 1e6;
        }
    }

    LevelResult& freeEarth() { return results.levels(1); }
    /// The grid that the overburden stands on, of the level solved last.
    ElevationGrid& lastGrid() { return results.levels(2).solved.grid; }
    void reduce() { reduction = reduceMoments(problem, results, sections); }
    /// Nothing where no sections are asked for.
    std::optional<RoweSoil> soil() const { return soilForReduction(problem, results); }
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
