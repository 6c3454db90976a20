// The frame of every modal screen.
#pragma once

#include "commands/session.h"

#include <QDialog>

#include <functional>

class QMenu;
class QMenuBar;
class QScrollArea;

namespace korvane {

/// What every screen is given.
struct ScreenContext {
    Session& session;
    Desktop& desktop;
    QWidget* mainWindow = nullptr; ///< screens take its position and size
    /// Serves an entry of a help menu, or F1, over the active window.
    std::function<void(QWidget* active, Help what)> showHelp;
};

/// A modal screen: position and size of the main window, a menu bar of its own (never native), the
/// content in a scroll area, Escape without effect, F1 opens the guide at its section.
/// The focus is visible from the start. Frame close goes to frameClose().
class ScreenWindow : public QDialog {
    Q_OBJECT

  public:
    ScreenWindow(ScreenContext& context, const QString& name, const QString& title);

  protected:
    ScreenContext& context() { return context_; }
    Session& session() { return context_.session; }
    Problem& problem() { return context_.session.problem; }

    /// The widget that the screen's controls stand on.
    QWidget* canvas() { return canvas_; }
    QMenuBar* menuBar() { return menuBar_; }
    /// Appends the help menu of every screen; call after the screen's own menus.
    void addHelpMenu();

    /// Scrolls to the control that has the focus.
    void showFocus();

    /// Through the gate, see enter().
    void run(const std::function<void()>& body);
    Answer ask(const MessageBox& box);

    /// The frame's cross. Nothing happens unless a screen says what.
    virtual void frameClose() {}

    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    ScreenContext& context_;
    QMenuBar* menuBar_;
    QScrollArea* scroll_;
    QWidget* canvas_;
};

} // namespace korvane
