// All message boxes of the desktop program.
#pragma once

#include "state/message_box.h"

class QWidget;

namespace korvane {

/// Shows a box modally over `parent`: plain text as messageText has it, buttons in the order OK
/// Cancel or Yes No whatever the desktop, the first one default. Escape and the frame's cross mean
/// OK on OK alone, nothing on Yes/No, and on OK/Cancel Cancel, but Back where Cancel deletes data.
/// A busy pointer is taken off before and put back after.
Answer askBox(QWidget* parent, const MessageBox& box);

} // namespace korvane
