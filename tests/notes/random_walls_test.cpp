// Notes on walls drawn by chance, solved or not.
#include "notes/rules.h"
#include "runtime/file_text.h"
#include "support/nasty_problem.h"
#include "told_wall.h"

#include <cmath>
#include <set>

namespace korvane::test {
namespace {

bool isFinite(const std::optional<double>& value) {
    return !value || std::isfinite(*value);
}

TEST(NotesOnRandomWalls, AreWholeAndUnsafeOnesDoNotHangOnTheWork) {
    RandomProblems plain(2026);
    NastyProblems nasty(2026);
    std::set<std::string> spoken;
    for (int number = 0; number < 120; ++number) {
        const Problem problem = number % 2 == 0 ? plain.next() : nasty.next().problem;
        const auto wedge = number % 3 == 0 ? WedgeMethod::FixedSurface : WedgeMethod::Sweep;
        ToldWall wall(problem, wedge);
        const auto all = wall.notes();
        const auto unsafe = wall.notes(NoteWork::UnsafeOnly);
        ASSERT_EQ(static_cast<int>(unsafe.size()), countOf(all, Severity::Unsafe)) << number;
        for (std::size_t i = 0; i < all.size(); ++i) {
            const Note& note = all[i];
            spoken.emplace(note.code);
            EXPECT_TRUE(isFinite(note.value) && isFinite(note.limit) && isFinite(note.elev))
                << number << ' ' << note.code;
            EXPECT_TRUE(note.text.ends_with('.')) << number << ' ' << note.text;
            EXPECT_EQ(note.text.find("nan"), std::string::npos) << note.text;
            EXPECT_LE(note.layer, 11);
            EXPECT_TRUE(i == 0 || all[i - 1].severity >= note.severity) << number;
            if (i < unsafe.size()) {
                EXPECT_EQ(note.text, unsafe[i].text) << number;
            }
        }
    }
    // The walls are varied enough to make most rules speak.
    EXPECT_GE(spoken.size(), 20U);
}

TEST(NoteRules, HaveCodesOfTheirOwnThatTheGuideExplains) {
    const std::string guide = readInputFile(KORVANE_SOURCE_DIR "/docs/guide/11-notes.md");
    std::set<std::string_view> codes;
    for (const auto& rules :
         {weightRules(), wedgeRules(), coefficientRules(), clayRules(), seepageRules(), loadRules(),
          reductionRules(), fileRules(), remarkRules()}) {
        for (const NoteRule& rule : rules) {
            EXPECT_TRUE(codes.insert(rule.code).second) << rule.code;
            EXPECT_FALSE(rule.source.empty()) << rule.code;
            EXPECT_NE(guide.find('`' + std::string(rule.code) + '`'), std::string::npos)
                << rule.code;
        }
    }
}

} // namespace
} // namespace korvane::test
