// Axes and legends as Python has them.
#include "members.h"

namespace qv::python {
namespace {
#include "Axis.inc"
#include "Legend.inc"
} // namespace

void add_axis(py::module_& module) {
    auto axis = handle_class<AxisHandle>(module, "Axis", "An axis of a graph: x, y or a colour bar.");
    add_members<Held<AxisHandle>, AxisHandle>(axis, "Axis", Axis_properties, Axis_methods);
    auto legend = handle_class<LegendHandle>(module, "Legend", "The legend table of a graph.");
    add_members<Held<LegendHandle>, LegendHandle>(legend, "Legend", Legend_properties, Legend_methods);
}

} // namespace qv::python
