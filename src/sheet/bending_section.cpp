// Shear, moment and deflection.
#include "sheet/bending_figure.h"
#include "sheet/pile_table.h"
#include "sheet/sections.h"
#include "sheet/stages.h"
#include "sheet/statics.h"
#include "state/tolerances.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace korvane::sheet {

namespace {

constexpr int BendingNumber = 6;

/// Deflections are fourfold integrals: they lose more digits than sums of forces.
constexpr double IntegralRounding = 1e-7;
/// What rounding leaves of the integrals where they cancel, a share of their terms.
constexpr double IntegralNoise = 1e-13;

/// One level on its way through the section.
struct Bending {
    SheetWriter& writer;
    const Problem& problem;
    const LevelResult& level;
    std::string prefix;  ///< of checks: the method, where there are two
    WallLoading loading; ///< with the anchor
    LoadSums sizes;      ///< about the bottom

    std::string what(std::string_view text) const { return prefix + std::string(text); }
    Quantity deflection() const {
        return problem.ProgramMode == Mode::Analysis ? Quantity::Deflection
                                                     : Quantity::ScaledDeflection;
    }
};

// ---- largest moment
// ------------------------------------------------------------------------------

/// The loads above an elevation.
WallLoading loadsAbove(const WallLoading& loading, double elev) {
    WallLoading above;
    above.top = loading.top;
    above.bottom = elev;
    for (const LoadPiece& piece : loading.pieces) {
        if (piece.bottom >= elev) {
            above.pieces.push_back(piece);
        } else if (piece.top > elev) {
            above.pieces.push_back(piece.above(elev));
        }
    }
    for (const PointForce& line : loading.lines) {
        if (line.elev > elev) {
            above.lines.push_back(line);
        }
    }
    return above;
}

/// Where the solution looks for the zero of shear beside its row of the largest moment: on a
/// straight line of net pressure between two of its rows as it tells them.
struct Stretch {
    double top = 0;        ///< FT, the upper row
    double bottom = 0;     ///< FT, the lower row as told
    double wallBottom = 0; ///< FT, where the line ends on the wall
    double atTop = 0;      ///< PSF
    double atBottom = 0;   ///< PSF
};

/// The stretch of the largest moment where it is not that of the areas: fixed earth support tells
/// its bottom in the grid's row below it, and a moment that the search has left at the bottom is
/// not told. None where the solution took a row's moment or a zero of shear that is there.
std::optional<Stretch> stretchBesideAreas(const Bending& bending) {
    const ResultDiagrams& rows = bending.level.diagrams;
    const double elev = rows.MaxMoment.elev;
    int largest = 1;
    for (int r = 2; r <= rows.RowCount; ++r) {
        if (std::fabs(rows.ResultMoment(r)) >= std::fabs(rows.ResultMoment(largest))) {
            largest = r;
        }
    }
    if (largest == 1 || largest == rows.RowCount || elev == rows.ResultElev(largest)) {
        return std::nullopt;
    }
    const bool above = rows.ResultShear(largest - 1) * rows.ResultShear(largest) < 0;
    const int upper = above ? largest - 1 : largest;
    Stretch stretch{rows.ResultElev(upper), rows.ResultElev(upper + 1), rows.ResultElev(upper + 1),
                    rows.ResultPressure(upper), rows.ResultPressure(upper + 1)};
    if (upper + 1 == rows.RowCount) {
        stretch.wallBottom = bending.level.bottomElev;
    }
    const bool isWall = std::fabs(stretch.wallBottom - stretch.bottom) <= SamePoint;
    const bool within = elev <= stretch.top && elev >= stretch.bottom;
    return isWall && within ? std::nullopt : std::optional(stretch);
}

std::string percentText(const SheetWriter& writer, double value, double told) {
    const double percent = 100 * (std::fabs(value / told) - 1);
    return writer.precise(Quantity::Number, std::fabs(percent)).markup +
           (percent > 0 ? " % more" : " % less");
}

/// Where the shear itself vanishes, if that is elsewhere: the solution looks between its rows only
/// where the pressure makes no step at the row of the largest moment.
void writeExactExtreme(const Bending& bending, bool onAreas) {
    const auto& [writer, problem, level, prefix, loading, sizes] = bending;
    const Extreme exact = largestMoment(loading);
    const double told = level.diagrams.MaxMoment.value;
    constexpr double worthTelling = 1e-4; // share of the moment
    if (onAreas && std::fabs(exact.value) <= (1 + worthTelling) * std::fabs(told)) {
        writer.paragraph("No other moment of the wall is larger.");
        return;
    }
    writer.paragraph("By areas the moment is largest " +
                     std::string(onAreas ? "where the shear vanishes between two rows, " : "") +
                     "at " + elevationText(exact.elev, writer.units()) + ": " +
                     writer.withUnit(Quantity::Moment, exact.value) + ", " +
                     percentText(writer, exact.value, told) +
                     (onAreas
                          ? ". The solution takes the moment of the row, as the net pressure makes "
                            "a step there."
                          : "."));
}

/// The table of the forces above an elevation; gives the sum of their statical moments about it.
double writeForcesAbove(const Bending& bending, double elev) {
    const auto& [writer, problem, level, prefix, loading, sizes] = bending;
    const WallLoading above = loadsAbove(loading, elev);
    Table table;
    table.caption = "Statical moment of the forces above " + elevationText(elev, writer.units());
    table.columns = {{.title = "Force"},
                     {.title = "Size", .quantity = Quantity::Force},
                     {.title = "Arm", .quantity = Quantity::Length},
                     {.title = "Moment", .quantity = Quantity::Moment}};
    double force = 0;
    double moment = 0;
    const auto add = [&, &out = writer](const std::string& name, double size, double at) {
        force += size;
        moment += size * (at - elev);
        table.rows.push_back({out.text(name), out.precise(Quantity::Force, size),
                              out.precise(Quantity::Length, at - elev),
                              out.precise(Quantity::Moment, size * (at - elev))});
    };
    for (const PressureArea& area : areasBetweenZeros(above)) {
        add("Net pressure from " + quantityText(Quantity::Length, area.top, writer.units()) +
                " to " + quantityText(Quantity::Length, area.bottom, writer.units()),
            area.force, area.centre);
    }
    for (const PointForce& line : above.lines) {
        const bool anchor = problem.WallType == WallKind::Anchored &&
                            &line == &above.lines.back() && line.elev == loading.anchorElev;
        add(anchor ? "Anchor" : "Horizontal line load", line.force, line.elev);
    }
    table.rows.push_back({writer.text("Sum"),
                          writer.precise(Quantity::Force, withoutRounding(force, sizes.forceSizes)),
                          Cell{}, writer.precise(Quantity::Moment, moment)});
    writer.table(table);
    return moment;
}

/// On from the upper row by the line of net pressure that the solution has there.
double writeMomentOnStretch(const Bending& bending, const Stretch& stretch) {
    const auto& [writer, problem, level, prefix, loading, sizes] = bending;
    const std::string top = elevationText(stretch.top, writer.units());
    const std::string bottom = elevationText(stretch.bottom, writer.units());
    if (stretch.bottom < stretch.wallBottom) {
        writer.paragraph("Approximation: the bottom of the wall, " +
                         elevationText(stretch.wallBottom, writer.units()) +
                         ", is told in the row of the grid below it. The solution looks for the "
                         "largest moment on a straight line of net pressure from " +
                         top + " to that row, " + bottom + "; on the wall the line is steeper.");
    } else {
        writer.paragraph("Approximation: between " + top + " and " + bottom +
                         " the shear does not vanish, as the small moment that the search has left "
                         "at the bottom is not told. The solution takes the zero of shear on the "
                         "line of net pressure continued beyond these rows.");
    }
    const double moment = writeForcesAbove(bending, stretch.top);
    const Expr depth = term("s", "", stretch.top - level.diagrams.MaxMoment.elev, Quantity::Length);
    const Expr height = term("h", "", stretch.top - stretch.bottom, Quantity::Length);
    const Expr upper = term("p", "1", stretch.atTop, Quantity::Stress);
    const Expr lower = term("p", "2", stretch.atBottom, Quantity::Stress);
    const Expr start = term("M", "1", moment, Quantity::Moment);
    const Expr shear = term("V", "1", shearBelow(loading, stretch.top), Quantity::Force);
    return writer.formula({"M"},
                          start + shear * depth + upper * power(depth, 2) / 2 +
                              (lower - upper) * power(depth, 3) / (6 * height),
                          Quantity::Moment,
                          "on by s below the upper row, where the shear of that line is none:");
}

/// Works the largest moment out again and checks it; gives it.
double writeLargestMoment(const Bending& bending) {
    const auto& [writer, problem, level, prefix, loading, sizes] = bending;
    const Extreme& told = level.diagrams.MaxMoment;
    if (told.value == 0) {
        const double left = writeForcesAbove(bending, std::max(told.elev, level.bottomElev));
        writer.paragraph("The solution has no moment: what its search has left at the bottom "
                         "counts as none.");
        writer.check(bending.what("largest moment, none within the tolerance of the search"),
                     Quantity::Moment, left, told.value, SumRounding,
                     MomentResidual / SumRounding + sizes.momentSizes);
        return left;
    }
    const std::optional<Stretch> stretch = stretchBesideAreas(bending);
    const double own =
        stretch ? writeMomentOnStretch(bending, *stretch) : writeForcesAbove(bending, told.elev);
    writer.paragraph(
        "The solution has " + writer.withUnit(Quantity::Moment, told.value) +
        (stretch ? " at " + elevationText(told.elev, writer.units()) + "." : " there."));
    writeExactExtreme(bending, !stretch);
    writer.check(bending.what(stretch ? "largest moment, on the line between its rows"
                                      : "largest moment, statical moment of the areas"),
                 Quantity::Moment, own, told.value, SumRounding, sizes.momentSizes);
    return own;
}

// ---- checks
// --------------------------------------------------------------------------------------

/// Every row of the diagrams. The last one is left out: the solution shows no moment there, and of
/// a free bottom no shear, whatever its search has left of them.
void checkRows(const Bending& bending) {
    const auto& [writer, problem, level, prefix, loading, sizes] = bending;
    const ResultDiagrams& rows = level.diagrams;
    const MomentAreas areas(loading);
    const double scale = deflectionScale(problem);
    WorstCheck moments(bending.what("moments by areas"), Quantity::Moment);
    WorstCheck shears(bending.what("shears by areas"), Quantity::Force);
    WorstCheck deflections(bending.what("deflections by moment areas"), bending.deflection());
    for (int r = 1; r < rows.RowCount; ++r) {
        const double elev = rows.ResultElev(r);
        const std::string place = "at " + elevationText(elev, writer.units());
        moments.add(momentAt(loading, elev), rows.ResultMoment(r), place);
        // Of two rows at one elevation the first stands above it.
        const double above = shearAbove(loading, elev);
        const double below = shearBelow(loading, elev);
        const bool isUpper =
            std::fabs(above - rows.ResultShear(r)) <= std::fabs(below - rows.ResultShear(r));
        shears.add(isUpper ? above : below, rows.ResultShear(r), place);
        deflections.add(scale * deflectionAt(level.method, areas, elev, loading.anchorElev),
                        rows.ResultDeflection(r), place);
    }
    moments.tell(writer, SumRounding, sizes.momentSizes);
    shears.tell(writer, SumRounding, sizes.forceSizes);
    const double height = loading.top - loading.bottom;
    deflections.tell(writer, IntegralRounding,
                     IntegralNoise / IntegralRounding * scale * sizes.momentSizes * height *
                         height);
}

/// Gives the largest deflection.
double checkExtremes(const Bending& bending) {
    const auto& [writer, problem, level, prefix, loading, sizes] = bending;
    const ResultDiagrams& rows = level.diagrams;
    const double above = shearAbove(loading, level.maxShear.elev);
    const double below = shearBelow(loading, level.maxShear.elev);
    writer.check(bending.what("largest shear, sum of the forces above"), Quantity::Force,
                 std::fabs(above) >= std::fabs(below) ? above : below, level.maxShear.value,
                 SumRounding, sizes.forceSizes);
    const double deflection =
        deflectionScale(problem) * deflectionAt(level.method, MomentAreas(loading),
                                                rows.MaxDeflection.elev, loading.anchorElev);
    writer.check(bending.what("largest deflection, by moment areas"), bending.deflection(),
                 deflection, rows.MaxDeflection.value, IntegralRounding);
    return deflection;
}

// ---- a level
// -------------------------------------------------------------------------------------

void writeExtremes(const Bending& bending) {
    const auto& [writer, problem, level, prefix, loading, sizes] = bending;
    Table table;
    table.columns = {{.title = "Largest"}, {.title = "Value"}, {.title = "at elevation"}};
    const auto add = [&, &out = writer, &wall = level](std::string_view name, Quantity quantity,
                                                       const Extreme& extreme) {
        const double elev = std::max(extreme.elev, wall.bottomElev);
        table.rows.push_back({out.text(name),
                              {out.withUnit(quantity, extreme.value), true},
                              {out.withUnit(Quantity::Length, elev), true}});
    };
    add("Moment", Quantity::Moment, level.diagrams.MaxMoment);
    add("Shear", Quantity::Force, level.maxShear);
    add(problem.ProgramMode == Mode::Analysis ? "Deflection"
                                              : "Deflection times modulus and inertia",
        bending.deflection(), level.diagrams.MaxDeflection);
    writer.table(table);
    if (level.maxShear.elev < level.bottomElev) {
        writer.paragraph("The shear stands at the bottom; the report tells it at the row below, " +
                         elevationText(level.maxShear.elev, writer.units()) + ".");
    }
}

void writeLevel(SheetWriter& writer, const SheetRequest& request, int number) {
    const Results& results = *request.solved.results;
    const LevelResult& level = results.levels(number);
    const std::string name = solutionMethodName(level.method);
    const bool several = results.levelCount > 1;
    WallLoading loading = heldLoading(request.problem, level);
    const LoadSums sizes = sumsAbout(loading, level.bottomElev);
    const Bending bending{
        writer, request.problem, level, several ? name + ": " : std::string(), std::move(loading),
        sizes};
    if (several) {
        writer.heading(std::string(1, static_cast<char>(name[0] - 'a' + 'A')) + name.substr(1) +
                       " support");
    }
    writer.markup("<figure>\n" + bendingFigure(request, level).svg + "</figure>\n");
    writeExtremes(bending);
    OwnExtremes own;
    own.moment = writeLargestMoment(bending);
    own.momentShare =
        SumRounding * std::max(1.0, sizes.momentSizes / std::fabs(level.diagrams.MaxMoment.value));
    own.deflection = checkExtremes(bending);
    own.deflectionShare = IntegralRounding;
    checkRows(bending);
    writePileTable(writer, request, number, own);
}

} // namespace

void writeBending(SheetWriter& writer, const SheetRequest& request) {
    if (request.solved.results == nullptr) {
        return;
    }
    writer.section(BendingNumber, "Shear, moment and deflection");
    writer.paragraph("Shears are the sums of the forces toward the left above an elevation, "
                     "moments their statical moments about it. Deflections are toward the left: "
                     "by the second moment-area theorem the statical moment of the moment diagram "
                     "between bottom and elevation" +
                     std::string(request.problem.WallType == WallKind::Anchored
                                     ? "; with free earth support the wall is turned about its "
                                       "bottom until the anchor is in its place."
                                     : "."));
    for (int number = 1; number <= request.solved.results->levelCount; ++number) {
        writeLevel(writer, request, number);
    }
}

} // namespace korvane::sheet
