// From nothing to a report through the screens alone, compared with the same problem built in code.
#include "typing.h"

#include "../commands/scripted_desktop.h"
#include "commands/pile_entry.h"
#include "problem/input_reader.h"
#include "runtime/file_text.h"
#include "runtime/number_text.h"

#include <QRegularExpression>

#include <gtest/gtest.h>

#include <algorithm>

namespace korvane::test {

namespace {

/// An example as the screens can hold it: headings without the blank that the reader leaves at
/// their ends, and seepage beginning no higher than the section list lets pass.
Problem exampleProblem(const std::string& name) {
    Problem problem;
    clearProblemData(problem);
    const ReadResult result = readProblem(problem, readFile(examplePath(name)), name);
    EXPECT_TRUE(result.complete) << name;
    for (std::string& line : problem.HeadingLines) {
        line = trimmed(line);
    }
    for (const int side : {Right, Left}) {
        problem.SeepageElev =
            std::min({problem.SeepageElev, problem.SurfaceElev(side, 1), problem.WaterElev(side)});
    }
    return problem;
}

/// What is done with the sheet pile sections, on the screen and in code alike.
struct Piles {
    std::string allowStress = DefaultAllowStressText;
    std::vector<std::string> added; ///< one row: name, section modulus, inertia, stress, modulus
};

/// The report of a problem that was built in code: no window has a part in it.
std::string reportInCode(const Problem& problem, const Piles& piles = {}) {
    Office office;
    office.enter(problem);
    office.desktop.onScreen = [&](Screen screen, Session& session) {
        if (screen == Screen::ROWEPILE) {
            acceptDefaultTexts(session.sections, piles.allowStress, DefaultModulusText);
            std::array<PileEntry, 5> rows;
            if (!piles.added.empty()) {
                rows[0] = {piles.added[0], piles.added[1], piles.added[2], piles.added[3],
                           piles.added[4]};
            }
            EXPECT_TRUE(addSections(session.sections, rows));
        }
    };
    office.solve();
    EXPECT_EQ(office.session->panels.panDoneVisible, false);
    EXPECT_EQ(office.session->SolutionFailed, 0);
    return office.report();
}

/// Types a whole problem through the screens.
void enter(Person& person, const Problem& problem) {
    person.answer("POSSIBLE INCONSISTENT SEEPAGE ELVATION", "OK");
    expectEntry(person, problem);
    person.choose("mnuEditItem_0");
    person.expectNothingLeft();
}

/// Solves what the program holds, from the Solve command to the button of the last panel.
std::string solve(Person& person, const Piles& piles = {}) {
    const Problem& problem = person.session().problem;
    const bool design = problem.ProgramMode == Mode::Design;
    const bool wedge = problem.SurfacePointCount(Right) > 1 || problem.SurfacePointCount(Left) > 1;
    if (wedge) {
        person.expectScreen("WEDGMETH", [](QDialog& window) { pushButton(window, "cmdSweep"); });
    }
    person.choose("mnuSolveItem_0");
    if (design) {
        if (problem.WallType == WallKind::Anchored) {
            person.expectScreen("ROWEPILE", [piles](QDialog& window) {
                typeInto(window, "txtDefAllow", QString::fromStdString(piles.allowStress));
                pushButton(window, "cmdDefAccept");
                static const char* const names[] = {"txtName_0", "txtSectMod_0", "txtInertia_0",
                                                    "txtAllow_0", "txtEMod_0"};
                for (std::size_t column = 0; column < piles.added.size(); ++column) {
                    typeInto(window, names[column], QString::fromStdString(piles.added[column]));
                }
                pushButton(window, "cmdDone");
            });
        }
        person.push("cmdContinue");
    }
    person.expectNothingLeft();
    EXPECT_EQ(person.session().SolutionFailed, 0);
    person.push("cmdOK");
    return readFile(person.session().report.CurrentOutputName);
}

std::string withoutTrailingBlanks(const std::string& text) {
    return QString::fromStdString(text).replace(QRegularExpression(" +\n"), "\n").toStdString();
}

/// Saves the input under a name, opens it and solves it.
std::string saveOpenAndSolve(Person& person, const std::string& name, const Piles& piles = {}) {
    const std::string path = person.userFile(name);
    person.expectFile(path);
    person.choose("mnuSaveItem_0");
    EXPECT_TRUE(std::filesystem::exists(path));
    person.answer("SAVE OUTPUT DATA?", "No");
    person.open(path);
    return solve(person, piles);
}

} // namespace

TEST(Road, ACantileverDesignIsTypedAndSolvedAsBuiltInCode) {
    Problem problem = exampleProblem("cantilever-water-seepage");
    problem.VStripCount(Right) = 1;
    problem.VStripStart(Right, 1) = 4;
    problem.VStripEnd(Right, 1) = 12.5;
    problem.VStripLoad(Right, 1) = 250;
    Person person;
    enter(person, problem);
    const std::string expected = reportInCode(problem);
    const std::string report = solve(person);
    EXPECT_EQ(report, expected);
    EXPECT_NE(report.find("PENETRATION"), std::string::npos);
    EXPECT_EQ(withoutTrailingBlanks(saveOpenAndSolve(person, "cantilever.dat")),
              withoutTrailingBlanks(expected));
}

TEST(Road, AnAnchoredDesignInClayEndsWithItsSectionsChangedAndAdded) {
    const Problem problem = exampleProblem("anchored-clay");
    const Piles piles{"36E3", {"OWN 1", "55.5", "444.25", "25000", "3E7"}};
    Person person;
    enter(person, problem);
    const std::string expected = reportInCode(problem, piles);
    const std::string report = solve(person, piles);
    EXPECT_EQ(report, expected);
    EXPECT_NE(report.find("OWN 1"), std::string::npos);
    EXPECT_NE(report.find("55.50"), std::string::npos);
    EXPECT_NE(report, reportInCode(problem)); // the changed stress shows
    EXPECT_EQ(withoutTrailingBlanks(saveOpenAndSolve(person, "anchored.dat", piles)),
              withoutTrailingBlanks(expected));
}

TEST(Road, AnAnalysisWithWedgeSidesAndSlopingLayersIsTypedAndSolved) {
    Problem problem = exampleProblem("sloping-backfill-sweep");
    problem.ProgramMode = Mode::Analysis;
    problem.FSKind = FactorKind::OneForBoth;
    problem.WallBottomElev = -14;
    problem.WallModulus = 29e6;
    problem.WallInertia = 220.4;
    problem.SoilLayerCount(Right) = 2;
    problem.SoilBottomElev(Right, 1) = 3;
    problem.SoilBottomElev(Right, 2) = NoLayerBottom;
    problem.SoilBottomSlope(Right, 1) = 0.1;
    problem.SoilSatWeight(Right, 2) = 128;
    problem.SoilMoistWeight(Right, 2) = 120;
    problem.SoilFriction(Right, 2) = 34;
    Person person;
    enter(person, problem);
    EXPECT_EQ(person.session().problem.SoilBottomSlope(Right, 1), 0.1);
    person.answer("LARGE FACTOR OF SAFETY", "Yes");
    EXPECT_EQ(solve(person), reportInCode(problem));
}

TEST(Road, AGivenGradientWhichOnlyTheScreensCanEnterIsSolved) {
    Problem problem = exampleProblem("cantilever-water-seepage");
    problem.SeepageKind = Seepage::Given;
    problem.SeepageGradient(1) = 0.15;
    problem.SeepageGradient(2) = 0.15;
    Person person;
    enter(person, problem);
    EXPECT_EQ(person.session().problem.SeepageKind, Seepage::Given);
    const std::string report = solve(person);
    EXPECT_EQ(report, reportInCode(problem));
    EXPECT_NE(report.find("0.15"), std::string::npos);
}

TEST(Road, EveryExampleCanBeTyped) {
    for (const auto& entry :
         std::filesystem::directory_iterator(std::string(KORVANE_SOURCE_DIR) + "/examples")) {
        if (entry.path().extension() != ".dat") {
            continue;
        }
        const std::string name = entry.path().stem().string();
        SCOPED_TRACE(name);
        const Problem problem = exampleProblem(name);
        Person person;
        enter(person, problem);
        Office office;
        office.enter(problem);
        EXPECT_EQ(readFile(person.session().report.CurrentOutputName), office.report());
    }
}

} // namespace korvane::test
