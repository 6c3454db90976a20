// Notes in the JSON of an input.
#pragma once

#include "notes/notes.h"
#include "runtime/json_text.h"

namespace korvane::batch {

/// Writes the array of notes, numbers in the units given.
void writeNotes(JsonText& json, const std::vector<Note>& notes, UnitSystem units);

} // namespace korvane::batch
