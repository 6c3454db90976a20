#include "commands/wall_notes.h"

#include "commands/commands.h"
#include "commands/problem_name.h"
#include "notes/note_texts.h"
#include "runtime/run_guarded.h"

namespace korvane {

namespace {

std::vector<Note> workOut(Session& session) {
    const ProblemNotes& notes = session.notes;
    const NoteRequest request{
        .problem = session.problem, .units = session.units, .read = &notes.remarks};
    return notesOnSolution(request, notes.solved, notes.options, session.secondSolves);
}

/// Walls are solved once more, which may take a moment.
std::optional<RuntimeError> workOutBusily(Session& session, Desktop& desktop,
                                          std::vector<Note>& list) {
    desktop.SetBusy(true);
    auto fault = runGuarded([&] { list = workOut(session); });
    desktop.SetBusy(false);
    return fault;
}

const char* whatIsNoted(const Solved& solved) {
    return solved.failure              ? "Notes on the input and the failed solution: "
           : solved.results != nullptr ? "Notes on the input and the solution: "
                                       : "Notes on the input: ";
}

} // namespace

void takeNotes(Session& session, Desktop& desktop) {
    ProblemNotes& notes = session.notes;
    std::vector<Note> list;
    notes.fault = workOutBusily(session, desktop, list).has_value();
    notes.taken = !notes.fault;
    notes.units = session.units;
    notes.list = std::move(list);
}

void tellUnsafeNotes(Session& session, Desktop& desktop) {
    ProblemNotes& notes = session.notes;
    const std::vector<Note> fresh = newUnsafeNotes(notes.list, notes.told);
    if (session.stage == FlowStage::Finished) {
        notes.told = newUnsafeNotes(notes.list, {}); // one that goes and comes back is new
    } else {
        notes.told.insert(notes.told.end(), fresh.begin(), fresh.end());
    }
    if (!fresh.empty()) {
        desktop.Mirror(session);
        desktop.Ask(notesBox(fresh));
    }
}

void forgetSolution(ProblemNotes& notes, bool changed) {
    notes.solved = {};
    notes.options = {};
    notes.taken = false;
    notes.fault = false;
    notes.list.clear();
    if (changed) {
        notes.remarks.clear();
    }
}

std::string notesRemark(const Session& session) {
    const ProblemNotes& notes = session.notes;
    if (notes.fault) {
        return "the notes could not be worked out";
    }
    if (!notes.taken) {
        return {};
    }
    return notes.list.empty() ? notesSummary(notes.list) : "notes: " + notesSummary(notes.list);
}

std::vector<Note> notesInUnits(Session& session, Desktop& desktop) {
    const ProblemNotes& notes = session.notes;
    std::vector<Note> list = notes.list;
    if (!notes.taken || notes.units != session.units) {
        if (const auto fault = workOutBusily(session, desktop, list)) {
            throw RuntimeError(*fault);
        }
    }
    return list;
}

TextView notesView(Session& session, Desktop& desktop) {
    const std::vector<Note> list = notesInUnits(session, desktop);
    const std::string title = documentTitle(session);
    return {"NOTES", title + "\n" + whatIsNoted(session.notes.solved) + notesSummary(list) +
                         "\n\n" + notesText(list)};
}

} // namespace korvane
