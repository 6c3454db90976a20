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

constexpr Test frictionInRange{[](const Entry& e) { return e.value >= 0 && e.value <= 45; },
                               "0 to 45"};
constexpr Test cohesionFits{
    [](const Entry& e) {
        return e.value >= 0 && !(e.value == 0 && e.problem.SoilFriction(e.side, e.row) == 0);
    },
    "not below 0; friction and cohesion not both 0"};
constexpr Test notAboveFriction{
    [](const Entry& e) { return e.value <= e.problem.SoilFriction(e.side, e.row); },
    "not above the internal friction"};
constexpr Test belowLayerAbove{[](const Entry& e) {
                                   return e.row == 1 ||
                                          e.value < e.problem.SoilBottomElev(e.side, e.row - 1);
                               },
                               "below the layer above; not read in the last layer"};
constexpr Test slope{[](const Entry&) { return true; },
                     "rising away from the wall is positive; not read in the last layer"};

// Deliberately an empty coefficient is an invalid one, not a missing one.
constexpr LayerColumn columns[] = {
    {.frame = "fraUnitWt",
     .column = {"txtSATWt", "Saturated", "Saturated unit weight (PCF)",
                numberAt<&Problem::SoilSatWeight>, aboveZero},
     .kinds = "SC",
     .countsRow = true},
    {.frame = "fraUnitWt",
     .column = {"txtMSTWt", "Moist", "Moist unit weight (PCF)", numberAt<&Problem::SoilMoistWeight>,
                aboveZero},
     .kinds = "SC",
     .countsRow = true},
    {.frame = "fraStrengths",
     .column = {"txtIntFrict", "Angle of Internal Friction (DEG)",
                "Angle of internal friction (DEG)", numberAt<&Problem::SoilFriction>,
                frictionInRange, IfEmpty::Zero},
     .kinds = "S",
     .countsRow = true},
    {.frame = "fraStrengths",
     .column = {"txtCohes", "Cohesion (PSF)", "Cohesion (PSF)", numberAt<&Problem::SoilCohesion>,
                cohesionFits, IfEmpty::Zero},
     .kinds = "S",
     .countsRow = true},
    {.frame = "fraStrengths",
     .column = {"txtWallFrict", "Angle of Wall Friction (DEG)", "Angle of wall friction (DEG)",
                numberAt<&Problem::SoilWallFriction>, notAboveFriction, IfEmpty::Zero},
     .kinds = "S"},
    {.frame = "fraStrengths",
     .column = {"txtAdhes", "Adhesion (PSF)", "Adhesion (PSF)", numberAt<&Problem::SoilAdhesion>,
                notNegative, IfEmpty::Zero},
     .kinds = "S"},
    {.frame = "fraCoeffs",
     .column = {"txtAK", "Active", "Active pressure coefficient",
                numberAt<&Problem::SoilCoefActive>, notNegative, IfEmpty::Invalid},
     .kinds = "C",
     .countsRow = true},
    {.frame = "fraCoeffs",
     .column = {"txtPK", "Passive", "Passive pressure coefficient",
                numberAt<&Problem::SoilCoefPassive>, aboveZero, IfEmpty::Invalid},
     .kinds = "C",
     .countsRow = true},
    {.frame = "fraElev",
     .column = {"txtElev", "Bottom Elevation (FT)", "Bottom elevation (FT)",
                numberAt<&Problem::SoilBottomElev>, belowLayerAbove},
     .kinds = "SC",
     .notOfLast = true},
    {.frame = "fraSlope",
     .column = {"txtSlope", "Bottom Slope (FT/FT)", "Bottom slope (FT/FT)",
                numberAt<&Problem::SoilBottomSlope>, slope, IfEmpty::Zero},
     .kinds = "S",
     .notOfLast = true},
    {.frame = "fraSafety3",
     .column = {"txtFSA3", "Active", "Level 3 factor of safety, active",
                numberAt<&Problem::SoilFSActive>, notNegative, IfEmpty::Zero,
                "empty means the level 2 or level 1 factor"},
     .kinds = "S",
     .emptyIfZero = true},
    {.frame = "fraSafety3",
     .column = {"txtFSP3", "Passive", "Level 3 factor of safety, passive",
                numberAt<&Problem::SoilFSPassive>, notNegative, IfEmpty::Zero,
                "empty means the level 2 or level 1 factor"},
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
