// A question about a wall that needs many solutions, and the study file that asks it.
#pragma once

#include "problem/field_address.h"
#include "solution/solution.h"

#include <cstdint>
#include <string>
#include <vector>

namespace korvane::study {

enum class Asking {
    OneAtATime, ///< the wall, then the low and the high number of each variable
    Grid,       ///< every value of a variable with every value of all others
};

/// A number that is moved.
struct AskedVariable {
    FieldAddress address;
    bool bothSides = false; ///< the same number of the other side moves with it
    double low = 0;         ///< in the units of the question
    double high = 0;
    int steps = 5; ///< values from low to high, of a grid
};

struct Question {
    Asking asking = Asking::OneAtATime;
    std::vector<AskedVariable> variables;
    std::vector<std::string> outputs; ///< by their names in study files
    WedgeMethod wedge = WedgeMethod::Sweep;
    UnitSystem units = UnitSystem::US;
};

inline constexpr int LeastSteps = 2;
inline constexpr int MostSteps = 1000;
/// A grid beyond them is for the command line.
inline constexpr double MostVariants = 1e6;

/// What the rows of the study call it: "SoilFriction_right_1", "SoilFriction_both_1".
std::string variableName(const AskedVariable& variable);
/// What people read: "SoilFriction.right.1", "SoilFriction, both sides, 1".
std::string variableTitle(const AskedVariable& variable);

/// Values from low to high with equal steps between them, to 12 digits.
std::vector<double> valuesOf(const AskedVariable& variable);

/// How many walls are solved.
double variantsOf(const Question& question);

/// Why it cannot be asked, in a sentence; empty where it can.
std::string questionFault(const Question& question);

/// The study file, for a base of that name beside it.
std::string studyText(const Question& question, const std::string& baseName);

} // namespace korvane::study
