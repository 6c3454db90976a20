"""Solves every example, case and reference problem, faulty files and random walls with korvane-batch
and validates each JSON file against the schema that is shipped.

python3 validate_results.py --batch KORVANE-BATCH --walls KORVANE-WALLS"""

import argparse
import collections
import json
import pathlib
import subprocess
import sys
import tempfile

import jsonschema  # Debian: python3-jsonschema

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
SCHEMA = ROOT / "docs/korvane-result.schema.json"
FOLDERS = ("examples", "cases", "tests/reference", "tests/data/bad-input")
RANDOM_WALLS, SEED = 60, 11
# A lone V where loads may stand ends the reader with a run-time error.
FATAL = """'HEADING
CONTROL CANTILEVER DESIGN
WALL 10
SURFACE BOTH 1 0 10
SOIL BOTH STRENGTHS 1
120 110 30 0 0 0
V
"""

FAILURE = dict.fromkeys(("level", "side", "layer", "elev", "distance", "factorLow", "factorHigh",
                         "error", "field", "index", "value", "limit", "line", "read", "must"),
                        None) | {"code": "no-sign-change", "stage": "checking the wall"}


def solve(batch, inputs, folder, *options):
    """The results of one run, parsed."""
    folder.mkdir(exist_ok=True)
    command = [batch, "--quiet", "--json", "--output-dir", str(folder), *options, *map(str, inputs)]
    run = subprocess.run(command, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, check=False)
    if run.returncode not in (0, 1, 70):
        sys.exit(run.stderr.decode("utf-8", "replace"))
    files = sorted(folder.glob("*.json"))
    if len(files) != len(inputs):
        sys.exit("%d inputs, %d JSON files" % (len(inputs), len(files)))
    return [json.loads(file.read_text(encoding="utf-8")) for file in files]


def refuses(validator, good):
    """What the schema must not let through, each made of a good result by one change."""
    changes = (
        ("another schema", lambda r: r.update(schema=1)),
        ("a member that is missing", lambda r: r.pop("options")),
        ("a member that is told nowhere", lambda r: r["levels"][0].update(depth=1.0)),
        ("a text for a number", lambda r: r["levels"][0].update(bottomElev="-10")),
        ("a point with one value", lambda r: r["levels"][0]["grid"][0].update(water=[0.0])),
        ("a failure of a solved wall", lambda r: r.update(failure={})),
        ("results of a wall that is not solved",
         lambda r: r.update(status="failed", failure=FAILURE)),
        ("no levels of a solved wall", lambda r: r.update(levels=[])),
        ("a row that tells no difference",
         lambda r: r["comparison"][0]["levels"][0].pop("percent")),
        ("an unknown method", lambda r: r["right"].update(method="rankine")),
        ("a field of the problem that is missing", lambda r: r["problem"].pop("HDistLoad")),
    )
    for name, change in changes:
        result = json.loads(json.dumps(good))
        change(result)
        if validator.is_valid(result):
            yield "accepts " + name


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--batch", required=True)
    parser.add_argument("--walls", required=True)
    args = parser.parse_args()

    schema = json.loads(SCHEMA.read_text(encoding="utf-8"))
    jsonschema.Draft7Validator.check_schema(schema)
    validator = jsonschema.Draft7Validator(schema)
    known = {path.stem: path for folder in FOLDERS for path in (ROOT / folder).glob("*.dat")}
    faults = []
    statuses = collections.Counter()
    with tempfile.TemporaryDirectory() as temporary:
        folder = pathlib.Path(temporary)
        walls = folder / "walls"
        subprocess.run([args.walls, str(RANDOM_WALLS), str(SEED), str(walls)], check=True)
        (walls / "fatal.dat").write_text(FATAL)
        inputs = sorted(known.values()) + sorted(walls.glob("*.dat"))
        results = solve(args.batch, inputs, folder / "sweep")
        results += solve(args.batch, inputs, folder / "fixed", "--wedge", "fixed", "--max-fs", "5")
        metric = solve(args.batch, sorted(walls.glob("*.dat")), folder / "metric", "--units", "si",
                       "--compare")
        results += metric
        wall = ROOT / "examples/anchored-sand.dat"
        (folder / "blocked" / "anchored-sand.out").mkdir(parents=True)
        blocked = solve(args.batch, [wall], folder / "blocked")
        results += blocked
    for result in results:
        statuses[result["status"]] += 1
        for error in validator.iter_errors(result):
            place = "/".join(map(str, error.absolute_path))
            faults.append("%s: %s: %s" % (result["input"], place, error.message[:200]))
    faults += refuses(
        validator, next(r for r in results if r["status"] == "solved" and "comparison" in r))
    if blocked[0]["status"] != "failed" or not blocked[0]["levels"]:
        faults.append("no results of a wall whose report has no place")
    if any(result["units"] != "SI" for result in metric):
        faults.append("other units than those asked for")
    for status in ("solved", "failed", "error"):
        if statuses[status] == 0:
            faults.append("no input ends as " + status)
    print("\n".join(faults[:50]))
    print("%d results %s, %d faults" % (len(results), dict(statuses), len(faults)))
    sys.exit(bool(faults))


if __name__ == "__main__":
    main()
