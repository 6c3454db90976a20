// System calls that fail as no file of a test can make them fail.
#include "runtime/file_text.h"
#include "runtime/runtime_error.h"
#include "support/support.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>

#include <sys/syscall.h>
#include <unistd.h>

namespace {

bool writeTakesNothing = false;
bool closeFails = false;

} // namespace

// Under these names they stand before those of the C library in the whole test program.
extern "C" ssize_t faultyWrite(int handle, const void* data, size_t size) __asm__("write");
extern "C" int faultyClose(int handle) __asm__("close");

extern "C" ssize_t faultyWrite(int handle, const void* data, size_t size) {
    return writeTakesNothing ? 0 : syscall(SYS_write, handle, data, size);
}

extern "C" int faultyClose(int handle) {
    const auto result = static_cast<int>(syscall(SYS_close, handle));
    if (closeFails) {
        errno = EIO;
        return -1;
    }
    return result;
}

namespace korvane {
namespace {

/// The number of the fault of an action while `call` fails.
int faultWhile(bool& call, const auto& action) {
    int number = 0;
    call = true;
    try {
        action();
    } catch (const RuntimeError& fault) {
        number = fault.number();
    }
    call = false;
    return number;
}

TEST(FaultyCalls, AWriteThatTakesNothingIsAFaultAndNoLoop) {
    const test::TemporaryFolder folder;
    const auto path = folder.path() / "a.out";
    EXPECT_EQ(faultWhile(writeTakesNothing, [&] { saveFile(path, "x"); }), 57);
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
}

TEST(FaultyCalls, ACloseThatFailsLeavesNoFile) {
    const test::TemporaryFolder folder;
    const auto path = folder.path() / "TEMP0.iii";
    EXPECT_EQ(faultWhile(closeFails, [&] { createExclusively(path); }), 57);
    EXPECT_EQ(faultWhile(closeFails, [&] { saveFile(path, "x"); }), 57);
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
    EXPECT_TRUE(createExclusively(path));
}

} // namespace
} // namespace korvane
