// Where the results of each input go.
#include "batch/options.h"
#include "plots/figures.h"
#include "runtime/file_text.h"

#include <memory>
#include <system_error>
#include <unordered_map>
#include <unordered_set>

#include <dirent.h>
#include <sys/stat.h>

namespace korvane::batch {

namespace {

namespace fs = std::filesystem;

/// The names in folders, each read once.
class Listings {
  public:
    bool has(const fs::path& file) {
        const auto [place, isNew] = names_.try_emplace(file.parent_path().native());
        if (isNew) {
            // The standard's iterator would end the process where memory is short.
            const std::unique_ptr<DIR, int (*)(DIR*)> folder(::opendir(place->first.c_str()),
                                                             ::closedir);
            while (const dirent* entry = folder ? ::readdir(folder.get()) : nullptr) {
                place->second.insert(entry->d_name);
            }
        }
        return place->second.count(file.filename().native()) != 0;
    }

  private:
    std::unordered_map<std::string, std::unordered_set<std::string>> names_;
};

/// The files that paths name once all links are followed, also where they do not exist yet. Each
/// folder is resolved once.
class Places {
  public:
    explicit Places(Listings& listings) : listings_(listings) {}

    fs::path of(const fs::path& path) {
        fs::path target = path;
        std::error_code failure;
        for (int links = 0; links < MostLinks && listings_.has(target); ++links) {
            struct stat status {};
            if (::lstat(target.c_str(), &status) != 0 || !S_ISLNK(status.st_mode)) {
                break;
            }
            target = target.parent_path() / fs::read_symlink(target, failure);
        }
        const fs::path name = target.filename();
        if (name.empty() || name == "." || name == "..") {
            return resolved(target);
        }
        const auto [place, isNew] = folders_.try_emplace(target.parent_path().native());
        if (isNew) {
            place->second = resolved(place->first);
        }
        return place->second / name;
    }

  private:
    static fs::path resolved(const fs::path& path) {
        std::error_code failure;
        const fs::path canonical = fs::weakly_canonical(path, failure);
        return failure ? path.lexically_normal() : canonical;
    }

