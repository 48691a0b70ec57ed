#include "values.h"

#include <cctype>
#include <charconv>

namespace qv::python {
namespace {

bool is_text(py::handle value) {
    return PyUnicode_Check(value.ptr()) || PyBytes_Check(value.ptr());
}

bool has_number(py::handle value) {
    PyNumberMethods const* const as_number = Py_TYPE(value.ptr())->tp_as_number;
    return as_number && (as_number->nb_float || as_number->nb_index) && !is_text(value);
}

[[noreturn]] void raise_no_number(py::handle value, Place const& place) {
    raise_type_error(place, std::string("must be a number, not ") + Py_TYPE(value.ptr())->tp_name);
}

} // namespace

double number_of_python(py::handle value, Place const& place) {
    if (PyFloat_Check(value.ptr())) return PyFloat_AS_DOUBLE(value.ptr());
    if (is_moment(value)) return seconds_of(value, place);
    if (!has_number(value)) raise_no_number(value, place);
    const py::object number = py::reinterpret_steal<py::object>(PyNumber_Float(value.ptr()));
    if (number) return PyFloat_AS_DOUBLE(number.ptr());
    bool const is_too_large = PyErr_ExceptionMatches(PyExc_OverflowError) != 0;
    PyErr_Clear();
    if (is_too_large) raise_fault(FaultNumber::Overflow);
    raise_no_number(value, place);
}

std::optional<long long> whole_of_python(py::handle value) {
    if (!PyLong_Check(value.ptr())) return std::nullopt;
    int overflow = 0;
    long long const whole = PyLong_AsLongLongAndOverflow(value.ptr(), &overflow);
    if (overflow != 0) raise_fault(FaultNumber::Overflow);
    return whole;
}

std::string_view text_of_python(py::handle value, Place const& place) {
    if (!PyUnicode_Check(value.ptr()))
        raise_type_error(place, std::string("must be a text, not ") + Py_TYPE(value.ptr())->tp_name);
    Py_ssize_t size = 0;
    char const* const text = PyUnicode_AsUTF8AndSize(value.ptr(), &size);
    if (!text) throw py::error_already_set();
    return {text, static_cast<std::size_t>(size)};
}

TextList texts_of_python(py::handle value, Place const& place) {
    if (is_text(value)) raise_type_error(place, "must be a list of texts, not one text");
    if (!py::isinstance<py::iterable>(value)) raise_type_error(place, "must be a list of texts");
    TextList texts;
    for (const py::handle text : py::iter(value)) texts.emplace_back(text_of_python(text, place));
    return texts;
}

Point point_of_python(py::handle value, Place const& place) {
    if (is_text(value) || !PySequence_Check(value.ptr()) || py::len(value) != 2)
        raise_type_error(place, "must be a pair of numbers");
    const py::sequence pair = py::reinterpret_borrow<py::sequence>(value);
    return {number_of_python(py::object(pair[0]), place), number_of_python(py::object(pair[1]), place)};
}

Variant variant_of_python(py::handle value, Place const& place) {
    if (value.is_none()) return {};
    if (PyBool_Check(value.ptr())) return value.cast<bool>();
    if (PyUnicode_Check(value.ptr())) return text_of_python(value, place);
    return number_of_python(value, place);
}

ColorValue color_of_python(py::handle value, Place const& place) {
    if (!PyUnicode_Check(value.ptr())) {
        if (auto const whole = whole_of_python(value)) return *whole;
        return number_of_python(value, place);
    }
    std::string_view const text = text_of_python(value, place);
    unsigned value_of = 0;
    auto const end = text.data() + text.size();
    bool const is_color =
        text.size() == 7 && text[0] == '#' && std::from_chars(text.data() + 1, end, value_of, 16).ptr == end;
    if (!is_color) raise_value_error(place, "is no colour: a text is written as \"#RRGGBB\"");
    return rgb(static_cast<int>(value_of >> 16), static_cast<int>(value_of >> 8 & 0xFF),
               static_cast<int>(value_of & 0xFF));
}

py::object returned(Variant const& value) {
    return std::visit(
        [](auto const& held) -> py::object {
            using T = std::remove_cvref_t<decltype(held)>;
            if constexpr (std::is_same_v<T, std::monostate>)
                return py::none();
            else if constexpr (std::is_same_v<T, NumberList>)
                return array_of(held);
            else
                return returned(held);
        },
        static_cast<Variant::variant const&>(value));
}

py::object returned(PointValues const& values) {
    const py::tuple extra = py::make_tuple(array_of(values.extra[0]), array_of(values.extra[1]),
                                           array_of(values.extra[2]), array_of(values.extra[3]));
    return py::module_::import("qvgraph._points")
        .attr("Points")(array_of(values.x), array_of(values.y), array_of(values.error), extra);
}

} // namespace qv::python
