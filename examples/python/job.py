#!/usr/bin/env python3
"""Adjusts a file, lists the points with their error ellipses and writes the report."""

import sys

import brenu


def print_point(job, point):
    line = f"{point.name:8s}"
    if plane := job.get_plane_result(point.index):
        line += f"  X {plane.x:.4f} Y {plane.y:.4f}"
        line += f"  ellipse {1000 * plane.e:.1f} x {1000 * plane.f:.1f} mm at {plane.t:.4f}"
    if height := job.get_vertical_result(point.index):
        line += f"  H {height.height:.4f} +- {1000 * height.sigma:.1f} mm"
    print(line)


def main(file, report):
    with brenu.Job() as job:
        job.read(file)
        for doubt in job.findings:
            print(doubt.sentence, file=sys.stderr)
        job.least_square_adj()
        job.export_result_file(report)
        for point in job.points:
            print_point(job, point)


if len(sys.argv) != 3:
    sys.exit("usage: job.py FILE REPORT")
try:
    main(*sys.argv[1:])
except brenu.BrenuError as error:  # says why
    sys.exit(str(error))
