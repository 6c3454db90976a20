// LAYRDATA: the table of layers and its tests.
#include "layer_typing.h"

namespace korvane::test {

namespace {

const std::string layerChoices = "\n\n     Choose OK to continue SOIL LAYER"
                                 "\n          DATA entry."
                                 "\n     Choose CANCEL to delete ALL SOIL LAYER"
                                 "\n          DATA and exit.";
const std::string noLayer =
    okCancel("DATA MISSING", "At least one soil layer is required." + layerChoices);
const std::string missing =
    okCancel("DATA MISSING", "At least one required data value is missing." + layerChoices);
const std::string invalid =
    okCancel("INVALID DATA", "At least one required data value is invalid." + layerChoices);
const std::vector<QString> groups = {"fraUnitWt", "fraStrengths", "fraCoeffs",
                                     "fraElev",   "fraSlope",     "fraSafety3"};

class LayerTableTest : public LayerTyping {
  protected:
    void openTable(const QString& option, const QString& side = "cmdEnterRightside") {
        desk.open(Screen::LAYRDATA);
        desk.click(side);
        desk.click(option);
        desk.click("cmdOK");
    }
    void typeCoefficients(int row, const QString& active, const QString& passive,
                          const QString& bottom = {}) {
        const QString index = "_" + QString::number(row - 1);
        desk.type("txtSATWt" + index, "120");
        desk.type("txtMSTWt" + index, "110");
        desk.type("txtAK" + index, active);
        desk.type("txtPK" + index, passive);
        desk.type("txtElev" + index, bottom);
    }
    std::string shownGroups() {
        std::string names;
        for (const QString& group : groups) {
            names += desk.isShown(group) ? group.toStdString() + " " : "";
        }
        return names;
    }
};

} // namespace

TEST_F(LayerTableTest, TheTableShowsTheGroupsOfItsKindWhereTold) {
    openTable("optStrengths");
    EXPECT_EQ(shownGroups(), "fraUnitWt fraStrengths fraElev fraSlope fraSafety3 ");
    EXPECT_EQ(desk.text("cmdFinished"), "Finished With &Rightside Soil");
    const double zoom = desk.find("fraSafety3")->height() / 3885.0;
    // Across the window the groups keep their proportions.
    const double across = desk.find("canvas")->width() / 9450.0;
    EXPECT_GT(across, zoom);
    const auto expectAt = [&](const char* group, double left, double width) {
        EXPECT_NEAR(desk.find(group)->x(), left * across, 1) << group;
        EXPECT_NEAR(desk.find(group)->width(), width * across, 1) << group;
        EXPECT_NEAR(desk.find(group)->height(), 3885 * zoom, 1) << group;
        const QPoint onCanvas = desk.find(group)->mapTo(desk.find("canvas"), QPoint(0, 0));
        EXPECT_NEAR(onCanvas.y(), 1080 * zoom, 1) << group;
    };
    expectAt("fraUnitWt", 180, 1830);
    expectAt("fraStrengths", 1995, 3630);
    expectAt("fraElev", 5610, 930);
    expectAt("fraSlope", 6525, 930);
    expectAt("fraSafety3", 7455, 1815);
    desk.reopen(Screen::LAYRDATA);
    desk.click("cmdEnterLeftside");
    desk.click("optCoefficients");
    desk.click("cmdOK");
    EXPECT_EQ(shownGroups(), "fraUnitWt fraCoeffs fraElev ");
    EXPECT_EQ(desk.text("cmdFinished"), "Finished With &Leftside Soil");
    expectAt("fraUnitWt", 2370, 1830);
    expectAt("fraCoeffs", 4185, 1815);
    expectAt("fraElev", 6000, 930);
}

TEST_F(LayerTableTest, StagesStandWhereTold) {
    desk.open(Screen::LAYRDATA);
    const QPoint centre = desk.find("canvas")->rect().center();
    const auto expectCentred = [&](const char* name, double width, double height) {
        const QWidget* frame = desk.find(name);
        EXPECT_NEAR(frame->geometry().center().x(), centre.x(), 1) << name;
        EXPECT_NEAR(frame->geometry().center().y(), centre.y(), 1) << name;
        const double zoom = frame->width() / width;
        EXPECT_NEAR(frame->height(), height * zoom, 1) << name;
        return zoom;
    };
    const double zoom = expectCentred("fraSoilDataAction", 4335, 3495);
    desk.click("cmdEnterLeftside");
    EXPECT_NEAR(expectCentred("panControlData", 5925, 2415), zoom, 0.0005);
    const QRect heading = desk.find("panHeading")->geometry();
    EXPECT_NEAR(heading.center().x(), centre.x(), 1);
    EXPECT_NEAR(heading.top(), 240 * zoom, 1);
}

TEST_F(LayerTableTest, FinishedPutsTheTableAway) {
    openTable("optStrengths");
    EXPECT_FALSE(desk.isShown("panControlData"));
    EXPECT_TRUE(desk.isShown("panHeading"));
    typeLayer(1, "30", "0");
    EXPECT_EQ(finish(), noBox);
    EXPECT_EQ(shownGroups(), "");
    EXPECT_FALSE(desk.isShown("cmdFinished"));
    EXPECT_EQ(desk.focused(), "cmdEnterLeftside");
    EXPECT_EQ(
        desk.tabOrder("cmdEnterRightside"),
        (std::vector<std::string>{"cmdEnterRightside", "cmdEnterLeftside", "cmdFinishedAction"}));
}

TEST_F(LayerTableTest, FocusGoesRowByRowOverTheColumnsOfTheKind) {
    openTable("optStrengths");
    auto order = desk.tabOrder("txtSATWt_0");
    ASSERT_EQ(order.size(), 111U);
    order.resize(11);
    EXPECT_EQ(order,
              (std::vector<std::string>{"txtSATWt_0", "txtMSTWt_0", "txtIntFrict_0", "txtCohes_0",
                                        "txtWallFrict_0", "txtAdhes_0", "txtElev_0", "txtSlope_0",
                                        "txtFSA3_0", "txtFSP3_0", "txtSATWt_1"}));
    desk.reopen(Screen::LAYRDATA);
    desk.click("cmdEnterRightside");
    desk.click("optCoefficients");
    desk.click("cmdOK");
    order = desk.tabOrder("txtSATWt_0");
    ASSERT_EQ(order.size(), 56U);
    EXPECT_EQ(order.back(), "cmdFinished");
    order.resize(6);
    EXPECT_EQ(order, (std::vector<std::string>{"txtSATWt_0", "txtMSTWt_0", "txtAK_0", "txtPK_0",
                                               "txtElev_0", "txtSATWt_1"}));
}

TEST_F(LayerTableTest, OneLayerHasNeitherBottomNorSlope) {
    problem.SoilBottomSlope(Right, 1) = 0.25;
    openTable("optStrengths");
    typeLayer(1, "30", "", "not read");
    desk.type("txtSlope_0", "not read");
    EXPECT_EQ(finish(), noBox);
    EXPECT_EQ(problem.SoilLayerCount(Right), 1);
    EXPECT_EQ(problem.SoilBottomElev(Right, 1), NoLayerBottom);
    EXPECT_EQ(problem.SoilBottomSlope(Right, 1), 0.25);
    EXPECT_EQ(problem.SoilCohesion(Right, 1), 0);
    EXPECT_TRUE(desk.isShown("fraSoilDataAction"));
    EXPECT_EQ(desk.text("cmdEnterRightside"), "Edit &Rightside Soil Data");
    EXPECT_TRUE(desk.isHighlighted("panRightside"));
    EXPECT_FALSE(desk.isHighlighted("panLeftside"));
    EXPECT_FALSE(desk.isShown("panHeading"));
}

TEST_F(LayerTableTest, ElevenRowsAreElevenLayers) {
    openTable("optStrengths");
    for (int row = 1; row <= 11; ++row) {
        typeLayer(row, "30", "0", row < 11 ? QString::number(-row) : QString());
    }
    EXPECT_THROW(desk.find("txtSATWt_11"), std::runtime_error);
    EXPECT_EQ(finish(), noBox);
    EXPECT_EQ(problem.SoilLayerCount(Right), 11);
    EXPECT_EQ(problem.SoilBottomElev(Right, 10), -10);
    EXPECT_EQ(problem.SoilBottomElev(Right, 11), NoLayerBottom);
}

TEST_F(LayerTableTest, AllFieldsOfALayerReachTheRecord) {
    openTable("optStrengths", "cmdEnterLeftside");
    typeLayer(1, "35", "200", "-5");
    desk.type("txtWallFrict_0", "20");
    desk.type("txtAdhes_0", "100");
    desk.type("txtSlope_0", "-0.125");
    desk.type("txtFSA3_0", "1.1");
    desk.type("txtFSP3_0", "1.6");
    typeLayer(2, "", "750");
    EXPECT_EQ(finish(), noBox);
    EXPECT_EQ(problem.SoilDataKind(Left), SoilData::Strengths);
    EXPECT_EQ(problem.SoilLayerCount(Left), 2);
    EXPECT_EQ(problem.SoilSatWeight(Left, 1), 120);
    EXPECT_EQ(problem.SoilMoistWeight(Left, 1), 110);
    EXPECT_EQ(problem.SoilFriction(Left, 1), 35);
    EXPECT_EQ(problem.SoilCohesion(Left, 1), 200);
    EXPECT_EQ(problem.SoilWallFriction(Left, 1), 20);
    EXPECT_EQ(problem.SoilAdhesion(Left, 1), 100);
    EXPECT_EQ(problem.SoilBottomElev(Left, 1), -5);
    EXPECT_EQ(problem.SoilBottomSlope(Left, 1), -0.125);
    EXPECT_EQ(problem.SoilFSActive(Left, 1), 1.1);
    EXPECT_EQ(problem.SoilFSPassive(Left, 1), 1.6);
    EXPECT_EQ(problem.SoilFriction(Left, 2), 0);
    EXPECT_EQ(problem.SoilCohesion(Left, 2), 750);
    EXPECT_EQ(problem.SoilLayerCount(Right), 0);
}

TEST_F(LayerTableTest, ASoilHasFrictionOrCohesion) {
    openTable("optStrengths");
    typeLayer(1, "0", "0");
    EXPECT_EQ(finish(), invalid);
    typeLayer(1, "", "");
    EXPECT_EQ(finish(), invalid);
    typeLayer(1, "0", "-1");
    EXPECT_EQ(finish(), invalid);
    typeLayer(1, "0", "500");
    EXPECT_EQ(finish(), noBox);
}

TEST_F(LayerTableTest, FrictionReachesFromZeroToFortyFive) {
    openTable("optStrengths");
    for (const char* text : {"45.01", "-1", "30 DEG"}) {
        typeLayer(1, text, "10");
        EXPECT_EQ(finish(), invalid) << text;
    }
    typeLayer(1, "45", "");
    EXPECT_EQ(finish(), noBox);
}

TEST_F(LayerTableTest, WallFrictionMayReachTheSoilsAndHasNoLowerBound) {
    openTable("optStrengths");
    typeLayer(1, "30", "");
    desk.type("txtWallFrict_0", "31");
    EXPECT_EQ(finish(), invalid);
    desk.type("txtWallFrict_0", "-12");
    desk.type("txtAdhes_0", "-1");
    EXPECT_EQ(finish(), invalid);
    EXPECT_EQ(problem.SoilWallFriction(Right, 1), -12);
    desk.type("txtAdhes_0", "");
    desk.type("txtWallFrict_0", "30");
    EXPECT_EQ(finish(), noBox);
    EXPECT_EQ(problem.SoilWallFriction(Right, 1), 30);
}

TEST_F(LayerTableTest, SlopeAndLevelThreeFactorsAreTested) {
    openTable("optStrengths");
    typeLayer(1, "30", "", "-5");
    typeLayer(2, "30", "");
    for (const char* field : {"txtSlope_0", "txtFSA3_0", "txtFSP3_1"}) {
        desk.type(field, "x");
        EXPECT_EQ(finish(), invalid) << field;
        desk.type(field, "");
    }
    desk.type("txtFSA3_1", "-1");
    EXPECT_EQ(finish(), invalid);
    desk.type("txtFSA3_1", "0");
    EXPECT_EQ(finish(), noBox);
}

TEST_F(LayerTableTest, WeightsMustBeAboveZero) {
    openTable("optStrengths");
    for (const char* field : {"txtSATWt_0", "txtMSTWt_0"}) {
        typeLayer(1, "30", "");
        desk.type(field, "0");
        EXPECT_EQ(finish(), invalid);
        desk.type(field, "");
        EXPECT_EQ(finish(), missing);
    }
}

TEST_F(LayerTableTest, BottomsMustFallStrictly) {
    openTable("optStrengths");
    typeLayer(1, "30", "", "-5");
    typeLayer(2, "30", "", "-5");
    typeLayer(3, "30", "");
    EXPECT_EQ(finish(), invalid);
    desk.type("txtElev_1", "");
    EXPECT_EQ(finish(), missing);
    desk.type("txtElev_1", "-5.01");
    EXPECT_EQ(finish(), noBox);
}

TEST_F(LayerTableTest, TheBottomIsReadBeforeTheStrengths) {
    openTable("optStrengths");
    typeLayer(1, "99", "", ""); // missing bottom, invalid friction: the missing one is first
    typeLayer(2, "30", "");
    EXPECT_EQ(finish(), missing);
}

TEST_F(LayerTableTest, ABlankRowBetweenIsARowWithMissingData) {
    openTable("optStrengths");
    typeLayer(1, "30", "", "-5");
    typeLayer(3, "30", "");
    EXPECT_EQ(finish(), missing);
    EXPECT_EQ(problem.SoilLayerCount(Right), 3);
    EXPECT_EQ(problem.SoilBottomElev(Right, 1), -5); // what was read stays
}

TEST_F(LayerTableTest, ARowCountsByItsMainFieldsAlone) {
    openTable("optStrengths");
    typeLayer(1, "30", "", "-5");
    desk.type("txtWallFrict_4", "10");
    desk.type("txtElev_5", "-8");
    EXPECT_EQ(finish(), noBox);
    EXPECT_EQ(problem.SoilLayerCount(Right), 1);
}

TEST_F(LayerTableTest, EachMainFieldMakesItsRowALayer) {
    openTable("optStrengths");
    for (const char* field : {"txtSATWt_1", "txtMSTWt_1", "txtIntFrict_1", "txtCohes_1"}) {
        typeLayer(1, "30", "", "-5");
        desk.type(field, "1");
        EXPECT_EQ(finish(), missing) << field;
        EXPECT_EQ(problem.SoilLayerCount(Right), 2) << field;
        desk.type(field, "");
    }
}

TEST_F(LayerTableTest, AnEmptyTableIsMissingItsFirstLayer) {
    openTable("optStrengths");
    EXPECT_EQ(finish(), noLayer);
    EXPECT_TRUE(desk.isOpen());
    desk.answers = {Answer::Cancel};
    EXPECT_EQ(finish(), noLayer);
    EXPECT_FALSE(desk.isOpen());
    EXPECT_EQ(problem.SoilDataKind(Right), SoilData::None);
}

TEST_F(LayerTableTest, CancelInTheTableDropsTheLayersAndLeavesTheKinds) {
    problem = plainCantilever();
    openTable("optStrengths");
    desk.type("txtIntFrict_0", "x");
    desk.answers = {Answer::Cancel};
    EXPECT_EQ(finish(), invalid);
    EXPECT_FALSE(desk.isOpen());
    EXPECT_EQ(problem.SoilLayerCount(Right), 0);
    EXPECT_EQ(problem.SoilLayerCount(Left), 0);
    EXPECT_EQ(problem.SoilDataKind(Right), SoilData::Strengths);
    EXPECT_EQ(problem.SoilSatWeight(Right, 1), 120); // stale, until the next entry
}

TEST_F(LayerTableTest, AnActiveCoefficientMayBeZeroAPassiveOneMayNot) {
    openTable("optCoefficients");
    typeCoefficients(1, "0", "0");
    EXPECT_EQ(finish(), invalid);
    typeCoefficients(1, "-0.1", "3");
    EXPECT_EQ(finish(), invalid);
    typeCoefficients(1, "0", "3");
    EXPECT_EQ(finish(), noBox);
    EXPECT_EQ(problem.SoilDataKind(Right), SoilData::Coefficients);
    EXPECT_EQ(problem.SoilCoefActive(Right, 1), 0);
    EXPECT_EQ(problem.SoilCoefPassive(Right, 1), 3);
}

TEST_F(LayerTableTest, AnEmptyCoefficientIsInvalidAndNotMissing) {
    openTable("optCoefficients");
    typeCoefficients(1, "", "3");
    EXPECT_EQ(finish(), invalid);
    typeCoefficients(1, "0.3", "");
    EXPECT_EQ(finish(), invalid);
    typeCoefficients(1, "", "");
    EXPECT_EQ(finish(), invalid);
}

TEST_F(LayerTableTest, EachMainFieldOfCoefficientsMakesItsRowALayer) {
    openTable("optCoefficients");
    for (const char* field : {"txtSATWt_1", "txtMSTWt_1", "txtAK_1", "txtPK_1"}) {
        typeCoefficients(1, "0.3", "3", "-5");
        desk.type(field, "1");
        EXPECT_EQ(finish(), missing) << field;
        EXPECT_EQ(problem.SoilLayerCount(Right), 2) << field;
        desk.type(field, "");
    }
    desk.type("txtElev_1", "-9"); // a bottom alone makes none
    EXPECT_EQ(finish(), noBox);
    EXPECT_EQ(problem.SoilLayerCount(Right), 1);
}

TEST_F(LayerTableTest, ALayerOfCoefficientsNeedsItsBottom) {
    openTable("optCoefficients", "cmdEnterLeftside");
    typeCoefficients(1, "0.3", "3");
    typeCoefficients(2, "0.4", "2.5");
    EXPECT_EQ(finish(), missing);
    desk.type("txtElev_0", "-5");
    EXPECT_EQ(finish(), noBox);
    EXPECT_EQ(problem.SoilBottomElev(Left, 1), -5);
    EXPECT_EQ(problem.SoilBottomElev(Left, 2), NoLayerBottom);
    EXPECT_EQ(problem.SoilCoefPassive(Left, 2), 2.5);
}

TEST_F(LayerTableTest, TheTableOfASideWithLayersIsFilled) {
    problem = fullProblem();
    desk.open(Screen::LAYRDATA);
    desk.click("cmdEnterLeftside");
    desk.click("cmdOK");
    EXPECT_EQ(desk.text("txtSATWt_0"), " 120");
    EXPECT_EQ(desk.text("txtElev_0"), "-14.25");
    EXPECT_EQ(desk.text("txtSlope_0"), " 0.05");
    EXPECT_EQ(desk.text("txtFSA3_0"), "");
    EXPECT_EQ(desk.text("txtElev_1"), "");
    EXPECT_EQ(desk.text("txtSlope_1"), "");
    EXPECT_EQ(desk.text("txtFSP3_1"), " 1.75");
    EXPECT_EQ(desk.text("txtSATWt_2"), "");
    EXPECT_EQ(desk.session->DataChanged, 0);
}

} // namespace korvane::test
