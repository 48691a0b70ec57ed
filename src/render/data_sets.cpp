#include "render/data_sets.h"

#include "base/convert.h"
#include "document/selection.h"
#include "document/trap.h"
#include "render/areas.h"
#include "render/bar_batch.h"
#include "render/bar_stack.h"
#include "render/data_line.h"
#include "render/function_curve.h"
#include "render/lone_points.h"
#include "render/pen.h"
#include "render/pipeline.h"
#include "render/plot_geometry.h"
#include "render/series_kind.h"
#include "render/spline.h"
#include "render/symbols.h"
#include "render/text.h"
#include "scale/mapping.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace qv::render {
namespace {

using document::ControlState;
using document::DataSet;
using document::Graph;
using document::PointBlock;
using document::trapped;

struct Plotting {
    ControlState& state;
    DrawSurface& surface;
    Graph& graph;
    BarStack bars;
};

// The dashes that the host has asked for beside the line's style.
std::optional<DrawStyle> dash_style(DataSet const& set) {
    constexpr std::array styles{DrawStyle::Dash, DrawStyle::Dot, DrawStyle::DashDot, DrawStyle::DashDotDot};
    std::size_t const number = set.DataLineDash;
    if (number == 0 || number > styles.size()) return std::nullopt;
    return styles[number - 1];
}

/// From values on the graph's selected axes to the page, and what can be seen there of the set's line.
LineMapping line_mapping(Plotting const& plotting, DataSet const& set) {
    Box const plot = plot_box(plotting.graph);
    DrawSurface const& surface = plotting.surface;
    double const pen = (surface.pen_pixels(set.DataLineThickness) + 2) * surface.TwipsPerPixelX();
    return {scale::x_map(plotting.graph, selected_x_axis(plotting.graph)),
            scale::y_map(plotting.graph, selected_y_axis(plotting.graph)),
            {plot.left - pen, plot.top - pen, plot.width + 2 * pen, plot.height + 2 * pen}};
}

void draw_line(Plotting& plotting, DataSet const& set) {
    DrawSurface& surface = plotting.surface;
    const PenScope pen(surface, set.DataLineThickness, point_line_style(set));
    surface.state.ForeColor = set.DataLineColor;
    const LineMapping mapping = line_mapping(plotting, set);
    switch (set.DataLineStyle) {
    case line_smooth: draw_spline(surface, set, mapping); break;
    case line_area:
    case line_outlined_area: draw_area(surface, set, mapping, set.DataLineStyle == line_outlined_area); break;
    default: draw_data_line(surface, set.points, mapping);
    }
    if (plotting.state.DotLonePoints && set.DataSymbol == symbol_none)
        draw_lone_points(surface, set.points, mapping);
}

// Error bars and texts belong to single points.
bool has_single_marks(Graph const& graph, DataSet const& set) {
    return std::ranges::any_of(set.points.blocks(), [&](PointBlock const& block) {
        return (set.ShowErrorBar && !block.e().empty()) || (graph.ShowDataID && block.has_data_ids());
    });
}

// Along a line not each point needs its symbol; without one, each has it.
class SymbolSpacing {
public:
    explicit SymbolSpacing(DataSet const& set)
        : least_(set.DataLineStyle > 0 && !is_area(set) ? double{set.DataSymbolSpacing} : 0) {}

