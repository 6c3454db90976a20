// From nothing to a report through the screens alone, compared with the same problem built in code.
#include "robot.h"

#include "../commands/scripted_desktop.h"
#include "problem/input_reader.h"
#include "rowe/pile_sections.h"
#include "runtime/file_text.h"
#include "runtime/number_text.h"

#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QTest>

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
    office.desktop.onScreen = [&](Screen screen, Session& session) {
        if (screen == Screen::KEYIN) {
            session.state.problem = problem;
            session.state.HeadContDataValid = 1;
            session.state.DataChanged = 1;
        } else if (screen == Screen::ROWEPILE) {
            acceptDefaultTexts(session.state.rowe, piles.allowStress, DefaultModulusText);
            std::array<PileEntry, 5> rows;
            if (!piles.added.empty()) {
                rows[0] = {piles.added[0], piles.added[1], piles.added[2], piles.added[3],
                           piles.added[4]};
            }
            EXPECT_TRUE(addSections(session.state.rowe, rows));
        }
    };
    mnuEditItem_Click(*office.session, office.desktop);
    office.solve();
    EXPECT_EQ(office.session->panels.panDoneVisible, false);
    EXPECT_EQ(office.session->state.SolutionFailed, 0);
    return office.report();
}

/// Solves what the program holds, from the Solve command to the button of the last panel.
std::string solve(Robot& robot, const Piles& piles = {}) {
    const Problem& problem = robot.session().state.problem;
    const bool design = problem.ProgramMode == "D";
    const bool wedge = problem.SurfacePointCount(Right) > 1 || problem.SurfacePointCount(Left) > 1;
    if (wedge) {
        robot.planClick("WEDGMETH", "cmdSweep");
    }
    robot.choose("mnuSolveItem_0");
    if (design) {
        if (problem.WallType == "A") {
            robot.plan("ROWEPILE", [piles](QWidget& window) {
                typeInto(window, "txtDefAllow", QString::fromStdString(piles.allowStress));
                clickOn(window, "cmdDefAccept");
                static const char* const names[] = {"txtName_0", "txtSectMod_0", "txtInertia_0",
                                                    "txtAllow_0", "txtEMod_0"};
                for (std::size_t column = 0; column < piles.added.size(); ++column) {
                    typeInto(window, names[column], QString::fromStdString(piles.added[column]));
                }
                clickOn(window, "cmdDone");
            });
        }
        robot.click("cmdContinue");
    }
    EXPECT_EQ(robot.session().state.SolutionFailed, 0);
    robot.click("cmdOK");
    return robot.report();
}

std::string withoutTrailingBlanks(const std::string& text) {
    return QString::fromStdString(text).replace(QRegularExpression(" +\n"), "\n").toStdString();
}

/// Saves the input under a name, opens it and solves it.
std::string saveOpenAndSolve(Robot& robot, const std::string& name, const Piles& piles = {}) {
    const QString path = QString::fromStdString((robot.folder.path() / name).string());
    const auto chooseFile = [path](QWidget& window) {
        auto* edit = window.findChild<QLineEdit*>("fileNameEdit");
        ASSERT_NE(edit, nullptr);
        edit->setText(path);
        qobject_cast<QFileDialog*>(&window)->findChild<QPushButton*>()->setFocus();
        QMetaObject::invokeMethod(&window, "accept");
    };
    robot.plan("CMDialog1", chooseFile);
    robot.choose("mnuSaveItem_0");
    EXPECT_TRUE(std::filesystem::exists(path.toStdString()));
    robot.answer("SAVE OUTPUT DATA?", "No");
    robot.answer("INPUT COMPLETE", "OK");
    robot.plan("CMDialog1", chooseFile);
    robot.choose("mnuFileItem_1");
    return solve(robot, piles);
}

} // namespace

TEST(Road, ACantileverDesignIsTypedAndSolvedAsBuiltInCode) {
    Problem problem = exampleProblem("cantilever-water-seepage");
    problem.VStripCount(Right) = 1;
    problem.VStripStart(Right, 1) = 4;
    problem.VStripEnd(Right, 1) = 12.5;
    problem.VStripLoad(Right, 1) = 250;
    Robot robot;
    robot.answer("POSSIBLE INCONSISTENT SEEPAGE ELVATION", "OK");
    robot.planEntry(problem);
    robot.choose("mnuEditItem_0");
    const std::string expected = reportInCode(problem);
    const std::string report = solve(robot);
    EXPECT_EQ(report, expected);
    EXPECT_NE(report.find("PENETRATION"), std::string::npos);
    EXPECT_EQ(withoutTrailingBlanks(saveOpenAndSolve(robot, "cantilever.dat")),
              withoutTrailingBlanks(expected));
}

TEST(Road, AnAnchoredDesignInClayEndsWithItsSectionsChangedAndAdded) {
    const Problem problem = exampleProblem("anchored-clay");
    const Piles piles{"36E3", {"OWN 1", "55.5", "444.25", "25000", "3E7"}};
    Robot robot;
    robot.answer("POSSIBLE INCONSISTENT SEEPAGE ELVATION", "OK");
    robot.planEntry(problem);
    robot.choose("mnuEditItem_0");
    const std::string expected = reportInCode(problem, piles);
    const std::string report = solve(robot, piles);
    EXPECT_EQ(report, expected);
    EXPECT_NE(report.find("OWN 1"), std::string::npos);
    EXPECT_NE(report.find("55.50"), std::string::npos);
    EXPECT_NE(report, reportInCode(problem)); // the changed stress shows
    EXPECT_EQ(withoutTrailingBlanks(saveOpenAndSolve(robot, "anchored.dat", piles)),
              withoutTrailingBlanks(expected));
}

TEST(Road, AnAnalysisWithWedgeSidesAndSlopingLayersIsTypedAndSolved) {
    Problem problem = exampleProblem("sloping-backfill-sweep");
    problem.ProgramMode = "A";
    problem.FSKind = 1;
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
    Robot robot;
    robot.answer("POSSIBLE INCONSISTENT SEEPAGE ELVATION", "OK");
    robot.planEntry(problem);
    robot.choose("mnuEditItem_0");
    EXPECT_EQ(robot.session().state.problem.SoilBottomSlope(Right, 1), 0.1);
    robot.answer("LARGE FACTOR OF SAFETY", "Yes");
    EXPECT_EQ(solve(robot), reportInCode(problem));
}

TEST(Road, AGivenGradientWhichOnlyTheScreensCanEnterIsSolved) {
    Problem problem = exampleProblem("cantilever-water-seepage");
    problem.SeepageKind = "G";
    problem.SeepageGradient(1) = 0.15;
    problem.SeepageGradient(2) = 0.15;
    Robot robot;
    robot.answer("POSSIBLE INCONSISTENT SEEPAGE ELVATION", "OK");
    robot.planEntry(problem);
    robot.choose("mnuEditItem_0");
    EXPECT_EQ(robot.session().state.problem.SeepageKind, "G");
    const std::string report = solve(robot);
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
        Robot robot;
        robot.answer("POSSIBLE INCONSISTENT SEEPAGE ELVATION", "OK");
        robot.planEntry(problem);
        robot.choose("mnuEditItem_0");
        EXPECT_EQ(robot.report(), [&] {
            Office office;
            office.desktop.onScreen = [&](Screen, Session& session) {
                session.state.problem = problem;
                session.state.DataChanged = 1;
            };
            mnuEditItem_Click(*office.session, office.desktop);
            return office.report();
        }());
    }
}

} // namespace korvane::test
