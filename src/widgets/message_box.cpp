#include "widgets/message_box.h"

#include "widgets/busy_pointer.h"
#include "widgets/shown_text.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QMessageBox>
#include <QPushButton>

namespace korvane {

namespace {

/// A message box that tells leaving it from its buttons: Yes/No cannot be left, and a box whose
/// Cancel deletes is left without Cancel.
class Box : public QMessageBox {
  public:
    Box(QWidget* parent, const MessageBox& box)
        : QMessageBox(parent), mustChoose_(box.buttons == Buttons::YesNo),
          goesBack_(box.cancelDeletes) {}

    bool wentBack() const { return wentBack_; }

  protected:
    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() == Qt::Key_Escape && leave()) {
            event->accept();
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
    Box dialog(parent, box);
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
    const int button = dialog.exec();
    return dialog.wentBack() ? Answer::Back : answerOf(button);
}

} // namespace korvane
