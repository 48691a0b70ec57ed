"""Examples in Python draw what those in C++ do, pixel for pixel: the files are the same."""
import os
import pathlib
import subprocess
import sys

import pytest

SOURCE = pathlib.Path(os.environ["QV_SOURCE_DIR"])
EXAMPLES = sorted(file.stem for file in (SOURCE / "python/examples").glob("*.py"))


@pytest.mark.parametrize("name", EXAMPLES)
def test_pictures_equal_those_of_cpp(name, tmp_path):
    by_cpp, by_python = tmp_path / "cpp.png", tmp_path / "python.png"
    without = {key: value for key, value in os.environ.items() if key != "LD_PRELOAD"}
    subprocess.run([pathlib.Path(os.environ["QV_PROGRAMS"]) / f"example_{name}", by_cpp], check=True, env=without)
    subprocess.run([sys.executable, SOURCE / "python/examples" / f"{name}.py", by_python], check=True)
    assert by_python.read_bytes() == by_cpp.read_bytes()


def test_there_are_five():
    assert len(EXAMPLES) >= 5
