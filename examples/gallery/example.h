// What the examples share: a page in one look, colours of it by name, and a main function that writes it as a
// PNG file.
#pragma once

#include "qvgraph/HeadlessHost.h"
#include "qvgraph/looks.h"

#include <string>

namespace qv::example {

inline const Look light = look("light");
inline const Color blue = light.palette[0], orange = light.palette[1], green = light.palette[2],
                   red = light.palette[3], purple = light.palette[4];

inline Color color_of(std::string const& property) {
    return number_of<Color>(light.values.at(property));
}
inline const Color white = color_of("PageColor1"), ink = color_of("GraphTitleColor"),
                   gray = color_of("AxisColor"), pale = color_of("AxisMajGridColor");

/// A graph over the whole page, or over part of it, with titles and without a legend.
inline void plain_graph(qvGraph& page, std::string const& title, std::string const& x_title = "x",
                        std::string const& y_title = "y") {
    page.NewGraph(title);
    page.LegendShow(false);
    page.SelectXaxis();
    page.AxisTitle(x_title);
    page.SelectYaxis();
    page.AxisTitle(y_title);
}

/// A fixed range with this many divisions.
inline void axis_range(qvGraph& page, int axis, double from, double to, int major, int minor = 1) {
    page.SetSelectedAxis(axis);
    page.AxisScaleStyle(
        {.Value1 = from, .Value2 = to, .MajorDivs = major, .MinorDivs = minor, .ScaleStyle = 1});
}

inline void line(qvGraph& page, std::string const& name, Color color, int thickness = 2, int style = 1) {
    page.NewDataSet(name);
    page.DataLine({.Color = color, .Thickness = thickness, .Style = style});
}

/// Draws a page of 640 x 420 pixels into NAME.png, or into the file named on the command line.
inline int run(int argc, char** argv, std::string const& name, void (*draw)(qvGraph&)) {
    headless::HeadlessHost host({640, 420});
    host.control().UseLook("light");
    draw(host.control());
    host.control().Refresh();
    host.save(argc > 1 ? argv[1] : name + ".png");
    return 0;
}

} // namespace qv::example
