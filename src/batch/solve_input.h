// One input of the batch command, from the file to its report.
#pragma once

#include "batch/options.h"
#include "state/prompts.h"

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
    std::string report; ///< only where it goes to standard output
};

/// Opens, solves and continues like a person at the desktop, and writes the report (and the JSON
/// results). Every fault ends as a message and a status. No temporary file is left.
Outcome solveInput(const Job& job, const Options& options);

/// A message as one line of the error output: "INPUT: [TITLE] text", its lines joined by " / ".
std::string messageLine(const std::string& input, const Message& message);

} // namespace korvane::batch
