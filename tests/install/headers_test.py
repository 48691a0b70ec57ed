#!/usr/bin/env python3
"""The public headers as a stranger's compiler meets them.

Each compiles alone, without a warning, in g++ and clang++, and reaches no header of src. A program that includes
qvGraph.h compiles in at most 1.5 times the time of one that includes <string>, <span> and <functional>.

Usage: headers_test.py ROOT [compiler option for headers of Qt]...
"""
import pathlib
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

MOST = 1.5  # times the reference


def compilers():
    return [c for c in ("g++", shutil.which("clang++") or "clang++-14") if shutil.which(c)]


def compile_alone(root, header, options, compiler):
    """What the compiler says of a source that holds nothing but this header; empty when all is well."""
    warnings = ["-Wall", "-Wextra", "-Wpedantic", "-Wshadow", "-Wconversion", "-Wno-sign-conversion", "-Werror"]
    command = [compiler, "-std=c++20", "-fsyntax-only", "-fPIC", *warnings, f"-I{root}/include", *options, "-H",
               "-x", "c++", "-"]
    run = subprocess.run(command, input=f"#include <qvgraph/{header}>\n", capture_output=True, text=True)
    reached = [line for line in run.stderr.splitlines() if line.startswith(".") and f"{root}/src" in line]
    said = [line for line in run.stderr.splitlines() if not line.startswith((".", "Multiple include", "/"))]
    if run.returncode != 0:
        return f"{compiler}: {header}:\n" + run.stderr[-2000:]
    return f"{compiler}: {header} reaches {reached}" if reached else "" if not said else "\n".join(said)


def compile_time(source, root):
    started = time.perf_counter()
    subprocess.run(["g++", "-std=c++20", "-O0", f"-I{root}/include", "-c", source, "-o", "/dev/null"], check=True)
    return time.perf_counter() - started


def slowness(root):
    """How many times the reference a program with qvGraph.h takes: the median of runs by turns."""
    with tempfile.TemporaryDirectory() as folder:
        ours = pathlib.Path(folder, "ours.cpp")
        reference = pathlib.Path(folder, "reference.cpp")
        ours.write_text("#include <qvgraph/qvGraph.h>\nint main() {}\n", encoding="utf-8")
        reference.write_text("#include <string>\n#include <span>\n#include <functional>\nint main() {}\n",
                             encoding="utf-8")
        return statistics.median(compile_time(ours, root) / compile_time(reference, root) for _ in range(7))


def main():
    root, options = pathlib.Path(sys.argv[1]), sys.argv[2:]
    wrong = []
    for header in sorted(p.name for p in (root / "include/qvgraph").glob("*.h")):
        needs_qt = header.startswith("Qv")
        if needs_qt and not options:
            continue
        for compiler in compilers():
            wrong += filter(None, [compile_alone(root, header, options if needs_qt else [], compiler)])
    ratio = slowness(root)
    print(f"qvGraph.h compiles in {ratio:.2f} times the time of three standard headers")
    if ratio > MOST:
        wrong.append(f"that is more than {MOST} times")
    print("\n".join(wrong))
    return 1 if wrong else 0


sys.exit(main())
