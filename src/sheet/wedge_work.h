// Wedges of soil by the sheet's own code: weights, loads, and the equilibrium of their forces.
#pragma once

#include "sheet/expression.h"
#include "sheet/stages.h"

#include <vector>

namespace korvane::sheet {

/// A point of the ground, FT from the wall and FT elevation.
struct GroundPoint {
    double x = 0, y = 0;
};

/// The ground line of a side, with a level stretch behind its last point.
std::vector<GroundPoint> groundLine(const Problem& problem, int side);

/// FT from the wall: a layer ends where the ground first comes down to its bottom. What stands
/// above that bottom farther out counts as soil of the layers below.
double layerReach(const Problem& problem, int side, int layer);

/// LB: the soil above a piece of plane, cut into vertical strips; water and seepage as the method
/// takes them.
double soilWeight(const Problem& problem, const PressureStage& stage, int side,
                  const WedgePiece& piece);

/// LB: all loads on the ground between the ends of a piece.
double loadWeight(const Problem& problem, int side, const WedgePiece& piece);

/// The developed wall friction (degrees) and adhesion (LB) of the wall from the surface down to an
/// elevation: the mean by height, and the sum.
struct WallStrengths {
    double friction = 0, adhesion = 0;
};
WallStrengths wallTerms(const SheetRequest& request, const PressureStage& stage, int side,
                        double elev, bool active);

/// The symbols of a piece's equilibrium; `sign` is +1 active, -1 passive.
struct PieceSymbols {
    Expr W, C, t, a;
    double sign;

    PieceSymbols(const WedgePiece& piece, bool active);
    /// LB: what an outer piece adds to the push on its inner neighbour.
    Expr outward() const;
    /// LB: what rounding may make of it where its divisor A nearly vanishes.
    double lostOutward() const;
    Expr A() const;
    Expr B() const;
    double termsOfA() const; ///< size of what A is the sum of
    double termsOfB() const;
};

/// The steps to the force of the piece at the wall.
struct WallForce {
    Expr A, B, D, P, horizontal;
    double lost = 0; ///< LB: what rounding may make of P where D nearly vanishes
};
/// `lostOutside` is what rounding may make of the outer force, LB.
WallForce wallForce(const PieceSymbols& piece, double outerForce, const WallStrengths& wall,
                    double lostOutside = 0);

/// Forces on the wedge at the wall, LB, x away from the wall and y up.
struct ForceVector {
    enum class Kind { Given, Reaction, Wall }; ///< Given but for the two that equilibrium gives

    const char* name;
    double x = 0, y = 0;
    Kind kind = Kind::Given;
};
/// Weight, adhesion, cohesion, push of the outer pieces, reaction of the plane, force of the wall;
/// those that are zero left out. The reaction closes the polygon.
std::vector<ForceVector> forcePolygon(const PieceSymbols& piece, double outerForce,
                                      const WallStrengths& wall, double wallForce);

/// The tangent of the angle between the reaction and the plane's normal: the developed friction
/// where the forces are in equilibrium. `lost` is what rounding may make of it, with `lostForce` LB
/// lost of the force on the wall.
struct ReactionTangent {
    double value = 0, lost = 0;
    bool none = false; ///< no reaction but rounding: it has no direction
};
ReactionTangent reactionTangent(const std::vector<ForceVector>& polygon, const PieceSymbols& piece,
                                double lostForce);

/// The polygon as a drawing, tail to head.
std::string polygonDrawing(const std::vector<ForceVector>& polygon, std::string_view title);

} // namespace korvane::sheet
