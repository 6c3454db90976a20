#!/usr/bin/env python3
"""The manual pages tell the options that the programs tell, no more and no less, with examples and files.

    check_man.py ROOT PROGRAM...
"""
import os
import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(sys.argv[1])
SECTIONS = ("NAME", "SYNOPSIS", "DESCRIPTION", "OPTIONS", "EXIT STATUS", "EXAMPLES", "FILES", "SEE ALSO")
OPTION = re.compile(r"(?<![\w-])--[a-z][a-z-]*[a-z]")


def help_of(program, *words):
    run = subprocess.run([program, *words, "--help"], capture_output=True, text=True, check=True,
                         env={**os.environ, "QT_QPA_PLATFORM": "offscreen"})
    return run.stdout


def options_of(program):
    """Options at the beginning of the lines of the help, also those of its commands."""
    text = help_of(program)
    commands = re.search(r"^Subcommands:\n((?:  .*\n)+)", text, re.M)
    names = re.findall(r"^  (\w+)", commands.group(1), re.M) if commands else []
    lines = "\n".join([text, *(help_of(program, name) for name in names)])
    heads = re.findall(r"^ +((?:-\w,)?--[a-z-]+)", lines, re.M)
    return {option for head in heads for option in OPTION.findall(head.replace(",", " "))}, names


def main():
    faults = []
    for program in map(pathlib.Path, sys.argv[2:]):
        page = ROOT / "packaging/man" / (program.name + ".1")
        if not page.exists():
            faults.append(f"{program.name} has no manual page")
            continue
        text = page.read_text(encoding="utf-8").replace("\\-", "-").replace("\\fR", " ")
        options, commands = options_of(program)
        told = set(OPTION.findall(text))
        faults += [f"{page.name} lacks {option}" for option in sorted(options - told)]
        faults += [f"{program.name} has no {option}" for option in sorted(told - options)]
        faults += [f"{page.name} lacks the command {name}" for name in commands if f".B {name}\n" not in text]
        faults += [f"{page.name} lacks {section}" for section in SECTIONS if f".SH {section}\n" not in text]
        if len(options) < 2:
            faults.append(f"{program.name} tells no options")
    print("\n".join(faults))
    sys.exit(bool(faults))


main()
