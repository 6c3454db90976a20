// Commands and options of korvane-study, as its help and its manual tell them.
#include "study_desk.h"

#include "runtime/file_text.h"
#include "study/command_line.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>

namespace korvane::study::test {

using testing::HasSubstr;

TEST(StudyUsage, HelpAndManualTellEachCommandAndOption) {
    std::string manual = readFile(KORVANE_SOURCE_DIR "/packaging/man/korvane-study.1");
    manual.erase(std::remove(manual.begin(), manual.end(), '\\'), manual.end());
    const std::map<std::string, std::vector<std::string>> options{
        {"run", {"--output", "--jobs", "--part", "--csv", "--quiet", "STUDY"}},
        {"check", {"STUDY"}},
        {"collect", {"--csv", "--quiet", "DIR"}},
        {"report", {"DIR"}},
        {"slurm", {"--output", "--parts", "--jobs", "--submit", "STUDY"}}};
    const std::string all = StudyDesk::run({"--help"}).out;
    for (const auto& [command, names] : options) {
        EXPECT_THAT(all, HasSubstr(command));
        EXPECT_THAT(manual, HasSubstr(".B " + command));
        const CommandRun help = StudyDesk::run({command, "--help"});
        EXPECT_EQ(help.status, StatusDone);
        for (const std::string& name : names) {
            EXPECT_THAT(help.out, HasSubstr(name)) << command;
            EXPECT_THAT(manual, HasSubstr(name)) << command;
        }
    }
}

TEST(StudyUsage, AnUnknownOptionOrAMissingFolderIsWrongUsage) {
    EXPECT_EQ(StudyDesk::run({"report"}).status, StatusUsage);
    EXPECT_EQ(StudyDesk::run({"report", "a", "b"}).status, StatusUsage);
    EXPECT_EQ(StudyDesk::run({"report", "a", "--pdf"}).status, StatusUsage);
    EXPECT_EQ(StudyDesk::run({"collect", "--csv"}).status, StatusUsage);
}

} // namespace korvane::study::test
