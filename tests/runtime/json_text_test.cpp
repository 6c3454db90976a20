// JSON documents: layout, escapes and numbers, alone and against another writer.
#include "runtime/json_text.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <random>
#include <string>

namespace korvane {
namespace {

using Json = nlohmann::ordered_json;

/// The text of one value that is a whole document.
std::string textOf(const auto& value) {
    JsonText json;
    json.value(value);
    std::string text = json.take();
    EXPECT_EQ(text.back(), '\n');
    text.pop_back();
    return text;
}

TEST(JsonText, MembersAndEntriesStandOnLinesOfTheirOwn) {
    JsonText json;
    json.object([&] {
        json.member("name", "wall");
        json.member("sides").array([&] {
            json.array([&] {
                json.value(1);
                json.value(2.5);
            });
            json.object([&] { json.member("yes", true); });
        });
        json.member("last", false);
    });
    EXPECT_EQ(json.take(), "{\n"
                           " \"name\": \"wall\",\n"
                           " \"sides\": [\n"
                           "  [\n"
                           "   1,\n"
                           "   2.5\n"
                           "  ],\n"
                           "  {\n"
                           "   \"yes\": true\n"
                           "  }\n"
                           " ],\n"
                           " \"last\": false\n"
                           "}\n");
}

TEST(JsonText, WhatIsEmptyHasNoLines) {
    JsonText json;
    json.array([&] {
        json.object([] {});
        json.array([] {});
        json.value("");
    });
    EXPECT_EQ(json.take(), "[\n {},\n [],\n \"\"\n]\n");
    JsonText alone;
    alone.object([] {});
    EXPECT_EQ(alone.take(), "{}\n");
}

TEST(JsonText, NumbersAreTheShortestAndShowThatTheyAreNoIntegers) {
    EXPECT_EQ(textOf(12), "12");
    EXPECT_EQ(textOf(-2147483647 - 1), "-2147483648");
    EXPECT_EQ(textOf(12.0), "12.0");
    EXPECT_EQ(textOf(0.0), "0.0");
    EXPECT_EQ(textOf(-0.0), "-0.0");
    EXPECT_EQ(textOf(62.4), "62.4");
    EXPECT_EQ(textOf(0.1 + 0.2), "0.30000000000000004");
    EXPECT_EQ(textOf(0.0001), "0.0001");
    EXPECT_EQ(textOf(0.000099), "9.9e-05");
    EXPECT_EQ(textOf(999999999999999.0), "999999999999999.0");
    EXPECT_EQ(textOf(1e15), "1e+15");
    EXPECT_EQ(textOf(-1.25e20), "-1.25e+20");
    EXPECT_EQ(textOf(5e-324), "5e-324");
}

TEST(JsonText, NullStandsForWhatIsMissingOrNotFinite) {
    EXPECT_EQ(textOf(nullptr), "null");
    EXPECT_EQ(textOf(std::optional<double>()), "null");
    EXPECT_EQ(textOf(std::optional<double>(1)), "1.0");
    EXPECT_EQ(textOf(std::optional<int>(1)), "1");
    EXPECT_EQ(textOf(std::numeric_limits<double>::quiet_NaN()), "null");
    EXPECT_EQ(textOf(std::numeric_limits<double>::infinity()), "null");
    EXPECT_EQ(textOf(-std::numeric_limits<double>::infinity()), "null");
}

TEST(JsonText, TextsEscapeWhatJsonForbids) {
    EXPECT_EQ(textOf("a\"b\\c/d"), "\"a\\\"b\\\\c/d\"");
    EXPECT_EQ(textOf("\b\t\n\f\r\v\x01\x1F"), "\"\\b\\t\\n\\f\\r\\u000b\\u0001\\u001f\"");
    EXPECT_EQ(textOf(std::string("\0", 1)), "\"\\u0000\"");
    EXPECT_EQ(textOf("\x7F \xC3\xA9"), "\"\x7F \xC3\xA9\"");
}

/// The same random value into both writers.
void writeRandom(JsonText& json, Json& other, std::mt19937& random, int depth) {
    const auto count = [&] { return static_cast<int>(random() % 4); };
    const auto word = [&] {
        std::string text;
        for (int i = count() * 3; i > 0; --i) {
            text += static_cast<char>(random() % 128);
        }
        return text;
    };
    switch (random() % (depth > 5 ? 4U : 7U)) {
    case 0: {
        const int number = static_cast<int>(random());
        json.value(number);
        other = number;
        break;
    }
    case 1: { // few digits: other writers find the same shortest ones
        const double number = static_cast<double>(random() % 20001) / 8 - 1250;
        json.value(number);
        other = number;
        break;
    }
    case 2: {
        const std::string text = word();
        json.value(text);
        other = text;
        break;
    }
    case 3: {
        const bool truth = count() == 0;
        json.value(truth);
        other = truth;
        break;
    }
    case 4:
        other = Json::array();
        json.array([&] {
            for (int i = count(); i > 0; --i) {
                other.emplace_back();
                writeRandom(json, other.back(), random, depth + 1);
            }
        });
        break;
    default:
        other = Json::object();
        json.object([&] {
            for (int i = count(); i > 0; --i) {
                const std::string name = std::to_string(i) + word();
                json.member(name);
                writeRandom(json, other[name], random, depth + 1);
            }
        });
    }
}

TEST(JsonText, EqualsAnotherWriterOnRandomDocuments) {
    std::mt19937 random(20261123);
    for (int i = 0; i < 2000; ++i) {
        JsonText json;
        Json other;
        writeRandom(json, other, random, 0);
        ASSERT_EQ(json.take(), other.dump(1) + "\n");
    }
}

TEST(JsonText, EveryNumberReadsBackToTheSameDouble) {
    std::mt19937_64 random(20261124);
    for (int i = 0; i < 20000; ++i) {
        const auto value = std::bit_cast<double>(random());
        if (!std::isfinite(value)) {
            continue;
        }
        const std::string text = textOf(value);
        const Json read = Json::parse(text);
        ASSERT_TRUE(read.is_number_float()) << text;
        ASSERT_EQ(std::bit_cast<std::uint64_t>(read.get<double>()),
                  std::bit_cast<std::uint64_t>(value))
            << text;
        ASSERT_LE(text.size(), Json(value).dump().size()) << text;
    }
}

} // namespace
} // namespace korvane
