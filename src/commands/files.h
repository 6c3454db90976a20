// Temporary files, save questions and saving: the procedures behind the File and Edit commands.
#pragma once

#include "commands/session.h"
#include "runtime/file_text.h"

#include <string>

namespace korvane {

/// Shows a file dialog that starts in the dialogs' folder: the full path chosen, empty when it was
/// cancelled.
std::string chooseFile(Session& session, Desktop& desktop, FileDialog dialog);

/// True where a name ends in an extension (given in upper case), in any case of its letters.
bool endsIn(const std::string& name, const std::string& extension);

/// What the save dialogs differ in.
struct SaveDialog {
    const char* title;
    const char* filter;
    const char* refusedExtension = nullptr; ///< of the temporary files, upper case, or none
    /// The only extensions that a name may have, upper case and parted by "|"; nullptr for any.
    const char* extensions = nullptr;
};

/// Shows a save dialog until a name is accepted: a refused extension and a No to the overwrite
/// question ask again, and so does a name that has none of the dialog's extensions, after a box.
/// `suggestion` is the name that stands in the dialog at first. Empty where it was cancelled.
std::string chooseSaveName(Session& session, Desktop& desktop, const SaveDialog& dialog,
                           const std::string& suggestion = {});

/// What a save question may be asked with.
inline constexpr const char* SaveInputQuestion = "DO YOU WANT TO SAVE CURRENT INPUT DATA?";
inline constexpr const char* SaveInputBeforeEditing =
    "DO YOU WANT TO SAVE CURRENT INPUT DATA BEFORE EDITING?";

/// Asks until the input is saved or the answer is No.
void AskSaveInput(Session& session, Desktop& desktop, const char* question = SaveInputQuestion);

/// Asks until the output is saved or the answer is No, which deletes the temporary report.
void AskSaveOutput(Session& session, Desktop& desktop);

/// Lets the user choose a name and writes the whole problem there, from memory: no temporary file
/// need be there. A problem from a metric file asks for the units after the name. InputFileName is
/// empty afterwards when the dialog or that question was cancelled.
void SaveInputData(Session& session, Desktop& desktop);

/// Likewise the whole report; the name stands in SavedOutputName.
void SaveOutputData(Session& session, Desktop& desktop);

/// Whether a link in a file's place is followed: not where this session has made the file.
Links linksTo(const Session& session, const std::string& name);

/// The current input or output file, which must be a plain one.
std::string readSessionFile(const Session& session, const std::string& name);

/// Takes the folder of a chosen file as initial folder of the next dialog.
void RememberDialogFolder(Session& session, const std::string& name);

/// Makes a new empty file TEMPn + extension (".iii" or ".ooo") with the lowest free number in
/// TempFolder and lists it. RuntimeError 9 where the list is full (the 93rd name).
std::string makeTemporaryFile(Session& session, const std::string& extension);

/// Writes the problem to CurrentInputName ("FILE"), in feet and pounds, or hands it to the printer
/// (any other mode), in the units of that file, and sets FileLineCount.
void WriteInputData(Session& session, Desktop& desktop, const std::string& mode);

/// Deletes every temporary file of the session, blanks their names, and closes the
/// help.
void DeleteTempFiles(Session& session, Desktop& desktop);

} // namespace korvane
