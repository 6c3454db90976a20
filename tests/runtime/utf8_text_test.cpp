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

} // namespace

} // namespace korvane
