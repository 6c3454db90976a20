// All working values of one problem: the input and what each stage of a solution leaves behind.
// Sides are 1 right, 2 left; levels 1 cantilever or free earth, 2 fixed earth. A pressure has two
// values at a grid point: k = 1 just below it, k = 2 just above it.
#pragma once

#include "problem/problem.h"
#include "runtime/array.h"
#include "state/amendments.h"
#include "state/failure.h"

#include <algorithm>
#include <limits>
#include <type_traits>

namespace korvane {

inline constexpr double NoFarPoints = -std::numeric_limits<double>::infinity();

/// The common descending list of elevations that all diagrams stand on.
struct ElevationGrid {
    Array<double, 301> ElevGrid;  ///< FT, strictly descending from 1 to NumElevs
    int NumElevs = 0;             ///< points in use; later stages insert points
    double FarElev = NoFarPoints; ///< FT, the upper of the two points far below all others

    // The point that stands at SeepageEndElev, by level.
    Array<int, 2> SeepageEndIndex;
};

/// How the soil pressures of a side are found; by its letter.
enum class PressureMethod : char {
    None = 0,
    Coefficients = 'C', ///< Coulomb's or given
    Wedge = 'W',        ///< a wedge method, not yet decided
    Sweep = 'S',
    FixedSurface = 'F',
};

/// What PrepareSolution derives from the problem, and the factors that an analysis varies.
struct Preparation {
    Array<PressureMethod, 2> SideMethod;
    Array<int, 2> NumSurchargesOnSide;      ///< non-uniform surcharges on a wedge side
    Array<double, 2> SeepageEndElev;        ///< FT by level: where the net head is used up
    double SeepageGradientLimit = 0;        ///< FT/FT, largest gradient of the design search
    Seepage SeepageKind = Seepage::None;    ///< as given; None unless water elevations are
    Array<double, 2> SeepageGradient;       ///< FT/FT by level: as given, or as found so far
    Array<double, 2, 11, 2> LayerFSActive;  ///< (side, layer, level)
    Array<double, 2, 11, 2> LayerFSPassive; ///< (side, layer, level)
};

/// Where a factor of safety comes from.
enum class FactorSource { Control, Side, Layer, Search };

/// Where a pressure coefficient comes from.
enum class CoefficientSource {
    None,        ///< a wedge side has none
    Coulomb,     ///< plane failure surface
    CurvedTable, ///< table for curved failure surfaces
    Given,
};

/// One layer as a solution used it: strengths over the factors of safety, and coefficients.
struct DevelopedLayer {
    double fsActive = 0;
    double fsPassive = 0;
    FactorSource activeSource = FactorSource::Control;
    FactorSource passiveSource = FactorSource::Control;
    double frictionActive = 0;      ///< degrees
    double frictionPassive = 0;     ///< degrees
    double wallFrictionActive = 0;  ///< degrees
    double wallFrictionPassive = 0; ///< degrees
    double cohesionActive = 0;      ///< PSF
    double cohesionPassive = 0;     ///< PSF
    double adhesionActive = 0;      ///< PSF
    double adhesionPassive = 0;     ///< PSF
    double Ka = 0;                  ///< before the wall friction's cosine
    double Kp = 0;
    CoefficientSource KaSource = CoefficientSource::None;
    CoefficientSource KpSource = CoefficientSource::None;
};

/// Soil and water pressures on the grid, PSF.
struct Pressures {
    Array<double, 2, 301, 2> ActivePressures;  ///< (side, i, k)
    Array<double, 2, 301, 2> PassivePressures; ///< (side, i, k)
    Array<double, 301, 2> WaterPressures;      ///< (i, k) net, right less left
    Array<double, 2, 301> SurchargePressures;  ///< (side, i) by theory of elasticity
    Array<bool, 2, 301> ActiveMark;            ///< (side, i) true: the sweep found no extreme
    Array<bool, 2, 301> PassiveMark;           ///< (side, i) likewise
};

/// A family of polygons (side, layer, point): along the upper edge from the wall outward, back to
/// the wall along the bottom. The X entry behind the last point holds the polygon's reach.
struct RegionFamily {
    Array<double, 2, 11, 51> X; ///< FT from the wall
    Array<double, 2, 11, 51> Y; ///< FT elevation
    Array<int, 2, 11> Count;    ///< points, at most 50
    Array<int, 2, 11> Kind;     ///< 0 = no such region; used by the wet, seep and deep families
};

/// The soil of the wedge sides as polygons.
struct WedgeRegions {
    RegionFamily Layer; ///< LayerRegionX, LayerRegionY, LayerRegionCount
    RegionFamily Wet;   ///< the part of a layer below the water
    RegionFamily Seep;  ///< the part of the wet region in which seepage acts
    RegionFamily Deep;  ///< the part of the seep region below SeepageEndElev of the level
    Array<double, 2, 51> WedgeSurfaceX; ///< ground line, FT
    Array<double, 2, 51> WedgeSurfaceY; ///< ground line, FT
    Array<int, 2> WedgeSurfaceCount;    ///< points, the extra far point included
};

/// Forces of the wedge methods, pounds per foot of wall.
struct WedgeForces {
    Array<double, 301, 2> WedgeActiveForce;  ///< (i, side) from the surface down to row i
    Array<double, 301, 2> WedgePassiveForce; ///< (i, side)
    Array<int, 3, 2> WedgeNoSolution;        ///< (level, side) 1 when a row was marked
};

/// The two diagrams that the searches work on.
struct NetPressures {
    Array<double, 301, 2> NetActive;  ///< PSF (i, k): right active less left passive plus water
    Array<double, 301, 2> NetPassive; ///< PSF (i, k): right passive less left active plus water
    int NetZeroIndex = 0;             ///< grid index where net active has come to zero
    int WaterLagRow = 0;      ///< from here on WaterPressures lag a row behind the grid; 0 nowhere
    double DrivingForce = 0;  ///< PLF above NetZeroIndex, positive toward the left
    double DrivingMoment = 0; ///< LB-FT per foot about WallTopElev, later shifted
};

/// The outcome of the searches, by level.
struct Solution {
    Array<double, 2> SolvedBottomElev; ///< FT
    Array<double, 2> BottomPressure;   ///< PSF, net, at the bottom
    Array<int, 2> BottomIndex;         ///< grid index of the bottom
    Array<double, 2> AnchorForce;      ///< LB per foot of wall
    Array<double, 2> FactorOfSafety;   ///< the factor that an analysis has found
    double TransitionElev = 0;         ///< FT, cantilever: where the net diagram turns
    int TransitionRow = 0;             ///< cantilever: the grid row put in there; 0 without one
    double BottomRowElev = 0; ///< FT, of the row at BottomIndex before it became the bottom
    int SeepagePasses = 0;    ///< passes of the last search
};

/// A value and the elevation (FT) at which it stands.
struct Extreme {
    double value = 0;
    double elev = 0;
};

/// The largest and the smallest value of a diagram.
struct Range {
    double largest = 0;
    double smallest = 0;
};

/// Result rows of one level and their extremes.
struct ResultDiagrams {
    int RowCount = 0;                    ///< rows in use
    Array<double, 301> ResultElev;       ///< FT
    Array<double, 301> ResultMoment;     ///< LB-FT
    Array<double, 301> ResultShear;      ///< LB
    Array<double, 301> ResultDeflection; ///< LB-IN^3 in design, IN in analysis
    Array<double, 301> ResultPressure;   ///< PSF
    Extreme MaxMoment;                   ///< signed, of the largest size
    Extreme MaxDeflection;
    Range DeflectionRange;
    Range MomentRange;
    Range ShearRange;
    Range PressureRange;
};

struct KeptWork;
struct PressureDetails;

/// The working values of one solution. It copies as plain memory. Two states with kept work of
/// their own never touch each other.
struct State {
    State(const Problem& problem_, KeptWork& kept_) : problem(&problem_), kept(&kept_) {}

    const Problem* problem; ///< never written
    KeptWork* kept;         ///< stays from solution to solution
    /// Where the pressures of each side are to tell how they came about; null: nowhere.
    PressureDetails* details = nullptr;
    Amendments amendments; ///< of the present solution
    /// Rows of the diagrams that may hold values since the preparation; all beyond are zero.
    int TouchedRows = 301;
    ElevationGrid grid;
    Preparation preparation;
    Pressures pressures;
    WedgeRegions regions;
    WedgeForces wedge;
    NetPressures net;
    Solution solution;
    ResultDiagrams results; ///< of the level solved last
    Stage stage;            ///< what is being done
    Failure failure;        ///< why the solution ended, if it did

    bool failed() const { return failure.code != FailureCode::None; }
};
static_assert(std::is_trivially_copyable_v<State>);

/// Notes that the diagrams reach down to the grid's last row.
inline void touchRows(State& state) {
    state.TouchedRows = std::max(state.TouchedRows, state.grid.NumElevs);
}

/// Ends the solution; the failure takes the present stage, with its side and level where it has
/// none of its own, and the wall's kind.
void fail(State& state, Failure failure);

} // namespace korvane
