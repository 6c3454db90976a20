#include "problem/fields.h"

#include "problem/loads.h"
#include "runtime/table_order.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <type_traits>
#include <utility>

namespace korvane {

namespace {

constexpr double NoLower = -std::numeric_limits<double>::infinity();
constexpr double NoUpper = std::numeric_limits<double>::infinity();

// ---- where numbers stand
// -------------------------------------------------------------------------

template <class List>
constexpr bool hasSidesAndRows = false;
template <int Rows>
constexpr bool hasSidesAndRows<Array<double, 2, Rows>> = true;

/// A list by solution level, of the size of one by side.
template <auto Member>
constexpr bool isByLevel = false;
template <>
constexpr bool isByLevel<&Problem::SeepageGradient> = true;

template <auto Member, class Record>
auto& numberIn(Record& problem, int side, int row) {
    auto& field = problem.*Member;
    using List = std::remove_cvref_t<decltype(field)>;
    if constexpr (std::is_same_v<List, double>) {
        return field;
    } else if constexpr (std::is_same_v<List, Array<double, 2>>) {
        return field(isByLevel<Member> ? row : side);
    } else if constexpr (hasSidesAndRows<List>) {
        return field(side, row);
    } else {
        return field(row);
    }
}
template <auto Member>
double& at(Problem& problem, int side, int row) {
    return numberIn<Member>(problem, side, row);
}
template <auto Member>
const double& value(const Problem& problem, int side, int row) {
    return numberIn<Member>(problem, side, row);
}
/// As a limit.
template <auto Member>
double valueOf(const Problem& problem, int side, int row) {
    return numberIn<Member>(problem, side, row);
}

// ---- limits that hang on other numbers
// -----------------------------------------------------------

template <auto Member>
double aboveRowBefore(const Problem& problem, int side, int row) {
    return row == 1 ? NoLower : numberIn<Member>(problem, side, row - 1);
}
template <auto Member>
double belowRowBefore(const Problem& problem, int side, int row) {
    return row == 1 ? NoUpper : numberIn<Member>(problem, side, row - 1);
}

/// The bottom stands below the top and the anchor.
double lowestOfWall(const Problem& problem, int, int) {
    return problem.WallType == WallKind::Anchored
               ? std::min(problem.AnchorElev, problem.WallTopElev)
               : problem.WallTopElev;
}

/// A file's ground begins at the wall or beyond it.
double leastOfFirstPoint(const Problem&, int, int point) {
    return point == 1 ? 0 : NoLower;
}

/// A soil has friction, cohesion or both.
double leastCohesion(const Problem& problem, int side, int layer) {
    return problem.SoilFriction(side, layer) == 0 ? 0 : NoLower;
}

/// The first strip of a file may have no load, the others must: deliberate.
double leastOfLaterStrips(const Problem&, int, int strip) {
    return strip == 1 ? NoLower : 0;
}

/// Either flank of a triangle may be upright, not both.
double endOfUprightTriangle(const Problem& problem, int side, int load) {
    const double peak = problem.VTriPeak(side, load);
    if (peak == problem.VTriStart(side, load)) {
        return peak;
    }
    return NoLower;
}

// ---- the table
// -----------------------------------------------------------------------------------

constexpr Bound NotNegative{Rule::AtLeast, ByBoth, 0};
constexpr Bound Positive{Rule::Above, ByBoth, 0};
constexpr Bound PositiveOnScreens{Rule::Above, ByScreen, 0};

template <auto Member>
constexpr FieldRules entry(ProblemField field, const char* name, Quantity quantity,
                           Bound first = {}, Bound second = {}, Bound third = {}) {
    using List = std::remove_cvref_t<decltype(std::declval<Problem&>().*Member)>;
    constexpr bool isNumber = std::is_same_v<List, double>;
    constexpr bool isPair = std::is_same_v<List, Array<double, 2>>;
    constexpr bool hasSides = hasSidesAndRows<List> || (isPair && !isByLevel<Member>);
    constexpr bool hasRows = !isNumber && (!isPair || isByLevel<Member>);
    constexpr int places = [] {
        if constexpr (hasRows) {
            return List::size() / (hasSides ? 2 : 1);
        } else {
            return 1;
        }
    }();
    return {field,      name,          quantity,
            hasSides,   hasRows,       places,
            at<Member>, value<Member>, {first, second, third}};
}

constexpr std::array<FieldRules, FieldCount> Fields{{
    entry<&Problem::WallTopElev>(ProblemField::WallTopElev, "WallTopElev", Quantity::Length),
    entry<&Problem::AnchorElev>(ProblemField::AnchorElev, "AnchorElev", Quantity::Length,
                                {Rule::AtMost, ByBoth, 0, valueOf<&Problem::WallTopElev>}),
    entry<&Problem::WallBottomElev>(ProblemField::WallBottomElev, "WallBottomElev",
                                    Quantity::Length, {Rule::Below, ByBoth, 0, lowestOfWall}),
    entry<&Problem::WallModulus>(ProblemField::WallModulus, "WallModulus", Quantity::Modulus,
                                 Positive),
    entry<&Problem::WallInertia>(ProblemField::WallInertia, "WallInertia", Quantity::Inertia,
                                 Positive),
    entry<&Problem::FSActive>(ProblemField::FSActive, "FSActive", Quantity::Number, Positive),
    entry<&Problem::FSPassive>(ProblemField::FSPassive, "FSPassive", Quantity::Number, Positive),
    entry<&Problem::SurfaceDist>(ProblemField::SurfaceDist, "SurfaceDist", Quantity::Length,
                                 {Rule::Above, ByBoth, 0, aboveRowBefore<&Problem::SurfaceDist>},
                                 {Rule::AtLeast, ByReader, 0, leastOfFirstPoint}),
    entry<&Problem::SurfaceElev>(ProblemField::SurfaceElev, "SurfaceElev", Quantity::Length),
    entry<&Problem::Level2FSActive>(ProblemField::Level2FSActive, "Level2FSActive",
                                    Quantity::Number, NotNegative),
    entry<&Problem::Level2FSPassive>(ProblemField::Level2FSPassive, "Level2FSPassive",
                                     Quantity::Number, NotNegative),
    entry<&Problem::SoilSatWeight>(ProblemField::SoilSatWeight, "SoilSatWeight",
                                   Quantity::UnitWeight, Positive),
    entry<&Problem::SoilMoistWeight>(ProblemField::SoilMoistWeight, "SoilMoistWeight",
                                     Quantity::UnitWeight, Positive),
    entry<&Problem::SoilBottomElev>(
        ProblemField::SoilBottomElev, "SoilBottomElev", Quantity::Length,
        {Rule::Below, ByBoth, 0, belowRowBefore<&Problem::SoilBottomElev>}),
    entry<&Problem::SoilFriction>(ProblemField::SoilFriction, "SoilFriction", Quantity::Angle,
                                  NotNegative, {Rule::AtMost, ByBoth, 45}),
    entry<&Problem::SoilCohesion>(ProblemField::SoilCohesion, "SoilCohesion", Quantity::Stress,
                                  NotNegative, {Rule::Above, ByBoth, 0, leastCohesion}),
    entry<&Problem::SoilWallFriction>(
        ProblemField::SoilWallFriction, "SoilWallFriction", Quantity::Angle,
        {Rule::AtMost, ByBoth, 0, valueOf<&Problem::SoilFriction>}, {Rule::AtLeast, ByReader, 0}),
    entry<&Problem::SoilAdhesion>(ProblemField::SoilAdhesion, "SoilAdhesion", Quantity::Stress,
                                  NotNegative,
                                  {Rule::AtMost, ByReader, 0, valueOf<&Problem::SoilCohesion>}),
    entry<&Problem::SoilBottomSlope>(ProblemField::SoilBottomSlope, "SoilBottomSlope",
                                     Quantity::Gradient),
    entry<&Problem::SoilFSActive>(ProblemField::SoilFSActive, "SoilFSActive", Quantity::Number,
                                  NotNegative),
    entry<&Problem::SoilFSPassive>(ProblemField::SoilFSPassive, "SoilFSPassive", Quantity::Number,
                                   NotNegative),
    entry<&Problem::SoilCoefActive>(ProblemField::SoilCoefActive, "SoilCoefActive",
                                    Quantity::Number, NotNegative),
    entry<&Problem::SoilCoefPassive>(ProblemField::SoilCoefPassive, "SoilCoefPassive",
                                     Quantity::Number, NotNegative, PositiveOnScreens),
    entry<&Problem::WaterUnitWeight>(ProblemField::WaterUnitWeight, "WaterUnitWeight",
                                     Quantity::UnitWeight, Positive),
    entry<&Problem::WaterElev>(ProblemField::WaterElev, "WaterElev", Quantity::Length),
    entry<&Problem::SeepageElev>(ProblemField::SeepageElev, "SeepageElev", Quantity::Length),
    entry<&Problem::SeepageGradient>(ProblemField::SeepageGradient, "SeepageGradient",
                                     Quantity::Gradient),
    entry<&Problem::WaterPressElev>(
        ProblemField::WaterPressElev, "WaterPressElev", Quantity::Length,
        {Rule::Below, ByReader, 0, belowRowBefore<&Problem::WaterPressElev>}),
    entry<&Problem::WaterPressure>(ProblemField::WaterPressure, "WaterPressure", Quantity::Stress),
    entry<&Problem::VLineDist>(ProblemField::VLineDist, "VLineDist", Quantity::Length, NotNegative,
                               PositiveOnScreens),
    entry<&Problem::VLineLoad>(ProblemField::VLineLoad, "VLineLoad", Quantity::LineLoad, Positive),
    entry<&Problem::VUniformLoad>(ProblemField::VUniformLoad, "VUniformLoad", Quantity::Stress,
                                  NotNegative),
    entry<&Problem::VStripStart>(ProblemField::VStripStart, "VStripStart", Quantity::Length,
                                 NotNegative),
    entry<&Problem::VStripEnd>(ProblemField::VStripEnd, "VStripEnd", Quantity::Length,
                               {Rule::Above, ByBoth, 0, valueOf<&Problem::VStripStart>}),
    entry<&Problem::VStripLoad>(ProblemField::VStripLoad, "VStripLoad", Quantity::Stress,
                                NotNegative, {Rule::Above, ByBoth, 0, leastOfLaterStrips},
                                PositiveOnScreens),
    entry<&Problem::VRampStart>(ProblemField::VRampStart, "VRampStart", Quantity::Length,
                                NotNegative),
    entry<&Problem::VRampEnd>(ProblemField::VRampEnd, "VRampEnd", Quantity::Length,
                              {Rule::AtLeast, ByBoth, 0, valueOf<&Problem::VRampStart>}),
    entry<&Problem::VRampLoad>(ProblemField::VRampLoad, "VRampLoad", Quantity::Stress, NotNegative,
                               {Rule::Above, ByReader, 0}),
    entry<&Problem::VTriStart>(ProblemField::VTriStart, "VTriStart", Quantity::Length, NotNegative),
    entry<&Problem::VTriPeak>(ProblemField::VTriPeak, "VTriPeak", Quantity::Length,
                              {Rule::AtLeast, ByBoth, 0, valueOf<&Problem::VTriStart>}),
    entry<&Problem::VTriEnd>(ProblemField::VTriEnd, "VTriEnd", Quantity::Length,
                             {Rule::AtLeast, ByBoth, 0, valueOf<&Problem::VTriPeak>},
                             {Rule::Above, ByBoth, 0, endOfUprightTriangle}),
    entry<&Problem::VTriLoad>(ProblemField::VTriLoad, "VTriLoad", Quantity::Stress, NotNegative,
                              PositiveOnScreens),
    entry<&Problem::VVarDist>(ProblemField::VVarDist, "VVarDist", Quantity::Length, NotNegative,
                              {Rule::AtLeast, ByBoth, 0, aboveRowBefore<&Problem::VVarDist>},
                              {Rule::Above, ByScreen, 0, aboveRowBefore<&Problem::VVarDist>}),
    entry<&Problem::VVarLoad>(ProblemField::VVarLoad, "VVarLoad", Quantity::Stress, NotNegative),
    entry<&Problem::HLineElev>(ProblemField::HLineElev, "HLineElev", Quantity::Length),
    entry<&Problem::HLineLoad>(ProblemField::HLineLoad, "HLineLoad", Quantity::LineLoad),
    entry<&Problem::HDistElev>(ProblemField::HDistElev, "HDistElev", Quantity::Length,
                               {Rule::Below, ByBoth, 0, belowRowBefore<&Problem::HDistElev>}),
    entry<&Problem::HDistLoad>(ProblemField::HDistLoad, "HDistLoad", Quantity::Stress),
}};

static_assert(inOrder(Fields, &FieldRules::field));

// ---- groups
// --------------------------------------------------------------------------------------

bool always(const Problem&, int) {
    return true;
}
bool anchored(const Problem& problem, int) {
    return problem.WallType == WallKind::Anchored;
}
bool analysis(const Problem& problem, int) {
    return problem.ProgramMode == Mode::Analysis;
}
bool design(const Problem& problem, int) {
    return problem.ProgramMode == Mode::Design;
}
/// An analysis that searches one factor for both pressures takes none.
bool activeFactorGiven(const Problem& problem, int) {
    return problem.ProgramMode == Mode::Design || problem.FSKind == FactorKind::ActiveGiven;
}
bool strengths(const Problem& problem, int side) {
    return problem.SoilDataKind(side) == SoilData::Strengths;
}
bool coefficients(const Problem& problem, int side) {
    return problem.SoilDataKind(side) == SoilData::Coefficients;
}
bool waterElevations(const Problem& problem, int) {
    return problem.WaterDataKind == WaterData::Elevations;
}
bool seepage(const Problem& problem, int side) {
    return waterElevations(problem, side) && problem.SeepageKind != Seepage::None;
}

int one(const Problem&, int) {
    return 1;
}
template <ProblemCount Count>
int rows(const Problem& problem, int side) {
    return entriesOf(Count, problem, side);
}
/// The last layer has no bottom.
int bottoms(const Problem& problem, int side) {
    return rows<ProblemCount::SoilLayerCount>(problem, side) - 1;
}
int pressurePoints(const Problem& problem, int side) {
    return problem.WaterDataKind == WaterData::Pressures
               ? rows<ProblemCount::WaterPressCount>(problem, side)
               : 0;
}
/// An automatic gradient is an outcome of solutions, and in the record for reports alone.
int gradients(const Problem& problem, int) {
    return problem.SeepageKind == Seepage::Given ? 1 : 0;
}

template <Load Kind>
constexpr FieldGroup ofLoad() {
    constexpr LoadRules rules = rulesOf(Kind);
    return {rules.first, rules.last, rules.sides(), rows<rules.count>, always};
}

constexpr FieldGroup Groups[] = {
    {ProblemField::WallTopElev, ProblemField::WallTopElev, 1, one, always},
    {ProblemField::AnchorElev, ProblemField::AnchorElev, 1, one, anchored},
    {ProblemField::WallBottomElev, ProblemField::WallInertia, 1, one, analysis},
    {ProblemField::FSActive, ProblemField::FSActive, 1, one, activeFactorGiven},
    {ProblemField::FSPassive, ProblemField::FSPassive, 1, one, design},
    {ProblemField::SurfaceDist, ProblemField::SurfaceElev, 2, rows<ProblemCount::SurfacePointCount>,
     always},
    {ProblemField::Level2FSActive, ProblemField::Level2FSPassive, 2, one, always},
    {ProblemField::SoilSatWeight, ProblemField::SoilMoistWeight, 2,
     rows<ProblemCount::SoilLayerCount>, always},
    {ProblemField::SoilBottomElev, ProblemField::SoilBottomElev, 2, bottoms, always},
    {ProblemField::SoilFriction, ProblemField::SoilFSPassive, 2, rows<ProblemCount::SoilLayerCount>,
     strengths},
    {ProblemField::SoilCoefActive, ProblemField::SoilCoefPassive, 2,
     rows<ProblemCount::SoilLayerCount>, coefficients},
    {ProblemField::WaterUnitWeight, ProblemField::WaterUnitWeight, 1, one, waterElevations},
    {ProblemField::WaterElev, ProblemField::WaterElev, 2, one, waterElevations},
    {ProblemField::SeepageElev, ProblemField::SeepageElev, 1, one, seepage},
    {ProblemField::SeepageGradient, ProblemField::SeepageGradient, 1, gradients, seepage},
    {ProblemField::WaterPressElev, ProblemField::WaterPressure, 1, pressurePoints, always},
    ofLoad<Load::Line>(),
    ofLoad<Load::Uniform>(),
    ofLoad<Load::Strip>(),
    ofLoad<Load::Ramp>(),
    ofLoad<Load::Triangle>(),
    ofLoad<Load::Variable>(),
    ofLoad<Load::HorizontalLine>(),
    ofLoad<Load::Distributed>(),
};

} // namespace

bool Bound::holds(double value, double limitValue) const {
    switch (rule) {
    case Rule::AtLeast:
        return value >= limitValue;
    case Rule::Above:
        return value > limitValue;
    case Rule::AtMost:
        return value <= limitValue;
    case Rule::Below:
        return value < limitValue;
    case Rule::Equal:
        return value == limitValue;
    case Rule::Finite:
    case Rule::Choice:
        break;
    }
    return true;
}

const FieldRules& rulesOf(ProblemField field) {
    return Fields[static_cast<std::size_t>(field)];
}

Quantity quantityOf(std::string_view name) {
    for (const FieldRules& rules : Fields) {
        if (name == rules.name) {
            return rules.quantity;
        }
    }
    return Quantity::Number;
}

std::span<const FieldGroup> fieldGroups() {
    return Groups;
}

void narrow(Limits& limits, Rule rule, double limit) {
    const bool open = rule == Rule::Above || rule == Rule::Below;
    if (rule == Rule::AtLeast || rule == Rule::Above) {
        if (limit > limits.low || (open && limit == limits.low)) {
            limits.low = limit;
            limits.lowOpen = open;
        }
    } else if (limit < limits.high || (open && limit == limits.high)) {
        limits.high = limit;
        limits.highOpen = open;
    }
}

Limits limitsOf(ProblemField field, StatedBy who, const Problem& problem, int side, int row) {
    Limits limits;
    for (const Bound& bound : rulesOf(field).bounds) {
        if ((bound.by & who) != 0) {
            narrow(limits, bound.rule, bound.limitOf(problem, side, row));
        }
    }
    return limits;
}

} // namespace korvane
