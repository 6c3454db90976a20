#include "study/study_checks.h"

#include "study/draws.h"

#include <algorithm>
#include <string>

namespace korvane::study {

namespace {

/// Methods that draw variants from distributions.
bool draws(Method method) {
    return method == Method::Sample || method == Method::Sensitivity ||
           method == Method::Reliability || method == Method::Fragility;
}

bool isAlong(const Study& study, const Variable& variable) {
    return study.method == Method::Fragility && &variable == &study.variables[study.along];
}

/// One number for a field: a second `set` would hide the first, a field twice would move twice.
void checkFields(const Study& study) {
    std::vector<FieldAddress> seen;
    for (const Variable& variable : study.variables) {
        const std::vector<FieldAddress>& fields = variable.fields;
        for (auto place = fields.begin(); place != fields.end(); ++place) {
            const std::string name = "variable " + variable.name + ": " + addressName(*place);
            if (std::find(fields.begin(), place, *place) != place) {
                throw StudyFault{variable.line, name + " is named twice"};
            }
            if (variable.change == Change::Set &&
                std::find(seen.begin(), seen.end(), *place) != seen.end()) {
                throw StudyFault{variable.line, name + " is changed by a variable before it, "
                                                       "which \"set\" would hide"};
            }
        }
        seen.insert(seen.end(), fields.begin(), fields.end());
    }
}

/// Keys that the method does not heed.
void checkKeys(const Study& study, const TomlTable& head) {
    const bool form = study.method == Method::Reliability && study.algorithm == Algorithm::Form;
    const std::string method = std::string("the method ") + methodName(study.method) +
                               (form ? " by the algorithm form" : "");
    for (const char* key : {"design", "size", "seed"}) {
        if (head.has(key) && (form || !draws(study.method))) {
            head.fail(key, "means nothing to " + method + ", which draws no sample");
        }
    }
    if (head.has("algorithm") && study.method != Method::Reliability) {
        head.fail("algorithm", "belongs to the method reliability");
    }
}

void checkVariables(const Study& study) {
    for (const Variable& variable : study.variables) {
        if (draws(study.method) && !variable.isRandom() && !isAlong(study, variable) &&
            variable.values.size() > 1) {
            throw StudyFault{variable.line, "variable " + variable.name +
                                                " needs a distribution or a single value"};
        }
        if ((study.method == Method::Grid || study.method == Method::Target) &&
            variable.isRandom()) {
            throw StudyFault{variable.line,
                             "variable " + variable.name + " needs values, not a distribution"};
        }
    }
}

/// Along twice the same value the same draws would count twice.
void checkAlong(const Study& study) {
    if (study.method != Method::Fragility) {
        return;
    }
    const Variable& along = study.variables[study.along];
    std::vector<double> values = along.values;
    std::sort(values.begin(), values.end());
    if (std::adjacent_find(values.begin(), values.end()) != values.end()) {
        throw StudyFault{along.line, "variable " + along.name + " has a value twice"};
    }
}

/// Indices by the pick-freeze method are those of independent variables.
void checkCorrelations(const Study& study) {
    if (study.correlations.empty()) {
        return;
    }
    if (!draws(study.method)) {
        throw StudyFault{study.correlations.front().line,
                         std::string("[[correlation]]: means nothing to the method ") +
                             methodName(study.method)};
    }
    if (study.method == Method::Sensitivity) {
        throw StudyFault{study.correlations.front().line,
                         "[[correlation]]: Sobol' indices are those of independent variables"};
    }
    if (!canBeTogether(study)) {
        throw StudyFault{study.correlations.back().line, "the correlations cannot be together"};
    }
}

void checkSize(const Study& study, const TomlTable& head) {
    const bool form = study.method == Method::Reliability && study.algorithm == Algorithm::Form;
    if (draws(study.method) && !form && study.sample.size == 0) {
        throw StudyFault{head.line(), "[study] needs \"size\""};
    }
    if (study.method == Method::Sensitivity && study.sample.size < 2) {
        head.fail("size", "must be at least 2: one point has no variance");
    }
    const auto random =
        static_cast<int>(std::count_if(study.variables.begin(), study.variables.end(),
                                       [](const Variable& one) { return one.isRandom(); }));
    if (draws(study.method) && random == 0) {
        throw StudyFault{head.line(), "no variable has a distribution"};
    }
    if (study.sample.design != Design::Sobol) {
        return;
    }
    // A sample around design points has one for the choice of the point.
    const int coordinates =
        study.method == Method::Sensitivity ? 2 * random : random + (isWeighted(study) ? 1 : 0);
    if (coordinates > SobolCoordinates) {
        head.fail("design",
                  "sobol has no more than " + std::to_string(SobolCoordinates) + " coordinates");
    }
    if (study.sample.size > SobolPoints) {
        head.fail("size", "sobol has no more than 4294967296 points");
    }
}

/// A grid can have more variants than can be counted.
void checkCount(const Study& study, const TomlTable& head) {
    double count = study.method == Method::Grid ? 1 : static_cast<double>(study.sample.size);
    for (const Variable& variable : study.variables) {
        if (study.method == Method::Grid || isAlong(study, variable)) {
            count *= static_cast<double>(variable.values.size());
        }
    }
    if (study.method == Method::Sensitivity) {
        count *= static_cast<double>(study.variables.size() + 2);
    }
    if (count > MostVariants) {
        throw StudyFault{head.line(), "these are more than 1E15 variants"};
    }
}

} // namespace

void checkTie(const Study& study, const Tie& tie) {
    const std::string field = addressName(tie.field);
    if (tie.field == tie.to) {
        throw StudyFault{tie.line, "[[tie]]: " + field + " cannot follow itself"};
    }
    for (const Tie& other : study.ties) {
        if (other.field == tie.field) {
            throw StudyFault{tie.line, "[[tie]]: " + field + " follows " + addressName(other.to) +
                                           " already"};
        }
    }
    for (const Variable& variable : study.variables) {
        if (std::find(variable.fields.begin(), variable.fields.end(), tie.field) !=
            variable.fields.end()) {
            throw StudyFault{tie.line,
                             "[[tie]]: " + field + " is a field of the variable " + variable.name};
        }
    }
}

void orderTies(Study& study) {
    std::vector<Tie> left = std::move(study.ties);
    study.ties.clear();
    while (!left.empty()) {
        const auto next = std::find_if(left.begin(), left.end(), [&](const Tie& tie) {
            return std::none_of(left.begin(), left.end(),
                                [&](const Tie& other) { return other.field == tie.to; });
        });
        if (next == left.end()) {
            throw StudyFault{left.front().line, "[[tie]]: the ties of " +
                                                    addressName(left.front().field) +
                                                    " follow one another in a ring"};
        }
        study.ties.push_back(*next);
        left.erase(next);
    }
}

void checkStudy(const Study& study, const TomlTable& head) {
    if (study.variables.empty()) {
        throw StudyFault{head.line(), "a [[variable]] is missing"};
    }
    checkKeys(study, head);
    checkFields(study);
    checkVariables(study);
    checkSize(study, head);
    checkCount(study, head);
    if ((study.method == Method::Reliability || study.method == Method::Fragility) &&
        study.limits.empty()) {
        throw StudyFault{head.line(), "a [[limit]] is missing"};
    }
    if (study.method == Method::Target &&
        (study.variables.size() != 1 || study.variables[0].values.size() < 2)) {
        throw StudyFault{study.variables[0].line,
                         "the method target needs one variable with low and high"};
    }
    checkAlong(study);
    checkCorrelations(study);
}

} // namespace korvane::study
