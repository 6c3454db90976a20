#include "batch/json_notes.h"

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
    const auto length = [units](double value) { return inUnits(Quantity::Length, value, units); };
    json.object([&] {
        json.member("method", solutionMethodName(level.method));
        json.member("penetration", length(level.penetration));
        json.member("bottomElev", length(level.bottomElev));
        json.member("anchorForce",
                    anchored ? std::optional(inUnits(Quantity::Force, level.anchorForce, units))
                             : std::nullopt);
        json.member("maxMoment", inUnits(Quantity::Moment, level.maxMoment, units));
        json.member("factorOfSafety",
                    level.factorOfSafety > 0 ? std::optional(level.factorOfSafety) : std::nullopt);
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
                json.member("elev", told(Quantity::Length, note.elev, units));
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
