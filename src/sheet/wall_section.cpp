// The wall drawn to scale and the input as tables.
#include "sheet/input_tables.h"
#include "sheet/sections.h"
#include "sheet/wall_figure.h"

namespace korvane::sheet {

namespace {

/// A record that was refused may lack even the ground.
bool canBeDrawn(const Problem& problem) {
    for (const int side : {Right, Left}) {
        if (problem.SurfacePointCount(side) < 1 || problem.SoilLayerCount(side) < 1) {
            return false;
        }
    }
    return true;
}

} // namespace

void writeWall(SheetWriter& writer, const SheetRequest& request) {
    writer.section(1, "Wall and input");
    if (canBeDrawn(request.problem)) {
        writer.markup("<figure>\n" + wallFigure(request).svg + "<figcaption>");
        writer.markup("Drawn to scale. Soil: friction angle φ, wall friction δ, cohesion c, "
                      "adhesion a, unit weight γ moist / saturated. Loads on the ground stand in "
                      "rows above it.");
        writer.markup("</figcaption>\n</figure>\n");
    }
    writer.heading("Input");
    writeInputTables(writer, request.problem);
}

} // namespace korvane::sheet
