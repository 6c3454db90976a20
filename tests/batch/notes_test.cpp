// Notes in the outputs of the batch command.
#include "batch_run.h"

#include "runtime/file_text.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cmath>

namespace korvane::test {
namespace {

using nlohmann::json;

std::string wallWithWaterOf(const char* weight) {
    return std::string("'WALL\nCONTROL CANTILEVER DESIGN 1 1.5\nWALL 10\nSURFACE RIGHT 1 0 10\n"
                       "SURFACE LEFT 1 0 0\nSOIL BOTH STRENGTHS 1\n 125 115 32 0 0 0\n"
                       "WATER ELEVATIONS ") +
           weight + " 3 0\nFINISHED\n";
}

/// Lines of notes of a run.
std::vector<std::string> noteLines(const BatchRun& run) {
    std::vector<std::string> lines;
    for (const std::string& line : splitLines(run.err)) {
        if (line.find(": note: ") != std::string::npos) {
            lines.push_back(line);
        }
    }
    return lines;
}

bool anyHas(const std::vector<std::string>& lines, const std::string& text) {
    return std::any_of(lines.begin(), lines.end(), [&text](const std::string& line) {
        return line.find(text) != std::string::npos;
    });
}

} // namespace

TEST(BatchNotes, StandOnStandardErrorBehindTheMessages) {
    const BatchOffice office;
    const std::string input = office.write("a.dat", wallWithWaterOf("9.81"));
    const BatchRun run = office.run({input});
    EXPECT_EQ(run.status, 0);
    const auto lines = noteLines(run);
    ASSERT_GT(lines.size(), 2U);
    EXPECT_EQ(lines.front().rfind(input + ": note: unsafe: Water weighs 9.81 PCF here", 0), 0U);
    EXPECT_TRUE(lines.front().ends_with("(water-weight)"));
    EXPECT_TRUE(anyHas(lines, ": note: remark: "));
    EXPECT_LT(run.err.find("No errors detected"), run.err.find(": note: "));
}

TEST(BatchNotes, QuietKeepsToUnsafeOnesAndNoNotesToNone) {
    const BatchOffice office;
    const std::string input = office.write("a.dat", wallWithWaterOf("9.81"));
    const auto quiet = noteLines(office.run({"--quiet", input}));
    ASSERT_EQ(quiet.size(), 1U);
    EXPECT_NE(quiet.front().find("unsafe: "), std::string::npos);
    EXPECT_TRUE(noteLines(office.run({"--no-notes", input})).empty());
    EXPECT_TRUE(
        noteLines(office.run({"--quiet", office.write("b.dat", wallWithWaterOf("62.4"))})).empty());
}

TEST(BatchNotes, StandInTheJsonAllOfThem) {
    const BatchOffice office;
    const std::string input = office.write("a.dat", wallWithWaterOf("9.81"));
    const auto lines = noteLines(office.run({input}));
    ASSERT_EQ(office.run({"--quiet", "--json", input}).status, 0);
    const json notes = json::parse(office.read("a.json")).at("notes");
    ASSERT_EQ(notes.size(), lines.size());
    const json& first = notes.front();
    EXPECT_EQ(first.at("code"), "water-weight");
    EXPECT_EQ(first.at("severity"), "unsafe");
    EXPECT_EQ(first.at("value"), 9.81);
    EXPECT_EQ(first.at("limit"), 62);
    EXPECT_TRUE(first.at("side").is_null());
    EXPECT_TRUE(first.at("layer").is_null());
    EXPECT_TRUE(first.at("elev").is_null());
    EXPECT_TRUE(first.at("second").is_null());
    EXPECT_FALSE(first.at("source").get<std::string>().empty());
    for (const json& note : notes) {
        if (note.at("code") != "over-excavation") {
            continue;
        }
        EXPECT_EQ(note.at("side"), "left");
        EXPECT_EQ(note.at("elev"), -1);
        ASSERT_EQ(note.at("second").size(), 1U);
        const json& level = note.at("second").front();
        EXPECT_EQ(level.at("method"), "cantilever");
        EXPECT_GT(level.at("penetration"), 5);
        EXPECT_NEAR(level.at("bottomElev").get<double>(),
                    -1 - level.at("penetration").get<double>(), 1e-9);
        EXPECT_TRUE(level.at("anchorForce").is_null());
        EXPECT_TRUE(level.at("factorOfSafety").is_null());
    }
    ASSERT_EQ(office.run({"--no-notes", "--json", input}).status, 0);
    EXPECT_FALSE(json::parse(office.read("a.json")).contains("notes"));
}

// 1 PCF = 0.1570874638 kN/m3, 1 FT = 0.3048 m, 1 LB-FT/FT = 0.0044482216 kNm/m.
TEST(BatchNotes, AreInTheUnitsAskedFor) {
    const BatchOffice office;
    const std::string input = office.write("a.dat", wallWithWaterOf("9.81"));
    ASSERT_EQ(office.run({"--json", input}).status, 0);
    const json feet = json::parse(office.read("a.json")).at("notes");
    const auto lines = noteLines(office.run({"--json", "--units", "si", input}));
    const json metres = json::parse(office.read("a.json")).at("notes");
    EXPECT_TRUE(anyHas(lines, "Water weighs 1.541 kN/m3 here; fresh water weighs 9.802 kN/m3"));
    ASSERT_EQ(feet.size(), metres.size());
    const auto expectRatio = [](const json& us, const json& si, const char* name, double factor) {
        EXPECT_NEAR(si.at(name).get<double>(), us.at(name).get<double>() * factor,
                    1e-8 * std::abs(us.at(name).get<double>()))
            << name;
    };
    int seconds = 0;
    for (std::size_t i = 0; i < feet.size(); ++i) {
        EXPECT_EQ(feet[i].at("code"), metres[i].at("code"));
        if (feet[i].at("code") == "water-weight") {
            expectRatio(feet[i], metres[i], "value", 0.1570874638);
            expectRatio(feet[i], metres[i], "limit", 0.1570874638);
        } else if (feet[i].at("code") == "over-excavation") {
            ++seconds;
            expectRatio(feet[i], metres[i], "elev", 0.3048);
            expectRatio(feet[i], metres[i], "value", 0.3048);
            const json& us = feet[i].at("second").at(0);
            const json& si = metres[i].at("second").at(0);
            expectRatio(us, si, "penetration", 0.3048);
            expectRatio(us, si, "bottomElev", 0.3048);
            expectRatio(us, si, "maxMoment", 0.0044482216152605);
        }
    }
    EXPECT_EQ(seconds, 1);
}

TEST(BatchNotes, ChangeNoReportAndNoOtherMemberOfTheJson) {
    const EnvironmentVariable epoch("SOURCE_DATE_EPOCH", "0");
    const BatchOffice office;
    const std::string input = office.copy("examples/sloping-backfill-sweep.dat", "a.dat");
    const auto outputs = [&](const std::vector<std::string>& arguments) {
        EXPECT_EQ(office.run(arguments).status, 0);
        json results = json::parse(office.read("a.json"));
        results.erase("notes");
        return std::pair(office.read("a.out"), results);
    };
    EXPECT_EQ(outputs({"--json", input}), outputs({"--json", "--no-notes", input}));
}

TEST(BatchNotes, AFailedWallHasItsNotesToo) {
    const BatchOffice office;
    const std::string input = office.copy("cases/clay-without-depth.dat", "clay.dat");
    const BatchRun run = office.run({input});
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(anyHas(noteLines(run), "no depth holds the wall. (clay-in-front)"));
    EXPECT_TRUE(noteLines(office.run({office.write("refused.dat", refusedInput)})).empty());
}

TEST(BatchCheck, ReadsAndTellsAndWritesNothing) {
    const BatchOffice office;
    const std::string sound = office.write("sound.dat", wallWithWaterOf("62.4"));
    const BatchRun run = office.run({"--check", sound});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "");
    EXPECT_TRUE(anyHas(noteLines(run), "(no-surcharge)"));
    EXPECT_FALSE(anyHas(noteLines(run), "(over-excavation)")); // needs a solution
    const std::string metric = office.write("metric.dat", wallWithWaterOf("9.81"));
    EXPECT_EQ(office.run({"--check", metric}).status, 1);
    EXPECT_EQ(office.run({"--check", "--quiet", sound, metric}).status, 1);
    EXPECT_EQ(office.files(), (std::set<std::string>{"metric.dat", "sound.dat"}));
    // A wall that fails is sound as an input.
    EXPECT_EQ(office.run({"--check", office.write("failing.dat", failingInput)}).status, 0);
    EXPECT_EQ(office.run({"--check", office.write("refused.dat", refusedInput)}).status, 1);
    EXPECT_EQ(office.run({"--check", office.write("fatal.dat", fatalInput)}).status, 70);
}

