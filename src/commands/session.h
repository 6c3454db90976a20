// One session of the program: the problem in memory, its files, and the main window as data.
#pragma once

#include "commands/menus.h"
#include "notes/notes.h"
#include "plots/plot_screen.h"
#include "problem/loads.h"
#include "problem/quantities.h"
#include "reports/solution_report.h"
#include "solution/solution.h"

#include <string>
#include <vector>

namespace korvane {

/// What the main window shows besides its menus.
struct Panels {
    bool Image1Visible = true;      ///< the picture, at rest
    bool fraSoilOutVisible = false; ///< the stop for review of a design
    bool panDoneVisible = false;    ///< the end of a solution, with its OK button
    std::string panDoneText;        ///< "SOLUTION COMPLETE" or the abort words
    bool panDoneAborted = false;    ///< these are the abort words

    bool operator==(const Panels&) const = default;
};

/// Where a run of the solution stands.
enum class FlowStage {
    Rest,     ///< no solution runs; the menus work
    Solving,  ///< a stage is at work: close events are ignored
    Review,   ///< fraSoilOut is shown
    Finished, ///< panDone is shown
};

/// The variables of the main window.
struct MainWindow {
    std::string CurrentInputName; ///< the opened, temporary or saved input file, "" when none
    std::string ProblemFile;      ///< the user's file that the problem is from or saved in, or ""
    UnitSystem fileUnits = UnitSystem::US; ///< of the numbers in ProblemFile
    std::string InputFileName;   ///< from the last dialog for input, "" when it was cancelled
    std::string SavedOutputName; ///< from the last save dialog for output, "" when cancelled
    bool inputFileStale = false; ///< CurrentInputName does not hold the whole problem
    int OutputSavedFlag = 0;     ///< 1 when the current output needs no save question
    std::string DialogFolder;    ///< initial folder of the file dialogs
    std::string CurrentFolder;   ///< relative names start here; the process never changes its own
    /// In which results are told beside report, screens and plots: those of the last opened file
    /// or of the menu's choice since.
    UnitSystem units = UnitSystem::US;

    Menus menus;
    Panels panels;
    FlowStage stage = FlowStage::Rest;
};

class CommandScope;
class RunRecord;

/// Temporary files of the session.
struct TemporaryFiles {
    std::string TempFolder;
    int ScratchFileCount = 8; ///< names in the list; the first eight stay empty
    Array<std::string, 100> ScratchFileList;
    std::string StudyFolder; ///< of the study at hand, with all that is in it; empty for none
};

/// Removes all that are listed; takes no memory but for a study's folder.
void removeTemporaryFiles(const TemporaryFiles& files) noexcept;

/// The report being written.
struct Report {
    std::string CurrentOutputName;
    int OutputLineCount = 0;
    ReportPart next = ReportPart::Echo; ///< to be written
    std::string text; ///< all that was written to the file, which may be gone when it is saved
};

/// What an experienced colleague would say of the problem.
struct ProblemNotes {
    std::vector<ReadRemark> remarks;   ///< of the reader, while the problem is as in its file
    Solved solved;                     ///< how far the solution has come
    Options options;                   ///< its options, without its questions
    bool taken = false;                ///< `list` stands: since the last stop of a solution
    bool fault = false;                ///< it could not be worked out there
    UnitSystem units = UnitSystem::US; ///< of its texts
    std::vector<Note> list;
    std::vector<Note> told; ///< unsafe ones that a box has told
};

/// Everything that belongs to one session. Two sessions, each with a Desktop of its own, never
/// touch each other.
struct Session : MainWindow {
    Session() = default;
    /// Its temporary files go with it, whatever has happened.
    ~Session() { removeTemporaryFiles(files); }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    Problem problem;
    std::optional<WedgeMethod> wedge; ///< the choice of WEDGMETH, if it was asked for
    Workspace workspace;              ///< of the last solution
    PileSections sections;
    TemporaryFiles files;
    Report report;
    ProblemNotes notes;
    NoteWorkspace secondSolves; ///< of walls that are solved once more for a note

    int SolutionFailed = 0;    ///< 0 well, 1 a failure or a Cancel, 2 sign test or discontinued
    int DataChanged = 0;       ///< 1 when a data-entry screen changed something
    int HeadContDataValid = 0; ///< 1 when the heading section is valid

    Load LoadKind = Load::Line;           ///< what SURCHARG or HORLOAD is to show
    std::vector<std::string> recentFiles; ///< the user's input files, the newest first
    std::string recentStore;              ///< file that keeps them between runs, "" for none
    bool readingInput = false;       ///< true after a fatal case of the reader: nothing to rescue
    CommandScope* running = nullptr; ///< of the command at work that can be taken back, if any
    RunRecord* record = nullptr;     ///< of the program for its next start, if it keeps one
    int copyFault = 0; ///< run-time error that keeps unsaved data out of the recovery copy, else 0

    // Nothing reads these; they tell of the session to those who look at it.
    int InputSavedFlag = 0;                ///< 1 after a successful input save
    int FileLineCount = 0;                 ///< lines of the last input written
    Help HelpCommand = Help::Contents;     ///< served last
    Array<std::string, 3> ScratchFileName; ///< by level; stays empty, as levels stay in memory

    /// What the plot screens draw from.
    PlotData plotData() const {
        return {problem, workspace.results(), sections, workspace.reduction()};
    }
};

} // namespace korvane
