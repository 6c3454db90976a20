// The tests of the data entry run on the real screens, without a display.
#include "commands/commands.h"
#include "shell/program.h"
#include "support/support.h"

#include <QApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    const korvane::test::TemporaryFolder home;
    qputenv("XDG_CONFIG_HOME", QByteArray::fromStdString(home.path().string()));
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QApplication application(argc, argv);
    korvane::prepareApplication();
    return RUN_ALL_TESTS();
}
