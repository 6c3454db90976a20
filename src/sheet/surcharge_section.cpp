// Surcharges of a side by coefficients, by theory of elasticity.
#include "sheet/pressure_parts.h"

#include "pressures/surcharge_pressures.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace korvane::sheet {

namespace {

/// A part of a load that one formula covers.
struct LoadPart {
    enum class Form { NearLine, FarLine, Straight, Endless } form;
    double load = 0;       ///< PLF or PSF
    double height = 0;     ///< FT, exposed height of the wall, of a near line load
    double x1 = 0, x2 = 0; ///< FT from the wall
    double p1 = 0, p2 = 0; ///< PSF at x1 and x2
};

struct Step {
    Symbol symbol;
    Expr expression;
    Quantity quantity;
};

LoadPart linePart(const Problem& problem, int side, int i) {
    const double height =
        side == Right ? problem.SurfaceElev(Right, 1) - problem.SurfaceElev(Left, 1) : 0;
    const double x = problem.VLineDist(side, i);
    const bool near = height > 0 && x / height <= NearLoadRatio;
    LoadPart part{near ? LoadPart::Form::NearLine : LoadPart::Form::FarLine};
    part.load = problem.VLineLoad(side, i);
    part.height = height;
    part.x1 = x;
    return part;
}

LoadPart straightPart(double p1, double x1, double p2, double x2) {
    LoadPart part{LoadPart::Form::Straight};
    part.p1 = p1;
    part.x1 = x1;
    part.p2 = p2;
    part.x2 = x2;
    return part;
}

std::vector<LoadPart> rampParts(const Problem& problem, int side) {
    const double start = problem.VRampStart(side);
    const double end = problem.VRampEnd(side);
    const double load = problem.VRampLoad(side);
    LoadPart endless{LoadPart::Form::Endless};
    endless.load = load;
    endless.x1 = end;
    std::vector<LoadPart> parts{endless};
    if (end - start > ShortestRamp) {
        parts.push_back(straightPart(0, start, load, end));
    }
    return parts;
}

std::vector<LoadPart> partsOf(const Problem& problem, int side, Load kind, int i) {
    std::vector<LoadPart> parts;
    switch (kind) {
    case Load::Line:
        return {linePart(problem, side, i)};
    case Load::Strip: {
        const double load = problem.VStripLoad(side, i);
        return {straightPart(load, problem.VStripStart(side, i), load, problem.VStripEnd(side, i))};
    }
    case Load::Ramp:
        return rampParts(problem, side);
    case Load::Triangle: {
        const double peak = problem.VTriPeak(side, i);
        const double load = problem.VTriLoad(side, i);
        if (peak > problem.VTriStart(side, i)) {
            parts.push_back(straightPart(0, problem.VTriStart(side, i), load, peak));
        }
        if (problem.VTriEnd(side, i) > peak) {
            parts.push_back(straightPart(load, peak, 0, problem.VTriEnd(side, i)));
        }
        return parts;
    }
    case Load::Variable:
        for (int point = 1; point < problem.VVarCount(side); ++point) {
            const double x1 = problem.VVarDist(side, point);
            const double x2 = problem.VVarDist(side, point + 1);
            if (x1 != x2) {
                parts.push_back(straightPart(problem.VVarLoad(side, point), x1,
                                             problem.VVarLoad(side, point + 1), x2));
            }
        }
        return parts;
    default:
        return parts;
    }
}

/// Boussinesq's formula for a load that varies on a straight line, not doubled for a rigid wall.
std::vector<Step> straightSteps(const LoadPart& part, double depth) {
    const Expr z = term("z", "", depth, Quantity::Length);
    const Expr x1 = term("x", "1", part.x1, Quantity::Length);
    const Expr x2 = term("x", "2", part.x2, Quantity::Length);
    const Expr p1 = term("p", "1", part.p1, Quantity::Stress);
    const Expr p2 = term("p", "2", part.p2, Quantity::Stress);
    const Expr b1Value = arctangentRad(x1 / z);
    const Expr b2Value = arctangentRad(x2 / z);
    const Expr width = pi() * (x2 - x1);
    const Expr aValue = (x2 * p1 - x1 * p2) / width;
    const Expr bValue = (p2 - p1) / width;
    const Expr b1 = term("β", "1", b1Value.value());
    const Expr b2 = term("β", "2", b2Value.value());
    const Expr A = term("A", "", aValue.value(), Quantity::Stress);
    const Expr B = term("B", "", bValue.value(), Quantity::UnitWeight);
    const Expr even = A * (b2 - b1 + sineRad(b1) * cosineRad(b1) - sineRad(b2) * cosineRad(b2));
    const Expr rising =
        B * z *
        (power(sineRad(b1), 2) + Expr(2) * logarithm(cosineRad(b1) / cosineRad(b2)) -
         power(sineRad(b2), 2));
    std::vector<Step> steps{{{"β", "1"}, b1Value, Quantity::Number},
                            {{"β", "2"}, b2Value, Quantity::Number},
                            {{"A", ""}, aValue, Quantity::Stress}};
    if (part.p1 != part.p2) {
        steps.push_back({{"B", ""}, bValue, Quantity::UnitWeight});
    }
    steps.push_back({{"p", ""}, part.p1 != part.p2 ? even + rising : even, Quantity::Stress});
    return steps;
}

/// The steps to the pressure at a depth; the last one is the pressure.
std::vector<Step> stepsOf(const LoadPart& part, double depth) {
    const Expr z = term("z", "", depth, Quantity::Length);
    const Expr x = term("x", "", part.x1, Quantity::Length);
    switch (part.form) {
    case LoadPart::Form::NearLine: {
        const Expr Q = term("Q", "", part.load, Quantity::LineLoad);
        const Expr H = term("H", "", part.height, Quantity::Length);
        const Expr ratio = z / H;
        const Expr n = term("n", "", ratio.value());
        return {{{"n", ""}, ratio, Quantity::Number},
                {{"p", ""},
                 Expr(0.203) * (Q / H) * (n / power(power(n, 2) + Expr(0.16), 2)),
                 Quantity::Stress}};
    }
    case LoadPart::Form::FarLine: {
        const Expr Q = term("Q", "", part.load, Quantity::LineLoad);
        return {{{"p", ""},
                 (Expr(4) * Q / pi()) * (power(x, 2) * z / power(power(x, 2) + power(z, 2), 2)),
                 Quantity::Stress}};
    }
    case LoadPart::Form::Endless: {
        const Expr q = term("q", "", part.load, Quantity::Stress);
        const Expr angle = arctangentRad(x / z);
        const Expr b = term("β", "", angle.value());
        return {{{"β", ""}, angle, Quantity::Number},
                {{"p", ""},
                 q / (Expr(2) * pi()) * (pi() - Expr(2) * b + sineRad(Expr(2) * b)),
                 Quantity::Stress}};
    }
    case LoadPart::Form::Straight:
        return straightSteps(part, depth);
    }
    return {};
}

double square(double a) {
    return a * a;
}

/// The same as the last step, for the many rows that are not printed.
double pressureOf(const LoadPart& part, double z) {
    constexpr double pi = std::numbers::pi;
    const double x = part.x1;
    switch (part.form) {
    case LoadPart::Form::NearLine: {
        const double n = z / part.height;
        return 0.203 * part.load / part.height * n / square(n * n + 0.16);
    }
    case LoadPart::Form::FarLine:
        return 4 * part.load / pi * x * x * z / square(x * x + z * z);
    case LoadPart::Form::Endless: {
        const double b = std::atan(x / z);
        return part.load / (2 * pi) * (pi - 2 * b + std::sin(2 * b));
    }
    case LoadPart::Form::Straight:
        break;
    }
    const double b1 = std::atan(part.x1 / z);
    const double b2 = std::atan(part.x2 / z);
    const double width = pi * (part.x2 - part.x1);
    const double A = (part.x2 * part.p1 - part.x1 * part.p2) / width;
    const double B = (part.p2 - part.p1) / width;
    const double even = b2 - b1 + (std::sin(2 * b1) - std::sin(2 * b2)) / 2;
    const double rising =
        square(std::sin(b1)) - square(std::sin(b2)) + 2 * std::log(std::cos(b1) / std::cos(b2));
    return std::max(0.0, A * even + B * z * rising);
}

double pressureOf(const std::vector<LoadPart>& parts, double z) {
    double sum = 0;
    for (const LoadPart& part : parts) {
        sum += pressureOf(part, z);
    }
    return sum;
}

const char* kindName(Load kind) {
    switch (kind) {
    case Load::Line:
        return "Line load";
    case Load::Strip:
        return "Strip load";
    case Load::Ramp:
        return "Ramp load";
    case Load::Triangle:
        return "Triangular load";
    case Load::Variable:
        return "Variable load";
    default:
        return "";
    }
}

std::string loadName(Load kind, int i) {
    const bool single = kind == Load::Ramp || kind == Load::Variable;
    return kindName(kind) + (single ? std::string() : " " + std::to_string(i));
}

/// A load at the row where it presses most.
struct LargestRow {
    Load kind = Load::Line;
    std::string name;
    double elev = 0, depth = 0; ///< FT
    std::vector<LoadPart> parts;
};

/// Adds a load in all rows to a check; gives the row of its largest pressure down to the wall's
/// bottom.
LargestRow checkLoad(WorstCheck& check, const SheetRequest& request, const PressureStage& stage,
                     int side, const SurchargeShare& share, const SurchargeShares& shares) {
    LargestRow row;
    row.kind = share.kind;
    row.name = loadName(share.kind, share.index);
    row.parts = partsOf(request.problem, side, share.kind, share.index);
    const double lowest = lowestElev(stage);
    double largest = -1;
    for (std::size_t r = 0; r < shares.elev.size(); ++r) {
        const double elev = shares.elev[r];
        const double pressure = pressureOf(row.parts, shares.surface - elev);
        check.add(pressure, share.pressure.at(r),
                  row.name + " at " + elevationText(elev, request.units));
        if (largest < 0 || (pressure > largest && elev >= lowest)) {
            row.elev = elev;
            row.depth = shares.surface - elev;
            largest = pressure;
        }
    }
    return row;
}

Expr stepOf(const std::vector<Step>& steps, const char* letter, const char* index) {
    for (const Step& step : steps) {
        if (step.symbol.letter == letter && step.symbol.subscript == index) {
            return step.expression;
        }
    }
    return 0.0;
}

bool isLine(const LoadPart& part) {
    return part.form == LoadPart::Form::NearLine || part.form == LoadPart::Form::FarLine;
}

std::string mathHead(const char* letter, const char* index = "") {
    return "<math>" + mathSymbol({letter, index}) + "</math>";
}

void writeLineTable(SheetWriter& writer, const std::vector<LargestRow>& rows) {
    Table table;
    table.wide = true;
    table.caption = "Line loads at their largest rows";
    table.columns = {{"Load"},
                     {"EL", Quantity::Length},
                     {"", Quantity::Length, mathHead("z")},
                     {"", Quantity::Length, mathHead("x")},
                     {"", Quantity::LineLoad, mathHead("Q")},
                     {"", Quantity::Number, mathHead("n")},
                     {"", Quantity::Stress, mathHead("p")}};
    for (const LargestRow& row : rows) {
        if (row.parts.empty() || !isLine(row.parts.front())) {
            continue;
        }
        const LoadPart& part = row.parts.front();
        const bool near = part.form == LoadPart::Form::NearLine;
        table.rows.push_back(
            {writer.text(row.name), writer.value(Quantity::Length, row.elev),
             writer.precise(Quantity::Length, row.depth), writer.precise(Quantity::Length, part.x1),
             writer.precise(Quantity::LineLoad, part.load),
             near ? writer.precise(Quantity::Number, row.depth / part.height) : writer.text(""),
             writer.precise(Quantity::Stress, pressureOf(part, row.depth))});
    }
    if (!table.rows.empty()) {
        writer.table(table);
    }
}

void writeAreaTable(SheetWriter& writer, const std::vector<LargestRow>& rows) {
    Table table;
    table.wide = true;
    table.caption = "Other loads, their pieces at their largest rows";
    table.columns = {{"Load"},
                     {"EL", Quantity::Length},
                     {"", Quantity::Length, mathHead("z")},
                     {"", Quantity::Length, mathHead("x", "1")},
                     {"", Quantity::Length, mathHead("x", "2")},
                     {"", Quantity::Stress, mathHead("p", "1")},
                     {"", Quantity::Stress, mathHead("p", "2")},
                     {"", Quantity::Number, mathHead("β", "1")},
                     {"", Quantity::Number, mathHead("β", "2")},
                     {"", Quantity::Stress, mathHead("A")},
                     {"", Quantity::UnitWeight, mathHead("B")},
                     {"", Quantity::Stress, mathHead("p")}};
    for (const LargestRow& row : rows) {
        for (const LoadPart& part : row.parts) {
            if (isLine(part)) {
                continue;
            }
            const bool endless = part.form == LoadPart::Form::Endless;
            const std::vector<Step> steps = stepsOf(part, row.depth);
            const auto step = [&](Quantity quantity, const char* letter, const char* index) {
                return endless ? writer.text("")
                               : writer.precise(quantity, stepOf(steps, letter, index).value());
            };
            const auto stress = [&](double value) {
                return writer.precise(Quantity::Stress, value);
            };
            table.rows.push_back(
                {writer.text(row.name), writer.value(Quantity::Length, row.elev),
                 writer.precise(Quantity::Length, row.depth),
                 writer.precise(Quantity::Length, part.x1),
                 endless ? writer.text("∞") : writer.precise(Quantity::Length, part.x2),
                 stress(endless ? part.load : part.p1), stress(endless ? part.load : part.p2),
                 endless ? writer.precise(Quantity::Number, stepOf(steps, "β", "").value())
                         : step(Quantity::Number, "β", "1"),
                 step(Quantity::Number, "β", "2"), step(Quantity::Stress, "A", ""),
                 step(Quantity::UnitWeight, "B", ""), stress(pressureOf(part, row.depth))});
        }
    }
    if (!table.rows.empty()) {
        writer.table(table);
    }
}

/// More loads on a side are shown by the largest of each kind, for the sheet to stay readable.
constexpr std::size_t MostShown = 8;

bool isLargestOfKind(const LargestRow& row, const std::vector<LargestRow>& rows) {
    return std::none_of(rows.begin(), rows.end(), [&](const LargestRow& other) {
        return other.kind == row.kind &&
               pressureOf(other.parts, other.depth) > pressureOf(row.parts, row.depth);
    });
}

/// Numbers set in, for the piece that presses most.
void writeLargest(SheetWriter& writer, const LargestRow& row) {
    if (row.parts.empty()) {
        return;
    }
    const auto largest = std::max_element(
        row.parts.begin(), row.parts.end(), [&](const LoadPart& a, const LoadPart& b) {
            return pressureOf(a, row.depth) < pressureOf(b, row.depth);
        });
    const std::string piece = row.parts.size() > 1 ? ", largest piece" : "";
    writer.numbers({"p", ""}, stepsOf(*largest, row.depth).back().expression, Quantity::Stress,
                   row.name + piece + ", " + elevationText(row.elev, writer.units()) + ":");
    if (row.parts.size() > 1) {
        writer.paragraph("All its pieces together: " +
                         writer.withUnit(Quantity::Stress, pressureOf(row.parts, row.depth)) + ".");
    }
}

/// The formulas of the forms of load that a side has, once.
void writeLoadFormulas(SheetWriter& writer, const Problem& problem, int side,
                       const SurchargeShares& shares) {
    using Form = LoadPart::Form;
    std::vector<LoadPart> all;
    for (const SurchargeShare& share : shares.loads) {
        for (const LoadPart& part : partsOf(problem, side, share.kind, share.index)) {
            all.push_back(part);
        }
    }
    const auto writeForm = [&](Form form, const char* text) {
        const auto isForm = [&](const LoadPart& part) { return part.form == form; };
        const auto isRising = [&](const LoadPart& part) {
            return isForm(part) && part.p1 != part.p2;
        };
        auto part = std::find_if(all.begin(), all.end(), isRising);
        part = part == all.end() ? std::find_if(all.begin(), all.end(), isForm) : part;
        if (part != all.end()) {
            writer.paragraph(text);
            for (const Step& step : stepsOf(*part, 1)) {
                writer.definition(step.symbol, step.expression);
            }
        }
    };
    writeForm(Form::NearLine, "A line load no farther than 0.4 of the exposed height H (empirical "
                              "form of Boussinesq's formula, Terzaghi 1954):");
    writeForm(Form::FarLine, "A line load (Boussinesq 1885, doubled for a rigid wall):");
    writeForm(Form::Endless, "A load q from x on without end:");
    writeForm(Form::Straight, "A load that varies straight from p1 at x1 to p2 at x2 (Boussinesq, "
                              "not doubled; angles in radians; a negative pressure counts as "
                              "none):");
}

void checkSums(SheetWriter& writer, const SheetRequest& request, const PressureStage& stage,
               int side, const SurchargeShares& shares) {
    const std::string place = stage.prefix + sideName(side) + " side, rows";
    WorstCheck sums("Sum of surcharges, " + place, Quantity::Stress);
    WorstCheck diagram("Surcharge diagram, " + place, Quantity::Stress);
    for (std::size_t r = 0; r < shares.elev.size(); ++r) {
        const double own = surchargeAt(request.problem, side, shares.surface - shares.elev[r]);
        const std::string at = "at " + elevationText(shares.elev[r], request.units);
        sums.add(own, shares.sum.at(r), at);
        diagram.add(own,
                    stage.diagrams.pressures.SurchargePressures(side, shares.firstRow +
                                                                          static_cast<int>(r)),
                    at);
    }
    sums.tell(writer);
    diagram.tell(writer);
}

} // namespace

