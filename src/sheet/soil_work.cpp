#include "sheet/soil_work.h"

#include "pressures/passive_tables.h"

#include <cmath>

namespace korvane::sheet {

namespace {

/// Radians: wall friction of half the soil's takes Coulomb's plane whatever the last digit.
constexpr double SameAngle = 1e-9;

double developed(double degrees, double factor) {
    return arctangent(tangent(degrees) / factor).value();
}

LayerFactor chosen(double ofLayer, double ofSide, double ofWall) {
    return ofLayer > 0  ? LayerFactor{ofLayer, FactorSource::Layer}
           : ofSide > 0 ? LayerFactor{ofSide, FactorSource::Side}
                        : LayerFactor{ofWall, FactorSource::Control};
}

bool takesCurvedTable(double friction, double wallFriction) {
    return (2 * wallFriction - friction) * DegreesToRadians > SameAngle;
}

void developStrengths(const Problem& problem, int side, int layer, LayerWork& work) {
    const double friction = problem.SoilFriction(side, layer);
    const double wallFriction = problem.SoilWallFriction(side, layer);
    const double cohesion = problem.SoilCohesion(side, layer);
    const double adhesion = problem.SoilAdhesion(side, layer);
    work.frictionActive = developed(friction, work.active.value);
    work.frictionPassive = developed(friction, work.passive.value);
    work.wallFrictionActive = developed(wallFriction, work.active.value);
    work.wallFrictionPassive = developed(wallFriction, work.passive.value);
    work.cohesionActive = cohesion / work.active.value;
    work.cohesionPassive = cohesion / work.passive.value;
    work.adhesionActive = adhesion / work.active.value;
    work.adhesionPassive = adhesion / work.passive.value;
}

} // namespace

LayerFactor activeFactor(const Problem& problem, int side, int layer, double searched) {
    if (problem.ProgramMode == Mode::Analysis && problem.FSKind == FactorKind::OneForBoth) {
        return {searched, FactorSource::Search};
    }
    return chosen(problem.SoilFSActive(side, layer), problem.Level2FSActive(side),
                  problem.FSActive);
}

LayerFactor passiveFactor(const Problem& problem, int side, int layer, double searched) {
    if (problem.ProgramMode == Mode::Analysis) {
        return {searched, FactorSource::Search};
    }
    return chosen(problem.SoilFSPassive(side, layer), problem.Level2FSPassive(side),
                  problem.FSPassive);
}

const char* factorSourceText(FactorSource source) {
    switch (source) {
    case FactorSource::Layer:
        return "of the layer";
    case FactorSource::Side:
        return "of the side";
    case FactorSource::Control:
        return "of the wall";
    case FactorSource::Search:
        return "found";
    }
    return "";
}

LayerWork layerWork(const Problem& problem, int side, int layer, double searched) {
    LayerWork work;
    work.active = activeFactor(problem, side, layer, searched);
    work.passive = passiveFactor(problem, side, layer, searched);
    work.given = problem.SoilDataKind(side) == SoilData::Coefficients;
    if (work.given) {
        work.Ka = problem.SoilCoefActive(side, layer);
        work.Kp = problem.SoilCoefPassive(side, layer);
        work.KpSource = CoefficientSource::Given;
        return work;
    }
    if (!(work.active.value > 0) || !(work.passive.value > 0)) {
        return work;
    }
    developStrengths(problem, side, layer, work);
    work.Ka = coulombCoefficient(work.frictionActive, work.wallFrictionActive, 1).value();
    if (takesCurvedTable(work.frictionPassive, work.wallFrictionPassive)) {
        if (std::nearbyint(work.frictionPassive) >= KpTable.back().degrees) {
            return work; // beyond the table
        }
        const CurvedCoefficient curved =
            curvedCoefficient(work.frictionPassive, work.wallFrictionPassive);
        work.Kp = curvedSteps(curved, work.frictionPassive, work.wallFrictionPassive).Kp.value();
        work.KpSource = CoefficientSource::CurvedTable;
    } else {
        work.Kp = coulombCoefficient(work.frictionPassive, work.wallFrictionPassive, -1).value();
        work.KpSource = CoefficientSource::Coulomb;
    }
    return work;
}

Expr coulombCoefficient(const Expr& friction, const Expr& wallFriction, int sign) {
    const Expr under = root(sine(friction + wallFriction) * sine(friction) / cosine(wallFriction));
    const Expr divisor = sign > 0 ? Expr(1) + under : Expr(1) - under;
    return power(cosine(friction), 2) / (cosine(wallFriction) * power(divisor, 2));
}

CurvedCoefficient curvedCoefficient(double friction, double wallFriction) {
    CurvedCoefficient curved;
    std::size_t row = 1;
    while (row + 1 < KpTable.size() && friction > KpTable[row].degrees) {
        ++row;
    }
    curved.upperAngle = KpTable[row - 1].degrees;
    curved.upperKp = KpTable[row - 1].KpTableValue;
    curved.lowerAngle = KpTable[row].degrees;
    curved.lowerKp = KpTable[row].KpTableValue;

    curved.ratio = wallFriction / friction;
    const std::size_t low = curved.ratio >= 0.7 ? 2 : curved.ratio <= 0.6 ? 0 : 1;
    const KpReductionRow& lowRow = KpReductionTable[low];
    const KpReductionRow& highRow = KpReductionTable[low + 1];
    curved.lowRatio = lowRow.KpReductionRatio;
    curved.highRatio = highRow.KpReductionRatio;

    constexpr double firstColumn = 10;
    constexpr int columnWidth = 5;
    // The columns follow from the angle taken to the nearest whole degree.
    const int whole = static_cast<int>(std::nearbyint(friction));
    const bool below = friction <= firstColumn;
    const int column = below ? 2 : whole / columnWidth;
    curved.angle1 = below ? 0 : columnWidth * column;
    curved.angle2 = below ? firstColumn : columnWidth * (column + 1);
    if (!below) {
        const auto first = static_cast<std::size_t>(column - 2);
        curved.low1 = lowRow.KpReduction.at(first);
        curved.high1 = highRow.KpReduction.at(first);
    }
    const auto second = static_cast<std::size_t>(below ? 0 : column - 1);
    curved.low2 = lowRow.KpReduction.at(second);
    curved.high2 = highRow.KpReduction.at(second);
    return curved;
}

CurvedSteps curvedSteps(const CurvedCoefficient& curved, double friction, double wallFriction) {
    const Expr phi = term("φ", "p", friction, Quantity::Angle);
    const Expr delta = term("δ", "p", wallFriction, Quantity::Angle);
    const Expr phi1 = term("φ", "1", curved.upperAngle, Quantity::Angle);
    const Expr phi2 = term("φ", "2", curved.lowerAngle, Quantity::Angle);
    const Expr full = (term("K", "1", curved.upperKp) * (phi2 - phi) +
                       term("K", "2", curved.lowerKp) * (phi - phi1)) /
                      (phi2 - phi1);
    const Expr ratio = delta / phi;
    const Expr low = term("ρ", "1", curved.lowRatio);
    const Expr high = term("ρ", "2", curved.highRatio);
    const auto between = [&](double atLow, double atHigh, const char* column) {
        return (term("R", std::string("1") + column, atLow) * (high - ratio) +
                term("R", std::string("2") + column, atHigh) * (ratio - low)) /
               (high - low);
    };
    const Expr reduction1 = curved.angle1 > 0 ? between(curved.low1, curved.high1, "A") : Expr(1);
    const Expr reduction2 = between(curved.low2, curved.high2, "B");
    const Expr phiA = term("φ", "A", curved.angle1, Quantity::Angle);
    const Expr phiB = term("φ", "B", curved.angle2, Quantity::Angle);
    const Expr reduction = (term("R", "A", reduction1.value()) * (phiB - phi) +
                            term("R", "B", reduction2.value()) * (phi - phiA)) /
                           (phiB - phiA);
    return {full, reduction1, reduction2, reduction,
            term("R", "", reduction.value()) * term("K", "0", full.value())};
}

double searchedFactor(const SheetRequest& request, int level) {
    const Results* results = request.solved.results;
    return request.problem.ProgramMode == Mode::Analysis && results != nullptr &&
                   level <= results->levelCount
               ? results->levels(level).factorOfSafety
               : 0;
}

} // namespace korvane::sheet
