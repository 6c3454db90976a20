// What the batch command solves, writes and tells.
#include "batch_run.h"
#include "runtime/file_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <map>

#include <sys/inotify.h>
#include <unistd.h>

namespace korvane::test {

namespace fs = std::filesystem;

namespace {

const std::vector<std::string> allExamples = {"analysis-anchored",
                                              "analysis-cantilever",
                                              "anchored-adhesion",
                                              "anchored-all-loads",
                                              "anchored-clay",
                                              "anchored-layered-water",
                                              "anchored-sand",
                                              "cantilever-clay",
                                              "cantilever-coefficients",
                                              "cantilever-dry-sand",
                                              "cantilever-water-seepage",
                                              "sloping-backfill-sweep",
                                              "sloping-both-sides-fixed"};

/// All examples and the three kinds of failures, as arguments.
std::vector<std::string> mixedInputs(const BatchOffice& office) {
    std::vector<std::string> inputs(allExamples.size());
    std::transform(allExamples.begin(), allExamples.end(), inputs.begin(),
                   [&](const std::string& example) {
                       return office.copy("examples/" + example + ".dat", example + ".dat");
                   });
    inputs.insert(inputs.begin() + 2, office.write("refused.dat", refusedInput));
    inputs.insert(inputs.begin() + 4, office.write("failing.dat", failingInput));
    inputs.insert(inputs.begin() + 6, office.write("fatal.dat", fatalInput));
    return inputs;
}

std::vector<std::string> joined(std::vector<std::string> options,
                                const std::vector<std::string>& inputs) {
    options.insert(options.end(), inputs.begin(), inputs.end());
    return options;
}

/// Watches whether a file is made, moved or removed in a folder, be it for a moment.
class FolderWatch {
  public:
    explicit FolderWatch(const fs::path& folder) : watch_(inotify_init1(IN_NONBLOCK)) {
        EXPECT_GE(inotify_add_watch(watch_, folder.c_str(), IN_CREATE | IN_DELETE | IN_MOVE), 0);
    }
    ~FolderWatch() { close(watch_); }
    FolderWatch(const FolderWatch&) = delete;
    FolderWatch& operator=(const FolderWatch&) = delete;

    bool changed() const {
        std::array<char, 4096> events{};
        return read(watch_, events.data(), events.size()) > 0;
    }

  private:
    int watch_;
};

} // namespace

TEST(Batch, TheReportStandsBesideTheInput) {
    const BatchOffice office;
    const std::string input = office.copy("examples/cantilever-dry-sand.dat", "wall.v2.dat");
    const BatchRun run = office.run({"--no-notes", input});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, input + ": [INPUT COMPLETE] Input file processed: " + input +
                           " /  /      No errors detected.\n");
    EXPECT_EQ(office.files(), (std::set<std::string>{"wall.v2.dat", "wall.v2.out"}));
    EXPECT_NE(office.read("wall.v2.out").find("WALL BOTTOM ELEV. (FT)"), std::string::npos);
}

TEST(Batch, TheReportGoesWhereItIsTold) {
    const BatchOffice office;
    const std::string input = office.copy("examples/cantilever-dry-sand.dat", "wall");
    ASSERT_EQ(office.run({input}).status, 0);
    const std::string report = office.read("wall.out"); // an input without extension
    EXPECT_EQ(office.run({"-o", office.file("r.txt"), input}).status, 0);
    EXPECT_EQ(office.read("r.txt"), report);
    const BatchRun run = office.run({"-o", "-", input});
    EXPECT_EQ(run.out, report);
    EXPECT_EQ(office.run({"--output-dir", office.file("deep/down"), "--json", input}).status, 0);
    EXPECT_EQ(office.read("deep/down/wall.out"), report);
    EXPECT_TRUE(fs::exists(office.file("deep/down/wall.json")));
    EXPECT_EQ(office.run({"-o", office.file("j.out"), "--json", input}).status, 0);
    EXPECT_TRUE(fs::exists(office.file("j.json")));
}

TEST(Batch, TheHighestStatusOfAllInputsWins) {
    const BatchOffice office;
    const std::string good = office.copy("examples/cantilever-dry-sand.dat", "good.dat");
    const std::string refused = office.write("refused.dat", refusedInput);
    const std::string failing = office.write("failing.dat", failingInput);
    const std::string fatal = office.write("fatal.dat", fatalInput);
    EXPECT_EQ(office.run({good}).status, 0);
    EXPECT_EQ(office.run({refused}).status, 1);
    EXPECT_EQ(office.run({failing}).status, 1);
    EXPECT_EQ(office.run({fatal}).status, 70);
    EXPECT_EQ(office.run({refused, good}).status, 1);
    EXPECT_EQ(office.run({fatal, good, failing}).status, 70); // the others are solved all the same
    EXPECT_NE(office.read("good.out").find("COMPLETE OF RESULTS"), std::string::npos);
}

