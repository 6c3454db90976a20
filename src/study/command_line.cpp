#include "study/command_line.h"

#include "study/csv.h"
#include "study/interruption.h"
#include "study/reliability.h"
#include "study/report.h"
#include "study/run.h"
#include "study/slurm.h"

#include "runtime/dates.h"
#include "runtime/number_text.h"
#include "runtime/run_guarded.h"
#include "runtime/runtime_error.h"
#include "runtime/utf8_text.h"

#include <CLI/CLI.hpp>
#include <openturns/Log.hxx>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <filesystem>
#include <iomanip>
#include <limits>
#include <optional>
#include <sstream>
#include <thread>

namespace korvane::study {

namespace {

struct Arguments {
    std::string study;  ///< run, check
    std::string folder; ///< all but check
    int jobs = 1;
    std::uint64_t part = 1;
    std::uint64_t parts = 1;
    bool quiet = false;
    bool csv = false;
    double interval = 10; ///< seconds between lines of progress without a terminal
    bool submit = false;
};

/// "K/N" with K from 1 to N.
std::string readPart(const std::string& text, Arguments& arguments) {
    std::istringstream words(text);
    char slash = 0;
    long long part = 0;
    long long parts = 0;
    if (!(words >> part >> slash >> parts) || slash != '/' || !words.eof() || part < 1 ||
        parts < part) {
        return "'" + text + "' must be K/N with K from 1 to N";
    }
    arguments.part = static_cast<std::uint64_t>(part);
    arguments.parts = static_cast<std::uint64_t>(parts);
    return {};
}

/// 12345678 as "12,345,678".
std::string grouped(double number) {
    std::string digits = std::to_string(static_cast<long long>(number));
    for (auto place = static_cast<int>(digits.size()) - 3; place > 0; place -= 3) {
        digits.insert(static_cast<std::size_t>(place), ",");
    }
    return digits;
}

std::string duration(double seconds) {
    std::ostringstream text;
    text << std::fixed << std::setprecision(0);
    if (seconds < 120) {
        text << seconds << " s";
    } else if (seconds < 7200) {
        text << seconds / 60 << " min";
    } else {
        text << seconds / 3600 << " h";
    }
    return text.str();
}

/// A line in its place on a terminal; elsewhere one after each interval (seconds).
class ProgressLine {
  public:
    ProgressLine(std::ostream& errors, bool terminal, double interval)
        : errors_(errors), terminal_(terminal), interval_(interval) {}
    ~ProgressLine() {
        if (told_ && terminal_) {
            errors_ << "\n";
        }
    }
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;

    void tell(const Progress& progress) {
        if (!terminal_ && progress.seconds < last_ + interval_) {
            return;
        }
        last_ = progress.seconds;
        const auto done = static_cast<double>(progress.done);
        const auto size = static_cast<double>(progress.size);
        const double rate =
            static_cast<double>(progress.done - progress.before) / std::max(progress.seconds, 1e-3);
        errors_ << (terminal_ ? "\r" : "") << grouped(done) << " of " << grouped(size) << ", "
                << grouped(rate) << " a second";
        if (rate > 0) {
            errors_ << ", " << duration((size - done) / rate) << " left   ";
        }
        errors_ << (terminal_ ? "" : "\n") << std::flush;
        told_ = true;
    }

    /// A step that has no variants to count.
    void say(const std::string& step) {
        errors_ << (told_ && terminal_ ? "\n" : "") << step << "\n" << std::flush;
        told_ = false;
    }

