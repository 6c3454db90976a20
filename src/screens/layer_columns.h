// The columns of the soil layer table as data.
#pragma once

#include "screens/controls.h"
#include "screens/entry.h"

#include <span>
#include <string>

namespace korvane {

/// A group of columns and where it stands for each kind of soil data. Twips; a width of 0 hides it.
struct LayerGroup {
    const char* frame;
    const char* title;
    double strengthsLeft, strengthsWidth;
    double coefficientsLeft, coefficientsWidth;
};

struct LayerColumn {
    const char* frame;
    Column column;
    const char* kinds;        ///< "SC", "S" or "C": the kinds of soil data that have it
    bool notOfLast = false;   ///< the last layer has none
    bool emptyIfZero = false; ///< a zero is shown as an empty field
    bool countsRow = false;   ///< a row in which one of these is filled is a layer

    bool isOf(SoilData kind) const;
};

std::span<const LayerGroup> layerGroups();

/// In the order of focus in a row, which is also that of a pasted block.
std::span<const LayerColumn> layerColumns();

} // namespace korvane
