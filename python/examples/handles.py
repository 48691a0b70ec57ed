"""Handles: two graphs side by side, each with its axes, and a live series that keeps its latest points."""
import math
import sys

import qvgraph

page = qvgraph.Page(960, 400)
blue, orange = qvgraph.palette("light")[:2]


def colored(title, color):
    return {"title": title, "color": color, "label_color": color, "title_color": color}


year = page.graph("Weather", left=0, width=56)
year.x_axis(title="month")
celsius = year.y_axis(**colored("mean temperature, °C", orange))
millimetres = year.add_y_axis(**colored("rain, mm", blue))
millimetres.far_side = True
rain = year.bars("rain", axis=millimetres, color=blue, bar_width=0.6)
warmth = year.line("temperature", axis=celsius, color=orange, symbol=3)
for month in range(1, 13):
    warmth.add(month, 10 - 9 * math.cos((month - 1) * 0.52))
    rain.add(month, 60 + 30 * math.sin(month * 0.8))

live = page.graph("Live", left=56, width=44)
live.x_axis(title="seconds")
live.y_axis(title="signal")
signal = live.line("the latest 500 of 3000 points", color=blue)
signal.keep_latest(500)
for i in range(3000):
    t = i * 0.01
    signal.add(t, math.sin(3 * t) + 0.3 * math.sin(17 * t))
page.save(sys.argv[1] if len(sys.argv) > 1 else "handles.png")