  private:
    std::ostream& errors_;
    bool terminal_;
    double interval_;
    double last_ = 0;
    bool told_ = false;
};

/// Of a limit state that gets no design point, whatever is run: why. Empty of others.
std::string alternativesFault(const Study& study, const LimitState& limit) {
    return study.method == Method::Reliability && hasTooManyAlternatives(study, limit)
               ? "has more than " + std::to_string(Condition::MostAlternatives) +
                     " alternatives joined by and and or, so that no design point is looked for"
               : "";
}

/// What the algorithm cannot do without.
std::string designPointFaults(const Study& study) {
    std::string faults;
    for (const LimitState& limit : study.limits) {
        const std::string fault = alternativesFault(study, limit);
        if (!fault.empty() && study.algorithm != Algorithm::MonteCarlo) {
            faults += study.file + ":" + std::to_string(limit.line) + ": limit " + limit.name +
                      " " + fault + ": only algorithm = \"monte-carlo\" can work it out\n";
        }
    }
    return faults;
}

std::optional<Study> studyOf(const Arguments& arguments, std::ostream& errors) {
    try {
        ReadStudy read = readStudy(arguments.study);
        const std::string faults =
            read.fault.empty() ? designPointFaults(read.study) : read.fault + "\n";
        if (faults.empty()) {
            return std::move(read.study);
        }
        errors << faults;
    } catch (const RuntimeError& fault) {
        errors << "korvane-study: " << arguments.study << ": " << fault.what() << "\n";
    }
    return std::nullopt;
}

int run(const Arguments& arguments, std::ostream& errors, bool terminal) {
    const auto study = studyOf(arguments, errors);
    if (!study) {
        return StatusUsage;
    }
    RunRequest request{.study = *study,
                       .folder = arguments.folder,
                       .jobs = arguments.jobs,
                       .part = arguments.part,
                       .parts = arguments.parts};
    request.stop = [] { return signalSeen() != 0; };
    ProgressLine line(errors, terminal, arguments.interval);
    if (!arguments.quiet) {
        request.tell = [&line](const Progress& progress) { line.tell(progress); };
        request.say = [&line](const std::string& step) { line.say(step); };
    }
    if (!runStudy(request)) {
        return StatusStopped;
    }
    if (arguments.csv) {
        writeCsv(arguments.folder, fileOfPart(request.part, request.parts));
    }
    return StatusDone;
}

int report(const Arguments& arguments, std::ostream& errors) {
    if (wrongFixedMoment()) {
        errors << "korvane-study: SOURCE_DATE_EPOCH is no number of seconds.\n";
        return StatusUsage;
    }
    writeReport(arguments.folder);
    return StatusDone;
}

int collect(const Arguments& arguments, std::ostream& errors) {
    collectParts(arguments.folder, [&](const std::string& step) {
        if (!arguments.quiet) {
            errors << step << "\n" << std::flush;
        }
    });
    if (arguments.csv) {
        writeCsv(arguments.folder, fileOfPart(1, 1));
    }
    return StatusDone;
}

std::string valueText(double value, const Variable& variable, UnitSystem units) {
    std::ostringstream text;
    text << std::setprecision(6) << value;
    const char* unit = unitOf(variable.quantity, units).name;
    return text.str() + (*unit == 0 ? "" : " ") + unit;
}

void tellVariable(std::ostream& out, const Study& study, const Variable& variable) {
    out << "  " << variable.name << ": ";
    if (variable.isRandom()) {
        const DistributionFigures figures = figuresOf(variable);
        const auto text = [&](double value) { return valueText(value, variable, study.units); };
        out << variable.distribution;
        if (variable.bounds[0] || variable.bounds[1]) {
            const double none = std::numeric_limits<double>::infinity();
            out << " within " << variable.bounds[0].value_or(-none) << " and "
                << variable.bounds[1].value_or(none);
        }
        out << ", mean " << text(figures.mean) << ", deviation " << text(figures.deviation)
            << ", 5 % " << text(figures.low) << ", 95 % " << text(figures.high);
    } else {
        const auto [least, largest] =
            std::minmax_element(variable.values.begin(), variable.values.end());
        out << variable.values.size() << (variable.values.size() == 1 ? " value" : " values")
            << " from " << valueText(*least, variable, study.units) << " to "
            << valueText(*largest, variable, study.units);
    }
    for (const FieldAddress& place : variable.fields) {
        out << " " << addressName(place);
    }
    out << "\n";
}

/// Walls over all of a study; of a search, which has no variants before it is done, between the
/// ends of its variables.
std::vector<std::vector<double>> someWalls(const Study& study) {
    constexpr std::uint64_t Tried = 50;
    Plan plan(study);
    std::vector<std::vector<double>> walls(
        static_cast<std::size_t>(plan.size() == 0 ? Tried : std::min(plan.size(), Tried)));
    for (std::size_t k = 0; k < walls.size(); ++k) {
        if (plan.size() > 0) {
            plan.numbers(shareOf(plan.size(), k + 1, walls.size()).from, walls[k]);
            continue;
        }
        const double share = static_cast<double>(k) / static_cast<double>(walls.size());
        for (const Variable& variable : study.variables) {
            const auto [low, high] = endsOf(variable);
            walls[k].push_back(low + share * (high - low));
        }
    }
    return walls;
}

/// Seconds that a variant takes on one core: some are tried.
double secondsOf(const Study& study) {
    const std::vector<std::vector<double>> walls = someWalls(study);
    Evaluation evaluation(study);
    Row row;
    const auto start = std::chrono::steady_clock::now();
    for (const std::vector<double>& numbers : walls) {
        evaluation.fill(numbers, row);
    }
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    return taken.count() / static_cast<double>(walls.size());
}

/// Variants, or walls that a search may solve at the most, and how long they take.
void tellSize(std::ostream& out, const Study& study) {
    const auto size = static_cast<double>(Plan(study).size());
    const double seconds = secondsOf(study);
    if (size > 0) {
        out << "  " << grouped(size) << " variants, about " << duration(std::ceil(size * seconds))
            << " on one core\n";
    }
    if (study.method == Method::Reliability) {
        out << "  a search for design points first: some thousand walls along rays, and for each "
               "alternative of a limit state some hundred, "
            << MostSearchSolutions << " at the most, about " << std::setprecision(2)
            << 1000 * seconds << " ms each\n";
    } else if (study.method == Method::Target) {
        out << "  a search: " << study.variables.front().values.size()
            << " walls and about 40 by halving, about " << std::setprecision(2) << 1000 * seconds
            << " ms each\n";
    }
}

/// What is asked besides the variables.
void tellQuestions(std::ostream& out, const Study& study) {
    for (const Correlation& one : study.correlations) {
        out << "  correlation of " << study.variables[one.first].name << " and "
            << study.variables[one.second].name << ": rank " << one.rank << "\n";
    }
    for (const Tie& tie : study.ties) {
        out << "  tie: " << addressName(tie.field) << " is " << tie.factor << " times "
            << addressName(tie.to) << " plus " << tie.add << "\n";
    }
    out << "  outputs:";
    for (const OutputColumn& column : study.outputs) {
        out << " " << column.name;
    }
    out << "\n";
    if (study.target) {
        out << "  target: " << study.target->output.name << " " << study.target->value << "\n";
    }
    if (study.method == Method::Reliability) {
        const char* names[] = {"form", "monte-carlo", "importance"};
        out << "  algorithm: " << names[static_cast<int>(study.algorithm)] << "\n";
    }
    if (study.method == Method::Fragility) {
        out << "  along: " << study.variables[study.along].name << "\n";
    }
}

int check(const Arguments& arguments, std::ostream& out, std::ostream& errors) {
    const auto study = studyOf(arguments, errors);
    if (!study) {
        return StatusUsage;
    }
    out << study->file << ": " << methodName(study->method) << " of " << study->basePath
        << " in units " << unitsName(study->units) << "\n";
    for (const Variable& variable : study->variables) {
        tellVariable(out, *study, variable);
    }
    tellQuestions(out, *study);
    for (const LimitState& limit : study->limits) {
        out << "  limit " << limit.name << ": " << limit.text << "\n";
        if (const std::string fault = alternativesFault(*study, limit); !fault.empty()) {
            out << "    line " << limit.line << ": it " << fault << "\n";
        }
        if (limit.condition.asksDesign()) {
            out << "    the bottom of the design at factor 1 is held against the wall's: an "
                   "analysis finds its factor of safety to 0.1 FT of the bottom only\n";
        } else if (limit.condition.names(results::factorOfSafety.name)) {
            out << "    an analysis finds its factor of safety to 0.1 FT of the bottom only; "
                   "reliability and fragility use the design depth at factor 1\n";
        }
    }
    tellSize(out, *study);
    return StatusDone;
}

/// The program itself, as other machines find it.
std::string programPath() {
    std::error_code fault;
    const auto path = std::filesystem::read_symlink("/proc/self/exe", fault);
    return fault ? "korvane-study" : path.string();
}

int slurm(const Arguments& arguments, std::ostream& out, std::ostream& errors) {
    const auto study = studyOf(arguments, errors);
    if (!study) {
        return StatusUsage;
    }
    const std::string script = writeSlurmJobs(*study, {.study = arguments.study,
                                                       .folder = arguments.folder,
                                                       .program = programPath(),
                                                       .parts = arguments.parts,
                                                       .jobs = arguments.jobs});
    if (arguments.submit) {
        submitSlurmJobs(script);
    } else {
        out << "Submit it by: bash " << script << "\n";
    }
    return StatusDone;
}

} // namespace

int runCommand(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& errors,
               bool terminal) {
    // What is wrong with a distribution is told in our own words.
    OT::Log::Show(OT::Log::NONE);
    Arguments read;
    read.jobs = std::max(1, static_cast<int>(std::thread::hardware_concurrency()));
    CLI::App app{"Asks one sheet-pile wall many times.", "korvane-study"};
    app.set_version_flag("--version", "korvane-study " KORVANE_VERSION);
    app.require_subcommand(1);

    CLI::App* runs = app.add_subcommand("run", "works the variants out and stores them");
    runs->add_option("STUDY", read.study, "the study file")->required();
    runs->add_option("--output", read.folder, "the folder of the results, made if missing")
        ->required();
    runs->add_option("--jobs", read.jobs, "variants worked out at once")
        ->check(CLI::Range(1, 1000))
        ->capture_default_str();
    std::string part;
    runs->add_option("--part", part, "K/N: the K-th of N shares, into a file of its own");
    runs->add_flag("--csv", read.csv, "the rows as results.csv besides");
    runs->add_flag("--quiet", read.quiet, "no progress");
    runs->add_option("--progress", read.interval,
                     "seconds between lines of progress where there is no terminal")
        ->check(CLI::Range(0.0, 1e6))
        ->capture_default_str();
    CLI::App* checks = app.add_subcommand("check", "tells what would run");
    checks->add_option("STUDY", read.study, "the study file")->required();
    CLI::App* collects = app.add_subcommand("collect", "merges the parts of a folder");
    collects->add_option("DIR", read.folder, "the folder of the results")->required();
    collects->add_flag("--csv", read.csv, "the rows as results.csv besides");
    collects->add_flag("--quiet", read.quiet, "no progress");
    CLI::App* reports = app.add_subcommand("report", "writes report.html and summary.json");
    reports->add_option("DIR", read.folder, "the folder of the results")->required();
    CLI::App* cluster = app.add_subcommand("slurm", "writes the jobs of a Slurm cluster");
    cluster->add_option("STUDY", read.study, "the study file")->required();
    cluster->add_option("--output", read.folder, "the folder of the results, made if missing")
        ->required();
    cluster->add_option("--parts", read.parts, "tasks of the array job")
        ->required()
        ->check(CLI::Range(1, 1000000));
    int taskJobs = 1;
    cluster->add_option("--jobs", taskJobs, "processors of a task")
        ->check(CLI::Range(1, 1000))
        ->capture_default_str();
    cluster->add_flag("--submit", read.submit, "submits them");

    std::vector<std::string> reversed(arguments.rbegin(), arguments.rend());
    try {
        app.parse(reversed);
    } catch (const CLI::ParseError& end) {
        std::ostringstream fault;
        const int code = app.exit(end, out, fault);
        errors << messageText(fault.str());
        return code == 0 ? StatusDone : StatusUsage;
    }
    const std::string partFault = part.empty() ? "" : readPart(part, read);
    if (!partFault.empty()) {
        errors << "--part: " << partFault << "\n";
        return StatusUsage;
    }
    try {
        if (checks->parsed()) {
            return check(read, out, errors);
        }
        if (collects->parsed()) {
            return collect(read, errors);
        }
        if (reports->parsed()) {
            return report(read, errors);
        }
        if (cluster->parsed()) {
            read.jobs = taskJobs;
            return slurm(read, out, errors);
        }
        return run(read, errors, terminal);
    } catch (const Interrupted&) {
        return StatusStopped;
    } catch (const OtherStudyFault& fault) {
        errors << "korvane-study: " << fault.text << "\n";
        return StatusUsage;
    } catch (const UsageFault& fault) {
        errors << "korvane-study: " << fault.text << "\n";
        return StatusUsage;
    } catch (const StoreFault& fault) {
        errors << "korvane-study: " << fault.text << "\n";
        return StatusFault;
    }
}

} // namespace korvane::study
