#include "notes/second_opinion.h"

#include <algorithm>
#include <cmath>

namespace korvane {

namespace {

constexpr double LeastPenetration = 0.01; ///< FT; shares of less say nothing

SecondLevel secondLevel(const LevelResult& level) {
    return {level.method,
            level.penetration,
            level.bottomElev,
            level.anchorForce,
            level.diagrams.MaxMoment.value,
            level.factorOfSafety};
}

double share(const Wall& wall, const LevelResult& told, const SecondLevel& second) {
    if (!wall.design()) {
        return (told.factorOfSafety - second.factorOfSafety) /
               std::max(std::fabs(told.factorOfSafety), 0.01);
    }
    return (second.penetration - told.penetration) /
           std::max(std::fabs(told.penetration), LeastPenetration);
}

} // namespace

SecondOpinion solveAgain(const Wall& wall, const Problem& problem, const Again& again) {
    Options options = *wall.options;
    options.factorLimit.ask = nullptr;
    options.amendments = again.amendments;
    if (again.wedge) {
        options.wedge = again.wedge;
    }
    Workspace& workspace = wall.second->get();
    SecondOpinion second;
    const auto fails = [&second](const Failure& failure) {
        throwOnMemory(failure.error);
        second.failure = failure;
        return second;
    };
    const auto review = reviewWall(problem, options, workspace);
    if (!review) {
        return fails(review.failure());
    }
    const auto results = solveWall(workspace);
    if (!results) {
        return fails(results.failure());
    }
    second.levelCount = results->levelCount;
    for (int level = 1; level <= second.levelCount; ++level) {
        second.levels(level) = secondLevel(results->levels(level));
    }
    return second;
}

Difference compare(const Wall& wall, const SecondOpinion& second) {
    Difference difference;
    const bool toldFails = wall.solved->results == nullptr;
    const bool secondFails = second.levelCount == 0;
    if (toldFails || secondFails) {
        difference.bothFail = toldFails && secondFails;
        // A search that stopped at its limit has found a factor above it: more than the other's.
        if (!toldFails && second.failure.code == FailureCode::FactorDeclined) {
            difference.shallowest = -1;
            return difference;
        }
        if (!secondFails && wall.solved->failure.code == FailureCode::FactorDeclined) {
            difference.deepest = 1;
            return difference;
        }
        difference.deepest = secondFails && !toldFails ? 1 : 0;
        difference.shallowest = toldFails && !secondFails ? -1 : 0;
        return difference;
    }
    const Results& told = wall.results();
    int deepest = 1;
    int shallowest = 1;
    for (int level = 1; level <= std::min(told.levelCount, second.levelCount); ++level) {
        const double change = share(wall, told.levels(level), second.levels(level));
        deepest = change > difference.deepest ? level : deepest;
        shallowest = change < difference.shallowest ? level : shallowest;
        difference.deepest = std::max(difference.deepest, change);
        difference.shallowest = std::min(difference.shallowest, change);
    }
    const bool isDeeper = difference.isDeeper() || difference.deepest >= -difference.shallowest;
    difference.level = isDeeper ? deepest : shallowest;
    return difference;
}

std::string outcomeText(const Wall& wall, const SecondOpinion& second, int level) {
    const bool toldFails = wall.solved->results == nullptr;
    if (second.levelCount == 0) {
        return std::string("no solution (") + failureName(second.failure.code) + ")";
    }
    const SecondLevel& other = second.levels(level);
    const Quantity quantity = wall.design() ? Quantity::Length : Quantity::Number;
    const double value = wall.design() ? other.penetration : other.factorOfSafety;
    std::string text = wall.design() ? "a penetration of " : "a factor of safety of ";
    text += wall.say(quantity, value);
    if (toldFails) {
        return text + " where the told formula gives none";
    }
    const LevelResult& told = wall.results().levels(level);
    text +=
        " instead of " + wall.say(quantity, wall.design() ? told.penetration : told.factorOfSafety);
    return wall.anchored() ? text + " (" + solutionMethodName(other.method) + ")" : text;
}

void addOpinion(const Wall& wall, NoteSink& notes, Note note, const Problem& problem,
                const Again& again) {
    note.second = solveAgain(wall, problem, again);
    const Difference difference = compare(wall, *note.second);
    if (!difference.speaks()) {
        return;
    }
    note.quantity = wall.design() ? Quantity::Length : Quantity::Number;
    if (note.second->levelCount > 0 && !note.value) {
        const SecondLevel& other = note.second->levels(difference.level);
        note.value = wall.design() ? other.penetration : other.factorOfSafety;
    }
    if (wall.solved->results != nullptr && !note.limit) {
        const LevelResult& told = wall.results().levels(difference.level);
        note.limit = wall.design() ? told.penetration : told.factorOfSafety;
    }
    note.text += outcomeText(wall, *note.second, difference.level) + ".";
    notes.add(std::move(note), difference.severity());
}

} // namespace korvane
