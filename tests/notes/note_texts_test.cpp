// Notes as text.
#include "notes/note_texts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

namespace korvane::test {
namespace {

Note noteOf(Severity severity, std::string_view code, std::string text) {
    return {.code = code, .severity = severity, .text = std::move(text), .source = "Blum 1931"};
}

TEST(NoteTexts, ALineTellsSeverityAndCode) {
    EXPECT_EQ(noteLine(noteOf(Severity::Unsafe, "anchor-force", "The anchor does not pull.")),
              "unsafe: The anchor does not pull. (anchor-force)");
}

TEST(NoteTexts, TheSummaryCounts) {
    EXPECT_EQ(notesSummary({}), "no notes");
    const Note unsafe = noteOf(Severity::Unsafe, "a", "A.");
    const Note caution = noteOf(Severity::Caution, "b", "B.");
    const Note remark = noteOf(Severity::Remark, "c", "C.");
    EXPECT_EQ(notesSummary({unsafe, caution, caution, remark}), "1 unsafe, 2 cautions, 1 remark");
    EXPECT_EQ(notesSummary({caution}), "1 caution");
}

TEST(NoteTexts, TheWindowsTextIsWrapped) {
    std::string words;
    for (int word = 0; word < 40; ++word) {
        words += "wall ";
    }
    words.back() = '.';
    const std::string text = notesText({noteOf(Severity::Caution, "thin-layer", words)}, 30);
    std::istringstream lines(text);
    std::string line;
    std::string joined;
    while (std::getline(lines, line)) {
        EXPECT_LE(line.size(), 30U);
        joined += joined.empty() || line.empty() ? line : " " + line;
    }
    EXPECT_EQ(joined, "caution: " + words + " (thin-layer) Source: Blum 1931.");
}

TEST(NoteTexts, OnlyNewUnsafeNotesAreTold) {
    const Note old = noteOf(Severity::Unsafe, "a", "A.");
    const Note fresh = noteOf(Severity::Unsafe, "a", "A has changed.");
    const Note caution = noteOf(Severity::Caution, "b", "B.");
    const auto told = newUnsafeNotes({old, fresh, caution}, {old});
    ASSERT_EQ(told.size(), 1U);
    EXPECT_EQ(told.front().text, "A has changed.");
    EXPECT_TRUE(newUnsafeNotes({old}, {old}).empty());
}

TEST(NoteTexts, TheBoxHoldsOneTextBelowTheOther) {
    const MessageBox box =
        notesBox({noteOf(Severity::Unsafe, "a", "A."), noteOf(Severity::Unsafe, "b", "B.")});
    EXPECT_EQ(box.title, "NOTES");
    EXPECT_EQ(box.text, "A.\n\nB.");
    EXPECT_EQ(box.buttons, Buttons::Ok);
    EXPECT_EQ(box.icon, Icon::Exclamation);
}

TEST(NoteTexts, TheBoxBreaksLongTextsAtBlanks) {
    std::string text = "word";
    for (int words = 1; words < 80; ++words) {
        text += " word";
    }
    std::string box = notesBox({noteOf(Severity::Unsafe, "a", text)}).text;
    // 14 words of 4 letters with their blanks are 69 characters, so that 80 take 6 lines.
    EXPECT_EQ(std::count(box.begin(), box.end(), '\n'), 5);
    EXPECT_EQ(box.find('\n'), 69U);
    std::replace(box.begin(), box.end(), '\n', ' ');
    EXPECT_EQ(box, text);
}

} // namespace
} // namespace korvane::test
