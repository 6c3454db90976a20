#include "sheet/input_tables.h"

#include "problem/loads.h"
#include "sheet/stages.h"

#include <array>
#include <cstddef>
#include <functional>
#include <string>

namespace korvane::sheet {

namespace {

using enum ProblemField;

struct FieldTitle {
    ProblemField field;
    const char* title;
};

constexpr std::array<FieldTitle, FieldCount> Titles{{
    {WallTopElev, "Top of wall, elevation"},
    {AnchorElev, "Anchor, elevation"},
    {WallBottomElev, "Bottom of wall, elevation"},
    {WallModulus, "Modulus of elasticity of the wall"},
    {WallInertia, "Moment of inertia of the wall"},
    {FSActive, "Factor of safety, active pressures"},
    {FSPassive, "Factor of safety, passive pressures"},
    {SurfaceDist, "Distance"},
    {SurfaceElev, "Elevation"},
    {Level2FSActive, "Factor of safety of the side, active"},
    {Level2FSPassive, "Factor of safety of the side, passive"},
    {SoilSatWeight, "Saturated weight"},
    {SoilMoistWeight, "Moist weight"},
    {SoilBottomElev, "Bottom elevation"},
    {SoilFriction, "Friction angle φ"},
    {SoilCohesion, "Cohesion c"},
    {SoilWallFriction, "Wall friction δ"},
    {SoilAdhesion, "Adhesion a"},
    {SoilBottomSlope, "Slope of bottom"},
    {SoilFSActive, "Factor, active"},
    {SoilFSPassive, "Factor, passive"},
    {SoilCoefActive, "Coefficient Ka"},
    {SoilCoefPassive, "Coefficient Kp"},
    {WaterUnitWeight, "Unit weight of water"},
    {WaterElev, "Water, elevation"},
    {SeepageElev, "Seepage begins at elevation"},
    {SeepageGradient, "Seepage gradient"},
    {WaterPressElev, "Elevation"},
    {WaterPressure, "Net pressure"},
    {VLineDist, "Distance"},
    {VLineLoad, "Load"},
    {VUniformLoad, "Load"},
    {VStripStart, "From"},
    {VStripEnd, "To"},
    {VStripLoad, "Load"},
    {VRampStart, "From"},
    {VRampEnd, "To"},
    {VRampLoad, "Load at the end and beyond"},
    {VTriStart, "From"},
    {VTriPeak, "Peak at"},
    {VTriEnd, "To"},
    {VTriLoad, "Load at the peak"},
    {VVarDist, "Distance"},
    {VVarLoad, "Load"},
    {HLineElev, "Elevation"},
    {HLineLoad, "Load toward the left"},
    {HDistElev, "Elevation"},
    {HDistLoad, "Load toward the left"},
}};

constexpr bool inOrder() {
    for (std::size_t place = 0; place < Titles.size(); ++place) {
        if (static_cast<std::size_t>(Titles[place].field) != place) {
            return false;
        }
    }
    return true;
}
static_assert(inOrder());

std::string sided(const std::string& text, int side) {
    return text + ", " + sideName(side) + " side";
}

/// Lines of one value each: what it is, the value with its unit.
class ValueLines {
  public:
    explicit ValueLines(SheetWriter& writer) : writer_(writer) {
        table_.columns = {{.title = "Quantity"}, {.title = "Value"}};
    }
    void word(std::string_view title, std::string_view value) {
        table_.rows.push_back({writer_.text(title), {escaped(value), true}});
    }
    void field(const Problem& problem, ProblemField field, int side = 0) {
        const FieldRules& rules = rulesOf(field);
        const double value = rules.value(problem, side == 0 ? Right : side, 1);
        const std::string title = fieldTitle(field);
        word(side == 0 ? title : sided(title, side), writer_.withUnit(rules.quantity, value));
    }
    void write(std::string caption) {
        table_.caption = std::move(caption);
        writer_.table(table_);
    }

