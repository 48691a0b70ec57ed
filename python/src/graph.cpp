// Graphs as Python has them.
#include "members.h"

namespace qv::python {
namespace {
#include "Graph.inc"
} // namespace

void add_graph(py::module_& module) {
    auto type = handle_class<GraphHandle>(module, "Graph", "A graph of a page, made by Page.graph.");
    add_members<Held<GraphHandle>, GraphHandle>(type, "Graph", Graph_properties, Graph_methods);
    type.def("__repr__", [](py::object const& self) {
        return self.cast<bool>() ? py::str("<qvgraph.Graph {!r}>").format(self.attr("title"))
                                 : py::str("<qvgraph.Graph, discarded>");
    });
    // A data set is a line until its options say otherwise.
    type.attr("data_set") = type.attr("line");
}

} // namespace qv::python
