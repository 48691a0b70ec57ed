#!/usr/bin/env python3
"""Programs outside the tree, built with what was installed.

Installs a build into an empty prefix and builds the programs of docs/quickstart.md with the CMake package, with
pkg-config, and with add_subdirectory. That project asks for static libraries and installs them too, and the programs
are built once more with these, in the first two ways. Each draws the same picture. A window is linked with the static
widget too, and finds its translation in it. The page quotes just these files.

Usage: consumers_test.py ROOT BUILD [--without-qt]
"""
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile


def run(*command, **options):
    print("+", *command, flush=True)
    subprocess.run([str(part) for part in command], check=True, **options)


def quotes_are_true(root):
    page = (root / "docs/quickstart.md").read_text(encoding="utf-8")
    wrong = []
    for file in sorted((root / "examples/quickstart").iterdir()):
        if file.read_text(encoding="utf-8").strip("\n") not in page:
            wrong.append(f"docs/quickstart.md does not quote examples/quickstart/{file.name} as it is")
    return wrong


def with_cmake(source, folder, prefix, targets):
    run("cmake", "-S", source, "-B", folder, "-G", "Ninja", f"-DCMAKE_PREFIX_PATH={prefix}")
    run("cmake", "--build", folder, "--target", *targets)


def package_environment(libraries):
    return {**os.environ, "PKG_CONFIG_PATH": str(libraries / "pkgconfig")}


def with_pkg_config(source, folder, environment, *options):
    folder.mkdir()
    flags = subprocess.run(["pkg-config", "--cflags", "--libs", *options, "qvgraph"], check=True,
                           capture_output=True, text=True, env=environment).stdout.split()
    for name in ("picture", "measurements"):
        run("g++", "-std=c++20", source / f"{name}.cpp", *flags, "-o", folder / name)


CONSUMER = """cmake_minimum_required(VERSION 3.25)
project(consumer LANGUAGES CXX)
{library}
add_executable(picture {source}/picture.cpp)
target_link_libraries(picture qvGraph::core)
add_executable(measurements {source}/measurements.cpp)
target_link_libraries(measurements qvGraph::core)
"""


def consumer(project, source, library):
    """A project in a folder of its own that takes the core from where a line of CMake says."""
    project.mkdir()
    (project / "CMakeLists.txt").write_text(CONSUMER.format(library=library, source=source), encoding="utf-8")
    return project


def with_subdirectory(root, source, folder, project):
    """As another project would take the core in: nothing but its needs is built."""
    consumer(project, source, f"add_subdirectory({root} qvgraph)")
    # The flags of the release preset, so that a compiler cache finds what was compiled already.
    run("cmake", "-S", project, "-B", folder, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Release",
        "-DCMAKE_CXX_FLAGS_RELEASE=-O2 -DNDEBUG", "-DQV_WERROR=ON", "-DBUILD_SHARED_LIBS=OFF", "-DQV_INSTALL=ON")
    run("cmake", "--build", folder, "--target", "picture", "measurements")
    made = {p.name for p in (folder / "qvgraph").rglob("*") if p.suffix in (".so", ".a")}
    assert "libqvgraph.a" in made and not any("qt" in name or ".so" in name for name in made), made


def with_static_libraries(source, built, scratch):
    """What the programs draw that are linked with the static libraries of a build, once they are installed."""
    prefix = scratch / "static"
    run("cmake", "--install", built, "--prefix", prefix, stdout=subprocess.DEVNULL)
    project = consumer(scratch / "static consumer", source, "find_package(qvGraph 2.13 REQUIRED COMPONENTS core)")
    with_cmake(project, scratch / "static-cmake", prefix, ["picture", "measurements"])
    libraries = next(prefix.rglob("libqvgraph.a")).parent
    with_pkg_config(source, scratch / "static-pkg-config", package_environment(libraries), "--static")
    return {way: pictures(scratch / way, source, dict(os.environ)) for way in ("static-cmake", "static-pkg-config")}


