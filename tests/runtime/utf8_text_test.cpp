// Bytes of unknown encoding as UTF-8.
#include "runtime/utf8_text.h"

#include <gtest/gtest.h>

#include <string>

namespace korvane {
namespace {

TEST(Utf8Text, WhatIsUtf8PassesUnchanged) {
    for (const char* text : {"", "WALL 12", "\xC2\x80", "\xC3\xBC", "\xE2\x82\xAC", "\xED\x9F\xBF",
                             "\xEE\x80\x80", "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF"}) {
        EXPECT_EQ(utf8Text(text), text);
    }
}

TEST(Utf8Text, EachOtherByteBecomesTheLatin1CharacterOfItsValue) {
    EXPECT_EQ(utf8Text("Q\xDCY"), "Q\xC3\x9CY"); // U+00DC
    EXPECT_EQ(utf8Text("\x80\xFF"), "\xC2\x80\xC3\xBF");
    EXPECT_EQ(utf8Text("5\xB0 \xC3\xBC"), "5\xC2\xB0 \xC3\xBC");
}

// A character cut off at the end, an overlong form, a surrogate, a value beyond U+10FFFF: every
// byte gives two.
TEST(Utf8Text, BrokenCharactersAreTakenByteByByte) {
    for (const std::string bytes : {"\xC3", "\xE2\x82", "\xC0\xAF", "\xE0\x9F\xBF", "\xED\xA0\x80",
                                    "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80"}) {
        EXPECT_EQ(utf8Text(bytes).size(), 2 * bytes.size());
        EXPECT_NE(utf8Text(bytes), bytes);
    }
    EXPECT_EQ(utf8Text("\xC3"
                       "A"),
              "\xC3\x83"
              "A");
}

} // namespace
} // namespace korvane
