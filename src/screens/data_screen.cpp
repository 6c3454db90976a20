#include "screens/data_screen.h"

#include "screens/field.h"
#include "widgets/geometry.h"

#include <QEvent>
#include <QFrame>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace korvane {

DataScreen::DataScreen(ScreenContext& context, const QString& name, const QString& title)
    : ScreenWindow(context, name, title), remark_(new QLabel(this)), opened_(problem()),
      openedHeadContDataValid_(session().HeadContDataValid) {
    addHelpMenu();
    remark_->setObjectName("lblRemark");
    remark_->setTextFormat(Qt::PlainText);
    remark_->setMargin(pixels(30));
    layout()->addWidget(remark_);
    canvas()->installEventFilter(this);
}

void DataScreen::keepCentred(QWidget* widget, Centre how) {
    centred_.push_back({widget, how});
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
    QSize needed;
    for (const Centred& entry : centred_) {
        if (!entry.widget->isHidden()) {
            const int top = entry.how == Centre::Across ? entry.widget->y() : 0;
            needed = needed.expandedTo(entry.widget->size() + QSize(0, top));
        }
    }
    canvas()->setMinimumSize(needed);
    for (const Centred& entry : centred_) {
        const QSize room = (canvas()->size() - entry.widget->size()).expandedTo(QSize(0, 0)) / 2;
        entry.widget->move(room.width(),
                           entry.how == Centre::Both ? room.height() : entry.widget->y());
    }
}

bool DataScreen::eventFilter(QObject* watched, QEvent* event) {
    if (watched == canvas() && event->type() == QEvent::Resize) {
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
        connect(field, &Field::textEdited, this, [this] { remark({}); });
        connect(field, &Field::refused, this, &DataScreen::remark);
    }
}

void DataScreen::setFocusOrder(const std::vector<QWidget*>& order) {
    for (std::size_t place = 1; place < order.size(); ++place) {
        setTabOrder(order[place - 1], order[place]);
    }
}

void DataScreen::dataChanged() {
    session().DataChanged = 1;
    touch();
}

void DataScreen::remark(const QString& text) {
    remark_->setText(text);
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
