#!/usr/bin/env python3
"""Rates of korvane-study: study_rates.py PROGRAM

Variants solved and stored a second, by one core and by two, with the memory that a run takes, and beside
them a closed form in Python for walls in one dry soil, which first must give the depths of the program."""

import math
import os
import pathlib
import sqlite3
import subprocess
import sys
import tempfile
import time

RUNS = 3  # of which the fastest counts
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


def run(program, folder, base, size, jobs):
    """Seconds of the clock and of CPU, and KB of memory, of a study by a core for each job: rows are
    stored by a thread besides."""
    cores = sorted(os.sched_getaffinity(0))[:jobs]
    folder.mkdir()
    (folder / "wall.dat").write_text(base)
    (folder / "study.toml").write_text(STUDY % size)
    start = time.perf_counter()
    process = subprocess.Popen([program, "run", folder / "study.toml", "--output", folder / "out",
                                "--jobs", str(jobs), "--quiet"],
                               preexec_fn=lambda: os.sched_setaffinity(0, cores))
    _, status, usage = os.wait4(process.pid, 0)
    assert status == 0, "the study has failed"
    return time.perf_counter() - start, usage.ru_utime + usage.ru_stime, usage.ru_maxrss


def best(program, folder, base, size, jobs):
    """The least of some runs, without the start that a study of one variant has too."""
    runs = [run(program, folder / f"{size}-{jobs}-{n}", base, size, jobs) for n in range(RUNS)]
    starts = [run(program, folder / f"1-{jobs}-{n}", base, 1, jobs) for n in range(RUNS)]
    clock, cpu = (min(one[k] for one in runs) - min(one[k] for one in starts) for k in (0, 1))
    return clock, cpu, max(memory for _, _, memory in runs)


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
            one, cpu, memory = best(program, place, base, size, 1)
            two, _, _ = best(program, place, base, size, 2)
            line = (f"study, {name}, {size:,} variants: {size / one:,.0f} a second by one core, "
                    f"{size / two:,.0f} by two ({one / two:.2f} times), {1e6 * cpu / size:.1f} us of "
                    f"CPU a variant, {memory // 1024} MB")
            if name in closed:
                line += f"; {size / cpu / closed[name]:.1f} times the closed form by CPU"
            print(line, flush=True)


if __name__ == "__main__":
    main()
