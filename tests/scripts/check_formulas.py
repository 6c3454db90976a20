#!/usr/bin/env python3
"""The general formulas and tables of docs/theory give the numbers of the program.

Each is read from its page and worked out with the strengths, weights and results that the program tells of a wall, or
(planes of a wedge) held against the closed form that its extreme has.

    check_formulas.py KORVANE-BATCH ROOT
"""
import json
import math
import pathlib
import re
import subprocess
import sys
import tempfile

import tex

PROGRAM, THEORY = sys.argv[1], pathlib.Path(sys.argv[2]) / "docs/theory"
FAULTS, COMPARED = [], []


def page(number):
    return next(THEORY.glob(f"{number:02}-*.md")).read_text(encoding="utf-8")


def formulas(number, name, side=0):
    """The equations for a symbol in a page, less those of its worked walls: numbers alone."""
    text = re.sub(r"<!-- sheet: .*?<!-- end of sheet -->", "", page(number), flags=re.S)
    found = [tex.Formula(sides[side]) for symbol, sides in tex.equations(text) if symbol == name]
    if not found:
        sys.exit(f"page {number} has no formula for {name}")
    return found


def table(number, pattern):
    """Rows of a page's table whose head matches: lists of numbers and words."""
    rows = re.search(rf"^\|{pattern}.*\n\|[-|]*\n((?:\|.*\n)+)", page(number), re.M).group(0).splitlines()
    cells = [[cell.strip().replace("−", "-") for cell in row.strip("|").split("|")] for row in rows]
    return cells[:1] + cells[2:]


def solve(*lines, wedge="sweep"):
    """Results of an input of some lines."""
    with tempfile.TemporaryDirectory() as folder:
        path = pathlib.Path(folder) / "wall.dat"
        path.write_text("\n".join(("'A WALL OF A TEST", *lines, "FINISHED", "")), encoding="utf-8")
        subprocess.run([PROGRAM, "--quiet", "--no-notes", "--json", "--wedge", wedge, str(path)], capture_output=True,
                       check=True)
        return json.loads(path.with_suffix(".json").read_text(encoding="utf-8"))


def row_at(results, elev, level=None):
    grid = results["grid"] if level is None else results["levels"][level]["grid"]
    return next(row for row in grid if abs(row["elev"] - elev) < 1e-6)


def same(what, formula, program, tolerance=1e-6):
    COMPARED.append(what)
    if not math.isclose(formula, program, rel_tol=tolerance, abs_tol=1e-9):
        FAULTS.append(f"{what}: the formula gives {formula:.7g}, the program {program:.7g}")


def radians(layer, which):
    return {f"varphi_{which[0]}": math.radians(layer["friction" + which]),
            f"delta_{which[0]}": math.radians(layer["wallFriction" + which])}


def strengths(layer):
    """Symbols of the pages for a layer's developed strengths."""
    return {**radians(layer, "Active"), **radians(layer, "Passive"), "c_a": layer["cohesionActive"],
            "c_p": layer["cohesionPassive"], "K_a": layer["ka"], "K_p": layer["kp"]}


def lower(layer):
    return {name.replace("_A", "_a").replace("_P", "_p"): value for name, value in strengths(layer).items()}


def coefficients():
    """Strengths and coefficients of levels with and without much wall friction."""
    for friction, wall_friction in ((32, 10), (34, 24), (28, 19)):
        results = solve("CONTROL CANTILEVER DESIGN 1.1 1.25", "WALL 12", "SURFACE RIGHT 1 0 12", "SURFACE LEFT 1 0 0",
                        "SOIL BOTH STRENGTHS 1", f" 120 110 {friction} 60 {wall_friction} 0",
                        "VERTICAL UNIFORM 200 100")
        layer = lower(results["right"]["layers"][0])
        given = {"varphi": math.radians(friction), "delta": math.radians(wall_friction), "c": 60, "F_a": 1.1}
        for name in ("varphi_a", "delta_a", "c_a"):
            same(f"02 {name}", formulas(2, name)[0](given), layer[name])
        same("03 K_a", formulas(3, "K_a")[0](layer), layer["K_a"])
        if 2 * layer["delta_p"] <= layer["varphi_p"]:
            same("03 K_p", formulas(3, "K_p")[0](layer), layer["K_p"])
        else:
            same("03 table of K_p", tabled(math.degrees(layer["varphi_p"]), layer["delta_p"] / layer["varphi_p"]),
                 layer["K_p"])
        stress = {**layer, "sigma": 200 + 5 * 110}
        same("03 p_a", formulas(3, "p_a")[0](stress), row_at(results, 7)["right"]["active"][0])
        same("03 p_p", formulas(3, "p_p")[0](stress), row_at(results, 7)["right"]["passive"][0])


