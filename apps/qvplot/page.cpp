#include "qvplot/page.h"

#include "graph/model/selection.h"
#include "qvplot/layout.h"
#include "qvplot/legend_place.h"
#include "qvplot/look.h"
#include "qvplot/ruler.h"
#include "render/legend.h"

#include <algorithm>

namespace qv::plot {
namespace {

constexpr std::int16_t bar_symbol = 1;
constexpr std::int16_t first_shape = 3; // circle, square, diamond, two triangles
constexpr std::size_t shapes = 5;
constexpr double pixels_per_mm = 96 / millimetres_per_inch;

struct AxisLook {
    Color color = ink;
    bool far_side = false;
    bool grid = true;
    double title_shift = 0; // millimetres away from the axis
};

void style_axis(qvGraph& page, AxisLayout const& axis, AxisLook const& look) {
    AxisPlan const& plan = axis.plan;
    page.AxisScaleStyle({.Value1 = plan.range.low,
                         .Value2 = plan.range.high,
                         .MajorDivs = -1,
                         .MinorDivs = -1,
                         .ScaleStyle = 1,
                         .TextLabels = plan.format});
    page.SetAxisTicks(plan.major, plan.minor);
    page.AxisStyle({.LineColor = axis_gray, .LogScale = plan.is_log, .FarSide = look.far_side});
    page.AxisTitleStyle({.Title = axis.title,
                         .Font = axis_title_font.specification,
                         .FontColor = look.color,
                         .Show = !axis.title.empty()});
    page.AxisTitleShift(static_cast<float>(-look.title_shift));
    page.AxisLabelStyle({.Font = label_font.specification, .FontColor = look.color});
    page.AxisTickStyle(
        {.Length = static_cast<float>(tick_length), .Inside = false, .Outside = true, .BothEnds = false});
    page.AxisGridStyle({.MajorGridColor = grid_gray, .MajorGridShow = look.grid, .MinorGridShow = false});
}

// The colour of an axis that has one column, on a page with an axis on either side.
Color axis_color(PlotData const& data, bool second) {
    std::size_t columns = 0, last = 0;
    for (std::size_t i = 0; i < data.series.size(); ++i)
        if (data.series[i].on_second_axis == second) {
            ++columns;
            last = i;
        }
    return columns == 1 && data.series.size() > 1 ? column_color(last) : ink;
}

void style_axes(qvGraph& page, PlotData const& data, PageLayout const& layout) {
    page.SelectXaxis(1);
    // The control counts an x axis's title from its labels without their gap.
    style_axis(page, layout.x, {.grid = true, .title_shift = label_gap + title_gap - tick_length});
    // It also halves the distance of its labels: twice the tick's length, and a shift.
    page.AxisLabelShift(static_cast<float>(2 * (tick_length - label_gap)));
    page.SelectYaxis(1);
    style_axis(page, layout.y,
               {.color = layout.y2 ? axis_color(data, false) : ink, .title_shift = title_gap});
    if (!layout.y2) return;
    page.SelectYaxis(2);
    style_axis(page, *layout.y2,
               {.color = axis_color(data, true), .far_side = true, .grid = false, .title_shift = title_gap});
}

void style_graph(qvGraph& page, PageLayout const& layout, PlotOptions const& options) {
    page.PageColors({.Color1 = white});
    page.BorderStyle({.Color1 = white,
                      .Left = static_cast<float>(layout.left),
                      .Top = static_cast<float>(layout.top),
                      .Right = static_cast<float>(layout.right),
                      .Bottom = static_cast<float>(layout.bottom)});
    page.BorderEdgeThickness(0);
    page.PlotAreaColors({.Color1 = white});
    page.GraphTitleStyle({.Font = title_font.specification,
                          .FontColor = ink,
                          .VerticalShift = static_cast<std::int32_t>(title_gap),
                          .Show = !options.title.empty()});
}

LegendRoom legend_room(qvGraph& page) {
    graph::ControlState& state = page.state();
    auto const size = render::legend_size(state, *state.host->make_surface(), graph::current_graph(state));
    return {size.width / state.UnitsPerMmX, size.height / state.UnitsPerMmY};
}

// The axis title names a lone column.
void style_legend(qvGraph& page, PlotData const& data, PageLayout const& layout, PlotOptions const& options) {
    page.LegendTableStyle({.Font = label_font.specification,
                           .FontColor = ink,
                           .EdgeColor = axis_gray,
                           .EdgeThickness = 1,
                           .Color1 = white,
                           .Show = false});
    if (options.no_legend || data.series.size() < 2) return;
    auto const place = find_legend_place(data, layout, options, legend_room(page));
    if (!place) return;
    page.LegendTableLeft(static_cast<float>(100 * place->x / page_width(page)));
    page.LegendTableTop(static_cast<float>(100 * place->y / page_height(page)));
    page.LegendShow(true);
}

void style_bars(qvGraph& page, std::size_t number, std::size_t count, PageLayout const& layout) {
    constexpr double bar_share_of_size = 0.9; // the control's bars are narrower than their size
    double const place = static_cast<double>(number) - (static_cast<double>(count) - 1) / 2;
    page.SymbolStyle({.Symbol = bar_symbol,
                      .Size = static_cast<float>(layout.bar_width / bar_share_of_size),
                      .Color1 = column_color(number),
                      .BarOffset = static_cast<float>(place * layout.bar_width),
                      .BarBase = !layout.y.plan.is_log});
    page.DataLineStyle(0);
}

// Millimetres: smaller the more there are.
float symbol_size(std::size_t points) {
    return points <= 200 ? 2 : points <= 2000 ? 1.4F : points <= 20000 ? 1 : 0.6F;
}

void style_points(qvGraph& page, Series const& series, std::size_t number, PageLayout const& layout,
                  PlotOptions const& options) {
    const Color color = column_color(number);
    // A line of one point would not be seen.
    bool const symbols = options.symbols || series.x.size() == 1;
    auto const shape = static_cast<std::int16_t>(first_shape + number / palette.size() % shapes);
    page.SymbolStyle({.Symbol = symbols ? shape : 0, .Size = symbol_size(series.x.size()), .Color1 = color});
    bool const lines = options.lines || !options.symbols;
    bool const dense = static_cast<double>(series.x.size()) > layout.plot_width * pixels_per_mm;
    page.DataLine({.Color = color, .Thickness = dense ? 1 : 2, .Style = lines ? 1 : 0});
}

void style_function(qvGraph& page, std::size_t number) {
    page.DataSymbol(0);
    page.DataLine({.Color = column_color(number), .Thickness = 2, .Style = 1});
}

void add_series(qvGraph& page, PlotData const& data) {
    for (Series const& series : data.series) {
        page.SelectYaxis(series.on_second_axis ? 2 : 1);
        page.NewDataSet(series.name);
        if (series.function.empty())
            page.AddDataPoints(series.x, series.y);
        else
            page.AddMathFunc(series.function, series.function_range.from, series.function_range.to);
    }
}

void style_page(qvGraph& page, PlotData const& data, PageLayout const& layout, PlotOptions const& options) {
    for (std::size_t i = 0; i < data.series.size(); ++i) {
        page.SetSelectedData(static_cast<std::int16_t>(i));
        if (!data.series[i].function.empty())
            style_function(page, i);
        else if (options.bars)
            style_bars(page, i, data.series.size(), layout);
        else
            style_points(page, data.series[i], i, layout, options);
    }
    style_graph(page, layout, options);
    style_legend(page, data, layout, options);
    style_axes(page, data, layout);
}

void set_ticks(qvGraph& page, AxisPlan const& plan) {
    page.SetAxisTicks(plan.major, plan.minor);
    page.AxisTextLabels(plan.format);
}

Extent shown_range(qvGraph const& page) {
    Extent range;
    page.GetAxisRange(range.low, range.high);
    return range;
}

} // namespace

void draw_page(qvGraph& page, PlotData const& data, PlotOptions const& options) {
    page.Reset();
    page.NewGraph(options.title);
    page.ThinTickLabels(true);
    page.AdaptiveCurves(true);
    for (std::string const& definition : options.definitions) page.DefineFunction(definition);
    const PageLayout layout = lay_out_page(page, data, options);
    if (layout.y2) page.NewYAxis("");
    add_series(page, data);
    style_page(page, data, layout, options);
    page.Refresh();
}

void fit_page(qvGraph& page, PlotData const& data, PlotOptions const& options) {
    style_page(page, data, lay_out_page(page, data, options), options);
    page.Refresh();
}

void follow_zoom(qvGraph& page, PlotData const& data, PlotOptions const& options) {
    const PageLayout layout = lay_out_page(page, data, options);
    // This may be called while an axis is drawn, whose selection counts.
    std::int16_t const selected_x = page.GetSelectedAxisIndex(0), selected_y = page.GetSelectedAxisIndex(1);
    page.SelectXaxis(1);
    set_ticks(page, plan_x_axis(data, options, shown_range(page), layout.x_room));
    page.SelectYaxis(1);
    set_ticks(page, plan_y_axis(options.log.y, shown_range(page), layout.y_room));
    if (layout.y2) {
        page.SelectYaxis(2);
        set_ticks(page, plan_y_axis(options.log.y2, shown_range(page), layout.y_room));
    }
    page.SetSelectedAxis(selected_x);
    page.SetSelectedAxis(selected_y);
}

} // namespace qv::plot
