// LAYRDATA: the choice of sides, and the kinds of data.
#include "layer_typing.h"

namespace korvane::test {

namespace {

const std::string insufficient =
    okCancel("INSUFFICIENT DATA", "Insufficient SOIL LAYER DATA have been provided."
                                  "\n\n     Choose OK to continue SOIL LAYER"
                                  "\n          DATA entry."
                                  "\n     Choose CANCEL to DELETE ALL SOIL LAYER"
                                  "\n          DATA and exit.");
const std::string invalidFactor =
    okCancel("INVALID DATA", "At least one data value is invalid."
                             "\n\nChoose OK to continue DATA entry."
                             "\nChoose CANCEL to DELETE ALL DATA on this form"
                             "\n     and exit.");

class LayerTest : public LayerTyping {};

} // namespace

// ---- stage 1
// -------------------------------------------------------------------------------------

TEST_F(LayerTest, ANewProblemOpensWithEnterOnWhitePanels) {
    desk.open(Screen::LAYRDATA);
    EXPECT_EQ(desk.text("cmdEnterRightside"), "Enter &Rightside Soil Data");
    EXPECT_EQ(desk.text("cmdEnterLeftside"), "Enter &Leftside Soil Data");
    EXPECT_FALSE(desk.isHighlighted("panRightside"));
    EXPECT_FALSE(desk.isHighlighted("panLeftside"));
    EXPECT_FALSE(desk.isShown("panHeading"));
    EXPECT_FALSE(desk.isShown("panControlData"));
    EXPECT_EQ(
        desk.tabOrder("cmdEnterRightside"),
        (std::vector<std::string>{"cmdEnterRightside", "cmdEnterLeftside", "cmdFinishedAction"}));
}

TEST_F(LayerTest, TheRightSidesLayersAloneDecideTheLookOfBothSides) {
    problem = plainCantilever();
    problem.SoilLayerCount(Left) = 0;
    desk.open(Screen::LAYRDATA);
    EXPECT_EQ(desk.text("cmdEnterLeftside"), "Edit &Leftside Soil Data");
    EXPECT_TRUE(desk.isHighlighted("panLeftside"));
    desk.click("cmdFinishedAction");
    EXPECT_EQ(desk.lastBox(), insufficient);
    EXPECT_TRUE(desk.isOpen());
    EXPECT_EQ(problem.SoilLayerCount(Right), 1);
}

TEST_F(LayerTest, CancelInTheChoiceOfSidesDropsLayersAndKinds) {
    problem = plainCantilever();
    problem.SoilLayerCount(Left) = 0;
    desk.answers = {Answer::Cancel};
    desk.open(Screen::LAYRDATA);
    desk.click("cmdFinishedAction");
    EXPECT_FALSE(desk.isOpen());
    EXPECT_EQ(problem.SoilLayerCount(Right), 0);
    EXPECT_EQ(problem.SoilDataKind(Right), SoilData::None);
    EXPECT_EQ(problem.SoilDataKind(Left), SoilData::None);
}

TEST_F(LayerTest, FinishedClosesWithLayersOnBothSides) {
    problem = plainCantilever();
    desk.open(Screen::LAYRDATA);
    desk.click("cmdFinishedAction");
    EXPECT_EQ(desk.lastBox(), noBox);
    EXPECT_FALSE(desk.isOpen());
}

// ---- stage 2
// -------------------------------------------------------------------------------------

TEST_F(LayerTest, TheControlDataOfANewSideAreBlank) {
    desk.open(Screen::LAYRDATA);
    desk.click("cmdEnterLeftside");
    EXPECT_EQ(desk.text("panHeading"), "Enter LEFTSIDE Soil Data");
    EXPECT_EQ(desk.text("panControlData_title"), "Control Data for Leftside Soil");
    EXPECT_FALSE(desk.isShown("fraSoilDataAction"));
    EXPECT_FALSE(desk.isSet("optStrengths"));
    EXPECT_FALSE(desk.isSet("optCoefficients"));
    EXPECT_TRUE(desk.isShown("fraSafety2"));
    EXPECT_EQ(desk.tabOrder("optStrengths"),
              (std::vector<std::string>{"optStrengths", "optCoefficients", "txtFSA2", "txtFSP2",
                                        "cmdOK"}));
}

TEST_F(LayerTest, OkWithoutAKindDoesNothingAtAll) {
    desk.open(Screen::LAYRDATA);
    desk.click("cmdEnterRightside");
    desk.type("txtFSA2", "rubbish");
    desk.click("cmdOK");
    EXPECT_EQ(desk.lastBox(), noBox);
    EXPECT_TRUE(desk.isShown("panControlData"));
    EXPECT_EQ(desk.text("txtFSA2"), "rubbish");
}

TEST_F(LayerTest, TheControlDataOfASideWithLayersAreFilled) {
    problem = plainCantilever();
    problem.SoilDataKind(Right) = SoilData::Coefficients;
    problem.Level2FSActive(Right) = 1.25;
    desk.open(Screen::LAYRDATA);
    desk.click("cmdEnterRightside");
    EXPECT_EQ(desk.text("panHeading"), "Edit RIGHTSIDE Soil Data");
    EXPECT_TRUE(desk.isSet("optCoefficients"));
    EXPECT_EQ(desk.text("txtFSA2"), " 1.25");
    EXPECT_EQ(desk.text("txtFSP2"), "");
    EXPECT_EQ(desk.session->DataChanged, 0);
}

TEST_F(LayerTest, LevelTwoFactorsMustBeNumbersNotBelowZero) {
    desk.open(Screen::LAYRDATA);
    desk.click("cmdEnterRightside");
    desk.click("optStrengths");
    problem.Level2FSPassive(Right) = 9;
    desk.type("txtFSA2", "1.5");
    for (const char* text : {"-0.1", "x"}) {
        desk.type("txtFSP2", text);
        desk.click("cmdOK");
        EXPECT_EQ(desk.lastBox(), invalidFactor);
        EXPECT_TRUE(desk.isShown("panControlData"));
    }
    EXPECT_EQ(problem.Level2FSActive(Right), 1.5);
    EXPECT_EQ(problem.SoilDataKind(Right), SoilData::Strengths);
    desk.type("txtFSP2", "");
    desk.click("cmdOK");
    EXPECT_EQ(problem.Level2FSPassive(Right), 0);
    EXPECT_TRUE(desk.isShown("fraUnitWt"));
}

TEST_F(LayerTest, CancelInTheControlDataDropsLayersAndKinds) {
    problem = plainCantilever();
    desk.open(Screen::LAYRDATA);
    desk.click("cmdEnterRightside");
    desk.type("txtFSA2", "x");
    desk.answers = {Answer::Cancel};
    desk.click("cmdOK");
    EXPECT_FALSE(desk.isOpen());
    EXPECT_EQ(problem.SoilLayerCount(Left), 0);
    EXPECT_EQ(problem.SoilDataKind(Left), SoilData::None);
}

TEST_F(LayerTest, AnAcceptedChangeToCoefficientsDropsTheSidesLayers) {
    problem = plainCantilever();
    problem.Level2FSActive(Right) = 1.5;
    desk.open(Screen::LAYRDATA);
    desk.click("cmdEnterRightside");
    desk.answers = {Answer::Yes};
    desk.click("optCoefficients");
    EXPECT_EQ(desk.lastBox(),
              described({.text = "Current data are for SOIL STRENGTH DATA."
                                 "\nDo you want to change to SOIL PRESSURE COEFFICIENTS?",
                         .title = "CHANGE SOIL DATA TYPE?",
                         .buttons = Buttons::YesNo,
                         .icon = Icon::Question}));
    EXPECT_EQ(desk.session->DataChanged, 1);
    EXPECT_EQ(problem.SoilLayerCount(Right), 0);
    EXPECT_EQ(problem.SoilLayerCount(Left), 1);
    EXPECT_EQ(desk.text("cmdEnterRightside"), "Enter &Rightside Soil Data");
    EXPECT_EQ(desk.text("txtFSA2"), "");
    desk.click("cmdOK");
    EXPECT_EQ(problem.SoilDataKind(Right), SoilData::Coefficients);
    EXPECT_EQ(desk.text("txtSATWt_0"), "");
}

TEST_F(LayerTest, AnAcceptedChangeToStrengthsHidesTheFactorsButOkStillReachesTheTable) {
    problem = plainCantilever();
    problem.SoilDataKind(Right) = SoilData::Coefficients;
    problem.SoilDataKind(Left) = SoilData::Coefficients;
    problem.Level2FSActive(Right) = 1.5;
    desk.open(Screen::LAYRDATA);
    desk.click("cmdEnterRightside");
    desk.answers = {Answer::Yes};
    desk.click("optStrengths");
    EXPECT_EQ(desk.lastBox(), described({.text = "Current data are for SOIL PRESSURE COEFFICIENTS."
                                                 "\nDo you want to change to SOIL STRENGTH DATA?",
                                         .title = "CHANGE SOIL DATA TYPE?",
                                         .buttons = Buttons::YesNo,
                                         .icon = Icon::Question}));
    EXPECT_FALSE(desk.isShown("fraSafety2"));
    problem.Level2FSActive(Right) = 0;
    desk.click("cmdOK");
    EXPECT_TRUE(desk.isShown("fraStrengths"));
    EXPECT_EQ(problem.Level2FSActive(Right), 1.5); // the hidden field is read
    typeLayer(1, "30", "0");
    EXPECT_EQ(finish(), noBox);
    // Hidden for the other side too, until a change back to coefficients or the next opening.
    desk.click("cmdEnterLeftside");
    EXPECT_FALSE(desk.isShown("fraSafety2"));
    desk.answers = {Answer::Yes};
    desk.click("optStrengths");
    EXPECT_FALSE(desk.isShown("fraSafety2"));
    desk.reopen(Screen::LAYRDATA);
    desk.click("cmdEnterRightside");
    EXPECT_TRUE(desk.isShown("fraSafety2"));
}

TEST_F(LayerTest, AnAcceptedChangeToCoefficientsShowsTheFactorsAgain) {
    problem = plainCantilever();
    problem.SoilDataKind(Right) = SoilData::Coefficients;
    problem.Level2FSPassive(Left) = 1.4;
    desk.open(Screen::LAYRDATA);
    desk.click("cmdEnterRightside");
    desk.answers = {Answer::Yes};
    desk.click("optStrengths");
    desk.click("cmdOK");
    typeLayer(1, "30", "0");
    desk.click("cmdFinished");
    desk.click("cmdEnterLeftside");
    EXPECT_FALSE(desk.isShown("fraSafety2"));
    EXPECT_EQ(desk.text("txtFSP2"), " 1.4");
    desk.answers = {Answer::Yes};
    desk.click("optCoefficients");
    EXPECT_TRUE(desk.isShown("fraSafety2"));
    EXPECT_EQ(desk.text("txtFSP2"), "");
    EXPECT_EQ(desk.text("cmdEnterLeftside"), "Enter &Leftside Soil Data");
    EXPECT_EQ(desk.text("cmdEnterRightside"), "Edit &Rightside Soil Data");
}

TEST_F(LayerTest, ARefusedChangeLeavesTheOptionAndTakesTheLayersOver) {
    problem = plainCantilever();
    desk.open(Screen::LAYRDATA);
    desk.click("cmdEnterRightside");
    desk.answers = {Answer::No};
    desk.click("optCoefficients");
    EXPECT_TRUE(desk.isSet("optCoefficients"));
    EXPECT_EQ(problem.SoilLayerCount(Right), 1);
    EXPECT_EQ(desk.session->DataChanged, 0);
    desk.click("cmdOK");
    EXPECT_EQ(problem.SoilDataKind(Right), SoilData::Coefficients);
    EXPECT_EQ(desk.text("txtSATWt_0"), " 120");
    EXPECT_EQ(desk.text("txtAK_0"), " 0");
}

TEST_F(LayerTest, ClickingBackAfterANoAsksNothing) {
    problem = plainCantilever();
    desk.open(Screen::LAYRDATA);
    desk.click("cmdEnterRightside");
    desk.click("optCoefficients");
    EXPECT_EQ(desk.boxes.size(), 1U);
    desk.click("optStrengths");
    EXPECT_EQ(desk.boxes.size(), 1U);
}

} // namespace korvane::test