TEST(Batch, TheReportIsWrittenAnewAndHoldsWhatCameBeforeTheFailure) {
    const BatchOffice office;
    for (const char* name : {"refused", "failing", "fatal"}) {
        office.write(std::string(name) + ".out", "an old report");
    }
    office.run({office.write("refused.dat", refusedInput),
                office.write("failing.dat", failingInput), office.write("fatal.dat", fatalInput)});
    EXPECT_EQ(office.read("refused.out"), "");
    EXPECT_EQ(office.read("fatal.out"), "");
    const std::string failing = office.read("failing.out");
    EXPECT_NE(failing.find("INPUT DATA"), std::string::npos);
    EXPECT_EQ(failing.find("SUMMARY OF RESULTS"), std::string::npos);
}

TEST(Batch, MessagesAreOneLineEachBehindTheInputsName) {
    const BatchOffice office;
    const std::string refused = office.write("refused.dat", refusedInput);
    EXPECT_EQ(
        office.run({"--quiet", refused}).err,
        refused + ": [DATA ERROR IN INPUT FILE: " + refused +
            "] Error detected while attempting to process CONTROL DATA / "
            "Current input line is: /  / CONTROL CANTILEVER  /  / Unable to continue.\n" +
            refused +
            ":2: CONTROL DATA: read \"CONTROL CANTILEVER\", must be a line of at least 3 words\n" +
            refused + ": while reading the input\n");
    const std::string fatal = office.write("fatal.dat", fatalInput);
    EXPECT_EQ(office.run({"--quiet", fatal}).err,
              fatal + ": [KORVANE] Run-time error '5': /  / Invalid procedure call or argument\n" +
                  fatal + ": while reading the input\n");
}

TEST(Batch, ALineOfAMessageHasAtMostTwoHundredCharactersAndNoControls) {
    const BatchOffice office;
    const std::string longLine = "\x1B[31m" + std::string(300, 'X');
    const std::string input = office.write("bad.dat", "'A\n" + longLine + "\n");
    const BatchRun run = office.run({"--quiet", "--json", input});
    EXPECT_EQ(run.err.find('\x1B'), std::string::npos);
    EXPECT_NE(run.err.find("\\x1B[31M" + std::string(188, 'X') + " ... /"), std::string::npos)
        << run.err;
    EXPECT_NE(office.read("bad.json").find(std::string(300, 'X')), std::string::npos);
}

TEST(Batch, AShortFileIsReadAllTheSame) {
    const BatchOffice office;
    const BatchRun run = office.run({office.write("short.dat", "'SHORT\n")});
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.err.find("Do you want to continue?"), std::string::npos);
    EXPECT_NE(run.err.find("is incomplete."), std::string::npos);
}

TEST(Batch, TheOrderAndTheReportsDoNotDependOnTheJobs) {
    const BatchOffice office;
    const std::vector<std::string> inputs = mixedInputs(office);
    const auto outputs = [&](const std::string& jobs) {
        const BatchRun run = office.run(joined({"--json", "--plots", "--jobs", jobs}, inputs));
        EXPECT_EQ(run.status, 70);
        std::map<std::string, std::string> all{{"standard error", run.err}};
        for (const std::string& name : office.files()) {
            if (fs::path(name).extension() == ".dat") {
                continue;
            }
            all[name] = office.read(name);
            fs::remove(office.file(name));
        }
        return all;
    };
    const auto one = outputs("1");
    for (const char* jobs : {"8", "3"}) {
        const auto several = outputs(jobs);
        EXPECT_EQ(several.size(), one.size());
        for (const auto& [name, text] : several) { // no diff of texts: they are too long for one
            EXPECT_TRUE(one.count(name) == 1 && one.at(name) == text) << name << ", " << jobs;
        }
    }
}

