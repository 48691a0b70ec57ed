#!/usr/bin/env python3
"""Documents name only what there is.

Links lead to files, folders and files in code quotes exist, names of members stand in a header or a source, the
README's first screen shows picture, install and a program, which is examples/first_page.cpp, and the guide tells of
every switch for a gesture.

Usage: check_documents.py ROOT
"""
import pathlib
import re
import sys

FOLDERS = "apps|bench|cmake|docs|examples|include|packaging|python|scripts|src|tests"
FIRST_SCREEN = 42  # lines
# What examples make up.
INVENTED = {"AxisTitleAngle", "PictureHost", "WebP", "CapitalWords", "src/raster/webp.h", "tests/fuzz/NAME_fuzz.cpp"}


def broken_links(root, page, text):
    for target in re.findall(r"\]\(([^)#:]+)\)", re.sub(r"```.*?```", "", text, flags=re.S)):
        if not (root / page).parent.joinpath(target).exists():
            yield f"{page} links to {target}, which is not there"


def missing_paths(root, page, text):
    for path in re.findall(rf"`((?:{FOLDERS})/[\w./-]+|\./run-[a-z]+)", text):
        if path not in INVENTED and not (root / path).exists():
            yield f"{page} names {path}, which is not there"


def unknown_names(known, page, text):
    """Names in capitals and small letters, as members and types have them, that stand in no code."""
    for code in re.findall(r"`([^`\n]+)`", text):
        for name in re.findall(r"\b[A-Z][a-z]+(?:[A-Z]\w*)+\b", code):
            if name not in known and name not in INVENTED:
                yield f"{page} names {name}, which is not there"


def words_of_code(root):
    words = set()
    for folder in ("include", "src", "apps", "docs/members.txt", "tests", "examples", "cmake", "CMakeLists.txt"):
        files = [root / folder] if (root / folder).is_file() else (root / folder).rglob("*.*")
        for file in files:
            if file.suffix in (".h", ".cpp", ".inc", ".txt", ".def", ".cmake", ".in"):
                words.update(re.findall(r"\b[A-Z]\w+", file.read_text(encoding="utf-8")))
    return words


def first_screen(root):
    lines = (root / "README.md").read_text(encoding="utf-8").splitlines()[:FIRST_SCREEN]
    for wanted in ("![", "cmake --install", "```cpp"):
        if not any(wanted in line for line in lines):
            yield f"the first {FIRST_SCREEN} lines of README.md have no {wanted}"
    shown = re.search(r"```cpp\n(.*?)```", "\n".join(lines), re.S)
    program = (root / "examples/first_page.cpp").read_text(encoding="utf-8")
    for line in shown.group(1).splitlines() if shown else ():
        if line.strip() not in program:
            yield f"README.md shows a line that examples/first_page.cpp has not: {line}"


def untold_gestures(root):
    guide = (root / "docs/guide.md").read_text(encoding="utf-8")
    members = (root / "docs/members.txt").read_text(encoding="utf-8")
    for name in re.findall(r"^\+?(Gesture\w+):", members, re.M):
        if f"`{name}`" not in guide:
            yield f"docs/guide.md does not tell of {name}"


def main():
    root = pathlib.Path(sys.argv[1])
    known = words_of_code(root)
    wrong = [*first_screen(root), *untold_gestures(root)]
    for file in [*sorted(root.glob("*.md")), *sorted(root.glob("docs/*.md"))]:
        page, text = file.relative_to(root), file.read_text(encoding="utf-8")
        wrong += [*broken_links(root, page, text), *missing_paths(root, page, text), *unknown_names(known, page, text)]
    print("\n".join(wrong) if wrong else "the documents name only what there is")
    return 1 if wrong else 0


sys.exit(main())
