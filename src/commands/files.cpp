#include "commands/files.h"

#include "commands/command_scope.h"
#include "commands/recent_files.h"
#include "commands/recovery.h"
#include "commands/told_boxes.h"
#include "problem/input_writer.h"
#include "runtime/number_text.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <sstream>
#include <system_error>
#include <utility>
#include <vector>

#include <unistd.h>

namespace korvane {

namespace {

namespace fs = std::filesystem;

constexpr SaveDialog saveInputDialog{
    "OPEN SAVE-INPUT-DATA FILE",
    "Input Files (*.dat)|*.dat|Input Files (*.in)|*.in|All Files (*.*)|*.*", ".III"};
constexpr SaveDialog saveOutputDialog{
    "OPEN SAVE-OUTPUT-DATA FILE",
    "Output Files (*.out)|*.out|Output Files (*.dat)|*.dat|All Files (*.*)|*.*", ".OOO"};

/// Whether two names lead to one file that is there.
bool isSameFile(const std::string& one, const std::string& other) {
    std::error_code missing;
    return fs::equivalent(one, other, missing);
}

/// Saves a text whole; what holds it already, being the current file itself, is not touched.
void saveUnlessThere(const std::string& current, const std::string& target,
                     const std::string& text) {
    if (!isSameFile(current, target) || readPlainFile(target, Links::Follow) != text) {
        saveFile(target, text);
    }
}

/// True for a file of the temporary folder whose name begins with "TEMP".
bool namesTemporaryFile(const Session& session, const std::string& name) {
    const fs::path folder = (fs::path(session.files.TempFolder) / "").parent_path();
    const fs::path file = name;
    return file.parent_path() == folder && file.filename().string().compare(0, 4, "TEMP") == 0;
}

/// True where this session made the file.
bool isListed(const Session& session, const std::string& name) {
    const auto& list = session.files.ScratchFileList;
    return std::find(list.begin(), list.end(), name) != list.end();
}

/// Deletes a file if this session made it; any other file stays.
void deleteListedFile(Session& session, Desktop& desktop, const std::string& name) {
    if (isListed(session, name)) {
        deleteOwnFile(session, name);
        tellFilesLeft(desktop);
    }
}

/// A temporary file that the user has saved onto itself, by a link to it, is the user's now.
void giveToUser(Session& session, const std::string& name) {
    auto& list = session.files.ScratchFileList;
    std::replace(list.begin(), list.end(), name, std::string());
}

/// In which units to write the input: asked where its file has metric numbers, which are written
/// first. Nothing where saving is abandoned.
std::optional<UnitSystem> chooseFileUnits(const Session& session, Desktop& desktop) {
    if (session.fileUnits == UnitSystem::US) {
        return UnitSystem::US;
    }
    switch (desktop.Ask({.text = "The problem came from a metric file.\n"
                                 "Do you want to write it in metres and kilonewtons?\n\n"
                                 "No writes it in feet and pounds.",
                         .title = "UNITS OF THE INPUT FILE",
                         .buttons = Buttons::YesNoCancel,
                         .icon = Icon::Question})) {
    case Answer::Yes:
        return UnitSystem::SI;
    case Answer::No:
        return UnitSystem::US;
    default:
        return std::nullopt;
    }
}

/// Of the numbers in the current input file: temporary ones are in feet and pounds.
UnitSystem currentFileUnits(const Session& session) {
    return session.CurrentInputName == session.ProblemFile ? session.fileUnits : UnitSystem::US;
}

/// Whether a name ends in one of the extensions, which are parted by "|".
bool hasOneOf(std::string extensions, const std::string& name) {
    std::replace(extensions.begin(), extensions.end(), '|', ' ');
    std::istringstream each(extensions);
    for (std::string extension; each >> extension;) {
        if (endsIn(name, extension)) {
            return true;
        }
    }
    return false;
}

/// ".PNG, .SVG, .PDF".
std::string listed(const std::string& extensions) {
    std::string text;
    for (const char c : extensions) {
        text += c == '|' ? std::string(", ") : std::string(1, c);
    }
    return text;
}

/// The user's file is written: a later fault in the same command leaves it and its name alone.
void keepSaved(Session& session) {
    if (session.running != nullptr) {
        session.running->checkpoint();
    }
}

} // namespace

std::string chooseSaveName(Session& session, Desktop& desktop, const SaveDialog& dialog,
                           const std::string& suggestion) {
    for (;;) {
        std::string name = chooseFile(session, desktop,
                                      {.kind = FileDialog::Kind::Save,
                                       .title = dialog.title,
                                       .filter = dialog.filter,
                                       .fileName = suggestion});
        if (name.empty()) {
            return name;
        }
        RememberDialogFolder(session, name);
        if (dialog.refusedExtension != nullptr && endsIn(name, dialog.refusedExtension)) {
            desktop.Ask({.text = "File:  " + name +
                                 "  is a temporary file in use.\n"
                                 "Please choose another file name for saving input data."});
        } else if (dialog.extensions != nullptr && !hasOneOf(dialog.extensions, name)) {
            desktop.Ask({.text = "File: " + name + "\nThe name must end in " +
                                 listed(dialog.extensions) + ".\nPlease choose another file name.",
                         .title = "UNKNOWN KIND OF FILE!",
                         .icon = Icon::Exclamation});
        } else if (!fs::exists(name) ||
                   desktop.Ask({.text = "File: " + name + " exists.\nDo you want to write over it?",
                                .title = "OVERWRITE?",
                                .buttons = Buttons::YesNo,
                                .icon = Icon::Question}) == Answer::Yes) {
            return name;
        }
    }
}

std::string chooseFile(Session& session, Desktop& desktop, FileDialog dialog) {
    dialog.initialFolder = session.DialogFolder;
    const std::string name = desktop.ChooseFile(dialog);
    return name.empty() ? name : (fs::path(session.CurrentFolder) / name).string();
}

bool endsIn(const std::string& name, const std::string& extension) {
    return name.size() >= extension.size() &&
           upperCase(name.substr(name.size() - extension.size())) == extension;
}

void AskSaveInput(Session& session, Desktop& desktop, const char* question) {
    do {
        session.InputFileName.clear();
        if (desktop.Ask(
                {.text = question, .title = "SAVE INPUT DATA?", .buttons = Buttons::YesNo}) ==
            Answer::No) {
            return;
        }
        SaveInputData(session, desktop);
    } while (session.InputFileName.empty());
    session.DataChanged = 0;
    keepSaved(session);
}

void AskSaveOutput(Session& session, Desktop& desktop) {
    std::string& CurrentOutputName = session.report.CurrentOutputName;
    do {
        if (desktop.Ask({.text = "DO YOU WANT TO SAVE CURRENT OUTPUT DATA?",
                         .title = "SAVE OUTPUT DATA?",
                         .buttons = Buttons::YesNo}) == Answer::No) {
            deleteListedFile(session, desktop, CurrentOutputName);
            CurrentOutputName.clear();
            return;
        }
        SaveOutputData(session, desktop);
    } while (session.SavedOutputName.empty());
    session.OutputSavedFlag = 1;
    keepSaved(session);
}

void SaveInputData(Session& session, Desktop& desktop) {
    auto& InputFileName = session.InputFileName;
    auto& CurrentInputName = session.CurrentInputName;
    InputFileName = chooseSaveName(session, desktop, saveInputDialog);
    if (InputFileName.empty()) {
        return;
    }
    const auto units = chooseFileUnits(session, desktop);
    if (!units) {
        InputFileName.clear();
        return;
    }
    const bool ontoItself = isSameFile(CurrentInputName, InputFileName);
    saveUnlessThere(CurrentInputName, InputFileName, inputFileText(session.problem, *units));
    if (ontoItself) {
        giveToUser(session, CurrentInputName);
    } else if (namesTemporaryFile(session, CurrentInputName)) {
        deleteListedFile(session, desktop, CurrentInputName);
    }
    session.inputFileStale = false;
    CurrentInputName = InputFileName;
    session.ProblemFile = InputFileName;
    session.fileUnits = *units;
    noteRecent(session, InputFileName);
    keepSaved(session);
}

void SaveOutputData(Session& session, Desktop& desktop) {
    auto& SavedOutputName = session.SavedOutputName;
    auto& CurrentOutputName = session.report.CurrentOutputName;
    SavedOutputName = chooseSaveName(session, desktop, saveOutputDialog);
    if (SavedOutputName.empty()) {
        return;
    }
    const bool ontoItself = isSameFile(CurrentOutputName, SavedOutputName);
    saveUnlessThere(CurrentOutputName, SavedOutputName, session.report.text);
    // Deliberate: the input's name decides, so that the temporary report of a problem that came
    // from the user's own file stays until New or Exit.
    if (ontoItself) {
        giveToUser(session, CurrentOutputName);
    } else if (namesTemporaryFile(session, session.CurrentInputName)) {
        deleteListedFile(session, desktop, CurrentOutputName);
    }
    CurrentOutputName = SavedOutputName;
    keepSaved(session);
}

Links linksTo(const Session& session, const std::string& name) {
    return isListed(session, name) ? Links::Refuse : Links::Follow;
}

std::string readSessionFile(const Session& session, const std::string& name) {
    return readPlainFile(name, linksTo(session, name));
}

void RememberDialogFolder(Session& session, const std::string& name) {
    session.DialogFolder = fs::path(name).parent_path().string();
}

std::string makeTemporaryFile(Session& session, const std::string& extension) {
    TemporaryFiles& files = session.files;
    std::string& place = files.ScratchFileList(files.ScratchFileCount + 1);
    for (int number = 0;; ++number) {
        std::string name =
            fs::path(files.TempFolder) / ("TEMP" + std::to_string(number) + extension);
        if (createExclusively(name)) {
            place = std::move(name); // before anything can fail: what is listed is removed
            ++files.ScratchFileCount;
            listTemporaryFiles(session);
            if (session.running != nullptr) {
                session.running->remember(place);
            }
            return place;
        }
    }
}

void WriteInputData(Session& session, Desktop& desktop, const std::string& mode) {
    const Problem& problem = session.problem;
    if (mode == "FILE") {
        const std::string text = inputFileText(problem);
        rewriteFile(session.CurrentInputName, text);
        session.inputFileStale = false;
        session.FileLineCount = static_cast<int>(std::count(text.begin(), text.end(), '\n'));
        return;
    }
    const std::string text = inputFileText(problem, currentFileUnits(session));
    if (desktop.PrintDocument(session.CurrentInputName, splitLines(text))) {
        // Deliberate: a print counts the headings, the control and the wall line alone.
        session.FileLineCount = problem.NumHeadingLines + 2;
    }
}

void removeTemporaryFiles(const TemporaryFiles& files) noexcept {
    for (const std::string& name : files.ScratchFileList) {
        if (!name.empty()) {
            removeOwnFile(name.c_str());
        }
    }
    if (!files.StudyFolder.empty()) {
        std::error_code left; // nobody can be told any more
        fs::remove_all(files.StudyFolder, left);
    }
}

void DeleteTempFiles(Session& session, Desktop& desktop) {
    const TemporaryFiles& files = session.files;
    for (const std::string& name : files.ScratchFileList) {
        deleteOwnFile(session, name);
    }
    session.report.CurrentOutputName.clear();
    session.CurrentInputName.clear();
    desktop.QuitHelp();
    tellFilesLeft(desktop);
}

} // namespace korvane
