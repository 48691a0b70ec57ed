// The page's input handlers: buttons and moves of the mouse. Places are twips on the page; `button` and
// `shift` are those of host/Input.h.
#pragma once

#include "document/ControlState.h"
#include "qvgraph/geometry.h"

#include <cstdint>

namespace qv::interact {

void Picture1_MouseDown(document::ControlState& state, std::uint8_t button, std::uint8_t shift, Point place);
void Picture1_MouseMove(document::ControlState& state, std::uint8_t button, std::uint8_t shift, Point place);
void Picture1_MouseUp(document::ControlState& state, std::uint8_t button, std::uint8_t shift, Point place);

} // namespace qv::interact
