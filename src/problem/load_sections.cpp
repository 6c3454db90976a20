#include "problem/load_sections.h"

#include "runtime/runtime_error.h"

namespace korvane {

namespace {

/// A kind of vertical surcharge whose lines name their side.
struct SidedKind {
    char letter; ///< of the second word
    const char* SectionName;
    Array<int, 2> Problem::*counts;
    int needed;                            ///< tokens of a side's first line; 0 = not tested
    bool endAfterRightIsFatal;             ///< see `readSidedKind`
    bool (*readLoads)(Reading&, int side); ///< what stands behind the side word
    void (*copyLoads)(Problem&);           ///< "B": the right side's lists to the left side
};

bool readLineLoads(Reading& reading, int side) {
    Problem& problem = reading.problem;
    int& loads = problem.VLineCount(side);

    if (!(count(reading, 4, {"VLineCount", side}, loads, 1, 5) &&
          needTokens(reading, 4 + 2 * loads))) {
        return false;
    }
    for (int load = 1; load <= loads; ++load) {
        const int token = 3 + 2 * load;
        if (!(number(reading, token, ProblemField::VLineDist, side, load) &&
              number(reading, token + 1, ProblemField::VLineLoad, side, load))) {
            return false;
        }
    }
    return true;
}

bool readStrips(Reading& reading, int side) {
    Problem& problem = reading.problem;
    int& loads = problem.VStripCount(side);

    if (!count(reading, 4, {"VStripCount", side}, loads, 1, 5)) {
        return false;
    }
    for (int load = 1; load <= loads; ++load) {
        if (load > 1 && !nextLine(reading, 3)) {
            return false;
        }
        const int token = load == 1 ? 5 : 1;
        if (!(number(reading, token, ProblemField::VStripStart, side, load) &&
              number(reading, token + 1, ProblemField::VStripEnd, side, load) &&
              number(reading, token + 2, ProblemField::VStripLoad, side, load))) {
            return false;
        }
    }
    return true;
}

bool readRamp(Reading& reading, int side) {
    Problem& problem = reading.problem;
    if (!(number(reading, 4, ProblemField::VRampStart, side) &&
          number(reading, 5, ProblemField::VRampEnd, side) &&
          number(reading, 6, ProblemField::VRampLoad, side))) {
        return false;
    }
    problem.VRampCount(side) = 1;
    return true;
}

bool readTriangles(Reading& reading, int side) {
    Problem& problem = reading.problem;
    int& loads = problem.VTriCount(side);

    if (!count(reading, 4, {"VTriCount", side}, loads, 1, 5)) {
        return false;
    }
    for (int load = 1; load <= loads; ++load) {
        if (load > 1 && !nextLine(reading, 4)) {
            return false;
        }
        const int token = load == 1 ? 5 : 1;
        if (!(number(reading, token, ProblemField::VTriStart, side, load) &&
              number(reading, token + 1, ProblemField::VTriPeak, side, load) &&
              number(reading, token + 2, ProblemField::VTriEnd, side, load) &&
              number(reading, token + 3, ProblemField::VTriLoad, side, load))) {
            return false;
        }
    }
    return true;
}

bool readVariable(Reading& reading, int side) {
    Problem& problem = reading.problem;
    int& points = problem.VVarCount(side);

    if (!count(reading, 4, {"VVarCount", side}, points, 2, 11)) {
        return false;
    }
    for (int point = 1; point <= points; ++point) {
        if (point > 2 && !nextLine(reading, 2)) {
            return false;
        }
        const int token = point <= 2 ? 3 + 2 * point : 1;
        if (!(number(reading, token, ProblemField::VVarDist, side, point) &&
              number(reading, token + 1, ProblemField::VVarLoad, side, point))) {
            return false;
        }
    }
    return true;
}

void copyLineLoads(Problem& problem) {
    copyToLeft(problem.VLineCount);
    copyToLeft(problem.VLineDist, problem.VLineCount(Left));
    copyToLeft(problem.VLineLoad, problem.VLineCount(Left));
}

void copyStrips(Problem& problem) {
    copyToLeft(problem.VStripCount);
    copyToLeft(problem.VStripStart, problem.VStripCount(Left));
    copyToLeft(problem.VStripEnd, problem.VStripCount(Left));
    copyToLeft(problem.VStripLoad, problem.VStripCount(Left));
}

void copyRamp(Problem& problem) {
    copyToLeft(problem.VRampCount);
    copyToLeft(problem.VRampStart);
    copyToLeft(problem.VRampEnd);
    copyToLeft(problem.VRampLoad);
}

void copyTriangles(Problem& problem) {
    copyToLeft(problem.VTriCount);
    copyToLeft(problem.VTriStart, problem.VTriCount(Left));
    copyToLeft(problem.VTriPeak, problem.VTriCount(Left));
    copyToLeft(problem.VTriEnd, problem.VTriCount(Left));
    copyToLeft(problem.VTriLoad, problem.VTriCount(Left));
}

void copyVariable(Problem& problem) {
    copyToLeft(problem.VVarCount);
    copyToLeft(problem.VVarDist, problem.VVarCount(Left));
    copyToLeft(problem.VVarLoad, problem.VVarCount(Left));
}

constexpr SidedKind lineLoads{'L',  "VERTICAL LINE LOADS", &Problem::VLineCount, 6,
                              true, readLineLoads,         copyLineLoads};
constexpr SidedKind stripLoads{
    'S', "VERTICAL STRIP LOADS", &Problem::VStripCount, 0, false, readStrips, copyStrips};
constexpr SidedKind rampLoads{
    'R', "VERTICAL RAMP LOADS", &Problem::VRampCount, 6, true, readRamp, copyRamp};
constexpr SidedKind triangularLoads{
    'T', "VERTICAL TRIANGULAR LOADS", &Problem::VTriCount, 8, false, readTriangles, copyTriangles};
constexpr SidedKind variableLoads{
    'V', "VERTICAL VARIABLE LOADS", &Problem::VVarCount, 8, false, readVariable, copyVariable};

/// True where the current line is for the kind. The second word is taken unseen.
bool isVertical(const Reading& reading, char letter) {
    return beginsWith(reading, "V") && firstLetter(reading, 2) == letter;
}

/// One kind: lines for R, for L, for R and then L, or for B; or none. At the end of the file after
/// side R of two kinds the old line is looked at once more while its tokens are gone, which is
/// RuntimeError 5 instead of the message of the incomplete file: deliberate.
bool readSidedKind(Reading& reading, const SidedKind& kind) {
    SideWord word;
    while (word.side == Right && !word.both && isVertical(reading, kind.letter)) {
        reading.SectionName = kind.SectionName;
        if (!((kind.needed == 0 || needTokens(reading, kind.needed)) &&
              sideWord(reading, 3, reading.problem.*kind.counts, false, word) &&
              kind.readLoads(reading, word.side))) {
            return false;
        }
        if (word.both) {
            kind.copyLoads(reading.problem);
        }
        if (!NextInputLine(reading.input)) {
            if (kind.endAfterRightIsFatal && word.side == Right && !word.both) {
                throw RuntimeError(5);
            }
            return refuseIncomplete(reading);
        }
    }
    return true;
}

/// One line for both sides; a load of 0 is no load.
bool readUniform(Reading& reading) {
    auto& VUniformLoad = reading.problem.VUniformLoad;

    if (!isVertical(reading, 'U')) {
        return true;
    }
    reading.SectionName = "VERTICAL UNIFORM LOADS";
    if (!(needTokens(reading, 3) && number(reading, 3, ProblemField::VUniformLoad, Right) &&
          optionalNumber(reading, 4, ProblemField::VUniformLoad, Left))) {
        return false;
    }
    for (const int side : {Right, Left}) {
        reading.problem.VUniformCount(side) = VUniformLoad(side) > 0 ? 1 : 0;
    }
    return nextLine(reading);
}

bool isHorizontal(const Reading& reading, char letter) {
    return beginsWith(reading, "H") && hasToken(reading.input, 2) &&
           firstLetter(reading, 2) == letter;
}

bool readHorizontalLines(Reading& reading) {
    Problem& problem = reading.problem;
    auto& HLineCount = problem.HLineCount;

    if (!isHorizontal(reading, 'L')) {
        return true;
    }
    if (!(needTokens(reading, 5) && count(reading, 3, {"HLineCount"}, HLineCount, 1, 5) &&
          needTokens(reading, 3 + 2 * HLineCount))) {
        return false;
    }
    for (int load = 1; load <= HLineCount; ++load) {
        if (!(number(reading, 2 + 2 * load, ProblemField::HLineElev, Right, load) &&
              number(reading, 3 + 2 * load, ProblemField::HLineLoad, Right, load))) {
            return false;
        }
    }
    return nextLine(reading);
}

bool readHorizontalDistributed(Reading& reading) {
    Problem& problem = reading.problem;

    if (!isHorizontal(reading, 'D')) {
        return true;
    }
    if (!(needTokens(reading, 7) && count(reading, 3, {"HDistCount"}, problem.HDistCount, 2, 11))) {
        return false;
    }
    for (int point = 1; point <= problem.HDistCount; ++point) {
        if (point > 2 && !nextLine(reading, 2)) {
            return false;
        }
        const int token = point <= 2 ? 2 + 2 * point : 1;
        if (!(number(reading, token, ProblemField::HDistElev, Right, point) &&
              number(reading, token + 1, ProblemField::HDistLoad, Right, point))) {
            return false;
        }
    }
    return nextLine(reading);
}

} // namespace

bool readVerticalLoads(Reading& reading) {
    if (!(readSidedKind(reading, lineLoads) && readUniform(reading) &&
          readSidedKind(reading, stripLoads) && readSidedKind(reading, rampLoads) &&
          readSidedKind(reading, triangularLoads) && readSidedKind(reading, variableLoads))) {
        return false;
    }
    if (beginsWith(reading, "V")) {
        takeToken(reading.input, 2); // RuntimeError 5 where it is missing
        return refuseLine(reading, "a line of vertical loads in the order L, U, S, R, T, V",
                          "VERTICAL LOADS");
    }
    return true;
}

bool readHorizontalLoads(Reading& reading) {
    return readHorizontalLines(reading) && readHorizontalDistributed(reading);
}

} // namespace korvane
