// The order of the stages of a solution and how it ends.
#include "runtime/file_text.h"
#include "scripted_desktop.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <thread>

namespace korvane::test {

namespace {

constexpr const char* completeText = "SOLUTION COMPLETE";
constexpr const char* abortedText = "SOLUTION ABORTED DUE TO CALCULATION ERRORS";

/// Headings of the report's sections in their order.
std::string sections(const Office& office) {
    std::string found;
    const std::string report = office.report();
    struct Section {
        const char* head;
        const char* letter;
    };
    std::size_t position = 0;
    const Section all[] = {{"INPUT DATA", "E"},
                           {"SOIL PRESSURES FOR", "P"},
                           {"SUMMARY OF RESULTS FOR", "S"},
                           {"COMPLETE OF RESULTS FOR", "C"},
                           {"PRELIMINARY DESIGN DATA FOR", "R"}};
    for (const Section& section : all) {
        std::size_t next = report.find(section.head, position);
        while (next != std::string::npos) {
            found += section.letter;
            position = next + 1;
            next = section.letter == std::string("E") ? std::string::npos
                                                      : report.find(section.head, position);
        }
    }
    return found;
}

void expectLineCount(const Office& office) {
    EXPECT_EQ(office.session->report.OutputLineCount,
              static_cast<int>(splitLines(office.report()).size()));
}

/// A report whose date and file names do not depend on the run.
std::string solvedReport(const std::string& example) {
    Office office;
    office.open(example);
    office.solve();
    return office.report();
}

} // namespace

TEST(SolveFlow, ADesignStopsForReviewWithThePressuresInTheReport) {
    Office office;
    office.open("anchored-sand");
    solveProblem(*office.session, office.desktop);
    const Panels& panels = office.session->panels;
    EXPECT_EQ(office.session->stage, FlowStage::Review);
    EXPECT_TRUE(panels.fraSoilOutVisible);
    EXPECT_FALSE(panels.Image1Visible);
    EXPECT_FALSE(panels.panDoneVisible);
    EXPECT_FALSE(office.desktop.busy);
    EXPECT_EQ(sections(office), "EP");
    expectLineCount(office);

    viewScreen(*office.session, office.desktop, Screen::VUINECHO);
    viewScreen(*office.session, office.desktop, Screen::VUSOLPLT);
    viewScreen(*office.session, office.desktop, Screen::VUINECHO);
    EXPECT_EQ(office.desktop.screens,
              (std::vector<Screen>{Screen::VUINECHO, Screen::VUSOLPLT, Screen::VUINECHO}));
    EXPECT_EQ(office.session->stage, FlowStage::Review);

    continueSolution(*office.session, office.desktop);
    EXPECT_EQ(office.session->stage, FlowStage::Finished);
    EXPECT_FALSE(panels.fraSoilOutVisible);
    EXPECT_TRUE(panels.panDoneVisible);
    EXPECT_EQ(panels.panDoneText, completeText);
    EXPECT_EQ(sections(office), "EPSCCR");
    expectLineCount(office);

    acceptResults(*office.session);
    EXPECT_EQ(office.session->stage, FlowStage::Rest);
    EXPECT_TRUE(panels.Image1Visible);
    EXPECT_FALSE(panels.panDoneVisible);
}

TEST(SolveFlow, ACantileverDesignEndsWithOneCompleteReportAndNoSections) {
    Office office;
    office.open("cantilever-dry-sand");
    office.solve();
    EXPECT_EQ(sections(office), "EPSC");
    expectLineCount(office);
    EXPECT_EQ(office.desktop.shown(Screen::ROWEPILE), 0);
}

TEST(SolveFlow, AnAnalysisHasNoReviewNoPressureReportAndNoReduction) {
    for (const char* example : {"analysis-cantilever", "analysis-anchored"}) {
        Office office;
        office.open(example);
        solveProblem(*office.session, office.desktop);
        EXPECT_EQ(office.session->stage, FlowStage::Finished);
        EXPECT_EQ(office.session->panels.panDoneText, completeText);
        EXPECT_EQ(sections(office),
                  office.session->problem.WallType == WallKind::Anchored ? "ESCC" : "ESC");
        expectLineCount(office);
        EXPECT_EQ(office.desktop.shown(Screen::ROWEPILE), 0);
        EXPECT_FALSE(office.desktop.busy);
    }
}

TEST(SolveFlow, CoefficientsOnBothSidesNeverAskForAWedgeMethod) {
    Office office;
    office.open("anchored-all-loads");
    office.solve();
    EXPECT_EQ(office.desktop.shown(Screen::WEDGMETH), 0);
}

TEST(SolveFlow, AWedgeOnOneSideAsksOnceAndTheOtherSideKeepsItsCoefficients) {
    Office office;
    office.open("sloping-backfill-sweep"); // level ground on the left
    solveProblem(*office.session, office.desktop);
    EXPECT_EQ(office.desktop.shown(Screen::WEDGMETH), 1);
    EXPECT_EQ(office.session->workspace.review().SideMethod(Right), PressureMethod::Sweep);
    EXPECT_EQ(office.session->workspace.review().SideMethod(Left), PressureMethod::Coefficients);
}

TEST(SolveFlow, TheChoiceIsOneForBothSides) {
    Office office;
    office.open("sloping-both-sides-fixed");
    office.desktop.onScreen = [](Screen screen, Session& session) {
        if (screen == Screen::WEDGMETH) {
            session.wedge = WedgeMethod::FixedSurface;
        }
    };
    solveProblem(*office.session, office.desktop);
    EXPECT_EQ(office.desktop.shown(Screen::WEDGMETH), 1);
    EXPECT_EQ(office.session->workspace.review().SideMethod(Right), PressureMethod::FixedSurface);
    EXPECT_EQ(office.session->workspace.review().SideMethod(Left), PressureMethod::FixedSurface);
}

TEST(SolveFlow, TheBusyPointerIsOffAtTheWedgePromptAndAtTheSections) {
    Office office;
    office.open("sloping-both-sides-fixed");
    int prompts = 0;
    office.desktop.onScreen = [&](Screen, const Session&) {
        ++prompts;
        EXPECT_FALSE(office.desktop.busy);
    };
    office.solve();
    EXPECT_GE(prompts, 1);
    EXPECT_FALSE(office.desktop.busy);
}

TEST(SolveFlow, DiscontinueLeavesEchoAndPressuresAndTheData) {
    Office office;
    office.open("anchored-sand");
    const Problem problem = office.session->problem;
    solveProblem(*office.session, office.desktop);
    discontinueSolution(*office.session);
    EXPECT_EQ(sections(office), "EP");
    EXPECT_EQ(office.session->SolutionFailed, 2);
    EXPECT_TRUE(office.session->panels.Image1Visible);
    EXPECT_FALSE(office.session->panels.fraSoilOutVisible);
    EXPECT_EQ(office.session->problem, problem);
    editData(*office.session, office.desktop); // the data can be edited at once
    EXPECT_EQ(office.session->SolutionFailed, 0);
    EXPECT_TRUE(office.session->menus.solve.enabled);
}

// The solution reads the record up to its last step; then the gradient found goes into it.
TEST(SolveFlow, TheRecordTakesTheSeepageBehindTheLastStep) {
    for (const bool goesOn : {true, false}) {
        Office office;
        office.open("cantilever-water-seepage");
        const Problem problem = office.session->problem;
        solveProblem(*office.session, office.desktop);
        EXPECT_EQ(office.session->problem, problem);
        const double first = office.session->workspace.review().SeepageGradient;
        if (goesOn) {
            continueSolution(*office.session, office.desktop);
            const double found = office.session->workspace.results().levels(1).seepageGradient;
            EXPECT_GT(found, first);
            EXPECT_EQ(office.session->problem.SeepageGradient(1), found);
        } else {
            discontinueSolution(*office.session);
            EXPECT_EQ(office.session->problem.SeepageGradient(1), first);
        }
        EXPECT_EQ(office.session->problem.SeepageKind, Seepage::Automatic);
    }
}

// A left side with both friction and cohesion has no curves: there is nothing to choose sections
// for, but the notes say so.
TEST(SolveFlow, ASoilWithoutCurvesIsToldWithoutTheSectionTable) {
    Office office;
    office.open("anchored-layered-water");
    office.solve();
    EXPECT_EQ(office.desktop.shown(Screen::ROWEPILE), 0);
    ASSERT_NE(office.session->notes.solved.reduction, nullptr);
    EXPECT_EQ(office.session->notes.solved.reduction->soil, RoweSoil::None);
    const auto& notes = office.session->notes.list;
    EXPECT_TRUE(std::any_of(notes.begin(), notes.end(),
                            [](const Note& note) { return note.code == "reduction-range"; }));
    EXPECT_FALSE(office.session->menus.roweCurves.enabled);
}

TEST(SolveFlow, AFailedAnalysisStillShowsThePanelWithTheAbortWords) {
    Office office;
    // Its factor of safety lies above 5.
    office.open(std::string(KORVANE_SOURCE_DIR) + "/tests/reference/anchored-analysis-9001.dat");
    office.desktop.boxes.clear();
    office.desktop.answers = {Answer::No}; // the search for a large factor is ended
    solveProblem(*office.session, office.desktop);
    ASSERT_EQ(office.desktop.titles(), std::vector<std::string>{"LARGE FACTOR OF SAFETY"});
    EXPECT_EQ(office.session->panels.panDoneText, abortedText);
    EXPECT_TRUE(office.session->panels.panDoneVisible);
    EXPECT_EQ(sections(office), "E"); // what was written before the failure
    expectLineCount(office);
    acceptResults(*office.session);
    const Menus& menus = office.session->menus;
    for (const MenuItem* item : {&menus.cantileverPlots, &menus.freeEarthPlots,
                                 &menus.fixedEarthPlots, &menus.roweCurves}) {
        EXPECT_FALSE(item->enabled) << item->caption;
    }
    for (const MenuItem* item : {&menus.inputFile, &menus.report, &menus.inputPlots}) {
        EXPECT_TRUE(item->enabled) << item->caption;
    }
}

TEST(SolveFlow, AFailedPreparationGoesStraightToTheAbortedPanel) {
    Office office;
    // The first layer's bottom stands above the ground at the wall.
    office.open(office.write("layers.dat", "'A LAYER THAT LIES ABOVE THE GROUND OF ITS SIDE\n"
                                           "CONTROL CANTILEVER DESIGN 1.00 1.50\nWALL 10\n"
                                           "SURFACE RIGHTSIDE 2 0 5\n 10 8\n"
                                           "SURFACE LEFTSIDE 1 0 0\n"
                                           "SOIL RIGHTSIDE STRENGTHS 2\n 120 110 30 0 0 0 7 0\n"
                                           " 120 110 30 0 0 0\n"
                                           "SOIL LEFTSIDE STRENGTHS 1\n 120 110 30 0 0 0\n"
                                           "FINISHED\n"));
    office.desktop.boxes.clear();
    solveProblem(*office.session, office.desktop);
    EXPECT_EQ(office.desktop.titles(), std::vector<std::string>{"INCONSISTENT SOIL LAYER DATA"});
    EXPECT_EQ(office.desktop.shown(Screen::WEDGMETH), 0);
    EXPECT_EQ(office.session->panels.panDoneText, abortedText);
    EXPECT_EQ(sections(office), "E");
}

TEST(SolveFlow, AnEarlierReductionShowsNowhereInTheNextSolution) {
    Office office;
    office.open("anchored-sand");
    office.solve();
    ASSERT_EQ(office.session->workspace.reduction().RoweSoilType, RoweSoil::Sand);
    office.open("anchored-layered-water");
    solveProblem(*office.session, office.desktop);
    for (const double value : office.session->workspace.reduction().RoweSandCurve) {
        EXPECT_EQ(value, 0);
    }
    for (const double value : office.session->workspace.reduction().PileMomentRatio) {
        EXPECT_EQ(value, 0);
    }
}

TEST(SolveFlow, AThenBThenAGivesTheFirstReportAgainToTheByte) {
    const char* const examples[] = {"anchored-all-loads", "cantilever-water-seepage",
                                    "sloping-both-sides-fixed", "analysis-anchored",
                                    "anchored-clay"};
    Office office;
    for (const char* a : examples) {
        office.open(a);
        office.solve();
        const std::string first = office.report();
        for (const char* b : examples) {
            if (a == b) {
                continue;
            }
            office.open(b);
            office.solve();
            office.open(a);
            office.solve();
            EXPECT_EQ(office.report(), first) << a << " after " << b;
        }
    }
}

TEST(SolveFlow, ABottomSlopeFromTheScreensCarriesOverToTheNextFile) {
    // A file has no slopes of its own, so that those in memory stay: required.
    Office office;
    office.desktop.onScreen = [](Screen screen, Session& session) {
        if (screen == Screen::KEYIN) {
            session.problem = plainCantilever();
            session.problem.SoilBottomSlope(Right, 1) = 0.1;
            session.DataChanged = 1;
        }
    };
    editData(*office.session, office.desktop);
    office.open(office.write("two.dat", twoLayerInput));
    EXPECT_EQ(office.session->problem.SoilBottomSlope(Right, 1), 0.1);
    solveProblem(*office.session, office.desktop);
    EXPECT_EQ(office.desktop.shown(Screen::WEDGMETH), 1);

    Office fresh;
    fresh.open(fresh.write("two.dat", twoLayerInput));
    solveProblem(*fresh.session, fresh.desktop);
    EXPECT_EQ(fresh.desktop.shown(Screen::WEDGMETH), 0);
}

TEST(SolveFlow, SessionsInParallelThreadsGiveTheSameReports) {
    const std::vector<std::string> examples = {"anchored-all-loads",       "anchored-clay",
                                               "cantilever-water-seepage", "analysis-anchored",
                                               "sloping-both-sides-fixed", "cantilever-clay",
                                               "sloping-backfill-sweep",   "anchored-sand"};
    std::vector<std::string> expected(examples.size());
    std::transform(examples.begin(), examples.end(), expected.begin(), solvedReport);
    const TemporaryFolder folder;
    setenv("temp", folder.path().c_str(), 1);
    constexpr int repeats = 3;
    std::vector<std::string> reports(examples.size());
    std::vector<std::jthread> threads;
    for (std::size_t i = 0; i < examples.size(); ++i) {
        threads.emplace_back([&, i] {
            ScriptedDesktop desktop;
            const auto session = std::make_unique<Session>();
            startSession(*session);
            for (int repeat = 0; repeat < repeats; ++repeat) {
                desktop.chosenFiles = {examplePath(examples[i])};
                openFile(*session, desktop);
                solveProblem(*session, desktop);
                if (session->stage == FlowStage::Review) {
                    continueSolution(*session, desktop);
                }
                acceptResults(*session);
                reports[i] = readFile(session->report.CurrentOutputName);
            }
            DeleteTempFiles(*session, desktop);
        });
    }
    threads.clear();
    for (std::size_t i = 0; i < examples.size(); ++i) {
        EXPECT_EQ(reports[i], expected[i]) << examples[i];
    }
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
}

} // namespace korvane::test
