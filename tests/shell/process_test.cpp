// The desktop program as a process: what its environment and its standard streams do to it.
#include "support/support.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTest>

#include <gtest/gtest.h>

#include <algorithm>

namespace korvane::test {
namespace {

/// Starts the program through a shell, which closes what `closed` names ("2>&-").
void start(QProcess& program, const QString& arguments, const QString& closed = {}) {
    program.start("/bin/sh", {"-c", "exec " KORVANE_PROGRAM " " + arguments + " " + closed});
    ASSERT_TRUE(program.waitForStarted());
}

/// What a descriptor of a process leads to; empty where it is closed.
QString target(const QProcess& program, int descriptor) {
    return QFile::symLinkTarget(QString("/proc/%1/fd/%2").arg(program.processId()).arg(descriptor));
}

TEST(DesktopProcess, AWrongMomentIsIgnoredWithALine) {
    for (const char* moment : {"tomorrow", "12x", "99999999999999999999"}) {
        const EnvironmentVariable epoch("SOURCE_DATE_EPOCH", moment);
        QProcess program;
        start(program, "--version");
        ASSERT_TRUE(program.waitForFinished(20000));
        EXPECT_EQ(program.exitCode(), 0);
        EXPECT_EQ(program.readAllStandardOutput().left(8), "KORVANE ");
        EXPECT_EQ(program.readAllStandardError(),
                  "korvane: SOURCE_DATE_EPOCH is no number of seconds and is ignored.\n");
    }
    const EnvironmentVariable epoch("SOURCE_DATE_EPOCH", "1795251907");
    QProcess program;
    start(program, "--version");
    ASSERT_TRUE(program.waitForFinished(20000));
    EXPECT_EQ(program.readAllStandardError(), "");
}

TEST(DesktopProcess, StandardStreamsThatAreClosedLeadToTheNullDevice) {
    const TemporaryFolder folder;
    const EnvironmentVariable temp("temp", folder.path().string());
    QProcess program;
    start(program, "", "0<&- 1>&- 2>&-");
    const auto allNull = [&] {
        return target(program, 0) == "/dev/null" && target(program, 1) == "/dev/null" &&
               target(program, 2) == "/dev/null";
    };
    // The toolkit is at work: descriptors were opened since.
    const auto started = [&] {
        const QDir open(QString("/proc/%1/fd").arg(program.processId()));
        const QStringList names = open.entryList(QDir::AllEntries | QDir::System | QDir::NoDot);
        return std::any_of(names.begin(), names.end(), [&](const QString& name) {
            return target(program, name.toInt()).contains("eventfd");
        });
    };
    EXPECT_TRUE(QTest::qWaitFor([&] { return allNull() && started(); }, 20000));
    EXPECT_EQ(program.state(), QProcess::Running);
    program.kill();
    program.waitForFinished();
}

TEST(DesktopProcess, AnswersWithoutTheOtherStreams) {
    QProcess program;
    start(program, "--version", "0<&- 2>&-");
    ASSERT_TRUE(program.waitForFinished(20000));
    EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(program.exitCode(), 0);
    EXPECT_EQ(program.readAllStandardOutput().left(8), "KORVANE ");
}

} // namespace
} // namespace korvane::test
