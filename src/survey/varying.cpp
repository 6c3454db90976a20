#include "survey/varying.h"

#include "problem/validate.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <tuple>

namespace korvane::study {

namespace {

/// Where a section begins among the fields, and what it is called.
struct Section {
    ProblemField first;
    const char* title;
    bool byLayer = false;
};
constexpr Section Sections[] = {
    {ProblemField::WallTopElev, "Wall"},
    {ProblemField::FSActive, "Factors of safety"},
    {ProblemField::SurfaceDist, "Soil surface"},
    {ProblemField::Level2FSActive, "Factors of safety"},
    {ProblemField::SoilSatWeight, "Soil", true},
    {ProblemField::WaterUnitWeight, "Water"},
    {ProblemField::VLineDist, "Surcharges"},
    {ProblemField::HLineElev, "Horizontal loads"},
};

std::size_t sectionOf(ProblemField field) {
    std::size_t place = std::size(Sections) - 1;
    while (Sections[place].first > field) {
        --place;
    }
    return place;
}

std::string titleOf(const FieldAddress& address) {
    const Section& section = Sections[sectionOf(address.field)];
    const FieldRules& rules = rulesOf(address.field);
    std::string title = section.title;
    // Water levels of both sides stand together.
    if (rules.hasSides && section.first != ProblemField::WaterUnitWeight) {
        title += address.side == Right ? ", right side" : ", left side";
    }
    return section.byLayer ? title + ", layer " + std::to_string(address.row) : title;
}

/// How far a number is moved to begin with: a share of it or, of a quantity whose zero means
/// nothing or of a number that is zero, a step.
struct Reach {
    Quantity quantity;
    double share;
    double us; ///< step
    double si;
};
constexpr Reach Reaches[] = {
    {Quantity::Length, 0, 1, 0.3},       {Quantity::Angle, 0, 2, 2},
    {Quantity::UnitWeight, 0.05, 5, 1},  {Quantity::Stress, 0.1, 50, 2.5},
    {Quantity::LineLoad, 0.1, 100, 1.5}, {Quantity::Gradient, 0.1, 0.05, 0.05},
    {Quantity::Number, 0.1, 0.1, 0.1},   {Quantity::Modulus, 0.1, 1, 1},
    {Quantity::Inertia, 0.1, 1, 1},
};

double stepOf(const FieldAddress& address, double present, UnitSystem units) {
    const auto* reach =
        std::find_if(std::begin(Reaches), std::end(Reaches), [&](const Reach& candidate) {
            return candidate.quantity == quantityOf(address);
        });
    if (reach == std::end(Reaches)) {
        return 0;
    }
    const double step = units == UnitSystem::US ? reach->us : reach->si;
    return present == 0 || reach->share == 0 ? step : reach->share * std::abs(present);
}

/// A factor of a layer or side that is 0 is that of the side or of the whole wall.
double factorAtWork(const Problem& problem, const FieldAddress& address) {
    const bool passive = address.field == ProblemField::SoilFSPassive ||
                         address.field == ProblemField::Level2FSPassive;
    double factor = rulesOf(address.field).value(problem, address.side, address.row);
    if (factor == 0) {
        factor = (passive ? problem.Level2FSPassive : problem.Level2FSActive)(address.side);
    }
    return factor != 0 ? factor : passive ? problem.FSPassive : problem.FSActive;
}

bool isFactor(ProblemField field) {
    return field == ProblemField::Level2FSActive || field == ProblemField::Level2FSPassive ||
           field == ProblemField::SoilFSActive || field == ProblemField::SoilFSPassive;
}

std::size_t findings(const Problem& problem) {
    std::size_t count = 0;
    forEachFinding(problem, [&count](const Finding& finding) {
        count += (finding.by & ByReader) != 0 || finding.isFatal() ? 1 : 0;
        return true;
    });
    return count;
}

/// The number that lies `way` off the present one, nearer where the wall could not have it.
double movedBy(const Problem& problem, const FieldAddress& address, double from, double way,
               UnitSystem units) {
    constexpr int Halvings = 4;
    constexpr int Digits = 6;
    const std::size_t before = findings(problem);
    Problem moved = problem;
    for (int halving = 0; halving <= Halvings; ++halving, way /= 2) {
        const double value = roundedTo(from + way, Digits);
        setValueAt(moved, address, value, units);
        if (findings(moved) <= before) {
            return value;
        }
    }
    return from;
}

bool hasTwin(const Problem& problem, const FieldAddress& address) {
    const FieldAddress twin = twinOf(address);
    return rulesOf(address.field).hasSides && address.side == Right &&
           absence(twin, problem).empty() && valueAt(problem, twin) == valueAt(problem, address);
}

Varying varying(const Problem& problem, const FieldAddress& address, UnitSystem units) {
    Varying result;
    result.address = address;
    result.section = titleOf(address);
    result.present = valueAt(problem, address, units);
    const double from = isFactor(address.field) ? factorAtWork(problem, address) : result.present;
    const double step = stepOf(address, from, units);
    result.low = movedBy(problem, address, from, -step, units);
    result.high = movedBy(problem, address, from, step, units);
    result.hasTwin = hasTwin(problem, address);
    return result;
}

} // namespace

FieldAddress twinOf(const FieldAddress& address) {
    FieldAddress twin = address;
    twin.side = address.side == Right ? Left : Right;
    return twin;
}

Limits limitsOf(const Problem& problem, const FieldAddress& address, UnitSystem units) {
    Limits limits = korvane::limitsOf(address.field, ByReader, problem, address.side, address.row);
    limits.low = inUnits(quantityOf(address), limits.low, units);
    limits.high = inUnits(quantityOf(address), limits.high, units);
    return limits;
}

std::vector<Varying> varyingIn(const Problem& problem, UnitSystem units) {
    std::vector<FieldAddress> addresses = addressesIn(problem);
    const auto order = [](const FieldAddress& address) {
        const std::size_t section = sectionOf(address.field);
        const bool layers = Sections[section].byLayer;
        const bool sides = Sections[section].first != ProblemField::WaterUnitWeight;
        return std::tuple{section, sides ? address.side : 0, layers ? address.row : 0};
    };
    std::stable_sort(
        addresses.begin(), addresses.end(),
        [&](const FieldAddress& a, const FieldAddress& b) { return order(a) < order(b); });
    std::vector<Varying> all;
    all.reserve(addresses.size());
    for (const FieldAddress& address : addresses) {
        all.push_back(varying(problem, address, units));
    }
    return all;
}

} // namespace korvane::study
