#!/usr/bin/env python3
"""The guide's table of all sections against the program: fields, limits, and the shortest words of lines.

Every word of two inputs is replaced by one that fits nowhere; the program then tells the field that it wanted, and
its limits, which must be those of the table. The same is done with both inputs in metric units, so that a limit that
belongs to one wall alone does not pass as a number. A limit that names another field is one of that field's numbers,
"the one before" any number, and the lower of ground and water that of the input. Lines are read with the table's
shortest words and not with shorter ones.

    check_fields.py KORVANE-BATCH ROOT
"""
import math
import pathlib
import re
import subprocess
import sys
import tempfile

PROGRAM, ROOT = sys.argv[1], pathlib.Path(sys.argv[2])
GUIDE = (ROOT / "docs/guide/04-input-file.md").read_text(encoding="utf-8")
NUMBER = r"-?[\d.]+"
# What the complete example of the guide has no place for.
ANALYSIS = """'AN ANALYSIS WITH COEFFICIENTS ON ONE SIDE
'AND WATER PRESSURES, FOR THE FIELDS THAT A DESIGN DOES NOT HAVE
CONTROL ANCHORED ANALYSIS
WALL 10 8 -20 29E6 100
SURFACE RIGHT 2 0 10
 5 11
SURFACE LEFT 1 0 0
SOIL RIGHT COEFFICIENTS 3
 120 110 .3 3 0
 120 110 .3 3 -1
 120 110 .3 3
SOIL LEFT STRENGTHS 2 1 1.2
 120 110 30 5 0 0 -3 0 1 1.2
 120 110 0 5 0 0
WATER PRESSURES 2 5 0 0 100
FINISHED
"""


def table():
    """Field to limits, and the shortest words of lines, both as the guide has them."""
    text = GUIDE[GUIDE.index("## All sections in one table"):GUIDE.index("## Surplus words")]
    fields, words = {}, []
    for row in re.findall(r"^\| \d+\b(.*)\|$", text, re.M):
        line, field, _, limits = [cell.strip() for cell in row.split("|")][:4]
        if line:
            words.append(line.strip("`"))
        if field:
            fields[field.strip("`")] = limits
    return fields, words


def ask(lines, place, token, word="?"):
    """Field and limits that the program tells with another word in a line; nothing where that is read."""
    changed = list(lines)
    words = changed[place].split()
    words[token] = word
    changed[place] = " ".join(words)
    with tempfile.TemporaryDirectory() as folder:
        path = pathlib.Path(folder) / "wall.dat"
        path.write_text("\n".join(changed) + "\n", encoding="utf-8")
        run = subprocess.run([PROGRAM, "--check", str(path)], capture_output=True, text=True, check=False)
    told = re.search(r'wall\.dat:\d+: ([^:]*): read ".*", must be (.*)', run.stderr)
    return told.groups() if told else None


EXAMPLE = re.search(r"## A complete example.*?^```\n(.*?)^```$", GUIDE, re.S | re.M).group(1)


def wrong_words(lines):
    """The first words of the guide's table that are not the shortest ones of their lines."""
    example, faults = EXAMPLE.splitlines(), []
    for word in sorted({line.split()[0] for line in lines} - {"'", "UNITS"}):
        places = [k for k, line in enumerate(example) if line.startswith(word)]
        if not places:
            faults.append(f"no line of the example begins with {word}")
        for place in places:
            if ask(example, place, 0, word) is not None:
                faults.append(f"{word} is too short")
            if ask(example, place, 0, word[:-1] or "?") is None:
                faults.append(f"{word} is longer than needed")
    return faults


def converted(text):
    """An input in metric units."""
    with tempfile.TemporaryDirectory() as folder:
        path, metric = (pathlib.Path(folder) / name for name in ("wall.dat", "metric.dat"))
        path.write_text(text, encoding="utf-8")
        subprocess.run([PROGRAM, "--quiet", "--convert", "si", "-o", str(metric), str(path)], check=True,
                       capture_output=True)
        return metric.read_text(encoding="utf-8")


def entries_of_water(text):
    """The lower of ground and water on either side, where the input has water elevations."""
    water = re.search(r"^WATER ELEV\w* +\S+ +(\S+) +(\S+)", text, re.M)
    return {} if water is None else {
        f"the lower of {side} ground and water":
            min(float(level), float(re.search(rf"^SURFACE {side}\w* +\S+ +\S+ +(\S+)", text, re.M | re.I)[1]))
        for side, level in zip(("right", "left"), water.groups())}


class Told:
    """The limits of a field in the program's words, and the numbers that words of the guide may stand for there."""

    def __init__(self, limits, numbers):
        self.limits, self.numbers = limits, numbers

    def fits(self, limit):
        """True where this is what a limit of the guide says."""
        names = re.findall(r"`\w+`|the one before|the lower of \w+ ground and water", limit)
        pattern = re.escape(limit)
        for name in names:
            pattern = pattern.replace(re.escape(name), f"({NUMBER})", 1)
        told = re.fullmatch(pattern, self.limits)
        return told is not None and all(self.is_one_of(name, float(number))
                                        for name, number in zip(names, told.groups()))

    def is_one_of(self, name, number):
        return name == "the one before" or any(math.isclose(number, value, rel_tol=1e-5, abs_tol=1e-9)
                                               for value in self.numbers.get(name.strip("`"), ()))


def told_by_program():
    """Field to all that the program tells of it."""
    fields = {}
    for text in (EXAMPLE, ANALYSIS, converted(EXAMPLE), converted(ANALYSIS)):
        lines = [line for line in text.splitlines() if not line.startswith("UNITS")]
        head = text.splitlines()[:1] if text.startswith("UNITS") else []
        numbers = {name: [value] for name, value in entries_of_water(text).items()}
        for place, line in enumerate(lines):
            for token in range(0 if line[0] in "('" else len(line.split())):
                told = ask(head + lines, len(head) + place, token)
                if told is None:
                    sys.exit(f"nothing is told of word {token + 1} of: {line}")
                field, needed = told
                if field[0].isupper() and not field.isupper():
                    letters = re.match(r"a word that begins with (.*)", needed)
                    limits = letters.group(1).replace(" or ", ", ") if letters else \
                        re.sub(r"^a number,? ?", "", needed)
                    fields.setdefault(field, []).append(Told(limits or "any", numbers))
                    if re.fullmatch(NUMBER + r"(E\d+)?", line.split()[token]):
                        numbers.setdefault(field, []).append(float(line.split()[token]))
    return fields


def main():
    guide, lines = table()
    program = told_by_program()
    faults = wrong_words(lines)
    for field in sorted(program):
        if field not in guide:
            faults.append(f"the guide's table lacks {field}")
            continue
        limits = guide[field].split("; ")
        faults += [f"{field}: the program says {words}, the guide {guide[field]}"
                   for words in sorted({told.limits for told in program[field] if not any(map(told.fits, limits))})]
        for limit in limits:
            if not any(told.fits(limit) for told in program[field]):
                faults.append(f"{field}: nothing shows {limit}")
    faults += [f"the program knows no {field}" for field in guide
               if field not in program and field != "HeadingLines"]
    if len(program) < 50:
        faults.append(f"only {len(program)} fields were told")
    print("\n".join(faults))
    sys.exit(bool(faults))


main()
