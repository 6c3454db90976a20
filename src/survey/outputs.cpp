#include "survey/outputs.h"

#include <algorithm>
#include <array>

namespace korvane::study {

namespace {

bool always(const Problem& /*base*/) {
    return true;
}
bool ofAnchored(const Problem& base) {
    return base.WallType == WallKind::Anchored;
}
bool ofCantilever(const Problem& base) {
    return base.WallType == WallKind::Cantilever;
}
bool ofAnalysis(const Problem& base) {
    return base.ProgramMode == Mode::Analysis;
}
bool ofDesign(const Problem& base) {
    return base.ProgramMode == Mode::Design;
}
bool ofSeepage(const Problem& base) {
    return base.SeepageKind != Seepage::None;
}

constexpr std::string_view Bottom = "bottom"; ///< of bottomElev

using Level = const LevelResult&;

const std::array<LevelOutput, 11> Outputs{{
    {results::penetration, [](Level r) { return r.penetration; }, nullptr, always},
    {results::bottomElev, [](Level r) { return r.bottomElev; }, nullptr, always},
    {results::anchorForce, [](Level r) { return r.anchorForce; }, nullptr, ofAnchored},
    {results::factorOfSafety, [](Level r) { return r.factorOfSafety; }, nullptr, ofAnalysis},
    {results::seepageGradient, [](Level r) { return r.seepageGradient; }, nullptr, ofSeepage},
    {results::transitionElev, [](Level r) { return r.transitionElev; }, nullptr, ofCantilever},
    {results::toeReaction, [](Level r) { return r.toeReaction; }, nullptr, ofAnchored, 2},
    {results::maxMoment, [](Level r) { return r.diagrams.MaxMoment.value; },
     [](Level r) { return r.diagrams.MaxMoment.elev; }, always},
    {results::maxShear, [](Level r) { return r.maxShear.value; },
     [](Level r) { return r.maxShear.elev; }, always},
    {results::maxDeflection, [](Level r) { return r.diagrams.MaxDeflection.value; },
     [](Level r) { return r.diagrams.MaxDeflection.elev; }, ofAnalysis},
    {results::maxScaledDeflection, [](Level r) { return r.diagrams.MaxDeflection.value; },
     [](Level r) { return r.diagrams.MaxDeflection.elev; }, ofDesign},
}};

/// The suffixed name of an output with one of the two levels of an anchored wall.
std::optional<LevelSuffix> levelNamed(std::string_view name, const Problem& base) {
    for (const LevelSuffix& level : levelSuffixes(base)) {
        if (*level.suffix != 0 && name.ends_with(level.suffix)) {
            return level;
        }
    }
    return std::nullopt;
}

void addColumns(std::vector<OutputColumn>& columns, std::string_view name,
                const LevelOutput& output, const LevelSuffix& level) {
    if (output.onlyLevel != 0 && output.onlyLevel != level.level) {
        return;
    }
    const std::string suffix = level.suffix;
    columns.push_back(
        {.name = std::string(name) + suffix, .output = &output, .level = level.level});
    if (output.elev != nullptr) {
        columns.push_back({.name = std::string(name) + "Elev" + suffix,
                           .output = &output,
                           .level = level.level,
                           .isElev = true});
    }
}

} // namespace

const LevelOutput* findOutput(std::string_view name, const Problem& base) {
    const std::string_view wanted = name == Bottom ? results::bottomElev.name : name;
    const auto found = std::find_if(Outputs.begin(), Outputs.end(), [&](const LevelOutput& output) {
        return output.field.name == wanted && output.applies(base);
    });
    return found == Outputs.end() ? nullptr : found;
}

std::vector<std::string_view> outputNames(const Problem& base) {
    std::vector<std::string_view> names;
    for (const LevelOutput& output : Outputs) {
        if (output.applies(base)) {
            const std::string_view name = output.field.name;
            names.push_back(name == results::bottomElev.name ? Bottom : name);
        }
    }
    return names;
}

std::vector<LevelSuffix> levelSuffixes(const Problem& base) {
    if (ofAnchored(base)) {
        return {{1, "_free"}, {2, "_fixed"}};
    }
    return {{1, ""}};
}

Quantity OutputColumn::quantity() const {
    return output == nullptr ? Quantity::Number
           : isElev          ? Quantity::Length
                             : output->field.quantity;
}

std::optional<double> OutputColumn::value(const Solved& solved, const std::vector<Note>& notes,
                                          UnitSystem units) const {
    if (output == nullptr) {
        const bool speaks = std::any_of(notes.begin(), notes.end(),
                                        [this](const Note& said) { return said.code == note; });
        return speaks ? 1.0 : 0.0;
    }
    if (solved.results == nullptr || level > solved.results->levelCount) {
        return std::nullopt;
    }
    const LevelResult& result = solved.results->levels(level);
    return inUnits(quantity(), isElev ? output->elev(result) : output->value(result), units);
}

std::vector<OutputColumn> columnsOf(std::string_view name, const Problem& base) {
    std::vector<OutputColumn> columns;
    if (name.starts_with(NotePrefix)) {
        const std::string_view code = name.substr(NotePrefix.size());
        const std::vector<std::string_view> known = noteCodes();
        if (std::find(known.begin(), known.end(), code) == known.end()) {
            return columns;
        }
        columns.push_back({.name = std::string(name), .note = std::string(code)});
        return columns;
    }
    if (const LevelOutput* output = findOutput(name, base)) {
        for (const LevelSuffix& level : levelSuffixes(base)) {
            addColumns(columns, name, *output, level);
        }
        return columns;
    }
    if (const auto level = levelNamed(name, base)) {
        name.remove_suffix(std::string_view(level->suffix).size());
        if (const LevelOutput* output = findOutput(name, base)) {
            addColumns(columns, name, *output, *level);
        }
    }
    return columns;
}

} // namespace korvane::study
