#include "control/settings.h"

#include "base/convert.h"
#include "document/selection.h"
#include "document/trap.h"
#include "interact/scroll_bars.h"
#include "qvgraph/fault.h"
#include "render/page_marks.h"

#include <algorithm>
#include <cmath>

namespace qv::control {

void GetAxisRange(ControlState const& state, double& a1, double& a2) {
    Axis const& axis = selected_axis(state);
    a1 = axis.AxisValue1;
    a2 = axis.AxisValue2;
}

void set_ticks(Axis& axis, std::span<double const> major, std::span<double const> minor) {
    auto const finite = [](double value) { return std::isfinite(value); };
    if (!std::ranges::all_of(major, finite) || !std::ranges::all_of(minor, finite))
        raise_fault(FaultNumber::InvalidProcedureCall, "A tick's value must be finite");
    axis.major_tick_values.assign(major.begin(), major.end());
    axis.minor_tick_values.assign(minor.begin(), minor.end());
}

void SetAxisTicks(ControlState& state, std::span<double const> major, std::span<double const> minor) {
    trapped(state, "SetAxisTicks", [&] { set_ticks(selected_axis(state), major, minor); });
}

void set_histogram_edges(DataSet& set, std::span<double const> edges) {
    auto const falls = [](double one, double next) { return !(one < next); };
    bool const are_finite = std::ranges::all_of(edges, [](double edge) { return std::isfinite(edge); });
    if (edges.size() == 1 || !are_finite || std::ranges::adjacent_find(edges, falls) != edges.end())
        raise_fault(
            FaultNumber::InvalidProcedureCall,
            "The edges of a histogram's bins must be two or more finite values in rising order, or none "
            "to take them back. The edges stay as they were.");
    set.histogram_edges.assign(edges.begin(), edges.end());
}

void SetHistogramEdges(ControlState& state, std::span<double const> edges) {
    trapped(state, "SetHistogramEdges", [&] { set_histogram_edges(selected_data_set(state), edges); });
}

void SetTooltip(ControlState& state, std::string_view tooltip) {
    state.Tooltip = tooltip;
    state.host->child_controls_changed();
}

void SetCrossHair(ControlState& state, std::int16_t style) {
    trapped(state, "SetCrossHair", [&] {
        if (style != 0) state.CrossHairStyle = to_u8(style - 1);
        state.CrossHairOn = style != 0;
        render::update_cross_hair(state);
    });
}

void SetShowXYcoords(ControlState& state, bool show) {
    trapped(state, "SetShowXYcoords", [&] {
        current_graph(state).GraphShowXY = show;
        state.Label1.Visible = show;
        interact::ResizeScrollBars(state);
        state.host->child_controls_changed();
    });
}

} // namespace qv::control
