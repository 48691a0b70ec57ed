#include "render/legend_place.h"

#include "document/selection.h"
#include "render/bars/bar_places.h"
#include "render/bars/bar_stack.h"
#include "render/bars/bars.h"
#include "render/data_sets.h"
#include "render/function_curve.h"
#include "render/kinds/series_kind.h"
#include "render/plot_geometry.h"
#include "render/polar/polar_map.h"
#include "render/symbols.h"
#include "scale/mapping.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace qv::render {
namespace {

using document::DataSet;
using document::Graph;
using document::PointBlock;

constexpr double most_share = 0.4;          // of the plot area
constexpr double free_space_mm = 1;         // around a legend
constexpr std::size_t strokes_seen = 3'000; // of a graph, evenly picked from more
constexpr double better_by = 0.75; // the share of strokes hidden that makes another place worth a move

struct Candidate {
    Box box;
    std::size_t strokes_hidden = 0;
    std::size_t strokes_near = 0; // these, and those in the free space around it
};

// Best liked first: corners, then the middles of the sides.
std::array<Candidate, 8> candidates(Box const& plot, LegendSize size, Point gap) {
    double const left = plot.left + gap.x, right = plot.right() - gap.x - size.width;
    double const top = plot.top + gap.y, bottom = plot.bottom() - gap.y - size.height;
    double const middle = (left + right) / 2, half_way = (top + bottom) / 2;
    std::array<Candidate, 8> places;
    std::size_t next = 0;
    for (const Point corner :
         {Point{right, top}, Point{left, top}, Point{right, bottom}, Point{left, bottom}, Point{middle, top},
          Point{middle, bottom}, Point{right, half_way}, Point{left, half_way}})
        places[next++].box = {corner.x, corner.y, size.width, size.height};
    return places;
}

Box with_room(Box const& box, double across, double down) {
    return {box.left - across, box.top - down, box.width + 2 * across, box.height + 2 * down};
}

bool overlap(Box const& one, Box const& other) {
    return one.left <= other.right() && other.left <= one.right() && one.top <= other.bottom()
           && other.top <= one.bottom();
}

bool meet(Box const& box, Point a, Point b) {
    if (std::max(a.x, b.x) < box.left || std::min(a.x, b.x) > box.right() || std::max(a.y, b.y) < box.top
        || std::min(a.y, b.y) > box.bottom())
        return false;
    // Otherwise they are apart only where all corners lie on one side of the stroke.
    auto const side = [&](double x, double y) { return (b.x - a.x) * (y - a.y) - (b.y - a.y) * (x - a.x); };
    auto const [least, most] = std::minmax({side(box.left, box.top), side(box.right(), box.top),
                                            side(box.left, box.bottom()), side(box.right(), box.bottom())});
    return least <= 0 && most >= 0;
}

bool is_finite(Point place) {
    return std::isfinite(place.x) && std::isfinite(place.y);
}

/// A piece of a line, a symbol, which has no length, or a bar, with what it takes on either side.
struct Stroke {
    Point from, to;
    Point half{}; // along x and y
};

Box around(Stroke const& stroke) {
    auto const [left, right] = std::minmax(stroke.from.x, stroke.to.x);
    auto const [top, bottom] = std::minmax(stroke.from.y, stroke.to.y);
    return {left, top, right - left, bottom - top};
}

/// What is drawn of a graph as straight strokes on the page.
class Strokes {
public:
    Strokes(document::ControlState& state, Graph& graph) : state_(state), graph_(graph) {
        std::size_t count = 0;
        for (DataSet const& set : graph.DataSets)
            if (!set.DataHide) count += set.points.size();
        step_ = count / strokes_seen + 1;
    }

    void for_each(auto const& visit) {
        for (std::int16_t i = 0; i < graph_.NumDataSets(); ++i) {
            DataSet const& set = at(graph_.DataSets, i);
            if (set.DataHide) continue;
            if (SeriesKind const* const kind = series_kind(set))
                items(*kind, set, i, visit);
            else
                set.DataSymbol == symbol_bar ? bars(set, i, visit) : points(set, visit);
            function(set, visit);
        }
    }

private:
    // Every so many points of a data set, by their places on the page and values.
    void for_each_point(DataSet const& set, auto const& visit) {
        const document::SelectedAxesScope selection(graph_);
        graph_.SelectedXAxis = set.xAxisIndex;
        graph_.SelectedYAxis = set.yAxisIndex;
        const PlaceMap places = place_map(graph_, SeriesScope::Maps::BeingDrawn);
        std::size_t skip = 0;
        for (PointBlock const& block : set.points.blocks()) {
            std::size_t i = skip;
            for (; i < block.size(); i += step_)
                visit(places(block.x()[i], block.y()[i]), Point{block.x()[i], block.y()[i]});
            skip = i - block.size();
        }
    }

