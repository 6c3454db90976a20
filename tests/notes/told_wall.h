// A wall that was solved, or spoilt by hand afterwards, and the notes on it.
#pragma once

#include "notes/notes.h"
#include "support/solved_wall.h"
#include "support/support.h"

#include <gtest/gtest.h>

namespace korvane::test {

/// A told run whose results a test may change before it asks for notes.
struct ToldWall : SolvedWall {
    explicit ToldWall(const Problem& told, WedgeMethod wedge = WedgeMethod::Sweep,
                      const Amendments& amendments = {})
        : SolvedWall(told, {.wedge = wedge, .factorLimit = {}, .amendments = amendments}) {}

    bool isSolved() const { return solved.results != nullptr; }
    std::vector<Note> notes(NoteWork work = NoteWork::All, UnitSystem units = UnitSystem::US) {
        return notesOnSolution({.problem = problem, .work = work, .units = units}, solved, options,
                               second);
    }
    /// The first note of a code.
    std::optional<Note> note(std::string_view code) {
        for (const Note& note : notes()) {
            if (note.code == code) {
                return note;
            }
        }
        return std::nullopt;
    }
    bool says(std::string_view code) { return note(code).has_value(); }
    LevelResult& level(int number = 1) { return results->levels(number); }

    NoteWorkspace second;
};

/// The first note of a code on the input alone.
inline std::optional<Note> inputNote(const Problem& problem, std::string_view code) {
    for (const Note& note : notesOnInput({.problem = problem})) {
        if (note.code == code) {
            return note;
        }
    }
    return std::nullopt;
}

inline bool saysOfInput(const Problem& problem, std::string_view code) {
    return inputNote(problem, code).has_value();
}

inline void setBothSides(Array<double, 2, 11>& list, double value) {
    list(Right, 1) = list(Left, 1) = value;
}

/// The plain cantilever (top 0, left ground -10, 120 PCF, 30 degrees, factors 1) as an anchored
/// wall with its anchor at -2.
inline Problem plainAnchoredWall() {
    Problem problem = plainCantilever();
    problem.WallType = WallKind::Anchored;
    problem.AnchorElev = -2;
    return problem;
}

/// The plain cantilever with water at `right` and `left`.
inline Problem withWater(Problem problem, double right, double left, double weight = 62.4) {
    problem.WaterDataKind = WaterData::Elevations;
    problem.WaterUnitWeight = weight;
    problem.WaterElev(Right) = right;
    problem.WaterElev(Left) = left;
    return problem;
}

/// Ground of two points on a side: `run` away it stands `rise` higher.
inline Problem withGround(Problem problem, int side, double run, double rise) {
    problem.SurfacePointCount(side) = 2;
    problem.SurfaceDist(side, 2) = run;
    problem.SurfaceElev(side, 2) = problem.SurfaceElev(side, 1) + rise;
    return problem;
}

} // namespace korvane::test