TEST(BatchCheck, TellsWhatRefusesAWallBeforeItIsSolved) {
    const BatchOffice office;
    // The first layer on the left is to end at the ground, or a little below it.
    const auto wall = [](const char* bottom) {
        return std::string("'WALL\nCONTROL CANTILEVER DESIGN 1 1.5\nWALL 10\n"
                           "SURFACE RIGHT 1 0 10\nSURFACE LEFT 1 0 0\n"
                           "SOIL RIGHT STRENGTHS 1\n 125 115 32 0 0 0\n"
                           "SOIL LEFT STRENGTHS 2\n 125 115 32 0 0 0 ") +
               bottom + " 0\n 125 115 32 0 0 0\nFINISHED\n";
    };
    const BatchRun refused = office.run({"--check", office.write("a.dat", wall("0"))});
    EXPECT_EQ(refused.status, 1);
    EXPECT_NE(refused.err.find("a.dat: [INCONSISTENT SOIL LAYER DATA] Bottom of LEFTSIDE soil "
                               "layer 1 is at or above"),
              std::string::npos)
        << refused.err;
    EXPECT_NE(refused.err.find("a.dat: while preparing the solution"), std::string::npos);
    EXPECT_TRUE(anyHas(noteLines(refused), "(no-water)"));
    const BatchRun sound = office.run({"--check", office.write("b.dat", wall("-0.01"))});
    EXPECT_EQ(sound.status, 0) << sound.err;
    EXPECT_EQ(sound.err.find("INCONSISTENT"), std::string::npos);
    EXPECT_EQ(office.files(), (std::set<std::string>{"a.dat", "b.dat"}));
}

TEST(BatchCheck, TellsWhatTheReaderPassedOver) {
    const BatchOffice office;
    std::string text = wallWithWaterOf("62.4");
    text.replace(text.find("WALL 10"), 7, "WALL 10 FT");
    const auto lines = noteLines(office.run({"--check", office.write("a.dat", text)}));
    EXPECT_TRUE(anyHas(lines, "remark: Words at the end of a line are ignored: \"WALL 10 FT\"."));
}

TEST(BatchCheck, TakesNoOutputs) {
    const BatchOffice office;
    const std::string input = office.write("a.dat", wallWithWaterOf("62.4"));
    for (const std::vector<std::string>& other : {std::vector<std::string>{"--json"},
                                                  {"--plots"},
                                                  {"-o", "-"},
                                                  {"--output-dir", "x"},
                                                  {"--no-notes"}}) {
        std::vector<std::string> arguments{"--check"};
        arguments.insert(arguments.end(), other.begin(), other.end());
        arguments.push_back(input);
        EXPECT_EQ(office.run(arguments).status, 2) << other.front();
    }
    EXPECT_EQ(office.files(), std::set<std::string>{"a.dat"});
}

} // namespace korvane::test
