// Notes on what the reader of a file passed over.
#include "told_wall.h"

namespace korvane::test {
namespace {

using Kind = ReadRemark::Kind;

std::vector<Note> notesOnFile(const std::vector<ReadRemark>& remarks) {
    const Problem problem = plainCantilever();
    return notesOnInput({.problem = problem, .read = &remarks});
}

std::string textOf(const std::vector<Note>& notes, std::string_view code) {
    for (const Note& note : notes) {
        if (note.code == code) {
            return note.text;
        }
    }
    return "";
}

TEST(FileNotes, EachKindHasItsNote) {
    const std::pair<Kind, const char*> kinds[] = {
        {Kind::WordsIgnored, "words-ignored"},
        {Kind::LastLayerFactors, "last-layer-factors"},
        {Kind::PassiveFactorAlone, "passive-factor-alone"},
        {Kind::SlopeDropped, "slope-dropped"},
        {Kind::DefaultFactors, "defaults-taken"},
        {Kind::OneFactorForBoth, "defaults-taken"},
    };
    for (const auto& [kind, code] : kinds) {
        const auto notes = notesOnFile({{kind, Left, 2, "120 110 30 "}});
        EXPECT_NE(textOf(notes, code).find("\"120 110 30\""), std::string::npos) << code;
        EXPECT_EQ(textOf(notesOnFile({}), code), "") << code;
    }
}

TEST(FileNotes, ALineShowsNoControlCharacters) {
    const auto notes = notesOnFile({{Kind::WordsIgnored, 0, 0, "WALL 12 \x1b[31mZZ"}});
    EXPECT_NE(textOf(notes, "words-ignored").find("\"WALL 12 \\x1B[31mZZ\""), std::string::npos);
}

TEST(FileNotes, SeveralLinesAreOneNote) {
    const auto notes = notesOnFile({{Kind::WordsIgnored, 0, 0, "WALL 10 FT "},
                                    {Kind::WordsIgnored, 0, 0, "SURFACE R 1 0 10 FT "}});
    EXPECT_EQ(textOf(notes, "words-ignored"),
              "Words at the end of a line are ignored: \"WALL 10 FT\" and 1 more.");
}

TEST(FileNotes, AProblemFromTheScreensHasNone) {
    const Problem problem = plainCantilever();
    EXPECT_EQ(textOf(notesOnInput({.problem = problem}), "words-ignored"), "");
}

} // namespace
} // namespace korvane::test
