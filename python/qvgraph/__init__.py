"""A graphing control: pages of graphs as pictures, in notebooks and files."""
from ._faults import ExpressionError, Fault
from ._plot import plot
from ._points import Points
from ._qvgraph import (Axis, Box, DataSet, Expression, Graph, GraphOutline, Legend, Page, PartOutline, look_names,
                       palette, rgb, set_notebook_format)

__all__ = ["Axis", "Box", "DataSet", "Expression", "ExpressionError", "Fault", "Graph", "GraphOutline", "Legend", "Page",
           "PartOutline", "Points", "look_names", "palette", "plot", "rgb", "set_notebook_format"]
