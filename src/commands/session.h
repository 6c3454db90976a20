// One session of the program: the problem in memory, its files, and the main window as data.
#pragma once

#include "commands/desktop.h"
#include "plots/plot_screen.h"
#include "solution/solution.h"

#include <array>
#include <string>
#include <vector>

namespace korvane {

/// A menu, a menu item or a separator (empty caption).
struct MenuItem {
    std::string caption; ///< with its mnemonic: "&Open"
    bool enabled = true;

    bool operator==(const MenuItem&) const = default;
};

/// Menu items are counted from 0, separators included; an index outside is RuntimeError 9.
template <int Count>
class MenuItems {
  public:
    MenuItems(std::initializer_list<MenuItem> items) {
        int place = 0;
        for (const MenuItem& item : items) {
            (*this)(place++) = item;
        }
    }
    MenuItem& operator()(int index) { return items_(index + 1); }
    const MenuItem& operator()(int index) const { return items_(index + 1); }
    static constexpr int size() { return Count; }

    bool operator==(const MenuItems&) const = default;

  private:
    Array<MenuItem, Count> items_;
};

/// The menus of the main window. Captions and the states at design time; commands change them.
struct Menus {
    MenuItem mnuFile{"&File"};
    MenuItems<10> mnuFileItem{{"&New"}, {"&Open"}, {""}, {"&Save", false}, {""}, {"&Print", false},
                              {""},     {"E&xit"}, {""}, {"&Recent Files"}};
    MenuItems<2> mnuSaveItem{{"&Input Data", false}, {"&Output Data", false}};
    MenuItems<2> mnuPrintItem{{"&Input File"}, {"&Output File"}};
    MenuItem mnuEdit{"&Edit"};
    MenuItems<1> mnuEditItem{{"&Edit Input Data"}};
    MenuItem mnuView{"&View", false};
    MenuItems<7> mnuViewItem{{"Current &Input File", false},
                             {"&OutPut File", false},
                             {"Input &Plots", false},
                             {"&Cantilever Wall Results Plots", false},
                             {"&Free Earth Method Results Plots", false},
                             {"F&ixed Earth Method Results Plots", false},
                             {"&Rowe's Moment Reduction Curves", false}};
    MenuItem mnuSolve{"&Solve", false};
    MenuItems<1> mnuSolveItem{{"&Continue Solution"}};
    MenuItem mnuHelp{"&Help"};
    MenuItems<4> mnuHelpItem{{"&Contents"}, {"&Search for help on ..."}, {""}, {"&About KORVANE"}};

    bool operator==(const Menus&) const = default;
};

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
    std::string InputFileName;    ///< from the last dialog for input, "" when it was cancelled
    std::string SavedOutputName;  ///< from the last save dialog for output, "" when cancelled
    int FileLineCount = 0;        ///< lines written to the temporary input file
    bool inputFileStale = false;  ///< CurrentInputName does not hold the whole problem
    int OutputSavedFlag = 0;      ///< 1 when the current output needs no save question
    std::string DialogFolder;     ///< initial folder of the file dialogs
    std::string CurrentFolder;    ///< relative names start here; the process never changes its own

    Menus menus;
    Panels panels;
    FlowStage stage = FlowStage::Rest;
};

class CommandScope;

/// Temporary files of the session.
struct TemporaryFiles {
    std::string TempFolder;
    int ScratchFileCount = 8; ///< names in the list; the first eight stay empty
    Array<std::string, 100> ScratchFileList;
};

/// The report being written.
struct Report {
    std::string CurrentOutputName;
    int OutputLineCount = 0;
};

/// Everything that belongs to one session. Two sessions, each with a Desktop of its own, never
/// touch each other.
struct Session : MainWindow {
    Problem problem;
    std::optional<WedgeMethod> wedge; ///< the choice of WEDGMETH, if it was asked for
    Workspace workspace;              ///< of the last solution
    PileSections sections;
    TemporaryFiles files;
    Report report;

    int SolutionFailed = 0;    ///< 0 well, 1 a failure or a Cancel, 2 sign test or discontinued
    int DataChanged = 0;       ///< 1 when a data-entry screen changed something
    int HeadContDataValid = 0; ///< 1 when the heading section is valid

    int LoadKind = 0;                     ///< what SURCHARG (1 to 6) or HORLOAD (1, 2) is to show
    std::vector<std::string> recentFiles; ///< the user's input files, the newest first
    std::string recentStore;              ///< file that keeps them between runs, "" for none
    bool readingInput = false;       ///< true after a fatal case of the reader: nothing to rescue
    CommandScope* running = nullptr; ///< of the command at work that can be taken back, if any

    // Nothing reads these; they tell of the session to those who look at it.
    int InputSavedFlag = 0;                ///< 1 after a successful input save
    int HelpCommand = 0;                   ///< index of the help menu item served last
    Array<std::string, 3> ScratchFileName; ///< by level; stays empty, as levels stay in memory

    /// What the plot screens draw from.
    PlotData plotData() const {
        return {problem, workspace.results(), sections, workspace.reduction()};
    }
};

} // namespace korvane
