#include "demo/theme.h"

namespace qv::demo {

void start_panel(qvGraph& page, Panel const& panel) {
    page.NewGraph(panel.title);
    page.GraphPosition({panel.left, panel.top, panel.width, panel.height});
    page.BorderWidths({.Left = 18, .Top = 14, .Right = panel.right_margin, .Bottom = 12});
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
    page.AxisTitle(plan.title);
    page.AxisFarSide(plan.far_side);
}

void add_line(qvGraph& page, Values const& values, Color color, std::int16_t thickness) {
    page.NewDataSet(values.name);
    page.AddDataPoints(values.x, values.y);
    page.DataLine({.Color = color, .Thickness = thickness});
}

void add_bars(qvGraph& page, Values const& values, Color color, float width) {
    page.NewDataSet(values.name);
    page.AddDataPoints(values.x, values.y);
    page.SymbolStyle({.Symbol = 1, .Size = width / 0.9F, .Color1 = color, .BarBase = true});
}

void add_dots(qvGraph& page, Values const& values, Color color, float size) {
    page.NewDataSet(values.name);
    page.AddDataPoints(values.x, values.y);
    page.SymbolStyle({.Symbol = 3, .Size = size, .Color1 = color});
}

void show_legend(qvGraph& page, Point percent) {
    page.LegendTableStyle(
        {.LeftPercent = static_cast<float>(percent.x), .TopPercent = static_cast<float>(percent.y)});
}

void add_note(qvGraph& page, char const* text, Point percent) {
    constexpr std::uint8_t start_middle = 3;
    page.NewDataSet("note", false);
    page.AddText(text, percent.x, percent.y, start_middle, "",
                 number_of<Color>(light.values.at("AxisLabelColor")), 0, true);
}

} // namespace qv::demo
