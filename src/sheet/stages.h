// The pressures that a sheet shows: those of each level that was solved, or of the stop for review.
#pragma once

#include "sheet/sheet.h"

#include <string>
#include <vector>

namespace korvane {

/// Pressures at one stage of a solution, and what they rest on.
struct PressureStage {
    int level = 1;             ///< solution level whose factors act
    bool review = false;       ///< the stop for review: the wall was not solved
    std::string title;         ///< "free earth solution"; empty where there is one stage alone
    PressureDiagrams diagrams; ///< a row for each elevation in step, down to the wall's bottom for
                               ///< a level, down to the far points for the stop for review
    const PressureDetails* details = nullptr; ///< null where they were not kept
    double gradient = 0;                      ///< FT/FT
    double seepageEnd = 0;                    ///< FT
    Array<DevelopedLayer, 2, 11> layers;      ///< empty at the stop for review
};

/// The stages whose pressures differ: one level of an anchored wall stands for both where they rest
/// on the same. Empty where the solution has not come to pressures.
std::vector<PressureStage> pressureStages(const SheetRequest& request);

/// The methods of the sides; all None where not even they are known.
Array<PressureMethod, 2> sideMethods(const SheetRequest& request);

/// "right", "left".
const char* sideName(int side);

/// "EL -12.00 FT".
std::string elevationText(double elev, UnitSystem units);

} // namespace korvane
