// Meets run-time error 9 in a screen above a screen, writes the box that comes to standard output
// and pushes its button.
#include "commands/commands.h"
#include "screens/screens.h"
#include "shell/program.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QMessageBox>
#include <QTimer>

#include <cstdio>

using namespace korvane;

namespace {

/// A screen that faults as soon as it is shown.
class FaultyScreen : public ScreenWindow {
  public:
    explicit FaultyScreen(ScreenContext& context) : ScreenWindow(context, "FAULTY", "FAULTY") {
        QTimer::singleShot(0, this, [this] { run([] { throw RuntimeError(9); }); });
    }
};

/// A screen that opens another one.
class OuterScreen : public ScreenWindow {
  public:
    explicit OuterScreen(ScreenContext& context) : ScreenWindow(context, "OUTER", "OUTER") {
        QTimer::singleShot(0, this, [this] {
            run([this] { this->context().desktop.ShowScreen(Screen::HEADCONT, session()); });
        });
    }
};

void answerBox() {
    if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
        std::printf("%s\n%s\n", qPrintable(box->windowTitle()), qPrintable(box->text()));
        std::fflush(stdout);
        box->buttons().first()->click();
    }
}

} // namespace

int main(int argc, char** argv) {
    provideTempVariable();
    QApplication application(argc, argv);
    prepareApplication();
    Program program(
        {{Screen::KEYIN, makes<OuterScreen>()}, {Screen::HEADCONT, makes<FaultyScreen>()}});
    Problem& problem = program.session->problem;
    problem.NumHeadingLines = 1;
    problem.HeadingLines(1) = "'KEEP THIS ";
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, answerBox);
    poll.start(5);
    program.window->show();
    QTimer::singleShot(0, program.window.get(), [&program] {
        program.window->findChild<QAction*>("mnuEditItem_0")->trigger();
    });
    QTimer::singleShot(10000, [] { std::_Exit(3); }); // no fault came
    return QApplication::exec();
}
