// The arguments of the style methods, each of which sets a group of related properties in one call:
// page.LegendTableStyle({.EdgeThickness = 2}) names what it sets, page.GraphPosition({0, 0, 50, 50}) goes by
// order. What is left out keeps its default, which for most parameters leaves the property as it is.
// Made by scripts/make_members.py.
#pragma once

#include "qvgraph/checked.h"

#include <string>

namespace qv {

/// Of `qvGraph::AxisStyle`. Sets line, scale and side of the selected axis.
struct AxisStyleArguments {
    /// AxisColor: Colour of the axis line, its ticks and its edge of the plot area.
    ColorValue LineColor = -1;
    /// AxisThickness: Width in pixels at 96 to the inch of the axis line and of the plot area's edge it
    /// stands on, drawn as at least 1.
    Checked<std::int32_t> LineThickness = -1;
    /// AxisLog: Whether the axis is logarithmic; cleared at drawing where the range is not wholly positive.
    Checked<bool> LogScale = false;
    /// AxisReverse: Lets values grow to the left, or downwards.
    Checked<bool> Reverse = false;
    /// AxisFarSide: Puts an x axis above the plot area, a y axis to its right.
    Checked<bool> FarSide = false;
};

/// Of `qvGraph::AxisScaleStyle`. Sets range, divisions, mode and label texts of the selected axis.
struct AxisScaleStyleArguments {
    /// AxisValue1: First end of the range shown; setting it makes an automatic axis fixed.
    Checked<double> Value1 = 0;
    /// AxisValue2: Last end of the range shown; setting it makes an automatic axis fixed.
    Checked<double> Value2 = 0;
    /// AxisMajorDivs: Number of divisions between major ticks, 0 for ticks at both ends alone; automatic axes
    /// choose their own.
    Checked<std::int32_t> MajorDivs = 0;
    /// AxisMinorDivs: Number of parts of each division; 1 gives no minor ticks.
    Checked<std::int32_t> MinorDivs = 0;
    /// AxisScale: How the range is found: 0 automatic and round, 1 fixed, 2 fixed with texts as labels.
    Checked<std::int32_t> ScaleStyle = -1;
    /// AxisTextLabels: With AxisScale 2 the labels, separated by commas; else the format of the numbers or
    /// times, e.g. 0.00 or d mmm yyyy.
    std::string TextLabels = "";
};

/// Of `qvGraph::AxisTitleStyle`. Sets the selected axis's title.
struct AxisTitleStyleArguments {
    /// AxisTitle: Text beside the axis, of one or more lines; numbers are taken as text.
    std::string Title = "";
    /// AxisTitleFont: Font of the axis title.
    std::string Font = "";
    /// AxisTitleColor: Colour of the axis title.
    ColorValue FontColor = -1;
    /// AxisTitleShift: Millimetres by which the axis title moves towards the plot area.
    Checked<std::int32_t> Shift = -1;
    /// AxisShowTitle: Whether the title is shown.
    Checked<bool> Show = true;
};

/// Of `qvGraph::AxisLabelStyle`. Sets the selected axis's tick labels.
struct AxisLabelStyleArguments {
    /// AxisLabelFont: Font of the tick labels, e.g. Font=Arial|9|Bold.
    std::string Font = "";
    /// AxisLabelColor: Colour of the tick labels.
    ColorValue FontColor = -1;
    /// AxisLabelShift: Millimetres by which the tick labels move towards the plot area.
    Checked<std::int32_t> Shift = 0;
    /// AxisLabelsHoriz: Angle of the tick labels in degrees, counter-clockwise; a y axis starts with 90.
    Checked<float> LabelAngle = 0;
    /// AxisShowLabels: Whether ticks have labels.
    Checked<bool> Show = true;
};

/// Of `qvGraph::AxisGridStyle`. Sets the selected axis's grid lines.
struct AxisGridStyleArguments {
    /// AxisMajGridColor: Colour of the lines at major ticks.
    ColorValue MajorGridColor = -1;
    /// AxisMinGridColor: Colour of the lines at minor ticks.
    ColorValue MinorGridColor = -1;
    /// AxisGridMajor: Whether lines cross the plot area at the major ticks.
    Checked<bool> MajorGridShow = true;
    /// AxisGridMinor: Whether lines cross the plot area at the minor ticks.
    Checked<bool> MinorGridShow = true;
};

/// Of `qvGraph::AxisTickStyle`. Sets the selected axis's ticks.
struct AxisTickStyleArguments {
    /// AxisTickThickness: Width of the ticks in pixels at 96 to the inch, drawn as at least 1.
    Checked<std::int32_t> Thickness = -1;
    /// AxisTickLength: Length of the major ticks in millimetres; minor ticks have 0.7 of it.
    Checked<float> Length = -1;
    /// AxisTicksInside: Whether ticks reach into the plot area.
    Checked<bool> Inside = true;
    /// AxisTicksOutside: Whether ticks reach out of the plot area, which moves labels and title outwards.
    Checked<bool> Outside = false;
    /// AxisTicksBothEnds: Whether the opposite edge of the plot area has the same ticks.
    Checked<bool> BothEnds = true;
};

/// Of `qvGraph::GraphPosition`. Places the current graph in percent of the page.
struct GraphPositionArguments {
    /// GraphLeft: Left edge in percent of the page.
    Checked<float> Left = -1;
    /// GraphTop: Top edge in percent of the page.
    Checked<float> Top = -1;
    /// GraphWidth: Width in percent of the page.
    Checked<float> Width = -1;
    /// GraphHeight: Height in percent of the page.
    Checked<float> Height = -1;
};

/// Of `qvGraph::BorderWidths`. Sets the widths of the band around the current graph's plot area, in
/// millimetres.
struct BorderWidthsArguments {
    /// BorderLeft: Width in millimetres of the band between the graph's left edge and its plot area.
    Checked<float> Left = -1;
    /// BorderTop: Height in millimetres of the band above.
    Checked<float> Top = -1;
    /// BorderRight: Width in millimetres of the band at the right.
    Checked<float> Right = -1;
    /// BorderBottom: Height in millimetres of the band below.
    Checked<float> Bottom = -1;
};

/// Of `qvGraph::BorderStyle`. Sets fill and widths of that band.
struct BorderStyleArguments {
    /// BorderColor1: First colour of the band around the plot area.
    ColorValue Color1 = -1;
    /// BorderColor2: Second colour of the band; another than the first makes a gradient.
    ColorValue Color2 = -1;
    /// BorderGradient: Direction of the band's gradient in degrees, counter-clockwise from rightwards.
    Checked<std::int32_t> GradientAngle = -1;
    /// BorderGShift: Moves the middle of the band's gradient, -1 to 1, as LegendGshift does.
    Checked<float> gShift = -1;
    /// BorderGStyle: Shape of the band's gradient, numbered as in LegendGStyle.
    Checked<float> gStyle = 1;
    /// BorderTransparent: Whether the band is left as the page is.
    Checked<bool> Transparent = false;
    /// BorderLeft: Width in millimetres of the band between the graph's left edge and its plot area.
    Checked<float> Left = -1;
    /// BorderTop: Height in millimetres of the band above.
    Checked<float> Top = -1;
    /// BorderRight: Width in millimetres of the band at the right.
    Checked<float> Right = -1;
    /// BorderBottom: Height in millimetres of the band below.
    Checked<float> Bottom = -1;
};

/// Of `qvGraph::PageColors`. Sets the fill of the page.
struct PageColorsArguments {
    /// PageColor1: First colour of the page.
    ColorValue Color1 = -1;
    /// PageColor2: Second colour of the page; another than the first makes a gradient.
    ColorValue Color2 = -1;
    /// PageGradient: Direction of the page's gradient in degrees, counter-clockwise from rightwards.
    Checked<std::int32_t> GradientAngle = -1;
    /// PageGShift: Moves the middle of the page's gradient, -1 to 1, as LegendGshift does.
    Checked<float> gShift = -1;
    /// PageGStyle: Shape of the page's gradient, numbered as in LegendGStyle.
    Checked<float> gStyle = 1;
    /// PageTransparent: Whether a gradient of the page is left out; what shows then is the first colour.
    Checked<bool> Transparent = false;
};

/// Of `qvGraph::PlotAreaColors`. Sets the fill of the current graph's plot area.
struct PlotAreaColorsArguments {
    /// PlotAreaColor1: First colour of the plot area.
    ColorValue Color1 = -1;
    /// PlotAreaColor2: Second colour of the plot area; another than the first makes a gradient.
    ColorValue Color2 = -1;
    /// PlotAreaGradient: Direction of the plot area's gradient in degrees, counter-clockwise from rightwards.
    Checked<std::int32_t> GradientAngle = -1;
    /// PlotAreaGShift: Moves the middle of the plot area's gradient, -1 to 1, as LegendGshift does.
    Checked<float> gShift = -1;
    /// PlotAreaGStyle: Shape of the plot area's gradient, numbered as in LegendGStyle.
    Checked<float> gStyle = 1;
    /// PlotAreaTransparent: Whether the plot area shows what is below it.
    Checked<bool> Transparent = false;
};

/// Of `qvGraph::GraphTitleStyle`. Sets the current graph's name and how it is written.
struct GraphTitleStyleArguments {
    /// GraphTitle: Returns the name of the current graph.
    std::string Title = "";
    /// GraphTitleFont: Font of the graph's title.
    std::string Font = "";
    /// GraphTitleColor: Colour of the graph's title.
    ColorValue FontColor = -1;
    /// GraphTitleHShift: Millimetres by which the title moves to the right.
    Checked<std::int16_t> HorizShift = 0;
    /// GraphTitleVShift: Millimetres by which the title moves up.
    Checked<std::int32_t> VerticalShift = 0;
    /// GraphShowTitle: Whether the graph's name stands above its plot area.
    Checked<bool> Show = true;
};

/// Of `qvGraph::LegendTableStyle`. Sets font, place and fill of the current graph's legend.
struct LegendTableStyleArguments {
    /// LegendFont: Font of the legend's texts.
    std::string Font = "";
    /// LegendFontColor: Colour of the legend's texts and of the DataID texts.
    ColorValue FontColor = -1;
    /// LegendTableLeft: Left edge of the legend in percent of the graph's width; kept inside the graph.
    Checked<float> LeftPercent = -1;
    /// LegendTableTop: Top edge of the legend in percent of the graph's height; kept inside the graph.
    Checked<float> TopPercent = -1;
    /// LegendEdgeColor: Colour of the legend's outline.
    ColorValue EdgeColor = -1;
    /// LegendEdgeThickness: Width of the legend's outline in pixels at 96 to the inch; 0 for none.
    Checked<std::int32_t> EdgeThickness = -1;
    /// LegendTableColor1: First colour of the legend's ground.
    ColorValue Color1 = -1;
    /// LegendTableColor2: Second colour of the legend's ground; another than the first makes a gradient.
    ColorValue Color2 = -1;
    /// LegendGradient: Direction of the legend's gradient in degrees, counter-clockwise from rightwards.
    Checked<std::int32_t> GradientAngle = -1;
    /// LegendGshift: Moves the middle of the legend's gradient: 1 keeps the first colour longer, -1 the
    /// second.
    Checked<float> gShift = -1;
    /// LegendGStyle: Shape of the legend's gradient: 1 lines across its direction, 2 rectangles about the
    /// centre, 3 rhombi, 4 a fan from the centre, 5 rectangles about a corner, 6 a fan from a corner; zero or
    /// negative ones lead there and back.
    Checked<float> gStyle = 1;
    /// LegendTransparent: Whether the legend has no ground.
    Checked<bool> Transparent = false;
    /// LegendShow: Whether the legend table is shown.
    Checked<bool> Show = true;
};

/// Of `qvGraph::SymbolStyle`. Sets symbols, bars and error bars of the selected data set; Color2 is the
/// outline's.
struct SymbolStyleArguments {
    /// DataSymbol: 0 none, 1 bars, 2 dot, 3 circle, 4 square, 5 diamond, 6 and 7 triangles up and down, 8
    /// wide and 9 tall rectangle, 10 plus, 11 cross, -1 numbers, -2 letters, else the character of that code.
    Checked<std::int32_t> Symbol = -3;
    /// DataSymbolSize: Size of the symbols in millimetres.
    Checked<float> Size = -1;
    /// DataSymbolColor: Colour of symbols, bars and filled areas.
    ColorValue Color1 = -1;
    /// DataSymbolEdgeColor: Colour of the symbols' outlines, and of error bars along x.
    ColorValue Color2 = -1;
    /// DataSymbolEdgeThickness: Width of the symbols' outlines in pixels at 96 to the inch; 0 for none.
    Checked<std::int32_t> EdgeThickness = -1;
    /// Bar3D: Whether bars are shaded like cylinders, from the edge's colour to the symbol's.
    Checked<bool> Bar3D = false;
    /// BarOffset: Millimetres, or with a BarWidth values of the axis, by which bars move across their length,
    /// so that sets stand side by side.
    Checked<float> BarOffset = 0;
    /// BarShadow: Whether bars have a shadow, a millimetre to the right and down.
    Checked<bool> BarShadow = false;
    /// BarStacked: Whether bars stand on those of the data set before, bar by bar.
    Checked<bool> Stacked = false;
    /// BarBase: Whether bars start at BarBaseValue instead of beyond the plot area's edge.
    Checked<bool> BarBase = false;
    /// BarBaseValue: The value at which bars start.
    Checked<double> BarBaseValue = 0;
    /// ShowErrorBar: Whether points with an E have error bars: upright for a positive E, lying for a negative
    /// one.
    Checked<bool> ShowErrorBar = true;
    /// DataTextFont: Font of the text, of character symbols and of DataID texts.
    std::string TextFont = "";
    /// ErrorBarColor: Colour of upright error bars.
    ColorValue ErrorBarColor = 0;
};

/// Of `qvGraph::DataLine`. Sets the line of the selected data set.
struct DataLineArguments {
    /// DataLineColor: Colour of the line.
    ColorValue Color = -1;
    /// DataLineThickness: Width of the line in pixels at 96 to the inch, drawn as at least 1.
    Checked<std::int32_t> Thickness = 1;
    /// DataLineStyle: 0 none, 1 solid, 2 dotted, 3 smooth curve, 4 filled area, 5 area outlined piece by
    /// piece.
    Checked<std::int32_t> Style = 1;
};

} // namespace qv
