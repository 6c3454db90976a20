// Boxes that the desktop program and the batch command tell alike.
#pragma once

#include "commands/prompts.h"
#include "problem/input_reader.h"
#include "runtime/runtime_error.h"
#include "state/failure.h"

#include <string>

namespace korvane {

/// Asks whether to go on with a file of `size` bytes where that is too short to be complete.
bool goOnWithFile(Prompts& prompts, const std::string& name, std::size_t size);

/// Tells what the reader found, be it that nothing is wrong. True where the problem is complete.
bool tellReading(Prompts& prompts, const std::string& name, const ReadResult& result);

/// Tells why a solution has ended, unless its user knows.
void tellFailure(Prompts& prompts, const Failure& failure);

/// Tells a fault of a file or printer.
void showFileError(Prompts& prompts, const RuntimeError& fault);

/// Tells which files of its own this thread could not remove, if there are any.
void tellFilesLeft(Prompts& prompts);
/// Likewise on standard error, behind the program's name, where no box can be shown.
void printFilesLeft(const char* program) noexcept;

} // namespace korvane
