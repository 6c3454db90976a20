// A wall solved with all that a calculation sheet wants to know.
#pragma once

#include "notes/notes.h"
#include "problem/input_reader.h"
#include "runtime/file_text.h"
#include "sheet/sheet.h"
#include "support/solved_wall.h"
#include "support/support.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace korvane::test {

/// The input files among the examples.
inline std::vector<std::string> exampleFiles() {
    std::vector<std::string> names;
    for (const auto& file : std::filesystem::directory_iterator(
             std::filesystem::path(examplePath("a")).parent_path())) {
        if (file.path().extension() == ".dat") {
            names.push_back(file.path().string());
        }
    }
    return names;
}

inline Problem readWall(const std::string& file) {
    Problem problem;
    clearProblemData(problem);
    EXPECT_TRUE(readProblem(problem, readInputFile(file), file).complete) << file;
    return problem;
}

/// `results` may be changed before a sheet is made of them.
struct SheetBench : SolvedWall {
    explicit SheetBench(const Problem& told, WedgeMethod wedge = WedgeMethod::Sweep,
                        const FactorLimit& limit = {})
        : SolvedWall(told, {.wedge = wedge, .factorLimit = limit, .keepDetails = true}) {
        notes = notesOnSolution({.problem = problem}, solved, options, second);
    }

    CalculationSheet sheet(UnitSystem units = UnitSystem::US) const {
        return calculationSheet({.problem = problem,
                                 .sections = sections,
                                 .solved = solved,
                                 .options = options,
                                 .notes = notes,
                                 .units = units,
                                 .inputName = "wall.dat",
                                 .moment = {"21-NOVEMBER-2026", "9:05:07"},
                                 .notesWorkedOut = notesWorkedOut});
    }

    bool isSolved() const { return solved.results != nullptr && !solved.failure; }

    NoteWorkspace second;
    std::vector<Note> notes;
    bool notesWorkedOut = true;
};

/// The checks that fail, a line each.
inline std::string failedChecks(const CalculationSheet& sheet) {
    std::string lines;
    for (const Check& check : sheet.checks) {
        if (!check.pass) {
            lines += check.what + ": " + std::to_string(check.sheet) + " for " +
                     std::to_string(check.engine) + "\n";
        }
    }
    return lines;
}

} // namespace korvane::test
