#include "render/tick_labels.h"

#include "render/axes.h"
#include "render/plot_geometry.h"
#include "scale/mapping.h"
#include "scale/number_format.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace qv::render {
namespace {

using graph::Axis;
using graph::AxisKind;
using graph::AxisMode;

constexpr std::int16_t label_digits = 6;

std::string number_label(Axis const& axis, double value) {
    std::int16_t automatic_style = 2;
    return scale::Format_Real(value, label_digits, automatic_style, 1, axis.AxisTextLabels);
}

// Labels along the axis: an x axis's upright ones and a y axis's at 90 degrees.
bool labels_run_along(AxisFrame const& frame, Axis const& axis) {
    return axis.AxisLabelsHoriz == (frame.kind == AxisKind::X ? 0 : 90);
}

// Share of a label's width that lies across the axis.
double across_share(AxisFrame const& frame, Axis const& axis) {
    double const angle = axis.AxisLabelsHoriz * std::numbers::pi / 180;
    return std::abs(frame.kind == AxisKind::X ? std::sin(angle) : std::cos(angle));
}

bool overlap_with_stride(std::vector<PlacedTick const*> const& labelled, std::size_t stride, double padding,
                         auto const& size_along) {
    for (std::size_t i = stride; i < labelled.size(); i += stride) {
        PlacedTick const& before = *labelled[i - stride];
        PlacedTick const& tick = *labelled[i];
        double const room = std::abs(tick.along - before.along);
        if (room < (size_along(before) + size_along(tick)) / 2 + padding) return true;
    }
    return false;
}

} // namespace

std::vector<PlacedTick> place_ticks(graph::ControlState& state, DrawSurface& surface, AxisFrame const& frame,
                                    Axis const& axis, AxisSpan range) {
    bool const is_x = frame.kind == AxisKind::X;
    graph::Graph const& graph = graph::current_graph(state);
    const scale::AxisMap map = is_x ? scale::x_map(graph, axis) : scale::y_map(graph, axis);
    double const pixel = is_x ? surface.TwipsPerPixelX() : surface.TwipsPerPixelY();
    double const length = std::max(frame.along_high() - frame.along_low(), 1.0);
    const std::vector<Tick> ticks =
        axis_ticks({range.low, range.high, axis.AxisMajorDivs, axis.AxisMinorDivs, axis.AxisLog,
                    pixel / length, axis.major_tick_values, axis.minor_tick_values});
    bool const given_labels = axis.has_mode(AxisMode::TextLabels);
    std::string_view text_labels = axis.AxisTextLabels;
    std::vector<PlacedTick> placed;
    double last_major = -HUGE_VAL;
    for (Tick const& tick : ticks) {
        bool const major = tick.kind == TickKind::Major;
        // A major tick uses up its text even where it is not drawn.
        std::string label(major && given_labels ? NextToken(text_labels) : "");
        double const along = map(tick.value);
        double const tolerance = major ? 1 : 0;
        if (!(along >= frame.along_low() - tolerance && along <= frame.along_high() + tolerance)) continue;
        // Majors that fall into one pixel are one tick, with the first one's label.
        double const place = std::floor(along / pixel + 0.5);
        if (major && place == last_major) continue;
        if (major) last_major = place;
        if (major && !given_labels) label = number_label(axis, tick.value);
        if (!axis.AxisShowLabels) label.clear();
        double const width = label.empty() ? 0 : surface.TextWidth(label);
        placed.push_back({along, tick.kind, std::move(label), width});
    }
    return placed;
}

LabelLayout label_layout(DrawSurface& surface, AxisFrame const& frame, Axis const& axis,
                         std::vector<PlacedTick> const& ticks) {
    bool const is_x = frame.kind == AxisKind::X;
    LabelLayout layout;
    layout.gap =
        (axis.AxisTicksOutside ? 2.0 * axis.AxisTickLength : 0) - axis.AxisLabelShift * frame.units_per_mm;
    if (is_x) layout.gap /= 2;
    if (labels_run_along(frame, axis)) {
        layout.vertical = is_x ? Align::Start : Align::End;
        if (axis.AxisShowLabels) layout.extent = surface.TextHeight("A");
    } else {
        layout.horizontal = Align::End;
        layout.vertical = Align::Centre;
        double widest = 0;
        for (PlacedTick const& tick : ticks) widest = std::max(widest, tick.label_width);
        layout.extent = widest * across_share(frame, axis);
    }
    return layout;
}

void thin_labels(DrawSurface& surface, AxisFrame const& frame, Axis const& axis,
                 std::vector<PlacedTick>& ticks) {
    double const height = surface.TextHeight("A");
    bool const along = labels_run_along(frame, axis);
    double const share = across_share(frame, axis);
    auto const size_along = [&](PlacedTick const& tick) {
        if (tick.label.empty()) return 0.0;
        return along ? tick.label_width : std::min(tick.label_width, height / std::max(share, 0.1));
    };
    std::vector<PlacedTick const*> labelled;
    for (PlacedTick const& tick : ticks)
        if (tick.kind == TickKind::Major) labelled.push_back(&tick);
    double const padding = along ? height / 2 : 0;
    std::size_t stride = 1;
    while (stride < labelled.size() && overlap_with_stride(labelled, stride, padding, size_along)) ++stride;
    std::size_t index = 0;
    for (PlacedTick& tick : ticks)
        if (tick.kind == TickKind::Major) tick.show_label = index++ % stride == 0;
}

} // namespace qv::render
