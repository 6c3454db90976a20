"""Release builds give every program that people run its hardening: told by their configuration, by the
marks of a small program that is built with it, and by the programs themselves where they are such builds.

python3 hardening_test.py --source FOLDER --compiler CXX --desktop ON|OFF [--program FILE]..."""

import argparse
import json
import pathlib
import platform
import re
import subprocess
import sys
import tempfile

BUILDS = ("Release", "RelWithDebInfo")
X86 = platform.machine() == "x86_64"
COMPILED = ["-fPIE", "-fstack-protector-strong", "-D_FORTIFY_SOURCE=2", "-D_GLIBCXX_ASSERTIONS"]
LINKED = ["-pie", "-Wl,-z,relro,-z,now,-z,noexecstack"]
# Position independence, read-only relocations bound at the start, a stack that runs nothing, guards of
# stack and buffers.
MARKS = ("Type: +DYN .*(Position-Independent Executable|file)", "GNU_RELRO", "BIND_NOW",
         "FLAGS_1.* NOW.* PIE", "GNU_STACK.* RW ", "__stack_chk_fail", "__glibcxx_assert_fail")
PROBE = """#include <cstdio>
#include <vector>
int main(int count, char**) {
    char line[64];
    const std::vector<int> values(3, count);
    return std::fgets(line, count * 9, stdin) == nullptr ? 1 : values[line[0]];
}
"""
PROBE_PROJECT = """cmake_minimum_required(VERSION 3.25)
project(probe CXX)
include(%s/cmake/Korvane.cmake)
add_executable(probe probe.cpp)
target_link_libraries(probe PRIVATE korvane_options)
"""


def run(*command):
    done = subprocess.run([str(word) for word in command], stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, text=True, errors="replace", check=False)
    if done.returncode != 0:
        sys.exit("%s\n%s" % (" ".join(map(str, command)), done.stdout))
    return done.stdout


def configure(args, source, folder, kind):
    run("cmake", "-G", "Ninja", "-S", source, "-B", folder, "-DCMAKE_BUILD_TYPE=" + kind,
        "-DCMAKE_CXX_COMPILER=" + args.compiler, "-DCMAKE_EXPORT_COMPILE_COMMANDS=ON",
        "-DKORVANE_TESTS=OFF", "-DKORVANE_STUDY=OFF", "-DKORVANE_DESKTOP=" + args.desktop)


def lacking_options(folder, programs):
    """What a configuration does not hand to compiler and linker."""
    wanted = COMPILED + ["-fcf-protection=full"] * X86
    commands = json.loads((folder / "compile_commands.json").read_text())
    for entry in commands:
        words = entry["command"].split()
        if "/src/" in entry["file"]:
            yield from (entry["file"] + " lacks " + word for word in wanted if word not in words)
    ninja = (folder / "build.ninja").read_text()
    for program in programs:
        link = re.search(r"^build \S*/%s: CXX_EXECUTABLE_LINKER.*?\n\n" % program, ninja, re.M | re.S)
        words = link.group().split() if link else []
        yield from (program + " lacks " + word for word in LINKED if word not in words)


def lacking_marks(program):
    told = run("readelf", "-W", "-h", "-l", "-d", "-s", program)
    yield from (mark for mark in MARKS if not re.search(mark, told))
    if X86 and "endbr64" not in run("objdump", "--disassemble=main", program):
        yield "endbr64"


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--source", required=True, type=pathlib.Path)
    parser.add_argument("--compiler", required=True)
    parser.add_argument("--desktop", required=True)
    parser.add_argument("--program", action="append", default=[])
    args = parser.parse_args()
    programs = ["korvane-batch"] + ["korvane"] * (args.desktop == "ON")
    faults = []
    with tempfile.TemporaryDirectory() as temporary:
        folder = pathlib.Path(temporary)
        probe = folder / "probe"
        probe.mkdir()
        (probe / "probe.cpp").write_text(PROBE)
        (probe / "CMakeLists.txt").write_text(PROBE_PROJECT % args.source)
        for kind in BUILDS:
            configure(args, args.source, folder / kind, kind)
            faults += ["%s: %s" % (kind, lack) for lack in lacking_options(folder / kind, programs)]
            build = folder / (kind + "-probe")
            configure(args, probe, build, kind)
            run("cmake", "--build", build)
            lacks = list(lacking_marks(build / "probe"))
            if "__fgets_chk" not in run("readelf", "-W", "-s", build / "probe"):
                lacks.append("guarded calls of the library")
            faults += ["a %s build lacks %s" % (kind, lack) for lack in lacks]
    for program in args.program:
        faults += ["%s lacks %s" % (program, lack) for lack in lacking_marks(program)]
    print("\n".join(faults[:50]))
    print("%d faults" % len(faults))
    sys.exit(bool(faults))


if __name__ == "__main__":
    main()
