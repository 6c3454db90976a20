#include "shell/program.h"

#include "commands/commands.h"
#include "commands/recent_files.h"
#include "shell/plot_window.h"
#include "shell/text_window.h"
#include "shell/title_window.h"
#include "shell/wedge_prompt.h"
#include "widgets/gate.h"
#include "widgets/geometry.h"

#include <QApplication>
#include <QIcon>
#include <QLocale>
#include <QSettings>
#include <QTimer>

#include <clocale>
#include <utility>

namespace korvane {

ScreenTable shellScreens(const PrintServices& services) {
    const auto plot = [&services](PlotScreenName name) {
        return makes<PlotWindow>(name, &services);
    };
    return {
        {Screen::WEDGMETH, makes<WedgePrompt>()},
        {Screen::VUINPTFL, makes<TextWindow>(TextKind::Input)},
        {Screen::VUINECHO, makes<TextWindow>(TextKind::Output)},
        {Screen::VUINPLOT, plot(PlotScreenName::VUINPLOT)},
        {Screen::CANPLOT, plot(PlotScreenName::CANPLOT)},
        {Screen::FREEPLOT, plot(PlotScreenName::FREEPLOT)},
        {Screen::FIXDPLOT, plot(PlotScreenName::FIXDPLOT)},
        {Screen::ROWECURV, plot(PlotScreenName::ROWECURV)},
        {Screen::VUSOLPLT, plot(PlotScreenName::VUSOLPLT)},
    };
}

Program::Program(ScreenTable dataScreens)
    : desktop(std::move(dataScreens)), session(std::make_unique<Session>()) {
    qApp->installEventFilter(&menuKeys);
    desktop.addScreens(shellScreens(desktop.printServices));
    session->recentStore = recentStore();
    session->recentFiles = readRecent(session->recentStore);
    enter(*session, nullptr, [this] { startSession(*session); });
    window = std::make_unique<ShellWindow>(
        *session, desktop, desktop.screens(),
        [this](QWidget* active, Help what) { desktop.showHelp(active, what); });
    desktop.attach(*session, *window);
}

void prepareApplication() {
    QApplication::setApplicationName("KORVANE");
    QApplication::setApplicationVersion(KORVANE_VERSION);
    QApplication::setDesktopFileName("korvane");
    QApplication::setWindowIcon(QIcon(":/korvane.svg"));
    QApplication::setQuitOnLastWindowClosed(false);
    // The toolkit's file dialogs would keep the folders visited in the user's settings.
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, "/dev/null");
    // Numbers are written with the point whatever the user's language.
    QLocale::setDefault(QLocale::c());
    std::setlocale(LC_NUMERIC, "C");
}

int runProgram(ScreenTable dataScreens, int titleMilliseconds, const std::string& file) {
    {
        TitleWindow title;
        if (!title.runAtStart(titleMilliseconds)) {
            return 0;
        }
    }
    Program program(std::move(dataScreens));
    centreOnScreen(program.window.get());
    program.window->show();
    if (!file.empty()) {
        QTimer::singleShot(0, program.window.get(), [&] { program.window->openFile(file); });
    }
    return QApplication::exec();
}

} // namespace korvane
