#include "study/run.h"

#include "study/interruption.h"
#include "study/statistics.h"
#include "study/target.h"

#include "runtime/run_guarded.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <filesystem>
#include <map>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

namespace korvane::study {

namespace {

namespace fs = std::filesystem;

/// Variants that a thread takes at once, and blocks that may wait for their turn to be stored.
constexpr std::uint64_t BlockSize = 256;
constexpr std::size_t MostWaiting = 64;
/// Time between two commits and calls of `tell`.
constexpr std::chrono::milliseconds Interval{500};

using Clock = std::chrono::steady_clock;

/// Hands out blocks of indices and takes their rows back in order.
class Workshop {
  public:
    Workshop(const Study& study, const Plan& plan, Share share)
        : study_(study), plan_(plan), share_(share), given_(share.from), wanted_(share.from) {}

    /// One thread's work.
    void work() {
        Plan plan = plan_;
        Evaluation evaluation(study_);
        std::vector<double> numbers;
        for (Share block; takeBlock(block);) {
            std::vector<Row> rows(static_cast<std::size_t>(block.to - block.from));
            for (std::uint64_t id = block.from; id < block.to; ++id) {
                Row& row = rows[static_cast<std::size_t>(id - block.from)];
                plan.numbers(id, numbers);
                evaluation.fill(numbers, row);
                row.id = id;
                row.weight = plan.weight();
            }
            {
                const std::lock_guard lock(mutex_);
                finished_.emplace(block.from, std::move(rows));
            }
            changed_.notify_all(); // behind the lock, which whoever wakes up takes
        }
    }

    /// The next block in order; empty at the end, and after `patience` without one.
    std::vector<Row> next(Clock::time_point patience) {
        std::unique_lock lock(mutex_);
        changed_.wait_until(lock, patience, [this] {
            return !fault_.empty() || wanted_ == share_.to || finished_.contains(wanted_);
        });
        const auto found = finished_.find(wanted_);
        if (found == finished_.end()) {
            return {};
        }
        std::vector<Row> rows = std::move(found->second);
        finished_.erase(found);
        wanted_ += rows.size();
        changed_.notify_all();
        return rows;
    }

    bool isOver() {
        const std::lock_guard lock(mutex_);
        return wanted_ == share_.to || !fault_.empty();
    }

    /// No more blocks are handed out.
    void stop() {
        const std::lock_guard lock(mutex_);
        stopped_ = true;
        changed_.notify_all();
    }
    /// A thread has ended by a fault.
    void breakOff(const std::string& fault) {
        const std::lock_guard lock(mutex_);
        stopped_ = true;
        fault_ = fault_.empty() ? fault : fault_;
        changed_.notify_all();
    }
    /// Why a thread has ended; empty where none has.
    std::string fault() {
        const std::lock_guard lock(mutex_);
        return fault_;
    }

  private:
    bool takeBlock(Share& block) {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [this] {
            return stopped_ || given_ == share_.to || given_ < wanted_ + MostWaiting * BlockSize;
        });
        if (stopped_ || given_ == share_.to) {
            return false;
        }
        block = {given_, std::min(given_ + BlockSize, share_.to)};
        given_ = block.to;
        return true;
    }

    const Study& study_;
    const Plan& plan_;
    Share share_;
    std::mutex mutex_;
    std::condition_variable changed_;
    std::uint64_t given_;
    std::uint64_t wanted_;
    std::map<std::uint64_t, std::vector<Row>> finished_;
    bool stopped_ = false;
    std::string fault_;
};

/// Threads that end with the object.
class Crew {
  public:
    Crew(Workshop& workshop, int jobs) : workshop_(workshop) {
        for (int n = 0; n < jobs; ++n) {
            // Those that can start do the work of the others.
            const auto fault = runGuarded([&] {
                threads_.emplace_back([this] {
                    if (const auto ended = runGuarded([this] { workshop_.work(); })) {
                        workshop_.breakOff(ended->what());
                    }
                });
            });
            if (fault && threads_.empty()) {
                throw StoreFault{std::string("no thread can start: ") + fault->what()};
            }
        }
    }
    ~Crew() { join(); }
    Crew(const Crew&) = delete;
    Crew& operator=(const Crew&) = delete;

