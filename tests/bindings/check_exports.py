#!/usr/bin/env python3
"""Checks that a shared library shows the names in the lists, and no others: LIBRARY LIST..."""

import pathlib
import subprocess
import sys


def main(library, *lists):
    command = ["nm", "-D", "--defined-only", "--format=just-symbols", library]
    shown = set(subprocess.run(command, check=True, capture_output=True, text=True).stdout.split())
    wanted = {name for path in lists for name in pathlib.Path(path).read_text().split()}
    print(f"{library} shows {len(shown)} names")
    return None if shown == wanted else f"they differ from the lists in {sorted(shown ^ wanted)}"


sys.exit(main(*sys.argv[1:]))
