"""Usage: outputs_test.py PROGRAM EXAMPLES SCHEMA

Holds the report for programs against its schema, and the other renderings against it."""

import csv
import json
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

import jsonschema

PROGRAM, EXAMPLES = sys.argv[1], pathlib.Path(sys.argv[2])
SCHEMA = json.loads(pathlib.Path(sys.argv[3]).read_text(encoding="utf-8"))

PLANE = """[PARAM]
MO:2
MS:0.005
MR:0.000005

[PT]
A,10,1000,1000,
B,10,1000,1200,
C,10,1200,1100,
P,00,,,
{more}
[OBS]
A,P,,128.0625,,
B,P,,{b},,
C,P,,100.002,,
"""
NETWORKS = {
    "passed": PLANE.format(more="", b="128.0625"),
    "failed": PLANE.format(more="", b="129.0625"),
    "left out": PLANE.format(more="Q,00,,,\nR,00,,,\n", b="128.0625") + "P,Q,,50,,\n",
    "nothing placed": "[PARAM]\nMS:0.005\nMR:0\n\n[PT]\nA,10,0,0,\nB,00,,,\n\n[OBS]\nA,B,,10,,\n",
    "no control": "[PT]\nA,00,,,\nB,00,,,\n\n[OBS]\nA,B,,10,1,\n",
}
# Bytes of names, and what they are shown as.
NAMES = [("\u70b91".encode("gbk"), "\u70b91"), ("\u70b92\u00fc".encode(), "\u70b92\u00fc"), (b"\xff\x80x", "??x"),
         (b'"q"', '"q"'), (b"</script>", "</script>"), (b"a\x01\tb", "a\x01\tb"), (b"=1+2", "=1+2")]


def refuse(constant):
    raise ValueError(constant)


def run(text, *options):
    """Exit status, report and standard error of a text, or of a file."""
    with tempfile.TemporaryDirectory() as folder:
        path = text
        if not isinstance(text, pathlib.Path):
            path = pathlib.Path(folder) / "net.txt"
            path.write_bytes(text if isinstance(text, bytes) else text.encode())
        done = subprocess.run([PROGRAM, "adjust", "--json", "-", *options, path], capture_output=True)
        return done.returncode, json.loads(done.stdout, parse_constant=refuse), done.stderr.decode()


class Schema(unittest.TestCase):
    def test_says_what_every_key_is(self):
        jsonschema.Draft202012Validator.check_schema(SCHEMA)

        def walk(part, where):
            for key, value in part.get("properties", {}).items():
                known = SCHEMA["$defs"][value["$ref"].rpartition("/")[2]] if "$ref" in value else value
                self.assertIn("description", known, f"{where}/{key}")
                walk(value, f"{where}/{key}")
                walk(value.get("items", {}), f"{where}/{key}")

        for name, part in {"": SCHEMA, **SCHEMA["$defs"]}.items():
            walk(part, name)

    def test_holds_for_reports(self):
        validator = jsonschema.Draft202012Validator(SCHEMA)
        cases = [(name, text, []) for name, text in NETWORKS.items()]
        for path in sorted(EXAMPLES.glob("[a-z]*.txt")):
            cases += [(path.name, path, []), (path.name + " classic", path, ["--classic"])]
        blunders = EXAMPLES / "blunders.txt"
        cases += [("snooping", blunders, ["--snoop", "0.001"]),
                  ("classic snooping", blunders, ["--snoop", "0.001", "--classic"])]
        for name, text, options in cases:
            with self.subTest(name):
                status, report, _ = run(text, *options)
                for fault in validator.iter_errors(report):
                    self.fail(f"{fault.json_path}: {fault.message}")
                self.assertEqual(status == 0, report["verdict"]["passed"])
                self.assertEqual(bool(report["verdict"]["reasons"]), not report["verdict"]["passed"])

    def test_tells_what_became_of_a_network(self):
        def codes(name):
            return {f["code"] for f in run(NETWORKS[name])[1]["findings"]}

        left_out = run(NETWORKS["left out"])[1]
        self.assertEqual([p["name"] for p in left_out["plane"]["points"]], ["A", "B", "C", "P"])
        self.assertIn(["Q"], [f["names"] for f in left_out["verdict"]["reasons"]])
        self.assertIn("nothing-placed", codes("nothing placed"))
        self.assertEqual(codes("no control"), {"no-control"})
        snooped = run(EXAMPLES / "blunders.txt", "--snoop", "0.001")[1]["plane"]
        self.assertEqual({(t["from"], t["to"]) for t in snooped["taken_out"]},
                         {("T10", "T05"), ("T05", "T09")})
        self.assertEqual({(o["from"], o["to"]) for o in snooped["observations"] if o["removed"]},
                         {("T10", "T05"), ("T05", "T09")})


