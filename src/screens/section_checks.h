// The tests that need more than one section of the data.
#pragma once

#include "commands/session.h"

#include <optional>

namespace korvane {

/// The sections in the order of their buttons.
enum class Section { Heading, Surface, Layers, Water, Surcharges, Horizontal };

struct SectionFault {
    MessageBox box;
    Section at; ///< where to look first
};

/// The first test that fails: missing sections, seepage against surface and water, surface against
/// the wall's top, and in an analysis the wall's bottom against the surface.
std::optional<SectionFault> sectionFault(const Session& session);

} // namespace korvane