def line(x, points):
    """A straight line between the points next to x."""
    (x1, y1), (x2, y2) = next((a, b) for a, b in zip(points, points[1:]) if x <= b[0])
    return y1 + (x - x1) / (x2 - x1) * (y2 - y1)


def tabled(degrees, ratio):
    full = [pair for start in ("0", "26")
            for pair in zip(*[map(float, row[1:]) for row in table(3, rf" \$\\varphi\$ \| {start} ")])]
    head, *rows = table(3, r" \$\\delta/\\varphi\$")
    reduced = [(float(column.strip("°")), line(ratio, [(float(row[0]), float(row[k + 1])) for row in rows]))
               for k, column in enumerate(head[1:])]
    return line(degrees, full) * line(degrees, reduced)


def curved():
    """Every number of both tables for curved failure surfaces: layers below the wall, eleven at a time."""
    soils = [(degrees, 1.0) for degrees in (44.4, *range(44, 4, -2))]
    soils += [(degrees, ratio) for degrees in (43, *range(40, 5, -5)) for ratio in (0.55, 0.65, 0.85)]
    for begin in range(0, len(soils), 10):
        layers = [(40, 0.0), *soils[begin:begin + 10]]
        lines = [f" 120 110 {degrees} 0 {degrees * ratio} 0" + (f" {-80 - k} 0" if k + 1 < len(layers) else "")
                 for k, (degrees, ratio) in enumerate(layers)]
        results = solve("CONTROL CANTILEVER DESIGN 1 1", "WALL 12", "SURFACE RIGHT 1 0 12", "SURFACE LEFT 1 0 0",
                        f"SOIL BOTH STRENGTHS {len(layers)}", *lines)
        for (degrees, ratio), layer in list(zip(layers, results["left"]["layers"]))[1:]:
            same(f"03 table of K_p at {degrees}, {ratio}", tabled(degrees, ratio), layer["kp"])


def planes():
    """The extremes over all planes of a soil on level ground: Coulomb's coefficients, clay with adhesion."""
    weight, depth, angles = 110.0, 10.0, [math.radians(k / 100) for k in range(100, 8900)]

    def force(name, theta, friction, wall_friction=0.0, cohesion=0.0, adhesion=0.0):
        return formulas4[name]({"theta": theta, "varphi": friction, "delta": wall_friction, "c": cohesion,
                                "l": depth / math.cos(theta), "W": weight * depth ** 2 * math.tan(theta) / 2, "H": 0,
                                "T": adhesion * depth})

    formulas4 = {name: formulas(4, name)[0] for name in ("P_a", "P_p")}
    friction, wall_friction = math.radians(30), math.radians(10)
    coulomb = {"varphi_a": friction, "varphi_p": friction, "delta_a": wall_friction, "delta_p": wall_friction}
    pushes = [force("P_a", theta, friction, wall_friction) for theta in angles if theta < math.pi / 2 - friction]
    same("04 P_a", max(pushes), formulas(3, "K_a")[0](coulomb) * weight * depth ** 2 / 2, 1e-5)
    holds = [force("P_p", theta, friction, wall_friction) for theta in angles if theta > friction + wall_friction + 0.01]
    same("04 P_p", min(holds), formulas(3, "K_p")[0](coulomb) * weight * depth ** 2 / 2, 1e-5)
    for name, sign, pick in (("P_a", -1, max), ("P_p", 1, min)):
        forces = [force(name, theta, 0.0, 0.0, 300.0, 200.0) for theta in angles]
        same(f"04 {name} in clay", pick(forces),
             weight * depth ** 2 / 2 + sign * 2 * 300 * depth * math.sqrt(1 + 200 / 300), 1e-5)


