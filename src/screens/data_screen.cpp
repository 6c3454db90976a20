#include "screens/data_screen.h"

#include "problem/save_losses.h"
#include "runtime/number_text.h"
#include "screens/field.h"
#include "screens/field_table.h"
#include "widgets/geometry.h"

#include <QApplication>
#include <QEvent>
#include <QFrame>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace korvane {

namespace {

constexpr double HeadingGap = 120; // twips

} // namespace

DataScreen::DataScreen(ScreenContext& context, const QString& name, const QString& title)
    : ScreenWindow(context, name, title), remark_(new QLabel(this)), opened_(problem()),
      openedHeadContDataValid_(session().HeadContDataValid) {
    addHelpMenu();
    remark_->setObjectName("lblRemark");
    remark_->setTextFormat(Qt::PlainText);
    remark_->setWordWrap(true);
    remark_->setMargin(pixels(30));
    remark_->setText(" ");
    layout()->addWidget(remark_);
    canvas()->installEventFilter(this);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
        if (now != nullptr && now->window() == this) {
            remarkOnFocus();
        }
    });
}

// ---- building
// ------------------------------------------------------------------------------------

void DataScreen::keepCentred(QWidget* widget, Centre how) {
    centred_.push_back({widget, how, widget->size()});
    arrange();
}

QWidget* DataScreen::makeSheet(double width, double height, double top) {
    auto* sheet = new QWidget(canvas());
    sheet->setObjectName("sheet");
    place(sheet, 0, top, width, height);
    keepCentred(sheet, Centre::Across);
    return sheet;
}

void DataScreen::arrange() {
    int foot = 0; // of the headings, below which stands what is centred both ways
    for (const Centred& entry : centred_) {
        if (entry.how == Centre::Across && !entry.widget->isHidden()) {
            foot = std::max(foot, entry.widget->geometry().bottom() + 1 + pixels(HeadingGap));
        }
    }
    QSize needed;
    for (const Centred& entry : centred_) {
        if (!entry.widget->isHidden()) {
            const int top = entry.how == Centre::Across ? entry.widget->y() : foot;
            needed = needed.expandedTo(entry.least + QSize(0, top));
        }
    }
    canvas()->setMinimumSize(needed);
    for (const Centred& entry : centred_) {
        const QSize room = (canvas()->size() - entry.widget->size()).expandedTo(QSize(0, 0)) / 2;
        const int top =
            entry.how == Centre::Both ? std::max(room.height(), foot) : entry.widget->y();
        entry.widget->move(room.width(), top);
    }
}

bool DataScreen::eventFilter(QObject* watched, QEvent* event) {
    if (watched == canvas() && event->type() == QEvent::Resize) {
        useRoom(canvas()->size());
        arrange();
    }
    return ScreenWindow::eventFilter(watched, event);
}

QPushButton* DataScreen::addButton(QWidget* parent, const QString& name, const QString& caption,
                                   const Place& where, std::function<void()> body) {
    QPushButton* button = makeButton(parent, name, caption, where);
    connect(button, &QPushButton::clicked, this, [this, body = std::move(body)] { run(body); });
    return button;
}

QRadioButton* DataScreen::addOption(QWidget* parent, const QString& name, const QString& caption,
                                    const Place& where, std::function<void()> effect) {
    QRadioButton* option = makeOption(parent, name, caption, where);
    connect(option, &QRadioButton::toggled, this, [this, effect = std::move(effect)](bool on) {
        if (on && !settingOption_) {
            touch();
            run(effect);
        }
    });
    return option;
}

void DataScreen::setOption(QRadioButton* option, bool on) {
    settingOption_ = true;
    if (!on) { // an exclusive group does not let its last one go
        option->setAutoExclusive(false);
    }
    option->setChecked(on);
    option->setAutoExclusive(true);
    settingOption_ = false;
}

void DataScreen::watchFields() {
    watchRemarks();
    for (const Field* field : canvas()->findChildren<Field*>()) {
        connect(field, &Field::textEdited, this, &DataScreen::dataChanged);
    }
}

