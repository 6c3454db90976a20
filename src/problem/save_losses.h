// What a saved input file does not bring back: one table for the screens and the guide.
#pragma once

#include "problem/problem.h"

#include <span>
#include <vector>

namespace korvane {

/// A kind of value that the file format changes, drops or does not take back, and what becomes of
/// it. The guide lists all rules in these words.
struct SaveRule {
    const char* value;
    const char* effect;
};

/// All rules, in the order of the sections.
std::span<const SaveRule> saveRules();

/// A value that a rule touches.
struct SaveLoss {
    const void* place; ///< address of the field or entry in the problem that was looked at
    const SaveRule* rule;
};

/// Every value that would not come back if the problem were saved and opened again. None: the
/// problem comes back as it stands, headings but for blanks at their ends, what its counts, kinds
/// and modes leave unused aside.
std::vector<SaveLoss> lossesOfSave(const Problem& problem);

} // namespace korvane
