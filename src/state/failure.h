// The ways in which a solution ends without results: what happened, where, and the words for it.
#pragma once

#include "problem/problem.h"
#include "problem/validate.h"
#include "state/message_box.h"

#include <string>

namespace korvane {

enum class FailureCode {
    None,           ///< all is well
    InvalidProblem, ///< finding: the record holds what neither a file nor a screen can leave there
    WedgeMethodMissing,   ///< a side needs a wedge method and the options name none
    LayerAboveSurface,    ///< side, layer
    LayerBottomsCross,    ///< side, layer: with the next one; distance
    CoefficientsForWedge, ///< side
    GradientTooLarge,
    FrictionTooLarge,      ///< side, layer: developed friction beyond the tables
    SoilWeightNotPositive, ///< side, layer, gradient
    NoSignChange,          ///< of net active pressure in the embedded depth
    ImproperRotation,
    CantileverBottomAbove, ///< elev
    NoCantileverBottom,    ///< elev, the lowest one tried
    CantileverOscillates,  ///< elev
    CantileverTurnsAround, ///< under the seepage of a pass
    RefinementFails,       ///< level
    NoFreeEarthBottom,     ///< elev, the lowest one tried
    AnchoredOscillates,    ///< level, elev
    AnchoredTurnsAround,   ///< level
    InconsistentFactors,   ///< level; low and high if bracketed
    FactorDeclined,        ///< level, low: the limit at which the search was told to stop
    FactorNotFound,        ///< level
    RunTimeError,          ///< error
    InputRefused,          ///< by the reader, which has told why
    FileFault,             ///< error
};
inline constexpr int FailureCodeCount = static_cast<int>(FailureCode::FileFault) + 1;

/// What a solution is doing.
enum class Doing {
    Reading,       ///< the input file
    Preparing,     ///< methods, regions, grid, water
    SoilPressures, ///< side
    NetPressures,
    WallBottom,     ///< level
    Bending,        ///< level
    FactorOfSafety, ///< level
    MomentReduction,
    Reporting, ///< reports and other outputs
};

/// The place at which a solution is at work; 0 where a side or level says nothing.
struct Stage {
    Doing doing = Doing::Preparing;
    int side = 0;
    int level = 0;
};

/// Why a solution ended. Fields that do not belong to the code or the stage are 0.
struct Failure {
    FailureCode code = FailureCode::None;
    Stage stage = {};
    int side = 0;
    int layer = 0;
    int level = 0;
    double elev = 0;        ///< FT
    double distance = 0;    ///< FT from the wall
    double gradient = 0;    ///< FT/FT, of the seepage under which soil weighs nothing
    double low = 0;         ///< factor of safety
    double high = 0;        ///< factor of safety
    bool bracketed = false; ///< low and high stand
    bool anchored = false;  ///< the wall's kind
    int error = 0;          ///< number of the run-time error
    Finding finding = {};   ///< of an invalid problem: its first one

    explicit operator bool() const { return code != FailureCode::None; }
};

/// The name of a code in JSON: "no-sign-change".
const char* failureName(FailureCode code);

/// True where a failure of this kind names an elevation.
bool failureHasElevation(FailureCode code);

/// What was being done, to stand behind "while": "finding the soil pressures of the right side".
std::string stageText(const Stage& stage, WallKind wall);

/// True where a failure has a box: all but a search that the user stopped.
bool hasBox(const Failure& failure);

/// The box that tells a failure. It has one OK button.
MessageBox failureBox(const Failure& failure);

/// The question whether to go on beyond a factor of safety.
MessageBox factorQuestion(double limit);

} // namespace korvane
