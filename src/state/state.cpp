#include "state/state.h"

namespace korvane {

void failSolution(State& state, const MessageBox& box) {
    state.SolutionFailed = 1;
    state.prompts.Ask(box);
}

} // namespace korvane
