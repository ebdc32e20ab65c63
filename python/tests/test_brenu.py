"""The package on small jobs; BRENU_LIBRARY names the library."""

import ctypes
import os
import tempfile
import unittest

import brenu
from brenu import BrenuError, Job, ObsData, PointData


def levelled(job):
    """P half way between two bench marks, 4 mm of misclosure."""
    job.add_point(0, PointData("A", 1, h=100.0))
    job.add_point(1, PointData("P"))
    job.add_point(2, PointData("B", 1, h=101.0))
    job.add_obs_data(0, "P", ObsData(distance=1000.0, heightDiff=0.504))
    job.add_obs_data(1, "B", ObsData(distance=1000.0, heightDiff=0.5))


class Levelling(unittest.TestCase):
    def setUp(self):
        self.job = Job()
        self.addCleanup(self.job.close)
        levelled(self.job)

    def test_results(self):
        self.job.least_square_adj()
        self.assertAlmostEqual(self.job.get_vertical_result(1).height, 100.502, 9)
        line = self.job.get_height_obs_result(0, "P")
        self.assertAlmostEqual(line.residual, -0.002, 9)
        self.assertAlmostEqual(line.weight, 1.0, 9)
        self.assertIsNone(self.job.get_plane_result(1))

    def test_closures(self):
        self.job.calculate_close_error()
        self.assertEqual(self.job.get_close_error_count(), 1)
        record = self.job.get_close_error(0)
        self.assertEqual(set(record.route.split(" - ")), {"A", "P", "B"})
        self.assertAlmostEqual(abs(record.heightMisclosure), 4.0, 6)
        self.assertIs(record.mark, True)
        self.assertAlmostEqual(record.routeLength, 2000.0, 6)

    def test_records_come_back(self):
        self.assertEqual(self.job.get_point(2), PointData("B", 1, h=101.0))
        self.assertEqual(self.job.get_obs_data(1, "B"), ObsData(1000.0, -1.0, 0.5, -1.0))
        self.assertEqual(self.job.get_point_num("B"), 2)
        param = self.job.get_adj_param()
        self.assertEqual(param, brenu.AdjParam())
        param.Limit, param.MR = 2, 5e-6
        self.job.set_adj_param(param)
        self.assertEqual(self.job.get_adj_param(), param)

    def test_failures(self):
        with self.assertRaises(BrenuError):
            self.job.add_point(0, PointData("C"))
        with self.assertRaises(BrenuError):
            self.job.add_obs_data(0, "nobody", ObsData())
        with self.assertRaises(BrenuError):
            Job().least_square_adj()
        for index in (-1, 9):
            self.assertIsNone(self.job.get_point(index))
        self.assertIsNone(self.job.get_point_num("nobody"))
        self.assertIsNone(self.job.get_close_error(0))

    def test_numbers_beyond_32_bits(self):
        with self.assertRaises(ctypes.ArgumentError):
            self.job.delete_point(2**32)
        with self.assertRaises(ValueError):
            self.job.set_adj_param(brenu.AdjParam(Limit=2**32))

    def test_a_closed_job_is_no_empty_one(self):
        self.job.close()
        with self.assertRaises(BrenuError):
            self.job.get_point_count()

    def test_files(self):
        with tempfile.TemporaryDirectory() as folder:
            path = os.path.join(folder, "net.txt")
            self.job.save_brenu_adjust_file(path)
            with Job() as again:
                again.open_brenu_adjust_file(path)
                self.assertEqual(again.get_point(2), self.job.get_point(2))
            with self.assertRaises(BrenuError):
                self.job.open_brenu_adjust_file(os.path.join(folder, "missing.txt"))
            with self.assertRaises(ValueError):
                self.job.open_brenu_adjust_file(path + "\0.old")


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
    def test_nothing_is_placed_without_a_plane_network(self):
        circle = brenu.CircleRecord("A", 0.0, 0.0, 1.0)
        with Job() as job, self.assertRaises(BrenuError):
            job.calc_trilaterationp_point(True, circle, circle, "P")

    def test_a_point_is_placed_on_the_side_asked_for(self):
        for right, x in ((True, 60.0), (False, 140.0)):
            with Job() as job:
                param = job.get_adj_param()
                param.format = 3
                job.set_adj_param(param)
                job.add_point(0, PointData("A", 10, 100.0, 100.0))
                job.add_point(1, PointData("B", 10, 100.0, 160.0))
                job.add_point(2, PointData("P"))
                job.add_obs_data(0, "P", ObsData(distance=50.0))
                job.add_obs_data(1, "P", ObsData(distance=50.0))
                job.judge_trilateration()
                job.initialize_data_trilateration()
                choice = job.get_trilateration_direction()
                self.assertIn("P", choice.text)
                self.assertEqual({choice.first.name, choice.second.name}, {"A", "B"})
                if choice.first.name == "B":
                    choice.first, choice.second = choice.second, choice.first
                left = job.calc_trilaterationp_point(right, choice.first, choice.second, "P")
                self.assertEqual(left, 0)
                job.trilateration_direction()
                job.least_square_adj()
                self.assertAlmostEqual(job.get_plane_result(2).x, x, 6)
                self.assertAlmostEqual(job.get_plane_result(2).y, 130.0, 6)


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
