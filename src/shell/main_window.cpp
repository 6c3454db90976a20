#include "shell/main_window.h"

#include "commands/commands.h"
#include "commands/problem_name.h"
#include "commands/recent_files.h"
#include "commands/recovery.h"
#include "commands/told_boxes.h"
#include "shell/picture.h"
#include "widgets/gate.h"
#include "widgets/geometry.h"
#include "widgets/help_viewer.h"
#include "widgets/shown_text.h"

#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QFrame>
#include <QKeyEvent>
#include <QLabel>
#include <QMenuBar>
#include <QMimeData>
#include <QPushButton>
#include <QShortcut>
#include <QStyle>
#include <QTimer>
#include <QUrl>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace korvane {

namespace {

constexpr double ReviewWidth = 4995;  // twips
constexpr double ReviewHeight = 3075; // twips; both panels fit 1024 by 768 pixels at 200 %
constexpr double DoneWidth = 5400;    // twips, room for the longer wording
constexpr double DoneHeight = 1800;   // twips

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
                         std::function<void(QWidget*, Help)> showHelp)
    : session_(session), desktop_(desktop), showHelp_(std::move(showHelp)) {
    setObjectName("CKORVANE");
    setAcceptDrops(true);
    menuBar()->setNativeMenuBar(false);
    image1_ = new Picture(this);
    image1_->setObjectName("Image1");
    QSizePolicy policy = image1_->sizePolicy();
    policy.setRetainSizeWhenHidden(true); // the line below stays where it is
    image1_->setSizePolicy(policy);
    auto* centre = new QWidget(this);
    centre->setObjectName("clientArea");
    auto* layout = new QVBoxLayout(centre);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(image1_, 1);
    lblSolution_ = new QLabel;
    lblSolution_->setObjectName("lblSolution");
    lblSolution_->setAccessibleName("Remark on the file and outcome of the solution");
    lblSolution_->setTextFormat(Qt::PlainText);
    lblSolution_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    lblSolution_->setWordWrap(true);
    lblSolution_->setMargin(pixels(90));
    lblSolution_->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    layout->addWidget(lblSolution_);
    setCentralWidget(centre);
    createMenus(screens);
    connect(new QShortcut(Qt::Key_F1, this), &QShortcut::activated, this,
            [this] { command([this] { showHelp_(this, Help::OfWindow); }); });
    createReviewFrame(screens);
    createDonePanel();
    const QSize room = screenRoom(this);
    setMinimumSize(
        QSize(pixels(DoneWidth + 480), pixels(ReviewHeight + 960)) // the panels stay whole
            .boundedTo(room));
    resize(QSize(pixels(11600), pixels(8200)).boundedTo(room));
    mirror();
}

void ShellWindow::command(const std::function<void()>& body) {
    enter(session_, this, body);
    keepAtRest(session_);
    enter(session_, this, [this] { tellFilesLeft(desktop_); });
    mirror();
}

void ShellWindow::addMenu(const MenuRow& row) {
    const MenuItem& item = session_.menus.*row.item;
    const QString caption = QString::fromStdString(item.caption);
    QMenu* menu = row.menu == nullptr ? menuBar()->addMenu(caption)
                                      : findChild<QMenu*>(row.menu)->addMenu(caption);
    menu->setObjectName(row.name);
    menus_.push_back({menu, &item});
    if (row.item == &Menus::recentFiles) {
        createRecentMenu(menu);
    }
}

void ShellWindow::addEntry(const MenuRow& row, const ScreenTable& screens) {
    const MenuItem& item = session_.menus.*row.item;
    QAction* action = findChild<QMenu*>(row.menu)->addAction(QString::fromStdString(item.caption));
    action->setObjectName(row.name);
    action->setShortcut(QKeySequence(row.keys));
    connect(action, &QAction::triggered, this, [this, row] { command([&] { run(row); }); });
    if (row.units) {
        action->setCheckable(true);
        units_->addAction(action);
    }
    actions_.push_back({action, &item, row.units, !row.screen || screens.contains(*row.screen)});
}

void ShellWindow::createMenus(const ScreenTable& screens) {
    units_ = new QActionGroup(this);
    for (const MenuRow& row : menuRows()) {
        if (row.isMenu()) {
            addMenu(row);
        } else if (row.item == nullptr) {
            findChild<QMenu*>(row.menu)->addSeparator()->setObjectName(row.name);
        } else {
            addEntry(row, screens);
        }
    }
}

void ShellWindow::run(const MenuRow& row) {
    if (row.command != nullptr) {
        row.command(session_, desktop_);
    } else if (row.help) {
        showHelp_(this, *row.help);
    } else if (row.units) {
        session_.units = *row.units;
    } else {
        viewScreen(session_, desktop_, *row.screen);
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
    place(title, 240, 150, ReviewWidth - 2 * 240, 480);
    cmdVuOutFile_ = addReviewButton("cmdVuOutFile", "&View Output File", 765,
                                    [this] { viewScreen(session_, desktop_, Screen::VUINECHO); });
    QPushButton* plot = addReviewButton("cmdPlotPres", "&Plot Initial Pressures", 1320, [this] {
        viewScreen(session_, desktop_, Screen::VUSOLPLT);
    });
    plot->setEnabled(screens.contains(Screen::VUSOLPLT));
    QPushButton* go = addReviewButton("cmdContinue", "&Continue Solution", 1875,
                                      [this] { continueSolution(session_, desktop_); });
    QPushButton* stop = addReviewButton("cmdDiscontinue", "&Discontinue Solution", 2430,
                                        [this] { discontinueSolution(session_); });
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
    place(panDoneText_, 960, 240, DoneWidth - 960 - 240, 720);
    panDoneSign_ = new QLabel(panDone_);
    panDoneSign_->setObjectName("panDoneSign");
    panDoneSign_->setAlignment(Qt::AlignCenter);
    place(panDoneSign_, 240, 240, 720, 720);
    cmdOK_ = new QPushButton("&OK", panDone_);
    cmdOK_->setObjectName("cmdOK");
    cmdOK_->setAutoDefault(true);
    place(cmdOK_, (DoneWidth - 1200) / 2, 1120, 1200, 465);
    connect(cmdOK_, &QPushButton::clicked, this,
            [this] { command([this] { acceptResults(session_); }); });
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
        mirrored.action->setChecked(mirrored.units == session_.units);
    }
    mirrorRecentFiles();
    mirrorPanels();
    setWindowTitle(shownText(titleText(session_)).replace("[*]", "[*][*]")); // as it stands
    lblSolution_->setText(shownText(statusLine(session_)));
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
    // In the picture's place, so that the line below stays free.
    centralWidget()->layout()->activate();
    const QPoint centre = centralWidget()->pos() + image1_->geometry().center();
    for (QFrame* panel : {fraSoilOut_, panDone_}) {
        if (panel != nullptr) {
            QRect frame = panel->geometry();
            frame.moveCenter(centre);
            frame.moveTop(std::max(frame.top(), centralWidget()->y()));
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
    return session_.menus.file.enabled && QApplication::activeModalWidget() == nullptr;
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
    command([this] { exitProgram(session_, desktop_); });
    if (ending_) {
        event->accept();
    }
}

} // namespace korvane
