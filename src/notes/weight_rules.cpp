// Rules on unit weights and water.
#include "notes/rules.h"

#include <algorithm>
#include <cmath>

namespace korvane {

namespace {

constexpr double LeastWaterWeight = 62; ///< PCF; fresh water weighs 62.4
constexpr double MostWaterWeight = 65;  ///< PCF; sea water weighs 64.0 (likewise)
constexpr double MetricWeight = 30;     ///< PCF; no soil is lighter, kN/m3 and t/m3 are
constexpr double LeastSoilWeight = 80;  ///< PCF, light organic soil (NAVFAC DM 7.01, 1986)
constexpr double MostSoilWeight = 160;  ///< PCF, dense gravel saturated (likewise)

bool hasWaterLevels(const Problem& problem) {
    return problem.WaterDataKind == WaterData::Elevations;
}

/// True where some of a layer stands above the water of its side.
bool usesMoist(const Problem& problem, int side, int layer) {
    return !hasWaterLevels(problem) || layerTop(problem, side, layer) > problem.WaterElev(side);
}

/// True where some of a layer stands below the water of its side.
bool usesSaturated(const Problem& problem, int side, int layer) {
    return hasWaterLevels(problem) && problem.SoilBottomElev(side, layer) < problem.WaterElev(side);
}

/// One unit weight of a layer that the methods use.
struct Weight {
    int side = 0;
    int layer = 0;
    bool saturated = false;
    double value = 0; ///< PCF
};

template <class Look>
void forEachWeight(const Problem& problem, Look look) {
    for (const int side : {Right, Left}) {
        for (int layer = 1; layer <= problem.SoilLayerCount(side); ++layer) {
            if (usesMoist(problem, side, layer)) {
                look(Weight{side, layer, false, problem.SoilMoistWeight(side, layer)});
            }
            if (usesSaturated(problem, side, layer)) {
                look(Weight{side, layer, true, problem.SoilSatWeight(side, layer)});
            }
        }
    }
}

/// Those in use, and those that are given beside them: a unit is typed wrong in both.
template <class Look>
void forEachGivenWeight(const Problem& problem, Look look) {
    for (const int side : {Right, Left}) {
        for (int layer = 1; layer <= problem.SoilLayerCount(side); ++layer) {
            const double moist = problem.SoilMoistWeight(side, layer);
            const double saturated = problem.SoilSatWeight(side, layer);
            if (moist > 0 || usesMoist(problem, side, layer)) {
                look(Weight{side, layer, false, moist});
            }
            if (saturated > 0 || usesSaturated(problem, side, layer)) {
                look(Weight{side, layer, true, saturated});
            }
        }
    }
}

/// The weight that lies farthest outside, with the number of all that do.
struct Worst {
    Weight weight;
    double outside = 0; ///< PCF
    int count = 0;

