#!/usr/bin/env python3
"""Reads the #include lines of the repository against its floors: each may use only itself and what stands below.

The headers of include/qvgraph stand on the floor of their subject and reach no header of src. The Qt host and the
programs use include/qvgraph alone.
"""
import pathlib
import re
import sys

# From the ground up: the folder of src, and the public headers of the same floor.
FLOORS = [
    ("base", "export.h owned.h fault.h geometry.h checked.h variant.h system_color.h"),
    ("expression", "variables.h qvExpression.h render_error.h"),
    ("surface", "DrawSurface.h"),
    ("host", "ChildControls.h EventSink.h Host.h Input.h Services.h"),
    ("document", ""),
    ("raster", "RasterSurface.h"),
    ("vector", ""),
    ("scale", ""),
    ("render", "clsGradient.h"),
    ("interact", "Outline.h"),
    ("gradient_picker", "GradientChoice.h qvGradient.h qvGradientForm2.h"),
    ("control", "looks.h styles.h members.inc handle.h options.h handles.h qvGraph.h"),
    ("hosts", "HeadlessHost.h QvGraphWidget.h page_file.h"),
]
FOLDERS = [folder for folder, _ in FLOORS]
PUBLIC = {name: floor for floor, (_, names) in enumerate(FLOORS) for name in names.split()}
PROGRAMS = ("apps", "examples", "python")


def floor_of(path):
    """The floor on which a path of src, or a public header, stands; None for any other."""
    folder, _, name = path.partition("/")
    if folder == "qvgraph":
        return PUBLIC.get(name)
    return FOLDERS.index(folder) if folder in FOLDERS else None


def includes(file):
    for number, line in enumerate(file.read_text(encoding="utf-8").splitlines(), 1):
        found = re.match(r'\s*#include "([^"]+)"', line)
        if found:
            yield number, found.group(1)


def sources(folder):
    return sorted(p for p in folder.rglob("*") if p.suffix in (".h", ".cpp", ".def", ".inc"))


def faults_in_library(root):
    for base in ("src", "include"):
        for file in sources(root / base):
            name = file.relative_to(root / base).as_posix()
            own = floor_of(name)
            if own is None:
                yield f"{base}/{name}: stands on no known floor"
                continue
            for number, target in includes(file):
                floor = floor_of(target)
                where = f"{base}/{name}:{number}"
                if floor is None:
                    yield f'{where}: "{target}" is not named from src/ or include/'
                elif floor > own:
                    yield f'{where}: {FOLDERS[own]} may not use "{target}"'
                elif base == "include" and not target.startswith("qvgraph/"):
                    yield f'{where}: a public header may not use "{target}"'
                elif name.startswith("hosts/qt/") and not target.startswith(("qvgraph/", "hosts/qt/")):
                    yield f'{where}: the Qt host may not use "{target}"'


def faults_in_programs(root):
    for program in PROGRAMS:
        for file in sources(root / program):
            for number, target in includes(file):
                if target.split("/")[0] in FOLDERS:
                    yield f'{file.relative_to(root)}:{number}: a program may not use "{target}"'


def main():
    root = pathlib.Path(sys.argv[1])
    wrong = [*faults_in_library(root), *faults_in_programs(root)]
    print("\n".join(wrong) if wrong else "every include looks downwards")
    return 1 if wrong else 0


sys.exit(main())
