#include "batch/solve_input.h"

#include "batch/json_results.h"
#include "commands/commands.h"
#include "commands/told_boxes.h"
#include "comparison/comparison_table.h"
#include "notes/note_texts.h"
#include "plots/figures.h"
#include "reports/solution_report.h"
#include "rowe/pile_sections.h"
#include "runtime/file_text.h"
#include "runtime/run_guarded.h"
#include "runtime/utf8_text.h"

#include <algorithm>
#include <deque>
#include <iterator>
#include <optional>
#include <string_view>
#include <unordered_set>

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
    NoteWorkspace& second;
    BatchPrompts prompts = {};
    Problem problem = {};
    PileSections sections = {};
    InputFault fault = {};    ///< of a refused input
    FileNumbers numbers = {}; ///< of the file, as far as it was read
    Solved solved = {};       ///< as far as the solution has come
    bool opened = false;      ///< the problem was read
    bool broken = false;      ///< by a fault of files or memory: earlier outputs stay
    int status = StatusFailed;
    Stage stage = {Doing::Reading};
    std::string report = {};
    ReportPart next = ReportPart::Echo; ///< to be written
    std::vector<ReadRemark> remarks = {};
    std::vector<Note> notes = {};
    Comparison comparison = {};
    std::vector<Check> checks = {}; ///< of the sheet

    /// Of JSON, notes, sheet and comparison.
    UnitSystem units() const { return options.units.value_or(numbers.units); }
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

/// Adds to the report what the solution has come to since.
void writeParts(Run& run) {
    writeReport(run.next, run.problem, run.sections, run.solved,
                [&run](const PrintLines& lines) { run.report += lines.content(); });
}

bool readAndTell(Run& run, const std::string& text, const std::string& name) {
    const ReadResult result =
        readProblem(run.problem, text, name, &run.fault, &run.numbers, &run.remarks);
    return tellReading(run.prompts, name, result);
}

/// True when the problem is complete and its echo is written.
bool open(Run& run) {
    const std::string name = run.job.inputPath.string();
    const std::string text = readInputFile(name);
    clearProblemData(run.problem);
    if (!goOnWithFile(run.prompts, name, text.size()) || !readAndTell(run, text, name)) {
        run.prompts.messages.back().place = faultText(run.fault);
        clearProblemData(run.problem);
        run.fail(FailureCode::InputRefused);
        return false;
    }
    run.opened = true;
    writeParts(run);
    return true;
}

/// True where a step has reached its value; else its failure is told.
template <class Value>
bool reached(Run& run, const Reached<Value>& step) {
    if (!step) {
        run.solved.failure = step.failure();
        tellFailure(run.prompts, step.failure());
    }
    return static_cast<bool>(step);
}

/// The wall, its report and the moment reduction with the default sections.
bool solveLevels(Run& run) {
    const auto results = solveWall(run.workspace);
    if (!reached(run, results)) {
        return false;
    }
    run.solved.results = &*results;
    writeParts(run);
    LoadPileDefaults(run.sections); // a sheet has them for any wall
    if (!reducesMoments(run.problem)) {
        return true;
    }
    const auto reduction = reduceWallMoments(run.workspace, run.sections);
    if (!reached(run, reduction)) {
        return false;
    }
    run.solved.reduction = &*reduction;
    writeParts(run);
    return true;
}

korvane::Options roadOptions(Run& run) {
    korvane::Options options;
    options.wedge = run.options.fixedSurface ? WedgeMethod::FixedSurface : WedgeMethod::Sweep;
    options.keepDetails = run.options.sheet;
    options.factorLimit.largest = run.options.maxFs;
    options.factorLimit.ask = [&run](double limit) {
        return run.prompts.goBeyond(limit, run.options.maxFs);
    };
    return options;
}

/// The notes that are asked for: beside JSON, a sheet and a comparison all of them.
NoteRequest noteRequest(const Run& run) {
    const Options& options = run.options;
    const bool all = !options.quiet || options.json || options.sheet || options.compare;
    const NoteWork work = !options.notes ? NoteWork::None
                          : all          ? NoteWork::All
                                         : NoteWork::UnsafeOnly;
    return {.problem = run.problem, .work = work, .units = run.units(), .read = &run.remarks};
}

void compare(Run& run) {
    run.comparison = compareWall({.problem = run.problem,
                                  .options = roadOptions(run),
                                  .ownRows = &run.options.ownRows,
                                  .units = run.numbers.units},
                                 run.second.get());
}

/// The road of a solution with its reports; a fault of a report fails it like one of the solution.
void solveWithReports(Run& run) {
    const korvane::Options options = roadOptions(run);
    const auto review = reviewWall(run.problem, options, run.workspace);
    if (!reached(run, review)) {
        return;
    }
    run.solved.review = &*review;
    writeParts(run);
    if (solveLevels(run)) {
        run.status = StatusSolved;
    }
}

