"""Usage: independent_test.py PROGRAM EXAMPLES

Derives the statistics of a report anew, from the observations of the file and the adjusted values of the
report alone: dense normal equations, and the definitions of the tests.  Formulas: W. Baarda, A testing
procedure for use in geodetic networks; A. J. Pope, The statistics of residuals."""

import json
import math
import pathlib
import subprocess
import sys
import unittest

PROGRAM, EXAMPLES = sys.argv[1], pathlib.Path(sys.argv[2])
RHO = 180 * 3600 / math.pi
PAIRS = [("T01", "T21"), ("K1", "T13")]  # not observed; one with a control point


def degrees(text):
    sign, value = (-1, text[1:]) if text.startswith("-") else (1, text)
    whole, _, rest = value.partition(".")
    rest = rest.ljust(5, "0")
    return sign * (int(whole) + int(rest[:2]) / 60 + float(rest[2:4] + "." + rest[4:]) / 3600)


def sections(path):
    found, name = {}, None
    for line in path.read_text().splitlines():
        if line.startswith("["):
            name = line
        elif line:
            found.setdefault(name, []).append(line.split(":" if name == "[PARAM]" else ","))
    return found


def inverse(matrix):
    n = len(matrix)
    rows = [row + [float(i == k) for k in range(n)] for i, row in enumerate(matrix)]
    for i in range(n):
        best = max(range(i, n), key=lambda k: abs(rows[k][i]))
        rows[i], rows[best] = rows[best], rows[i]
        pivot = rows[i][i]
        rows[i] = [value / pivot for value in rows[i]]
        for k in range(n):
            if k != i and rows[k][i] != 0:
                factor = rows[k][i]
                rows[k] = [a - factor * b for a, b in zip(rows[k], rows[i])]
    return [row[n:] for row in rows]