    // Areas reach down to the plot's edge.
    void points(DataSet const& set, auto const& visit) {
        double const half = set.DataSymbol == symbol_none ? 0 : set.DataSymbolSize;
        double const bottom = plot_box(graph_).bottom();
        bool const joined = set.DataLineStyle != line_none;
        Point before{};
        bool has_before = false;
        for_each_point(set, [&](Point place, Point) {
            bool const shown = is_finite(place);
            if (shown && is_area(set)) visit(Stroke{{place.x, bottom}, place});
            if (shown && !is_area(set))
                visit(Stroke{joined && has_before ? before : place, place, {half, half}});
            before = place;
            has_before = shown;
        });
    }

    void bars(DataSet const& set, std::int16_t index, auto const& visit) {
        const SeriesScope scope(state_, graph_, index, SeriesScope::Maps::BeingDrawn);
        if (!set.BarStacked) stack_.ends.clear();
        stack_.position = 0;
        for_each_bar(scope.view(), plan_, stack_, [&](PlacedBar const& bar) {
            if (bar.point % step_ == 0) visit(set.BarHoriz ? lying(bar.box) : upright(bar.box));
        });
    }

    void items(SeriesKind const& kind, DataSet const& set, std::int16_t index, auto const& visit) {
        const SeriesScope scope(state_, graph_, index, SeriesScope::Maps::BeingDrawn);
        std::size_t const count = kind.item_count(set);
        for (std::size_t i = 0; i < count; i += count / strokes_seen + 1) {
            const Box box = kind.item_box(scope.view(), i);
            const Stroke stroke = upright({box.left, box.top, box.right(), box.bottom()});
            if (is_finite(stroke.from) && is_finite(stroke.to)) visit(stroke);
        }
    }

    static Stroke upright(BarBox const& box) {
        double const middle = (box.x1 + box.x2) / 2;
        return {{middle, box.y1}, {middle, box.y2}, {std::abs(box.x2 - box.x1) / 2, 0}};
    }
    static Stroke lying(BarBox const& box) {
        double const middle = (box.y1 + box.y2) / 2;
        return {{box.x1, middle}, {box.x2, middle}, {0, std::abs(box.y2 - box.y1) / 2}};
    }

    void function(DataSet const& set, auto const& visit) {
        Point before{};
        bool has_before = false;
        if (graph_.GraphPolar) return; // its middle is full anyway
        for (const Point place : coarse_curve(state_, graph_, set)) {
            bool const shown = is_finite(place);
            if (shown) visit(Stroke{has_before ? before : place, place});
            before = place;
            has_before = shown;
        }
    }

    document::ControlState& state_;
    Graph& graph_;
    BarStack stack_;
    BarPlan plan_{graph_};
    std::size_t step_ = 1;
};

} // namespace

bool fits_in_plot(LegendSize size, Box const& plot) {
    return size.width * size.height <= most_share * plot.width * plot.height && size.width <= 0.9 * plot.width
           && size.height <= 0.9 * plot.height;
}

double settle_legend_corner(document::ControlState& state, Graph& graph, LegendSize size) {
    const Point gap{legend_gap_mm * state.UnitsPerMmX, legend_gap_mm * state.UnitsPerMmY};
    auto places = candidates(plot_box(graph), size, gap);
    double const beside = free_space_mm * state.UnitsPerMmX, above = free_space_mm * state.UnitsPerMmY;
    double strokes = 0;
    Strokes(state, graph).for_each([&](Stroke const& stroke) {
        ++strokes;
        auto const [across, down] = stroke.half;
        const Box reach = with_room(around(stroke), beside + across, above + down);
        for (Candidate& place : places) {
            if (!overlap(reach, place.box)) continue; // most are told apart by that
            if (!meet(with_room(place.box, beside + across, above + down), stroke.from, stroke.to)) continue;
            ++place.strokes_near;
            place.strokes_hidden += meet(with_room(place.box, across, down), stroke.from, stroke.to);
        }
    });
    auto const best = std::ranges::min_element(places, {}, &Candidate::strokes_near);
    auto& last = graph.fitting.legend_corner;
    bool const stays =
        last >= 0
        && static_cast<double>(best->strokes_near)
               >= better_by * static_cast<double>(places[static_cast<std::size_t>(last)].strokes_near);
    if (!stays) last = static_cast<std::int8_t>(best - places.begin());
    auto const hidden = places[static_cast<std::size_t>(last)].strokes_hidden;
    return strokes > 0 ? static_cast<double>(hidden) / strokes : 0;
}

Point legend_corner(document::ControlState& state, Graph& graph, LegendSize size) {
    const Box plot = plot_box(graph);
    const Point gap{legend_gap_mm * state.UnitsPerMmX, legend_gap_mm * state.UnitsPerMmY};
    if (graph.fitting.legend_beside)
        return {graph.FrameLeft + graph.FrameWidth - size.width - gap.x, plot.top};
    if (graph.fitting.legend_corner < 0) settle_legend_corner(state, graph, size);
    auto const places = candidates(plot, size, gap);
    Box const& box = places[static_cast<std::size_t>(graph.fitting.legend_corner)].box;
    return {box.left, box.top};
}

} // namespace qv::render
