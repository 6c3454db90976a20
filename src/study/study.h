// A study: one wall asked many times. The record of a study file.
#pragma once

#include "problem/field_address.h"
#include "study/limit_state.h"
#include "study/uniforms.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace korvane::study {

enum class Method { Grid, OneAtATime, Sample, Sensitivity, Reliability, Target, Fragility };
/// "grid", "one-at-a-time", ...
const char* methodName(Method method);

/// How the numbers of a variable change the fields.
enum class Change { Set, Add, Multiply };
/// "set", "add", "multiply".
const char* changeName(Change change);

/// How reliability is worked out.
enum class Algorithm {
    Form,       ///< the first-order method alone
    MonteCarlo, ///< and a sample of the distributions
    Importance, ///< and a sample around the design point
};

/// A number that varies. Its numbers are in the units of the study.
struct Variable {
    std::string name;
    std::vector<FieldAddress> fields; ///< moved together; none: only limit states name it
    Change change = Change::Set;
    Quantity quantity = Quantity::Number;
    std::vector<double> values;                       ///< in their order; empty for distributions
    std::string distribution = {};                    ///< as written: "Normal(32, 2)"
    std::array<std::optional<double>, 2> bounds = {}; ///< of the distribution
    int line = 0;                                     ///< in the study file

    bool isRandom() const { return !distribution.empty(); }
};

/// Rank correlation (Spearman's) of two variables with distributions, by their indices.
struct Correlation {
    std::size_t first = 0;
    std::size_t second = 0;
    double rank = 0;
    int line = 0; ///< in the study file
};

/// A field that follows another one: factor times its number plus `add`.
struct Tie {
    FieldAddress field;
    FieldAddress to;
    double factor = 1;
    double add = 0; ///< in the units of the study
    int line = 0;   ///< in the study file
};

/// What a target study looks for: the number of its variable at which an output reaches a value.
struct Target {
    OutputColumn output;
    double value = 0; ///< in the units of the study
};

struct Study {
    std::string file;     ///< as named
    std::string text;     ///< of the study file
    std::string baseName; ///< the input file, as the study names it
    std::string basePath;
    std::string baseText;
    Problem base;

    Method method = Method::Grid;
    Sample sample; ///< design, seed and size
    Algorithm algorithm = Algorithm::Form;
    UnitSystem units = UnitSystem::US;
    std::string wedge = "sweep";
    std::vector<std::string> amendments;
    Options options; ///< of the road
    std::vector<OutputColumn> outputs;
    std::vector<Variable> variables;
    std::vector<Correlation> correlations;
    std::vector<Tie> ties; ///< each behind those of the fields that it follows
    std::vector<LimitState> limits;
    std::optional<Target> target;
    std::size_t along = 0; ///< the variable along which a fragility is asked

    /// Whether an output is a note, so that notes have to be worked out.
    bool asksForNotes() const;
};

/// Whether variants count by their weight: drawn around a design point.
bool isWeighted(const Study& study);

/// A study, or what is wrong with its file: "FILE:LINE: what, and what is known instead".
struct ReadStudy {
    Study study;
    std::string fault; ///< empty where there is a study
};

/// Reads a study file and the input file that it names. RuntimeError where the study file itself
/// cannot be read.
ReadStudy readStudy(const std::string& file);

/// The same from texts that were read before.
ReadStudy readStudy(const std::string& file, const std::string& text, const std::string& baseText);

} // namespace korvane::study
