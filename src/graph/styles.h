// The style methods: each sets a group of related properties in one call. Their arguments are aggregates, so
// that g.LegendTableStyle({.EdgeThickness = 2}) names what it sets and g.GraphPosition({0, 0, 50, 50}) goes
// by order; what is left out keeps the default, which for most parameters leaves the property unchanged.
#pragma once

#include "graph/kinds.h"
#include "graph/model/ControlState.h"

namespace qv {

#define QV_STYLE(method, target) struct method##Arguments {
#define QV_PARAMETER(method, name, kind_, default_, rule, property_)                                         \
    graph::kind::kind_::parameter name = default_;
#define QV_STYLE_END(method, then)                                                                           \
    }                                                                                                        \
    ;
#include "graph/styles.def"

} // namespace qv

namespace qv::graph {

// Failures are reported under the method's name; settings made before the failing one stay.
#define QV_STYLE(method, target) void method(ControlState& state, method##Arguments& given);
#define QV_PARAMETER(method, name, kind_, default_, rule, property_)
#define QV_STYLE_END(method, then)
#include "graph/styles.def"

} // namespace qv::graph
