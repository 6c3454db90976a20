#include "study/toml_table.h"

#include <algorithm>
#include <cmath>

namespace korvane::study {

int lineOf(const toml::node& node) {
    return static_cast<int>(node.source().begin.line);
}

std::string unknownText(std::string_view what, std::string_view word,
                        const std::vector<std::string_view>& known) {
    std::string text = "unknown " + std::string(what) + " \"" + std::string(word) + "\"; known are";
    const char* comma = " ";
    for (const std::string_view name : known) {
        text += comma + std::string(name);
        comma = ", ";
    }
    return text;
}

TomlTable::TomlTable(const toml::table& table, std::string what,
                     std::initializer_list<std::string_view> keys)
    : table_(table), what_(std::move(what)) {
    for (const auto& [key, node] : table_) {
        if (std::find(keys.begin(), keys.end(), key.str()) == keys.end()) {
            throw StudyFault{static_cast<int>(key.source().begin.line),
                             what_ + ": " + unknownText("key", key.str(), keys)};
        }
    }
}

int TomlTable::line(std::string_view key) const {
    const toml::node* node = table_.get(key);
    return node == nullptr ? line() : lineOf(*node);
}

void TomlTable::fail(std::string_view key, const std::string& text) const {
    throw StudyFault{line(key), what_ + ": " + std::string(key) + " " + text};
}

std::optional<std::string> TomlTable::text(std::string_view key) const {
    const toml::node* node = table_.get(key);
    if (node == nullptr) {
        return std::nullopt;
    }
    auto text = node->value_exact<std::string>();
    if (!text) {
        fail(key, "must be a text in quotation marks");
    }
    return text;
}

std::optional<double> TomlTable::number(std::string_view key) const {
    const toml::node* node = table_.get(key);
    if (node == nullptr) {
        return std::nullopt;
    }
    const auto number = node->is_number() ? node->value<double>() : std::nullopt;
    if (!number || !std::isfinite(*number)) {
        fail(key, "must be a number");
    }
    return number;
}

std::optional<long long> TomlTable::whole(std::string_view key) const {
    const toml::node* node = table_.get(key);
    if (node == nullptr) {
        return std::nullopt;
    }
    const auto number = node->value_exact<std::int64_t>();
    if (!number) {
        fail(key, "must be a whole number");
    }
    return *number;
}

std::vector<std::string> TomlTable::texts(std::string_view key) const {
    const toml::node* node = table_.get(key);
    if (node == nullptr) {
        return {};
    }
    if (!node->is_array()) {
        return {*text(key)};
    }
    std::vector<std::string> all;
    for (const toml::node& entry : *node->as_array()) {
        const auto one = entry.value_exact<std::string>();
        if (!one) {
            fail(key, "must be a list of texts");
        }
        all.push_back(*one);
    }
    return all;
}

std::vector<double> TomlTable::numbers(std::string_view key, bool infinite) const {
    const toml::node* node = table_.get(key);
    if (node == nullptr) {
        return {};
    }
    if (!node->is_array()) {
        return {*number(key)};
    }
    std::vector<double> all;
    for (const toml::node& entry : *node->as_array()) {
        const auto one = entry.is_number() ? entry.value<double>() : std::nullopt;
        if (!one || std::isnan(*one) || (std::isinf(*one) && !infinite)) {
            fail(key, "must be a list of numbers");
        }
        all.push_back(*one);
    }
    return all;
}

std::size_t TomlTable::choice(std::string_view key, std::initializer_list<std::string_view> choices,
                              std::size_t usual) const {
    const auto chosen = text(key);
    if (!chosen) {
        return usual;
    }
    const auto found = std::find(choices.begin(), choices.end(), *chosen);
    if (found == choices.end()) {
        throw StudyFault{line(key), what_ + ": " + unknownText(key, *chosen, choices)};
    }
    return static_cast<std::size_t>(found - choices.begin());
}

std::string TomlTable::requiredText(std::string_view key) const {
    if (!has(key)) {
        throw StudyFault{line(), what_ + " needs \"" + std::string(key) + "\""};
    }
    return *text(key);
}

double TomlTable::requiredNumber(std::string_view key) const {
    if (!has(key)) {
        throw StudyFault{line(), what_ + " needs \"" + std::string(key) + "\""};
    }
    return *number(key);
}

} // namespace korvane::study
