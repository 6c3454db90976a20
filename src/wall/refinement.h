// The bottom of a wall between two grid points: the last step of all three searches.
#pragma once

#include "runtime/function_ref.h"
#include "state/state.h"

#include <optional>

namespace korvane {

/// A piece of the net active diagram between two neighbouring grid points.
struct DiagramSegment {
    double upperElev;     ///< FT
    double lowerElev;     ///< FT
    double upperPressure; ///< PSF, just below the upper point
    double lowerPressure; ///< PSF, just above the lower point

    /// The straight line between the ends, PSF; not finite where the segment has no length.
    double pressureAt(double elev) const;
};

/// The segment of NetActive above grid point `row`.
DiagramSegment segmentAbove(const State& state, int row);

/// A point of the diagram: elevation FT, pressure PSF.
struct DiagramPoint {
    double elev;
    double pressure;
};

/// Force or moment balance of a trial at a point of the diagram; not finite where it has none.
using Balance = FunctionRef<double(const DiagramPoint&)>;

/// A refinement: what must vanish, how near, and where its secant starts.
struct Refinement {
    DiagramSegment segment;
    double heldBalance;  ///< of the fixed end of every secant, at the upper point
    double startBalance; ///< of the lower point
    double tolerance;    ///< on the balance's size, itself included
};

/// Finds the point at which the balance vanishes within its tolerance: by secants that hold the
/// upper end, and by halving where these do not come to rest inside the segment (100 evaluations,
/// a zero divisor or a value that is not finite, an end outside). `balance` was last called for
/// the point returned. Nothing where the ends have one sign or 200 halvings do not do.
/// RuntimeError 11 or 6 where a balance that halving needs does not exist.
std::optional<DiagramPoint> refineInSegment(const Refinement& refinement, const Balance& balance);

/// Ends the solution where a refinement found nothing.
void failRefinement(State& state, int level);

} // namespace korvane
