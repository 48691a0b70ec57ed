#!/usr/bin/env python3
"""The Debian packages: what lintian says of them, and the program from an installed one.

With root rights the packages are installed and removed again; else they are unpacked into a folder and run there.

Usage: packages_test.py BUILD DATA
"""
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

# Each with those of the others that it does not work without.
NEEDED = {
    "libqvgraph2": (),
    "libqvgraph-dev": ("libqvgraph2",),
    "libqvgraph-qt6-2": ("libqvgraph2",),
    "libqvgraph-qt6-dev": ("libqvgraph-qt6-2", "libqvgraph-dev"),
    "qvplot": ("libqvgraph2", "libqvgraph-qt6-2"),
}
PACKAGES = tuple(NEEDED)


def run(*command, **options):
    print("+", *command, flush=True)
    return subprocess.run([str(part) for part in command], check=True, **options)


def errors_of(files):
    """Lines of lintian that tell of errors."""
    if not shutil.which("lintian"):
        return []
    said = subprocess.run(["lintian", "--allow-root", *map(str, files)], capture_output=True, text=True).stdout
    return [line for line in said.splitlines() if line.startswith("E:")]


def draws(program, data, environment):
    """Whether the program draws a page of a file, and tells its manual's way out of a mistake."""
    with tempfile.TemporaryDirectory() as folder:
        run(program, data, "--out", f"{folder}/page.png", env=environment)
        wrong = subprocess.run([program, f"{folder}/none.csv", "--out", f"{folder}/none.png"], env=environment,
                               capture_output=True, text=True)
        return pathlib.Path(folder, "page.png").stat().st_size > 1000 and wrong.returncode == 2


def missing_needs(files):
    """Packages that could be installed without one of ours that they need."""
    wrong = []
    for file, (package, needed) in zip(files, NEEDED.items()):
        said = subprocess.run(["dpkg-deb", "-f", file, "Depends"], check=True, capture_output=True, text=True).stdout
        names = {part.split()[0] for part in said.split(",") if part.split()}
        wrong += [f"{package} does not depend on {name}" for name in needed if name not in names]
    return wrong


def lacks_plugin(build, files):
    """Whether a plugin for Designer was built that the widget's development package has not."""
    development = next(file for file in files if file.name.startswith("libqvgraph-qt6-dev"))
    listed = subprocess.run(["dpkg-deb", "-c", development], check=True, capture_output=True, text=True).stdout
    return (build / "plugins/designer").is_dir() and "/plugins/designer/qvgraph_designer.so" not in listed


def installed(files, data):
    run("dpkg", "-i", *files, stdout=subprocess.DEVNULL)
    try:
        return draws(shutil.which("qvplot", path="/usr/bin"), data, dict(os.environ))
    finally:
        run("dpkg", "-P", *reversed(PACKAGES), stdout=subprocess.DEVNULL)


def unpacked(files, data):
    with tempfile.TemporaryDirectory() as folder:
        for file in files:
            run("dpkg-deb", "-x", file, folder)
        return draws(f"{folder}/usr/bin/qvplot", data, {**os.environ, "LD_LIBRARY_PATH": f"{folder}/usr/lib"})


def main():
    build, data = map(pathlib.Path, sys.argv[1:3])
    shutil.rmtree(build / "packages", ignore_errors=True)
    run("cpack", "-G", "DEB", "--config", build / "CPackConfig.cmake", cwd=build, stdout=subprocess.DEVNULL)
    files = [next((build / "packages").glob(f"{name}_*.deb")) for name in PACKAGES]
    wrong = errors_of(files) + missing_needs(files)
    if lacks_plugin(build, files):
        wrong.append("libqvgraph-qt6-dev has no plugin for Designer")
    if not (installed if os.geteuid() == 0 else unpacked)(files, data):
        wrong.append("qvplot does not run as it should")
    print("\n".join(wrong) if wrong else "five packages without an error")
    return 1 if wrong else 0


sys.exit(main())
