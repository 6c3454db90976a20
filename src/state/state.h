// All working values of one problem: the input and what each stage of a solution leaves behind.
// Sides are 1 right, 2 left; levels 1 cantilever or free earth, 2 fixed earth. A pressure has two
// values at a grid point: k = 1 just below it, k = 2 just above it.
#pragma once

#include "problem/problem.h"
#include "runtime/array.h"
#include "state/prompts.h"
#include "state/surcharge_rows.h"
#include "state/wedge_side.h"

#include <string>
#include <vector>

namespace korvane {

/// The common descending list of elevations that all diagrams stand on.
struct ElevationGrid {
    Array<double, 301> ElevGrid;   ///< FT, strictly descending from 1 to NumElevs
    int NumElevs = 0;              ///< points in use; later stages insert points
    Array<int, 2> SeepageEndIndex; ///< by level: the grid index of SeepageEndElev
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
    Array<double, 2, 11, 2> LayerFSActive;  ///< (side, layer, level)
    Array<double, 2, 11, 2> LayerFSPassive; ///< (side, layer, level)
};

/// The report's mark of a pressure for which the sweep search found no extreme.
inline const char* markText(bool marked) {
    return marked ? "*" : "";
}

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
    Array<double, 301> MidActiveForce;       ///< (i) at the midpoint of rows i and i + 1
    Array<double, 301> MidPassiveForce;      ///< (i)
    Array<double, 15> PieceForce;            ///< horizontal forces of the outer plane pieces
    Array<int, 3, 2> WedgeNoSolution;        ///< (level, side) 1 when a row was marked
};

/// The two diagrams that the searches work on.
struct NetPressures {
    Array<double, 301, 2> NetActive;  ///< PSF (i, k): right active less left passive plus water
    Array<double, 301, 2> NetPassive; ///< PSF (i, k): right passive less left active plus water
    int NetZeroIndex = 0;             ///< grid index where net active has come to zero
    double DrivingForce = 0;          ///< PLF above NetZeroIndex, positive toward the left
    double DrivingMoment = 0;         ///< LB-FT per foot about WallTopElev, later shifted
};

/// The outcome of the searches, by level.
struct Solution {
    Array<double, 2> SolvedBottomElev; ///< FT
    Array<double, 2> BottomPressure;   ///< PSF, net, at the bottom
    Array<int, 2> BottomIndex;         ///< grid index; the row count after BuildResultDiagrams
    Array<double, 2> AnchorForce;      ///< LB per foot of wall
};

/// The beam solution with EI = 1.
struct Beam {
    Array<double, 300, 4> ElementForces; ///< (e, k) shear, moment at top; shear, moment at bottom
    Array<double, 301, 2> NodeDisplacement; ///< (i, k) EI x deflection, EI x rotation
};

/// Result rows of one level and the extremes of all levels.
struct ResultDiagrams {
    Array<double, 301> ResultElev;       ///< FT
    Array<double, 301> ResultMoment;     ///< LB-FT
    Array<double, 301> ResultShear;      ///< LB
    Array<double, 301> ResultDeflection; ///< LB-IN^3 in design, IN in analysis
    Array<double, 301> ResultPressure;   ///< PSF
    Array<double, 4> MaxMoment;          ///< (level) value, (level + 2) its elevation
    Array<double, 4> MaxDeflection;      ///< likewise
    Array<double, 4> DeflectionRange;    ///< (level) largest, (level + 2) smallest
    Array<double, 4> MomentRange;        ///< likewise
    Array<double, 4> ShearRange;         ///< likewise
    Array<double, 4> PressureRange;      ///< likewise
};

/// All of one level as it was solved, for whoever wants both levels at once.
struct SolvedLevel {
    bool solved = false;
    int rowCount = 0;
    ElevationGrid grid;
    Pressures pressures;
    Array<double, 301, 2> NetActive;
    Array<double, 301, 2> NetPassive;
    Array<double, 301> ResultElev;
    Array<double, 301> ResultMoment;
    Array<double, 301> ResultShear;
    Array<double, 301> ResultDeflection;
    Array<double, 301> ResultPressure;
};

/// What the moment reduction came to, beyond what the report and its plot need.
struct RoweOutcome {
    int soil = 0;                      ///< of the report: 0 none written, 1 sand, 2 clay
    bool applicable = false;           ///< the wall is within the range of the method
    std::vector<std::string> notes;    ///< why the reduction does not apply, each in one line
    Array<bool, 13> inRange;           ///< (p) the section has coefficients
    Array<double, 13, 2> coefficient;  ///< (p, 1) loose sand or clay, (p, 2) dense sand
    Array<double, 13, 2> reducedRatio; ///< (p, k) allowable over reduced free earth moment
};

/// Sheet pile sections and Rowe's moment reduction.
struct RoweData {
    Array<std::string, 13> PileName;
    Array<double, 13, 2> PileSectionData; ///< (p, 1) section modulus IN^3, (p, 2) inertia IN^4
    Array<double, 13> PileAllowStress;    ///< PSI
    Array<double, 13> PileModulus;        ///< PSI
    int PileSectionCount = 0;             ///< sections in use, 8 to 13
    int RoweSoilType = 0;                 ///< 0 none or not applicable, 1 sand, 2 clay
    double RoweHeight = 0;                ///< FT, wall top less free earth bottom
    double RoweAlpha = 0;                 ///< wall height ratio
    double RoweBeta = 0;                  ///< anchor height ratio
    double RoweStability = 0;             ///< stability number S, clay
    Array<double, 13> PileLogRigidity;    ///< log10(H^4 / EI)
    Array<double, 13> PileMomentRatio;    ///< allowable over free earth moment
    Array<double, 2, 5> RoweSandCurve;    ///< (density, point) at the wall's ALPHA
    RoweOutcome outcome;
};

/// Temporary and scratch files of the session.
struct TemporaryFiles {
    std::string TempFolder;
    int ScratchFileCount = 8; ///< names in the list; the first eight stay empty
    Array<std::string, 100> ScratchFileList;
    Array<std::string, 3> ScratchFileName; ///< by level
    Array<int, 2, 2, 2, 301> MarkLength;   ///< (level, 1 active or 2 passive, side, i)
};

/// The report being written.
struct Report {
    std::string CurrentOutputName;
    int OutputLineCount = 0;
};

/// Everything that the procedures of one session work on. Two states never touch each other.
struct State {
    explicit State(Prompts& prompts_) : prompts(prompts_) {}

    Problem problem;
    ElevationGrid grid;
    Preparation preparation;
    Pressures pressures;
    WedgeRegions regions;
    WedgeForces wedge;
    Array<WedgePlanes, 2> wedgePlanes;     ///< by side
    Array<SurchargeRows, 2> surchargeRows; ///< by side
    NetPressures net;
    Solution solution;
    Beam beam;
    ResultDiagrams results;
    Array<SolvedLevel, 2> solved; ///< by level
    RoweData rowe;
    TemporaryFiles files;
    Report report;

    int SolutionFailed = 0;    ///< 0 well, 1 a failure or a Cancel, 2 sign test or discontinued
    int DataChanged = 0;       ///< 1 when a data-entry screen changed something
    int HeadContDataValid = 0; ///< 1 when the heading section is valid

    Prompts& prompts;
};

/// Shows a box with one OK button (icon none unless told) and sets SolutionFailed to 1.
void failSolution(State& state, const MessageBox& box);

} // namespace korvane
