// What a solution hands over: values that nobody changes afterwards.
#pragma once

#include "state/pressure_details.h"
#include "state/state.h"

#include <string>

namespace korvane {

/// Grid and pressures at one moment of a solution. Rows beyond the grid hold zeros.
struct PressureDiagrams {
    ElevationGrid grid;
    Pressures pressures;
    Array<double, 301, 2> NetActive;  ///< PSF (i, k)
    Array<double, 301, 2> NetPassive; ///< PSF (i, k)
    int rows = 0;                     ///< rows that may hold values
    int waterLagRow = 0;              ///< from here on water lags a row behind the grid; 0 nowhere
};

/// The stop for review of a design. An analysis has the methods of its sides alone.
struct Review {
    Array<PressureMethod, 2> SideMethod;
    bool hasPressures = false;     ///< false in an analysis
    PressureDiagrams diagrams;     ///< at the seepage gradient of the first pass
    Array<int, 2> WedgeNoSolution; ///< (side) 1 where a row was marked
    Seepage SeepageKind = Seepage::None;
    double SeepageGradient = 0;      ///< FT/FT, of the first pass
    double SeepageGradientLimit = 0; ///< FT/FT, 0 without seepage
    PressureDetails details;         ///< where asked for, as the pressures of `diagrams`

    Review() {} // NOLINT(modernize-use-equals-default): a defaulted one would clear it all twice
};

enum class SolutionMethod { Cantilever, FreeEarth, FixedEarth };

/// One solved level. Extremes and rows stand in `diagrams`.
struct LevelResult {
    SolutionMethod method = SolutionMethod::Cantilever;
    double bottomElev = 0;      ///< FT
    double penetration = 0;     ///< FT, the lower ground less the bottom
    double bottomPressure = 0;  ///< PSF, net
    double anchorForce = 0;     ///< LB per foot of wall; anchored walls
    double factorOfSafety = 0;  ///< analysis
    double seepageGradient = 0; ///< FT/FT; walls with seepage
    double seepageEndElev = 0;  ///< FT; walls with seepage
    double transitionElev = 0;  ///< FT; cantilever: the net diagram runs straight to the bottom
    /// LB; fixed earth: the force on the wall at its theoretical bottom, positive toward the left.
    double toeReaction = 0;
    int seepagePasses = 0;    ///< of the bottom search
    int bottomIndex = 0;      ///< grid index of the bottom
    int transitionRow = 0;    ///< grid index; 0 where the transition needed no row of its own
    double bottomRowElev = 0; ///< FT, of the row at bottomIndex before it became the bottom
    Extreme maxShear;         ///< LB, of the largest size
    ResultDiagrams diagrams;
    PressureDiagrams solved;
    Array<int, 2> WedgeNoSolution;       ///< (side) 1 where a row was marked
    Array<DevelopedLayer, 2, 11> layers; ///< (side, layer)
    /// Where asked for. Both levels of an anchored design rest on the same pressures, unless
    /// seepage follows the bottom.
    PressureDetails details;

    LevelResult() {} // NOLINT(modernize-use-equals-default): likewise
};

/// All that a wall was solved to.
struct Results {
    Review review;
    int levelCount = 0; ///< 1 cantilever, 2 anchored
    Array<LevelResult, 2> levels;
    bool wedgeWarning = false; ///< a sweep marked a row at some time, perhaps in an earlier pass

    /// The water pressures that reports and plots show with every level: those of the last one, as
    /// only they outlive the solution (deliberate; each level's own stand in `solved`).
    const Array<double, 301, 2>& shownWater() const {
        return levels(levelCount).solved.pressures.WaterPressures;
    }
};

/// The table of sheet pile sections.
struct PileSections {
    int PileSectionCount = 0; ///< sections in use, 8 to 13
    Array<std::string, 13> PileName;
    Array<double, 13, 2> PileSectionData; ///< (p, 1) section modulus IN^3, (p, 2) inertia IN^4
    Array<double, 13> PileAllowStress;    ///< PSI
    Array<double, 13> PileModulus;        ///< PSI
};

enum class RoweSoil { None = 0, Sand = 1, Clay = 2 };

/// Conditions of the method that a wall may not meet, in the order in which they are told.
enum class RoweCondition {
    AlphaTooSmall,     ///< ALPHA below 0.6
    AlphaTooLarge,     ///< ALPHA above 0.8
    BetaTooLarge,      ///< BETA above 0.3
    RightBelowTop,     ///< the right surface lies below the top of the wall
    RightBelowLeft,    ///< the right surface lies at or below the left one
    StabilityTooSmall, ///< clay: S below 0.5
    StabilityTooLarge, ///< clay: S above 2.5
};

/// Those that a wall does not meet: no more than these at once.
class RoweConditions {
  public:
    void add(RoweCondition condition) { conditions_(++count_) = condition; }
    auto begin() const { return conditions_.begin(); }
    auto end() const { return conditions_.begin() + count_; }
    bool empty() const { return count_ == 0; }

  private:
    Array<RoweCondition, 5> conditions_;
    int count_ = 0;
};

/// Rowe's moment reduction for every section of a table.
struct MomentReduction {
    RoweSoil soil = RoweSoil::None; ///< of the report; None where there is nothing to report
    RoweSoil RoweSoilType = RoweSoil::None; ///< as `soil`; None where the method does not apply
    double RoweHeight = 0;                  ///< FT, wall top less free earth bottom
    double RoweAlpha = 0;                   ///< wall height ratio
    double RoweBeta = 0;                    ///< anchor height ratio
    double RoweStability = 0;               ///< stability number S, clay
    bool applicable = false;                ///< the wall is within the range of the method
    bool sandOutOfRange = false;            ///< it applies to sand, but not to every section
    RoweConditions broken;                  ///< why it is not applicable
    Array<double, 13> PileLogRigidity;      ///< log10(H^4 / EI)
    Array<double, 13> PileMomentRatio;      ///< allowable over free earth moment
    Array<double, 2, 5> RoweSandCurve;      ///< (density, point) at the wall's ALPHA
    Array<bool, 13> inRange;                ///< (p) the section has coefficients
    Array<double, 13, 2> coefficient;       ///< (p, 1) loose sand or clay, (p, 2) dense sand
    Array<double, 13, 2> reducedRatio;      ///< (p, k) allowable over reduced free earth moment

    /// True where there are curves to show: the method applies.
    bool hasCurves() const { return RoweSoilType != RoweSoil::None; }
};

} // namespace korvane
