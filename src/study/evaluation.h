// One variant of a study: the base with its numbers, solved.
#pragma once

#include "notes/notes.h"
#include "study/study.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace korvane::study {

/// What a variant has come to, as the table of variants holds it. NaN stands for nothing.
struct Row {
    std::uint64_t id = 0;
    std::vector<double> numbers; ///< of the variables
    std::vector<double> outputs;
    std::vector<bool> limits; ///< reached
    double weight = 1;        ///< of a sample drawn around a point
    FailureCode outcome = FailureCode::None;
    std::string reason; ///< of an outcome that is none
};

/// "solved" or the failure's code.
const char* outcomeName(FailureCode outcome);

/// Solves variants, one thread at a time. The study must outlive it.
class Evaluation {
  public:
    explicit Evaluation(const Study& study);

    /// The base with these numbers, solved as far as it goes. What belongs to the result holds
    /// until the next call.
    const Solved& solve(const std::vector<double>& numbers);
    /// The problem that was solved last.
    const Problem& problem() const { return problem_; }
    /// What limit states are held against after a solution with these numbers.
    LimitValues limitValues(const std::vector<double>& numbers) const;

    /// Solves and fills all but the id.
    void fill(const std::vector<double>& numbers, Row& row);

  private:
    void change(const std::vector<double>& numbers);
    void solveDesign();

    const Study& study_;
    bool asksDesign_;                                    ///< by a limit state
    std::vector<std::pair<FieldAddress, double>> bases_; ///< of all fields that variants change
    Problem problem_;
    PileSections sections_;
    Workspace workspace_;
    NoteWorkspace second_;
    Solved solved_;
    Problem design_;
    std::optional<Workspace> designWorkspace_;
    const Results* designResults_ = nullptr;
};

} // namespace korvane::study
