#include "state/state.h"

#include <utility>

namespace korvane {

void failSolution(State& state, MessageBox box) {
    state.SolutionFailed = 1;
    state.prompts.Ask(std::move(box));
}

} // namespace korvane
