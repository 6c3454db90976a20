#include "widgets/message_box.h"

#include "widgets/busy_pointer.h"
#include "widgets/shown_text.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QMessageBox>
#include <QPushButton>

namespace korvane {

namespace {

/// A message box of which Yes/No cannot be left but by its buttons.
class Box : public QMessageBox {
  public:
    Box(QWidget* parent, bool mustChoose) : QMessageBox(parent), mustChoose_(mustChoose) {}

  protected:
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
    bool mustChoose_;
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
    dialog.setWindowTitle(shownText(box.title));
    dialog.setTextFormat(Qt::PlainText);
    dialog.setText(shownText(box.text));
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
    return answerOf(dialog.exec());
}

} // namespace korvane
