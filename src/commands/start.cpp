// The start of the program and its empty problem.
#include "commands/commands.h"

#include "problem/input_writer.h"
#include "rowe/pile_sections.h"
#include "runtime/file_text.h"
#include "runtime/number_text.h"
#include "runtime/run_guarded.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>

namespace korvane {

namespace {

namespace fs = std::filesystem;

constexpr const char* tempVariable = "temp";

/// The system's folder for temporary files, though an environment variable that the library reads
/// is empty or names no folder.
std::string systemTemporaryFolder() {
    std::error_code failure;
    const fs::path folder = fs::temp_directory_path(failure);
    return failure ? P_tmpdir : folder.string();
}

} // namespace

void provideTempVariable() {
    if (std::getenv(tempVariable) != nullptr) {
        return;
    }
    for (const char* other : {"TEMP", "TMP", "TMPDIR"}) {
        const char* folder = std::getenv(other);
        if (folder != nullptr && *folder != '\0') {
            setenv(tempVariable, folder, 0);
            return;
        }
    }
    setenv(tempVariable, systemTemporaryFolder().c_str(), 0);
}

void startSession(Session& session) {
    SetTempFolder(session);
    LoadPileDefaults(session.sections);
    ClearProblem(session);
    Menus& menus = session.menus;
    menus.edit.enabled = true;
    menus.editData = {"&Enter Input data", true};
    menus.view.enabled = false;
    menus.solve.enabled = false;
    menus.saveInput.enabled = false;
    session.panels = {};
}

void SetTempFolder(Session& session) {
    const char* value = std::getenv(tempVariable);
    const std::string name = trimmed(value == nullptr ? "" : value);
    std::error_code ignored;
    if (!fs::is_directory(name, ignored)) {
        throw RuntimeError(76, name);
    }
    session.files.TempFolder = fs::absolute(name).string();
    session.CurrentFolder = session.files.TempFolder;
    session.DialogFolder = session.files.TempFolder;
}

void ClearProblem(Session& session) {
    clearProblemData(session.problem);
    session.SolutionFailed = 0;
    session.HeadContDataValid = 0;
    session.DataChanged = 0;
    session.sections.PileSectionCount = 0;
    session.files.ScratchFileCount = 8; // the first eight places of the list stay empty
    session.files.ScratchFileList.fill("");
    session.report = {};
    session.notes = {};
    session.wedge.reset();

    session.FileLineCount = 0;
    session.inputFileStale = false;
    session.InputSavedFlag = 0;
    session.OutputSavedFlag = 0;
    session.InputFileName.clear();
    session.CurrentInputName.clear();
    session.ProblemFile.clear();
    session.fileUnits = UnitSystem::US;
    session.SavedOutputName.clear();

    Menus& menus = session.menus;
    menus.newProblem.enabled = true;
    menus.open.enabled = true;
    menus.save.enabled = false;
    menus.print.enabled = false;
    menus.editData.caption = "&Enter Input Data";
    menus.view.enabled = false;
    enableProblemViews(menus, false);
    disableResults(menus);
    menus.solve.enabled = false;
}

bool hasRescueData(const Session& session) {
    return !session.readingInput && session.problem.NumHeadingLines > 0;
}

std::string rescueInput(const Session& session) {
    const Problem& problem = session.problem;
    if (!hasRescueData(session)) {
        return {};
    }
    std::string kept;
    runGuarded([&] {
        for (int number = 0; kept.empty(); ++number) {
            const fs::path name = fs::path(session.files.TempFolder) /
                                  ("KORVANE-RESCUE-" + std::to_string(number) + ".dat");
            if (!createExclusively(name)) {
                continue;
            }
            if (const auto fault = runGuarded([&] { rewriteFile(name, inputFileText(problem)); })) {
                removeOwnFile(name); // no file that holds half
                throw RuntimeError(*fault);
            }
            kept = name.string();
        }
    });
    return kept;
}

} // namespace korvane
