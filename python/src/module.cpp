// The module: pages, handles and the formula engine.
#include "members.h"
#include "qvgraph/looks.h"

#include <pybind11/stl.h>

namespace qv::python {
namespace {

Page* page_of(PyObject* self) {
    auto place = reinterpret_cast<py::detail::instance*>(self)->get_value_and_holder();
    return place.holder_constructed() ? place.value_ptr<Page>() : nullptr;
}

// A handler may lead back to its page; Python's collector frees such rings if it is told of them.
int traverse(PyObject* self, visitproc visit, void* arg) {
    Py_VISIT(Py_TYPE(self));
    if (Page* const page = page_of(self))
        for (py::object const& handler : page->events.handlers()) Py_VISIT(handler.ptr());
    return 0;
}

int clear(PyObject* self) {
    if (Page* const page = page_of(self))
        for (py::object& handler : page->events.handlers()) handler = py::object();
    return 0;
}

void make_collectable(PyHeapTypeObject* heap_type) {
    PyTypeObject& type = heap_type->ht_type;
    type.tp_flags |= Py_TPFLAGS_HAVE_GC;
    type.tp_traverse = traverse;
    type.tp_clear = clear;
}

std::unique_ptr<Page> make_page(int width, int height, std::optional<std::string> const& look,
                                double dots_per_inch) {
    static std::string const member = "Page";
    try {
        return std::make_unique<Page>(width, height, look, dots_per_inch);
    } catch (Fault const& fault) {
        raise_in_python(fault, member);
    }
}

void add_page(py::module_& module) {
    using py::arg;
    py::class_<Page> type(
        module, "Page", py::custom_type_setup(make_collectable),
        "A page of graphs, a picture in memory of this size in pixels.\n\n"
        "Members with capitals are those of the reference: properties as attributes, which belong to\n"
        "what is selected, and methods. graph() leads to handles, which select nothing. on_... take\n"
        "callables for events; a failure that a member reports is a warning unless on_error_msg is set.");
    type.def(py::init(&make_page), arg("width") = 800, arg("height") = 500, arg("look") = "light",
             arg("dots_per_inch") = 96.0,
             "__init__(self, width=800, height=500, look='light', dots_per_inch=96)\n--\n\n"
             "An empty page with a look: light, dark, print or classic.");
    add_page_properties(type);
    add_page_methods(type);
    add_page_outputs(module, type);
    type.def("__repr__", [](py::object const& self) {
        return py::str("<qvgraph.Page {} x {}, {} graphs>")
            .format(self.attr("width"), self.attr("height"), self.attr("NumGraphs"));
    });
}

std::vector<Color> palette(std::string const& name) {
    static std::string const member = "palette";
    try {
        return look(name).palette;
    } catch (Fault const& fault) {
        raise_in_python(fault, member);
    }
}

} // namespace
} // namespace qv::python

PYBIND11_MODULE(_qvgraph, module) {
    using namespace qv::python;
    py::options options;
    options.disable_function_signatures();
    module.doc() = "The graphing control; import qvgraph instead.";
    add_axis(module);
    add_data_set(module);
    add_graph(module);
    add_page(module);
    add_expression(module);
    module.def("rgb", &qv::rgb, py::arg("red"), py::arg("green"), py::arg("blue"),
               "rgb(red, green, blue)\n--\n\nA colour as members take and return it, 0xBBGGRR; parts from 0 "
               "to 255.");
    module.def("palette", &palette, py::arg("look") = "light",
               "palette(look='light')\n--\n\nThe colours that a look gives data sets, one after the other.");
    module.def(
        "look_names",
        [] {
            py::list names;
            for (auto const name : qv::look_names()) names.append(py::str(name.data(), name.size()));
            return names;
        },
        "look_names()\n--\n\nThe names of the looks there are.");
}
