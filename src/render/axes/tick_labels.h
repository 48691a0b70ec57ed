// Ticks placed on the page, with the texts of their labels.
#pragma once

#include "render/axes/axis_frame.h"
#include "render/axes/axis_range.h"
#include "render/axes/ticks.h"
#include "render/text.h"

#include <string>
#include <vector>

namespace qv::render {

struct PlacedTick {
    double along = 0; // page coordinate along the axis, twips
    TickKind kind = TickKind::Major;
    double value = 0;
    std::string label;
    TextBlock label_size; // nothing without a label
    bool show_label = true;
    bool label_is_ours = false; // not in a format of the host's
    bool has_room = false;      // the label was chosen so that it keeps clear of the others
};

/// How far one step along a label's text, and one down its lines, leads away from the plot area.
struct LabelTurn {
    double along_text = 0;
    double down_lines = 0;
    bool runs_along_axis() const;
};
LabelTurn label_turn(AxisFrame const& frame, std::int16_t angle_degrees);
/// What a label takes of its axis.
double length_along(LabelTurn const& turn, TextBlock const& label);
/// Between two labels.
double least_gap(LabelTurn const& turn, double line_height);

/// What is decided for all labels of an axis together.
struct LabelChoice {
    std::string offset; // what all of them leave out, marked up
    std::int16_t angle_degrees = 0;
};

/// The ticks that lie on the axis. Labels are measured in the surface's current font.
std::vector<PlacedTick> place_ticks(document::ControlState& state, DrawSurface& surface,
                                    AxisFrame const& frame, document::Axis const& axis, AxisSpan range,
                                    LabelChoice& choice);

/// How the labels of an axis lie beside it: outside its line, whatever their angle. Lengths are twips across
/// the axis, from the middle of its line.
struct LabelLayout {
    Align horizontal = Align::Centre;
    Align vertical = Align::Centre;
    std::int16_t angle_degrees = 0;
    double gap = 0;           // to the labels' inner edge
    double extent = 0;        // of the labels
    double height_inside = 0; // share of a label's height between its inner edge and its anchor
    bool flush = false;       // the anchor is on the outer edge

    double anchor_distance(PlacedTick const& tick) const {
        return gap + (flush ? extent : 0) + height_inside * tick.label_size.height;
    }
};
LabelLayout label_layout(DrawSurface& surface, AxisFrame const& frame, document::Axis const& axis,
                         std::vector<PlacedTick> const& ticks, LabelChoice const& choice);

/// How far a label reaches along its axis from its tick, to the side where it reaches farther.
double label_reach_along(AxisFrame const& frame, LabelLayout const& layout, PlacedTick const& tick);

/// Hides labels so that those left, every second, third, ... one, do not overlap along the axis.
void thin_labels(DrawSurface& surface, AxisFrame const& frame, document::Axis const& axis,
                 std::vector<PlacedTick>& ticks);

} // namespace qv::render
