// A wall that was solved, with results that a test may change.
#pragma once

#include "rowe/pile_sections.h"
#include "solution/solution.h"

#include <memory>

namespace korvane::test {

/// A run with the default sections, and copies of its results in the place of the workspace's.
struct SolvedWall {
    SolvedWall(const Problem& told, const Options& asked) : problem(told), options(asked) {
        LoadPileDefaults(sections);
        solved = solve(problem, options, sections, workspace);
        if (solved.review != nullptr) {
            *review = *solved.review;
            solved.review = review.get();
        }
        if (solved.results != nullptr) {
            *results = *solved.results;
            solved.results = results.get();
        }
        if (solved.reduction != nullptr) {
            reduction = *solved.reduction;
            solved.reduction = &reduction;
        }
    }
    SolvedWall(const SolvedWall&) = delete;
    SolvedWall& operator=(const SolvedWall&) = delete;

    Problem problem;
    Options options;
    PileSections sections;
    Workspace workspace;
    std::unique_ptr<Review> review = std::make_unique<Review>();
    std::unique_ptr<Results> results = std::make_unique<Results>();
    MomentReduction reduction;
    Solved solved;
};

} // namespace korvane::test
