// Where the results of each input go.
#include "batch/options.h"
#include "plots/figures.h"
#include "runtime/file_text.h"

#include <algorithm>
#include <memory>
#include <string_view>
#include <system_error>
#include <unordered_map>
#include <unordered_set>

#include <dirent.h>
#include <sys/stat.h>

namespace korvane::batch {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view FigureExtension = ".svg";

bool isFigureName(std::string_view name) {
    return name.ends_with(FigureExtension);
}

/// What a folder holds.
struct Folder {
    std::unordered_map<std::string, bool> names; ///< whether each may be a link
    /// Figures by the stem of their report, which may be several: "a-free" has a "-moment", "a" a
    /// "-free-moment".
    std::unordered_map<std::string, std::vector<std::string>> figures;
    bool hasLinkedFigure = false; ///< or may have one
};

/// Folders, each read once.
class Listings {
  public:
    const Folder& in(const fs::path& path) {
        const auto [place, isNew] = folders_.try_emplace(path.native());
        if (isNew) {
            // The standard's iterator would end the process where memory is short.
            const std::unique_ptr<DIR, int (*)(DIR*)> open(::opendir(place->first.c_str()),
                                                           ::closedir);
            while (const dirent* entry = open ? ::readdir(open.get()) : nullptr) {
                const bool mayBeLink = entry->d_type == DT_LNK || entry->d_type == DT_UNKNOWN;
                add(place->second, entry->d_name, mayBeLink);
            }
        }
        return place->second;
    }
    bool has(const fs::path& file) {
        return in(file.parent_path()).names.count(file.filename().native()) != 0;
    }
    bool mayBeLink(const fs::path& file) {
        const auto& names = in(file.parent_path()).names;
        const auto entry = names.find(file.filename().native());
        return entry != names.end() && entry->second;
    }

  private:
    void add(Folder& folder, const std::string& name, bool mayBeLink) {
        folder.names.emplace(name, mayBeLink);
        if (!isFigureName(name)) {
            return;
        }
        const std::string whole = name.substr(0, name.size() - FigureExtension.size());
        for (std::size_t dash = whole.find('-'); dash != std::string::npos;
             dash = whole.find('-', dash + 1)) {
            if (figures_.count(whole.substr(dash + 1)) != 0) {
                folder.figures[whole.substr(0, dash)].push_back(name);
                folder.hasLinkedFigure = folder.hasLinkedFigure || mayBeLink;
            }
        }
    }

    std::unordered_map<std::string, Folder> folders_;
    const std::unordered_set<std::string> figures_ = [] {
        const std::vector<std::string> names = figureNames();
        return std::unordered_set<std::string>(names.begin(), names.end());
    }();
};

/// The files that paths name once all links are followed, also where they do not exist yet. Each
/// folder is resolved once.
class Places {
  public:
    explicit Places(Listings& listings) : listings_(listings) {}

