#include "state/state.h"

namespace korvane {

void fail(State& state, Failure failure) {
    state.failure = failure;
    state.failure.stage = state.stage;
    state.failure.anchored = state.problem->WallType == WallKind::Anchored;
}

} // namespace korvane
