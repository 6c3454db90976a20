#include "commands/command_scope.h"

#include "commands/told_boxes.h"

#include "runtime/file_text.h"
#include "runtime/run_guarded.h"

#include <algorithm>
#include <atomic>
#include <optional>
#include <system_error>
#include <utility>

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

/// Gives a file a new name beside it: that name, or the old one where it has to keep it.
fs::path movedAside(const fs::path& file) {
    fs::path aside;
    const auto fault = runGuarded([&] {
        aside = newNameBeside(file);
        fs::rename(file, aside);
    });
    if (!fault) {
        return aside;
    }
    removeOwnFile(aside);
    return file;
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
      report(session.report), notes(session.notes), SolutionFailed(session.SolutionFailed),
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
    fs::path from = file;
    aside_.reserve(aside_.size() + 1); // all memory before the rename: no file is forgotten
    fs::path aside = movedAside(file);
    aside_.emplace_back(std::move(from), std::move(aside));
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
    before_.notes = session_.notes;
    if (session_.DataChanged != 0) {
        before_.DataChanged = session_.DataChanged;
        before_.window.inputFileStale = true;
        Menus& menus = before_.window.menus;
        menus.save.enabled = true;
        menus.saveInput.enabled = true;
        menus.saveReport.enabled = !before_.report.CurrentOutputName.empty();
        menus.solve.enabled = false;
        menus.notes.enabled = true;
        menus.compare.enabled = true;
        menus.study.enabled = true;
        disableResults(menus);
    }
}

void CommandScope::takeBack() {
    for (const fs::path& file : made_) {
        removeOwnFile(file);
    }
    made_.clear();
    static_cast<MainWindow&>(session_) = before_.window;
    session_.problem = before_.problem;
    session_.sections = before_.sections;
    session_.files = before_.files;
    session_.report = before_.report;
    session_.notes = before_.notes;
    session_.SolutionFailed = before_.SolutionFailed;
    session_.DataChanged = before_.DataChanged;
    session_.HeadContDataValid = before_.HeadContDataValid;
    for (const auto& [from, to] : aside_) {
        if (to == from) {
            continue;
        }
        if (::link(to.c_str(), from.c_str()) == 0) {
            removeOwnFile(to);
        } else { // somebody else has taken the name meanwhile
            replaceName(session_, from.string(), to.string());
        }
    }
    aside_.clear();
}

void CommandScope::deleteSetAside() {
    for (const auto& [from, to] : aside_) {
        removeOwnFile(to);
    }
    aside_.clear();
}

bool runCommand(Session& session, Desktop& desktop, const std::function<void()>& body) {
    std::optional<CommandScope> scope(session);
    const auto fault = runGuarded(body);
    if (fault) {
        desktop.SetBusy(false);
        if (!fault->isFileFault()) {
            throw RuntimeError(*fault);
        }
        scope->takeBack();
        showFileError(desktop, *fault);
    }
    scope.reset(); // deletes what was set aside
    tellFilesLeft(desktop);
    return !fault;
}

void deleteOwnFile(Session& session, const std::string& listed) {
    // Perhaps an entry of the very lists that are blanked below, hence a copy.
    const std::string name = listed; // NOLINT(performance-unnecessary-copy-initialization)
    if (name.empty()) {
        return;
    }
    std::error_code unknown;
    if (session.running == nullptr) {
        removeOwnFile(name.c_str());
    } else if (fs::exists(fs::symlink_status(name, unknown))) {
        session.running->setAside(name);
    }
    TemporaryFiles& files = session.files;
    std::replace(files.ScratchFileList.begin(), files.ScratchFileList.end(), name, std::string());
}

} // namespace korvane
