// What a saved file does not bring back: each rule by a problem that is really written and read.
#include "reading_helpers.h"

#include "problem/input_writer.h"
#include "problem/save_losses.h"
#include "runtime/file_text.h"
#include "runtime/number_text.h"
#include "support/random_problem.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <set>
#include <sstream>

using namespace korvane;
using namespace korvane::test;

namespace {

/// What becomes of a problem that is saved and opened again.
enum class Fate { Kept, Changed, Refused, ProgramEnds };

Problem withTrimmedHeadings(Problem problem) {
    for (std::string& line : problem.HeadingLines) {
        line = trimmed(line); // the reader leaves one blank at the end
    }
    return problem;
}

/// Writes and reads. `problem` must be one whose unused entries are those of a new record.
Fate fateOf(const Problem& problem) {
    const Outcome outcome = readText(inputFileText(problem));
    if (outcome.runtimeError != 0) {
        return Fate::ProgramEnds;
    }
    if (!outcome.result.complete) {
        return Fate::Refused;
    }
    return withTrimmedHeadings(outcome.problem) == withTrimmedHeadings(problem) ? Fate::Kept
                                                                                : Fate::Changed;
}

/// A problem of two layers that a file holds whole.
Problem heldWhole() {
    return readText("'WALL\n"
                    "CONTROL  CANTILEVER  DESIGN  1.25  1.5\n"
                    "WALL  10\n"
                    "SURFACE BOTH  1  0  0\n"
                    "SOIL BOTH  STRENGTHS  2\n"
                    "  120  110  30  100  10  50  -8  0\n"
                    "  125  115  32  0  0  0\n"
                    "WATER ELEVATIONS  62.4  -2  -4  -3  AUTOMATIC\n"
                    "FINISHED\n")
        .problem;
}

Problem byCoefficients() {
    return readText("'WALL\n"
                    "CONTROL  CANTILEVER  DESIGN  1.25  1.5\n"
                    "WALL  10\n"
                    "SURFACE BOTH  1  0  0\n"
                    "SOIL BOTH  COEFFICIENTS  2\n"
                    "  120  110  .3  3  -8\n"
                    "  125  115  .25  4\n"
                    "FINISHED\n")
        .problem;
}

Problem analysis() {
    return readText("'WALL\n"
                    "CONTROL  CANTILEVER  ANALYSIS\n"
                    "WALL  10  -20  29E6  184.2\n"
                    "SURFACE RIGHT  1  0  10\n"
                    "SURFACE LEFT  1  0  0\n"
                    "SOIL BOTH  STRENGTHS  1\n"
                    "  120  110  30  0  0  0\n"
                    "FINISHED\n")
        .problem;
}

Problem withPressures() {
    return readText("'WALL\n"
                    "CONTROL  CANTILEVER  DESIGN\n"
                    "WALL  10\n"
                    "SURFACE BOTH  1  0  0\n"
                    "SOIL BOTH  STRENGTHS  1\n"
                    "  120  110  30  0  0  0\n"
                    "WATER PRESSURES  3  5  0  0  300\n"
                    "  -5  0\n"
                    "FINISHED\n")
        .problem;
}

struct Case {
    const char* value; ///< of the rule
    Problem (*base)();
    std::function<const void*(Problem&)> spoil; ///< gives the place where the loss stands
    Fate fate;
};

template <class Value>
const void* set(Value& place, const Value& value) {
    place = value;
    return &place;
}

const std::vector<Case>& cases() {
    static const std::vector<Case> all = {
        {"Small letters in a heading", heldWhole,
         [](Problem& p) { return set<std::string>(p.HeadingLines(1), "'River wall"); },
         Fate::Changed},
        {"Level 1 factor with more than two decimals", heldWhole,
         [](Problem& p) { return set(p.FSActive, 1.125); }, Fate::Changed},
        {"Level 1 factor with more than two decimals", heldWhole,
         [](Problem& p) { return set(p.FSPassive, 1.504); }, Fate::Changed},
        {"Level 1 factor below 0.005", heldWhole,
         [](Problem& p) { return set(p.FSPassive, 0.004); }, Fate::Refused},
        {"Level 1 factor that an analysis does not use", analysis,
         [](Problem& p) { return set(p.FSPassive, 2.0); }, Fate::Changed},
        {"Level 1 factor that an analysis does not use", analysis,
         [](Problem& p) { return set(p.FSActive, 2.0); }, Fate::Changed},
        {"Wall bottom of an analysis not below the ground on both sides", analysis,
         [](Problem& p) {
             p.WallBottomElev = -20;
             return set(p.SurfaceElev(Left, 1), -20.0);
         },
         Fate::Refused},
        {"First surface point before the wall", heldWhole,
         [](Problem& p) { return set(p.SurfaceDist(Left, 1), -1.0); }, Fate::Refused},
        {"Level 2 passive factor without an active one", heldWhole,
         [](Problem& p) { return set(p.Level2FSPassive(Left), 1.5); }, Fate::Changed},
        {"Level 2 factors of a side by coefficients", byCoefficients,
         [](Problem& p) { return set(p.Level2FSActive(Right), 1.5); }, Fate::Changed},
        {"Level 2 factors of a side by coefficients", byCoefficients,
         [](Problem& p) { return set(p.Level2FSPassive(Left), 1.5); }, Fate::Changed},
        {"Angle of wall friction below 0", heldWhole,
         [](Problem& p) { return set(p.SoilWallFriction(Right, 2), -1.0); }, Fate::Refused},
        {"Adhesion above the cohesion", heldWhole,
         [](Problem& p) { return set(p.SoilAdhesion(Right, 1), 101.0); }, Fate::Refused},
        {"Slope of a layer's bottom", heldWhole,
         [](Problem& p) { return set(p.SoilBottomSlope(Left, 1), 0.1); }, Fate::Changed},
        {"Passive factor of a layer without an active one", heldWhole,
         [](Problem& p) { return set(p.SoilFSPassive(Right, 2), 1.5); }, Fate::Changed},
        {"Slopes and layer factors from before a side was changed to coefficients", byCoefficients,
         [](Problem& p) {
             p.SoilBottomSlope(Right, 1) = 0.1;
             return &p.SoilCoefActive(Right, 1);
         },
         Fate::Changed},
        {"Slopes and layer factors from before a side was changed to coefficients", byCoefficients,
         [](Problem& p) {
             p.SoilFSPassive(Left, 2) = 2;
             return &p.SoilCoefActive(Left, 2);
         },
         Fate::Changed},
        {"Seepage elevation below the lower of left ground and left water, or above the lower of "
         "right ground and right water",
         heldWhole, [](Problem& p) { return set(p.SeepageElev, -4.01); }, Fate::Refused},
        {"Seepage elevation below the lower of left ground and left water, or above the lower of "
         "right ground and right water",
         heldWhole, [](Problem& p) { return set(p.SeepageElev, -1.99); }, Fate::Refused},
        {"Seepage gradient given as a number", heldWhole,
         [](Problem& p) {
             p.SeepageKind = Seepage::Given;
             p.SeepageGradient.fill(0.1);
             return &p.SeepageGradient(1);
         },
         Fate::ProgramEnds},
        {"Water pressures not from the top down", withPressures,
         [](Problem& p) { return set(p.WaterPressElev(3), 0.0); }, Fate::Refused},
        {"Type of seepage from before the water was changed to pressures", withPressures,
         [](Problem& p) {
             p.SeepageKind = Seepage::Automatic;
             return &p.WaterPressElev(1);
         },
         Fate::Changed},
        {"Uniform load of 0", heldWhole,
         [](Problem& p) {
             p.VUniformCount(Right) = 1;
             return &p.VUniformLoad(Right);
         },
         Fate::Changed},
        {"Ramp load of 0", heldWhole,
         [](Problem& p) {
             p.VRampCount(Left) = 1;
             p.VRampEnd(Left) = 5;
             return &p.VRampLoad(Left);
         },
         Fate::Refused},
        {"Variable load of one point", heldWhole,
         [](Problem& p) {
             p.VVarCount(Right) = 1;
             p.VVarLoad(Right, 1) = 100;
             return &p.VVarDist(Right, 1);
         },
         Fate::Refused},
    };
    return all;
}

} // namespace

