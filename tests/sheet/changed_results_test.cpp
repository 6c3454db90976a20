// Checks that can fail: results that are changed by a thousandth before the sheet is made.
#include "sheet_bench.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace korvane::test {
namespace {

constexpr double Thousandth = 1.001;

/// True where the change makes a check fail whose name begins as told.
bool isFound(const SheetBench& bench, const std::string& what) {
    const std::vector<Check> checks = bench.sheet().checks;
    return std::any_of(checks.begin(), checks.end(), [&](const Check& check) {
        return !check.pass && check.what.starts_with(what);
    });
}

/// Changes a value, looks, and puts the value back.
bool isFoundAfter(SheetBench& bench, double& value, const std::string& what) {
    const double kept = value;
    value *= Thousandth;
    const bool found = isFound(bench, what);
    value = kept;
    return found;
}

SheetBench example(const std::string& name) {
    return SheetBench(readWall(examplePath(name)));
}

TEST(ChangedResults, ACoefficientIsFoundOnEachSideAndLevel) {
    SheetBench bench = example("anchored-layered-water");
    for (int level = 1; level <= bench.results->levelCount; ++level) {
        for (const int side : {Right, Left}) {
            for (int layer = 1; layer <= bench.problem.SoilLayerCount(side); ++layer) {
                DevelopedLayer& developed = bench.results->levels(level).layers(side, layer);
                EXPECT_TRUE(isFoundAfter(bench, developed.Ka, "Ka, "));
                EXPECT_TRUE(isFoundAfter(bench, developed.Kp, "Kp, "));
                EXPECT_TRUE(isFoundAfter(bench, developed.frictionPassive, "Developed friction"));
            }
            for (StressInterval& interval :
                 bench.results->levels(level).details.sides(side).stresses) {
                EXPECT_TRUE(isFoundAfter(bench, interval.Ka, "Ka of the pressures"));
                EXPECT_TRUE(isFoundAfter(bench, interval.Kp, "Kp of the pressures"));
            }
        }
    }
    EXPECT_EQ(failedChecks(bench.sheet()), "");
}

TEST(ChangedResults, AGivenCoefficientIsFound) {
    SheetBench bench = example("cantilever-coefficients");
    DevelopedLayer& layer = bench.results->levels(1).layers(Right, 1);
    EXPECT_TRUE(isFoundAfter(bench, layer.Ka, "Ka, "));
    EXPECT_TRUE(isFoundAfter(bench, layer.Kp, "Kp, "));
}

TEST(ChangedResults, AWaterPressureIsFoundInEachRow) {
    for (const char* name : {"anchored-layered-water", "cantilever-water-seepage"}) {
        SheetBench bench = example(name);
        for (int level = 1; level <= bench.results->levelCount; ++level) {
            LevelResult& result = bench.results->levels(level);
            for (int i = 2; i < result.bottomIndex - 2; i += 3) {
                double& pressure = result.solved.pressures.WaterPressures(i, 1);
                if (pressure != 0 && result.solved.grid.ElevGrid(i) > result.transitionElev) {
                    EXPECT_TRUE(isFoundAfter(bench, pressure, "Water pressure"))
                        << name << " row " << i;
                }
            }
        }
    }
}

TEST(ChangedResults, ASurchargeIsFound) {
    SheetBench bench = example("anchored-all-loads");
    for (int level = 1; level <= bench.results->levelCount; ++level) {
        SurchargeShares& shares = bench.results->levels(level).details.sides(Right).surcharges;
        ASSERT_GE(shares.loads.size(), 5U);
        for (SurchargeShare& share : shares.loads) {
            const auto largest = std::max_element(share.pressure.begin(), share.pressure.end());
            EXPECT_TRUE(isFoundAfter(bench, *largest, ""));
            EXPECT_TRUE(isFoundAfter(bench, share.pressure.at(6), ""));
        }
        EXPECT_TRUE(isFoundAfter(bench, shares.sum.at(10), "Sum of surcharges"));
        double& inDiagram = bench.results->levels(level).solved.pressures.SurchargePressures(
            Right, shares.firstRow + 5);
        EXPECT_TRUE(isFoundAfter(bench, inDiagram, "Surcharge diagram"));
    }
}

TEST(ChangedResults, APressureInForceIsFound) {
    SheetBench bench = example("anchored-sand");
    Pressures& pressures = bench.results->levels(1).solved.pressures;
    EXPECT_TRUE(isFoundAfter(bench, pressures.ActivePressures(Right, 8, 1), "Active pressure"));
    EXPECT_TRUE(isFoundAfter(bench, pressures.PassivePressures(Right, 8, 1), "Passive pressure"));
    EXPECT_TRUE(isFoundAfter(bench, bench.results->levels(1).solved.NetActive(8, 1),
                             "Net active pressure"));
}

TEST(ChangedResults, WhatSectionsComeToIsFound) {
    SheetBench anchored = example("anchored-sand");
    for (const int level : {1, 2}) {
        const std::string method = level == 1 ? "free earth: " : "fixed earth: ";
        ResultDiagrams& rows = anchored.results->levels(level).diagrams;
        for (const char* what : {"section modulus required", "stress of sections",
                                 "allowable over present stress of sections"}) {
            EXPECT_TRUE(isFoundAfter(anchored, rows.MaxMoment.value, method + what));
        }
        EXPECT_TRUE(isFoundAfter(anchored, rows.MaxDeflection.value,
                                 method + "largest deflection of sections"));
    }
    EXPECT_EQ(failedChecks(anchored.sheet()), "");
    SheetBench cantilever = example("cantilever-dry-sand");
    ResultDiagrams& rows = cantilever.results->levels(1).diagrams;
    EXPECT_TRUE(isFoundAfter(cantilever, rows.MaxMoment.value, "stress of sections"));
    EXPECT_TRUE(isFoundAfter(cantilever, rows.MaxDeflection.value, "largest deflection of"));
}

TEST(ChangedResults, WedgeForcesWeightsAndPressuresAreFound) {
    for (const char* name : {"sloping-backfill-sweep", "anchored-adhesion"}) {
        SheetBench bench = example(name);
        const int side =
            bench.review->SideMethod(Right) == PressureMethod::Coefficients ? Left : Right;
        WedgeDetails& wedge = bench.results->levels(1).details.sides(side).wedge;
        WedgeRow& row = wedge.rows.at(4);
        ASSERT_TRUE(row.active.found && row.passive.found);
        EXPECT_TRUE(isFoundAfter(bench, row.active.force, "Active force")) << name;
        EXPECT_TRUE(isFoundAfter(bench, row.passive.force, "Passive force")) << name;
        WedgePiece& piece = wedge.pieces.at(static_cast<std::size_t>(row.active.firstPiece));
        EXPECT_TRUE(isFoundAfter(bench, piece.soil, "Weight of the soil")) << name;
        EXPECT_TRUE(isFoundAfter(bench, wedge.pressures.at(4).passiveBefore(1),
                                 "Passive pressure from forces"))
            << name;
        EXPECT_TRUE(isFoundAfter(bench, wedge.pressures.at(4).effective, "Effective stress"))
            << name;
    }
}

// ---- every example ----

/// A result and what it is.
struct Changeable {
    std::string name;
    double* value;
};
using List = std::vector<Changeable>;

/// Calls `listOf` for each level of each example and changes each result that it lists; gives in
/// how many examples there was one.
int changeInExamples(const std::function<List(SheetBench&, LevelResult&)>& listOf) {
    int examples = 0;
    for (const std::string& file : exampleFiles()) {
        SheetBench bench(readWall(file));
        bool any = false;
        for (int level = 1; level <= bench.results->levelCount; ++level) {
            for (const auto& [name, value] : listOf(bench, bench.results->levels(level))) {
                any = true;
                EXPECT_TRUE(isFoundAfter(bench, *value, ""))
                    << file << ", level " << level << ": " << name << " " << *value;
            }
        }
        examples += any ? 1 : 0;
    }
    return examples;
}

TEST(ChangedResults, NoCoefficientOfAnyExampleEscapes) {
    const auto coefficients = [](SheetBench& bench, LevelResult& level) {
        List list;
        for (const int side : {Right, Left}) {
            SideDetails& details = level.details.sides(side);
            if (bench.review->SideMethod(side) != PressureMethod::Coefficients) {
                if (details.wedge.surface.used) {
                    list.push_back({"Ka at the surface", &details.wedge.surface.Ka});
                    list.push_back({"Kp at the surface", &details.wedge.surface.Kp});
                }
                continue;
            }
            for (int layer = 1; layer <= bench.problem.SoilLayerCount(side); ++layer) {
                list.push_back({"Ka", &level.layers(side, layer).Ka});
                list.push_back({"Kp", &level.layers(side, layer).Kp});
            }
            for (StressInterval& interval : details.stresses) {
                list.push_back({"Ka of an interval", &interval.Ka});
                list.push_back({"Kp of an interval", &interval.Kp});
            }
        }
        return list;
    };
    EXPECT_GE(changeInExamples(coefficients), 12);
}

TEST(ChangedResults, NoWaterPressureOfAnyExampleEscapes) {
    const auto pressures = [](SheetBench&, LevelResult& level) {
        List list;
        for (int i = 1; i < level.bottomIndex; i += 3) {
            for (const int k : {1, 2}) {
                double& pressure = level.solved.pressures.WaterPressures(i, k);
                if (pressure != 0) {
                    list.push_back({"row " + std::to_string(i), &pressure});
                }
            }
        }
        return list;
    };
    EXPECT_GE(changeInExamples(pressures), 4);
}

TEST(ChangedResults, NoSurchargeOfAnyExampleEscapes) {
    const auto surcharges = [](SheetBench&, LevelResult& level) {
        List list;
        for (const int side : {Right, Left}) {
            SurchargeShares& shares = level.details.sides(side).surcharges;
            for (SurchargeShare& share : shares.loads) {
                list.push_back({"share of a load",
                                &*std::max_element(share.pressure.begin(), share.pressure.end())});
            }
            for (std::size_t row = 1; row < shares.sum.size(); row += 5) {
                const std::string name = "row " + std::to_string(row);
                double& inDiagram = level.solved.pressures.SurchargePressures(
                    side, shares.firstRow + static_cast<int>(row));
                list.push_back({"sum, " + name, &shares.sum[row]});
                if (shares.firstRow + static_cast<int>(row) < level.bottomIndex) {
                    list.push_back({"diagram, " + name, &inDiagram});
                }
            }
        }
        return list;
    };
    EXPECT_GE(changeInExamples(surcharges), 1);
}

TEST(ChangedResults, NoAnchorForceOfAnyExampleEscapes) {
    const auto forces = [](SheetBench&, LevelResult& level) {
        return level.anchorForce != 0 ? List{{"anchor force", &level.anchorForce}} : List();
    };
    EXPECT_GE(changeInExamples(forces), 6);
}

TEST(ChangedResults, NoMomentOfAnyExampleEscapes) {
    const auto moments = [](SheetBench&, LevelResult& level) {
        ResultDiagrams& rows = level.diagrams;
        List list{{"largest moment", &rows.MaxMoment.value}};
        for (int r = 2; r < rows.RowCount; r += 8) {
            constexpr double tiny = 1e-5; // share of the largest: what is left of zero
            if (std::fabs(rows.ResultMoment(r)) > tiny * std::fabs(rows.MaxMoment.value)) {
                list.push_back({"row " + std::to_string(r), &rows.ResultMoment(r)});
            }
        }
        return list;
    };
    EXPECT_EQ(changeInExamples(moments), static_cast<int>(exampleFiles().size()));
}

} // namespace
} // namespace korvane::test
