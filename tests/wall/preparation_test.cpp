#include "support/pressure_bench.h"
#include "wall/preparation.h"

namespace korvane::test {
namespace {

/// Wall top and right ground at 0, left ground at -10; dry sand of 120 PCF and 30 degrees.
class PreparationTest : public testing::Test {
  protected:
    void setWater(double right, double left) {
        problem.WaterDataKind = WaterData::Elevations;
        problem.WaterUnitWeight = 62.4;
        problem.WaterElev(Right) = right;
        problem.WaterElev(Left) = left;
    }
    void setSeepage(Seepage kind, double elevation, double gradient = 0) {
        problem.SeepageKind = kind;
        problem.SeepageElev = elevation;
        problem.SeepageGradient.fill(gradient);
    }
    void addSurfacePoint(int side) {
        const int i = ++problem.SurfacePointCount(side);
        problem.SurfaceDist(side, i) = 20;
        problem.SurfaceElev(side, i) = problem.SurfaceElev(side, 1) + 2;
    }
    void expectRefusal(const std::string& title, const std::string& text) {
        state.failure = {};
        bench.state->failure = {};
        state.grid.NumElevs = 0;
        PrepareSolution(state);
        EXPECT_TRUE(state.failed());
        EXPECT_EQ(bench.told(), (std::vector<MessageBox>{{.text = text, .title = title}}));
        EXPECT_EQ(state.grid.NumElevs, 0); // nothing else runs
    }
    PressureMethod method(int side) {
        PrepareSolution(state);
        return preparation.SideMethod(side);
    }

