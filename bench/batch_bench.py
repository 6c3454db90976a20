#!/usr/bin/env python3
"""Benchmarks of the batch command: batch_bench.py PROGRAM EXAMPLES [DESIGNS]

Start, CPU a problem with its report and what options cost on top, system calls a problem, two jobs
against one, planning. Those of CPU and system calls are over the examples, and over the designs by
coefficients among the input files of the folder DESIGNS, if one is named."""

import json
import pathlib
import re
import resource
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

RUNS = 5  # of which the least counts
COPIES = 20  # of each input, so that the start hardly counts
JOBS_INPUTS = 2000
PLANNED_INPUTS = 10000
WITHOUT_WEDGE = ("coulomb", "table", "given")
# A report's and its input's, which every program needs; a message's write is none of them.
NEEDED_CALLS = {"openat": 2, "read": 2, "write": 1, "close": 2, "rename": 1}


class Batch:
    def __init__(self, program, folder):
        self.program = program
        self.out = folder / "out"

    def run(self, options, inputs, before=()):
        """Seconds of CPU and of the clock for some inputs."""
        shutil.rmtree(self.out, ignore_errors=True)
        self.out.mkdir()
        usage, start = resource.getrusage(resource.RUSAGE_CHILDREN), time.perf_counter()
        command = [*before, self.program, "--output-dir", self.out, *options, *inputs]
        subprocess.run(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=False)
        clock, now = time.perf_counter() - start, resource.getrusage(resource.RUSAGE_CHILDREN)
        return now.ru_utime + now.ru_stime - usage.ru_utime - usage.ru_stime, clock

    def cpu(self, options, inputs):
        return min(self.run(["--jobs", "1", *options], inputs)[0] for _ in range(RUNS))

    def calls(self, inputs):
        """System calls by name."""
        log = self.out.parent / "calls"
        self.run(["--jobs", "1"], inputs, ["strace", "-f", "-c", "-o", log])
        rows = re.findall(r"^ *[\d.]+ +[\d.]+ +\d+ +(\d+) +(?:\d+ +)?(\w+)$", log.read_text(), re.M)
        return {name: int(count) for count, name in rows if name != "total"}


def designs_by_coefficients(batch, folder):
    """The input files of a folder that are solved as designs without a wedge."""
    inputs = sorted(pathlib.Path(folder).glob("*.dat"))
    batch.run(["--json"], inputs)
    chosen = []
    for path in inputs:
        result = batch.out / (path.stem + ".json")
        told = json.loads(result.read_bytes()) if result.exists() else {}
        if (told.get("status") == "solved" and told["problem"]["ProgramMode"] == "D"
                and all(told[side]["method"] in WITHOUT_WEDGE for side in ("right", "left"))):
            chosen.append(path)
    return chosen


def copies(inputs, folder, count):
    """`count` input files, the given ones in turn."""
    folder.mkdir()
    return [shutil.copy(inputs[i % len(inputs)], folder / ("%05d.dat" % i)) for i in range(count)]


def tell_problems(batch, name, inputs, folder):
    start = batch.cpu([], inputs[:1])
    many = copies(inputs, folder, COPIES * len(inputs))
    def cpu(*options):
        return 1e6 * (batch.cpu(options, many) - start) / len(many)

    plain = cpu("--no-notes")
    told = {"": plain, " more for notes": cpu() - plain}
    for option in ("--json", "--plots"):
        told[" more for " + option] = cpu("--no-notes", option) - plain
    for what, microseconds in told.items():
        print("batch, %d %s, CPU a problem: %.0f us%s" % (len(inputs), name, microseconds, what))
    if not shutil.which("strace"):
        print("batch, system calls a problem: strace is not there")
        return
    half, full = batch.calls(many[:len(inputs)]), batch.calls(many[:2 * len(inputs)])
    more = {call: (full[call] - half.get(call, 0)) / len(inputs) for call in full}
    print("batch, %d %s, system calls a problem beyond open, read, write, close and rename of its "
          "files: %.1f" % (len(inputs), name, sum(more.values()) - sum(NEEDED_CALLS.values())))


def tell_two_jobs(batch, inputs, folder):
    many = copies(inputs, folder, JOBS_INPUTS)
    clock = {n: min(batch.run(["--jobs", n, "--no-notes"], many)[1] for _ in range(RUNS))
             for n in ("1", "2")}
    print("batch, %d inputs, two jobs over one: %.2f (%.0f a second by one)" % (
        len(many), clock["1"] / clock["2"], len(many) / clock["1"]))


def tell_planning(batch, inputs, folder):
    """A folder for results that cannot be made ends a run behind its planning."""
    many = copies(inputs, folder, PLANNED_INPUTS)
    nowhere = folder / "no-folder"
    nowhere.touch()
    command = [batch.program, "--plots", "--output-dir", nowhere / "results", *many]
    clocks = []
    for _ in range(RUNS):
        start = time.perf_counter()
        ended = subprocess.run(command, stderr=subprocess.PIPE, check=False)
        clocks.append(time.perf_counter() - start)
        assert b"none can be made" in ended.stderr
    print("batch, planning of %d inputs with plots: %.2f s" % (len(many), min(clocks)))


def main():
    if len(sys.argv) not in (3, 4):
        sys.exit(__doc__)
    examples = sorted(pathlib.Path(sys.argv[2]).glob("*.dat"))
    with tempfile.TemporaryDirectory() as folder:
        folder = pathlib.Path(folder)
        batch = Batch(sys.argv[1], folder)
        starts = [batch.run([], examples[:1])[1] for _ in range(50)]
        print("batch, one problem from start to report: %.2f ms" % (1e3 * statistics.median(starts)))
        tell_problems(batch, "examples", examples, folder / "examples")
        designs = []
        if len(sys.argv) == 4 and pathlib.Path(sys.argv[3]).is_dir():
            designs = designs_by_coefficients(batch, sys.argv[3])
        if designs:
            tell_problems(batch, "designs by coefficients", designs, folder / "designs")
        else:
            print("batch, designs by coefficients: no folder of them is named")
        tell_two_jobs(batch, examples, folder / "jobs")
        tell_planning(batch, examples, folder / "planned")


if __name__ == "__main__":
    main()
