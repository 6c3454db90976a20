// Notes as lines of text, for the batch command and for windows.
#pragma once

#include "notes/notes.h"
#include "state/message_box.h"

namespace korvane {

/// "unsafe: The anchor force is 0 LB/FT: ... (anchor-force)".
std::string noteLine(const Note& note);

/// "1 unsafe, 2 cautions, 6 remarks"; "no notes".
std::string notesSummary(const std::vector<Note>& notes);

/// All notes with their sources, for a window or a printer: lines parted by one line feed, none
/// longer than `width` characters.
std::string notesText(const std::vector<Note>& notes, std::size_t width = 78);

/// The unsafe notes of `now` that are not in `before`: those that a person must be told. Two notes
/// are one where code, side, layer and text agree.
std::vector<Note> newUnsafeNotes(const std::vector<Note>& now, const std::vector<Note>& before);

/// The box that tells such notes.
MessageBox notesBox(const std::vector<Note>& notes);

} // namespace korvane
