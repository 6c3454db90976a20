// Net pressures and their approximations.
#include "sheet/pressure_parts.h"
#include "sheet/sections.h"
#include "solution/wall_diagrams.h"
#include "state/tolerances.h"

#include <algorithm>
#include <cmath>

namespace korvane::sheet {

namespace {

constexpr int NetNumber = 4;

double lowerGround(const Problem& problem) {
    return std::min(problem.SurfaceElev(Right, 1), problem.SurfaceElev(Left, 1));
}

/// PSF: the horizontal distributed load just below (k = 1) or just above (k = 2) a row. From the
/// row of the first point on, a stretch of the load ends at the first row at or below its end.
double distributedLoad(const Problem& problem, const ElevationGrid& grid, int row, int k) {
    int i = 1;
    while (i <= grid.NumElevs &&
           std::abs(grid.ElevGrid(i) - problem.HDistElev(1)) > SameElevation) {
        ++i;
    }
    double sum = 0;
    for (int j = 1; j < problem.HDistCount && i <= row; ++j) {
        sum += i == row && k == 1 ? problem.HDistLoad(j) : 0;
        for (bool within = true; within && ++i <= row;) {
            const double t = (problem.HDistElev(j) - grid.ElevGrid(i)) /
                             (problem.HDistElev(j) - problem.HDistElev(j + 1));
            within = 1 - t >= BreakShare;
            const bool here = i == row && (k == 2 || within);
            sum += here ? (1 - t) * problem.HDistLoad(j) + t * problem.HDistLoad(j + 1) : 0;
        }
    }
    return sum;
}

struct NetTerms {
    Expr active, passive;
};

/// Both net pressures of a row from the pressures in force.
NetTerms netTerms(const Problem& problem, const PressureDiagrams& diagrams, int i, int k) {
    const auto pressure = [](const char* index, double value) {
        return term("p", index, value, Quantity::Stress);
    };
    const Pressures& pressures = diagrams.pressures;
    const Expr water = pressure("w", pressures.WaterPressures(i, k));
    const double load = distributedLoad(problem, diagrams.grid, i, k);
    Expr active = pressure("aR", pressures.ActivePressures(Right, i, k)) -
                  pressure("pL", pressures.PassivePressures(Left, i, k)) + water;
    Expr passive = pressure("pR", pressures.PassivePressures(Right, i, k)) -
                   pressure("aL", pressures.ActivePressures(Left, i, k)) + water;
    if (problem.HDistCount > 0) {
        const Expr q = term("q", "h", load, Quantity::Stress);
        active = active + q;
        passive = passive + q;
    }
    return {active, passive};
}

/// What the solution works with: below the lower ground the mean of both values.
struct NetValues {
    double active = 0, passive = 0;
};
NetValues netValues(const Problem& problem, const PressureDiagrams& diagrams, int i, int k) {
    const NetTerms own = netTerms(problem, diagrams, i, k);
    NetValues values{own.active.value(), own.passive.value()};
    if (diagrams.grid.ElevGrid(i) < lowerGround(problem) - SameElevation) {
        const NetTerms other = netTerms(problem, diagrams, i, 3 - k);
        const double below = distributedLoad(problem, diagrams.grid, i, k) -
                             distributedLoad(problem, diagrams.grid, i, 3 - k);
        // The distributed load is put on behind the mean.
        values.active = (own.active.value() + other.active.value() + below) / 2;
        values.passive = (own.passive.value() + other.passive.value() + below) / 2;
    }
    return values;
}

/// The row that the solution has put in where net active pressure crosses zero below the lower
/// ground, or the one below a row at which it only touches zero from above; 0 without one.
int putInRow(const Problem& problem, const PressureDiagrams& diagrams) {
    const auto& net = diagrams.NetActive;
    int row = 1;
    const auto below = [&](int i) {
        return i < diagrams.grid.NumElevs &&
               diagrams.grid.ElevGrid(i) > lowerGround(problem) + SameElevation;
    };
    while (below(row)) {
        ++row;
    }
    for (int i = row; i + 1 <= diagrams.grid.NumElevs; ++i) {
        if (i > row && net(i, 1) == 0 && net(i, 2) == 0 && net(i - 1, 1) > 0) {
            return i;
        }
        if (i > row && std::abs(net(i, 2)) <= PressureNoise && net(i, 1) > PressureNoise) {
            return i + 1;
        }
        if (net(i, 1) <= PressureNoise) {
            return 0;
        }
    }
    return 0;
}

/// The rows as the search found them: an anchored wall's last row not yet moved up to the bottom.
PressureDiagrams searchedRows(const SheetRequest& request, const PressureStage& stage) {
    return stage.review || request.problem.WallType != WallKind::Anchored
               ? stage.diagrams
               : withWaterInStep(request.solved.results->levels(stage.level).solved);
}

/// Values on the straight lines between the rows above and below.
NetValues betweenRows(const Problem& problem, const PressureDiagrams& diagrams, int i) {
    const auto elev = [&](int row) { return diagrams.grid.ElevGrid(row); };
    const double t = (elev(i - 1) - elev(i)) / (elev(i - 1) - elev(i + 1));
    const NetValues above = netValues(problem, diagrams, i - 1, 1);
    const NetValues below = netValues(problem, diagrams, i + 1, 2);
    return {(1 - t) * above.active + t * below.active, (1 - t) * above.passive + t * below.passive};
}

bool isMean(const Problem& problem, const PressureDiagrams& diagrams, int i) {
    if (diagrams.grid.ElevGrid(i) >= lowerGround(problem) - SameElevation) {
        return false;
    }
    const NetTerms below = netTerms(problem, diagrams, i, 1);
    const NetTerms above = netTerms(problem, diagrams, i, 2);
    return std::abs(below.active.value() - above.active.value()) > 0.05 ||
           std::abs(below.passive.value() - above.passive.value()) > 0.05;
}

/// FT: down to here the diagrams are those of the pressures.
double endOfDiagrams(const SheetRequest& request, const PressureStage& stage) {
    const Results* results = request.solved.results;
    const bool cantilever = request.problem.WallType == WallKind::Cantilever;
    return !stage.review && cantilever && results != nullptr ? results->levels(1).transitionElev
                                                             : lowestElev(stage);
}

void checkNet(SheetWriter& writer, const SheetRequest& request, const PressureStage& stage) {
    const PressureDiagrams diagrams = searchedRows(request, stage);
    const double end = endOfDiagrams(request, stage);
    WorstCheck active("Net active pressure, " + stage.prefix + "rows", Quantity::Stress);
    WorstCheck passive("Net passive pressure, " + stage.prefix + "rows", Quantity::Stress);
    const int putIn = putInRow(request.problem, diagrams);
    for (int i = 1; i < diagrams.grid.NumElevs - (stage.review ? 1 : 0); ++i) {
        const double elev = diagrams.grid.ElevGrid(i);
        if (elev <= end + SameElevation) {
            break;
        }
        for (const int k : {2, 1}) {
            const NetValues own = i == putIn ? betweenRows(request.problem, diagrams, i)
                                             : netValues(request.problem, diagrams, i, k);
            const std::string at = "at " + elevationText(elev, request.units);
            active.add(own.active, diagrams.NetActive(i, k), at);
            passive.add(own.passive, diagrams.NetPassive(i, k), at);
        }
    }
    active.tell(writer);
    passive.tell(writer);
}

/// The rows that a person would look at: the jump at the lower ground, and two below it.
void writeRows(SheetWriter& writer, const SheetRequest& request, const PressureStage& stage) {
    const PressureDiagrams& diagrams = stage.diagrams;
    const double ground = lowerGround(request.problem);
    const double lowest = lowestElev(stage);
    bool defined = false;
    for (const double wanted : {ground, (ground + lowest) / 2}) {
        int row = 0;
        for (int i = 2; i < diagrams.grid.NumElevs; ++i) {
            if (diagrams.grid.ElevGrid(i) <= wanted + SameElevation) {
                row = i;
                break;
            }
        }
        if (row == 0 || diagrams.grid.ElevGrid(row) < lowest) {
            continue;
        }
        const NetTerms net = netTerms(request.problem, diagrams, row, 1);
        const std::string label =
            "Below " + elevationText(diagrams.grid.ElevGrid(row), request.units) + ":";
        if (!defined) {
            writer.definition({"p", "net active"}, net.active);
            writer.definition({"p", "net passive"}, net.passive);
            defined = true;
        }
        writer.numbers({"p", "net active"}, net.active, Quantity::Stress, label);
        writer.numbers({"p", "net passive"}, net.passive, Quantity::Stress, label);
    }
}

void writeMeans(SheetWriter& writer, const SheetRequest& request, const PressureStage& stage) {
    const PressureDiagrams& diagrams = stage.diagrams;
    Table table;
    table.caption = "Jumps below the lower ground and the mean that stands for them";
    table.columns = {{"EL", Quantity::Length},
                     {"Net active above", Quantity::Stress},
                     {"below", Quantity::Stress},
                     {"mean", Quantity::Stress},
                     {"Net passive above", Quantity::Stress},
                     {"below", Quantity::Stress},
                     {"mean", Quantity::Stress}};
    const double end = endOfDiagrams(request, stage);
    for (int i = 2; i < diagrams.grid.NumElevs - (stage.review ? 1 : 0); ++i) {
        if (!isMean(request.problem, diagrams, i) ||
            diagrams.grid.ElevGrid(i) <= end + SameElevation) {
            continue;
        }
        const NetTerms above = netTerms(request.problem, diagrams, i, 2);
        const NetTerms below = netTerms(request.problem, diagrams, i, 1);
        const NetValues mean = netValues(request.problem, diagrams, i, 1);
        const auto stress = [&](double value) { return writer.value(Quantity::Stress, value); };
        table.rows.push_back({writer.value(Quantity::Length, diagrams.grid.ElevGrid(i)),
                              stress(above.active.value()), stress(below.active.value()),
                              stress(mean.active), stress(above.passive.value()),
                              stress(below.passive.value()), stress(mean.passive)});
    }
    if (table.rows.empty()) {
        writer.paragraph("No diagram jumps below the lower ground: there is nothing to approximate "
                         "there.");
        return;
    }
    writer.paragraph("Approximation: below the lower ground a jump of the diagrams (at a layer's "
                     "bottom) is not kept; the mean of its two values stands for it, so that the "
                     "diagram runs straight to the rows above and below. It acts at:");
    writer.table(table);
}

/// The straight line to zero from the row above it to the row below.
void writeCrossing(SheetWriter& writer, const SheetRequest& request, const PressureStage& stage,
                   int row) {
    const PressureDiagrams diagrams = searchedRows(request, stage);
    const auto elev = [&](const char* index, int i) {
        return term("y", index, diagrams.grid.ElevGrid(i), Quantity::Length);
    };
    const auto net = [&](const char* index, int i, int k) {
        return term("p", index, netValues(request.problem, diagrams, i, k).active,
                    Quantity::Stress);
    };
    const Expr above = net("1", row - 1, 1);
    const Expr zero = elev("1", row - 1) + (elev("1", row - 1) - elev("2", row + 1)) * above /
                                               (net("2", row + 1, 2) - above);
    writer.paragraph("Net active pressure crosses zero between two rows; a row is put in there, "
                     "with all its values on straight lines:");
    const double own = writer.formula({"y", "0"}, zero, Quantity::Length);
    writer.check("Elevation of zero net active pressure, " + stage.prefix + "by straight line",
                 Quantity::Length, own, diagrams.grid.ElevGrid(row), 1e-6, 1);
}

/// Where the net active pressure first comes to zero below the lower ground.
void writeZero(SheetWriter& writer, const SheetRequest& request, const PressureStage& stage) {
    const PressureDiagrams& diagrams = stage.diagrams;
    const double ground = lowerGround(request.problem);
    const int putIn = putInRow(request.problem, diagrams);
    for (int i = 1; i < diagrams.grid.NumElevs; ++i) {
        if (diagrams.grid.ElevGrid(i) > ground + SameElevation ||
            diagrams.NetActive(i, 1) > PressureNoise) {
            continue;
        }
        if (i == putIn && diagrams.grid.ElevGrid(i) > endOfDiagrams(request, stage)) {
            writeCrossing(writer, request, stage, i);
        }
        writer.paragraph("Net active pressure has come to zero at " +
                         elevationText(diagrams.grid.ElevGrid(i), request.units) +
                         ": from there down the resistance in front outweighs what pushes.");
        return;
    }
    writer.paragraph("Net active pressure does not come to zero below the lower ground.");
}

} // namespace

void writeNetPressures(SheetWriter& writer, const SheetRequest& request) {
    writer.section(NetNumber, "Net pressures");
    std::vector<PressureStage> stages = pressureStages(request);
    for (PressureStage& stage : stages) {
        putInSearchedWater(request, stage);
    }
    if (stages.empty()) {
        writer.paragraph("The solution has not come to net pressures.");
        return;
    }
    writer.paragraph("Two diagrams act on the wall, positive toward the left: net active pressure "
                     "(right active less left passive) where it moves to the left, net passive "
                     "pressure (right passive less left active) where it moves to the right; with "
                     "water and horizontal distributed loads.");
    for (const PressureStage& stage : stages) {
        writer.mute(!stage.shown);
        if (!stage.title.empty()) {
            writer.heading("Of the " + stage.title);
        }
        if (!stage.review || stage.diagrams.NetActive(1, 1) != 0 || stages.size() == 1) {
            writeRows(writer, request, stage);
            writeMeans(writer, request, stage);
            writeZero(writer, request, stage);
            checkNet(writer, request, stage);
        }
        writer.mute(false);
    }
}

} // namespace korvane::sheet
