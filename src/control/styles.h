// The style methods: each sets a group of related properties in one call. Their arguments are aggregates, so
// that g.LegendTableStyle({.EdgeThickness = 2}) names what it sets and g.GraphPosition({0, 0, 50, 50}) goes
// by order; what is left out keeps the default, which for most parameters leaves the property unchanged.
#pragma once

#include "control/kinds.h"
#include "control/document_names.h"

namespace qv {

#define QV_STYLE(method, target) struct method##Arguments {
#define QV_PARAMETER(method, name, kind_, default_, rule, property_)                                         \
    control::kind::kind_::parameter name = default_;
#define QV_STYLE_END(method, then)                                                                           \
    }                                                                                                        \
    ;
#include "control/styles.def"

} // namespace qv

namespace qv::control {

// Failures are reported under the method's name; settings made before the failing one stay.
#define QV_STYLE(method, target) void method(ControlState& state, method##Arguments& given);
#define QV_PARAMETER(method, name, kind_, default_, rule, property_)
#define QV_STYLE_END(method, then)
#include "control/styles.def"

} // namespace qv::control
