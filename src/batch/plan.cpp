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
    using Names = std::unordered_set<std::string>;

    const Names& in(const fs::path& folder) {
        const auto [place, isNew] = names_.try_emplace(folder.native());
        if (isNew) {
            // The standard's iterator would end the process where memory is short.
            const std::unique_ptr<DIR, int (*)(DIR*)> open(::opendir(place->first.c_str()),
                                                           ::closedir);
            while (const dirent* entry = open ? ::readdir(open.get()) : nullptr) {
                place->second.insert(entry->d_name);
            }
        }
        return place->second;
    }
    bool has(const fs::path& file) {
        return in(file.parent_path()).count(file.filename().native()) != 0;
    }

  private:
    std::unordered_map<std::string, Names> names_;
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
        return folder(target.parent_path()) / name;
    }
    const fs::path& folder(const fs::path& path) {
        const auto [place, isNew] = folders_.try_emplace(path.native());
        if (isNew) {
            place->second = resolved(path);
        }
        return place->second;
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

/// The figures of a job that stand in its folder.
std::vector<fs::path> presentFigures(const Job& job, const std::vector<std::string>& figures,
                                     Listings& listings) {
    std::vector<fs::path> present;
    const Listings::Names& names = listings.in(job.reportPath.parent_path());
    const std::string stem = job.reportPath.stem().string();
    for (const std::string& figure : figures) {
        if (names.count(Job::figureName(stem, figure)) != 0) {
            present.push_back(job.figurePath(figure));
        }
    }
    return present;
}

/// What an earlier run may have left beside the report and this one does not ask for.
std::vector<fs::path> staleOutputs(const Job& job, const std::vector<std::string>& figures,
                                   Listings& listings) {
    std::vector<fs::path> stale;
    if (job.reportPath.empty()) {
        return stale;
    }
    if (!job.plots) {
        stale = presentFigures(job, figures, listings);
    }
    const auto list = [&](const char* extension) {
        fs::path file = job.reportPath;
        file.replace_extension(extension);
        if (listings.has(file)) {
            stale.push_back(file);
        }
    };
    if (job.jsonPath.empty()) {
        list(".json");
    }
    if (job.sheetPath.empty()) {
        list(".html");
    }
    return stale;
}

/// `here` is the current folder.
Job planJob(const Options& options, const std::string& input, const fs::path& here) {
    Job job{.input = input,
            .inputPath = here / input,
            .reportPath = {},
            .jsonPath = {},
            .sheetPath = {},
            .plots = options.plots,
            .stale = {},
            .oldFigures = {}};
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
    if (options.sheet) {
        job.sheetPath = job.reportPath;
        job.sheetPath.replace_extension(".html");
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
    if (options.convert && (options.json || options.plots || options.sheet || options.units)) {
        return "--convert writes the input alone: no --json, --plots, --sheet or --units with it.";
    }
    const bool writes = !options.output.empty() || !options.outputDir.empty() || options.json ||
                        options.plots || options.sheet;
    if (options.convert && options.compare) {
        return "--convert solves nothing that could be compared.";
    }
    if (options.check && (writes || options.compare || !options.notes)) {
        return "--check tells notes and writes nothing.";
    }
    if (options.output == "-" && options.compare) {
        return "--compare needs a report file: the table goes to standard output.";
    }
    if (options.output == "-" && (options.json || options.plots || options.sheet)) {
        return "--json, --plots and --sheet need a report file; the report goes to standard "
               "output.";
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

/// The files that the inputs name.
std::unordered_set<std::string> inputFiles(const std::vector<Job>& jobs, Places& places) {
    std::unordered_set<std::string> inputs;
    for (const Job& job : jobs) {
        inputs.insert(places.of(job.inputPath).native());
    }
    return inputs;
}

/// No input is one, whatever its name.
void findStaleOutputs(std::vector<Job>& jobs, const std::unordered_set<std::string>& inputs,
                      Places& places, Listings& listings) {
    const std::vector<std::string> figures = figureNames();
    for (Job& job : jobs) {
        job.stale = staleOutputs(job, figures, listings);
        std::erase_if(job.stale, [&](const fs::path& file) {
            return inputs.count(places.of(file).native()) != 0;
        });
        if (job.plots) {
            job.oldFigures = presentFigures(job, figures, listings);
        }
    }
}

/// Tells of each job whose outputs collide with nothing.
std::string collision(const std::vector<Job>& jobs, const std::unordered_set<std::string>& inputs,
                      Places& places, Listings& listings, const Planned& planned) {
    const std::vector<std::string> figures = figureNames();
    std::unordered_set<std::string> outputs;
    std::string fault;
    const auto collides = [&](const std::string& file) {
        if (inputs.count(file) != 0) {
            fault = ": the output would be written over an input.";
        } else if (!outputs.insert(file).second) {
            fault = ": two outputs would go to one file.";
        }
        return !fault.empty();
    };
    for (std::size_t i = 0; i < jobs.size(); ++i) {
        const Job& job = jobs[i];
        for (const fs::path& output : {job.reportPath, job.jsonPath, job.sheetPath}) {
            if (!output.empty() && collides(places.of(output).native())) {
                return output.string() + fault;
            }
        }
        if (job.plots) {
            const fs::path folder = job.reportPath.parent_path();
            const std::string stem = job.reportPath.stem().string();
            const Listings::Names& present = listings.in(folder);
            const std::string resolved = (places.folder(folder) / "").native();
            for (const std::string& figure : figures) {
                const std::string name = Job::figureName(stem, figure);
                const bool isNew = present.count(name) == 0; // what is there may be a link
                if (collides(isNew ? resolved + name : places.of(folder / name).native())) {
                    return (folder / name).string() + fault;
                }
            }
        }
        planned(i + 1);
    }
    return {};
}

} // namespace

std::filesystem::path Job::figurePath(const std::string& figure) const {
    return reportPath.parent_path() / figureName(reportPath.stem().string(), figure);
}

std::string Job::figureName(const std::string& stem, const std::string& figure) {
    return stem + "-" + figure + ".svg";
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
    if (!plan.fault.empty()) {
        return plan;
    }
    Listings listings;
    Places places(listings);
    std::unordered_set<std::string> inputs = inputFiles(plan.jobs, places);
    if (!options.compareWith.empty()) {
        inputs.insert(places.of(here / options.compareWith).native());
    }
    plan.fault = collision(plan.jobs, inputs, places, listings, planned);
    if (plan.fault.empty() && !options.convert) {
        findStaleOutputs(plan.jobs, inputs, places, listings);
    }
    return plan;
}

} // namespace korvane::batch
