// What the session calls its problem: in the window's title, at rest after a solution, on prints.
#pragma once

#include "commands/session.h"

#include <string>

namespace korvane {

/// Input that no file of the user's holds: what New, Open and Exit ask about.
bool hasUnsavedInput(const Session& session);

/// "wall.dat* (metric file) - KORVANE", with the star while there is unsaved input and the remark
/// where the file has metric numbers; "KORVANE" without a problem.
std::string titleText(const Session& session);

/// Name of the problem's file without folder and extension, for names made of it; "wall" for a
/// problem without a file.
std::string problemStem(const Session& session);

/// Title of a printed document: the file's name and the first heading line.
std::string documentTitle(const Session& session);

/// The main window's line. At rest that the file is metric, and of the solution at hand wall,
/// method, bottom (FT) and bending moment (LB-FT); there and at the stops of a solution how many
/// notes there are; and that unsaved data have no recovery copy. Empty where there is nothing to
/// tell.
std::string statusLine(const Session& session);

} // namespace korvane