WINDOW = """#include <qvgraph/QvGraphWidget.h>
#include <QtWidgets/QApplication>
int main(int argc, char** argv) {
    QApplication application(argc, argv);
    const qv::qt::QvGraphWidget widget;
    return qv::qt::QvGraphWidget::translate(QLocale(QLocale::German)) ? 0 : 1;
}
"""


def with_static_widget(project, built, scratch):
    """The widget as a static library of another project, installed and linked in both ways."""
    run("cmake", "-S", project, "-B", built, "-DQV_QT=ON")
    run("cmake", "--build", built)
    prefix, folder = scratch / "static-widget", scratch / "window"
    run("cmake", "--install", built, "--prefix", prefix, stdout=subprocess.DEVNULL)
    folder.mkdir()
    (folder / "window.cpp").write_text(WINDOW, encoding="utf-8")
    (folder / "CMakeLists.txt").write_text(
        "cmake_minimum_required(VERSION 3.25)\nproject(window LANGUAGES CXX)\n"
        "find_package(qvGraph 2.13 REQUIRED COMPONENTS qt)\nadd_executable(window window.cpp)\n"
        "target_link_libraries(window qvGraph::qt)\n", encoding="utf-8")
    with_cmake(folder, folder / "cmake", prefix, ["window"])
    libraries = next(prefix.rglob("libqvgraph-qt6.a")).parent
    flags = subprocess.run(["pkg-config", "--cflags", "--libs", "--static", "qvgraph-qt6"], check=True,
                           capture_output=True, text=True, env=package_environment(libraries)).stdout.split()
    run("g++", "-std=c++20", "-fPIC", folder / "window.cpp", *flags, "-o", folder / "by-pkg-config")
    for program in (folder / "cmake/window", folder / "by-pkg-config"):
        run(program, env={**os.environ, "QT_QPA_PLATFORM": "offscreen"})


def pictures(programs, source, environment):
    """The bytes of all files that the programs write."""
    with tempfile.TemporaryDirectory() as folder:
        shutil.copy(source / "measurements.csv", folder)
        for name in ("picture", "measurements"):
            run(programs / name, cwd=folder, env=environment)
        return {p.name: p.read_bytes() for p in sorted(pathlib.Path(folder).iterdir())}


def main():
    root, build = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
    source = root / "examples/quickstart"
    wrong = quotes_are_true(root)
    with tempfile.TemporaryDirectory() as scratch:
        scratch = pathlib.Path(scratch)
        prefix = scratch / "prefix"
        run("cmake", "--install", build, "--prefix", prefix, stdout=subprocess.DEVNULL)
        libraries = next(prefix.rglob("libqvgraph.so*")).parent
        environment = {**package_environment(libraries), "LD_LIBRARY_PATH": str(libraries)}
        targets = ["picture", "measurements"] + ([] if "--without-qt" in sys.argv else ["window"])
        with_cmake(source, scratch / "cmake", prefix, targets)
        with_pkg_config(source, scratch / "pkg-config", environment)
        drawn = {way: pictures(scratch / way, source, environment) for way in ("cmake", "pkg-config")}
        # As deep as the build itself, so that a compiler cache knows the sources by the same relative paths.
        with tempfile.TemporaryDirectory(dir=build.parent, prefix="consumer-") as beside:
            with_subdirectory(root, source, pathlib.Path(beside), scratch / "consumer")
            drawn["subdirectory"] = pictures(pathlib.Path(beside), source, dict(os.environ))
            drawn |= with_static_libraries(source, pathlib.Path(beside), scratch)
            if "--without-qt" not in sys.argv:
                with_static_widget(scratch / "consumer", pathlib.Path(beside), scratch)
        names = set(drawn["cmake"])
        if not {"oscillation.png", "oscillation.svg", "day.png"} <= names:
            wrong.append(f"files are missing: {sorted(names)}")
        wrong += [f"{way} draws other pictures" for way in drawn if drawn[way] != drawn["cmake"]]
    print("\n".join(wrong) if wrong else f"{len(drawn)} ways, the same pictures")
    return 1 if wrong else 0


sys.exit(main())
