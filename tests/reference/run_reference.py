"""Solves the reference problems of one kind with korvane-batch and compares report, exit status and
message boxes with what an independent implementation found.

python3 run_reference.py --batch KORVANE-BATCH --kind KIND [--keep DIR]"""

import argparse
import json
import os
import pathlib
import subprocess
import sys
import tempfile

HERE = pathlib.Path(__file__).resolve().parent
STATUS = {"solved": 0, "failed": 1, "error": 70}


def number(path):
    return int(path.stem.rsplit("-", 1)[1])


def solve(batch, wedge, inputs, folder):
    """Exit status of one run over all inputs of a wedge method."""
    command = [batch, "--quiet", "--no-notes", "--json", "--wedge", wedge, "--max-fs", "20",
               "--output-dir", folder]
    run = subprocess.run(command + [str(p) for p in inputs], stderr=subprocess.PIPE, check=False)
    return run.returncode, run.stderr.decode("utf-8", "replace")


def boxes(results):
    """The boxes as the .msg files hold them: without the directory of the input."""
    folder = str(HERE) + os.sep
    return "\n".join("[%s] %s" % (m["title"], m["text"]) for m in results["messages"]).replace(folder, "")


def check(path, folder):
    """What differs for one problem, as lines of text."""
    results = json.loads((folder / (path.stem + ".json")).read_text(encoding="utf-8"))
    faults = []
    expected = int(path.with_suffix(".rc").read_text())
    if STATUS[results["status"]] != expected:
        faults.append("status %s, expected %d" % (results["status"], expected))
    wanted = path.with_suffix(".msg").read_text(encoding="latin-1")
    if boxes(results).strip("\n") != wanted.strip("\n"):
        faults.append("boxes:\n%s\n    expected:\n%s" % (boxes(results), wanted))
    compare = subprocess.run(
        [sys.executable, str(HERE / "compare.py"), "--max", "10",
         str(path.with_suffix(".out")), str(folder / (path.stem + ".out"))],
        stdout=subprocess.PIPE, check=False)
    if compare.returncode != 0:
        faults.append("report (A expected, B ours):\n" + compare.stdout.decode("utf-8", "replace"))
    return faults


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--batch", required=True)
    parser.add_argument("--kind", required=True, help="or one problem, KIND-NUMBER")
    parser.add_argument("--keep", help="folder for the reports and JSON files")
    args = parser.parse_args()
    problems = sorted(HERE.glob(args.kind + "-[0-9]*.dat")) or sorted(HERE.glob(args.kind + ".dat"))
    if not problems:
        sys.exit("no reference problem of kind " + args.kind)

    failed = 0
    with tempfile.TemporaryDirectory() as temporary:
        folder = pathlib.Path(args.keep or temporary)
        for wedge, chosen in (("fixed", True), ("sweep", False)):
            inputs = [p for p in problems if (number(p) % 3 == 0) == chosen]
            if not inputs:
                continue
            status, errors = solve(args.batch, wedge, inputs, folder)
            expected = max(int(p.with_suffix(".rc").read_text()) for p in inputs)
            if status != expected:
                failed += 1
                print("%s: exit status %d of the whole run, expected %d" % (wedge, status, expected))
            if status == 2 or status < 0:
                sys.exit(errors)
        for path in problems:
            faults = check(path, folder)
            failed += bool(faults)
            print("%s: %s" % (path.stem, "agrees" if not faults else "\n  ".join(["DIFFERS"] + faults)))
    print("%d problems, %d faults" % (len(problems), failed))
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
