#include "commands/command_scope.h"

#include "commands/run_guarded.h"
#include "runtime/file_text.h"

#include <atomic>
#include <system_error>

#include <unistd.h>

namespace korvane {

namespace {

namespace fs = std::filesystem;

/// An empty file of a new name in the folder of `file`.
fs::path newNameBeside(const fs::path& file) {
    static std::atomic<unsigned> counter{0};
    for (;;) {
        fs::path name = file.parent_path() / (".korvane-aside-" + std::to_string(::getpid()) + "-" +
                                              std::to_string(counter++));
        if (createExclusively(name)) {
            return name;
        }
    }
}

} // namespace

CommandScope::Before::Before(const Session& session)
    : window(session), problem(session.state.problem), rowe(session.state.rowe),
      files(session.state.files), report(session.state.report),
      SolutionFailed(session.state.SolutionFailed), DataChanged(session.state.DataChanged),
      HeadContDataValid(session.state.HeadContDataValid) {}

CommandScope::CommandScope(Session& session)
    : session_(session), outer_(session.running), before_(session) {
    session_.running = this;
}

CommandScope::~CommandScope() {
    deleteSetAside();
    session_.running = outer_;
}

void CommandScope::setAside(const fs::path& file) {
    const fs::path aside = newNameBeside(file);
    std::error_code failure;
    fs::rename(file, aside, failure);
    if (failure) {
        std::error_code ignored;
        fs::remove(aside, ignored);
        throw RuntimeError(fileErrorNumber(failure.value(), file), file.string());
    }
    aside_.emplace_back(file, aside);
}

void CommandScope::remember(const fs::path& madeFile) {
    made_.push_back(madeFile);
}

void CommandScope::checkpoint() {
    deleteSetAside();
    made_.clear();
    before_ = Before(session_);
}

void CommandScope::keepEnteredData() {
    const State& state = session_.state;
    before_.problem = state.problem;
    before_.HeadContDataValid = state.HeadContDataValid;
    if (state.DataChanged != 0) {
        before_.DataChanged = state.DataChanged;
        before_.window.menus.mnuSolve.enabled = false;
    }
}

void CommandScope::takeBack() {
    std::error_code ignored;
    for (const fs::path& file : made_) {
        fs::remove(file, ignored);
    }
    made_.clear();
    for (const auto& [from, to] : aside_) {
        fs::rename(to, from, ignored);
    }
    aside_.clear();
    static_cast<MainWindow&>(session_) = before_.window;
    State& state = session_.state;
    state.problem = before_.problem;
    state.rowe = before_.rowe;
    state.files = before_.files;
    state.report = before_.report;
    state.SolutionFailed = before_.SolutionFailed;
    state.DataChanged = before_.DataChanged;
    state.HeadContDataValid = before_.HeadContDataValid;
}

void CommandScope::deleteSetAside() {
    std::error_code ignored;
    for (const auto& [from, to] : aside_) {
        fs::remove(to, ignored);
    }
    aside_.clear();
}

bool runCommand(Session& session, Desktop& desktop, const std::function<void()>& body) {
    CommandScope scope(session);
    const auto fault = runGuarded(body);
    if (!fault) {
        return true;
    }
    desktop.SetBusy(false);
    if (!fault->isFileFault()) {
        throw RuntimeError(*fault);
    }
    scope.takeBack();
    showFileError(desktop, *fault);
    return false;
}

void showFileError(Desktop& desktop, const RuntimeError& fault) {
    desktop.Ask(
        {.text = "File: " + fault.fileName() + "\n" + fault.what() + "\n\nYour data are kept.",
         .title = "FILE ERROR",
         .buttons = Buttons::Ok,
         .icon = Icon::Exclamation});
}

void deleteFile(Session& session, const std::string& name) {
    std::error_code ignored;
    if (name.empty() || !fs::exists(fs::symlink_status(name, ignored))) {
        return;
    }
    if (session.running != nullptr) {
        session.running->setAside(name);
    } else {
        fs::remove(name, ignored);
    }
}

} // namespace korvane
