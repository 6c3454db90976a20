#include "problem/problem_text.h"

#include "problem/counts.h"

#include <type_traits>

namespace korvane {

namespace {

/// The members that no table holds.
template <class Record, class Visit>
void visitChoices(Record& problem, Visit visit) {
    visit("WallType", problem.WallType);
    visit("ProgramMode", problem.ProgramMode);
    visit("FSKind", problem.FSKind);
    visit("SoilDataKind", problem.SoilDataKind(Right));
    visit("SoilDataKind", problem.SoilDataKind(Left));
    visit("WaterDataKind", problem.WaterDataKind);
    visit("SeepageKind", problem.SeepageKind);
}

template <class Visit>
void forEachField(Visit visit) {
    for (int field = 0; field < FieldCount; ++field) {
        visit(rulesOf(static_cast<ProblemField>(field)));
    }
}

/// Every place of a field.
template <class Visit>
void forEachPlace(const FieldRules& rules, Visit visit) {
    for (int side = 1; side <= (rules.hasSides ? 2 : 1); ++side) {
        for (int row = 1; row <= rules.places; ++row) {
            visit(side, row);
        }
    }
}

} // namespace

std::string problemText(const Problem& problem) {
    std::string text;
    for (const std::string& line : problem.HeadingLines) {
        appendLine(text, line);
    }
    visitChoices(problem, [&text](const char* name, auto choice) {
        appendValue(text += name, static_cast<int>(choice));
        text += '\n';
    });
    for (const CountRules& rules : Counts) {
        text += rules.name;
        for (int side = 1; side <= rules.sides; ++side) {
            appendValue(text, rules.value(problem, side));
        }
        text += '\n';
    }
    forEachField([&](const FieldRules& rules) {
        text += rules.name;
        forEachPlace(
            rules, [&](int side, int row) { appendValue(text, rules.value(problem, side, row)); });
        text += '\n';
    });
    return text;
}

std::optional<Problem> readProblemText(ValueReader& reader) {
    Problem problem;
    for (std::string& line : problem.HeadingLines) {
        reader.line(line);
    }
    visitChoices(problem, [&reader](const char* name, auto& choice) {
        int letter = 0;
        reader.word(name);
        reader.value(letter);
        reader.word("\n");
        choice = static_cast<std::remove_cvref_t<decltype(choice)>>(letter);
    });
    for (const CountRules& rules : Counts) {
        reader.word(rules.name);
        for (int side = 1; side <= rules.sides; ++side) {
            reader.value(rules.at(problem, side));
        }
        reader.word("\n");
    }
    forEachField([&](const FieldRules& rules) {
        reader.word(rules.name);
        forEachPlace(rules, [&](int side, int row) { reader.value(rules.at(problem, side, row)); });
        reader.word("\n");
    });
    return reader.sound() ? std::optional(problem) : std::nullopt;
}

} // namespace korvane