  private:
    SheetWriter& writer_;
    Table table_;
};

void writeControl(SheetWriter& writer, const Problem& problem) {
    ValueLines lines(writer);
    const bool anchored = problem.WallType == WallKind::Anchored;
    const bool analysis = problem.ProgramMode == Mode::Analysis;
    lines.word("Wall", anchored ? "anchored" : "cantilever");
    lines.word("Task", analysis ? "analysis: the factor of safety of a given wall"
                                : "design: the bottom of the wall");
    lines.field(problem, WallTopElev);
    if (anchored) {
        lines.field(problem, AnchorElev);
    }
    if (analysis) {
        for (const ProblemField field : {WallBottomElev, WallModulus, WallInertia}) {
            lines.field(problem, field);
        }
    }
    if (analysis && problem.FSKind == FactorKind::OneForBoth) {
        lines.word("Factor of safety", "one for active and passive pressures, to be found");
    } else {
        lines.field(problem, FSActive);
    }
    if (!analysis) {
        lines.field(problem, FSPassive);
    }
    for (const int side : {Right, Left}) {
        for (const ProblemField field : {Level2FSActive, Level2FSPassive}) {
            if (rulesOf(field).value(problem, side, 1) > 0) {
                lines.field(problem, field, side);
            }
        }
    }
    lines.write("Wall and factors of safety");
}

/// Fields that share their rows, as the columns of a table.
struct RowTable {
    std::string caption;
    const char* rowTitle;
    std::vector<ProblemField> fields;
    int rows = 0;
};

/// 0 stands for a factor that is not given, the elevation far below for a bottom that is none.
bool isOpen(ProblemField field, double value) {
    const bool factor = field == SoilFSActive || field == SoilFSPassive;
    return (factor && value == 0) || (field == SoilBottomElev && value <= NoLayerBottom);
}

void writeRows(SheetWriter& writer, const Problem& problem, int side, const RowTable& spec) {
    Table table;
    table.caption = spec.caption;
    table.columns.push_back({.title = spec.rowTitle});
    for (const ProblemField field : spec.fields) {
        table.columns.push_back({.title = fieldTitle(field), .quantity = rulesOf(field).quantity});
    }
    for (int row = 1; row <= spec.rows; ++row) {
        std::vector<Cell> cells{writer.text(std::to_string(row))};
        for (const ProblemField field : spec.fields) {
            const FieldRules& rules = rulesOf(field);
            const bool lastBottom = field == SoilBottomElev && row == spec.rows;
            const double value = rules.value(problem, side, row);
            cells.push_back(lastBottom || isOpen(field, value)
                                ? Cell{"–", true}
                                : writer.value(rules.quantity, value));
        }
        table.rows.push_back(std::move(cells));
    }
    writer.table(table);
}

void writeGroundAndSoil(SheetWriter& writer, const Problem& problem, int side) {
    writeRows(writer, problem, side,
              {sided("Ground", side),
               "Point",
               {SurfaceDist, SurfaceElev},
               problem.SurfacePointCount(side)});
    RowTable soil{sided("Soil", side),
                  "Layer",
                  {SoilBottomElev, SoilMoistWeight, SoilSatWeight},
                  problem.SoilLayerCount(side)};
    if (problem.SoilDataKind(side) == SoilData::Coefficients) {
        soil.fields.insert(soil.fields.end(), {SoilCoefActive, SoilCoefPassive});
    } else {
        soil.fields.insert(soil.fields.end(),
                           {SoilFriction, SoilCohesion, SoilWallFriction, SoilAdhesion,
                            SoilBottomSlope, SoilFSActive, SoilFSPassive});
    }
    writeRows(writer, problem, side, soil);
}

void writeWater(SheetWriter& writer, const Problem& problem) {
    if (problem.WaterDataKind == WaterData::None) {
        writer.paragraph("No water is given.");
        return;
    }
    if (problem.WaterDataKind == WaterData::Pressures) {
        writeRows(writer, problem, Right,
                  {"Net water pressures, positive toward the left",
                   "Point",
                   {WaterPressElev, WaterPressure},
                   problem.WaterPressCount});
        return;
    }
    ValueLines lines(writer);
    lines.field(problem, WaterUnitWeight);
    lines.field(problem, WaterElev, Right);
    lines.field(problem, WaterElev, Left);
    if (problem.SeepageKind == Seepage::None) {
        lines.word("Seepage", "none");
    } else {
        lines.field(problem, SeepageElev);
        if (problem.SeepageKind == Seepage::Given) {
            lines.field(problem, SeepageGradient);
        } else {
            lines.word(fieldTitle(SeepageGradient), "found with the bottom of the wall");
        }
    }
    lines.write("Water");
}

constexpr const char* LoadCaptions[] = {
    "Vertical line loads",   "Vertical uniform load",       "Vertical strip loads",
    "Vertical ramp load",    "Vertical triangular loads",   "Vertical varying load",
    "Horizontal line loads", "Horizontal distributed load",
};
static_assert(std::size(LoadCaptions) == std::size(LoadTable));

void writeLoads(SheetWriter& writer, const Problem& problem) {
    bool any = false;
    for (const LoadRules& load : LoadTable) {
        std::vector<ProblemField> fields;
        fields.reserve(static_cast<std::size_t>(load.width()));
        for (int column = 0; column < load.width(); ++column) {
            fields.push_back(load.field(column));
        }
        const std::string caption = LoadCaptions[static_cast<int>(load.load)];
        for (int side = Right; side <= load.sides(); ++side) {
            if (const int rows = load.rows(problem, side); rows > 0) {
                any = true;
                writeRows(
                    writer, problem, side,
                    {load.sides() == 2 ? sided(caption, side) : caption, "No.", fields, rows});
            }
        }
    }
    if (!any) {
        writer.paragraph("No loads on the ground or on the wall are given.");
    }
}

} // namespace

const char* fieldTitle(ProblemField field) {
    return Titles[static_cast<std::size_t>(field)].title;
}

void writeInputTables(SheetWriter& writer, const Problem& problem) {
    writer.markup("<div class=\"tables\">\n");
    writeControl(writer, problem);
    for (const int side : {Right, Left}) {
        writeGroundAndSoil(writer, problem, side);
    }
    writeWater(writer, problem);
    writeLoads(writer, problem);
    writer.markup("</div>\n");
    writer.paragraph("Distances are measured from the wall. A factor of a layer comes before that "
                     "of its side, that before that of the wall; – stands for none.");
}

} // namespace korvane::sheet
