#include "numbers.h"

#include <cstring>
#include <limits>
#include <memory>

namespace qv::python {
namespace {

std::string type_name(py::handle value) {
    return Py_TYPE(value.ptr())->tp_name;
}

/// An attribute of a module; both stay for the life of the process.
py::object of_module(char const* module, char const* name) {
    return py::module_::import(module).attr(name);
}

char kind_of(py::handle array) {
    return py::cast<std::string>(array.attr("dtype").attr("kind"))[0];
}

/// Whether an object came with a name out of this package: what is not loaded has made none.
bool is_instance(py::handle value, char const* module, char const* name) {
    const py::dict loaded = py::module_::import("sys").attr("modules");
    return loaded.contains(module) && py::isinstance(value, py::object(loaded[module]).attr(name));
}

py::object as_array(py::handle value) {
    return of_module("numpy", "asarray")(value);
}

// Moments with a time zone come as objects, which numpy takes to be without one.
py::object without_zone(py::handle moment) {
    if (!py::hasattr(moment, "tzinfo") || moment.attr("tzinfo").is_none())
        return py::reinterpret_borrow<py::object>(moment);
    return moment.attr("astimezone")(of_module("datetime", "timezone").attr("utc"))
        .attr("replace")(py::arg("tzinfo") = py::none());
}

py::object first_of(py::object const& array) {
    return py::cast<py::ssize_t>(array.attr("size")) == 0 ? py::object(py::none())
                                                          : array.attr("flat").attr("__getitem__")(0);
}

py::object dates_of_objects(py::object const& array, Place const& place) {
    py::list plain;
    for (const py::handle moment : py::list(array.attr("ravel")())) {
        if (!is_moment(moment) && !moment.is_none()) raise_type_error(place, "mixes dates with other values");
        plain.append(moment.is_none() ? py::object(py::str("NaT")) : without_zone(moment));
    }
    return of_module("numpy", "array")(plain, py::arg("dtype") = "datetime64[us]")
        .attr("reshape")(array.attr("shape"));
}

/// Seconds since 1970 of an array of dates of any unit.
py::object seconds_of_dates(py::object dates) {
    const py::tuple unit = of_module("numpy", "datetime_data")(dates.attr("dtype"));
    std::string const name = py::cast<std::string>(unit[0]);
    double ticks_a_second = 1;
    for (auto const& [known, ticks] :
         {std::pair{"ms", 1e3}, {"us", 1e6}, {"ns", 1e9}, {"ps", 1e12}, {"fs", 1e15}})
        if (name == known) ticks_a_second = ticks;
    bool const is_fine = ticks_a_second > 1;
    if (!is_fine) dates = dates.attr("astype")("datetime64[s]");
    double const ticks = is_fine ? py::cast<double>(unit[1]) : 1;
    py::object seconds = dates.attr("astype")("int64").attr("astype")("float64") * py::float_(ticks);
    seconds = seconds / py::float_(ticks_a_second);
    return of_module("numpy", "where")(of_module("numpy", "isnat")(dates),
                                       std::numeric_limits<double>::quiet_NaN(), seconds);
}

/// Numbers in an array of objects, such as a column with missing values.
py::object numbers_of_objects(py::handle value, py::object const& array, Place const& place) {
    try {
        if (py::hasattr(value, "to_numpy"))
            return value.attr("to_numpy")(py::arg("dtype") = "float64",
                                          py::arg("na_value") = std::numeric_limits<double>::quiet_NaN());
        return array.attr("astype")("float64");
    } catch (py::error_already_set&) {
        raise_type_error(place, "holds " + type_name(first_of(array)) + ", which is no number");
    }
}

} // namespace

void raise_type_error(Place const& place, std::string const& what) {
    throw py::type_error(place.member + ": " + place.argument + " " + what);
}

void raise_value_error(Place const& place, std::string const& what) {
    throw py::value_error(place.member + ": " + place.argument + " " + what);
}

bool is_moment(py::handle value) {
    return is_instance(value, "numpy", "datetime64") || is_instance(value, "datetime", "date");
}

double seconds_of(py::handle moment, Place const& place) {
    const Numbers one(py::make_tuple(moment), place);
    return one.values()[0];
}

bool is_texts(py::handle value) {
    if (PyUnicode_Check(value.ptr()) || PyFloat_Check(value.ptr()) || PyLong_Check(value.ptr())) return false;
    if (PyList_Check(value.ptr()) || PyTuple_Check(value.ptr())) {
        const py::sequence sequence = py::reinterpret_borrow<py::sequence>(value);
        return !sequence.empty() && PyUnicode_Check(py::object(sequence[0]).ptr());
    }
    if (!py::hasattr(value, "__array__")) return false;
    const py::object array = as_array(value);
    char const kind = kind_of(array);
    return kind == 'U' || (kind == 'O' && PyUnicode_Check(first_of(array).ptr()));
}

bool is_column(py::handle value) {
    PyObject* const object = value.ptr();
    if (PyUnicode_Check(object) || PyBytes_Check(object) || PyFloat_Check(object) || PyLong_Check(object))
        return false;
    if (py::hasattr(value, "__array__"))
        return py::cast<int>(as_array(value).attr("ndim")) > 0 && !is_texts(value);
    return (PyObject_CheckBuffer(object) || PySequence_Check(object)) && !is_texts(value);
}

py::array_t<double> array_of(std::vector<double> values) {
    auto kept = std::make_unique<std::vector<double>>(std::move(values));
    auto const size = static_cast<py::ssize_t>(kept->size());
    double* const data = kept->data();
    const py::capsule owner(kept.release(),
                            [](void* column) { delete static_cast<std::vector<double>*>(column); });
    return py::array_t<double>(size, data, owner);
}

Numbers::Numbers(py::handle value, Place const& place, int dimensions) {
    if (!take_buffer(value)) take_array(value, place, dimensions);
}

Numbers::~Numbers() {
    if (buffer_) PyBuffer_Release(&*buffer_);
}

// A row of doubles as they are in memory; where Python has no such thing to give, nothing is taken.
bool Numbers::take_buffer(py::handle value) {
    if (!PyObject_CheckBuffer(value.ptr()) || is_instance(value, "numpy.ma", "MaskedArray")) return false;
    Py_buffer buffer;
    if (PyObject_GetBuffer(value.ptr(), &buffer, PyBUF_ND | PyBUF_FORMAT | PyBUF_C_CONTIGUOUS) != 0) {
        PyErr_Clear();
        return false;
    }
    bool const is_aligned = reinterpret_cast<std::uintptr_t>(buffer.buf) % alignof(double) == 0;
    if (buffer.ndim != 1 || !buffer.format || std::strcmp(buffer.format, "d") != 0 || !is_aligned) {
        PyBuffer_Release(&buffer);
        return false;
    }
    buffer_ = buffer;
    shape_ = {static_cast<std::size_t>(buffer.shape[0])};
    values_ = {static_cast<double const*>(buffer.buf), shape_[0]};
    return true;
}

void Numbers::take_array(py::handle value, Place const& place, int dimensions) {
    if (!is_column(value)) {
        bool const is_list_of_texts = !PyUnicode_Check(value.ptr()) && is_texts(value);
        raise_type_error(place, is_list_of_texts ? "must be a column of numbers, not of texts"
                                                 : "must be a column of numbers, not " + type_name(value));
    }
    py::object array;
    try {
        array = as_array(value);
    } catch (py::error_already_set& failure) {
        raise_value_error(place, std::string("is no column: ") + failure.what());
    }
    int const given = py::cast<int>(array.attr("ndim"));
    if (given > dimensions || given == 0)
        raise_value_error(place, "has " + std::to_string(given) + " dimensions, but may have "
                                     + (dimensions == 1 ? "one" : "up to " + std::to_string(dimensions)));
    if (kind_of(array) == 'O' && is_moment(first_of(array))) array = dates_of_objects(array, place);
    char const kind = kind_of(array);
    are_dates_ = kind == 'M';
    if (are_dates_)
        array = seconds_of_dates(array);
    else if (kind == 'O')
        array = numbers_of_objects(value, array, place);
    else if (std::strchr("fiub", kind) == nullptr)
        raise_type_error(place, "holds values of type " + py::cast<std::string>(py::str(array.attr("dtype")))
                                    + ", which are no real numbers and no dates");
    if (is_instance(value, "numpy.ma", "MaskedArray"))
        array = of_module("numpy", "where")(of_module("numpy.ma", "getmaskarray")(value),
                                            std::numeric_limits<double>::quiet_NaN(), array);
    auto const doubles = py::array_t<double, py::array::c_style | py::array::forcecast>::ensure(array);
    if (!doubles) throw py::error_already_set();
    for (py::ssize_t i = 0; i < doubles.ndim(); ++i)
        shape_.push_back(static_cast<std::size_t>(doubles.shape(i)));
    array_ = doubles;
    values_ = {doubles.data(), static_cast<std::size_t>(doubles.size())};
}

} // namespace qv::python
