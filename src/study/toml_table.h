// Tables of a TOML file, with faults that name the line.
#pragma once

#include "problem/field_address.h"

#include <toml++/toml.h>

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace korvane::study {

/// Ends the reading of a study file.
struct StudyFault {
    int line = 0; ///< from 1; 0 where it belongs to none
    std::string text;
};

/// The line of an entry; 0 where it has none.
int lineOf(const toml::node& node);

/// `"WORD" is unknown; known are A, B, C`, for any kind of name.
std::string unknownText(std::string_view what, std::string_view word,
                        const std::vector<std::string_view>& known);

/// A table of which every key must be known. Reading a key of the wrong type throws StudyFault.
class TomlTable {
  public:
    /// `what` names the table in faults: "[study]".
    TomlTable(const toml::table& table, std::string what,
              std::initializer_list<std::string_view> keys);

    int line() const { return lineOf(table_); }
    int line(std::string_view key) const;
    bool has(std::string_view key) const { return table_.contains(key); }

    std::optional<std::string> text(std::string_view key) const;
    std::optional<double> number(std::string_view key) const;
    std::optional<long long> whole(std::string_view key) const;
    /// A list, or a single value as a list of one.
    std::vector<std::string> texts(std::string_view key) const;
    /// Infinite ones where they are allowed.
    std::vector<double> numbers(std::string_view key, bool infinite = false) const;
    /// One of the texts, by its place; `usual` where the key is missing.
    std::size_t choice(std::string_view key, std::initializer_list<std::string_view> choices,
                       std::size_t usual) const;

    std::string requiredText(std::string_view key) const;
    double requiredNumber(std::string_view key) const;

    [[noreturn]] void fail(std::string_view key, const std::string& text) const;

  private:
    const toml::table& table_;
    std::string what_;
};

} // namespace korvane::study
