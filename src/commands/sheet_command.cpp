// The calculation sheet of the desktop program.
#include "commands/command_scope.h"
#include "commands/commands.h"
#include "commands/files.h"
#include "commands/problem_name.h"
#include "commands/wall_notes.h"
#include "runtime/file_text.h"
#include "sheet/sheet.h"

#include <algorithm>
#include <filesystem>

namespace korvane {

namespace {

constexpr SaveDialog SheetDialog{"SAVE CALCULATION SHEET", "Calculation sheets (*.html)|*.html",
                                 nullptr, ".HTML|.HTM"};
constexpr const char* Title = "CALCULATION SHEET";

/// What the title block names as input: the user's file, if there is one.
std::string inputName(const Session& session) {
    const std::string name = std::filesystem::path(session.ProblemFile).filename().string();
    return name.empty() || !hasUnsavedInput(session) ? name : name + ", changed and not saved";
}

CalculationSheet sheetOf(Session& session, Desktop& desktop) {
    const std::vector<Note> notes = notesInUnits(session, desktop);
    return calculationSheet({.problem = session.problem,
                             .sections = session.sections,
                             .solved = session.notes.solved,
                             .options = session.notes.options,
                             .notes = notes,
                             .units = session.units,
                             .inputName = inputName(session)});
}

void tellFailedChecks(const std::vector<Check>& checks, Desktop& desktop) {
    const auto fails = [](const Check& check) { return !check.pass; };
    const auto first = std::find_if(checks.begin(), checks.end(), fails);
    if (first == checks.end()) {
        return;
    }
    const auto count = std::count_if(first, checks.end(), fails);
    desktop.Ask({.text = std::to_string(count) + " of the " + std::to_string(checks.size()) +
                         " checks of the calculation sheet fail, the first:\n" + checkLine(*first) +
                         "\n\nAll stand at the end of the sheet. Please report this with the "
                         "input.",
                 .title = Title,
                 .icon = Icon::Exclamation});
}

} // namespace

void saveSheet(Session& session, Desktop& desktop) {
    runCommand(session, desktop, [&] {
        const std::string file =
            chooseSaveName(session, desktop, SheetDialog, problemStem(session) + ".html");
        if (file.empty()) {
            return;
        }
        const CalculationSheet sheet = sheetOf(session, desktop);
        saveFile(file, sheet.html);
        tellFailedChecks(sheet.checks, desktop);
        if (!desktop.OpenDocument(file)) {
            desktop.Ask({.text = "The calculation sheet is saved:\n" + file +
                                 "\n\nNo program could be started that shows it. Please open it "
                                 "in a browser.",
                         .title = Title,
                         .icon = Icon::Information});
        }
    });
}

} // namespace korvane
