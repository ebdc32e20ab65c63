#!/usr/bin/env python3
"""The engine of the page computes what the program computes: numbers_test.py ENGINE_FOLDER BRENU FILE...
Coordinates and heights agree to 1e-9 m, what is derived from them to 1e-5: the C libraries round
trigonometric functions differently, and statistics divide by small redundancy numbers."""
import json
import math
import pathlib
import subprocess
import sys

COORDINATES = {"x", "y", "h"}
HERE = pathlib.Path(__file__).resolve().parent


def differences(page, program, path=""):
    if isinstance(page, dict) and isinstance(program, dict):
        if page.keys() != program.keys():
            yield f"{path}: {sorted(page.keys() ^ program.keys())}"
        for key in page.keys() & program.keys():
            yield from differences(page[key], program[key], f"{path}/{key}")
    elif isinstance(page, list) and isinstance(program, list):
        if len(page) != len(program):
            yield f"{path}: {len(page)} and {len(program)} rows"
        for number, pair in enumerate(zip(page, program)):
            yield from differences(*pair, f"{path}/{number}")
    elif float in (type(page), type(program)) and None not in (page, program):
        if path.rsplit("/", 1)[-1] in COORDINATES:
            is_equal = abs(page - program) <= 1e-9
        else:
            is_equal = math.isclose(page, program, rel_tol=1e-5, abs_tol=1e-5)
        if not is_equal:
            yield f"{path}: {page!r} and {program!r}"
    elif page != program:
        yield f"{path}: {page!r} and {program!r}"


def compare(folder, program, options, arguments, files):
    """Prints what differs; how many numbers do."""
    reports = json.loads(subprocess.run(["node", HERE / "adjust.js", folder, json.dumps(options), *files],
                                        check=True, stdout=subprocess.PIPE).stdout)
    count = 0
    for file, report in zip(files, reports):
        native = subprocess.run([program, "adjust", *arguments, "--json", "-", file], check=False,
                                stdout=subprocess.PIPE, stderr=subprocess.DEVNULL).stdout
        if not native:  # the options do not fit the kind of job
            continue
        for difference in differences(report, json.loads(native)):
            print(f"{file}{difference}")
            count += 1
    return count


def main(folder, program, *files):
    count = (compare(folder, program, {}, [], files) +
             compare(folder, program, {"rules": "classic"}, ["--classic"], files) +
             compare(folder, program, {"alpha": 0.001}, ["--snoop", "0.001"], files))
    print(f"{len(files)} files, {count} differences")
    return count > 0 or not files


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
