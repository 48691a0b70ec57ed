// Ticks placed on the page, with the texts of their labels.
#pragma once

#include "render/axis_frame.h"
#include "render/axis_range.h"
#include "render/text.h"
#include "render/ticks.h"

#include <string>
#include <vector>

namespace qv::render {

struct PlacedTick {
    double along = 0; // page coordinate along the axis, twips
    TickKind kind = TickKind::Major;
    std::string label;
    double label_width = 0; // twips
    bool show_label = true;
};

/// The ticks that lie on the axis. Labels are measured in the surface's current font.
std::vector<PlacedTick> place_ticks(graph::ControlState& state, DrawSurface& surface, AxisFrame const& frame,
                                    graph::Axis const& axis, AxisSpan range);

/// How the labels of an axis lie beside it.
struct LabelLayout {
    Align horizontal = Align::Centre;
    Align vertical = Align::Start;
    double gap = 0;    // twips between axis line and labels
    double extent = 0; // twips the labels take across the axis
};
LabelLayout label_layout(DrawSurface& surface, AxisFrame const& frame, graph::Axis const& axis,
                         std::vector<PlacedTick> const& ticks);

/// Hides labels so that those left, every second, third, ... one, do not overlap along the axis.
void thin_labels(DrawSurface& surface, AxisFrame const& frame, graph::Axis const& axis,
                 std::vector<PlacedTick>& ticks);

} // namespace qv::render
