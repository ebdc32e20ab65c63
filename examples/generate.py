#!/usr/bin/env python3
"""Makes the example networks: a known truth plus normally distributed noise.

    examples/generate.py            writes the files beside this script
    examples/generate.py --check    says whether the files are what it would write

The truth of each network is its table below: name, point type, X, Y (metres, north and east) and H.
A file shows the truth of its control points only.  README.md tells what each example is for.
"""

import math
import random
import sys
from dataclasses import dataclass, field
from pathlib import Path

TWO_PI = 2 * math.pi
RHO = 3600 * math.degrees(1)  # arc-seconds per radian

# ---- Truths ----

LEVELLING = """
BM1 1 0 0 187.4120    101 0 0 0 191.2264    102 0 0 0 196.9087    103 0 0 0 203.3371
104 0 0 0 208.1509    BM2 1 0 0 214.6853    105 0 0 0 184.9018    106 0 0 0 189.5532
107 0 0 0 198.0376    108 0 0 0 206.7745    109 0 0 0 212.3198    110 0 0 0 219.8840
111 0 0 0 181.2207    112 0 0 0 193.6671    113 0 0 0 201.4593    114 0 0 0 211.0066
115 0 0 0 217.5128    116 0 0 0 226.1349    117 0 0 0 186.0415    118 0 0 0 195.7283
119 0 0 0 207.3904    120 0 0 0 215.8476    121 0 0 0 223.0931    122 0 0 0 231.6620
BM3 1 0 0 190.5337    123 0 0 0 199.8759    124 0 0 0 210.2182    125 0 0 0 221.7414
126 0 0 0 229.3047    BM4 1 0 0 238.9565
"""
LEVELLING_ROUTES = """
BM1 101 102 103 104 BM2
105 106 107 108 109 110
111 112 113 114 115 116
117 118 119 120 121 122
BM3 123 124 125 126 BM4
BM1 105 111 117 BM3
101 106 112 118 123
102 107 113 119 124
103 108 114 120 125
104 109 115 121 126
BM2 110 116 122 BM4
BM1 106
119 125
115 BM4
"""

CONNECTING = """
P11 10 5331102.447 4471846.215 0    P12 10 5331480.000 4472310.000 0
T1 0 5331573.925 4472427.480 0      T2 0 5331697.687 4472576.442 0
T3 0 5331794.614 4472688.843 0      T4 0 5331961.626 4472764.672 0
T5 0 5332169.218 4472756.335 0      T6 0 5332348.494 4472811.191 0
T7 0 5332450.352 4472877.659 0      T8 0 5332571.661 4472970.824 0
P21 10 5332689.776 4472996.233 0    P22 10 5333214.308 4473411.870 0
"""
CONNECTING_SIDES = "P12 T1 T2 T3 T4 T5 T6 T7 T8 P21"
CONNECTING_BACK_SIGHTS = ["P12 P11", "P21 P22"]

CLOSED = """
M1 10 5335160.084 4469020.337 0     M2 10 5335410.220 4469377.905 0
V1 0 5335489.514 4469542.871 0      V2 0 5335402.660 4469724.118 0
V3 0 5335243.937 4469795.402 0      V4 0 5335068.291 4469731.756 0
V5 0 5335021.748 4469560.030 0      V6 0 5335102.875 4469413.664 0
V7 0 5335259.406 4469351.288 0
"""
CLOSED_SIDES = "M2 V1 V2 V3 V4 V5 V6 V7 M2"
CLOSED_BACK_SIGHT = "M2 M1"

UNORIENTED = """
G1 10 5338204.716 4474310.582 0     U1 0 5338316.040 4474407.129 0
U2 0 5338370.925 4474562.377 0      U3 0 5338502.183 4474641.806 0
U4 0 5338541.660 4474809.415 0      U5 0 5338659.907 4474890.238 0
G2 10 5338725.349 4475037.961 0
"""
UNORIENTED_SIDES = "G1 U1 U2 U3 U4 U5 G2"

