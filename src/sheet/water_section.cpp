// Seepage and net water pressures.
#include "sheet/pressure_parts.h"
#include "state/tolerances.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <set>
#include <vector>

namespace korvane::sheet {

namespace {

constexpr double SeepageEndNear = 0.1; ///< FT, a row so near the end of seepage is the last in it

/// FT; the search for the bottom ends where a seepage pass moves it by no more than this.
constexpr double BottomStep = 0.1;

bool seeps(const Problem& problem) {
    return problem.WaterDataKind == WaterData::Elevations && problem.SeepageKind != Seepage::None;
}

Expr elevTerm(const char* subscript, double elev) {
    return term("y", subscript, elev, Quantity::Length);
}

Expr waterWeight(const Problem& problem) {
    return term("γ", "w", problem.WaterUnitWeight, Quantity::UnitWeight);
}

Expr gradientTerm(const PressureStage& stage) {
    return term("i", "", stage.gradient, Quantity::Gradient);
}

/// Net pressure at an elevation above the end of seepage, of the parts that act there.
Expr waterPressure(const Problem& problem, const PressureStage& stage, double elev) {
    const Expr y = elevTerm("", elev);
    const Expr weight = waterWeight(problem);
    Expr sum = 0.0;
    bool any = false;
    const auto add = [&](bool plus, const Expr& part) {
        sum = !any ? (plus ? part : -part) : plus ? sum + part : sum - part;
        any = true;
    };
    if (problem.WaterElev(Right) > elev) {
        add(true, (elevTerm("R", problem.WaterElev(Right)) - y) * weight);
    }
    if (problem.WaterElev(Left) > elev) {
        add(false, (elevTerm("L", problem.WaterElev(Left)) - y) * weight);
    }
    if (seeps(problem)) {
        const Expr i = gradientTerm(stage);
        if (problem.SeepageElev > elev) {
            add(false, (elevTerm("S", problem.SeepageElev) - y) * i * weight);
        }
        if (seepageExit(problem) > elev) {
            add(false, (elevTerm("X", seepageExit(problem)) - y) * i * weight);
        }
    }
    return sum;
}

/// The highest row so near the end of seepage that the head counts as used up below it.
double lastSeepingElev(const PressureStage& stage) {
    const ElevationGrid& grid = stage.diagrams.grid;
    for (int i = 1; i <= grid.NumElevs; ++i) {
        if (std::abs(grid.ElevGrid(i) - stage.seepageEnd) <= SeepageEndNear) {
            return grid.ElevGrid(i);
        }
    }
    return stage.seepageEnd;
}

/// PSF just above and just below each row of a grid, by the row's number.
struct WaterRows {
    std::vector<double> above, below;

    explicit WaterRows(const ElevationGrid& grid)
        : above(static_cast<std::size_t>(grid.NumElevs) + 1), below(above) {}

