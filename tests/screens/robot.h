// A person at the whole program: works the modal windows one after another as they come up.
#pragma once

#include "problem/problem.h"
#include "shell/program.h"
#include "support/support.h"

#include <QWidget>

#include <deque>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace korvane::test {

/// What is done in the modal window of a name. Message boxes are named "messageBox".
struct Deed {
    std::string window;
    std::function<void(QWidget&)> act;
};

class Robot {
  public:
    Robot();
    ~Robot();

    // ---- planning: what will be done in the windows to come ----

    void plan(const std::string& window, std::function<void(QWidget&)> act);
    void planClick(const std::string& window, const QString& button);
    /// A box of a title is answered by a button of that text whenever it comes.
    void answer(const std::string& title, const QString& button) { answers_[title] = button; }

    /// Types a whole problem through the screens, from KEYIN to its Finished.
    void planEntry(const Problem& problem);

    // ---- doing ----

    /// Triggers a menu item of the main window and works every window that comes up until all is
    /// done that was planned and the command is over.
    void choose(const QString& menuItem);
    /// Clicks a button of the main window.
    void click(const QString& button);

    Session& session() { return *program_->session; }
    /// The report on the disk.
    std::string report();
    /// Titles and texts of all boxes so far.
    std::vector<std::string> boxes;

    TemporaryFolder folder;

  private:
    void during(const std::function<void()>& command);
    void look();

    TemporaryFolder temporary_;
    EnvironmentVariable temp_;
    EnvironmentVariable date_;
    std::unique_ptr<Program> program_;
    std::deque<Deed> deeds_;
    std::map<std::string, QString> answers_;
    int idle_ = 0;
    bool working_ = false;
};

// ---- single works on a window; what cannot be worked ends the test program ----

void typeInto(QWidget& window, const QString& field, const QString& text);
void clickOn(QWidget& window, const QString& button);

} // namespace korvane::test
