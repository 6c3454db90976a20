#include "runtime/utf8_text.h"

#include <gtest/gtest.h>

#include <string>

namespace korvane {

namespace {

TEST(Utf8Text, ValidTextPassesUnchanged) {
    for (const char* text : {"", "PLAIN", "caf\xC3\xA9", "\xE2\x82\xAC", "\xF0\x9F\x98\x80",
                             "\xED\x9F\xBF\xEE\x80\x80", "\xF4\x8F\xBF\xBF"}) {
        EXPECT_EQ(utf8Text(text), text);
    }
}

TEST(Utf8Text, OtherBytesBecomeLatin1Characters) {
    EXPECT_EQ(utf8Text("caf\xE9 5\xB0"), "caf\xC3\xA9 5\xC2\xB0");
    EXPECT_EQ(utf8Text("\xFF"), "\xC3\xBF");
    EXPECT_EQ(utf8Text("\xC3"), "\xC3\x83"); // cut off
    EXPECT_EQ(utf8Text("\xE2\x82"), "\xC3\xA2\xC2\x82");
}

TEST(Utf8Text, OverlongFormsSurrogatesAndValuesBeyondUnicodeAreNoCharacters) {
    EXPECT_EQ(utf8Text("\xC0\xAF"), "\xC3\x80\xC2\xAF");
    EXPECT_EQ(utf8Text("\xE0\x80\xAF").size(), 6U);
    EXPECT_EQ(utf8Text("\xED\xA0\x80").size(), 6U);
    EXPECT_EQ(utf8Text("\xF0\x80\x80\xAF").size(), 8U);
    EXPECT_EQ(utf8Text("\xF4\x90\x80\x80").size(), 8U);
}

TEST(MessageText, ALineShows200CharactersAtMost) {
    EXPECT_EQ(messageText(std::string(200, 'x')), std::string(200, 'x'));
    EXPECT_EQ(messageText(std::string(201, 'x')), std::string(196, 'x') + " ...");
    // Characters count, not bytes, and each line by itself.
    std::string accents;
    for (int i = 0; i < 201; ++i) {
        accents += "\xC3\xA9";
    }
    EXPECT_EQ(messageText(accents), accents.substr(0, std::size_t{196} * 2) + " ...");
    EXPECT_EQ(messageText(accents.substr(2) + "\nshort\n" + std::string(300, 'y')),
              accents.substr(2) + "\nshort\n" + std::string(196, 'y') + " ...");
    EXPECT_EQ(messageText(""), "");
    EXPECT_EQ(messageText("a\n\nb\n"), "a\n\nb\n");
}

TEST(MessageText, ControlCharactersAreVisible) {
    EXPECT_EQ(messageText("a\tb\rc\x1B[1m\x7F"), "a\\x09b\\x0Dc\\x1B[1m\\x7F");
    EXPECT_EQ(messageText(std::string("\0", 1)), "\\x00");
    EXPECT_EQ(messageText("\x9B"), "\\x9B"); // a byte that becomes a control character
    // Turns the direction of a text.
    EXPECT_EQ(messageText("\xE2\x80\xAE"), "\\u202E"); // NOLINT(misc-misleading-bidirectional)
    EXPECT_EQ(messageText("\xE2\x80\xA8"), "\\u2028"); // parts a line
    EXPECT_EQ(messageText("caf\xC3\xA9 \xE2\x82\xAC"), "caf\xC3\xA9 \xE2\x82\xAC");
    // What makes a character visible counts, and is not cut in two.
    EXPECT_EQ(messageText(std::string(100, '\x1B')).size(), 196U + 4U);
    EXPECT_EQ(messageText(std::string(195, 'x') + "\x1B" + "yyyyy"),
              std::string(195, 'x') + " ...");
}

} // namespace

} // namespace korvane
