// Letters in open menus: a disabled entry never takes the letter from one that can be chosen.
#pragma once

#include <QObject>

namespace korvane {

/// Watches every menu of the program. Where several entries share a letter ("Current &Input File",
/// "F&ixed Earth Method Results Plots") the letter chooses the only enabled one at once, or walks
/// the enabled ones in turn.
class MenuKeys : public QObject {
  public:
    using QObject::QObject;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace korvane
