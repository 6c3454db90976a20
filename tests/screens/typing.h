// Problems typed through the screens of the whole program.
#pragma once

#include "../shell/person.h"
#include "problem/problem.h"

namespace korvane::test {

/// The person will type a whole problem, from KEYIN to its Finished.
void expectEntry(Person& person, const Problem& problem);

} // namespace korvane::test
