// Stresses and pressures of a side by coefficients.
#include "sheet/pressure_parts.h"
#include "sheet/soil_work.h"
#include "state/tolerances.h"

#include <algorithm>
#include <cmath>

namespace korvane::sheet {

namespace {

/// What a layer does to the vertical stress, as the symbols of the formulas.
struct LayerSymbols {
    Expr Ka, Kp, ca, cp, deltaA, deltaP;
    bool given;
    bool cohesion;
    bool wallFriction;

    explicit LayerSymbols(const LayerWork& work)
        : Ka(term("K", "a", work.Ka)), Kp(term("K", "p", work.Kp)),
          ca(term("c", "a", work.cohesionActive, Quantity::Stress)),
          cp(term("c", "p", work.cohesionPassive, Quantity::Stress)),
          deltaA(term("δ", "a", work.wallFrictionActive, Quantity::Angle)),
          deltaP(term("δ", "p", work.wallFrictionPassive, Quantity::Angle)), given(work.given),
          cohesion(work.cohesionActive != 0), wallFriction(work.wallFrictionActive != 0) {}

    Expr active(const Expr& stress) const {
        const Expr push = cohesion ? Ka * stress - Expr(2) * ca * root(Ka) : Ka * stress;
        return wallFriction ? push * cosine(deltaA) : push;
    }
    Expr passive(const Expr& stress) const {
        const Expr hold = cohesion ? Kp * stress + Expr(2) * cp * root(Kp) : Kp * stress;
        return wallFriction ? hold * cosine(deltaP) : hold;
    }
    /// PSF: the size of what the active pressure is the difference of.
    double activeTerms(double stress) const {
        return std::abs((Ka * stress).value()) + std::abs((Expr(2) * ca * root(Ka)).value());
    }
};

/// The soil between two breaks as the sheet works it out.
struct Interval {
    double top = 0, bottom = 0; ///< FT
    int layer = 1;
    WaterShare water;
    double weight = 0;       ///< PCF, moist or saturated
    double stressTop = 0;    ///< PSF, effective
    double stressBottom = 0; ///< likewise

