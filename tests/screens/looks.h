// Every screen in every state, for the tests of the layout and for pictures.
#pragma once

#include "desk.h"

#include <functional>
#include <string>
#include <vector>

namespace korvane::test {

struct Look {
    std::string name;
    std::function<void(Desk&)> reach;
};

std::vector<Look> allLooks();

/// A problem with something in every section.
Problem fullProblem();

} // namespace korvane::test
