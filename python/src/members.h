// Members: the tables that scripts/make_python.py writes, and how properties and methods of Python follow
// from them.
#pragma once

#include "values.h"

#include <array>
#include <deque>
#include <initializer_list>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace qv::python {

/// What kind of value a parameter takes, by which overloads are told apart.
enum class Kind : std::uint8_t { Number, Text, Texts, Numbers, Anything, DataSet, Place };

struct Parameter {
    char const* name;
    bool is_required;
    Kind kind;
};

class Arguments;

template <class Owner>
struct Overload {
    std::vector<Parameter> parameters;
    bool has_options;
    py::object (*call)(Owner& owner, Arguments& given);
};

template <class Owner>
struct MethodRow {
    char const* name;
    char const* doc;
    std::vector<Overload<Owner>> overloads;
};

template <class Owner>
struct PropertyRow {
    char const* name;
    char const* doc;
    py::object (*get)(Core const& core, Owner& owner);
    void (*set)(Owner& owner, py::handle given, Place const& place); // nullptr: read only
};

template <class Options>
struct OptionRow {
    char const* name;
    void (*set)(Options& options, py::handle given, Place const& place);
};

/// What a method was called with. None stands for an argument left out.
class Arguments {
public:
    Arguments(std::string const& member, std::shared_ptr<Core> const& core, py::args const& positional,
              py::kwargs const& named)
        : member_(member), core_(core), positional_(positional), named_(named) {}

    /// Gives each parameter its argument; what is wrong, or nothing.
    std::string bind(std::vector<Parameter> const& parameters, bool has_options);
    /// How many of the arguments are of the kind that their parameter takes.
    std::size_t fitting() const;

    bool has(std::size_t i) const { return given_[i] != nullptr; }
    template <class T>
    auto take(std::size_t i);
    template <class T, class Otherwise>
    auto take(std::size_t i, Otherwise const& otherwise) -> std::remove_cvref_t<decltype(take<T>(i))> {
        if (!has(i)) return otherwise;
        return take<T>(i);
    }
    template <class Options, std::size_t row_count>
    Options options(OptionRow<Options> const (&rows)[row_count]);

    /// A matrix, or its cells row by row.
    std::span<double const> matrix(std::size_t i);
    /// How many columns and rows a matrix has that was taken before, unless it is said.
    Checked<std::int32_t> columns_of(std::size_t matrix, std::size_t i) { return cells_along(1, matrix, i); }
    Checked<std::int32_t> rows_of(std::size_t matrix, std::size_t i) { return cells_along(0, matrix, i); }

    /// ValueError unless all columns that were given are as long as the first.
    void need_one_length(std::initializer_list<std::size_t> columns) const;
    bool is_date(std::size_t i) const { return are_dates_[i]; }
    /// TypeError for dates on an axis that is not one of time.
    void need_time(std::size_t i, AxisHandle const& axis) const;

    py::object made(AxisHandle const& handle) { return held(handle); }
    py::object made(DataHandle const& handle) { return held(handle); }
    py::object made(GraphHandle const& handle) { return held(handle); }
    py::object made(LegendHandle const& handle) { return held(handle); }
    template <class Handle>
    requires std::is_base_of_v<qv::Handle, Handle> py::object made(std::vector<Handle> const& handles) {
        py::list list;
        for (Handle const& handle : handles) list.append(held(handle));
        return list;
    }
    template <class T>
    py::object made(T const& value) {
        return returned(value);
    }

private:
    static constexpr std::size_t most_parameters = 24;

    Place place(std::size_t i) const { return {member_, (*parameters_)[i].name}; }
    std::span<double const> column(std::size_t i, int dimensions);
    Checked<std::int32_t> cells_along(std::size_t axis, std::size_t matrix, std::size_t i);
    template <class Handle>
    py::object held(Handle const& handle) {
        if (handle.discarded()) return py::none();
        return py::cast(Held<Handle>{core_, handle});
    }

    std::string const& member_;
    std::shared_ptr<Core> const& core_;
    py::args const& positional_;
    py::kwargs const& named_;
    std::vector<Parameter> const* parameters_ = nullptr;
    std::array<PyObject*, most_parameters> given_{};
    std::array<bool, most_parameters> are_dates_{};
    std::array<std::size_t, most_parameters> lengths_{};
    std::vector<std::pair<std::string, PyObject*>> options_;
    std::vector<std::size_t> shape_;
    std::deque<Numbers> columns_;
};

