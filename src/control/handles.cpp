// Handles: the way from a handle to its record, and what its members do there.
#include "qvgraph/handles.h"

#include "control/category_entry.h"
#include "control/data_entry.h"
#include "control/document.h"
#include "control/grid_entry.h"
#include "control/point_entry.h"
#include "control/point_values.h"
#include "control/property_access.h"
#include "control/settings.h"
#include "qvgraph/qvGraph.h"
#include "render/graph_ranges.h"
#include "render/marks.h"
#include "render/plot_geometry.h"
#include "render/series_kind.h"

#include <algorithm>
#include <utility>

namespace qv::control {

struct HandleAccess {
    static bool leads_on(Handle const& handle) {
        return handle.anchor_ && handle.anchor_->page && handle.anchor_->generation == handle.generation_;
    }
    static bool is_empty(Handle const& handle) { return !handle.anchor_; }
    /// The page of a handle; fault 91 when it leads nowhere.
    static ControlState& page(Handle const& handle) {
        if (!leads_on(handle)) raise_discarded(handle);
        return *handle.anchor_->page;
    }
    // Of a handle whose page was asked for first.
    static Graph& graph(Handle const& handle) { return *handle.graph_; }
    template <class Record>
    static Record& record(Handle const& handle) {
        return *static_cast<Record*>(handle.record_);
    }
    template <class Made, class Record>
    static Made make(ControlState& state, Graph& graph, Record& record) {
        HandleAnchor& anchor = state.handle_anchor.of(state);
        Made made;
        Handle& handle = made;
        handle.anchor_ = &anchor;
        ++anchor.holders;
        handle.generation_ = anchor.generation;
        handle.graph_ = &graph;
        handle.record_ = &record;
        return made;
    }

private:
    [[noreturn, gnu::cold, gnu::noinline]] static void raise_discarded(Handle const& handle) {
        char const* const why =
            !handle.anchor_
                ? "This handle is empty. Assign it what page.graph(...) or a member of a handle returns."
            : !handle.anchor_->page
                ? "The page of this handle is gone."
                : "The graph of this handle was discarded by Reset. Make a new one with page.graph(...).";
        raise_fault(FaultNumber::ObjectNotSet, why);
    }
};

namespace {

using Access = HandleAccess;

/// The records of a handle to this kind of record, for the procedures of properties.
template <class Record>
Records records_of(Handle const& handle) {
    Records records{.control = &Access::page(handle), .graph = &Access::graph(handle)};
    if constexpr (std::is_same_v<Record, Axis>) records.axis = &Access::record<Axis>(handle);
    if constexpr (std::is_same_v<Record, DataSet>) records.data = &Access::record<DataSet>(handle);
    return records;
}

// The records behind the kinds of handles; a legend's settings are its graph's.
struct RecordOf {
    using Axis = document::Axis;
    using Legend = document::Graph;
    using Graph = document::Graph;
    using Data = document::DataSet;
};

/// Sets the properties that are given. A row of another owner compiles to nothing.
template <class Options>
void apply(Records const& records, Options const& options) {
#define QV_HANDLE_READ_ONLY_PROPERTY(owner, name, property_, kind)
#define QV_HANDLE_PROPERTY(owner, name, property_, kind)                                                     \
    if constexpr (std::is_same_v<Options, owner##Options>) {                                                 \
        if (options.name) property::of::property_(records, *options.name);                                   \
    }
#define QV_HANDLE_COLOR(owner, name, property_) QV_HANDLE_PROPERTY(owner, name, property_, color)
#include "control/handle_properties.def"
}

Axis& first_axis(Graph& graph, AxisKind kind) {
    for (Axis& axis : graph.Axes)
        if (axis.AxisXY == kind) return axis;
    raise_fault(FaultNumber::SubscriptOutOfRange, "The graph has no axis of this kind.");
}

AxisHandle axis_handle(Handle const& graph, AxisKind kind) {
    ControlState& state = Access::page(graph);
    return Access::make<AxisHandle>(state, Access::graph(graph), first_axis(Access::graph(graph), kind));
}

/// Finishes the newest element of a list; where that fails, the element goes again.
void whole_or_not_at_all(auto& list, auto finish) {
    try {
        finish();
    } catch (...) {
        list.pop_back();
        throw;
    }
}

AxisHandle add_axis(Handle const& handle, AxisKind kind, AxisOptions const& options) {
    ControlState& state = Access::page(handle);
    Graph& graph = Access::graph(handle);
    Axis& axis = append_axis(state, graph, fresh_axis(state, "", kind, 0, 0));
    whole_or_not_at_all(graph.Axes,
                        [&] { apply({.control = &state, .graph = &graph, .axis = &axis}, options); });
    auto const made = Access::make<AxisHandle>(state, graph, axis);
    raise_scale_changed(state);
    return made;
}

template <class Made, class Records>
std::vector<Made> handles_of(Handle const& handle, Records& records) {
    ControlState& state = Access::page(handle);
    std::vector<Made> handles;
    handles.reserve(records.size());
    for (auto& record : records) handles.push_back(Access::make<Made>(state, Access::graph(handle), record));
    return handles;
}

std::int16_t axis_index(Graph const& graph, Axis const& axis) {
    auto const is_it = [&](Axis const& other) { return &other == &axis; };
    auto const found = std::find_if(graph.Axes.begin(), graph.Axes.end(), is_it);
    if (found == graph.Axes.end())
        raise_fault(FaultNumber::InvalidProcedureCall, "A data set can only lie on axes of its own graph.");
    return static_cast<std::int16_t>(std::distance(graph.Axes.begin(), found));
}

/// Puts a data set on the axes that the options name.
void lay_on_axes(Graph const& graph, DataSet& set, DataOptions const& options) {
    std::int16_t indexes[]{set.xAxisIndex, set.yAxisIndex, set.ColorAxisIndex};
    for (Handle const* const handle : {&options.axis, &options.other_axis, &options.color_axis}) {
        if (Access::is_empty(*handle)) continue;
        Access::page(*handle);
        Axis const& axis = Access::record<Axis>(*handle);
        indexes[static_cast<std::size_t>(axis.AxisXY)] = axis_index(graph, axis);
    }
    set.xAxisIndex = indexes[0];
    set.yAxisIndex = indexes[1];
    set.ColorAxisIndex = indexes[2];
}

/// What makes a data set a line, bars, ...
struct Shape {
    std::int16_t symbol = 0;
    std::int16_t line_style = 0;
    bool bar_base = false;
    bool error_bars = true;
};

constexpr std::int16_t solid_line = 1, filled_area = 4, no_symbol = 0, bars = 1, circle = 3;
constexpr std::uint8_t heat_map = 4, contours = 5; // kinds of data sets
constexpr std::uint8_t contour_pixels = 1;         // wide
constexpr auto finished = [](Records const&) {};

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
        finish(records);
        apply(records, options);
    });
    return Access::make<DataHandle>(state, graph, set);
}

