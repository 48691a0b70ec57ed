#include "interact/point_steps.h"

#include "document/selection.h"
#include "document/trap.h"
#include "interact/hit_test.h"
#include "interact/nearest_point.h"
#include "interact/read_out.h"
#include "interact/scroll_bars.h"
#include "render/kinds/series_kind.h"
#include "render/page_marks.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>
#include <vector>

namespace qv::interact {
namespace {

using document::ControlState;
using document::DataSet;
using document::Graph;
using document::PointBlock;
using document::PointStore;
using document::ReadPoint;
using render::PointBeingRead;

bool can_be_drawn(PointBlock const& block, std::size_t i) {
    return std::isfinite(block.x()[i]) && std::isfinite(block.y()[i]);
}

/// The first index from `from` on, or the last up to it, for which `test` holds.
template <class Test>
std::optional<std::size_t> next_index(std::size_t from, std::size_t end, bool forward, Test test) {
    for (std::size_t i = from; i < end; forward ? ++i : --i)
        if (test(i)) return i;
    return std::nullopt; // going back below 0 wraps round to beyond the end
}

/// The next point from `from` on that can be drawn, `from` included. Runs of points that cannot be may be
/// long, so they are looked at block by block.
std::optional<std::size_t> drawable_from(PointStore const& points, std::size_t from, bool forward) {
    auto const& blocks = points.blocks();
    std::vector<std::size_t> starts;
    for (std::size_t start = 0; PointBlock const& block : blocks) {
        starts.push_back(start);
        start += block.size();
    }
    if (from >= points.size()) return std::nullopt;
    auto const holding = std::ranges::upper_bound(starts, from) - starts.begin() - 1;
    for (auto b = static_cast<std::size_t>(holding); b < blocks.size(); forward ? ++b : --b) {
        PointBlock const& block = blocks[b];
        std::size_t const first = forward ? (from > starts[b] ? from - starts[b] : 0)
                                          : std::min(from - starts[b], block.size() - 1);
        auto const found =
            next_index(first, block.size(), forward, [&](std::size_t i) { return can_be_drawn(block, i); });
        if (found) return starts[b] + *found;
    }
    return std::nullopt;
}

/// Points, or the items of a kind of its own.
std::size_t count_of(DataSet const& set) {
    render::SeriesKind const* const kind = render::series_kind(set);
    return kind ? kind->item_count(set) : set.points.size();
}

/// The next from `from` on that can be drawn, `from` included.
std::optional<std::size_t> readable_from(DataSet const& set, std::size_t from, bool forward) {
    if (!render::series_kind(set)) return drawable_from(set.points, from, forward);
    return from < count_of(set) ? std::optional(from) : std::nullopt;
}

bool is_read(DataSet const& set) {
    return !set.DataHide && count_of(set) > 0;
}

std::optional<std::int16_t> next_data_set(Graph const& graph, int from, bool forward) {
    int const step = forward ? 1 : -1;
    for (int i = from + step; i >= 0 && i < graph.NumDataSets(); i += step)
        if (is_read(at(graph.DataSets, static_cast<std::int16_t>(i)))) return static_cast<std::int16_t>(i);
    return std::nullopt;
}

/// The point that is read, if it is one of the current graph.
std::optional<PointBeingRead> present(ControlState& state) {
    auto read = render::point_being_read(state);
    return read && state.read_point->graph == state.CurrentGraph ? read : std::nullopt;
}

/// The stretch of a block in which its point nearest in x stands: where x rises, the neighbours of the place.
std::pair<std::size_t, std::size_t> nearest_stretch(PointBlock const& block, double x) {
    if (!block.x_rising() || !block.all_finite()) return {0, block.size()};
    auto const xs = block.x();
    auto const place = static_cast<std::size_t>(std::ranges::lower_bound(xs, x) - xs.begin());
    std::size_t const first = place == 0 ? 0 : place - 1;
    // Of several at one x the first is taken.
    auto const earliest = std::ranges::lower_bound(xs, xs[first]) - xs.begin();
    return {static_cast<std::size_t>(earliest), std::min(place + 1, block.size())};
}

/// Points are known by their arrival, so that they stay the same while older ones are dropped.
std::size_t forgotten_points(DataSet const& set) {
    return render::series_kind(set) ? 0 : set.points.dropped();
}

/// The item or point of a data set from which reading goes on that began at `x` in another.
std::size_t start_in(DataSet const& set, std::optional<double> x) {
    return x && !render::series_kind(set) ? nearest_in_x(set.points, *x) : 0;
}

bool read(ControlState& state, Graph& graph, std::int16_t data_set, std::optional<std::size_t> point) {
    if (!point) return false;
    state.read_point =
        ReadPoint{state.CurrentGraph, data_set, *point + forgotten_points(at(graph.DataSets, data_set))};
    std::string const text = point_name(state, state.CurrentGraph, {data_set, *point, 0});
    state.pointer.is_read = false; // the label is the point's now
    show_read_out(state, text);
    render::update_read_mark(state);
    state.host->point_read(text);
    return true;
}

} // namespace

std::size_t nearest_in_x(PointStore const& points, double x) {
    std::size_t nearest = 0, start = 0;
    double least = HUGE_VAL;
    for (PointBlock const& block : points.blocks()) {
        // A block out of reach is passed over.
        double const beside = std::max(block.x_extent().low - x, x - block.x_extent().high);
        if (beside < least) {
            auto const [first, end] = nearest_stretch(block, x);
            for (std::size_t i = first; i < end; ++i) {
                double const distance = std::abs(block.x()[i] - x);
                if (!(distance < least) || !std::isfinite(block.y()[i])) continue;
                least = distance;
                nearest = start + i;
            }
        }
        start += block.size();
    }
    return nearest;
}

bool step_point(ControlState& state, bool forward) {
    Graph* const graph = graph_at(state, state.CurrentGraph);
    if (!graph) return false;
    if (auto const now = present(state)) {
        if (!forward && now->index == 0) return false;
        return read(state, *graph, state.read_point->data_set,
                    readable_from(now->set, forward ? now->index + 1 : now->index - 1, forward));
    }
    auto const set = next_data_set(*graph, -1, true);
    if (!set) return false;
    DataSet const& first = at(graph->DataSets, *set);
    return read(state, *graph, *set, readable_from(first, forward ? 0 : count_of(first) - 1, forward));
}

bool step_data_set(ControlState& state, bool forward) {
    Graph* const graph = graph_at(state, state.CurrentGraph);
    if (!graph) return false;
    auto const now = present(state);
    if (!now) return step_point(state, true);
    std::optional<double> x;
    if (!render::series_kind(now->set)) x = now->set.points.at(now->index).X;
    for (auto set = next_data_set(*graph, state.read_point->data_set, forward); set;
         set = next_data_set(*graph, *set, forward)) {
        DataSet const& other = at(graph->DataSets, *set);
        if (read(state, *graph, *set, readable_from(other, start_in(other, x), true))) return true;
    }
    return false;
}

bool stop_reading(ControlState& state) {
    if (!state.read_point) return false;
    state.read_point.reset();
    state.pointer.is_read = false;
    show_read_out(state, "");
    render::update_read_mark(state);
    return true;
}

} // namespace qv::interact