void DataScreen::watchRemarks() {
    for (const Field* field : canvas()->findChildren<Field*>()) {
        connect(field, &Field::textEdited, this, &DataScreen::remarkOnFocus);
        connect(field, &Field::refused, this, [this, field](const QString& why) {
            // The window can be too small for the notice beside the table.
            if (field->table() == nullptr || !field->table()->noticeIsSeen()) {
                remark(why, true);
            }
        });
    }
}

void DataScreen::setFocusOrder(const std::vector<QWidget*>& order) {
    for (std::size_t place = 1; place < order.size(); ++place) {
        setTabOrder(order[place - 1], order[place]);
    }
}

// ---- keys
// ----------------------------------------------------------------------------------------

void DataScreen::setSides(FieldTable* right, FieldTable* left) {
    sides_[0] = right;
    sides_[1] = left;
}

/// To the same row and column of the other side; from elsewhere to the beginning of the right one.
void DataScreen::goToOtherSide() {
    const auto* field = qobject_cast<Field*>(focusWidget());
    if (sides_[0] == nullptr) {
        return;
    }
    if (field != nullptr && field->table() == sides_[0]) {
        sides_[1]->moveFocus(field->column(), field->row());
    } else if (field != nullptr && field->table() == sides_[1]) {
        sides_[0]->moveFocus(field->column(), field->row());
    } else {
        sides_[0]->moveFocus(0, 1);
    }
}

void DataScreen::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_F6) {
        goToOtherSide();
        event->accept();
        return;
    }
    ScreenWindow::keyPressEvent(event);
}

void DataScreen::dataChanged() {
    session().DataChanged = 1;
    touch();
}

// ---- remarks
// -------------------------------------------------------------------------------------

Problem DataScreen::typedProblem() {
    Problem typed = problem();
    for (const Field* field : canvas()->findChildren<Field*>()) {
        const FieldMeaning& meaning = field->meaning();
        if (meaning.number && field->isVisible() && field->isEnabled()) {
            rulesOf(*meaning.number).at(typed, meaning.side, meaning.row) =
                valueAtHead(field->entry());
        }
    }
    takeCounts(typed);
    return typed;
}

const void* DataScreen::placeOf(const Field& field, Problem& typed) {
    const FieldMeaning& meaning = field.meaning();
    return meaning.number ? &rulesOf(*meaning.number).at(typed, meaning.side, meaning.row)
                          : nullptr;
}

QString DataScreen::lossAt(const Field& field) {
    Problem typed = typedProblem();
    const void* place = placeOf(field, typed);
    QString text;
    for (const SaveLoss& loss : lossesOfSave(typed)) {
        if (loss.place == place && place != nullptr) {
            text += QString(" %1: %2.").arg(loss.rule->value, loss.rule->effect);
        }
    }
    return text;
}

/// Limits and unit of the field in focus, and what a file would make of its value. The line is
/// never empty, so that nothing moves.
void DataScreen::remarkOnFocus() {
    const auto* field = qobject_cast<const Field*>(focusWidget());
    if (field == nullptr) {
        remark("F1 opens the guide at this section.", false);
        return;
    }
    const FieldMeaning& meaning = field->meaning();
    const QString loss = lossAt(*field);
    remark(meaning.name + (meaning.limits.isEmpty() ? "." : ": " + meaning.limits + ".") + loss,
           !loss.isEmpty());
}

void DataScreen::remark(const QString& text, bool warning) {
    if (warning) {
        paintGround(remark_, WarningGround, RequiredColour);
    } else {
        remark_->setPalette({});
        remark_->setAutoFillBackground(false);
    }
    remark_->setText(text);
    layout()->activate(); // it can need a second line
    showFocus();
}

void DataScreen::showEvent(QShowEvent* event) {
    ScreenWindow::showEvent(event);
    remarkOnFocus();
}

// ---- boxes
// ---------------------------------------------------------------------------------------

Answer DataScreen::offer(const MessageBox& box) {
    const Answer answer = ask(box);
    if (answer != Answer::Cancel && failed_ != nullptr) {
        failed_->setFocus(Qt::TabFocusReason); // which selects the text
    }
    failed_ = nullptr;
    return answer;
}

void DataScreen::frameClose() {
    if (touched_) {
        finishStage();
        return;
    }
    problem() = opened_;
    session().HeadContDataValid = openedHeadContDataValid_;
    accept();
}

} // namespace korvane
