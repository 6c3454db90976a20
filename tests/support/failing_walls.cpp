#include "support/failing_walls.h"

#include "support/support.h"

#include <functional>

namespace korvane::test {

namespace {

void anchor(Problem& problem) {
    problem.WallType = WallKind::Anchored;
    problem.AnchorElev = -3;
}

void analyse(Problem& problem, double bottom) {
    problem.ProgramMode = Mode::Analysis;
    problem.FSKind = FactorKind::OneForBoth;
    problem.WallBottomElev = bottom;
    problem.WallModulus = 29e6;
    problem.WallInertia = 100;
}

void secondLayer(Problem& problem, int side, double firstBottom) {
    problem.SoilLayerCount(side) = 2;
    problem.SoilSatWeight(side, 2) = problem.SoilMoistWeight(side, 2) = 120;
    problem.SoilFriction(side, 2) = 30;
    problem.SoilBottomElev(side, 1) = firstBottom;
    problem.SoilBottomElev(side, 2) = NoLayerBottom;
}

void slope(Problem& problem, int side, double rise) {
    problem.SurfacePointCount(side) = 2;
    problem.SurfaceDist(side, 2) = 10;
    problem.SurfaceElev(side, 2) = problem.SurfaceElev(side, 1) + rise;
}

/// 15 FT of 120 PCF, 1800 PSF, above clay on both sides.
void clay(Problem& problem, double cohesion) {
    problem.SurfaceElev(Left, 1) = -15;
    for (const int side : {Right, Left}) {
        problem.SoilFriction(side, 1) = 0;
        problem.SoilCohesion(side, 1) = cohesion;
    }
}

void coefficients(Problem& problem, int side) {
    problem.SoilDataKind(side) = SoilData::Coefficients;
    problem.SoilCoefActive(side, 1) = 0.33;
    problem.SoilCoefPassive(side, 1) = 3;
}

void seepage(Problem& problem, double right, double left, double start) {
    problem.WaterDataKind = WaterData::Elevations;
    problem.WaterUnitWeight = 62.4;
    problem.WaterElev(Right) = right;
    problem.WaterElev(Left) = left;
    problem.SeepageKind = Seepage::Automatic;
    problem.SeepageElev = start;
}

void setSoil(Problem& problem, int side, double sat, double moist, double friction,
             double cohesion = 0) {
    problem.SoilSatWeight(side, 1) = sat;
    problem.SoilMoistWeight(side, 1) = moist;
    problem.SoilFriction(side, 1) = friction;
    problem.SoilCohesion(side, 1) = cohesion;
}

void lineLoad(Problem& problem, double elev, double load) {
    problem.HLineCount = 1;
    problem.HLineElev(1) = elev;
    problem.HLineLoad(1) = load;
}

/// Soil of 110 PCF below an anchor at -4; in the left soil a stiff layer of 2 FT turns the net
/// pressure, and what lies below it never holds the wall.
void neverHeld(Problem& problem) {
    anchor(problem);
    problem.AnchorElev = -4;
    problem.SurfaceElev(Left, 1) = -20;
    secondLayer(problem, Left, -22);
    setSoil(problem, Right, 110, 110, 30);
    setSoil(problem, Left, 110, 110, 0, 600);
    problem.SoilMoistWeight(Left, 2) = 30;
    problem.SoilFriction(Left, 2) = 0;
    problem.SoilCohesion(Left, 2) = 10;
}

/// Clay that stands by itself and a line load that pulls: what drives the wall at first is water,
/// and seepage takes it away.
void turnedBySeepage(Problem& problem) {
    problem.FSPassive = 1.75;
    problem.WallTopElev = problem.SurfaceElev(Right, 1) = 50;
    problem.SurfaceElev(Left, 1) = 40;
    setSoil(problem, Right, 133, 119, 0, 1050);
    setSoil(problem, Left, 131, 98, 30);
    problem.SoilWallFriction(Left, 1) = 1;
    seepage(problem, 50, 45.5, 49.5);
    lineLoad(problem, 50, -900);
}

/// The anchored kind: water drives the wall at first, and seepage takes it away.
void anchoredTurnedBySeepage(Problem& problem) {
    anchor(problem);
    problem.WallTopElev = problem.SurfaceElev(Right, 1) = 41;
    problem.AnchorElev = 37;
    problem.SurfaceElev(Left, 1) = 0;
    secondLayer(problem, Left, -4);
    problem.SoilCohesion(Left, 2) = 6000;
    setSoil(problem, Right, 120, 100, 30);
    problem.SoilMoistWeight(Left, 1) = problem.SoilMoistWeight(Left, 2) = 100;
    seepage(problem, 40, 0, 40);
    lineLoad(problem, 14, -47800);
}

/// Left soil of two strengths: the bottom jumps across their boundary from pass to pass.
void jumpsAcrossBoundary(Problem& problem) {
    anchor(problem);
    problem.WallTopElev = problem.SurfaceElev(Right, 1) = 20.5;
    problem.AnchorElev = 18;
    problem.SurfaceElev(Left, 1) = 0;
    secondLayer(problem, Left, -2.5);
    problem.SoilCohesion(Left, 2) = 2000;
    setSoil(problem, Right, 120, 120, 0, 1200);
    problem.SoilFSActive(Right, 1) = 1.2;
    problem.SoilMoistWeight(Left, 1) = problem.SoilMoistWeight(Left, 2) = 100;
    seepage(problem, 2, 0, 2);
}

/// A line load that pulls at the wall near its bottom: it counts for a bottom below it and not for
/// one above it, and the seepage of either leads to the other.
void swingsWithSeepage(Problem& problem) {
    seepage(problem, -5, -10, -10);
    lineLoad(problem, -30.5, -3100);
}

/// Right soil that stands by itself over 6 FT and left soil far stronger than what it must hold.
void overheld(Problem& problem) {
    problem.WallTopElev = 11.75;
    problem.SurfaceElev(Right, 1) = 11;
    problem.SurfaceElev(Left, 1) = 0;
    setSoil(problem, Right, 120, 100, 0, 300);
    setSoil(problem, Left, 120, 100, 0, 1700);
}

/// A line load that pulls nearly as much as what drives the wall.
void nearlyBalanced(Problem& problem) {
    anchor(problem);
    problem.WallTopElev = problem.SurfaceElev(Right, 1) = 14;
    problem.AnchorElev = 11;
    problem.SurfaceElev(Left, 1) = 0;
    setSoil(problem, Right, 120, 100, 30, 300);
    setSoil(problem, Left, 120, 100, 30, 2000);
    problem.WaterDataKind = WaterData::Elevations;
    problem.WaterUnitWeight = 62.4;
    problem.WaterElev(Right) = 19;
    problem.WaterElev(Left) = 18;
    lineLoad(problem, 0, 1000);
    problem.HLineCount = 2;
    problem.HLineElev(2) = 5.25;
    problem.HLineLoad(2) = -548;
}

/// Stiff left soil on sand: the bottom turns back up as the factor goes on.
void inconsistentBracket(Problem& problem) {
    problem.WallType = WallKind::Anchored;
    analyse(problem, -16);
    problem.FSKind = FactorKind::ActiveGiven;
    problem.WallTopElev = problem.SurfaceElev(Right, 1) = 18;
    problem.AnchorElev = 13;
    problem.SurfaceElev(Left, 1) = 0;
    secondLayer(problem, Left, -8);
    setSoil(problem, Right, 120, 120, 0, 1000);
    setSoil(problem, Left, 120, 100, 30, 1500);
}

/// Clay with adhesion, which needs a wedge.
void inconsistentSteps(Problem& problem) {
    problem.WallType = WallKind::Anchored;
    analyse(problem, -10);
    problem.WallTopElev = 16;
    problem.AnchorElev = 15;
    problem.SurfaceElev(Right, 1) = 14.75;
    problem.SurfaceElev(Left, 1) = 0;
    setSoil(problem, Right, 114, 101, 0, 1000);
    setSoil(problem, Left, 120, 100, 0, 2000);
    problem.SoilAdhesion(Left, 1) = 1016;
    problem.WaterDataKind = WaterData::Elevations;
    problem.WaterUnitWeight = 64;
    problem.WaterElev(Right) = 9.75;
    problem.WaterElev(Left) = 8;
}

constexpr Stage Preparing{Doing::Preparing};
constexpr Stage RightPressures{Doing::SoilPressures, Right, 1};
constexpr Stage Bottom{Doing::WallBottom, 0, 1};
constexpr Stage FixedBottom{Doing::WallBottom, 0, 2};
constexpr Stage FactorSearch{Doing::FactorOfSafety, 0, 1};

/// A change of the plain cantilever wall and what comes of it.
struct Change {
    std::function<void(Problem&)> make;
    Failure expected;
    double elevMargin = 0;
    const char* special = "";
};

const std::vector<Change>& changes() {
    static const std::vector<Change> list = {
        {[](Problem& problem) { // the first layer ends 1 FT above the ground at the wall
             slope(problem, Right, 5);
             secondLayer(problem, Right, 1);
         },
         {.code = FailureCode::LayerAboveSurface, .stage = Preparing, .side = Right, .layer = 1}},
        {[](Problem& problem) { // 3 FT apart at the wall, closing by 1 in 8
             secondLayer(problem, Left, -15);
             problem.SoilLayerCount(Left) = 3;
             problem.SoilSatWeight(Left, 3) = problem.SoilMoistWeight(Left, 3) = 120;
             problem.SoilFriction(Left, 3) = 30;
             problem.SoilBottomElev(Left, 2) = -18;
             problem.SoilBottomSlope(Left, 2) = 0.125;
             problem.SoilBottomElev(Left, 3) = NoLayerBottom;
         },
         {.code = FailureCode::LayerBottomsCross,
          .stage = Preparing,
          .side = Left,
          .layer = 1,
          .distance = 24}},
        {[](Problem& problem) {
             slope(problem, Left, -2);
             coefficients(problem, Left);
         },
         {.code = FailureCode::CoefficientsForWedge, .stage = Preparing, .side = Left}},
        {[](Problem& problem) { // the head of 4 FT is gone after 4.4 of the 8 FT to the left ground
             seepage(problem, -2, -6, -2);
             problem.SeepageKind = Seepage::Given;
             problem.SeepageGradient(1) = 0.9;
         },
         {.code = FailureCode::GradientTooLarge, .stage = Preparing}},
        {[](Problem& problem) { // atan(tan(40) / 0.5) = 59 degrees
             problem.FSPassive = 0.5;
             problem.SoilFriction(Right, 1) = 40;
             problem.SoilWallFriction(Right, 1) = 30;
         },
         {.code = FailureCode::FrictionTooLarge,
          .stage = RightPressures,
          .side = Right,
          .layer = 1,
          .level = 1}},
        {[](Problem& problem) { // soil of 60 PCF in water
             problem.WaterDataKind = WaterData::Elevations;
             problem.WaterUnitWeight = 62.4;
             problem.WaterElev(Right) = problem.WaterElev(Left) = -10;
             problem.SoilSatWeight(Right, 1) = 60;
         },
         {.code = FailureCode::SoilWeightNotPositive,
          .stage = RightPressures,
          .side = Right,
          .layer = 1,
          .level = 1}},
        // 4 x 440 < 1800: the net pressure stays active.
        {[](Problem& problem) { clay(problem, 440); },
         {.code = FailureCode::NoSignChange, .stage = {Doing::NetPressures, 0, 1}, .level = 1}},
        // Nothing is retained.
        {[](Problem& problem) { problem.SurfaceElev(Left, 1) = 0; },
         {.code = FailureCode::ImproperRotation, .stage = Bottom, .level = 1}},
        {[](Problem& problem) {
             problem.SurfaceElev(Left, 1) = 0;
             analyse(problem, -20);
         },
         {.code = FailureCode::ImproperRotation, .stage = Bottom, .level = 1},
         0,
         "analysis"},
        {[](Problem& problem) { // the only force, 5 PLF, is gone within the first foot
             clay(problem, 1000);
             lineLoad(problem, -1, 5);
         },
         {.code = FailureCode::CantileverBottomAbove, .stage = Bottom, .level = 1, .elev = -16}},
        // 4 x 450 = 1800: no net pressure at any depth.
        {[](Problem& problem) { clay(problem, 450); },
         {.code = FailureCode::NoCantileverBottom, .stage = Bottom, .level = 1, .elev = -50090}},
        {turnedBySeepage,
         {.code = FailureCode::CantileverTurnsAround, .stage = Bottom, .level = 1}},
        {swingsWithSeepage,
         {.code = FailureCode::CantileverOscillates, .stage = Bottom, .level = 1, .elev = -30.5},
         1}, // within 1 FT of the load
        {overheld, {.code = FailureCode::RefinementFails, .stage = Bottom, .level = 1}},
        {nearlyBalanced,
         {.code = FailureCode::RefinementFails, .stage = FixedBottom, .level = 2},
         0,
         "fixed earth"},
        {neverHeld,
         {.code = FailureCode::NoFreeEarthBottom, .stage = Bottom, .level = 1, .elev = -50120}},
        // Within 1 FT of the boundary.
        {jumpsAcrossBoundary,
         {.code = FailureCode::AnchoredOscillates, .stage = Bottom, .level = 1, .elev = -2.5},
         1},
        {anchoredTurnedBySeepage,
         {.code = FailureCode::AnchoredTurnsAround, .stage = Bottom, .level = 1}},
        {inconsistentSteps,
         {.code = FailureCode::InconsistentFactors, .stage = FactorSearch, .level = 1}},
        {inconsistentBracket,
         {.code = FailureCode::InconsistentFactors,
          .stage = FactorSearch,
          .level = 1,
          .bracketed = true},
         0,
         "bracketed"},
        {[](Problem& problem) { // coefficients on both sides: no factor moves the bottom
             anchor(problem);
             analyse(problem, -11);
             coefficients(problem, Right);
             coefficients(problem, Left);
         },
         {.code = FailureCode::FactorNotFound, .stage = FactorSearch, .level = 1}},
        {[](Problem& problem) {
             // 1 - 5 x 0.2 leaves 5.6E-17, at which the friction is 90 degrees and sin is 1: the
             // passive coefficient divides by zero.
             anchor(problem);
             analyse(problem, -10.05);
             problem.FSKind = FactorKind::ActiveGiven;
         },
         {.code = FailureCode::RunTimeError,
          .stage = RightPressures,
          .side = Right,
          .level = 1,
          .error = 11}},
    };
    return list;
}

} // namespace

std::vector<FailingWall> failingWalls() {
    std::vector<FailingWall> walls;
    for (const Change& change : changes()) {
        FailingWall wall{failureName(change.expected.code), plainCantilever(), change.expected,
                         change.elevMargin};
        wall.name += *change.special != '\0' ? std::string(", ") + change.special : "";
        change.make(wall.problem);
        wall.expected.anchored = wall.problem.WallType == WallKind::Anchored;
        walls.push_back(std::move(wall));
    }
    return walls;
}

} // namespace korvane::test
