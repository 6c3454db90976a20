#include "study/design_depth.h"

#include "state/tolerances.h"

namespace korvane::study {

void makeDesign(const Problem& analysed, Problem& design) {
    // An analysis looks for one factor for both pressures or for the passive one; it takes active
    // factors up to this for none.
    const bool one = analysed.FSKind == FactorKind::OneForBoth || analysed.FSActive <= NoFactor;
    design = analysed;
    design.ProgramMode = Mode::Design;
    design.FSPassive = 1;
    design.FSActive = one ? 1 : analysed.FSActive;
    for (const int side : {Right, Left}) {
        design.Level2FSPassive(side) = 0;
        design.Level2FSActive(side) = one ? 0 : analysed.Level2FSActive(side);
        for (int layer = 1; layer <= analysed.SoilLayerCount(side); ++layer) {
            design.SoilFSPassive(side, layer) = 0;
            design.SoilFSActive(side, layer) = one ? 0 : analysed.SoilFSActive(side, layer);
        }
    }
}

} // namespace korvane::study
