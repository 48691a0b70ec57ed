#include "render/data_sets.h"

#include "base/convert.h"
#include "document/selection.h"
#include "document/trap.h"
#include "render/areas.h"
#include "render/bars/bar_batch.h"
#include "render/bars/bar_labels.h"
#include "render/bars/bar_places.h"
#include "render/bars/bar_stack.h"
#include "render/dashes.h"
#include "render/error_bars.h"
#include "render/function_curve.h"
#include "render/kinds/series_kind.h"
#include "render/lines/data_line.h"
#include "render/lines/lone_points.h"
#include "render/marks/marks.h"
#include "render/pen.h"
#include "render/pipeline.h"
#include "render/plot_geometry.h"
#include "render/polar/polar_bars.h"
#include "render/polar/polar_lines.h"
#include "render/spline.h"
#include "render/stacked_areas.h"
#include "render/steps.h"
#include "render/symbols.h"
#include "render/text.h"
#include "scale/mapping.h"

#include <algorithm>
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
    BarPlan plan;
};

/// From values on the graph's selected axes to the page, and what can be seen there of the set's line.
LineMapping line_mapping(Plotting const& plotting, DataSet const& set) {
    Box const plot = plot_box(plotting.graph);
    DrawSurface const& surface = plotting.surface;
    double const pen = (surface.pen_pixels(set.DataLineThickness) + 2) * surface.TwipsPerPixelX();
    return {scale::x_map(plotting.graph, selected_x_axis(plotting.graph)),
            scale::y_map(plotting.graph, selected_y_axis(plotting.graph)),
            {plot.left - pen, plot.top - pen, plot.width + 2 * pen, plot.height + 2 * pen}};
}

PlaceMap places(Plotting const& plotting) {
    return place_map(plotting.graph, SeriesScope::Maps::BeingDrawn);
}

void draw_line(Plotting& plotting, DataSet const& set) {
    DrawSurface& surface = plotting.surface;
    const PenScope pen(surface, set.DataLineThickness, point_line_style(set));
    const document::RestoreScope alpha(surface.state.alpha, set.DataLineAlpha);
    surface.state.ForeColor = set.DataLineColor;
    const LineMapping mapping = line_mapping(plotting, set);
    if (plotting.graph.GraphPolar)
        return draw_with_dashes(surface, is_area(set) ? DashPattern() : dashes_of(set), mapping.visible,
                                [&](DrawSurface& lines) {
                                    draw_polar_line(lines, plotting.graph, set, *places(plotting).polar);
                                });
    bool const outlined = set.DataLineStyle == line_outlined_area;
    if (is_area(set)) return draw_area(surface, {plotting.graph, set, mapping}, outlined);
    draw_with_dashes(surface, dashes_of(set), mapping.visible, [&](DrawSurface& lines) {
        if (set.DataLineStyle == line_smooth)
            draw_spline(lines, set, mapping);
        else if (Steps const steps = steps_of(set); steps != Steps::None)
            draw_step_line(lines, set.points, steps, mapping);
        else
            draw_data_line(lines, set.points, mapping);
    });
}

void draw_lone_points_of(Plotting& plotting, DataSet const& set) {
    if (!plotting.state.DotLonePoints || set.DataSymbol != symbol_none) return;
    DrawSurface& surface = plotting.surface;
    const PenScope pen(surface, set.DataLineThickness, point_line_style(set));
    const document::RestoreScope alpha(surface.state.alpha, set.DataLineAlpha);
    surface.state.ForeColor = set.DataLineColor;
    draw_lone_points(surface, shown_points(plotting.graph, set), line_mapping(plotting, set));
}

// Error bars and texts belong to single points.
bool has_single_marks(Graph const& graph, DataSet const& set) {
    bool const has_error_bars = set.ShowErrorBar && !draws_errors_together(set);
    return std::ranges::any_of(set.points.blocks(), [&](PointBlock const& block) {
        return (has_error_bars && !block.e().empty()) || (graph.ShowDataID && block.has_data_ids());
    });
}

bool joins_points(DataSet const& set) {
    return set.DataLineStyle > 0 && !is_area(set);
}

// Along a line not each point needs its symbol; without one, each has it. Counted from the first point, so
// that a symbol stays with its point whatever is shown.
bool is_counted_out(DataSet const& set, std::size_t index) {
    return set.DataSymbolEvery > 1 && joins_points(set)
           && index % static_cast<std::size_t>(set.DataSymbolEvery) != 0;
}

