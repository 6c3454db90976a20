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

// Deliberately an empty coefficient is an invalid one, not a missing one.
constexpr LayerColumn columns[] = {
    {.frame = "fraUnitWt",
     .column = {"txtSATWt", "Saturated", ProblemField::SoilSatWeight},
     .kinds = "SC",
     .countsRow = true},
    {.frame = "fraUnitWt",
     .column = {"txtMSTWt", "Moist", ProblemField::SoilMoistWeight},
     .kinds = "SC",
     .countsRow = true},
    {.frame = "fraStrengths",
     .column = {"txtIntFrict", "Angle of Internal Friction (DEG)", ProblemField::SoilFriction,
                IfEmpty::Zero},
     .kinds = "S",
     .countsRow = true},
    {.frame = "fraStrengths",
     .column = {"txtCohes", "Cohesion (PSF)", ProblemField::SoilCohesion, IfEmpty::Zero},
     .kinds = "S",
     .countsRow = true},
    {.frame = "fraStrengths",
     .column = {"txtWallFrict", "Angle of Wall Friction (DEG)", ProblemField::SoilWallFriction,
                IfEmpty::Zero},
     .kinds = "S"},
    {.frame = "fraStrengths",
     .column = {"txtAdhes", "Adhesion (PSF)", ProblemField::SoilAdhesion, IfEmpty::Zero},
     .kinds = "S"},
    {.frame = "fraCoeffs",
     .column = {"txtAK", "Active", ProblemField::SoilCoefActive, IfEmpty::Invalid},
     .kinds = "C",
     .countsRow = true},
    {.frame = "fraCoeffs",
     .column = {"txtPK", "Passive", ProblemField::SoilCoefPassive, IfEmpty::Invalid},
     .kinds = "C",
     .countsRow = true},
    {.frame = "fraElev",
     .column = {"txtElev", "Bottom Elevation (FT)", ProblemField::SoilBottomElev},
     .kinds = "SC",
     .notOfLast = true},
    {.frame = "fraSlope",
     .column = {"txtSlope", "Bottom Slope (FT/FT)", ProblemField::SoilBottomSlope, IfEmpty::Zero},
     .kinds = "S",
     .notOfLast = true},
    {.frame = "fraSafety3",
     .column = {"txtFSA3", "Active", ProblemField::SoilFSActive, IfEmpty::Zero},
     .kinds = "S",
     .emptyIfZero = true},
    {.frame = "fraSafety3",
     .column = {"txtFSP3", "Passive", ProblemField::SoilFSPassive, IfEmpty::Zero},
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