TEST(SaveLosses, NoneWhereAFileHoldsTheProblem) {
    for (const auto base : {heldWhole, byCoefficients, analysis, withPressures}) {
        EXPECT_EQ(fateOf(base()), Fate::Kept);
        EXPECT_TRUE(lossesOfSave(base()).empty());
    }
}

TEST(SaveLosses, EachIsFoundAtItsPlaceAndReallyHappens) {
    std::set<std::string> seen;
    for (const Case& loss : cases()) {
        SCOPED_TRACE(loss.value);
        Problem problem = loss.base();
        const void* place = loss.spoil(problem);
        EXPECT_EQ(fateOf(problem), loss.fate);
        const auto found = lossesOfSave(problem);
        ASSERT_FALSE(found.empty());
        EXPECT_EQ(found[0].place, place);
        for (const SaveLoss& one : found) { // one value can stand at two places
            EXPECT_STREQ(one.rule->value, loss.value);
        }
        seen.insert(loss.value);
    }
    EXPECT_EQ(seen.size(), saveRules().size());
}

TEST(SaveLosses, OneOfTwoCausesIsToldOnce) {
    const auto timesAt = [](const Problem& problem, const void* place) {
        const auto losses = lossesOfSave(problem);
        return std::count_if(losses.begin(), losses.end(),
                             [place](const SaveLoss& loss) { return loss.place == place; });
    };
    Problem wall = analysis();
    wall.WallBottomElev = wall.SurfaceElev(Right, 1) = wall.SurfaceElev(Left, 1);
    EXPECT_EQ(timesAt(wall, &wall.WallBottomElev), 1);
    EXPECT_EQ(timesAt(wall, &wall.SurfaceElev(Right, 1)), 1);
    Problem seepage = heldWhole(); // water enters at -2 and leaves at -4
    seepage.WaterElev(Right) = -6;
    seepage.SeepageElev = -5; // below the one and above the other
    EXPECT_EQ(timesAt(seepage, &seepage.SeepageElev), 1);
}

