// Message boxes as values.
#pragma once

#include <string>

namespace korvane {

enum class Buttons { Ok, OkCancel, YesNo };
enum class Icon { None, Exclamation, Question, Information, Critical };
enum class Answer { Ok, Cancel, Yes, No };

/// One message box; lines are parted by one line feed.
struct MessageBox {
    std::string text;
    std::string title = "KORVANE";
    Buttons buttons = Buttons::Ok;
    Icon icon = Icon::None;

    bool operator==(const MessageBox&) const = default;
};

} // namespace korvane
