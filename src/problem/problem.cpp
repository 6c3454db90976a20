#include "problem/problem.h"

#include "problem/loads.h"

namespace korvane {

void clearProblemData(Problem& problem) {
    problem.NumHeadingLines = 0;
    problem.FSActive = 1.0;
    problem.FSPassive = 1.5;

    problem.Level2FSActive.fill(0);
    problem.Level2FSPassive.fill(0);
    problem.SoilFSActive.fill(0);
    problem.SoilFSPassive.fill(0);
    problem.SurfacePointCount.fill(0);
    problem.SoilLayerCount.fill(0);
    for (const LoadRules& load : LoadTable) {
        for (int side = 1; side <= load.sides(); ++side) {
            rulesOf(load.count).at(problem, side) = 0;
        }
    }
    problem.SoilDataKind.fill(SoilData::None);

    problem.WaterDataKind = WaterData::None;
    problem.SeepageKind = Seepage::None;
}

} // namespace korvane
