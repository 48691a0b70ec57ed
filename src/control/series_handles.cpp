// What a graph makes by handle: data sets of each kind, functions, texts and marks.
#include "control/data_entry.h"
#include "control/handle_records.h"
#include "render/kinds/series_kind.h"
#include "render/marks/marks.h"

namespace qv::control {
namespace {

using render::DataKind;

/// What makes a data set a line, bars, ...
struct Shape {
    DataKind kind = DataKind::Points;
    std::int16_t symbol = 0;
    std::int16_t line_style = 0;
    bool bar_base = false;
    bool error_bars = true;
};

constexpr std::int16_t solid_line = 1, filled_area = 4, no_symbol = 0, bars = 1, circle = 3;
constexpr std::uint8_t contour_pixels = 1; // wide

/// Appends a data set of this shape, given what is its own by `finish`, and by the options what they say.
DataHandle add_data_set(Handle const& handle, std::string_view name, Shape const& shape,
                        DataOptions const& options, auto const& finish) {
    ControlState& state = Access::page(handle);
    Graph& graph = Access::graph(handle);
    DataSet& set = append_data_set(state, graph);
    whole_or_not_at_all(graph.DataSets, [&] {
        const Records records{.control = &state, .graph = &graph, .data = &set};
        set.DataLegend = name;
        set.DataInLegendTable = true;
        set.xAxisIndex = AxisLevelIndex(graph, AxisKind::X, 1);
        set.yAxisIndex = AxisLevelIndex(graph, AxisKind::Y, 1);
        lay_on_axes(graph, set, options);
        property::of::DataSymbol(records, shape.symbol);
        property::of::DataLineStyle(records, shape.line_style);
        property::of::BarBase(records, shape.bar_base);
        property::of::ShowErrorBar(records, shape.error_bars);
        if (shape.kind != DataKind::Points)
            property::of::DataKind(records, static_cast<std::uint8_t>(shape.kind));
        finish(records);
        apply(records, options);
    });
    return Access::make<DataHandle>(state, graph, set);
}

DataHandle add_data_set(Handle const& handle, std::string_view name, Shape const& shape,
                        DataOptions const& options) {
    return add_data_set(handle, name, shape, options, [](Records const&) {});
}

/// A mark as a handle makes it.
struct NewMark {
    render::MarkShape shape = render::MarkShape::LevelLine;
    Point first, second;
};

// Lines and arrows are lines, bands and rectangles have no edges, unless the options say so.
constexpr std::uint8_t see_through = 64; // of bands and rectangles, which lie over other data

DataHandle add_mark(Handle const& handle, NewMark const& mark, DataOptions const& options) {
    bool const is_filled =
        mark.shape != render::MarkShape::Arrow && mark.shape > render::MarkShape::UprightLine;
    const Shape shape{
        .kind = DataKind::Mark, .line_style = is_filled ? std::int16_t{0} : solid_line, .error_bars = false};
    return add_data_set(handle, "", shape, options, [&](Records const& made) {
        property::of::MarkShape(made, static_cast<std::uint8_t>(mark.shape));
        if (is_filled) property::of::DataFillAlpha(made, see_through);
        render::set_mark_values(*made.data, {mark.first.x, mark.first.y, mark.second.x, mark.second.y});
    });
}

} // namespace
} // namespace qv::control

