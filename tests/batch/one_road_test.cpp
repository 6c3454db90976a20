// The batch command, the desktop and a plain call of the road come to the same of each wall:
// report, notes, values.
#include "batch/solve_input.h"
#include "batch_run.h"
#include "notes/note_texts.h"
#include "problem/input_writer.h"
#include "rowe/pile_sections.h"
#include "runtime/file_text.h"
#include "scripted_desktop.h"
#include "solution_numbers.h"
#include "support/failing_walls.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

namespace korvane::test {
namespace {

std::vector<std::string> linesOf(const std::vector<Note>& notes) {
    std::vector<std::string> lines;
    for (const Note& note : notes) {
        lines.push_back(noteLine(note));
    }
    return lines;
}

/// A report without the moments at which its parts were begun.
std::string withoutMoments(const std::string& report) {
    std::istringstream lines(report);
    std::string rest;
    for (std::string line; std::getline(lines, line);) {
        rest += line.find(" DATE: ") == std::string::npos ? line + "\n" : "";
    }
    return rest;
}

struct OneRoad : testing::Test {
    /// The notes of a plain call; its values stay in `plain`.
    std::vector<std::string> solvePlainly(const std::string& text) {
        FileNumbers numbers;
        std::vector<ReadRemark> remarks;
        clearProblemData(problem);
        readProblem(problem, text, "wall.dat", nullptr, &numbers, &remarks);
        LoadPileDefaults(sections);
        const Options options{.wedge = WedgeMethod::Sweep, .factorLimit = {}};
        solved = korvane::solve(problem, options, sections, plain);
        NoteWorkspace second;
        const NoteRequest request{.problem = problem, .units = numbers.units, .read = &remarks};
        return linesOf(notesOnSolution(request, solved, options, second));
    }

    void compare(const std::string& input) {
        SCOPED_TRACE(input);
        const std::vector<std::string> notes = solvePlainly(readFile(input));

        batch::Job job;
        job.input = input;
        job.inputPath = input;
        Workspace workspace;
        NoteWorkspace second;
        const batch::Outcome outcome = batch::solveInput(job, {}, workspace, second);
        EXPECT_EQ(linesOf(outcome.notes), notes);
        EXPECT_EQ(outcome.status == batch::StatusSolved, !solved.failure);
        if (solved.results != nullptr) {
            EXPECT_EQ(resultNumbers(problem, workspace.results()),
                      resultNumbers(problem, *solved.results));
            EXPECT_EQ(reductionNumbers(workspace.reduction()), reductionNumbers(plain.reduction()));
        }

        Office office;
        office.open(input);
        office.solve();
        EXPECT_EQ(linesOf(office.session->notes.list), notes);
        EXPECT_EQ(solutionNumbers(problem, office.session->notes.solved),
                  solutionNumbers(problem, solved));
        EXPECT_EQ(withoutMoments(office.report()), withoutMoments(outcome.report));
    }

    TemporaryFolder folder;
    Problem problem;
    PileSections sections;
    Workspace plain;
    Solved solved;
};

TEST_F(OneRoad, OfEachExample) {
    int reductions = 0;
    int others = 0;
    for (const auto& entry : std::filesystem::directory_iterator(sourceFile("examples"))) {
        if (entry.path().extension() == ".dat") {
            compare(entry.path().string());
            ++(solved.reduction != nullptr ? reductions : others);
        }
    }
    EXPECT_GE(reductions, 5);
    EXPECT_GE(others, 5);
}

TEST_F(OneRoad, OfWallsThatFail) {
    int compared = 0;
    for (const FailingWall& wall : failingWalls()) {
        if (wall.problem.ProgramMode == Mode::Design &&
            wall.problem.SeepageKind != Seepage::Given &&
            wall.expected.code != FailureCode::LayerBottomsCross) { // such as a file can tell
            SCOPED_TRACE(wall.name);
            const std::filesystem::path file = folder.path() / "wall.dat";
            writeFile(file, inputFileText(wall.problem));
            compare(file.string());
            EXPECT_TRUE(solved.failure);
            ++compared;
        }
    }
    EXPECT_GE(compared, 10);
}

} // namespace
} // namespace korvane::test
