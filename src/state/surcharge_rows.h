// What is kept of a side's elastic surcharge pressures while its loads stay the same.
#pragma once

#include <vector>

namespace korvane {

enum class ElasticLoadKind {
    NearLine, ///< a line load near the wall: empirical form
    FarLine,  ///< a line load elsewhere
    Straight, ///< a load that varies linearly between two distances
    Endless   ///< a uniform load from a distance on without end
};

/// One load on the ground.
struct ElasticLoad {
    ElasticLoadKind kind = ElasticLoadKind::Straight;
    double load = 0;     ///< LB of a line, PSF of an endless load
    double x1 = 0;       ///< FT from the wall to the line or to where the load starts
    double x2 = 0;       ///< FT, the end of a straight load; of a near line the height of the wall
    double constant = 0; ///< of a straight load, PSF at the wall if carried on to it, over pi
    double rate = 0;     ///< of a straight load, PSF/FT over pi

    bool operator==(const ElasticLoad&) const = default;
};

/// A row and its pressure.
struct SurchargeRow {
    double elev = 0;     ///< FT
    double pressure = 0; ///< PSF
};

/// The pressures of one side.
struct SurchargeRows {
    double surface = 0;             ///< FT, where depth counts from
    std::vector<ElasticLoad> loads; ///< the rows are those of these loads and of no others
    std::vector<SurchargeRow> rows; ///< descending
    std::vector<ElasticLoad> freshLoads;
    std::vector<SurchargeRow> freshRows;
};

} // namespace korvane
