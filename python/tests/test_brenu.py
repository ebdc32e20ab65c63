"""The package on small jobs; BRENU_LIBRARY names the library."""

import ctypes
import os
import pathlib
import pickle
import tempfile
import unittest

import brenu
from brenu import Job, ObsData, PointData

# P half way between two bench marks, 4 mm of misclosure.
LEVELLING = b"[PT]\nA,01,,,100\nP,00,,,\nB,01,,,101\n\n[OBS]\nA,P,,1000,0.504,\nP,B,,1000,0.5,\n"


class Levelling(unittest.TestCase):
    def setUp(self):
        self.job = Job()
        self.addCleanup(self.job.close)
        self.assertEqual(self.job.read(LEVELLING), brenu.FileKind.PROJECT)

    def test_results(self):
        self.assertIsNone(self.job.get_figures(brenu.Network.HEIGHTS))
        self.job.least_square_adj()
        self.assertAlmostEqual(self.job.get_vertical_result(1).height, 100.502, 9)
        line = self.job.get_height_obs_result(0, "P")
        self.assertAlmostEqual(line.residual, -0.002, 9)
        self.assertAlmostEqual(line.weight, 1.0, 9)
        self.assertEqual(self.job.get_figures(brenu.Network.HEIGHTS).redundancy, 1)
        self.job.calculate_close_error()
        record = self.job.get_close_error(0)
        self.assertEqual(set(record.route.split(" - ")), {"A", "P", "B"})
        self.assertAlmostEqual(abs(record.height_misclosure), 4.0, 6)
        self.assertIs(record.mark, True)

    def test_report(self):
        self.job.least_square_adj()
        report = self.job.report("job.txt")
        # Two lines of 1 mm each, 4 mm apart: each has v = -2 mm, r = 1/2 and w = -2.83.
        self.assertEqual([o.station for o in report.heights.observations], ["A", "P"])
        for observation in report.heights.observations:
            self.assertAlmostEqual(observation.residual, -0.002, 9)
            self.assertAlmostEqual(observation.redundancy, 0.5, 6)
            self.assertAlmostEqual(observation.w, -8.0**0.5, 5)
        self.assertFalse(report.verdict.passed)
        self.assertAlmostEqual(report.heights.chi2_test.statistic, 8.0, 9)
        self.assertEqual(len(report.to_rows("heights", "points")), 3)
        self.assertIn("job.txt", report.to_html())
        self.assertTrue(report.to_svg().startswith("<?xml"))
        self.assertIn("\u672a\u901a\u8fc7", self.job.report(chinese=True).to_text())

    def test_rules_and_data_snooping(self):
        self.job.set_obs_data(0, "P", ObsData(1000.0, -1.0, 0.54))
        self.job.data_snooping(test=brenu.Test.TAU, critical=0.9)
        [out] = self.job.taken_out
        self.assertEqual(out.observation.kind, brenu.ObservationKind.HEIGHT_DIFFERENCE)
        self.assertAlmostEqual(out.test_value, 1.0, 6)
        self.assertEqual([o.kind for o in out.alternatives], [out.observation.kind])
        self.assertEqual(self.job.get_untested_count(brenu.Network.HEIGHTS), 1)
        self.job.rules = brenu.Rules.CLASSIC
        self.job.data_snooping()
        self.assertEqual(self.job.taken_out, [])
        self.assertIsNone(self.job.get_control_fit(0))

    def test_records_come_back(self):
        self.assertEqual(self.job.get_point(2), PointData("B", 1, h=101.0))
        self.assertEqual([p.name for p in self.job.points if p.index > 0], ["P", "B"])
        stored = [("A", "P", ObsData(1000.0, -1.0, 0.504)), ("P", "B", ObsData(1000.0, -1.0, 0.5))]
        self.assertEqual(list(self.job.observations), stored)
        param = self.job.get_adj_param()
        self.assertEqual(param, brenu.AdjParam())
        param.limit, param.mr = 2, 5e-6
        self.job.set_adj_param(param)
        self.assertEqual(self.job.get_adj_param(), param)

    def test_failures_say_why(self):
        for kind, id, call in (
            (brenu.CallError, "name-taken", lambda: self.job.add_point(3, PointData("A"))),
            (brenu.FileError, "file-missing", lambda: Job().read("/no/such")),
            (brenu.ComputationError, "format-is-not", self.job.non_direction_adj),
            (brenu.DataError, "name-taken", lambda: Job().read(b"[PT]\nA,01,,,1\nA,00,,,\n")),
        ):
            with self.assertRaises(kind) as caught:
                call()
            error = pickle.loads(pickle.dumps(caught.exception))
            self.assertEqual((error.id, str(error)), (id, error.finding.sentence))
        self.assertEqual((error.names, error.line), (["A"], 3))

    def test_doubts_are_findings_of_a_success(self):
        with Job() as job:
            job.read(b"[PT]\nA,02,,,100\n")
            [doubt] = job.findings
            self.assertEqual((doubt.excerpt, doubt.values), ("02", [2]))
        self.job.set_obs_data(0, "P", ObsData(-1.0, -1.0, 1.0))
        self.assertEqual([f.id for f in self.job.check_data()], ["distance-negative"])

    def test_asking_changes_nothing(self):
        self.job.least_square_adj()
        for index in (-1, 9):
            self.assertIsNone(self.job.get_point(index))
            self.assertIsNone(self.job.get_vertical_result(index))
            self.assertIsNone(self.job.get_height_obs_result(index, "P"))
        self.assertIsNone(self.job.get_point_num("nobody"))
        self.assertEqual(self.job.get_point_count(), 3)

    def test_numbers_beyond_32_bits(self):
        with self.assertRaises(ctypes.ArgumentError):
            self.job.delete_point(2**32)
        with self.assertRaises(ValueError):
            self.job.set_adj_param(brenu.AdjParam(limit=2**32))

    def test_a_closed_job_is_no_empty_one(self):
        self.job.close()
        with self.assertRaises(ValueError):
            self.job.get_point_count()

    def test_files(self):
        with tempfile.TemporaryDirectory() as folder:
            path = os.path.join(folder, "net.txt")
            self.job.save_brenu_adjust_file(path)
            for source in (path, pathlib.Path(path)):
                with Job() as again:
                    again.read(source)
                    self.assertEqual(again.get_point(2), self.job.get_point(2))
            with self.assertRaises(ValueError):
                self.job.open_brenu_adjust_file(path + "\0.old")


