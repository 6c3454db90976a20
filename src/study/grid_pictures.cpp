// Plots of studies over values: curves and heat maps of a grid, the walls of a search.
#include "study/pictures.h"

#include "study/chart.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace korvane::study {

using namespace sheet;

namespace {

constexpr double None = std::numeric_limits<double>::quiet_NaN();
/// Values that a curve has at most; of more every second, third, ... one is taken.
constexpr std::size_t MostOnCurve = 200;
/// Cells along each side of a heat map, likewise.
constexpr std::size_t MostCells = 40;
/// Cells up to which each tells its number.
constexpr std::size_t MostNumbered = 12;
constexpr double LeastShade = 0.06;
constexpr double MostShade = 0.9;
constexpr double DarkShade = 0.55; // numbers on darker cells are light

/// Places of the values that are shown.
std::vector<std::size_t> thinned(std::size_t count, std::size_t most) {
    const std::size_t step = (count + most - 1) / most;
    std::vector<std::size_t> places;
    for (std::size_t n = 0; n < count; n += step) {
        places.push_back(n);
    }
    return places;
}

/// The rows of a grid by the places of their values.
class GridRows {
  public:
    GridRows(const FinishedStudy& finished, std::size_t output)
        : finished_(finished), sql_("SELECT " + quoted(finished.study.outputs[output].name) +
                                    limits() + " FROM variants WHERE id = ?") {
        for (const Variable& variable : finished.study.variables) {
            places_.push_back((variable.values.size() - 1) / 2);
        }
    }

    void set(std::size_t variable, std::size_t place) { places_[variable] = place; }
    std::size_t place(std::size_t variable) const { return places_[variable]; }
    /// The output there, and whether a limit state is reached.
    std::pair<double, bool> get() const {
        std::uint64_t id = 0;
        for (std::size_t n = 0; n < places_.size(); ++n) {
            id = id * finished_.study.variables[n].values.size() + places_[n];
        }
        std::pair<double, bool> found{None, false};
        finished_.store.query(sql_,
                              [&](const std::vector<double>& row) {
                                  found = {row[0], std::count(row.begin() + 1, row.end(), 1.0) > 0};
                              },
                              {static_cast<double>(id)});
        return found;
    }

  private:
    std::string limits() const {
        std::string columns;
        for (const LimitState& limit : finished_.study.limits) {
            columns += ", " + quoted(limit.name);
        }
        return columns;
    }

