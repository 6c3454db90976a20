// The shipped examples are walls as engineers build them: notes on them stay few.
#include "problem/input_reader.h"
#include "runtime/file_text.h"
#include "told_wall.h"

#include <filesystem>

namespace korvane::test {
namespace {

TEST(NotesOnExamples, AreAtMostThreeAboveRemarkAWall) {
    int walls = 0;
    for (const auto& file : std::filesystem::directory_iterator(
             std::filesystem::path(examplePath("a")).parent_path())) {
        if (file.path().extension() != ".dat") {
            continue;
        }
        Problem problem;
        clearProblemData(problem);
        const std::string name = file.path().string();
        ASSERT_TRUE(readProblem(problem, readInputFile(name), name).complete) << name;
        ToldWall wall(problem);
        EXPECT_TRUE(wall.isSolved()) << name;
        const auto notes = wall.notes();
        std::string codes;
        for (const Note& note : notes) {
            codes += note.severity == Severity::Remark ? "" : std::string(note.code) + " ";
        }
        EXPECT_LE(countOf(notes, Severity::Unsafe) + countOf(notes, Severity::Caution), 3)
            << name << ": " << codes;
        ++walls;
    }
    EXPECT_GE(walls, 13);
}

} // namespace
} // namespace korvane::test
