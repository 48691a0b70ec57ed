#include "render/legend_place.h"

#include "document/selection.h"
#include "render/plot_geometry.h"
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

/// What is drawn of a data set as straight strokes on the page: bars and areas down to the plot's edge,
/// pieces of a line, or symbols, which have no length.
class Strokes {
public:
    Strokes(Graph const& graph, DataSet const& set, Box const& plot)
        : set_(set), x_(scale::x_map(graph, at(graph.Axes, set.xAxisIndex))),
          y_(scale::y_map(graph, at(graph.Axes, set.yAxisIndex))), bottom_(plot.bottom()) {}

    void for_each(std::size_t step, auto const& visit) const {
        bool const down = set_.DataSymbol == symbol_bar || set_.DataLineStyle >= 4;
        bool const joined = set_.DataLineStyle != 0;
        Point before{};
        bool has_before = false;
        std::size_t skip = 0;
        for (PointBlock const& block : set_.points.blocks()) {
            std::size_t i = skip;
            for (; i < block.size(); i += step) {
                const Point place{x_(block.x()[i]), y_(block.y()[i])};
                bool const shown = is_finite(place);
                if (shown && down) visit(Point{place.x, bottom_}, place);
                if (shown && !down) visit(joined && has_before ? before : place, place);
                before = place;
                has_before = shown;
            }
            skip = i - block.size();
        }
    }

private:
    DataSet const& set_;
    scale::AxisMap x_, y_;
    double bottom_;
};

std::size_t points_shown(Graph const& graph) {
    std::size_t count = 0;
    for (DataSet const& set : graph.DataSets)
        if (!set.DataHide) count += set.points.size();
    return count;
}

} // namespace

bool fits_in_plot(LegendSize size, Box const& plot) {
    return size.width * size.height <= most_share * plot.width * plot.height && size.width <= 0.9 * plot.width
           && size.height <= 0.9 * plot.height;
}

Point legend_corner(document::ControlState const& state, Graph& graph, LegendSize size) {
    const Box plot = plot_box(graph);
    const Point gap{legend_gap_mm * state.UnitsPerMmX, legend_gap_mm * state.UnitsPerMmY};
    if (graph.fitting.legend_beside || graph.has_placing(document::LegendPlacing::BesideThePlot))
        return {graph.FrameLeft + graph.FrameWidth - size.width - gap.x, plot.top};
    auto places = candidates(plot, size, gap);
    std::size_t const step = points_shown(graph) / strokes_seen + 1;
    double const beside = free_space_mm * state.UnitsPerMmX, above = free_space_mm * state.UnitsPerMmY;
    for (DataSet const& set : graph.DataSets) {
        if (set.DataHide) continue;
        double const half = set.DataSymbol == symbol_none ? 0 : set.DataSymbolSize;
        Strokes(graph, set, plot).for_each(step, [&](Point from, Point to) {
            for (Candidate& place : places)
                place.strokes_hidden += meet(with_room(place.box, beside + half, above + half), from, to);
        });
    }
    auto const best = std::ranges::min_element(places, {}, &Candidate::strokes_hidden);
    auto& last = graph.fitting.legend_corner;
    bool const stays =
        last >= 0
        && static_cast<double>(best->strokes_hidden)
               >= better_by * static_cast<double>(places[static_cast<std::size_t>(last)].strokes_hidden);
    if (!stays) last = static_cast<std::int8_t>(best - places.begin());
    Box const& box = places[static_cast<std::size_t>(last)].box;
    return {box.left, box.top};
}

} // namespace qv::render