    Expr stressAt(double elev) const {
        return term("σ", "0", stressTop, Quantity::Stress) +
               (term("y", "0", top, Quantity::Length) - term("y", "", elev, Quantity::Length)) *
                   term("γ", "", weight, Quantity::UnitWeight);
    }
    /// The same where water bears a share.
    Expr effectiveAt(double elev) const {
        if (!water.wet) {
            return stressAt(elev);
        }
        return term("σ", "0", stressTop, Quantity::Stress) +
               (term("y", "0", top, Quantity::Length) - term("y", "", elev, Quantity::Length)) *
                   (term("γ", "", weight, Quantity::UnitWeight) -
                    term("w", "", water.weight.value(), Quantity::UnitWeight));
    }
};

double uniformLoad(const Problem& problem, int side) {
    return problem.VUniformCount(side) != 0 ? problem.VUniformLoad(side) : 0;
}

std::vector<Interval> intervalsOf(const SheetRequest& request, const PressureStage& stage,
                                  int side) {
    const Problem& problem = request.problem;
    std::vector<Interval> intervals;
    double stress = uniformLoad(problem, side);
    for (const StressInterval& engine : stage.details->sides(side).stresses) {
        Interval& interval = intervals.emplace_back();
        interval.top = engine.top.elev;
        interval.bottom = engine.bottom.elev;
        interval.layer = engine.layer;
        interval.water = waterShare(problem, stage, side, interval.bottom);
        interval.weight = interval.water.wet ? problem.SoilSatWeight(side, interval.layer)
                                             : problem.SoilMoistWeight(side, interval.layer);
        interval.stressTop = stress;
        stress = interval.effectiveAt(interval.bottom).value();
        interval.stressBottom = stress;
    }
    return intervals;
}

std::string intervalText(const Interval& interval, double bottom, UnitSystem units) {
    std::string text = "Layer " + std::to_string(interval.layer) + ", " +
                       elevationText(interval.top, units) + " to " + elevationText(bottom, units) +
                       ": ";
    text += interval.water.wet ? "below water, saturated" : "above water, moist";
    return text + (interval.water.seeps ? ", water seeps" : "");
}

/// Without its top where the interval above is of the same layer: nothing jumps there.
void writeInterval(SheetWriter& writer, const Interval& interval, const LayerSymbols& layer,
                   double lowest, bool withTop) {
    const UnitSystem units = writer.units();
    const double bottom = std::max(interval.bottom, lowest);
    writer.subheading(intervalText(interval, bottom, units));
    if (interval.water.wet) {
        writer.numbers({"w", ""}, interval.water.weight, Quantity::UnitWeight, "Water bears");
    }
    if (withTop) {
        const Expr top = term("σ", "", interval.stressTop, Quantity::Stress);
        writer.numbers({"p", "a"}, layer.active(top), Quantity::Stress, "Top:");
        writer.numbers({"p", "p"}, layer.passive(top), Quantity::Stress, "Top:");
    }
    const double stress =
        writer.numbers({"σ", ""}, interval.effectiveAt(bottom), Quantity::Stress, "Bottom:");
    const Expr below = term("σ", "", stress, Quantity::Stress);
    writer.numbers({"p", "a"}, layer.active(below), Quantity::Stress, "Bottom:");
    writer.numbers({"p", "p"}, layer.passive(below), Quantity::Stress, "Bottom:");
}

/// Values alone, where the first solution has shown the numbers set in.
void writeIntervalTable(SheetWriter& writer, const std::vector<Interval>& intervals,
                        const std::vector<LayerWork>& layers, double lowest) {
    Table table;
    table.caption = "By the same formulas";
    const auto head = [](const char* letter, const char* index = "") {
        return "<math>" + mathSymbol({letter, index}) + "</math>";
    };
    table.columns = {{"Layer"},
                     {"EL", Quantity::Length},
                     {"", Quantity::UnitWeight, head("γ")},
                     {"", Quantity::UnitWeight, head("w")},
                     {"", Quantity::Stress, head("σ")},
                     {"", Quantity::Stress, head("p", "a")},
                     {"", Quantity::Stress, head("p", "p")}};
    for (const Interval& interval : intervals) {
        if (interval.top <= lowest + SameElevation) {
            break;
        }
        const LayerSymbols layer(layers.at(static_cast<std::size_t>(interval.layer - 1)));
        for (const double elev : {interval.top, std::max(interval.bottom, lowest)}) {
            const double stress = interval.effectiveAt(elev).value();
            table.rows.push_back(
                {writer.text(std::to_string(interval.layer)), writer.value(Quantity::Length, elev),
                 writer.precise(Quantity::UnitWeight, interval.weight),
                 writer.precise(Quantity::UnitWeight, interval.water.weight.value()),
                 writer.precise(Quantity::Stress, stress),
                 writer.precise(Quantity::Stress, layer.active(stress).value()),
                 writer.precise(Quantity::Stress, layer.passive(stress).value())});
        }
    }
    writer.table(table);
}

void checkIntervals(SheetWriter& writer, const PressureStage& stage, int side,
                    const std::vector<Interval>& intervals, const std::vector<LayerWork>& layers) {
    const std::string place = stage.prefix + sideName(side) + " side";
    WorstCheck Ka("Ka of the pressures, " + place, Quantity::Number);
    WorstCheck Kp("Kp of the pressures, " + place, Quantity::Number);
    WorstCheck weight("Unit weight less water's share, " + place, Quantity::UnitWeight);
    WorstCheck stress("Effective stress at breaks, " + place, Quantity::Stress);
    WorstCheck active("Active soil pressure at breaks, " + place, Quantity::Stress);
    WorstCheck passive("Passive soil pressure at breaks, " + place, Quantity::Stress);
    std::size_t n = 0;
    for (const StressInterval& engine : stage.details->sides(side).stresses) {
        const Interval& own = intervals[n++];
        const LayerWork& work = layers.at(static_cast<std::size_t>(own.layer - 1));
        const LayerSymbols symbols(work);
        const std::string at = "layer " + std::to_string(own.layer);
        Ka.add(work.Ka, engine.Ka, at);
        Kp.add(work.Kp, engine.Kp, at);
        weight.add(own.weight - own.water.weight.value(), engine.unitWeight - engine.waterWeight,
                   at);
        const bool far = own.bottom < stage.diagrams.grid.ElevGrid(stage.diagrams.grid.NumElevs);
        // The breaks of a first seepage pass lie thousands of feet down: each value by itself.
        const auto end = [&](double value, const StressPoint& point) {
            const std::string where = "at " + elevationText(point.elev, writer.units());
            stress.addAlone(value, point.effective, where, value);
            active.addAlone(symbols.active(value).value(), point.soilActive, where,
                            symbols.activeTerms(value));
            passive.addAlone(symbols.passive(value).value(), point.soilPassive, where, value);
        };
        end(own.stressTop, engine.top);
        if (!far) {
            end(own.stressBottom, engine.bottom);
        }
    }
    for (const WorstCheck* check : {&Ka, &Kp, &weight}) {
        check->tell(writer);
    }
    constexpr double least = 1; // PSF, below which the last digits of elevations count
    for (const WorstCheck* check : {&stress, &active, &passive}) {
        check->tell(writer, 1e-6, least);
    }
}

/// Which interval governs a row: the method goes from an interval to the next where a row stands at
/// its lower end. Elevations closer together than the grid tells apart share a row, and then an
/// interval without a row of its own end counts on below it.
class RowIntervals {
  public:
    RowIntervals(const Problem& problem, const ElevationGrid& grid, int side,
                 const std::vector<Interval>& intervals)
        : count_(intervals.size()) {
        const double surface = problem.SurfaceElev(side, 1);
        int row = 1;
        while (row < grid.NumElevs && grid.ElevGrid(row + 1) >= surface - SameElevation) {
            ++row;
        }
        rows_.assign(static_cast<std::size_t>(grid.NumElevs) + 1, {None, None});
        std::size_t n = 0;
        at(row).below = n;
        for (++row; row <= grid.NumElevs; ++row) {
            at(row).above = n;
            const Interval& interval = intervals[n];
            const double share =
                (interval.top - grid.ElevGrid(row)) / (interval.top - interval.bottom);
            n += std::abs(1 - share) < BreakShare && n + 1 < count_ ? 1 : 0;
            at(row).below = n;
        }
    }

