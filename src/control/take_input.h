// The way from input to the control, the same for every host.
#pragma once

#include "control/document_names.h"
#include "qvgraph/Input.h"

namespace qv::control {

/// True when the control has used it up. What event handlers throw comes out.
bool take_input(ControlState& state, host::Input const& input);

} // namespace qv::control
