#include "problem/quantities.h"

#include "runtime/number_text.h"
#include "runtime/table_order.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>

namespace korvane {

namespace {

constexpr double Foot = 0.3048;           // m
constexpr double Inch = 0.0254;           // m
constexpr double Pound = 4.4482216152605; // N
constexpr double Kilo = 1000;
constexpr double Mega = 1e6;
constexpr double PerCentimetre = 100; // 1/m
constexpr int HeldDigits = 15;
constexpr double cube(double a) {
    return a * a * a;
}

struct QuantityRow {
    Quantity quantity;
    double factor;
    Unit us;
    Unit si;
};

constexpr std::array<QuantityRow, QuantityCount> Rows{{
    {Quantity::Number, 1, {"", 4, false}, {"", 4, false}},
    {Quantity::Length, Foot, {"FT", 2, false}, {"m", 3, false}},
    {Quantity::UnitWeight, Pound / cube(Foot) / Kilo, {"PCF", 2, false}, {"kN/m3", 3, false}},
    {Quantity::Stress, Pound / (Foot * Foot) / Kilo, {"PSF", 1, false}, {"kPa", 2, false}},
    {Quantity::LineLoad, Pound / Foot / Kilo, {"LB/FT", 1, false}, {"kN/m", 2, false}},
    {Quantity::Force, Pound / Foot / Kilo, {"LB/FT", 0, false}, {"kN/m", 2, false}},
    {Quantity::Moment, Pound / Kilo, {"LB-FT/FT", 0, false}, {"kNm/m", 2, false}},
    {Quantity::Deflection, Inch* Kilo, {"IN", 3, false}, {"mm", 1, false}},
    {Quantity::ScaledDeflection,
     Pound / Kilo* cube(Inch) / Foot,
     {"LB-IN3/FT", 4, true},
     {"kNm3/m", 4, true}},
    {Quantity::SectionModulus,
     cube(Inch* PerCentimetre) / Foot,
     {"IN3/FT", 2, false},
     {"cm3/m", 0, false}},
    {Quantity::Inertia,
     cube(Inch* PerCentimetre) * Inch* PerCentimetre / Foot,
     {"IN4/FT", 1, false},
     {"cm4/m", 0, false}},
    {Quantity::Modulus, Pound / (Inch * Inch) / Mega, {"PSI", 0, false}, {"MPa", 1, false}},
    {Quantity::Angle, 1, {"deg", 2, false}, {"deg", 2, false}},
    {Quantity::Gradient, 1, {"", 4, false}, {"", 4, false}},
}};

static_assert(inOrder(Rows, &QuantityRow::quantity));

const QuantityRow& rowOf(Quantity quantity) {
    return Rows[static_cast<std::size_t>(quantity)];
}

std::string decimalsText(double value, const Unit& unit) {
    std::string format = unit.decimals > 0 ? "0." : "0";
    format.append(static_cast<std::size_t>(unit.decimals), '0');
    return formatNumber(value, NumberFormat(unit.exponent ? format + "E+00" : format));
}

} // namespace

double roundedTo(double value, int digits) {
    constexpr std::size_t room = 64;
    char text[room];
    const auto end =
        std::to_chars(text, text + room, value, std::chars_format::scientific, digits - 1);
    double result = value;
    std::from_chars(text, end.ptr, result);
    return result;
}

const Unit& unitOf(Quantity quantity, UnitSystem system) {
    const QuantityRow& row = rowOf(quantity);
    return system == UnitSystem::SI ? row.si : row.us;
}

double siFactor(Quantity quantity) {
    return rowOf(quantity).factor;
}

double inUnits(Quantity quantity, double value, UnitSystem system) {
    return system == UnitSystem::SI ? value * rowOf(quantity).factor : value;
}

double fromUnits(Quantity quantity, double value, UnitSystem system) {
    const double factor = rowOf(quantity).factor;
    return system == UnitSystem::SI && factor != 1 ? roundedTo(value / factor, HeldDigits) : value;
}

std::string quantityText(Quantity quantity, double value, UnitSystem system) {
    const double told = inUnits(quantity, value, system);
    return std::isfinite(told) ? decimalsText(told, unitOf(quantity, system)) : "-";
}

std::string quantityWithUnit(Quantity quantity, double value, UnitSystem system) {
    const std::string unit = unitOf(quantity, system).name;
    const std::string text = quantityText(quantity, value, system);
    return unit.empty() ? text : text + " " + unit;
}

const char* unitsName(UnitSystem system) {
    return system == UnitSystem::SI ? "SI" : "US";
}

std::optional<UnitSystem> unitsNamed(std::string_view name) {
    for (const UnitSystem system : {UnitSystem::US, UnitSystem::SI}) {
        if (upperCase(name) == unitsName(system)) {
            return system;
        }
    }
    return std::nullopt;
}

} // namespace korvane
