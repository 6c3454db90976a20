#include "problem/validate.h"

#include "problem/counts.h"
#include "runtime/number_text.h"

#include <algorithm>
#include <cmath>

namespace korvane {

namespace {

using Found = std::function<bool(const Finding&)>;

// ---- counts
// --------------------------------------------------------------------------------------

/// A count that does not guard what is read has no limits but those of its lists.
bool guards(const Problem& problem, ProblemCount count) {
    return count != ProblemCount::WaterPressCount || problem.WaterDataKind == WaterData::Pressures;
}

bool visitCount(const Problem& problem, const CountRules& rules, int side, const Found& found) {
    const int count = rules.value(problem, side);
    Finding finding{.field = rules.name, .side = rules.sides == 2 ? side : 0};
    finding.value = count;
    const auto tell = [&](Rule rule, int limit, unsigned by) {
        finding.rule = rule;
        finding.limit = limit;
        finding.by = by;
        return found(finding);
    };
    if (count < 0) {
        return tell(Rule::AtLeast, 0, ByBoth | ByRecord);
    }
    if (count > rules.places) {
        return tell(Rule::AtMost, rules.places, ByBoth | ByRecord);
    }
    if (!guards(problem, rules.count)) {
        return true;
    }
    if (count > rules.most) {
        return tell(Rule::AtMost, rules.most, ByBoth);
    }
    if (count == 0 ? rules.required : count < rules.least) {
        return tell(Rule::AtLeast, rules.least, count == 0 ? unsigned{ByBoth} : rules.leastBy);
    }
    return true;
}

bool visitCounts(const Problem& problem, const Found& found) {
    for (const CountRules& rules : Counts) {
        for (int side = 1; side <= rules.sides; ++side) {
            if (!visitCount(problem, rules, side, found)) {
                return false;
            }
        }
    }
    return true;
}

// ---- choices
// -------------------------------------------------------------------------------------

/// A letter outside a choice has no place in the record; none at all is what `noneBy` refuse.
struct Choice {
    const char* name;
    int side;
    char letter;
    const char* letters;
    unsigned noneBy;
};

template <class Letters>
Choice choiceOf(const char* name, int side, Letters choice, unsigned noneBy) {
    return {name, side, static_cast<char>(choice), lettersOf<Letters>, noneBy};
}

bool visitChoices(const Problem& problem, const Found& found) {
    const Choice choices[] = {
        choiceOf("WallType", 0, problem.WallType, ByBoth),
        choiceOf("ProgramMode", 0, problem.ProgramMode, ByBoth),
        choiceOf("SoilDataKind", Right, problem.SoilDataKind(Right), ByBoth),
        choiceOf("SoilDataKind", Left, problem.SoilDataKind(Left), ByBoth),
        choiceOf("WaterDataKind", 0, problem.WaterDataKind, 0),
        choiceOf("SeepageKind", 0, problem.SeepageKind, 0),
    };
    for (const Choice& choice : choices) {
        const bool none = choice.letter == '\0';
        if (none || choice.letter == choice.letters[0] || choice.letter == choice.letters[1]) {
            if (!none || choice.noneBy == 0) {
                continue;
            }
        }
        if (!found({.field = choice.name,
                    .side = choice.side,
                    .rule = Rule::Choice,
                    .by = none ? choice.noneBy : ByBoth | ByRecord,
                    .value = static_cast<double>(choice.letter)})) {
            return false;
        }
    }
    const bool factorChosen =
        problem.FSKind == FactorKind::OneForBoth || problem.FSKind == FactorKind::ActiveGiven;
    if (problem.ProgramMode == Mode::Analysis && !factorChosen &&
        !found({.field = "FSKind",
                .rule = Rule::Choice,
                .by = ByBoth,
                .value = static_cast<double>(problem.FSKind)})) {
        return false;
    }
    // Files with a given gradient cannot be read: deliberate.
    return problem.WaterDataKind != WaterData::Elevations ||
           problem.SeepageKind != Seepage::Given ||
           found({.field = "SeepageKind",
                  .rule = Rule::Choice,
                  .by = ByReader,
                  .value = double{static_cast<char>(Seepage::Given)}});
}

// ---- fields
// --------------------------------------------------------------------------------------

Finding placeOf(const FieldRules& rules, int side, int row) {
    return {
        .field = rules.name, .side = rules.hasSides ? side : 0, .index = rules.hasRows ? row : 0};
}

bool visitValue(const Problem& problem, const FieldRules& rules, int side, int row, bool inUse,
                const Found& found) {
    const double value = rules.value(problem, side, row);
    Finding finding = placeOf(rules, side, row);
    finding.value = value;
    if (!std::isfinite(value)) {
        finding.by = ByBoth | ByRecord;
        return found(finding);
    }
    if (!inUse) {
        return true;
    }
    for (const Bound& bound : rules.bounds) {
        if (bound.by == 0) {
            break;
        }
        const double limit = bound.limitOf(problem, side, row);
        if (!bound.holds(value, limit)) {
            finding.rule = bound.rule;
            finding.by = bound.by;
            finding.limit = limit;
            return found(finding);
        }
    }
    return true;
}

bool visitGroup(const Problem& problem, const FieldGroup& group, int side, const Found& found) {
    const int rows = group.rows(problem, side);
    const bool inUse = group.inUse(problem, side);
    for (int row = 1; row <= rows; ++row) {
        for (int field = static_cast<int>(group.first); field <= static_cast<int>(group.last);
             ++field) {
            if (!visitValue(problem, rulesOf(static_cast<ProblemField>(field)), side, row, inUse,
                            found)) {
                return false;
            }
        }
    }
    return true;
}

bool visitFields(const Problem& problem, const Found& found) {
    for (const FieldGroup& group : fieldGroups()) {
        for (int side = 1; side <= group.sides; ++side) {
            if (!visitGroup(problem, group, side, found)) {
                return false;
            }
        }
    }
    return true;
}

/// The gradients go on from one solution to the next, also those that the record has no use for.
bool visitOutcomes(const Problem& problem, const Found& found) {
    const FieldRules& rules = rulesOf(ProblemField::SeepageGradient);
    const int visited = problem.SeepageKind == Seepage::Given ? 1 : 0;
    for (int level = visited + 1; level <= rules.places; ++level) {
        if (!visitValue(problem, rules, 0, level, false, found)) {
            return false;
        }
    }
    return true;
}

// ---- rules between sections
// ----------------------------------------------------------------------

/// One rule of one number that readers and screens test apart from the field.
struct CrossRule {
    ProblemField field;
    int side;
    int row;
    Rule rule;
    unsigned by;
    LimitAt limitAt;
    bool (*inUse)(const Problem&);
};

bool analysis(const Problem& problem) {
    return problem.ProgramMode == Mode::Analysis;
}
bool hasPoints(const Problem& problem, int side) {
    return problem.SurfacePointCount(side) > 0;
}
template <int Side>
bool hasGround(const Problem& problem) {
    return hasPoints(problem, Side);
}
template <int Side>
bool analysisOfGround(const Problem& problem) {
    return analysis(problem) && hasPoints(problem, Side);
}
template <int Side>
bool hasUniform(const Problem& problem) {
    return problem.VUniformCount(Side) == 1;
}
bool seepage(const Problem& problem) {
    return problem.WaterDataKind == WaterData::Elevations && problem.SeepageKind != Seepage::None;
}
bool givenSeepage(const Problem& problem) {
    return seepage(problem) && problem.SeepageKind == Seepage::Given;
}

double wallTop(const Problem& problem, int, int) {
    return problem.WallTopElev;
}
double wallBottom(const Problem& problem, int, int) {
    return problem.WallBottomElev;
}
double rightWater(const Problem& problem, int, int) {
    return problem.WaterElev(Right);
}
/// Where the water of a side enters or leaves the ground.
template <int Side>
double entryOfWater(const Problem& problem, int, int) {
    return std::min(problem.WaterElev(Side), problem.SurfaceElev(Side, 1));
}
double zero(const Problem&, int, int) {
    return 0;
}
double unity(const Problem&, int, int) {
    return 1;
}

// A file demands a seepage elevation not below the left side's entry of water, the screens one not
// above it; and the screens compare the wall's bottom with the first two points of the right side,
// where a file compares it with the first one of either side. Both are deliberate.
constexpr CrossRule CrossRules[] = {
    {ProblemField::SurfaceElev, Right, 1, Rule::AtMost, ByBoth, wallTop, hasGround<Right>},
    {ProblemField::SurfaceElev, Left, 1, Rule::AtMost, ByBoth, wallTop, hasGround<Left>},
    {ProblemField::SurfaceElev, Right, 1, Rule::Above, ByBoth, wallBottom, analysisOfGround<Right>},
    {ProblemField::SurfaceElev, Right, 2, Rule::Above, ByScreen, wallBottom,
     analysisOfGround<Right>},
    {ProblemField::SurfaceElev, Left, 1, Rule::Above, ByReader, wallBottom, analysisOfGround<Left>},
    {ProblemField::WaterElev, Left, 1, Rule::Below, ByBoth, rightWater, seepage},
    {ProblemField::SeepageElev, 0, 1, Rule::AtMost, ByBoth, entryOfWater<Right>, seepage},
    {ProblemField::SeepageElev, 0, 1, Rule::AtMost, ByScreen, entryOfWater<Left>, seepage},
    {ProblemField::SeepageElev, 0, 1, Rule::AtLeast, ByReader, entryOfWater<Left>, seepage},
    {ProblemField::SeepageGradient, 0, 1, Rule::Above, ByBoth, zero, givenSeepage},
    {ProblemField::SeepageGradient, 0, 1, Rule::Below, ByBoth, unity, givenSeepage},
    {ProblemField::VUniformLoad, Right, 1, Rule::Above, ByReader, zero, hasUniform<Right>},
    {ProblemField::VUniformLoad, Left, 1, Rule::Above, ByReader, zero, hasUniform<Left>},
};

bool visitCrossRules(const Problem& problem, const Found& found) {
    for (const CrossRule& rule : CrossRules) {
        if (!rule.inUse(problem)) {
            continue;
        }
        const FieldRules& rules = rulesOf(rule.field);
        const double value = rules.value(problem, rule.side, rule.row);
        const double limit = rule.limitAt(problem, rule.side, rule.row);
        const bool isFinite = std::isfinite(value) && std::isfinite(limit); // else told already
        if (!isFinite || Bound{.rule = rule.rule}.holds(value, limit)) {
            continue;
        }
        Finding finding = placeOf(rules, rule.side, rule.row);
        finding.rule = rule.rule;
        finding.by = rule.by;
        finding.limit = limit;
        finding.value = value;
        if (!found(finding)) {
            return false;
        }
    }
    return true;
}

/// The entry of the bottom that the last layer has not holds its mark.
bool visitLastLayers(const Problem& problem, const Found& found) {
    for (const int side : {Right, Left}) {
        const int last = std::clamp(problem.SoilLayerCount(side), 0, 11);
        if (last > 0 && problem.SoilBottomElev(side, last) != NoLayerBottom &&
            !found({.field = "SoilBottomElev",
                    .side = side,
                    .index = last,
                    .rule = Rule::Equal,
                    .by = ByBoth,
                    .limit = NoLayerBottom,
                    .value = problem.SoilBottomElev(side, last)})) {
            return false;
        }
    }
    return true;
}

const char* wordsOf(Rule rule) {
    switch (rule) {
    case Rule::Finite:
        return "must be a finite number";
    case Rule::Choice:
        return "is no choice";
    case Rule::AtLeast:
        return "must be at least ";
    case Rule::Above:
        return "must be above ";
    case Rule::AtMost:
        return "must be at most ";
    case Rule::Below:
        return "must be below ";
    case Rule::Equal:
        return "must be ";
    }
    return "";
}

} // namespace

Limits limitsBetween(ProblemField field, StatedBy who, const Problem& problem, int side, int row) {
    Limits limits;
    for (const CrossRule& rule : CrossRules) {
        const FieldRules& rules = rulesOf(rule.field);
        if (rule.field == field && (rule.by & who) != 0 && (!rules.hasSides || rule.side == side) &&
            (!rules.hasRows || rule.row == row)) {
            narrow(limits, rule.rule, rule.limitAt(problem, side, row));
        }
    }
    return limits;
}

std::string findingText(const Finding& finding) {
    std::string text = finding.field;
    if (finding.side != 0) {
        text += finding.side == Right ? " of right side" : " of left side";
    }
    if (finding.index != 0) {
        text += ", entry " + std::to_string(finding.index) + ",";
    }
    text += std::isfinite(finding.value) ? " is " + trimmed(generalForm(finding.value))
                                         : std::string(" is not finite");
    text += std::string(" and ") + wordsOf(finding.rule);
    if (finding.hasLimit()) {
        text += trimmed(generalForm(finding.limit));
    }
    return text;
}

void forEachFinding(const Problem& problem, const Found& found) {
    static_cast<void>(visitCounts(problem, found) && visitChoices(problem, found) &&
                      visitFields(problem, found) && visitOutcomes(problem, found) &&
                      visitLastLayers(problem, found) && visitCrossRules(problem, found));
}

std::vector<Finding> validate(const Problem& problem) {
    std::vector<Finding> findings;
    forEachFinding(problem, [&findings](const Finding& finding) {
        findings.push_back(finding);
        return true;
    });
    return findings;
}

} // namespace korvane
