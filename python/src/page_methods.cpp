// The methods of a page, and its events.
#include "members.h"

namespace qv::python {
namespace {
#include "page_methods.inc"
} // namespace

void add_page_methods(py::class_<Page>& type) {
    add_members<Page, qvGraph>(type, "Page", {}, Page_methods);
    auto const add_event = [&](char const* name, Event event, char const* doc) {
        type.def_property(
            name,
            [event](Page& page) {
                const PageLock lock(*page.core);
                py::object const& handler = page.events.handler(event);
                return handler ? handler : py::object(py::none());
            },
            [event, name](Page& page, py::object const& handler) {
                if (!handler.is_none() && !PyCallable_Check(handler.ptr()))
                    throw py::type_error(std::string("Page.") + name + " must be called, or be None");
                const PageLock lock(*page.core);
                page.events.handler(event) = handler.is_none() ? py::object() : handler;
            },
            doc);
    };
#define QV_EVENT(name, attribute, parameters, call, doc) add_event(#attribute, Event::name, doc);
#include "events.inc"
#undef QV_EVENT
}

} // namespace qv::python
