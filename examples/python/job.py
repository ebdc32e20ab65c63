#!/usr/bin/env python3
"""Adjusts a project file, lists the points with their error ellipses and writes the report."""

import sys

import brenu


def print_point(job, index):
    line = f"{job.get_point(index).name:8s}"
    if plane := job.get_plane_result(index):
        line += f"  X {plane.x:.4f} Y {plane.y:.4f}"
        line += f"  ellipse {1000 * plane.e:.1f} x {1000 * plane.f:.1f} mm at {plane.t:.4f}"
    if height := job.get_vertical_result(index):
        line += f"  H {height.height:.4f} +- {1000 * height.sigma:.1f} mm"
    print(line)


def main(project, report):
    with brenu.Job() as job:
        job.open_brenu_adjust_file(project)
        job.least_square_adj()
        job.export_result_file(report)
        for index in range(job.get_point_count()):  # a file gives the indices 0, 1, 2...
            print_point(job, index)


if len(sys.argv) != 3:
    sys.exit("usage: job.py PROJECT-FILE REPORT")
try:
    main(*sys.argv[1:])
except brenu.BrenuError as error:
    sys.exit(str(error))
