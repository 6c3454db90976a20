// Rows of one-at-a-time studies against the batch program: analyses and SI units, to the bit.
#include "study_desk.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <array>
#include <cstdio>
#include <cstdlib>

namespace korvane::study::test {

namespace {

struct Replacement {
    std::string from;
    std::string to;
};

struct Case {
    std::string example;
    std::string variables;
    std::vector<std::string> outputs; ///< by their names in JSON
    std::vector<Replacement> inputs;  ///< of the rows in their order; the base changes nothing
};

std::string bits(const nlohmann::json& number) {
    std::array<char, 40> text{};
    std::snprintf(text.data(), text.size(), "%a", number.get<double>());
    return text.data();
}

/// What the batch program finds for the input.
nlohmann::json solved(const StudyDesk& desk, const std::string& input) {
    desk.write("one.dat", input);
    const std::string command = std::string(KORVANE_BATCH) + " --json --quiet --no-notes -o '" +
                                desk.file("one.out") + "' '" + desk.file("one.dat") +
                                "' 2>/dev/null";
    EXPECT_EQ(std::system(command.c_str()), 0); // NOLINT: one thread
    return nlohmann::json::parse(desk.read("one.json"))["levels"][0];
}

} // namespace

TEST(BatchRows, OneAtATimeIsTheBatchProgramToTheBit) {
    const std::vector<Case> cases{
        {"analysis-cantilever.dat",
         friction("low = 30\nhigh = 36.5") +
             variable("toe", "fields = \"WallBottomElev\"\nvalues = [-16.5, -20]"),
         {"factorOfSafety", "penetration", "bottomElev"},
         {{"", ""},
          {"115  33", "115  30"},
          {"115  33", "115  36.5"},
          {"WALL  10  -18", "WALL  10  -20"},
          {"WALL  10  -18", "WALL  10  -16.5"}}},
        {"cantilever-metric.dat",
         friction("low = 29.7\nhigh = 34") +
             variable("water", "fields = \"WaterElev.right\"\nlow = 2.5\nhigh = 3.3"),
         {"penetration", "bottomElev", "transitionElev"},
         {{"", ""},
          {"15.9  32", "15.9  29.7"},
          {"15.9  32", "15.9  34"},
          {"9.81  3  3", "9.81  2.5  3"},
          {"9.81  3  3", "9.81  3.3  3"}}}};
    for (const Case& one : cases) {
        const StudyDesk desk;
        std::string names;
        std::string columns;
        for (const std::string& output : one.outputs) {
            names += (names.empty() ? "\"" : ", \"") + output + "\"";
            columns += (columns.empty() ? "" : ", ") + output;
        }
        desk.runStudy("[study]\nbase = \"" + one.example +
                          "\"\nmethod = \"one-at-a-time\"\noutputs = [" + names +
                          ", \"maxMoment\"]\n" + one.variables,
                      "o");
        const auto rows = desk.rows("o", "SELECT " + columns +
                                             ", maxMoment, maxMomentElev FROM variants "
                                             "ORDER BY id");
        ASSERT_EQ(rows.size(), one.inputs.size());
        for (std::size_t n = 0; n < rows.size(); ++n) {
            std::string input = example(one.example);
            const Replacement& change = one.inputs[n];
            ASSERT_NE(input.find(change.from), std::string::npos);
            input.replace(input.find(change.from), change.from.size(), change.to);
            const nlohmann::json level = solved(desk, input);
            TextRow expected;
            for (const std::string& output : one.outputs) {
                expected.push_back(bits(level[output]));
            }
            expected.push_back(bits(level["maxMoment"]["value"]));
            expected.push_back(bits(level["maxMoment"]["elev"]));
            EXPECT_EQ(rows[n], expected) << one.example << " " << n;
        }
    }
}

} // namespace korvane::study::test
