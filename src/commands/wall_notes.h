// Notes in the desktop program: worked out at the stops of a solution, told and kept for their
// window.
#pragma once

#include "commands/session.h"

#include <string>
#include <vector>

namespace korvane {

/// Works out the notes on the problem and on its solution as far as that has come. What goes wrong
/// stops nothing: there are none then.
void takeNotes(Session& session, Desktop& desktop);

/// One box for the unsafe notes that none has told of this problem yet.
void tellUnsafeNotes(Session& session, Desktop& desktop);

/// All notes in the units chosen: those of the last stop, or worked out now.
std::vector<Note> notesInUnits(Session& session, Desktop& desktop);

/// The problem was entered anew: nothing is solved, and where it has changed the remarks on its
/// file no longer hold.
void forgetSolution(ProblemNotes& notes, bool changed);

/// "notes: 1 unsafe, 2 cautions, 6 remarks" since the last stop of a solution; else empty.
std::string notesRemark(const Session& session);

} // namespace korvane
