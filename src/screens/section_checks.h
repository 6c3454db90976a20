// The tests that need more than one section of the data.
#pragma once

#include "commands/session.h"

#include <optional>

namespace korvane {

/// The box of the first test that fails: missing sections, seepage against surface and water,
/// surface against the wall's top, and in an analysis the wall's bottom against the surface.
std::optional<MessageBox> sectionFault(const Session& session);

} // namespace korvane
