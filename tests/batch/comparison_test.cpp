// Comparisons in the outputs of the batch command.
#include "batch_run.h"

#include "runtime/file_text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace korvane::test {
namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::StartsWith;

const json& rowOf(const json& comparison, const std::string& name) {
    for (const json& row : comparison) {
        if (row.at("name") == name) {
            return row;
        }
    }
    throw std::runtime_error("no row " + name);
}

} // namespace

TEST(BatchComparison, IsATableOnStandardOutput) {
    const BatchOffice office;
    const std::string input = office.copy("examples/anchored-sand.dat", "a.dat");
    const BatchRun run = office.run({"--compare", "--quiet", input});
    EXPECT_EQ(run.status, 0);
    const auto lines = splitLines(run.out);
    ASSERT_GT(lines.size(), 25U);
    EXPECT_THAT(lines[0], StartsWith("Row "));
    EXPECT_THAT(lines[1], HasSubstr(" LB/FT "));
    EXPECT_THAT(lines[2], StartsWith("as given "));
    EXPECT_THAT(lines[2], HasSubstr(" free earth "));
    EXPECT_THAT(run.out, HasSubstr("\nKp over 2 "));
    EXPECT_THAT(office.run({"--compare", "--quiet", "--units", "si", input}).out,
                HasSubstr(" kN/m "));
    EXPECT_EQ(office.run({"--quiet", input}).out, "");
    EXPECT_EQ(office.files(), (std::set<std::string>{"a.dat", "a.out"}));
}

TEST(BatchComparison, NamesItsInputsWhereThereAreSeveral) {
    const BatchOffice office;
    const std::string a = office.copy("examples/anchored-sand.dat", "a.dat");
    const std::string b = office.write("b.dat", refusedInput);
    const std::string c = office.copy("examples/cantilever-clay.dat", "c.dat");
    const BatchRun run = office.run({"--compare", "--quiet", "--jobs", "3", a, b, c});
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.out, StartsWith(a + ":\nRow "));
    EXPECT_THAT(run.out, HasSubstr("\n\n" + c + ":\nRow "));
    EXPECT_THAT(run.out, Not(HasSubstr(b))) << "nothing was read that could be compared";
}

TEST(BatchComparison, StandsInTheJsonWithItsDifferences) {
    const BatchOffice office;
    const std::string input = office.copy("examples/anchored-sand.dat", "a.dat");
    ASSERT_EQ(office.run({"--json", "--quiet", input}).status, 0);
    EXPECT_FALSE(json::parse(office.read("a.json")).contains("comparison"));
    ASSERT_EQ(office.run({"--json", "--compare", "--quiet", input}).status, 0);
    const json results = json::parse(office.read("a.json"));
    const json& told = rowOf(results.at("comparison"), "as-given");
    const json& deeper = rowOf(results.at("comparison"), "passive-2");
    ASSERT_EQ(told.at("levels").size(), 2U);
    EXPECT_TRUE(told.at("failure").is_null());
    for (const std::size_t n : {0U, 1U}) {
        const json& level = told.at("levels")[n];
        const json& solved = results.at("levels")[n];
        EXPECT_EQ(level.at("method"), solved.at("method"));
        EXPECT_EQ(level.at("penetration"), solved.at("penetration"));
        EXPECT_EQ(level.at("anchorForce"), solved.at("anchorForce"));
        EXPECT_EQ(level.at("maxMoment"), solved.at("maxMoment").at("value"));
        EXPECT_EQ(level.at("maxShear"), solved.at("maxShear").at("value"));
        EXPECT_EQ(level.at("maxDeflection"), solved.at("maxDeflection").at("value"));
        EXPECT_TRUE(level.at("factorOfSafety").is_null());
        EXPECT_EQ(level.at("length"), results.at("problem").at("WallTopElev").get<double>() -
                                          solved.at("bottomElev").get<double>());
        const json& other = deeper.at("levels")[n];
        for (const char* name : {"penetration", "length", "anchorForce"}) {
            const double before = level.at(name);
            const double now = other.at(name);
            EXPECT_NEAR(other.at("percent").at(name), 100 * (now / before - 1), 1e-9) << name;
            EXPECT_EQ(level.at("percent").at(name), 0.0);
        }
    }
    const json& missing = rowOf(results.at("comparison"), "seepage");
    EXPECT_EQ(missing.at("failure").at("code"), "not-applicable");
    EXPECT_TRUE(missing.at("levels").empty());
}

