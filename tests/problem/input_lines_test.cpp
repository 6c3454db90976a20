// Lines of an input file: cleaning and tokens.

#include "problem/input_lines.h"
#include "runtime/runtime_error.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace korvane;

namespace {

InputLines linesOf(std::vector<std::string> lines) {
    InputLines input;
    input.lines = std::move(lines);
    return input;
}

/// The tokens of one line.
std::vector<std::string> tokensOf(const std::string& line) {
    InputLines input = linesOf({line});
    EXPECT_TRUE(NextInputLine(input));
    std::vector<std::string> tokens;
    for (int token = 1; token <= MaxTokens && hasToken(input, token); ++token) {
        tokens.emplace_back(takeToken(input, token));
    }
    EXPECT_EQ(static_cast<int>(tokens.size()), input.TokenCount);
    return tokens;
}

using Tokens = std::vector<std::string>;

} // namespace

TEST(InputLines, ALineIsTrimmedUpperCaseAndEndsWithOneBlank) {
    InputLines input = linesOf({"   wall  20 a\xE4   "});
    ASSERT_TRUE(NextInputLine(input));
    EXPECT_EQ(input.InputLine, "WALL  20 A\xE4 "); // bytes beyond ASCII pass unchanged
}

TEST(InputLines, EmptyLinesAndCommentsArePassedOver) {
    InputLines input = linesOf({"", "    ", "( a comment", "   (another)", "first", "(", "second"});
    ASSERT_TRUE(NextInputLine(input));
    EXPECT_EQ(input.InputLine, "FIRST ");
    ASSERT_TRUE(NextInputLine(input));
    EXPECT_EQ(input.InputLine, "SECOND ");
    EXPECT_FALSE(NextInputLine(input));
}

TEST(InputLines, ABracketInsideALineIsNoComment) {
    EXPECT_EQ(tokensOf("10 (FT)"), (Tokens{"10", "(FT)"}));
}

TEST(InputLines, TokensStandBetweenTheirColumns) {
    InputLines input = linesOf({"  AB   C  1.5"}); // cleaned: "AB   C  1.5 "
    ASSERT_TRUE(NextInputLine(input));
    EXPECT_EQ(input.TokenPos(1, 1), 1U);
    EXPECT_EQ(input.TokenPos(2, 1), 2U);
    EXPECT_EQ(input.TokenPos(1, 2), 6U);
    EXPECT_EQ(input.TokenPos(2, 2), 6U);
    EXPECT_EQ(input.TokenPos(1, 3), 9U);
    EXPECT_EQ(input.TokenPos(2, 3), 11U);
    EXPECT_EQ(input.TokenPos(1, 4), 0U);
    EXPECT_EQ(input.TokenPos(2, 4), 0U);
    EXPECT_EQ(input.TokenCount, 3);
}

TEST(InputLines, OnlyTheBlankPartsTokens) {
    EXPECT_EQ(tokensOf("1,2\t3 4;5"), (Tokens{"1,2\t3", "4;5"}));
    EXPECT_EQ(tokensOf("\t"), (Tokens{"\t"}));
}

TEST(InputLines, WhatFollowsTheTwentiethTokenIsIgnored) {
    std::string line;
    Tokens expected;
    for (int i = 1; i <= 25; ++i) {
        line += std::to_string(i) + " ";
        if (i <= 20) {
            expected.push_back(std::to_string(i));
        }
    }
    EXPECT_EQ(tokensOf(line), expected);
}

TEST(InputLines, TwentyTokensAreAllTaken) {
    std::string line;
    for (int i = 1; i <= 20; ++i) {
        line += (i == 1 ? "T" : " T") + std::to_string(i);
    }
    const Tokens tokens = tokensOf(line);
    ASSERT_EQ(tokens.size(), 20U);
    EXPECT_EQ(tokens.back(), "T20");
}

TEST(InputLines, AtTheEndTheOldLineStaysWithoutTokens) {
    InputLines input = linesOf({"V L R", "( end"});
    ASSERT_TRUE(NextInputLine(input));
    ASSERT_FALSE(NextInputLine(input));
    EXPECT_EQ(input.InputLine, "V L R ");
    EXPECT_EQ(input.TokenCount, 0);
    for (int token = 1; token <= MaxTokens; ++token) {
        EXPECT_FALSE(hasToken(input, token));
    }
}

TEST(InputLines, TakingATokenThatDoesNotExistIsRunTimeError5) {
    InputLines input = linesOf({"VERTICAL"});
    ASSERT_TRUE(NextInputLine(input));
    try {
        takeToken(input, 2);
        FAIL() << "no error";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.number(), 5);
    }
}
