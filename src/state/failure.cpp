#include "state/failure.h"

#include "runtime/number_text.h"
#include "runtime/runtime_error.h"
#include "runtime/table_order.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace korvane {

namespace {

/// The words of one code. In texts {elev}, {side}, {layer}, {method} and the like stand for the
/// failure's values.
struct FailureWords {
    FailureCode code;
    const char* name;
    const char* title;
    const char* text;
    Icon icon = Icon::None;
    bool hasElev = false; ///< the failure's elevation stands
};

constexpr const char* Plain = "KORVANE";
constexpr const char* LayerTitle = "INCONSISTENT SOIL LAYER DATA";

/// The misspellings and the words that run together are the system's
/// own, deliberately.
constexpr std::array<FailureWords, FailureCodeCount> Words{{
    {FailureCode::None, "none", Plain, ""},
    {FailureCode::InvalidProblem, "invalid-problem", "INVALID PROBLEM",
     "{finding}.\n\n     Unable to continue."},
    {FailureCode::WedgeMethodMissing, "wedge-method-missing", Plain,
     "WEDGE METHOD REQUIRED FOR SOIL PRESSURES"},
    {FailureCode::LayerAboveSurface, "layer-above-surface", LayerTitle,
     "Bottom of {side} soil layer {layer} is at or above\nthe soil surface at the wall."
     "\n\n     Unable to continue."},
    {FailureCode::LayerBottomsCross, "layer-bottoms-cross", LayerTitle,
     "Bottoms of {side} soil layers {layer} and {next} cross\n{distance} FT from the wall."
     "\n\n     Unable to continue."},
    {FailureCode::CoefficientsForWedge, "coefficients-for-wedge", LayerTitle,
     "{side} soil data are pressure coefficients, which\n"
     "the wedge method required by the surface cannot use.\n\n     Unable to continue."},
    {FailureCode::GradientTooLarge, "gradient-too-large", "INCONSISTENT SEEPAGE DATA",
     "Seepage gradient is too large for the seepage\n"
     "elevation and the water elevations.\n\n     Unable to continue."},
    {FailureCode::FrictionTooLarge, "friction-too-large", Plain,
     "Calculated angle of internal friction is greater\n"
     "     45 degrees.  Unable to continue.",
     Icon::Exclamation},
    {FailureCode::SoilWeightNotPositive, "soil-weight-not-positive", "IMPROPER SOIL WEIGHT",
     "Seepage has resulted in negative or zero\n     effective unit weight of soil.\n\n"
     "UNABLE TO CONTINUE."},
    {FailureCode::NoSignChange, "no-sign-change", "INVALID NET ACTIVE PRESSURE DISTRIBUTION",
     "NET ACTIVE PRESSURE DOES NOT CHANGE SIGN\n     IN THE EMBEDDED DEPTH AS REQUIRED BY\n"
     "     CLASSICAL METHODS.\n\n                        UNABLE TO CONTINUE."},
    {FailureCode::ImproperRotation, "improper-rotation", "IMPROPER WALL ROTATION",
     "Conditions encountered where impending rotation\nof{wall} wall is {turn}"
     "\nor driving force of retained soil above left side surfaceis zero."
     "\n\n     Unable to continue."},
    {FailureCode::CantileverBottomAbove, "cantilever-bottom-above", Plain,
     "DESIGN BOTTOM OF CANTILEVER WALL IS ABOVE ELEVATION {elev}\n\n     UNABLE TO CONTINUE.",
     Icon::None, true},
    {FailureCode::NoCantileverBottom, "no-cantilever-bottom", Plain,
     "NO SOLUTION FOR CANTILEVER WALL DESIGN WITH\nBOTTOM OF WALL DOWN TO ELEVATION {elev} (FT)."
     "\n\n     UNABLE TO CONTINUE.",
     Icon::None, true},
    {FailureCode::CantileverOscillates, "cantilever-oscillates", Plain,
     "DESIGN BOTTOM OF CANTILEVER WALL APPEARS TO BE\nOSCILLATING ABOUT ELEVATION {elev} (FT)."
     "\n\n     UNABLE TO CONTINUE.",
     Icon::None, true},
    {FailureCode::CantileverTurnsAround, "cantilever-turns-around", Plain,
     "CONDITIONS ENCOUNTERED WHERE IMPENDING ROTATION OF\n"
     "CANTILEVER WALL IS CLOCKWISE.  OR DRIVING FORCES OF THE\n"
     "RETAINED SOIL ABOVE THE LEFT SIDE SURFACE ARE ZERO.\n\n     UNABLE TO CONTINUE."},
    {FailureCode::RefinementFails, "refinement-fails", Plain,
     "REFINEMENT OF WALL BOTTOM DOES NOT CONVERGE\nFOR {WALL}.\n\n     UNABLE TO CONTINUE."},
    {FailureCode::NoFreeEarthBottom, "no-free-earth-bottom", Plain,
     "A SOLUTION FOR PENETRATION HAS NOT BEEN FOUND FOR AN ELEVATION\nDOWN TO EL {elev} FT."
     "\n\n     UNABLE TO CONTINUE.",
     Icon::None, true},
    {FailureCode::AnchoredOscillates, "anchored-oscillates", Plain,
     "DESIGN PENETRATION FOR ANCHORED WALL APPEARS\n{tobe}OSCILLATING ABOUT ELEVATION = {elev} FT."
     "\n\nUNABLE TO CONTINUE.",
     Icon::None, true},
    {FailureCode::AnchoredTurnsAround, "anchored-turns-around", Plain,
     "CONDITIONS ENCOUNTERED WHERE ANCHORED WALL TENDS\n"
     "TO ROTATE COUNTERCLOCKWISE ABOUT ANCHOR OR\nANCHOR FORCE IS COMPRESSION."
     "\n\n     UNABLE TO CONTINUE."},
    {FailureCode::InconsistentFactors, "inconsistent-factors", "INCONSISTENT RESULTS",
     "Inconsistent results have been encountered\nduring attempt to analyze\n\n     {WALL}{bracket}"
     "\n\n     Unable to continue."},
    {FailureCode::FactorDeclined, "factor-declined", Plain, ""},
    {FailureCode::FactorNotFound, "factor-not-found", Plain,
     "SEARCH FOR THE FACTOR OF SAFETY DOES NOT CONVERGE.\n\n     UNABLE TO CONTINUE."},
    {FailureCode::RunTimeError, "run-time-error", Plain, "{error}"},
    {FailureCode::InputRefused, "input-refused", Plain, ""},
    {FailureCode::FileFault, "file-fault", Plain, ""},
}};
static_assert(inOrder(Words, &FailureWords::code));

const FailureWords& wordsOf(FailureCode code) {
    return Words.at(static_cast<std::size_t>(code));
}

std::string upperSide(int side) {
    return side == Right ? "RIGHTSIDE" : "LEFTSIDE";
}

/// The wall and its method in capitals, as two boxes name it.
std::string upperWall(const Failure& failure) {
    if (!failure.anchored) {
        return "CANTILEVER WALL";
    }
    return failure.level == 1 ? "ANCHORED WALL BY FREE EARTH METHOD"
                              : "ANCHORED WALL BY FIXED EARTH METHOD";
}

/// The factors found so far; no blank stands before "and", deliberately.
std::string bracketText(const Failure& failure) {
    if (!failure.bracketed) {
        return {};
    }
    return "\n\nFactor of safety appears to be between " + formatNumber(failure.low, "#0.00") +
           "and " + formatNumber(failure.high, "#0.00");
}

std::string valueOf(std::string_view name, const Failure& failure) {
    if (name == "elev") {
        return formatNumber(failure.elev, "####0.00");
    }
    if (name == "side") {
        return upperSide(failure.side);
    }
    if (name == "layer") {
        return std::to_string(failure.layer);
    }
    if (name == "next") {
        return std::to_string(failure.layer + 1);
    }
    if (name == "distance") {
        return formatNumber(failure.distance, "####0.00");
    }
    if (name == "wall") {
        return failure.anchored ? "ANCHORED" : "CANTILEVER";
    }
    if (name == "turn") {
        return failure.anchored ? "COUNTERCLOCKWISE" : "CLOCKWISE";
    }
    if (name == "tobe") {
        return failure.level == 1 ? "" : "TO BE ";
    }
    if (name == "WALL") {
        return upperWall(failure);
    }
    if (name == "bracket") {
        return bracketText(failure);
    }
    if (name == "finding") {
        return findingText(failure.finding);
    }
    return runtimeErrorMessage(failure.error);
}

/// The text with the failure's values in it.
std::string filledIn(std::string_view text, const Failure& failure) {
    std::string filled;
    while (!text.empty()) {
        const std::size_t open = text.find('{');
        filled += text.substr(0, open);
        if (open == std::string_view::npos) {
            break;
        }
        const std::size_t close = text.find('}', open);
        filled += valueOf(text.substr(open + 1, close - open - 1), failure);
        text.remove_prefix(close + 1);
    }
    return filled;
}

} // namespace

