// The jobs of a cluster, here run by stand-ins for the commands of Slurm.
#include "study_desk.h"

#include "study/slurm.h"

#include "study/command_line.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

namespace korvane::study::test {

using testing::HasSubstr;

namespace {

std::string sample() {
    return head("sample", "size = 90") + friction("distribution = \"Normal(32, 2)\"");
}

/// An sbatch that runs each job at once: of an array one task after another.
void standIn(const StudyDesk& desk) {
    std::filesystem::create_directory(desk.file("bin"));
    const std::string path = desk.write(
        "bin/sbatch",
        "#!/bin/bash\n"
        "for script; do :; done\n"
        "last=$(sed -n 's/^#SBATCH --array=1-//p' \"$script\")\n"
        "echo \"$*\" >>'" +
            desk.file("calls") +
            "'\n"
            "if [ -n \"$last\" ]; then\n"
            "    for k in $(seq \"$last\"); do SLURM_ARRAY_TASK_ID=$k bash \"$script\"; done\n"
            "else bash \"$script\"; fi\n"
            "echo '42;cluster'\n");
    std::filesystem::permissions(path, std::filesystem::perms::owner_all);
}

} // namespace

TEST(Slurm, ItsJobsLeaveTheRowsOfOneRun) {
    const StudyDesk desk;
    standIn(desk);
    const korvane::test::EnvironmentVariable path(
        "PATH", desk.file("bin") + ":" + std::getenv("PATH")); // NOLINT: one thread
    desk.write("s.toml", sample());
    // A folder with all that shells and Slurm could misunderstand.
    const std::string folder = desk.file("it's a 100 % \"good\" $HOME");
    const std::string command =
        std::string("'") + KORVANE_STUDY + "' slurm '" + desk.file("s.toml") +
        "' --output \"$FOLDER\" --parts 4 --submit >'" + desk.file("told") + "'";
    const korvane::test::EnvironmentVariable named("FOLDER", folder);
    ASSERT_EQ(std::system(command.c_str()), 0); // NOLINT: one thread
    EXPECT_EQ(desk.read("told"), "parts 42, collection 42\n");
    EXPECT_THAT(desk.read("calls"), HasSubstr("--dependency=afterok:42"));
    desk.runStudy(sample(), "whole");
    EXPECT_EQ(desk.variants("it's a 100 % \"good\" $HOME"), desk.variants("whole"));
}

TEST(Slurm, WithoutSubmittingItTellsHowTo) {
    const StudyDesk desk;
    desk.write("s.toml", sample());
    const CommandRun run = StudyDesk::run(
        {"slurm", desk.file("s.toml"), "--output", desk.file("o"), "--parts", "4", "--jobs", "2"});
    EXPECT_EQ(run.status, StatusDone) << run.err;
    EXPECT_EQ(run.out, "Submit it by: bash " + desk.file("o/slurm/submit.sh") + "\n");
    EXPECT_THAT(desk.read("o/slurm/parts.sh"), HasSubstr("#SBATCH --array=1-4\n"));
    EXPECT_THAT(desk.read("o/slurm/parts.sh"), HasSubstr("#SBATCH --cpus-per-task=2\n"));
}

TEST(Slurm, FaultsHaveTheirStatus) {
    const StudyDesk desk;
    desk.write("s.toml", sample());
    const auto statusOf = [&](const std::string& study, const std::string& parts) {
        return StudyDesk::run(
                   {"slurm", desk.file(study), "--output", desk.file("o"), "--parts", parts})
            .status;
    };
    EXPECT_EQ(statusOf("s.toml", "0"), StatusUsage);
    desk.write("bad.toml", "[study]\n");
    EXPECT_EQ(statusOf("bad.toml", "2"), StatusUsage);
    desk.write("search.toml", head("reliability") + friction("distribution = \"Normal(32, 2)\"") +
                                  limit("deep", "penetration > 14"));
    EXPECT_EQ(statusOf("search.toml", "2"), StatusUsage);
    EXPECT_FALSE(std::filesystem::exists(desk.file("o")));
    // A submission that fails.
    std::filesystem::create_directory(desk.file("bin"));
    std::filesystem::permissions(desk.write("bin/sbatch", "#!/bin/bash\nexit 3\n"),
                                 std::filesystem::perms::owner_all);
    const korvane::test::EnvironmentVariable path(
        "PATH", desk.file("bin") + ":" + std::getenv("PATH")); // NOLINT: one thread
    const CommandRun run = StudyDesk::run(
        {"slurm", desk.file("s.toml"), "--output", desk.file("o"), "--parts", "2", "--submit"});
    EXPECT_EQ(run.status, StatusFault);
    EXPECT_THAT(run.err, HasSubstr("submit.sh has failed"));
}

} // namespace korvane::study::test
