#include "problem/save_losses.h"

#include "problem/counts.h"
#include "problem/validate.h"
#include "runtime/number_text.h"

#include <algorithm>
#include <string_view>

namespace korvane {

namespace {

enum Words {
    SmallLetters,
    Decimals,
    TinyFactor,
    UnusedFactor,
    WallBottom,
    FirstDistance,
    Level2PassiveAlone,
    Level2OfCoefficients,
    NegativeWallFriction,
    Adhesion,
    Slope,
    LayerPassiveAlone,
    LeftOverStrengths,
    SeepageElevation,
    Gradient,
    PressureOrder,
    SeepageOfPressures,
    UniformOfZero,
    RampOfZero,
    VariableOfOnePoint,
    WordsCount,
};

constexpr SaveRule rules[] = {
    {"Small letters in a heading", "a saved file gives them back as capitals"},
    {"Level 1 factor with more than two decimals", "a saved file gives it back rounded to two"},
    {"Level 1 factor below 0.005", "it is saved as 0.00, and the file cannot be opened"},
    {"Level 1 factor that an analysis does not use",
     "a saved file gives back 1.0 for the active, 1.5 for the passive one"},
    {"Wall bottom of an analysis not below the ground on both sides",
     "a saved file with it cannot be opened"},
    {"First surface point before the wall", "a saved file with it cannot be opened"},
    {"Level 2 passive factor without an active one",
     "a saved file gives it back as the active factor"},
    {"Level 2 factors of a side by coefficients", "a saved file does not hold them"},
    {"Angle of wall friction below 0", "a saved file with it cannot be opened"},
    {"Adhesion above the cohesion", "a saved file with it cannot be opened"},
    {"Slope of a layer's bottom", "a saved file gives it back as 0"},
    {"Passive factor of a layer without an active one",
     "a saved file gives it back as the active factor"},
    {"Slopes and layer factors from before a side was changed to coefficients",
     "a saved file does not hold them"},
    {"Seepage elevation below the lower of left ground and left water, or above the lower of "
     "right ground and right water",
     "a saved file with it cannot be opened"},
    {"Seepage gradient given as a number", "a saved file with it ends the program that opens it"},
    {"Water pressures not from the top down", "a saved file with it cannot be opened"},
    {"Type of seepage from before the water was changed to pressures",
     "a saved file does not hold it"},
    {"Uniform load of 0", "a saved file holds no load"},
    {"Ramp load of 0", "a saved file with it cannot be opened"},
    {"Variable load of one point", "a saved file with it cannot be opened"},
};
static_assert(std::size(rules) == WordsCount);

/// A rule of the reader that screens do not hold to, and the words for it.
struct ReaderRule {
    const char* field;
    Rule rule;
    Words words;
    ProblemField shownAt; ///< row of the finding, or the first one
};

constexpr const char* nameOf(ProblemCount count) {
    return rulesOf(count).name;
}

constexpr ReaderRule readerRules[] = {
    {"SurfaceDist", Rule::AtLeast, FirstDistance, ProblemField::SurfaceDist},
    {"SurfaceElev", Rule::Above, WallBottom, ProblemField::SurfaceElev},
    {"SoilWallFriction", Rule::AtLeast, NegativeWallFriction, ProblemField::SoilWallFriction},
    {"SoilAdhesion", Rule::AtMost, Adhesion, ProblemField::SoilAdhesion},
    {"SeepageElev", Rule::AtLeast, SeepageElevation, ProblemField::SeepageElev},
    {"SeepageElev", Rule::AtMost, SeepageElevation, ProblemField::SeepageElev},
    {"SeepageKind", Rule::Choice, Gradient, ProblemField::SeepageGradient},
    {"WaterPressElev", Rule::Below, PressureOrder, ProblemField::WaterPressElev},
    {"VRampLoad", Rule::Above, RampOfZero, ProblemField::VRampLoad},
    {nameOf(ProblemCount::VVarCount), Rule::AtLeast, VariableOfOnePoint, ProblemField::VVarDist},
};

/// The control line's form of a factor of safety.
double factorAsSaved(double factor) {
    return numericValue(formatNumber(factor, "#0.00"));
}

/// Collects what the rules find in one problem.
class Search {
  public:
    explicit Search(const Problem& problem) : problem_(problem) {}

    std::vector<SaveLoss> run() {
        heading();
        control();
        readerRefuses();
        for (const int side : {Right, Left}) {
            soil(side);
        }
        water();
        loads();
        return std::move(losses_);
    }

