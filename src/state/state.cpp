#include "state/state.h"

namespace korvane {

void fail(State& state, Failure failure) {
    state.failure = failure;
    const Stage& stage = state.stage;
    state.failure.stage = stage;
    state.failure.side = failure.side != 0 ? failure.side : stage.side;
    state.failure.level = failure.level != 0 ? failure.level : stage.level;
    state.failure.anchored = state.problem->WallType == WallKind::Anchored;
}

} // namespace korvane