    bool keeps(Point centre) {
        if (std::hypot(centre.x - last_.x, centre.y - last_.y) < least_) return false;
        last_ = centre;
        return true;
    }

private:
    double least_; // twips
    Point last_{HUGE_VAL, HUGE_VAL};
};

void draw_symbol_batch(Plotting& plotting, DataSet const& set) {
    Graph& graph = plotting.graph;
    DrawSurface& surface = plotting.surface;
    const VisibleRange x_range = visible_range(selected_x_axis(graph));
    const VisibleRange y_range = visible_range(selected_y_axis(graph));
    const scale::AxisMap x_map = scale::x_map(graph, selected_x_axis(graph));
    const scale::AxisMap y_map = scale::y_map(graph, selected_y_axis(graph));
    surface.state.FillColor = surface.state.ForeColor = set.DataSymbolFill.Color1;
    surface.state.fill_style = FillStyle::Solid;
    const PenScope pen(surface, 1);
    std::vector<Point> centres;
    SymbolSpacing spacing(set);
    const ShapeScope one_shape(surface);
    for (PointBlock const& block : set.points.blocks()) {
        centres.resize(block.size());
        std::size_t visible = 0;
        auto const x = block.x(), y = block.y();
        for (std::size_t i = 0; i < block.size(); ++i)
            if (x_range.contains(x[i]) && y_range.contains(y[i])) {
                const Point centre = whole_twips({x_map(x[i]), y_map(y[i])});
                if (spacing.keeps(centre)) centres[visible++] = centre;
            }
        centres.resize(visible);
        surface.Symbols({*symbol_shape(set.DataSymbol), set.DataSymbolSize, centres});
    }
    surface.state.fill_style = FillStyle::Transparent;
}

void draw_symbol_at(Plotting& plotting, DataSet const& set, DataPointValues values) {
    if (set.DataSymbol == symbol_bar) {
        const StackedBar bar = stacked(plotting.bars, set, {values.point.X, values.point.Y});
        values.point.X = bar.end.x;
        values.point.Y = bar.end.y;
        values.base = bar.base;
    } else {
        ++plotting.state.PointCounter;
    }
    DataPointXY(plotting.state, plotting.surface, values);
}

bool are_bars_plain(DataSet const& set) {
    return !set.Bar3D && !set.BarShadow && set.DataSymbolFill.EdgeThickness == 0;
}

void draw_bar_batch(Plotting& plotting, DataSet const& set, std::int16_t index) {
    Graph& graph = plotting.graph;
    const scale::AxisMap x_map = scale::x_map(graph, selected_x_axis(graph));
    const scale::AxisMap y_map = scale::y_map(graph, selected_y_axis(graph));
    const BarLayout layout(plotting.state, {index, symbol_bar, {}, {}, set.DataSymbolSize, false, {}, {}});
    BarBatch batch(plotting.surface, plot_box(graph), set.BarHoriz);
    if (plotting.bars.ends.size() < set.points.size()) plotting.bars.ends.resize(set.points.size());
    for (PointBlock const& block : set.points.blocks())
        for (std::size_t i = 0; i < block.size(); ++i) {
            const StackedBar bar = stacked(plotting.bars, set, {block.x()[i], block.y()[i]});
            if (!bar.is_finite()) continue;
            batch.add(layout.box(whole_twips({x_map(bar.end.x), y_map(bar.end.y)}), bar.end, bar.base));
        }
    if (!set.DataSymbolFill.Transparent) batch.draw(set.DataSymbolFill.Color1);
}

void draw_each_symbol(Plotting& plotting, DataSet const& set, std::int16_t index) {
    // As many points as there are now, each looked up anew: a handler of ErrorMsg may add or drop some.
    std::size_t left = set.points.size();
    for (std::size_t b = 0; b < set.points.blocks().size(); ++b)
        for (std::size_t i = 0; left > 0 && is_current(plotting.state, plotting.graph)
                                && b < set.points.blocks().size() && i < set.points.blocks()[b].size();
             ++i, --left)
            draw_symbol_at(plotting, set, {index, set.points.blocks()[b].entry(i), {}});
}

void draw_symbols(Plotting& plotting, DataSet const& set, std::int16_t index) {
    plotting.state.PointCounter = 0;
    plotting.bars.position = 0;
    if (has_single_marks(plotting.graph, set)) return draw_each_symbol(plotting, set, index);
    if (set.DataSymbol == symbol_bar) {
        bool const together =
            are_bars_plain(set)
            && BarBatch::pays(set.points.size(), plotting.surface, plot_box(plotting.graph), set.BarHoriz);
        return together ? draw_bar_batch(plotting, set, index) : draw_each_symbol(plotting, set, index);
    }
    if (set.DataSymbol == symbol_none || set.DataSymbolFill.Transparent) return;
    // Symbols of one shape and one colour, without an edge, go to the surface as a batch.
    if (symbol_shape(set.DataSymbol) && set.DataSymbolFill.EdgeThickness == 0)
        draw_symbol_batch(plotting, set);
    else
        draw_each_symbol(plotting, set, index);
}

void draw_points(Plotting& plotting, DataSet const& set, std::int16_t index) {
    if (set.points.size() == 0) return;
    if (set.DataSymbol == symbol_bar && !set.BarStacked) plotting.bars.ends.clear();
    const document::SelectedAxesScope selection(plotting.graph);
    plotting.graph.SelectedXAxis = set.xAxisIndex;
    plotting.graph.SelectedYAxis = set.yAxisIndex;
    if (set.DataLineStyle > 0) draw_line(plotting, set);
    draw_symbols(plotting, set, index);
}

void draw_curve(Plotting& plotting, DataSet const& set) {
    auto const style = curve_style(set);
    if (!style) return;
    const document::SelectedAxesScope selection(plotting.graph);
    plotting.graph.SelectedXAxis = set.xAxisIndex;
    plotting.graph.SelectedYAxis = set.yAxisIndex;
    const PenScope pen(plotting.surface, set.DataLineThickness, *style);
    plotting.surface.state.ForeColor = set.DataLineColor;
    draw_function(plotting.state, plotting.surface, set, line_mapping(plotting, set));
}

Point text_anchor(Graph& graph, DataSet const& set) {
    const Box plot = plot_box(graph);
    if (set.DataTextPercent)
        return {plot.left + plot.width * set.DataTextX / 100,
                plot.top + plot.height * (100 - set.DataTextY) / 100};
    return {scale::x_map(graph, selected_x_axis(graph))(set.DataTextX),
            scale::y_map(graph, selected_y_axis(graph))(set.DataTextY)};
}

void draw_data_text(Plotting& plotting, DataSet const& set) {
    if (set.DataText.empty()) return;
    auto const vertical = static_cast<Align>(set.DataTextOri / 3);
    PrintText(plotting.state, plotting.surface, set.DataText,
              {text_anchor(plotting.graph, set), static_cast<Align>(set.DataTextOri % 3), vertical,
               set.DataTextAngle},
              {set.DataTextFont, set.DataTextColor});
}

} // namespace

