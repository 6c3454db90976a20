#!/usr/bin/env python3
"""Every example of the documents does what it says.

A comment before a code block tells what the block is; the blocks of a page run in their order in one folder that holds
copies of the repository's examples:

    <!-- run [: status N] -->      commands of the shell, which end with status N (0)
    <!-- output -->                what they have printed; "..." stands for any text, blanks for any blanks
    <!-- file: NAME -->            a file that is written; an input or a study must be read without a fault
    <!-- part of FILE -->          lines that stand together in a file of the folder
    <!-- usage -->                 words that stand for others: not run

A korvane-batch command in a block without one is a fault; blocks with korvane-study run where it was built.

    check_examples.py ROOT KORVANE-BATCH [KORVANE-STUDY]
"""
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(sys.argv[1])
PROGRAMS = [pathlib.Path(path).absolute() for path in sys.argv[2:]]
BLOCK = re.compile(r"(?:^<!-- ([^>]*?) -->\n\n?)?^( *)```(\w*)\n(.*?)^ *```$|(?:^<!-- ([^>]*?) -->\n\n?)?((?:^    \S[^\n]*\n)+)",
                   re.S | re.M)


class Folder:
    """Where the examples of one page run."""

    def __init__(self, path):
        self.path, self.printed = pathlib.Path(path), ""
        for example in (ROOT / "examples").iterdir():
            if example.is_file():
                shutil.copy(example, self.path)
        programs = self.path / ".programs"
        programs.mkdir()
        for program in PROGRAMS:
            (programs / program.name).symlink_to(program.resolve())
        self.environment = {**os.environ, "PATH": f"{programs}:{os.environ['PATH']}", "LC_ALL": "C.UTF-8"}

    def run(self, commands, wanted):
        run = subprocess.run(["bash", "-eo", "pipefail", "-c", commands], cwd=self.path, env=self.environment,
                             stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False, timeout=300)
        self.printed = run.stdout
        return "" if run.returncode == wanted else f"status {run.returncode}: {run.stdout[-600:]}"

    def write(self, name, text):
        (self.path / name).write_text(text, encoding="utf-8")
        if text.startswith("[study]") and len(PROGRAMS) > 1:
            return self.run(f"korvane-study check {name}", 0)
        if not name.endswith(".dat"):
            return ""
        run = subprocess.run([PROGRAMS[0], "--check", "--quiet", name], cwd=self.path, capture_output=True, text=True,
                             check=False)
        return "" if "[INPUT COMPLETE]" in run.stderr else f"{name} is refused: {run.stderr}"


def fits(pattern, text):
    """True where the text is the pattern, "..." standing for anything; columns may be wider or narrower."""
    parts = [re.escape(" ".join(part.split())) for part in pattern.split("...")]
    return re.fullmatch(".*?".join(parts), " ".join(text.split())) is not None


def check(folder, kind, text):
    """The fault of one block; empty where there is none."""
    if kind is None:
        return "a command without a comment on what it does" if re.search(r"^\W*korvane-batch ", text, re.M) else ""
    word, _, rest = kind.partition(":")
    if word == "run":
        status = re.search(r"status (\d+)", rest)
        prepare = re.search(r"copies (\S+) to (\S+)", rest)
        if prepare:
            shutil.copy(folder.path / prepare.group(1), folder.path / prepare.group(2))
        return folder.run(text, int(status.group(1)) if status else 0)
    if word == "output":
        return "" if fits(text, folder.printed) else f"another output:\n{folder.printed}"
    if word == "file":
        return folder.write(rest.strip(), text)
    if word.startswith("part of "):
        whole = (folder.path / word[len("part of "):]).read_text(encoding="utf-8")
        plain = "\n".join(line.rstrip() for line in whole.splitlines())
        return "" if "\n".join(line.rstrip() for line in text.splitlines()) in plain else f"not in {word[8:]}"
    return "" if word in ("usage", "sheet") else f"an unknown comment: {kind}"


def main():
    pages = [ROOT / "README.md", *sorted((ROOT / "docs").glob("**/*.md"))]
    study = any(program.name == "korvane-study" for program in PROGRAMS)
    faults, compared = [], 0
    for page in pages:
        with tempfile.TemporaryDirectory() as path:
            folder = Folder(path)
            for match in BLOCK.finditer(page.read_text(encoding="utf-8")):
                kind, _, _, fenced, other, indented = match.groups()
                text = fenced if fenced is not None else re.sub("^    ", "", indented, flags=re.M)
                if "korvane-study" in text and not study:
                    continue
                fault = check(folder, kind or other, text)
                compared += (kind or other) is not None
                if fault:
                    line = page.read_text(encoding="utf-8")[:match.start()].count("\n") + 1
                    faults.append(f"{page.relative_to(ROOT)}:{line}: {fault}")
    if compared < 20:
        faults.append(f"only {compared} examples were found")
    print("\n".join(faults))
    sys.exit(bool(faults))


main()
