// A beam of textbooks, solved by the procedure that gives every wall its moments.
#pragma once

namespace korvane {

/// An upright beam under a load that grows from zero at its top to `load` at its bottom.
struct BeamUnderTriangle {
    bool fixed = true; ///< free top and fixed bottom; else simply supported at both ends
    double length = 0; ///< FT, less than 290
    double load = 0;   ///< PSF
};

/// At one depth, with EI = 1 and the signs of the element forces.
struct BeamFigures {
    double shear = 0;      ///< LB, just above the depth
    double moment = 0;     ///< LB-FT
    double deflection = 0; ///< LB-FT^3
    double rotation = 0;   ///< LB-FT^2
};

/// At `depth` FT below the top, on rows 1 FT apart and one at the depth. RuntimeError 5 where
/// length or depth are out of range.
BeamFigures beamAt(const BeamUnderTriangle& beam, double depth);

} // namespace korvane
