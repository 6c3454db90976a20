// Wrong usage is told with status 2 before anything is solved.
#include "batch_run.h"
#include "runtime/file_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include <sys/stat.h>

namespace korvane::test {

namespace fs = std::filesystem;

namespace {

/// Runs with arguments in which "@name" stands for a file of the user's folder.
BatchRun runIn(const BatchOffice& office, std::vector<std::string> arguments) {
    for (std::string& argument : arguments) {
        if (argument.rfind('@', 0) == 0) {
            argument = office.file(argument.substr(1));
        }
    }
    return office.run(arguments);
}

void expectUsage(const BatchOffice& office, const std::vector<std::string>& arguments) {
    const std::set<std::string> before = office.files();
    const BatchRun run = runIn(office, arguments);
    std::string line;
    for (const std::string& argument : arguments) {
        line += argument + " ";
    }
    EXPECT_EQ(run.status, 2) << line;
    EXPECT_FALSE(run.err.empty()) << line;
    EXPECT_EQ(run.out, "") << line;
    EXPECT_EQ(office.files(), before) << line;
}

} // namespace

TEST(BatchUsage, APipeNeedsANameForItsReport) {
    const BatchOffice office;
    ASSERT_EQ(::mkfifo(office.file("pipe").c_str(), 0600), 0);
    expectUsage(office, {"@pipe"});
}

TEST(BatchUsage, FaultsShowNoControlCharacters) {
    const BatchOffice office;
    const BatchRun run = office.run({"no\x1b[31mne.dat"});
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.err.find('\x1b'), std::string::npos);
    EXPECT_NE(run.err.find("no\\x1B[31mne.dat: no such file."), std::string::npos) << run.err;
    const std::string red = "\x1b[31mred\xC2\x9B";
    const std::vector<std::vector<std::string>> wrong{
        {"--" + red}, {"--wedge", red, "a.dat"}, {"--jobs", red, "a.dat"}, {"--max-fs=" + red}};
    for (const auto& arguments : wrong) {
        const BatchRun fault = office.run(arguments);
        EXPECT_EQ(fault.status, 2);
        EXPECT_EQ(fault.err.find('\x1b'), std::string::npos) << arguments.front();
        EXPECT_EQ(fault.err.find('\x9b'), std::string::npos) << arguments.front();
        EXPECT_NE(fault.err.find("\\x1B[31mred\\x9B"), std::string::npos) << fault.err;
    }
}

TEST(BatchUsage, WrongArgumentsAreStatusTwoAndNothingIsSolved) {
    const BatchOffice office;
    office.copy("examples/cantilever-dry-sand.dat", "a.dat");
    office.copy("examples/cantilever-clay.dat", "b.dat");
    const std::vector<std::vector<std::string>> wrong = {
        {},
        {"--unknown", "@a.dat"},
        {"@missing.dat"},
        {"@a.dat", "@missing.dat"},
        {"@"},
        {""},
        {"@a.dat", ""},
        {"-o", "", "@a.dat"},
        {"--output-dir", "", "@a.dat"},
        {"-o"},
        {"-o", "@r.out", "@a.dat", "@b.dat"},
        {"-o", "-", "@a.dat", "@b.dat"},
        {"-o", "-", "--json", "@a.dat"},
        {"-o", "-", "--plots", "@a.dat"},
        {"-o", "@r.out", "--output-dir", "@d", "@a.dat"},
        {"--wedge", "both", "@a.dat"},
        {"--jobs", "0", "@a.dat"},
        {"--jobs", "two", "@a.dat"},
        {"--jobs", "1.5", "@a.dat"},
        {"--max-fs", "many", "@a.dat"},
        {"--max-fs", "inf", "@a.dat"},
        {"--max-fs", "nan", "@a.dat"},
        {"--output-dir", "@a.dat", "@b.dat"},
        {"--output-dir", "@" + std::string(300, 'n'), "@a.dat"},
    };
    for (const std::vector<std::string>& arguments : wrong) {
        expectUsage(office, arguments);
    }
}

