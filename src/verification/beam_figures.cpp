#include "verification/beam_figures.h"

#include "runtime/runtime_error.h"
#include "state/kept_work.h"
#include "wall/beam.h"

#include <memory>
#include <set>

namespace korvane {

namespace {

constexpr double longest = 290; // FT: so many rows of 1 FT the grid can take
constexpr int freeRotation = 1;
constexpr int fixedRotation = 2;

} // namespace

BeamFigures beamAt(const BeamUnderTriangle& beam, double depth) {
    if (!(beam.length > 0 && beam.length < longest && depth >= 0 && depth <= beam.length)) {
        throw RuntimeError(5);
    }
    std::set<double> rows{depth, beam.length};
    for (int foot = 0; foot < beam.length; ++foot) {
        rows.insert(foot);
    }
    const auto problem = std::make_unique<Problem>();
    const auto kept = std::make_unique<KeptWork>();
    const auto state = std::make_unique<State>(*problem, *kept);
    ElevationGrid& grid = state->grid;
    int at = 0; // the row at the depth
    for (const double z : rows) {
        const int row = ++grid.NumElevs;
        grid.ElevGrid(row) = -z;
        state->net.NetActive(row, 1) = state->net.NetActive(row, 2) = beam.load * z / beam.length;
        at = z == depth ? row : at;
    }
    const int bottom = grid.NumElevs;
    state->solution.SolvedBottomElev(1) = grid.ElevGrid(bottom);
    state->solution.BottomIndex(1) = bottom;
    state->solution.BottomPressure(1) = beam.load;
    const Beam solved =
        SolveBeam(*state, beam.fixed ? 0 : 1, bottom, beam.fixed ? fixedRotation : freeRotation, 1);
    const auto& forces = solved.ElementForces;
    return {.shear = at > 1 ? forces(at - 1, 3) : forces(1, 1),
            .moment = at > 1 ? forces(at - 1, 4) : forces(1, 2),
            .deflection = solved.NodeDisplacement(at, 1),
            .rotation = solved.NodeDisplacement(at, 2)};
}

} // namespace korvane
