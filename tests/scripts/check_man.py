#!/usr/bin/env python3
"""The manual pages tell the options that the programs tell, no more and no less, with examples and files; each names the
other programs; and that of korvane-batch tells the exit statuses of the guide, with the options that give them.

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


def statuses_of_guide():
    """Exit status to the options that the guide names beside it."""
    text = (ROOT / "docs/guide/09-batch.md").read_text(encoding="utf-8")
    statuses = {}
    for status, means in re.findall(r"^\| (\d+(?:, \d+)*) \| ([^|]*)\|", text[text.index("## Exit statuses"):], re.M):
        statuses.setdefault(status, set()).update(OPTION.findall(means))
    return statuses


def statuses_of_page(text):
    section = text[text.index(".SH EXIT STATUS\n") + 1:]
    section = section[:section.index("\n.SH ")]
    return {status: set(OPTION.findall(means))
            for status, means in re.findall(r"^\.BR? (\d.*)\n((?:[^.].*\n?)*)", section.replace(' ", " ', ', '), re.M)}


def main():
    faults = []
    programs = [pathlib.Path(name) for name in sys.argv[2:]]
    for program in programs:
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
        seen = re.sub(r"\s", "", text[text.index(".SH SEE ALSO"):])
        faults += [f"{page.name} does not send to {other.name}" for other in programs
                   if other != program and f"{other.name}(1)" not in seen]
        if program.name == "korvane-batch" and statuses_of_page(text) != statuses_of_guide():
            faults.append(f"{page.name} has statuses {statuses_of_page(text)}, the guide {statuses_of_guide()}")
        if len(options) < 2:
            faults.append(f"{program.name} tells no options")
    print("\n".join(faults))
    sys.exit(bool(faults))


main()
