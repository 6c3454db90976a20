#include "verification/verification.h"

#include "problem/input_reader.h"
#include "runtime/file_text.h"
#include "runtime/run_guarded.h"
#include "verification/quantities.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <system_error>

namespace korvane {

namespace {

namespace fs = std::filesystem;

/// The text of a box, without its line ends.
std::string oneLine(std::string text) {
    std::replace(text.begin(), text.end(), '\n', ' ');
    return text;
}

/// Reads the wall of a case and solves it; the failure, if it ends with one.
Failure solveCase(const VerificationCase& wanted, const std::string& text, CaseWall& wall) {
    Options options;
    options.keepDetails = true; // the surcharges
    options.wedge = wanted.fixedSurface ? WedgeMethod::FixedSurface : WedgeMethod::Sweep;
    clearProblemData(wall.problem);
    if (!readProblem(wall.problem, text, wanted.input).complete) {
        return {.code = FailureCode::InputRefused};
    }
    const auto review = reviewWall(wall.problem, options, wall.workspace);
    if (!review) {
        return review.failure();
    }
    const auto results = solveWall(wall.workspace);
    wall.solved = static_cast<bool>(results);
    return results ? Failure{} : results.failure();
}

/// The row that tells whether the wall fails as the case says.
VerifiedFigure failureFigure(const VerificationCase& wanted, const Failure& failure) {
    VerifiedFigure figure;
    figure.quantity = "failure";
    figure.published = wanted.fails;
    figure.ours = failure ? failureName(failure.code) : "none";
    figure.pass = figure.ours == figure.published;
    figure.reason = "the code names it";
    return figure;
}

/// Works a check out; a fault where it asks for what the wall does not have.
std::optional<CaseFault> addFigure(const VerificationCase& wanted, const CaseCheck& check,
                                   const CaseWall* wall, std::vector<VerifiedFigure>& figures) {
    VerifiedFigure figure;
    figure.quantity = check.text;
    figure.unit = check.unit;
    figure.published = check.published;
    figure.publishedValue = check.value;
    figure.tolerance = check.tolerance;
    figure.reason = check.reason;
    const auto fault =
        runGuarded([&] { figure.ourValue = check.quantity->evaluate(wall, check.arguments); });
    if (fault) {
        return CaseFault{wanted.file, check.line, fault->what()};
    }
    if (!figure.ourValue) {
        return CaseFault{wanted.file, check.line,
                         "no value: the wall has no such level, or no grid row at the depth"};
    }
    figure.ours = sixDigits(*figure.ourValue);
    figure.pass = std::fabs(*figure.ourValue - check.value) <= check.tolerance;
    figures.push_back(std::move(figure));
    return std::nullopt;
}

/// A wall that should have been solved: every figure of the case fails.
void failAll(VerifiedCase& result, const Failure& failure) {
    result.failure = oneLine(hasBox(failure) ? failureBox(failure).text : "the search was stopped");
    for (const CaseCheck& check : result.wanted.checks) {
        VerifiedFigure figure;
        figure.quantity = check.text;
        figure.unit = check.unit;
        figure.published = check.published;
        figure.publishedValue = check.value;
        figure.ours = "none";
        figure.tolerance = check.tolerance;
        figure.reason = check.reason;
        result.figures.push_back(std::move(figure));
    }
}

/// Runs a case that was read. A fault leaves the rows up to it.
std::optional<CaseFault> runCase(VerifiedCase& result) {
    const VerificationCase& wanted = result.wanted;
    std::unique_ptr<CaseWall> wall;
    if (!wanted.input.empty()) {
        wall = std::make_unique<CaseWall>();
        const fs::path input = wanted.file.parent_path() / wanted.input;
        std::string text;
        if (const auto fault = runGuarded([&] { text = readInputFile(input); })) {
            return CaseFault{wanted.file, wanted.inputLine, wanted.input + ": " + fault->what()};
        }
        const Failure failure = solveCase(wanted, text, *wall);
        if (failure.code == FailureCode::InputRefused) {
            return CaseFault{wanted.file, wanted.inputLine, wanted.input + ": input refused"};
        }
        if (!wanted.fails.empty()) {
            result.figures.push_back(failureFigure(wanted, failure));
        } else if (failure) {
            failAll(result, failure);
            return std::nullopt;
        }
    }
    for (const CaseCheck& check : wanted.checks) {
        if (auto fault = addFigure(wanted, check, wall.get(), result.figures)) {
            return fault;
        }
    }
    return std::nullopt;
}

} // namespace

int Verification::figureCount() const {
    int count = 0;
    for (const VerifiedCase& verified : cases) {
        count += static_cast<int>(verified.figures.size());
    }
    return count;
}

int Verification::passCount() const {
    int count = 0;
    for (const VerifiedCase& verified : cases) {
        for (const VerifiedFigure& figure : verified.figures) {
            count += figure.pass ? 1 : 0;
        }
    }
    return count;
}

bool Verification::holds() const {
    return faults.empty() && passCount() == figureCount();
}

std::vector<fs::path> caseFolders() {
    std::error_code failure;
    const fs::path program = fs::read_symlink("/proc/self/exe", failure).parent_path();
    std::vector<fs::path> folders;
    folders.push_back((program / KORVANE_CASES).lexically_normal());
    if (const fs::path tree = program / "../../../..";
        fs::exists(tree / "CMakeLists.txt", failure)) {
        folders.push_back((tree / "cases").lexically_normal());
    }
    return folders;
}

std::vector<fs::path> casesIn(const fs::path& folder) {
    std::vector<fs::path> cases;
    std::error_code failure;
    fs::directory_iterator entry(folder, failure);
    for (; !failure && entry != fs::directory_iterator(); entry.increment(failure)) {
        if (entry->path().extension() == ".case") {
            cases.push_back(entry->path());
        }
    }
    std::sort(cases.begin(), cases.end(),
              [](const fs::path& a, const fs::path& b) { return a.stem() < b.stem(); });
    return cases;
}

std::vector<fs::path> shippedCases() {
    for (const fs::path& folder : caseFolders()) {
        if (std::vector<fs::path> cases = casesIn(folder); !cases.empty()) {
            return cases;
        }
    }
    return {};
}

Verification verifyCases(const std::vector<fs::path>& cases) {
    Verification verification;
    for (const fs::path& file : cases) {
        VerifiedCase verified;
        std::optional<CaseFault> caseFault = readCase(file, verified.wanted);
        if (!caseFault) {
            const auto fault = runGuarded([&] { caseFault = runCase(verified); });
            if (fault) {
                caseFault = CaseFault{file, 0, fault->what()};
            }
        }
        if (caseFault) {
            verification.faults.push_back(std::move(*caseFault));
        }
        if (!verified.figures.empty()) {
            verification.cases.push_back(std::move(verified));
        }
    }
    return verification;
}

} // namespace korvane
