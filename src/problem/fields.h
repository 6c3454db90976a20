// The numbers of the record as data: where each stands and which values files and screens take.
#pragma once

#include "problem/limits.h"
#include "problem/problem.h"
#include "problem/quantities.h"

#include <span>
#include <string_view>

namespace korvane {

/// Who states a rule, as bits: the reader of files, the screens, or the record itself, which has no
/// place for an infinity or an entry beyond a list.
enum StatedBy : unsigned { ByReader = 1, ByScreen = 2, ByBoth = 3, ByRecord = 4 };

/// What a value must be.
enum class Rule {
    Finite,  ///< a number
    Choice,  ///< one of the letters or numbers of a choice
    AtLeast, ///< limit
    Above,   ///< limit
    AtMost,  ///< limit
    Below,   ///< limit
    Equal,   ///< limit
};

/// Every number of `Problem` but the counts and choices, in the order of the table.
enum class ProblemField {
    WallTopElev,
    AnchorElev,
    WallBottomElev,
    WallModulus,
    WallInertia,
    FSActive,
    FSPassive,
    SurfaceDist,
    SurfaceElev,
    Level2FSActive,
    Level2FSPassive,
    SoilSatWeight,
    SoilMoistWeight,
    SoilBottomElev,
    SoilFriction,
    SoilCohesion,
    SoilWallFriction,
    SoilAdhesion,
    SoilBottomSlope,
    SoilFSActive,
    SoilFSPassive,
    SoilCoefActive,
    SoilCoefPassive,
    WaterUnitWeight,
    WaterElev,
    SeepageElev,
    SeepageGradient,
    WaterPressElev,
    WaterPressure,
    VLineDist,
    VLineLoad,
    VUniformLoad,
    VStripStart,
    VStripEnd,
    VStripLoad,
    VRampStart,
    VRampEnd,
    VRampLoad,
    VTriStart,
    VTriPeak,
    VTriEnd,
    VTriLoad,
    VVarDist,
    VVarLoad,
    HLineElev,
    HLineLoad,
    HDistElev,
    HDistLoad,
};
inline constexpr int FieldCount = static_cast<int>(ProblemField::HDistLoad) + 1;

/// A limit that hangs on other numbers of the record, those of lower rows and earlier fields.
using LimitAt = double (*)(const Problem&, int side, int row);

/// One rule of one number; `limitAt` stands before `limit`.
struct Bound {
    Rule rule = Rule::Finite;
    unsigned by = 0; ///< bits of StatedBy; 0 ends a list
    double limit = 0;
    LimitAt limitAt = nullptr;

    double limitOf(const Problem& problem, int side, int row) const {
        return limitAt != nullptr ? limitAt(problem, side, row) : limit;
    }
    bool holds(double value, double limitValue) const;
};

/// One field. A field without sides or rows has side 1 and row 1.
struct FieldRules {
    ProblemField field;
    const char* name; ///< as in JSON
    Quantity quantity;
    bool hasSides;
    bool hasRows;
    int places; ///< rows of its list
    double& (*at)(Problem&, int side, int row);
    const double& (*value)(const Problem&, int side, int row);
    Bound bounds[3]; ///< what both state first
};
const FieldRules& rulesOf(ProblemField field);

/// What the field of a name, as in JSON, measures; a plain number for counts and choices.
Quantity quantityOf(std::string_view name);

/// Fields that share their rows. Rules count where the group is in use; that a number be finite
/// counts for all rows.
struct FieldGroup {
    ProblemField first;
    ProblemField last;
    int sides;
    int (*rows)(const Problem&, int side); ///< never beyond the lists, whatever the counts hold
    bool (*inUse)(const Problem&, int side);
};
std::span<const FieldGroup> fieldGroups();

/// Narrows the limits by one rule with a limit.
void narrow(Limits& limits, Rule rule, double limit);

/// The values that a file (ByReader) or a screen (ByScreen) may give a field, after the numbers
/// that stand before it have been stored.
Limits limitsOf(ProblemField field, StatedBy who, const Problem& problem, int side = Right,
                int row = 1);

} // namespace korvane