def wedge_sides():
    """Pressures just below the surface, and the walls measured with one layer and with two."""
    results = solve("CONTROL CANTILEVER DESIGN 1.1 1.4", "WALL 12", "SURFACE RIGHT 1 0 12", "SURFACE LEFT 2 0 0",
                    " 20 1", "SOIL RIGHT STRENGTHS 1", " 120 110 32 0 16 0", "SOIL LEFT STRENGTHS 1",
                    " 120 110 32 15 16 0", "VERTICAL UNIFORM 200 300")
    values = {**radians(results["left"]["layers"][0], "Active"), **radians(results["left"]["layers"][0], "Passive")}
    values = {name.lower(): value for name, value in values.items()}
    values |= {"delta": math.radians(16), "beta": math.atan(1) / 20, "q": 300, "c_a": 15 / 1.1, "c_p": 15 / 1.4}
    row = row_at(results, 0)["left"]
    for name, which in (("a", "active"), ("p", "passive")):
        values[f"K_{name}"] = formulas(4, f"K_{name}")[0](values)
        same(f"04 p_{name} at the surface", formulas(4, f"p_{name}")[0](values), row[which][0 if row[which][0] else 1])
    soil = ("125 115 32 0 0 0",)
    layers = {"one": soil, "two": (soil[0] + " -3 0", *soil)}
    grounds = {"in front, level": (("12",), ("0", " 100 0")), "in front, falling 2 on 100": (("12",), ("0", " 100 -2")),
               "behind, level": (("12", " 100 12"), ("0",)), "neither: both sides by coefficients": (("12",), ("0",))}
    head, *rows = table(4, " Wedge side ")
    assert len(head) == 3
    for place, *told in rows:
        for (count, split), number in zip(layers.items(), told):
            lines = []
            for side, ground in zip(("RIGHT", "LEFT"), grounds[place]):
                lines += [f"SURFACE {side} {len(ground)} 0 {ground[0]}", *ground[1:]]
            for side in ("RIGHT", "LEFT"):
                parted = split if (side == "RIGHT") == place.startswith("behind") or place[0] == "n" else soil
                lines += [f"SOIL {side} STRENGTHS {len(parted)}", *parted]
            results = solve("CONTROL CANTILEVER DESIGN 1.0 1.5", "WALL 12", *lines,
                            "WATER ELEVATIONS 62.4 8 0 0 AUTOMATIC")
            same(f"04 {place}, {count}", float(number), round(results["levels"][0]["penetration"], 2))


def surcharges():
    """Each kind of load alone, on soil of a given coefficient."""
    far, near, straight, endless = formulas(5, "p")

    def pressure(load, depth):
        results = solve("CONTROL CANTILEVER DESIGN 1 1.5", "WALL 20", "SURFACE RIGHT 1 0 20", "SURFACE LEFT 1 0 0",
                        "SOIL BOTH COEFFICIENTS 1", " 120 110 0.3 3", load)
        return row_at(results, 20 - depth)["right"]["active"][0] - 0.3 * 110 * depth

    def piece(depth, x1, p1, x2, p2):
        ends = {"x_1": x1, "x_2": x2, "p_1": p1, "p_2": p2}
        return straight({"A": formulas(5, "A")[0](ends), "B": formulas(5, "B")[0](ends), "z": depth,
                         "beta_1": math.atan(x1 / depth), "beta_2": math.atan(x2 / depth)})

    same("05 line load, far", far({"Q": 800, "x": 12, "z": 7}), pressure("VERTICAL LINE RIGHT 1 12 800", 7))
    same("05 line load, near", near({"Q": 800, "H": 20, "n": 7 / 20}), pressure("VERTICAL LINE RIGHT 1 6 800", 7))
    same("05 strip", piece(9, 4, 300, 10, 300), pressure("VERTICAL STRIP RIGHT 1 4 10 300", 9))
    same("05 triangle", piece(9, 4, 0, 10, 300) + piece(9, 10, 300, 12, 0),
         pressure("VERTICAL TRIANGULAR RIGHT 1 4 10 12 300", 9))
    same("05 ramp", piece(9, 4, 0, 10, 300) + endless({"q": 300, "beta": math.atan(10 / 9)}),
         pressure("VERTICAL RAMP RIGHT 4 10 300", 9))


