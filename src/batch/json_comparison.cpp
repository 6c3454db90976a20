#include "batch/json_comparison.h"

#include "comparison/comparison_table.h"
#include "notes/notes.h"
#include "runtime/utf8_text.h"

namespace korvane::batch {

namespace {

void writeLevel(JsonText& json, const ComparedLevel& level, Mode mode, UnitSystem units) {
    json.object([&] {
        json.member("method", solutionMethodName(level.method));
        for (const ComparedValue which : AllComparedValues) {
            const ComparedField field = fieldOf(which, mode);
            auto value = level.value(which);
            if (value) {
                value = inUnits(field.quantity, *value, units);
            }
            json.member(field.name, value);
        }
        json.member("percent").object([&] {
            for (const ComparedValue which : AllComparedValues) {
                json.member(fieldOf(which, mode).name, level.percentOf(which));
            }
        });
    });
}

void writeRow(JsonText& json, const ComparedRow& row, Mode mode, UnitSystem units) {
    json.object([&] {
        json.member("name", utf8Text(row.name));
        json.member("title", utf8Text(row.title));
        json.member("failure");
        if (row.code.empty()) {
            json.value(nullptr);
        } else {
            json.object([&] {
                json.member("code", row.code);
                json.member("text", row.reason);
            });
        }
        json.member("levels").array([&] {
            for (const ComparedLevel& level : row.levels) {
                writeLevel(json, level, mode, units);
            }
        });
    });
}

} // namespace

void writeComparison(JsonText& json, const Comparison& comparison, Mode mode, UnitSystem units) {
    json.array([&] {
        for (const ComparedRow& row : comparison.rows) {
            writeRow(json, row, mode, units);
        }
    });
}

} // namespace korvane::batch
