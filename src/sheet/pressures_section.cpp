// Stresses, water, surcharges, planes and rows.
#include "sheet/pressure_parts.h"
#include "sheet/sections.h"

namespace korvane::sheet {

namespace {

constexpr int PressuresNumber = 3;

/// One line of the table of all rows.
struct RowValues {
    double water, active[2], passive[2], netActive, netPassive;

    RowValues(const PressureDiagrams& diagrams, int i, int k)
        : water(diagrams.pressures.WaterPressures(i, k)), netActive(diagrams.NetActive(i, k)),
          netPassive(diagrams.NetPassive(i, k)) {
        for (const int side : {Right, Left}) {
            active[side - 1] = diagrams.pressures.ActivePressures(side, i, k);
            passive[side - 1] = diagrams.pressures.PassivePressures(side, i, k);
        }
    }
    bool operator==(const RowValues&) const = default;
};

void addRow(const SheetWriter& writer, Table& table, const PressureDiagrams& diagrams, int i, int k,
            const char* place) {
    const RowValues row(diagrams, i, k);
    const auto marked = [&](double value, bool mark) {
        Cell cell = writer.value(Quantity::Stress, value);
        cell.markup += mark ? "*" : "";
        return cell;
    };
    Cell elev = writer.value(Quantity::Length, diagrams.grid.ElevGrid(i));
    elev.markup += place;
    std::vector<Cell> cells{elev, writer.value(Quantity::Stress, row.water)};
    for (const int side : {Right, Left}) {
        cells.push_back(marked(row.active[side - 1], diagrams.pressures.ActiveMark(side, i)));
        cells.push_back(marked(row.passive[side - 1], diagrams.pressures.PassiveMark(side, i)));
    }
    cells.push_back(writer.value(Quantity::Stress, row.netActive));
    cells.push_back(writer.value(Quantity::Stress, row.netPassive));
    table.rows.push_back(cells);
}

void writeRows(SheetWriter& writer, const SheetRequest& request, const PressureStage& stage) {
    const PressureDiagrams& diagrams = stage.diagrams;
    Table table;
    table.wide = true;
    table.columns = {{"EL", Quantity::Length},           {"Water", Quantity::Stress},
                     {"Right active", Quantity::Stress}, {"Right passive", Quantity::Stress},
                     {"Left active", Quantity::Stress},  {"Left passive", Quantity::Stress},
                     {"Net active", Quantity::Stress},   {"Net passive", Quantity::Stress}};
    const int last = lowestRow(stage);
    for (int i = 1; i <= last; ++i) {
        const bool jump =
            i > 1 && i < last && RowValues(diagrams, i, 1) != RowValues(diagrams, i, 2);
        if (jump) {
            addRow(writer, table, diagrams, i, 2, "+");
            addRow(writer, table, diagrams, i, 1, "−");
        } else {
            addRow(writer, table, diagrams, i, i == last && !stage.review ? 2 : 1, "");
        }
    }
    writer.heading("All rows");
    writer.paragraph(std::string("Pressures on the wall in force, positive toward it; water and "
                                 "net pressures positive toward the left. Where a diagram jumps a "
                                 "row has two lines: + just above, − just below.") +
                     (stage.review ? "" : " The last row is the bottom of the wall."));
    if (!stage.review && request.problem.WallType == WallKind::Cantilever) {
        writer.paragraph("Net active pressure below the transition is the straight line of the "
                         "balance (section 5).");
    }
    writer.table(table);
}

void writeSide(SheetWriter& writer, const SheetRequest& request, const PressureStage& stage,
               int side, bool firstStage) {
    writer.heading(std::string(side == Right ? "Right" : "Left") + " side");
    if (stage.details == nullptr) {
        writer.paragraph("How these pressures came about was not kept.");
        return;
    }
    const Array<PressureMethod, 2> methods = sideMethods(request);
    const bool byCoefficients = methods(side) == PressureMethod::Coefficients;
    const bool first =
        firstStage &&
        (side == Right || byCoefficients != (methods(Right) == PressureMethod::Coefficients));
    if (byCoefficients) {
        writeStresses(writer, request, stage, side, first);
        writeSurcharges(writer, request, stage, side);
    } else {
        writeWedges(writer, request, stage, side, first);
    }
}

} // namespace

void writePressures(SheetWriter& writer, const SheetRequest& request) {
    writer.section(PressuresNumber, "Pressures");
    const std::vector<PressureStage> stages = pressureStages(request);
    if (stages.empty()) {
        writer.paragraph("The solution has not come to pressures.");
    }
    for (const PressureStage& stage : stages) {
        writer.mute(!stage.shown);
        if (!stage.title.empty()) {
            writer.paragraph("Pressures of the " + stage.title + ".");
        }
        writeWater(writer, request, stage);
        for (const int side : {Right, Left}) {
            writeSide(writer, request, stage, side, &stage == &stages.front());
        }
        writeRows(writer, request, stage);
        writer.mute(false);
    }
}

} // namespace korvane::sheet
