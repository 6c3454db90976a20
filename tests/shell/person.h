// Somebody at the real main window: works menus, boxes, dialogs and screens by their names.
#pragma once

#include "shell/program.h"
#include "support/support.h"

#include <QAbstractButton>
#include <QDialog>
#include <QFileDialog>
#include <QMessageBox>
#include <QTest>
#include <QTimer>

#include <deque>
#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace korvane::test {

/// What a person saw of a message box.
struct SeenBox {
    std::string title;
    std::string text;
    std::vector<std::string> buttons; ///< from left to right
    bool busy = false;                ///< the pointer was busy while the box was shown
};

/// A program in a temporary folder of its own, and the steps that a person takes at the modal
/// windows to come. A control that is missing, hidden or disabled is an error; so is a modal window
/// that is not the one expected, or one that does not come.
class Person {
  public:
    /// `sharedTemporary` is the temporary folder of another person; an own one where it is empty.
    explicit Person(const std::filesystem::path& sharedTemporary = {});
    ~Person();

    // ---- steps for the modal windows to come, in their order ----

    /// A message box: pushes the button of that caption.
    void expectBox(const std::string& button);
    /// Pushes the button of that caption whenever a message box of that title comes, expected or
    /// not.
    void answer(const std::string& title, const std::string& button) { answers_[title] = button; }
    /// A file dialog: looks at it, then chooses a path; an empty one cancels.
    void expectFile(const std::string& path, std::function<void(QFileDialog&)> look = {});
    /// Any screen: does something at it that closes it.
    void expectScreen(const std::string& name, std::function<void(QDialog&)> act);

    // ---- the main window ----

    /// Triggers a menu item that can be chosen.
    void choose(const char* item);
    bool canChoose(const char* item) const;
    std::string caption(const char* item) const;
    /// Pushes a button of the main window.
    void push(const char* button);
    bool isShown(const char* control) const;

    /// Opens an input file; the box tells that it is complete.
    void open(const std::string& path);

    ShellWindow& window() { return *program->window; }
    Session& session() { return *program->session; }
    /// Where the program keeps its recent files.
    std::string recentStore() const { return (stateHome_.path() / "korvane" / "recent").string(); }
    std::string userFile(const std::string& name) const { return (user.path() / name).string(); }

    TemporaryFolder temporary;
    TemporaryFolder user;
    std::vector<SeenBox> boxes;

  private:
    EnvironmentVariable temp_;
    EnvironmentVariable date_;
    TemporaryFolder stateHome_;
    EnvironmentVariable state_;

  public:
    std::unique_ptr<Program> program;

    /// After Exit: true where the temporary folder holds the record of the running program alone,
    /// and without the program nothing. Ends the program.
    bool leftNothing();

    /// Ends with an error where a step was not taken.
    void expectNothingLeft();

  private:
    struct Step {
        std::string what;
        std::function<bool(QDialog&)> fits;
        std::function<void(QDialog&)> act;
    };
    void schedule();
    void poll();
    void take(const Step& step, QDialog& modal);
    void pushInBox(const QMessageBox& box, const std::string& button);

    std::deque<Step> steps_;
    std::map<std::string, std::string> answers_;
    QObject looks_; ///< ends the looks with the person
    int waited_ = 0;
};

/// Activates a window; true once it takes the keys itself. A modal window counts as active for the
/// toolkit while the window below it still has them, which a real display may take a moment over.
bool takesKeys(QWidget& window);

/// Pushes a button of a screen, or sets an option.
void pushButton(QWidget& window, const QString& name);
/// Types into an emptied field of a screen.
void typeInto(QWidget& window, const QString& field, const QString& text);
/// Triggers an enabled action of a screen.
void chooseAction(QWidget& window, const QString& name);

} // namespace korvane::test