def water():
    """The gradient of a given bottom, the elevation that belongs to it, the gradient that floats the soil."""
    def wall(mode, walls):  # with a light layer below all walls
        return solve(f"CONTROL CANTILEVER {mode}", f"WALL {walls}", "SURFACE RIGHT 1 0 12", "SURFACE LEFT 1 0 0",
                     "SOIL BOTH STRENGTHS 2", " 125 80 32 0 0 0 -150 0", " 66 60 32 0 0 0",
                     "WATER ELEVATIONS 62.4 8 -1 2 AUTOMATIC")

    results = wall("ANALYSIS", "12 -24 29E6 100")
    values = {"h": 9, "z_s": 2, "z_e": -1, "z_b": -24}
    values["i"] = formulas(6, "i")[0](values)
    same("06 i", values["i"], results["levels"][0]["seepageGradient"])
    same("06 z_end", formulas(6, "z_end")[0](values), -24)
    right, left = (tex.Formula(cell.strip("$")) for cell in table(6, r" \| right side ")[1][1:])
    for row in results["levels"][0]["grid"][-3:-1]:
        given = {**values, "gamma_w": 62.4, "z": row["elev"]}
        same("06 water pressures", right({**given, "z_w": 8}) - left({**given, "z_w": -1}), row["water"][0])
    results = wall("DESIGN 1 1.5", "12")
    same("06 i_c", formulas(6, "i_c")[0]({"gamma_sat": 66, "gamma_w": 62.4}), results["levels"][0]["seepageGradient"])


def statics():
    """Closed forms of dry walls against the searches."""
    text = page(7)
    ground = ("SURFACE LEFT 1 0 0", "SOIL BOTH STRENGTHS 1", " 120 110 32 0 0 0")
    results = solve("CONTROL CANTILEVER DESIGN 1 1", "WALL 12", "SURFACE RIGHT 1 0 12", *ground)
    active, passive = (results["right"]["layers"][0][name] for name in ("ka", "kp"))
    zero = 12 * active / (passive - active)
    depth = results["levels"][0]["penetration"] - zero
    values = {"P": 110 * active * 12 * (12 + zero) / 2, "bary": 0, "y": (12 + 2 * zero) / 3, "Y": depth,
              "p_1": 110 * (passive - active) * depth,
              "p_2": 110 * passive * (12 + zero + depth) - 110 * active * (zero + depth)}
    force, moment = (tex.Formula(side) for side in
                     re.search(r"\$\$ (P - .*?) = 0, \\qquad\s*(P\(.*?) = 0 \$\$", text, re.S).groups())
    values["e"] = (values["p_1"] * depth - 2 * values["P"]) / (values["p_1"] + values["p_2"])
    same("07 sum of forces", 1 + force(values) / values["P"], 1, 1e-9)
    same("07 sum of moments", 1 + moment(values) / (values["P"] * depth), 1, 1e-4)

    results = solve("CONTROL ANCHORED DESIGN 1 1", "WALL 12 9", "SURFACE RIGHT 1 0 12", *ground)
    anchored = tex.Formula(re.search(r"\$\$ (\\tfrac12.*?) = P\\,l \$\$", page(8)).group(1))
    centre = 9 + zero - values["y"]
    values |= {"gamma": 110, "DeltaK": passive - active, "Y": results["levels"][0]["penetration"] - zero, "b": 9 + zero}
    same("08 free earth", anchored(values), values["P"] * centre, 1e-4)


