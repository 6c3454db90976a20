// The desktop program put together: session, desktop, main window.
#pragma once

#include "commands/run_record.h"
#include "shell/main_window.h"
#include "shell/qt_desktop.h"
#include "widgets/menu_keys.h"

#include <memory>
#include <string>
#include <vector>

namespace korvane {

/// The screens that this room makes: text windows, wedge prompt, plots, which print by `services`.
ScreenTable shellScreens(const PrintServices& services);

/// One running program. Members are made and ended in the order that they need each other.
struct Program {
    /// `dataScreens` are the screens of the data entry; those of this room are added.
    explicit Program(ScreenTable dataScreens);

    MenuKeys menuKeys;
    QtDesktop desktop;
    std::vector<DeadRun> deadRuns;     ///< what died before and left data; until they are offered
    std::unique_ptr<RunRecord> record; ///< none where the temporary folder takes no file
    std::unique_ptr<Session> session;
    std::unique_ptr<ShellWindow> window;
};

/// Title, disclaimer, main window and event loop; the exit status. `titleMilliseconds` is 3000 in
/// the shipped program. `file` is opened as by Open with that path, or empty.
int runProgram(ScreenTable dataScreens, int titleMilliseconds, const std::string& file = {});

/// What every main of the desktop does first: plain locale for numbers, name and icon, no settings
/// of the toolkit kept.
void prepareApplication();

} // namespace korvane
