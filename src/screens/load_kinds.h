// The kinds of load as data: what the screens of surcharges and horizontal loads show of each.
#pragma once

#include "problem/loads.h"
#include "screens/entry.h"

#include <span>

namespace korvane {

struct Sketch;

/// One side of a kind: the frame of its rows, and the button that deletes them.
struct LoadSide {
    const char* frame = nullptr; ///< none: the rows stand on the frame of the kind
    const char* title = "";
    const char* deleteName = nullptr; ///< none where the other side's button deletes both
    const char* deleteCaption = "";
};

/// A column of a kind; the left side has controls of its own.
struct LoadColumn {
    Column right;
    const char* leftControl = nullptr;
    const char* leftLabel = nullptr; ///< where it differs
    const char* labelName[2] = {};   ///< where the system names the labels
};

struct LoadKind {
    const char* frame;
    const char* title;
    const char* picture;
    const Sketch* sketch;
    LoadRules load;
    LoadSide side[2]; ///< right, left
    std::span<const LoadColumn> columns;
    const char* columnsTitle; ///< over all columns but the load's, or over both sides
    const char* finishedName;
    BoxText missing{"DATA MISSING", ValueMissing};
    BoxText invalid{"INVALID DATA", ValueInvalid};
    const char* missingChoices = nullptr; ///< of the missing box, where it words them otherwise
    const char* choices;                  ///< what OK and Cancel do
    bool countsWhenRead = false;  ///< an empty side is none; the count stands after the test
    bool cancelIsFailure = false; ///< Cancel sets SolutionFailed
};

/// The kind of a load that a screen of `shown` is for; RuntimeError 9 for a load of the other
/// screen.
const LoadKind& loadKind(std::span<const LoadRules> shown, Load load);

} // namespace korvane
