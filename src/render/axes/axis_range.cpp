#include "render/axes/axis_range.h"

#include "document/selection.h"
#include "document/trap.h"
#include "render/function_curve.h"
#include "render/graph_ranges.h"
#include "scale/axis_range.h"
#include "scale/category_text.h"
#include "scale/round_ticks.h"
#include "scale/time_ticks.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace qv::render {
namespace {

using document::Axis;
using document::AxisMode;
using document::ControlState;
using document::FittedBy;

// Ranges that were settled before the drawing of the axis.
bool is_settled_already(Axis const& axis) {
    return axis.fitted_by != FittedBy::Nobody || axis.evened || !axis.AxisLink.empty();
}

// AutoFit was switched off.
void leave_fit(ControlState const& state, Axis& axis) {
    if (axis.fitted_by != FittedBy::AutoFit || !axis.ranges().shows_all()
        || fits_itself(state, document::current_graph(state), axis))
        return;
    axis.fitted_by = FittedBy::Nobody;
    axis.AxisRescale = true;
}

// An automatic axis without points shows the functions drawn on it, or 0..1. A zoomed one is left alone.
void range_over_functions(ControlState& state, Axis& axis) {
    if (is_settled_already(axis)) return;
    if (!axis.AxisNoData || axis.AxisValue1 != axis.ScaleMin || axis.AxisValue2 != axis.ScaleMax) return;
    document::Extent extent = extent_of_functions(state, axis.AxisXY);
    if (extent.empty() || !std::isfinite(extent.high - extent.low)) extent = {0, 1};
    if (axis.DataMin == extent.low && axis.DataMax == extent.high) return;
    axis.DataMin = extent.low;
    axis.DataMax = extent.high;
    axis.AxisRescale = true;
}

// Whether an automatic axis has still the fields that it was drawn with.
bool is_as_drawn(Axis const& axis) {
    auto const& drawn = axis.drawn;
    return !axis.AxisRescale && drawn && axis.AxisValue1 == drawn->AxisValue1
           && axis.AxisValue2 == drawn->AxisValue2 && axis.AxisMajorDivs == drawn->AxisMajorDivs
           && axis.AxisMinorDivs == drawn->AxisMinorDivs && axis.AxisLog == drawn->AxisLog;
}

void remember_drawn(ControlState const& state, Axis& axis, AxisSpan const& range) {
    axis.drawn.reset();
    if (axis.has_mode(AxisMode::Automatic))
        axis.drawn = {range.low,          range.high,         axis.AxisValue1, axis.AxisValue2,
                      axis.AxisMajorDivs, axis.AxisMinorDivs, axis.AxisLog,    state.RoundTicks};
}

// The rule by which an axis got its range no longer holds.
bool has_other_rule(ControlState const& state, Axis const& axis) {
    return !is_settled_already(axis) && axis.drawn && axis.drawn->round_ticks != state.RoundTicks
           && axis.AxisValue1 == axis.ScaleMin && axis.AxisValue2 == axis.ScaleMax;
}

AxisSpan round_range_of(ControlState& state, Axis& axis) {
    if (!axis.AxisRescale) return {axis.AxisValue1, axis.AxisValue2};
    auto const [low, high] = std::minmax(axis.DataMin, axis.DataMax);
    scale::RoundRange range{low, high, axis.AxisLog};
    document::trapped(state, "AutoScale", [&] { range = scale::round_range(range); });
    axis.AxisLog = range.is_log;
    return {range.low, range.high};
}

// Of an axis of time; nothing where it shows more than the calendar has.
std::optional<AxisSpan> time_range(Axis const& axis) {
    auto const range =
        scale::automatic_time_range(axis.DataMin, axis.DataMax, scale::TimeZone::named(axis.AxisTimeZone));
    if (!range) return std::nullopt;
    return axis.AxisRescale ? AxisSpan{range->low, range->high} : AxisSpan{axis.AxisValue1, axis.AxisValue2};
}

// Categories may have come while the axis was zoomed.
AxisSpan category_range_of(Axis& axis) {
    const AxisSpan shown{axis.AxisValue1, axis.AxisValue2};
    bool const follows = axis.AxisRescale || (axis.ranges().shows_all() && !is_settled_already(axis));
    if (!follows) return shown;
    const document::Extent data =
        axis.AxisNoData ? document::Extent{} : document::Extent{axis.DataMin, axis.DataMax};
    auto const [low, high] = scale::category_range(axis, data);
    if (!std::isfinite(high - low)) return shown;
    axis.AxisRescale |= low != shown.low || high != shown.high;
    return {low, high};
}

AxisSpan automatic_range(ControlState& state, Axis& axis) {
    leave_fit(state, axis);
    if (axis.AxisCategories) return category_range_of(axis);
    range_over_functions(state, axis);
    if (axis.AxisTime)
        if (auto const range = time_range(axis)) return *range;
    if (axis.AxisLog && !(axis.AxisValue1 > 0 && axis.AxisValue2 > 0)) axis.AxisRescale = true;
    if (has_other_rule(state, axis)) axis.AxisRescale = true;
    // Rounding a round range again may choose other divisions.
    if (state.keeps_drawn_ranges && is_as_drawn(axis)) return {axis.drawn->low, axis.drawn->high};
    if (state.RoundTicks) return round_range_of(state, axis);
    scale::AxisRange range{axis.AxisRescale ? axis.DataMin : axis.AxisValue1,
                           axis.AxisRescale ? axis.DataMax : axis.AxisValue2,
                           axis.AxisMajorDivs,
                           axis.AxisMinorDivs,
                           axis.AxisDP,
                           axis.AxisLog,
                           !axis.AxisRescale}; // narrow data may make an axis linear, zooming may not
    scale::AutoScale(state, range);
    axis.AxisMajorDivs = range.major_divs;
    axis.AxisMinorDivs = range.minor_divs;
    axis.AxisLog = range.is_log;
    return {range.low, range.high};
}

AxisSpan range_to_draw(ControlState& state, Axis& axis) {
    if (axis.has_mode(AxisMode::TextLabels)) return {axis.ScaleMin, axis.ScaleMax};
    if (axis.has_mode(AxisMode::Automatic)) return automatic_range(state, axis);
    return {axis.AxisValue1, axis.AxisValue2};
}

} // namespace

