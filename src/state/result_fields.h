// The numbers of the results: the name that JSON and tables give each, and what it measures.
#pragma once

#include "problem/quantities.h"

namespace korvane {

struct ResultField {
    const char* name;
    Quantity quantity;
};

/// Units of the records: those of `Results` and its parts. "maxMoment" and the like name a value
/// and the elevation at which it stands.
namespace results {

// Of a level
inline constexpr ResultField bottomElev{"bottomElev", Quantity::Length};
inline constexpr ResultField penetration{"penetration", Quantity::Length};
inline constexpr ResultField anchorForce{"anchorForce", Quantity::Force};
inline constexpr ResultField factorOfSafety{"factorOfSafety", Quantity::Number};
inline constexpr ResultField factorGiven{"factorGiven", Quantity::Number};
inline constexpr ResultField seepageGradient{"seepageGradient", Quantity::Gradient};
inline constexpr ResultField transitionElev{"transitionElev", Quantity::Length};
inline constexpr ResultField toeReaction{"toeReaction", Quantity::Force};
inline constexpr ResultField maxMoment{"maxMoment", Quantity::Moment};
inline constexpr ResultField maxShear{"maxShear", Quantity::Force};
inline constexpr ResultField maxDeflection{"maxDeflection", Quantity::Deflection};
inline constexpr ResultField maxScaledDeflection{"maxDeflection", Quantity::ScaledDeflection};

// Of a result row
inline constexpr ResultField elev{"elev", Quantity::Length};
inline constexpr ResultField moment{"moment", Quantity::Moment};
inline constexpr ResultField shear{"shear", Quantity::Force};
inline constexpr ResultField deflection{"deflection", Quantity::Deflection};
inline constexpr ResultField scaledDeflection{"deflection", Quantity::ScaledDeflection};
inline constexpr ResultField pressure{"pressure", Quantity::Stress};

// Of a grid point
inline constexpr ResultField water{"water", Quantity::Stress};
inline constexpr ResultField active{"active", Quantity::Stress};
inline constexpr ResultField passive{"passive", Quantity::Stress};
inline constexpr ResultField netActive{"netActive", Quantity::Stress};
inline constexpr ResultField netPassive{"netPassive", Quantity::Stress};

// Of a layer as it was used
inline constexpr ResultField fsActive{"fsActive", Quantity::Number};
inline constexpr ResultField fsPassive{"fsPassive", Quantity::Number};
inline constexpr ResultField frictionActive{"frictionActive", Quantity::Angle};
inline constexpr ResultField frictionPassive{"frictionPassive", Quantity::Angle};
inline constexpr ResultField wallFrictionActive{"wallFrictionActive", Quantity::Angle};
inline constexpr ResultField wallFrictionPassive{"wallFrictionPassive", Quantity::Angle};
inline constexpr ResultField cohesionActive{"cohesionActive", Quantity::Stress};
inline constexpr ResultField cohesionPassive{"cohesionPassive", Quantity::Stress};
inline constexpr ResultField adhesionActive{"adhesionActive", Quantity::Stress};
inline constexpr ResultField adhesionPassive{"adhesionPassive", Quantity::Stress};
inline constexpr ResultField ka{"ka", Quantity::Number};
inline constexpr ResultField kp{"kp", Quantity::Number};

// Of the moment reduction
inline constexpr ResultField height{"height", Quantity::Length};
inline constexpr ResultField alpha{"alpha", Quantity::Number};
inline constexpr ResultField beta{"beta", Quantity::Number};
inline constexpr ResultField stability{"stability", Quantity::Number};
inline constexpr ResultField sectionModulus{"sectionModulus", Quantity::SectionModulus};
inline constexpr ResultField inertia{"inertia", Quantity::Inertia};
inline constexpr ResultField allowableStress{"allowableStress", Quantity::Modulus};
inline constexpr ResultField modulus{"modulus", Quantity::Modulus};
/// log10 of H^4 / EI with H in FT, E in PSI and I in IN^4: of these units alone.
inline constexpr ResultField logRigidity{"logRigidity", Quantity::Number};
inline constexpr ResultField momentRatio{"momentRatio", Quantity::Number};

// Of a failure
inline constexpr ResultField distance{"distance", Quantity::Length};
inline constexpr ResultField factorLow{"factorLow", Quantity::Number};
inline constexpr ResultField factorHigh{"factorHigh", Quantity::Number};

} // namespace results

} // namespace korvane
