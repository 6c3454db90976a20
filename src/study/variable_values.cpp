#include "study/variable_values.h"

#include "study/draws.h"

#include "problem/quantities.h"

#include <algorithm>
#include <cmath>

namespace korvane::study {

namespace {

/// Most values that a range may have.
constexpr double MostValues = 1e6;
/// Digits to which the values of a range are taken.
constexpr int RangeDigits = 12;

/// Value k of [from, to, step]. What is left of numbers that cancel is nothing.
double valueOfRange(const std::vector<double>& range, int k) {
    const double way = k * range[2];
    const double value = range[0] + way;
    const double size = std::max(std::abs(range[0]), std::abs(way));
    return std::abs(value) < size * std::pow(10.0, -RangeDigits) ? 0
                                                                 : roundedTo(value, RangeDigits);
}

/// Values from + k * step, to 12 digits of the largest of them.
void readRange(const TomlTable& entry, Variable& variable) {
    const std::vector<double> range = entry.numbers("range");
    if (range.size() != 3) {
        entry.fail("range", "must be [from, to, step]");
    }
    const double steps = (range[1] - range[0]) / range[2];
    if (range[2] == 0 || !(steps >= 0)) {
        entry.fail("range", "is empty");
    }
    if (steps >= MostValues) {
        entry.fail("range", "has more than 1000000 values");
    }
    const int last = static_cast<int>(std::floor(steps + 1e-9));
    for (int k = 0; k <= last; ++k) {
        variable.values.push_back(valueOfRange(range, k));
    }
}

void readDistribution(const TomlTable& entry, Variable& variable) {
    variable.distribution = entry.requiredText("distribution");
    if (entry.has("bounds")) {
        const std::vector<double> bounds = entry.numbers("bounds", true);
        if (bounds.size() != 2 || !(bounds[0] < bounds[1])) {
            entry.fail("bounds", "must be [least, largest], with -inf or inf for none");
        }
        for (const std::size_t end : {0U, 1U}) {
            if (std::isfinite(bounds[end])) {
                variable.bounds.at(end) = bounds[end];
            }
        }
    }
    const std::string fault = distributionFault(variable);
    if (!fault.empty()) {
        entry.fail("distribution", fault);
    }
}

} // namespace

void readValues(const TomlTable& entry, Variable& variable) {
    const bool pair = entry.has("low") || entry.has("high");
    const int ways = (entry.has("values") ? 1 : 0) + (entry.has("range") ? 1 : 0) +
                     (entry.has("distribution") ? 1 : 0) + (pair ? 1 : 0);
    if (ways != 1) {
        throw StudyFault{entry.line(), "[[variable]] " + variable.name +
                                           " needs one of values, range, low and high, "
                                           "distribution"};
    }
    if (pair) {
        variable.values = {entry.requiredNumber("low"), entry.requiredNumber("high")};
    } else if (entry.has("values")) {
        variable.values = entry.numbers("values");
        if (variable.values.empty()) {
            entry.fail("values", "is empty");
        }
    } else if (entry.has("range")) {
        readRange(entry, variable);
    } else {
        readDistribution(entry, variable);
    }
    if (entry.has("bounds") && !variable.isRandom()) {
        entry.fail("bounds", "belongs to a distribution");
    }
}

} // namespace korvane::study