TRIANGULATION = """
K1 10 5344081.115 4468059.579 0     T01 0 5344194.828 4469692.017 0
T02 0 5344158.333 4471178.734 0     T03 0 5343689.143 4472377.311 0
K3 10 5344292.615 4473998.323 0     T04 0 5342814.594 4467644.716 0
T05 0 5342529.586 4469232.738 0     T06 0 5342578.882 4470948.801 0
SpireN 0 5342228.655 4472213.042 0  T08 0 5342404.458 4474174.788 0
K2 10 5341275.379 4467675.339 0     T09 0 5341296.117 4469161.586 0
T10 0 5341177.519 4470653.621 0     T11 0 5340771.171 4472645.127 0
K4 10 5340908.241 4473712.218 0     T12 0 5339968.398 4468145.789 0
T13 0 5339510.941 4469704.575 0     SpireS 0 5339675.887 4471017.368 0
T15 0 5339455.154 4472691.044 0     T16 0 5339775.824 4474207.932 0
T17 0 5338459.870 4467767.201 0     T18 0 5338108.385 4469179.531 0
T19 0 5337966.163 4470612.992 0     T20 0 5338068.897 4472468.053 0
T21 0 5337872.233 4474017.437 0
"""
TRIANGULATION_LONG_SIGHTS = ["K1 K2", "K3 K4"]  # control points that see each other
TRIANGULATION_REACH = 2300.0  # metres; points nearer than this see each other
TRIANGULATION_AZIMUTH = "K1 K2"
BLUNDERED_DIRECTION = ("T10", "T05")
BLUNDERED_DISTANCE = ("T05", "T09")

TRILATERATION = """
E1 10 5341830.552 4461207.318 0     E2 10 5341902.147 4462515.904 0
E3 10 5340655.380 4461940.273 0     W1 0 5341915.008 4461861.440 0
W2 0 5341414.692 4461322.775 0      W3 0 5341377.126 4461905.931 0
W4 0 5341459.338 4462441.087 0      W5 0 5340980.461 4461410.662 0
W6 0 5341012.905 4462357.519 0      W7 0 5340586.714 4461502.128 0
W8 0 5340702.233 4462433.840 0      W9 0 5341151.870 4461688.306 0
"""
TRILATERATION_REACH = 1000.0  # every new point has three distances to points placed before it

COMBINED = """
C1 11 5346745.374 4459196.033 431.4680   N01 0 5346879.568 4459571.989 410.7731
N02 0 5346804.446 4460099.609 401.8904   C2 11 5346844.712 4460553.501 428.9492
N03 0 5346286.594 4459230.244 401.2823   N04 0 5346341.333 4459619.949 431.0511
N05 0 5346341.193 4460126.356 417.6256   N06 0 5346336.241 4460467.024 404.3897
N07 0 5345864.075 4459086.796 422.8103   N08 0 5346029.411 4459539.075 399.7485
N09 0 5346027.606 4460056.036 412.6128   N10 0 5345892.721 4460516.913 427.7470
C3 11 5345502.020 4459335.916 400.0050   N11 0 5345584.892 4459715.890 415.7685
C4 11 5345570.917 4460183.503 424.3401
"""
COMBINED_LONG_SIGHTS = ["C1 C2", "C3 C4"]
COMBINED_REACH = 650.0
COMBINED_LEVELLED = """
C1 N01 N02 C2
N03 N04 N05 N06
N07 N08 N09 N10
C3 N11 C4
C1 N03 N07 C3
N01 N04 N08 N11
N02 N05 N09 C4
C2 N06 N10
"""

PILLARS = """
A 11 5329410.200 4480115.400 512.3300    B 11 5329402.950 4480398.750 509.8120
C 11 5329196.300 4480412.600 486.4070    D 11 5329187.850 4480108.300 488.9510
1 0 5329330.415 4480170.882 501.2174     2 0 5329345.093 4480262.340 503.6640
3 0 5329322.760 4480349.115 499.0853     4 0 5329248.327 4480301.694 492.5418
5 0 5329256.641 4480201.208 493.8702
"""
PILLARS_REACH = 250.0
PILLARS_LONG_SIGHTS = ["A B"]
PILLARS_LEVELLED = "A 1 2 3 B 2 5 4 C 3\nD 5"


# ---- Networks and their observation ----


@dataclass
class Point:
    type: int
    x: float
    y: float
    h: float


@dataclass
class Network:
    """The truth, and the fields of the observation lines as text; an absent one is empty."""

    points: dict[str, Point]
    param: dict[str, str]
    seed: int
    format: int = 0
    sights: dict[tuple[str, str], dict[str, str]] = field(default_factory=dict)

    def __post_init__(self):
        self.random = random.Random(self.seed)

    def noise(self, sigma):
        """Normally distributed, by the transformation of Box and Muller.  Only random() gives the
        same numbers in every version of Python, so nothing else of the module is used."""
        radius = math.sqrt(-2 * math.log(1 - self.random.random()))
        return sigma * radius * math.cos(TWO_PI * self.random.random())

    def observe(self, station, target, what, text):
        self.sights.setdefault((station, target), {})[what] = text

    def azimuth(self, a, b):
        a, b = self.points[a], self.points[b]
        return math.atan2(b.y - a.y, b.x - a.x) % TWO_PI

    def length(self, a, b):
        a, b = self.points[a], self.points[b]
        return math.hypot(b.x - a.x, b.y - a.y)


