// The notes, as an experienced colleague would say them.
#include "sheet/sections.h"

namespace korvane::sheet {

namespace {

constexpr int NotesNumber = 7;

std::string opinionText(const SheetWriter& writer, const SecondOpinion& second) {
    if (second.levelCount == 0) {
        return "Solved once more without it: no results (" +
               std::string(failureName(second.failure.code)) + ").";
    }
    std::string text = "Solved once more without it: ";
    for (int i = 1; i <= second.levelCount; ++i) {
        const SecondLevel& level = second.levels(i);
        text += i > 1 ? "; " : "";
        text += std::string(solutionMethodName(level.method)) + " penetration " +
                writer.withUnit(Quantity::Length, level.penetration) + ", largest moment " +
                writer.withUnit(Quantity::Moment, level.maxMoment);
    }
    return text + ".";
}

void writeNote(SheetWriter& writer, const Note& note) {
    const char* severity = severityName(note.severity);
    writer.markup(std::string("<div class=\"note ") + severity + "\">\n");
    writer.markupParagraph("<strong>" + escaped(severity) + "</strong> (" + escaped(note.code) +
                           "): " + escaped(note.text));
    if (note.second) {
        writer.paragraph(opinionText(writer, *note.second));
    }
    if (!note.source.empty()) {
        writer.markupParagraph("<small class=\"soft\">" + escaped(note.source) + "</small>");
    }
    writer.markup("</div>\n");
}

} // namespace

void writeNotes(SheetWriter& writer, const SheetRequest& request) {
    writer.section(NotesNumber, "Notes");
    if (request.notes.empty()) {
        writer.paragraph(request.notesWorkedOut
                             ? "There are no notes."
                             : "Notes were not worked out: what is doubtful in this wall is not "
                               "told here.");
    }
    for (const Note& note : request.notes) {
        writeNote(writer, note);
    }
}

} // namespace korvane::sheet
