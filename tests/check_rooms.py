#!/usr/bin/env python3
"""Holds the order of the rooms: a source includes only rooms that stand before its own, and no source
of the product is longer than can be read in one sitting."""
import pathlib
import re
import sys

ORDER = ["core", "geodesy", "level", "plane", "job", "io", "fieldbook", "review", "report", "api"]
APART = [{"level", "plane"}, {"geodesy", "level"}, {"geodesy", "plane"}, {"io", "fieldbook"}]
LONGEST = 400

root = pathlib.Path(__file__).resolve().parent.parent
faults = []
for path in sorted([*root.glob("src/*/**/*.[chj]*"), *root.glob("tool/**/*.[ch]*"),
                    *root.glob("web/**/*.[chjp]*")]):
    lines = path.read_text(encoding="utf-8").splitlines()
    name = path.relative_to(root)
    if len(lines) > LONGEST:
        faults.append(f"{name}: {len(lines)} lines, more than {LONGEST}")
    room = name.parts[1] if name.parts[0] == "src" else name.parts[0]
    for line in lines:
        found = re.match(r'#include "(\w+)/', line)
        other = found.group(1) if found else room
        if other == room or other not in ORDER:
            continue
        backwards = room in ORDER and ORDER.index(other) > ORDER.index(room)
        if backwards or {room, other} in APART or (room not in ORDER and other == "api"):
            faults.append(f"{name}: {room} must not know {other}")
print("\n".join(faults) or "the rooms are in order")
sys.exit(bool(faults))
