#include "study/target.h"

#include "study/plan.h"

#include <algorithm>
#include <cmath>

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

} // namespace

TargetFound findTarget(const Study& study) {
    TargetFound found;
    Evaluation evaluation(study);
    const std::vector<double>& values = study.variables.front().values;
    const auto column =
        std::find_if(study.outputs.begin(), study.outputs.end(), [&](const OutputColumn& output) {
            return output.name == study.target->output.name;
        });
    const auto place = static_cast<std::size_t>(column - study.outputs.begin());
    const auto solveAt = [&](double number) {
        Row row;
        evaluation.fill({number}, row);
        row.id = found.rows.size();
        const End end{number, row.outputs[place]};
        if (std::isnan(end.output)) {
            found.fault =
                "no solution at " +
                quantityWithUnit(study.variables.front().quantity,
                                 fromUnits(study.variables.front().quantity, number, study.units),
                                 study.units) +
                ": " + row.reason;
        }
        found.rows.push_back(std::move(row));
        return end;
    };
    End low = solveAt(*std::min_element(values.begin(), values.end()));
    End high = solveAt(*std::max_element(values.begin(), values.end()));
    const double value = study.target->value;
    if (found.fault.empty() && (low.output < value) == (high.output < value)) {
        found.fault = "the output does not reach the target between the ends";
    }
    const bool rises = low.output < high.output;
    for (int n = 0; n < MostHalvings && found.fault.empty(); ++n) {
        const double middle = low.number + (high.number - low.number) / 2;
        const double size = std::max(std::abs(low.number), std::abs(high.number));
        if (high.number - low.number <= Neighbours * size || middle == low.number ||
            middle == high.number) {
            break;
        }
        const End end = solveAt(middle);
        ((end.output < value) == rises ? low : high) = end;
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
