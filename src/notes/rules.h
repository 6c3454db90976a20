// How a rule speaks: what it looks at, and the tables of rules by theme.
#pragma once

#include "notes/notes.h"

#include <span>

namespace korvane {

/// What a rule needs before it can look.
enum class Needs {
    Input,
    Run,     ///< a told run, solved or failed
    Results, ///< a solved wall
};

/// What rules look at.
struct Wall {
    const NoteRequest& request;
    const Problem& problem;
    const Solved* solved = nullptr;   ///< from Needs::Run on
    const Options* options = nullptr; ///< likewise
    NoteWorkspace* second = nullptr;  ///< likewise

    bool hasResults() const { return solved != nullptr && solved->results != nullptr; }
    const Results& results() const { return *solved->results; }
    const Review& review() const { return *solved->review; }
    bool anchored() const { return problem.WallType == WallKind::Anchored; }
    bool design() const { return problem.ProgramMode == Mode::Design; }
    /// A value with its unit.
    std::string say(Quantity quantity, double value) const {
        return quantityWithUnit(quantity, value, request.units);
    }
};

struct NoteRule;

/// Takes the notes of the rules, one rule after another.
class NoteSink {
  public:
    NoteSink(std::vector<Note>& notes, const NoteRule& rule) : notes_(notes), rule_(rule) {}
    /// Code and source are the rule's; the severity too.
    void add(Note note) { add(std::move(note), worst()); }
    /// A severity below the rule's own.
    void add(Note note, Severity severity);

  private:
    Severity worst() const;

    std::vector<Note>& notes_;
    const NoteRule& rule_;
};

struct NoteRule {
    std::string_view code;
    Severity worst; ///< that it gives
    Needs needs;
    void (*look)(const Wall& wall, NoteSink& notes);
    std::string_view source;
};

inline Severity NoteSink::worst() const {
    return rule_.worst;
}
inline void NoteSink::add(Note note, Severity severity) {
    note.code = rule_.code;
    note.source = rule_.source;
    note.severity = severity;
    notes_.push_back(std::move(note));
}

std::span<const NoteRule> weightRules();      ///< unit weights and water
std::span<const NoteRule> wedgeRules();       ///< planes of the wedge methods
std::span<const NoteRule> coefficientRules(); ///< coefficients, wall friction
std::span<const NoteRule> clayRules();        ///< cohesion in front and behind, heave
std::span<const NoteRule> seepageRules();     ///< gradients
std::span<const NoteRule> loadRules();        ///< loads, anchor, ground, layers
std::span<const NoteRule> reductionRules();   ///< moment reduction
std::span<const NoteRule> fileRules();        ///< what the reader of a file passed over
std::span<const NoteRule> remarkRules();      ///< what the results rest on

/// Throws the run-time error again where it says nothing of the wall.
void throwOnMemory(int error);

// ---- what several themes share -----------------------------------------------------------------

/// "right side".
inline const char* sideText(int side) {
    return side == Right ? "right side" : "left side";
}

/// FT: the bottoms that a solution has found; the given one of an analysis that has none; else
/// empty.
std::vector<double> knownBottoms(const Wall& wall);

/// Layers of a side that a wall down to `bottomElev` (FT) reaches.
int layersDownTo(const Problem& problem, int side, double bottomElev);

/// FT, of a layer at the wall.
double layerTop(const Problem& problem, int side, int layer);

/// The layer just below an elevation (FT) at the wall.
int layerBelow(const Problem& problem, int side, double elev);

/// The lower ground at the wall, FT.
double dredgeLine(const Problem& problem);

/// Weight (PSF) of the soil of a side from its ground to `elev`, uniform load included: buoyant
/// below the water where `buoyant`, else saturated; no seepage.
double overburden(const Problem& problem, int side, double elev, bool buoyant);

/// PSF, of the water of a side that stands above an elevation (FT); no seepage.
double waterHead(const Problem& problem, int side, double elev);

/// Soil of cohesion alone.
bool isClay(const Problem& problem, int side, int layer);

/// Factors of safety of a layer; nothing in an analysis that found none.
struct LayerFactors {
    double active;
    double passive;
};
std::optional<LayerFactors> layerFactors(const Wall& wall, int side, int layer);

/// Degrees of an angle (degrees) whose tangent a factor divides.
double dividedAngle(double degrees, double factor);

/// The passive angles of a layer of strengths. Degrees.
struct PassiveAngles {
    double friction;
    double wallFriction;
    double factor; ///< that has divided their tangents
};

/// As the first level used them; of a failed run those that its factors lead to, of an analysis
/// that found none as they are given.
PassiveAngles passiveAngles(const Wall& wall, int side, int layer);

/// Layers that the first level reaches; of a failed run all of the side.
int layersInUse(const Wall& wall, int side);

} // namespace korvane
