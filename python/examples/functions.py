"""Functions given as text: poles stay open, wild ones are drawn to the pixel, functions of one's own."""
import sys

import qvgraph

page = qvgraph.Page(640, 420)
page.DefineFunction("wave(a, t) = EXP(-a*t^2) * COS(6*t)")


def graph(title, x_title, left, top, width, functions, ranges):
    page.NewGraph(title)
    page.LegendShow = False
    page.SelectXaxis()
    page.AxisTitle = x_title
    page.SelectYaxis()
    page.AxisTitle = ""
    page.GraphPosition(Left=left, Top=top, Width=width, Height=50)
    for formula, start, end in functions:
        page.NewDataSet(formula)
        page.AddMathFunc(formula, start, end)
    for axis, (low, high, major, minor) in enumerate(ranges):
        page.SetSelectedAxis(axis)
        page.AxisScaleStyle(Value1=low, Value2=high, MajorDivs=major, MinorDivs=minor, ScaleStyle=1)


graph("tan(x) and x", "x", 0, 0, 50, [("tan(x)", -5, 5), ("x", -5, 5)], [(-5, 5, 10, 1), (-5, 5, 5, 1)])
graph("sin(1/x)", "x", 50, 0, 50, [("sin(1/x)", 0, 0)], [(-0.5, 0.5, 5, 2), (-1.2, 1.2, 4, 1)])
graph("wave(a, t) = EXP(-a*t^2) * COS(6*t)", "t", 0, 50, 100, [("wave(0.2, x)", -4, 4), ("wave(1, x)", -4, 4)],
      [(-4, 4, 8, 2), (-1, 1, 4, 1)])
page.LegendShow = True
page.save(sys.argv[1] if len(sys.argv) > 1 else "functions.png")
