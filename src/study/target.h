// Looks for the number of a variable at which an output reaches a value.
#pragma once

#include "study/store.h"

#include <string>
#include <vector>

namespace korvane::study {

struct TargetFound {
    std::string fault; ///< why there is none; empty where it was found
    double number = 0; ///< of the variable
    double output = 0; ///< that the wall has with it
    /// The output's values on both sides of the number: far apart where it jumps over the target.
    double below = 0;
    double above = 0;
    std::vector<Row> rows; ///< every wall that was solved, in order
};

/// Halves between the first and the last value of the variable, where the output must lie on
/// different sides of the target, until the two ends are neighbours to 12 digits. Where the output
/// jumps over the target, the end nearer to it is taken.
TargetFound findTarget(const Study& study);

/// Rows for the table of statistics.
void addTarget(std::vector<Statistic>& all, const Study& study, const TargetFound& found);

} // namespace korvane::study
