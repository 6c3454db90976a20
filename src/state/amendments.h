// Named departures from the methods, for second opinions: what a wall comes to without a doubtful
// formula, or by another method.
#pragma once

#include <array>
#include <string_view>

namespace korvane {

/// All off in every run that reports and plots show.
struct Amendments {
    /// The passive pressure at the surface of a wedge side: the slope of the ground is limited to
    /// minus the developed friction instead of taking the friction angle wherever it falls.
    bool surfaceLimit = false;
    /// Both pressures at the surface of a wedge side: the true angle of the ground, limited to the
    /// developed friction up and down.
    bool surfaceSlope = false;
    /// A plane of the sweep that leans so far that its wedge slides away from the wall has no
    /// active force.
    bool planesPastHorizontal = false;
    /// On a wedge side all layers lose the water's weight where it seeps, not the plane's own
    /// alone.
    bool buoyantLayers = false;
    /// Coefficients on wedge sides of level ground without adhesion and sloping layers.
    bool methodCoefficients = false;
    bool methodSweep = false; ///< the sweep search on all sides of strengths
    bool methodFixed = false; ///< the fixed surface on all sides of strengths

    bool operator==(const Amendments&) const = default;
};

/// An amendment by its name.
struct AmendmentName {
    std::string_view name;
    bool Amendments::*amendment;
};

inline constexpr std::array<AmendmentName, 7> AmendmentNames{{
    {"surface-limit", &Amendments::surfaceLimit},
    {"surface-slope", &Amendments::surfaceSlope},
    {"planes-past-horizontal", &Amendments::planesPastHorizontal},
    {"buoyant-layers", &Amendments::buoyantLayers},
    {"method-coefficients", &Amendments::methodCoefficients},
    {"method-sweep", &Amendments::methodSweep},
    {"method-fixed", &Amendments::methodFixed},
}};

/// Turns on an amendment; false for a name that none has.
constexpr bool amend(Amendments& amendments, std::string_view name) {
    for (const auto& [known, amendment] : AmendmentNames) {
        if (known == name) {
            amendments.*amendment = true;
            return true;
        }
    }
    return false;
}

} // namespace korvane
