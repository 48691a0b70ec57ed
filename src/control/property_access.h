// Properties as functions of the state, one overloaded pair a row of properties.def:
// property::AxisColor(state) reads, property::AxisColor(state, value) stores with the row's conversion and
// does what follows from it. A missing graph, axis or data set is fault 9, a value that does not fit fault 6.
#pragma once

#include "control/document_names.h"
#include "control/kinds.h"
#include "document/selection.h"

namespace qv::control {

/// The records on which properties act.
namespace target {
auto& axis(auto& state) {
    return selected_axis(state);
}
auto& graph(auto& state) {
    return current_graph(state);
}
auto& data(auto& state) {
    return selected_data_set(state);
}
/// The page belongs to the control, but its properties need a current graph.
auto& page(auto& state) {
    current_graph(state);
    return state.PageFill;
}
auto& control(auto& state) {
    return state;
}
} // namespace target

namespace property {

#define QV_READ_ONLY_PROPERTY(name, kind_, target_, field_, conversion_)                                     \
    kind::kind_::value name(ControlState const& state);
#define QV_PROPERTY(name, kind_, target_, field_, conversion_, then_)                                        \
    kind::kind_::value name(ControlState const& state);                                                      \
    void name(ControlState& state, kind::kind_::argument value);
#include "control/properties.def"

/// Renames the current graph.
void GraphTitle(ControlState& state, std::string_view title);

} // namespace property

/// Gives the page surfaces the page's first colour as their background.
void color_page_surfaces(ControlState& state);

} // namespace qv::control
