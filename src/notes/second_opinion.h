// Walls solved once more, and what that says of the told run.
#pragma once

#include "notes/rules.h"

namespace korvane {

/// What differs from the options of the told run.
struct Again {
    Amendments amendments = {};
    std::optional<WedgeMethod> wedge = {}; ///< in place of the told one
};

/// Solves a wall once more.
SecondOpinion solveAgain(const Wall& wall, const Problem& problem, const Again& again = {});

/// How a second opinion differs from the told run.
struct Difference {
    /// The largest at any level, in shares: of the told penetration in a design (deeper is
    /// positive), of the told factor of safety in an analysis (a smaller one is positive). Of a
    /// failure alone +1 where the second run fails, -1 where the told one does.
    double deepest = 0;
    double shallowest = 0; ///< likewise, the smallest
    int level = 1;         ///< of the deepest where that speaks, else of the larger of the two
    bool bothFail = false;

    /// Below this share the two agree.
    static constexpr double Least = 0.01;
    bool isDeeper() const { return deepest >= Least; }
    bool isShallower() const { return shallowest <= -Least; }
    bool speaks() const { return !bothFail && (isDeeper() || isShallower()); }
    /// Unsafe where the told run is not on the safe side.
    Severity severity() const { return isDeeper() ? Severity::Unsafe : Severity::Caution; }
};

Difference compare(const Wall& wall, const SecondOpinion& second);

/// "a penetration of 9.31 FT instead of 8.20 FT", or why there is none.
std::string outcomeText(const Wall& wall, const SecondOpinion& second, int level);

/// Solves once more and adds a note where the outcome differs, with the severity of the difference.
/// The text ends with the outcome.
void addOpinion(const Wall& wall, NoteSink& notes, Note note, const Problem& problem,
                const Again& again = {});

} // namespace korvane
