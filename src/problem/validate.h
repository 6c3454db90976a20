// What is wrong with a problem: every rule of files and screens, stated once, against the record.
//
// A rule that only a file states (ByReader) is broken by problems that the screens take, and the
// other way round. What both state, or the record itself, no finished problem breaks.
#pragma once

#include "problem/fields.h"

#include <functional>
#include <string>
#include <vector>

namespace korvane {

/// One broken rule. The first one of a value is told alone.
struct Finding {
    const char* field = ""; ///< as in JSON
    int side = 0;           ///< 0 where the field has no sides
    int index = 0;          ///< from 1; 0 where the field is no list
    Rule rule = Rule::Finite;
    unsigned by = 0;  ///< bits of StatedBy
    double limit = 0; ///< of rules that have one
    double value = 0; ///< of a choice its number or the code of its letter

    /// True for what neither a file nor a screen can leave in the record.
    bool isFatal() const { return (by & ByRecord) != 0 || (by & ByBoth) == ByBoth; }
    bool hasLimit() const { return rule != Rule::Finite && rule != Rule::Choice; }
    bool operator==(const Finding&) const = default;
};

/// Calls `found` for each finding, counts and choices first, until it answers false. Takes no
/// memory.
void forEachFinding(const Problem& problem, const std::function<bool(const Finding&)>& found);

/// All of them.
std::vector<Finding> validate(const Problem& problem);

/// The limits of a number that hang on other sections, which readers and screens test apart from
/// the field; whoever asks knows whether they count.
Limits limitsBetween(ProblemField field, StatedBy who, const Problem& problem, int side = Right,
                     int row = 1);

/// Field and rule in words: "SoilFriction of right side, entry 2, is 80 and must be at most 45".
std::string findingText(const Finding& finding);

} // namespace korvane