class FieldBooks(unittest.TestCase):
    def test_import(self):
        book = (
            b"110001+0000000A 84..10+00100000 85..10+00200000 88..10+00001500\n"
            b"110002+0000000B 21.322+10000000 22.323+06000000 31..00+00100000 87..10+00001500\n"
        )
        with tempfile.TemporaryDirectory() as folder, Job() as job, Job() as heights:
            path = pathlib.Path(folder, "book.gsi")
            path.write_bytes(book)
            found = job.import_field_books(path, heights=heights, trig_heights=True, constant=1000)
            self.assertEqual(found[0].id, "field-book-read")
            (pair,) = job.observations
            self.assertAlmostEqual(pair[2].distance, 101 * 3**0.5 / 2)
            (pair,) = heights.observations
            self.assertAlmostEqual(pair[2].height_diff, 50.5)
            with self.assertRaises(brenu.BrenuError):
                job.import_field_books(folder)


class Text(unittest.TestCase):
    def test_names_in_other_encodings(self):
        with Job(encoding="gbk") as job:
            job.add_point(0, PointData("\u6d4b\u7ad9"))
            self.assertEqual(job.get_point(0).name, "\u6d4b\u7ad9")
            self.assertEqual(job.get_point_num("\u6d4b\u7ad9"), 0)

    def test_names_that_do_not_fit(self):
        with Job() as job:
            job.add_point(0, PointData("a" * 127))
            self.assertEqual(job.get_point(0).name, "a" * 127)
            for name in ("a" * 128, "a\0b"):
                with self.assertRaises(ValueError):
                    job.add_point(1, PointData(name))


class Trilateration(unittest.TestCase):
    def test_a_point_is_placed_once(self):
        circles = brenu.CircleRecord("A", 100, 100, 50), brenu.CircleRecord("B", 100, 160, 50)
        with Job(rules=brenu.Rules.CLASSIC) as job:
            with self.assertRaises(brenu.DataError):  # there is no plane network
                job.calc_trilaterationp_point(True, *circles, "P")
            job.read(
                b"[PARAM]\nformat:3\n\n[PT]\nA,10,100,100,\nB,10,100,160,\nP,00,,,\n\n"
                b"[OBS]\nA,P,,50,,\nB,P,,50,,\n"
            )
            job.judge_trilateration()
            self.assertIn("P", job.get_trilateration_direction().text)
            for _ in range(2):
                self.assertEqual(job.calc_trilaterationp_point(True, *circles, "P"), 0)
            job.trilateration_direction()
            job.least_square_adj()
            self.assertAlmostEqual(job.get_plane_result(2).x, 60.0, 6)


class Reductions(unittest.TestCase):
    """One of each shape; the formulas are tested with the library."""

    def test_outputs(self):
        self.assertAlmostEqual(brenu.const_add_multiply_correct(3.0, 2.0, 1000.0), 1000.005, 9)
        self.assertEqual(brenu.centre_correct(0.0, 0.0, 0.0, 0.0, 100.0, 1.0), (100.0, 1.0))
        ground, grid = brenu.gauss_correct(0, 0, 6.4e6, 640.0, 1, 1000.0, 0.0, 0.0, 6.4e6)
        self.assertAlmostEqual(ground, 999.9, 9)
        self.assertAlmostEqual(grid, ground, 9)
        self.assertEqual(brenu.projection_correct(0, 0, 1, 0, 7, 1000.0, 5.0), 5.0)
        self.assertAlmostEqual(brenu.dov_correct(0.0, 4.0, 0.0, 0.785398163397448), 4.0, 9)


if __name__ == "__main__":
    unittest.main()
