// Where the results of each input go.
#include "batch/options.h"
#include "plots/figures.h"

#include <set>
#include <system_error>

namespace korvane::batch {

namespace {

namespace fs = std::filesystem;

/// The file that a path names once all links are followed, also where it does not exist yet.
fs::path resolved(const fs::path& path) {
    constexpr int maxLinks = 40;
    fs::path target = path;
    std::error_code failure;
    for (int links = 0; links < maxLinks && fs::is_symlink(target, failure); ++links) {
        target = target.parent_path() / fs::read_symlink(target, failure);
    }
    const fs::path canonical = fs::weakly_canonical(target, failure);
    return failure ? target.lexically_normal() : canonical;
}

Job planJob(const Options& options, const std::string& input) {
    Job job{.input = input,
            .inputPath = fs::absolute(input),
            .reportPath = {},
            .jsonPath = {},
            .plots = options.plots};
    if (options.output == "-") {
        return job;
    }
    if (!options.output.empty()) {
        job.reportPath = fs::absolute(options.output);
    } else {
        job.reportPath = job.inputPath;
        if (!options.outputDir.empty()) {
            job.reportPath = fs::absolute(options.outputDir) / job.inputPath.filename();
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
    if (options.output == "-" && (options.json || options.plots)) {
        return "--json and --plots need a report file; the report goes to standard output.";
    }
    return {};
}

std::string missingInput(const std::vector<Job>& jobs) {
    for (const Job& job : jobs) {
        std::error_code ignored;
        const fs::file_status status = fs::status(job.inputPath, ignored);
        if (!fs::exists(status) || fs::is_directory(status)) {
            return job.input + ": no such file.";
        }
    }
    return {};
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

std::string collision(const std::vector<Job>& jobs) {
    std::set<fs::path> inputs;
    for (const Job& job : jobs) {
        inputs.insert(resolved(job.inputPath));
    }
    const std::vector<std::string> figures = figureNames();
    std::set<fs::path> outputs;
    for (const Job& job : jobs) {
        for (const fs::path& output : outputsOf(job, figures)) {
            const fs::path file = resolved(output);
            if (inputs.count(file) != 0) {
                return output.string() + ": the output would be written over an input.";
            }
            if (!outputs.insert(file).second) {
                return output.string() + ": two outputs would go to one file.";
            }
        }
    }
    return {};
}

} // namespace

std::filesystem::path Job::figurePath(const std::string& figure) const {
    return reportPath.parent_path() / (reportPath.stem().string() + "-" + figure + ".svg");
}

Plan planJobs(const Options& options) {
    Plan plan;
    for (const std::string& input : options.inputs) {
        plan.jobs.push_back(planJob(options, input));
    }
    plan.fault = wrongCombination(options);
    if (plan.fault.empty()) {
        plan.fault = missingInput(plan.jobs);
    }
    if (plan.fault.empty()) {
        plan.fault = collision(plan.jobs);
    }
    return plan;
}

} // namespace korvane::batch
