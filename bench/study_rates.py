#!/usr/bin/env python3
"""Rates of korvane-study: study_rates.py PROGRAM

Variants solved and stored a second, by one core and by two in turn, with what no second core can help:
the start of the program and the statistics behind the last row. Medians of some runs; on a machine that
does other work the CPU a variant tells more than the clock. Beside them a closed form in Python for walls
in one dry soil, which first must give the depths of the program."""

import collections
import math
import os
import pathlib
import sqlite3
import statistics
import subprocess
import sys
import tempfile
import time

RUNS = 5
FACTOR = 1.5  # on the strength that resists

CANTILEVER = """'BENCH
CONTROL  CANTILEVER  DESIGN  1.00  1.50
WALL  12
SURFACE RIGHTSIDE  1  0  12
SURFACE LEFTSIDE   1  0  0
SOIL BOTH  STRENGTHS  1
  120  110  32  0  0  0
FINISHED
"""
ANCHORED = CANTILEVER.replace("CANTILEVER", "ANCHORED").replace("WALL  12", "WALL  12  9")
SWEEP = """'BENCH
CONTROL  CANTILEVER  DESIGN  1.00  1.50
WALL  10
SURFACE RIGHTSIDE  3  0  10
  5  10
  25  16
SURFACE LEFTSIDE   1  0  0
SOIL BOTH  STRENGTHS  1
  125  115  32  0  0  0
VERTICAL LINE  RIGHTSIDE  1  6  1200
VERTICAL STRIP  RIGHTSIDE  1  8  14  250
FINISHED
"""
# name: base, variants
WALLS = {
    "cantilever by coefficients": (CANTILEVER, 500000),
    "anchored, dry": (ANCHORED, 300000),
    "sweep with surcharges": (SWEEP, 50000),
}
STUDY = """[study]
base = "wall.dat"
method = "sample"
size = %d
outputs = ["penetration", "maxMoment"]

[[variable]]
name = "friction"
fields = ["SoilFriction.left.1", "SoilFriction.right.1"]
distribution = "Uniform(28, 36)"
"""


# Seconds of the clock and of CPU, seconds of the clock behind the last row, and KB of memory.
Run = collections.namedtuple("Run", "clock cpu end memory")


def run(program, folder, base, size, jobs):
    """A study by a core for each job: rows are stored by a thread besides."""
    cores = sorted(os.sched_getaffinity(0))[:jobs]
    folder.mkdir()
    (folder / "wall.dat").write_text(base)
    (folder / "study.toml").write_text(STUDY % size)
    start = time.perf_counter()
    process = subprocess.Popen([program, "run", folder / "study.toml", "--output", folder / "out",
                                "--jobs", str(jobs), "--progress", "1000000"],
                               stderr=subprocess.PIPE, text=True,
                               preexec_fn=lambda: os.sched_setaffinity(0, cores))
    with process.stderr as messages:
        last_row = [time.perf_counter() for line in messages if line == "statistics\n"]
    _, status, usage = os.wait4(process.pid, 0)
    end = time.perf_counter()
    assert status == 0 and len(last_row) == 1, "the study has failed"
    return Run(end - start, usage.ru_utime + usage.ru_stime, end - last_row[0], usage.ru_maxrss)


def runs_of(program, folder, base, size, jobs_in_turn):
    """Medians by the number of jobs, the largest memory."""
    all_runs = {jobs: [] for jobs in jobs_in_turn}
    for turn in range(RUNS):
        for jobs in jobs_in_turn:
            all_runs[jobs].append(run(program, folder / f"{size}-{jobs}-{turn}", base, size, jobs))
    return {jobs: Run(*map(statistics.median, list(zip(*runs))[:3]), max(one.memory for one in runs))
            for jobs, runs in all_runs.items()}


def coefficients(friction):
    """Rankine, the resisting strength developed."""
    developed = math.atan(math.tan(math.radians(friction)) / FACTOR)
    active = math.tan(math.pi / 4 - math.radians(friction) / 2) ** 2
    return active, math.tan(math.pi / 4 + developed / 2) ** 2


