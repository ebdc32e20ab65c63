#!/usr/bin/env python3
"""Writes the figures of a benchmark run (JSON) into docs/performance.md, between its two marks."""
import datetime
import json
import math
import re
import sys

BEGIN, END = "<!-- figures -->\n", "<!-- end of figures -->\n"


class Run:
    def __init__(self, path):
        with open(path, encoding="utf-8") as file:
            data = json.load(file)
        self.cpus = data["context"]["num_cpus"]
        self.rows = {}
        for b in data["benchmarks"]:
            # Without what google-benchmark adds about the number of iterations.
            self.rows[re.sub(r"/(min_time|iterations):[^/]*", "", b["name"])] = b

    def get(self, name, key="P"):
        row = self.rows.get(name, {})
        return None if row.get("error_occurred") else row.get(key)


def processor():
    model, flags = "unknown processor", ""
    try:
        with open("/proc/cpuinfo", encoding="utf-8") as file:
            for line in file:
                key, _, value = line.partition(":")
                model = value.strip() if key.strip() == "model name" else model
                flags = value if key.strip() == "flags" else flags
    except OSError:
        pass
    # Operations a cycle: two multiply-adds of the widest registers.
    return model, 32 if "avx512f" in flags else 16 if "avx2" in flags and "fma" in flags else 0


def number(value, digits=3):
    if value is None:
        return "-"
    if value >= 100:
        return f"{value:.0f}"
    return f"{value:.{digits}g}"


def table(header, rows):
    lines = [header, ["---"] * len(header)] + rows
    return "".join("| " + " | ".join(line) + " |\n" for line in lines) + "\n"


def marks(run):
    def row(work, value, mark, unit="P", name=None):
        if value is None:
            return [work, "failed", f"{number(mark)} {unit}", "no"]
        seconds = f" ({number(value * run.get(name, 'unit'))} s)" if name else ""
        return [work, f"{number(value)} {unit}{seconds}", f"{number(mark)} {unit}",
                "yes" if value <= mark else "**no**"]

    def job(work, name, mark, key="P"):
        return row(work, run.get(name, key), mark, name=name)

    def ratio(first, second, key="P"):
        a, b = run.get(first, key), run.get(second, key)
        return a / b if a and b else None

    plane = "plane, {} points: open, approximate, adjust, every getter"
    return table(["work", "measured", "mark", "reached"], [
        job(plane.format("1 000"), "PlaneShuffled/1000", 2),
        job(plane.format("10 000"), "PlaneShuffled/10000", 25),
        row("the same, memory", run.get("PlaneShuffled/10000", "MB"), 400, "MB"),
        job(plane.format("100 000"), "PlaneShuffled/100000", 400),
        row("the same, memory", run.get("PlaneShuffled/100000", "MB"), 4000, "MB"),
        row("growth of the adjustment from 10 000 to 40 000 points",
            ratio("PlaneShuffled/40000", "PlaneShuffled/10000", "adjust"), 6, "x"),
        job("levelling, 100 000 points: open, closure errors, adjust, every getter",
            "LevellingShuffled/100000", 200),
        job("plane snooping, 10 000 points, 20 blunders found", "PlaneSnooping/10000", 150),
        job("result report of 100 000 points", "Files/100000", 100, "report"),
        row("plane, 50 points, beside the packed matrix alone",
            ratio("AdjustSmall/AsItIs", "AdjustSmall/Packed"), 1, "x"),
        job("with all cores: plane, 10 000 points, whole job", "PlaneShuffled/10000", 8),
        job("plane, 100 000 points, whole job", "PlaneShuffled/100000", 150),
        row("the same, memory", run.get("PlaneShuffled/100000", "MB"), 700, "MB"),
        job("the same on one thread", "PlaneOneThread/100000", 270),
        job("levelling, 100 000 points, with closures", "LevellingShuffled/100000", 90),
        job("snooping by textbook rules, 10 000 points, 20 blunders",
            "PlaneSnoopingTextbook/10000", 30),
        job("snooping by textbook rules, 100 000 points, 199 blunders",
            "PlaneSnoopingTextbook/100000", 2000),
        job("report of 100 000 points", "Files/100000", 40, "report"),
        *([job("a million points", "OnDemandPlaneMillion/1000000", 2500),
           row("the same, memory", run.get("OnDemandPlaneMillion/1000000", "MB"), 7000, "MB")]
          if run.get("OnDemandPlaneMillion/1000000") else []),
    ])