  private:
    template <class Value>
    void find(bool applies, Words words, const Value& value) {
        if (applies) {
            losses_.push_back({&value, &rules[words]});
        }
    }

    /// What the reader of files states and a record can break.
    void readerRefuses() {
        Problem judged = problem_;
        for (const int side : {Right, Left}) {
            if (problem_.SurfacePointCount(side) == 0) { // the ground is still to come
                judged.SurfaceElev(side, 1) = problem_.WaterElev(side);
            }
        }
        forEachFinding(judged, [this](const Finding& finding) {
            for (const ReaderRule& rule : readerRules) {
                if ((finding.by & ByReader) != 0 && finding.rule == rule.rule &&
                    std::string_view(finding.field) == rule.field) {
                    take(finding, rule);
                }
            }
            return true;
        });
    }

    void take(const Finding& finding, const ReaderRule& rule) {
        const int side = finding.side == Left ? Left : Right;
        const double& place =
            rulesOf(rule.shownAt).value(problem_, side, std::max(finding.index, 1));
        findOnce(rule.words, place);
        if (rule.words == WallBottom) {
            findOnce(WallBottom, problem_.WallBottomElev);
        }
    }

    void findOnce(Words words, const double& place) {
        find(std::none_of(losses_.begin(), losses_.end(),
                          [&](const SaveLoss& loss) {
                              return loss.place == &place && loss.rule == &rules[words];
                          }),
             words, place);
    }

    void heading() {
        for (int line = 1; line <= problem_.NumHeadingLines; ++line) {
            const std::string& text = problem_.HeadingLines(line);
            find(upperCase(text) != text, SmallLetters, text);
        }
    }

    void factor(const double& factor) {
        const double saved = factorAsSaved(factor);
        find(saved == 0, TinyFactor, factor);
        find(saved != 0 && saved != factor, Decimals, factor);
    }

    void control() {
        const bool design = problem_.ProgramMode == Mode::Design;
        if (design || problem_.FSKind == FactorKind::ActiveGiven) {
            factor(problem_.FSActive);
        } else {
            find(problem_.FSActive != 1.0, UnusedFactor, problem_.FSActive);
        }
        if (design) {
            factor(problem_.FSPassive);
        } else {
            find(problem_.FSPassive != 1.5, UnusedFactor, problem_.FSPassive);
        }
    }

    void soil(int side) {
        const bool strengths = problem_.SoilDataKind(side) == SoilData::Strengths;
        const double& active = problem_.Level2FSActive(side);
        const double& passive = problem_.Level2FSPassive(side);
        if (problem_.SoilLayerCount(side) == 0) {
            return;
        }
        find(!strengths && active != 0, Level2OfCoefficients, active);
        find(!strengths && passive != 0, Level2OfCoefficients, passive);
        find(strengths && active == 0 && passive != 0, Level2PassiveAlone, passive);
        for (int layer = 1; layer <= problem_.SoilLayerCount(side); ++layer) {
            const bool last = layer == problem_.SoilLayerCount(side);
            const double& slope = problem_.SoilBottomSlope(side, layer);
            const double& ofLayer = problem_.SoilFSActive(side, layer);
            const double& passiveOfLayer = problem_.SoilFSPassive(side, layer);
            if (strengths) {
                find(!last && slope != 0, Slope, slope);
                find(ofLayer == 0 && passiveOfLayer != 0, LayerPassiveAlone, passiveOfLayer);
            } else {
                find((!last && slope != 0) || ofLayer != 0 || passiveOfLayer != 0,
                     LeftOverStrengths, problem_.SoilCoefActive(side, layer));
            }
        }
    }

    void water() {
        find(problem_.WaterDataKind == WaterData::Pressures &&
                 problem_.SeepageKind != Seepage::None,
             SeepageOfPressures, problem_.WaterPressElev(1));
    }

    void loads() {
        for (const int side : {Right, Left}) {
            const double& uniform = problem_.VUniformLoad(side);
            find(problem_.VUniformCount(side) > 0 && uniform == 0, UniformOfZero, uniform);
        }
    }

    const Problem& problem_;
    std::vector<SaveLoss> losses_;
};

} // namespace

std::span<const SaveRule> saveRules() {
    return rules;
}

std::vector<SaveLoss> lossesOfSave(const Problem& problem) {
    return Search(problem).run();
}

} // namespace korvane
