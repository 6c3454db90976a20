#include "shell/main_window.h"

#include "commands/commands.h"
#include "commands/problem_name.h"
#include "commands/recent_files.h"
#include "commands/recovery.h"
#include "shell/picture.h"
#include "widgets/gate.h"
#include "widgets/geometry.h"
#include "widgets/shown_text.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QFrame>
#include <QKeyEvent>
#include <QLabel>
#include <QMenuBar>
#include <QMimeData>
#include <QPushButton>
#include <QStyle>
#include <QTimer>
#include <QUrl>
#include <QVBoxLayout>

#include <utility>

namespace korvane {

namespace {

constexpr double ReviewWidth = 4995;  // twips
constexpr double ReviewHeight = 3735; // twips
constexpr double DoneWidth = 6200;    // twips, room for the longer wording
constexpr double DoneHeight = 1800;   // twips

/// Indices in the menu's control arrays that are commands and not submenus or separators.
constexpr int SaveMenu = 3;
constexpr int PrintMenu = 5;
constexpr int RecentMenu = 9;

struct Shortcut {
    const char* item;
    const char* keys;
};

constexpr Shortcut Shortcuts[] = {
    {"mnuFileItem_0", "Ctrl+N"},
    {"mnuFileItem_1", "Ctrl+O"},
    {"mnuSaveItem_0", "Ctrl+S"},
    {"mnuSaveItem_1", "Ctrl+Shift+S"},
    {"mnuPrintItem_0", "Ctrl+Shift+P"},
    {"mnuPrintItem_1", "Ctrl+P"},
    {"mnuHelpItem_0", "F1"},
};

constexpr Screen ViewScreens[] = {Screen::VUINPTFL, Screen::VUINECHO, Screen::VUINPLOT,
                                  Screen::CANPLOT,  Screen::FREEPLOT, Screen::FIXDPLOT,
                                  Screen::ROWECURV};

/// The one file that a drag brings; empty where it brings anything else.
std::string draggedFile(const QMimeData& data) {
    const QList<QUrl> urls = data.urls();
    return urls.size() == 1 && urls.front().isLocalFile() ? bytesOf(urls.front().toLocalFile())
                                                          : std::string();
}

/// A text of the user as a caption, in which "&" marks no letter.
QString plainCaption(const std::string& text) {
    return shownText(text).replace("&", "&&");
}

QFrame* makePanel(QWidget* parent, const char* name) {
    auto* frame = new QFrame(parent);
    frame->setObjectName(name);
    frame->setFrameStyle(QFrame::Panel | QFrame::Raised);
    frame->setLineWidth(2);
    frame->setAutoFillBackground(true);
    frame->hide();
    return frame;
}

} // namespace

ShellWindow::ShellWindow(Session& session, Desktop& desktop, const ScreenTable& screens,
                         std::function<void(QWidget*, int)> showHelp)
    : session_(session), desktop_(desktop), showHelp_(std::move(showHelp)) {
    setObjectName("CKORVANE");
    setAcceptDrops(true);
    menuBar()->setNativeMenuBar(false);
    image1_ = new Picture(this);
    image1_->setObjectName("Image1");
    auto* centre = new QWidget(this);
    centre->setObjectName("clientArea");
    auto* layout = new QVBoxLayout(centre);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(image1_, 1);
    lblSolution_ = new QLabel;
    lblSolution_->setObjectName("lblSolution");
    lblSolution_->setAccessibleName("Outcome of the solution");
    lblSolution_->setTextFormat(Qt::PlainText);
    lblSolution_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    lblSolution_->setWordWrap(true);
    lblSolution_->setMargin(pixels(90));
    lblSolution_->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    layout->addWidget(lblSolution_);
    setCentralWidget(centre);
    createMenus(screens);
    createReviewFrame(screens);
    createDonePanel();
    const QSize room = screenRoom(this);
    setMinimumSize(
        QSize(pixels(DoneWidth + 480), pixels(ReviewHeight + 960)) // the panels stay whole
            .boundedTo(room));
    resize(QSize(pixels(11600), pixels(8200)).boundedTo(room));
    setShortcuts();
    mirror();
}

void ShellWindow::command(const std::function<void()>& body) {
    enter(session_, this, body);
    keepAtRest(session_);
    mirror();
}

QMenu* ShellWindow::addMenu(QMenu* parent, const char* name, const MenuItem& item) {
    const QString caption = QString::fromStdString(item.caption);
    QMenu* menu = parent == nullptr ? menuBar()->addMenu(caption) : parent->addMenu(caption);
    menu->setObjectName(name);
    menus_.push_back({menu, &item});
    return menu;
}

QAction* ShellWindow::addItem(QMenu* menu, const char* name, int index, const MenuItem& item,
                              std::function<void()> body, bool hasScreen) {
    QAction* action = item.caption.empty() ? menu->addSeparator()
                                           : menu->addAction(QString::fromStdString(item.caption));
    action->setObjectName(QString("%1_%2").arg(name).arg(index));
    if (action->isSeparator()) {
        return action;
    }
    connect(action, &QAction::triggered, this, [this, body = std::move(body)] { command(body); });
    actions_.push_back({action, &item, hasScreen});
    return action;
}

void ShellWindow::createMenus(const ScreenTable& screens) {
    const Menus& menus = session_.menus;
    createFileMenu();
    QMenu* edit = addMenu(nullptr, "mnuEdit", menus.mnuEdit);
    addItem(
        edit, "mnuEditItem", 0, menus.mnuEditItem(0),
        [this] { mnuEditItem_Click(session_, desktop_); }, screens.contains(Screen::KEYIN));
    createViewMenu(screens);
    QMenu* solve = addMenu(nullptr, "mnuSolve", menus.mnuSolve);
    addItem(solve, "mnuSolveItem", 0, menus.mnuSolveItem(0),
            [this] { mnuSolveItem_Click(session_, desktop_); });
    createHelpMenu();
}

void ShellWindow::createFileMenu() {
    const Menus& menus = session_.menus;
    QMenu* file = addMenu(nullptr, "mnuFile", menus.mnuFile);
    for (int index = 0; index < menus.mnuFileItem.size(); ++index) {
        const MenuItem& item = menus.mnuFileItem(index);
        if (index == SaveMenu) {
            QMenu* save = addMenu(file, "mnuFileItem_3", item);
            for (int kind = 0; kind < menus.mnuSaveItem.size(); ++kind) {
                addItem(save, "mnuSaveItem", kind, menus.mnuSaveItem(kind),
                        [this, kind] { mnuSaveItem_Click(session_, desktop_, kind); });
            }
        } else if (index == PrintMenu) {
            QMenu* print = addMenu(file, "mnuFileItem_5", item);
            for (int kind = 0; kind < menus.mnuPrintItem.size(); ++kind) {
                addItem(print, "mnuPrintItem", kind, menus.mnuPrintItem(kind),
                        [this, kind] { mnuPrintItem_Click(session_, desktop_, kind); });
            }
        } else if (index == RecentMenu) {
            createRecentMenu(addMenu(file, "mnuFileItem_9", item));
        } else {
            addItem(file, "mnuFileItem", index, item,
                    [this, index] { mnuFileItem_Click(session_, desktop_, index); });
        }
    }
}

void ShellWindow::createRecentMenu(QMenu* menu) {
    for (std::size_t place = 0; place < RecentLimit; ++place) {
        QAction* action = menu->addAction(QString());
        action->setObjectName(QString("mnuRecentItem_%1").arg(place));
        connect(action, &QAction::triggered, this,
                [this, place] { openFile(std::string(session_.recentFiles.at(place))); });
        recent_.push_back(action);
    }
}

void ShellWindow::setShortcuts() {
    for (const Shortcut& shortcut : Shortcuts) {
        findChild<QAction*>(shortcut.item)->setShortcut(QKeySequence(shortcut.keys));
    }
}

void ShellWindow::createViewMenu(const ScreenTable& screens) {
    const Menus& menus = session_.menus;
    QMenu* view = addMenu(nullptr, "mnuView", menus.mnuView);
    for (int index = 0; index < menus.mnuViewItem.size(); ++index) {
        addItem(
            view, "mnuViewItem", index, menus.mnuViewItem(index),
            [this, index] { mnuViewItem_Click(session_, desktop_, index); },
            screens.contains(ViewScreens[index]));
    }
}

void ShellWindow::createHelpMenu() {
    const Menus& menus = session_.menus;
    QMenu* help = addMenu(nullptr, "mnuHelp", menus.mnuHelp);
    for (int index = 0; index < menus.mnuHelpItem.size(); ++index) {
        addItem(help, "mnuHelpItem", index, menus.mnuHelpItem(index),
                [this, index] { showHelp_(this, index); });
    }
}

QPushButton* ShellWindow::addReviewButton(const char* name, const char* caption, double top,
                                          std::function<void()> body) {
    auto* button = new QPushButton(caption, fraSoilOut_);
    button->setObjectName(name);
    button->setAutoDefault(true);
    place(button, 720, top, ReviewWidth - 2 * 720, 495);
    connect(button, &QPushButton::clicked, this, [this, body = std::move(body)] { command(body); });
    return button;
}

void ShellWindow::createReviewFrame(const ScreenTable& screens) {
    fraSoilOut_ = makePanel(this, "fraSoilOut");
    fraSoilOut_->resize(pixels(ReviewWidth), pixels(ReviewHeight));
    auto* title = new QLabel("Soil Pressure Calculations Complete", fraSoilOut_);
    title->setObjectName("SSPanel1");
    title->setTextFormat(Qt::PlainText);
    title->setAlignment(Qt::AlignCenter);
    title->setWordWrap(true);
    title->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    place(title, 240, 240, ReviewWidth - 2 * 240, 600);
    cmdVuOutFile_ = addReviewButton("cmdVuOutFile", "&View Output File", 1020,
                                    [this] { korvane::cmdVuOutFile_Click(session_, desktop_); });
    QPushButton* plot = addReviewButton("cmdPlotPres", "&Plot Initial Pressures", 1650,
                                        [this] { korvane::cmdPlotPres_Click(session_, desktop_); });
    plot->setEnabled(screens.contains(Screen::VUSOLPLT));
    QPushButton* go = addReviewButton("cmdContinue", "&Continue Solution", 2280,
                                      [this] { korvane::cmdContinue_Click(session_, desktop_); });
    QPushButton* stop = addReviewButton("cmdDiscontinue", "&Discontinue Solution", 2910,
                                        [this] { korvane::cmdDiscontinue_Click(session_); });
    setTabOrder(cmdVuOutFile_, plot);
    setTabOrder(plot, go);
    setTabOrder(go, stop);
}

void ShellWindow::createDonePanel() {
    panDone_ = makePanel(this, "panDone");
    panDone_->resize(pixels(DoneWidth), pixels(DoneHeight));
    panDoneText_ = new QLabel(panDone_);
    panDoneText_->setObjectName("panDoneText");
    panDoneText_->setTextFormat(Qt::PlainText);
    panDoneText_->setAlignment(Qt::AlignCenter);
    panDoneText_->setWordWrap(true);
    place(panDoneText_, 960, 240, DoneWidth - 2 * 960, 720);
    panDoneSign_ = new QLabel(panDone_);
    panDoneSign_->setObjectName("panDoneSign");
    panDoneSign_->setAlignment(Qt::AlignCenter);
    place(panDoneSign_, 240, 240, 720, 720);
    cmdOK_ = new QPushButton("&OK", panDone_);
    cmdOK_->setObjectName("cmdOK");
    cmdOK_->setAutoDefault(true);
    place(cmdOK_, (DoneWidth - 1200) / 2, 1120, 1200, 465);
    connect(cmdOK_, &QPushButton::clicked, this,
            [this] { command([this] { korvane::cmdOK_Click(session_); }); });
}

void ShellWindow::mirror() {
    for (const MirroredMenu& mirrored : menus_) {
        QString caption = QString::fromStdString(mirrored.item->caption);
        if (session_.stage != FlowStage::Rest && !mirrored.item->enabled) {
            caption.remove('&'); // a menu that is off leaves Alt+V to the review's button
        }
        mirrored.menu->setTitle(caption);
        mirrored.menu->setEnabled(mirrored.item->enabled);
    }
    for (const MirroredAction& mirrored : actions_) {
        mirrored.action->setText(QString::fromStdString(mirrored.item->caption));
        mirrored.action->setEnabled(mirrored.item->enabled && mirrored.hasScreen);
    }
    mirrorRecentFiles();
    mirrorPanels();
    setWindowTitle(shownText(titleText(session_)).replace("[*]", "[*][*]")); // as it stands
    lblSolution_->setText(shownText(solutionLine(session_)));
    lblSolution_->setVisible(!lblSolution_->text().isEmpty());
    centrePanels();
    if (session_.stage != shownStage_) {
        shownStage_ = session_.stage;
        if (shownStage_ == FlowStage::Review) {
            cmdVuOutFile_->setFocus();
        } else if (shownStage_ == FlowStage::Finished) {
            cmdOK_->setFocus();
        }
    }
}

void ShellWindow::mirrorRecentFiles() {
    const auto& files = session_.recentFiles;
    for (std::size_t place = 0; place < recent_.size(); ++place) {
        QAction* action = recent_[place];
        const bool used = place < files.size();
        action->setVisible(used || place == 0);
        action->setEnabled(used);
        if (used) {
            const QString number = place == 9 ? "1&0" : QString("&%1").arg(place + 1);
            action->setText(number + " " + plainCaption(files[place]));
        } else {
            action->setText("None yet");
        }
    }
}

void ShellWindow::mirrorPanels() {
    const Panels& panels = session_.panels;
    image1_->setVisible(panels.Image1Visible);
    fraSoilOut_->setVisible(panels.fraSoilOutVisible);
    panDone_->setVisible(panels.panDoneVisible);
    panDoneText_->setText(QString::fromStdString(panels.panDoneText));
    // An aborted solution must not look like a complete one.
    QFont font = panDone_->font();
    font.setBold(panels.panDoneAborted);
    panDoneText_->setFont(font);
    const auto sign =
        panels.panDoneAborted ? QStyle::SP_MessageBoxWarning : QStyle::SP_DialogApplyButton;
    panDoneSign_->setPixmap(style()->standardIcon(sign).pixmap(pixels(540)));
    panDoneSign_->setAccessibleName(panels.panDoneAborted ? "Warning" : "Done");
    panDone_->setFrameStyle(panels.panDoneAborted ? QFrame::Box | QFrame::Plain
                                                  : QFrame::Panel | QFrame::Raised);
}

void ShellWindow::centrePanels() {
    const QRect area = centralWidget()->geometry();
    for (QFrame* panel : {fraSoilOut_, panDone_}) {
        if (panel != nullptr) {
            QRect frame = panel->geometry();
            frame.moveCenter(area.center());
            panel->setGeometry(frame);
            panel->raise();
        }
    }
}

void ShellWindow::resizeEvent(QResizeEvent* event) {
    QMainWindow::resizeEvent(event);
    centrePanels();
}

void ShellWindow::keyPressEvent(QKeyEvent* event) {
    // Where no window manager takes Alt+F4.
    if (event->key() == Qt::Key_F4 && event->modifiers() == Qt::AltModifier) {
        close();
        return;
    }
    QMainWindow::keyPressEvent(event);
}

bool ShellWindow::canOpen() const {
    return session_.menus.mnuFile.enabled && QApplication::activeModalWidget() == nullptr;
}

void ShellWindow::openFile(const std::string& path) {
    if (canOpen()) {
        command([&] { openNamedFile(session_, desktop_, path); });
    }
}

void ShellWindow::dragEnterEvent(QDragEnterEvent* event) {
    if (canOpen() && !draggedFile(*event->mimeData()).empty()) {
        event->acceptProposedAction();
    }
}

void ShellWindow::dropEvent(QDropEvent* event) {
    event->acceptProposedAction();
    // Later, so that the program from which it was dragged need not wait for the questions.
    QTimer::singleShot(0, this, [this, path = draggedFile(*event->mimeData())] {
        if (!path.empty()) {
            openFile(path);
        }
    });
}

void ShellWindow::closeEvent(QCloseEvent* event) {
    if (ending_) {
        event->accept();
        return;
    }
    event->ignore();
    if (session_.stage == FlowStage::Solving || QApplication::activeModalWidget() != nullptr) {
        return;
    }
    constexpr int exitItem = 7;
    command([this] { mnuFileItem_Click(session_, desktop_, exitItem); });
    if (ending_) {
        event->accept();
    }
}

} // namespace korvane