def parts(run, name, columns, size="points"):
    """A row for every size of a benchmark; last the growth, fitted to sizes from 1 000 on."""
    sizes = sorted(int(key.split("/")[1]) for key in run.rows if key.startswith(name + "/"))
    sizes = [n for n in sizes if run.get(f"{name}/{n}") is not None]
    rows = [[f"{n:,}".replace(",", " ")] + [number(run.get(f"{name}/{n}", c)) for c in columns]
            for n in sizes]
    fitted = [n for n in sizes if n >= 1000]
    if len(fitted) > 1:
        exponents = [exponent([(n, run.get(f"{name}/{n}", c)) for n in fitted]) for c in columns]
        rows.append(["growth"] + [f"n^{e:.2f}" for e in exponents])
    return table([size] + columns, rows)


def exponent(pairs):
    """The slope of log(value) on log(n)."""
    xs = [math.log(n) for n, _ in pairs]
    ys = [math.log(max(value, 1e-12)) for _, value in pairs]
    x, y = sum(xs) / len(xs), sum(ys) / len(ys)
    return sum((a - x) * (b - y) for a, b in zip(xs, ys)) / sum((a - x) ** 2 for a in xs)


def figures(run):
    model, operations = processor()
    clock = run.get("Product", "GHz") or 0.0
    units = [row["unit"] for row in run.rows.values() if "unit" in row]
    peak = (f", where {operations} operations a cycle make {clock * operations:.0f} GFlop/s a core"
            if operations else "")
    out = (f"Measured on {datetime.date.today()}, {run.cpus} cores: {model} at {clock:.1f} GHz"
           f"{peak}. P = {min(units):.4f} to {max(units):.4f} s, from benchmark to benchmark.\n\n")
    out += "### Marks\n\n" + marks(run)
    out += ("### Parts\n\nIn P; MB is the most memory held beyond that before the job. The growth is fitted "
            "from 1 000 points on.\n\n")
    job = ["open", "approximate", "adjust", "results", "P", "MB"]
    levelling = ["open", "closures", "adjust", "results", "P", "MB"]
    solver = ["analysis", "factor", "solution", "inverse", "MB"]
    for title, name, columns in [
            ("Plane, points in random order", "PlaneShuffled", job),
            ("Plane, row by row, a corridor of 40 rows from 1 600 points on", "PlaneByRows", job),
            ("Plane, points in random order, on one thread", "PlaneOneThread", job),
            ("Plane, data snooping, a gross error for 500 points", "PlaneSnooping", ["P", "MB"]),
            ("The same by textbook rules", "PlaneSnoopingTextbook", ["P", "MB"]),
            ("Levelling, points in random order", "LevellingShuffled", levelling),
            ("Levelling, row by row", "LevellingByRows", levelling),
            ("Files of the plane network", "Files", ["open", "save", "report"]),
            ("Sparse solver alone, one of each", "Solver", solver)]:
        out += f"{title}:\n\n" + parts(run, name, columns)
    out += "Import of a field book in GSI-16:\n\n" + parts(run, "Import", ["read", "reduce", "MB"], "lines")
    out += speed(run)
    if run.get("OnDemandPlaneMillion/1000000"):
        out += "A million points:\n\n" + parts(run, "OnDemandPlaneMillion", job)
    return out


def speed(run):
    rows = []
    for n in (1000, 10000, 40000, 100000):
        row = [f"{n:,}".replace(",", " ")]
        for part in ("factor", "inverse"):
            row += [number(run.get(f"Solver/{n}", f"{part} {unit}")) for unit in ("GFlop", "GFlop/s")]
        rows.append(row)
    header = ["points", "factor, GFlop", "GFlop/s", "inverse, GFlop", "GFlop/s"]
    product = number(run.get("Product", "GFlop/s"))
    return (f"Speed of the arithmetic; the dense product alone reaches {product} GFlop/s:\n\n"
            + table(header, rows))


def main():
    source, page = sys.argv[1:3]
    with open(page, encoding="utf-8") as file:
        text = file.read()
    head, rest = text.split(BEGIN)
    tail = rest.split(END)[1]
    with open(page, "w", encoding="utf-8") as file:
        file.write(head + BEGIN + "\n" + figures(Run(source)) + END + tail)


main()
