// Why an input has no results: the line behind its messages and the member of its JSON.
#include "batch_run.h"
#include "problem/input_writer.h"
#include "runtime/file_text.h"
#include "support/failing_walls.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>

#include <filesystem>

namespace korvane::test {

namespace fs = std::filesystem;

namespace {

using Json = nlohmann::json;

/// The one line that begins with "INPUT: while".
std::string whileLine(const BatchRun& run, const std::string& input) {
    std::string found;
    for (const std::string& line : splitLines(run.err)) {
        if (line.rfind(input + ": while ", 0) == 0) {
            EXPECT_EQ(found, "") << run.err;
            found = line;
        }
    }
    return found;
}

Json failureOf(const BatchOffice& office) {
    return Json::parse(office.read("wall.json"))["failure"];
}

/// Every member, null but for code, stage and `others`.
void expectFailure(const Json& failure, const std::string& code, const std::string& stage,
                   const std::string& others) {
    Json expected{{"code", code},         {"stage", stage},        {"level", nullptr},
                  {"side", nullptr},      {"layer", nullptr},      {"elev", nullptr},
                  {"factorLow", nullptr}, {"factorHigh", nullptr}, {"error", nullptr},
                  {"field", nullptr},     {"index", nullptr},      {"value", nullptr},
                  {"limit", nullptr},     {"line", nullptr},       {"read", nullptr},
                  {"must", nullptr},      {"distance", nullptr}};
    expected.update(Json::parse(others));
    EXPECT_EQ(failure, expected);
}

/// The members that a wall's failure has besides code and stage. What its search came to is taken
/// from the JSON; its place and kind are not.
std::string othersOf(const FailingWall& wall, const Json& failure) {
    const Failure& expected = wall.expected;
    Json others = Json::object();
    const auto add = [&](const char* name, int count) {
        if (count != 0) {
            others[name] = count;
        }
    };
    add("level", expected.level);
    add("layer", expected.layer);
    add("error", expected.error);
    if (expected.side != 0) {
        others["side"] = expected.side == Right ? "right" : "left";
    }
    if (expected.elev != 0) {
        EXPECT_NEAR(failure["elev"].get<double>(), expected.elev, wall.elevMargin);
        others["elev"] = failure["elev"];
    }
    if (expected.distance != 0) {
        others["distance"] = expected.distance;
    }
    if (expected.bracketed) { // one step
        others["factorLow"] = failure["factorLow"];
        others["factorHigh"] = failure["factorHigh"];
        const double low = failure["factorLow"];
        const double high = failure["factorHigh"];
        EXPECT_NEAR(low, high + 0.2, 1e-9);
    }
    return others.dump();
}

} // namespace

TEST(BatchFailure, EachWallThatFailsTellsCodeStageAndPlace) {
    for (const FailingWall& wall : failingWalls()) {
        SCOPED_TRACE(wall.name);
        if (wall.problem.SeepageKind == Seepage::Given ||
            wall.expected.code == FailureCode::LayerBottomsCross) {
            continue; // such as no input file can tell
        }
        const BatchOffice office;
        const std::string input = office.write("wall.dat", inputFileText(wall.problem));
        const BatchRun run = office.run({"--json", input});
        EXPECT_EQ(run.status, 1) << run.err;
        const std::string stage = stageText(wall.expected.stage, wall.problem.WallType);
        EXPECT_EQ(whileLine(run, input), input + ": while " + stage);
        const Json failure = failureOf(office);
        expectFailure(failure, failureName(wall.expected.code), stage, othersOf(wall, failure));
        const Json json = Json::parse(office.read("wall.json"));
        EXPECT_EQ(json["status"], "failed");
        EXPECT_TRUE(json["levels"].empty());
        // The file is complete, and one box tells why; a search asks at each limit in between.
        const auto& messages = json["messages"];
        const auto questions =
            std::count_if(messages.begin(), messages.end(), [](const Json& message) {
                return message["title"] == "LARGE FACTOR OF SAFETY";
            });
        EXPECT_EQ(messages.size() - static_cast<std::size_t>(questions), 2U);
        EXPECT_EQ(messages.front()["title"], "INPUT COMPLETE");
        EXPECT_NE(messages.back()["title"], "LARGE FACTOR OF SAFETY");
    }
}

TEST(BatchFailure, ARefusedInputFailsWhileItIsRead) {
    const BatchOffice office;
    const std::string input = office.write("wall.dat", refusedInput);
    const BatchRun run = office.run({"--json", input});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(whileLine(run, input), input + ": while reading the input");
    expectFailure(failureOf(office), "input-refused", "reading the input",
                  R"({"line": 2, "field": "CONTROL DATA", "read": "CONTROL CANTILEVER",
                      "must": "a line of at least 3 words"})");
}

