#include "problem/load_sections.h"

#include "problem/loads.h"
#include "runtime/runtime_error.h"

#include <algorithm>

namespace korvane {

namespace {

/// The rows of a load, which begin at `token` of the current line, behind their number if it is
/// there.
bool readRows(Reading& reading, const LoadRules& load, int side, int token) {
    if (load.countsInFile && !count(reading, token - 1, load.count, side)) {
        return false;
    }
    const int rows = load.countsInFile ? load.rows(reading.problem, side) : 1;
    if (load.rowsOfFirstLine == load.mostRows() &&
        !needTokens(reading, token - 1 + load.width() * rows)) {
        return false;
    }
    for (int row = 1; row <= rows; ++row) {
        if (row > load.rowsOfFirstLine && !nextLine(reading, load.width())) {
            return false;
        }
        const int first = row <= load.rowsOfFirstLine ? token + (row - 1) * load.width() : 1;
        for (int column = 0; column < load.width(); ++column) {
            if (!number(reading, first + column, load.field(column), side, row)) {
                return false;
            }
        }
    }
    rulesOf(load.count).at(reading.problem, side) = rows;
    return true;
}

/// Tokens that a load must have from `token` of its first line on.
int leastTokens(const LoadRules& load, int token) {
    return token - 1 + load.width() * leastOf(load.count, ByReader);
}

void copyToLeft(Problem& problem, const LoadRules& load) {
    const CountRules& rules = rulesOf(load.count);
    rules.at(problem, Left) = rules.at(problem, Right);
    for (int column = 0; column < load.width(); ++column) {
        const auto& at = rulesOf(load.field(column)).at;
        for (int row = 1; row <= load.rows(problem, Left); ++row) {
            at(problem, Left, row) = at(problem, Right, row);
        }
    }
}

/// True where the current line is for the kind. The second word is taken unseen.
bool isVertical(const Reading& reading, const LoadRules& load) {
    return beginsWith(reading, "V") && firstLetter(reading, 2) == load.word[0];
}

void nameSection(Reading& reading, const LoadRules& load) {
    reading.SectionName = std::string("VERTICAL ") + load.word + " LOADS";
}

/// One kind: lines for R, for L, for R and then L, or for B; or none. Deliberate: the first line of
/// strips is not tested for its tokens, so that a missing one is RuntimeError 5; and at the end of
/// the file after side R of line and ramp loads the old line is looked at once more while its
/// tokens are gone, which is that error too instead of the message of the incomplete file.
bool readSidedKind(Reading& reading, const LoadRules& load) {
    const int token = load.countsInFile ? 5 : 4;
    const bool isTested = load.load != Load::Strip;
    const bool endAfterRightIsFatal = load.load == Load::Line || load.load == Load::Ramp;
    SideWord word;
    while (word.side == Right && !word.both && isVertical(reading, load)) {
        nameSection(reading, load);
        if (!((!isTested || needTokens(reading, leastTokens(load, token))) &&
              sideWord(reading, 3, load.count, false, word) &&
              readRows(reading, load, word.side, token))) {
            return false;
        }
        if (word.both) {
            copyToLeft(reading.problem, load);
        }
        if (!NextInputLine(reading.input)) {
            if (endAfterRightIsFatal && word.side == Right && !word.both) {
                throw RuntimeError(5);
            }
            return refuseIncomplete(reading);
        }
    }
    return true;
}

/// One line for both sides; a load of 0 is no load.
bool readUniform(Reading& reading, const LoadRules& load) {
    auto& VUniformLoad = reading.problem.VUniformLoad;

    if (!isVertical(reading, load)) {
        return true;
    }
    nameSection(reading, load);
    if (!(needTokens(reading, 3) && number(reading, 3, ProblemField::VUniformLoad, Right) &&
          optionalNumber(reading, 4, ProblemField::VUniformLoad, Left))) {
        return false;
    }
    for (const int side : {Right, Left}) {
        reading.problem.VUniformCount(side) = VUniformLoad(side) > 0 ? 1 : 0;
    }
    return nextLine(reading);
}

bool readHorizontal(Reading& reading, const LoadRules& load) {
    constexpr int token = 4;
    if (!(beginsWith(reading, "H") && hasToken(reading.input, 2) &&
          firstLetter(reading, 2) == load.word[0])) {
        return true;
    }
    return needTokens(reading, leastTokens(load, token)) && readRows(reading, load, Right, token) &&
           nextLine(reading);
}

} // namespace

bool readVerticalLoads(Reading& reading) {
    for (const LoadRules& load : GroundLoads) {
        if (!(load.load == Load::Uniform ? readUniform(reading, load)
                                         : readSidedKind(reading, load))) {
            return false;
        }
    }
    if (beginsWith(reading, "V")) {
        takeToken(reading.input, 2); // RuntimeError 5 where it is missing
        return refuseLine(reading, "a line of vertical loads in the order L, U, S, R, T, V",
                          "VERTICAL LOADS");
    }
    return true;
}

bool readHorizontalLoads(Reading& reading) {
    return std::all_of(WallLoads.begin(), WallLoads.end(),
                       [&](const LoadRules& load) { return readHorizontal(reading, load); });
}

} // namespace korvane