const char* failureName(FailureCode code) {
    return wordsOf(code).name;
}

bool failureHasElevation(FailureCode code) {
    return wordsOf(code).hasElev;
}

bool hasBox(const Failure& failure) {
    return *wordsOf(failure.code).text != '\0';
}

MessageBox failureBox(const Failure& failure) {
    const FailureWords& words = wordsOf(failure.code);
    return {.text = filledIn(words.text, failure), .title = words.title, .icon = words.icon};
}

MessageBox factorQuestion(double limit) {
    return {.text = "Factor of safety for this system\nappears to be greater than " +
                    formatNumber(limit, "#0.00") +
                    ".\n\nDo you want to continue search for\nfactor of safety?",
            .title = "LARGE FACTOR OF SAFETY",
            .buttons = Buttons::YesNo};
}

std::string stageText(const Stage& stage, WallKind wall) {
    const std::string side = stage.side == Right ? "right" : "left";
    const std::string method = wall != WallKind::Anchored ? "cantilever wall"
                               : stage.level == 2 ? "anchored wall by the fixed earth method"
                                                  : "anchored wall by the free earth method";
    switch (stage.doing) {
    case Doing::Reading:
        return "reading the input";
    case Doing::Preparing:
        return "preparing the solution";
    case Doing::SoilPressures:
        return "finding the soil pressures of the " + side + " side";
    case Doing::NetPressures:
        return "combining the net pressures";
    case Doing::WallBottom:
        return "searching the bottom of the " + method;
    case Doing::Bending:
        return "finding moments and deflections of the " + method;
    case Doing::FactorOfSafety:
        return "searching the factor of safety of the " + method;
    case Doing::MomentReduction:
        return "reducing the moments";
    case Doing::Reporting:
        return "writing the reports";
    }
    return {};
}

} // namespace korvane
