#include "study_process.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <functional>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

namespace korvane::study::test {

namespace {

/// `messages` gives the file for them, in the new process.
pid_t startWith(std::vector<std::string> arguments, const std::function<int()>& messages) {
    const pid_t child = fork();
    if (child == 0) {
        for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
            std::signal(signal, SIG_DFL);
        }
        dup2(messages(), STDERR_FILENO);
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

} // namespace

pid_t start(std::vector<std::string> arguments, const std::string& messages) {
    return startWith(std::move(arguments), [&messages] {
        return open(messages.c_str(), O_WRONLY | O_CREAT, 0600); // NOLINT: POSIX
    });
}

NarrowPipe::NarrowPipe() {
    EXPECT_EQ(pipe2(ends_, O_DIRECT | O_CLOEXEC), 0); // a message is a packet
    EXPECT_GT(fcntl(ends_[1], F_SETPIPE_SZ, 1), 0);   // NOLINT: POSIX; one page, one packet
}

NarrowPipe::~NarrowPipe() {
    for (const int end : ends_) {
        close(end);
    }
}

pid_t NarrowPipe::start(std::vector<std::string> arguments) {
    const pid_t child = startWith(std::move(arguments), [this] { return ends_[1]; });
    close(std::exchange(ends_[1], -1));
    return child;
}

void NarrowPipe::awaitOne() const {
    pollfd end{.fd = ends_[0], .events = POLLIN, .revents = 0};
    EXPECT_EQ(poll(&end, 1, -1), 1);
}

bool NarrowPipe::take(std::string& message) {
    message.resize(4096);
    const ssize_t size = read(ends_[0], message.data(), message.size());
    message.resize(static_cast<std::size_t>(std::max<ssize_t>(size, 0)));
    return size > 0;
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