    /// After the end of all: why one has ended by a fault.
    std::string join() {
        workshop_.stop();
        for (std::thread& thread : threads_) {
            if (thread.joinable()) {
                thread.join();
            }
        }
        return workshop_.fault();
    }

  private:
    Workshop& workshop_;
    std::vector<std::thread> threads_;
};

bool isStopped(const RunRequest& request) {
    return request.stop && request.stop();
}

void say(const RunRequest& request, const std::string& step) {
    if (request.say) {
        request.say(step);
    }
}

/// A search hangs together: it is gone through anew, and rows that are there stay. False where it
/// was stopped.
bool storeTarget(const RunRequest& request, Store& store) {
    const Study& study = request.study;
    const TargetFound found = findTarget(study, request.stop);
    if (isStopped(request)) {
        return false;
    }
    store.begin();
    for (const Row& row : found.rows) {
        if (row.id >= store.next()) {
            store.append(study, row);
        }
    }
    Tally tally(study);
    tally.addAll(store);
    std::vector<Statistic> all = statisticsOf(study, store, std::move(tally), {});
    addTarget(all, study, found);
    store.writeVariables(study);
    store.writeStatistics(all);
    store.setProvenance("complete", "yes");
    store.commit();
    return true;
}

/// What the sample and the statistics of a reliability go by; none of any other study.
std::vector<FirstOrder> firstOrdersOf(const Study& study, const std::function<bool()>& stop = {}) {
    return study.method == Method::Reliability ? firstOrders(study, stop)
                                               : std::vector<FirstOrder>();
}

/// Those of all limit states that have one.
std::vector<std::vector<double>> designPoints(const std::vector<FirstOrder>& found) {
    std::vector<std::vector<double>> points;
    for (const FirstOrder& one : found) {
        points.insert(points.end(), one.points.begin(), one.points.end());
    }
    return points;
}

/// With the statistics of a file that holds all rows. Those that the tally has not seen, stored by
/// earlier runs or taken from parts, are read for it.
void finish(const Study& study, Store& store, const std::vector<FirstOrder>* found, Tally tally) {
    store.begin();
    store.writeVariables(study);
    if (found != nullptr) {
        if (tally.rows() != store.next()) {
            tally = Tally(study);
            tally.addAll(store);
        }
        store.writeStatistics(statisticsOf(study, store, std::move(tally), *found));
    }
    store.setProvenance("complete", "yes");
    store.commit();
}

/// Why a part cannot be taken; empty where it can.
std::string partFault(const std::string& path) {
    if (!fs::exists(path)) {
        return path + " is missing";
    }
    try {
        return Store(path).isComplete() ? "" : path + " is not finished";
    } catch (const StoreFault& fault) {
        return fault.text;
    }
}

} // namespace

void runShare(const RunRequest& request, Plan& plan, Store& store, const Share& share,
              Tally& tally) {
    const auto start = Clock::now();
    Progress progress{.done = store.next() - share.from,
                      .size = share.to - share.from,
                      .before = store.next() - share.from};
    Workshop workshop(request.study, plan, {store.next(), share.to});
    Crew crew(workshop, request.jobs);
    while (!workshop.isOver() && !(request.stop && request.stop())) {
        store.begin();
        const auto until = Clock::now() + Interval;
        while (!workshop.isOver() && Clock::now() < until && !(request.stop && request.stop())) {
            for (const Row& row : workshop.next(until)) {
                store.append(request.study, row);
                tally.add(row);
            }
        }
        store.commit();
        progress.done = store.next() - share.from;
        progress.seconds = std::chrono::duration<double>(Clock::now() - start).count();
        if (request.tell) {
            request.tell(progress);
        }
    }
    const std::string fault = crew.join();
    if (!fault.empty()) {
        throw StoreFault{fault};
    }
}

