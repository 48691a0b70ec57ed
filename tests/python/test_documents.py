"""The pieces of docs/python.md run, one after the other; types are as the stubs say."""
import os
import pathlib
import re
import subprocess
import sys

import pytest

import qvgraph

SOURCE = pathlib.Path(os.environ["QV_SOURCE_DIR"])
WITHOUT_SANITIZERS = {name: value for name, value in os.environ.items() if name != "LD_PRELOAD"}


def test_the_pieces_of_the_page_about_python_run(tmp_path, monkeypatch):
    monkeypatch.chdir(tmp_path)
    pieces = re.findall(r"```python\n(.*?)```", (SOURCE / "docs/python.md").read_text(encoding="utf-8"), re.S)
    names = {}
    for piece in pieces:
        exec(compile(piece, "docs/python.md", "exec"), names)
    assert (tmp_path / "oscillation.png").stat().st_size > 1000 and names["failures"] and len(pieces) == 6


USE = """
import numpy, qvgraph
page = qvgraph.Page(300, 200)
width: int = page.DataSymbol + page.width
axis: qvgraph.Axis = page.graph("a", left=10).y_axis(title="t", color="#FF0000")
page.AxisValue1 = 3
names, count = page.GetGraphNames()
pixels = page.to_numpy()[0]
"""


@pytest.mark.parametrize("code, is_right", [
    (USE, True), (USE + 'page.AxisValue1 = "3"\n', False), (USE + "page.NewGrap('x')\n", False),
    (USE + "axis.colour\n", False), (USE + "page.graph('a', lef=1)\n", False)])
def test_stubs_know_the_members(tmp_path, code, is_right):
    pytest.importorskip("mypy")
    (tmp_path / "use.py").write_text(code, encoding="utf-8")
    package = pathlib.Path(qvgraph.__file__).parent.parent
    said = subprocess.run([sys.executable, "-m", "mypy", "--strict", "--cache-dir", tmp_path / "cache", "use.py"],
                          cwd=tmp_path, env={**WITHOUT_SANITIZERS, "MYPYPATH": str(package)}, capture_output=True, text=True)
    assert (said.returncode == 0) == is_right, said.stdout + said.stderr