namespace qv {

using control::Access;
using control::Records;
using render::DataKind;

DataHandle GraphHandle::line(std::string_view name, DataOptions const& options) const {
    return control::add_data_set(*this, name, {.line_style = control::solid_line}, options);
}

DataHandle GraphHandle::symbols(std::string_view name, DataOptions const& options) const {
    Access::page(*this);
    return control::add_data_set(*this, name, {.symbol = control::next_shape(Access::graph(*this))}, options);
}

DataHandle GraphHandle::bars(std::string_view name, DataOptions const& options) const {
    return control::add_data_set(*this, name, {.symbol = control::bars, .bar_base = true}, options);
}

DataHandle GraphHandle::candles(std::string_view name, DataOptions const& options) const {
    return control::add_data_set(*this, name, {.kind = DataKind::Candles, .error_bars = false}, options);
}

DataHandle GraphHandle::histogram(std::string_view name, DataOptions const& options) const {
    return control::add_data_set(*this, name, {.kind = DataKind::Histogram, .symbol = control::no_symbol},
                                 options);
}

DataHandle GraphHandle::boxes(std::string_view name, DataOptions const& options) const {
    return control::add_data_set(*this, name, {.kind = DataKind::Boxes, .symbol = control::circle}, options);
}

DataHandle GraphHandle::strip(std::string_view name, DataOptions const& options) const {
    return control::add_data_set(*this, name, {.kind = DataKind::Strip, .symbol = control::circle}, options);
}

DataHandle GraphHandle::area(std::string_view name, DataOptions const& options) const {
    return control::add_data_set(*this, name, {.line_style = control::filled_area}, options);
}

DataHandle GraphHandle::function(std::string_view name, std::string_view formula,
                                 DataOptions const& options) const {
    return control::add_data_set(
        *this, name, {.line_style = control::solid_line, .error_bars = false}, options,
        [&](Records const& made) { control::property::of::MathFunc(made, formula); });
}

DataHandle GraphHandle::text(std::string_view text, double x, double y, DataOptions const& options) const {
    return control::add_data_set(*this, "", {}, options, [&](Records const& made) {
        made.data->DataInLegendTable = false;
        made.data->DataText = text;
        made.data->DataTextX = x;
        made.data->DataTextY = y;
    });
}

DataHandle GraphHandle::pie(std::string_view name, DataOptions const& options) const {
    return control::add_data_set(*this, name, {.kind = DataKind::Pie, .error_bars = false}, options);
}

DataHandle GraphHandle::horizontal_line(double y, DataOptions const& options) const {
    return control::add_mark(*this, {render::MarkShape::LevelLine, {0, y}, {}}, options);
}

DataHandle GraphHandle::vertical_line(double x, DataOptions const& options) const {
    return control::add_mark(*this, {render::MarkShape::UprightLine, {x, 0}, {}}, options);
}

DataHandle GraphHandle::horizontal_band(double from, double to, DataOptions const& options) const {
    return control::add_mark(*this, {render::MarkShape::LevelBand, {0, from}, {0, to}}, options);
}

DataHandle GraphHandle::vertical_band(double from, double to, DataOptions const& options) const {
    return control::add_mark(*this, {render::MarkShape::UprightBand, {from, 0}, {to, 0}}, options);
}

DataHandle GraphHandle::arrow(Point from, Point tip, DataOptions const& options) const {
    return control::add_mark(*this, {render::MarkShape::Arrow, from, tip}, options);
}

DataHandle GraphHandle::rectangle(Point corner, Point opposite, DataOptions const& options) const {
    return control::add_mark(*this, {render::MarkShape::Rectangle, corner, opposite}, options);
}

DataHandle GraphHandle::heat_map(std::string_view name, DataOptions const& options) const {
    constexpr control::Shape shape{.kind = DataKind::HeatMap, .error_bars = false};
    if (!Access::is_empty(options.color_axis) || options.color_axis_index)
        return control::add_data_set(*this, name, shape, options);
    AxisHandle const bar = color_axis();
    return control::add_data_set(*this, name, shape, options, [&](Records const& made) {
        made.data->ColorAxisIndex = control::axis_index(*made.graph, Access::record<document::Axis>(bar));
    });
}

DataHandle GraphHandle::contours(std::string_view name, DataOptions const& options) const {
    constexpr control::Shape shape{
        .kind = DataKind::Contours, .line_style = control::solid_line, .error_bars = false};
    return control::add_data_set(*this, name, shape, options, [](Records const& made) {
        control::property::of::DataLineThickness(made, control::contour_pixels);
    });
}

} // namespace qv