void tellError(Run& run, const RuntimeError& fault) {
    run.prompts.Ask({.text = runtimeErrorMessage(fault.number()), .icon = Icon::Critical});
    run.raise(StatusError);
}

/// True for a fault of files or memory, which says nothing of the wall or its file.
bool breaksRun(int error) {
    return error == OutOfMemory || error == InternalError || error >= 52;
}

/// Tells a fault outside the solution.
void tellFault(Run& run, const RuntimeError& fault) {
    run.broken = run.broken || breaksRun(fault.number());
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

/// Ends a run whose solution met a fault of files or memory.
bool isBroken(Run& run) {
    if (!breaksRun(run.solved.failure.error)) {
        return false;
    }
    run.broken = true;
    run.raise(run.solved.failure.error >= 52 ? StatusFailed : StatusError);
    return true;
}

/// Tells what refuses an input before it is solved and the notes on the input alone; a refusal or
/// an unsafe note fails it.
void check(Run& run) {
    run.solved.failure = prepareWall(run.problem, roadOptions(run), run.workspace);
    if (run.solved.failure) {
        tellFailure(run.prompts, run.solved.failure);
    }
    if (isBroken(run)) {
        return;
    }
    run.status = run.solved.failure ? StatusFailed : StatusSolved;
    run.notes = notesOnInput(noteRequest(run));
    if (countOf(run.notes, Severity::Unsafe) > 0) {
        run.raise(StatusFailed);
    }
}

void solve(Run& run) {
    bool complete = false;
    if (!guarded(run, [&] { complete = open(run); }) || !complete) {
        return;
    }
    if (run.options.check) {
        run.stage = {Doing::Preparing};
        guarded(run, [&] { check(run); });
        return;
    }
    run.stage = {Doing::Reporting};
    const auto fault = runGuarded([&] { solveWithReports(run); });
    takeSeepage(run.workspace, run.problem);
    if (fault) {
        run.status = StatusFailed;
        run.fail(FailureCode::RunTimeError, fault->number());
        tellFailure(run.prompts, run.solved.failure);
    }
    if (isBroken(run)) {
        return;
    }
    guarded(run, [&run] {
        run.notes = notesOnSolution(noteRequest(run), run.solved, roadOptions(run), run.second);
    });
    if (run.options.compare) {
        guarded(run, [&run] { compare(run); });
    }
}

/// The outputs of one input, beside their places.
struct Outputs {
    std::optional<PendingFile> report;
    std::deque<PendingFile> figures;
    std::optional<PendingFile> sheet;
    std::optional<PendingFile> json;
    std::vector<std::filesystem::path> stale; ///< of an earlier run
};

/// True for a figure, JSON file or sheet that this program has written.
bool isOurs(const std::filesystem::path& file) {
    std::error_code unreachable;
    if (!std::filesystem::is_regular_file(file, unreachable)) {
        return false; // a pipe, a socket, a link that leads nowhere
    }
    if (file.extension() == ".html") {
        return isSheetFile(readHead(file, SheetHeadBytes));
    }
    constexpr std::string_view figure = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                        "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"";
    constexpr std::string_view results = "{\n \"schema\": ";
    const std::string_view ours = file.extension() == ".svg" ? figure : results;
    return readHead(file, ours.size()) == ours;
}

std::string json(const Run& run) {
    return jsonResults({.input = run.job.input,
                        .options = run.options,
                        .status = run.status,
                        .messages = run.prompts.messages,
                        .problem = run.problem,
                        .sections = run.sections,
                        .solved = run.solved,
                        .fault = run.fault,
                        .units = run.units(),
                        .notes = run.options.notes ? &run.notes : nullptr,
                        .comparison = run.options.compare ? &run.comparison : nullptr});
}

/// Of what the solution has come to; nothing of a refused input.
void prepareSheet(Run& run, Outputs& outputs) {
    const korvane::Options options = roadOptions(run);
    CalculationSheet sheet =
        calculationSheet({.problem = run.problem,
                          .sections = run.sections,
                          .solved = run.solved,
                          .options = options,
                          .notes = run.notes,
                          .units = run.units(),
                          .inputName = run.job.inputPath.filename().string(),
                          .comparison = run.options.compare ? &run.comparison : nullptr,
                          .notesWorkedOut = run.options.notes});
    run.checks = std::move(sheet.checks);
    outputs.sheet.emplace(run.job.sheetPath, sheet.html, Flush::None);
}

void prepareOutputs(Run& run, Outputs& outputs) {
    const Job& job = run.job;
    std::copy_if(job.stale.begin(), job.stale.end(), std::back_inserter(outputs.stale), isOurs);
    if (!job.reportPath.empty()) {
        outputs.report.emplace(job.reportPath, run.report, Flush::None);
    }
    if (job.plots && run.opened) {
        const PlotData data{run.problem, run.workspace.results(), run.sections,
                            run.workspace.reduction()};
        const std::filesystem::path folder = job.reportPath.parent_path();
        const std::string stem = job.reportPath.stem().string();
        visitFigures(data, run.status == StatusSolved, [&](const Figure& figure) {
            outputs.figures.emplace_back(folder / Job::figureName(stem, figure.name),
                                         svgFigure(figure), Flush::None);
        });
    }
    if (!job.sheetPath.empty() && run.opened) {
        prepareSheet(run, outputs);
    } else if (!job.sheetPath.empty() && isOurs(job.sheetPath)) {
        outputs.stale.push_back(job.sheetPath);
    }
    if (!job.jsonPath.empty()) {
        outputs.json.emplace(job.jsonPath, json(run), Flush::None);
    }
}

/// No old figure, sheet or JSON may stand beside a new report, whatever fails later.
void removeOldOutputs(const Job& job, Outputs& outputs) {
    std::unordered_set<std::string_view> kept;
    for (PendingFile& figure : outputs.figures) {
        figure.clearPlace();
        kept.insert(figure.path().native());
    }
    for (const std::filesystem::path& figure : job.oldFigures) {
        if (kept.count(figure.native()) == 0) { // a link to what is written anew stays
            removeFile(figure);
        }
    }
    for (std::optional<PendingFile>* file : {&outputs.sheet, &outputs.json}) {
        if (*file) {
            (*file)->clearPlace();
        }
    }
    for (const std::filesystem::path& file : outputs.stale) {
        removeFile(file);
    }
}

/// The JSON tells how the others fared.
void placeOutputs(Run& run, Outputs& outputs) {
    const std::size_t told = run.prompts.messages.size();
    if (outputs.report) {
        guarded(run, [&] { outputs.report->place(); });
    }
    for (PendingFile& figure : outputs.figures) {
        guarded(run, [&] { figure.place(); });
    }
    if (outputs.sheet) {
        guarded(run, [&] { outputs.sheet->place(); });
    }
    if (outputs.json) {
        guarded(run, [&] {
            if (run.prompts.messages.size() != told) {
                outputs.json.emplace(run.job.jsonPath, json(run), Flush::None);
            }
            outputs.json->place();
        });
    }
}

void writeOutputs(Run& run) {
    Outputs outputs;
    if (guarded(run, [&] { prepareOutputs(run, outputs); }) &&
        guarded(run, [&] { removeOldOutputs(run.job, outputs); })) {
        placeOutputs(run, outputs);
    }
}

/// What was asked for beside the report and needs an input that was read.
std::string withheldText(const Run& run) {
    const Options& options = run.options;
    if (run.opened || (!options.sheet && !options.compare)) {
        return {};
    }
    const std::string what = !options.compare ? "no calculation sheet"
                             : !options.sheet ? "no comparison"
                                              : "no calculation sheet and no comparison";
    const bool refused = run.solved.failure.code == FailureCode::InputRefused;
    return what + (refused ? ": the input was refused" : ": the input could not be read");
}

} // namespace

