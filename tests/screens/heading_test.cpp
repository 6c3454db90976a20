// HEADCONT: what is shown when, filling, tests and boxes.
#include "looks.h"

#include <gtest/gtest.h>

namespace korvane::test {

namespace {

std::string missing(const std::string& list) {
    return okCancel("DATA MISSING", "The following required data are missing:\n\n" + list +
                                        "\n\n     Choose OK to continue DATA entry."
                                        "\n     Choose CANCEL to DELETE ALL DATA"
                                        "\n          on this form and exit.");
}

const std::string invalid = okCancel("INVALID DATA", "At least one data value is invalid."
                                                     "\n\n   Choose OK to continue data entry."
                                                     "\n   Choose CANCEL to DELETE ALL DATA"
                                                     "\n          on this form and exit.");

const std::vector<QString> changing = {"fraAnchor", "fraSafety", "fraFSOption", "fraWallProps"};

class HeadingTest : public testing::Test {
  protected:
    Desk desk;

    std::string shownGroups() {
        std::string names;
        for (const QString& group : changing) {
            names += desk.isShown(group) ? group.toStdString() + " " : "";
        }
        return names;
    }
    /// Opens a blank screen and types a cantilever design that is valid.
    void typeDesign() {
        desk.open(Screen::HEADCONT);
        desk.type("txtHead_0", "QUAY WALL");
        desk.click("optCantilever");
        desk.click("optDesign");
        desk.type("txtWallTop", "10");
    }
    /// A cantilever analysis that is valid.
    void typeAnalysis() {
        typeDesign();
        desk.click("optAnalysis");
        desk.click("optFSOption1");
        desk.type("txtWallBot", "-20");
        desk.type("txtWallE", "29E6");
        desk.type("txtWallI", "184.2");
    }
    void finish() { desk.click("cmdFinished"); }
    void expectFinished() {
        finish();
        EXPECT_EQ(desk.lastBox(), noBox);
        EXPECT_FALSE(desk.isOpen());
        EXPECT_EQ(desk.session->HeadContDataValid, 1);
    }
    void expectRefused(const std::string& box) {
        finish();
        EXPECT_EQ(desk.lastBox(), box);
        EXPECT_TRUE(desk.isOpen());
        EXPECT_EQ(desk.session->HeadContDataValid, 0);
    }
};

} // namespace

TEST_F(HeadingTest, OpensBlankAndClearsTheKinds) {
    desk.problem.WallType = WallKind::Anchored;
    desk.problem.ProgramMode = Mode::Analysis;
    desk.problem.FSKind = FactorKind::ActiveGiven;
    desk.problem.WallTopElev = 12;
    desk.open(Screen::HEADCONT);
    EXPECT_EQ(desk.text("panHeadCont"), "Enter Heading and Control Data");
    EXPECT_EQ(desk.problem.WallType, WallKind::None);
    EXPECT_EQ(desk.problem.ProgramMode, Mode::None);
    EXPECT_EQ(desk.problem.FSKind, FactorKind::None);
    EXPECT_EQ(shownGroups(), "");
    EXPECT_EQ(desk.text("txtWallTop"), "");
    EXPECT_EQ(desk.text("txtFSA1"), " 1");
    EXPECT_EQ(desk.text("txtFSP1"), " 1.5");
    EXPECT_FALSE(desk.find("txtFSAAnalysis")->isEnabled());
    EXPECT_EQ(desk.session->DataChanged, 0);
    EXPECT_EQ(desk.focused(), "txtHead_0");
}

TEST_F(HeadingTest, OptionsShowTheirGroupsAndWriteAtOnce) {
    desk.open(Screen::HEADCONT);
    desk.click("optAnchored");
    EXPECT_EQ(desk.problem.WallType, WallKind::Anchored);
    EXPECT_EQ(shownGroups(), "fraAnchor ");
    EXPECT_EQ(desk.session->DataChanged, 1);
    desk.click("optDesign");
    EXPECT_EQ(desk.problem.ProgramMode, Mode::Design);
    EXPECT_EQ(shownGroups(), "fraAnchor fraSafety ");
    EXPECT_TRUE(desk.isShown("lblPassive"));
    desk.click("optAnalysis");
    EXPECT_EQ(desk.problem.ProgramMode, Mode::Analysis);
    EXPECT_EQ(shownGroups(), "fraAnchor fraFSOption fraWallProps ");
    desk.click("optCantilever");
    EXPECT_EQ(desk.problem.WallType, WallKind::Cantilever);
    EXPECT_EQ(shownGroups(), "fraFSOption fraWallProps ");
    desk.click("optFSOption2");
    EXPECT_EQ(desk.problem.FSKind, FactorKind::ActiveGiven);
    desk.type("txtFSAAnalysis", "1.2");
    desk.click("optFSOption1");
    EXPECT_EQ(desk.problem.FSKind, FactorKind::OneForBoth);
    EXPECT_EQ(desk.text("txtFSAAnalysis"), "");
    EXPECT_FALSE(desk.find("txtFSAAnalysis")->isEnabled());
}

TEST_F(HeadingTest, ASecondClickOnASetOptionIsNoChange) {
    desk.problem = fullProblem();
    desk.session->HeadContDataValid = 1;
    desk.open(Screen::HEADCONT);
    desk.click("optAnchored");
    desk.click("optDesign");
    EXPECT_EQ(desk.session->DataChanged, 0);
}

TEST_F(HeadingTest, TheTwoGroupsOfFactorsShareAPlaceAsTold) {
    typeDesign();
    const QRect safety = desk.find("fraSafety")->geometry();
    EXPECT_EQ(safety.topLeft(), desk.find("fraFSOption")->geometry().topLeft());
    // Left 6000 and top 2880 of the sheet, one zoom for both.
    EXPECT_NEAR(safety.left() / 6000.0, safety.top() / 2880.0, 0.0005);
}

TEST_F(HeadingTest, HeadingLinesMoveUpAndGetTheirApostrophe) {
    typeDesign();
    desk.type("txtHead_0", "  first line ");
    desk.type("txtHead_2", "'third line");
    expectFinished();
    EXPECT_EQ(desk.problem.NumHeadingLines, 2);
    EXPECT_EQ(desk.problem.HeadingLines(1), "'first line");
    EXPECT_EQ(desk.problem.HeadingLines(2), "'third line");
    desk.reopen(Screen::HEADCONT);
    EXPECT_EQ(desk.text("txtHead_0"), "'first line");
    EXPECT_EQ(desk.text("txtHead_1"), "'third line");
    EXPECT_EQ(desk.text("txtHead_2"), "");
    EXPECT_EQ(desk.text("panHeadCont"), "Edit Heading and Control Data");
}

TEST_F(HeadingTest, AHeadingThatIsLeftAloneKeepsItsBytes) {
    desk.problem = fullProblem();
    desk.problem.NumHeadingLines = 2;
    desk.problem.HeadingLines(1) = "'QUAI \xC0 PALPLANCHES"; // Latin-1
    desk.problem.HeadingLines(2) = "'H\xD6HE 3 M";
    desk.session->HeadContDataValid = 1;
    desk.open(Screen::HEADCONT);
    EXPECT_EQ(desk.text("txtHead_0"), "'QUAI \xC3\x80 PALPLANCHES"); // shown as UTF-8
    desk.type("txtHead_1", QString::fromUtf8("'H\xC3\x96HE 4 M"));
    expectFinished();
    EXPECT_EQ(desk.problem.HeadingLines(1), "'QUAI \xC0 PALPLANCHES");
    EXPECT_EQ(desk.problem.HeadingLines(2), "'H\xC3\x96HE 4 M");
}

TEST_F(HeadingTest, EmptyFactorsOfADesignAreOne) {
    typeDesign();
    desk.type("txtFSA1", "");
    desk.type("txtFSP1", "");
    expectFinished();
    EXPECT_EQ(desk.problem.FSActive, 1.0);
    EXPECT_EQ(desk.problem.FSPassive, 1.0);
}

TEST_F(HeadingTest, AnEmptyOrZeroPassiveFactorFollowsTheActiveOne) {
    typeDesign();
    desk.type("txtFSA1", "1.5");
    desk.type("txtFSP1", "0");
    expectFinished();
    EXPECT_EQ(desk.problem.FSActive, 1.5);
    EXPECT_EQ(desk.problem.FSPassive, 1.5);
    desk.reopen(Screen::HEADCONT);
    desk.type("txtFSP1", "");
    expectFinished();
    EXPECT_EQ(desk.problem.FSPassive, 1.5);
}

TEST_F(HeadingTest, AnEmptyActiveFactorIsOneBesideAPassiveOne) {
    typeDesign();
    desk.type("txtFSA1", "");
    desk.type("txtFSP1", "2");
    expectFinished();
    EXPECT_EQ(desk.problem.FSActive, 1.0);
    EXPECT_EQ(desk.problem.FSPassive, 2.0);
}

TEST_F(HeadingTest, NegativeAndUnreadableFactorsAreInvalid) {
    typeDesign();
    for (const char* field : {"txtFSA1", "txtFSP1"}) {
        for (const char* text : {"-1", "1.5x", "one"}) {
            desk.type(field, text);
            expectRefused(invalid);
        }
        desk.type(field, "1");
    }
    expectFinished();
}

TEST_F(HeadingTest, ABlankScreenListsWhatIsMissing) {
    desk.open(Screen::HEADCONT);
    expectRefused(missing("     HEADING"
                          "\n     WALL TYPE"
                          "\n     WALL TOP ELEVATION"
                          "\n     MODE"));
    desk.click("optAnchored");
    desk.type("txtHead_1", "H");
    expectRefused(missing("     WALL TOP ELEVATION"
                          "\n     MODE"
                          "\n     ANCHOR ELEVATION"));
}

TEST_F(HeadingTest, AnAnchorMayStandAtTheWallTopButNotAbove) {
    typeDesign();
    desk.click("optAnchored");
    desk.type("txtAnchorEl", "10.01");
    expectRefused(invalid);
    desk.type("txtAnchorEl", "x");
    expectRefused(invalid);
    desk.type("txtAnchorEl", "10");
    expectFinished();
    EXPECT_EQ(desk.problem.AnchorElev, 10);
}

TEST_F(HeadingTest, AWallTopThatIsNoNumberIsInvalid) {
    typeDesign();
    desk.type("txtWallTop", "10 FT");
    expectRefused(invalid);
    desk.type("txtWallTop", " -1.25E1 ");
    expectFinished();
    EXPECT_EQ(desk.problem.WallTopElev, -12.5);
}

TEST_F(HeadingTest, AWallBottomAtTheAnchorOrTheTopIsInvalid) {
    typeAnalysis();
    desk.type("txtWallBot", "10");
    expectRefused(invalid);
    desk.click("optAnchored");
    desk.type("txtAnchorEl", "6");
    desk.type("txtWallBot", "6");
    expectRefused(invalid);
    desk.type("txtWallBot", "5.99");
    expectFinished();
    EXPECT_EQ(desk.problem.WallBottomElev, 5.99);
}

TEST_F(HeadingTest, ModulusAndInertiaMustBeAboveZero) {
    typeAnalysis();
    for (const char* field : {"txtWallE", "txtWallI"}) {
        for (const char* text : {"0", "-1", "29,000"}) {
            desk.type(field, text);
            expectRefused(invalid);
        }
        desk.type(field, "1");
    }
    expectFinished();
}

TEST_F(HeadingTest, AnAnalysisNeedsAnOptionOfTheFactor) {
    typeDesign();
    desk.click("optAnalysis");
    desk.type("txtWallBot", "-20");
    desk.type("txtWallE", "29E6");
    desk.type("txtWallI", "184.2");
    expectRefused(missing("\nFACTOR OF SAFETY OPTION FOR ANALYSIS"));
}

TEST_F(HeadingTest, AMissingWallBottomBringsAZeroIntoTheList) {
    typeAnalysis();
    desk.type("txtWallBot", "");
    expectRefused(missing("0\nELEVATION AT BOTTOM OF WALL"));
    desk.type("txtWallE", "");
    desk.type("txtWallI", "");
    expectRefused(missing("0\nELEVATION AT BOTTOM OF WALL"
                          "\nMODULUS OF ELLASTICITY"
                          "\nMOMENT OF INERTIA"));
    desk.type("txtWallBot", "-20");
    expectRefused(missing("\nMODULUS OF ELLASTICITY"
                          "\nMOMENT OF INERTIA"));
    desk.type("txtWallI", "bad"); // an invalid value goes before the missing ones
    expectRefused(invalid);
}

TEST_F(HeadingTest, AGivenFactorMustBeThereAndAboveZero) {
    typeAnalysis();
    desk.click("optFSOption2");
    for (const char* text : {"", "0", "-1", "x"}) {
        desk.type("txtFSAAnalysis", text);
        expectRefused(invalid);
    }
    desk.type("txtFSAAnalysis", "1.25");
    expectFinished();
    EXPECT_EQ(desk.problem.FSActive, 1.25);
    EXPECT_EQ(desk.problem.FSKind, FactorKind::ActiveGiven);
}

TEST_F(HeadingTest, OneFactorForBothReadsNoFactor) {
    desk.problem.FSActive = 1.75;
    typeAnalysis();
    expectFinished();
    EXPECT_EQ(desk.problem.FSActive, 1.75);
    EXPECT_EQ(desk.problem.FSKind, FactorKind::OneForBoth);
}

TEST_F(HeadingTest, ADesignNeitherReadsNorChangesTheWallsProperties) {
    typeAnalysis();
    desk.type("txtWallBot", "bad");
    desk.type("txtWallE", "");
    desk.problem.WallBottomElev = -7;
    desk.problem.WallModulus = 7;
    desk.click("optDesign");
    expectFinished();
    EXPECT_EQ(desk.problem.WallBottomElev, -7);
    EXPECT_EQ(desk.problem.WallModulus, 7);
}

TEST_F(HeadingTest, AModeOfNeitherKindLooksLikeAnalysisAndIsThenMissing) {
    desk.problem = plainCantilever();
    desk.problem.ProgramMode = Mode{'X'};
    desk.problem.FSKind = FactorKind::OneForBoth;
    desk.session->HeadContDataValid = 1;
    desk.open(Screen::HEADCONT);
    EXPECT_EQ(shownGroups(), "fraFSOption fraWallProps ");
    EXPECT_TRUE(desk.isSet("optAnalysis"));
    expectRefused(missing("     MODE"));
    // The option is set already; only from the other one can it be chosen.
    desk.click("optDesign");
    desk.click("optAnalysis");
    EXPECT_EQ(desk.problem.ProgramMode, Mode::Analysis);
}

TEST_F(HeadingTest, EditingADesignShowsItsNumbersAndForgetsTheFactorOption) {
    desk.problem = fullProblem();
    desk.problem.FSActive = 1.2;
    desk.problem.FSPassive = 1.6;
    desk.problem.FSKind = FactorKind::OneForBoth;
    desk.session->HeadContDataValid = 1;
    desk.open(Screen::HEADCONT);
    EXPECT_EQ(shownGroups(), "fraAnchor fraSafety ");
    EXPECT_EQ(desk.text("txtWallTop"), " 0");
    EXPECT_EQ(desk.text("txtAnchorEl"), "-3");
    EXPECT_EQ(desk.text("txtFSA1"), " 1.2");
    EXPECT_EQ(desk.text("txtFSP1"), " 1.6");
    EXPECT_EQ(desk.problem.FSKind, FactorKind::None);
    desk.click("optAnalysis");
    EXPECT_FALSE(desk.isSet("optFSOption1"));
    EXPECT_FALSE(desk.isSet("optFSOption2"));
}

TEST_F(HeadingTest, EditingAnAnalysisShowsTheGivenFactor) {
    desk.problem = fullProblem();
    desk.problem.ProgramMode = Mode::Analysis;
    desk.problem.FSKind = FactorKind::None; // neither: counts as given
    desk.problem.FSActive = 1.3;
    desk.problem.WallBottomElev = -25;
    desk.problem.WallModulus = 29e6;
    desk.problem.WallInertia = 100;
    desk.session->HeadContDataValid = 1;
    desk.open(Screen::HEADCONT);
    EXPECT_TRUE(desk.isSet("optFSOption2"));
    EXPECT_EQ(desk.problem.FSKind, FactorKind::ActiveGiven);
    EXPECT_TRUE(desk.find("txtFSAAnalysis")->isEnabled());
    EXPECT_EQ(desk.text("txtFSAAnalysis"), " 1.3");
    EXPECT_EQ(desk.text("txtWallBot"), "-25");
    EXPECT_EQ(desk.text("txtWallE"), " 29000000");
    EXPECT_EQ(desk.text("txtWallI"), " 100");
    EXPECT_EQ(desk.session->DataChanged, 0);
}

TEST_F(HeadingTest, CancelClosesAndTheNextOpeningIsBlank) {
    typeDesign();
    desk.type("txtWallTop", "bad");
    desk.answers = {Answer::Cancel};
    finish();
    EXPECT_EQ(desk.lastBox(), invalid);
    EXPECT_FALSE(desk.isOpen());
    EXPECT_EQ(desk.session->HeadContDataValid, 0);
    EXPECT_EQ(desk.problem.HeadingLines(1), "'QUAY WALL");
    desk.reopen(Screen::HEADCONT);
    EXPECT_EQ(desk.text("txtHead_0"), "");
    EXPECT_FALSE(desk.isSet("optDesign"));
}

TEST_F(HeadingTest, CancelOfTheMissingBoxClosesToo) {
    desk.open(Screen::HEADCONT);
    desk.answers = {Answer::Cancel};
    finish();
    EXPECT_FALSE(desk.isOpen());
    EXPECT_EQ(desk.session->HeadContDataValid, 0);
}

TEST_F(HeadingTest, TheFocusOrderServesBothModes) {
    typeAnalysis();
    desk.click("optAnchored");
    desk.click("optFSOption2");
    EXPECT_EQ(desk.tabOrder("txtHead_0"),
              (std::vector<std::string>{"txtHead_0", "txtHead_1", "txtHead_2", "txtHead_3",
                                        "optCantilever", "optAnchored", "optDesign", "optAnalysis",
                                        "txtWallTop", "optFSOption1", "optFSOption2",
                                        "txtFSAAnalysis", "txtAnchorEl", "txtWallBot", "txtWallE",
                                        "txtWallI", "cmdFinished"}));
    desk.click("optDesign");
    EXPECT_EQ(desk.tabOrder("txtHead_0"),
              (std::vector<std::string>{"txtHead_0", "txtHead_1", "txtHead_2", "txtHead_3",
                                        "optCantilever", "optAnchored", "optDesign", "optAnalysis",
                                        "txtWallTop", "txtFSA1", "txtFSP1", "txtAnchorEl",
                                        "cmdFinished"}));
}

} // namespace korvane::test
