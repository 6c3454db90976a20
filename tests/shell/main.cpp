// The tests of the windows run on the real screens, without a display.
#include "screenshots.h"

#include "shell/program.h"
#include "support/support.h"

#include <QApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    // File dialogs keep their history in the settings.
    const korvane::test::TemporaryFolder home;
    qputenv("XDG_CONFIG_HOME", QByteArray::fromStdString(home.path().string()));
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    const QApplication application(argc, argv);
    korvane::prepareApplication();
    korvane::test::takeTheme();
    const korvane::test::Screenshots screenshots;
    return RUN_ALL_TESTS();
}
