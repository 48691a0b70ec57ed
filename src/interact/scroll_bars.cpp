#include "interact/scroll_bars.h"

#include "base/convert.h"
#include "document/selection.h"
#include "document/trap.h"
#include "interact/zoom.h"
#include "render/kinds/series_kind.h"
#include "scale/mapping.h"
#include "scale/numeric.h"

#include <cmath>

namespace qv::interact {
namespace {

using document::Axis;
using document::ControlState;
using host::ScrollBar;
using scale::Max;
using scale::MinMax;

enum class Direction { Horizontal, Vertical };

constexpr double least_length_twips = 1000;
constexpr double gap_twips = 100; // between read-out and horizontal bar

/// The visible span within the full range, both on the axis's own scale.
struct Visible {
    double fraction = 1; // of the full range
    double place = 1;    // 0 at the start of the full range, 1 at its end
};

Visible visible_part(Axis const& axis) {
    if (!has_scale(axis)) return {};
    const scale::ScaleFrom from_start{axis.ScaleMin, axis.AxisLog};
    const scale::ScaleFrom from_first{axis.AxisValue1, axis.AxisLog};
    double const span = std::abs(from_first(axis.AxisValue2)),
                 full_span = std::abs(from_start(axis.ScaleMax));
    double const room = std::abs(full_span - span);
    return {.fraction = full_span == 0 ? 1 : span / full_span,
            .place = room == 0 ? 1 : MinMax(std::abs(from_start(axis.AxisValue1)) / room, 0.0, 1.0)};
}

// Small values are at the left and at the bottom, on a reversed axis at the right and at the top; the value
// of a vertical bar grows downwards.
void set_thumb(ScrollBar& bar, Axis const& axis, Direction direction) {
    const Visible visible = visible_part(axis);
    if (visible.fraction < 1) {
        double const change = bar.Max * visible.fraction / (1 - visible.fraction);
        bar.LargeChange = to_i32(MinMax(change, 10.0, 500.0));
        double const place = axis.AxisReverse ? 1 - visible.place : visible.place;
        const std::int32_t from_low_end = to_i32(bar.Max * place);
        bar.Value = direction == Direction::Horizontal ? from_low_end : bar.Max - from_low_end;
    } else {
        bar.LargeChange = bar.Max;
        if (direction == Direction::Horizontal) bar.Value = 0;
    }
    bar.SmallChange = bar.LargeChange > 100 ? bar.LargeChange / 50 : 10;
}

} // namespace

void SetScrollBars(ControlState& state) {
    trapped(state, "SetScrollBars", [&] {
        // A host's bars may answer a new value at once; what they ask for then is passed over.
        const document::RestoreScope silent(state.NoRedraw, true);
        state.BarsGraph = state.CurrentGraph;
        if (state.Zoomed) {
            document::Graph& graph = current_graph(state);
            set_thumb(state.HScroll1, selected_x_axis(graph), Direction::Horizontal);
            set_thumb(state.VScroll1, selected_y_axis(graph), Direction::Vertical);
        }
        const bool visible = state.Zoomed && render::may_be_zoomed(current_graph(state));
        state.HScroll1.Visible = state.VScroll1.Visible = visible;
        state.host->child_controls_changed();
    });
}

void ResizeScrollBars(ControlState& state) {
    trapped(state, "ResizeScrollBars", [&] {
        ScrollBar& across = state.HScroll1;
        ScrollBar& down = state.VScroll1;
        host::Label& label = state.Label1;
        down.Left = Max(least_length_twips, state.inner_width - down.Width);
        down.Top = 0;
        down.Height = Max(least_length_twips, state.inner_height - across.Height);
        across.Top = Max(least_length_twips, state.inner_height - across.Height);
        across.Left = label.Visible ? label.Left + label.Width + gap_twips : 0;
        across.Width =
            label.Visible ? Max(least_length_twips, state.inner_width - across.Left - down.Width) : down.Left;
        label.Top = state.inner_height - label.Height - 5;
        SetScrollBars(state);
    });
}

} // namespace qv::interact
