// Every screen in every state, for the tests of the layout and for pictures.
#pragma once

#include "desk.h"

#include <functional>
#include <string>
#include <vector>

namespace korvane::test {

struct Look {
    std::string name;
    Problem held; ///< what the screen is opened on
    std::function<void(Desk&)> go;

    void reach(Desk& desk) const {
        desk.problem = held;
        desk.session->HeadContDataValid = held.NumHeadingLines != 0 ? 1 : 0;
        go(desk);
    }
};

std::vector<Look> allLooks();

/// A problem with something in every section.
Problem fullProblem();

} // namespace korvane::test
