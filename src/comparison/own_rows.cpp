#include "comparison/own_rows.h"

#include "comparison/comparison_rows.h"

#include <algorithm>
#include <cmath>

#define TOML_HEADER_ONLY 1
#define TOML_ENABLE_FORMATTERS 0
#include <toml++/toml.h>

namespace korvane {

namespace {

/// A fault of the file at a place of it.
struct Fault {
    toml::source_position place;
    std::string text;
};

[[noreturn]] void refuse(const toml::source_region& place, const std::string& text) {
    throw Fault{place.begin, text};
}

constexpr std::string_view FileKeys = "units, row";

struct KindKey {
    std::string_view name;
    FieldChange::Kind kind;
};
constexpr KindKey KindKeys[] = {{"add", FieldChange::Kind::Add},
                                {"multiply", FieldChange::Kind::Multiply}};

void addChange(OwnRow& row, const toml::key& key, const std::string& name, const toml::node& value,
               FieldChange::Kind kind) {
    const ReadAddress read = readAddress(name);
    if (!read.fault.empty()) {
        refuse(key.source(), read.fault);
    }
    const auto number = value.value<double>();
    if (!value.is_number() || !number || !std::isfinite(*number)) {
        refuse(value.source(), "'" + name + "' must be a finite number");
    }
    for (const FieldChange& change : row.changes) {
        if (change.address == read.address) {
            refuse(key.source(), "'" + name + "' is changed twice in one row");
        }
    }
    row.changes.push_back({read.address, kind, *number});
}

/// Changes of a table, whose keys may stand in tables of their own: a.b = 1 and "a.b" = 1 are one.
void addChanges(OwnRow& row, const toml::table& table, const std::string& above,
                FieldChange::Kind kind) {
    for (const auto& [key, value] : table) {
        const std::string name = above + std::string(key.str());
        if (const toml::table* inner = value.as_table()) {
            addChanges(row, *inner, name + ".", kind);
        } else {
            addChange(row, key, name, value, kind);
        }
    }
}

std::string readName(const toml::table& table, const std::vector<OwnRow>& rows) {
    const toml::node* node = table.get("name");
    const auto name = node != nullptr ? node->value<std::string>() : std::nullopt;
    if (!name || name->empty()) {
        refuse(node != nullptr ? node->source() : table.source(),
               "a row needs a name: name = \"loose sand\"");
    }
    if (std::any_of(name->begin(), name->end(),
                    [](unsigned char letter) { return letter < ' ' || letter == 0x7F; })) {
        refuse(node->source(), "a name is one line of text");
    }
    const bool taken =
        isComparisonRow(*name) ||
        std::any_of(rows.begin(), rows.end(), [&](const OwnRow& row) { return row.name == *name; });
    if (taken) {
        refuse(node->source(), "there is a row '" + *name + "' already");
    }
    return *name;
}

std::string unknownAmendment(const std::string& name) {
    std::string known;
    for (const AmendmentName& amendment : AmendmentNames) {
        (known += known.empty() ? "" : ", ") += amendment.name;
    }
    return "'" + name + "' is an unknown amendment; known: " + known;
}

void readAmendments(OwnRow& row, const toml::node& node) {
    const toml::array* names = node.as_array();
    if (names == nullptr) {
        refuse(node.source(), "'amendments' must be a list of names: [\"surface-limit\"]");
    }
    for (const toml::node& entry : *names) {
        const std::string name = entry.value<std::string>().value_or("");
        if (!amend(row.amendments, name)) {
            refuse(entry.source(), unknownAmendment(name));
        }
    }
}

OwnRow readRow(const toml::table& table, const std::vector<OwnRow>& rows) {
    OwnRow row{.name = readName(table, rows)};
    for (const auto& [key, value] : table) {
        const std::string_view name = key.str();
        const auto* kind = std::find_if(std::begin(KindKeys), std::end(KindKeys),
                                        [&](const KindKey& known) { return known.name == name; });
        if (name == "name") {
            continue;
        }
        if (name == "amendments") {
            readAmendments(row, value);
        } else if (kind != std::end(KindKeys)) {
            const toml::table* changes = value.as_table();
            if (changes == nullptr) {
                refuse(value.source(),
                       "'" + std::string(name) + "' must be a table of fields: { AnchorElev = 1 }");
            }
            addChanges(row, *changes, "", kind->kind);
        } else if (const toml::table* inner = value.as_table()) {
            addChanges(row, *inner, std::string(name) + ".", FieldChange::Kind::Set);
        } else {
            addChange(row, key, std::string(name), value, FieldChange::Kind::Set);
        }
    }
    if (row.changes.empty() && row.amendments == Amendments{}) {
        refuse(table.source(), "the row '" + row.name + "' changes nothing");
    }
    return row;
}

std::optional<UnitSystem> readUnits(const toml::node& node) {
    const auto name = node.value<std::string>();
    const auto units = name ? unitsNamed(*name) : std::nullopt;
    if (!units) {
        refuse(node.source(), "units must be \"us\" or \"si\"");
    }
    return units;
}

std::vector<OwnRow> readRows(const toml::table& file) {
    std::vector<OwnRow> rows;
    std::optional<UnitSystem> units;
    for (const auto& [key, value] : file) {
        const std::string_view name = key.str();
        if (name == "units") {
            units = readUnits(value);
        } else if (name != "row") {
            refuse(key.source(),
                   "'" + std::string(name) + "' is unknown here; known: " + std::string(FileKeys));
        }
    }
    const toml::node* list = file.get("row");
    if (list == nullptr || !list->is_array_of_tables()) {
        refuse(list != nullptr ? list->source() : file.source(),
               "rows are told as [[row]] tables, one or more");
    }
    for (const toml::node& row : *list->as_array()) {
        rows.push_back(readRow(*row.as_table(), rows));
        rows.back().units = units;
    }
    return rows;
}

} // namespace

ReadOwnRows readOwnRows(std::string_view text) {
    const auto refused = [](const toml::source_position& place, std::string_view what) {
        return ReadOwnRows{.line = std::max(static_cast<int>(place.line), 1),
                           .fault = std::string(what)};
    };
    try {
        return {.rows = readRows(toml::parse(text))};
    } catch (const toml::parse_error& error) {
        return refused(error.source().begin, error.description());
    } catch (const Fault& fault) {
        return refused(fault.place, fault.text);
    }
}

bool applyChange(const FieldChange& change, UnitSystem units, Problem& problem) {
    if (!absence(change.address, problem).empty()) {
        return false;
    }
    const double old = valueAt(problem, change.address, units);
    const double value = change.kind == FieldChange::Kind::Set   ? change.value
                         : change.kind == FieldChange::Kind::Add ? old + change.value
                                                                 : old * change.value;
    setValueAt(problem, change.address, value, units);
    return true;
}

} // namespace korvane
