// The one place that catches run-time errors of a solution or a command: faults become values.
#pragma once

#include "runtime/runtime_error.h"

#include <optional>
#include <type_traits>

namespace korvane {

/// Calls `body(context)`: nothing, or the fault that ended it. Exceptions of the library (files,
/// memory) come out as the RuntimeError that fits.
std::optional<RuntimeError> runGuarded(void (*body)(void*), void* context) noexcept;

/// Runs `body` likewise. Every entry from a toolkit, every worker and every step of a solution goes
/// through it. No memory is taken for the call.
template <class Body>
std::optional<RuntimeError> runGuarded(Body&& body) noexcept {
    return runGuarded(
        [](void* context) { (*static_cast<std::remove_reference_t<Body>*>(context))(); },
        const_cast<void*>(static_cast<const void*>(&body)));
}

} // namespace korvane
