// Labels of figures that never overprint: how wide a text may become, and places for it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace korvane::sheet {

/// A rectangle of a figure, in its user units (pixels on a screen), y downward.
struct LabelBox {
    double left = 0;
    double top = 0;
    double width = 0;
    double height = 0;

    double right() const { return left + width; }
    double bottom() const { return top + height; }
};

/// True where two boxes share more than an edge.
bool overlap(const LabelBox& a, const LabelBox& b);

/// A generous width of a UTF-8 text at a size of type, whatever plain font the reader has.
double textWidth(std::string_view text, double size);

/// A stretch that wants its middle at a place.
struct LabelSlot {
    double wanted = 0;
    double size = 0;
};

/// Middles of the slots in their given order such that none overlap, as near to the wanted ones as
/// can be (least squares), from `low` on downward. Slots whose places run backward are still set in
/// the given order. With `high` above `low` none goes beyond it as long as all have room.
std::vector<double> spreadSlots(const std::vector<LabelSlot>& slots, double low, double high);

} // namespace korvane::sheet