def clay():
    """The stability number, and coefficients of sections in each branch of the tables."""
    results = solve("CONTROL ANCHORED DESIGN 1 1.5", "WALL 14 11", "SURFACE RIGHT 1 0 14", "SURFACE LEFT 1 0 0",
                    "SOIL RIGHT STRENGTHS 1", " 124 114 30 0 0 0", "SOIL LEFT STRENGTHS 1", " 120 115 0 900 0 450")
    same("11 S", formulas(11, "S")[0]({"c_p": 600, "a": 450, "p": 14 * 114}), results["rowe"]["stability"])
    rows = {(float(row[0]), float(row[1])): [float(cell) for cell in row[2:]]
            for row in table(11, r" \$x = \\log_\{10\}\\rho\$ ")[1:]}
    through, straight, own = formulas(11, "r")
    factors = {f"l_{k}": formulas(11, f"l_{k}")[0] for k in range(1, 7)}

    def row_value(place, alpha, S):
        values = {"S": S, **{f"t_{k}": t for k, t in enumerate(rows[place, alpha], 1)}}
        if S >= 2:
            return values["t_6"]
        if S >= 1.5:
            return values["t_6"] if place == -2 and alpha < 0.8 else straight(values)
        if (place, alpha) == (-2.6, 0.8):
            return own(values)
        return through({**values, **{name: factor(values) for name, factor in factors.items()}})

    for cohesion in (600, 1000, 1500, 2000):
        rowe = solve("CONTROL ANCHORED DESIGN 1 1.2", "WALL 34 25", "SURFACE RIGHT 1 0 34", "SURFACE LEFT 1 0 0",
                     "SOIL RIGHT STRENGTHS 1", " 23 20 30 0 0 0", "SOIL LEFT STRENGTHS 1", f" 120 115 0 {cohesion} 0 0",
                     "HORIZONTAL DISTRIBUTED 2 34 4000 0 4000")["rowe"]
        S, alpha = rowe["stability"], rowe["alpha"]
        groups = {f"g_{place:g}": formulas(11, "g")[0](
            {"alpha": alpha, **{f"r_{a}": row_value(place, a, S) for a in (0.8, 0.7, 0.6)}}) for place in (-3.1, -2.6, -2)}
        for section in compared_sections(rowe):
            same(f"11 clay, S {S:.2f}, {section['name']}",
                 formulas(11, "r_clay")[0]({"x": section["logRigidity"], **groups}), section["coefficient"])


def compared_sections(rowe):
    sections = [section for section in rowe["sections"] if section["coefficient"] is not None]
    if not sections:
        FAULTS.append(f"no section within the curves for {rowe['soil']}")
    return sections


def sand():
    rows = {(row[0], row[1]): [float(cell) for cell in row[2:]] for row in table(11, r" \| \$\\alpha\$ \| -?−?3.5")[1:]}
    for top in (26, 60):
        rowe = solve("CONTROL ANCHORED DESIGN 1 1", f"WALL {top} {0.8 * top}", f"SURFACE RIGHT 1 0 {top}",
                     "SURFACE LEFT 1 0 0", "SOIL BOTH STRENGTHS 1", f" 125 115 {20 + top / 4} 0 0 0")["rowe"]
        base = 0.6 if rowe["alpha"] <= 0.7 else 0.7
        share = (rowe["alpha"] - base) * 10
        for section in compared_sections(rowe):
            for density, told in section["coefficient"].items():
                low, high = (rows[density, f"{a:.1f}"] for a in (base, base + 0.1))
                values = {f"r_{k}": a + (b - a) * share for k, (a, b) in enumerate(zip(low, high), 1)}
                level = density == "loose" and section["logRigidity"] > -2
                x = -2 if level else section["logRigidity"]
                same(f"11 {density}, {section['name']}", formulas(11, f"r_{density}")[0]({"x": x, **values}), told)


def main():
    for part in (coefficients, curved, planes, wedge_sides, surcharges, water, statics, clay, sand):
        part()
    print("\n".join(FAULTS) or f"{len(COMPARED)} comparisons")
    sys.exit(bool(FAULTS))


main()