class Names(unittest.TestCase):
    def test_come_out_as_utf8(self):
        lines = [b"[PT]", b"A,01,,,100"] + [name + b",00,,," for name, _ in NAMES]
        lines += [b"", b"[OBS]"] + [b"A," + name + b",,1000,1," for name, _ in NAMES] * 1
        _, report, _ = run(b"\n".join(lines) + b"\n")
        self.assertEqual([p["name"] for p in report["heights"]["points"]], ["A"] + [s for _, s in NAMES])


class Renderings(unittest.TestCase):
    """That they show the numbers of the report for programs."""

    def test_agree(self):
        for example, options in (("combined", []), ("blunders", ["--snoop", "0.001"]), ("station-file", [])):
            with self.subTest(example), tempfile.TemporaryDirectory() as folder:
                text = pathlib.Path(folder) / "report"
                _, report, _ = run(EXAMPLES / f"{example}.txt", "--lang", "en", "--csv", folder, "--report", text, *options)
                self.check_csv(pathlib.Path(folder), report)
                self.check_text(text.read_text(encoding="utf-8"), report)

    def check_csv(self, folder, report):
        tables = sorted(folder.glob("*.csv"))
        self.assertGreaterEqual(len(tables), 3)
        for path in tables:
            network, _, name = path.stem.partition("-")
            rows = report["closures"] if not name else report[network][name.replace("-", "_")]
            with path.open(encoding="utf-8", newline="") as file:
                read = list(csv.DictReader(file))
            self.assertEqual(len(read), len(rows), path.name)
            for mine, row in zip(read, rows):
                self.assertLessEqual(set(mine), set(row))
                for key, cell in mine.items():
                    value = row[key]
                    if isinstance(value, float):
                        self.assertEqual(float(cell), value, key)
                    else:
                        self.assertEqual(cell, "" if value is None else json.dumps(value).strip('"'), key)

    def check_text(self, text, report):
        for network in ("heights", "plane"):
            for row in report.get(network, {}).get("observations", []):
                angle = row["kind"] in ("direction", "azimuth")
                shown = re.search(rf"^  {row['kind'].replace('_', ' ')} +{row['from']} +{row['to']}  (.*)$", text, re.M)
                cells = re.split(r"  +", shown[1].strip())
                units = [1 if angle else 1000] * 3 + [1, 1, 1] + [1 if angle else 1000] * 2 + [1000]
                keys = ["sigma", "residual", "sigma_adjusted", "redundancy", "w", "tau", "error", "mde", "effect"]
                for key, unit, cell in zip(keys, units, cells[1:3] + cells[4:]):
                    half = 0.0005001 if key == "redundancy" else 0.005001
                    if row[key] is None:
                        self.assertEqual(cell, "-", key)
                    else:
                        self.assertLessEqual(abs(float(cell) - row[key] * unit), half, (key, shown[0]))
                for key, cell in (("observed", cells[0]), ("adjusted", cells[3])):
                    value = float(cell) if not angle else sum(
                        float(part) / unit for part, unit in zip(cell.split(" "), (1, 60, 3600)))
                    self.assertAlmostEqual(value, row[key], delta=1.5e-5 if angle else 5.001e-5)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