std::int16_t index_of(ControlState const& state, Graph const& graph) {
    auto const is_it = [&](auto const& other) { return other.get() == &graph; };
    return static_cast<std::int16_t>(std::ranges::find_if(state.Graphs, is_it) - state.Graphs.begin());
}

bool is_of(render::DataKind kind, DataSet const& set) {
    return set.DataKind == static_cast<std::uint8_t>(kind);
}

DataHandle add_distribution(Handle const& handle, std::string_view name, render::DataKind kind,
                            std::int16_t symbol, DataOptions const& options) {
    return add_data_set(handle, name, {.symbol = symbol}, options, [&](Records const& made) {
        property::of::DataKind(made, static_cast<std::uint8_t>(kind));
    });
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
    const Shape shape{.line_style = is_filled ? std::int16_t{0} : solid_line, .error_bars = false};
    return add_data_set(handle, "", shape, options, [&](Records const& made) {
        property::of::DataKind(made, static_cast<std::uint8_t>(render::DataKind::Mark));
        property::of::MarkShape(made, static_cast<std::uint8_t>(mark.shape));
        if (is_filled) property::of::DataFillAlpha(made, see_through);
        render::set_mark_values(*made.data, {mark.first.x, mark.first.y, mark.second.x, mark.second.y});
    });
}

