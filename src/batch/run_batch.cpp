#include "batch/run_batch.h"

#include "batch/convert_input.h"
#include "batch/options.h"
#include "batch/solve_input.h"
#include "batch/verify_cases.h"
#include "runtime/dates.h"
#include "runtime/file_text.h"
#include "runtime/run_guarded.h"
#include "runtime/utf8_text.h"

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <ostream>
#include <system_error>
#include <thread>

namespace korvane::batch {

namespace {

/// Solves the jobs in several threads, as many as can be started, and hands their outcomes over in
/// order. A single one, or none that starts, leaves the work to the caller's thread.
class Workers {
  public:
    Workers(const std::vector<Job>& jobs, const Options& options)
        : jobs_(jobs), options_(options), outcomes_(jobs.size()) {
        const std::size_t count =
            std::min(jobs.size(), static_cast<std::size_t>(std::max(1, options.jobs)));
        runGuarded([&] {
            for (std::size_t i = 0; count > 1 && i < count; ++i) {
                threads_.emplace_back([this] { work(); });
            }
        });
    }

    /// Waits for a job's outcome.
    Outcome take(std::size_t job) {
        if (threads_.empty()) {
            return solved(job, workspace_, second_);
        }
        std::unique_lock lock(mutex_);
        ready_.wait(lock, [&] { return outcomes_[job].has_value(); });
        Outcome outcome = std::move(*outcomes_[job]);
        outcomes_[job].reset();
        return outcome;
    }

  private:
    /// A workspace that has seen a fault is not used again.
    Outcome solved(std::size_t job, std::optional<Workspace>& workspace, NoteWorkspace& second) {
        Outcome outcome;
        const auto fault = runGuarded([&] {
            if (!workspace) {
                workspace.emplace();
            }
            outcome = solveInput(jobs_[job], options_, *workspace, second);
        });
        if (fault) {
            outcome.status = StatusError;
            outcome.fault = fault->number();
        }
        if (outcome.status == StatusError) {
            workspace.reset();
        }
        return outcome;
    }

    void work() {
        std::optional<Workspace> workspace;
        NoteWorkspace second;
        std::unique_lock lock(mutex_);
        while (next_ < jobs_.size()) {
            const std::size_t job = next_++;
            lock.unlock();
            Outcome outcome = solved(job, workspace, second);
            lock.lock();
            outcomes_[job] = std::move(outcome);
            ready_.notify_one();
        }
    }

    const std::vector<Job>& jobs_;
    const Options& options_;
    std::mutex mutex_;
    std::condition_variable ready_;
    std::size_t next_ = 0;
    std::vector<std::optional<Outcome>> outcomes_;
    std::optional<Workspace> workspace_; ///< of the caller's thread
    NoteWorkspace second_;               ///< likewise
    std::vector<std::jthread> threads_;  ///< last: joined before the rest goes
};

/// "n of m inputs done": redrawn in place on a terminal, elsewhere written once at the end. Before
/// that, on a terminal, "n of m inputs planned".
class Progress {
  public:
    Progress(std::ostream& err, std::size_t total, bool shown, bool terminal)
        : err_(err), total_(total), shown_(shown), terminal_(terminal) {}

    void clear() {
        if (shown_ && terminal_) {
            err_ << "\r\033[K";
        }
    }
    void showPlanned(std::size_t planned) {
        constexpr std::size_t step = 500;
        if (shown_ && terminal_ && planned % step == 0) {
            err_ << "\r\033[K" << planned << " of " << total_ << " inputs planned" << std::flush;
        }
    }
    void show(std::size_t done) {
        if (shown_ && (terminal_ || done == total_)) {
            err_ << done << " of " << total_ << " inputs done" << (done == total_ ? "\n" : "")
                 << std::flush;
        }
    }

