#!/usr/bin/env python3
"""Reads the #include lines of src/ against the order of its folders: each may use only what stands above it."""
import pathlib
import re
import sys

# From the ground floor up; a header named here stands where it is listed, not where its folder does.
FLOORS = ["base", "expression", "surface/DrawSurface.h", "host", "control/model", "scale", "render", "interact",
          "gradient_picker", "graph", "platform"]


def floor_of(path):
    if path in ("surface/DrawSurface.h", "surface/DrawSurface.cpp"):
        return FLOORS.index("surface/DrawSurface.h")
    matches = [f for f in FLOORS if path.startswith(f + "/")]
    return FLOORS.index(max(matches, key=len)) if matches else None


def main():
    root = pathlib.Path(sys.argv[1])
    wrong = []
    for file in sorted(p for p in root.rglob("*") if p.suffix in (".h", ".cpp", ".def")):
        name = file.relative_to(root).as_posix()
        own = floor_of(name)
        if own is None:
            wrong.append(f"{name}: lies in no known folder")
            continue
        for number, line in enumerate(file.read_text(encoding="utf-8").splitlines(), 1):
            found = re.match(r'\s*#include "([^"]+)"', line)
            target = floor_of(found.group(1)) if found else None
            if found and target is None:
                wrong.append(f'{name}:{number}: "{found.group(1)}" is not named from src/')
            elif found and target > own:
                wrong.append(f'{name}:{number}: {FLOORS[own]} may not use "{found.group(1)}"')
    print("\n".join(wrong) if wrong else "every include looks downwards")
    return 1 if wrong else 0


sys.exit(main())
