#include "widgets/find_bar.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>

#include <utility>

namespace korvane {

FindBar::FindBar(QWidget* window, Finder finder)
    : QWidget(window), finder_(std::move(finder)), words_(new QLineEdit), told_(new QLabel) {
    setObjectName("findBar");
    words_->setObjectName("findWords");
    words_->setPlaceholderText("Words to find");
    words_->setAccessibleName("Words to find");
    told_->setObjectName("findTold");
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(6, 3, 6, 3);
    layout->addWidget(words_, 1);
    const auto button = [&](const char* name, const char* caption, From from) {
        auto* made = new QPushButton(caption);
        made->setObjectName(name);
        made->setAutoDefault(false);
        connect(made, &QPushButton::clicked, this, [this, from] { find(from); });
        layout->addWidget(made);
    };
    button("findNext", "&Next", From::Behind);
    button("findPrevious", "&Previous", From::Before);
    layout->addWidget(told_);
    connect(words_, &QLineEdit::textChanged, this, [this] { find(From::Here); });
    const auto shortcut = [&](QKeySequence::StandardKey keys, auto act) {
        connect(new QShortcut(keys, window), &QShortcut::activated, this, act);
    };
    shortcut(QKeySequence::Find, [this] { open(); });
    shortcut(QKeySequence::FindNext, [this] { next(); });
    shortcut(QKeySequence::FindPrevious, [this] { previous(); });
    hide();
}

void FindBar::open() {
    show();
    words_->setFocus();
    words_->selectAll();
}

void FindBar::find(From from) {
    const QString words = words_->text();
    if (words.isEmpty()) {
        told_->clear();
        return;
    }
    told_->setText(finder_(words, from) ? QString() : "Not found");
}

void FindBar::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (window()->focusWidget() == words_) {
            find(event->modifiers().testFlag(Qt::ShiftModifier) ? From::Before : From::Behind);
        } else if (auto* button = qobject_cast<QPushButton*>(focusWidget()); button != nullptr) {
            button->click();
        }
        break;
    case Qt::Key_Escape:
        hide();
        break;
    default:
        QWidget::keyPressEvent(event);
        return;
    }
    event->accept();
}

void keepSelectionVisible(QWidget* text) {
    QPalette palette = text->palette();
    for (const QPalette::ColorRole role : {QPalette::Highlight, QPalette::HighlightedText}) {
        palette.setColor(QPalette::Inactive, role, palette.color(QPalette::Active, role));
    }
    text->setPalette(palette);
}

} // namespace korvane
