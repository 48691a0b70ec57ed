#include "render/equal_units.h"

#include "base/convert.h"
#include "document/selection.h"
#include "render/axes/axis_range.h"

#include <algorithm>
#include <cmath>

namespace qv::render {
namespace {

using document::Axis;
using document::AxisKind;
using document::AxisMode;
using document::AxisRanges;
using document::ControlState;
using document::Graph;

constexpr double negligible = 1e-9; // of a range

/// One of the two ranges of an axis, from its first end to its last.
struct Span {
    double first = 0;
    double last = 0;
    double length() const { return last - first; }
};

/// Twice as long where `factor` is 2, about the same middle.
Span stretched(Span const& span, double factor) {
    if (factor <= 1 + negligible) return span;
    double const added = span.length() * (factor - 1) / 2;
    return {span.first - added, span.last + added};
}

/// Moved so that it lies in another one; one that is longer stays.
Span moved_into(Span const& span, Span const& whole) {
    auto const [low, high] = std::minmax(span.first, span.last);
    auto const [whole_low, whole_high] = std::minmax(whole.first, whole.last);
    if (high - low > whole_high - whole_low) return span;
    double const way = low < whole_low ? whole_low - low : high > whole_high ? whole_high - high : 0;
    return {span.first + way, span.last + way};
}

/// The same kind of range of both axes.
struct Pair {
    Span x, y;
};

struct Lengths {
    double x = 0; // millimetres
    double y = 0;
};

Pair evened(Pair const& pair, Lengths const& lengths) {
    double const unit_x = lengths.x / std::abs(pair.x.length());
    double const unit_y = lengths.y / std::abs(pair.y.length());
    return {stretched(pair.x, unit_x / unit_y), stretched(pair.y, unit_y / unit_x)};
}

bool has_length(Span const& span) {
    return std::isfinite(span.length()) && span.length() != 0;
}

bool is_usable(Pair const& pair, Lengths const& lengths) {
    auto const [x, y] = evened(pair, lengths);
    return has_length(pair.x) && has_length(pair.y) && has_length(x) && has_length(y);
}

Span shown(AxisRanges const& ranges) {
    return {ranges.AxisValue1, ranges.AxisValue2};
}

Span full(AxisRanges const& ranges) {
    return {ranges.ScaleMin, ranges.ScaleMax};
}

bool can_be_evened(Axis const& axis) {
    return !axis.AxisLog && !axis.has_mode(AxisMode::TextLabels) && axis.AxisLength > 0;
}

void widen(Axis& axis, Span const& shown, Span const& full) {
    const AxisRanges asked = axis.ranges();
    axis.take_ranges({shown.first, shown.last, full.first, full.last});
    axis.evened = {asked, axis.ranges()};
}

} // namespace

void take_back_evening(Axis& axis) {
    if (!axis.evened) return;
    auto const [asked, evened] = *axis.evened;
    axis.evened.reset();
    AxisRanges now = axis.ranges();
    bool const shows_all = now.shows_all();
    if (now.ScaleMin == evened.ScaleMin && now.ScaleMax == evened.ScaleMax) {
        now.ScaleMin = asked.ScaleMin;
        now.ScaleMax = asked.ScaleMax;
    }
    if (shows_all) {
        now.AxisValue1 = now.ScaleMin;
        now.AxisValue2 = now.ScaleMax;
        // Points may have come into what was shown beyond the range asked for.
        auto const [low, high] = std::minmax(now.ScaleMin, now.ScaleMax);
        if (axis.has_mode(AxisMode::Automatic) && (axis.DataMin < low || axis.DataMax > high))
            axis.AxisRescale = true;
    } else if (now.AxisValue1 == evened.AxisValue1 && now.AxisValue2 == evened.AxisValue2) {
        now.AxisValue1 = asked.AxisValue1;
        now.AxisValue2 = asked.AxisValue2;
    }
    axis.take_ranges(now);
}

void make_units_even(ControlState& state, Graph& graph) {
    std::int16_t const x_index = AxisLevelIndex(graph, AxisKind::X, 1);
    std::int16_t const y_index = AxisLevelIndex(graph, AxisKind::Y, 1);
    Axis& x = at(graph.Axes, x_index, "axis");
    Axis& y = at(graph.Axes, y_index, "axis");
    if (!can_be_evened(x) || !can_be_evened(y)) return;
    const document::SelectedAxesScope selection(graph); // ranges of functions belong to selected axes
    graph.SelectedXAxis = x_index;
    graph.SelectedYAxis = y_index;
    for (Axis* const axis : {&x, &y}) settle_silently(state, *axis);
    const Lengths lengths{x.AxisLength / static_cast<double>(state.UnitsPerMmX),
                          y.AxisLength / static_cast<double>(state.UnitsPerMmY)};
    const Pair asked_full{full(x.ranges()), full(y.ranges())};
    const Pair asked_shown{shown(x.ranges()), shown(y.ranges())};
    if (!is_usable(asked_full, lengths) || !is_usable(asked_shown, lengths)) return;
    auto const [full_x, full_y] = evened(asked_full, lengths);
    const Pair pair = evened(asked_shown, lengths);
    bool const shows_all = x.ranges().shows_all() && y.ranges().shows_all();
    widen(x, shows_all ? full_x : moved_into(pair.x, full_x), full_x);
    widen(y, shows_all ? full_y : moved_into(pair.y, full_y), full_y);
}

} // namespace qv::render
