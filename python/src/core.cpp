#include "core.h"

#include <utility>

namespace qv::python {

std::shared_ptr<raster::FontLibrary> const& Core::fonts() {
    if (!fonts_) fonts_ = raster::make_font_library();
    return fonts_;
}

void Core::raise_what_handlers_threw() {
    if (thrown_by_handler) std::rethrow_exception(std::exchange(thrown_by_handler, nullptr));
}

PageLock::PageLock(Core& core) : lock_(core.mutex, std::try_to_lock) {
    if (!lock_) {
        const py::gil_scoped_release others_run;
        lock_.lock();
    }
    if (core.window_thread && *core.window_thread != std::this_thread::get_id())
        throw std::runtime_error(
            "A window shows this page: use it on the window's thread, or close the window.");
}

void raise_in_python(Fault const& fault, std::string const& member) {
    const py::object type = py::module_::import("qvgraph._faults").attr("Fault");
    const py::object made = type(fault.number, member, fault.description);
    PyErr_SetObject(type.ptr(), made.ptr());
    throw py::error_already_set();
}

void Events::tell(py::str const& source, py::str const& description) {
    std::string const text = std::string(source) + ": " + std::string(description);
    if (PyErr_WarnEx(PyExc_RuntimeWarning, text.c_str(), 1) != 0) throw py::error_already_set();
}

Page::Page(int width, int height, std::optional<std::string> const& look, double dots_per_inch)
    : core(std::make_shared<Core>(PixelSize{width, height}, dots_per_inch)), events(*core) {
    if (look && *look != "classic") core->control().UseLook(*look);
    core->control().set_events(&events);
}

Page::~Page() {
    core->control().set_events(nullptr);
}

} // namespace qv::python
