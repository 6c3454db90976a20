// Message boxes as values.
#pragma once

#include <string>

namespace korvane {

enum class Buttons { Ok, OkCancel, YesNo, YesNoCancel };
enum class Icon { None, Exclamation, Question, Information, Critical };
/// Back: a box that would delete data was left by Escape or the frame's cross.
enum class Answer { Ok, Cancel, Yes, No, Back };

/// One message box; lines are parted by one line feed.
struct MessageBox {
    std::string text;
    std::string title = "KORVANE";
    Buttons buttons = Buttons::Ok;
    Icon icon = Icon::None;
    bool cancelDeletes = false; ///< leaving the box but by its buttons answers Back

    bool operator==(const MessageBox&) const = default;
};

} // namespace korvane
