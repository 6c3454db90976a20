#include "shell/program.h"

#include "commands/commands.h"
#include "commands/recent_files.h"
#include "commands/recovery.h"
#include "commands/told_boxes.h"
#include "runtime/run_guarded.h"
#include "shell/comparison_window.h"
#include "shell/ending_signals.h"
#include "shell/plot_window.h"
#include "shell/study_window.h"
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
    ScreenTable screens = {
        {Screen::WEDGMETH, makes<WedgePrompt>()},
        {Screen::VUINPTFL, makes<TextWindow>(TextKind::Input)},
        {Screen::VUINECHO, makes<TextWindow>(TextKind::Output)},
        {Screen::NOTES, makes<TextWindow>(TextKind::Notes, &services)},
        {Screen::VERIFY, makes<TextWindow>(TextKind::Verification, &services)},
        {Screen::COMPARE, makes<ComparisonWindow>()},
    };
    for (const PlotScreen& screen : plotScreens()) {
        screens.emplace(screen.name, makes<PlotWindow>(screen.name, &services));
    }
    if (!studyProgram().isEmpty()) {
        screens.emplace(Screen::STUDY, makes<StudyWindow>());
    }
    return screens;
}

namespace {

/// Clears up behind programs that died and starts the record of this one. Where the temporary
/// folder fails the program does without.
void keepRecord(Program& program) {
    const std::string& folder = program.session->files.TempFolder;
    runGuarded([&] { program.deadRuns = claimDeadRuns(folder); });
    runGuarded([&] { program.record = std::make_unique<RunRecord>(folder); });
    program.session->record = program.record.get();
}

/// Once the main window is on show.
void begin(Program& program, const std::string& file) {
    enter(*program.session, program.window.get(), [&] {
        const auto runs = std::move(program.deadRuns);
        offerRecovery(*program.session, program.desktop, runs);
        tellFilesLeft(program.desktop);
    });
    program.window->mirror();
    if (!file.empty()) {
        program.window->openFile(file);
    }
}

} // namespace

Program::Program(ScreenTable dataScreens)
    : desktop(std::move(dataScreens)), session(std::make_unique<Session>()) {
    qApp->installEventFilter(&menuKeys);
    desktop.addScreens(shellScreens(desktop.printServices));
    session->recentStore = recentStore();
    session->recentFiles = readRecent(session->recentStore);
    enter(*session, nullptr, [this] { startSession(*session); });
    keepRecord(*this);
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
    Program* running = nullptr;
    const EndingSignals ending([&] {
        if (running != nullptr) {
            rescueAtSignal(*running->session);
        }
    });
    {
        TitleWindow title;
        if (!title.runAtStart(titleMilliseconds)) {
            return 0;
        }
    }
    Program program(std::move(dataScreens));
    running = &program;
    centreOnScreen(program.window.get());
    program.window->show();
    QTimer::singleShot(0, program.window.get(), [&] { begin(program, file); });
    return QApplication::exec();
}

} // namespace korvane
