"""Pie and ring: labels that keep apart on both sides, small slices gathered, a legend of slices."""
import sys

import qvgraph

SOURCES = {"oil": 31.6, "coal": 26.5, "gas": 23.3, "water": 6.4, "nuclear": 4.0, "wind": 3.3, "sun": 2.4, "waste": 0.6,
           "wood": 0.7, "earth": 0.7, "biofuel": 0.5}

page = qvgraph.Page(640, 420)
pie = page.graph("Energy of the world, percent", left=0, width=50)
pie.legend(show=False)
everything = pie.pie("energy")
ring = page.graph("The same, gathered", left=50, width=50)
few = ring.pie("energy", pie_hole=55, pie_labels=2, pie_gather=3.5, pie_gather_name="other")
ring.legend(place=2)
for name, value in SOURCES.items():
    for slices in (everything, few):
        slices.add_slice(name, value)
page.save(sys.argv[1] if len(sys.argv) > 1 else "pie.png")
