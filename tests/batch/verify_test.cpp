// --verify: in the source tree, and in the layout of an installed program with cases of the test.
#include "batch_run.h"
#include "runtime/file_text.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cmath>
#include <cstdlib>
#include <filesystem>

#include <sys/wait.h>

namespace korvane::test {

namespace fs = std::filesystem;

namespace {

/// The program in a prefix of its own, as it is installed.
struct Installed {
    Installed() {
        fs::create_directories(prefix() / "bin");
        fs::create_directories(cases().parent_path());
        fs::copy_file(KORVANE_BATCH, prefix() / "bin/korvane-batch");
    }
    fs::path prefix() const { return office.user.path(); }
    fs::path cases() const { return prefix() / "share/korvane/cases"; }

    void write(const std::string& name, const std::string& text) const {
        fs::create_directory(cases());
        writeFile(cases() / name, text);
    }

    BatchRun run(const std::string& arguments) const {
        const std::string line = "'" + office.file("bin/korvane-batch") + "' " + arguments + " >'" +
                                 office.file("out") + "' 2>'" + office.file("err") + "'";
        const int end = std::system(line.c_str()); // NOLINT(concurrency-mt-unsafe): one thread
        return {WIFEXITED(end) ? WEXITSTATUS(end) : -1, office.read("out"), office.read("err")};
    }

    BatchOffice office;
};

const char* const right = "title: a\nsource: a book, page 7\n"
                          "check: coulomb-active 30 0 = .3333 within .0001 because four digits\n";
const char* const wrong = "title: a\nsource: a book, page 8\n"
                          "check: coulomb-active 30 0 = .3433 within .0001 because a misprint\n";

} // namespace

TEST(BatchVerify, AllFiguresOfTheShippedCasesHold) {
    const BatchOffice office;
    const BatchRun run = office.run({"--verify"});
    EXPECT_EQ(run.status, 0) << run.out;
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.out.rfind("Case: source\n", 0), 0U);
    EXPECT_EQ(run.out.find("FAIL"), std::string::npos) << run.out;
    EXPECT_TRUE(office.files().empty());
}

TEST(BatchVerify, JsonIsAnArrayOfRows) {
    const BatchOffice office;
    const BatchRun run = office.run({"--verify", "--json"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, "");
    const auto rows = nlohmann::json::parse(run.out);
    ASSERT_TRUE(rows.is_array());
    EXPECT_GE(rows.size(), 100U);
    for (const auto& row : rows) {
        EXPECT_EQ(row.size(), 7U);
        EXPECT_FALSE(row.at("case").get<std::string>().empty());
        EXPECT_FALSE(row.at("source").get<std::string>().empty());
        EXPECT_FALSE(row.at("quantity").get<std::string>().empty());
        EXPECT_TRUE(row.at("pass").get<bool>());
        if (row.at("tolerance").is_null()) {
            EXPECT_EQ(row.at("published").get<std::string>(), row.at("ours").get<std::string>());
        } else {
            EXPECT_LE(std::fabs(row.at("ours").get<double>() - row.at("published").get<double>()),
                      row.at("tolerance").get<double>())
                << row;
        }
    }
    EXPECT_TRUE(office.files().empty());
}

TEST(BatchVerify, OptionsThatSayWhatBecomesOfInputsAreWrongUsage) {
    const BatchOffice office;
    const std::string input = office.copy("examples/cantilever-dry-sand.dat", "a.dat");
    const std::vector<std::vector<std::string>> others = {
        {input},
        {"-o", office.file("r.out")},
        {"--output-dir", office.file("d")},
        {"--plots"},
        {"--units", "si"},
        {"--convert", "si"},
        {"--check"},
        {"--wedge", "fixed"},
        {"--max-fs", "3"},
        {"-o", "-"},
        {"--compare"},
    };
    for (std::vector<std::string> arguments : others) {
        arguments.emplace_back("--verify");
        const BatchRun run = office.run(arguments);
        EXPECT_EQ(run.status, 2) << arguments[0];
        EXPECT_EQ(run.out, "") << arguments[0];
        EXPECT_NE(run.err.find("--verify"), std::string::npos) << run.err;
    }
    EXPECT_EQ(office.files(), (std::set<std::string>{"a.dat"}));
}

TEST(BatchVerify, AnInstalledProgramRunsTheCasesBesideIt) {
    const Installed program;
    for (const char* folder : {"cases", "examples"}) { // a case is of an example
        fs::copy(sourceFile(folder), program.prefix() / "share/korvane" / folder);
    }
    const BatchRun run = program.run("--verify");
    EXPECT_EQ(run.status, 0) << run.out << run.err;
    EXPECT_EQ(run.out, program.office.run({"--verify"}).out);
    // Through a link, as an administrator may put one into the path.
    fs::create_directory(program.prefix() / "local");
    fs::create_symlink("../bin/korvane-batch", program.prefix() / "local/kb");
    const std::string line = "'" + program.office.file("local/kb") + "' --verify >/dev/null";
    EXPECT_EQ(std::system(line.c_str()), 0); // NOLINT(concurrency-mt-unsafe): one thread
}

TEST(BatchVerify, AWrongFigureIsStatusOne) {
    const Installed program;
    program.write("right.case", right);
    EXPECT_EQ(program.run("--verify").status, 0);
    program.write("wrong.case", wrong);
    const BatchRun run = program.run("--verify");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.err, "");
    EXPECT_NE(run.out.find("right: a book, page 7\n  coulomb-active 30 0                 .3333   "
                           "0.333333    3.3e-05     0.0001 pass\n"),
              std::string::npos)
        << run.out;
    EXPECT_NE(run.out.find("wrong: a book, page 8\n  coulomb-active 30 0                 .3433   "
                           "0.333333      -0.01     0.0001 FAIL\n"),
              std::string::npos)
        << run.out;
    EXPECT_NE(run.out.find("\n1 of 2 figures hold.\n"), std::string::npos) << run.out;
    const BatchRun json = program.run("--verify --json");
    EXPECT_EQ(json.status, 1);
    const auto rows = nlohmann::json::parse(json.out);
    EXPECT_TRUE(rows.at(0).at("pass").get<bool>());
    EXPECT_FALSE(rows.at(1).at("pass").get<bool>());
}

TEST(BatchVerify, ADamagedCaseIsToldWithFileAndLine) {
    const Installed program;
    program.write("bad.case", "title: a\nsource: b\ncheck: depth = 3\n");
    program.write("right.case", right);
    for (const char* arguments : {"--verify", "--verify --json"}) {
        const BatchRun run = program.run(arguments);
        EXPECT_EQ(run.status, 1);
        EXPECT_EQ(run.err, (program.cases() / "bad.case").string() +
                               ":3: a check needs ' = ', ' within ' and ' because '\n");
        EXPECT_NE(run.out.find("right"), std::string::npos);
    }
    EXPECT_EQ(nlohmann::json::parse(program.run("--verify --json").out).size(), 1U);
}

TEST(BatchVerify, WithoutCasesAMessageTellsWhereTheyWereLookedFor) {
    const Installed program;
    for (const char* arguments : {"--verify", "--verify --json"}) {
        const BatchRun run = program.run(arguments);
        EXPECT_EQ(run.status, 1);
        EXPECT_EQ(run.out, "");
        EXPECT_NE(run.err.find(program.cases().string()), std::string::npos) << run.err;
    }
}

} // namespace korvane::test
