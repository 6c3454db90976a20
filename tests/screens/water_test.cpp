// WATER: the list, elevations with seepage, pressures.
#include "looks.h"

#include <gtest/gtest.h>

namespace korvane::test {

namespace {

const std::string choices = "     Choose OK to continue WATER DATA entry."
                            "\n     Choose CANCEL to DELETE ALL WATER"
                            "\n          DATA and exit.";
const std::string missing =
    okCancel("DATA MISSING", "At least one required data value is missing.\n\n\n\n" + choices);
const std::string invalid =
    okCancel("INVALID DATA", "At least one data value is invalid.\n\n\n\n" + choices);
const std::string rightNotHigher =
    okCancel("INCONSISTENT WATER ELEVATIONS", "For seepage effects to be included, rightside"
                                              "\nwater elevation must be greater than the"
                                              "\nleftside water elevation.\n\n" +
                                                  choices);
const std::string seepageTooHigh =
    okCancel("INCONSISTENT WATER ELEVATIONS",
             "Seepage elevation must be less than therightside water elevation.\n\n" + choices);
const std::string gradientOutside =
    okCancel("INCONSISTENT WATER ELEVATIONS", "Seepage gradient must be in the range"
                                              "\n           0 < gradient < 1.\n\n" +
                                                  choices);
const std::string seepageLow =
    described({.text = "WARNING     WARNING     WARNING"
                       "\nSeepage elevation is less than leftside water"
                       "\nelevation, hence may be inconsistent"
                       "\ndepending on leftside soil surface elevations.",
               .title = "POSSIBLE INCONSISTENT SEEPAGE ELVATION",
               .buttons = Buttons::Ok,
               .icon = Icon::Information});

class WaterTest : public testing::Test {
  protected:
    Desk desk;
    Problem& problem = desk.problem;

