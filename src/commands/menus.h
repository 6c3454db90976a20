// The menus of the main window as data: what each entry is and whether it can be chosen now.
#pragma once

#include "commands/desktop.h"
#include "problem/quantities.h"

#include <optional>
#include <span>
#include <string>

namespace korvane {

struct MenuItem {
    std::string caption; ///< with its mnemonic: "&Open"
    bool enabled = true;

    bool operator==(const MenuItem&) const = default;
};

/// The menus and their entries: captions and states at design time; commands change them.
struct Menus {
    MenuItem file{"&File"};
    MenuItem newProblem{"&New"};
    MenuItem open{"&Open"};
    MenuItem save{"&Save", false};
    MenuItem saveInput{"&Input Data", false};
    MenuItem saveReport{"&Output Data", false};
    MenuItem print{"&Print", false};
    MenuItem printInput{"&Input File"};
    MenuItem printReport{"&Output File"};
    MenuItem exit{"E&xit"};
    MenuItem recentFiles{"&Recent Files"};

    MenuItem edit{"&Edit"};
    MenuItem editData{"&Edit Input Data"};

    MenuItem view{"&View", false};
    MenuItem inputFile{"Current &Input File", false};
    MenuItem report{"&OutPut File", false};
    MenuItem inputPlots{"Input &Plots", false};
    MenuItem cantileverPlots{"&Cantilever Wall Results Plots", false};
    MenuItem freeEarthPlots{"&Free Earth Method Results Plots", false};
    MenuItem fixedEarthPlots{"F&ixed Earth Method Results Plots", false};
    MenuItem roweCurves{"&Rowe's Moment Reduction Curves", false};

    MenuItem solve{"&Solve", false};
    MenuItem solveProblem{"&Continue Solution"};

    MenuItem tools{"&Tools"};
    MenuItem units{"&Units"};
    MenuItem unitsUS{"&US (feet, pounds)"};
    MenuItem unitsSI{"&SI (metres, kilonewtons)"};
    MenuItem notes{"&Notes...", false};
    MenuItem compare{"&Compare...", false};
    MenuItem sheet{"Calculation &Sheet...", false};
    MenuItem study{"S&tudy...", false};
    MenuItem verify{"&Verify..."};

    MenuItem help{"&Help"};
    MenuItem helpContents{"&Contents"};
    MenuItem helpSearch{"&Search for help on ..."};
    MenuItem about{"&About KORVANE"};

    bool operator==(const Menus&) const = default;
};

/// The two files, the input plots, the notes, the comparison and studies: what can be viewed of
/// every problem.
void enableProblemViews(Menus& menus, bool enabled);

/// The plots and the calculation sheet of a solution.
void disableResults(Menus& menus);

/// What can be read about the program, by the numbers that the menu of help gives its entries; F1
/// has that of the separator.
enum class Help {
    Contents = 0,
    Search = 1,
    OfWindow = 2, ///< the guide at the section of the active window
    About = 3,
};

using Command = void (*)(Session& session, Desktop& desktop);

/// A row of the menus. What a row does stands in `command`, else in `help`, else in `units`, else
/// it shows its screen; a row with none of them is a menu. A row without item is a separator.
struct MenuRow {
    const char* menu; ///< name of the menu that holds it; nullptr for the menu bar
    const char* name; ///< of its object in the window
    MenuItem Menus::*item = nullptr;
    Command command = nullptr;
    std::optional<Screen> screen = {}; ///< that it needs: it cannot be chosen without
    std::optional<Help> help = {};
    const char* keys = "";                ///< shortcut
    std::optional<UnitSystem> units = {}; ///< that it chooses: checked while they are chosen

    bool isMenu() const {
        return item != nullptr && command == nullptr && !screen && !help && !units;
    }
};

/// The rows of all menus from left to right and from top to bottom, each behind its menu.
std::span<const MenuRow> menuRows();

} // namespace korvane