TEST(Batch, NoTemporaryFileIsMadeAtAnyMoment) {
    const BatchOffice office;
    const std::vector<std::string> inputs = mixedInputs(office);
    for (const char* jobs : {"1", "8"}) {
        const FolderWatch watch(office.temporary.path());
        EXPECT_EQ(office.run(joined({"--json", "--plots", "--jobs", jobs}, inputs)).status, 70);
        EXPECT_FALSE(watch.changed()) << jobs;
        EXPECT_EQ(office.temporaryFileCount(), 0) << jobs;
    }
    // What would be seen if there were one.
    const FolderWatch watch(office.temporary.path());
    writeFile(office.temporary.path() / "TEMP0.ooo", "");
    fs::remove(office.temporary.path() / "TEMP0.ooo");
    EXPECT_TRUE(watch.changed());
}

TEST(Batch, InputsAreNeverWrittenTo) {
    const BatchOffice office;
    const std::vector<std::string> inputs = mixedInputs(office);
    std::vector<std::string> texts;
    std::vector<fs::file_time_type> times;
    for (const std::string& input : inputs) {
        texts.push_back(readFile(input));
        times.push_back(fs::last_write_time(input));
    }
    office.run(joined({"--json"}, inputs));
    for (std::size_t i = 0; i < inputs.size(); ++i) {
        EXPECT_EQ(readFile(inputs[i]), texts[i]) << inputs[i];
        EXPECT_EQ(fs::last_write_time(inputs[i]), times[i]) << inputs[i];
    }
}

TEST(Batch, AProgressLineCountsSeveralInputsUnlessQuiet) {
    const BatchOffice office;
    const std::string a = office.copy("examples/cantilever-dry-sand.dat", "a.dat");
    const std::string b = office.copy("examples/cantilever-clay.dat", "b.dat");
    EXPECT_NE(office.run({a, b}).err.find("2 of 2 inputs done\n"), std::string::npos);
    EXPECT_EQ(office.run({"--quiet", a, b}).err.find("inputs done"), std::string::npos);
    EXPECT_EQ(office.run({a}).err.find("inputs done"), std::string::npos);
    const std::string redrawn = office.run({a, b}, true).err;
    EXPECT_NE(redrawn.find("1 of 2 inputs done\r"), std::string::npos);
}

TEST(Batch, TheWedgeMethodIsTheOptions) {
    const BatchOffice office;
    const std::string input = office.copy("examples/sloping-backfill-sweep.dat", "a.dat");
    EXPECT_NE(office.run({"-o", "-", input}).out.find("SWEEP SEARCH WEDGE METHOD"),
              std::string::npos);
    EXPECT_NE(office.run({"-o", "-", "--wedge", "sweep", input}).out.find("SWEEP SEARCH"),
              std::string::npos);
    EXPECT_NE(office.run({"-o", "-", "--wedge", "fixed", input}).out.find("FIXED SURFACE"),
              std::string::npos);
}

TEST(Batch, ALargeFactorIsSearchedUpToTheLimitGiven) {
    // The factor of this wall lies between 5 and 10: one question, which names 5.00.
    const BatchOffice office;
    const std::string input =
        office.copy("tests/reference/anchored-analysis-9001.dat", "large.dat");
    EXPECT_EQ(office.run({input}).status, 0);
    EXPECT_EQ(office.run({"--max-fs", "5", input}).status, 0);
    const BatchRun run = office.run({"--max-fs", "4.99", input});
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.err.find("appears to be greater than 5.00."), std::string::npos);
}

TEST(Batch, AReportThatCannotBeWrittenIsStatusOne) {
    const BatchOffice office;
    const std::string input = office.copy("examples/cantilever-dry-sand.dat", "a.dat");
    const std::string report = office.file("nowhere/a.out");
    const BatchRun missing = office.run({"-o", report, input});
    EXPECT_EQ(missing.status, 1);
    EXPECT_NE(missing.err.find("[FILE ERROR] File: " + report + " / Path not found"),
              std::string::npos);
    const BatchRun full = office.run({"-o", "/dev/full", input});
    EXPECT_EQ(full.status, 1);
    EXPECT_NE(full.err.find("Disk full"), std::string::npos);
}

TEST(Batch, PlotsStandBesideTheReport) {
    const BatchOffice office;
    const std::string solved = office.copy("examples/cantilever-dry-sand.dat", "a.dat");
    const std::string failing = office.write("failing.dat", failingInput);
    const std::string refused = office.write("refused.dat", refusedInput);
    EXPECT_EQ(office.run({"--plots", "--json", solved, failing, refused}).status, 1);
    const std::set<std::string> files = office.files();
    EXPECT_EQ(files.count("a-moment.svg"), 1U);
    EXPECT_EQ(files.count("a-input-system.svg"), 1U);
    EXPECT_EQ(files.count("failing-moment.svg"), 0U); // there are no results to draw
    EXPECT_EQ(files.count("failing-input-system.svg"), 1U);
    for (const std::string& name : files) {
        if (fs::path(name).extension() == ".svg") {
            EXPECT_NE(name.rfind("refused", 0), 0U) << name;
            EXPECT_NE(office.read(name).find("<svg"), std::string::npos) << name;
        }
    }
    EXPECT_EQ(office.temporaryFileCount(), 0);
}