def parse_points(table):
    words = table.split()
    rows = [words[i : i + 5] for i in range(0, len(words), 5)]
    return {name: Point(int(t), float(x), float(y), float(h)) for name, t, x, y, h in rows}


def lines_of(routes):
    """The lines (pairs of names) along routes, one route a row."""
    stops = [row.split() for row in routes.strip().splitlines()]
    return [pair for route in stops for pair in zip(route, route[1:])]


def lines_within(net, reach):
    names = sorted(net.points)
    pairs = [(a, b) for a in names for b in names if a < b]
    return [(a, b) for a, b in pairs if net.length(a, b) < reach]


def dms(angle):
    """Radians as dd.mmss with tenths of seconds, in [0, 360) degrees."""
    tenths = round(angle * RHO * 10) % (360 * 36000)
    return f"{tenths // 36000}.{tenths // 600 % 60:02d}{tenths % 600:03d}"


def add_directions(net, lines, unoccupied=()):
    """Both ways; every station has its own zero of the circle.

    The orientation (azimuth minus reading) stays clear of 0, where noise would throw it across the
    full circle: the adjustment does not bring direction differences back into +-180 degrees.
    """
    both_ways = sorted({*lines, *((b, a) for a, b in lines)})
    orientation = {}
    for station, target in both_ways:
        if station in unoccupied:
            continue
        if station not in orientation:
            orientation[station] = math.radians(20 + 320 * net.random.random())
        error = net.noise(float(net.param["MO"]) / RHO)
        reading = net.azimuth(station, target) + error - orientation[station]
        net.observe(station, target, "direction", dms(reading))


def add_distances(net, lines):
    constant, ratio = float(net.param["MS"]), float(net.param["MR"])
    for station, target in lines:
        true = net.length(station, target)
        net.observe(station, target, "distance", f"{true + net.noise(constant + ratio * true):.4f}")


def add_height_difference(net, station, target, length, sigma):
    """Sigma is that of one kilometre, in metres."""
    true = net.points[target].h - net.points[station].h
    measured = true + net.noise(sigma * math.sqrt(length / 1000))
    net.observe(station, target, "height", f"{measured:.4f}")


# ---- The examples ----

TWO_SECONDS_FIVE_MM = {"MO": "2", "MS": "0.005", "MR": "0.000005"}


def levelling():
    net = Network(parse_points(LEVELLING), {"Lvl1": "3"}, seed=1)
    for station, target in lines_of(LEVELLING_ROUTES):
        length = round(400 + 2600 * net.random.random(), -1)
        net.observe(station, target, "distance", f"{length:.0f}")
        add_height_difference(net, station, target, length, sigma=0.0015)
    return net


def traverse(table, route, back_sights, unoccupied, seed, format=0):
    """Directions and distances both ways along the route, and back sights."""
    param = {"MO": "3", "MS": "0.003", "MR": "0.000002"}
    net = Network(parse_points(table), param, seed, format)
    sides = lines_of(route)
    add_directions(net, sides + [tuple(row.split()) for row in back_sights], unoccupied)
    both_ways = sides + [(b, a) for a, b in sides]
    add_distances(net, [line for line in both_ways if line in net.sights])
    return net


def connecting_traverse():
    return traverse(CONNECTING, CONNECTING_SIDES, CONNECTING_BACK_SIGHTS, ("P11", "P22"), 2)


def closed_traverse():
    return traverse(CLOSED, CLOSED_SIDES, [CLOSED_BACK_SIGHT], ("M1",), 8)


def unoriented_traverse():
    return traverse(UNORIENTED, UNORIENTED_SIDES, [], ("G1", "G2"), 9, format=1)


def triangulation():
    net = Network(parse_points(TRIANGULATION), TWO_SECONDS_FIVE_MM, seed=3)
    long_sights = [tuple(row.split()) for row in TRIANGULATION_LONG_SIGHTS]
    lines = lines_within(net, TRIANGULATION_REACH)
    spires = ("SpireN", "SpireS")
    add_directions(net, lines + long_sights, unoccupied=spires)
    add_distances(net, [line for line in lines if not set(line) & set(spires)])
    a, b = TRIANGULATION_AZIMUTH.split()
    error = net.noise(float(net.param["MO"]) / RHO)
    net.observe(a, b, "azimuth", dms(net.azimuth(a, b) + error))
    return net


