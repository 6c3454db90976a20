// The kinds of load as data: the lists that hold them, and where they stand in a line of a file.
#pragma once

#include "problem/counts.h"

#include <span>

namespace korvane {

/// In the order of files, screens, reports and plots.
enum class Load { Line, Uniform, Strip, Ramp, Triangle, Variable, HorizontalLine, Distributed };

/// One kind. A row of its lists is one load or one point of a load: distances or elevations, and
/// last the load itself.
struct LoadRules {
    Load load;
    const char* word; ///< second one of its lines in a file; its first letter counts
    ProblemCount count;
    ProblemField first;
    ProblemField last;
    int rowsOfFirstLine;      ///< of a file; further rows have lines of their own
    bool countsInFile = true; ///< the number of rows stands before them

    constexpr int sides() const { return rulesOf(count).sides; }
    constexpr int mostRows() const { return mostOf(count); }
    constexpr int width() const { return static_cast<int>(last) - static_cast<int>(first) + 1; }
    /// Field of a column, from 0.
    constexpr ProblemField field(int column) const {
        return static_cast<ProblemField>(static_cast<int>(first) + column);
    }
    int rows(const Problem& problem, int side) const { return rulesOf(count).value(problem, side); }
    bool isGiven(const Problem& problem) const {
        return rows(problem, Right) > 0 || (sides() == 2 && rows(problem, Left) > 0);
    }
    double value(const Problem& problem, int column, int side, int row) const {
        return rulesOf(field(column)).value(problem, side, row);
    }
};

inline constexpr LoadRules LoadTable[] = {
    {Load::Line, "LINE", ProblemCount::VLineCount, ProblemField::VLineDist, ProblemField::VLineLoad,
     mostOf(ProblemCount::VLineCount)},
    {Load::Uniform, "UNIFORM", ProblemCount::VUniformCount, ProblemField::VUniformLoad,
     ProblemField::VUniformLoad, 1, false},
    {Load::Strip, "STRIP", ProblemCount::VStripCount, ProblemField::VStripStart,
     ProblemField::VStripLoad, 1},
    {Load::Ramp, "RAMP", ProblemCount::VRampCount, ProblemField::VRampStart,
     ProblemField::VRampLoad, 1, false},
    {Load::Triangle, "TRIANGULAR", ProblemCount::VTriCount, ProblemField::VTriStart,
     ProblemField::VTriLoad, 1},
    {Load::Variable, "VARIABLE", ProblemCount::VVarCount, ProblemField::VVarDist,
     ProblemField::VVarLoad, 2},
    {Load::HorizontalLine, "LINE", ProblemCount::HLineCount, ProblemField::HLineElev,
     ProblemField::HLineLoad, mostOf(ProblemCount::HLineCount)},
    {Load::Distributed, "DISTRIBUTED", ProblemCount::HDistCount, ProblemField::HDistElev,
     ProblemField::HDistLoad, 2},
};

constexpr const LoadRules& rulesOf(Load load) {
    return LoadTable[static_cast<int>(load)];
}
static_assert(inOrder(LoadTable, &LoadRules::load));

/// The kinds on the ground of either side, and those on the wall itself.
inline constexpr std::span<const LoadRules> GroundLoads{&LoadTable[0], 6};
inline constexpr std::span<const LoadRules> WallLoads{&LoadTable[6], 2};

} // namespace korvane
