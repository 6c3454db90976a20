// The desktop program with somebody at it: typing_program ANSWER [type|work].
//
// Accepts, answers the box about recovered data by its button ANSWER, and with "type" or "work"
// enters the heading section. Then it tells on standard output where it stands and waits for its
// end: a line on standard input ends it well, by Exit without saving. With "work" its event loop
// stands still from there on, as under a command that takes its time.
#include "../person.h"

#include "commands/commands.h"
#include "screens/screens.h"
#include "shell/ending_signals.h"

#include <QApplication>
#include <QMenu>
#include <QSocketNotifier>

#include <chrono>
#include <cstdio>
#include <string>
#include <thread>

#include <unistd.h>

using namespace korvane;
using namespace korvane::test;

namespace {

void tell(const QString& line) {
    std::printf("%s\n", qPrintable(QString(line).replace('\n', '|')));
    std::fflush(stdout);
}

class Somebody {
  public:
    Somebody(QString answer, const std::string& does)
        : answer_(std::move(answer)), types_(!does.empty()), works_(does == "work") {
        lookAgain();
    }

  private:
    /// By a timer of its own: acts may run event loops.
    void lookAgain() {
        QTimer::singleShot(20, &context_, [this] { act(); });
    }

    void act() {
        if (waits_) {
            return;
        }
        lookAgain();
        QWidget* modal = QApplication::activeModalWidget();
        if (auto* box = qobject_cast<QMessageBox*>(modal)) {
            answer(*box);
        } else if (modal != nullptr && modal->objectName() == "KEYIN") {
            atSections(*modal);
        } else if (modal != nullptr && modal->objectName() == "HEADCONT") {
            enterHeading(*modal);
        } else if (modal != nullptr) {
            pushButton(*modal, "okbutton_0"); // the disclaimer
        } else {
            atMainWindow();
        }
    }

    void answer(QMessageBox& box) {
        const bool saves = box.windowTitle().startsWith("SAVE");
        if (!saves) {
            tell("BOX " + box.windowTitle() + " " + box.text());
        }
        for (QAbstractButton* button : box.buttons()) {
            if (button->text().remove('&') == (saves ? "No" : answer_)) {
                button->click();
                return;
            }
        }
        box.buttons().front()->click();
    }

    void atSections(QWidget& screen) {
        if (types_ && !typed_) {
            pushButton(screen, "cmdHeadCont");
        } else {
            wait("KEYIN", screen);
        }
    }

    void enterHeading(QWidget& screen) {
        typed_ = true;
        typeInto(screen, "txtHead_0", "KEEP THIS");
        pushButton(screen, "optCantilever");
        typeInto(screen, "txtWallTop", "12.5");
        pushButton(screen, "optDesign");
        typeInto(screen, "txtFSA1", "1");
        typeInto(screen, "txtFSP1", "1.5");
        pushButton(screen, "cmdFinished");
    }

    void atMainWindow() {
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (auto* main = qobject_cast<ShellWindow*>(window);
                main != nullptr && main->isVisible() && ++quiet_ == 5) {
                if (types_ && !typed_) {
                    main->findChild<QAction*>("mnuEditItem_0")->trigger();
                } else {
                    wait("REST", *main);
                }
            } else if (auto* accept = window->findChild<QAbstractButton*>("okbutton_0");
                       accept != nullptr && accept->isVisible()) {
                accept->click();
            }
        }
    }

    void wait(const char* place, QWidget& window) {
        waits_ = true;
        const auto* solve = window.findChild<QMenu*>("mnuSolve");
        tell(QString(place) + " " + window.windowTitle() +
             (solve != nullptr && solve->isEnabled() ? " can solve" : ""));
        if (works_) {
            std::this_thread::sleep_for(std::chrono::minutes(5));
        }
        end_ = std::make_unique<QSocketNotifier>(STDIN_FILENO, QSocketNotifier::Read);
        QObject::connect(end_.get(), &QSocketNotifier::activated, [this, &window] {
            end_->setEnabled(false);
            waits_ = false; // for the save questions
            lookAgain();
            window.close();
        });
    }

    QString answer_;
    bool types_;
    bool works_;
    bool typed_ = false;
    bool waits_ = false;
    int quiet_ = 0; ///< looks at the main window alone
    QObject context_;
    std::unique_ptr<QSocketNotifier> end_;
};

} // namespace

int main(int argc, char** argv) {
    provideTempVariable();
    blockEndingSignals();
    QApplication application(argc, argv);
    prepareApplication();
    const Somebody somebody(argc > 1 ? argv[1] : "", argc > 2 ? argv[2] : "");
    constexpr int patience = 60000;
    QTimer::singleShot(patience, [] { std::_Exit(3); });
    return runProgram(dataScreens(), 60);
}