class SymbolSpacing {
public:
    explicit SymbolSpacing(DataSet const& set)
        : least_(joins_points(set) ? double{set.DataSymbolSpacing} : 0) {}

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
    const PlaceMap map = places(plotting);
    const VisibleRange x_range = visible_range(selected_x_axis(graph));
    const VisibleRange y_range = visible_range(selected_y_axis(graph));
    auto const shows = [&](double x, double y) { return x_range.contains(x) && y_range.contains(y); };
    surface.state.FillColor = surface.state.ForeColor = set.DataSymbolFill.Color1;
    surface.state.fill_style = FillStyle::Solid;
    const PenScope pen(surface, 1);
    std::vector<Point> centres;
    SymbolSpacing spacing(set);
    const document::RestoreScope alpha(surface.state.alpha, set.DataFillAlpha);
    const ShapeScope one_shape(surface);
    std::size_t first = 0; // of the block
    for (PointBlock const& block : shown_points(graph, set).blocks()) {
        centres.resize(block.size());
        std::size_t visible = 0;
        auto const x = block.x(), y = block.y();
        for (std::size_t i = 0; i < block.size(); ++i) {
            if ((!map.polar && !shows(x[i], y[i])) || is_counted_out(set, first + i)) continue;
            const Point place = map(x[i], y[i]);
            if (map.polar && !map.polar->holds(place)) continue;
            const Point centre = whole_twips(place);
            if (spacing.keeps(centre)) centres[visible++] = centre;
        }
        centres.resize(visible);
        surface.Symbols({*symbol_shape(set.DataSymbol), set.DataSymbolSize, centres});
        first += block.size();
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
    const document::RestoreScope alpha(plotting.surface.state.alpha, set.DataFillAlpha);
    if (!set.DataSymbolFill.Transparent) batch.draw(set.DataSymbolFill.Color1);
}

void draw_each_symbol(Plotting& plotting, DataSet const& set, std::int16_t index) {
    bool const has_error_bar = !draws_errors_together(set);
    // As many points as there are now, each looked up anew: a handler of ErrorMsg may add or drop some.
    auto const blocks = [&]() -> auto const& {
        return shown_points(plotting.graph, set).blocks();
    };
    std::size_t left = set.points.size(), counted = 0;
    for (std::size_t b = 0; b < blocks().size(); ++b)
        for (std::size_t i = 0; left > 0 && is_current(plotting.state, plotting.graph) && b < blocks().size()
                                && i < blocks()[b].size();
             ++i, --left, ++counted)
            draw_symbol_at(plotting, set,
                           {index, blocks()[b].entry(i), {}, !is_counted_out(set, counted), has_error_bar});
}

// Bars side by side touch, but do not lie over each other: boxes include the pixels of both corners.
BarBox without_last_pixel(DrawSurface const& surface, BarBox box, bool horizontal) {
    double const pixel = horizontal ? surface.TwipsPerPixelY() : surface.TwipsPerPixelX();
    double& last = horizontal ? box.y2 : box.x2;
    if (last - (horizontal ? box.y1 : box.x1) > pixel) last -= pixel;
    return box;
}

// The error bar at a bar's end, and the text of its point.
void draw_marks_of_bar(Plotting& plotting, SeriesView const& view, PlacedBar const& bar) {
    if (bar.point >= view.set.points.size()) return; // a handler of ErrorMsg has dropped it
    DataSet const& set = view.set;
    const document::PointEntry point = set.points.at(bar.point);
    const std::string data_id(point.DataID); // a copy, which outlives what such a handler drops
    const Point end{(bar.box.x1 + bar.box.x2) / 2, (bar.box.y1 + bar.box.y2) / 2};
    const BarEnds ends = plotting.plan.ends(view.index, bar.point, set.BarHoriz ? point.X : point.Y);
    if (set.ShowErrorBar && point.E > 0 && !set.BarHoriz)
        ErrorBar(plotting.state, plotting.surface, view.index,
                 {end.x, view.y(ends.to - point.E), view.y(ends.to + point.E)});
    if (set.ShowErrorBar && point.E < 0 && set.BarHoriz)
        HorizErrorBar(plotting.state, plotting.surface, view.index,
                      {end.y, view.x(ends.to + point.E), view.x(ends.to - point.E)});
    if (!data_id.empty() && plotting.graph.ShowDataID)
        PrintText(plotting.state, plotting.surface, data_id,
                  {{set.BarHoriz ? bar.box.x2 : end.x, set.BarHoriz ? end.y : bar.box.y2},
                   set.BarHoriz ? Align::Start : Align::Centre,
                   set.BarHoriz ? Align::Centre : Align::End,
                   0},
                  {set.DataTextFont, plotting.graph.LegendFontColor});
}

/// Whether bars share the room of their values with those of other data sets.
bool draw_arranged_bars(Plotting& plotting, std::int16_t index) {
    if (!plotting.plan.holds(index)) return false;
    const SeriesScope scope(plotting.state, plotting.graph, index, SeriesScope::Maps::BeingDrawn);
    DataSet const& set = scope.view().set;
    if (set.DataSymbolFill.Transparent) return true;
    Box const& plot = scope.view().plot;
    std::vector<PlacedBar> bars;
    std::optional<BarBatch> batch;
    if (are_bars_plain(set) && BarBatch::pays(set.points.size(), plotting.surface, plot, set.BarHoriz))
        batch.emplace(plotting.surface, plot, set.BarHoriz);
    bool const has_marks = has_single_marks(plotting.graph, set);
    for_each_bar(scope.view(), plotting.plan, plotting.bars, [&](PlacedBar const& bar) {
        if (batch) batch->add(without_last_pixel(plotting.surface, bar.box, set.BarHoriz));
        if (!batch || has_marks) bars.push_back(bar);
    });
    if (batch) batch->draw(set.DataSymbolFill.Color1);
    // A handler of ErrorMsg may add and drop points from here on.
    for (PlacedBar const& bar : bars) {
        if (!batch)
            draw_bar(plotting.state, plotting.surface, set,
                     without_last_pixel(plotting.surface, bar.box, set.BarHoriz));
        if (has_marks) draw_marks_of_bar(plotting, scope.view(), bar);
    }
    return true;
}

void draw_bars_in_polar(Plotting& plotting, std::int16_t index) {
    const SeriesScope scope(plotting.state, plotting.graph, index, SeriesScope::Maps::BeingDrawn);
    draw_polar_bars(scope.view(), plotting.surface, plotting.plan, plotting.bars);
}

void draw_symbols(Plotting& plotting, DataSet const& set, std::int16_t index) {
    if (plotting.graph.GraphPolar && set.DataSymbol == symbol_bar) return draw_bars_in_polar(plotting, index);
    if (draw_arranged_bars(plotting, index)) return;
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

/// Where the error bars of a data set stand: at the ends of its bars, of which those of a stack were drawn
/// just now, else at its points.
void draw_errors(Plotting& plotting, DataSet const& set, std::int16_t index) {
    if (!shows_error_bars(set)) return;
    auto const share = plotting.plan.share_of(index);
    if (share && plotting.plan.in_percent()) return; // errors of values, not of their shares
    ControlState& state = plotting.state;
    const LineMapping mapping = line_mapping(plotting, set);
    auto const draw = [&](document::PointStore const& points, Point shift) {
        draw_error_bars(state, plotting.surface, set, points, mapping, shift);
    };
    if (set.DataSymbol != symbol_bar) return draw(shown_points(plotting.graph, set), {});
    if (share) {
        bool const is_log =
            (set.BarHoriz ? selected_y_axis(plotting.graph) : selected_x_axis(plotting.graph)).AxisLog;
        auto const middle = [&](double at) { return scale::ScaleFrom{at, is_log}.value_at(share->offset); };
        return draw(points_at(set.points,
                              [&](Point value, std::size_t i) {
                                  auto const end = [&](double along) {
                                      return plotting.plan.ends(index, i, along).to;
                                  };
                                  return set.BarHoriz ? Point{end(value.x), middle(value.y)}
                                                      : Point{middle(value.x), end(value.y)};
                              }),
                    {});
    }
    // Bars stand beside their points by millimetres, or by values where these say how wide they are.
    bool const by_values = has_value_width(set);
    auto const across = [&](double distance) {
        return set.BarHoriz ? Point{0, distance} : Point{distance, 0};
    };
    const Point shift =
        across(by_values ? 0 : set.BarOffset * (set.BarHoriz ? state.UnitsPerMmY : state.UnitsPerMmX));
    if (!set.BarStacked && !by_values) return draw(set.points, shift);
    const Point moved = across(by_values ? set.BarOffset : 0);
    draw(points_at(set.points,
                   [&](Point value, std::size_t i) {
                       if (set.BarStacked && i < plotting.bars.ends.size())
                           value = set.BarHoriz ? Point{plotting.bars.ends[i].x, value.y}
                                                : Point{value.x, plotting.bars.ends[i].y};
                       return Point{value.x + moved.x, value.y + moved.y};
                   }),
         shift);
}

void draw_points(Plotting& plotting, DataSet const& set, std::int16_t index) {
    if (set.points.size() == 0) return;
    if (set.DataSymbol == symbol_bar && !set.BarStacked) plotting.bars.ends.clear();
    const document::SelectedAxesScope selection(plotting.graph);
    plotting.graph.SelectedXAxis = set.xAxisIndex;
    plotting.graph.SelectedYAxis = set.yAxisIndex;
    bool const has_errors = draws_errors_together(set);
    bool const are_bars = set.DataSymbol == symbol_bar;
    if (has_errors && shows_error_band(set))
        draw_error_band(plotting.surface, set, shown_points(plotting.graph, set),
                        line_mapping(plotting, set));
    if (set.DataLineStyle > 0) {
        draw_line(plotting, set);
        draw_lone_points_of(plotting, set);
    }
    if (has_errors && !are_bars) draw_errors(plotting, set, index);
    draw_symbols(plotting, set, index);
    if (has_errors && are_bars) draw_errors(plotting, set, index); // upon the bars
}

void draw_curve(Plotting& plotting, DataSet const& set) {
    auto const style = curve_style(set);
    if (!style) return;
    const document::SelectedAxesScope selection(plotting.graph);
    plotting.graph.SelectedXAxis = set.xAxisIndex;
    plotting.graph.SelectedYAxis = set.yAxisIndex;
    DrawSurface& surface = plotting.surface;
    const PenScope pen(surface, set.DataLineThickness, *style);
    const document::RestoreScope alpha(surface.state.alpha, set.DataLineAlpha);
    surface.state.ForeColor = set.DataLineColor;
    const LineMapping mapping = line_mapping(plotting, set);
    draw_with_dashes(surface, dashes_of(set), mapping.visible, [&](DrawSurface& lines) {
        if (!plotting.graph.GraphPolar) return draw_function(plotting.state, lines, set, mapping);
        PolarLine line(lines, *places(plotting).polar);
        const ShapeScope one_shape(lines);
        for (const Point value : function_values(plotting.state, set)) line.add(value.x, value.y);
        line.finish();
    });
}

bool holds(Graph const& graph, std::int16_t index, DataSet const& set) {
    return index < graph.NumDataSets() && &at(graph.DataSets, index) == &set;
}

Point text_anchor(Graph& graph, DataSet const& set) {
    const Box plot = plot_box(graph);
    if (set.DataTextPercent)
        return {plot.left + plot.width * set.DataTextX / 100,
                plot.top + plot.height * (100 - set.DataTextY) / 100};
    return place_map(graph, SeriesScope::Maps::BeingDrawn)(set.DataTextX, set.DataTextY);
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
    bool const dotted = set.DataLineStyle == line_dotted && dashes_of(set).empty();
    return dotted ? DrawStyle::Dot : DrawStyle::Solid;
}

std::optional<DrawStyle> curve_style(DataSet const& set) {
    if (set.MathFunc.empty() || set.DataLineStyle == line_none) return std::nullopt;
    bool const solid = set.DataLineStyle == line_solid || !dashes_of(set).empty();
    return solid ? DrawStyle::Solid : DrawStyle::Dot;
}

void PlotDataSets(ControlState& state, DrawSurface& surface) {
    trapped(state, "PlotDataSets", [&] {
        Graph& graph = document::current_graph(state);
        ClipGraphArea(state, surface, Area::PlotArea);
        Plotting plotting{state, surface, graph, {}, BarPlan(graph)};
        for (std::int16_t i = 0; i < graph.NumDataSets(); ++i) {
            DataSet const& set = at(graph.DataSets, i);
            if (set.DataHide) continue;
            if (!is_current(state, graph)) return; // a handler has gone to another graph
            SeriesKind const* const kind = series_kind(set);
            if (kind && !can_be_drawn(graph, *kind)) continue;
            if (kind)
                kind->draw(SeriesScope(state, graph, i, SeriesScope::Maps::BeingDrawn).view(), surface);
            else
                draw_points(plotting, set, i);
            if (!holds(graph, i, set)) return; // a handler has dropped the data
            draw_curve(plotting, set);
            if (!is_label(set)) draw_data_text(plotting, set);
        }
        draw_bar_labels(state, surface, graph, plotting.plan);
        ClipGraphArea(state, surface, Area::GraphFrame);
        SetLineColor(state, surface, 0);
    });
    tell_formula_failures(state); // only now, because a handler may change the data sets
}

} // namespace qv::render
