#include "study_process.h"

#include <gtest/gtest.h>

#include <csignal>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace korvane::study::test {

pid_t start(std::vector<std::string> arguments, const std::string& messages) {
    const pid_t child = fork();
    if (child == 0) {
        for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
            std::signal(signal, SIG_DFL);
        }
        const int file = open(messages.c_str(), O_WRONLY | O_CREAT, 0600); // NOLINT: POSIX
        dup2(file, STDERR_FILENO);
        std::string program = KORVANE_STUDY;
        std::vector<char*> words{program.data()};
        for (std::string& argument : arguments) {
            words.push_back(argument.data());
        }
        words.push_back(nullptr);
        execv(program.c_str(), words.data());
        _exit(127);
    }
    return child;
}

int waitFor(pid_t child) {
    int end = 0;
    EXPECT_EQ(waitpid(child, &end, 0), child);
    return end;
}

bool isRunning(pid_t child) {
    siginfo_t ended{};
    return waitid(P_PID, static_cast<id_t>(child), &ended, WEXITED | WNOHANG | WNOWAIT) == 0 &&
           ended.si_pid == 0;
}

} // namespace korvane::study::test
