"""Lines: solid and dashed, thin and thick, by the members of the reference."""
import math
import sys

import qvgraph

page = qvgraph.Page(640, 420)
page.NewGraph("Damped oscillations")
page.LegendShow = False
page.SelectXaxis()
page.AxisTitle = "time, s"
page.SelectYaxis()
page.AxisTitle = "amplitude"
times = [0.0]
while times[-1] + 0.02 <= 10:
    times.append(times[-1] + 0.02)
for name, thickness, dash, damping in (("free", 1, 2, 0), ("light", 2, 0, 0.15), ("strong", 3, 0, 0.6)):
    page.NewDataSet(name)
    page.DataLineThickness = thickness
    page.DataLineDash = dash
    for t in times:
        page.AddDataPoint(t, math.exp(-damping * t) * math.cos(4 * t))
for axis, low, high, major in ((0, 0, 10, 10), (1, -1.5, 1.5, 6)):
    page.SetSelectedAxis(axis)
    page.AxisScaleStyle(Value1=low, Value2=high, MajorDivs=major, MinorDivs=2, ScaleStyle=1)
page.LegendShow = True
page.save(sys.argv[1] if len(sys.argv) > 1 else "lines.png")
