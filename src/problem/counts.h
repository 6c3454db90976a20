// The counts of the record as data: how many entries of its lists may be valid.
#pragma once

#include "problem/fields.h"
#include "runtime/table_order.h"

#include <iterator>

namespace korvane {

/// Every count of `Problem`, in the order of the table.
enum class ProblemCount {
    NumHeadingLines,
    SurfacePointCount,
    SoilLayerCount,
    WaterPressCount,
    VLineCount,
    VUniformCount,
    VStripCount,
    VRampCount,
    VTriCount,
    VVarCount,
    HLineCount,
    HDistCount,
};

template <auto Member, class Record>
constexpr auto& countIn(Record& problem, int side) {
    auto& count = problem.*Member;
    if constexpr (requires { count(side); }) {
        return count(side);
    } else {
        return count;
    }
}
template <auto Member>
int& countAt(Problem& problem, int side) {
    return countIn<Member>(problem, side);
}
template <auto Member>
int countOf(const Problem& problem, int side) {
    return countIn<Member>(problem, side);
}

/// One count. A count without sides has side 1.
struct CountRules {
    ProblemCount count;
    const char* name; ///< as in JSON
    int sides;
    int& (*at)(Problem&, int side);
    int (*value)(const Problem&, int side);
    int places;                ///< of the lists
    int most;                  ///< that files and screens take
    bool required = false;     ///< 0 is too few
    int least = 1;             ///< where there are some
    unsigned leastBy = ByBoth; ///< others take 1
};

template <auto Member>
constexpr CountRules counted(ProblemCount count, const char* name, int places, int most,
                             bool required = false, int least = 1, unsigned leastBy = ByBoth) {
    constexpr bool hasSides = requires(Problem & problem) {
        (problem.*Member)(1);
    };
    return {count,  name, hasSides ? 2 : 1, countAt<Member>, countOf<Member>,
            places, most, required,         least,           leastBy};
}

inline constexpr CountRules Counts[] = {
    counted<&Problem::NumHeadingLines>(ProblemCount::NumHeadingLines, "NumHeadingLines", 4, 4,
                                       true),
    counted<&Problem::SurfacePointCount>(ProblemCount::SurfacePointCount, "SurfacePointCount", 11,
                                         11, true),
    counted<&Problem::SoilLayerCount>(ProblemCount::SoilLayerCount, "SoilLayerCount", 11, 11, true),
    counted<&Problem::WaterPressCount>(ProblemCount::WaterPressCount, "WaterPressCount", 21, 11,
                                       true, 2),
    counted<&Problem::VLineCount>(ProblemCount::VLineCount, "VLineCount", 5, 5),
    counted<&Problem::VUniformCount>(ProblemCount::VUniformCount, "VUniformCount", 1, 1),
    counted<&Problem::VStripCount>(ProblemCount::VStripCount, "VStripCount", 11, 5),
    counted<&Problem::VRampCount>(ProblemCount::VRampCount, "VRampCount", 1, 1),
    counted<&Problem::VTriCount>(ProblemCount::VTriCount, "VTriCount", 11, 5),
    counted<&Problem::VVarCount>(ProblemCount::VVarCount, "VVarCount", 11, 11, false, 2, ByReader),
    counted<&Problem::HLineCount>(ProblemCount::HLineCount, "HLineCount", 5, 5),
    counted<&Problem::HDistCount>(ProblemCount::HDistCount, "HDistCount", 11, 11, false, 2),
};

constexpr const CountRules& rulesOf(ProblemCount count) {
    return Counts[static_cast<int>(count)];
}
static_assert(inOrder(Counts, &CountRules::count) &&
              std::size(Counts) == static_cast<std::size_t>(ProblemCount::HDistCount) + 1);

/// The most entries that files and screens take.
constexpr int mostOf(ProblemCount count) {
    return rulesOf(count).most;
}
/// The fewest, where there are some, that a file (ByReader) or a screen (ByScreen) takes.
constexpr int leastOf(ProblemCount count, StatedBy who) {
    const CountRules& rules = rulesOf(count);
    return (rules.leastBy & who) != 0 ? rules.least : 1;
}

/// Entries in use, never beyond the lists, whatever the count holds.
inline int entriesOf(ProblemCount count, const Problem& problem, int side) {
    const CountRules& rules = rulesOf(count);
    const int value = rules.value(problem, side);
    return value < 0 ? 0 : value > rules.places ? rules.places : value;
}

} // namespace korvane