TEST(Batch, AnAnchoredWallHasThePlotsOfBothMethodsAndRowesCurves) {
    const BatchOffice office;
    const std::string input = office.copy("examples/anchored-sand.dat", "a.dat");
    EXPECT_EQ(office.run({"--plots", "-o", office.file("r.txt"), input}).status, 0);
    std::set<std::string> expected{"a.dat", "r.txt", "r-rowe.svg", "r-input-system.svg"};
    for (const char* method : {"free", "fixed"}) {
        for (const char* diagram : {"deflection", "moment", "shear", "net-pressure",
                                    "left-pressure", "right-pressure"}) { // no net water pressure
            expected.insert(std::string("r-") + method + "-" + diagram + ".svg");
        }
    }
    EXPECT_EQ(office.files(), expected);
    EXPECT_NE(office.read("r-fixed-moment.svg").find("DESIGN BY FIXED EARTH METHOD"),
              std::string::npos);
    EXPECT_NE(office.read("r-free-moment.svg").find("DESIGN BY FREE EARTH METHOD"),
              std::string::npos);
}

TEST(Batch, NoPlotOfAnEarlierRunStaysBesideANewReport) {
    const BatchOffice office;
    const std::string input = office.copy("examples/cantilever-dry-sand.dat", "a.dat");
    office.write("a-rowe.svg", "old");
    office.write("a-other.svg", "the user's own");
    office.run({"--plots", input});
    EXPECT_EQ(office.files().count("a-rowe.svg"), 0U);
    EXPECT_EQ(office.files().count("a-moment.svg"), 1U);
    office.write("a.dat", failingInput);
    EXPECT_EQ(office.run({"--plots", input}).status, 1);
    EXPECT_EQ(office.files().count("a-moment.svg"), 0U);
    EXPECT_EQ(office.files().count("a-input-system.svg"), 1U);
    office.write("a.dat", refusedInput);
    EXPECT_EQ(office.run({"--plots", input}).status, 1);
    EXPECT_EQ(office.files(), (std::set<std::string>{"a.dat", "a.out", "a-other.svg"}));
}

TEST(Batch, APlotThatCannotBeWrittenIsStatusOne) {
    const BatchOffice office;
    const std::string input = office.copy("examples/cantilever-dry-sand.dat", "a.dat");
    fs::create_directory(office.file("a-moment.svg"));
    const BatchRun run = office.run({"--plots", input});
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.err.find("[FILE ERROR] File: " + office.file("a-moment.svg")), std::string::npos);
    EXPECT_EQ(office.temporaryFileCount(), 0);
}

TEST(Batch, ReportAndResultsAreTheSameWithPlots) {
    const BatchOffice office;
    const std::string input = office.copy("examples/anchored-sand.dat", "a.dat");
    office.run({"--json", input});
    const std::string plain = office.read("a.out") + office.read("a.json");
    office.run({"--json", "--plots", input});
    EXPECT_EQ(office.read("a.out") + office.read("a.json"), plain);
}

TEST(Batch, ATempThatNamesNoFolderStopsNothing) {
    const BatchOffice office;
    const std::string a = office.copy("examples/cantilever-dry-sand.dat", "a.dat");
    ASSERT_EQ(office.run({"--json", "--plots", a}).status, 0);
    const std::string usual = office.read("a.out") + office.read("a.json");
    setenv("temp", "/nowhere", 1);
    const EnvironmentVariable tmpdir("TMPDIR", "/nowhere");
    EXPECT_EQ(office.run({"--json", "--plots", a}).status, 0);
    EXPECT_EQ(office.read("a.out") + office.read("a.json"), usual);
}

TEST(Batch, NoDisplayAndNoToolkitIsNeeded) {
    const std::string program = readFile("/proc/self/maps");
    EXPECT_EQ(program.find("libQt"), std::string::npos);
    EXPECT_EQ(program.find("libX11"), std::string::npos);
}

} // namespace korvane::test
