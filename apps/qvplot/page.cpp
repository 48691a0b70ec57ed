#include "qvplot/page.h"
#include "control/state_of.h"

#include "document/selection.h"
#include "interact/scroll_bars.h"
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
    bool labels = true;
    double title_shift = 0; // millimetres away from the axis
};

// Of the selected axis; its full range stays.
void show_range(qvGraph& page, Extent range) {
    document::Axis& axis = document::selected_axis(control::state_of(page));
    axis.AxisValue1 = range.low;
    axis.AxisValue2 = range.high;
}

void style_axis(qvGraph& page, AxisLayout const& axis, AxisLook const& look) {
    AxisPlan const& plan = axis.plan;
    page.AxisScaleStyle({.Value1 = axis.full.low,
                         .Value2 = axis.full.high,
                         .MajorDivs = -1,
                         .MinorDivs = -1,
                         .ScaleStyle = 1,
                         .TextLabels = plan.format});
    show_range(page, plan.range);
    page.SetAxisTicks(plan.major, plan.minor);
    page.AxisStyle({.LineColor = axis_gray, .LogScale = plan.is_log, .FarSide = look.far_side});
    page.AxisTitleStyle({.Title = axis.title,
                         .Font = axis_title_font.specification,
                         .FontColor = look.color,
                         .Show = !axis.title.empty()});
    page.AxisTitleShift(static_cast<float>(-look.title_shift));
    page.AxisLabelStyle({.Font = label_font.specification, .FontColor = look.color, .Show = look.labels});
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
    bool const labels = layout.shows_labels;
    page.SelectXaxis(1);
    // The control counts an x axis's title from its labels without their gap.
    style_axis(page, layout.x, {.labels = labels, .title_shift = label_gap + title_gap - tick_length});
    // It also halves the distance of its labels: twice the tick's length, and a shift.
    page.AxisLabelShift(static_cast<float>(2 * (tick_length - label_gap)));
    page.SelectYaxis(1);
    style_axis(
        page, layout.y,
        {.color = layout.y2 ? axis_color(data, false) : ink, .labels = labels, .title_shift = title_gap});
    if (!layout.y2) return;
    page.SelectYaxis(2);
    style_axis(page, *layout.y2,
               {.color = axis_color(data, true),
                .far_side = true,
                .grid = false,
                .labels = labels,
                .title_shift = title_gap});
    page.SelectYaxis(1); // which the scroll bar follows
}

void style_graph(qvGraph& page, PageLayout const& layout) {
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
                          .Show = layout.shows_title});
}

LegendRoom legend_room(qvGraph& page) {
    document::ControlState& state = control::state_of(page);
    auto const size = render::legend_size(state, *state.host->make_surface(), document::current_graph(state));
    return {size.width / state.UnitsPerMmX, size.height / state.UnitsPerMmY};
}

