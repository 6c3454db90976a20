#include "problem/problem.h"

namespace korvane {

void clearProblemData(Problem& problem) {
    problem.NumHeadingLines = 0;
    problem.FSActive = 1.0;
    problem.FSPassive = 1.5;

    problem.Level2FSActive.fill(0);
    problem.Level2FSPassive.fill(0);
    problem.SoilFSActive.fill(0);
    problem.SoilFSPassive.fill(0);
    for (auto* count : {&problem.SurfacePointCount, &problem.SoilLayerCount, &problem.VLineCount,
                        &problem.VUniformCount, &problem.VStripCount, &problem.VRampCount,
                        &problem.VTriCount, &problem.VVarCount}) {
        count->fill(0);
    }
    problem.SoilDataKind.fill(SoilData::None);

    problem.WaterDataKind = WaterData::None;
    problem.SeepageKind = Seepage::None;
    problem.HLineCount = 0;
    problem.HDistCount = 0;
}

} // namespace korvane
