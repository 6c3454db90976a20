#include "study/evaluation.h"

#include "rowe/pile_sections.h"
#include "runtime/run_guarded.h"
#include "study/design_depth.h"
#include "study/plan.h"

#include <algorithm>
#include <limits>

namespace korvane::study {

namespace {

double changed(Change change, double base, double number) {
    switch (change) {
    case Change::Add:
        return base + number;
    case Change::Multiply:
        return base * number;
    case Change::Set:
        break;
    }
    return number;
}

/// The first rule of input files that a problem breaks.
Failure refusal(const Problem& problem) {
    Failure failure;
    forEachFinding(problem, [&failure](const Finding& finding) {
        if ((finding.by & ByReader) != 0 || finding.isFatal()) {
            failure.code = FailureCode::InvalidProblem;
            failure.finding = finding;
        }
        return !failure;
    });
    return failure;
}

/// Why a variant has no results, in a line.
std::string reasonOf(const Failure& failure) {
    if (failure.code == FailureCode::InvalidProblem) {
        return findingText(failure.finding);
    }
    std::string text = hasBox(failure) ? failureBox(failure).text : failureName(failure.code);
    std::replace(text.begin(), text.end(), '\n', ' ');
    const auto twoBlanks = [](char a, char b) { return a == ' ' && b == ' '; };
    text.erase(std::unique(text.begin(), text.end(), twoBlanks), text.end());
    return text;
}

/// The number of a variable in a variant that leaves it as it is.
double baseNumber(const Study& study, const Variable& variable) {
    return variable.change == Change::Add ? 0
           : variable.change == Change::Multiply
               ? 1
               : valueAt(study.base, variable.fields.front(), study.units);
}

} // namespace

const char* outcomeName(FailureCode outcome) {
    return outcome == FailureCode::None ? "solved" : failureName(outcome);
}

Evaluation::Evaluation(const Study& study)
    : study_(study), asksDesign_(std::any_of(
                         study.limits.begin(), study.limits.end(),
                         [](const LimitState& limit) { return limit.condition.asksDesign(); })),
      problem_(study.base) {
    LoadPileDefaults(sections_);
    for (const Variable& variable : study_.variables) {
        for (const FieldAddress& place : variable.fields) {
            bases_.emplace_back(place, valueAt(study_.base, place));
        }
    }
    for (const Tie& tie : study_.ties) {
        bases_.emplace_back(tie.field, valueAt(study_.base, tie.field));
    }
    if (asksDesign_) {
        designWorkspace_.emplace();
    }
}

void Evaluation::solveDesign() {
    designResults_ = nullptr;
    if (!asksDesign_ || solved_.failure.code == FailureCode::InvalidProblem) {
        return;
    }
    // A fault leaves the design without results: no solution.
    static_cast<void>(runGuarded([&] {
        makeDesign(problem_, design_);
        designResults_ =
            korvane::solve(design_, study_.options, sections_, *designWorkspace_).results;
    }));
}

LimitValues Evaluation::limitValues(const std::vector<double>& numbers) const {
    return {.variables = numbers,
            .problem = problem_,
            .results = solved_.results,
            .design = designResults_,
            .units = study_.units};
}

/// Fields go back to the base first; variables on the same field follow one another.
void Evaluation::change(const std::vector<double>& numbers) {
    for (const auto& [place, base] : bases_) {
        setValueAt(problem_, place, base);
    }
    for (std::size_t n = 0; n < numbers.size(); ++n) {
        const Variable& variable = study_.variables[n];
        for (const FieldAddress& place : variable.fields) {
            if (!isUnchanged(numbers[n])) {
                const double base = valueAt(problem_, place, study_.units);
                setValueAt(problem_, place, changed(variable.change, base, numbers[n]),
                           study_.units);
            }
        }
    }
    for (const Tie& tie : study_.ties) {
        setValueAt(problem_, tie.field,
                   tie.factor * valueAt(problem_, tie.to, study_.units) + tie.add, study_.units);
    }
}

const Solved& Evaluation::solve(const std::vector<double>& numbers) {
    solved_ = {};
    const auto fault = runGuarded([&] {
        change(numbers);
        solved_.failure = refusal(problem_);
        if (!solved_.failure) {
            solved_ = korvane::solve(problem_, study_.options, sections_, workspace_);
        }
    });
    if (fault) {
        solved_ = {};
        solved_.failure.code = FailureCode::RunTimeError;
        solved_.failure.error = fault->number();
    }
    solveDesign();
    return solved_;
}

void Evaluation::fill(const std::vector<double>& numbers, Row& row) {
    const Solved& solved = solve(numbers);
    row.numbers = numbers;
    for (std::size_t n = 0; n < numbers.size(); ++n) {
        if (isUnchanged(numbers[n])) {
            row.numbers[n] = baseNumber(study_, study_.variables[n]);
        }
    }
    std::vector<Note> notes;
    if (study_.asksForNotes()) {
        notes = notesOnSolution({.problem = problem_}, solved, study_.options, second_);
    }
    row.outputs.clear();
    for (const OutputColumn& column : study_.outputs) {
        row.outputs.push_back(column.value(solved, notes, study_.units)
                                  .value_or(std::numeric_limits<double>::quiet_NaN()));
    }
    row.limits.clear();
    for (const LimitState& limit : study_.limits) {
        row.limits.push_back(limit.reached(limitValues(row.numbers)));
    }
    row.outcome = solved.failure.code;
    row.reason = solved.failure ? reasonOf(solved.failure) : std::string();
}

} // namespace korvane::study