    void see(const Weight& seen, double by) {
        if (by <= 0) {
            return;
        }
        ++count;
        if (by > outside) {
            outside = by;
            weight = seen;
        }
    }
};

std::string others(int count) {
    return count > 1 ? " (the worst of " + std::to_string(count) + ")" : "";
}

Note weightNote(const Wall& wall, const Worst& worst, double limit, const std::string& remark) {
    const Weight& weight = worst.weight;
    return {.side = weight.side,
            .layer = weight.layer,
            .quantity = Quantity::UnitWeight,
            .value = weight.value,
            .limit = limit,
            .text = std::string("The ") + (weight.saturated ? "saturated" : "moist") +
                    " weight of layer " + std::to_string(weight.layer) + " on the " +
                    sideText(weight.side) + " is " + wall.say(Quantity::UnitWeight, weight.value) +
                    others(worst.count) + remark};
}

void lookAtWaterWeight(const Wall& wall, NoteSink& notes) {
    const double weight = wall.problem.WaterUnitWeight;
    if (!hasWaterLevels(wall.problem) ||
        (weight >= LeastWaterWeight && weight <= MostWaterWeight)) {
        return;
    }
    notes.add({.quantity = Quantity::UnitWeight,
               .value = weight,
               .limit = weight < LeastWaterWeight ? LeastWaterWeight : MostWaterWeight,
               .text = "Water weighs " + wall.say(Quantity::UnitWeight, weight) +
                       " here; fresh water weighs " + wall.say(Quantity::UnitWeight, 62.4) +
                       " and sea water " + wall.say(Quantity::UnitWeight, 64.0) + "."});
}

void lookForMetricWeights(const Wall& wall, NoteSink& notes) {
    Worst worst;
    forEachGivenWeight(wall.problem, [&](const Weight& weight) {
        worst.see(weight, MetricWeight - weight.value);
    });
    if (worst.count > 0) {
        notes.add(weightNote(wall, worst, MetricWeight,
                             ", which no soil weighs: it looks like a value in other units, "
                             "metric ones perhaps."));
    }
}

void lookAtSoilWeights(const Wall& wall, NoteSink& notes) {
    Worst worst;
    forEachWeight(wall.problem, [&](const Weight& weight) {
        if (weight.value >= MetricWeight) {
            worst.see(weight,
                      std::max(LeastSoilWeight - weight.value, weight.value - MostSoilWeight));
        }
    });
    if (worst.count > 0) {
        const bool light = worst.weight.value < LeastSoilWeight;
        notes.add(weightNote(wall, worst, light ? LeastSoilWeight : MostSoilWeight,
                             light ? ", less than soils weigh." : ", more than soils weigh."));
    }
}

void lookForHeavyMoistWeights(const Wall& wall, NoteSink& notes) {
    const Problem& problem = wall.problem;
    Worst worst;
    for (const int side : {Right, Left}) {
        for (int layer = 1; layer <= problem.SoilLayerCount(side); ++layer) {
            const double moist = problem.SoilMoistWeight(side, layer);
            const double saturated = problem.SoilSatWeight(side, layer);
            if (saturated > 0) {
                worst.see({side, layer, false, moist}, moist - saturated);
            }
        }
    }
    if (worst.count > 0) {
        const double saturated = problem.SoilSatWeight(worst.weight.side, worst.weight.layer);
        notes.add(weightNote(wall, worst, saturated,
                             ", more than its saturated weight of " +
                                 wall.say(Quantity::UnitWeight, saturated) + "."));
    }
}

void lookForWater(const Wall& wall, NoteSink& notes) {
    if (wall.problem.WaterDataKind == WaterData::None) {
        notes.add({.text = "No water is given: the wall is solved dry, and the saturated weights "
                           "are not used."});
    }
}

void lookForSaturatedWeights(const Wall& wall, NoteSink& notes) {
    const Problem& problem = wall.problem;
    for (const int side : {Right, Left}) {
        for (int layer = 1; layer <= problem.SoilLayerCount(side); ++layer) {
            const double saturated = problem.SoilSatWeight(side, layer);
            const double moist = problem.SoilMoistWeight(side, layer);
            if (problem.WaterDataKind == WaterData::Pressures && saturated > 0 &&
                saturated != moist) {
                notes.add({.side = side,
                           .layer = layer,
                           .quantity = Quantity::UnitWeight,
                           .value = saturated,
                           .limit = moist,
                           .text = "Water is given as net pressures: all soil keeps its moist "
                                   "weight, without buoyancy, and the saturated weights are not "
                                   "used."});
                return;
            }
        }
    }
}

constexpr NoteRule Rules[] = {
    {"water-weight", Severity::Unsafe, Needs::Input, lookAtWaterWeight,
     "ASCE, Design of Sheet Pile Walls, 1996"},
    {"metric-weight", Severity::Unsafe, Needs::Input, lookForMetricWeights,
     "Terzaghi, Peck and Mesri, Soil Mechanics in Engineering Practice, 1996"},
    {"unit-weight", Severity::Caution, Needs::Input, lookAtSoilWeights,
     "NAVFAC DM 7.01, Soil Mechanics, 1986"},
    {"moist-above-saturated", Severity::Caution, Needs::Input, lookForHeavyMoistWeights,
     "phase relations: filling the pores with water adds weight"},
    {"no-water", Severity::Remark, Needs::Input, lookForWater,
     "ASCE, Design of Sheet Pile Walls, 1996"},
    {"saturated-weight", Severity::Remark, Needs::Input, lookForSaturatedWeights,
     "ASCE, Design of Sheet Pile Walls, 1996"},
};

} // namespace

std::span<const NoteRule> weightRules() {
    return Rules;
}

} // namespace korvane