template <class T>
auto Arguments::take(std::size_t i) {
    using Value = std::remove_cvref_t<T>;
    if constexpr (std::is_same_v<Value, std::span<double const>>) {
        return column(i, 1);
    } else if constexpr (std::is_same_v<Value, TextList>) {
        TextList texts = texts_of_python(given_[i], place(i));
        lengths_[i] = texts.size();
        return texts;
    } else {
        if constexpr (std::is_same_v<Value, double>)
            are_dates_[i] = !PyFloat_Check(given_[i]) && !PyLong_Check(given_[i]) && is_moment(given_[i]);
        return read<Value>(given_[i], place(i));
    }
}

template <class Options, std::size_t row_count>
Options Arguments::options(OptionRow<Options> const (&rows)[row_count]) {
    Options all;
    for (auto const& [name, value] : options_) {
        auto const row = std::lower_bound(std::begin(rows), std::end(rows), name,
                                          [](auto const& a, std::string const& b) { return a.name < b; });
        if (row == std::end(rows) || row->name != name)
            throw py::type_error(member_ + ": there is no option named " + name);
        if (value != Py_None) row->set(all, value, {member_, row->name});
    }
    return all;
}

/// The arguments bound to the overload that they fit best; TypeError where they fit none.
template <class Owner>
Overload<Owner> const& chosen(std::vector<Overload<Owner>> const& overloads, Arguments& given,
                              std::string const& member) {
    Overload<Owner> const* best = nullptr;
    std::size_t most = 0;
    std::string wrong;
    for (Overload<Owner> const& overload : overloads) {
        std::string const said = given.bind(overload.parameters, overload.has_options);
        if (wrong.empty()) wrong = said;
        if (!said.empty()) continue;
        std::size_t const fitting = overloads.size() == 1 ? 1 : given.fitting() + 1;
        if (fitting > most) best = &overload, most = fitting;
    }
    if (!best) throw py::type_error(member + ": " + wrong);
    given.bind(best->parameters, best->has_options);
    return *best;
}

/// Gives a class its properties and methods. The rows live as long as the process.
template <class Self, class Owner, class... Extra>
void add_members(py::class_<Self, Extra...>& type, std::string const& type_name,
                 std::span<PropertyRow<Owner> const> properties, std::span<MethodRow<Owner> const> methods) {
    for (PropertyRow<Owner> const& row : properties) {
        std::string const member = type_name + "." + row.name;
        auto const get = [&row, member](Self& self) {
            return with_page(*self.core, member, [&] { return row.get(*self.core, owner_of(self)); });
        };
        auto const set = [&row, member](Self& self, py::handle value) {
            with_page(*self.core, member, [&] {
                row.set(owner_of(self), value, {member, row.name});
                return true;
            });
        };
        if (row.set)
            type.def_property(row.name, get, set, row.doc);
        else
            type.def_property_readonly(row.name, get, row.doc);
    }
    for (MethodRow<Owner> const& row : methods) {
        std::string const member = type_name + "." + row.name;
        type.def(
            row.name,
            [&row, member](Self& self, py::args const& positional, py::kwargs const& named) {
                return with_page(*self.core, member, [&] {
                    Arguments given(member, self.core, positional, named);
                    return chosen(row.overloads, given, member).call(owner_of(self), given);
                });
            },
            row.doc);
    }
}

/// The data set that members of the page mean by this number.
DataHandle data_set_of(qvGraph& page, std::int16_t number);

// One for each class, each in a source of its own: there are many members.
void add_page_properties(py::class_<Page>& type);
void add_page_methods(py::class_<Page>& type);
void add_page_outputs(py::module_& module, py::class_<Page>& type);
void add_graph(py::module_& module);
void add_axis(py::module_& module);
void add_data_set(py::module_& module);
void add_expression(py::module_& module);

/// What all handles have.
template <class Handle>
py::class_<Held<Handle>> handle_class(py::module_& module, char const* name, char const* doc) {
    py::class_<Held<Handle>> type(module, name, doc);
    using Self = Held<Handle>;
    type.def(
        "discarded", [](Self const& self) { return self.handle.discarded(); },
        "discarded(self)\n--\n\nWhether what it led to is not there any more.");
    type.def("__bool__", [](Self const& self) { return !self.handle.discarded(); });
    type.def("__eq__", [](Self const& self, py::object const& other) {
        return py::isinstance<Self>(other) && self.handle == other.cast<Self const&>().handle;
    });
    type.attr("__hash__") = py::none(); // what they lead to may go
    return type;
}

} // namespace qv::python
