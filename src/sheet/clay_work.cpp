#include "sheet/clay_work.h"

#include "rowe/reduction_tables.h"
#include "sheet/soil_work.h"
#include "state/tolerances.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace korvane::sheet {

namespace {

constexpr std::array<double, 3> Places{-3.1, -2.6, -2.0};
constexpr std::array<double, 3> Alphas{0.8, 0.7, 0.6};
constexpr std::array<double, 6> Stabilities{0.5, 0.75, 1.0, 1.25, 1.5, 2.0};

/// Soil of one effective weight.
struct Stretch {
    double height = 0; ///< FT
    double weight = 0; ///< PCF
};

/// PCF: the effective weight of the right side's soil below a row.
double weightBelow(const Problem& problem, const PressureStage& stage, int layer, double elev) {
    if (problem.WaterDataKind != WaterData::Elevations || elev > problem.WaterElev(Right)) {
        return problem.SoilMoistWeight(Right, layer);
    }
    const bool seeps = problem.SeepageKind != Seepage::None && elev <= problem.SeepageElev &&
                       elev > stage.seepageEnd;
    const double share = seeps ? 1 - stage.gradient : 1;
    return problem.SoilSatWeight(Right, layer) - share * problem.WaterUnitWeight;
}

/// The right side down to the left surface, from row to row of the solution: what a row has counts
/// down to the next, and elevations that share a row change there together.
std::vector<Stretch> overburdenStretches(const Problem& problem, const PressureStage& stage,
                                         const ElevationGrid& rows) {
    const double bottom = problem.SurfaceElev(Left, 1);
    std::vector<Stretch> stretches;
    int layer = 1;
    for (int i = 1; i < rows.NumElevs && rows.ElevGrid(i) > bottom; ++i) {
        const double elev = rows.ElevGrid(i);
        if (elev > problem.SurfaceElev(Right, 1)) {
            continue;
        }
        const bool ends = layer < problem.SoilLayerCount(Right) &&
                          std::abs(elev - problem.SoilBottomElev(Right, layer)) <= SameElevation;
        layer += ends ? 1 : 0;
        const double weight = weightBelow(problem, stage, layer, elev);
        if (stretches.empty() || stretches.back().weight != weight) {
            stretches.push_back({0, weight});
        }
        stretches.back().height += elev - std::max(rows.ElevGrid(i + 1), bottom);
    }
    return stretches;
}

Expr overburden(const Problem& problem, const PressureStage& stage, const ElevationGrid& rows) {
    const bool loaded = problem.VUniformCount(Right) != 0;
    Expr sum = term("q", "", loaded ? problem.VUniformLoad(Right) : 0, Quantity::Stress);
    int number = 0;
    for (const Stretch& stretch : overburdenStretches(problem, stage, rows)) {
        const std::string index = std::to_string(++number);
        sum = sum + term("h", index, stretch.height, Quantity::Length) *
                        term("γ", index, stretch.weight, Quantity::UnitWeight);
    }
    return sum;
}

/// Mean over the depth of the wall in the left side's soil; `ofLayer` gives a layer's value.
Expr meanInFront(const Problem& problem, double bottom, const char* letter,
                 const std::function<double(int)>& ofLayer) {
    const double surface = problem.SurfaceElev(Left, 1);
    Expr sum = 0.0;
    double top = surface;
    for (int layer = 1; layer <= problem.SoilLayerCount(Left) && top > bottom; ++layer) {
        const bool last = layer == problem.SoilLayerCount(Left);
        const double end = last ? bottom : std::max(bottom, problem.SoilBottomElev(Left, layer));
        const std::string number = std::to_string(layer);
        const Expr part = term(letter, number, ofLayer(layer), Quantity::Stress) *
                          term("d", number, top - end, Quantity::Length);
        sum = layer == 1 ? part : sum + part;
        top = end;
    }
    return sum / term("D", "", surface - bottom, Quantity::Length);
}

/// Lagrange's polynomial through the six points of a row. The method's factor of the fifth point
/// has 1.75 where its rule would have 0.75.
double throughSixPoints(const double (&row)[6], double S) {
    constexpr std::size_t fifth = 4;
    double sum = 0;
    for (std::size_t i = 0; i < Stabilities.size(); ++i) {
        double part = row[i];
        for (std::size_t j = 0; j < Stabilities.size(); ++j) {
            if (j != i) {
                const double zero = i == fifth && j == 1 ? 1.75 : Stabilities[j];
                part *= (S - zero) / (Stabilities[i] - Stabilities[j]);
            }
        }
        sum += part;
    }
    return sum;
}

double straight(double from, double to, double share) {
    return from + (to - from) * share;
}

/// The value of a row at S; the lines and constants are the method's own.
double atStability(std::size_t curve, std::size_t row, double S) {
    const auto& T = RoweClayTable[curve][row];
    if (S >= 2) {
        return T[5];
    }
    if (S >= 1.5) {
        return curve == 2 && row > 0 ? T[5] : straight(T[4], T[5], (S - 1.5) / 0.5);
    }
    if (curve == 1 && row == 0) {
        return straight(T[0], T[3], (S - 1.25) / 0.75);
    }
    return throughSixPoints(T, S);
}

/// The weight of the n-th of three points at x; that of the middle one has the other sign.
Expr weightOf(const std::array<double, 3>& points, std::size_t n, const Expr& x) {
    const double a = points[(n + 1) % 3];
    const double b = points[(n + 2) % 3];
    return (x - Expr(a)) * (x - Expr(b)) / Expr(std::abs((points[n] - a) * (points[n] - b)));
}

} // namespace

ClayStability clayStability(const SheetRequest& request, const PressureStage& stage,
                            double bottom) {
    const Problem& problem = request.problem;
    const Results& results = *request.solved.results;
    const Expr p = overburden(problem, stage, results.levels(results.levelCount).solved.grid);
    const Expr c = meanInFront(problem, bottom, "c", [&](int layer) {
        return layerWork(problem, Left, layer, 0).cohesionPassive;
    });
    const Expr a = meanInFront(problem, bottom, "a",
                               [&](int layer) { return problem.SoilAdhesion(Left, layer); });
    const auto stress = [](const char* letter, const Expr& value) {
        return term(letter, "", value.value(), Quantity::Stress);
    };
    return {p, c, a,
            stress("c", c) / stress("p", p) * root(Expr(1) + stress("a", a) / stress("c", c))};
}

std::array<ClayCurve, 3> clayCurves(double stability, double alpha) {
    std::array<ClayCurve, 3> curves;
    for (std::size_t n = 0; n < curves.size(); ++n) {
        curves[n].place = Places[n];
        for (std::size_t row = 0; row < Alphas.size(); ++row) {
            curves[n].atAlpha[row] = atStability(n, row, stability);
            curves[n].value += curves[n].atAlpha[row] * weightOf(Alphas, row, alpha).value();
        }
    }
    return curves;
}

Expr clayCoefficient(const std::array<ClayCurve, 3>& curves, double x) {
    const Expr place = term("x", "", x);
    Expr sum = 0.0;
    for (std::size_t n = 0; n < curves.size(); ++n) {
        const Expr part =
            weightOf(Places, n, place) * term("r", std::to_string(n + 1), curves[n].value);
        sum = n == 0 ? part : sum + part;
    }
    return sum;
}

} // namespace korvane::sheet