void style_legend(qvGraph& page) {
    page.LegendTableStyle({.Font = label_font.specification,
                           .FontColor = ink,
                           .EdgeColor = axis_gray,
                           .EdgeThickness = 1,
                           .Color1 = white,
                           .Show = false});
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

// Points of a line whose neighbours are missing.
struct LonePoints {
    std::size_t series = 0;
    std::vector<double> x;
    std::vector<double> y;
};

LonePoints find_lone_points(Series const& series, std::size_t index) {
    LonePoints lone{index, {}, {}};
    for (std::size_t i = 0; i < series.x.size(); ++i) {
        bool const joined =
            (i > 0 && series.has_point(i - 1)) || (i + 1 < series.x.size() && series.has_point(i + 1));
        if (joined || !series.has_point(i)) continue;
        lone.x.push_back(series.x[i]);
        lone.y.push_back(series.y[i]);
    }
    return lone;
}

std::vector<LonePoints> find_lone_points(PlotData const& data, PlotOptions const& options) {
    std::vector<LonePoints> all;
    if (!options.draws_lines() || options.symbols) return all;
    for (std::size_t i = 0; i < data.series.size(); ++i) {
        LonePoints lone = find_lone_points(data.series[i], i);
        bool const some = !lone.x.empty() && lone.x.size() < data.series[i].number_of_points();
        if (some && data.series[i].function.empty()) all.push_back(std::move(lone));
    }
    return all;
}

void style_points(qvGraph& page, Series const& series, std::size_t number, PageLayout const& layout,
                  PlotOptions const& options) {
    const Color color = column_color(number);
    std::size_t const points = series.number_of_points();
    // A line of lone points would not be seen.
    bool const symbols = options.symbols || find_lone_points(series, number).x.size() == points;
    auto const shape = static_cast<std::int16_t>(first_shape + number / palette.size() % shapes);
    page.SymbolStyle({.Symbol = symbols ? shape : 0, .Size = symbol_size(points), .Color1 = color});
    bool const lines = options.draws_lines();
    bool const dense = static_cast<double>(points) > layout.plot_width * pixels_per_mm;
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

// Points that a line alone would not show, because those beside them are missing. They get a data set of
// their own, without a row in the legend.
void add_lone_points(qvGraph& page, PlotData const& data, std::vector<LonePoints> const& lone_points) {
    for (auto const& [index, x, y] : lone_points) {
        Series const& series = data.series[index];
        page.SelectYaxis(series.on_second_axis ? 2 : 1);
        page.NewDataSet(series.name);
        page.DataInLegendTable(false);
        page.AddDataPoints(x, y);
        page.SymbolStyle({.Symbol = first_shape,
                          .Size = symbol_size(series.number_of_points()),
                          .Color1 = column_color(index)});
        page.DataLineStyle(0);
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
    style_graph(page, layout);
    style_axes(page, data, layout);
}

std::vector<Extent> shown_ranges(qvGraph const& page) {
    std::vector<Extent> ranges;
    for (document::Axis const& axis : document::current_graph(control::state_of(page)).Axes)
        ranges.push_back({axis.AxisValue1, axis.AxisValue2});
    return ranges;
}

} // namespace

PlotPage::PlotPage(qvGraph& page, PlotData data, PlotOptions options)
    : page_(page), data_(std::move(data)), options_(std::move(options)) {}

void PlotPage::draw() {
    page_.Reset();
    page_.NewGraph(options_.title);
    page_.ThinTickLabels(true);
    page_.AdaptiveCurves(true);
    for (std::string const& definition : options_.definitions) page_.DefineFunction(definition);
    layout_ = lay_out_page(page_, data_, options_);
    if (layout_.y2) page_.NewYAxis("");
    add_series(page_, data_);
    add_lone_points(page_, data_, find_lone_points(data_, options_));
    style_legend(page_);
    arrange({});
    place_legend(false);
    page_.Refresh();
}

void PlotPage::fit() {
    document::Graph const& graph = document::current_graph(control::state_of(page_));
    bool const legend_was_moved = legend_place_
                                  && (graph.LegendTableLeft != static_cast<float>(legend_place_->x)
                                      || graph.LegendTableTop != static_cast<float>(legend_place_->y));
    arrange(zoomed_ranges());
    place_legend(legend_was_moved);
    page_.Refresh();
    interact::ResizeScrollBars(control::state_of(page_));
}

void PlotPage::follow_zoom() {
    if (shown_ranges(page_) == shown_) return;
    arrange(zoomed_ranges());
    page_.Refresh();
}

void PlotPage::arrange(ZoomedRanges const& zoomed) {
    layout_ = lay_out_page(page_, data_, options_, zoomed);
    // Until one bar fills the plot area: the control knows no bars of many metres.
    if (layout_.bar_width > 0 && !zoomed.x)
        page_.MaxZoomFactor(std::max(1.0, layout_.plot_width / layout_.bar_width));
    style_page(page_, data_, layout_, options_);
    shown_ = shown_ranges(page_);
}

// The axis title names a lone column.
void PlotPage::place_legend(bool stays) {
    page_.LegendShow(false);
    if (options_.no_legend || data_.series.size() < 2) return;
    auto const place = find_legend_place(data_, layout_, options_, legend_room(page_));
    if (!place) return;
    page_.LegendShow(true);
    if (stays) return;
    legend_place_ = Point{100 * place->x / page_width(page_), 100 * place->y / page_height(page_)};
    page_.LegendTableLeft(static_cast<float>(legend_place_->x));
    page_.LegendTableTop(static_cast<float>(legend_place_->y));
}

ZoomedRanges PlotPage::zoomed_ranges() const {
    auto const& axes = document::current_graph(control::state_of(page_)).Axes;
    auto const zoomed = [](document::Axis const& axis) -> std::optional<Extent> {
        if (axis.AxisValue1 == axis.ScaleMin && axis.AxisValue2 == axis.ScaleMax) return std::nullopt;
        return Extent{axis.AxisValue1, axis.AxisValue2};
    };
    ZoomedRanges ranges{zoomed(axes[0]), zoomed(axes[1]), std::nullopt};
    if (layout_.y2) ranges.y2 = zoomed(axes[2]);
    return ranges;
}

void draw_page(qvGraph& page, PlotData const& data, PlotOptions const& options) {
    PlotPage(page, data, options).draw();
}

} // namespace qv::plot
