// Input files in other units, written by the batch command.
#include "batch_run.h"

#include "batch/run_batch.h"
#include "support/faulty_machine.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

namespace korvane::test {

namespace {

const char* const wall = "( by hand\n'WALL 20 FT\nCONTROL C D 1.0 1.5\nWALL 20\n"
                         "SURFACE R 1 0 20\nSURFACE L 1 0 10\nSOIL B S 1\n 120 110 30 0 0 0\nF\n";

} // namespace

// 20 FT = 6.096 m, 10 FT = 3.048 m; 120 PCF = 18.8504956615 kN/m3, 110 PCF = 17.2796210231 kN/m3.
TEST(BatchConvert, WritesTheInputInOtherUnitsAndBack) {
    const BatchOffice office;
    const std::string input = office.write("a.dat", wall);
    const BatchRun there = office.run({"--convert", "si", input, "-o", office.file("m.dat")});
    EXPECT_EQ(there.status, 0) << there.err;
    EXPECT_EQ(there.err, "");
    EXPECT_EQ(office.read("m.dat"),
              "( by hand\nUNITS SI\n'WALL 20 FT\nCONTROL C D 1.0 1.5\nWALL 6.096\n"
              "SURFACE R 1 0 6.096\nSURFACE L 1 0 3.048\nSOIL B S 1\n 18.85049566 17.27962102 30 0 "
              "0 0\nF\n");
    const BatchRun back =
        office.run({"--convert", "us", office.file("m.dat"), "--output", office.file("b.dat")});
    EXPECT_EQ(back.status, 0) << back.err;
    EXPECT_EQ(office.read("b.dat"), wall);
    EXPECT_EQ(office.files(), (std::set<std::string>{"a.dat", "b.dat", "m.dat"}));
}

TEST(BatchConvert, GoesToStandardOutputToo) {
    const BatchOffice office;
    const BatchRun run = office.run({"--convert", "us", office.write("a.dat", wall), "-o", "-"});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out, wall);
}

TEST(BatchConvert, TellsNumbersThatTheReaderIgnores) {
    const BatchOffice office;
    std::string text = wall;
    text.replace(text.find("WALL 20\n"), 7, "WALL 20 high 6.1 FT");
    const BatchRun run =
        office.run({"--convert", "si", office.write("a.dat", text), "-o", office.file("m.dat")});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, office.file("a.dat") + ":4: ignored, hence not converted: 6.1 FT\n");
    EXPECT_NE(office.read("m.dat").find("WALL 6.096 high 6.1 FT\n"), std::string::npos);
}

// 123456.78901 FT = 37629.629290248 m, of which a metric file holds ten digits.
TEST(BatchConvert, TellsNumbersThatTheOtherUnitsDoNotGiveBack) {
    const BatchOffice office;
    std::string text = wall;
    text.replace(text.find("R 1 0 20"), 8, "R 2 0 20\n 123456.78901 20");
    const std::string input = office.write("a.dat", text);
    const std::string metric = office.file("m.dat");
    const BatchRun run = office.run({"--convert", "si", input, "-o", metric});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, input + ":6: rounded: 123456.78901 is 37629.62929\n");
    const BatchRun back = office.run({"--convert", "us", metric, "-o", office.file("b.dat")});
    EXPECT_EQ(back.status, 0);
    EXPECT_EQ(back.err, "");
}

TEST(BatchConvert, WritesNothingThatCouldNotBeReadAgain) {
    const BatchOffice office;
    const std::string metric = office.write("m.dat", "mine");
    std::string text = wall;
    text.replace(text.find("R 1 0 20"), 8, "R 3 0 20\n 123456.78901 20\n 123456.78902 20");
    const std::string input = office.write("a.dat", text);
    const BatchRun close = office.run({"--convert", "si", input, "-o", metric});
    EXPECT_EQ(close.status, 1);
    EXPECT_NE(close.err.find(input + ": in the other units it would be refused: 8: SurfaceDist: "
                                     "read \"37629.62929\", must be above 37629.62929\n"),
              std::string::npos)
        << close.err;
    // 1E307 IN4/FT would be 1.4E309 cm4/m, beyond the range of a double.
    text = wall;
    text.replace(text.find("D 1.0 1.5\nWALL 20"), 17, "A\nWALL 20 -20 29E6 1E307");
    const std::string stiff = office.write("b.dat", text);
    const BatchRun large = office.run({"--convert", "si", stiff, "-o", metric});
    EXPECT_EQ(large.status, 1);
    EXPECT_EQ(large.err, stiff + ":4: too large for the other units: 1E307\n");
    EXPECT_EQ(office.read("m.dat"), "mine");
}

TEST(BatchConvert, TellsAFullStandardOutput) {
    const BatchOffice office;
    std::ostream full(nullptr); // takes nothing
    std::ostringstream err;
    EXPECT_EQ(batch::runBatch({"--convert", "si", office.write("a.dat", wall), "-o", "-"}, full,
                              err, false),
              1);
    EXPECT_EQ(err.str(), "korvane-batch: standard output cannot be written.\n");
}

TEST(BatchConvert, ARefusedInputLeavesTheOutputOfAnEarlierRun) {
    const BatchOffice office;
    office.write("m.dat", "mine");
    const BatchRun run = office.run(
        {"--convert", "si", office.write("a.dat", refusedInput), "-o", office.file("m.dat")});
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.err.find("a.dat: ["), std::string::npos) << run.err;
    const BatchRun fatal = office.run(
        {"--convert", "si", office.write("b.dat", fatalInput), "-o", office.file("m.dat")});
    EXPECT_EQ(fatal.status, 70);
    EXPECT_EQ(office.read("m.dat"), "mine");
}

TEST(BatchConvert, AFullDiskLeavesTheOutputOfAnEarlierRun) {
    const BatchOffice office;
    office.write("m.dat", "mine");
    const std::string input = office.write("a.dat", wall);
    const SmallDisk disk(20);
    const BatchRun run = office.run({"--convert", "si", input, "-o", office.file("m.dat")});
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.err.find("Disk full"), std::string::npos) << run.err;
    EXPECT_EQ(office.read("m.dat"), "mine");
}

TEST(BatchConvert, WrongUseIsStatusTwo) {
    const BatchOffice office;
    const std::string input = office.write("a.dat", wall);
    const std::string output = office.file("m.dat");
    const std::vector<std::vector<std::string>> wrong = {
        {"--convert", "metric", input, "-o", output},
        {"--convert", "si", input},
        {"--convert", "si", input, "-o", input},
        {"--convert", "si", input, "--output-dir", office.file("d")},
        {"--convert", "si", input, input, "-o", output},
        {"--convert", "si", "--json", input, "-o", output},
        {"--convert", "si", "--plots", input, "-o", output},
        {"--convert", "si", "--units", "si", input, "-o", output},
        {"--units", "metric", input},
    };
    for (const auto& arguments : wrong) {
        const BatchRun run = office.run(arguments);
        EXPECT_EQ(run.status, 2) << arguments[1] << arguments.size();
        EXPECT_FALSE(run.err.empty());
    }
    EXPECT_EQ(office.files(), (std::set<std::string>{"a.dat"}));
}

} // namespace korvane::test
