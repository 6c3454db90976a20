#include "commands/commands.h"
#include "shell/program.h"

#include <QApplication>
#include <QTemporaryDir>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    const QTemporaryDir home; // file dialogs keep their history in the settings
    qputenv("XDG_CONFIG_HOME", home.path().toUtf8());
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    const QApplication application(argc, argv);
    korvane::prepareApplication();
    return RUN_ALL_TESTS();
}
