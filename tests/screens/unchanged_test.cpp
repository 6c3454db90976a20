// Opening and finishing a filled screen changes nothing.
#include "looks.h"

#include "problem/input_reader.h"
#include "runtime/file_text.h"
#include "runtime/number_text.h"
#include "support/random_problem.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace korvane::test {

namespace {

/// One screen from opening to closing with nothing typed.
struct Visit {
    const char* name;
    Screen screen;
    std::optional<Load> loadKind;
    std::vector<QString> buttons;
    bool (*applies)(const Problem&);
};

bool always(const Problem&) {
    return true;
}

const std::vector<Visit>& visits() {
    static const std::vector<Visit> all = {
        {"HEADCONT", Screen::HEADCONT, {}, {"cmdFinished"}, always},
        {"SURFACE", Screen::SURFACE, {}, {"cmdFinished"}, always},
        {"LAYRDATA",
         Screen::LAYRDATA,
         {},
         {"cmdEnterRightside", "cmdOK", "cmdFinished", "cmdEnterLeftside", "cmdOK", "cmdFinished",
          "cmdFinishedAction"},
         always},
        {"WATER list", Screen::WATER, {}, {"cmdFinishedWaterData"}, always},
        {"WATER elevations",
         Screen::WATER,
         {},
         {"cmdWaterEls", "cmdFinishedElevData"},
         [](const Problem& p) { return p.WaterDataKind != WaterData::Pressures; }},
        {"SURCHCON", Screen::SURCHCON, {}, {"cmdFinished"}, always},
        {"line", Screen::SURCHARG, Load::Line, {"cmdFinVertLine"}, always},
        {"uniform", Screen::SURCHARG, Load::Uniform, {"cmdFinUnifLoad"}, always},
        {"strip", Screen::SURCHARG, Load::Strip, {"cmdFinStrips"}, always},
        {"ramp", Screen::SURCHARG, Load::Ramp, {"cmdFinRamps"}, always},
        {"triangle", Screen::SURCHARG, Load::Triangle, {"cmdFinTriangs"}, always},
        {"variable", Screen::SURCHARG, Load::Variable, {"cmdFinVertVar"}, always},
        {"HORCON", Screen::HORCON, {}, {"cmdFinished"}, always},
        {"horizontal line", Screen::HORLOAD, Load::HorizontalLine, {"cmdFinHorLine"}, always},
        {"distributed", Screen::HORLOAD, Load::Distributed, {"cmdFinHorDist"}, always},
    };
    return all;
}

void expectUnchanged(Problem problem, int dataChanged) {
    for (std::string& line : problem.HeadingLines) {
        line = trimmed(line); // a file leaves a blank at its end, which the screen takes away
    }
    for (const Visit& visit : visits()) {
        if (!visit.applies(problem)) {
            continue;
        }
        SCOPED_TRACE(visit.name);
        Desk desk;
        desk.problem = problem;
        desk.session->HeadContDataValid = 1;
        desk.session->DataChanged = dataChanged;
        desk.open(visit.screen, visit.loadKind);
        for (const QString& button : visit.buttons) {
            desk.click(button);
        }
        EXPECT_FALSE(desk.isOpen());
        for (const MessageBox& box : desk.boxes) { // a warning may come, a refusal may not
            EXPECT_EQ(box.title, "POSSIBLE INCONSISTENT SEEPAGE ELVATION") << box.text;
        }
        EXPECT_TRUE(desk.problem == problem);
        EXPECT_EQ(desk.session->DataChanged, dataChanged);
        EXPECT_EQ(desk.session->HeadContDataValid, 1);
    }
}

} // namespace

TEST(Unchanged, AProblemWithEverySection) {
    expectUnchanged(fullProblem(), 0);
    expectUnchanged(fullProblem(), 1);
}

TEST(Unchanged, EveryLookThatIsFilled) {
    for (const Look& look : allLooks()) {
        if (look.held.NumHeadingLines != 0 && look.held.WaterDataKind != WaterData::Pressures) {
            SCOPED_TRACE(look.name);
            expectUnchanged(look.held, 0);
        }
    }
}

TEST(Unchanged, EveryExample) {
    for (const auto& entry :
         std::filesystem::directory_iterator(std::string(KORVANE_SOURCE_DIR) + "/examples")) {
        if (entry.path().extension() == ".dat") {
            SCOPED_TRACE(entry.path().filename().string());
            Problem problem;
            clearProblemData(problem);
            ASSERT_TRUE(readProblem(problem, readFile(entry.path().string()), "").complete);
            expectUnchanged(problem, 0);
        }
    }
}

TEST(Unchanged, RandomProblems) {
    RandomProblems random(20261121);
    for (int number = 1; number <= 40; ++number) {
        SCOPED_TRACE(number);
        expectUnchanged(random.next(), number % 2);
    }
}

TEST(Unchanged, TheWaterPressuresClearTheMarkOfChange) {
    Desk desk;
    desk.problem = fullProblem();
    desk.problem.WaterDataKind = WaterData::Pressures;
    desk.problem.SeepageKind = Seepage::None;
    desk.problem.WaterPressCount = 3;
    const Problem before = desk.problem;
    desk.session->DataChanged = 1;
    desk.open(Screen::WATER);
    for (const char* button : {"cmdWaterPres", "cmdFinishedWatPres", "cmdFinishedWaterData"}) {
        desk.click(button);
    }
    EXPECT_TRUE(desk.boxes.empty());
    EXPECT_FALSE(desk.isOpen());
    EXPECT_EQ(desk.problem, before);
    EXPECT_EQ(desk.session->DataChanged, 0);
}

} // namespace korvane::test
