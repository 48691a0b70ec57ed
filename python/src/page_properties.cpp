// The properties of a page.
#include "members.h"

namespace qv::python {
namespace {
#include "page_properties.inc"
} // namespace

void add_page_properties(py::class_<Page>& type) {
    add_members<Page, qvGraph>(type, "Page", page_properties, {});
}

} // namespace qv::python
