#include "screens/load_kinds.h"

#include "screens/sketch.h"

#include <array>

namespace korvane {

namespace {

constexpr const char* Distances = "Distances From Wall (FT)";

// ---- tests that look at what was read before
// -----------------------------------------------------

constexpr Test stripEnd{
    [](const Entry& e) { return e.value > e.problem.VStripStart(e.side, e.row); },
    "beyond the start"};
constexpr Test rampEnd{[](const Entry& e) { return e.value >= e.problem.VRampStart(e.side); },
                       "not before the start"};
constexpr Test trianglePeak{
    [](const Entry& e) { return e.value >= e.problem.VTriStart(e.side, e.row); },
    "not before the start"};
constexpr Test triangleEnd{[](const Entry& e) {
                               const double start = e.problem.VTriStart(e.side, e.row);
                               const double peak = e.problem.VTriPeak(e.side, e.row);
                               return e.value >= peak && !(e.value == peak && peak == start);
                           },
                           "not before the peak; start, peak and end not all equal"};
constexpr Test variableDistance{
    [](const Entry& e) {
        return e.value >= 0 && (e.row == 1 || e.value > e.problem.VVarDist(e.side, e.row - 1));
    },
    "not below 0, and beyond the row above"};
constexpr Test fallingElevation{
    [](const Entry& e) { return e.row == 1 || e.value < e.problem.HDistElev(e.row - 1); },
    "below the row above; at least two rows"};

// ---- columns
// -------------------------------------------------------------------------------------

constexpr LoadColumn lineColumns[] = {
    {{"txtDLLR", "Distance from wall (FT)", "line load, distance from wall (FT)",
      numberAt<&Problem::VLineDist>, aboveZero},
     "txtDLLL"},
    {{"txtQLLR", "Line Load (PLF)", "line load (PLF)", numberAt<&Problem::VLineLoad>, aboveZero},
     "txtQLLL"},
};
constexpr LoadColumn uniformColumns[] = {
    {{"txtQUR", "Rightside", "uniform surcharge (PSF)", numberAt<&Problem::VUniformLoad>,
      notNegative, IfEmpty::Missing, "empty means none"},
     "txtQUL",
     "Leftside",
     {"lblRightside", "lblLeftside"}},
};
constexpr LoadColumn stripColumns[] = {
    {{"txtDS1R", "At Start", "strip load, distance to start (FT)", numberAt<&Problem::VStripStart>,
      notNegative},
     "txtDS1L"},
    {{"txtDS2R", "At End", "strip load, distance to end (FT)", numberAt<&Problem::VStripEnd>,
      stripEnd},
     "txtDS2L"},
    {{"txtQSR", "  Load   (PSF)", "strip load (PSF)", numberAt<&Problem::VStripLoad>, aboveZero},
     "txtQSL"},
};
constexpr LoadColumn rampColumns[] = {
    {{"txtDR1R", "Start Ramp", "ramp load, distance to start (FT)", numberAt<&Problem::VRampStart>,
      notNegative},
     "txtDR1L"},
    {{"txtDR2R", "At End", "ramp load, distance to end (FT)", numberAt<&Problem::VRampEnd>,
      rampEnd},
     "txtDR2L",
     "End Ramp"},
    {{"txtQRR", " Ramp Load  (PSF)", "ramp load (PSF)", numberAt<&Problem::VRampLoad>, notNegative},
     "txtQRL"},
};
constexpr LoadColumn triangleColumns[] = {
    {{"txtDT1R", "At Start", "triangular load, distance to start (FT)",
      numberAt<&Problem::VTriStart>, notNegative},
     "txtDT1L"},
    {{"txtDT2R", "At Peak", "triangular load, distance to peak (FT)", numberAt<&Problem::VTriPeak>,
      trianglePeak},
     "txtDT2L"},
    {{"txtDT3R", "At End", "triangular load, distance to end (FT)", numberAt<&Problem::VTriEnd>,
      triangleEnd},
     "txtDT3L"},
    {{"txtQTR", "Peak Load (PSF)", "triangular load, peak load (PSF)", numberAt<&Problem::VTriLoad>,
      aboveZero},
     "txtQTL"},
};
constexpr LoadColumn variableColumns[] = {
    {{"txtRightDist", "Distance From Wall (FT)", "variable load, distance from wall (FT)",
      numberAt<&Problem::VVarDist>, variableDistance},
     "txtLeftDist"},
    {{"txtRightLoad", "   Load     (PSF)", "variable load (PSF)", numberAt<&Problem::VVarLoad>,
      notNegative},
     "txtLeftLoad"},
};
constexpr LoadColumn horizontalLineColumns[] = {
    {{"txtElevHorLine", "Elevation (FT)", "Horizontal line load, elevation (FT)",
      numberAt<&Problem::HLineElev>}},
    {{"txtHorLine", "Line Load (PLF)", "Horizontal line load (PLF)",
      numberAt<&Problem::HLineLoad>}},
};
constexpr LoadColumn distributedColumns[] = {
    {{"txtElHorDist", "Elevation  (FT)", "Horizontal distributed load, elevation (FT)",
      numberAt<&Problem::HDistElev>, fallingElevation}},
    {{"txtHorDist", "  Load   (PSF)", "Horizontal distributed load (PSF)",
      numberAt<&Problem::HDistLoad>}},
};

// ---- kinds
// ---------------------------------------------------------------------------------------

constexpr LoadKind verticalLoads[] = {
    {.frame = "fraVertLine",
     .title = "Vertical Line Loads",
     .picture = "imgLineLoad",
     .sketch = &LineLoadSketch,
     .sides = 2,
     .rows = 5,
     .count = countAt<&Problem::VLineCount>,
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
     .sides = 2,
     .rows = 1,
     .count = countAt<&Problem::VUniformCount>,
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
     .sides = 2,
     .rows = 5,
     .count = countAt<&Problem::VStripCount>,
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
     .sides = 2,
     .rows = 1,
     .count = countAt<&Problem::VRampCount>,
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
     .sides = 2,
     .rows = 5,
     .count = countAt<&Problem::VTriCount>,
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
     .sides = 2,
     .rows = 11,
     .count = countAt<&Problem::VVarCount>,
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
};

constexpr LoadKind horizontalLoads[] = {
    {.frame = "fraHorLine",
     .title = "Horizontal Line Loads",
     .picture = "imgHorLine",
     .sketch = &HorizontalLineSketch,
     .sides = 1,
     .rows = 5,
     .count = countAt<&Problem::HLineCount>,
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
     .sides = 1,
     .rows = 11,
     .count = countAt<&Problem::HDistCount>,
     .side = {{nullptr, "", "cmdDelHorDist", "&Delete Distributed Loads"}, {}},
     .columns = distributedColumns,
     .columnsTitle = nullptr,
     .finishedName = "cmdFinHorDist",
     .missing = {"DATA MISSING", "At least one required data values i missing."},
     .invalid = {"INVALID DATA ITEM", ValueInvalid},
     .choices = "\n\n     Choose OK to continue HORIZONTAL"
                "\n          DISTRIBUTED LOAD DATA entry."
                "\nChoose CANCEL to delete ALL HORIZONTAL"
                "\n          DISTRIBUTED LOAD DATA and exit.",
     .leastRows = 2},
};

} // namespace

const LoadKind& verticalLoad(int kind) {
    return verticalLoads[kind - 1];
}

const LoadKind& horizontalLoad(int section) {
    return horizontalLoads[section - 1];
}

} // namespace korvane
