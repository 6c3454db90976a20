// The rows of a study as its program writes them, and their sums in words.
#pragma once

#include "survey/outputs.h"
#include "survey/question.h"

#include <string>
#include <vector>

namespace korvane::study {

/// One solved wall. NaN stands for nothing.
struct StudyRow {
    std::vector<double> numbers; ///< of the variables, in the order of the question
    std::vector<double> outputs; ///< by column
    std::string outcome;         ///< "solved" or the failure's code
    std::string reason;          ///< of one that is not solved

    bool isSolved() const { return outcome == "solved"; }
};

struct StudyRows {
    std::vector<OutputColumn> columns;
    std::vector<StudyRow> rows; ///< by their ids, from 0
};

/// The rows, or why a text does not hold them.
struct ReadRows {
    StudyRows rows;
    std::string fault; ///< empty where there are rows
};

/// Reads comma-separated values (RFC 4180) with a line of names. Every variant of the question must
/// be there, in the order of the ids.
ReadRows readRows(const std::string& text, const Question& question, const Problem& base);

/// A column as people read it: "penetration, free earth".
std::string columnTitle(const OutputColumn& column);

/// A value of a column in the units given, with its usual digits; "-" for nothing.
std::string valueText(Quantity quantity, double value, UnitSystem units);

/// "121 variants, all solved", or how many are not and why, the most frequent reason first.
std::string outcomeText(const StudyRows& rows);

} // namespace korvane::study