bool runStudy(const RunRequest& request) {
    Plan plan(request.study);
    if (plan.size() == 0 && request.parts > 1) {
        throw UsageFault{{std::string("the method ") + methodName(request.study.method) +
                          " has no variants to share between parts"}};
    }
    claimFolder(request.folder, request.study);
    const Share share = shareOf(plan.size(), request.part, request.parts);
    Store store((fs::path(request.folder) / fileOfPart(request.part, request.parts)).string(),
                request.study, share.from, share.to);
    if (store.isComplete()) {
        return true;
    }
    if (request.study.method == Method::Target) {
        say(request, "looking for the target");
        return storeTarget(request, store);
    }
    const bool isWhole = request.parts == 1;
    std::vector<FirstOrder> found;
    if (isWhole || isWeighted(request.study)) {
        if (request.study.method == Method::Reliability) {
            say(request, "looking for design points");
        }
        found = firstOrdersOf(request.study, request.stop);
    }
    if (isStopped(request)) {
        return false;
    }
    if (isWeighted(request.study)) {
        plan.drawAround(designPoints(found));
    }
    Tally tally(request.study, isWhole ? Tally::MostKept : 0);
    runShare(request, plan, store, share, tally);
    if (store.next() < share.to) {
        return false;
    }
    if (isWhole) {
        say(request, "statistics");
    }
    finish(request.study, store, isWhole ? &found : nullptr, std::move(tally));
    return true;
}

void collectParts(const std::string& folder, const std::function<void(const std::string&)>& say) {
    const std::uint64_t parts = partsIn(folder);
    const CollectionLock lock(folder);
    std::string faults;
    for (std::uint64_t part = 1; part <= parts; ++part) {
        say("checking part " + std::to_string(part) + " of " + std::to_string(parts));
        const std::string fault = partFault((fs::path(folder) / fileOfPart(part, parts)).string());
        faults += fault.empty() ? "" : (faults.empty() ? "" : "\n") + fault;
    }
    if (!faults.empty()) {
        throw StoreFault{faults};
    }
    const Store first((fs::path(folder) / fileOfPart(1, parts)).string());
    const ReadStudy read =
        readStudy(folder, first.provenance("studyText"), first.provenance("baseText"));
    if (!read.fault.empty()) {
        throw StoreFault{read.fault};
    }
    const std::uint64_t size = Plan(read.study).size();
    if (const fs::path old = fs::path(folder) / fileOfPart(1, 1); fs::exists(old)) {
        Store(old.string()).checkSame(read.study); // no journal of it may outlive it
    }
    for (std::uint64_t part = 1; part <= parts; ++part) {
        const Share share = shareOf(size, part, parts);
        Store((fs::path(folder) / fileOfPart(part, parts)).string(), Store::Look::Briefly)
            .checkSame(read.study, share.from, share.to);
    }
    // A collection that was killed is begun anew, without what its journal remembers.
    const fs::path unfinished = fs::path(folder) / "collecting.sqlite";
    std::error_code ignored;
    fs::remove(unfinished, ignored);
    fs::remove(unfinished.string() + "-journal", ignored);
    {
        Store whole(unfinished.string(), read.study, 0, size);
        for (std::uint64_t part = 1; part <= parts; ++part) {
            say("merging part " + std::to_string(part) + " of " + std::to_string(parts));
            whole.take((fs::path(folder) / fileOfPart(part, parts)).string());
        }
        if (whole.next() != size) {
            throw StoreFault{folder + " has changed while its parts were merged"};
        }
        say("statistics");
        const std::vector<FirstOrder> found =
            firstOrdersOf(read.study, [] { return signalSeen() != 0; });
        if (signalSeen() != 0) {
            throw Interrupted{};
        }
        finish(read.study, whole, &found, Tally(read.study));
    }
    std::error_code fault;
    fs::rename(unfinished, fs::path(folder) / fileOfPart(1, 1), fault);
    if (fault) {
        throw StoreFault{folder + ": " + fault.message()};
    }
}

} // namespace korvane::study
