// The statics of a solved wall by the sheet's own arithmetic: the areas of the net pressure, their
// forces and moments, shears, moments and deflections.
#pragma once

#include "state/results.h"

#include <vector>

namespace korvane::sheet {

/// A straight piece of the net pressure on the wall, positive toward the left.
struct LoadPiece {
    double top = 0;      ///< FT, elevation
    double bottom = 0;   ///< FT
    double atTop = 0;    ///< PSF
    double atBottom = 0; ///< PSF

    double force() const { return (atTop + atBottom) / 2 * (top - bottom); } ///< LB per foot
    /// Moment about an elevation, LB-FT per foot: positive where the force acts above it.
    double momentAbout(double elev) const;
    double pressureAt(double elev) const;
    /// The part above an elevation within the piece.
    LoadPiece above(double elev) const;
};

/// A concentrated force on the wall, LB per foot, positive toward the left.
struct PointForce {
    double elev = 0; ///< FT
    double force = 0;
};

/// All loads on a wall down to its bottom, from the top down, without its supports.
struct WallLoading {
    std::vector<LoadPiece> pieces;
    std::vector<PointForce>
        lines;             ///< horizontal line loads, those at the bottom and below left out
    double top = 0;        ///< FT
    double bottom = 0;     ///< FT
    double anchorElev = 0; ///< FT, where moments, shears and deflections have the anchor
};

/// The loads of a level: the net pressures of its balance, and the line loads. A load or an anchor
/// within 0.0001 FT of a row of the diagrams stands at that row.
WallLoading wallLoading(const Problem& problem, const LevelResult& level);

/// The same with one more force.
WallLoading withForce(WallLoading loading, const PointForce& force);

/// Neighbouring pieces of one sign as one area.
struct PressureArea {
    double top = 0;    ///< FT
    double bottom = 0; ///< FT
    double force = 0;  ///< LB per foot
    double centre = 0; ///< FT, elevation of its line of action
};

/// The areas between zeros of the net pressure; stretches without pressure are left out.
std::vector<PressureArea> areasBetweenZeros(const WallLoading& loading);

/// What all loads add up to about an elevation.
struct LoadSums {
    double force = 0;       ///< LB per foot
    double moment = 0;      ///< LB-FT per foot
    double forceSizes = 0;  ///< sum of the sizes of the forces and 1 LB: the measure of rounding
    double momentSizes = 0; ///< likewise, and 1 LB-FT
};
LoadSums sumsAbout(const WallLoading& loading, double elev);

/// Shear (LB per foot) just below an elevation and moment (LB-FT per foot) there: the forces and
/// their static moments above it.
double shearBelow(const WallLoading& loading, double elev);
double shearAbove(const WallLoading& loading, double elev);
double momentAt(const WallLoading& loading, double elev);

/// The moment of the largest size and its elevation: at a zero of the shear, or where a force makes
/// it change its sign.
Extreme largestMoment(const WallLoading& loading);

/// EI times the deflection (LB-FT^3 per foot, positive toward the left) of a wall under all its
/// forces, by the second moment-area theorem: the static moment of the moment diagram between the
/// bottom and an elevation about that elevation. Integrated by Gauss's rule of three points between
/// the breaks of the loads, which is exact there.
class MomentAreas {
  public:
    /// `loading` has the supports' forces above the bottom.
    explicit MomentAreas(const WallLoading& loading);

    /// The bottom built in.
    double builtIn(double elev) const;
    /// The static moment of the moment diagram between the bottom and an elevation about another.
    double staticMoment(double upTo, double about) const;
    /// The bottom free to turn, the wall held at an elevation above it.
    double hinged(double elev, double heldAt) const;

  private:
    struct Point {
        double elev = 0;
        double weightedMoment = 0; ///< moment times the weight of the rule
    };
    double ruleOver(double top, double bottom, double about) const;

    WallLoading loading_;
    std::vector<double> breaks_; ///< FT, descending
    std::vector<Point> points_;  ///< of the rule, three to each stretch between breaks
};

/// The force (LB per foot, toward the right) of a support that keeps a wall with a built-in bottom
/// from moving at an elevation.
double supportForce(const WallLoading& loading, double elev);

/// The anchor force (LB per foot, toward the right) of a level by statics alone: free earth support
/// from moments about the bottom, fixed earth support from zero deflection at the anchor, below the
/// bottom by continuedMoment.
double anchorByStatics(const Problem& problem, const LevelResult& level);

/// FT: where net active pressure has come to zero below the lower ground.
double zeroOfNetPressure(const Problem& problem, const LevelResult& level);

/// LB-FT^3 per foot: what the method has for the static moment of the moment diagram about an
/// anchor below the bottom. From the bottom up to the zero of net pressure it is that diagram; on
/// from there down to the anchor the moments of the loads above the zero, continued.
double continuedMoment(const Problem& problem, const LevelResult& level);

/// The loads of a level and its anchor force by statics, in the row of the anchor; none where the
/// bottom lies above the anchor.
WallLoading heldLoading(const Problem& problem, const LevelResult& level);

/// EI times the deflection (LB-FT^3 per foot) of a level's wall: built in at its bottom, or with
/// free earth support held at the anchor and free to turn.
double deflectionAt(SolutionMethod method, const MomentAreas& areas, double elev, double anchor);

/// From LB-FT^3 to what results tell: LB-IN^3 in a design, IN of the given wall in an analysis.
double deflectionScale(const Problem& problem);

/// Moments of the searches end within this of zero, LB-FT per foot.
inline constexpr double MomentResidual = 1.0;
/// Forces of the search for a cantilever's bottom end within this of zero, LB per foot.
inline constexpr double ForceResidual = 0.1;
/// Sums of hundreds of pieces in another order differ by no more than this share of the sizes.
inline constexpr double SumRounding = 1e-9;

/// What is left of large numbers that cancel, without the noise of their rounding.
double withoutRounding(double sum, double sizes);

} // namespace korvane::sheet