void announce_range(ControlState& state) {
    std::int16_t const index = state.CurrentGraph;
    document::Graph const& drawn = document::current_graph(state);
    document::raise_scale_changed(state);
    if (is_current(state, drawn)) return;
    state.refresh_asked_meanwhile = true;
    if (index < state.NumGraphs() && state.Graphs[static_cast<std::size_t>(index)].get() == &drawn)
        state.CurrentGraph = index;
}

SettledRange settle_silently(ControlState& state, Axis& axis) {
    if (axis.AxisTime || axis.AxisCategories) axis.AxisLog = false;
    const AxisSpan range = range_to_draw(state, axis);
    bool const is_new = axis.AxisRescale;
    if (is_new) {
        axis.AxisValue1 = axis.ScaleMin = range.low;
        axis.AxisValue2 = axis.ScaleMax = range.high;
        axis.AxisRescale = false;
        axis.fitted_by = FittedBy::Nobody;
    }
    if (!(range.low > 0 && range.high > 0)) axis.AxisLog = false;
    remember_drawn(state, axis, range);
    return {range, is_new};
}

AxisSpan settle_axis_range(ControlState& state, Axis& axis) {
    const SettledRange settled = settle_silently(state, axis);
    if (settled.is_new && axis.linked) axis.linked = axis.ranges();
    // Only now, so that a handler that draws finds the range settled.
    if (settled.is_new) announce_range(state);
    return settled.range;
}

AxisSpan settled_axis_range(Axis const& axis) {
    if (axis.has_mode(AxisMode::TextLabels)) return {axis.ScaleMin, axis.ScaleMax};
    if (axis.has_mode(AxisMode::Automatic) && axis.drawn) return {axis.drawn->low, axis.drawn->high};
    return {axis.AxisValue1, axis.AxisValue2};
}

} // namespace qv::render
