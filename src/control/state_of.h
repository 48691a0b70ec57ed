// The state behind a control, for tests and measurements that look beneath its interface.
#pragma once

#include "document/ControlState.h"
#include "qvgraph/qvGraph.h"

namespace qv::control {

document::ControlState& state_of(qvGraph& control);
document::ControlState const& state_of(qvGraph const& control);

} // namespace qv::control
