#include "render/data_sets.h"

#include "base/convert.h"
#include "graph/model/selection.h"
#include "graph/model/trap.h"
#include "render/data_line.h"
#include "render/pipeline.h"
#include "render/plot_geometry.h"
#include "render/symbols.h"
#include "render/text.h"
#include "scale/mapping.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace qv::render {
namespace {

using graph::ControlState;
using graph::DataSet;
using graph::Graph;
using graph::PointBlock;
using graph::trapped;

// Line styles of a data set's points.
constexpr std::int16_t dotted_line = 2;
constexpr std::int16_t first_curve_style = 3; // smooth curve, area, outlined area
constexpr std::int16_t last_curve_style = 5;

// Ends of the bars drawn last, by position in their data set, in data values.
struct BarStack {
    std::vector<BarBase> ends;
    std::size_t position = 0;

    BarBase& here() {
        if (position >= ends.size()) ends.resize(position + 1);
        return ends[position];
    }
};

struct Plotting {
    ControlState& state;
    DrawSurface& surface;
    Graph& graph;
    BarStack bars;
};

bool has_straight_line(DataSet const& set) {
    return set.DataLineStyle > 0
           && !(set.DataLineStyle >= first_curve_style && set.DataLineStyle <= last_curve_style);
}

void draw_line(Plotting& plotting, DataSet const& set) {
    DrawSurface& surface = plotting.surface;
    surface.state.draw_style = set.DataLineStyle == dotted_line ? DrawStyle::Dot : DrawStyle::Solid;
    surface.state.DrawWidth = std::max<int>(1, set.DataLineThickness);
    surface.state.ForeColor = set.DataLineColor;
    Box visible = plot_box(plotting.graph);
    double const pen = (surface.state.DrawWidth + 2) * surface.TwipsPerPixelX();
    visible = {visible.left - pen, visible.top - pen, visible.width + 2 * pen, visible.height + 2 * pen};
    draw_data_line(surface, set.points,
                   {scale::x_map(plotting.graph, selected_x_axis(plotting.graph)),
                    scale::y_map(plotting.graph, selected_y_axis(plotting.graph)), visible});
    surface.state.draw_style = DrawStyle::Solid;
}

void draw_bar(Plotting& plotting, DataSet const& set, DataPointValues values) {
    BarStack& stack = plotting.bars;
    values.base = stack.here();
    if (set.BarStacked)
        (set.BarHoriz ? values.point.X : values.point.Y) += set.BarHoriz ? values.base.x : values.base.y;
    DataPointXY(plotting.state, plotting.surface, values);
    // A bar that is not drawn leaves the one below it to stand on.
    if (std::isfinite(values.point.X) && std::isfinite(values.point.Y))
        stack.here() = {values.point.X, values.point.Y};
    ++stack.position;
}

// Error bars and texts belong to single points.
bool has_single_marks(Graph const& graph, DataSet const& set) {
    return std::ranges::any_of(set.points.blocks(), [&](PointBlock const& block) {
        return (set.ShowErrorBar && !block.e().empty()) || (graph.ShowDataID && block.has_data_ids());
    });
}

void draw_symbol_batch(Plotting& plotting, DataSet const& set) {
    Graph& graph = plotting.graph;
    DrawSurface& surface = plotting.surface;
    const VisibleRange x_range = visible_range(selected_x_axis(graph));
    const VisibleRange y_range = visible_range(selected_y_axis(graph));
    const scale::AxisMap x_map = scale::x_map(graph, selected_x_axis(graph));
    const scale::AxisMap y_map = scale::y_map(graph, selected_y_axis(graph));
    surface.state.FillColor = surface.state.ForeColor = set.DataSymbolFill.Color1;
    surface.state.fill_style = FillStyle::Solid;
    surface.state.DrawWidth = 1;
    std::vector<Point> centres;
    const ShapeScope one_shape(surface);
    for (PointBlock const& block : set.points.blocks()) {
        centres.clear();
        auto const x = block.x(), y = block.y();
        for (std::size_t i = 0; i < block.size(); ++i)
            if (x_range.contains(x[i]) && y_range.contains(y[i]))
                centres.push_back(whole_twips({x_map(x[i]), y_map(y[i])}));
        surface.Symbols({*symbol_shape(set.DataSymbol), set.DataSymbolSize, centres});
    }
    surface.state.fill_style = FillStyle::Transparent;
}

void draw_symbol_at(Plotting& plotting, DataSet const& set, DataPointValues const& values) {
    if (set.DataSymbol == symbol_bar) return draw_bar(plotting, set, values);
    ++plotting.state.PointCounter;
    DataPointXY(plotting.state, plotting.surface, values);
}

void draw_each_symbol(Plotting& plotting, DataSet const& set, std::int16_t index) {
    // As many points as there are now, each looked up anew: a handler of ErrorMsg may add or drop some.
    std::size_t left = set.points.size();
    for (std::size_t b = 0; b < set.points.blocks().size(); ++b)
        for (std::size_t i = 0;
             left > 0 && b < set.points.blocks().size() && i < set.points.blocks()[b].size(); ++i, --left)
            draw_symbol_at(plotting, set, {index, set.points.blocks()[b].entry(i), {}});
}

void draw_symbols(Plotting& plotting, DataSet const& set, std::int16_t index) {
    plotting.state.PointCounter = 0;
    plotting.bars.position = 0;
    if (set.DataSymbol == symbol_bar || has_single_marks(plotting.graph, set))
        return draw_each_symbol(plotting, set, index);
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
    const graph::SelectedAxesScope selection(plotting.graph);
    plotting.graph.SelectedXAxis = set.xAxisIndex;
    plotting.graph.SelectedYAxis = set.yAxisIndex;
    plotting.surface.state.draw_style = DrawStyle::Solid;
    if (has_straight_line(set)) draw_line(plotting, set);
    draw_symbols(plotting, set, index);
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

void PlotDataSets(ControlState& state, DrawSurface& surface) {
    trapped(state, "PlotDataSets", [&] {
        Graph& graph = graph::current_graph(state);
        ClipGraphArea(state, surface, Area::PlotArea);
        Plotting plotting{state, surface, graph, {}};
        for (std::int16_t i = 0; i < graph.NumDataSets(); ++i) {
            DataSet const& set = at(graph.DataSets, i);
            if (set.DataHide) continue;
            draw_points(plotting, set, i);
            draw_data_text(plotting, set);
        }
        surface.state.draw_style = DrawStyle::Solid;
        ClipGraphArea(state, surface, Area::GraphFrame);
        SetLineColor(state, surface, 0);
    });
}

} // namespace qv::render
