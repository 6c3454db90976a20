#include "batch/json_notes.h"

#include "state/result_fields.h"

#include <string_view>

namespace korvane::batch {

namespace {

/// A number in the units asked for, null where there is none.
std::optional<double> told(Quantity quantity, const std::optional<double>& value,
                           UnitSystem units) {
    return value ? std::optional(inUnits(quantity, *value, units)) : std::nullopt;
}

void writeLevel(JsonText& json, const SecondLevel& level, UnitSystem units) {
    const bool anchored = level.method != SolutionMethod::Cantilever;
    const bool analysis = level.factorOfSafety > 0;
    const auto member = [&](const ResultField& field, double value, bool applies = true) {
        json.member(field.name,
                    told(field.quantity, applies ? std::optional(value) : std::nullopt, units));
    };
    json.object([&] {
        json.member("method", solutionMethodName(level.method));
        member(results::penetration, level.penetration);
        member(results::bottomElev, level.bottomElev);
        member(results::anchorForce, level.anchorForce, anchored);
        member(results::maxMoment, level.maxMoment);
        member(results::factorOfSafety, level.factorOfSafety, analysis);
    });
}

void writeSecond(JsonText& json, const SecondOpinion& second, UnitSystem units) {
    json.array([&] {
        for (int level = 1; level <= second.levelCount; ++level) {
            writeLevel(json, second.levels(level), units);
        }
    });
}

} // namespace

void writeNotes(JsonText& json, const std::vector<Note>& notes, UnitSystem units) {
    json.array([&] {
        for (const Note& note : notes) {
            json.object([&] {
                json.member("code", note.code);
                json.member("severity", severityName(note.severity));
                json.member("text", note.text);
                json.member("side", note.side == 0       ? std::optional<std::string_view>()
                                    : note.side == Right ? "right"
                                                         : "left");
                json.member("layer", note.layer == 0 ? std::optional<int>() : note.layer);
                json.member(results::elev.name, told(results::elev.quantity, note.elev, units));
                json.member("value", told(note.quantity, note.value, units));
                json.member("limit", told(note.quantity, note.limit, units));
                json.member("source", note.source);
                json.member("second");
                if (note.second) {
                    writeSecond(json, *note.second, units);
                } else {
                    json.value(nullptr);
                }
            });
        }
    });
}

} // namespace korvane::batch
