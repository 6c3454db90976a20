#include "screens/load_kinds.h"

#include "screens/sketch.h"

#include <array>

namespace korvane {

namespace {

constexpr const char* Distances = "Distances From Wall (FT)";

// ---- columns
// -------------------------------------------------------------------------------------

constexpr LoadColumn lineColumns[] = {
    {{"txtDLLR", "Distance from wall (FT)", ProblemField::VLineDist}, "txtDLLL"},
    {{"txtQLLR", "Line Load (PLF)", ProblemField::VLineLoad}, "txtQLLL"},
};
constexpr LoadColumn uniformColumns[] = {
    {{"txtQUR", "Rightside", ProblemField::VUniformLoad},
     "txtQUL",
     "Leftside",
     {"lblRightside", "lblLeftside"}},
};
constexpr LoadColumn stripColumns[] = {
    {{"txtDS1R", "At Start", ProblemField::VStripStart}, "txtDS1L"},
    {{"txtDS2R", "At End", ProblemField::VStripEnd}, "txtDS2L"},
    {{"txtQSR", "  Load   (PSF)", ProblemField::VStripLoad}, "txtQSL"},
};
constexpr LoadColumn rampColumns[] = {
    {{"txtDR1R", "Start Ramp", ProblemField::VRampStart}, "txtDR1L"},
    {{"txtDR2R", "At End", ProblemField::VRampEnd}, "txtDR2L", "End Ramp"},
    {{"txtQRR", " Ramp Load  (PSF)", ProblemField::VRampLoad}, "txtQRL"},
};
constexpr LoadColumn triangleColumns[] = {
    {{"txtDT1R", "At Start", ProblemField::VTriStart}, "txtDT1L"},
    {{"txtDT2R", "At Peak", ProblemField::VTriPeak}, "txtDT2L"},
    {{"txtDT3R", "At End", ProblemField::VTriEnd}, "txtDT3L"},
    {{"txtQTR", "Peak Load (PSF)", ProblemField::VTriLoad}, "txtQTL"},
};
constexpr LoadColumn variableColumns[] = {
    {{"txtRightDist", "Distance From Wall (FT)", ProblemField::VVarDist}, "txtLeftDist"},
    {{"txtRightLoad", "   Load     (PSF)", ProblemField::VVarLoad}, "txtLeftLoad"},
};
constexpr LoadColumn horizontalLineColumns[] = {
    {{"txtElevHorLine", "Elevation (FT)", ProblemField::HLineElev}},
    {{"txtHorLine", "Line Load (PLF)", ProblemField::HLineLoad}},
};
constexpr LoadColumn distributedColumns[] = {
    {{"txtElHorDist", "Elevation  (FT)", ProblemField::HDistElev}},
    {{"txtHorDist", "  Load   (PSF)", ProblemField::HDistLoad}},
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