TEST(SaveLosses, GroundThatIsStillToComeIsNoLimitOfSeepage) {
    Problem problem = heldWhole(); // water at -2 and -4
    problem.SurfacePointCount.fill(0);
    problem.SurfaceElev.fill(-100); // left over
    for (const double elev : {-4.0, -2.0}) {
        problem.SeepageElev = elev;
        EXPECT_TRUE(lossesOfSave(problem).empty()) << elev;
    }
    for (const double elev : {-4.01, -1.99}) {
        problem.SeepageElev = elev;
        ASSERT_EQ(lossesOfSave(problem).size(), 1U) << elev;
        EXPECT_EQ(lossesOfSave(problem)[0].place, &problem.SeepageElev);
    }
}

TEST(SaveLosses, TheirWordsTellWhatHappens) {
    std::map<std::string, Fate> fates;
    for (const Case& loss : cases()) {
        fates[loss.value] = loss.fate;
    }
    for (const SaveRule& rule : saveRules()) {
        const std::string effect = rule.effect;
        const bool refused = effect.find("cannot be opened") != std::string::npos;
        EXPECT_EQ(refused, fates.at(rule.value) == Fate::Refused) << rule.value;
        const bool ends = effect.find("ends the program") != std::string::npos;
        EXPECT_EQ(ends, fates.at(rule.value) == Fate::ProgramEnds) << rule.value;
    }
}

TEST(SaveLosses, TheGuideListsThemAllInOnePlace) {
    std::istringstream guide(readFile(sourceFolder() / "docs/guide/04-input-file.md"));
    std::vector<std::string> rows;
    bool inSection = false;
    for (std::string line; std::getline(guide, line);) {
        if (line.starts_with("## ")) {
            inSection = line == "## What a saved file does not bring back";
        } else if (inSection && line.starts_with("| ")) {
            rows.push_back(line);
        }
    }
    std::vector<std::string> expected{"| Value | What becomes of it |"};
    for (const SaveRule& rule : saveRules()) {
        expected.push_back("| " + std::string(rule.value) + " | " + rule.effect + " |");
    }
    EXPECT_EQ(rows, expected);
}

TEST(SaveLosses, NoneIsMissedInRandomProblems) {
    RandomProblems problems(20261123);
    std::mt19937_64 engine(7);
    const auto oneIn = [&](unsigned n) { return engine() % n == 0; };
    int kept = 0, lost = 0;
    for (int round = 0; round < 2000; ++round) {
        Problem p = problems.next();
        for (const int side : {Right, Left}) {
            const int layers = p.SoilLayerCount(side);
            if (oneIn(12)) {
                p.SoilBottomSlope(side, 1) = layers > 1 ? 0.1 : 0;
            }
            if (oneIn(12) && p.SoilDataKind(side) == SoilData::Strengths) {
                p.SoilFSPassive(side, layers) = 1.5;
                p.SoilWallFriction(side, layers) = oneIn(2) ? -1 : 0;
            }
            if (oneIn(12)) {
                p.Level2FSPassive(side) = 1.25;
            }
            if (oneIn(12) && p.SoilDataKind(side) == SoilData::Strengths) {
                p.SoilAdhesion(side, 1) = p.SoilCohesion(side, 1) + (oneIn(2) ? 1 : 0);
            }
            if (oneIn(20)) {
                p.SurfaceDist(side, 1) = oneIn(2) ? 0 : -0.5;
            }
            if (oneIn(20)) {
                p.VRampCount(side) = 1;
                p.VRampStart(side) = 1;
                p.VRampEnd(side) = 2;
                p.VRampLoad(side) = oneIn(2) ? 10 : 0;
            }
        }
        if (oneIn(8)) {
            p.FSActive = 1.001 + (oneIn(2) ? 0.009 : 0);
        }
        const bool wasKept = fateOf(p) == Fate::Kept;
        EXPECT_EQ(lossesOfSave(p).empty(), wasKept) << inputFileText(p);
        ++(wasKept ? kept : lost);
    }
    EXPECT_GT(kept, 300);
    EXPECT_GT(lost, 300);
}