TEST(BatchComparison, AFailedWallTellsItsReasonARefusedInputNothing) {
    const BatchOffice office;
    const std::string clay = office.copy("cases/clay-without-depth.dat", "clay.dat");
    const BatchRun run = office.run({"--json", "--compare", clay});
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.out, HasSubstr("\nas given"));
    const json results = json::parse(office.read("clay.json"));
    const json& told = rowOf(results.at("comparison"), "as-given");
    EXPECT_EQ(told.at("failure").at("code"), results.at("failure").at("code"));
    EXPECT_THAT(run.out, HasSubstr(told.at("failure").at("text").get<std::string>()));
    // The notes tell the number that shows why there is no depth.
    EXPECT_THAT(run.err, HasSubstr("(clay-in-front)"));

    const std::string refused = office.write("refused.dat", refusedInput);
    const BatchRun none = office.run({"--json", "--compare", refused});
    EXPECT_EQ(none.status, 1);
    EXPECT_EQ(none.out, "");
    EXPECT_TRUE(json::parse(office.read("refused.json")).at("comparison").empty());
}

TEST(BatchComparison, AsksForAllNotesUnlessThereAreNone) {
    const BatchOffice office;
    const std::string input = office.copy("examples/anchored-sand.dat", "a.dat");
    EXPECT_EQ(office.run({"--compare", "--no-notes", input}).err.find(": note: "),
              std::string::npos);
    EXPECT_NE(office.run({"--compare", input}).err.find(": note: remark: "), std::string::npos);
}

TEST(BatchComparison, TakesRowsOfOnesOwn) {
    const BatchOffice office;
    const std::string input = office.copy("examples/cantilever-metric.dat", "a.dat");
    const std::string rows = office.write("rows.toml", "[[row]]\n"
                                                       "name = \"phi 28\"\n"
                                                       "SoilFriction.left.1 = 28\n"
                                                       "[[row]]\n"
                                                       "name = \"third layer\"\n"
                                                       "SoilFriction.left.11 = 28\n"
                                                       "[[row]]\n"
                                                       "name = \"by planes\"\n"
                                                       "amendments = [\"method-sweep\"]\n");
    const BatchRun run = office.run({"--json", "--quiet", "--compare-with", rows, input});
    EXPECT_EQ(run.status, 0) << run.err;
    const json comparison = json::parse(office.read("a.json")).at("comparison");
    EXPECT_EQ(rowOf(comparison, "phi 28").at("levels").size(), 1U);
    EXPECT_EQ(rowOf(comparison, "third layer").at("failure").at("code"), "not-applicable");
    EXPECT_THAT(run.out, HasSubstr("\nphi 28 "));
    EXPECT_EQ(rowOf(comparison, "by planes").at("levels"),
              rowOf(comparison, "method-sweep").at("levels"));
    EXPECT_EQ(office.read("rows.toml").find("[[row]]"), 0U);
}

TEST(BatchComparison, WrongUseIsStatusTwoAndNothingIsSolved) {
    const BatchOffice office;
    const std::string input = office.copy("examples/anchored-sand.dat", "a.dat");
    const std::string wrong =
        office.write("wrong.toml", "[[row]]\nname = \"a\"\nSoilFricton.left.1 = 28\n");
    const std::string sound = office.write("sound.toml", "[[row]]\nname = \"a\"\nAnchorElev = 1\n");
    const auto refused = [&](const std::vector<std::string>& arguments) {
        const BatchRun run = office.run(arguments);
        EXPECT_EQ(run.status, 2) << run.err;
        EXPECT_EQ(run.out, "");
        EXPECT_EQ(office.files(),
                  (std::set<std::string>{"a.dat", "amended.toml", "sound.toml", "wrong.toml"}));
        return run.err;
    };
    const std::string amended =
        office.write("amended.toml", "[[row]]\nname = \"a\"\namendments = [\"surface\"]\n");
    EXPECT_THAT(refused({"--compare-with", amended, input}),
                StartsWith("korvane-batch: " + amended +
                           ":3: 'surface' is an unknown amendment; known: surface-limit, "));
    EXPECT_THAT(
        refused({"--compare-with", wrong, input}),
        StartsWith("korvane-batch: " + wrong +
                   ":3: 'SoilFricton.left.1' names no number of a problem; near it: SoilFriction"));
    EXPECT_THAT(refused({"--compare-with", office.file("none.toml"), input}),
                HasSubstr("none.toml: File not found"));
    EXPECT_THAT(refused({"--compare", "-o", "-", input}), HasSubstr("--compare"));
    EXPECT_THAT(refused({"--compare-with", sound, "-o", "-", input}), HasSubstr("--compare"));
    EXPECT_THAT(refused({"--compare-with", sound, "-o", sound, input}),
                HasSubstr("written over an input"));
    EXPECT_THAT(refused({"--compare", "--check", input}), HasSubstr("--check"));
    refused({"--compare", "--convert", "si", "-o", office.file("b.dat"), input});
    refused({"--compare-with", "", input});
}

} // namespace korvane::test
