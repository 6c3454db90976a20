#include "runtime/run_guarded.h"

#include "runtime/file_text.h"

#include <filesystem>
#include <new>
#include <system_error>

namespace korvane {

namespace {

/// The exception under way as a fault.
RuntimeError presentFault() {
    try {
        throw;
    } catch (const RuntimeError& fault) {
        return fault;
    } catch (const std::filesystem::filesystem_error& fault) {
        return RuntimeError(fileErrorNumber(fault.code().value(), fault.path1()),
                            fault.path1().string());
    } catch (const std::bad_alloc&) {
        return RuntimeError(OutOfMemory);
    } catch (...) {
        return RuntimeError(InternalError);
    }
}

} // namespace

std::optional<RuntimeError> runGuarded(void (*body)(void*), void* context) noexcept {
    try {
        body(context);
        return std::nullopt;
    } catch (...) {
        try {
            return presentFault();
        } catch (...) { // the words for it find no memory
            return RuntimeError(OutOfMemory);
        }
    }
}

} // namespace korvane