def root(function, low, high):
    """By halving, to the last digits that matter."""
    for _ in range(60):
        middle = (low + high) / 2
        if (function(middle) > 0) == (function(high) > 0):
            high = middle
        else:
            low = middle
    return (low + high) / 2


def cantilever(friction, height=12, weight=110):
    """Penetration by the classical distribution of net pressure, with the transition at which forces
    and moments balance: a quartic (B. M. Das, Principles of Foundation Engineering)."""
    ka, kp = coefficients(friction)
    net = weight * (kp - ka)
    zero = weight * height * ka / net
    force = weight * height * ka * (height + zero) / 2
    arm = (height**2 / 2 * (zero + height / 3) + height * zero / 2 * 2 * zero / 3) / (
        height * (height + zero) / 2)
    deep = weight * height * kp + net * zero
    a1 = deep / net
    a2 = 8 * force / net
    a3 = 6 * force * (2 * arm * net + deep) / net**2
    a4 = force * (6 * arm * deep + 4 * force) / net**2
    return zero + root(lambda d: (((d + a1) * d - a2) * d - a3) * d - a4, 0, 10 * height)


def anchored(friction, height=12, weight=110, anchor=9):
    """Penetration by free earth support: moments about the anchor, a cubic."""
    ka, kp = coefficients(friction)
    net = weight * (kp - ka)
    zero = weight * height * ka / net
    force = weight * height * ka / 2
    # arms below the anchor of the pressure above the ground, and from there to the zero
    moment = force * height * (2 * height / 3 - (height - anchor)) + force * zero * (anchor + zero / 3)
    return zero + root(lambda d: net * d * d / 2 * (anchor + zero + 2 * d / 3) - moment, 0, 10 * height)


def stored(program, folder, base, count):
    """Friction and penetration of the first variants."""
    run(program, folder, base, count, 1)
    with sqlite3.connect(folder / "out/results.sqlite") as database:
        rows = database.execute("SELECT * FROM variants ORDER BY id").fetchall()
    return [(row[1], row[2]) for row in rows]


def tell_closed_form(name, closed_form, program, folder, base):
    """CPU microseconds a wall in Python."""
    rows = stored(program, folder, base, 2000)
    worst = max(abs(closed_form(friction) - depth) for friction, depth in rows)
    assert worst < 0.02, f"the closed form is {worst} FT beside the program"
    start = time.process_time()
    for friction, _ in rows:
        closed_form(friction)
    seconds = (time.process_time() - start) / len(rows)
    print(f"study, closed form in Python, {name}: {1e6 * seconds:.0f} us a wall, "
          f"{1 / seconds:,.0f} a second, within {worst:.4f} FT of the program")
    return 1 / seconds


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    program = sys.argv[1]
    with tempfile.TemporaryDirectory() as folder:
        folder = pathlib.Path(folder)
        closed = {
            "cantilever by coefficients": tell_closed_form(
                "cantilever", cantilever, program, folder / "c", CANTILEVER),
            "anchored, dry": tell_closed_form("anchored", anchored, program, folder / "a", ANCHORED),
        }
        for number, (name, (base, size)) in enumerate(WALLS.items()):
            place = folder / str(number)
            place.mkdir()
            runs = runs_of(program, place, base, size, (1, 2))
            one, two = runs[1], runs[2]
            start = runs_of(program, place, base, 1, (2,))[2].clock
            serial = start + two.end
            line = (f"study, {name}, {size:,} variants: {size / one.clock:,.0f} a second by one core, "
                    f"{size / two.clock:,.0f} by two ({one.clock / two.clock:.2f} times; "
                    f"{serial:.2f} s of {one.clock:.1f} are serial, {start:.2f} the start and "
                    f"{two.end:.2f} the statistics, which allow {2 / (1 + serial / one.clock):.2f} "
                    f"times), {1e6 * one.cpu / size:.1f} us of CPU a variant by one core and "
                    f"{1e6 * two.cpu / size:.1f} by two, {one.memory // 1024} and "
                    f"{two.memory // 1024} MB")
            if name in closed:
                line += f"; {size / one.cpu / closed[name]:.1f} times the closed form by CPU"
            print(line, flush=True)


if __name__ == "__main__":
    main()
