// The main window CKORVANE: menus, picture, the stop for review, the end of a solution, its outcome
// at rest, and files that are dropped on it.
#pragma once

#include "commands/session.h"
#include "widgets/screen_table.h"

#include <QMainWindow>

#include <functional>
#include <optional>
#include <vector>

class QAction;
class QActionGroup;
class QFrame;
class QLabel;
class QMenu;
class QPushButton;

namespace korvane {

class Picture;

/// Mirrors the menus and panels of a session and hands every click to its command.
class ShellWindow : public QMainWindow {
    Q_OBJECT

  public:
    /// `screens` tells which commands have their screen; `showHelp` serves the help menu.
    ShellWindow(Session& session, Desktop& desktop, const ScreenTable& screens,
                std::function<void(QWidget*, Help)> showHelp);

    /// Brings menus and panels in line with the session.
    void mirror();

    /// Opens a file as Open does with that name; nothing while a solution or a modal window is
    /// open.
    void openFile(const std::string& path);

    /// After the program has been told to end the window closes without a further question.
    void endWithoutQuestion() { ending_ = true; }

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    /// Alt+F4's way at rest, at the review and at the last panel; ignored while a solution runs or
    /// a modal window is open.
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

  private:
    struct MirroredMenu {
        QMenu* menu;
        const MenuItem* item;
    };
    struct MirroredAction {
        QAction* action;
        const MenuItem* item;
        std::optional<UnitSystem> units; ///< that it chooses
        bool hasScreen;
    };

    void createMenus(const ScreenTable& screens);
    void createRecentMenu(QMenu* menu);
    void createReviewFrame(const ScreenTable& screens);
    void createDonePanel();
    void mirrorRecentFiles();
    void mirrorPanels();
    void centrePanels();
    bool canOpen() const;
    void addMenu(const MenuRow& row);
    void addEntry(const MenuRow& row, const ScreenTable& screens);
    void run(const MenuRow& row);
    QPushButton* addReviewButton(const char* name, const char* caption, double top,
                                 std::function<void()> body);
    /// Runs a command through the gate and mirrors the session after it.
    void command(const std::function<void()>& body);

    Session& session_;
    Desktop& desktop_;
    std::function<void(QWidget*, Help)> showHelp_;
    Picture* image1_ = nullptr;
    QFrame* fraSoilOut_ = nullptr;
    QFrame* panDone_ = nullptr;
    QLabel* panDoneText_ = nullptr;
    QLabel* panDoneSign_ = nullptr;
    QLabel* lblSolution_ = nullptr;
    QPushButton* cmdOK_ = nullptr;
    QPushButton* cmdVuOutFile_ = nullptr;
    std::vector<MirroredMenu> menus_;
    std::vector<MirroredAction> actions_;
    std::vector<QAction*> recent_;
    QActionGroup* units_ = nullptr; ///< one of them is chosen
    FlowStage shownStage_ = FlowStage::Rest;
    bool ending_ = false;
};

} // namespace korvane
