// What a number measures, and how it is told in US customary units and in SI units.
//
// All records of the system hold US customary units (FT, PCF, PSF, ...). Metric numbers exist at
// its edges alone: in metric input files and in what is written for people and programs that ask
// for them.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace korvane {

enum class UnitSystem { US, SI };

/// What a number measures. Forces and moments of a wall are per length of wall.
enum class Quantity {
    Number, ///< factors of safety, coefficients, ratios
    Length, ///< elevations, distances, depths
    UnitWeight,
    Stress,           ///< pressures, cohesion, adhesion, distributed loads
    LineLoad,         ///< concentrated loads along the wall
    Force,            ///< anchor force, shear
    Moment,           ///< of the wall
    Deflection,       ///< of a wall of known stiffness
    ScaledDeflection, ///< modulus times inertia per length of wall times deflection
    SectionModulus,
    Inertia,
    Modulus, ///< modulus of elasticity, stress of a section
    Angle,
    Gradient, ///< hydraulic gradient, slope
};
inline constexpr int QuantityCount = static_cast<int>(Quantity::Gradient) + 1;

/// How a quantity is told in a system of units.
struct Unit {
    const char* name; ///< "FT", "kN/m3"; empty for plain numbers
    int decimals;     ///< usual digits behind the point of a text; of the mantissa where `exponent`
    bool exponent;    ///< told as 1.2345E+06
};

const Unit& unitOf(Quantity quantity, UnitSystem system);

/// The SI value of one US customary unit: 0.3048 m for 1 FT. Exact definitions: FT 0.3048 m,
/// IN 25.4 mm, LB 4.4482216152605 N.
double siFactor(Quantity quantity);

/// A value of the records (US customary units) in a system of units.
double inUnits(Quantity quantity, double value, UnitSystem system);

/// A value given in a system of units, as the records hold it. What is converted is taken to 15
/// significant digits, so that 5.4864 m are 18 FT and not a bit beside.
double fromUnits(Quantity quantity, double value, UnitSystem system);

/// A value with at most `digits` significant decimal digits.
double roundedTo(double value, int digits);

/// A value of the records told with its usual digits: "3.05" for 10 FT in SI units. The text of
/// what is not finite is "-".
std::string quantityText(Quantity quantity, double value, UnitSystem system);

/// The same with its unit behind a blank.
std::string quantityWithUnit(Quantity quantity, double value, UnitSystem system);

/// The name of a system as files and options give it: "US", "SI".
const char* unitsName(UnitSystem system);

/// "us", "US" or "si", "SI"; nothing for any other text.
std::optional<UnitSystem> unitsNamed(std::string_view name);

} // namespace korvane
