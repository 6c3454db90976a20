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
     .column = {"txtSATWt", "Saturated", "Saturated unit weight (PCF)",
                ProblemField::SoilSatWeight},
     .kinds = "SC",
     .countsRow = true},
    {.frame = "fraUnitWt",
     .column = {"txtMSTWt", "Moist", "Moist unit weight (PCF)", ProblemField::SoilMoistWeight},
     .kinds = "SC",
     .countsRow = true},
    {.frame = "fraStrengths",
     .column = {"txtIntFrict", "Angle of Internal Friction (DEG)",
                "Angle of internal friction (DEG)", ProblemField::SoilFriction, nullptr,
                IfEmpty::Zero},
     .kinds = "S",
     .countsRow = true},
    {.frame = "fraStrengths",
     .column = {"txtCohes", "Cohesion (PSF)", "Cohesion (PSF)", ProblemField::SoilCohesion,
                "not below 0; friction and cohesion not both 0", IfEmpty::Zero},
     .kinds = "S",
     .countsRow = true},
    {.frame = "fraStrengths",
     .column = {"txtWallFrict", "Angle of Wall Friction (DEG)", "Angle of wall friction (DEG)",
                ProblemField::SoilWallFriction, "not above the internal friction", IfEmpty::Zero},
     .kinds = "S"},
    {.frame = "fraStrengths",
     .column = {"txtAdhes", "Adhesion (PSF)", "Adhesion (PSF)", ProblemField::SoilAdhesion, nullptr,
                IfEmpty::Zero},
     .kinds = "S"},
    {.frame = "fraCoeffs",
     .column = {"txtAK", "Active", "Active pressure coefficient", ProblemField::SoilCoefActive,
                nullptr, IfEmpty::Invalid},
     .kinds = "C",
     .countsRow = true},
    {.frame = "fraCoeffs",
     .column = {"txtPK", "Passive", "Passive pressure coefficient", ProblemField::SoilCoefPassive,
                nullptr, IfEmpty::Invalid},
     .kinds = "C",
     .countsRow = true},
    {.frame = "fraElev",
     .column = {"txtElev", "Bottom Elevation (FT)", "Bottom elevation (FT)",
                ProblemField::SoilBottomElev, "below the layer above; not read in the last layer"},
     .kinds = "SC",
     .notOfLast = true},
    {.frame = "fraSlope",
     .column = {"txtSlope", "Bottom Slope (FT/FT)", "Bottom slope (FT/FT)",
                ProblemField::SoilBottomSlope,
                "rising away from the wall is positive; not read in the last layer", IfEmpty::Zero},
     .kinds = "S",
     .notOfLast = true},
    {.frame = "fraSafety3",
     .column = {"txtFSA3", "Active", "Level 3 factor of safety, active", ProblemField::SoilFSActive,
                nullptr, IfEmpty::Zero, "empty means the level 2 or level 1 factor"},
     .kinds = "S",
     .emptyIfZero = true},
    {.frame = "fraSafety3",
     .column = {"txtFSP3", "Passive", "Level 3 factor of safety, passive",
                ProblemField::SoilFSPassive, nullptr, IfEmpty::Zero,
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