    fs::path of(const fs::path& path) {
        fs::path target = path;
        std::error_code failure;
        for (int links = 0; links < MostLinks && listings_.mayBeLink(target); ++links) {
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
std::vector<fs::path> presentFigures(const Job& job, Listings& listings) {
    const fs::path path = job.reportPath.parent_path();
    const Folder& folder = listings.in(path);
    std::vector<fs::path> present;
    const auto found = folder.figures.find(job.reportPath.stem().string());
    if (found != folder.figures.end()) {
        for (const std::string& name : found->second) {
            present.push_back(path / name);
        }
    }
    std::sort(present.begin(), present.end()); // folders have no order
    return present;
}

/// What an earlier run may have left beside the report and this one does not ask for.
std::vector<fs::path> staleOutputs(const Job& job, Listings& listings) {
    std::vector<fs::path> stale;
    if (job.reportPath.empty()) {
        return stale;
    }
    if (!job.plots) {
        stale = presentFigures(job, listings);
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
        return "--compare and --compare-with need a report file: the table goes to standard "
               "output.";
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
    for (Job& job : jobs) {
        job.stale = staleOutputs(job, listings);
        std::erase_if(job.stale, [&](const fs::path& file) {
            return inputs.count(places.of(file).native()) != 0;
        });
        if (job.plots) {
            job.oldFigures = presentFigures(job, listings);
        }
    }
}

/// What a stem may have behind another's so that both have a figure of one name: "-free".
std::vector<std::string> sharedEndings() {
    const std::vector<std::string> figures = figureNames();
    std::unordered_set<std::string> endings;
    for (const std::string& longer : figures) {
        for (const std::string& shorter : figures) {
            if (longer.ends_with("-" + shorter)) {
                endings.insert("-" + longer.substr(0, longer.size() - shorter.size() - 1));
            }
        }
    }
    return {endings.begin(), endings.end()};
}

/// Whether figures of two jobs may have one name.
bool shareFigureNames(const std::vector<Job>& jobs, Places& places) {
    std::unordered_set<std::string> stems;
    for (const Job& job : jobs) {
        stems.insert(
            (places.folder(job.reportPath.parent_path()) / job.reportPath.stem()).native());
    }
    const std::vector<std::string> endings = sharedEndings();
    return std::any_of(stems.begin(), stems.end(), [&](const std::string& stem) {
        return std::any_of(endings.begin(), endings.end(), [&](const std::string& ending) {
            return stems.count(stem + ending) != 0;
        });
    });
}

/// The files that inputs and outputs have taken.
class Taken {
  public:
    Taken(const std::unordered_set<std::string>& inputs, Places& places)
        : inputs_(inputs), places_(places),
          figures_(std::any_of(inputs.begin(), inputs.end(), isFigureName)) {}

    /// What keeps an output from its place; "" nothing, and it has it now.
    std::string take(const fs::path& output) {
        const std::string file = places_.of(output).native();
        figures_ = figures_ || isFigureName(file);
        if (inputs_.count(file) != 0) {
            return output.string() + ": the output would be written over an input.";
        }
        return outputs_.insert(file).second
                   ? ""
                   : output.string() + ": two outputs would go to one file.";
    }
    /// True where one of them has the extension of figures.
    bool hasFigures() const { return figures_; }

  private:
    const std::unordered_set<std::string>& inputs_;
    Places& places_;
    std::unordered_set<std::string> outputs_;
    bool figures_;
};

/// Tells of each job whose outputs collide with nothing. Figures, of which there may be hundreds of
/// thousands, are looked at one by one only where some may collide.
std::string collision(const std::vector<Job>& jobs, Taken& taken, Places& places,
                      Listings& listings, const Planned& planned) {
    std::string fault;
    bool mayCollide = false;
    for (std::size_t i = 0; i < jobs.size() && fault.empty(); ++i) {
        const Job& job = jobs[i];
        for (const fs::path& output : {job.reportPath, job.jsonPath, job.sheetPath}) {
            if (!output.empty() && fault.empty()) {
                fault = taken.take(output);
            }
        }
        mayCollide = mayCollide || listings.in(job.reportPath.parent_path()).hasLinkedFigure;
        planned(i + 1);
    }
    if (!fault.empty() || !jobs.front().plots ||
        !(mayCollide || taken.hasFigures() || shareFigureNames(jobs, places))) {
        return fault;
    }
    for (const Job& job : jobs) {
        for (const std::string& figure : figureNames()) {
            if (fault.empty()) {
                fault = taken.take(job.figurePath(figure));
            }
        }
    }
    return fault;
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
    Taken taken(inputs, places);
    plan.fault = collision(plan.jobs, taken, places, listings, planned);
    if (plan.fault.empty() && !options.convert) {
        findStaleOutputs(plan.jobs, inputs, places, listings);
    }
    return plan;
}

} // namespace korvane::batch
