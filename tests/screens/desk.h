// A desktop on which the real screens are opened one upon another and worked by a script.
#pragma once

#include "commands/commands.h"
#include "support/support.h"
#include "widgets/screen_window.h"

#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace korvane::test {

/// Finds controls on the topmost screen alone and works only what a person could work: a control
/// that is missing, hidden or disabled is a failure of the test.
class Desk : public Desktop {
  public:
    Desk();
    ~Desk() override;

    // ---- screens ----

    /// Opens a screen over the others, told which kind of load to show where one is given. It stays
    /// until it closes itself, or to the end.
    void open(Screen screen, std::optional<Load> loadKind = {});
    /// Takes away a screen that has closed itself.
    void reopen(Screen screen, std::optional<Load> loadKind = {}) {
        screens_.clear();
        open(screen, loadKind);
    }
    /// True while the topmost screen is shown.
    bool isOpen() const;
    ScreenWindow& top();
    /// The frame's cross of the topmost screen.
    void closeFrame() { top().close(); }

    // ---- controls of the topmost screen ----

    template <class Control = QWidget>
    Control* find(const QString& name) {
        auto* found = top().findChild<Control*>(name);
        if (found == nullptr) {
            throw std::runtime_error("no control " + name.toStdString());
        }
        return found;
    }
    /// The same, where it can be worked.
    template <class Control>
    Control* workable(const QString& name) {
        auto* found = find<Control>(name);
        if (!found->isVisible() || !found->isEnabled()) {
            throw std::runtime_error("cannot be worked: " + name.toStdString());
        }
        return found;
    }
    bool isShown(const QString& name) { return find(name)->isVisible(); }
    std::string text(const QString& name);
    bool isSet(const QString& option) { return find<QRadioButton>(option)->isChecked(); }
    /// True where the panel has the colour of data.
    bool isHighlighted(const QString& panel);
    /// Name of the control that has the focus.
    std::string focused();

    /// The controls that Tab goes through, from the first one round to it.
    std::vector<std::string> tabOrder(const QString& first);

    /// Types into an emptied field.
    void type(const QString& field, const QString& text);
    /// Types texts into fields name_0, name_1 ...; a text "." leaves its field alone.
    void typeDown(const QString& array, const std::vector<std::string>& texts);
    void press(const QString& control, Qt::Key key, Qt::KeyboardModifiers modifiers = {});
    /// Clicks a button or an option with the mouse.
    void click(const QString& control);

    // ---- boxes ----

    /// The one box since the last look, described; noBox where none came. More are a failure.
    std::string lastBox();
    /// Answers of the boxes to come; then OK, or No to a question.
    std::deque<Answer> answers;
    std::function<Answer(const MessageBox&)> onAsk; ///< instead of them
    std::vector<MessageBox> boxes;
    std::vector<Screen> shown;          ///< asked for by a screen
    std::function<void(Screen)> onShow; ///< instead of the screen that was asked for
    std::vector<Help> helpItems;

    // ---- Desktop ----
    Answer Ask(const MessageBox& box) override;
    std::string ChooseFile(const FileDialog&) override { return {}; }
    void ShowScreen(Screen screen, Session& of) override;
    void SetBusy(bool) override {}
    bool PrintDocument(const std::string&, const std::vector<std::string>&) override {
        return false;
    }
    bool OpenDocument(const std::string&) override { return false; }
    void QuitHelp() override {}
    void EndProgram() override {}
    void Mirror(const Session&) override {}

    std::unique_ptr<Session> session;
    Problem& problem;
    QWidget mainWindow;

  private:
    ScreenContext context_;
    std::vector<std::unique_ptr<ScreenWindow>> screens_;
    std::size_t looked_ = 0;
};

/// A box as one text: title, buttons, icon and words, so that a difference reads as such.
std::string described(const MessageBox& box);

/// A box with OK and Cancel and the exclamation icon, described.
std::string okCancel(const std::string& title, const std::string& text);

/// What lastBox() describes where no box came.
extern const std::string noBox;

} // namespace korvane::test