def chi_square(x, freedom):
    """The distribution function, in closed form."""
    half, total = x / 2, 0.0
    start = 0 if freedom % 2 == 0 else 0.5
    for i in range(freedom // 2):
        total += math.exp((i + start) * math.log(half) - half - math.lgamma(i + start + 1))
    return 1 - total if freedom % 2 == 0 else math.erf(math.sqrt(half)) - total


class Network:
    """Rows of an adjustment, each divided by its a-priori standard error."""

    def __init__(self, control):
        self.control, self.columns, self.rows, self.observations = control, {}, [], []

    def add(self, key, sigma, residual, terms):
        row = {self.columns.setdefault(u, len(self.columns)): c / sigma
               for u, c in terms if u[0] not in self.control}
        held = {u: c / sigma for u, c in terms if u[0] in self.control}
        self.rows.append(row)
        self.observations.append((key, sigma, residual, held))

    def solve(self):
        n = len(self.columns)
        normal = [[0.0] * n for _ in range(n)]
        for row in self.rows:
            for i, a in row.items():
                for k, b in row.items():
                    normal[i][k] += a * b
        self.q = inverse(normal)

    def shift(self, row):
        """What an error of one a-priori standard error does to the unknowns."""
        return [sum(line[k] * c for k, c in row.items()) for line in self.q]

    def cofactor(self, first, second):
        """Of two sums of unknowns; those of control are 0."""
        a, b = ({self.columns[u]: c for u, c in terms if u in self.columns} for terms in (first, second))
        return sum(self.q[i][k] * x * y for i, x in a.items() for k, y in b.items())


def plane(text, report):
    parameters = dict(text["[PARAM]"])
    mo, ms, mr = (float(parameters[key]) for key in ("MO", "MS", "MR"))
    points = {p["name"]: p for p in report["plane"]["points"]}
    net = Network({name for name, p in points.items() if p["control"]})
    turns = {}

    def line(a, b):
        dx, dy = (points[b][c] - points[a][c] for c in "xy")
        return math.hypot(dx, dy), math.atan2(dy, dx), dx, dy

    def angle_terms(a, b):
        s, _, dx, dy = line(a, b)
        return [((a, "x"), dy / s**2 * RHO), ((a, "y"), -dx / s**2 * RHO),
                ((b, "x"), -dy / s**2 * RHO), ((b, "y"), dx / s**2 * RHO)]

    def turn(radians):
        return math.remainder(radians, 2 * math.pi)

    fields = [(line_ + [""] * 6)[:6] for line_ in text["[OBS]"]]
    for a, b, direction, *_ in fields:
        if direction:
            turns.setdefault(a, []).append(turn(line(a, b)[1] - math.radians(degrees(direction))))
    orientations = {a: all_[0] + sum(turn(t - all_[0]) for t in all_) / len(all_)
                    for a, all_ in turns.items()}
    for a, b, direction, distance, _, azimuth in fields:
        s, az, dx, dy = line(a, b)
        if direction:
            v = turn(az - math.radians(degrees(direction)) - orientations[a]) * RHO
            net.add(("direction", a, b), mo, v, angle_terms(a, b) + [(("orientation", a), -1.0)])
        if distance:
            length = float(distance)
            net.add(("distance", a, b), ms + mr * length, s - length,
                    [((a, "x"), -dx / s), ((a, "y"), -dy / s), ((b, "x"), dx / s), ((b, "y"), dy / s)])
        if azimuth:
            net.add(("azimuth", a, b), mo, turn(az - math.radians(degrees(azimuth))) * RHO,
                    angle_terms(a, b))
    return net


def heights(text, report):
    points = {p["name"]: p for p in report["heights"]["points"]}
    net = Network({name for name, p in points.items() if p["control"]})
    for a, b, _, length, difference, *_ in ((f + [""] * 6)[:6] for f in text["[OBS]"]):
        if difference:
            sigma = report["parameters"]["level_sigma"] * math.sqrt(float(length) / 1000)
            v = points[b]["h"] - points[a]["h"] - float(difference)
            net.add(("height_difference", a, b), sigma, v, [((a, "h"), -1.0), ((b, "h"), 1.0)])
    return net


class Statistics(unittest.TestCase):
    def near(self, actual, expected, relative, what):
        self.assertIsNotNone(actual, what)
        self.assertLessEqual(abs(actual - expected), relative * max(abs(expected), 1e-3), what)

    def check(self, net, part):
        net.solve()
        redundancy = len(net.rows) - len(net.columns)
        self.assertEqual(part["redundancy"], redundancy)
        told = {(o["kind"], o["from"], o["to"]): o for o in part["observations"]}
        self.assertEqual(len(told), len(net.rows))
        gradient = [0.0] * len(net.columns)
        pvv = 0.0
        for row, (_, sigma, v, _) in zip(net.rows, net.observations):
            pvv += (v / sigma) ** 2
            for k, c in row.items():
                gradient[k] += c * v / sigma
        for k, g in enumerate(gradient):  # the normal equations are satisfied
            self.assertLess(abs(g) * math.sqrt(net.q[k][k]), 0.01)
        scale = math.sqrt(pvv / redundancy)
        self.near(part["m0"] / part["m0_apriori"], scale, 1e-6, "m0")
        total, tested = 0.0, 0
        for row, (key, sigma, v, _) in zip(net.rows, net.observations):
            o, moved = told[key], net.shift(row)
            r = 1 - sum(c * moved[k] for k, c in row.items())
            total += o["redundancy"]
            tested += o["checked"] == "well"
            self.near(o["redundancy"], r, 1e-6, key)
            self.assertLess(abs(o["residual"] - v), 1e-4 * sigma, key)
            self.near(o["sigma"], sigma, 1e-12, key)
            adjusted = scale * sigma * math.sqrt(max(1 - r, 0))
            self.assertLess(abs(o["sigma_adjusted"] - adjusted), 1e-4 * sigma, key)
            self.assertEqual(o["checked"], "not" if r < 0.01 else "weak" if r < 0.05 else "well")
            if r < 0.01:
                continue
            self.assertLess(abs(o["w"] - v / sigma / math.sqrt(r)), 1e-3, key)
            self.assertLess(abs(o["tau"] - o["w"] / scale), 1e-9, key)
            self.assertLess(abs(o["error"] + v / r), 1e-3 * sigma, key)
            self.near(o["mde"], 4.13 * sigma / math.sqrt(r), 1e-5, key)
            ends = [math.hypot(*(moved[net.columns[(name, c)]] for c in "xyh" if (name, c) in net.columns))
                    for name in key[1:]]
            self.near(o["effect"], max(ends) * o["mde"] / sigma, 1e-5, key)
        self.near(total, redundancy, 1e-7, "sum of redundancy numbers")
        self.near(math.erf(part["critical_w"] / math.sqrt(2)) ** tested, 0.95, 1e-8, "critical w")
        test = part["chi2_test"]
        self.near(test["statistic"], pvv, 1e-6, "[pvv]")
        self.near(chi_square(test["lower"], redundancy), 0.025, 1e-6, "lower bound")
        self.near(chi_square(test["upper"], redundancy), 0.975, 1e-6, "upper bound")
        self.assertEqual(test["passed"], test["lower"] <= pvv <= test["upper"])
        for group in part["groups"]:
            mine = [(v / sigma) ** 2 for key, sigma, v, _ in net.observations if key[0] == group["kind"]]
            self.assertEqual(group["count"], len(mine))
            self.near(group["pvv"], sum(mine), 1e-6, "[pvv] of a kind")
        self.near(sum(group["redundancy"] for group in part["groups"]), redundancy, 1e-7, "groups")
        self.check_control(net, part)
        return scale

    def check_control(self, net, part):
        """A coordinate of control as one more unknown."""
        for control in part["control"]:
            unknown = (control["name"], control["coordinate"].lower())
            g = q = 0.0
            mixed = [0.0] * len(net.columns)
            for row, (_, sigma, v, held) in zip(net.rows, net.observations):
                c = held.get(unknown, 0.0)
                g += c * v / sigma
                q += c * c
                for k, a in row.items():
                    mixed[k] += a * c
            q -= sum(mixed[i] * sum(x * y for x, y in zip(net.q[i], mixed)) for i in range(len(mixed)))
            self.assertLess(abs(control["w"] + g / math.sqrt(q)), 1e-3, control)
            self.assertLess(abs(control["correction"] + g / q), 1e-3 / math.sqrt(q), control)

    def check_ellipse(self, row, net, x, y, scale, factor):
        sxx, syy, sxy = (scale**2 * net.cofactor(*pair) for pair in ((x, x), (y, y), (x, y)))
        root = math.hypot(sxx - syy, 2 * sxy)
        for key, value in (("e", (sxx + syy + root) / 2), ("f", (sxx + syy - root) / 2)):
            self.near(row[key], math.sqrt(value), 1e-5, row)
            self.near(row[key + "95"], math.sqrt(value) * factor, 1e-5, row)
        t = math.radians(row["t"])  # the variance is greatest in this direction
        along = sxx * math.cos(t) ** 2 + syy * math.sin(t) ** 2 + sxy * math.sin(2 * t)
        self.near(along, row["e"] ** 2, 1e-5, row)
        return sxx, syy

    def test_plane(self):
        for example, pairs in (("triangulation", PAIRS), ("combined", [])):
            with self.subTest(example):
                options = [word for pair in pairs for word in ("--between", *pair)]
                report = adjust(EXAMPLES / f"{example}.txt", *options)
                part = report["plane"]
                net = plane(sections(EXAMPLES / f"{example}.txt"), report)
                scale = self.check(net, part)
                r = part["redundancy"]
                factor = math.sqrt(r * (0.05 ** (-2 / r) - 1))  # 2 F(0.95; 2, r) in closed form
                self.near(part["factor95"], factor, 1e-8, "factor of 95 %")
                for p in part["points"]:
                    if p["control"]:
                        self.assertEqual([p[key] for key in ("mx", "my", "mp", "e", "f")], [0] * 5)
                        continue
                    name = p["name"]
                    sxx, syy = self.check_ellipse(p, net, [((name, "x"), 1)], [((name, "y"), 1)], scale, factor)
                    self.near(p["mx"], math.sqrt(sxx), 1e-5, name)
                    self.near(p["my"], math.sqrt(syy), 1e-5, name)
                    self.near(p["mp"], math.sqrt(sxx + syy), 1e-5, name)
                ellipses = {(e["from"], e["to"]): e for e in part["relative_ellipses"]}
                self.assertEqual(len(ellipses), len(part["relative_ellipses"]))
                self.assertLessEqual(set(pairs), set(ellipses))
                for (a, b), e in ellipses.items():
                    x, y = ([((b, c), 1), ((a, c), -1)] for c in "xy")
                    self.check_ellipse(e, net, x, y, scale, factor)

    def test_heights(self):
        for example in ("levelling", "combined"):
            with self.subTest(example):
                report = adjust(EXAMPLES / f"{example}.txt", "--level-sigma", "1.5")
                part = report["heights"]
                net = heights(sections(EXAMPLES / f"{example}.txt"), report)
                scale = self.check(net, part)
                for p in part["points"]:
                    h = [((p["name"], "h"), 1)]
                    self.near(p["mh"], scale * math.sqrt(net.cofactor(h, h)), 1e-5, p)
                    self.near(p["h95"], p["mh"] * part["factor95"], 1e-9, p)


def adjust(path, *options):
    command = [PROGRAM, "adjust", "--no-verdict", "--json", "-", *options, path]
    return json.loads(subprocess.run(command, stdout=subprocess.PIPE, check=True).stdout)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
