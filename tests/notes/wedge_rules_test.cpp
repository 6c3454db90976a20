// Notes on the wedge methods, with their second solves.
#include "problem/input_reader.h"
#include "runtime/file_text.h"
#include "support/pressure_bench.h"
#include "told_wall.h"

#include <cmath>
#include <set>

namespace korvane::test {
namespace {

/// An anchored wall whose ground in front falls 1 on 20 under a load: as told its surface alone
/// bears nearly 40,000 PSF.
Problem fallingInFront(double fall = 1) {
    Problem problem = plainAnchoredWall();
    setBothSides(problem.SoilFriction, 37);
    setBothSides(problem.SoilWallFriction, 22);
    setBothSides(problem.SoilCohesion, 100);
    problem.FSPassive = 1.25;
    problem.VUniformCount(Left) = 1;
    problem.VUniformLoad(Left) = 150;
    return withGround(problem, Left, 20, -fall);
}

TEST(WedgeNotes, SurfaceOfFallingGround) {
    ToldWall wall(fallingInFront());
    const auto note = wall.note("surface-limit");
    ASSERT_TRUE(note);
    EXPECT_EQ(note->severity, Severity::Unsafe);
    EXPECT_EQ(note->side, Left);
    ASSERT_TRUE(note->second);
    EXPECT_EQ(note->second->levelCount, 2);
    EXPECT_GT(note->second->levels(1).penetration, 5 * wall.level(1).penetration);
    EXPECT_EQ(note->second->levels(2).method, SolutionMethod::FixedEarth);
}

TEST(WedgeNotes, SurfaceOfLevelOrBareGroundIsSilent) {
    EXPECT_FALSE(ToldWall(fallingInFront(0)).says("surface-limit"));
    Problem bare = fallingInFront();
    setBothSides(bare.SoilCohesion, 0);
    bare.VUniformCount(Left) = 0;
    EXPECT_FALSE(ToldWall(bare).says("surface-limit"));
    EXPECT_FALSE(ToldWall(bare).says("surface-slope"));
}

TEST(WedgeNotes, SurfaceOfRisingGround) {
    Problem problem = withGround(plainCantilever(), Right, 40, 20);
    problem.SurfaceElev(Left, 1) = -3;
    setBothSides(problem.SoilFriction, 32);
    problem.VUniformCount(Right) = 1;
    problem.VUniformLoad(Right) = 500;
    ToldWall wall(problem);
    ASSERT_TRUE(wall.isSolved());
    ASSERT_TRUE(wall.says("surface-slope"));
    EXPECT_FALSE(wall.says("surface-limit"));
    problem.SurfaceElev(Right, 2) = 0.001; // the slope is as good as none either way
    EXPECT_FALSE(ToldWall(problem).says("surface-slope"));
}

TEST(WedgeNotes, PlanesThatLeanPastTheHorizontal) {
    // 88 + 40 + 20 degrees and a fall of 32 are 180.
    std::set<std::optional<Severity>> seen;
    for (const double fall : {20.0, 31.9, 33.0, 33.5, 34.0, 34.5, 35.0, 38.0, 40.0, 45.0}) {
        Problem problem =
            withGround(plainCantilever(), Right, 20, -20 * std::tan(fall * DegreesToRadians));
        setBothSides(problem.SoilFriction, 40);
        setBothSides(problem.SoilWallFriction, 20);
        problem.VStripCount(Right) = 1; // the sweep runs to its end
        problem.VStripStart(Right, 1) = 1;
        problem.VStripEnd(Right, 1) = 3;
        problem.VStripLoad(Right, 1) = 500;
        ToldWall wall(problem);
        ToldWall amended(problem, WedgeMethod::Sweep, {.planesPastHorizontal = true});
        ASSERT_TRUE(amended.isSolved()) << fall;
        const double told = wall.isSolved() ? wall.level().penetration : 0;
        const double other = amended.level().penetration;
        std::optional<Severity> expected;
        if (fall >= 32 && wall.isSolved() && std::fabs(other / told - 1) >= 0.01) {
            expected = other > told ? Severity::Unsafe : Severity::Caution;
        } else if (!wall.isSolved()) {
            expected = Severity::Caution;
        }
        const auto note = wall.note("planes-past-horizontal");
        ASSERT_EQ(note.has_value(), expected.has_value()) << fall << ' ' << told << ' ' << other;
        if (note) {
            EXPECT_EQ(note->severity, *expected) << fall;
            EXPECT_EQ(note->side, Right);
            ASSERT_EQ(note->second->levelCount, 1);
            EXPECT_EQ(note->second->levels(1).penetration, other);
            EXPECT_EQ(note->value, other);
            EXPECT_EQ(note->limit.has_value(), wall.isSolved());
        }
        seen.insert(expected);
    }
    EXPECT_EQ(seen.size(), 3U); // none, unsafe, caution
}

TEST(WedgeNotes, LayersAboveAPlanesOwnKeepTheirWaterWhereItSeeps) {
    Problem one = withWater(withGround(plainCantilever(), Left, 100, -2), -4, -10);
    one.SeepageKind = Seepage::Automatic;
    one.SeepageElev = -10;
    EXPECT_FALSE(ToldWall(one).says("buoyant-layers"));

    // The same soil as two layers: all under buoyancy, the boundary changes nothing but the grid.
    Problem two = one;
    setLayerBottoms(two, Left, {-13});
    ToldWall wall(two);
    const auto note = wall.note("buoyant-layers");
    ASSERT_TRUE(note);
    EXPECT_EQ(note->severity, Severity::Unsafe);
    EXPECT_EQ(note->side, Left);
    const double single = ToldWall(one).level().penetration;
    EXPECT_NEAR(note->second->levels(1).penetration, single, 0.05);
    EXPECT_LT(wall.level().penetration, 0.95 * single);

    Problem still = two;
    still.SeepageKind = Seepage::None;
    EXPECT_FALSE(ToldWall(still).says("buoyant-layers"));
}

TEST(WedgeNotes, PlanesOverestimatePassivePressureBeyondHalfTheFriction) {
    Problem problem = withGround(plainCantilever(), Left, 50, 0);
    setBothSides(problem.SoilWallFriction, 15);
    EXPECT_FALSE(ToldWall(problem).says("plane-wall-friction"));
    setBothSides(problem.SoilWallFriction, 15.01);
    EXPECT_TRUE(ToldWall(problem).says("plane-wall-friction"));
    setBothSides(problem.SoilWallFriction, 30);
    ToldWall wall(problem);
    const auto note = wall.note("plane-wall-friction");
    ASSERT_TRUE(note);
    EXPECT_EQ(note->severity, Severity::Unsafe);
    EXPECT_NEAR(*note->value, 30, 1e-9);
    EXPECT_NEAR(*note->limit, 15, 1e-9);
    ASSERT_TRUE(note->second);
    EXPECT_GT(note->second->levels(1).penetration, 1.1 * wall.level().penetration);
    EXPECT_NE(note->text.find("30/30 5.61, 8.75, no bound"), std::string::npos);
}

TEST(WedgeNotes, SlopingGroundTakesHalfTheFrictionForItsSecondOpinion) {
    Problem problem = withGround(plainCantilever(), Left, 50, -2);
    setBothSides(problem.SoilWallFriction, 30);
    ToldWall wall(problem);
    const auto note = wall.note("plane-wall-friction");
    ASSERT_TRUE(note);
    ASSERT_TRUE(note->second);
    EXPECT_GT(note->second->levels(1).penetration, wall.level().penetration);
}

TEST(WedgeNotes, PlanesBehindAnAnchoredWallHoldNothing) {
    Problem problem = withGround(plainAnchoredWall(), Right, 50, 0);
    problem.SoilWallFriction(Right, 1) = 30;
    EXPECT_FALSE(ToldWall(problem).says("plane-wall-friction"));
}

TEST(WedgeNotes, TheFixedSurfaceIsNoExtreme) {
    // Friction 30: 1.5 cos d / cos(60 + d) against Coulomb's: 4.134 and 3.953 at 9 degrees (+4.6
    // %), 4.225 and 4.016 at 9.5 (+5.2 %).
    Problem problem = withGround(plainCantilever(), Left, 50, 0);
    setBothSides(problem.SoilWallFriction, 9);
    EXPECT_FALSE(ToldWall(problem, WedgeMethod::FixedSurface).says("fixed-passive"));
    setBothSides(problem.SoilWallFriction, 9.5);
    EXPECT_FALSE(ToldWall(problem, WedgeMethod::Sweep).says("fixed-passive"));
    ToldWall wall(problem, WedgeMethod::FixedSurface);
    const auto note = wall.note("fixed-passive");
    ASSERT_TRUE(note);
    EXPECT_EQ(note->severity, Severity::Unsafe);
    EXPECT_NEAR(*note->value, 4.225, 0.002);
    EXPECT_NEAR(*note->limit, 4.016, 0.002);
}

/// Passive pressure over vertical stress 8 FT below the left ground, one sand, factors 1.
double passiveShareOf(Problem problem, double friction, double onWall, WedgeMethod wedge) {
    setBothSides(problem.SoilFriction, friction);
    setBothSides(problem.SoilWallFriction, onWall);
    ToldWall wall(problem, wedge);
    const PressureDiagrams& diagrams = wall.workspace.review().diagrams;
    for (int i = 1; i <= diagrams.grid.NumElevs; ++i) {
        if (diagrams.grid.ElevGrid(i) == -18) {
            return diagrams.pressures.PassivePressures(Left, i, 2) / (120 * 8);
        }
    }
    return 0;
}
double passiveShare(double friction, double onWall, WedgeMethod wedge) {
    return passiveShareOf(withGround(plainCantilever(), Left, 50, 0), friction, onWall, wedge);
}
double coefficientShare(double friction, double onWall) {
    return passiveShareOf(plainCantilever(), friction, onWall, WedgeMethod::Sweep);
}

TEST(WedgeNotes, TheTableOfTheText) {
    struct Row {
        double friction, onWall;
        const char *coefficients, *sweep, *fixed;
    };
    const Row rows[] = {{30, 15, "4.81", "4.81", "5.60"},    {30, 20, "5.21", "5.75", "8.12"},
                        {30, 25, "5.48", "6.99", "15.6"},    {30, 30, "5.61", "8.75", "no bound"},
                        {40, 20, "11.06", "11.10", "20.96"}, {40, 40, "13.1", "71.0", "the floor"}};
    Problem problem = withGround(plainCantilever(), Left, 50, 0);
    setBothSides(problem.SoilWallFriction, 20);
    const auto note = ToldWall(problem).note("plane-wall-friction");
    ASSERT_TRUE(note);
    for (const auto& [friction, onWall, coefficients, sweep, fixed] : rows) {
        const std::string pair =
            std::to_string(std::lround(friction)) + "/" + std::to_string(std::lround(onWall));
        EXPECT_NE(note->text.find(pair + " " + coefficients + ", " + sweep + ", " + fixed),
                  std::string::npos)
            << pair;
        const auto expectShare = [&](const char* told, double share) {
            EXPECT_NEAR(share, std::stod(told), 0.005 * std::stod(told)) << pair;
        };
        expectShare(coefficients, coefficientShare(friction, onWall));
        expectShare(sweep, passiveShare(friction, onWall, WedgeMethod::Sweep));
        if (onWall < 45 - friction / 2) {
            expectShare(fixed, passiveShare(friction, onWall, WedgeMethod::FixedSurface));
        }
    }
    // At 45 - phi/2 the fixed surface has no bound: 1.5 cos d / cos(60 + d) = 744.9 at 29.9
    // degrees; the floor beyond is the vertical stress.
    EXPECT_NEAR(passiveShare(30, 29.9, WedgeMethod::FixedSurface), 744.9, 0.01 * 744.9);
    EXPECT_NEAR(passiveShare(40, 40, WedgeMethod::FixedSurface), 1, 0.005);
}

TEST(WedgeNotes, TheNoteTellsBothCoefficients) {
    struct Row {
        double friction, onWall, table, fixed;
    };
    for (const auto& [friction, onWall, table, fixed] :
         {Row{30, 20, 5.21, 8.12}, Row{30, 25, 5.48, 15.6}, Row{40, 20, 11.06, 20.96}}) {
        Problem problem = withGround(plainCantilever(), Left, 50, 0);
        setBothSides(problem.SoilFriction, friction);
        setBothSides(problem.SoilWallFriction, onWall);
        const auto note = ToldWall(problem, WedgeMethod::FixedSurface).note("fixed-passive");
        ASSERT_TRUE(note) << friction << '/' << onWall;
        EXPECT_NEAR(*note->value, fixed, 0.05);
        EXPECT_NEAR(*note->limit, table, 0.05);
    }
}

TEST(WedgeNotes, BeyondItsBoundTheFixedSurfaceFallsToTheFloor) {
    Problem problem = withGround(plainCantilever(), Left, 50, 0);
    setBothSides(problem.SoilFriction, 40);
    setBothSides(problem.SoilWallFriction, 40);
    ToldWall wall(problem, WedgeMethod::FixedSurface);
    EXPECT_FALSE(wall.says("fixed-passive"));
    EXPECT_TRUE(wall.says("plane-wall-friction"));
}

TEST(WedgeNotes, TheBoundOfTheFixedSurface) {
    struct Row {
        double onWall;
        bool bounded;
    };
    // Friction 40: no bound at 25 degrees.
    for (const auto& [onWall, bounded] : {Row{24.9, true}, Row{25, false}, Row{25.1, false}}) {
        Problem problem = withGround(plainCantilever(), Left, 50, 0);
        setBothSides(problem.SoilFriction, 40);
        setBothSides(problem.SoilWallFriction, onWall);
        ToldWall wall(problem, WedgeMethod::FixedSurface);
        const auto plane = wall.note("plane-wall-friction");
        ASSERT_TRUE(plane) << onWall;
        EXPECT_EQ(plane->text.rfind("Planes overestimate", 0) == 0, bounded) << onWall;
        EXPECT_EQ(plane->text.find("no bound at a developed wall friction of 45 - phi/2, 25.00") ==
                      std::string::npos,
                  bounded)
            << plane->text;
        const auto fixed = wall.note("fixed-passive");
        ASSERT_EQ(fixed.has_value(), bounded) << onWall;
        if (fixed) {
            EXPECT_NE(fixed->text.find("no bound at a developed wall friction of 45 - phi/2: under "
                                       "level ground"),
                      std::string::npos);
            EXPECT_NE(fixed->text.find("24.90"), std::string::npos);
            EXPECT_NE(fixed->text.find("25.00"), std::string::npos);
        }
        EXPECT_EQ(ToldWall(problem).note("plane-wall-friction")->text.rfind("Planes over", 0), 0U);
    }
}

/// A told run whose solution has come no farther than the review.
void failAfterReview(ToldWall& wall) {
    wall.solved.results = nullptr;
    wall.solved.reduction = nullptr;
    wall.solved.failure.code = FailureCode::NoSignChange;
}

TEST(WedgeNotes, PlanesOfAFailedRunTakeTheFactorsGiven) {
    for (const double onWall : {15.0, 15.01}) {
        Problem problem = withGround(plainCantilever(), Left, 50, 0);
        problem.FSPassive = 1.5;
        // Developed: as much of the tangent of the wall's as of half the developed friction.
        const double developed =
            std::atan(std::tan(30 * DegreesToRadians) / 1.5) / 2 * (onWall / 15);
        setBothSides(problem.SoilWallFriction,
                     std::atan(1.5 * std::tan(developed)) / DegreesToRadians);
        ToldWall wall(problem);
        ASSERT_TRUE(wall.isSolved());
        const auto solved = wall.note("plane-wall-friction");
        failAfterReview(wall);
        const auto failed = wall.note("plane-wall-friction");
        EXPECT_EQ(solved.has_value(), onWall > 15);
        ASSERT_EQ(failed.has_value(), onWall > 15);
        if (failed) {
            EXPECT_NEAR(*failed->value, *solved->value, 1e-9);
            EXPECT_NEAR(*failed->limit, *solved->limit, 1e-9);
            EXPECT_EQ(failed->severity, Severity::Unsafe);
            ASSERT_TRUE(failed->second);
            EXPECT_NE(failed->text.find("where the told formula gives none"), std::string::npos);
        }
    }
}

TEST(WedgeNotes, TheFixedSurfaceOfARefusedWall) {
    Problem problem = withGround(plainCantilever(), Left, 50, 0);
    problem = withGround(problem, Right, 50, 0);
    problem.SoilDataKind(Right) = SoilData::Coefficients; // which no wedge can use
    problem.SoilCoefActive(Right, 1) = 0.33;
    problem.SoilCoefPassive(Right, 1) = 3;
    for (const double onWall : {9.0, 9.5}) { // + 4.6 and + 5.2 %, as above
        setBothSides(problem.SoilWallFriction, onWall);
        ToldWall wall(problem, WedgeMethod::FixedSurface);
        ASSERT_FALSE(wall.isSolved());
        ASSERT_EQ(wall.solved.review, nullptr);
        EXPECT_EQ(wall.says("fixed-passive"), onWall > 9);
    }
}

TEST(WedgeNotes, MarksOfAFailedRunAreThoseOfItsReview) {
    Problem problem = withGround(plainCantilever(), Left, 50, 0);
    ToldWall wall(problem);
    ASSERT_TRUE(wall.isSolved());
    failAfterReview(wall);
    const auto review = std::make_unique<Review>(*wall.solved.review);
    wall.solved.review = review.get();
    EXPECT_FALSE(wall.says("marked-rows"));
    EXPECT_FALSE(wall.says("method-fixed"));
    review->diagrams.pressures.PassiveMark(Left, 12) = true;
    EXPECT_EQ(wall.note("marked-rows")->elev, review->diagrams.grid.ElevGrid(12));
    const auto fixed = wall.note("method-fixed");
    ASSERT_TRUE(fixed);
    EXPECT_EQ(fixed->severity, Severity::Caution); // it solves where the told run does not
    EXPECT_EQ(fixed->second->levelCount, 1);
}

// ---- from which difference on a second opinion speaks ------------------------------------------

/// An anchored wall with level ground of two points, its told depths shares of those by
/// coefficients.
struct AgainstCoefficients : ToldWall {
    AgainstCoefficients(double freeEarth, double fixedEarth)
        : ToldWall(withGround(plainAnchoredWall(), Left, 50, 0)) {
        Options byCoefficients = options;
        byCoefficients.amendments.methodCoefficients = true;
        Workspace other;
        const Solved solvedOther = solve(problem, byCoefficients, sections, other);
        for (const int number : {1, 2}) {
            depths[number - 1] = solvedOther.results->levels(number).penetration;
            level(number).penetration = depths[number - 1] / (number == 1 ? freeEarth : fixedEarth);
        }
    }
    double depths[2];
};

TEST(WedgeNotes, ASecondOpinionSpeaksFromOnePercentOnAtAnyLevel) {
    struct Row {
        double first, second; ///< depth by coefficients over the told one
        std::optional<Severity> severity;
        int level;
    };
    const Row rows[] = {
        {1, 1, {}, 0},
        {1.0099, 1, {}, 0},
        {1, 1.0099, {}, 0},
        {0.9901, 0.9901, {}, 0},
        {1.0101, 1, Severity::Unsafe, 1},
        {1, 1.0101, Severity::Unsafe, 2},
        {0.9899, 1, Severity::Caution, 1},
        {1, 0.9899, Severity::Caution, 2},
        {1.0101, 0.9, Severity::Unsafe, 1}, // deeper at one level is enough
        {0.9, 1.0101, Severity::Unsafe, 2},
        {1.0099, 0.98, Severity::Caution, 2},
    };
    for (const auto& [first, second, severity, level] : rows) {
        AgainstCoefficients wall(first, second);
        const auto note = wall.note("method-coefficients");
        ASSERT_EQ(note.has_value(), severity.has_value()) << first << ' ' << second;
        if (note) {
            EXPECT_EQ(note->severity, *severity) << first << ' ' << second;
            EXPECT_EQ(note->value, wall.depths[level - 1]) << first << ' ' << second;
            EXPECT_EQ(note->limit, wall.level(level).penetration) << first << ' ' << second;
            const char* method = level == 1 ? "(free earth)." : "(fixed earth).";
            EXPECT_NE(note->text.find(method), std::string::npos) << note->text;
            ASSERT_EQ(note->second->levelCount, 2);
        }
    }
}

TEST(WedgeNotes, TheSlopesEndSpeaksFromOnePercentOn) {
    const Problem problem = withGround(plainCantilever(), Right, 8, 3);
    Problem farther = problem; // 12 FT away, 4.5 FT up
    farther.SurfaceDist(Right, 2) = 12;
    farther.SurfaceElev(Right, 2) = 4.5;
    const double depth = ToldWall(farther).level().penetration;
    for (const double ratio : {0.9899, 0.9901, 1.0099, 1.0101}) {
        ToldWall wall(problem);
        wall.level().penetration = depth / ratio;
        EXPECT_EQ(wall.says("slope-end"), ratio < 0.99 || ratio > 1.01) << ratio;
    }
}

TEST(WedgeNotes, OtherMethods) {
    Problem problem = withGround(plainCantilever(), Left, 50, 0);
    EXPECT_FALSE(ToldWall(problem).says("method-coefficients")); // Rankine's either way
    EXPECT_FALSE(ToldWall(problem, WedgeMethod::FixedSurface).says("method-sweep"));
    setBothSides(problem.SoilWallFriction, 25);
    const auto coefficients = ToldWall(problem).note("method-coefficients");
    ASSERT_TRUE(coefficients);
    EXPECT_EQ(coefficients->severity, Severity::Unsafe);
    EXPECT_FALSE(ToldWall(problem).says("method-sweep"));
    const auto sweep = ToldWall(problem, WedgeMethod::FixedSurface).note("method-sweep");
    ASSERT_TRUE(sweep);
    EXPECT_EQ(sweep->severity, Severity::Unsafe);
}

TEST(WedgeNotes, TheOtherMethodIsTheOneThatAPersonWouldChoose) {
    // The level left side stays with its coefficients.
    Problem problem = withGround(plainCantilever(), Right, 40, 10);
    setBothSides(problem.SoilFriction, 38);
    setBothSides(problem.SoilWallFriction, 25);
    const double bySweep = ToldWall(problem).level().penetration;
    ToldWall wall(problem, WedgeMethod::FixedSurface);
    ASSERT_GT(bySweep, 1.01 * wall.level().penetration);
    const auto note = wall.note("method-sweep");
    ASSERT_TRUE(note);
    EXPECT_EQ(note->severity, Severity::Unsafe);
    EXPECT_EQ(note->second->levels(1).penetration, bySweep);
}

TEST(WedgeNotes, TheSurfaceInFrontIsNamedBeforeThatBehind) {
    Problem problem = withGround(withGround(plainCantilever(), Right, 20, -0.1), Left, 40, -2);
    for (const int side : {Right, Left}) {
        problem.VUniformCount(side) = 1;
        problem.VUniformLoad(side) = 300;
    }
    const auto note = ToldWall(problem).note("surface-limit");
    ASSERT_TRUE(note);
    EXPECT_EQ(note->side, Left);
}

TEST(WedgeNotes, AWallThatOnlyTheSecondOpinionSolvesIsACaution) {
    // Level ground of two points keeps the given coefficients from being used.
    Problem problem = withGround(plainCantilever(), Left, 50, 0);
    problem.SoilDataKind(Left) = SoilData::Coefficients;
    problem.SoilCoefActive(Left, 1) = 0.33;
    problem.SoilCoefPassive(Left, 1) = 3;
    ToldWall wall(problem);
    ASSERT_FALSE(wall.isSolved());
    const auto note = wall.note("method-coefficients");
    ASSERT_TRUE(note);
    EXPECT_EQ(note->severity, Severity::Caution);
    EXPECT_EQ(note->second->levelCount, 1);
    // With a slope both refuse it.
    problem.SurfaceElev(Left, 2) -= 1;
    EXPECT_FALSE(ToldWall(problem).says("method-coefficients"));
}

TEST(WedgeNotes, MarkedRows) {
    ToldWall plain(withGround(plainCantilever(), Left, 50, 0));
    EXPECT_FALSE(plain.says("marked-rows"));
    plain.level().solved.pressures.PassiveMark(Left, 12) = true;
    const auto note = plain.note("marked-rows");
    ASSERT_TRUE(note);
    EXPECT_EQ(note->value, 1);
    EXPECT_EQ(note->elev, plain.level().solved.grid.ElevGrid(12));
    EXPECT_EQ(note->severity, Severity::Caution);
}

TEST(WedgeNotes, MarkedRowsOfASolvedWall) {
    const std::string name = KORVANE_SOURCE_DIR "/tests/reference/wedge-9469";
    Problem problem;
    clearProblemData(problem);
    ASSERT_TRUE(readProblem(problem, readInputFile(name + ".dat"), name).complete);
    // The rows that the report of the reference marks, behind a pressure, the highest at -15.
    int marked = 0;
    for (const std::string& line : splitLines(readInputFile(name + ".out"))) {
        const std::size_t star = line.find('*');
        marked +=
            star != std::string::npos && star > 0 && line[star - 1] >= '0' && line[star - 1] <= '9'
                ? 1
                : 0;
    }
    ToldWall wall(problem);
    ASSERT_TRUE(wall.isSolved());
    const auto note = wall.note("marked-rows");
    ASSERT_TRUE(note);
    EXPECT_EQ(note->value, marked);
    EXPECT_EQ(note->side, Left);
    EXPECT_EQ(note->elev, -15);
    EXPECT_FALSE(wall.says("warning-without-mark"));
    problem.SurfaceElev(Left, 2) = -13; // 5 FT less fall in front
    EXPECT_FALSE(ToldWall(problem).says("marked-rows"));
}

TEST(WedgeNotes, RowsBelowTheWallAreNotMarked) {
    ToldWall wall(withGround(plainCantilever(), Left, 50, 0));
    PressureDiagrams& diagrams = wall.level().solved;
    diagrams.pressures.PassiveMark(Left, diagrams.grid.NumElevs) = true; // 50,000 FT down
    diagrams.pressures.PassiveMark(Left, diagrams.grid.NumElevs - 2) = true;
    ASSERT_LT(diagrams.grid.ElevGrid(diagrams.grid.NumElevs - 3), wall.level().bottomElev);
    EXPECT_FALSE(wall.says("marked-rows"));
    EXPECT_FALSE(wall.says("method-fixed"));
}

TEST(WedgeNotes, TheFixedSurfaceIsTheSecondOpinionOnMarkedRows) {
    Problem problem = withGround(plainCantilever(), Left, 50, 0);
    setBothSides(problem.SoilWallFriction, 10); // 4.30 by the fixed surface, 4.08 by the sweep
    ToldWall wall(problem);
    EXPECT_FALSE(wall.says("method-fixed"));
    wall.level().solved.pressures.PassiveMark(Left, 12) = true;
    EXPECT_TRUE(wall.says("method-fixed"));
}

TEST(WedgeNotes, TheWarningWithoutAMark) {
    ToldWall wall(withGround(plainCantilever(), Left, 50, 0));
    EXPECT_FALSE(wall.says("warning-without-mark"));
    wall.results->wedgeWarning = true;
    EXPECT_TRUE(wall.says("warning-without-mark"));
    wall.level().solved.pressures.ActiveMark(Left, 12) = true;
    EXPECT_FALSE(wall.says("warning-without-mark"));
}

} // namespace
} // namespace korvane::test
