#!/usr/bin/env python3
"""The numbers of the worked walls in docs/theory are those that the calculation sheet prints.

A worked wall stands between `<!-- sheet: INPUT [OPTIONS] -->` and `<!-- end of sheet -->`; INPUT is a file of the
repository, "this wall" (the code block that follows) or "the wall of PAGE". In it
- the numbers of a display equation stand next to each other, in their order, in one paragraph of the sheet, which
  is for the same symbol; and its right side, worked out, is its result as far as five digits tell,
- those of a table's row in their order in one row of a table,
- those of the text anywhere in the sheet.

    check_worked.py KORVANE-BATCH ROOT
"""
import html.parser
import pathlib
import re
import subprocess
import sys
import tempfile

import tex

NUMBER = re.compile(r"(?:(?<![\w).°])-)?\d+(?:\.\d+)?(?:E[+-]?\d+)?")
# Symbols of the sheet that the theory has another name for, since it needs theirs elsewhere.
ALIASES = {"K_p^full": "K0", "R_25": "RA", "R_30": "RB", "z_0": "y0", "P_a": "P", "P_p": "P", "h": "Δh", "u": "pw",
           "w_right": "wR", "w_left": "wL", "A": "T", "sigma": "σ", "alpha": "α", "beta": "β"}
GROUPS = ("p", "tr", "li", "h1", "h2", "h3", "h4", "caption")


def numbers(text):
    """The numbers in their order; a minus that stands at a number alone is its sign."""
    text = re.sub(r"_(\{[^}]*\}|.)", " ", text)  # indices
    text = re.sub(r"(IN|FT)\^?[234]\b", r"\1", text).replace("−", "-").replace("{,}", "")
    return NUMBER.findall(text)


class Sheet(html.parser.HTMLParser):
    """Paragraphs and rows of a sheet, each as its list of numbers and the symbol that it is for."""

    def __init__(self, text):
        super().__init__()
        self.groups, self.symbols, self.current, self.skipped = [], [], "", 0
        self.feed(text)
        self.close_group()
        self.all = {number for group in self.groups for number in group}

    def close_group(self):
        self.groups.append(numbers(self.current))
        symbol = re.search(r"([^:=|]*)=", re.sub("[{}]", "", self.current))
        self.symbols.append(re.sub(r"[\s\u2062]", "", symbol.group(1)) if symbol else "")
        self.current = ""

    def handle_starttag(self, tag, attributes):
        if tag == "math" and re.search(r"=\s*\{[^={|]*,\s*$", self.current):
            self.close_group()  # a formula behind another's value
        if tag in ("style", "svg"):
            self.skipped += 1
        if tag in GROUPS:
            self.close_group()
        self.current += "|" if tag in ("td", "th") else "{"

    def handle_endtag(self, tag):
        if tag in ("style", "svg"):
            self.skipped -= 1
        if tag in GROUPS:
            self.close_group()

    def handle_data(self, data):
        if not self.skipped:
            self.current += data

    def symbols_of_run(self, wanted):
        """What the paragraphs with these numbers are for."""
        return {symbol for group, symbol in zip(self.groups, self.symbols)
                for k in range(len(group) - len(wanted) + 1) if wanted == group[k:k + len(wanted)]}

    def has_row(self, wanted):
        def holds(group):
            rest = iter(group)
            return all(number in rest for number in wanted)
        return any(holds(group) for group in self.groups)


def code_block(text):
    return re.search(r"^```\n(.*?)^```$", text, re.S | re.M).group(1)


def solve(program, root, page, marker, section):
    """The sheet of the wall that a marker names."""
    with tempfile.TemporaryDirectory() as folder:
        words = marker.split()
        if marker == "this wall":
            path, options = pathlib.Path(folder) / "wall.dat", []
            path.write_text(code_block(section), encoding="utf-8")
        elif marker.startswith("the wall of "):
            path, options = pathlib.Path(folder) / "wall.dat", []
            path.write_text(code_block((page.parent / words[-1]).read_text(encoding="utf-8")), encoding="utf-8")
        else:
            path, options = root / words[0], words[1:]
        run = subprocess.run([program, "--sheet", "--quiet", "--output-dir", folder, *options, str(path)],
                             capture_output=True, text=True, check=False)
        if run.returncode != 0:
            sys.exit(f"{page.name}: {marker}: status {run.returncode}: {run.stderr}")
        return Sheet((pathlib.Path(folder) / (path.stem + ".html")).read_text(encoding="utf-8"))


def equation_fault(equation, sheet):
    """What is wrong with a display equation of a worked wall; nothing where it is right."""
    text = " ".join(equation.split())
    symbols = sheet.symbols_of_run(numbers(equation))
    if not symbols:
        return f"no such line: {text}"
    for name, sides in tex.equations(f"$${equation}$$"):
        if not {name.replace("_", ""), ALIASES.get(name, "")} & symbols:
            return f"in the sheet these are numbers of {' '.join(sorted(symbols))}: {text}"
        formula, result = tex.Formula(sides[0]), tex.Formula(sides[-1])()
        if abs(formula() - result) > formula.error() + tex.digits_unit(result):
            return f"the right side is {formula():.6g}: {text}"
    return None


def check(section, sheet):
    """How many pieces of the section were compared, and those that the sheet does not hold."""
    text = re.sub(r"^```\n.*?^```$|`[^`\n]*`", " ", section, flags=re.S | re.M)
    equations = re.findall(r"\$\$(.*?)\$\$", text, re.S)
    text = re.sub(r"\$\$.*?\$\$", " ", text, flags=re.S)
    rows = re.findall(r"^\|(.*)\|$", text, re.M)
    prose = re.sub(r"^\|.*$|\]\([^)]*\)", " ", text, flags=re.M)
    prose = re.sub(r"\$([^$]*)\$", " ", prose)  # symbols; their values stand outside of them
    faults = [fault for fault in (equation_fault(equation, sheet) for equation in equations) if fault]
    faults += [f"no such row: {row}" for row in rows if not sheet.has_row(numbers(row))]
    words = [number for number in numbers(" ".join(prose.split())) if number not in sheet.all]
    faults += [f"not in the sheet: {number}" for number in words]
    return sum(1 for piece in equations + rows if numbers(piece)), faults


def main():
    program, root = sys.argv[1], pathlib.Path(sys.argv[2])
    faults, pages = [], 0
    for page in sorted((root / "docs/theory").glob("[0-9]*.md")):
        text, compared = page.read_text(encoding="utf-8"), 0
        for marker, section in re.findall(r"<!-- sheet: (.*?) -->(.*?)<!-- end of sheet -->", text, re.S):
            count, wrong = check(section, solve(program, root, page, marker, section))
            compared += count
            faults += [f"{page.name}: {marker}: {fault}" for fault in wrong]
        if text.count("<!-- sheet:") != text.count("<!-- end of sheet -->"):
            faults.append(f"{page.name}: a worked wall does not end")
        pages += compared > 0
    if pages < 9:
        faults.append(f"only {pages} pages have a worked wall")
    print("\n".join(faults))
    sys.exit(bool(faults))


main()
