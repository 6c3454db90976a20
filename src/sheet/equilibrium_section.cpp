// The balance of each solution.
#include "sheet/sections.h"
#include "sheet/stages.h"
#include "sheet/statics.h"
#include "solution/wall_diagrams.h"
#include "state/tolerances.h"
#include "wall/trial_pressures.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace korvane::sheet {

namespace {

constexpr int EquilibriumNumber = 5;

/// One level on its way through the section.
struct Balance {
    SheetWriter& writer;
    const Problem& problem;
    const LevelResult& level;
    std::string prefix; ///< of checks: the method, where there are two
    WallLoading loading;
    double pivot = 0; ///< FT

    bool anchored() const { return level.method != SolutionMethod::Cantilever; }
    bool freeEarth() const { return level.method == SolutionMethod::FreeEarth; }
    std::string what(std::string_view text) const { return prefix + std::string(text); }
    /// A check within a tolerance that is not a share of the value.
    void checkWithin(std::string_view text, Quantity quantity, double sheet, double engine,
                     double tolerance) const {
        writer.checkWithin(what(text), quantity, sheet, engine, tolerance);
    }
};

// ---- words
// ---------------------------------------------------------------------------------------

std::string preciseText(const SheetWriter& writer, Quantity quantity, double value) {
    return writer.precise(quantity, value).markup + " " + unitMarkup(quantity, writer.units());
}

std::string unknownsText(const Balance& balance) {
    const SheetWriter& writer = balance.writer;
    const std::string moment = preciseText(writer, Quantity::Moment, MomentResidual);
    switch (balance.level.method) {
    case SolutionMethod::FreeEarth:
        return "Unknown are the bottom of the wall and the anchor force. The bottom is where the "
               "moment of all loads about the anchor vanishes (within " +
               moment + "); the anchor takes the sum of the forces.";
    case SolutionMethod::FixedEarth:
        return "Unknown are the bottom of the wall and the anchor force. For a bottom the anchor "
               "force is the one that keeps the anchor in its place while the bottom is built in; "
               "the bottom is where that leaves no moment (within " +
               moment + "). The horizontal force left there is the toe reaction.";
    case SolutionMethod::Cantilever:
        break;
    }
    return "Unknown are the bottom of the wall and the transition, the elevation below which the "
           "net pressure runs straight to the net passive pressure at the bottom. They are where "
           "the sum of the forces (within " +
           preciseText(writer, Quantity::Force, ForceResidual) +
           ") and the sum of the moments about the bottom (within " + moment + ") vanish.";
}

/// An analysis seeks the factor whose own bottom is that of the wall.
std::string searchedText(const SheetWriter& writer) {
    return " The bottom of this wall is given: the factor of safety is varied until the bottom "
           "found for it lies within " +
           preciseText(writer, Quantity::Length, BottomTolerance) +
           " of the given one, and the values below are those of the bottom found.";
}

void writeUnknowns(const Balance& balance) {
    const auto& [writer, problem, level, prefix, loading, pivot] = balance;
    const bool searched = problem.ProgramMode == Mode::Analysis;
    writer.paragraph(unknownsText(balance) + (searched ? searchedText(writer) : ""));
    Table table;
    table.columns = {{.title = "Found"}, {.title = "Value"}};
    const auto add = [&](std::string_view name, Quantity quantity, double value) {
        table.rows.push_back(
            {balance.writer.text(name), {balance.writer.withUnit(quantity, value), true}});
    };
    if (searched) {
        add("Factor of safety", Quantity::Number, level.factorOfSafety);
        add("Bottom of the wall as given", Quantity::Length, problem.WallBottomElev);
    }
    add("Bottom, elevation", Quantity::Length, level.bottomElev);
    add("Penetration below the lower ground", Quantity::Length, level.penetration);
    add("Net pressure at the bottom", Quantity::Stress, level.bottomPressure);
    if (balance.anchored()) {
        add("Anchor force", Quantity::Force, level.anchorForce);
    } else {
        add("Transition, elevation", Quantity::Length, level.transitionElev);
    }
    if (level.method == SolutionMethod::FixedEarth) {
        add("Toe reaction, toward the left", Quantity::Force, level.toeReaction);
    }
    if (problem.SeepageKind != Seepage::None && problem.WaterDataKind == WaterData::Elevations) {
        add("Seepage gradient", Quantity::Gradient, level.seepageGradient);
    }
    writer.table(table);
    if (seepageFollowsBottom(problem)) {
        writer.paragraph("Seepage hangs on the bottom: the search was run " +
                         std::to_string(level.seepagePasses) +
                         " times, with pressures for the bottom of the pass before, until it moved "
                         "by no more than " +
                         writer.withUnit(Quantity::Length, BottomTolerance) + ".");
    }
}

// ---- the table of forces
// -------------------------------------------------------------------------

/// A force of the table, toward the left.
struct Force {
    std::string name;
    double force = 0;
    double elev = 0; ///< FT, of its line of action
};

std::vector<Force> supportsOf(const Balance& balance) {
    std::vector<Force> forces;
    if (balance.anchored()) {
        forces.push_back({"Anchor", -balance.level.anchorForce, balance.problem.AnchorElev});
    }
    if (balance.level.method == SolutionMethod::FixedEarth) {
        forces.push_back({"Toe reaction", balance.level.toeReaction, balance.level.bottomElev});
    }
    return forces;
}

std::vector<Force> loadsOf(const Balance& balance) {
    std::vector<Force> forces;
    const UnitSystem units = balance.writer.units();
    for (const PressureArea& area : areasBetweenZeros(balance.loading)) {
        forces.push_back({"Net pressure from " + quantityText(Quantity::Length, area.top, units) +
                              " to " + quantityText(Quantity::Length, area.bottom, units),
                          area.force, area.centre});
    }
    for (const PointForce& line : balance.loading.lines) {
        forces.push_back({"Horizontal line load", line.force, line.elev});
    }
    return forces;
}

/// Sums of what the table shows.
struct Totals {
    double force = 0;
    double moment = 0;
};

Totals writeForces(const Balance& balance) {
    const SheetWriter& writer = balance.writer;
    Table table;
    table.caption =
        std::string("Forces toward the left, and their moments about the ") +
        (balance.freeEarth() ? "anchor (arms count downward)" : "bottom (arms count upward)") +
        " at " + elevationText(balance.pivot, writer.units());
    table.columns = {{.title = "Force"},
                     {.title = "Size", .quantity = Quantity::Force},
                     {.title = "acts at elevation", .quantity = Quantity::Length},
                     {.title = "Arm", .quantity = Quantity::Length},
                     {.title = "Moment", .quantity = Quantity::Moment}};
    std::vector<Force> forces = loadsOf(balance);
    const auto supports = supportsOf(balance);
    forces.insert(forces.end(), supports.begin(), supports.end());
    Totals totals;
    const LoadSums sums = sumsAbout(balance.loading, balance.pivot);
    const double sign = balance.freeEarth() ? -1 : 1;
    for (const Force& force : forces) {
        const double arm = sign * (force.elev - balance.pivot) + 0.0; // no minus sign before zero
        totals.force += force.force;
        totals.moment += arm * force.force;
        table.rows.push_back({writer.text(force.name), writer.precise(Quantity::Force, force.force),
                              writer.value(Quantity::Length, force.elev),
                              writer.value(Quantity::Length, arm),
                              writer.precise(Quantity::Moment, arm * force.force + 0.0)});
    }
    totals.force = withoutRounding(totals.force, sums.forceSizes);
    totals.moment = withoutRounding(totals.moment, sums.momentSizes);
    table.rows.push_back({writer.text("Sum"), writer.precise(Quantity::Force, totals.force), Cell{},
                          Cell{}, writer.precise(Quantity::Moment, totals.moment)});
    balance.writer.table(table);
    return totals;
}

// ---- checks
// --------------------------------------------------------------------------------------

/// Of a bottom between two rows: the method starts its line just below the row above, with the
/// slope that it has from just above it. A jump there counts with the share of the way; it is given
/// too.
struct BottomByRows {
    double pressure = 0; ///< PSF
    double jump = 0;     ///< PSF of it
};

/// Net passive pressure of a cantilever, else net active pressure, on the line through the bottom.
BottomByRows bottomPressureByRows(const Balance& balance) {
    const LevelResult& level = balance.level;
    const PressureDiagrams wall = wallDiagrams(level);
    const int n = wall.grid.NumElevs;
    if (!balance.anchored()) {
        const double below =
            n == level.bottomIndex ? level.bottomRowElev : level.solved.grid.ElevGrid(n);
        // The search knew no row at the transition yet.
        const int upper = level.transitionRow == n - 1 ? n - 2 : n - 1;
        const double above = wall.grid.ElevGrid(upper);
        const double share = (above - level.bottomElev) / (above - below);
        const double jump = std::abs(below - level.bottomElev) <= SameElevation
                                ? 0
                                : share * (wall.NetPassive(upper, 1) - wall.NetPassive(upper, 2));
        return {wall.NetPassive(n, 2) + jump, jump};
    }
    const auto& ElevGrid = level.solved.grid.ElevGrid;
    const auto& NetActive = level.solved.NetActive;
    const double share = (ElevGrid(n - 1) - level.bottomElev) / (ElevGrid(n - 1) - ElevGrid(n));
    return {(1 - share) * NetActive(n - 1, 1) + share * NetActive(n, 2)};
}

void checkFreeEarth(const Balance& balance, const Totals& totals) {
    const auto& [writer, problem, level, prefix, loading, pivot] = balance;
    const LoadSums sums = sumsAbout(loading, pivot);
    balance.checkWithin("moments about the anchor add up to none", Quantity::Moment, totals.moment,
                        0, MomentResidual + SumRounding * sums.momentSizes);
    writer.check(balance.what("anchor force, sum of all other forces"), Quantity::Force, sums.force,
                 level.anchorForce, SumRounding, sums.forceSizes);
    // What is left of the moment about the anchor acts on the lever between anchor and bottom.
    const double lever = problem.AnchorElev - level.bottomElev;
    balance.checkWithin("anchor force, by moments about the bottom", Quantity::Force,
                        anchorByStatics(problem, level), level.anchorForce,
                        (MomentResidual + SumRounding * sums.momentSizes) / std::fabs(lever) +
                            SumRounding * sums.forceSizes);
}

/// An anchor below the bottom holds nothing, whatever its force.
bool isBelow(const Balance& balance) {
    return balance.anchored() && balance.problem.AnchorElev < balance.level.bottomElev;
}

void checkFixedEarth(const Balance& balance, const Totals& totals) {
    const auto& [writer, problem, level, prefix, loading, pivot] = balance;
    const LoadSums sums = sumsAbout(loading, pivot);
    // The fourfold integrals of the loads cancel more digits than their sums.
    constexpr double integralRounding = 1e-7;
    writer.check(balance.what(isBelow(balance) ? "anchor force, by the moments continued to it"
                                               : "anchor force, by no deflection at the anchor"),
                 Quantity::Force, anchorByStatics(problem, level), level.anchorForce,
                 integralRounding, sums.forceSizes);
    balance.checkWithin("moments about the bottom add up to none", Quantity::Moment, totals.moment,
                        0, MomentResidual + SumRounding * sums.momentSizes);
    // The toe takes what the beam has left, with the anchor in its row.
    const LoadSums held = sumsAbout(heldLoading(problem, level), pivot);
    writer.check(balance.what("toe reaction, sum of all other forces"), Quantity::Force,
                 -held.force, level.toeReaction, integralRounding, held.forceSizes);
}

void checkCantilever(const Balance& balance, const Totals& totals) {
    const LoadSums sums = sumsAbout(balance.loading, balance.pivot);
    balance.checkWithin("horizontal forces add up to none", Quantity::Force, totals.force, 0,
                        ForceResidual + SumRounding * sums.forceSizes);
    balance.checkWithin("moments about the bottom add up to none", Quantity::Moment, totals.moment,
                        0, MomentResidual + SumRounding * sums.momentSizes);
}

/// Where the anchor of moments, shears and deflections is not that of the search.
void writeAnchorRow(const Balance& balance) {
    const auto& [writer, problem, level, prefix, loading, pivot] = balance;
    if (loading.anchorElev <= loading.bottom) {
        writer.paragraph("The bottom lies above the anchor: such an anchor holds nothing, and its "
                         "force is a number without a meaning. Shears, moments and deflections "
                         "are those of a wall without an anchor.");
    } else if (std::abs(loading.anchorElev - problem.AnchorElev) > SamePoint) {
        writer.paragraph("Approximation: a row stands within " +
                         writer.precise(Quantity::Length, SameElevation).markup + " " +
                         unitMarkup(Quantity::Length, writer.units()) +
                         " of the anchor; shears, moments, deflections and the toe reaction have "
                         "the anchor there.");
    }
}

void checkBalance(const Balance& balance, const Totals& totals) {
    const auto& [writer, problem, level, prefix, loading, pivot] = balance;
    const double lower = std::min(problem.SurfaceElev(Right, 1), problem.SurfaceElev(Left, 1));
    writer.check(balance.what("penetration, lower ground less bottom"), Quantity::Length,
                 lower - level.bottomElev, level.penetration, SumRounding,
                 std::fabs(lower) + std::fabs(level.bottomElev));
    const BottomByRows bottom = bottomPressureByRows(balance);
    if (std::abs(bottom.jump) > PressureNoise) {
        writer.paragraph("Approximation: net pressure jumps in the row above the bottom; the line "
                         "to the bottom begins below the jump with the slope from above it, which "
                         "changes the pressure at the bottom by " +
                         writer.withUnit(Quantity::Stress, bottom.jump) + ".");
    }
    writer.check(balance.what("net pressure at the bottom, on the line of its rows"),
                 Quantity::Stress, bottom.pressure, level.bottomPressure, SumRounding,
                 1 / SumRounding * PressureNoise);
    if (problem.ProgramMode == Mode::Analysis) {
        balance.checkWithin("bottom, as given", Quantity::Length, level.bottomElev,
                            problem.WallBottomElev, BottomTolerance);
    }
    switch (level.method) {
    case SolutionMethod::FreeEarth:
        checkFreeEarth(balance, totals);
        break;
    case SolutionMethod::FixedEarth:
        checkFixedEarth(balance, totals);
        break;
    case SolutionMethod::Cantilever:
        checkCantilever(balance, totals);
        break;
    }
}

// ---- formulas
// ------------------------------------------------------------------------------------

Expr length(std::string letter, std::string subscript, double value) {
    return term(std::move(letter), std::move(subscript), value, Quantity::Length);
}

/// The anchor force of the balance, and what is left of it.
void writeSums(const Balance& balance, const Totals& totals) {
    const auto& [writer, problem, level, prefix, loading, pivot] = balance;
    const LoadSums sums = sumsAbout(loading, level.bottomElev);
    const Expr lever = length("z", "A", problem.AnchorElev) - length("z", "B", level.bottomElev);
    if (balance.freeEarth()) {
        writer.formula({"T"}, term("M", "B", sums.moment, Quantity::Moment) / lever,
                       Quantity::Force,
                       "anchor force by the moment of all loads about the bottom:");
    } else if (balance.anchored()) {
        const double height = problem.AnchorElev - level.bottomElev;
        const double area = isBelow(balance) ? continuedMoment(problem, level)
                                             : MomentAreas(loading).builtIn(problem.AnchorElev);
        writer.paragraph("Built in at its bottom and without its anchor, the wall would move at "
                         "the anchor by D/EI, where D is the static moment of its moment diagram "
                         "about the anchor. The anchor force T brings it back: D is T times the "
                         "cube of the height over 3. M with the subscript D is D over the square "
                         "of the height.");
        if (isBelow(balance)) {
            writer.paragraph(
                "The anchor stands below the bottom, where there is no wall to move. The solution "
                "continues its formula: D is the static moment about the anchor of the moment "
                "diagram from the bottom up to the zero of net pressure, " +
                elevationText(zeroOfNetPressure(problem, level), writer.units()) +
                ", and from there down to the anchor of the moments of the loads above that point "
                "alone. The force is that number.");
        }
        writer.formula({"T"},
                       Expr(3) * term("M", "D", area / (height * height), Quantity::Moment) / lever,
                       Quantity::Force,
                       isBelow(balance) ? "anchor force by the moments continued to it:"
                                        : "anchor force by no deflection at the anchor:");
    }
    writer.paragraph("What is left: force " + preciseText(writer, Quantity::Force, totals.force) +
                     ", moment " + preciseText(writer, Quantity::Moment, totals.moment) + ".");
}

void writeLevel(SheetWriter& writer, const SheetRequest& request, int number) {
    const Results& results = *request.solved.results;
    const LevelResult& level = results.levels(number);
    const std::string name = solutionMethodName(level.method);
    Balance balance{writer,
                    request.problem,
                    level,
                    results.levelCount > 1 ? name + ": " : std::string(),
                    wallLoading(request.problem, level),
                    level.bottomElev};
    balance.pivot = balance.freeEarth() ? request.problem.AnchorElev : level.bottomElev;
    if (results.levelCount > 1) {
        writer.heading(std::string(1, static_cast<char>(name[0] - 'a' + 'A')) + name.substr(1) +
                       " support");
    }
    writeUnknowns(balance);
    const Totals totals = writeForces(balance);
    writeSums(balance, totals);
    if (balance.anchored()) {
        writeAnchorRow(balance);
    }
    checkBalance(balance, totals);
}

} // namespace

void writeEquilibrium(SheetWriter& writer, const SheetRequest& request) {
    if (request.solved.results == nullptr) {
        return;
    }
    writer.section(EquilibriumNumber, "Equilibrium");
    for (int number = 1; number <= request.solved.results->levelCount; ++number) {
        writeLevel(writer, request, number);
    }
}

} // namespace korvane::sheet
