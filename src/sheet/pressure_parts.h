// The parts of the section on pressures, and what they share.
#pragma once

#include "sheet/sheet_writer.h"
#include "sheet/stages.h"

#include <vector>

namespace korvane::sheet {

/// Seepage: gradient, end, and what they do; then the net water pressures.
void writeWater(SheetWriter& writer, const SheetRequest& request, const PressureStage& stage);

/// Puts the water on which the net pressures rest into a stage's diagrams, where the solution has
/// worked it out once more for the wall found and it came out otherwise.
void putInSearchedWater(const SheetRequest& request, PressureStage& stage);

/// A side by coefficients: stresses and pressures at the breaks of the diagrams; the `first` one
/// tells what the symbols mean.
void writeStresses(SheetWriter& writer, const SheetRequest& request, const PressureStage& stage,
                   int side, bool first);

/// Its surcharges by theory of elasticity.
void writeSurcharges(SheetWriter& writer, const SheetRequest& request, const PressureStage& stage,
                     int side);

/// A side by a wedge method: surface, planes, forces, floor and tension rule; likewise.
void writeWedges(SheetWriter& writer, const SheetRequest& request, const PressureStage& stage,
                 int side, bool first);

/// The lowest row that a person would look at: the wall's bottom, or the last regular row.
int lowestRow(const PressureStage& stage);

/// FT: its elevation.
double lowestElev(const PressureStage& stage);

/// The rows at which a side by coefficients was worked out.
ElevationGrid workedRows(const SideDetails& details);

/// The surcharge pressure (PSF) of all loads of a side `z` FT below its surface, by the sheet's own
/// formulas.
double surchargeAt(const Problem& problem, int side, double z);

/// FT: where water that seeps up the left face leaves the soil.
double seepageExit(const Problem& problem);

/// The weight of water (PCF) that soil of a side bears less than its own in an interval that ends
/// at `lowerEnd`, and whether water seeps there.
struct WaterShare {
    bool wet = false;
    bool seeps = false;
    Expr weight = 0.0;
};
WaterShare waterShare(const Problem& problem, const PressureStage& stage, int side,
                      double lowerEnd);

/// Neighbouring elevations as text: "EL 0.00 FT to EL -3.00 FT and EL -8.00 FT"; "" for none.
class ElevationRanges {
  public:
    /// Rows in order; `acts` tells whether a rule acts there.
    void add(double elev, bool acts);
    std::string text(UnitSystem units) const;

  private:
    struct Range {
        double top, bottom;
    };
    std::vector<Range> ranges_;
    bool open_ = false;
};

} // namespace korvane::sheet
