// A JSON document written straight into one text.
#pragma once

#include <concepts>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace korvane {

/// Members and entries follow one another in the order of the calls, each on a line of its own,
/// indented by one blank a level; what is empty is "{}" or "[]". Texts are UTF-8 already. Objects
/// and arrays are filled by the callable that they are given.
class JsonText {
  public:
    /// `length` is a guess at the document's length in bytes: room taken at once.
    explicit JsonText(std::size_t length = 0) { text_.reserve(length); }

    template <std::invocable Content>
    void object(Content content) {
        open('{');
        content();
        close('}');
    }
    template <std::invocable Content>
    void array(Content content) {
        open('[');
        content();
        close(']');
    }

    /// The shortest digits that read back to the same double, "12.0" where it is whole; null where
    /// it is not finite.
    void value(double number);
    void value(long long number);
    void value(int number) { value(static_cast<long long>(number)); }
    /// A bool alone: no pointer becomes one on the way.
    template <std::same_as<bool> Truth>
    void value(Truth isTrue) {
        truth(isTrue);
    }
    /// The quotation mark, the backslash and the control characters are escaped, with the short
    /// escapes where there are any.
    void value(std::string_view text);
    void value(const char* text) { value(std::string_view(text)); }
    void value(const std::string& text) { value(std::string_view(text)); }
    void value(std::nullptr_t);
    /// Null where there is none.
    template <class T>
    void value(const std::optional<T>& perhaps) {
        perhaps ? value(*perhaps) : value(nullptr);
    }

    /// The name of the value, object or array that follows.
    JsonText& member(std::string_view name);
    template <class T>
    void member(std::string_view name, const T& itsValue) {
        member(name).value(itsValue);
    }

    /// The finished document, ended by a line feed.
    std::string take() {
        text_ += '\n';
        return std::move(text_);
    }

  private:
    void open(char bracket);
    void close(char bracket);
    void startEntry();
    void startLine(bool comma);
    void truth(bool isTrue);
    void quoted(std::string_view text);
    void escape(char c);

    std::string text_;
    std::size_t depth_ = 0;
    bool first_ = true;  ///< the next entry is the first of its object or array
    bool named_ = false; ///< the next value stands behind its name
};

} // namespace korvane