    PressureBench bench;
    State& state = *bench.state;
    Problem& problem = bench.problem;
    Preparation& preparation = state.preparation;
};

TEST_F(PreparationTest, LevelGroundWithoutAdhesionOrSlopesTakesCoefficients) {
    EXPECT_EQ(method(Right), PressureMethod::Coefficients);
    EXPECT_EQ(method(Left), PressureMethod::Coefficients);
    problem.SoilDataKind(Right) = SoilData::Coefficients;
    EXPECT_EQ(method(Right), PressureMethod::Coefficients);
    EXPECT_FALSE(state.failed());
}

TEST_F(PreparationTest, ASecondSurfacePointOfOneSideGivesThatSideAWedge) {
    addSurfacePoint(Left);
    EXPECT_EQ(method(Left), PressureMethod::Wedge);
    EXPECT_EQ(method(Right), PressureMethod::Coefficients);
}

TEST_F(PreparationTest, AdhesionInAnyLayerGivesAWedge) {
    setLayerBottoms(problem, Right, {-5, -20});
    problem.SoilCohesion(Right, 3) = problem.SoilAdhesion(Right, 3) = 10;
    EXPECT_EQ(method(Right), PressureMethod::Wedge);
    problem.SoilDataKind(Right) = SoilData::Coefficients; // coefficients know no adhesion
    EXPECT_EQ(method(Right), PressureMethod::Coefficients);
}

TEST_F(PreparationTest, ASlopingLayerBottomGivesAWedgeButTheLastLayersSlopeIsNotTested) {
    setLayerBottoms(problem, Left, {-15});
    problem.SoilBottomSlope(Left, 2) = 0.1;
    problem.SoilBottomSlope(Right, 1) = 0.1;
    EXPECT_EQ(method(Left), PressureMethod::Coefficients);
    EXPECT_EQ(method(Right), PressureMethod::Coefficients);
    problem.SoilBottomSlope(Left, 1) = -0.1;
    EXPECT_EQ(method(Left), PressureMethod::Wedge);
}

TEST_F(PreparationTest, CoefficientsUnderSeveralSurfacePointsStillGiveAWedgeAndAreRefused) {
    problem.SoilDataKind(Right) = problem.SoilDataKind(Left) = SoilData::Coefficients;
    addSurfacePoint(Left);
    expectRefusal("INCONSISTENT SOIL LAYER DATA",
                  "LEFTSIDE soil data are pressure coefficients, which\n"
                  "the wedge method required by the surface cannot use.\n"
                  "\n"
                  "     Unable to continue.");
    EXPECT_EQ(preparation.SideMethod(Left), PressureMethod::Wedge);
    addSurfacePoint(Right); // the right side comes first
    expectRefusal("INCONSISTENT SOIL LAYER DATA",
                  "RIGHTSIDE soil data are pressure coefficients, which\n"
                  "the wedge method required by the surface cannot use.\n"
                  "\n"
                  "     Unable to continue.");
}

TEST_F(PreparationTest, ALayerThatEndsAtOrAboveItsGroundIsRefused) {
    setLayerBottoms(problem, Left, {-10, -20});
    expectRefusal("INCONSISTENT SOIL LAYER DATA", "Bottom of LEFTSIDE soil layer 1 is at or above\n"
                                                  "the soil surface at the wall.\n"
                                                  "\n"
                                                  "     Unable to continue.");
    problem.SoilBottomElev(Left, 1) = -10.001;
    EXPECT_EQ(method(Left), PressureMethod::Coefficients);
    // The last layer's bottom is none.
    problem.SurfaceElev(Left, 1) = -300000;
    problem.SoilLayerCount(Left) = 1;
    state.failure = {};
    PrepareSolution(state);
    EXPECT_FALSE(state.failed());
}

TEST_F(PreparationTest, LayersOfBothSidesAreTestedBeforeCoefficientsAndTheFirstFaultAloneIsShown) {
    problem.SoilDataKind(Right) = SoilData::Coefficients;
    addSurfacePoint(Right);
    setLayerBottoms(problem, Left, {-2, -5, -20});
    expectRefusal("INCONSISTENT SOIL LAYER DATA", "Bottom of LEFTSIDE soil layer 1 is at or above\n"
                                                  "the soil surface at the wall.\n"
                                                  "\n"
                                                  "     Unable to continue.");
    setLayerBottoms(problem, Right, {5, -20});
    expectRefusal("INCONSISTENT SOIL LAYER DATA",
                  "Bottom of RIGHTSIDE soil layer 1 is at or above\n"
                  "the soil surface at the wall.\n"
                  "\n"
                  "     Unable to continue.");
}

/// Bottoms at -12 and -14 that cross at a distance.
void crossAt(Problem& problem, int side, double distance) {
    setLayerBottoms(problem, side, {-12, -14});
    problem.SoilBottomSlope(side, 1) = -0.05;
    problem.SoilBottomSlope(side, 2) = -0.05 + 2 / distance;
}

const char* crossText(int side) {
    return side == Right ? "Bottoms of RIGHTSIDE soil layers 1 and 2 cross\n32.00 FT from the wall."
                           "\n\n     Unable to continue."
                         : "Bottoms of LEFTSIDE soil layers 1 and 2 cross\n32.00 FT from the wall."
                           "\n\n     Unable to continue.";
}

TEST_F(PreparationTest, LayerBottomsThatCrossBeforeTheWallAreRefused) {
    for (const int side : {Left, Right}) { // the right side comes first
        crossAt(problem, side, 32);
        expectRefusal("INCONSISTENT SOIL LAYER DATA", crossText(side));
        EXPECT_EQ(state.failure.code, FailureCode::LayerBottomsCross);
        EXPECT_EQ(state.failure.layer, 1);
        EXPECT_DOUBLE_EQ(state.failure.distance, 32);
    }
}

// 10 times the exposed height of 10 FT.
TEST_F(PreparationTest, BottomsMayCrossFromTenExposedHeightsOn) {
    for (const int side : {Right, Left}) {
        for (const auto& [distance, refused] : {std::pair(99.99, true), {100.01, false}}) {
            crossAt(problem, side, distance);
            EXPECT_EQ(method(side), PressureMethod::Wedge);
            EXPECT_EQ(state.failed(), refused) << distance;
            state.failure = {};
        }
        // 2 / (0 + 2 / 128) is 128 exactly: at the limit of 128 it stands.
        setLayerBottoms(problem, side, {-12, -14});
        problem.SoilBottomSlope(side, 1) = 0;
        problem.SoilBottomSlope(side, 2) = 2.0 / 128;
        problem.WallTopElev = 2.8;
        method(side);
        EXPECT_FALSE(state.failed());
        problem.WallTopElev = 2.9;
        method(side);
        EXPECT_EQ(state.failure.code, FailureCode::LayerBottomsCross);
        state.failure = {};
        problem.WallTopElev = 0;
        problem.SoilLayerCount(side) = 1;
    }
}

// The ground on one side reaches farther than 10 exposed heights, on the other it is level.
TEST_F(PreparationTest, BottomsMayCrossFromTheLastSurfacePointOn) {
    for (const int side : {Right, Left}) {
        addSurfacePoint(side);
        problem.SurfaceDist(side, 2) = 250;
        for (const auto& [distance, refused] : {std::pair(249.99, true), {250.01, false}}) {
            crossAt(problem, side, distance);
            method(side);
            EXPECT_EQ(state.failed(), refused) << distance;
            state.failure = {};
        }
        crossAt(problem, side == Right ? Left : Right, 101);
        method(side);
        EXPECT_FALSE(state.failed());
        setLayerBottoms(problem, Right, {});
        setLayerBottoms(problem, Left, {});
        problem.SurfacePointCount(side) = 1;
    }
}

TEST_F(PreparationTest, BottomsThatPartOrCrossBehindTheWallStand) {
    setLayerBottoms(problem, Right, {-12, -14, -20});
    problem.SoilBottomSlope(Right, 1) = 0.1;
    problem.SoilBottomSlope(Right, 2) = -0.1;
    problem.SoilBottomSlope(Right, 3) = -0.1;
    problem.SoilBottomSlope(Right, 4) = 1; // of the last layer, which has no bottom
    EXPECT_EQ(method(Right), PressureMethod::Wedge);
    EXPECT_FALSE(state.failed());
    problem.SoilBottomSlope(Right, 3) = 0.4; // 6 FT at 0.5
    expectRefusal("INCONSISTENT SOIL LAYER DATA",
                  "Bottoms of RIGHTSIDE soil layers 2 and 3 cross\n12.00 FT from the wall."
                  "\n\n     Unable to continue.");
}

TEST_F(PreparationTest, CrossingBottomsComeAfterLayersAndBeforeCoefficients) {
    problem.SoilDataKind(Right) = SoilData::Coefficients;
    addSurfacePoint(Right);
    crossAt(problem, Left, 32);
    expectRefusal("INCONSISTENT SOIL LAYER DATA", crossText(Left));
    problem.SoilBottomElev(Left, 1) = -10;
    PrepareSolution(state);
    EXPECT_EQ(state.failure.code, FailureCode::LayerAboveSurface);
}

// Head 8, from -4 to -10: the gradient may be at most 8 / 6, where it ends at -10 itself.
TEST_F(PreparationTest, AGivenGradientThatEndsAboveTheLeftGroundIsRefused) {
    const std::string text = "Seepage gradient is too large for the seepage\n"
                             "elevation and the water elevations.\n"
                             "\n"
                             "     Unable to continue.";
    setWater(-2, -10);
    setSeepage(Seepage::Given, -4, 1.34);
    expectRefusal("INCONSISTENT SEEPAGE DATA", text);
    problem.ProgramMode = Mode::Analysis;
    expectRefusal("INCONSISTENT SEEPAGE DATA", text);
    problem.ProgramMode = Mode::Design;

    state.failure = {};
    problem.SeepageGradient.fill(8.0 / 6.0);
    PrepareSolution(state);
    EXPECT_FALSE(state.failed());

    // The lower of left water and left ground decides: from -4 to -12 with head 10.
    setWater(-2, -12);
    problem.SeepageGradient.fill(10.0 / 8.0 + 0.001);
    expectRefusal("INCONSISTENT SEEPAGE DATA", text);
}

TEST_F(PreparationTest, LayersAreTestedBeforeTheGradient) {
    setWater(-2, -10);
    setSeepage(Seepage::Given, -4, 5);
    setLayerBottoms(problem, Right, {3});
    expectRefusal("INCONSISTENT SOIL LAYER DATA",
                  "Bottom of RIGHTSIDE soil layer 1 is at or above\n"
                  "the soil surface at the wall.\n"
                  "\n"
                  "     Unable to continue.");
}

TEST_F(PreparationTest, SeepageExistsOnlyWithWaterElevations) {
    setSeepage(Seepage::Automatic, -4);
    PrepareSolution(state);
    EXPECT_EQ(preparation.SeepageKind, Seepage::None);
    problem.WaterDataKind = WaterData::Pressures;
    problem.WaterPressCount = 2;
    problem.WaterPressElev(1) = -2;
    problem.WaterPressElev(2) = -9;
    problem.SeepageKind = Seepage::Given;
    PrepareSolution(state);
    EXPECT_EQ(preparation.SeepageKind, Seepage::None);
    EXPECT_EQ(preparation.SeepageGradientLimit, 0);
}

// The start value 0.0001: ends at (-4 - 10 - 8 / 0.0001) / 2 = -40007.
TEST_F(PreparationTest, ADesignWithAutomaticSeepageStartsAtASmallGradient) {
    setWater(-2, -10);
    setSeepage(Seepage::Automatic, -4, 0.7); // a gradient that an earlier solution left behind
    PrepareSolution(state);
    for (const int level : {1, 2}) {
        EXPECT_EQ(preparation.SeepageGradient(level), 0.0001);
        EXPECT_NEAR(preparation.SeepageEndElev(level), -40007, 1e-6);
    }
    // The water pressures of the first pass are those of that gradient.
    EXPECT_NEAR(bench.water(-12, 1), 62.4 * (8 - 0.0001 * 10), 1e-9);
    EXPECT_NEAR(bench.water(preparation.SeepageEndElev(1), 1), 0, 1e-6);
}

// Head 8 over the way from -4 to -25 and up to -10.
TEST_F(PreparationTest, AnAnalysisWithAutomaticSeepageTakesItsWallBottom) {
    setWater(-2, -10);
    setSeepage(Seepage::Automatic, -4);
    problem.ProgramMode = Mode::Analysis;
    problem.WallBottomElev = -25;
    PrepareSolution(state);
    for (const int level : {1, 2}) {
        EXPECT_DOUBLE_EQ(preparation.SeepageGradient(level), 8.0 / 36.0);
        EXPECT_DOUBLE_EQ(preparation.SeepageEndElev(level), -25);
    }
}

TEST_F(PreparationTest, AGivenGradientStandsForBothLevels) {
    setWater(-2, -8); // left water above its ground: the ground counts, the head is 6
    setSeepage(Seepage::Given, -4, 0.25);
    problem.SeepageGradient(2) = 0.9;
    PrepareSolution(state);
    EXPECT_EQ(preparation.SeepageGradient(1), 0.25);
    EXPECT_EQ(preparation.SeepageGradient(2), 0.25);
    EXPECT_DOUBLE_EQ(preparation.SeepageEndElev(1), (-4 - 10 - 24) / 2.0);
    EXPECT_DOUBLE_EQ(preparation.SeepageEndElev(2), -19);
}

TEST_F(PreparationTest, WithoutHeadSeepageEndsHalfwayBetweenItsElevationAndTheLeftGround) {
    setWater(-10, -10);
    setSeepage(Seepage::Automatic, -4);
    PrepareSolution(state);
    EXPECT_EQ(preparation.SeepageEndElev(1), -7);
}

TEST_F(PreparationTest, TheGradientLimitIsTheSmallestOfThree) {
    setWater(-2, -10);
    setSeepage(Seepage::Automatic, -4);
    const auto limit = [&] {
        PrepareSolution(state);
        return preparation.SeepageGradientLimit;
    };
    problem.SoilSatWeight(Left, 1) = 130; // critical 130 / 62.4 - 1 = 1.083; path 8 / 6
    EXPECT_EQ(limit(), 0.9999);
    setLayerBottoms(problem, Left, {-15});
    problem.SoilSatWeight(Left, 2) = 110; // the lightest layer counts
    EXPECT_DOUBLE_EQ(limit(), 110 / 62.4 - 1);
    setWater(-2, -5); // the ground at -10 counts: 3 / 6
    EXPECT_DOUBLE_EQ(limit(), 0.5);
    problem.SeepageElev = -10; // no way above the ground: no limit by it
    EXPECT_DOUBLE_EQ(limit(), 110 / 62.4 - 1);
    setSeepage(Seepage::Given, -4, 0.3); // set for a given gradient too
    EXPECT_DOUBLE_EQ(limit(), 0.5);
}

TEST_F(PreparationTest, FactorsOfALayerGoBeforeThoseOfItsSideAndOfTheProblem) {
    setLayerBottoms(problem, Right, {-5});
    problem.FSActive = 1.1;
    problem.FSPassive = 1.5;
    problem.Level2FSPassive(Right) = 1.7;
    problem.SoilFSActive(Right, 2) = 1.3;
    problem.SoilFSPassive(Right, 2) = 2.0;
    PrepareSolution(state);
    for (const int level : {1, 2}) {
        EXPECT_EQ(preparation.LayerFSActive(Right, 1, level), 1.1);
        EXPECT_EQ(preparation.LayerFSActive(Right, 2, level), 1.3);
        EXPECT_EQ(preparation.LayerFSPassive(Right, 1, level), 1.7);
        EXPECT_EQ(preparation.LayerFSPassive(Right, 2, level), 2.0);
        EXPECT_EQ(preparation.LayerFSPassive(Left, 1, level), 1.5);
    }
}

TEST_F(PreparationTest, AnAnalysisSetsItsFactorsItself) {
    problem.ProgramMode = Mode::Analysis;
    problem.FSActive = 1.1;
    PrepareSolution(state);
    EXPECT_EQ(preparation.LayerFSActive(Right, 1, 1), 0);
}

TEST_F(PreparationTest, SurchargesOfAWedgeSideAreCountedWithoutTheUniformOne) {
    for (const int side : {Right, Left}) {
        problem.VUniformCount(side) = 1;
        problem.VUniformLoad(side) = 100;
        problem.VStripCount(side) = 2;
        for (const int i : {1, 2}) {
            problem.VStripStart(side, i) = 2;
            problem.VStripEnd(side, i) = 4;
        }
        problem.VLineCount(side) = 3;
        problem.VRampCount(side) = 1;
        problem.VTriCount(side) = 1;
        problem.VVarCount(side) = 4;
    }
    addSurfacePoint(Right);
    PrepareSolution(state);
    EXPECT_EQ(preparation.NumSurchargesOnSide(Right), 11);
    EXPECT_EQ(preparation.NumSurchargesOnSide(Left), 0);
    EXPECT_GT(state.regions.Layer.Count(Right, 1), 0); // its regions stand
}

TEST_F(PreparationTest, EverySolutionStartsFromZeroedPressuresMarksAndFlags) {
    auto& pressures = state.pressures;
    for (const int i : {1, 150, 301}) {
        pressures.ActivePressures(Right, i, 1) = pressures.PassivePressures(Left, i, 2) = 77;
        pressures.ActiveMark(Left, i) = pressures.PassiveMark(Right, i) = true;
    }
    state.wedge.WedgeNoSolution.fill(1);
    PrepareSolution(state);
    EXPECT_EQ(pressures.ActivePressures, (Array<double, 2, 301, 2>{}));
    EXPECT_EQ(pressures.PassivePressures, (Array<double, 2, 301, 2>{}));
    EXPECT_EQ(pressures.ActiveMark, (Array<bool, 2, 301>{}));
    EXPECT_EQ(pressures.PassiveMark, (Array<bool, 2, 301>{}));
    EXPECT_EQ(state.wedge.WedgeNoSolution, (Array<int, 3, 2>{}));
}

TEST_F(PreparationTest, GridAndWaterStandAtTheEnd) {
    setWater(-2, -12);
    PrepareSolution(state);
    EXPECT_GT(state.grid.NumElevs, 60);
    EXPECT_NEAR(bench.water(-12, 1), 624, 1e-9);
}

} // namespace
} // namespace korvane::test