    /// Of the soil just below (k = 1) or just above (k = 2) a row; null where there is none.
    const Interval* of(int row, int k, const std::vector<Interval>& intervals) const {
        const Ends& ends = rows_[static_cast<std::size_t>(row)];
        const std::size_t n = k == 1 ? ends.below : ends.above;
        return n < count_ ? &intervals[n] : nullptr;
    }

  private:
    static constexpr std::size_t None = ~std::size_t{0};
    struct Ends {
        std::size_t above, below;
    };
    Ends& at(int row) { return rows_[static_cast<std::size_t>(row)]; }

    std::size_t count_;
    std::vector<Ends> rows_; ///< by row of the grid
};

/// Own pressures in the rows: soil by straight lines, surcharges by their formulas, no tension.
/// Rows that came later stand on straight lines between those that were there.
class RowPressures {
  public:
    RowPressures(const SheetRequest& request, const PressureStage& stage, int side,
                 const std::vector<Interval>& intervals, const std::vector<LayerWork>& layers)
        : problem_(request.problem), grid_(workedRows(stage.details->sides(side))), side_(side),
          intervals_(intervals), layers_(layers), shares_(stage.details->sides(side).surcharges),
          governing_(problem_, grid_, side, intervals) {}

    struct Values {
        double active = 0, passive = 0;
        double lost = 0; ///< what rounding may make of them
    };
    /// Just below (k = 1) or just above (k = 2) an elevation.
    Values at(double elev, int k) const {
        int row = 1;
        while (row < grid_.NumElevs && grid_.ElevGrid(row) > elev) {
            ++row;
        }
        if (row == 1 || grid_.ElevGrid(row) == elev) {
            return inRow(row, k);
        }
        const double top = grid_.ElevGrid(row - 1);
        const double t = (top - elev) / (top - grid_.ElevGrid(row));
        const Values above = inRow(row - 1, 1);
        const Values below = inRow(row, 2);
        return {(1 - t) * above.active + t * below.active,
                (1 - t) * above.passive + t * below.passive, std::max(above.lost, below.lost)};
    }

