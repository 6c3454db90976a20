// The results of one input as JSON.
#pragma once

#include "batch/solve_input.h"
#include "comparison/comparison.h"
#include "problem/input_reader.h"
#include "solution/solution.h"

#include <string>
#include <vector>

namespace korvane::batch {

/// What the JSON of one input is made of.
struct JsonRecord {
    const std::string& input; ///< as given
    const Options& options;
    int status = StatusSolved;
    const std::vector<Message>& messages;
    const Problem& problem; ///< with the seepage that the solution ended with
    const PileSections& sections;
    const Solved& solved;                     ///< as far as it has come
    const InputFault& fault;                  ///< of a refused input
    UnitSystem units;                         ///< of all numbers
    const std::vector<Note>* notes = nullptr; ///< null: none were worked out
    const Comparison* comparison = nullptr;   ///< null: none was asked for
};

/// One JSON object; docs/json.md tells its members. Numbers read back to the same double.
std::string jsonResults(const JsonRecord& record);

} // namespace korvane::batch
