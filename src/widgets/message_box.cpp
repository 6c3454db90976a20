#include "widgets/message_box.h"

#include "runtime/utf8_text.h"
#include "widgets/busy_pointer.h"
#include "widgets/geometry.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMessageBox>
#include <QPointer>
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

/// A message box that tells leaving it from its buttons: Yes/No cannot be left, and a box whose
/// Cancel deletes is left without Cancel. It is as wide as its title, and a text that is larger
/// than the screen scrolls.
class Box : public QMessageBox {
  public:
    Box(QWidget* parent, const MessageBox& box, const ShowHelp& showHelp)
        : QMessageBox(parent), showHelp_(showHelp), mustChoose_(box.buttons == Buttons::YesNo),
          goesBack_(box.cancelDeletes) {
        if (mustChoose_) { // no cross that would be refused
            setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint);
        }
    }

    bool wentBack() const { return wentBack_; }

  protected:
    void showEvent(QShowEvent* event) override {
        QMessageBox::showEvent(event);
        fit();
    }
    /// A change of style and of what is in the box let the toolkit lay it out anew.
    void changeEvent(QEvent* event) override {
        QMessageBox::changeEvent(event);
        if (isVisible()) {
            fit();
        }
    }
    bool event(QEvent* event) override {
        const bool taken = QMessageBox::event(event);
        if (event->type() == QEvent::LayoutRequest && isVisible()) {
            fit();
        }
        return taken;
    }
    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() == Qt::Key_Escape && leave()) {
            event->accept();
            return;
        }
        if (event->key() == Qt::Key_F1 && showHelp_) {
            event->accept();
            showHelp_(this);
            return;
        }
        QMessageBox::keyPressEvent(event);
    }
    void closeEvent(QCloseEvent* event) override {
        if (!wentBack_ && leave()) {
            event->ignore(); // it is over already, or never
            return;
        }
        QMessageBox::closeEvent(event);
    }

  private:
    /// False where the toolkit's own way is right.
    bool leave() {
        if (goesBack_) {
            wentBack_ = true;
            done(QDialog::Rejected);
        }
        return mustChoose_ || goesBack_;
    }

    void fit() {
        constexpr int FrameButtons = 120; // pixels, icon and buttons of the frame
        const QSize room = screenRoom(this);
        QFont titleFont = font();
        titleFont.setBold(true);
        const int title = QFontMetrics(titleFont).horizontalAdvance(windowTitle()) + FrameButtons;
        // Lines of usual length stay whole; the toolkit breaks them early on a small screen.
        constexpr int UsualLine = 500; // pixels
        const int line = QFontMetrics(textLabel().font()).size(0, text()).width() + 1;
        const int lines = std::min(line, UsualLine) + width() - textLabel().width();
        const int needed = std::max({width(), title, lines, layout()->totalMinimumSize().width()});
        const int wide = std::min(needed, room.width());
        const int high = layout()->hasHeightForWidth() ? layout()->totalHeightForWidth(wide)
                                                       : layout()->totalMinimumSize().height();
        if (wide > width()) { // it grows to both sides, but not off the screen
            const QRect area = screen()->availableGeometry();
            const int rightmost = area.left() + room.width() - wide;
            move(std::max(area.left(), std::min(x() - (wide - width()) / 2, rightmost)), y());
        }
        setFixedSize(wide, high);
        layout()->activate();
        const QLabel& label = textLabel();
        if (high > room.height() || label.minimumSizeHint().width() > label.width()) {
            scrollText(room);
        }
    }

    QLabel& textLabel() const { return *findChild<QLabel*>("qt_msgbox_label"); }

    void scrollText(QSize room) {
        auto* grid = qobject_cast<QGridLayout*>(layout());
        QLabel* label = &textLabel();
        if (grid->indexOf(label) < 0) { // it scrolls already
            return;
        }
        int row = 0;
        int column = 0;
        int rows = 0;
        int columns = 0;
        grid->getItemPosition(grid->indexOf(label), &row, &column, &rows, &columns);
        const QSize others = size() - label->size();
        const QSize most = room - others;
        grid->removeWidget(label);
        delete scroll_.data();
        scroll_ = new QScrollArea(this);
        scroll_->setObjectName("messageScroll");
        scroll_->setFrameShape(QFrame::NoFrame);
        const int bar = scroll_->verticalScrollBar()->sizeHint().width();
        // Lines break at blanks; a path without any is wider than the screen.
        const int wide = std::max(label->minimumSizeHint().width(),
                                  std::min(label->width(), most.width() - bar));
        label->setFixedSize(wide, label->wordWrap() ? label->heightForWidth(wide)
                                                    : label->sizeHint().height());
        scroll_->setWidget(label);
        const QSize seen =
            (label->size() + QSize(bar, wide > most.width() - bar ? bar : 0)).boundedTo(most);
        scroll_->setMinimumSize(seen);
        grid->addWidget(scroll_, row, column, rows, columns);
        scroll_->show();
        setFixedSize(seen + others);
        centreOnScreen(this);
    }

    const ShowHelp& showHelp_;
    QPointer<QScrollArea> scroll_;
    bool mustChoose_;
    bool goesBack_;
    bool wentBack_ = false;
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
    case Buttons::YesNoCancel:
        return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
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

Answer askBox(QWidget* parent, const MessageBox& box, const ShowHelp& showHelp) {
    const BusyPointerOff pointer;
    Box dialog(parent, box, showHelp);
    dialog.setObjectName("messageBox");
    dialog.setWindowTitle(shownMessage(box.title));
    dialog.setTextFormat(Qt::PlainText);
    dialog.setText(shownMessage(box.text));
    dialog.setIcon(toolkitIcon(box.icon));
    dialog.setStandardButtons(toolkitButtons(box.buttons));
    dialog.setStyleSheet("QDialogButtonBox { button-layout: 0 }"); // affirmative button first
    const QMessageBox::StandardButtons buttons = dialog.standardButtons();
    dialog.setDefaultButton(buttons.testFlag(QMessageBox::Yes) ? QMessageBox::Yes
                                                               : QMessageBox::Ok);
    if (buttons.testFlag(QMessageBox::Cancel)) {
        dialog.setEscapeButton(QMessageBox::Cancel);
    } else if (box.buttons == Buttons::Ok) {
        dialog.setEscapeButton(QMessageBox::Ok);
    }
    const int button = dialog.exec();
    return dialog.wentBack() ? Answer::Back : answerOf(button);
}

} // namespace korvane
