#include "widgets/screen_window.h"

#include "widgets/gate.h"
#include "widgets/help_viewer.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>

namespace korvane {

namespace {

/// The screen below the one that opens.
QWidget* screenBelow(const ScreenContext& context) {
    QWidget* modal = QApplication::activeModalWidget();
    return modal != nullptr ? modal : context.mainWindow;
}

} // namespace

ScreenWindow::ScreenWindow(ScreenContext& context, const QString& name, const QString& title)
    : QDialog(screenBelow(context)), context_(context), menuBar_(new QMenuBar(this)),
      scroll_(new QScrollArea(this)), canvas_(new QWidget) {
    setObjectName(name);
    setWindowTitle(title);
    setModal(true);
    menuBar_->setNativeMenuBar(false);
    menuBar_->setObjectName("menuBar");
    canvas_->setObjectName("canvas");
    scroll_->setWidgetResizable(true);
    scroll_->setFrameShape(QFrame::NoFrame);
    scroll_->setWidget(canvas_);
    scroll_->setFocusPolicy(Qt::NoFocus);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
        if (now != nullptr && now->window() == this) {
            showFocus();
        }
    });
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setMenuBar(menuBar_);
    layout->addWidget(scroll_);
    if (context.mainWindow != nullptr) {
        setGeometry(context.mainWindow->geometry());
    }
}

void ScreenWindow::showFocus() {
    const QWidget* now = focusWidget();
    if (now != nullptr && canvas_->isAncestorOf(now)) {
        const QPoint middle = now->mapTo(canvas_, now->rect().center());
        scroll_->ensureVisible(middle.x(), middle.y(), now->width(), now->height());
    }
}

void ScreenWindow::addHelpMenu() {
    const Menus& menus = session().menus;
    auto* help = menuBar_->addMenu(QString::fromStdString(menus.help.caption));
    help->setObjectName("mnuHelp");
    for (const MenuRow& row : menuRows()) {
        if (row.menu != help->objectName()) {
            continue;
        }
        if (row.item == nullptr) {
            help->addSeparator();
            continue;
        }
        QAction* action = help->addAction(QString::fromStdString((menus.*row.item).caption));
        action->setObjectName(row.name);
        connect(action, &QAction::triggered, this,
                [this, row] { run([&] { context_.showHelp(this, *row.help); }); });
    }
}

void ScreenWindow::run(const std::function<void()>& body) {
    enter(session(), this, body);
}

Answer ScreenWindow::ask(const MessageBox& box) {
    return context_.desktop.Ask(box);
}

/// As if the screen had been reached by the keyboard.
void ScreenWindow::showEvent(QShowEvent* event) {
    setAttribute(Qt::WA_KeyboardFocusChange);
    QDialog::showEvent(event);
}

void ScreenWindow::closeEvent(QCloseEvent* event) {
    event->ignore();
    run([this] { frameClose(); });
}

void ScreenWindow::keyPressEvent(QKeyEvent* event) {
    // Escape closes no screen; Enter pushes the button that has the focus and no other.
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (auto* button = qobject_cast<QPushButton*>(focusWidget()); button != nullptr) {
            button->click();
        }
        [[fallthrough]];
    case Qt::Key_Escape:
        event->accept();
        return;
    case Qt::Key_F1:
        event->accept();
        run([this] { context_.showHelp(this, Help::OfWindow); });
        return;
    default:
        break;
    }
    QDialog::keyPressEvent(event);
}

} // namespace korvane
