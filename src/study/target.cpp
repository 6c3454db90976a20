#include "study/target.h"

#include "study/plan.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace korvane::study {

namespace {

constexpr int MostHalvings = 200;
constexpr double Neighbours = 1e-12;

struct End {
    double number = 0;
    double output = 0;
};

/// How near to the target an output has reached it: 0.01 FT, of what is no length a thousandth.
double nearness(const Study& study) {
    constexpr double Feet = 0.01;
    const Quantity quantity = study.target->output.quantity();
    return quantity == Quantity::Length ? inUnits(quantity, Feet, study.units)
                                        : std::abs(study.target->value) / 1000;
}

/// Solves walls by the number of the variable and keeps their rows.
class Search {
  public:
    Search(const Study& study, TargetFound& found)
        : study_(study), found_(found), evaluation_(study) {
        const auto column =
            std::find_if(study.outputs.begin(), study.outputs.end(), [&](const OutputColumn& one) {
                return one.name == study.target->output.name;
            });
        place_ = static_cast<std::size_t>(column - study.outputs.begin());
    }

    /// Its output is NaN without a solution; why the first has none is kept.
    End at(double number) {
        Row row;
        evaluation_.fill({number}, row);
        row.id = found_.rows.size();
        const End end{number, row.outputs[place_]};
        if (std::isnan(end.output) && unsolved_.empty()) {
            const Quantity quantity = study_.variables.front().quantity;
            unsolved_ = "no solution at " +
                        quantityWithUnit(quantity, fromUnits(quantity, number, study_.units),
                                         study_.units) +
                        ": " + row.reason;
        }
        found_.rows.push_back(std::move(row));
        return end;
    }

    const std::string& unsolved() const { return unsolved_; }

  private:
    const Study& study_;
    TargetFound& found_;
    Evaluation evaluation_;
    std::size_t place_ = 0;
    std::string unsolved_;
};

/// The first two solved neighbours among the values with the target between them, or one that has
/// it; empty where there are none.
std::vector<End> bracket(const Study& study, Search& search, const std::function<bool()>& stop) {
    std::vector<double> values = study.variables.front().values;
    std::sort(values.begin(), values.end());
    const double target = study.target->value;
    std::vector<End> before;
    for (const double number : values) {
        if (stop && stop()) {
            break;
        }
        const End end = search.at(number);
        if (std::isnan(end.output)) {
            continue;
        }
        if (end.output == target) {
            return {end, end};
        }
        if (!before.empty() && (before[0].output < target) != (end.output < target)) {
            return {before[0], end};
        }
        before = {end};
    }
    return {};
}

/// A solved wall between two others, the middle one if it can be; NaN where all that are tried have
/// no solution.
End between(const End& low, const End& high, Search& search) {
    End end{0, std::numeric_limits<double>::quiet_NaN()};
    for (const double share : {0.5, 0.25, 0.75, 0.125, 0.375, 0.625, 0.875}) {
        end = search.at(low.number + share * (high.number - low.number));
        if (!std::isnan(end.output)) {
            break;
        }
    }
    return end;
}

bool areNeighbours(const End& low, const End& high) {
    const double middle = low.number + (high.number - low.number) / 2;
    const double size = std::max(std::abs(low.number), std::abs(high.number));
    return high.number - low.number <= Neighbours * size || middle == low.number ||
           middle == high.number;
}

} // namespace

TargetFound findTarget(const Study& study, const std::function<bool()>& stop) {
    TargetFound found;
    Search search(study, found);
    const std::vector<End> ends = bracket(study, search, stop);
    if (ends.empty()) {
        found.fault =
            search.unsolved().empty()
                ? std::string("the output lies on the same side of the target at ") +
                      (study.variables.front().values.size() == 2 ? "both ends" : "all values")
                : search.unsolved();
        return found;
    }
    End low = ends[0];
    End high = ends[1];
    const double value = study.target->value;
    const bool rises = low.output < high.output;
    for (int n = 0; n < MostHalvings && !areNeighbours(low, high) && !(stop && stop()); ++n) {
        const End end = between(low, high, search);
        if (std::isnan(end.output)) {
            found.fault = search.unsolved();
            return found;
        }
        if (end.output == value) {
            low = end;
            high = end;
        } else {
            ((end.output < value) == rises ? low : high) = end;
        }
    }
    const bool lowIsNearer = std::abs(low.output - value) <= std::abs(high.output - value);
    found.number = lowIsNearer ? low.number : high.number;
    found.output = lowIsNearer ? low.output : high.output;
    found.below = low.output;
    found.above = high.output;
    return found;
}

void addTarget(std::vector<Statistic>& all, const Study& study, const TargetFound& found) {
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    const std::string& variable = study.variables.front().name;
    if (!found.fault.empty()) {
        all.push_back({variable, "no target: " + found.fault, none, none, none});
        return;
    }
    all.push_back({variable, "target", found.number, none, none});
    all.push_back({study.target->output.name, "at the target", found.output,
                   std::min(found.below, found.above), std::max(found.below, found.above)});
    if (std::abs(found.output - study.target->value) > nearness(study)) {
        all.push_back({study.target->output.name, "jumps over the target by",
                       std::abs(found.above - found.below), none, none});
    }
}

} // namespace korvane::study
