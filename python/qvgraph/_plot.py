"""plot(): one call for the common case."""
from typing import Any, Optional, Sequence

import numpy

from ._qvgraph import DataSet, Graph, Page

KINDS = ("line", "symbols", "bars", "area", "steps", "histogram", "heat map")


def _columns(y: Any, labels: Optional[Sequence[str]]) -> "list[tuple[str, Any]]":
    """Columns with their names, out of a table, a dictionary, a matrix of columns, a list of columns or one column."""
    if hasattr(y, "columns") or isinstance(y, dict):
        named = [(str(name), y[name]) for name in (y.keys() if isinstance(y, dict) else y.columns)]
    elif isinstance(y, (list, tuple)) and len(y) > 0 and numpy.ndim(y[0]) == 1:
        named = [("", column) for column in y]
    elif numpy.ndim(y) == 2:
        named = [("", column) for column in numpy.asarray(y).T]
    else:
        named = [(str(getattr(y, "name", "") or ""), y)]
    if labels is None:
        return named
    given = [labels] if isinstance(labels, str) else list(labels)
    if len(given) != len(named):
        raise ValueError(f"plot: labels has {len(given)} texts, but there are {len(named)} columns")
    return list(zip(given, (column for _, column in named)))


def _data_set(graph: Graph, kind: str, name: str) -> DataSet:
    if kind == "steps":
        return graph.line(name, steps=2)
    return {"line": graph.line, "symbols": graph.symbols, "bars": graph.bars, "area": graph.area,
            "histogram": graph.histogram}[kind](name)


def plot(x: Any, y: Any = None, *, kind: str = "line", labels: Optional[Sequence[str]] = None, title: str = "",
         x_title: str = "", y_title: str = "", log: str = "", size: "tuple[int, int]" = (800, 500),
         look: str = "light") -> Page:
    """Draws columns on a new page and returns it.

    x, y     columns; y may be several: a list, a matrix of columns, a dict, a data frame. Alone, x is y.
    kind     "line", "symbols", "bars", "area", "steps", "histogram" of x, or "heat map" of a matrix x
    labels   names of the columns for the legend
    title, x_title, y_title   texts of the graph and its axes
    log      axes that are logarithmic: "x", "y" or "xy"
    size, look   of the page, as Page has them
    """
    if kind not in KINDS:
        raise ValueError(f"plot: kind must be one of {', '.join(KINDS)}, not {kind!r}")
    if set(log) - set("xy"):
        raise ValueError(f'plot: log must be "", "x", "y" or "xy", not {log!r}')
    page = Page(*size, look=look)
    graph = page.graph(title)
    graph.x_axis(title=x_title, log="x" in log)
    graph.y_axis(title=y_title, log="y" in log)
    if kind == "heat map":
        graph.heat_map("").grid(x)
    elif kind == "histogram":
        for name, column in _columns(x, labels):
            _data_set(graph, kind, name).add_values(column)
    else:
        values = x if y is None else y
        for name, column in _columns(values, labels):
            places: Any = numpy.arange(float(len(column))) if y is None else x
            if numpy.asarray(places).dtype.kind == "M":
                graph.x_axis(time=True)
            _data_set(graph, kind, name).add(places, column)
    page.Refresh()
    return page
