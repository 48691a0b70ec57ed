// What the style methods do: each sets a group of related properties in one call.
#pragma once

#include "control/document_names.h"
#include "qvgraph/styles.h"

namespace qv::control {

// Failures are reported under the method's name; settings made before the failing one stay.
#define QV_STYLE(method, target) void method(ControlState& state, method##Arguments& given);
#define QV_PARAMETER(method, name, kind_, default_, rule, property_)
#define QV_STYLE_END(method, then)
#include "control/styles.def"

} // namespace qv::control
