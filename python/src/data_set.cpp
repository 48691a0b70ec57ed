// Data sets as Python has them.
#include "members.h"

namespace qv::python {
namespace {
#include "DataSet.inc"
} // namespace

void add_data_set(py::module_& module) {
    auto type = handle_class<DataHandle>(
        module, "DataSet", "A data set of a graph: points, a function, a text, or several of these.");
    add_members<Held<DataHandle>, DataHandle>(type, "DataSet", DataSet_properties, DataSet_methods);
    type.def("__len__", [](py::object const& self) { return self.attr("size")(); });
    type.def("__repr__", [](py::object const& self) {
        return self.cast<bool>() ? py::str("<qvgraph.DataSet {!r}, {} points>")
                                       .format(self.attr("legend"), self.attr("size")())
                                 : py::str("<qvgraph.DataSet, discarded>");
    });
}

} // namespace qv::python
