// From an empty control to an empty control: creation, resizing, Reset.
#pragma once

#include "control/document_names.h"

#include <string_view>

namespace qv::control {

constexpr std::string_view version = "2.13";

/// Makes the five surfaces and brings the control into its empty state.
void UserControl_Initialize(ControlState& state);

/// Asks the host how much room the scroll bars and the read-out take.
void measure_child_controls(ControlState& state);
/// The same for the read-out alone, whose font has changed.
void measure_read_out(ControlState& state);

/// Fits surfaces and child controls into the control's inner size (twips) and, once a graph has been drawn,
/// redraws the page.
void UserControl_Resize(ControlState& state, double width_twips, double height_twips);

/// Discards all graphs and puts the page fill, the zoom state and the switch AxisMarksInFront back. Nothing
/// is redrawn; SuppressRaisingEvents stays. May be called from inside any event.
void Reset(ControlState& state);

/// The input that goes straight to the host: a double click and a key press on the page. Not trapped.
void Picture1_DblClick(ControlState& state);
void Picture1_KeyPress(ControlState& state, std::int16_t& KeyAscii);

} // namespace qv::control