std::string& title_of(Handle const& handle) {
    ControlState& state = Access::page(handle);
    return state.GraphTitles[static_cast<std::size_t>(index_of(state, Access::graph(handle)))];
}

GraphHandle graph_handle(ControlState& state, Graph& graph) {
    return Access::make<GraphHandle>(state, graph, graph);
}

GraphHandle graph_of(Handle const& handle) {
    ControlState& state = Access::page(handle);
    return graph_handle(state, Access::graph(handle));
}

} // namespace
} // namespace qv::control

namespace qv {

using control::Access;
using control::Records;
using document::AxisKind;
using document::ControlState;
using document::DataSet;

Handle::Handle(Handle const& other)
    : anchor_(other.anchor_), generation_(other.generation_), graph_(other.graph_), record_(other.record_) {
    if (anchor_) ++anchor_->holders;
}

Handle& Handle::operator=(Handle const& other) {
    if (this == &other) return *this;
    if (other.anchor_) ++other.anchor_->holders;
    document::let_go(anchor_);
    anchor_ = other.anchor_;
    generation_ = other.generation_;
    graph_ = other.graph_;
    record_ = other.record_;
    return *this;
}

Handle::~Handle() {
    document::let_go(anchor_);
}

bool Handle::discarded() const {
    return !Access::leads_on(*this);
}

#define QV_HANDLE_COLOR(owner, name, property_)
#define QV_HANDLE_READ_ONLY_PROPERTY(owner, name, property_, kind_)                                          \
    control::kind::kind_::value owner##Properties::name() const {                                            \
        ControlState const& state = Access::page(*this);                                                     \
        return control::property::of::property_(state, Access::record<control::RecordOf::owner>(*this));     \
    }
#define QV_HANDLE_PROPERTY(owner, name, property_, kind_)                                                    \
    QV_HANDLE_READ_ONLY_PROPERTY(owner, name, property_, kind_)                                              \
    void owner##Properties::name(control::kind::kind_::argument value) const {                               \
        control::property::of::property_(control::records_of<control::RecordOf::owner>(*this), value);       \
    }
#include "control/handle_properties.def"

void AxisProperties::set(AxisOptions const& options) const {
    control::apply(control::records_of<document::Axis>(*this), options);
}

void LegendProperties::set(LegendOptions const& options) const {
    control::apply(control::records_of<document::Graph>(*this), options);
}

void GraphProperties::set(GraphOptions const& options) const {
    control::apply(control::records_of<document::Graph>(*this), options);
}

void DataProperties::set(DataOptions const& options) const {
    Records const records = control::records_of<DataSet>(*this);
    control::lay_on_axes(*records.graph, *records.data, options);
    control::apply(records, options);
}

bool AxisHandle::is_x() const {
    Access::page(*this);
    return Access::record<document::Axis>(*this).AxisXY == AxisKind::X;
}

bool AxisHandle::is_color_bar() const {
    Access::page(*this);
    return Access::record<document::Axis>(*this).AxisXY == AxisKind::Color;
}

GraphHandle AxisHandle::graph() const {
    return control::graph_of(*this);
}

void AxisHandle::ticks(std::span<double const> major, std::span<double const> minor) const {
    Access::page(*this);
    control::set_ticks(Access::record<document::Axis>(*this), major, minor);
}

void AxisHandle::set_categories(TextList const& texts) const {
    Access::page(*this);
    control::take_categories(Access::record<document::Axis>(*this), document::CategoryList(texts));
}

void AxisHandle::set_category_times(std::span<double const> times) const {
    Access::page(*this);
    control::take_category_times(Access::record<document::Axis>(*this), times);
}

void DataHandle::add(double x, double y) const {
    ControlState& state = Access::page(*this);
    control::add_point_to(state, Access::graph(*this), Access::record<DataSet>(*this), x, y);
}

