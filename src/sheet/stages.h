// The pressures that a sheet shows: those of each level that was solved, or of the stop for review.
#pragma once

#include "sheet/sheet.h"

#include <string>
#include <vector>

namespace korvane::sheet {

/// Pressures at one stage of a solution, and what they rest on.
struct PressureStage {
    int level = 1;             ///< solution level whose factors act
    bool review = false;       ///< the stop for review: the wall was not solved
    bool shown = true;         ///< false: the same as the stage before; its checks alone count
    std::string title;         ///< "free earth solution"; empty where one stage alone is shown
    std::string prefix;        ///< of its checks: "free earth, "; empty for a single level
    PressureDiagrams diagrams; ///< a row for each elevation in step, down to the wall's bottom for
                               ///< a level, down to the far points for the stop for review
    const PressureDetails* details = nullptr; ///< null where they were not kept
    double gradient = 0;                      ///< FT/FT
    double seepageEnd = 0;                    ///< FT
    Array<DevelopedLayer, 2, 11> layers;      ///< empty at the stop for review
};

/// All levels, or the stop for review: one level of an anchored wall is shown for both where they
/// rest on the same pressures. Empty where the solution has not come to pressures.
std::vector<PressureStage> pressureStages(const SheetRequest& request);

/// Why a side takes a wedge method; empty where it need not.
std::string wedgeReason(const Problem& problem, int side);

/// The methods of the sides; those that the input asks for where the solution has not come to them.
Array<PressureMethod, 2> sideMethods(const SheetRequest& request);

/// "right", "left".
const char* sideName(int side);

/// "EL -12.00 FT".
std::string elevationText(double elev, UnitSystem units);

} // namespace korvane::sheet
