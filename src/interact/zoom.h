// Zooming: the ranges that the axes of a graph show of their full ranges.
#pragma once

#include "document/ControlState.h"
#include "qvgraph/geometry.h"

#include <cstdint>
#include <vector>

namespace qv::interact {

/// False for a logarithmic axis whose ranges have no logarithm, as until the next drawing after `AxisLog` was
/// set over a range that reaches below zero. Such an axis is neither zoomed nor moved.
bool has_scale(document::Axis const& axis);

/// The full range of an axis in the direction in which its displayed range runs.
document::Shown full_range(document::Axis const& axis);
/// Shows what of a range lies in the full one, in the direction in which the axis runs already; where nothing
/// does, the axis stays as it is.
void show_within_full_range(document::Axis& axis, document::Shown range);

/// The displayed ranges of all axes of a graph, in order.
std::vector<document::Shown> shown_ranges(document::Graph const& graph);
void show_ranges(document::Graph& graph, std::vector<document::Shown> const& ranges);

/// Completes the rubber band: every axis of `MouseGraph` shows what lies between the corner of the press and
/// `release`. An axis across which the box is thinner than its full range by `MaxZoomFactor` stays as it is.
void ZoomToBox(document::ControlState& state, Point release);

/// Every axis of `MouseGraph` shows its full range.
void UnZoom(document::ControlState& state);

/// Draws a graph whose ranges have changed, and the scroll bars.
void redraw_ranges(document::ControlState& state, std::int16_t graph);

/// Half of the displayed range about a place of the page, on every axis on its own scale, moved so that it
/// lies in the full range; stops at `MaxZoomFactor`.
void zoom_in_by_two(document::ControlState& state, std::int16_t graph, Point place);
/// Twice the displayed range, as far as the full range goes.
void zoom_out_by_two(document::ControlState& state, std::int16_t graph);

/// Which axes of a graph a gesture is for.
struct AxisChoice {
    bool x = true;
    bool y = true;
};
/// The displayed ranges `factor` times as long, with the values at a place staying there. Never beyond the
/// full range, never below it by more than `MaxZoomFactor`.
void zoom_about(document::ControlState& state, std::int16_t graph, Point place, double factor,
                AxisChoice axes);
/// Moves the displayed ranges by a way on the page, in twips, as far as the full ranges go.
void pan_by(document::ControlState& state, std::int16_t graph, double right, double down);

/// Keeps the displayed ranges of a graph as a step to take back, if they are others when it goes.
class ZoomStepScope {
public:
    ZoomStepScope(document::ControlState& state, std::int16_t graph, document::ZoomKind kind);
    ~ZoomStepScope();
    ZoomStepScope(ZoomStepScope const&) = delete;
    ZoomStepScope& operator=(ZoomStepScope const&) = delete;

private:
    document::ControlState& state_;
    document::Graph const* graph_; // nullptr: there is none
    document::ZoomStep step_;
};

/// Takes the last step of zooming back, or does it again; false when there is none.
bool undo_zoom(document::ControlState& state);
bool redo_zoom(document::ControlState& state);

} // namespace qv::interact
