// What the examples share: a page of one look, and a main function that writes it as a PNG file.
#pragma once

#include "qvgraph/HeadlessHost.h"

#include <string>

namespace qv::example {

constexpr Color ink = rgb(40, 44, 52), gray = rgb(150, 155, 165), pale = rgb(228, 231, 236);
constexpr Color white = rgb(255, 255, 255), blue = rgb(38, 98, 168), orange = rgb(224, 112, 26);
constexpr Color green = rgb(52, 140, 84), red = rgb(190, 50, 50), purple = rgb(120, 80, 160);

/// Both selected axes: ticks outside, gray lines, pale grid, small labels.
inline void plain_axes(qvGraph& page, std::string const& x_title, std::string const& y_title) {
    for (int const axis : {0, 1}) {
        page.SetSelectedAxis(axis);
        page.AxisStyle({.LineColor = gray});
        std::string const& title = axis == 0 ? x_title : y_title;
        page.AxisTitleStyle({.Title = title, .Font = "Arial|9", .FontColor = ink, .Show = !title.empty()});
        page.AxisLabelStyle({.Font = "Arial|8", .FontColor = ink});
        page.AxisLabelsHoriz(0);
        page.AxisTickStyle({.Length = 1.2F, .Inside = false, .Outside = true, .BothEnds = false});
        page.AxisGridStyle({.MajorGridColor = pale, .MajorGridShow = true, .MinorGridShow = false});
    }
}

/// A white graph over the whole page, or over part of it.
inline void plain_graph(qvGraph& page, std::string const& title, std::string const& x_title = "x",
                        std::string const& y_title = "y") {
    page.NewGraph(title);
    page.PageColors({.Color1 = white});
    page.PageEdgeThickness(0);
    page.BorderStyle({.Color1 = white, .Left = 16, .Top = 10, .Right = 8, .Bottom = 14});
    page.BorderEdgeThickness(0);
    page.PlotAreaColors({.Color1 = white});
    page.GraphTitleStyle({.Font = "Arial|11|Bold", .FontColor = ink, .VerticalShift = 1});
    page.LegendTableStyle(
        {.Font = "Arial|8", .FontColor = ink, .EdgeColor = pale, .EdgeThickness = 1, .Color1 = white});
    page.LegendShow(false);
    page.ThinTickLabels(true);
    page.AdaptiveCurves(true);
    plain_axes(page, x_title, y_title);
}

/// A fixed range with this many divisions.
inline void axis_range(qvGraph& page, int axis, double from, double to, int major, int minor = 1) {
    page.SetSelectedAxis(axis);
    page.AxisScaleStyle(
        {.Value1 = from, .Value2 = to, .MajorDivs = major, .MinorDivs = minor, .ScaleStyle = 1});
}

inline void line(qvGraph& page, std::string const& name, Color color, int thickness = 2, int style = 1) {
    page.NewDataSet(name);
    page.DataSymbol(0);
    page.DataLine({.Color = color, .Thickness = thickness, .Style = style});
}

/// Draws a page of 640 x 420 pixels into NAME.png, or into the file named on the command line.
inline int run(int argc, char** argv, std::string const& name, void (*draw)(qvGraph&)) {
    headless::HeadlessHost host({640, 420});
    draw(host.control());
    host.control().Refresh();
    host.save(argc > 1 ? argv[1] : name + ".png");
    return 0;
}

} // namespace qv::example
