// The command line of the batch command.
#pragma once

#include "comparison/own_rows.h"
#include "problem/quantities.h"

#include <cstddef>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace korvane::batch {

/// Exit statuses; the highest of all inputs wins.
inline constexpr int StatusSolved = 0;
inline constexpr int StatusFailed = 1; ///< an input was refused or a solution failed
inline constexpr int StatusUsage = 2;  ///< wrong usage, before anything is solved
inline constexpr int StatusError = 70; ///< a run-time error

struct Options {
    std::vector<std::string> inputs; ///< as given
    std::string output;              ///< "" none, "-" standard output
    std::string outputDir;           ///< "" beside the input
    bool fixedSurface = false;       ///< the wedge method: fixed surface or sweep search
    bool json = false;
    bool plots = false;
    bool sheet = false;
    bool quiet = false;
    bool verify = false; ///< the shipped cases are run; there is no input
    bool check = false;  ///< notes on the input alone, nothing is solved
    bool notes = true;
    bool compare = false;        ///< the wall under other factors and methods, on standard output
    std::string compareWith;     ///< the file of rows of one's own, "" none
    std::vector<OwnRow> ownRows; ///< read from it
    std::optional<UnitSystem> units; ///< of what is written besides the report; default the file's
    std::optional<UnitSystem> convert; ///< the input goes to `output` in these units, unsolved
    int jobs = 1;                      ///< problems solved at once
    double maxFs = 20;                 ///< a larger limit of the factor of safety ends the search
};

/// Options, or the status to end with and the text to show for it.
struct CommandLine {
    std::optional<Options> options;
    int status = StatusSolved;
    std::string text;
};

/// Reads the command line; `arguments` are those behind the program's name.
CommandLine readCommandLine(const std::vector<std::string>& arguments);

/// One input and where its results go; all paths are absolute.
struct Job {
    std::string input; ///< as given
    std::filesystem::path inputPath;
    std::filesystem::path reportPath; ///< empty: standard output
    std::filesystem::path jsonPath;   ///< empty: none
    std::filesystem::path sheetPath;  ///< calculation sheet; empty: none
    bool plots = false;               ///< figures beside the report
    /// Figures, JSON and sheet of an earlier run that this one does not write anew.
    std::vector<std::filesystem::path> stale;
    /// Figures in the places of those of this run, which it may not draw all.
    std::vector<std::filesystem::path> oldFigures;

    /// "NAME-figure.svg" beside the report NAME.out.
    std::filesystem::path figurePath(const std::string& figure) const;
    static std::string figureName(const std::string& stem, const std::string& figure);
};

/// The jobs of a command line, or what is wrong with its paths: an input that is no file or pipe,
/// an output that is an input or another output.
struct Plan {
    std::vector<Job> jobs;
    std::string fault;
};

/// Is told how many jobs are planned.
using Planned = std::function<void(std::size_t)>;

Plan planJobs(const Options& options, const Planned& planned);

} // namespace korvane::batch
