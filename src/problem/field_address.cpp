#include "problem/field_address.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <numeric>

namespace korvane {

namespace {

constexpr std::string_view SideNames[] = {"right", "left"}; // by side, from Right on

std::vector<std::string_view> fieldNames() {
    std::vector<std::string_view> names;
    names.reserve(FieldCount);
    for (int place = 0; place < FieldCount; ++place) {
        names.emplace_back(rulesOf(static_cast<ProblemField>(place)).name);
    }
    return names;
}

std::vector<std::string_view> partsOf(std::string_view text) {
    std::vector<std::string_view> parts;
    std::size_t start = 0;
    while (start <= text.size()) {
        const std::size_t point = std::min(text.find('.', start), text.size());
        parts.push_back(text.substr(start, point - start));
        start = point + 1;
    }
    return parts;
}

/// A side by its name, 0 for any other text.
int sideNamed(std::string_view text) {
    for (const int side : {Right, Left}) {
        if (text == SideNames[side - 1]) {
            return side;
        }
    }
    return 0;
}

/// An entry from 1 on, 0 for any other text.
int rowNamed(std::string_view text) {
    int row = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, row);
    return error == std::errc{} && stop == end && row > 0 ? row : 0;
}

/// What the name of a field must be followed by, told with examples.
std::string formOf(const FieldRules& rules) {
    const std::string name = rules.name;
    if (rules.hasSides) {
        const std::string row = rules.hasRows ? ".1" : "";
        return name + " takes a side" + (rules.hasRows ? " and an entry" : "") + ": " + name +
               ".right" + row + ", " + name + ".left" + row;
    }
    return rules.hasRows ? name + " takes an entry: " + name + ".1"
                         : name + " takes neither side nor entry";
}

/// Single characters to be put in, left out or changed to come from one text to the other; those
/// that differ in case alone count nothing.
std::size_t editsBetween(std::string_view one, std::string_view other) {
    const auto lower = [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    };
    std::vector<std::size_t> edits(other.size() + 1);
    std::iota(edits.begin(), edits.end(), std::size_t{0});
    for (const char letter : one) {
        std::size_t diagonal = edits[0]++;
        for (std::size_t j = 0; j < other.size(); ++j) {
            const std::size_t changed = diagonal + (lower(letter) == lower(other[j]) ? 0 : 1);
            diagonal = edits[j + 1];
            edits[j + 1] = std::min({changed, diagonal + 1, edits[j] + 1});
        }
    }
    return edits.back();
}

const FieldGroup& groupOf(ProblemField field) {
    const std::span<const FieldGroup> groups = fieldGroups();
    return *std::find_if(groups.begin(), groups.end(), [field](const FieldGroup& group) {
        return field >= group.first && field <= group.last;
    });
}

} // namespace

std::vector<std::string_view> nearestNames(std::string_view text,
                                           const std::vector<std::string_view>& known) {
    constexpr std::size_t most = 3;
    struct Near {
        std::string_view name;
        std::size_t edits;
    };
    std::vector<Near> near;
    for (const std::string_view name : known) {
        // Of more changes than half its length a text is another word.
        const std::size_t edits = editsBetween(text, name);
        if (2 * edits <= std::max(text.size(), name.size())) {
            near.push_back({name, edits});
        }
    }
    std::stable_sort(near.begin(), near.end(),
                     [](const Near& one, const Near& other) { return one.edits < other.edits; });
    std::vector<std::string_view> names;
    for (std::size_t place = 0; place < std::min(near.size(), most); ++place) {
        names.push_back(near[place].name);
    }
    return names;
}

std::string nearestText(std::string_view text, const std::vector<std::string_view>& known) {
    std::string told;
    for (const std::string_view name : nearestNames(text, known)) {
        told += told.empty() ? "; near it: " : ", ";
        told += name;
    }
    return told;
}

ReadAddress readAddress(std::string_view text) {
    const std::vector<std::string_view> parts = partsOf(text);
    const std::vector<std::string_view> names = fieldNames();
    const auto place = std::find(names.begin(), names.end(), parts[0]);
    if (place == names.end()) {
        return {{},
                "'" + std::string(text) + "' names no number of a problem" +
                    nearestText(parts[0], names)};
    }
    const FieldRules& rules = rulesOf(static_cast<ProblemField>(place - names.begin()));
    FieldAddress address{.field = rules.field};
    std::size_t next = 1;
    const auto part = [&] { return next < parts.size() ? parts[next++] : std::string_view(); };
    if (rules.hasSides) {
        address.side = sideNamed(part());
    }
    if (rules.hasRows) {
        address.row = rowNamed(part());
    }
    if (address.side == 0 || address.row == 0 || next != parts.size()) {
        return {{}, "'" + std::string(text) + "': " + formOf(rules)};
    }
    return {address, {}};
}

std::string addressName(const FieldAddress& address) {
    const FieldRules& rules = rulesOf(address.field);
    std::string name = rules.name;
    if (rules.hasSides) {
        name += "." + std::string(SideNames[address.side - 1]);
    }
    return rules.hasRows ? name + "." + std::to_string(address.row) : name;
}

std::string absence(const FieldAddress& address, const Problem& problem) {
    const FieldGroup& group = groupOf(address.field);
    if (!group.inUse(problem, address.side)) {
        return "the wall does not use it";
    }
    const int rows = group.rows(problem, address.side);
    if (address.row <= rows) {
        return {};
    }
    const std::string number = rows == 0 ? "no" : std::to_string(rows);
    return "the wall has " + number + (rows == 1 ? " entry" : " entries") +
           (rulesOf(address.field).hasSides
                ? " on its " + std::string(SideNames[address.side - 1]) + " side"
                : "");
}

std::vector<FieldAddress> addressesIn(const Problem& problem) {
    std::vector<FieldAddress> addresses;
    for (int place = 0; place < FieldCount; ++place) {
        const auto field = static_cast<ProblemField>(place);
        const FieldGroup& group = groupOf(field);
        for (int side = 1; side <= group.sides; ++side) {
            const int rows = group.inUse(problem, side) ? group.rows(problem, side) : 0;
            for (int row = 1; row <= rows; ++row) {
                addresses.push_back({field, side, row});
            }
        }
    }
    return addresses;
}

Quantity quantityOf(const FieldAddress& address) {
    return rulesOf(address.field).quantity;
}

double valueAt(const Problem& problem, const FieldAddress& address, UnitSystem units) {
    const FieldRules& rules = rulesOf(address.field);
    return inUnits(rules.quantity, rules.value(problem, address.side, address.row), units);
}

void setValueAt(Problem& problem, const FieldAddress& address, double value, UnitSystem units) {
    const FieldRules& rules = rulesOf(address.field);
    rules.at(problem, address.side, address.row) = fromUnits(rules.quantity, value, units);
}

} // namespace korvane
