// The one record of all input of a wall problem.
#pragma once

#include "runtime/array.h"

#include <string>

namespace korvane {

/// Side subscripts. Files, screens and reports treat the right side first.
inline constexpr int Right = 1;
inline constexpr int Left = 2;

/// Bottom elevation (FT) of the deepest layer of a side: it has none of its own.
inline constexpr double NoLayerBottom = -200000.0;

/// Degrees to radians.
inline constexpr double DegreesToRadians = 0.0174532925199433;

/// Fixed choices. The value is the letter that stands for the choice in files, reports and JSON;
/// None until one is made.
enum class WallKind : char { None = 0, Cantilever = 'C', Anchored = 'A' };
enum class Mode : char { None = 0, Design = 'D', Analysis = 'A' };
enum class SoilData : char { None = 0, Strengths = 'S', Coefficients = 'C' };
enum class WaterData : char { None = 0, Elevations = 'E', Pressures = 'P' };
enum class Seepage : char { None = 0, Automatic = 'A', Given = 'G' };

/// What an analysis looks for: one factor of safety for active and passive pressures, or that of
/// the passive ones beside the given FSActive. The value is the number that stands for it in JSON.
enum class FactorKind { None = 0, OneForBoth = 1, ActiveGiven = 2 };

/// The letters of a choice.
template <class Choice>
inline constexpr const char* lettersOf = nullptr;
template <>
inline constexpr const char* lettersOf<WallKind> = "CA";
template <>
inline constexpr const char* lettersOf<Mode> = "DA";
template <>
inline constexpr const char* lettersOf<SoilData> = "SC";
template <>
inline constexpr const char* lettersOf<WaterData> = "EP";
template <>
inline constexpr const char* lettersOf<Seepage> = "AG";

/// The letter of a choice as a text, empty for None.
template <class Choice>
std::string letterOf(Choice choice) {
    return choice == Choice::None ? std::string() : std::string(1, static_cast<char>(choice));
}

/// Every input variable of one wall problem. A count tells how many leading entries of the lists
/// below it are valid; entries beyond it are stale and never read. Lists are addressed (entry) or
/// (side, entry), from 1. Elevations and distances in FT, weights in PCF, pressures, strengths and
/// distributed loads in PSF, line loads in PLF, angles in degrees. Distances are measured from the
/// wall, positive away from it on either side.
struct Problem {
    // Heading
    int NumHeadingLines = 0;            ///< 1 to 4; 0 before any is entered
    Array<std::string, 4> HeadingLines; ///< each with its leading apostrophe

    // Control
    WallKind WallType = WallKind::None;
    Mode ProgramMode = Mode::None;
    double FSActive = 1.0;                ///< factor of safety, active pressures
    double FSPassive = 1.5;               ///< factor of safety, passive pressures (design)
    FactorKind FSKind = FactorKind::None; ///< analysis

    // Wall
    double WallTopElev = 0;    ///< FT
    double AnchorElev = 0;     ///< FT, anchored walls
    double WallBottomElev = 0; ///< FT, analysis
    double WallModulus = 0;    ///< PSI, analysis
    double WallInertia = 0;    ///< IN^4, analysis

    // Soil surface
    Array<int, 2> SurfacePointCount;  ///< 1 to 11; 0 not entered
    Array<double, 2, 11> SurfaceDist; ///< FT from the wall, ascending
    Array<double, 2, 11> SurfaceElev; ///< FT

    // Soil layers, from the top down
    Array<SoilData, 2> SoilDataKind;       ///< None: not entered
    Array<int, 2> SoilLayerCount;          ///< 1 to 11; 0 not entered
    Array<double, 2> Level2FSActive;       ///< factor of the whole side; 0 = default
    Array<double, 2> Level2FSPassive;      ///< factor of the whole side; 0 = default
    Array<double, 2, 11> SoilSatWeight;    ///< PCF
    Array<double, 2, 11> SoilMoistWeight;  ///< PCF
    Array<double, 2, 11> SoilFriction;     ///< degrees, 0 to 45
    Array<double, 2, 11> SoilCohesion;     ///< PSF
    Array<double, 2, 11> SoilWallFriction; ///< degrees
    Array<double, 2, 11> SoilAdhesion;     ///< PSF
    Array<double, 2, 11> SoilBottomElev;   ///< FT at the wall; NoLayerBottom for the last layer
    Array<double, 2, 11> SoilBottomSlope;  ///< FT/FT; the screens alone set it
    Array<double, 2, 11> SoilFSActive;     ///< factor of the layer; 0 = default
    Array<double, 2, 11> SoilFSPassive;    ///< factor of the layer; 0 = default
    Array<double, 2, 11> SoilCoefActive;   ///< active pressure coefficient
    Array<double, 2, 11> SoilCoefPassive;  ///< passive pressure coefficient

    // Water
    WaterData WaterDataKind = WaterData::None;
    double WaterUnitWeight = 0; ///< PCF
    Array<double, 2> WaterElev; ///< FT
    Seepage SeepageKind = Seepage::None;
    double SeepageElev = 0;           ///< FT
    Array<double, 2> SeepageGradient; ///< FT/FT, by solution level
    int WaterPressCount = 0;          ///< 2 to 11
    Array<double, 21> WaterPressElev; ///< FT, descending
    Array<double, 21> WaterPressure;  ///< PSF

    // Vertical surcharges
    Array<int, 2> VLineCount;         ///< 0 to 5
    Array<double, 2, 5> VLineDist;    ///< FT
    Array<double, 2, 5> VLineLoad;    ///< PLF
    Array<int, 2> VUniformCount;      ///< 0 or 1
    Array<double, 2> VUniformLoad;    ///< PSF
    Array<int, 2> VStripCount;        ///< 0 to 5
    Array<double, 2, 11> VStripStart; ///< FT
    Array<double, 2, 11> VStripEnd;   ///< FT
    Array<double, 2, 11> VStripLoad;  ///< PSF
    Array<int, 2> VRampCount;         ///< 0 or 1
    Array<double, 2> VRampStart;      ///< FT
    Array<double, 2> VRampEnd;        ///< FT
    Array<double, 2> VRampLoad;       ///< PSF at the ramp's end and beyond
    Array<int, 2> VTriCount;          ///< 0 to 5
    Array<double, 2, 11> VTriStart;   ///< FT
    Array<double, 2, 11> VTriPeak;    ///< FT
    Array<double, 2, 11> VTriEnd;     ///< FT
    Array<double, 2, 11> VTriLoad;    ///< PSF at the peak
    Array<int, 2> VVarCount;          ///< 0, or 2 to 11 points
    Array<double, 2, 11> VVarDist;    ///< FT, never decreasing
    Array<double, 2, 11> VVarLoad;    ///< PSF

    // Horizontal loads on the wall itself
    int HLineCount = 0;          ///< 0 to 5
    Array<double, 5> HLineElev;  ///< FT
    Array<double, 5> HLineLoad;  ///< PLF
    int HDistCount = 0;          ///< 0, or 2 to 11 points
    Array<double, 11> HDistElev; ///< FT, descending
    Array<double, 11> HDistLoad; ///< PSF

    bool operator==(const Problem&) const = default;
};

/// Brings the record to its empty state: counts 0, the kinds of soil, water and seepage empty,
/// FSActive 1.0 and FSPassive 1.5. All other values keep what they held (WallType, ProgramMode and
/// SoilBottomSlope among them): counts guard them.
void clearProblemData(Problem& problem);

} // namespace korvane
