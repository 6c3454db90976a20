// Work that a solution need not do twice: what of an earlier trial or solution still holds.
#pragma once

#include "runtime/array.h"
#include "state/surcharge_rows.h"
#include "state/wedge_side.h"

namespace korvane {

/// By side. Each part knows the input that it was worked out for, and is worked out anew for any
/// other; memory is reused.
struct KeptWork {
    Array<WedgePlanes, 2> wedgePlanes;
    Array<SurchargeRows, 2> surchargeRows;
};

} // namespace korvane