void DataHandle::add(double x, double y, double error, std::string_view id) const {
    ControlState& state = Access::page(*this);
    control::add_point_to(state, Access::graph(*this), Access::record<DataSet>(*this), {x, y, error, id});
}

void DataHandle::add(std::span<double const> x, std::span<double const> y,
                     std::span<double const> errors) const {
    ControlState& state = Access::page(*this);
    control::add_points_to(state, Access::graph(*this), Access::record<DataSet>(*this), {x, y, errors});
}

void DataHandle::add_columns(std::span<double const> x, std::span<double const> y,
                             std::span<double const> extra1, std::span<double const> extra2,
                             std::span<double const> extra3, std::span<double const> extra4) const {
    ControlState& state = Access::page(*this);
    control::add_points_to(state, Access::graph(*this), Access::record<DataSet>(*this),
                           {x, y, {}, {extra1, extra2, extra3, extra4}});
}

void DataHandle::add(std::string_view category, double value) const {
    ControlState& state = Access::page(*this);
    control::add_category_point(state, Access::graph(*this), Access::record<DataSet>(*this), category, value);
}

void DataHandle::add(TextList const& categories, std::span<double const> values) const {
    ControlState& state = Access::page(*this);
    control::add_category_points(state, Access::graph(*this), Access::record<DataSet>(*this), categories,
                                 values);
}

void DataHandle::add_at_times(std::span<double const> times, std::span<double const> values) const {
    ControlState& state = Access::page(*this);
    control::add_points_at_times(state, Access::graph(*this), Access::record<DataSet>(*this), times,
                                 {{}, values, {}});
}

void DataHandle::add_candles(std::span<double const> x, std::span<double const> open,
                             std::span<double const> high, std::span<double const> low,
                             std::span<double const> close, std::span<double const> volume) const {
    ControlState& state = Access::page(*this);
    control::add_candles(state, Access::graph(*this), Access::record<DataSet>(*this),
                         {x, open, high, low, close, volume});
}

AxisHandle DataHandle::show_volume(AxisOptions const& options) const {
    AxisHandle const axis = graph().add_y_axis({.far_side = true});
    axis.set(options);
    std::vector<AxisHandle> const axes = graph().axes();
    auto const y_axes = std::ranges::count_if(axes, [](AxisHandle const& each) { return !each.is_x(); });
    candle_volume_axis(y_axes);
    return axis;
}

void DataHandle::add_values(std::span<double const> values, double at) const {
    ControlState& state = Access::page(*this);
    DataSet& set = Access::record<DataSet>(*this);
    const std::vector<double> places(values.size(), at);
    control::PointColumns points{places, values, {}};
    if (set.BarHoriz && !control::is_of(render::DataKind::Histogram, set)) std::swap(points.x, points.y);
    control::add_points_to(state, Access::graph(*this), set, points);
}

void DataHandle::histogram_edges(std::span<double const> edges) const {
    Access::page(*this);
    control::set_histogram_edges(Access::record<DataSet>(*this), edges);
}

void DataHandle::add_slice(std::string_view name, double value) const {
    ControlState& state = Access::page(*this);
    DataSet& set = Access::record<DataSet>(*this);
    double const number = set.DataSetPointCount() + 1;
    control::add_point_to(state, Access::graph(*this), set, {number, value, 0, name});
}

void DataHandle::grid(std::span<double const> values, Checked<std::int32_t> columns,
                      Checked<std::int32_t> rows, double x1, double x2, double y1, double y2) const {
    Access::page(*this);
    control::give_grid(Access::record<DataSet>(*this), values, {columns, rows, x1, x2, y1, y2});
}

void DataHandle::grid(std::span<double const> values, std::span<double const> x_edges,
                      std::span<double const> y_edges) const {
    Access::page(*this);
    control::give_grid(Access::record<DataSet>(*this), {values, x_edges, y_edges});
}

void DataHandle::grid(DataHandle const& other) const {
    Access::page(*this);
    Access::page(other);
    Access::record<DataSet>(*this).grid = Access::record<DataSet>(other).grid;
}

