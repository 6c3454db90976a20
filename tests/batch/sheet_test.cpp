// Calculation sheets of the batch command.
#include "batch/solve_input.h"
#include "batch_run.h"
#include "support/faulty_machine.h"

#include <gtest/gtest.h>

namespace korvane::test {
namespace {

bool isSheet(const std::string& text) {
    return isSheetFile(text.substr(0, SheetHeadBytes)) && text.ends_with("</html>\n");
}

TEST(BatchSheet, StandsBesideItsReport) {
    const BatchOffice office;
    const std::string input = office.copy("examples/anchored-all-loads.dat", "a.dat");
    const BatchRun run = office.run({"--sheet", "--no-notes", input});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(office.files(), (std::set<std::string>{"a.dat", "a.out", "a.html"}));
    const std::string sheet = office.read("a.html");
    EXPECT_TRUE(isSheet(sheet));
    EXPECT_NE(sheet.find("<table id=\"checks\">"), std::string::npos);
    EXPECT_EQ(sheet.find("class=\"fail\""), std::string::npos);
    EXPECT_EQ(run.err.find("sheet:"), std::string::npos);
    ASSERT_EQ(office.run({"--sheet", "-o", office.file("b.txt"), input}).status, 0);
    EXPECT_TRUE(isSheet(office.read("b.html")));
}

TEST(BatchSheet, TakesTheUnitsThatAreAskedFor) {
    const BatchOffice office;
    const std::string input = office.copy("examples/cantilever-dry-sand.dat", "a.dat");
    ASSERT_EQ(office.run({"--sheet", input}).status, 0);
    EXPECT_EQ(office.read("a.html").find(" kPa"), std::string::npos);
    ASSERT_EQ(office.run({"--sheet", "--units", "si", input}).status, 0);
    EXPECT_NE(office.read("a.html").find("kPa"), std::string::npos);
}

TEST(BatchSheet, IsTheSameTwiceAtAFixedMoment) {
    const BatchOffice office;
    const EnvironmentVariable moment("SOURCE_DATE_EPOCH", "1763715907");
    const std::string input = office.copy("examples/anchored-clay.dat", "a.dat");
    ASSERT_EQ(office.run({"--sheet", input}).status, 0);
    const std::string first = office.read("a.html");
    EXPECT_NE(first.find("21-NOVEMBER-2025"), std::string::npos);
    ASSERT_EQ(office.run({"--sheet", "--jobs", "4", input}).status, 0);
    EXPECT_TRUE(office.read("a.html") == first);
}

TEST(BatchSheet, HasAllNotesWithQuietToo) {
    const BatchOffice office;
    const std::string input = office.copy("examples/anchored-clay.dat", "a.dat");
    const BatchRun run = office.run({"--sheet", "--quiet", input});
    EXPECT_EQ(run.err.find("remark"), std::string::npos);
    EXPECT_NE(office.read("a.html").find("<div class=\"note remark\">"), std::string::npos);
}

TEST(BatchSheet, HasTheComparisonThatIsAskedFor) {
    const BatchOffice office;
    const std::string input = office.copy("examples/cantilever-dry-sand.dat", "a.dat");
    ASSERT_EQ(office.run({"--sheet", input}).status, 0);
    EXPECT_EQ(office.read("a.html").find("8 Comparison"), std::string::npos);
    ASSERT_EQ(office.run({"--sheet", "--compare", input}).status, 0);
    const std::string sheet = office.read("a.html");
    EXPECT_NE(sheet.find("8 Comparison"), std::string::npos);
    EXPECT_NE(sheet.find("passive factor 1.5"), std::string::npos);
}

TEST(BatchSheet, GoesWithTheStaleOutputsOnlyWhereItIsOurs) {
    const BatchOffice office;
    const std::string input = office.copy("examples/cantilever-dry-sand.dat", "a.dat");
    ASSERT_EQ(office.run({"--sheet", input}).status, 0);
    ASSERT_EQ(office.run({input}).status, 0);
    EXPECT_EQ(office.files(), (std::set<std::string>{"a.dat", "a.out"}));
    const std::string mine = "<!DOCTYPE html>\n<html><head><title>mine</title></head></html>\n";
    office.write("a.html", mine);
    ASSERT_EQ(office.run({input}).status, 0);
    EXPECT_EQ(office.read("a.html"), mine);
}

TEST(BatchSheet, OfARefusedInputThereIsNone) {
    const BatchOffice office;
    const std::string input = office.copy("examples/cantilever-dry-sand.dat", "a.dat");
    ASSERT_EQ(office.run({"--sheet", input}).status, 0);
    office.write("a.dat", refusedInput);
    const BatchRun run = office.run({"--sheet", input});
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.err.find("a.dat: ["), std::string::npos);
    EXPECT_EQ(office.files(), (std::set<std::string>{"a.dat", "a.out"}));
    office.write("a.html", "mine\n");
    EXPECT_EQ(office.run({"--sheet", input}).status, 1);
    EXPECT_EQ(office.read("a.html"), "mine\n");
}

TEST(BatchSheet, OfAFailedSolutionTellsWhy) {
    const BatchOffice office;
    const std::string input = office.write("a.dat", failingInput);
    EXPECT_EQ(office.run({"--sheet", input}).status, 1);
    const std::string sheet = office.read("a.html");
    EXPECT_TRUE(isSheet(sheet));
    EXPECT_NE(sheet.find("The solution ended without results"), std::string::npos);
}

TEST(BatchSheet, IsOneOfTheOutputsThatMustNotClash) {
    const BatchOffice office;
    const std::string page = office.copy("examples/cantilever-dry-sand.dat", "a.html");
    const BatchRun over = office.run({"--sheet", page});
    EXPECT_EQ(over.status, 2);
    EXPECT_NE(over.err.find("a.html: the output would be written over an input."),
              std::string::npos);
    const std::string input = office.copy("examples/cantilever-dry-sand.dat", "a.dat");
    EXPECT_EQ(office.run({"--sheet", "-o", office.file("b.html"), input}).status, 2);
    // An input of that name is no stale sheet.
    EXPECT_EQ(office.run({input, "--no-notes"}).status, 0);
    EXPECT_TRUE(office.files().contains("a.html"));
}

TEST(BatchSheet, NeedsAReportFile) {
    const BatchOffice office;
    const std::string input = office.copy("examples/cantilever-dry-sand.dat", "a.dat");
    EXPECT_EQ(office.run({"--sheet", "-o", "-", input}).status, 2);
    EXPECT_EQ(office.run({"--sheet", "--check", input}).status, 2);
    EXPECT_EQ(office.run({"--sheet", "--convert", "si", "-o", office.file("b"), input}).status, 2);
    EXPECT_EQ(office.files(), (std::set<std::string>{"a.dat"}));
}

TEST(BatchSheet, WhatARefusedInputHasNoneOfIsTold) {
    const BatchOffice office;
    const std::string input = office.write("a.dat", refusedInput);
    const auto line = [&](const std::string& what) {
        return input + ": while reading the input\n" + input + ": " + what +
               ": the input was refused\n";
    };
    const BatchRun sheet = office.run({"--sheet", "--quiet", input});
    EXPECT_EQ(sheet.status, 1);
    EXPECT_TRUE(sheet.err.ends_with(line("no calculation sheet"))) << sheet.err;
    EXPECT_TRUE(office.run({"--compare", "--quiet", input}).err.ends_with(line("no comparison")));
    EXPECT_TRUE(office.run({"--sheet", "--compare", "--quiet", input})
                    .err.ends_with(line("no calculation sheet and no comparison")));
    EXPECT_EQ(office.run({"--quiet", input}).err.find("no calculation sheet"), std::string::npos);
    // A failed wall has both.
    const std::string failing = office.write("b.dat", failingInput);
    EXPECT_EQ(office.run({"--sheet", "--compare", failing}).err.find("no calculation sheet"),
              std::string::npos);
    EXPECT_NE(office.read("b.html"), "");
}

TEST(BatchSheet, TakesItsPlaceWhateverStandsThereAsTheOtherOutputsDo) {
    const BatchOffice office;
    const std::string input = office.copy("examples/cantilever-dry-sand.dat", "a.dat");
    const std::string mine = "MINE";
    for (const char* name : {"a.html", "a.out", "a.json", "a-moment.svg"}) {
        office.write(name, mine);
    }
    ASSERT_EQ(office.run({"--sheet", "--json", "--plots", input}).status, 0);
    for (const char* name : {"a.html", "a.out", "a.json", "a-moment.svg"}) {
        EXPECT_NE(office.read(name), mine) << name;
    }
}

TEST(BatchSheet, AFullDiskLeavesThatOfAnEarlierRunWhole) {
    const BatchOffice office;
    const std::string input = office.copy("examples/cantilever-dry-sand.dat", "a.dat");
    ASSERT_EQ(office.run({"--sheet", input}).status, 0);
    const std::string before = office.read("a.html");
    const SmallDisk disk(20000);
    EXPECT_EQ(office.run({"--sheet", "--units", "si", input}).status, 1);
    EXPECT_TRUE(office.read("a.html") == before);
}

TEST(BatchSheet, AFailingCheckIsToldAndFailsTheInput) {
    batch::Outcome outcome;
    const Check good{.what = "Ka, right side, layer 1", .sheet = 0.3, .engine = 0.3, .pass = true};
    Check bad = good;
    bad.engine = 0.33;
    bad.pass = false;
    batch::tellChecks({good}, outcome);
    EXPECT_EQ(outcome.status, batch::StatusSolved);
    batch::tellChecks({good, bad}, outcome);
    EXPECT_EQ(outcome.status, batch::StatusFailed);
    ASSERT_EQ(outcome.failedChecks.size(), 1U);
    EXPECT_EQ(batch::checkLineOf("a.dat", outcome.failedChecks.front()),
              "a.dat: sheet: Ka, right side, layer 1: 0.3 by the sheet, 0.33 by the solution");
}

} // namespace
} // namespace korvane::test