DrawStyle point_line_style(DataSet const& set) {
    if (is_area(set)) return DrawStyle::Solid;
    if (auto const dashes = dash_style(set)) return *dashes;
    return set.DataLineStyle == line_dotted ? DrawStyle::Dot : DrawStyle::Solid;
}

std::optional<DrawStyle> curve_style(DataSet const& set) {
    if (set.MathFunc.empty() || set.DataLineStyle == line_none) return std::nullopt;
    if (auto const dashes = dash_style(set)) return dashes;
    return set.DataLineStyle == line_solid ? DrawStyle::Solid : DrawStyle::Dot;
}

void PlotDataSets(ControlState& state, DrawSurface& surface) {
    trapped(state, "PlotDataSets", [&] {
        Graph& graph = document::current_graph(state);
        ClipGraphArea(state, surface, Area::PlotArea);
        Plotting plotting{state, surface, graph, {}};
        for (std::int16_t i = 0; i < graph.NumDataSets(); ++i) {
            DataSet const& set = at(graph.DataSets, i);
            if (set.DataHide) continue;
            if (!is_current(state, graph)) return; // a handler has gone to another graph
            if (SeriesKind const* const kind = series_kind(set))
                kind->draw(SeriesScope(state, graph, i, SeriesScope::Maps::BeingDrawn).view(), surface);
            else
                draw_points(plotting, set, i);
            draw_curve(plotting, set);
            draw_data_text(plotting, set);
        }
        ClipGraphArea(state, surface, Area::GraphFrame);
        SetLineColor(state, surface, 0);
    });
    tell_formula_failures(state); // only now, because a handler may change the data sets
}

} // namespace qv::render
