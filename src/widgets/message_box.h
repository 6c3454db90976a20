// All message boxes of the desktop program.
#pragma once

#include "state/message_box.h"

#include <functional>

class QWidget;

namespace korvane {

/// Opens the guide over a window, at its section.
using ShowHelp = std::function<void(QWidget* over)>;

/// Shows a box modally over `parent`: plain text as messageText has it, buttons in the order OK
/// Cancel or Yes No whatever the desktop, the first one default. Escape and the frame's cross mean
/// OK on OK alone, nothing on Yes/No, and on OK/Cancel Cancel, but Back where Cancel deletes data.
/// A busy pointer is taken off before and put back after. F1 shows help where there is any.
Answer askBox(QWidget* parent, const MessageBox& box, const ShowHelp& showHelp = {});

} // namespace korvane
