// Surcharges of a side by coefficients, by theory of elasticity.
#include "sheet/pressure_parts.h"

#include <algorithm>
#include <cmath>

namespace korvane {

namespace {

/// A part of a load that one formula covers.
struct LoadPart {
    enum class Form { NearLine, FarLine, Straight, Endless } form;
    double load = 0;       ///< PLF or PSF
    double height = 0;     ///< FT, exposed height of the wall, of a near line load
    double x1 = 0, x2 = 0; ///< FT from the wall
    double p1 = 0, p2 = 0; ///< PSF at x1 and x2
};

/// FT; a ramp no longer than this has no sloping part.
constexpr double ShortestRamp = 0.0001;

struct Step {
    Symbol symbol;
    Expr expression;
    Quantity quantity;
};

LoadPart linePart(const Problem& problem, int side, int i) {
    constexpr double nearShare = 0.4;
    const double height =
        side == Right ? problem.SurfaceElev(Right, 1) - problem.SurfaceElev(Left, 1) : 0;
    const double x = problem.VLineDist(side, i);
    const bool near = height > 0 && x / height <= nearShare;
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

std::vector<LoadPart> partsOf(const Problem& problem, int side, SurchargeKind kind, int i) {
    std::vector<LoadPart> parts;
    switch (kind) {
    case SurchargeKind::Line:
        return {linePart(problem, side, i)};
    case SurchargeKind::Strip: {
        const double load = problem.VStripLoad(side, i);
        return {straightPart(load, problem.VStripStart(side, i), load, problem.VStripEnd(side, i))};
    }
    case SurchargeKind::Ramp:
        return rampParts(problem, side);
    case SurchargeKind::Triangle: {
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
    case SurchargeKind::Variable:
        for (int point = 1; point < problem.VVarCount(side); ++point) {
            const double x1 = problem.VVarDist(side, point);
            const double x2 = problem.VVarDist(side, point + 1);
            if (x1 != x2) {
                parts.push_back(straightPart(problem.VVarLoad(side, point), x1,
                                             problem.VVarLoad(side, point + 1), x2));
            }
        }
        return parts;
    }
    return parts;
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

double pressureOf(const LoadPart& part, double depth) {
    const double pressure = stepsOf(part, depth).back().expression.value();
    return part.form == LoadPart::Form::Straight ? std::max(0.0, pressure) : pressure;
}

double pressureOf(const std::vector<LoadPart>& parts, double depth) {
    double sum = 0;
    for (const LoadPart& part : parts) {
        sum += pressureOf(part, depth);
    }
    return sum;
}

std::string loadName(SurchargeKind kind, int i) {
    switch (kind) {
    case SurchargeKind::Line:
        return "Line load " + std::to_string(i);
    case SurchargeKind::Strip:
        return "Strip load " + std::to_string(i);
    case SurchargeKind::Ramp:
        return "Ramp load";
    case SurchargeKind::Triangle:
        return "Triangular load " + std::to_string(i);
    case SurchargeKind::Variable:
        return "Variable load";
    }
    return "";
}

std::string partText(const SheetWriter& writer, const LoadPart& part) {
    const auto length = [&](double x) { return writer.withUnit(Quantity::Length, x); };
    const auto stress = [&](double p) { return writer.withUnit(Quantity::Stress, p); };
    switch (part.form) {
    case LoadPart::Form::NearLine:
        return writer.withUnit(Quantity::LineLoad, part.load) + " at " + length(part.x1) +
               ", no farther than 0.4 of the exposed height of " + length(part.height) +
               " (empirical form of Boussinesq's formula, Terzaghi 1954):";
    case LoadPart::Form::FarLine:
        return writer.withUnit(Quantity::LineLoad, part.load) + " at " + length(part.x1) +
               " (Boussinesq, doubled for a rigid wall):";
    case LoadPart::Form::Endless:
        return stress(part.load) + " from " + length(part.x1) + " on without end:";
    case LoadPart::Form::Straight:
        return stress(part.p1) + " at " + length(part.x1) + " to " + stress(part.p2) + " at " +
               length(part.x2) + " (Boussinesq, angles in radians):";
    }
    return "";
}

/// The part that presses most at a depth: of many one is shown with all its numbers.
void writeParts(SheetWriter& writer, const std::vector<LoadPart>& parts, double depth) {
    constexpr std::size_t mostShown = 2;
    std::size_t largest = 0;
    for (std::size_t n = 1; n < parts.size(); ++n) {
        largest = pressureOf(parts[n], depth) > pressureOf(parts[largest], depth) ? n : largest;
    }
    double sum = 0;
    std::string others;
    for (std::size_t n = 0; n < parts.size(); ++n) {
        const double pressure = pressureOf(parts[n], depth);
        sum += pressure;
        if (parts.size() > mostShown && n != largest) {
            others += (others.empty() ? "" : ", ") + writer.withUnit(Quantity::Stress, pressure);
            continue;
        }
        writer.paragraph(partText(writer, parts[n]));
        for (const Step& step : stepsOf(parts[n], depth)) {
            writer.formula(step.symbol, step.expression, step.quantity);
        }
        if (pressure == 0) {
            writer.paragraph("A negative pressure counts as none.");
        }
    }
    if (!others.empty()) {
        writer.paragraph("The other pieces by the same formula: " + others + ".");
    }
    if (parts.size() > 1) {
        writer.paragraph("Together " + writer.withUnit(Quantity::Stress, sum) + ".");
    }
}

void writeLoad(SheetWriter& writer, const SheetRequest& request, const PressureStage& stage,
               int side, const SurchargeShare& share, const SurchargeShares& shares) {
    const std::vector<LoadPart> parts = partsOf(request.problem, side, share.kind, share.index);
    const std::string name = loadName(share.kind, share.index);
    WorstCheck check(name + ", " + stage.prefix + sideName(side) + " side, rows", Quantity::Stress);
    const double lowest = lowestElev(stage);
    std::size_t largest = 0;
    double largestPressure = -1;
    for (std::size_t r = 0; r < shares.elev.size(); ++r) {
        const double pressure = pressureOf(parts, shares.surface - shares.elev[r]);
        check.add(pressure, share.pressure.at(r),
                  "at " + elevationText(shares.elev[r], request.units));
        if (pressure > largestPressure && shares.elev[r] >= lowest) {
            largest = r;
            largestPressure = pressure;
        }
    }
    writer.subheading(
        name + ", largest at " + elevationText(shares.elev[largest], request.units) +
        ", z = " + writer.withUnit(Quantity::Length, shares.surface - shares.elev[largest]));
    writeParts(writer, parts, shares.surface - shares.elev[largest]);
    check.tell(writer);
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
    const std::pair<SurchargeKind, int> counts[] = {
        {SurchargeKind::Line, problem.VLineCount(side)},
        {SurchargeKind::Strip, problem.VStripCount(side)},
        {SurchargeKind::Ramp, problem.VRampCount(side) > 0 ? 1 : 0},
        {SurchargeKind::Triangle, problem.VTriCount(side)},
        {SurchargeKind::Variable, problem.VVarCount(side) > 0 ? 1 : 0}};
    double sum = 0;
    for (const auto& [kind, count] : counts) {
        for (int i = 1; i <= count; ++i) {
            sum += pressureOf(partsOf(problem, side, kind, i), z);
        }
    }
    return sum;
}

void writeSurcharges(SheetWriter& writer, const SheetRequest& request, const PressureStage& stage,
                     int side) {
    const SurchargeShares& shares = stage.details->sides(side).surcharges;
    if (shares.loads.empty() || shares.elev.empty()) {
        return;
    }
    writer.paragraph("Loads on the ground reach the wall by the theory of elasticity, z below the "
                     "surface; they are added to the soil's pressures, active and passive.");
    for (const SurchargeShare& share : shares.loads) {
        writeLoad(writer, request, stage, side, share, shares);
    }
    checkSums(writer, request, stage, side, shares);
}

} // namespace korvane
