// The desktop program.
#include "commands/commands.h"
#include "screens/screens.h"
#include "shell/program.h"

#include <QApplication>

int main(int argc, char** argv) {
    korvane::provideTempVariable();
    QApplication application(argc, argv);
    korvane::prepareApplication();
    constexpr int titleMilliseconds = 3000;
    return korvane::runProgram(korvane::dataScreens(), titleMilliseconds);
}