Outcome solveInput(const Job& job, const Options& options, Workspace& workspace,
                   NoteWorkspace& second) {
    Run run{.job = job, .options = options, .workspace = workspace, .second = second};
    solve(run);
    if (!run.broken && !options.check) {
        run.stage = {Doing::Reporting};
        writeOutputs(run);
        guarded(run, [&] { tellFilesLeft(run.prompts); });
    }
    Outcome outcome;
    if (job.reportPath.empty() && !run.broken && !options.check) {
        outcome.report = std::move(run.report);
    }
    if (!run.comparison.rows.empty()) {
        outcome.comparison =
            comparisonText(comparisonTable(run.comparison, run.problem.ProgramMode, run.units()));
    }
    outcome.withheld = withheldText(run);
    if (run.solved.failure) {
        outcome.during = stageText(run.solved.failure.stage, run.problem.WallType);
    }
    outcome.status = run.status;
    outcome.messages = std::move(run.prompts.messages);
    outcome.notes = std::move(run.notes);
    tellChecks(run.checks, outcome);
    return outcome;
}

void tellChecks(const std::vector<Check>& checks, Outcome& outcome) {
    for (const Check& check : checks) {
        if (!check.pass) {
            outcome.failedChecks.push_back(check);
            outcome.status = std::max(outcome.status, StatusFailed);
        }
    }
}

std::string checkLineOf(const std::string& input, const Check& check) {
    return messageText(input) + ": sheet: " + checkLine(check);
}

std::string noteLineOf(const std::string& input, const Note& note) {
    return messageText(input) + ": note: " + noteLine(note);
}

std::string messageLine(const std::string& input, const Message& message) {
    const std::string text = messageText(input) + ": [" + messageText(message.box.title) + "] " +
                             messageText(message.box.text);
    std::string line;
    for (const char c : text) {
        c == '\n' ? line += " / " : line += c;
    }
    if (!message.place.empty()) {
        line += "\n" + messageText(input) + ":" + messageText(message.place);
    }
    return line;
}

} // namespace korvane::batch