def plane_and_heights(table, param, seed, reach, long_sights, levelled):
    """Directions both ways, one distance a line, height differences beside some of them."""
    net = Network(parse_points(table), param, seed)
    lines = lines_within(net, reach)
    add_directions(net, lines + [tuple(row.split()) for row in long_sights])
    add_distances(net, lines)
    for line in sorted(tuple(sorted(pair)) for pair in lines_of(levelled)):
        add_height_difference(net, *line, net.length(*line), sigma=0.002)
    return net


def trilateration():
    net = Network(parse_points(TRILATERATION), {"MO": "2", "MS": "0.003", "MR": "0.000002"}, 10, 3)
    add_distances(net, lines_within(net, TRILATERATION_REACH))
    return net


def combined():
    return plane_and_heights(
        COMBINED, TWO_SECONDS_FIVE_MM, 4, COMBINED_REACH, COMBINED_LONG_SIGHTS, COMBINED_LEVELLED
    )


def pillars():
    param = {"MO": "1", "MS": "0.001", "MR": "0.000001"}
    return plane_and_heights(
        PILLARS, param, 7, PILLARS_REACH, PILLARS_LONG_SIGHTS, PILLARS_LEVELLED
    )


def blunders():
    """The triangulation with two gross errors: a direction 40" too large, a distance 60 mm."""
    net = triangulation()
    direction, distance = net.sights[BLUNDERED_DIRECTION], net.sights[BLUNDERED_DISTANCE]
    whole, fraction = direction["direction"].split(".")
    angle = int(whole) + int(fraction[:2]) / 60 + int(fraction[2:]) / 36000
    direction["direction"] = dms(math.radians(angle) + 40 / RHO)
    distance["distance"] = f"{float(distance['distance']) + 0.060:.4f}"
    return net


# ---- Files ----

FIELDS = ("direction", "distance", "height", "azimuth")


def point_fields(point):
    """Coordinates of control only; what is not known stays empty."""
    plane = [f"{point.x:.3f}", f"{point.y:.3f}"] if point.type >= 10 else ["", ""]
    return plane + [f"{point.h:.4f}" if point.type % 10 == 1 else ""]


def project_file(net):
    param = {"MO": "2.5", "MS": "0.005", "MR": "0.000005", "Lvl1": "4", "Lvl2": "4"} | net.param
    rows = ["[PARAM]", *(f"{key}:{value}" for key, value in param.items()), "Limit:3"]
    rows.append(f"format:{net.format}")
    rows += ["", "[PT]"]
    for name, point in net.points.items():
        rows.append(",".join([name, f"{point.type:02d}", *point_fields(point)]))
    rows += ["", "[OBS]"]
    for (station, target), seen in sorted(net.sights.items()):
        rows.append(",".join([station, target, *(seen.get(what, "") for what in FIELDS)]))
    return "\n".join(rows) + "\n"


def station_file(net):
    rows = ["[PARA]", *(f"{key}:{value}" for key, value in net.param.items())]
    rows += ["Level1:4", "Level:4", "Limit:3", f"Format:{net.format}", "", "[STATION]"]
    for name, point in net.points.items():
        rows.append(",".join([name, f"{point.type:02d}", *point_fields(point)]))
    rows += ["", "[OBSER]"]
    for (station, target), seen in sorted(net.sights.items()):
        # An empty last field would be dropped from the line and the line refused.
        rows.append(",".join([station, target, *(seen.get(what, "0") for what in FIELDS[:3])]))
    return "\n".join(rows) + "\n"


def main():
    files = {
        "levelling.txt": project_file(levelling()),
        "connecting-traverse.txt": project_file(connecting_traverse()),
        "closed-traverse.txt": project_file(closed_traverse()),
        "unoriented-traverse.txt": project_file(unoriented_traverse()),
        "triangulation.txt": project_file(triangulation()),
        "blunders.txt": project_file(blunders()),
        "combined.txt": project_file(combined()),
        "station-file.txt": station_file(pillars()),
        "trilateration.txt": station_file(trilateration()),
    }
    folder = Path(__file__).parent
    differing = []
    for name, text in files.items():
        path = folder / name
        if "--check" not in sys.argv[1:]:
            path.write_bytes(text.encode())
        elif not path.exists() or path.read_bytes() != text.encode():
            differing.append(name)
    if differing:
        sys.exit("differs from what this script writes: " + ", ".join(differing))


if __name__ == "__main__":
    main()
