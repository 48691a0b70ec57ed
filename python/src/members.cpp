#include "members.h"

#include <algorithm>

namespace qv::python {
namespace {

bool is_number(py::handle value) {
    if (PyFloat_Check(value.ptr()) || PyLong_Check(value.ptr()) || is_moment(value)) return true;
    return PyNumber_Check(value.ptr()) && !is_column(value) && !PyUnicode_Check(value.ptr());
}

bool is_of(Kind kind, py::handle value) {
    switch (kind) {
    case Kind::Number: return is_number(value);
    case Kind::Text: return PyUnicode_Check(value.ptr());
    case Kind::Texts: return is_texts(value);
    case Kind::Numbers: return is_column(value);
    case Kind::DataSet: return py::isinstance<Held<DataHandle>>(value);
    case Kind::Place: return PySequence_Check(value.ptr());
    case Kind::Anything: return true;
    }
    return false;
}

} // namespace

std::string Arguments::bind(std::vector<Parameter> const& parameters, bool has_options) {
    parameters_ = &parameters;
    given_.fill(nullptr);
    options_.clear();
    if (positional_.size() > parameters.size())
        return "takes " + std::to_string(parameters.size()) + " arguments in order, but was given "
               + std::to_string(positional_.size());
    for (std::size_t i = 0; i < positional_.size(); ++i)
        given_[i] = PyTuple_GET_ITEM(positional_.ptr(), static_cast<Py_ssize_t>(i));
    for (auto const& [key, value] : named_) {
        std::string const name = py::cast<std::string>(key);
        auto const found =
            std::ranges::find(parameters, name, [](Parameter const& p) { return std::string_view(p.name); });
        if (found == parameters.end() && !has_options) return "there is no parameter named " + name;
        if (found == parameters.end()) {
            options_.emplace_back(name, value.ptr());
            continue;
        }
        auto& place = given_[static_cast<std::size_t>(found - parameters.begin())];
        if (place) return name + " was given twice";
        place = value.ptr();
    }
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        if (given_[i] == Py_None) given_[i] = nullptr;
        if (!given_[i] && parameters[i].is_required) return std::string(parameters[i].name) + " is missing";
    }
    return "";
}

std::size_t Arguments::fitting() const {
    std::size_t fitting = 0;
    for (std::size_t i = 0; i < parameters_->size(); ++i)
        if (given_[i] && is_of((*parameters_)[i].kind, given_[i])) ++fitting;
    return fitting;
}

std::span<double const> Arguments::column(std::size_t i, int dimensions) {
    Numbers const& numbers = columns_.emplace_back(py::handle(given_[i]), place(i), dimensions);
    are_dates_[i] = numbers.are_dates();
    lengths_[i] = numbers.values().size();
    return numbers.values();
}

std::span<double const> Arguments::matrix(std::size_t i) {
    auto const values = column(i, 2);
    shape_ = columns_.back().shape();
    return values;
}

Checked<std::int32_t> Arguments::cells_along(std::size_t axis, std::size_t matrix, std::size_t i) {
    if (has(i)) return take<Checked<std::int32_t>>(i);
    if (shape_.size() == 2) return shape_[axis];
    throw py::type_error(member_ + ": " + (*parameters_)[i].name + " is missing, and "
                         + (*parameters_)[matrix].name + " has not two dimensions");
}

void Arguments::need_one_length(std::initializer_list<std::size_t> columns) const {
    std::size_t const first = *columns.begin();
    for (std::size_t const i : columns) {
        if (!has(i) || lengths_[i] == lengths_[first]) continue;
        raise_value_error(place(i), "has " + std::to_string(lengths_[i]) + " values, but "
                                        + (*parameters_)[first].name + " has "
                                        + std::to_string(lengths_[first]));
    }
}

void Arguments::need_time(std::size_t i, AxisHandle const& axis) const {
    if (!axis.time())
        raise_type_error(
            place(i), "holds dates, but the axis is not one of time: set time=True (AxisTime) there first");
}

DataHandle data_set_of(qvGraph& page, std::int16_t number) {
    auto const graphs = page.graphs();
    auto const sets = graphs.at(static_cast<std::size_t>(page.GetSelectedGraph())).data_sets();
    return sets.at(number == 0 ? sets.size() - 1 : static_cast<std::size_t>(number - 1));
}

} // namespace qv::python
