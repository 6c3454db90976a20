#include "screens/layer_columns.h"

namespace korvane {

namespace {

constexpr LayerGroup groups[] = {
    {"fraUnitWt", "Unit Weight (PCF)", 180, 1830, 2370, 1830},
    {"fraStrengths", "", 1995, 3630, 0, 0},
    {"fraCoeffs", "Pressure Coefficients", 0, 0, 4185, 1815},
    {"fraElev", "", 5610, 930, 6000, 930},
    {"fraSlope", "", 6525, 930, 0, 0},
    {"fraSafety3", "Level 3 Factors of Safety", 7455, 1815, 0, 0},
};

bool frictionInRange(const Entry& e) {
    return e.value >= 0 && e.value <= 45;
}

/// A soil has friction, cohesion or both.
bool cohesionFits(const Entry& e) {
    return e.value >= 0 && !(e.value == 0 && e.problem.SoilFriction(e.side, e.row) == 0);
}

bool notAboveFriction(const Entry& e) {
    return e.value <= e.problem.SoilFriction(e.side, e.row);
}

bool belowLayerAbove(const Entry& e) {
    return e.row == 1 || e.value < e.problem.SoilBottomElev(e.side, e.row - 1);
}

// Deliberately an empty coefficient is an invalid one, not a missing one.
constexpr LayerColumn columns[] = {
    {.frame = "fraUnitWt",
     .column = {"txtSATWt", "Saturated", numberAt<&Problem::SoilSatWeight>, aboveZero},
     .kinds = "SC",
     .countsRow = true},
    {.frame = "fraUnitWt",
     .column = {"txtMSTWt", "Moist", numberAt<&Problem::SoilMoistWeight>, aboveZero},
     .kinds = "SC",
     .countsRow = true},
    {.frame = "fraStrengths",
     .column = {"txtIntFrict", "Angle of Internal Friction (DEG)", numberAt<&Problem::SoilFriction>,
                frictionInRange, IfEmpty::Zero},
     .kinds = "S",
     .countsRow = true},
    {.frame = "fraStrengths",
     .column = {"txtCohes", "Cohesion (PSF)", numberAt<&Problem::SoilCohesion>, cohesionFits,
                IfEmpty::Zero},
     .kinds = "S",
     .countsRow = true},
    {.frame = "fraStrengths",
     .column = {"txtWallFrict", "Angle of Wall Friction (DEG)",
                numberAt<&Problem::SoilWallFriction>, notAboveFriction, IfEmpty::Zero},
     .kinds = "S"},
    {.frame = "fraStrengths",
     .column = {"txtAdhes", "Adhesion (PSF)", numberAt<&Problem::SoilAdhesion>, notNegative,
                IfEmpty::Zero},
     .kinds = "S"},
    {.frame = "fraCoeffs",
     .column = {"txtAK", "Active", numberAt<&Problem::SoilCoefActive>, notNegative,
                IfEmpty::Invalid},
     .kinds = "C",
     .countsRow = true},
    {.frame = "fraCoeffs",
     .column = {"txtPK", "Passive", numberAt<&Problem::SoilCoefPassive>, aboveZero,
                IfEmpty::Invalid},
     .kinds = "C",
     .countsRow = true},
    {.frame = "fraElev",
     .column = {"txtElev", "Bottom Elevation (FT)", numberAt<&Problem::SoilBottomElev>,
                belowLayerAbove},
     .kinds = "SC",
     .notOfLast = true},
    {.frame = "fraSlope",
     .column = {"txtSlope", "Bottom Slope (FT/FT)", numberAt<&Problem::SoilBottomSlope>, anyNumber,
                IfEmpty::Zero},
     .kinds = "S",
     .notOfLast = true},
    {.frame = "fraSafety3",
     .column = {"txtFSA3", "Active", numberAt<&Problem::SoilFSActive>, notNegative, IfEmpty::Zero},
     .kinds = "S",
     .emptyIfZero = true},
    {.frame = "fraSafety3",
     .column = {"txtFSP3", "Passive", numberAt<&Problem::SoilFSPassive>, notNegative,
                IfEmpty::Zero},
     .kinds = "S",
     .emptyIfZero = true},
};

} // namespace

bool LayerColumn::isOf(SoilData kind) const {
    return std::string_view(kinds).find(static_cast<char>(kind)) != std::string_view::npos;
}

std::span<const LayerGroup> layerGroups() {
    return groups;
}

std::span<const LayerColumn> layerColumns() {
    return columns;
}

} // namespace korvane
