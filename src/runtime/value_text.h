// Values as text that reads back to the same values, for files that only this program reads.
#pragma once

#include <string>
#include <string_view>

namespace korvane {

/// Each behind a blank.
void appendValue(std::string& text, double value);
void appendValue(std::string& text, int value);

/// A line to its end, its own breaks as blanks.
void appendLine(std::string& text, std::string_view line);

/// Takes such values from the front of a text. False where they are not there, and ever after.
class ValueReader {
  public:
    explicit ValueReader(std::string_view text) : rest_(text) {}

    bool word(std::string_view expected);
    bool value(double& value);
    bool value(int& value);
    bool line(std::string& line);
    bool sound() const { return sound_; }
    bool atEnd() const { return sound_ && rest_.empty(); }

  private:
    template <class Number>
    bool number(Number& value);

    std::string_view rest_;
    bool sound_ = true;
};

} // namespace korvane
