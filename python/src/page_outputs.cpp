// What a page has in Python beyond the members of C++: pixels, files, notebooks.
#include "members.h"

#include <pybind11/stl.h>

namespace qv::python {
namespace {

using Bytes = output::Bytes;

std::string notebook_format = "png"; // under the interpreter's lock

void draw(Core& core) {
    const py::gil_scoped_release others_run;
    core.control().Refresh();
}

/// The page in a format, drawn anew before unless it shall stay as it was last shown.
Bytes encoded(Core& core, std::string_view media_type, bool refresh) {
    if (refresh) draw(core);
    const py::gil_scoped_release others_run;
    return output::encode_page(media_type, *core.control().page_picture(), core.fonts());
}

py::bytes bytes_of(Bytes const& bytes) {
    return {reinterpret_cast<char const*>(bytes.data()), bytes.size()};
}

py::str text_of(Bytes const& bytes) {
    return {reinterpret_cast<char const*>(bytes.data()), bytes.size()};
}

struct Format {
    char const* member;
    char const* media_type;
};

py::object png_of(Page& page, bool refresh) {
    return with_page(*page.core, "Page.to_png",
                     [&] { return py::object(bytes_of(encoded(*page.core, "image/png", refresh))); });
}

py::object pdf_of(Page& page, bool refresh) {
    return with_page(*page.core, "Page.to_pdf",
                     [&] { return py::object(bytes_of(encoded(*page.core, "application/pdf", refresh))); });
}

py::object svg_of(Page& page, bool refresh) {
    return with_page(*page.core, "Page.to_svg",
                     [&] { return py::object(text_of(encoded(*page.core, "image/svg+xml", refresh))); });
}

/// The pixels themselves. What is drawn later goes elsewhere, for as long as an array leads here.
struct Snapshot {
    std::shared_ptr<Core> core;
    std::shared_ptr<std::uint32_t const> pixels;
};

py::object pixels_of(Page& page, bool refresh) {
    return with_page(*page.core, "Page.to_numpy", [&] {
        if (refresh) draw(*page.core);
        raster::RasterSurface const& picture = page.core->host.picture();
        auto snapshot = std::make_unique<Snapshot>(Snapshot{page.core, picture.snapshot()});
        auto const* const first = reinterpret_cast<std::uint8_t const*>(snapshot->pixels.get());
        const py::capsule owner(snapshot.release(), [](void* held) { delete static_cast<Snapshot*>(held); });
        py::array_t<std::uint8_t> pixels(
            {py::ssize_t{picture.height()}, py::ssize_t{picture.width()}, py::ssize_t{4}},
            {py::ssize_t{4} * picture.stride(), py::ssize_t{4}, py::ssize_t{1}}, first, owner);
        pixels.attr("setflags")(py::arg("write") = false);
        return py::object(pixels);
    });
}

std::string path_of(py::object const& file) {
    return py::cast<std::string>(py::module_::import("os").attr("fsdecode")(file));
}

void save(Page& page, py::object const& file, bool refresh) {
    std::string const path = path_of(file);
    with_page(*page.core, "Page.save", [&] {
        if (refresh) draw(*page.core);
        const py::gil_scoped_release others_run;
        page.core->host.save(path);
        return true;
    });
}

void print_to(Page& page, py::object const& file) {
    std::string const path = path_of(file);
    with_page(*page.core, "Page.print_to", [&] {
        page.core->host.print_to(path);
        return true;
    });
}

void resize(Page& page, int width, int height) {
    with_page(*page.core, "Page.resize", [&] {
        const py::gil_scoped_release others_run;
        page.core->host.resize_picture({width, height});
        return true;
    });
}

int width_of(Page& page) {
    return with_page(*page.core, "Page.width", [&] { return page.core->host.picture().width(); });
}

int height_of(Page& page) {
    return with_page(*page.core, "Page.height", [&] { return page.core->host.picture().height(); });
}

/// What a page says of itself where it cannot be seen.
std::string words_of(Page& page) {
    return with_page(*page.core, "Page.outline", [&] {
        std::string words;
        for (int i = 0; auto const outline = page.core->control().outline(i); ++i) {
            words += (words.empty() ? "" : "; ") + outline->name + ": " + outline->description;
            for (PartOutline const& part : outline->parts)
                words += "; " + part.name + ": " + part.description;
        }
        return words;
    });
}

// A picture and its description, nothing that runs.
py::object html_of(Page& page) {
    if (notebook_format != "html") return py::none();
    const py::object png = png_of(page, true);
    const py::object encoded_png = py::module_::import("base64").attr("b64encode")(png).attr("decode")();
    const py::object words = py::module_::import("html").attr("escape")(words_of(page));
    return py::str("<img alt=\"{}\" width=\"{}\" height=\"{}\" src=\"data:image/png;base64,{}\"/>")
        .format(words, width_of(page), height_of(page), encoded_png);
}

void set_notebook_format(std::string const& format) {
    if (format != "png" && format != "svg" && format != "html")
        throw py::value_error("set_notebook_format: format must be \"png\", \"svg\" or \"html\"");
    notebook_format = format;
}

void add_plain_structs(py::module_& module) {
    py::class_<Box>(module, "Box", "A rectangle on the page in twips, 1440 an inch.")
        .def_readonly("left", &Box::left)
        .def_readonly("top", &Box::top)
        .def_readonly("width", &Box::width)
        .def_readonly("height", &Box::height)
        .def("__repr__", [](Box const& box) {
            return py::str("Box(left={}, top={}, width={}, height={})")
                .format(box.left, box.top, box.width, box.height);
        });
    py::class_<PartOutline>(module, "PartOutline", "An axis or a data set in words.")
        .def_readonly("name", &PartOutline::name)
        .def_readonly("description", &PartOutline::description);
    py::class_<GraphOutline>(module, "GraphOutline", "A graph in words, with its axes and data sets.")
        .def_readonly("name", &GraphOutline::name)
        .def_readonly("description", &GraphOutline::description)
        .def_readonly("frame", &GraphOutline::frame)
        .def_readonly("parts", &GraphOutline::parts);
}

} // namespace

void add_page_outputs(py::module_& module, py::class_<Page>& type) {
    using py::arg;
    type.def(
        "to_numpy", &pixels_of, arg("refresh") = true,
        "to_numpy(self, refresh=True)\n--\n\n"
        "The page's pixels as an array (height, width, 4) of bytes: blue, green, red and 255. It is no copy\n"
        "and cannot be written; it stays as it is when the page is drawn again. [..., 2::-1] of it is RGB.\n"
        "The page is drawn before, unless refresh is False.");
    type.def("to_png", &png_of, arg("refresh") = true,
             "to_png(self, refresh=True)\n--\n\nThe page as the bytes of a PNG file.");
    type.def("to_svg", &svg_of, arg("refresh") = true,
             "to_svg(self, refresh=True)\n--\n\nThe page as the text of an SVG file.");
    type.def("to_pdf", &pdf_of, arg("refresh") = true,
             "to_pdf(self, refresh=True)\n--\n\nThe page as the bytes of a PDF file.");
    type.def("save", &save, arg("file"), arg("refresh") = true,
             "save(self, file, refresh=True)\n--\n\n"
             "Writes the page to a file: .png, .svg and .pdf as their endings say, any other name as a "
             "bitmap. The\n"
             "page is drawn before, unless refresh is False. A file that cannot be written is a Fault.");
    type.def("print_to", &print_to, arg("file"),
             "print_to(self, file)\n--\n\nFrom now on PrintImage writes a PDF of one sheet of paper; before, "
             "there is no printer.");
    type.def("resize", &resize, arg("width"), arg("height"),
             "resize(self, width, height)\n--\n\nGives the page another size in pixels and draws it anew.");
    type.def_property_readonly("width", &width_of, "Width of the page in pixels.");
    type.def_property_readonly("height", &height_of, "Height of the page in pixels.");
    type.def(
        "_repr_png_", [](Page& page) { return png_of(page, true); },
        "_repr_png_(self)\n--\n\nFor notebooks.");
    type.def(
        "_repr_svg_",
        [](Page& page) { return notebook_format == "svg" ? svg_of(page, true) : py::object(py::none()); },
        "_repr_svg_(self)\n--\n\nFor notebooks, after set_notebook_format(\"svg\").");
    type.def("_repr_html_", &html_of,
             "_repr_html_(self)\n--\n\nFor notebooks, after set_notebook_format(\"html\").");
    add_plain_structs(module);
    module.def("set_notebook_format", &set_notebook_format, arg("format"),
               "set_notebook_format(format)\n--\n\n"
               "How notebooks get pages: \"png\" as at first, \"svg\" with it, or \"html\", a picture with "
               "its description.");
}

} // namespace qv::python