void DataHandle::keep_latest(Checked<std::int32_t> count) const {
    ControlState& state = Access::page(*this);
    if (count < 0)
        raise_fault(FaultNumber::InvalidProcedureCall,
                    "keep_latest cannot keep a negative number of points.");
    control::keep_latest(state, Access::graph(*this), Access::record<DataSet>(*this),
                         static_cast<std::size_t>(std::int32_t(count)));
}

void DataHandle::clear() const {
    drop(size());
}

void DataHandle::drop(Checked<std::int32_t> count) const {
    Access::page(*this);
    if (count < 0)
        raise_fault(FaultNumber::InvalidProcedureCall, "drop cannot forget a negative number of points.");
    control::drop_oldest(Access::graph(*this), Access::record<DataSet>(*this),
                         static_cast<std::size_t>(std::int32_t(count)));
}

std::int32_t DataHandle::size() const {
    Access::page(*this);
    return Access::record<DataSet>(*this).DataSetPointCount();
}

PointValues DataHandle::points() const {
    Access::page(*this);
    return control::point_values(Access::record<DataSet>(*this).points);
}

AxisHandle DataHandle::x_axis() const {
    return graph().axes().at(static_cast<std::size_t>(x_axis_index()));
}

AxisHandle DataHandle::y_axis() const {
    return graph().axes().at(static_cast<std::size_t>(y_axis_index()));
}

GraphHandle DataHandle::graph() const {
    return control::graph_of(*this);
}

std::string GraphHandle::title() const {
    return control::title_of(*this);
}

void GraphHandle::title(std::string_view title) const {
    control::title_of(*this) = title;
}

Box GraphHandle::plot_area() const {
    Access::page(*this);
    return render::plot_box(Access::graph(*this));
}

void GraphHandle::fit(double margin) const {
    ControlState& state = Access::page(*this);
    bool const has_new_range = [&] {
        const document::CurrentGraphScope current(state, control::index_of(state, Access::graph(*this)));
        return render::fit_axes(state, margin);
    }();
    if (has_new_range) document::raise_scale_changed(state);
}

AxisHandle GraphHandle::x_axis() const {
    return control::axis_handle(*this, AxisKind::X);
}

AxisHandle GraphHandle::x_axis(AxisOptions const& options) const {
    AxisHandle const axis = x_axis();
    axis.set(options);
    return axis;
}

AxisHandle GraphHandle::y_axis() const {
    return control::axis_handle(*this, AxisKind::Y);
}

AxisHandle GraphHandle::y_axis(AxisOptions const& options) const {
    AxisHandle const axis = y_axis();
    axis.set(options);
    return axis;
}

AxisHandle GraphHandle::add_x_axis(AxisOptions const& options) const {
    return control::add_axis(*this, AxisKind::X, options);
}

AxisHandle GraphHandle::add_y_axis(AxisOptions const& options) const {
    return control::add_axis(*this, AxisKind::Y, options);
}

AxisHandle GraphHandle::color_axis() const {
    for (AxisHandle const& axis : axes())
        if (axis.is_color_bar()) return axis;
    return add_color_axis();
}

AxisHandle GraphHandle::color_axis(AxisOptions const& options) const {
    AxisHandle const axis = color_axis();
    axis.set(options);
    return axis;
}

AxisHandle GraphHandle::add_color_axis(AxisOptions const& options) const {
    return control::add_axis(*this, AxisKind::Color, options);
}

std::vector<AxisHandle> GraphHandle::axes() const {
    Access::page(*this);
    return control::handles_of<AxisHandle>(*this, Access::graph(*this).Axes);
}

LegendHandle GraphHandle::legend() const {
    ControlState& state = Access::page(*this);
    return Access::make<LegendHandle>(state, Access::graph(*this), Access::graph(*this));
}

LegendHandle GraphHandle::legend(LegendOptions const& options) const {
    LegendHandle const table = legend();
    table.set(options);
    return table;
}