double surchargeAt(const Problem& problem, int side, double z) {
    double sum = 0;
    forEachLoad(problem, side,
                [&](Load kind, int i) { sum += pressureOf(partsOf(problem, side, kind, i), z); });
    return sum;
}

void writeSurcharges(SheetWriter& writer, const SheetRequest& request, const PressureStage& stage,
                     int side) {
    const SurchargeShares& shares = stage.details->sides(side).surcharges;
    if (shares.loads.empty() || shares.elev.empty()) {
        return;
    }
    // Loads act alike at all levels.
    const bool again = stage.level > 1;
    writer.mute(again || !stage.shown);
    writer.paragraph("Loads on the ground reach the wall by the theory of elasticity, z below the "
                     "surface; they are added to the soil's pressures, active and passive.");
    writeLoadFormulas(writer, request.problem, side, shares);
    std::vector<LargestRow> rows;
    for (std::size_t n = 0; n < shares.loads.size(); ++n) {
        // A check for each kind of load.
        const Load kind = shares.loads[n].kind;
        WorstCheck check(std::string(kindName(kind)) + "s, " + stage.prefix + sideName(side) +
                             " side, rows",
                         Quantity::Stress);
        for (; n < shares.loads.size() && shares.loads[n].kind == kind; ++n) {
            rows.push_back(checkLoad(check, request, stage, side, shares.loads[n], shares));
        }
        --n;
        check.tell(writer, 1e-9);
    }
    writeLineTable(writer, rows);
    writeAreaTable(writer, rows);
    if (rows.size() > MostShown) {
        writer.paragraph(
            "With the numbers set in, the largest load of each kind; the others go the "
            "same way with the numbers of the tables.");
    }
    for (const LargestRow& row : rows) {
        if (rows.size() <= MostShown || isLargestOfKind(row, rows)) {
            writeLargest(writer, row);
        }
    }
    checkSums(writer, request, stage, side, shares);
    writer.mute(!stage.shown);
    if (again) {
        writer.paragraph("Loads on the ground press as with the first solution.");
    }
}

} // namespace korvane::sheet
