// Buttons that open a section of the data, each on a panel that tells whether there are any.
#pragma once

#include "commands/session.h"
#include "screens/controls.h"

#include <vector>

class QFrame;
class QPushButton;
class QWidget;

namespace korvane {

struct SectionButton {
    const char* name;
    const char* caption;
    const char* panel;
    bool required = false;                     ///< red text
    bool (*hasData)(const Session&) = nullptr; ///< the rule of the panel's colour
};

/// A button on its panel, a little inside of it.
struct SectionControl {
    QFrame* panel = nullptr;
    QPushButton* button = nullptr;
};

SectionControl makeSectionControl(QWidget* parent, const SectionButton& section,
                                  const Place& where);

/// The line that explains the colours of the panels.
inline constexpr const char* HighlightNote = "(Highlighted sections indicate data are available.)";

} // namespace korvane