TEST(BatchUsage, AnOutputThatIsAnInputOrAnotherOutputIsRefused) {
    const BatchOffice office;
    office.copy("examples/cantilever-dry-sand.dat", "a.dat");
    office.copy("examples/cantilever-clay.dat", "a.out");
    office.copy("examples/cantilever-clay.dat", "b.json");
    office.copy("examples/cantilever-clay.dat", "c.dat");
    office.copy("examples/cantilever-clay.dat", "c-moment.svg");
    office.copy("examples/cantilever-clay.dat", "c-free.dat");
    fs::create_directory(office.file("sub"));
    office.copy("examples/cantilever-clay.dat", "sub/c.dat");
    fs::create_symlink(office.file("a.dat"), office.file("link.out"));
    office.copy("examples/cantilever-clay.dat", "link.dat");
    // Two links that lead to one file which does not exist yet.
    office.copy("examples/cantilever-clay.dat", "d.dat");
    office.copy("examples/cantilever-clay.dat", "e.dat");
    fs::create_symlink("target.txt", office.file("d.out"));
    fs::create_symlink(office.file("target.txt"), office.file("e.out"));
    const std::vector<std::vector<std::string>> colliding = {
        {"-o", "@a.dat", "@a.dat"},
        {"@a.out"},
        {"@a.dat", "@a.out"},
        {"-o", "@link.out", "@a.dat"},
        {"@link.dat", "@a.dat"},
        {"--json", "@b.json"},
        {"--json", "-o", "@r.json", "@a.dat"},
        {"@c.dat", "@c.dat"},
        {"--output-dir", "@new", "@c.dat", "@sub/c.dat"},
        {"-o", "@sub/../a.dat", "@a.dat"},
        {"@d.dat", "@e.dat"},
        {"--plots", "@c.dat", "@c-moment.svg"},
        {"--plots", "@c.dat", "@c-free.dat"}, // both could write c-free-moment.svg
    };
    for (const std::vector<std::string>& arguments : colliding) {
        expectUsage(office, arguments);
    }
}

TEST(BatchUsage, AFolderOrADeviceIsNoInput) {
    const BatchOffice office;
    const BatchRun folder = office.run({office.file("")});
    EXPECT_EQ(folder.status, 2);
    EXPECT_NE(folder.err.find(": a folder, not an input file."), std::string::npos);
    const BatchRun device = office.run({"-o", office.file("r.out"), "/dev/null"});
    EXPECT_EQ(device.status, 2);
    EXPECT_NE(device.err.find("/dev/null: a device, not an input file."), std::string::npos);
}

TEST(BatchUsage, AWrongMomentIsWrongUsage) {
    const BatchOffice office;
    office.copy("examples/cantilever-dry-sand.dat", "a.dat");
    for (const char* moment : {"tomorrow", "12x", "99999999999999999999"}) {
        const EnvironmentVariable epoch("SOURCE_DATE_EPOCH", moment);
        expectUsage(office, {"@a.dat"});
    }
}

TEST(BatchUsage, OnATerminalTheProgressOfPlanningIsShown) {
    const BatchOffice office;
    std::vector<std::string> arguments{"--plots"};
    for (int i = 0; i < 500; ++i) {
        arguments.push_back(office.write(std::to_string(i) + ".dat", "'A\n"));
    }
    arguments.push_back(arguments.back()); // wrong, so that nothing is solved
    EXPECT_NE(office.run(arguments, true).err.find("500 of 501 inputs planned"), std::string::npos);
    EXPECT_EQ(office.run(arguments).err.find("planned"), std::string::npos);
}

TEST(BatchUsage, VersionAndHelpGoToStandardOutputAndTheManualTellsEachOption) {
    const BatchOffice office;
    const BatchRun version = office.run({"--version"});
    EXPECT_EQ(version.status, 0);
    EXPECT_EQ(version.out.rfind("korvane-batch ", 0), 0U);
    EXPECT_EQ(version.err, "");
    const BatchRun help = office.run({"--help"});
    EXPECT_EQ(help.status, 0);
    std::string manual = readFile(sourceFile("packaging/man/korvane-batch.1"));
    manual.erase(std::remove(manual.begin(), manual.end(), '\\'), manual.end());
    for (const char* option :
         {"-o", "--output", "--output-dir", "--wedge", "--json", "--plots", "--jobs", "--max-fs",
          "--quiet", "--check", "--no-notes", "--verify", "--version", "--help", "INPUT"}) {
        EXPECT_NE(help.out.find(option), std::string::npos) << option;
        EXPECT_NE(manual.find(option), std::string::npos) << option;
    }
}

} // namespace korvane::test
