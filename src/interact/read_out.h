// The read-out of the coordinates under the mouse.
#pragma once

#include "document/ControlState.h"
#include "qvgraph/geometry.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace qv::interact {

/// Takes the pointer's data coordinates from the graph under it and shows them in `Label1`. While a button is
/// held they stay as they are and the label is empty.
void ShowGraphCoords(document::ControlState& state, std::uint8_t button, Point place);

/// The read-out shows the values under the pointer no longer.
void hide_coordinates(document::ControlState& state);

/// Takes the values that a place stands for on a graph's selected axes, on the page as it is shown. An axis
/// that has none there leaves the pointer's as it is.
void take_values(document::ControlState& state, std::int16_t graph, Point place);

/// The coordinates of a place as the read-out writes them; empty outside the plot area, and where the graph
/// shows none or has none.
std::string coordinates_at(document::ControlState& state, std::int16_t graph, Point place);

/// Shows a text in the label, on one line; an empty one hides it.
void show_read_out(document::ControlState& state, std::string_view text);

/// A value on an axis as the read-out writes it: with digits enough to tell it from those of the pixels
/// beside it, which are `pixel_step` away.
std::string coordinate_text(document::Axis const& axis, double value, double pixel_step);
/// The same for pixels of a device-independent size.
std::string coordinate_text(document::Axis const& axis, double value);

} // namespace qv::interact
