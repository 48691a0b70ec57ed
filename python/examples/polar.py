"""Polar graphs: a line with symbols and an area on a compass, and functions of the angle in radians."""
import math
import sys

import qvgraph

page = qvgraph.Page(640, 420)
blue, orange, green, red = qvgraph.palette("light")[:4]


def gain(degrees):
    angle = degrees * 3.14159265358979 / 180
    return 20 * math.log10(abs(math.cos(angle / 2) * math.cos(2.5 * math.sin(angle))) + 0.03)


# A compass: north at the top, clockwise.
wind = page.graph("Antenna, dB", polar=True, polar_zero=90, polar_clockwise=True, left=0, width=50)
wind.y_axis(from_=-30, to=0)
lobe = wind.area("gain", symbol_color=qvgraph.rgb(206, 224, 245), line_color=blue)
measured = wind.symbols("measured", symbol=3, symbol_color=orange)
for degrees in range(0, 361, 2):
    lobe.add(degrees, gain(degrees))
for degrees in range(0, 360, 15):
    measured.add(degrees, gain(degrees) + math.sin(degrees))

roses = page.graph("Functions of the angle", polar=True, polar_radians=True, left=50, width=50)
roses.function("rose", "2 * abs(cos(2 * x))", color=red)
roses.function("spiral", "x / 6.2832", color=green, formula_from=0, formula_to=12.566)
page.save(sys.argv[1] if len(sys.argv) > 1 else "polar.png")