    Listings& listings_;
    std::unordered_map<std::string, fs::path> folders_;
};

/// What an earlier run may have left beside the report and this one does not ask for.
std::vector<fs::path> staleOutputs(const Job& job, const std::vector<std::string>& figures,
                                   Listings& listings) {
    std::vector<fs::path> stale;
    if (job.reportPath.empty()) {
        return stale;
    }
    if (job.jsonPath.empty()) {
        fs::path json = job.reportPath;
        json.replace_extension(".json");
        if (listings.has(json)) {
            stale.push_back(json);
        }
    }
    for (const std::string& figure : job.plots ? std::vector<std::string>{} : figures) {
        const fs::path path = job.figurePath(figure);
        if (listings.has(path)) {
            stale.push_back(path);
        }
    }
    return stale;
}

/// `here` is the current folder.
Job planJob(const Options& options, const std::string& input, const fs::path& here) {
    Job job{.input = input,
            .inputPath = here / input,
            .reportPath = {},
            .jsonPath = {},
            .plots = options.plots,
            .stale = {}};
    if (options.output == "-" || options.check) {
        return job;
    }
    if (!options.output.empty()) {
        job.reportPath = here / options.output;
    } else {
        job.reportPath = job.inputPath;
        if (!options.outputDir.empty()) {
            job.reportPath = here / options.outputDir / job.inputPath.filename();
        }
        job.reportPath.replace_extension(".out");
    }
    if (options.json) {
        job.jsonPath = job.reportPath;
        job.jsonPath.replace_extension(".json");
    }
    return job;
}

std::string wrongCombination(const Options& options) {
    if (!options.output.empty() && options.inputs.size() > 1) {
        return "--output takes the report of a single input.";
    }
    if (options.convert && options.output.empty()) {
        return "--convert needs an output file (-o).";
    }
    if (options.convert && (options.json || options.plots || options.units)) {
        return "--convert writes the input alone: no --json, --plots or --units with it.";
    }
    const bool writes =
        !options.output.empty() || !options.outputDir.empty() || options.json || options.plots;
    if (options.convert && options.compare) {
        return "--convert solves nothing that could be compared.";
    }
    if (options.check && (writes || options.compare || !options.notes)) {
        return "--check tells notes and writes nothing.";
    }
    if (options.output == "-" && options.compare) {
        return "--compare needs a report file: the table goes to standard output.";
    }
    if (options.output == "-" && (options.json || options.plots)) {
        return "--json and --plots need a report file; the report goes to standard output.";
    }
    return {};
}

/// What keeps a file from being an input; "" nothing. What cannot be looked at is told later.
std::string unfitInput(const Job& job, const Options& options) {
    std::error_code ignored;
    switch (fs::status(job.inputPath, ignored).type()) {
    case fs::file_type::not_found:
        return job.input + ": no such file.";
    case fs::file_type::directory:
        return job.input + ": a folder, not an input file.";
    case fs::file_type::character:
    case fs::file_type::block:
        return job.input + ": a device, not an input file.";
    case fs::file_type::fifo:
        return options.output.empty() ? job.input + ": a pipe; name its report by --output." : "";
    default:
        return {};
    }
}

/// No input is one, whatever its name.
void findStaleOutputs(std::vector<Job>& jobs, Listings& listings) {
    const std::vector<std::string> figures = figureNames();
    Places places(listings);
    std::unordered_set<std::string> inputs;
    for (const Job& job : jobs) {
        inputs.insert(places.of(job.inputPath).native());
    }
    for (Job& job : jobs) {
        job.stale = staleOutputs(job, figures, listings);
        std::erase_if(job.stale, [&](const fs::path& file) {
            return inputs.count(places.of(file).native()) != 0;
        });
    }
}

/// Every file that a job may write.
std::vector<fs::path> outputsOf(const Job& job, const std::vector<std::string>& figures) {
    std::vector<fs::path> outputs;
    for (const fs::path& output : {job.reportPath, job.jsonPath}) {
        if (!output.empty()) {
            outputs.push_back(output);
        }
    }
    if (job.plots) {
        for (const std::string& figure : figures) {
            outputs.push_back(job.figurePath(figure));
        }
    }
    return outputs;
}

/// Tells of each job whose outputs collide with nothing.
std::string collision(const std::vector<Job>& jobs, const fs::path& ownRows, Listings& listings,
                      const Planned& planned) {
    Places places(listings);
    std::unordered_set<std::string> inputs;
    if (!ownRows.empty()) {
        inputs.insert(places.of(ownRows).native());
    }
    for (const Job& job : jobs) {
        inputs.insert(places.of(job.inputPath).native());
    }
    const std::vector<std::string> figures = figureNames();
    std::unordered_set<std::string> outputs;
    for (std::size_t i = 0; i < jobs.size(); ++i) {
        for (const fs::path& output : outputsOf(jobs[i], figures)) {
            const std::string file = places.of(output).native();
            if (inputs.count(file) != 0) {
                return output.string() + ": the output would be written over an input.";
            }
            if (!outputs.insert(file).second) {
                return output.string() + ": two outputs would go to one file.";
            }
        }
        planned(i + 1);
    }
    return {};
}

} // namespace

std::filesystem::path Job::figurePath(const std::string& figure) const {
    return reportPath.parent_path() / (reportPath.stem().string() + "-" + figure + ".svg");
}

Plan planJobs(const Options& options, const Planned& planned) {
    Plan plan;
    plan.fault = wrongCombination(options);
    const fs::path here = fs::current_path();
    for (const std::string& input : options.inputs) {
        plan.jobs.push_back(planJob(options, input, here));
        if (plan.fault.empty()) {
            plan.fault = unfitInput(plan.jobs.back(), options);
        }
    }
    Listings listings;
    if (plan.fault.empty()) {
        const fs::path ownRows = options.compareWith.empty() ? "" : here / options.compareWith;
        plan.fault = collision(plan.jobs, ownRows, listings, planned);
    }
    if (plan.fault.empty() && !options.convert) {
        findStaleOutputs(plan.jobs, listings);
    }
    return plan;
}

} // namespace korvane::batch