    /// The first interval above `lowest` that counts on below its end; null without one.
    const Interval* overrun(double lowest) const {
        for (int row = 2; row <= grid_.NumElevs && grid_.ElevGrid(row) >= lowest; ++row) {
            const Interval* interval = governing_.of(row, 2, intervals_);
            if (interval == nullptr) {
                continue;
            }
            const double near = SameElevation + BreakShare * (interval->top - interval->bottom);
            if (interval->bottom - grid_.ElevGrid(row) > near) {
                return interval;
            }
        }
        return nullptr;
    }

  private:
    Values inRow(int row, int k) const {
        const Interval* interval = governing_.of(row, k, intervals_);
        if (interval == nullptr) {
            return {};
        }
        const double elev = grid_.ElevGrid(row);
        // A row that stands nearly at a break has the break's own pressure below it.
        const bool begins = k == 1 && governing_.of(row, 2, intervals_) != interval;
        const double at = begins ? interval->top : elev;
        const LayerSymbols layer(layers_.at(static_cast<std::size_t>(interval->layer - 1)));
        const double stress = interval->effectiveAt(at).value();
        const double surface = shares_.loads.empty() ? problem_.SurfaceElev(side_, 1)
                                                     : shares_.surface; // as its row stands
        const double depth = surface - elev;
        const double load = depth > SameElevation ? surchargeAt(problem_, side_, depth) : 0;
        return {layer.active(stress).value() + load, layer.passive(stress).value() + load,
                lostOnLine(*interval, layer, at)};
    }
    /// The solution takes rows from the line through both ends of their interval. Far beyond the
    /// ends that line loses digits: the ends' pressures count times the distance over its length.
    static double lostOnLine(const Interval& interval, const LayerSymbols& layer, double elev) {
        const double t = (interval.top - elev) / (interval.top - interval.bottom);
        const double ends = std::max(layer.activeTerms(interval.stressTop),
                                     std::abs(layer.passive(interval.stressTop).value()));
        return TermRounding * std::abs(t) * ends;
    }

