#include "batch/options.h"

#include "runtime/number_text.h"
#include "runtime/utf8_text.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cmath>
#include <sstream>
#include <thread>

namespace korvane::batch {

namespace {

const CLI::Validator finiteNumber(
    [](const std::string& text) {
        return isNumeric(text) ? std::string{} : "'" + text + "' is not a number";
    },
    "NUMBER");

const CLI::Validator namesSomething(
    [](const std::string& text) {
        return text.empty() ? std::string("the name is empty") : std::string{};
    },
    "");

/// What CLI11 would print for a parse that ended early, and whether that is a fault.
CommandLine ended(const CLI::App& app, const CLI::ParseError& end) {
    std::ostringstream text;
    const int code = app.exit(end, text, text);
    return {.options = std::nullopt,
            .status = code == 0 ? StatusSolved : StatusUsage,
            .text = code == 0 ? text.str() : messageText(text.str())};
}

/// Behind all options: those that say what becomes of inputs go not with it.
void addVerify(CLI::App& app, Options& options) {
    auto* verify = app.add_flag("--verify", options.verify,
                                "run the shipped cases and show the table; with --json as JSON on "
                                "standard output");
    for (CLI::Option* other : app.get_options()) {
        const bool goesWith = other->check_lname("json") || other->check_lname("quiet") ||
                              other->check_lname("jobs") || other->check_lname("no-notes") ||
                              other->check_lname("help") || other->check_lname("version");
        if (other != verify && !goesWith) {
            verify->excludes(other);
        }
    }
}

} // namespace

CommandLine readCommandLine(const std::vector<std::string>& arguments) {
    Options options;
    options.jobs = std::max(1, static_cast<int>(std::thread::hardware_concurrency()));
    std::string wedge = "sweep";

    CLI::App app{"Solves input files of sheet-pile walls without windows.", "korvane-batch"};
    app.set_version_flag("--version", "korvane-batch " KORVANE_VERSION);
    app.add_option("INPUT", options.inputs, "input files")->check(namesSomething);
    auto* output = app.add_option("-o,--output", options.output,
                                  "the report of a single input; - is standard output")
                       ->check(namesSomething);
    app.add_option("--output-dir", options.outputDir, "where results go, made if missing")
        ->check(namesSomething)
        ->excludes(output);
    app.add_option("--wedge", wedge, "the wedge method, where one is required")
        ->check(CLI::IsMember({"sweep", "fixed"}))
        ->capture_default_str();
    app.add_flag("--json", options.json, "all numeric results as JSON beside each report");
    app.add_flag("--plots", options.plots, "the result and input plots as SVG beside each report");
    app.add_flag("--sheet", options.sheet, "the calculation sheet as HTML beside each report");
    app.add_option("--jobs", options.jobs, "problems solved at once")
        ->check(CLI::Range(1, 1000))
        ->capture_default_str();
    app.add_option("--max-fs", options.maxFs, "largest factor of safety to search up to")
        ->check(finiteNumber)
        ->capture_default_str();
    app.add_flag("--check", options.check,
                 "read the input, tell what keeps it from being solved and the notes on it; "
                 "nothing is solved or written");
    app.add_flag("--compare", options.compare,
                 "the wall under other factors and methods, as a table on standard output");
    app.add_option("--compare-with", options.compareWith,
                   "the same with rows of one's own from a TOML file")
        ->check(namesSomething);
    app.add_flag("!--no-notes", options.notes, "no notes are worked out");
    app.add_flag("--quiet", options.quiet, "no progress line; of the notes only unsafe ones");

    std::string units;
    std::string convert;
    app.add_option("--units", units,
                   "units of JSON, notes, sheet and comparison; without it those of the input")
        ->check(CLI::IsMember({"us", "si"}));
    app.add_option("--convert", convert, "writes the input in these units to OUTPUT, unsolved")
        ->check(CLI::IsMember({"us", "si"}));
    addVerify(app, options);

    std::vector<std::string> reversed(arguments.rbegin(), arguments.rend());
    try {
        app.parse(reversed);
        if (options.inputs.empty() && !options.verify) {
            throw CLI::RequiredError("INPUT");
        }
    } catch (const CLI::ParseError& end) {
        return ended(app, end);
    }
    options.fixedSurface = wedge == "fixed";
    options.compare = options.compare || !options.compareWith.empty();
    options.units = unitsNamed(units);
    options.convert = unitsNamed(convert);
    return {.options = options, .status = StatusSolved, .text = {}};
}

} // namespace korvane::batch
