#include "render/axes/time_labels.h"

#include "render/plot_geometry.h"
#include "scale/mapping.h"
#include "scale/time_ticks.h"

#include <algorithm>
#include <cmath>

namespace qv::render {
namespace {

using document::Axis;
using document::AxisKind;

constexpr double least_minor_gap = 60; // twips
constexpr double straight = 1e-6;      // a text leads along the axis when it leads no further away from it

// Of a label whose text leads away from the axis, its height takes room along it.
auto size_along_axis(DrawSurface& surface, double along_text) {
    return [&surface, turned = std::abs(along_text)](std::string_view line) {
        double const width = surface.TextWidth(line);
        return turned < straight ? width : std::min(width, surface.TextHeight("A") / std::max(turned, 0.1));
    };
}

scale::TimeLabelLines label_lines(AxisFrame const& frame, double along_text) {
    bool const upright = frame.kind == AxisKind::X && std::abs(along_text) < straight;
    if (!upright) return scale::TimeLabelLines::One;
    return frame.far_side ? scale::TimeLabelLines::CoarseAbove : scale::TimeLabelLines::CoarseBelow;
}

// The page along the axis, from the end of lower values on.
struct Course {
    double room_before = 0;
    double length = 0;
    double room_after = 0;
};

Course course(document::Graph const& graph, AxisFrame const& frame, double start, double end) {
    const Box page = frame_box(graph);
    bool const is_x = frame.kind == AxisKind::X;
    double const first = is_x ? page.left : page.top, last = is_x ? page.right() : page.bottom();
    if (start <= end) return {start - first, end - start, last - end};
    return {last - start, start - end, end - first};
}

} // namespace

bool has_time_ticks(Axis const& axis) {
    if (axis.AxisCategories && !(axis.categories.are_times() && axis.categories.times_rise())) return false;
    return axis.AxisTime && axis.major_tick_values.empty() && !axis.has_mode(document::AxisMode::TextLabels);
}

std::optional<std::vector<PlacedTick>> place_time_ticks(document::Graph const& graph, DrawSurface& surface,
                                                        AxisFrame const& frame, Axis const& axis,
                                                        double along_text) {
    const scale::AxisMap map =
        frame.kind == AxisKind::X ? scale::x_map(graph, axis) : scale::y_map(graph, axis);
    auto const [low, high] = std::minmax(axis.AxisValue1, axis.AxisValue2);
    const Course place = course(graph, frame, map(low), map(high));
    double const line_height = surface.TextHeight("A");
    const scale::TimeScale scale{.low = low,
                                 .high = high,
                                 .zone = scale::TimeZone::named(axis.AxisTimeZone),
                                 .pattern = axis.AxisTextLabels,
                                 .lines = label_lines(frame, along_text),
                                 .length = place.length,
                                 .room_before = place.room_before,
                                 .room_after = place.room_after,
                                 .gap = std::abs(along_text) < straight ? line_height : line_height / 2,
                                 .minor_gap = least_minor_gap,
                                 .size_along = size_along_axis(surface, along_text)};
    auto const ticks = axis.AxisCategories ? scale::category_time_ticks(scale, axis.categories.times())
                                           : scale::time_ticks(scale);
    if (!ticks) return std::nullopt;
    std::vector<PlacedTick> placed;
    for (scale::TimeTick const& tick : *ticks) {
        if (!tick.is_major && axis.AxisMajorDivs == 0) continue;
        PlacedTick& added = placed.emplace_back();
        added.along = map(tick.value);
        added.kind = tick.is_major ? TickKind::Major : TickKind::Minor;
        added.value = tick.value;
        added.has_room = true;
        added.label = tick.label;
        added.label_is_ours = axis.AxisTextLabels.empty();
    }
    return placed;
}

} // namespace qv::render
