#include "runtime/run_guarded.h"

#include "runtime/file_text.h"

#include <filesystem>
#include <new>
#include <system_error>

namespace korvane {

std::optional<RuntimeError> runGuarded(void (*body)(void*), void* context) noexcept {
    constexpr int outOfMemory = 7;
    constexpr int internalError = 51;
    try {
        body(context);
        return std::nullopt;
    } catch (const RuntimeError& fault) {
        return fault;
    } catch (const std::filesystem::filesystem_error& fault) {
        return RuntimeError(fileErrorNumber(fault.code().value(), fault.path1()),
                            fault.path1().string());
    } catch (const std::bad_alloc&) {
        return RuntimeError(outOfMemory);
    } catch (...) {
        return RuntimeError(internalError);
    }
}

} // namespace korvane
