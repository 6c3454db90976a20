// Letters in open menus: a disabled entry never takes the letter from one that can be chosen. And
// letters with Alt: one that is no mnemonic types nothing.
#pragma once

#include <QObject>

class QKeyEvent;

namespace korvane {

/// A letter with Alt, which is a mnemonic or nothing. Ctrl and Alt together type on some keyboards.
bool isAltLetter(const QKeyEvent& event);

/// Watches every menu of the program, and every line that is typed into. Where several entries
/// share a letter ("Current &Input File", "F&ixed Earth Method Results Plots") the letter chooses
/// the only enabled one at once, or walks the enabled ones in turn.
class MenuKeys : public QObject {
  public:
    using QObject::QObject;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace korvane
