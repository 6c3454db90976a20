// Who answers message boxes.
#pragma once

#include "state/message_box.h"

namespace korvane {

/// Shows message boxes: the desktop, the batch command or a test's script.
class Prompts {
  public:
    virtual ~Prompts() = default;
    virtual Answer Ask(const MessageBox& box) = 0;
};

} // namespace korvane
