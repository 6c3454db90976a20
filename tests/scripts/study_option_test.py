"""KORVANE_STUDY decides whether korvane-study is built: OFF leaves it out, AUTO where a library is
missing, with one line; ON is refused then. A configuration without tests and desktop, nothing built.

python3 study_option_test.py --source FOLDER --compiler CXX"""

import argparse
import pathlib
import re
import subprocess
import sys
import tempfile

LEFT_OUT = "korvane-study is left out"
# CMake finds no OpenTURNS then, wherever it is.
HIDDEN = "-DCMAKE_DISABLE_FIND_PACKAGE_OpenTURNS=ON"


def configure(args, folder, *options):
    """Status, what was told, and the programs that would be built."""
    done = subprocess.run(
        ["cmake", "-G", "Ninja", "-S", args.source, "-B", folder, "-DKORVANE_TESTS=OFF",
         "-DKORVANE_DESKTOP=OFF", "-DCMAKE_CXX_COMPILER=" + args.compiler, *options],
        stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, errors="replace", check=False)
    ninja = folder / "build.ninja"
    text = ninja.read_text() if ninja.exists() else ""
    programs = set(re.findall(r"^build \S*/(korvane\S*): CXX_EXECUTABLE_LINKER", text, re.M))
    return done.returncode, done.stdout, programs


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--source", required=True, type=pathlib.Path)
    parser.add_argument("--compiler", required=True)
    args = parser.parse_args()
    cases = [  # options, status is 0, lines that tell that it is left out
        (("-DKORVANE_STUDY=OFF",), True, 0),
        (("-DKORVANE_STUDY=OFF", HIDDEN), True, 0),
        (("-DKORVANE_STUDY=AUTO", HIDDEN), True, 1),
        ((HIDDEN,), True, 1),
        (("-DKORVANE_STUDY=ON", HIDDEN), False, 0),
    ]
    faults = []
    with tempfile.TemporaryDirectory() as temporary:
        for number, (options, is_good, lines) in enumerate(cases):
            status, told, programs = configure(args, pathlib.Path(temporary) / str(number), *options)
            name = " ".join(options)
            if (status == 0) != is_good:
                faults.append("%s: status %d\n%s" % (name, status, told))
            elif is_good and programs != {"korvane-batch"}:
                faults.append("%s: builds %s" % (name, sorted(programs)))
            elif not is_good and "korvane-study needs OpenTURNS" not in told:
                faults.append("%s: does not tell what is missing\n%s" % (name, told))
            if told.count(LEFT_OUT) != lines:
                faults.append("%s: tells %d times that it is left out" % (name, told.count(LEFT_OUT)))
    print("\n".join(faults))
    print("%d faults" % len(faults))
    sys.exit(bool(faults))


if __name__ == "__main__":
    main()
