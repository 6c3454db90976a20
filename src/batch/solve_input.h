// One input of the batch command, from the file to its report.
#pragma once

#include "batch/options.h"
#include "solution/solution.h"
#include "state/message_box.h"

#include <string>
#include <vector>

namespace korvane::batch {

/// A box that came up, and how it was answered.
struct Message {
    MessageBox box;
    Answer answer = Answer::Ok;
};

struct Outcome {
    int status = StatusSolved;
    std::vector<Message> messages;
    std::string during; ///< what was being done where there are no results: "reading the input"
    std::string report; ///< only where it goes to standard output
};

/// Reads and solves one input as the desktop program would and writes its report (JSON and figures
/// too). Every fault ends as a message and a status. No file but the outputs is made.
Outcome solveInput(const Job& job, const Options& options, Workspace& workspace);

/// A message as one line of the error output: "INPUT: [TITLE] text", its lines joined by " / ".
std::string messageLine(const std::string& input, const Message& message);

} // namespace korvane::batch
