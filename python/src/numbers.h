// Numbers: a column of doubles out of whatever Python has for one.
#pragma once

#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace qv::python {

namespace py = pybind11;

/// Which argument of which member a value is, for errors.
struct Place {
    std::string const& member;
    char const* argument;
};

/// TypeError or ValueError: "DataSet.add: y has 3 values, but x has 4".
[[noreturn]] void raise_type_error(Place const& place, std::string const& what);
[[noreturn]] void raise_value_error(Place const& place, std::string const& what);

/// Doubles in a row. Of a contiguous buffer of doubles these are its own; anything else with numbers is
/// copied: strided arrays, other types, sequences, columns of data frames. Dates become seconds since 1970 in
/// UTC, masked and missing values not-a-number.
class Numbers {
public:
    /// Dimensions: how many the array may have; its values are taken row by row.
    Numbers(py::handle value, Place const& place, int dimensions = 1);
    ~Numbers();
    Numbers(Numbers const&) = delete;
    Numbers& operator=(Numbers const&) = delete;

    std::span<double const> values() const { return values_; }
    bool are_dates() const { return are_dates_; }
    std::vector<std::size_t> const& shape() const { return shape_; }

private:
    bool take_buffer(py::handle value);
    void take_array(py::handle value, Place const& place, int dimensions);

    std::optional<Py_buffer> buffer_;
    py::object array_;
    std::span<double const> values_;
    std::vector<std::size_t> shape_;
    bool are_dates_ = false;
};

/// Whether a value is a date or a moment.
bool is_moment(py::handle value);
/// Its seconds since 1970; without a time zone it is taken as UTC.
double seconds_of(py::handle moment, Place const& place);
/// Whether a value is a column of texts.
bool is_texts(py::handle value);
/// Whether it may be a column of numbers: a buffer, an array, a sequence, but no text.
bool is_column(py::handle value);

/// An array that owns these values.
py::array_t<double> array_of(std::vector<double> values);

} // namespace qv::python
