// Runs one plain-text case file (see README.md in this folder) and tells every check.
#include "pressures/coefficient_pressures.h"
#include "pressures/elevation_grid.h"
#include "pressures/surcharge_pressures.h"
#include "problem/input_reader.h"
#include "rowe/moment_reduction.h"
#include "runtime/arithmetic.h"
#include "runtime/file_text.h"
#include "runtime/number_text.h"
#include "solution/solution.h"
#include "state/kept_work.h"

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

using namespace korvane;

namespace {

struct Check {
    std::string text; ///< the whole line
    std::string quantity;
    std::vector<std::string> arguments;
    double expected = 0;
    double tolerance = 0;
};

struct Case {
    std::string input;
    std::string wedge = "sweep";
    std::string fails;
    std::vector<Check> checks;
};

/// The wall solved, and its state at the first pressures.
struct SolvedWall {
    Problem problem;
    Workspace workspace;
    Failure failure;
    KeptWork kept;
    std::unique_ptr<State> first = std::make_unique<State>(problem, kept);

    const LevelResult& level(int number) const { return workspace.results().levels(number); }
};

[[noreturn]] void refuse(const std::string& why) {
    std::fprintf(stderr, "case file: %s\n", why.c_str());
    std::exit(2);
}

Check parseCheck(const std::string& text) {
    Check check;
    check.text = text;
    const std::size_t equals = text.find(" = ");
    const std::size_t within = text.find(" within ");
    if (equals == std::string::npos || within == std::string::npos ||
        text.find(" because ") == std::string::npos) {
        refuse("a check needs ' = ', ' within ' and ' because ': " + text);
    }
    std::istringstream left(text.substr(0, equals));
    left >> check.quantity;
    for (std::string word; left >> word;) {
        check.arguments.push_back(word);
    }
    check.expected = valueAtHead(text.substr(equals + 3));
    std::istringstream right(text.substr(within + 8));
    std::string tolerance;
    std::string unit;
    right >> tolerance >> unit;
    check.tolerance = numericValue(tolerance);
    if (unit == "%") {
        check.tolerance *= std::fabs(check.expected) / 100.0;
    }
    return check;
}

Case readCase(const std::filesystem::path& path) {
    Case result;
    for (const std::string& line : splitLines(readFile(path))) {
        if (line.empty() || line[0] == '#') {
            continue;
        }
        const std::size_t colon = line.find(": ");
        if (colon == std::string::npos) {
            refuse("no keyword in line: " + line);
        }
        const std::string keyword = line.substr(0, colon);
        const std::string value = line.substr(colon + 2);
        if (keyword == "input") {
            result.input = value;
        } else if (keyword == "wedge") {
            result.wedge = value;
        } else if (keyword == "fails") {
            result.fails = value;
        } else if (keyword == "check") {
            result.checks.push_back(parseCheck(value));
        } else if (keyword != "title" && keyword != "source" && keyword != "note") {
            refuse("unknown keyword: " + keyword);
        }
    }
    if (result.checks.empty() && result.fails.empty()) {
        refuse("nothing to check");
    }
    return result;
}

/// The road of a solution without reports.
void solve(SolvedWall& wall, const Case& wanted, const std::filesystem::path& inputPath) {
    clearProblemData(wall.problem);
    const ReadResult read = readProblem(wall.problem, readFile(inputPath), wanted.input);
    if (!read.complete) {
        refuse(wanted.input + ": " + read.text);
    }
    Options options;
    options.wedge = wanted.wedge == "fixed" ? WedgeMethod::FixedSurface : WedgeMethod::Sweep;
    const auto review = reviewWall(wall.problem, options, wall.workspace);
    if (!review) {
        wall.failure = review.failure();
        return;
    }
    *wall.first = wall.workspace.state();
    for (const int side : {Right, Left}) {
        // Anew: the column does not follow inserted rows.
        ComputeSurchargePressures(*wall.first, side);
    }
    const auto results = solveWall(wall.workspace);
    if (!results) {
        wall.failure = results.failure();
    }
}

double argument(const Check& check, std::size_t position) {
    if (position >= check.arguments.size()) {
        refuse("an argument is missing: " + check.text);
    }
    return numericValue(check.arguments[position]);
}

int levelOf(const Check& check) {
    return static_cast<int>(argument(check, 0));
}

int sideOf(const Check& check) {
    if (check.arguments.empty() ||
        (check.arguments[0] != "right" && check.arguments[0] != "left")) {
        refuse("the side must be right or left: " + check.text);
    }
    return check.arguments[0] == "right" ? Right : Left;
}

/// Grid row of a depth below the wall top at the first pressures.
int rowAtDepth(const SolvedWall& wall, double depth) {
    const int row = firstRowAt(wall.first->grid, wall.problem.WallTopElev - depth);
    if (row == 0) {
        refuse("no grid row at depth " + std::to_string(depth));
    }
    return row;
}

/// Trapezoids between two rows of a diagram with values just below and just above each row.
double integrate(const SolvedWall& wall, int from, int to,
                 const std::function<double(int, int)>& value) {
    double sum = 0;
    for (int i = from + 1; i <= to; ++i) {
        const double height = wall.first->grid.ElevGrid(i - 1) - wall.first->grid.ElevGrid(i);
        sum += (value(i - 1, 1) + value(i, 2)) / 2 * height;
    }
    return sum;
}

/// A quantity that a check can name.
struct Quantity {
    const char* name;
    double (*evaluate)(const SolvedWall&, const Check&);
};

double lowerSurface(const Problem& problem) {
    return MinOf(problem.SurfaceElev(Right, 1), problem.SurfaceElev(Left, 1));
}

double diagram(const SolvedWall& wall, const Check& check, bool active, int k) {
    const auto& values =
        active ? wall.first->pressures.ActivePressures : wall.first->pressures.PassivePressures;
    return values(sideOf(check), rowAtDepth(wall, argument(check, 1)), k);
}

double activeForce(const SolvedWall& wall, const Check& check) {
    const int side = sideOf(check);
    return integrate(
        wall, rowAtDepth(wall, argument(check, 1)), rowAtDepth(wall, argument(check, 2)),
        [&](int i, int k) { return wall.first->pressures.ActivePressures(side, i, k); });
}

double zeroActive(const SolvedWall& wall, const Check& check) {
    const int side = sideOf(check);
    int row = 1;
    while (wall.first->pressures.ActivePressures(side, row + 1, 2) <= 0) {
        ++row;
    }
    return wall.problem.WallTopElev - wall.first->grid.ElevGrid(row);
}

double surchargeForce(const SolvedWall& wall, const Check& check) {
    const int side = sideOf(check);
    const int surface = firstRowAt(wall.first->grid, wall.problem.SurfaceElev(side, 1));
    return integrate(wall, surface, rowAtDepth(wall, argument(check, 1)),
                     [&](int i, int) { return wall.first->pressures.SurchargePressures(side, i); });
}

/// Largest shear by size, also between rows: where the net pressure passes zero inside a segment
/// the shear's parabola has its extreme.
double maxShear(const SolvedWall& wall, const Check& check) {
    const ResultDiagrams& level = wall.level(levelOf(check)).diagrams;
    double largest = 0;
    for (int row = 1; row < level.RowCount; ++row) {
        const double V = level.ResultShear(row);
        const double p = level.ResultPressure(row);
        const double q = level.ResultPressure(row + 1);
        const double h = level.ResultElev(row) - level.ResultElev(row + 1);
        const double s = p * q < 0 ? h * p / (p - q) : 0;
        largest = MaxOf(largest, std::fabs(V));
        if (s > 0) {
            largest = MaxOf(largest, std::fabs(V + p * s / 2));
        }
    }
    return largest;
}

const Quantity quantities[] = {
    {"penetration",
     [](const SolvedWall& wall, const Check& check) {
         return lowerSurface(wall.problem) - wall.level(levelOf(check)).bottomElev;
     }},
    {"max-moment",
     [](const SolvedWall& wall, const Check& check) {
         return std::fabs(wall.level(levelOf(check)).diagrams.MaxMoment.value);
     }},
    {"max-moment-depth",
     [](const SolvedWall& wall, const Check& check) {
         return wall.problem.WallTopElev - wall.level(levelOf(check)).diagrams.MaxMoment.elev;
     }},
    {"max-shear", maxShear},
    {"smallest-moment",
     [](const SolvedWall& wall, const Check& check) {
         return wall.level(levelOf(check)).diagrams.MomentRange.smallest;
     }},
    {"largest-moment",
     [](const SolvedWall& wall, const Check& check) {
         return wall.level(levelOf(check)).diagrams.MomentRange.largest;
     }},
    {"anchor-force", [](const SolvedWall& wall,
                        const Check& check) { return wall.level(levelOf(check)).anchorForce; }},
    {"factor", [](const SolvedWall& wall,
                  const Check& check) { return wall.level(levelOf(check)).factorOfSafety; }},
    {"net-active",
     [](const SolvedWall& wall, const Check& check) {
         return wall.first->net.NetActive(rowAtDepth(wall, argument(check, 0)), 2);
     }},
    {"net-active-below",
     [](const SolvedWall& wall, const Check& check) {
         return wall.first->net.NetActive(rowAtDepth(wall, argument(check, 0)), 1);
     }},
    {"active",
     [](const SolvedWall& wall, const Check& check) { return diagram(wall, check, true, 2); }},
    {"active-below",
     [](const SolvedWall& wall, const Check& check) { return diagram(wall, check, true, 1); }},
    {"passive",
     [](const SolvedWall& wall, const Check& check) { return diagram(wall, check, false, 2); }},
    {"passive-below",
     [](const SolvedWall& wall, const Check& check) { return diagram(wall, check, false, 1); }},
    {"active-force", activeForce},
    {"zero-active", zeroActive},
    {"water",
     [](const SolvedWall& wall, const Check& check) {
         return wall.first->pressures.WaterPressures(rowAtDepth(wall, argument(check, 0)), 2);
     }},
    {"surcharge",
     [](const SolvedWall& wall, const Check& check) {
         return wall.first->pressures.SurchargePressures(sideOf(check),
                                                         rowAtDepth(wall, argument(check, 1)));
     }},
    {"surcharge-force", surchargeForce},
    {"coulomb-active",
     [](const SolvedWall&, const Check& check) {
         return coulombActive(argument(check, 0) * DegreesToRadians,
                              argument(check, 1) * DegreesToRadians);
     }},
    {"passive-coefficient",
     [](const SolvedWall&, const Check& check) {
         return passiveCoefficient(argument(check, 0) * DegreesToRadians,
                                   argument(check, 1) * DegreesToRadians)
             .value_or(0);
     }},
    {"log-rigidity",
     [](const SolvedWall&, const Check& check) {
         return pileLogRigidity(argument(check, 0), argument(check, 1), argument(check, 2));
     }},
};

double evaluate(const SolvedWall& wall, const Check& check) {
    for (const Quantity& quantity : quantities) {
        if (check.quantity == quantity.name) {
            return quantity.evaluate(wall, check);
        }
    }
    refuse("unknown quantity: " + check.quantity);
}

/// True where the solution's outcome is the one that the case tells.
bool outcomeHolds(const Case& wanted, const SolvedWall& wall) {
    const bool failed = static_cast<bool>(wall.failure);
    const std::string why = failed ? failureBox(wall.failure).text : "";
    if (wanted.fails.empty()) {
        if (failed) {
            std::printf("FAILED: no solution: %s\n", why.empty() ? "(no box)" : why.c_str());
        }
        return !failed;
    }
    const bool told = failed && wanted.fails == failureName(wall.failure.code);
    std::printf("%s: fails with %s\n", told ? "ok" : "FAILED", wanted.fails.c_str());
    return told;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        refuse("usage: case_runner FILE.case");
    }
    const std::filesystem::path path = argv[1];
    try {
        const Case wanted = readCase(path);
        SolvedWall wall;
        bool good = true;
        if (!wanted.input.empty()) {
            solve(wall, wanted, path.parent_path() / wanted.input);
            good = outcomeHolds(wanted, wall);
        }
        for (const Check& check : wanted.checks) {
            const double value = evaluate(wall, check);
            const bool holds = std::fabs(value - check.expected) <= check.tolerance;
            std::printf("%s: %s: got %.6g\n", holds ? "ok" : "FAILED", check.text.c_str(), value);
            good = good && holds;
        }
        return good ? 0 : 1;
    } catch (const RuntimeError& error) {
        refuse(runtimeErrorMessage(error.number()) + " " + error.fileName());
    }
}
