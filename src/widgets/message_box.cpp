#include "widgets/message_box.h"

#include "runtime/utf8_text.h"
#include "widgets/busy_pointer.h"
#include "widgets/geometry.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QShowEvent>

#include <algorithm>

namespace korvane {

namespace {

QString shownMessage(const std::string& text) {
    return QString::fromStdString(messageText(text));
}

/// A message box of which Yes/No cannot be left but by its buttons. It is as wide as its title, and
/// a text that is higher than the screen scrolls.
class Box : public QMessageBox {
  public:
    Box(QWidget* parent, bool mustChoose) : QMessageBox(parent), mustChoose_(mustChoose) {
        if (mustChoose) { // no cross that would be refused
            setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint);
        }
    }

    /// Call last: the toolkit lays the box out anew with each part that it is given.
    void makeRoomForTitle() {
        constexpr int FrameButtons = 120; // pixels, icon and buttons of the frame
        auto* grid = qobject_cast<QGridLayout*>(layout());
        QFont font = this->font();
        font.setBold(true);
        const int title = QFontMetrics(font).horizontalAdvance(windowTitle()) + FrameButtons;
        grid->addItem(new QSpacerItem(std::min(title, screenRoom(this).width()) -
                                          grid->contentsMargins().left() -
                                          grid->contentsMargins().right(),
                                      0),
                      grid->rowCount(), 0, 1, grid->columnCount());
    }

  protected:
    void showEvent(QShowEvent* event) override {
        QMessageBox::showEvent(event);
        const QSize room = screenRoom(this);
        if (height() > room.height() && !scrolls_) {
            scrolls_ = true;
            scrollText(room);
        }
    }
    void keyPressEvent(QKeyEvent* event) override {
        if (mustChoose_ && event->key() == Qt::Key_Escape) {
            event->accept();
            return;
        }
        QMessageBox::keyPressEvent(event);
    }
    void closeEvent(QCloseEvent* event) override {
        if (mustChoose_) {
            event->ignore();
            return;
        }
        QMessageBox::closeEvent(event);
    }

  private:
    void scrollText(QSize room) {
        auto* grid = qobject_cast<QGridLayout*>(layout());
        auto* label = findChild<QLabel*>("qt_msgbox_label");
        int row = 0;
        int column = 0;
        int rows = 0;
        int columns = 0;
        grid->getItemPosition(grid->indexOf(label), &row, &column, &rows, &columns);
        grid->removeWidget(label);
        label->setFixedSize(label->size());
        auto* area = new QScrollArea(this);
        area->setObjectName("messageScroll");
        area->setFrameShape(QFrame::NoFrame);
        area->setWidget(label);
        const int bar = area->verticalScrollBar()->sizeHint().width();
        area->setMinimumWidth(label->width() + bar);
        grid->addWidget(area, row, column, rows, columns);
        setFixedSize(std::min(width() + bar, room.width()), room.height());
        centreOnScreen(this);
    }

    bool mustChoose_;
    bool scrolls_ = false;
};

QMessageBox::Icon toolkitIcon(Icon icon) {
    switch (icon) {
    case Icon::Exclamation:
        return QMessageBox::Warning;
    case Icon::Question:
        return QMessageBox::Question;
    case Icon::Information:
        return QMessageBox::Information;
    case Icon::Critical:
        return QMessageBox::Critical;
    case Icon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

QMessageBox::StandardButtons toolkitButtons(Buttons buttons) {
    switch (buttons) {
    case Buttons::OkCancel:
        return QMessageBox::Ok | QMessageBox::Cancel;
    case Buttons::YesNo:
        return QMessageBox::Yes | QMessageBox::No;
    case Buttons::Ok:
        break;
    }
    return QMessageBox::Ok;
}

Answer answerOf(int button) {
    switch (button) {
    case QMessageBox::Cancel:
        return Answer::Cancel;
    case QMessageBox::Yes:
        return Answer::Yes;
    case QMessageBox::No:
        return Answer::No;
    default:
        return Answer::Ok;
    }
}

} // namespace

Answer askBox(QWidget* parent, const MessageBox& box) {
    const BusyPointerOff pointer;
    Box dialog(parent, box.buttons == Buttons::YesNo);
    dialog.setObjectName("messageBox");
    dialog.setWindowTitle(shownMessage(box.title));
    dialog.setTextFormat(Qt::PlainText);
    dialog.setText(shownMessage(box.text));
    dialog.setIcon(toolkitIcon(box.icon));
    dialog.setStandardButtons(toolkitButtons(box.buttons));
    dialog.setStyleSheet("QDialogButtonBox { button-layout: 0 }"); // affirmative button first
    const auto first = box.buttons == Buttons::YesNo ? QMessageBox::Yes : QMessageBox::Ok;
    dialog.setDefaultButton(first);
    if (box.buttons == Buttons::OkCancel) {
        dialog.setEscapeButton(QMessageBox::Cancel);
    } else if (box.buttons == Buttons::Ok) {
        dialog.setEscapeButton(QMessageBox::Ok);
    }
    dialog.makeRoomForTitle();
    return answerOf(dialog.exec());
}

} // namespace korvane
