#include "widgets/menu_keys.h"

#include <QAction>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>

#include <algorithm>

namespace korvane {
namespace {

QList<QAction*> entriesOf(const QMenu& menu, const QKeySequence& letter) {
    QList<QAction*> entries;
    for (QAction* action : menu.actions()) {
        if (QKeySequence::mnemonic(action->text()) == letter) {
            entries.append(action);
        }
    }
    return entries;
}

/// True where the letter is settled here: some entry of that letter is disabled.
bool chooseEnabled(QMenu& menu, const QKeySequence& letter) {
    const QList<QAction*> entries = entriesOf(menu, letter);
    QList<QAction*> enabled;
    std::copy_if(entries.begin(), entries.end(), std::back_inserter(enabled),
                 [](const QAction* action) { return action->isEnabled(); });
    if (enabled.isEmpty() || enabled.size() == entries.size()) {
        return false;
    }
    const qsizetype next = (enabled.indexOf(menu.activeAction()) + 1) % enabled.size();
    menu.setActiveAction(enabled[next]);
    if (enabled.size() == 1) {
        QKeyEvent choose(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
        QCoreApplication::sendEvent(&menu, &choose);
    }
    return true;
}

} // namespace

bool isAltLetter(const QKeyEvent& event) {
    return event.modifiers().testFlag(Qt::AltModifier) &&
           !event.modifiers().testFlag(Qt::ControlModifier) && !event.text().isEmpty() &&
           event.text().at(0).isPrint();
}

bool MenuKeys::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const auto& key = static_cast<const QKeyEvent&>(*event);
        auto* menu = qobject_cast<QMenu*>(watched);
        if (menu != nullptr && key.text().size() == 1 && key.text().at(0).isLetterOrNumber()) {
            return chooseEnabled(*menu, QKeySequence(Qt::ALT | key.key()));
        }
        if (qobject_cast<QLineEdit*>(watched) != nullptr && isAltLetter(key)) {
            event->ignore(); // whoever is above may want it
            return true;
        }
    }
    return QObject::eventFilter(watched, event);
}

} // namespace korvane