DataHandle GraphHandle::line(std::string_view name, DataOptions const& options) const {
    return control::add_data_set(*this, name, {.line_style = control::solid_line}, options,
                                 control::finished);
}

DataHandle GraphHandle::symbols(std::string_view name, DataOptions const& options) const {
    Access::page(*this);
    return control::add_data_set(*this, name, {.symbol = control::next_shape(Access::graph(*this))}, options,
                                 control::finished);
}

DataHandle GraphHandle::bars(std::string_view name, DataOptions const& options) const {
    return control::add_data_set(*this, name, {.symbol = control::bars, .bar_base = true}, options,
                                 control::finished);
}

DataHandle GraphHandle::candles(std::string_view name, DataOptions const& options) const {
    constexpr std::uint8_t candles = 6;
    return control::add_data_set(*this, name, {.error_bars = false}, options, [&](Records const& made) {
        control::property::of::DataKind(made, candles);
    });
}

DataHandle GraphHandle::histogram(std::string_view name, DataOptions const& options) const {
    return control::add_distribution(*this, name, render::DataKind::Histogram, control::no_symbol, options);
}

DataHandle GraphHandle::boxes(std::string_view name, DataOptions const& options) const {
    return control::add_distribution(*this, name, render::DataKind::Boxes, control::circle, options);
}

DataHandle GraphHandle::strip(std::string_view name, DataOptions const& options) const {
    return control::add_distribution(*this, name, render::DataKind::Strip, control::circle, options);
}

DataHandle GraphHandle::area(std::string_view name, DataOptions const& options) const {
    return control::add_data_set(*this, name, {.line_style = control::filled_area}, options,
                                 control::finished);
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
    return control::add_data_set(*this, name, {.error_bars = false}, options, [](Records const& made) {
        control::property::of::DataKind(made, static_cast<std::uint8_t>(render::DataKind::Pie));
    });
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
    bool const has_bar = !control::Access::is_empty(options.color_axis) || options.color_axis_index;
    AxisHandle bar;
    if (!has_bar) bar = color_axis();
    return control::add_data_set(*this, name, {.error_bars = false}, options, [&](Records const& made) {
        control::property::of::DataKind(made, control::heat_map);
        if (!has_bar)
            made.data->ColorAxisIndex = control::axis_index(*made.graph, Access::record<document::Axis>(bar));
    });
}

DataHandle GraphHandle::contours(std::string_view name, DataOptions const& options) const {
    return control::add_data_set(*this, name, {.line_style = control::solid_line, .error_bars = false},
                                 options, [&](Records const& made) {
                                     control::property::of::DataKind(made, control::contours);
                                     control::property::of::DataLineThickness(made, control::contour_pixels);
                                 });
}

std::vector<DataHandle> GraphHandle::data_sets() const {
    Access::page(*this);
    return control::handles_of<DataHandle>(*this, Access::graph(*this).DataSets);
}

DataHandle GraphHandle::find(std::string_view legend) const {
    for (DataHandle const& set : data_sets())
        if (Access::record<DataSet>(set).DataLegend == legend) return set;
    return {};
}

GraphHandle qvGraph::graph(std::string_view name, GraphOptions const& options) {
    ControlState& state = *state_;
    auto graph = control::graph_with_axes(state, {});
    control::apply(Records{.control = &state, .graph = graph.get()}, options);
    GraphHandle const made = control::graph_handle(state, *graph);
    control::append_graph(state, std::move(graph), name);
    control::tell_of_first_axes(state);
    return made;
}

std::vector<GraphHandle> qvGraph::graphs() {
    std::vector<GraphHandle> handles;
    handles.reserve(state_->Graphs.size());
    for (auto const& graph : state_->Graphs) handles.push_back(control::graph_handle(*state_, *graph));
    return handles;
}

GraphHandle qvGraph::find_graph(std::string_view name) {
    auto const found = std::ranges::find(state_->GraphTitles, name);
    if (found == state_->GraphTitles.end()) return {};
    return control::graph_handle(
        *state_, *state_->Graphs[static_cast<std::size_t>(found - state_->GraphTitles.begin())]);
}

} // namespace qv
