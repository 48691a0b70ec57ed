"""Functions given as text: poles stay open, wild ones are drawn to the pixel, functions of one's own."""
import sys

import qvgraph

page = qvgraph.Page(640, 420)
page.DefineFunction("wave(a, t) = EXP(-a*t^2) * COS(6*t)")


def graph(title, variable, x_range, y_range, **place):
    made = page.graph(title, **place)
    made.x_axis(title=variable, from_=x_range[0], to=x_range[1])
    made.y_axis(from_=y_range[0], to=y_range[1])
    made.legend(show=False)
    return made


tangent = graph("tan(x) and x", "x", (-5, 5), (-5, 5), left=0, top=0, width=50, height=50)
for formula in ("tan(x)", "x"):
    tangent.function(formula, formula, formula_from=-5, formula_to=5)

sine = graph("sin(1/x)", "x", (-0.5, 0.5), (-1.2, 1.2), left=50, top=0, width=50, height=50)
sine.function("sin(1/x)", "sin(1/x)")

waves = graph("wave(a, t) = EXP(-a*t^2) * COS(6*t)", "t", (-4, 4), (-1, 1), left=0, top=50, width=100, height=50)
for formula in ("wave(0.2, x)", "wave(1, x)"):
    waves.function(formula, formula)
waves.legend(show=True)
page.save(sys.argv[1] if len(sys.argv) > 1 else "functions.png")
