// Each row of a comparison against hand calculation, a closed form, or the same wall changed by
// hand; and what is said of rows that have no result.

#include "compared_wall.h"
#include "comparison/comparison_rows.h"
#include "comparison/rear_actions.h"
#include "support/pressure_bench.h"
#include "support/random_problem.h"

#include <gmock/gmock.h>

#include <cmath>
#include <functional>
#include <set>

namespace korvane::test {

namespace {

using enum ComparedValue;

/// Free earth support of a dry wall in one soil by classical triangles: all in FT, LB, per FT of
/// wall. Moments about the anchor give the depth by bisection.
struct FreeEarth {
    double depth, force, moment;
};
FreeEarth freeEarth(double retained, double anchor, double weight, double Ka, double Kp) {
    const auto momentAt = [&](double depth) {
        const double total = retained + depth;
        return Ka * weight * total * total / 2 * (total * 2 / 3 - anchor) -
               Kp * weight * depth * depth / 2 * (retained - anchor + depth * 2 / 3);
    };
    double low = 0;
    double high = 100;
    for (int n = 0; n < 200; ++n) {
        const double middle = (low + high) / 2;
        (momentAt(middle) > 0 ? low : high) = middle;
    }
    const double total = retained + low;
    const double force = Ka * weight * total * total / 2 - Kp * weight * low * low / 2;
    // Shear is zero above the dredge line: Ka w z^2 / 2 = force.
    const double zero = std::sqrt(2 * force / (Ka * weight));
    return {low, force, force * (zero - anchor) - Ka * weight * zero * zero * zero / 6};
}

/// A grid method agrees with a closed form to about 0.01 FT and 0.2 %.
void expectFreeEarth(const ComparedRow& row, const FreeEarth& expected) {
    EXPECT_NEAR(valueOf(row, Penetration), expected.depth, 0.01) << row.name;
    EXPECT_NEAR(valueOf(row, AnchorForce) / expected.force, 1, 0.002) << row.name;
    EXPECT_NEAR(std::abs(valueOf(row, MaxMoment)) / expected.moment, 1, 0.002) << row.name;
}

double radians(double degrees) {
    return degrees * DegreesToRadians;
}
double rankineActive(double friction) {
    return std::pow(std::tan(radians(45 - friction / 2)), 2);
}

Problem layeredFactors() {
    Problem problem = anchoredSand();
    problem.FSActive = 1.1;
    problem.FSPassive = 1.4;
    problem.Level2FSActive(Right) = 1.2;
    problem.Level2FSPassive(Left) = 1.3;
    problem.SoilFSActive(Left, 1) = 1.15;
    problem.SoilFSPassive(Left, 1) = 1.6;
    return problem;
}

Problem withFactors(Problem problem, double active, double passive) {
    problem.FSActive = active;
    problem.FSPassive = passive;
    problem.Level2FSActive(Right) = problem.Level2FSPassive(Left) = 0;
    problem.SoilFSActive(Left, 1) = problem.SoilFSPassive(Left, 1) = 0;
    return problem;
}

std::string reasonOf(const Problem& problem, std::string_view name) {
    const Comparison comparison = compared(problem);
    const ComparedRow& row = rowOf(comparison, name);
    EXPECT_TRUE(row.levels.empty()) << name;
    EXPECT_EQ(row.code, "not-applicable") << name;
    return row.reason;
}

} // namespace

TEST(Comparison, SpreadOfOneAnchoredWallIsThePublishedOne) {
    // Classical triangles, free earth: depth FT, anchor force LB, moment LB-FT at factor 1 and at
    // Kp over 1.5; worked out by hand.
    struct Spread {
        Problem wall;
        FreeEarth one, reduced;
    };
    const Spread spreads[] = {
        {anchoredSand(), {8.695, 8720, 36793}, {12.108, 9533, 46403}},
        {anchoredByCoefficients(1.0 / 3, 4.70), {6.259, 8140, 30436}, {8.410, 8652, 36027}},
        {anchoredSand(15), {5.615, 6976, 25178}, {7.473, 7362, 29305}},
    };
    for (const Spread& spread : spreads) {
        const Comparison comparison = compared(spread.wall);
        expectFreeEarth(rowOf(comparison, "as-given"), spread.one);
        expectFreeEarth(rowOf(comparison, "kp-1.5"), spread.reduced);
    }
    // Kp over 1.3 by rows of one's own.
    const FreeEarth reduced[] = {{10.723, 9203, 42405}, {7.555, 8448, 33764}, {6.738, 7210, 27647}};
    const double Ka[] = {1.0 / 3, 1.0 / 3, 0.2911};
    const double Kp[] = {3.0, 4.70, 4.8069};
    for (int n = 0; n < 3; ++n) {
        const Problem wall = anchoredByCoefficients(Ka[n], Kp[n]);
        const FieldChange change{
            {ProblemField::SoilCoefPassive, Left, 1}, FieldChange::Kind::Multiply, 1 / 1.3};
        const std::vector<OwnRow> own{{"kp-1.3", UnitSystem::US, {change}}};
        Workspace workspace;
        const Options options = bySweep();
        const Comparison comparison =
            compareWall({.problem = wall, .options = options, .ownRows = &own}, workspace);
        expectFreeEarth(rowOf(comparison, "kp-1.3"), reduced[n]);
    }
}

TEST(Comparison, TheClosedFormOfTheTestsGivesTheSpreadToo) {
    const FreeEarth two = freeEarth(25, 10, 115, 1.0 / 3, 1.5);
    EXPECT_NEAR(freeEarth(25, 10, 115, 1.0 / 3, 2).depth, 12.108, 0.001);
    const Comparison comparison = compared(anchoredSand());
    expectFreeEarth(rowOf(comparison, "kp-2"), two);
}

TEST(Comparison, FactorRowsAreTheWallWithThoseFactorsAlone) {
    const Problem problem = layeredFactors();
    const Comparison comparison = compared(problem);
    expectSameWall(rowOf(comparison, "as-given"), problem);
    expectSameWall(rowOf(comparison, "factors-1"), withFactors(problem, 1, 1));
    expectSameWall(rowOf(comparison, "passive-1.25"), withFactors(problem, 1.1, 1.25));
    expectSameWall(rowOf(comparison, "passive-1.5"), withFactors(problem, 1.1, 1.5));
    expectSameWall(rowOf(comparison, "passive-2"), withFactors(problem, 1.1, 2));
    expectSameWall(rowOf(comparison, "factors-1.25"), withFactors(problem, 1.25, 1.25));
    expectSameWall(rowOf(comparison, "factors-1.5"), withFactors(problem, 1.5, 1.5));
    EXPECT_NE(valueOf(rowOf(comparison, "factors-1"), Penetration),
              valueOf(rowOf(comparison, "as-given"), Penetration));
}

TEST(Comparison, ReducedKpIsOfFactorOneAndHorizontal) {
    // Coulomb's coefficients at phi 30, wall friction 15: 0.3014 and 4.9765, times cos 15.
    Problem problem = anchoredSand(15);
    problem.FSPassive = 1.5; // takes no part
    const Comparison comparison = compared(problem);
    const double cosine = std::cos(radians(15));
    expectFreeEarth(rowOf(comparison, "kp-2"),
                    freeEarth(25, 10, 115, 0.30142 * cosine, 4.9765 * cosine / 2));
}

TEST(Comparison, DeeperRowsKeepForceAndMomentOfFactorOne) {
    const Problem problem = layeredFactors();
    const Comparison comparison = compared(problem);
    const ComparedRow& one = rowOf(comparison, "factors-1");
    const std::pair<const char*, double> rows[] = {
        {"depth-20", 1.2}, {"depth-30", 1.3}, {"depth-40", 1.4}};
    for (const auto& [name, factor] : rows) {
        const ComparedRow& row = rowOf(comparison, name);
        ASSERT_EQ(row.levels.size(), 2U);
        for (const std::size_t level : {0U, 1U}) {
            const double depth = valueOf(one, Penetration, level) * factor;
            EXPECT_DOUBLE_EQ(valueOf(row, Penetration, level), depth);
            EXPECT_NEAR(valueOf(row, Length, level), 25 + depth, 1e-9);
            for (const ComparedValue same : {AnchorForce, MaxMoment, MaxShear, MaxDeflection}) {
                EXPECT_EQ(valueOf(row, same, level), valueOf(one, same, level));
            }
        }
    }
}

TEST(Comparison, PartialFactorsDivideTheTangentOfFriction) {
    Problem problem = anchoredSand();
    problem.FSPassive = 1.5; // takes no part
    const double friction = std::atan(std::tan(radians(30)) / 1.25) / DegreesToRadians;
    const double Ka = rankineActive(friction);
    const Comparison comparison = compared(problem);
    expectFreeEarth(rowOf(comparison, "partial-factors"), freeEarth(25, 10, 115, Ka, 1 / Ka));
}

TEST(Comparison, PartialFactorsOnCohesionAndLoads) {
    Problem problem = anchoredSand();
    problem.SurfaceElev(Left, 1) = -15;
    problem.AnchorElev = -3;
    for (const int side : {Right, Left}) {
        problem.SoilLayerCount(side) = 2;
        for (auto* list : {&problem.SoilSatWeight, &problem.SoilMoistWeight}) {
            (*list)(side, 2) = 120;
        }
        problem.SoilFriction(side, 1) = 25;
        problem.SoilWallFriction(side, 1) = 10;
        problem.SoilCohesion(side, 1) = 100;
        problem.SoilBottomElev(side, 1) = -15.5;
        problem.SoilBottomElev(side, 2) = NoLayerBottom;
        problem.SoilCohesion(side, 2) = 1400;
        problem.VUniformCount(side) = 1;
        problem.VUniformLoad(side) = 200;
    }
    problem.VLineCount(Right) = 1;
    problem.VLineDist(Right, 1) = 5;
    problem.VLineLoad(Right, 1) = 1000;
    problem.HLineCount = 2;
    problem.HLineElev(1) = problem.HLineElev(2) = -1;
    problem.HLineLoad(1) = 300;
    problem.HLineLoad(2) = -100;

    Problem changed = problem;
    changed.FSActive = changed.FSPassive = 1;
    for (const int side : {Right, Left}) {
        changed.SoilFriction(side, 1) = std::atan(std::tan(radians(25)) / 1.25) / DegreesToRadians;
        changed.SoilWallFriction(side, 1) =
            std::atan(std::tan(radians(10)) / 1.25) / DegreesToRadians;
        changed.SoilCohesion(side, 1) = 80;
        changed.SoilCohesion(side, 2) = 1000;
    }
    changed.VUniformLoad(Right) = 260; // that on the left holds the wall
    changed.VLineLoad(Right, 1) = 1300;
    changed.HLineLoad(1) = 390; // the other one pushes to the right
    const Comparison comparison = compared(problem);
    const ComparedRow& row = rowOf(comparison, "partial-factors");
    const SolvedWall wall(changed);
    ASSERT_NE(wall.results, nullptr);
    EXPECT_NEAR(valueOf(row, Penetration), wall.results->levels(1).penetration, 1e-6);
    EXPECT_NEAR(valueOf(row, AnchorForce), wall.results->levels(1).anchorForce, 1e-3);
}

TEST(Comparison, RearActionsMultiplyActivePressureAndWater) {
    const Comparison dry = compared(anchoredByCoefficients(0.3, 3.5));
    expectFreeEarth(rowOf(dry, "rear-1.35"), freeEarth(25, 10, 115, 0.3 * 1.35, 3.5));
    EXPECT_EQ(rowOf(dry, "rear-1.35").title, "factors 1, active and rear water 1.35");

    Problem problem = withWater(anchoredByCoefficients(0.3, 3.5), -5, -10);
    problem.VUniformCount(Right) = problem.VLineCount(Right) = 1;
    problem.VUniformLoad(Right) = 100; // acts by the coefficient
    problem.VLineLoad(Right, 1) = 1000;
    EXPECT_EQ(raiseRearActions(problem, 1.35), "");
    EXPECT_EQ(problem.WaterDataKind, WaterData::Pressures);
    ASSERT_EQ(problem.WaterPressCount, 3);
    EXPECT_EQ(problem.WaterPressElev(1), -5);
    EXPECT_EQ(problem.WaterPressure(1), 0);
    EXPECT_EQ(problem.WaterPressElev(2), -10);
    EXPECT_NEAR(problem.WaterPressure(2), 1.35 * 5 * 62.4, 1e-9);
    const double depth = -10 - problem.WaterPressElev(3);
    EXPECT_NEAR(problem.WaterPressure(3), 62.4 * (1.35 * (5 + depth) - depth), 1e-9);
    EXPECT_EQ(problem.SoilLayerCount(Right), 2);
    EXPECT_EQ(problem.SoilBottomElev(Right, 1), -5);
    EXPECT_EQ(problem.SoilBottomElev(Right, 2), NoLayerBottom);
    EXPECT_EQ(problem.SoilMoistWeight(Right, 1), 115);
    EXPECT_NEAR(problem.SoilMoistWeight(Right, 2), 125 - 62.4, 1e-9);
    EXPECT_EQ(problem.SoilLayerCount(Left), 1) << "the ground there lies in the water";
    EXPECT_NEAR(problem.SoilMoistWeight(Left, 1), 125 - 62.4, 1e-9);
    EXPECT_NEAR(problem.SoilCoefActive(Right, 2), 0.3 * 1.35, 1e-12);
    EXPECT_EQ(problem.SoilCoefActive(Left, 1), 0.3);
    EXPECT_EQ(problem.VUniformLoad(Right), 100);
    EXPECT_NEAR(problem.VLineLoad(Right, 1), 1350, 1e-9);
}

TEST(Comparison, RearActionsTimesOneAreTheSameWall) {
    RandomProblems problems(135);
    RandomKind kind;
    kind.analysis = false;
    kind.soil = RandomKind::Soil::Coefficients;
    kind.sloping = false;
    int same = 0;
    for (int n = 0; n < 80; ++n) {
        kind.water = n % 2 == 0 ? RandomKind::Water::Level : RandomKind::Water::Head;
        const Problem problem = problems.next(kind);
        Problem twin = problem;
        if (!raiseRearActions(twin, 1).empty()) {
            continue;
        }
        const SolvedWall told(problem);
        const SolvedWall changed(twin);
        if (told.results == nullptr) {
            EXPECT_EQ(changed.results, nullptr) << n;
            continue;
        }
        ASSERT_NE(changed.results, nullptr) << n;
        for (int level = 1; level <= told.results->levelCount; ++level) {
            const LevelResult& one = told.results->levels(level);
            const LevelResult& other = changed.results->levels(level);
            // A row of the grid more shifts the search by its own tolerance.
            EXPECT_NEAR(other.penetration, one.penetration, 0.01) << n;
            EXPECT_NEAR(other.diagrams.MaxMoment.value / one.diagrams.MaxMoment.value, 1, 0.002);
            ++same;
        }
    }
    EXPECT_GT(same, 30);
}

TEST(Comparison, AnAnchoredWallStandsWithoutItsAnchorAndByEitherMethod) {
    Problem problem = anchoredSand();
    problem.SurfaceElev(Left, 1) = -15;
    problem.AnchorElev = -4;
    const Comparison comparison = compared(problem);
    Problem cantilever = problem;
    cantilever.WallType = WallKind::Cantilever;
    expectSameWall(rowOf(comparison, "cantilever"), cantilever);
    const ComparedRow& told = rowOf(comparison, "as-given");
    const ComparedRow& freeRow = rowOf(comparison, "free-earth");
    const ComparedRow& fixedRow = rowOf(comparison, "fixed-earth");
    ASSERT_EQ(freeRow.levels.size(), 1U);
    ASSERT_EQ(fixedRow.levels.size(), 1U);
    EXPECT_EQ(freeRow.levels[0].method, SolutionMethod::FreeEarth);
    EXPECT_EQ(fixedRow.levels[0].method, SolutionMethod::FixedEarth);
    EXPECT_EQ(valueOf(fixedRow, Penetration), valueOf(told, Penetration, 1));
    const double share = valueOf(told, Penetration, 1) / valueOf(told, Penetration, 0);
    EXPECT_NEAR(*fixedRow.levels[0].percentOf(Penetration), 100 * (share - 1), 1e-9);
    EXPECT_FALSE(rowOf(comparison, "cantilever").levels[0].value(AnchorForce));
    EXPECT_FALSE(rowOf(comparison, "cantilever").levels[0].percentOf(AnchorForce));
}

TEST(Comparison, MethodsAndAmendmentsAreThoseOfSecondOpinions) {
    Problem level = anchoredSand();
    level.SurfaceElev(Left, 1) = -15;
    level.AnchorElev = -3;
    const Comparison byCoefficients = compared(level);
    for (const char* name : {"method-sweep", "method-fixed"}) {
        Options options = bySweep();
        ASSERT_TRUE(korvane::amend(options.amendments, name));
        expectSameWall(rowOf(byCoefficients, name), level, options);
    }
    EXPECT_EQ(rowOf(byCoefficients, "method-coefficients").reason, "that is the wall as given");

    Problem falling = level;
    falling.SurfacePointCount(Right) = 2;
    falling.SurfaceDist(Right, 2) = 40;
    falling.SurfaceElev(Right, 2) = -4;
    falling.VUniformCount(Right) = 1;
    falling.VUniformLoad(Right) = 300;
    const Comparison bySweepOfFall = compared(falling);
    for (const char* name : {"surface-limit", "surface-slope", "planes-past-horizontal"}) {
        Options options = bySweep();
        ASSERT_TRUE(korvane::amend(options.amendments, name));
        expectSameWall(rowOf(bySweepOfFall, name), falling, options);
    }
    EXPECT_NE(valueOf(rowOf(bySweepOfFall, "surface-slope"), AnchorForce),
              valueOf(rowOf(bySweepOfFall, "as-given"), AnchorForce));
    // The left side is by coefficients: a sweep there is a change.
    EXPECT_EQ(rowOf(bySweepOfFall, "method-sweep").reason, "");
}

TEST(Comparison, LayersUnderBuoyancyAreThatAmendment) {
    Problem problem = withWater(anchoredSand(), -5, -10);
    problem.SeepageKind = Seepage::Automatic;
    problem.SeepageElev = -5;
    EXPECT_EQ(reasonOf(problem, "buoyant-layers"), "no wedge side has several layers");
    problem.SurfacePointCount(Left) = 2;
    problem.SurfaceDist(Left, 2) = 100;
    problem.SurfaceElev(Left, 2) = problem.SurfaceElev(Left, 1);
    setLayerBottoms(problem, Left, {problem.SurfaceElev(Left, 1) - 3});
    Options options = bySweep();
    options.amendments.buoyantLayers = true;
    const Comparison comparison = compared(problem);
    expectSameWall(rowOf(comparison, "buoyant-layers"), problem, options);
    EXPECT_NE(valueOf(rowOf(comparison, "buoyant-layers"), AnchorForce),
              valueOf(rowOf(comparison, "as-given"), AnchorForce));
}

TEST(Comparison, EveryAmendmentHasItsRow) {
    const Comparison comparison = compared(anchoredSand());
    for (const auto& [name, amendment] : AmendmentNames) {
        EXPECT_EQ(rowOf(comparison, name).name, name);
    }
}

TEST(Comparison, WaterStandsStillAndSeeps) {
    Problem still = withWater(anchoredSand(), -5, -20);
    Problem seeping = still;
    seeping.SeepageKind = Seepage::Automatic;
    seeping.SeepageElev = -12;
    const Comparison comparison = compared(seeping);
    expectSameWall(rowOf(comparison, "hydrostatic"), still);
    Problem lower = seeping;
    lower.SeepageElev = -5; // right water below right ground
    expectSameWall(rowOf(comparison, "seepage"), lower);
    EXPECT_EQ(reasonOf(still, "hydrostatic"), "that is the wall as given");
    EXPECT_EQ(reasonOf(lower, "seepage"), "that is the wall as given");
    EXPECT_EQ(reasonOf(withWater(anchoredSand(), -20, -20), "seepage"),
              "no head drives water to the left");
    EXPECT_EQ(reasonOf(anchoredSand(), "seepage"), "no water is given by elevations");
}

TEST(Comparison, ReasonsTellWhyARowDoesNotApply) {
    const Problem sand = anchoredSand();
    const Problem given = anchoredByCoefficients(0.3, 3);
    Problem clay = sand;
    clay.SoilCohesion(Left, 1) = 10;
    Problem wedge = sand;
    wedge.SurfacePointCount(Right) = 2;
    wedge.SurfaceDist(Right, 2) = 10;
    wedge.SurfaceElev(Right, 2) = 2;
    Problem cantilever = plainCantilever();
    EXPECT_EQ(reasonOf(given, "passive-1.5"), "given coefficients take no factor of safety");
    EXPECT_EQ(reasonOf(clay, "kp-1.5"), "the soil has cohesion");
    EXPECT_EQ(reasonOf(wedge, "kp-2"), "a side is not by coefficients");
    for (const double friction : {44.4, 44.7}) {
        Problem steep = anchoredSand(30);
        setFactors(steep, 1, 1.5); // with them the table has a value
        for (const int side : {Right, Left}) {
            steep.SoilFriction(side, 1) = friction;
        }
        EXPECT_NE(SolvedWall(steep).results, nullptr) << friction;
        EXPECT_EQ(rowOf(compared(steep), "kp-1.5").reason,
                  friction < 44.5 ? ""
                                  : "at factors 1 the passive coefficient has no value: its "
                                    "table ends at 44.5 degrees");
    }
    EXPECT_EQ(reasonOf(wedge, "method-coefficients"),
              "ground, adhesion or sloping layers need a wedge");
    EXPECT_EQ(reasonOf(given, "partial-factors"),
              "a side is given by coefficients: no strengths to divide");
    EXPECT_EQ(reasonOf(sand, "rear-1.35"), "Ka of the retained side is not given");
    EXPECT_EQ(reasonOf(cantilever, "free-earth"), "the wall has no anchor");
    EXPECT_EQ(reasonOf(given, "method-fixed"), "given coefficients need no method");
    EXPECT_EQ(reasonOf(wedge, "surface-limit"), "no ground of a wedge side falls");
    EXPECT_EQ(reasonOf(sand, "surface-slope"), "no ground of a wedge side slopes");
    EXPECT_EQ(reasonOf(sand, "planes-past-horizontal"), "no side is by the sweep");
    EXPECT_EQ(reasonOf(sand, "buoyant-layers"), "no seepage is given");
    Problem water = withWater(given, -5, -10);
    water.SeepageKind = Seepage::Automatic;
    water.SeepageElev = -5;
    EXPECT_EQ(reasonOf(water, "rear-1.35"), "water that seeps is no table of pressures");
    water = withWater(given, -5, -10);
    water.SoilSatWeight(Left, 1) = 62;
    EXPECT_EQ(reasonOf(water, "rear-1.35"), "a layer weighs no more than the water");
    water.WaterDataKind = WaterData::Pressures;
    water.WaterPressCount = 2;
    water.WaterPressElev(2) = -50;
    EXPECT_EQ(reasonOf(water, "rear-1.35"),
              "the water is a table of net pressures: that behind the wall stands in none");
    Problem analysis = sand;
    analysis.ProgramMode = Mode::Analysis;
    analysis.FSKind = FactorKind::OneForBoth;
    analysis.WallBottomElev = -45;
    analysis.WallModulus = 29e6;
    analysis.WallInertia = 100;
    EXPECT_EQ(reasonOf(analysis, "factors-1.5"), "an analysis searches the factor of safety");
    EXPECT_EQ(reasonOf(analysis, "kp-1.5"), "an analysis searches the factor of safety");
    EXPECT_EQ(reasonOf(analysis, "depth-20"), "the depth of the wall is given");
    const Comparison comparison = compared(analysis);
    EXPECT_GT(valueOf(rowOf(comparison, "as-given"), FactorOfSafety), 1);
    // The tangents divided by 1.25 leave that much less to the search.
    EXPECT_NEAR(valueOf(rowOf(comparison, "partial-factors"), FactorOfSafety) * 1.25 /
                    valueOf(rowOf(comparison, "as-given"), FactorOfSafety),
                1, 0.01);
}

TEST(Comparison, AFailedWallTellsWhyAndWhatWouldStand) {
    // Clay of 450 PSF under 15 FT of 120 PCF has no depth: 4c is not above the overburden.
    Problem clay = plainCantilever();
    clay.SurfaceElev(Left, 1) = -15;
    for (const int side : {Right, Left}) {
        clay.SoilFriction(side, 1) = 0;
        clay.SoilCohesion(side, 1) = 450;
    }
    const FieldChange stronger{{ProblemField::SoilCohesion, Left, 1}, FieldChange::Kind::Set, 2000};
    const std::vector<OwnRow> own{{"stronger clay", UnitSystem::US, {stronger}}};
    Workspace workspace;
    const Options options = bySweep();
    const Comparison comparison =
        compareWall({.problem = clay, .options = options, .ownRows = &own}, workspace);
    const ComparedRow& told = rowOf(comparison, "as-given");
    EXPECT_TRUE(told.levels.empty());
    EXPECT_EQ(told.code, "no-cantilever-bottom");
    EXPECT_THAT(told.reason, testing::StartsWith("NO SOLUTION FOR CANTILEVER WALL DESIGN WITH "
                                                 "BOTTOM OF WALL DOWN TO ELEVATION "));
    EXPECT_THAT(told.reason, testing::EndsWith("(FT)"));
    const ComparedRow& row = rowOf(comparison, "stronger clay");
    EXPECT_GT(valueOf(row, Penetration), 0);
    EXPECT_FALSE(row.levels[0].percentOf(Penetration)) << "there is nothing to compare with";
}

TEST(Comparison, SoilBeyondTheTableOfPassiveCoefficientsIsToldInWords) {
    Problem problem = plainCantilever();
    problem.FSActive = problem.FSPassive = 1.5;
    for (const int side : {Right, Left}) {
        problem.SoilFriction(side, 1) = 44.8;
        problem.SoilWallFriction(side, 1) = 30;
    }
    const Comparison comparison = compared(problem);
    EXPECT_TRUE(rowOf(comparison, "as-given").code.empty());
    for (const char* name : {"factors-1", "depth-20"}) {
        EXPECT_EQ(rowOf(comparison, name).code, "run-time-error");
        EXPECT_EQ(
            rowOf(comparison, name).reason,
            "the passive coefficient has no value for a developed friction of 44.80 deg (layer "
            "1 on the right side): its table ends at 44.5 degrees");
    }
}

TEST(Comparison, ChangesThatNoFileCouldHoldAreRefusedWithTheirRule) {
    const FieldChange steep{{ProblemField::SoilFriction, Left, 1}, FieldChange::Kind::Set, 46};
    const FieldChange missing{{ProblemField::SoilFriction, Left, 2}, FieldChange::Kind::Set, 30};
    const std::vector<OwnRow> own{{"steep", UnitSystem::US, {steep}},
                                  {"missing", UnitSystem::US, {missing}}};
    Workspace workspace;
    const Problem problem = anchoredSand();
    const Options options = bySweep();
    const Comparison comparison =
        compareWall({.problem = problem, .options = options, .ownRows = &own}, workspace);
    EXPECT_EQ(rowOf(comparison, "steep").code, "invalid-problem");
    EXPECT_EQ(rowOf(comparison, "steep").reason,
              "SoilFriction of left side, entry 1, is 46 and must be at most 45");
    EXPECT_EQ(rowOf(comparison, "missing").code, "not-applicable");
    EXPECT_EQ(rowOf(comparison, "missing").reason,
              "SoilFriction.left.2: the wall has 1 entry on its left side");
}

TEST(Comparison, OwnRowsTakeAmendments) {
    Problem problem = plainCantilever();
    problem.SurfacePointCount(Right) = 2;
    problem.SurfaceDist(Right, 2) = 40;
    problem.SurfaceElev(Right, 2) = 20;
    problem.VUniformCount(Right) = 1;
    problem.VUniformLoad(Right) = 500;
    const FieldChange load{{ProblemField::VUniformLoad, Right, 1}, FieldChange::Kind::Set, 600};
    const std::vector<OwnRow> own{
        {.name = "slope", .amendments = {.surfaceSlope = true}},
        {.name = "slope and load", .changes = {load}, .amendments = {.surfaceSlope = true}}};
    Workspace workspace;
    Options options = bySweep();
    const Comparison comparison =
        compareWall({.problem = problem, .options = options, .ownRows = &own}, workspace);
    options.amendments.surfaceSlope = true;
    expectSameWall(rowOf(comparison, "slope"), problem, options);
    problem.VUniformLoad(Right) = 600;
    expectSameWall(rowOf(comparison, "slope and load"), problem, options);
    EXPECT_NE(valueOf(rowOf(comparison, "slope"), Penetration),
              valueOf(rowOf(comparison, "as-given"), Penetration));
}

TEST(Comparison, OwnRowsTakeTheUnitsOfTheInputUnlessTheyNameOthers) {
    const FieldChange top{{ProblemField::AnchorElev, Right, 1}, FieldChange::Kind::Add, 0.3048};
    const std::vector<OwnRow> own{{"as input", std::nullopt, {top}},
                                  {"in feet", UnitSystem::US, {top}}};
    Workspace workspace;
    Problem problem = anchoredSand();
    const Options options = bySweep();
    const Comparison comparison = compareWall(
        {.problem = problem, .options = options, .ownRows = &own, .units = UnitSystem::SI},
        workspace);
    Problem changed = problem;
    changed.AnchorElev = -9; // one FT up
    expectSameWall(rowOf(comparison, "as input"), changed);
    changed.AnchorElev = -10 + 0.3048;
    expectSameWall(rowOf(comparison, "in feet"), changed);
}

TEST(Comparison, EndsWhereItIsCancelled) {
    Workspace workspace;
    const Problem problem = anchoredSand();
    const Options options = bySweep();
    int last = 0;
    const ComparisonProgress stop = [&last](int done, int total) {
        EXPECT_EQ(done, last + 1);
        EXPECT_EQ(total, static_cast<int>(factorRows().size() + wallRows().size()));
        last = done;
        return done < 3;
    };
    const Comparison part = compareWall({.problem = problem, .options = options}, workspace, stop);
    EXPECT_TRUE(part.cancelled);
    EXPECT_EQ(part.rows.size(), 3U);
    EXPECT_FALSE(compared(problem).cancelled);
}

TEST(Comparison, RowsOfRandomWallsHaveResultsOrAReason) {
    RandomProblems problems(14);
    std::set<std::string> solved;
    for (int n = 0; n < 24; ++n) {
        const Problem problem = problems.next();
        const Comparison comparison = compared(problem);
        ASSERT_EQ(comparison.rows.size(), factorRows().size() + wallRows().size());
        const ComparedRow& told = comparison.rows.front();
        std::set<std::string> names;
        for (const ComparedRow& row : comparison.rows) {
            EXPECT_TRUE(names.insert(row.name).second) << row.name;
            EXPECT_EQ(row.code.empty(), row.reason.empty()) << row.name;
            EXPECT_TRUE(!row.levels.empty() || !row.reason.empty()) << row.name;
            for (std::size_t level = 0; level < row.levels.size(); ++level) {
                solved.insert(row.name);
                const double depth = *row.levels[level].value(Penetration);
                if (level < told.levels.size() && *told.levels[level].value(Penetration) > 0) {
                    const double before = *told.levels[level].value(Penetration);
                    EXPECT_NEAR(*row.levels[level].percentOf(Penetration),
                                100 * (depth / before - 1), 1e-6);
                }
            }
        }
    }
    EXPECT_GE(solved.size(), 20U) << "most kinds of rows have been seen";
}

} // namespace korvane::test
