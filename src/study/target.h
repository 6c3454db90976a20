// Looks for the number of a variable at which an output reaches a value.
#pragma once

#include "study/store.h"

#include <functional>
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

/// Takes the values of the variable by size, of which two neighbours must have the target between
/// their outputs, and halves between the first two that have until these are neighbours to 12
/// digits. Where the output jumps over the target, the end nearer to it is taken. Values without a
/// solution are passed over; on the way, other points than the middle are tried in their place.
/// Where `stop` tells so the search ends where it is.
TargetFound findTarget(const Study& study, const std::function<bool()>& stop = {});

/// Rows for the table of statistics.
void addTarget(std::vector<Statistic>& all, const Study& study, const TargetFound& found);

} // namespace korvane::study