    void add(int row, double pressure) {
        above[static_cast<std::size_t>(row)] += pressure;
        addBelow(row, pressure);
    }
    void addBelow(int row, double pressure) { below[static_cast<std::size_t>(row)] += pressure; }
};

/// The highest row at an elevation; 0 without one.
int rowAt(const ElevationGrid& grid, double elev) {
    for (int row = 1; row <= grid.NumElevs; ++row) {
        if (std::abs(grid.ElevGrid(row) - elev) <= SameElevation) {
            return row;
        }
    }
    return 0;
}

/// Straight lines between the points of a table, from one that has a row to the next that has one.
void addTable(const Problem& problem, const ElevationGrid& grid, WaterRows& rows) {
    const int count = problem.WaterPressCount;
    int row = rowAt(grid, problem.WaterPressElev(1));
    if (row == 0) {
        return;
    }
    rows.addBelow(row, problem.WaterPressure(1));
    for (int j = 2; ++row <= grid.NumElevs;) {
        const double elev = grid.ElevGrid(row);
        if (j > count || elev < problem.WaterPressElev(count)) {
            rows.add(row, problem.WaterPressure(count));
            j = count + 1;
            continue;
        }
        const double top = problem.WaterPressElev(j - 1);
        const double t = (top - elev) / (top - problem.WaterPressElev(j));
        rows.add(row, (1 - t) * problem.WaterPressure(j - 1) + t * problem.WaterPressure(j));
        j += std::abs(elev - problem.WaterPressElev(j)) <= SameElevation ? 1 : 0;
    }
}

void addStillWater(const Problem& problem, const ElevationGrid& grid, int side, WaterRows& rows) {
    const double level = problem.WaterElev(side);
    const double weight = (side == Right ? 1 : -1) * problem.WaterUnitWeight;
    int row = level > problem.WallTopElev ? 1 : rowAt(grid, level);
    if (row == 0) {
        return; // the search for the bottom has put another row in its place
    }
    rows.addBelow(row, (level - grid.ElevGrid(row)) * weight);
    while (++row <= grid.NumElevs) {
        rows.add(row, (level - grid.ElevGrid(row)) * weight);
    }
}

/// The head that seepage loses along a face from an elevation down, from the first row on where
/// that has no row; gives the row that ends it, one so near the end of seepage. `nearest` is the
/// largest distance that counts as near.
int addHeadLoss(const ElevationGrid& grid, const PressureStage& stage, double weight, double from,
                double nearest, WaterRows& rows) {
    int row = rowAt(grid, from) + 1;
    for (; row <= grid.NumElevs; ++row) {
        const double loss = (from - grid.ElevGrid(row)) * weight * stage.gradient;
        const auto place = static_cast<std::size_t>(row);
        rows.below[place] -= loss;
        rows.above[place] = rows.below[place];
        if (std::abs(grid.ElevGrid(row) - stage.seepageEnd) <= nearest) {
            break;
        }
    }
    return row;
}

WaterRows waterRows(const Problem& problem, const PressureStage& stage, const ElevationGrid& grid) {
    WaterRows rows(grid);
    if (problem.WaterDataKind == WaterData::Pressures) {
        addTable(problem, grid, rows);
        return rows;
    }
    for (const int side : {Right, Left}) {
        addStillWater(problem, grid, side, rows);
    }
    if (seeps(problem)) {
        const double weight = problem.WaterUnitWeight;
        addHeadLoss(grid, stage, weight, problem.SeepageElev, SeepageEndNear, rows);
        const int last = addHeadLoss(grid, stage, weight, seepageExit(problem),
                                     std::nextafter(SeepageEndNear, 0), rows);
        for (int row = last + 1; row <= grid.NumElevs; ++row) {
            rows.above[static_cast<std::size_t>(row)] = rows.below[static_cast<std::size_t>(row)] =
                0;
        }
    }
    return rows;
}

/// The rows that were there before wedge sides and net pressures put in theirs at zeros.
ElevationGrid withoutLaterRows(const PressureStage& stage, const ElevationGrid& rows) {
    bool bothByWedges = true;
    double upperSurface = -std::numeric_limits<double>::infinity();
    std::set<double> worked;
    std::set<double> putIn;
    for (const int side : {Right, Left}) {
        const auto& wedge = stage.details->sides(side).wedge.pressures;
        bothByWedges = bothByWedges && !wedge.empty();
        upperSurface = std::max(upperSurface, wedge.empty() ? upperSurface : wedge.front().elev);
        for (const WedgePressureRow& row : wedge) {
            (row.inserted ? putIn : worked).insert(row.elev);
        }
    }
    ElevationGrid kept;
    for (int row = 1; row <= rows.NumElevs; ++row) {
        const double elev = rows.ElevGrid(row);
        const bool came = bothByWedges && elev < upperSurface && worked.count(elev) == 0;
        if (!came && putIn.count(elev) == 0) {
            kept.ElevGrid(++kept.NumElevs) = elev;
        }
    }
    return kept;
}

/// The grid on which a stage's water was worked out before the search for the bottom.
ElevationGrid searchedGrid(const SheetRequest& request, const PressureStage& stage) {
    ElevationGrid rows = stage.diagrams.grid;
    if (!stage.review) {
        const LevelResult& level = request.solved.results->levels(stage.level);
        rows = level.solved.grid;
        rows.ElevGrid(level.bottomIndex) = level.bottomRowElev;
    }
    if (stage.details == nullptr) {
        return rows;
    }
    for (const int side : {Right, Left}) {
        if (!stage.details->sides(side).rows.empty()) {
            rows = workedRows(stage.details->sides(side));
            break;
        }
    }
    return withoutLaterRows(stage, rows);
}

/// A cantilever wall's water is worked out again at the end, on all its rows with the bottom among
/// them.
bool hasNewWater(const SheetRequest& request, const PressureStage& stage) {
    if (stage.review || request.problem.WallType != WallKind::Cantilever) {
        return false;
    }
    const LevelResult& level = request.solved.results->levels(stage.level);
    return level.transitionElev > level.bottomElev;
}

ElevationGrid waterGrid(const SheetRequest& request, const PressureStage& stage) {
    return hasNewWater(request, stage) ? request.solved.results->levels(stage.level).solved.grid
                                       : searchedGrid(request, stage);
}

/// An elevation at which seepage begins and whose row the bottom of a cantilever wall has taken:
/// its head loss then begins at the first row. None elsewhere.
std::optional<double> lostRow(const SheetRequest& request, const PressureStage& stage) {
    if (!seeps(request.problem) || !hasNewWater(request, stage)) {
        return std::nullopt;
    }
    for (const double elev : {request.problem.SeepageElev, seepageExit(request.problem)}) {
        if (rowAt(waterGrid(request, stage), elev) == 0 &&
            rowAt(searchedGrid(request, stage), elev) != 0) {
            return elev;
        }
    }
    return std::nullopt;
}

/// Own pressures at any elevation: straight lines between the rows of a grid.
struct WaterLine {
    ElevationGrid grid;
    WaterRows rows;

