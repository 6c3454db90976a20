#include "batch/run_batch.h"

#include "batch/options.h"
#include "batch/solve_input.h"
#include "runtime/run_guarded.h"

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <ostream>
#include <system_error>
#include <thread>

namespace korvane::batch {

namespace {

/// Solves the jobs in several threads and hands their outcomes over in order.
class Workers {
  public:
    Workers(const std::vector<Job>& jobs, const Options& options)
        : jobs_(jobs), options_(options), outcomes_(jobs.size()) {
        const std::size_t count =
            std::min(jobs.size(), static_cast<std::size_t>(std::max(1, options.jobs)));
        for (std::size_t i = 0; i < count; ++i) {
            threads_.emplace_back([this] { work(); });
        }
    }

    /// Waits for a job's outcome.
    Outcome take(std::size_t job) {
        std::unique_lock lock(mutex_);
        ready_.wait(lock, [&] { return outcomes_[job].has_value(); });
        Outcome outcome = std::move(*outcomes_[job]);
        outcomes_[job].reset();
        return outcome;
    }

  private:
    void work() {
        Workspace workspace;
        for (;;) {
            std::unique_lock lock(mutex_);
            const std::size_t job = next_++;
            if (job >= jobs_.size()) {
                return;
            }
            lock.unlock();
            Outcome outcome{.status = StatusError, .messages = {}, .during = {}, .report = {}};
            runGuarded([&] { outcome = solveInput(jobs_[job], options_, workspace); });
            lock.lock();
            outcomes_[job] = std::move(outcome);
            ready_.notify_all();
        }
    }

    const std::vector<Job>& jobs_;
    const Options& options_;
    std::mutex mutex_;
    std::condition_variable ready_;
    std::size_t next_ = 0;
    std::vector<std::optional<Outcome>> outcomes_;
    std::vector<std::jthread> threads_; ///< last: joined before the rest goes
};

/// "n of m inputs done": redrawn in place on a terminal, elsewhere written once at the end.
class Progress {
  public:
    Progress(std::ostream& err, std::size_t total, bool shown, bool terminal)
        : err_(err), total_(total), shown_(shown), terminal_(terminal) {}

    void clear() {
        if (shown_ && terminal_) {
            err_ << "\r\033[K";
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

int usageFault(std::ostream& err, const std::string& fault) {
    err << "korvane-batch: " << fault << "\n";
    return StatusUsage;
}

int solveAll(const std::vector<Job>& jobs, const Options& options, std::ostream& out,
             std::ostream& err, bool terminal) {
    int status = StatusSolved;
    Progress progress(err, jobs.size(), jobs.size() > 1 && !options.quiet, terminal);
    Workers workers(jobs, options);
    for (std::size_t i = 0; i < jobs.size(); ++i) {
        const Outcome outcome = workers.take(i);
        progress.clear();
        for (const Message& message : outcome.messages) {
            err << messageLine(jobs[i].input, message) << "\n";
        }
        if (!outcome.during.empty()) {
            err << jobs[i].input << ": while " << outcome.during << "\n";
        }
        err.flush();
        out << outcome.report;
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
    const CommandLine commandLine = readCommandLine(arguments);
    if (!commandLine.options) {
        (commandLine.status == StatusSolved ? out : err) << commandLine.text << std::flush;
        return commandLine.status;
    }
    const Options& options = *commandLine.options;
    const Plan plan = planJobs(options);
    if (!plan.fault.empty()) {
        return usageFault(err, plan.fault);
    }
    if (!options.outputDir.empty()) {
        std::error_code failure;
        std::filesystem::create_directories(options.outputDir, failure);
        if (!std::filesystem::is_directory(options.outputDir, failure)) {
            return usageFault(err, options.outputDir + ": no folder, and none can be made.");
        }
    }
    return solveAll(plan.jobs, options, out, err, terminal);
}

} // namespace korvane::batch
