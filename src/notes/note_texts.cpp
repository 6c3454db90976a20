#include "notes/note_texts.h"

#include <algorithm>

namespace korvane {

namespace {

constexpr std::size_t BoxWidth = 70; ///< characters; a window shows long lines of a box cut off

std::string counted(int count, const char* one, const char* many) {
    return std::to_string(count) + " " + (count == 1 ? one : many);
}

/// Adds words to lines of a width.
void addWrapped(std::string& lines, const std::string& text, std::size_t width) {
    std::size_t column = 0;
    std::size_t start = 0;
    while (start < text.size()) {
        const std::size_t end = std::min(text.find(' ', start), text.size());
        const std::size_t length = end - start;
        if (column > 0 && column + 1 + length > width) {
            lines += "\n";
            column = 0;
        } else if (column > 0) {
            lines += ' ';
            ++column;
        }
        lines.append(text, start, length);
        column += length;
        start = end + 1;
    }
    lines += '\n';
}

bool isSame(const Note& a, const Note& b) {
    return a.code == b.code && a.side == b.side && a.layer == b.layer && a.text == b.text;
}

} // namespace

std::string noteLine(const Note& note) {
    return std::string(severityName(note.severity)) + ": " + note.text + " (" +
           std::string(note.code) + ")";
}

std::string notesSummary(const std::vector<Note>& notes) {
    std::string text;
    const auto add = [&](Severity severity, const char* one, const char* many) {
        if (const int count = countOf(notes, severity); count > 0) {
            text += (text.empty() ? "" : ", ") + counted(count, one, many);
        }
    };
    add(Severity::Unsafe, "unsafe", "unsafe");
    add(Severity::Caution, "caution", "cautions");
    add(Severity::Remark, "remark", "remarks");
    return text.empty() ? "no notes" : text;
}

std::string notesText(const std::vector<Note>& notes, std::size_t width) {
    std::string lines;
    for (const Note& note : notes) {
        addWrapped(lines, noteLine(note), width);
        addWrapped(lines, "Source: " + std::string(note.source) + ".", width);
        lines += '\n';
    }
    return lines;
}

std::vector<Note> newUnsafeNotes(const std::vector<Note>& now, const std::vector<Note>& before) {
    std::vector<Note> fresh;
    for (const Note& note : now) {
        const bool known = std::any_of(before.begin(), before.end(),
                                       [&note](const Note& old) { return isSame(note, old); });
        if (note.severity == Severity::Unsafe && !known) {
            fresh.push_back(note);
        }
    }
    return fresh;
}

MessageBox notesBox(const std::vector<Note>& notes) {
    std::string text;
    for (const Note& note : notes) {
        text += text.empty() ? "" : "\n\n";
        addWrapped(text, note.text, BoxWidth);
        text.pop_back();
    }
    return {.text = text, .title = "NOTES", .buttons = Buttons::Ok, .icon = Icon::Exclamation};
}

} // namespace korvane