TEST(BatchFailure, TheFieldThatARefusedInputFailsInStandsBehindItsBox) {
    const BatchOffice office;
    std::string text = readFile(sourceFile("examples/sloping-both-sides-fixed.dat"));
    const std::string layer = "128  118  34  0  0  0\nSOIL LEFT";
    text.replace(text.find(layer), layer.size(), "128  118  46  0  0  0\nSOIL LEFT");
    const std::string input = office.write("wall.dat", text);
    const BatchRun run = office.run({"--json", input});
    const std::vector<std::string> lines = splitLines(run.err);
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_EQ(lines[0].rfind(input + ": [DATA ERROR IN INPUT FILE: ", 0), 0U);
    const std::vector<std::string> file = splitLines(text);
    const auto line = std::find(file.begin(), file.end(), "  128  118  46  0  0  0");
    const auto number = std::distance(file.begin(), line) + 1;
    EXPECT_EQ(lines[1], input + ":" + std::to_string(number) +
                            R"(: SoilFriction: read "46", must be 0 to 45)");
    EXPECT_EQ(lines[2], input + ": while reading the input");
    Json others = Json::parse(R"({"field": "SoilFriction", "side": "right", "index": 2,
                                  "read": "46", "must": "0 to 45"})");
    others["line"] = number;
    expectFailure(failureOf(office), "input-refused", "reading the input", others.dump());
}

TEST(BatchFailure, ALongWordIsCutOnStandardErrorAndWholeInJson) {
    const BatchOffice office;
    const std::string word = std::string(300, 'x') + "\x1B";
    const std::string input =
        office.write("wall.dat", "'HEADING OF A WALL WHOSE TOP IS NO NUMBER BUT A VERY LONG WORD\n"
                                 "CONTROL CANTILEVER DESIGN\nWALL " +
                                     word + "\n");
    const BatchRun run = office.run({"--json", input});
    EXPECT_EQ(run.err.find('\x1B'), std::string::npos);
    EXPECT_LT(splitLines(run.err)[1].size(), input.size() + 250);
    EXPECT_EQ(failureOf(office)["read"], word);
}

TEST(BatchFailure, ARunTimeErrorOfTheReaderTellsItsNumber) {
    const BatchOffice office;
    const std::string input = office.write("wall.dat", fatalInput);
    const BatchRun run = office.run({"--json", input});
    EXPECT_EQ(run.status, 70);
    EXPECT_EQ(whileLine(run, input), input + ": while reading the input");
    expectFailure(failureOf(office), "run-time-error", "reading the input", R"({"error": 5})");
}

TEST(BatchFailure, ASearchThatIsToldToStopIsADeclinedFactor) {
    const BatchOffice office;
    const std::string input = office.copy("tests/reference/anchored-analysis-9001.dat", "wall.dat");
    const std::string stage =
        "searching the factor of safety of the anchored wall by the free earth method";
    const BatchRun run = office.run({"--json", "--max-fs", "4.99", input});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(whileLine(run, input), input + ": while " + stage);
    expectFailure(failureOf(office), "factor-declined", stage,
                  R"({"level": 1, "factorLow": 5.0})"); // the limit at which it stopped
}

TEST(BatchFailure, AReportThatCannotBeWrittenIsAFileFault) {
    const BatchOffice office;
    const std::string input = office.copy("examples/cantilever-dry-sand.dat", "wall.dat");
    fs::create_directory(office.file("wall.out"));
    const BatchRun run = office.run({"--json", input});
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.err.find("[FILE ERROR] File: " + office.file("wall.out")), std::string::npos);
    const Json failure = failureOf(office);
    EXPECT_EQ(failure["code"], "file-fault");
    EXPECT_EQ(failure["stage"], "writing the reports");
    EXPECT_TRUE(failure["error"].is_number());
    EXPECT_EQ(whileLine(run, input), input + ": while writing the reports");
}

TEST(BatchFailure, TheLineStandsBehindTheMessagesOfItsOwnInput) {
    const BatchOffice office;
    const std::string good = office.copy("examples/cantilever-dry-sand.dat", "good.dat");
    const std::string refused = office.write("refused.dat", refusedInput);
    const std::vector<std::string> lines = splitLines(office.run({"--quiet", refused, good}).err);
    ASSERT_EQ(lines.size(), 4U);
    EXPECT_EQ(lines[0].rfind(refused + ": [DATA ERROR IN INPUT FILE: ", 0), 0U);
    EXPECT_EQ(lines[1].rfind(refused + ":2: CONTROL DATA: ", 0), 0U);
    EXPECT_EQ(lines[2], refused + ": while reading the input");
    EXPECT_EQ(lines[3].rfind(good + ": [INPUT COMPLETE] ", 0), 0U); // solved: no such line
}

TEST(BatchFailure, ASolvedInputHasNone) {
    const BatchOffice office;
    const std::string input = office.copy("examples/cantilever-dry-sand.dat", "wall.dat");
    const BatchRun run = office.run({"--json", input});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(whileLine(run, input), "");
    EXPECT_TRUE(failureOf(office).is_null());
}

} // namespace korvane::test