  private:
    std::ostream& err_;
    std::size_t total_;
    bool shown_;
    bool terminal_;
};

/// What came up with an input, a line each.
std::string messageLines(const std::string& input, const Outcome& outcome, bool quiet) {
    std::string lines;
    for (const Message& message : outcome.messages) {
        lines += messageLine(input, message) + "\n";
    }
    if (outcome.fault != 0) {
        const MessageBox box{.text = runtimeErrorMessage(outcome.fault), .icon = Icon::Critical};
        lines += messageLine(input, {box}) + "\n";
    }
    if (!outcome.during.empty()) {
        lines += messageText(input) + ": while " + outcome.during + "\n";
    }
    if (!outcome.withheld.empty()) {
        lines += messageText(input) + ": " + outcome.withheld + "\n";
    }
    for (const Check& check : outcome.failedChecks) {
        lines += checkLineOf(input, check) + "\n";
    }
    for (const Note& note : outcome.notes) {
        if (!quiet || note.severity == Severity::Unsafe) {
            lines += noteLineOf(input, note) + "\n";
        }
    }
    return lines;
}

/// Tables one after another, each under its input where there are several.
void tellComparison(std::ostream& out, const std::string& input, const Outcome& outcome,
                    bool several, bool first) {
    if (outcome.comparison.empty()) {
        return;
    }
    if (several) {
        out << (first ? "" : "\n") << messageText(input) << ":\n";
    }
    out << outcome.comparison;
}

/// The fault stands as it is: whoever hands it over has made its parts fit to be shown.
int usageFaultLine(std::ostream& err, const std::string& fault) {
    err << "korvane-batch: " << fault << "\n";
    return StatusUsage;
}
int usageFault(std::ostream& err, const std::string& fault) {
    return usageFaultLine(err, messageText(fault));
}

/// Reads the rows of one's own; "", or what is wrong with their file.
std::string takeOwnRows(Options& options) {
    if (options.compareWith.empty()) {
        return {};
    }
    std::string text;
    const auto fault = runGuarded([&] { text = readInputFile(options.compareWith); });
    if (fault) {
        return messageText(options.compareWith) + ": " + fault->what() + ".";
    }
    ReadOwnRows read = readOwnRows(text);
    options.ownRows = std::move(read.rows);
    return read.fault.empty() ? ""
                              : messageText(options.compareWith) + ":" + std::to_string(read.line) +
                                    ": " + messageText(read.fault);
}

int solveAll(const std::vector<Job>& jobs, const Options& options, std::ostream& out,
             std::ostream& err, Progress& progress) {
    int status = StatusSolved;
    bool compared = false;
    Workers workers(jobs, options);
    for (std::size_t i = 0; i < jobs.size(); ++i) {
        const Outcome outcome = workers.take(i);
        progress.clear();
        err << messageLines(jobs[i].input, outcome, options.quiet) << std::flush;
        out << outcome.report;
        tellComparison(out, jobs[i].input, outcome, jobs.size() > 1, !compared);
        compared = compared || !outcome.comparison.empty();
        progress.show(i + 1);
        status = std::max(status, outcome.status);
    }
    if (!out.flush()) {
        err << "korvane-batch: standard output cannot be written.\n";
        status = std::max(status, StatusFailed);
    }
    return status;
}

} // namespace

int runBatch(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err,
             bool terminal) {
    CommandLine commandLine = readCommandLine(arguments);
    if (!commandLine.options) {
        (commandLine.status == StatusSolved ? out : err) << commandLine.text << std::flush;
        return commandLine.status;
    }
    Options& options = *commandLine.options;
    if (wrongFixedMoment()) {
        return usageFault(err, "SOURCE_DATE_EPOCH is no number of seconds.");
    }
    if (options.verify) {
        return verifyShippedCases(options.json, out, err);
    }
    const std::size_t total = options.inputs.size();
    Progress progress(err, total, total > 1 && !options.quiet, terminal);
    const Plan plan =
        planJobs(options, [&](std::size_t planned) { progress.showPlanned(planned); });
    progress.clear();
    if (!plan.fault.empty()) {
        return usageFault(err, plan.fault);
    }
    if (const std::string fault = takeOwnRows(options); !fault.empty()) {
        return usageFaultLine(err, fault);
    }
    if (!options.outputDir.empty()) {
        std::error_code failure;
        std::filesystem::create_directories(options.outputDir, failure);
        if (!std::filesystem::is_directory(options.outputDir, failure)) {
            return usageFault(err, options.outputDir + ": no folder, and none can be made.");
        }
    }
    if (options.convert) {
        return convertInput(plan.jobs.front(), *options.convert, out, err);
    }
    return solveAll(plan.jobs, options, out, err, progress);
}

} // namespace korvane::batch
