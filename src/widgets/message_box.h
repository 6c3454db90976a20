// All message boxes of the desktop program.
#pragma once

#include "state/message_box.h"

class QWidget;

namespace korvane {

/// Shows a box modally over `parent`: plain text as messageText has it, buttons in the order OK
/// Cancel or Yes No whatever the desktop, the first one default. Escape and the frame's cross mean
/// Cancel on OK/Cancel, OK on OK alone, and nothing on Yes/No. A busy pointer is taken off before
/// and put back after.
Answer askBox(QWidget* parent, const MessageBox& box);

} // namespace korvane