    void openElevations() {
        desk.reopen(Screen::WATER);
        desk.click("cmdWaterEls");
    }
    void typeElevations(const QString& weight, const QString& right, const QString& left) {
        desk.type("txtWaterWt", weight);
        desk.type("txtWaterElR", right);
        desk.type("txtWaterElL", left);
    }
    /// Elevations with a given gradient, all valid: right 10, left 2.
    void typeGradient(const QString& elevation, const QString& gradient) {
        openElevations();
        typeElevations("62.4", "10", "2");
        desk.click("optSeepEl");
        desk.type("txtSeepEl", elevation);
        desk.type("txtSeepGrad", gradient);
    }
    std::string finish() {
        desk.click("cmdFinishedElevData");
        return desk.lastBox();
    }
    void openPressures() {
        desk.open(Screen::WATER);
        desk.click("cmdWaterPres");
    }
    std::string finishPressures() {
        desk.click("cmdFinishedWatPres");
        return desk.lastBox();
    }
    void expectDropped() {
        EXPECT_FALSE(desk.isOpen());
        EXPECT_EQ(problem.WaterDataKind, WaterData::None);
        EXPECT_EQ(problem.SeepageKind, Seepage::None);
    }
};

} // namespace

// ---- list
// ----------------------------------------------------------------------------------------

TEST_F(WaterTest, DeleteIsOfferedOnlyWithData) {
    desk.open(Screen::WATER);
    EXPECT_FALSE(desk.isShown("panDelete"));
    EXPECT_FALSE(desk.isHighlighted("panWaterEls"));
    EXPECT_FALSE(desk.isHighlighted("panWaterPres"));
    EXPECT_EQ(desk.tabOrder("cmdWaterEls"),
              (std::vector<std::string>{"cmdWaterEls", "cmdWaterPres", "cmdFinishedWaterData"}));
    problem.WaterDataKind = WaterData::Pressures;
    desk.reopen(Screen::WATER);
    EXPECT_TRUE(desk.isShown("panDelete"));
    EXPECT_TRUE(desk.isHighlighted("panWaterPres"));
    problem.WaterDataKind = WaterData::Elevations;
    desk.reopen(Screen::WATER);
    EXPECT_TRUE(desk.isHighlighted("panWaterEls"));
    desk.click("cmdFinishedWaterData");
    EXPECT_FALSE(desk.isOpen());
    EXPECT_EQ(problem.WaterDataKind, WaterData::Elevations);
}

TEST_F(WaterTest, DeleteEmptiesTheKindsAndClosesAtOnce) {
    problem = fullProblem();
    problem.WaterPressCount = 3;
    desk.open(Screen::WATER);
    desk.click("cmdDelete");
    EXPECT_EQ(desk.lastBox(), noBox);
    expectDropped();
    EXPECT_EQ(problem.WaterPressCount, 0);
    EXPECT_EQ(desk.session->DataChanged, 1);
}

// ---- elevations
// ----------------------------------------------------------------------------------

TEST_F(WaterTest, OpeningTheElevationsOnPressuresShowsBlanksAndSetsTheKind) {
    problem.WaterDataKind = WaterData::Pressures;
    problem.WaterPressCount = 2;
    problem.WaterUnitWeight = 64;
    openElevations();
    EXPECT_EQ(problem.WaterDataKind, WaterData::Elevations);
    EXPECT_EQ(problem.WaterPressCount, 2);
    EXPECT_EQ(desk.text("txtWaterWt"), "");
    EXPECT_TRUE(desk.isSet("optNoSeep"));
    EXPECT_FALSE(desk.isShown("fraSeepData"));
    EXPECT_FALSE(desk.isShown("fraWaterSects"));
    EXPECT_EQ(desk.session->DataChanged, 0);
}

TEST_F(WaterTest, AKindOfSeepageBesidePressuresSetsNoOption) {
    problem = fullProblem();
    problem.WaterDataKind = WaterData::Pressures;
    openElevations();
    for (const char* option : {"optNoSeep", "optSeepEl", "optAutoSeep"}) {
        EXPECT_FALSE(desk.isSet(option)) << option;
    }
    EXPECT_FALSE(desk.isShown("fraSeepData"));
    typeElevations("64", "10", "2");
    EXPECT_EQ(finish(), missing);           // an option has to be chosen
    EXPECT_EQ(problem.WaterUnitWeight, 64); // the elevations are read before that
    EXPECT_EQ(problem.WaterElev(Right), 10);
}

TEST_F(WaterTest, AllElevationFieldsEmptyDeletesWithoutAMessage) {
    problem = fullProblem();
    openElevations();
    typeElevations("", "", "");
    EXPECT_EQ(finish(), noBox);
    expectDropped();
}

TEST_F(WaterTest, ElevationsWithoutSeepageAreStored) {
    openElevations();
    typeElevations("62.4", "10", "2.5");
    EXPECT_EQ(finish(), noBox);
    EXPECT_FALSE(desk.isOpen());
    EXPECT_EQ(problem.WaterDataKind, WaterData::Elevations);
    EXPECT_EQ(problem.SeepageKind, Seepage::None);
    EXPECT_EQ(problem.WaterUnitWeight, 62.4);
    EXPECT_EQ(problem.WaterElev(Right), 10);
    EXPECT_EQ(problem.WaterElev(Left), 2.5);
    EXPECT_EQ(desk.session->DataChanged, 1);
}

TEST_F(WaterTest, TheSameLevelOnBothSidesIsFineWithoutSeepageAlone) {
    openElevations();
    typeElevations("62.4", "5", "5");
    EXPECT_EQ(finish(), noBox);
    EXPECT_FALSE(desk.isOpen());
    openElevations();
    desk.click("optAutoSeep");
    desk.type("txtSeepEl", "4");
    EXPECT_EQ(finish(), rightNotHigher);
    // The seepage is given up and has to be chosen anew.
    EXPECT_TRUE(desk.isOpen());
    EXPECT_EQ(problem.SeepageKind, Seepage::None);
    EXPECT_FALSE(desk.isSet("optAutoSeep"));
    EXPECT_FALSE(desk.isShown("fraSeepData"));
    EXPECT_EQ(finish(), missing);
    desk.click("optNoSeep");
    EXPECT_EQ(finish(), noBox);
    EXPECT_FALSE(desk.isOpen());
}

TEST_F(WaterTest, SeepageNeedsTheHigherWaterOnTheRight) {
    typeGradient("1", "0.2");
    typeElevations("62.4", "2", "10");
    EXPECT_EQ(finish(), rightNotHigher);
    EXPECT_TRUE(desk.isOpen());
    EXPECT_EQ(problem.SeepageKind, Seepage::None);
    EXPECT_FALSE(desk.isSet("optSeepEl"));
    EXPECT_FALSE(desk.isShown("fraSeepData"));
    EXPECT_EQ(desk.text("txtWaterElL"), "10"); // nothing else typed is lost
}

TEST_F(WaterTest, CancelOfEachBoxDeletesTheWaterData) {
    struct Case {
        const char* left;
        const char* seepage;
        const char* gradient;
        std::string box;
    };
    // Right 10 throughout: the missing box of each step, then the boxes of their own.
    const Case cases[] = {
        {"", "8", "0.2", missing},          {"x", "8", "0.2", missing},
        {"2", "x", "0.2", missing},         {"2", "8", "", missing},
        {"2", "8", "x", invalid},           {"2", "8", "1", gradientOutside},
        {"10", "8", "0.2", rightNotHigher}, {"2", "11", "0.2", seepageTooHigh},
    };
    for (const Case& one : cases) {
        typeGradient(one.seepage, one.gradient);
        desk.type("txtWaterElL", one.left);
        desk.answers = {Answer::Cancel};
        EXPECT_EQ(finish(), one.box) << one.left << one.seepage << one.gradient;
        expectDropped();
    }
}

TEST_F(WaterTest, TwoOfThreeFieldsAreMissingOne) {
    openElevations();
    typeElevations("", "10", "2");
    EXPECT_EQ(finish(), missing);
    typeElevations("62.4", "", "2");
    EXPECT_EQ(finish(), missing);
    EXPECT_TRUE(desk.isOpen());
    EXPECT_EQ(problem.WaterDataKind, WaterData::Elevations);
}

TEST_F(WaterTest, BadNumbersAmongTheElevationsShowTheMissingBox) {
    openElevations();
    for (const char* weight : {"0", "-62.4", "62.4 PCF"}) {
        typeElevations(weight, "10", "2");
        EXPECT_EQ(finish(), missing) << weight;
    }
    typeElevations("62.4", "x", "2");
    EXPECT_EQ(finish(), missing);
    EXPECT_EQ(problem.WaterUnitWeight, 62.4);
    typeElevations("62.4", "10", "x");
    EXPECT_EQ(finish(), missing);
    EXPECT_EQ(problem.WaterElev(Right), 10);
}

TEST_F(WaterTest, OptionsShowAndEmptyTheirFields) {
    openElevations();
    desk.click("optSeepEl");
    EXPECT_EQ(problem.SeepageKind, Seepage::Given);
    EXPECT_EQ(desk.session->DataChanged, 1);
    EXPECT_TRUE(desk.isShown("lblSeepEl"));
    EXPECT_TRUE(desk.isShown("lblSeepGrad"));
    desk.type("txtSeepEl", "3");
    desk.type("txtSeepGrad", "0.5");
    desk.session->DataChanged = 0;
    desk.click("optAutoSeep");
    EXPECT_EQ(problem.SeepageKind, Seepage::Automatic);
    EXPECT_EQ(desk.session->DataChanged, 1);
    EXPECT_EQ(desk.text("txtSeepEl"), "");
    EXPECT_EQ(desk.text("txtSeepGrad"), "");
    EXPECT_FALSE(desk.find("txtSeepGrad")->isEnabled());
    EXPECT_FALSE(desk.isShown("txtSeepGrad")); // no field without its label
    EXPECT_FALSE(desk.isShown("lblSeepGrad"));
    EXPECT_TRUE(desk.isShown("lblSeepEl"));
    desk.session->DataChanged = 0;
    desk.click("optNoSeep");
    EXPECT_EQ(problem.SeepageKind, Seepage::None);
    EXPECT_FALSE(desk.isShown("fraSeepData"));
    EXPECT_EQ(desk.session->DataChanged, 0);
    desk.click("optSeepEl");
    EXPECT_TRUE(desk.find("txtSeepGrad")->isEnabled());
}

TEST_F(WaterTest, AutomaticSeepageNeedsItsElevation) {
    openElevations();
    typeElevations("62.4", "10", "2");
    desk.click("optAutoSeep");
    EXPECT_EQ(finish(), missing);
    desk.type("txtSeepEl", "x");
    EXPECT_EQ(finish(), missing);
    desk.type("txtSeepEl", "8");
    EXPECT_EQ(finish(), noBox);
    EXPECT_FALSE(desk.isOpen());
    EXPECT_EQ(problem.SeepageKind, Seepage::Automatic);
    EXPECT_EQ(problem.SeepageElev, 8);
}

TEST_F(WaterTest, AGivenGradientNeedsBothFields) {
    typeGradient("8", "");
    EXPECT_EQ(finish(), missing);
    desk.type("txtSeepEl", "");
    desk.type("txtSeepGrad", "0.2");
    EXPECT_EQ(finish(), missing);
    desk.type("txtSeepEl", "8");
    EXPECT_EQ(finish(), noBox);
    EXPECT_EQ(problem.SeepageKind, Seepage::Given);
    EXPECT_EQ(problem.SeepageGradient(1), 0.2);
}

TEST_F(WaterTest, SeepageMayBeginAtTheRightWater) {
    typeGradient("10", "0.2");
    EXPECT_EQ(finish(), noBox);
    EXPECT_FALSE(desk.isOpen());
    EXPECT_EQ(problem.SeepageElev, 10);
}

TEST_F(WaterTest, SeepageAboveTheRightWaterIsToldAndTakenAsItStands) {
    typeGradient("10.5", "0.2");
    EXPECT_EQ(finish(), seepageTooHigh);
    EXPECT_FALSE(desk.isOpen());
    EXPECT_EQ(problem.SeepageElev, 10.5);
    EXPECT_EQ(problem.SeepageGradient(1), 0.2);
}

TEST_F(WaterTest, SeepageBelowTheLeftWaterIsAWarningOnly) {
    typeGradient("1.5", "0.2");
    EXPECT_EQ(finish(), seepageLow);
    EXPECT_FALSE(desk.isOpen());
    EXPECT_EQ(problem.SeepageElev, 1.5);
    EXPECT_EQ(problem.SeepageKind, Seepage::Given);
}

TEST_F(WaterTest, AGradientLiesStrictlyBetweenZeroAndOne) {
    typeGradient("8", "0");
    for (const char* text : {"0", "1", "-0.5", "1.5"}) {
        desk.type("txtSeepGrad", text);
        EXPECT_EQ(finish(), gradientOutside) << text;
        EXPECT_TRUE(desk.isOpen());
    }
    EXPECT_EQ(problem.SeepageGradient(1), 1.5); // stored before its range is tested
    desk.type("txtSeepGrad", "x");
    EXPECT_EQ(finish(), invalid);
    desk.type("txtSeepGrad", "0.999");
    EXPECT_EQ(finish(), noBox);
    EXPECT_EQ(problem.SeepageGradient(1), 0.999);
}

TEST_F(WaterTest, TheElevationsAreFilledByTheirKindOfSeepage) {
    problem = fullProblem();
    openElevations();
    EXPECT_EQ(desk.text("txtWaterWt"), " 62.4");
    EXPECT_EQ(desk.text("txtWaterElR"), "-6");
    EXPECT_EQ(desk.text("txtWaterElL"), "-9");
    EXPECT_TRUE(desk.isSet("optSeepEl"));
    EXPECT_EQ(desk.text("txtSeepEl"), "-8");
    EXPECT_EQ(desk.text("txtSeepGrad"), " 0.125");
    EXPECT_EQ(desk.session->DataChanged, 0);
    problem.SeepageKind = Seepage::Automatic;
    openElevations();
    EXPECT_TRUE(desk.isSet("optAutoSeep"));
    EXPECT_EQ(desk.text("txtSeepEl"), "-8");
    EXPECT_FALSE(desk.find("txtSeepGrad")->isEnabled());
    EXPECT_FALSE(desk.isShown("txtSeepGrad")); // no field without its label
    EXPECT_FALSE(desk.isShown("lblSeepGrad"));
}

// ---- pressures
// -----------------------------------------------------------------------------------

TEST_F(WaterTest, OpeningThePressuresClearsTheMarkOfChange) {
    problem = fullProblem();
    desk.session->DataChanged = 1;
    openPressures();
    EXPECT_EQ(problem.WaterDataKind, WaterData::Pressures);
    EXPECT_EQ(desk.session->DataChanged, 0);
    EXPECT_EQ(desk.text("txtELWPR_0"), "");
}

TEST_F(WaterTest, AllPressureRowsEmptyDeletesWithoutAMessage) {
    openPressures();
    EXPECT_EQ(finishPressures(), noBox);
    expectDropped();
}

TEST_F(WaterTest, PressuresEndInTheListAgain) {
    openPressures();
    desk.typeDown("txtELWPR", {"-5", "3", "-20"}); // in any order
    desk.typeDown("txtWPR", {"0", "-100", "624"});
    EXPECT_EQ(finishPressures(), noBox);
    EXPECT_TRUE(desk.isOpen());
    EXPECT_TRUE(desk.isShown("fraWaterSects"));
    EXPECT_TRUE(desk.isShown("panDelete"));
    EXPECT_TRUE(desk.isHighlighted("panWaterPres"));
    EXPECT_FALSE(desk.isHighlighted("panWaterEls"));
    EXPECT_EQ(problem.WaterPressCount, 3);
    EXPECT_EQ(problem.WaterPressElev(2), 3);
    EXPECT_EQ(problem.WaterPressure(2), -100);
    EXPECT_EQ(problem.WaterPressElev(3), -20);
    desk.click("cmdWaterPres"); // filled again
    EXPECT_EQ(desk.text("txtWPR_2"), " 624");
}

TEST_F(WaterTest, OneRowOfPressuresIsMissingTheSecond) {
    openPressures();
    desk.typeDown("txtELWPR", {"-5"});
    desk.typeDown("txtWPR", {"10"});
    EXPECT_EQ(finishPressures(), missing);
    EXPECT_EQ(problem.WaterPressCount, 1);
    desk.answers = {Answer::Cancel};
    EXPECT_EQ(finishPressures(), missing);
    expectDropped();
}

TEST_F(WaterTest, PressureRowsAreTestedInOrder) {
    openPressures();
    desk.typeDown("txtELWPR", {"-5", ".", "x"});
    desk.typeDown("txtWPR", {"10", "20"});
    EXPECT_EQ(finishPressures(), missing); // row 2 goes before the bad row 3
    desk.type("txtELWPR_1", "-8");
    EXPECT_EQ(finishPressures(), invalid);
    desk.type("txtELWPR_2", "-9");
    EXPECT_EQ(finishPressures(), missing);
    desk.type("txtWPR_2", "1e2");
    EXPECT_EQ(finishPressures(), noBox);
    EXPECT_EQ(problem.WaterPressure(3), 100);
}

TEST_F(WaterTest, ElevenRowsOfPressuresAreTheMost) {
    openPressures();
    std::vector<std::string> rows;
    rows.reserve(11);
    for (int row = 0; row < 11; ++row) {
        rows.push_back(std::to_string(row));
    }
    desk.typeDown("txtELWPR", rows);
    desk.typeDown("txtWPR", rows);
    EXPECT_THROW(desk.find("txtWPR_11"), std::runtime_error);
    EXPECT_EQ(finishPressures(), noBox);
    EXPECT_EQ(problem.WaterPressCount, 11);
    EXPECT_EQ(problem.WaterPressure(11), 10);
}

} // namespace korvane::test
