#include "screens/load_kinds.h"

#include "runtime/runtime_error.h"
#include "screens/sketch.h"

#include <algorithm>

namespace korvane {

namespace {

constexpr const char* Distances = "Distances From Wall (FT)";

// ---- columns
// -------------------------------------------------------------------------------------

constexpr LoadColumn lineColumns[] = {
    {{"txtDLLR", "Distance from wall (FT)", "line load, distance from wall (FT)",
      ProblemField::VLineDist},
     "txtDLLL"},
    {{"txtQLLR", "Line Load (PLF)", "line load (PLF)", ProblemField::VLineLoad}, "txtQLLL"},
};
constexpr LoadColumn uniformColumns[] = {
    {{"txtQUR", "Rightside", "uniform surcharge (PSF)", ProblemField::VUniformLoad, nullptr,
      IfEmpty::Missing, "empty means none"},
     "txtQUL",
     "Leftside",
     {"lblRightside", "lblLeftside"}},
};
constexpr LoadColumn stripColumns[] = {
    {{"txtDS1R", "At Start", "strip load, distance to start (FT)", ProblemField::VStripStart},
     "txtDS1L"},
    {{"txtDS2R", "At End", "strip load, distance to end (FT)", ProblemField::VStripEnd,
      "beyond the start"},
     "txtDS2L"},
    {{"txtQSR", "  Load   (PSF)", "strip load (PSF)", ProblemField::VStripLoad}, "txtQSL"},
};
constexpr LoadColumn rampColumns[] = {
    {{"txtDR1R", "Start Ramp", "ramp load, distance to start (FT)", ProblemField::VRampStart},
     "txtDR1L"},
    {{"txtDR2R", "At End", "ramp load, distance to end (FT)", ProblemField::VRampEnd,
      "not before the start"},
     "txtDR2L",
     "End Ramp"},
    {{"txtQRR", " Ramp Load  (PSF)", "ramp load (PSF)", ProblemField::VRampLoad}, "txtQRL"},
};
constexpr LoadColumn triangleColumns[] = {
    {{"txtDT1R", "At Start", "triangular load, distance to start (FT)", ProblemField::VTriStart},
     "txtDT1L"},
    {{"txtDT2R", "At Peak", "triangular load, distance to peak (FT)", ProblemField::VTriPeak,
      "not before the start"},
     "txtDT2L"},
    {{"txtDT3R", "At End", "triangular load, distance to end (FT)", ProblemField::VTriEnd,
      "not before the peak; start, peak and end not all equal"},
     "txtDT3L"},
    {{"txtQTR", "Peak Load (PSF)", "triangular load, peak load (PSF)", ProblemField::VTriLoad},
     "txtQTL"},
};
constexpr LoadColumn variableColumns[] = {
    {{"txtRightDist", "Distance From Wall (FT)", "variable load, distance from wall (FT)",
      ProblemField::VVarDist, "not below 0, and beyond the row above"},
     "txtLeftDist"},
    {{"txtRightLoad", "   Load     (PSF)", "variable load (PSF)", ProblemField::VVarLoad},
     "txtLeftLoad"},
};
constexpr LoadColumn horizontalLineColumns[] = {
    {{"txtElevHorLine", "Elevation (FT)", "Horizontal line load, elevation (FT)",
      ProblemField::HLineElev}},
    {{"txtHorLine", "Line Load (PLF)", "Horizontal line load (PLF)", ProblemField::HLineLoad}},
};
constexpr LoadColumn distributedColumns[] = {
    {{"txtElHorDist", "Elevation  (FT)", "Horizontal distributed load, elevation (FT)",
      ProblemField::HDistElev, "below the row above; at least two rows"}},
    {{"txtHorDist", "  Load   (PSF)", "Horizontal distributed load (PSF)",
      ProblemField::HDistLoad}},
};

// ---- kinds
// ---------------------------------------------------------------------------------------

constexpr LoadKind loadKinds[] = {
    {.frame = "fraVertLine",
     .title = "Vertical Line Loads",
     .picture = "imgLineLoad",
     .sketch = &LineLoadSketch,
     .load = rulesOf(Load::Line),
     .side = {{"fraLineLoadR", "Rightside Line Loads", "cmdDelVertLineR",
               "Delete &Rightside Loads"},
              {"fraLineLoadL", "Leftside Line Loads", "cmdDelVertLineL", "Delete &leftside Loads"}},
     .columns = lineColumns,
     .columnsTitle = nullptr,
     .finishedName = "cmdFinVertLine",
     .missingChoices = "\n\n     Choose OK to continue LINE LOAD DATA "
                       "\n          entry."
                       "\n     Choose CANCEL to delete ALL LINE LOAD"
                       "\n          DATA and exit.",
     .choices = "\n\n     Choose OK to continue LINE LOAD DATA "
                "\n          entry."
                "\n     Choose CANCEL to DELETE ALL LINE LOAD"
                "\n          DATA and exit."},
    {.frame = "fraUnifLoad",
     .title = "Uniform Loads",
     .picture = "imgUnif",
     .sketch = &UniformLoadSketch,
     .load = rulesOf(Load::Uniform),
     .side = {{nullptr, "", "cmdDelUnifLoad", "&Delete Uniform Surcharges"}, {}},
     .columns = uniformColumns,
     .columnsTitle = "Uniform Surcharge (PSF)",
     .finishedName = "cmdFinUnifLoad",
     .choices = "\n\n     Choose OK to continue UNIFORM LOAD"
                "\n          DATA entry."
                "\n     Choose CANCEL to DELETE ALL UNIFORM"
                "\n          LOAD DATA and exit.",
     .countsWhenRead = true},
    {.frame = "fraStrips",
     .title = "Strip Loads",
     .picture = "imgStrips",
     .sketch = &StripLoadSketch,
     .load = rulesOf(Load::Strip),
     .side = {{"fraStripR", "Rightside Strip Loads", "cmdDelStripR", "Delete &Rightside Loads"},
              {"fraStripL", "Leftside Strip Loads", "cmdDelStripL", "Delete &Leftside Loads"}},
     .columns = stripColumns,
     .columnsTitle = Distances,
     .finishedName = "cmdFinStrips",
     .choices = "\n\n     Choose OK to continue STRIP LOAD DATA "
                "\n          entry."
                "\n     Choose CANCEL to DELETE ALL STRIP LOAD"
                "\n          DATA and exit."},
    {.frame = "fraRamps",
     .title = "Ramp Loads",
     .picture = "imgRamps",
     .sketch = &RampLoadSketch,
     .load = rulesOf(Load::Ramp),
     .side = {{"fraRampR", "Rightside Ramp Load", "cmdDelRampR", "Delete &Rightside Load"},
              {"fraRampL", "Leftside Ramp Load", "cmdDelRampL", "Delete &Leftside Load"}},
     .columns = rampColumns,
     .columnsTitle = Distances,
     .finishedName = "cmdFinRamps",
     .choices = "\n\n     Choose OK to continue RAMP LOAD DATA"
                "\n          entry."
                "\n     Choose CANCEL to DELETE ALL RAMP LOAD"
                "\n          DATA and exit."},
    {.frame = "fraTriangs",
     .title = "Triangular Loads",
     .picture = "imgTriangs",
     .sketch = &TriangularLoadSketch,
     .load = rulesOf(Load::Triangle),
     .side = {{"fraTriangR", "Rightside Triangular Loads", "cmdDelTriangR",
               "Delete &Rightside Loads"},
              {"fraTriangL", "Leftside Triangular Loads", "cmdDelTriangL",
               "Delete &Leftside Loads"}},
     .columns = triangleColumns,
     .columnsTitle = Distances,
     .finishedName = "cmdFinTriangs",
     .missingChoices = "\n\n     Choose OK to continue TRIANGULAR LOAD"
                       "\n          DATA entry."
                       "\n     Choose CANCEL to DELETE ALL"
                       "\n          TRIANGULAR LOAD DATA and exit.",
     .choices = "\n\n     Choose OK to continue TRIANGULAR LOAD"
                "\n          DATA entry."
                "\n     Choose CANCEL to DELETE ALL"
                "\n          TRIANGULAR DATA and exit."},
    {.frame = "fraVertVar",
     .title = "Variable Loads",
     .picture = "imgVertVar",
     .sketch = &VariableLoadSketch,
     .load = rulesOf(Load::Variable),
     .side = {{"fraVertVarR", "Rightside Variable Loads", "cmdDelVarR", "Delete &Rightside Loads"},
              {"fraVertVarL", "Leftside Variable Loads", "cmdDelVarL", "Delete &Leftside Loads"}},
     .columns = variableColumns,
     .columnsTitle = nullptr,
     .finishedName = "cmdFinVertVar",
     .missingChoices = "\n\n     Choose OK to continue VARIABLE LOAD"
                       "\n          DATA entry."
                       "\n     Choose CANCEL to DELETE ALL VARIABLE"
                       "\n          LOAD DATA and exit.",
     .choices = "\n\n     Choose OK to continue VARIABLE LOAD "
                "\n          DATA entry."
                "\n     Choose CANCEL to DELETE VARIABLE LOAD"
                "\n          DATA and exit."},
    {.frame = "fraHorLine",
     .title = "Horizontal Line Loads",
     .picture = "imgHorLine",
     .sketch = &HorizontalLineSketch,
     .load = rulesOf(Load::HorizontalLine),
     .side = {{"fraHorLineData", "", "cmdDelHorLine", "&Delete Line Loads"}, {}},
     .columns = horizontalLineColumns,
     .columnsTitle = nullptr,
     .finishedName = "cmdFinHorLine",
     .choices = "\n\nChoose OK to continue HORIZONTAL LINE LOAD"
                "\n     DATA entry."
                "\nChoose CANCEL to delete all HORIZONTAL LINE"
                "\n     LOAD DATA and exit.",
     .cancelIsFailure = true},
    {.frame = "fraHorDist",
     .title = "Horizontal Distributed Loads",
     .picture = "imgHorDist",
     .sketch = &HorizontalDistributedSketch,
     .load = rulesOf(Load::Distributed),
     .side = {{nullptr, "", "cmdDelHorDist", "&Delete Distributed Loads"}, {}},
     .columns = distributedColumns,
     .columnsTitle = nullptr,
     .finishedName = "cmdFinHorDist",
     .missing = {"DATA MISSING", "At least one required data values i missing."},
     .invalid = {"INVALID DATA ITEM", ValueInvalid},
     .choices = "\n\n     Choose OK to continue HORIZONTAL"
                "\n          DISTRIBUTED LOAD DATA entry."
                "\nChoose CANCEL to delete ALL HORIZONTAL"
                "\n          DISTRIBUTED LOAD DATA and exit."},
};

static_assert(std::ranges::equal(
    loadKinds, LoadTable, {}, [](const LoadKind& kind) { return kind.load.load; },
    &LoadRules::load));

} // namespace

const LoadKind& loadKind(std::span<const LoadRules> shown, Load load) {
    if (std::ranges::find(shown, load, &LoadRules::load) == shown.end()) {
        throwRuntimeError(9);
    }
    return loadKinds[static_cast<std::size_t>(load)];
}

} // namespace korvane