    const Problem& problem_;
    ElevationGrid grid_;
    int side_;
    const std::vector<Interval>& intervals_;
    const std::vector<LayerWork>& layers_;
    const SurchargeShares& shares_;
    RowIntervals governing_;
};

/// Rows in force against soil, surcharges and the tension rule; tells where that rule acts.
void checkRows(SheetWriter& writer, const SheetRequest& request, const PressureStage& stage,
               int side, const RowPressures& rows) {
    const ElevationGrid& grid = stage.diagrams.grid;
    const Pressures& pressures = stage.diagrams.pressures;
    const std::string place = stage.prefix + sideName(side) + " side, rows";
    WorstCheck active("Active pressure in force, " + place, Quantity::Stress);
    WorstCheck passive("Passive pressure in force, " + place, Quantity::Stress);
    ElevationRanges cut;
    for (int i = 1; i <= lowestRow(stage); ++i) {
        const double elev = grid.ElevGrid(i);
        if (elev > request.problem.SurfaceElev(side, 1) + SameElevation) {
            continue;
        }
        bool acts = false;
        for (const int k : {2, 1}) {
            if (k == 1 && i == grid.NumElevs) {
                continue;
            }
            const RowPressures::Values own = rows.at(elev, k);
            acts = acts || own.active < -PressureNoise;
            const std::string at = "at " + elevationText(elev, request.units);
            active.add(std::max(0.0, own.active), pressures.ActivePressures(side, i, k), at,
                       own.lost);
            passive.add(own.passive, pressures.PassivePressures(side, i, k), at, own.lost);
        }
        cut.add(elev, acts);
    }
    // What is below the noise counts as none.
    active.tell(writer, 1e-6, PressureNoise / 1e-6);
    passive.tell(writer);
    if (const Interval* over = rows.overrun(lowestElev(stage)); over != nullptr) {
        writer.paragraph("Approximation: no row of its own stands at " +
                         elevationText(over->bottom, request.units) +
                         ", which nearly coincides with another elevation; the straight lines of "
                         "the soil above it (layer " +
                         std::to_string(over->layer) + ") run on below it in the rows.");
    }
    const std::string where = cut.text(request.units);
    if (!where.empty()) {
        writer.paragraph("Soil cannot pull at the wall: the active pressure is set to zero where "
                         "soil and surcharges together come out below it, at " +
                         where + ".");
    }
}

void writeStressDefinitions(SheetWriter& writer) {
    LayerWork plain; // with cohesion and wall friction, so that all parts of the formulas show
    plain.cohesionActive = plain.wallFrictionActive = 1;
    const LayerSymbols symbols(plain);
    const Expr stress = term("σ", "", 0);
    writer.paragraph("The effective vertical stress σ grows from a break of the diagrams at 0 "
                     "downward by the unit weight γ of the soil (saturated below water, else "
                     "moist) less what the water bears, w. It starts with the uniform load. The "
                     "pressures are the horizontal shares:");
    writer.definition({"σ", ""}, term("σ", "0", 0) + (term("y", "0", 0) - term("y", "", 0)) *
                                                         (term("γ", "", 0) - term("w", "", 0)));
    writer.definition({"p", "a"}, symbols.active(stress));
    writer.definition({"p", "p"}, symbols.passive(stress));
}

} // namespace

void ElevationRanges::add(double elev, bool acts) {
    if (acts && open_) {
        ranges_.back().bottom = elev;
    } else if (acts) {
        ranges_.push_back({elev, elev});
    }
    open_ = acts;
}

std::string ElevationRanges::text(UnitSystem units) const {
    std::string text;
    for (const Range& range : ranges_) {
        text += text.empty() ? "" : ", ";
        text += elevationText(range.top, units);
        if (range.bottom < range.top) {
            text += " to " + elevationText(range.bottom, units);
        }
    }
    return text;
}

ElevationGrid workedRows(const SideDetails& details) {
    ElevationGrid grid;
    for (const double elev : details.rows) {
        grid.ElevGrid(++grid.NumElevs) = elev;
    }
    return grid;
}

int lowestRow(const PressureStage& stage) {
    constexpr double farBelow = 1000; // FT between neighbours: the end of seepage of a first pass
    const ElevationGrid& grid = stage.diagrams.grid;
    int row = std::max(1, grid.NumElevs - (stage.review ? 2 : 0));
    while (row > 1 && grid.ElevGrid(row - 1) - grid.ElevGrid(row) > farBelow) {
        --row;
    }
    return row;
}

double lowestElev(const PressureStage& stage) {
    return stage.diagrams.grid.ElevGrid(lowestRow(stage));
}

void writeStresses(SheetWriter& writer, const SheetRequest& request, const PressureStage& stage,
                   int side, bool first) {
    const double searched = searchedFactor(request, stage.level);
    std::vector<LayerWork> layers;
    for (int layer = 1; layer <= request.problem.SoilLayerCount(side); ++layer) {
        layers.push_back(layerWork(request.problem, side, layer, searched));
    }
    const std::vector<Interval> intervals = intervalsOf(request, stage, side);
    if (intervals.empty()) {
        return;
    }
    const double lowest = lowestElev(stage);
    // Of a second solution the values alone.
    if (stage.level > 1) {
        writeIntervalTable(writer, intervals, layers, lowest);
        checkIntervals(writer, stage, side, intervals, layers);
        checkRows(writer, request, stage, side,
                  RowPressures(request, stage, side, intervals, layers));
        return;
    }
    if (first) {
        writeStressDefinitions(writer);
    }
    const double load = uniformLoad(request.problem, side);
    if (load != 0) {
        writer.paragraph("Uniform load: " + writer.withUnit(Quantity::Stress, load) + ".");
    }
    int layerAbove = 0;
    for (const Interval& interval : intervals) {
        if (interval.top > lowest + SameElevation) {
            writeInterval(writer, interval,
                          LayerSymbols(layers.at(static_cast<std::size_t>(interval.layer - 1))),
                          lowest, interval.layer != layerAbove);
        }
        layerAbove = interval.layer;
    }
    checkIntervals(writer, stage, side, intervals, layers);
    checkRows(writer, request, stage, side, RowPressures(request, stage, side, intervals, layers));
}

} // namespace korvane::sheet
