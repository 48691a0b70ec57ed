#!/usr/bin/env python3
"""The pieces of C++ in docs/guide.md and docs/extending.md compile, with the public headers alone.

Each piece of the guide becomes the body of a function that has what the piece takes for granted; pieces of
extending.md are whole types.

Usage: snippets_test.py ROOT
"""
import pathlib
import re
import subprocess
import sys
import textwrap

HEADERS = ("HeadlessHost.h", "qvGraph.h", "qvExpression.h", "render_error.h", "Host.h", "RasterSurface.h", "looks.h")
GIVEN = """
#include <iostream>
#include <memory>
#include <mutex>
#include <vector>

// As much of a toolkit as the pieces call.
struct QTimer {
    static void timeout() {}
    void start(int) {}
};
struct QObject {
    static void connect(QTimer*, void (*)(), auto action) { action(); }
};
struct Widget {
    qv::qvGraph& page;
    qv::qvGraph& control() { return page; }
};
struct Given {
    qv::qvGraph& page;
    double t = 0, value = 0;
    std::vector<double> hours, times, values, temperature, pressure, below, above;
    std::mutex mutex;
    QTimer timer;
    Widget widget{page};
};
"""


def pieces(page):
    found = re.findall(r"^( *)```cpp\n(.*?)^ *```", page.read_text(encoding="utf-8"), re.S | re.M)
    return [textwrap.dedent(code) for _, code in found]


def without_includes(code):
    return "\n".join(line for line in code.splitlines() if not line.startswith("#include"))


def main():
    root = pathlib.Path(sys.argv[1])
    source = "".join(f"#include <qvgraph/{header}>\n" for header in HEADERS) + GIVEN
    for number, code in enumerate(pieces(root / "docs/guide.md")):
        source += f"struct Piece{number} : Given {{ void run() {{\n{without_includes(code)}\n}} }};\n"
    source += "".join(pieces(root / "docs/extending.md"))
    source += "int main() { PictureHost host; }\n"
    run = subprocess.run(["g++", "-std=c++20", "-Wall", "-Wextra", "-Werror", "-fsyntax-only", f"-I{root}/include",
                          "-x", "c++", "-"], input=source, capture_output=True, text=True)
    print(run.stderr if run.returncode else "the pieces compile")
    return run.returncode


sys.exit(main())
