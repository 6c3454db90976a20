#include "commands/command_scope.h"

#include "commands/told_boxes.h"

#include "runtime/file_text.h"
#include "runtime/run_guarded.h"

#include <algorithm>
#include <atomic>
#include <system_error>

#include <unistd.h>

namespace korvane {

namespace {

namespace fs = std::filesystem;

/// An empty file of a new name in the folder of `file`, with its extension.
fs::path newNameBeside(const fs::path& file) {
    static std::atomic<unsigned> counter{0};
    for (;;) {
        fs::path name =
            file.parent_path() / (".korvane-aside-" + std::to_string(::getpid()) + "-" +
                                  std::to_string(counter++) + file.extension().string());
        if (createExclusively(name)) {
            return name;
        }
    }
}

/// Gives a file its old name back; false where somebody else has taken the name meanwhile.
bool renameIfFree(const fs::path& from, const fs::path& to) {
    if (::link(from.c_str(), to.c_str()) != 0) {
        return false;
    }
    ::unlink(from.c_str());
    return true;
}

/// Puts one file's name in place of another's wherever the session holds it.
void replaceName(Session& session, const std::string& from, const std::string& to) {
    const auto replace = [&](std::string& name) {
        if (name == from) {
            name = to;
        }
    };
    TemporaryFiles& files = session.files;
    std::for_each(files.ScratchFileList.begin(), files.ScratchFileList.end(), replace);
    replace(session.CurrentInputName);
    replace(session.report.CurrentOutputName);
}

} // namespace

CommandScope::Before::Before(const Session& session)
    : window(session), problem(session.problem), sections(session.sections), files(session.files),
      report(session.report), SolutionFailed(session.SolutionFailed),
      DataChanged(session.DataChanged), HeadContDataValid(session.HeadContDataValid) {}

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
    before_.problem = session_.problem;
    before_.HeadContDataValid = session_.HeadContDataValid;
    if (session_.DataChanged != 0) {
        before_.DataChanged = session_.DataChanged;
        before_.window.inputFileStale = true;
        before_.window.menus.mnuSolve.enabled = false;
    }
}

void CommandScope::takeBack() {
    std::error_code ignored;
    for (const fs::path& file : made_) {
        fs::remove(file, ignored);
    }
    made_.clear();
    static_cast<MainWindow&>(session_) = before_.window;
    session_.problem = before_.problem;
    session_.sections = before_.sections;
    session_.files = before_.files;
    session_.report = before_.report;
    session_.SolutionFailed = before_.SolutionFailed;
    session_.DataChanged = before_.DataChanged;
    session_.HeadContDataValid = before_.HeadContDataValid;
    for (const auto& [from, to] : aside_) {
        if (!renameIfFree(to, from)) {
            replaceName(session_, from.string(), to.string());
        }
    }
    aside_.clear();
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

void deleteOwnFile(Session& session, const std::string& listed) {
    // Perhaps an entry of the very lists that are blanked below, hence a copy.
    const std::string name = listed; // NOLINT(performance-unnecessary-copy-initialization)
    if (name.empty()) {
        return;
    }
    std::error_code ignored;
    if (session.running == nullptr) {
        fs::remove(name, ignored);
    } else if (fs::exists(fs::symlink_status(name, ignored))) {
        session.running->setAside(name);
    }
    TemporaryFiles& files = session.files;
    std::replace(files.ScratchFileList.begin(), files.ScratchFileList.end(), name, std::string());
}

} // namespace korvane
