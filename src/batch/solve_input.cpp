#include "batch/solve_input.h"

#include "batch/json_results.h"
#include "commands/commands.h"
#include "commands/told_boxes.h"
#include "plots/figures.h"
#include "reports/input_echo.h"
#include "reports/reduction_report.h"
#include "reports/results_report.h"
#include "reports/soil_pressure_report.h"
#include "rowe/pile_sections.h"
#include "runtime/file_text.h"
#include "runtime/run_guarded.h"

#include <algorithm>
#include <set>
#include <system_error>

namespace korvane::batch {

namespace {

/// Answers by the options of the command line and keeps what came up. A short file may be complete
/// all the same.
class BatchPrompts : public Prompts {
  public:
    Answer Ask(const MessageBox& box) override {
        const Answer answer = box.buttons == Buttons::YesNo ? Answer::Yes : Answer::Ok;
        messages.push_back({box, answer});
        return answer;
    }
    bool goBeyond(double limit, double largest) {
        const bool goesOn = limit <= largest;
        messages.push_back({factorQuestion(limit), goesOn ? Answer::Yes : Answer::No});
        return goesOn;
    }

    std::vector<Message> messages;
};

/// One input under way.
struct Run {
    const Job& job;
    const Options& options;
    Workspace& workspace;
    BatchPrompts prompts = {};
    Problem problem = {};
    PileSections sections = {};
    Solved solved = {};  ///< as far as the solution has come
    bool opened = false; ///< the problem was read
    int status = StatusFailed;
    Stage stage = {Doing::Reading};
    std::string report = {};

    void raise(int other) { status = std::max(status, other); }
    /// The first failure stands.
    void fail(FailureCode code, int error = 0) {
        if (!solved.failure) {
            solved.failure.code = code;
            solved.failure.stage = stage;
            solved.failure.error = error;
        }
    }
};

/// True when the problem is complete and its echo is written.
bool open(Run& run) {
    const std::string name = run.job.inputPath.string();
    const std::string text = readFile(name);
    clearProblemData(run.problem);
    if (!goOnWithFile(run.prompts, name, text.size()) ||
        !tellReading(run.prompts, name, readProblem(run.problem, text, name))) {
        clearProblemData(run.problem);
        run.fail(FailureCode::InputRefused);
        return false;
    }
    run.opened = true;
    run.report = inputEcho(run.problem).content();
    return true;
}

/// True where a step has reached its value; else its failure is told.
template <class Value>
bool reached(Run& run, const Reached<Value>& step) {
    takeSeepage(run.workspace, run.problem);
    if (!step) {
        run.solved.failure = step.failure();
        tellFailure(run.prompts, step.failure());
    }
    return static_cast<bool>(step);
}

void addToReport(Run& run, const PrintLines& lines) {
    run.report += lines.content();
}

/// The wall, its report and the moment reduction with the default sections.
bool solveLevels(Run& run) {
    const auto results = solveWall(run.workspace);
    if (!reached(run, results)) {
        return false;
    }
    run.solved.results = &*results;
    addToReport(run, resultsReport(run.problem, *results));
    LoadPileDefaults(run.sections);
    const auto reduction = reduceWallMoments(run.workspace, run.sections);
    if (!reached(run, reduction)) {
        return false;
    }
    run.solved.reduction = &*reduction;
    if (reduction->soil != RoweSoil::None) {
        addToReport(run, reductionReport(run.problem, run.sections, *reduction));
    }
    return true;
}

/// The road of a solution with its reports; a fault of a report fails it like one of the solution.
void solveWithReports(Run& run) {
    korvane::Options options;
    options.wedge = run.options.fixedSurface ? WedgeMethod::FixedSurface : WedgeMethod::Sweep;
    options.factorLimit.ask = [&run](double limit) {
        return run.prompts.goBeyond(limit, run.options.maxFs);
    };
    const auto review = reviewWall(run.problem, options, run.workspace);
    if (!reached(run, review)) {
        return;
    }
    run.solved.review = &*review;
    if (review->hasPressures) {
        addToReport(run, soilPressureReport(run.problem, *review));
    }
    if (solveLevels(run)) {
        run.status = StatusSolved;
    }
}

void tellError(Run& run, const RuntimeError& fault) {
    run.prompts.Ask({.text = runtimeErrorMessage(fault.number()), .icon = Icon::Critical});
    run.raise(StatusError);
}

/// Tells a fault outside the solution.
void tellFault(Run& run, const RuntimeError& fault) {
    run.fail(fault.isFileFault() ? FailureCode::FileFault : FailureCode::RunTimeError,
             fault.number());
    if (fault.isFileFault()) {
        showFileError(run.prompts, fault);
        run.raise(StatusFailed);
    } else {
        tellError(run, fault);
    }
}

/// Runs a step outside the solution; a fault becomes a message and a status. True without one.
template <class Step>
bool guarded(Run& run, Step step) {
    const auto fault = runGuarded(step);
    if (fault) {
        tellFault(run, *fault);
    }
    return !fault;
}

void solve(Run& run) {
    bool complete = false;
    if (!guarded(run, [&] { complete = open(run); }) || !complete) {
        return;
    }
    run.stage = {Doing::Reporting};
    const auto fault = runGuarded([&] { solveWithReports(run); });
    if (fault) {
        run.status = StatusFailed;
        run.fail(FailureCode::RunTimeError, fault->number());
        tellFailure(run.prompts, run.solved.failure);
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

void writeFigures(Run& run) {
    std::set<std::string> written;
    if (run.opened) {
        const PlotData data{run.problem, run.workspace.results(), run.sections,
                            run.workspace.reduction()};
        visitFigures(data, run.status == StatusSolved, [&](const Figure& figure) {
            saveFile(run.job.figurePath(figure.name), svgFigure(figure));
            written.insert(figure.name);
        });
    }
    removeOtherFigures(run.job, written);
}

} // namespace

Outcome solveInput(const Job& job, const Options& options, Workspace& workspace) {
    Run run{.job = job, .options = options, .workspace = workspace};
    solve(run);
    Outcome outcome;
    if (job.reportPath.empty()) {
        outcome.report = run.report;
    } else {
        guarded(run, [&] { saveFile(job.reportPath, run.report); });
    }
    if (!job.jsonPath.empty()) {
        guarded(run, [&] {
            saveFile(job.jsonPath, jsonResults({.input = job.input,
                                                .status = run.status,
                                                .messages = run.prompts.messages,
                                                .problem = run.problem,
                                                .sections = run.sections,
                                                .solved = run.solved}));
        });
    }
    if (job.plots) {
        guarded(run, [&] { writeFigures(run); });
    }
    if (run.solved.failure) {
        outcome.during = stageText(run.solved.failure.stage, run.problem.WallType);
    }
    outcome.status = run.status;
    outcome.messages = std::move(run.prompts.messages);
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
