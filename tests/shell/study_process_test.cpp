// The desktop's hold on the study program: progress, cancel, faults.
#include "study_program.h"

#include "shell/study_process.h"

#include <QTest>

#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace korvane::test {

using testing::HasSubstr;

TEST(StudyProcess, EndsAProgramThatDoesNotHeedTheSignal) {
    const StandIn program(endless("trap '' TERM; "));
    StudyProcess process;
    bool cancelled = false;
    double size = 0;
    QObject::connect(&process, &StudyProcess::progressed, [&](double, double all) {
        size = all;
        process.cancel();
    });
    QObject::connect(&process, &StudyProcess::ended, [&](StudyProcess::End end, const QString&) {
        cancelled = end == StudyProcess::End::Cancelled;
    });
    process.start({});
    EXPECT_TRUE(QTest::qWaitFor([&] { return cancelled; }, 15000));
    EXPECT_EQ(size, 3);
    EXPECT_FALSE(process.isRunning());
}

TEST(StudyProcess, ReadsGroupedNumbersAndTellsAProgramThatCannotStart) {
    {
        const StandIn program("echo '1,234 of 10,000, 5,000 a second, 2 s left   ' >&2");
        StudyProcess process;
        std::vector<double> seen;
        bool well = false;
        QObject::connect(&process, &StudyProcess::progressed, [&](double done, double size) {
            seen = {done, size};
        });
        QObject::connect(
            &process, &StudyProcess::ended,
            [&](StudyProcess::End end, const QString&) { well = end == StudyProcess::End::Well; });
        process.start({});
        EXPECT_TRUE(QTest::qWaitFor([&] { return well; }));
        EXPECT_EQ(seen, (std::vector<double>{1234, 10000}));
    }
    const TemporaryFolder empty;
    const EnvironmentVariable path("PATH", empty.path().string());
    StudyProcess process;
    QString told;
    QObject::connect(&process, &StudyProcess::ended,
                     [&](StudyProcess::End, const QString& fault) { told = fault; });
    process.start({});
    EXPECT_TRUE(QTest::qWaitFor([&] { return !told.isEmpty(); }));
    EXPECT_THAT(told.toStdString(), HasSubstr("cannot be started"));
}

} // namespace korvane::test
