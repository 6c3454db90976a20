#include "batch/solve_input.h"

#include "batch/batch_desktop.h"
#include "batch/json_results.h"
#include "commands/command_scope.h"
#include "commands/commands.h"
#include "commands/files.h"
#include "commands/run_guarded.h"
#include "plots/figures.h"
#include "runtime/file_text.h"

#include <algorithm>
#include <memory>
#include <set>
#include <system_error>

namespace korvane::batch {

namespace {

/// The grid and the pressures at the stop for review.
std::unique_ptr<SolvedLevel> reviewGrid(const State& state) {
    auto review = std::make_unique<SolvedLevel>();
    review->grid = state.grid;
    review->pressures = state.pressures;
    review->NetActive = state.net.NetActive;
    review->NetPassive = state.net.NetPassive;
    return review;
}

/// One input under way.
struct Run {
    Run(const Job& job_, const Options& options_) : job(job_), desktop(job_, options_) {}

    const Job& job;
    BatchDesktop desktop;
    Session session{desktop};
    std::unique_ptr<SolvedLevel> review; ///< null where the stop for review was not reached
    bool opened = false;                 ///< the problem was read
    bool solved = false;                 ///< the results are there
    int status = StatusFailed;
    std::string report;

    void raise(int other) { status = std::max(status, other); }
};

/// Open, Solve, Continue and OK; the report as it stands then.
void solve(Run& run) {
    Session& session = run.session;
    constexpr int open = 1;
    mnuFileItem_Click(session, run.desktop, open);
    if (!session.menus.mnuSolve.enabled) {
        return; // refused
    }
    run.opened = true;
    mnuSolveItem_Click(session, run.desktop);
    if (session.stage == FlowStage::Review) {
        run.review = reviewGrid(session.state);
        cmdContinue_Click(session, run.desktop);
    }
    cmdOK_Click(session);
    run.report = readFile(session.state.report.CurrentOutputName);
    run.solved = session.state.SolutionFailed == 0;
    run.status = run.solved ? StatusSolved : StatusFailed;
}

void tellError(Run& run, const RuntimeError& fault) {
    run.desktop.Ask({.text = runtimeErrorMessage(fault.number()), .icon = Icon::Critical});
    run.raise(StatusError);
}

/// Starts the session; false where its temporary folder is none.
bool start(Run& run) {
    const auto fault = runGuarded([&] { Form_Load(run.session); });
    if (fault) {
        tellError(run, *fault);
    }
    return !fault;
}

/// Runs a step; a fault becomes a message and a status.
void guarded(Run& run, const std::function<void()>& step) {
    const auto fault = runGuarded(step);
    if (fault && fault->isFileFault()) {
        showFileError(run.desktop, *fault);
        run.raise(StatusFailed);
    } else if (fault) {
        tellError(run, *fault);
    }
}

/// Takes away figures that an earlier run left: no old drawing may stand beside a new report.
void removeOtherFigures(const Job& job, const std::set<std::string>& written) {
    for (const std::string& name : figureNames()) {
        const std::filesystem::path figure = job.figurePath(name);
        std::error_code failure;
        if (written.count(name) == 0 && !std::filesystem::remove(figure, failure) && failure) {
            throw RuntimeError(fileErrorNumber(failure.value(), figure), figure.string());
        }
    }
}

/// Last of all: drawing rounds the ranges of the results and loads levels.
void writeFigures(Run& run) {
    std::set<std::string> written;
    if (run.opened) {
        visitFigures(run.session.state, run.solved, [&](const Figure& figure) {
            saveFile(run.job.figurePath(figure.name), svgFigure(figure));
            written.insert(figure.name);
        });
    }
    removeOtherFigures(run.job, written);
}

} // namespace

Outcome solveInput(const Job& job, const Options& options) {
    const auto run = std::make_unique<Run>(job, options);
    if (start(*run)) {
        guarded(*run, [&] { solve(*run); });
    }
    Outcome outcome;
    if (job.reportPath.empty()) {
        outcome.report = run->report;
    } else {
        guarded(*run, [&] { saveFile(job.reportPath, run->report); });
    }
    if (!job.jsonPath.empty()) {
        guarded(*run, [&] {
            saveFile(job.jsonPath, jsonResults(job.input, run->status, run->desktop.messages(),
                                               run->session.state, run->review.get()));
        });
    }
    if (job.plots) {
        guarded(*run, [&] { writeFigures(*run); });
    }
    guarded(*run, [&] { DeleteTempFiles(run->session, run->desktop); });
    outcome.status = run->status;
    outcome.messages = run->desktop.messages();
    return outcome;
}

std::string messageLine(const std::string& input, const Message& message) {
    std::string line = input + ": [" + message.box.title + "] ";
    for (const char c : message.box.text) {
        c == '\n' ? line += " / " : line += c;
    }
    return line;
}

} // namespace korvane::batch
