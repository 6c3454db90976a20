// What release builds give the programs against faults that nobody foresaw.
#pragma once

#include <cstdlib>
#include <string>
#include <vector>

namespace korvane::test {

/// The parts of the hardening that a program lacks: position independence, read-only relocations
/// bound at the start, a stack that runs nothing, guards of stack, buffers and library calls, and
/// marked targets of jumps where the processor has them.
inline std::vector<std::string> missingHardening(const std::string& program) {
    const auto has = [&program](const std::string& reader, const std::string& mark) {
        const std::string command = reader + " '" + program + "' | grep -E '" + mark + "'";
        return std::system((command + " >/dev/null").c_str()) == 0; // NOLINT: one thread
    };
    std::vector<std::string> missing;
    for (const char* mark :
         {"Type: +DYN .*(Position-Independent Executable|file)", "GNU_RELRO", "BIND_NOW",
          "FLAGS_1.* NOW.* PIE", "GNU_STACK.* RW ", "__stack_chk_fail", "__glibcxx_assert_fail"}) {
        if (!has("readelf -W -h -l -d -s", mark)) {
            missing.emplace_back(mark);
        }
    }
    // No call of ours may be one that can be guarded, and the library has guarded ones of its own.
    const std::string unguarded = "grep '\"command\".*/src/' '" KORVANE_COMPILE_COMMANDS
                                  "' | grep -q -v -e -D_FORTIFY_SOURCE=2";
    if (std::system(unguarded.c_str()) == 0) { // NOLINT: one thread
        missing.emplace_back("-D_FORTIFY_SOURCE=2");
    }
#ifdef KORVANE_MARKED_JUMPS
    if (!has("objdump --disassemble=main", "endbr64")) {
        missing.emplace_back("endbr64");
    }
#endif
    return missing;
}

} // namespace korvane::test