    const FinishedStudy& finished_;
    std::string sql_;
    std::vector<std::size_t> places_; ///< the middle one unless set
};

/// How far an output moves along a variable with the others in the middle.
double movement(const FinishedStudy& finished, std::size_t output, std::size_t variable) {
    GridRows rows(finished, output);
    double least = std::numeric_limits<double>::infinity();
    double largest = -least;
    for (const std::size_t place :
         thinned(finished.study.variables[variable].values.size(), MostOnCurve)) {
        rows.set(variable, place);
        const double value = rows.get().first;
        if (std::isfinite(value)) {
            least = std::min(least, value);
            largest = std::max(largest, value);
        }
    }
    return largest > least ? largest - least : 0;
}

/// Variables with several values, those that move an output most first.
std::vector<std::size_t> movers(const FinishedStudy& finished, std::size_t output) {
    std::vector<std::pair<double, std::size_t>> sizes;
    for (std::size_t n = 0; n < finished.study.variables.size(); ++n) {
        if (finished.study.variables[n].values.size() > 1) {
            sizes.emplace_back(-movement(finished, output, n), n);
        }
    }
    std::stable_sort(sizes.begin(), sizes.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<std::size_t> all;
    all.reserve(sizes.size());
    for (const auto& [size, variable] : sizes) {
        all.push_back(variable);
    }
    return all;
}

std::string othersText(const FinishedStudy& finished, const std::vector<std::size_t>& shown) {
    const Study& study = finished.study;
    std::string text;
    for (std::size_t n = 0; n < study.variables.size(); ++n) {
        const Variable& variable = study.variables[n];
        if (variable.values.size() > 1 && std::count(shown.begin(), shown.end(), n) == 0) {
            text += (text.empty() ? " Others at their middle value: " : ", ") + variable.name +
                    " = " +
                    toldWithUnit(variable.values[(variable.values.size() - 1) / 2], variable,
                                 study.units);
        }
    }
    return text.empty() ? text : text + ".";
}

/// One curve for each value of a second variable, if there is one.
Picture curvesOf(const FinishedStudy& finished, std::size_t output,
                 const std::vector<std::size_t>& shown) {
    const Study& study = finished.study;
    const Variable& along = study.variables[shown[0]];
    const std::size_t series = shown.size() > 1 ? study.variables[shown[1]].values.size() : 1;
    GridRows rows(finished, output);
    std::vector<std::vector<SvgPoint>> curves(series);
    std::vector<SvgPoint> reached;
    std::vector<double> heights{finished.baseOutputs[output]};
    for (std::size_t n = 0; n < series; ++n) {
        if (shown.size() > 1) {
            rows.set(shown[1], n);
        }
        for (const std::size_t place : thinned(along.values.size(), MostOnCurve)) {
            rows.set(shown[0], place);
            const auto [value, isReached] = rows.get();
            curves[n].push_back({along.values[place], value});
            heights.push_back(value);
            if (isReached) {
                reached.push_back(curves[n].back());
            }
        }
        std::sort(curves[n].begin(), curves[n].end(),
                  [](const SvgPoint& a, const SvgPoint& b) { return a.x < b.x; });
    }
    Chart chart(axisOver(titleOf(along, study.units), along.values),
                axisOver(titleOf(study.outputs[output], study.units), heights));
    for (std::size_t n = 0; n < series; ++n) {
        chart.curve(curves[n], seriesClass(n));
        if (shown.size() > 1) {
            const Variable& second = study.variables[shown[1]];
            const auto last = std::find_if(curves[n].rbegin(), curves[n].rend(),
                                           [](SvgPoint at) { return std::isfinite(at.y); });
            if (last != curves[n].rend()) {
                chart.label(*last, second.name + " " +
                                       toldWithUnit(second.values[n], second, study.units));
            }
        }
    }
    for (const SvgPoint& at : reached) {
        chart.circle(at, "point bad");
    }
    chart.markY(finished.baseOutputs[output], "base", "mark faint");
    const std::string& name = study.outputs[output].name;
    return {chart.finish(name + " along " + along.name),
            name + " along " + along.name + "." +
                (reached.empty() ? "" : " Red points: a limit state is reached.") +
                othersText(finished, shown)};
}

struct HeatCell {
    double value = None;
    bool isReached = false;
};

void drawCell(Chart& chart, std::size_t column, std::size_t row, const HeatCell& cell, double shade,
              bool isNumbered) {
    const auto x = static_cast<double>(column);
    const auto y = static_cast<double>(row);
    if (!std::isfinite(cell.value)) {
        chart.box({x, x + 1, y, y + 1}, "cell none");
        chart.text({x + 0.5, y + 0.5}, "×");
        return;
    }
    chart.shade({x, x + 1, y, y + 1}, shade);
    if (isNumbered) {
        const bool isDark = shade > DarkShade;
        chart.text({x + 0.5, y + 0.5}, told(cell.value), isDark ? "on" : "");
    }
}

/// Ends of the edges between cells that have reached a limit state and cells that have not.
std::vector<SvgPoint> borderOf(const std::vector<HeatCell>& cells, std::size_t columns) {
    std::vector<SvgPoint> ends;
    for (std::size_t n = 0; n < cells.size(); ++n) {
        const std::size_t row = n / columns;
        const auto x = static_cast<double>(n % columns);
        const auto y = static_cast<double>(row);
        const bool hasRight = (n + 1) % columns != 0;
        if (hasRight && cells[n].isReached != cells[n + 1].isReached) {
            ends.insert(ends.end(), {{x + 1, y}, {x + 1, y + 1}});
        }
        const bool hasUpper = n + columns < cells.size();
        if (hasUpper && cells[n].isReached != cells[n + columns].isReached) {
            ends.insert(ends.end(), {{x, y + 1}, {x + 1, y + 1}});
        }
    }
    return ends;
}

/// Names of some of the values along a side of the map.
std::vector<std::string> cellNames(const Variable& variable,
                                   const std::vector<std::size_t>& places) {
    std::vector<std::string> names;
    names.reserve(places.size());
    for (const std::size_t place : places) {
        names.push_back(told(variable.values[place]));
    }
    return names;
}

/// Shades over two variables, the stronger one across.
Picture heatMapOf(const FinishedStudy& finished, std::size_t output,
                  const std::vector<std::size_t>& shown) {
    const Study& study = finished.study;
    const Variable& across = study.variables[shown[0]];
    const Variable& up = study.variables[shown[1]];
    const auto columns = thinned(across.values.size(), MostCells);
    const auto lines = thinned(up.values.size(), MostCells);
    GridRows rows(finished, output);
    std::vector<HeatCell> cells;
    double least = std::numeric_limits<double>::infinity();
    double largest = -least;
    for (const std::size_t line : lines) {
        for (const std::size_t column : columns) {
            rows.set(shown[1], line);
            rows.set(shown[0], column);
            const auto [value, isReached] = rows.get();
            cells.push_back({value, isReached});
            if (std::isfinite(value)) {
                least = std::min(least, value);
                largest = std::max(largest, value);
            }
        }
    }
    Chart chart({titleOf(across, study.units), 0, static_cast<double>(columns.size())},
                {titleOf(up, study.units), 0, static_cast<double>(lines.size())}, 560, 320);
    chart.nameCells(cellNames(across, columns), cellNames(up, lines));
    const bool isNumbered = columns.size() <= MostNumbered;
    for (std::size_t n = 0; n < cells.size(); ++n) {
        const double part = largest > least ? (cells[n].value - least) / (largest - least) : 0.5;
        drawCell(chart, n % columns.size(), n / columns.size(), cells[n],
                 LeastShade + part * (MostShade - LeastShade), isNumbered);
    }
    const std::vector<SvgPoint> border = borderOf(cells, columns.size());
    chart.pieces(border, "limit");
    const OutputColumn& told = study.outputs[output];
    return {chart.finish("Heat map of " + told.name),
            told.name + " from " + toldWithUnit(least, told, study.units) + " (light) to " +
                toldWithUnit(largest, told, study.units) + " (dark); ×: no solution." +
                (border.empty() ? "" : " Red line: beyond it a limit state is reached.") +
                othersText(finished, shown)};
}

} // namespace

void addGrid(std::vector<PictureGroup>& groups, const FinishedStudy& finished) {
    const std::vector<std::size_t> outputs = finished.plotted();
    if (outputs.empty()) {
        return;
    }
    std::vector<std::size_t> shown = movers(finished, outputs.front());
    if (shown.empty()) {
        return; // a grid of one wall
    }
    if (shown.size() > 2) {
        shown.erase(shown.begin() + 2, shown.end());
    }
    const bool isMap =
        shown.size() > 1 && finished.study.variables[shown[1]].values.size() > MostSeries;
    PictureGroup group{isMap ? "Heat maps" : "Curves", {}};
    for (const std::size_t output : outputs) {
        group.pictures.push_back(isMap ? heatMapOf(finished, output, shown)
                                       : curvesOf(finished, output, shown));
    }
    groups.push_back(std::move(group));
}

void addSearch(std::vector<PictureGroup>& groups, const FinishedStudy& finished) {
    const Study& study = finished.study;
    const Variable& variable = study.variables.front();
    const OutputColumn& output = study.target->output;
    std::vector<SvgPoint> walls;
    std::vector<double> numbers;
    std::vector<double> heights{study.target->value};
    finished.store.query("SELECT " + quoted(variable.name) + ", " + quoted(output.name) +
                             " FROM variants ORDER BY 1",
                         [&](const std::vector<double>& row) {
                             walls.push_back({row[0], row[1]});
                             numbers.push_back(row[0]);
                             heights.push_back(row[1]);
                         });
    Chart chart(axisOver(titleOf(variable, study.units), numbers),
                axisOver(titleOf(output, study.units), heights));
    chart.curve(walls);
    for (const SvgPoint& wall : walls) {
        chart.circle(wall, "point");
    }
    chart.markY(study.target->value, "target");
    const double found = finished.value(variable.name, "target");
    chart.markX(found, variable.name + " " + toldWithUnit(found, variable, study.units));
    groups.push_back({"Search",
                      {{chart.finish("The walls of the search"),
                        "Each point is a wall that was solved on the way to the target."}}});
}

} // namespace korvane::study
