// The one place that catches: faults become values.
#pragma once

#include "runtime/runtime_error.h"

#include <functional>
#include <optional>

namespace korvane {

/// Runs `body`: nothing, or the fault that ended it. Exceptions of the library (files, memory) come
/// out as the RuntimeError that fits. Every entry from a toolkit and every worker goes through it.
std::optional<RuntimeError> runGuarded(const std::function<void()>& body) noexcept;

} // namespace korvane
