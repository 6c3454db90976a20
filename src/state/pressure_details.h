// How the soil pressures of a solution came about, kept on request: vertical stresses at the breaks
// of the diagrams, the share of each surcharge, and the governing planes of the wedge methods.
#pragma once

#include "problem/loads.h"
#include "runtime/array.h"

#include <vector>

namespace korvane {

/// A break of the diagrams by coefficients, seen from the interval above or below it. Pressures act
/// on the wall, horizontally; all are positive toward the wall.
struct StressPoint {
    double elev = 0;         ///< FT
    double soilWeight = 0;   ///< PSF, of the soil above with the water in it
    double water = 0;        ///< PSF of it that the water bears; less than hydrostatic where water
                             ///< seeps down, more where it seeps up
    double uniformLoad = 0;  ///< PSF
    double effective = 0;    ///< PSF, vertical: soil weight less water, and the uniform load
    double soilActive = 0;   ///< PSF, by the interval's coefficient
    double soilPassive = 0;  ///< PSF, likewise
    bool onGrid = false;     ///< a row of the grid stands here; what follows is that row's
    double surcharge = 0;    ///< PSF, by theory of elasticity
    double activeSum = 0;    ///< PSF, soil and surcharge before the tension rule
    double active = 0;       ///< PSF in force
    double passive = 0;      ///< PSF in force: soil and surcharge, no rule changes it
    bool tensionCut = false; ///< the soil would have pulled at the wall
};

/// The soil between two breaks of a side by coefficients.
struct StressInterval {
    int layer = 1;
    bool belowWater = false; ///< the unit weight is the saturated one
    bool seeps = false;
    double unitWeight = 0;     ///< PCF, saturated or moist
    double waterWeight = 0;    ///< PCF that the water bears: its unit weight, with seepage times
                               ///< 1 - gradient on the right and 1 + gradient on the left
    double Ka = 0, Kp = 0;     ///< coefficients
    double ca = 0, cp = 0;     ///< PSF, developed cohesion
    double cosA = 1, cosP = 1; ///< of the developed wall friction: the pressure's horizontal share
    StressPoint top, bottom;
};

/// One load of a side by coefficients, of a kind whose pressures come from the theory of
/// elasticity.
struct SurchargeShare {
    Load kind = Load::Line;
    int index = 1;                ///< of the load among those of its kind
    std::vector<double> pressure; ///< PSF, by row
};

/// The rows below the surface, as the grid stood when the surcharges were worked out.
struct SurchargeShares {
    int firstRow = 0;   ///< of the grid; row r of the vectors is SurchargePressures(firstRow + r)
    double surface = 0; ///< FT, where depth counts from
    std::vector<double> elev;          ///< FT
    std::vector<double> sum;           ///< PSF, of all loads
    std::vector<SurchargeShare> loads; ///< empty where the side bears none
};

/// A piece of a failure plane and the soil on it. Forces in LB per foot of wall.
struct WedgePiece {
    int layer = 1;        ///< whose strength acts along the piece
    double angle = 0;     ///< degrees from the vertical, of the piece's equilibrium
    double x1 = 0;        ///< FT from the wall, inner end
    double y1 = 0;        ///< FT elevation
    double x2 = 0;        ///< FT, outer end
    double y2 = 0;        ///< FT elevation
    double length = 0;    ///< FT
    double soil = 0;      ///< LB, weight of the soil above the piece, by effective unit weights
    double surcharge = 0; ///< LB, load on the ground above the piece
    double cohesion = 0;  ///< LB, developed, along the piece
    double friction = 0;  ///< developed tangent
    /// LB, horizontal, toward the wall: what the piece adds to the push on its inner neighbour; of
    /// the piece at the wall the force on the wall.
    double force = 0;
};

/// The plane that gives a force: with the sweep the one of the extreme.
struct WedgePlane {
    bool found = false;      ///< false: the sweep has no plane with such a force
    double angle = 0;        ///< degrees from the vertical, at the wall
    double force = 0;        ///< LB per foot of wall, horizontal, from the surface down
    double outerForce = 0;   ///< LB, push of all pieces but the one at the wall
    double wallFriction = 0; ///< degrees, developed, the mean from the surface down
    double wallAdhesion = 0; ///< LB, developed, summed from the surface down
    int firstPiece = 0;      ///< in WedgeDetails::pieces, from 0
    int pieceCount = 0;      ///< from the ground to the wall
};

/// The planes from one point of the wall.
struct WedgeRow {
    double elev = 0; ///< FT: of a row (sweep) or midway between two rows (fixed surface)
    int layer = 1;   ///< at that point of the wall
    WedgePlane active;
    WedgePlane passive;
    bool activeMarked = false; ///< the sweep found no turning point
    bool passiveMarked = false;
};

/// A row of a wedge side: pressures from forces, then the rules. (k = 1 just below the row, k = 2
/// just above). The surface row has no k = 2, the last row no k = 1.
struct WedgePressureRow {
    double elev = 0;        ///< FT
    bool inserted = false;  ///< where the active diagram crosses zero; it has no forces
    int layer = 1;          ///< of the interval above
    double activeForce = 0; ///< LB per foot of wall, from the surface down, as differentiated
    double passiveForce = 0;
    Array<double, 2> activeBefore;  ///< PSF (k), before the tension rule
    Array<double, 2> passiveBefore; ///< PSF (k), before the floor
    double soilWeight = 0;          ///< PSF, of the soil above with the water in it
    double water = 0;               ///< PSF of it that the water bears
    double uniformLoad = 0;         ///< PSF
    double effective = 0;           ///< PSF, vertical: the floor of the passive pressure
    Array<double, 2> active;        ///< PSF (k), in force
    Array<double, 2> passive;       ///< PSF (k), in force
    Array<bool, 2> tensionCut;      ///< (k)
    Array<bool, 2> raised;          ///< (k), to the floor
};

/// The pressures just below the surface of a wedge side, by Coulomb's coefficients for sloping
/// ground.
struct WedgeSurface {
    bool used = false;       ///< false without cohesion and without a uniform load: no pressures
    double load = 0;         ///< PSF, uniform
    double wallFriction = 0; ///< degrees, not divided by a factor
    double slope = 0;        ///< radians: the arctangent of the rise, over the distance
    double slopeActive = 0, slopePassive = 0;       ///< radians, as limited
    double frictionActive = 0, frictionPassive = 0; ///< degrees, developed
    double cohesionActive = 0, cohesionPassive = 0; ///< PSF, developed
    double Ka = 0, Kp = 0;
};

/// A side that takes a wedge method.
struct WedgeDetails {
    std::vector<WedgeRow> rows;
    std::vector<WedgePiece> pieces; ///< of all planes
    WedgeSurface surface;
    std::vector<WedgePressureRow> pressures; ///< from the surface down
};

/// What stands behind the pressures of one side. Elevations are those of the grid as it stood when
/// the side was worked out: the other side and the searches insert rows later and move some.
struct SideDetails {
    std::vector<StressInterval> stresses; ///< by coefficients, from the surface down
    std::vector<double> rows;             ///< by coefficients: FT, all rows of the grid
    SurchargeShares surcharges;           ///< by coefficients
    WedgeDetails wedge;                   ///< by a wedge method

    /// Forgets all and keeps the memory.
    void clear() {
        stresses.clear();
        rows.clear();
        surcharges.elev.clear();
        surcharges.sum.clear();
        surcharges.loads.clear();
        wedge.rows.clear();
        wedge.pieces.clear();
        wedge.surface = {};
        wedge.pressures.clear();
    }
};

/// Both sides; empty where nothing was asked for.
struct PressureDetails {
    bool kept = false;
    Array<SideDetails, 2> sides;
};

} // namespace korvane