    /// Just below (k = 1) or just above (k = 2) an elevation.
    double at(double elev, int k) const {
        std::size_t row = 1;
        while (static_cast<int>(row) < grid.NumElevs &&
               grid.ElevGrid(static_cast<int>(row)) > elev) {
            ++row;
        }
        const double bottom = grid.ElevGrid(static_cast<int>(row));
        if (row == 1 || bottom == elev) {
            return k == 1 ? rows.below[row] : rows.above[row];
        }
        const double top = grid.ElevGrid(static_cast<int>(row) - 1);
        const double t = (top - elev) / (top - bottom);
        return (1 - t) * rows.below[row - 1] + t * rows.above[row];
    }
};

void writeLostRow(SheetWriter& writer, const SheetRequest& request, const PressureStage& stage) {
    if (const std::optional<double> lost = lostRow(request, stage)) {
        writer.paragraph("Approximation: the bottom of the wall has taken the row at " +
                         elevationText(*lost, request.units) +
                         ", from which head is lost. The diagram of water that the solution works "
                         "out on the rows of the wall found loses that head from the first row on; "
                         "the net pressures and all that follows rest on the water of the search, "
                         "with that row.");
    }
}

/// All rows, just above and just below them.
void checkWater(SheetWriter& writer, const SheetRequest& request, const PressureStage& stage) {
    const ElevationGrid& grid = stage.diagrams.grid;
    const auto& water = stage.diagrams.pressures.WaterPressures;
    const ElevationGrid worked = waterGrid(request, stage);
    const WaterLine own{worked, waterRows(request.problem, stage, worked)};
    const int last = grid.NumElevs;
    WorstCheck check("Water pressure, " + stage.prefix + "all rows", Quantity::Stress);
    for (int i = 1; i <= lowestRow(stage); ++i) {
        const std::string place = "at " + elevationText(grid.ElevGrid(i), request.units);
        if (i < last) {
            check.add(own.at(grid.ElevGrid(i), 1), water(i, 1), place);
        }
        check.add(own.at(grid.ElevGrid(i), 2), water(i, 2), place);
    }
    constexpr double rounding = 1e-6; // PSF, of elevations near a datum of thousands of feet
    check.tell(writer, 1e-9, rounding / 1e-9);
}

void writeGradient(SheetWriter& writer, const SheetRequest& request, const PressureStage& stage) {
    const Problem& problem = request.problem;
    const Expr head =
        elevTerm("R", problem.WaterElev(Right)) - elevTerm("L", problem.WaterElev(Left));
    const double headValue = writer.formula({"Δh", ""}, head, Quantity::Length);
    const Expr h = term("Δh", "", headValue, Quantity::Length);
    const Expr start = elevTerm("S", problem.SeepageElev);
    const Expr exit = elevTerm("X", seepageExit(problem));
    const bool automatic = problem.SeepageKind == Seepage::Automatic;
    if (!automatic) {
        writer.paragraph("The gradient is given: i = " +
                         quantityText(Quantity::Gradient, stage.gradient, request.units) + ".");
    } else if (stage.review && problem.ProgramMode == Mode::Design) {
        writer.paragraph("The gradient follows the bottom of the wall, which is not known at this "
                         "stop: the first pass takes i = " +
                         quantityText(Quantity::Gradient, stage.gradient, request.units) + ".");
    } else {
        const double bottom = problem.ProgramMode == Mode::Analysis
                                  ? problem.WallBottomElev
                                  : request.solved.results->levels(stage.level).bottomElev;
        const Expr path = start + exit - Expr(2) * elevTerm("B", bottom);
        writer.paragraph("The head is lost evenly along the path down the right face and up the "
                         "left one:");
        const double own = writer.formula({"i", ""}, h / path, Quantity::Gradient);
        const double limit = request.solved.review->SeepageGradientLimit;
        const bool held = problem.ProgramMode == Mode::Design && own > limit;
        if (held) {
            writer.paragraph("It is held at " +
                             quantityText(Quantity::Gradient, limit, request.units) +
                             ": steeper, and the soil in front would float or the net head be used "
                             "up above the soil.");
        } else if (problem.ProgramMode == Mode::Design) {
            writer.paragraph(
                "The solution takes the gradient of the bottom that its last pass but one has "
                "found, " +
                quantityText(Quantity::Gradient, stage.gradient, request.units) +
                ": its passes end when the bottom moves by no more than " +
                writer.withUnit(Quantity::Length, BottomStep) + ".");
        }
        const double step = 2 * BottomStep / std::abs(path.value());
        writer.check("Seepage gradient, " + stage.prefix + "of the bottom", Quantity::Gradient,
                     held ? limit : own, stage.gradient,
                     problem.ProgramMode == Mode::Design ? 1.2 * step : 1e-9);
    }
    const double end =
        writer.formula({"y", "E"}, (start + exit - h / gradientTerm(stage)) / Expr(2),
                       Quantity::Length, "Net head used up at");
    if (!stage.review) {
        writer.check("End of seepage, " + stage.prefix + "elevation", Quantity::Length, end,
                     stage.seepageEnd, 1e-9);
    }
}

void writeSeepage(SheetWriter& writer, const SheetRequest& request, const PressureStage& stage) {
    const Problem& problem = request.problem;
    writer.heading("Seepage");
    writer.paragraph(
        "Elevations: water right R and left L; S where seepage starts on the right, X where it "
        "leaves the soil on the left (the lower of ground and water), B the bottom of the wall.");
    writeGradient(writer, request, stage);
    const Expr i = gradientTerm(stage);
    const Expr weight = waterWeight(problem);
    writer.paragraph("Downward flow on the right makes soil heavier there, upward flow on the left "
                     "lighter; water bears of the soil's weight between S or X and E:");
    writer.formula({"w", "R"}, (Expr(1) - i) * weight, Quantity::UnitWeight);
    writer.formula({"w", "L"}, (Expr(1) + i) * weight, Quantity::UnitWeight);
    writer.paragraph("Above and below that it bears its full unit weight. The pressure of the "
                     "water falls by the head lost: on the right by the gradient below S, on the "
                     "left it grows by it below X; below E the net pressure is zero.");
}

void writePressureTable(SheetWriter& writer, const Problem& problem) {
    Table table;
    table.caption = "Net water pressures as given";
    table.columns = {{"EL", Quantity::Length}, {"Net pressure", Quantity::Stress}};
    for (int j = 1; j <= problem.WaterPressCount; ++j) {
        table.rows.push_back({writer.value(Quantity::Length, problem.WaterPressElev(j)),
                              writer.value(Quantity::Stress, problem.WaterPressure(j))});
    }
    writer.table(table);
    writer.paragraph("Between the points straight lines; above the first none, below the last its "
                     "value. Soil above them weighs its moist weight.");
}

void writeNetWater(SheetWriter& writer, const SheetRequest& request, const PressureStage& stage) {
    const Problem& problem = request.problem;
    writer.paragraph("Net pressure of the water, right less left, at an elevation y, with the "
                     "parts that begin above it:");
    const double lowest = lowestElev(stage);
    const double lastSeeping = lastSeepingElev(stage);
    std::vector<double> places{problem.SurfaceElev(Left, 1), problem.WaterElev(Left), lowest};
    if (seeps(problem)) {
        places.push_back(problem.SeepageElev);
    }
    std::sort(places.begin(), places.end(), std::greater<>());
    places.erase(std::unique(places.begin(), places.end()), places.end());
    const double highest = std::max(problem.WaterElev(Right), problem.WaterElev(Left));
    bool defined = false;
    for (const double elev : places) {
        const bool used = seeps(problem) && elev < lastSeeping - SameElevation;
        if (elev >= highest || elev < lowest || used) {
            continue;
        }
        const Expr pressure = waterPressure(problem, stage, elev);
        const std::string label = elevationText(elev, request.units) + ":";
        if (!defined) {
            writer.formula({"p", "w"}, pressure, Quantity::Stress, label);
            defined = true;
        } else {
            writer.numbers({"p", "w"}, pressure, Quantity::Stress, label);
        }
    }
}

} // namespace

void putInSearchedWater(const SheetRequest& request, PressureStage& stage) {
    if (!lostRow(request, stage)) {
        return;
    }
    const ElevationGrid searched = searchedGrid(request, stage);
    const WaterLine own{searched, waterRows(request.problem, stage, searched)};
    const ElevationGrid& grid = stage.diagrams.grid;
    for (int row = 1; row <= grid.NumElevs; ++row) {
        for (const int k : {1, 2}) {
            stage.diagrams.pressures.WaterPressures(row, k) = own.at(grid.ElevGrid(row), k);
        }
    }
}

double seepageExit(const Problem& problem) {
    return std::min(problem.WaterElev(Left), problem.SurfaceElev(Left, 1));
}

WaterShare waterShare(const Problem& problem, const PressureStage& stage, int side,
                      double lowerEnd) {
    WaterShare share;
    share.wet =
        problem.WaterDataKind == WaterData::Elevations && lowerEnd < problem.WaterElev(side);
    if (!share.wet) {
        return share;
    }
    share.seeps = seeps(problem) && (side == Left || lowerEnd < problem.SeepageElev) &&
                  lowerEnd >= stage.seepageEnd;
    const Expr weight = waterWeight(problem);
    const Expr i = gradientTerm(stage);
    share.weight = !share.seeps    ? weight
                   : side == Right ? (Expr(1) - i) * weight
                                   : (Expr(1) + i) * weight;
    return share;
}

void writeWater(SheetWriter& writer, const SheetRequest& request, const PressureStage& stage) {
    const Problem& problem = request.problem;
    if (problem.WaterDataKind == WaterData::None) {
        writer.paragraph("There is no water.");
        return;
    }
    if (seeps(problem)) {
        writeSeepage(writer, request, stage);
    }
    writer.heading("Water");
    if (problem.WaterDataKind == WaterData::Pressures) {
        writePressureTable(writer, problem);
    } else {
        writeNetWater(writer, request, stage);
    }
    writeLostRow(writer, request, stage);
    checkWater(writer, request, stage);
}

} // namespace korvane::sheet
