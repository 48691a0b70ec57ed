// Fills and colours that a person is asked for.
#pragma once

#include "control/document_names.h"

#include <cstdint>

namespace qv::control {

/// Shows the gradient dialog and waits. The colours are base colours, as chosen before shading; after a
/// Cancel both are -1 and the rest is as at the last Okay.
void GetGradient(ControlState& state, Color& QvColor1, Color& QvColor2, float& gAngle, float& gShift,
                 std::int16_t& gStyle);
/// Shows the same dialog and hands back the first colour alone.
void GetColor(ControlState& state, Color& QvColor1);

/// Before the control goes: closes the dialog where it is open for it.
void withdraw_requests(ControlState& state);

} // namespace qv::control
