#include "demo/theme.h"

namespace qv::demo {

void start_panel(qvGraph& page, Panel const& panel) {
    page.NewGraph(panel.title);
    page.GraphPosition({panel.left, panel.top, panel.width, panel.height});
    page.BorderStyle({.Color1 = white, .Left = 18, .Top = 14, .Right = panel.right_margin, .Bottom = 12});
    page.BorderEdgeThickness(0);
    page.PlotAreaColors({.Color1 = white});
    page.GraphTitleStyle({.Font = "Font=Arial|12|Bold", .FontColor = ink, .VerticalShift = 2});
    page.LegendShow(false);
}

void plan_axis(qvGraph& page, AxisPlan const& plan) {
    bool const given_labels = plan.labels[0] != '\0';
    page.AxisScaleStyle({.Value1 = plan.low,
                         .Value2 = plan.high,
                         .MajorDivs = plan.divisions,
                         .MinorDivs = 1,
                         .ScaleStyle = static_cast<std::int16_t>(given_labels ? 2 : 1),
                         .TextLabels = plan.labels});
    page.AxisStyle({.LineColor = plan.color, .FarSide = plan.far_side});
    page.AxisTitleStyle({.Title = plan.title,
                         .Font = "Font=Arial|9",
                         .FontColor = plan.color,
                         .Shift = -1,
                         .Show = plan.title[0] != '\0'});
    page.AxisLabelStyle({.Font = "Font=Arial|9", .FontColor = plan.color, .Shift = plan.label_shift});
    page.AxisTickStyle({.Length = 1.2F, .BothEnds = false});
    if (!plan.far_side) page.AxisGridStyle({.MajorGridColor = grid, .MinorGridShow = false});
}

void add_line(qvGraph& page, Values const& values, Color color, std::int16_t thickness) {
    page.NewDataSet(values.name);
    page.AddDataPoints(values.x, values.y);
    page.DataSymbol(0);
    page.DataLine({.Color = color, .Thickness = thickness});
}

void add_bars(qvGraph& page, Values const& values, Color color, float width) {
    page.NewDataSet(values.name);
    page.AddDataPoints(values.x, values.y);
    page.SymbolStyle({.Symbol = 1, .Size = width / 0.9F, .Color1 = color, .BarBase = true});
    page.DataLineStyle(0);
}

void add_dots(qvGraph& page, Values const& values, Color color, float size) {
    page.NewDataSet(values.name);
    page.AddDataPoints(values.x, values.y);
    page.SymbolStyle({.Symbol = 3, .Size = size, .Color1 = color});
    page.DataLineStyle(0);
}

void show_legend(qvGraph& page, Point percent) {
    page.LegendTableStyle({.Font = "Font=Arial|9",
                           .FontColor = ink,
                           .LeftPercent = static_cast<float>(percent.x),
                           .TopPercent = static_cast<float>(percent.y),
                           .EdgeColor = grid,
                           .EdgeThickness = 1,
                           .Color1 = white});
}

void add_note(qvGraph& page, char const* text, Point percent, Color color) {
    constexpr std::uint8_t start_middle = 3;
    page.NewDataSet("note", false);
    page.AddText(text, percent.x, percent.y, start_middle, "Font=Arial|9", color, 0, true);
}

} // namespace qv::demo
