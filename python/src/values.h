// Values: what members take and return, from Python and back.
#pragma once

#include "core.h"
#include "numbers.h"
#include "qvgraph/Outline.h"
#include "qvgraph/handles.h"
#include "qvgraph/variant.h"

#include <concepts>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace qv::python {

/// A number of any kind, or a moment as seconds since 1970. TypeError for anything else.
double number_of_python(py::handle value, Place const& place);
/// A whole number as it is; nothing for what is none. Fault 6 beyond 64 bits.
std::optional<long long> whole_of_python(py::handle value);
std::string_view text_of_python(py::handle value, Place const& place);
TextList texts_of_python(py::handle value, Place const& place);
Point point_of_python(py::handle value, Place const& place);
Variant variant_of_python(py::handle value, Place const& place);
/// 0xBBGGRR, or a text "#RRGGBB".
ColorValue color_of_python(py::handle value, Place const& place);

template <class T>
constexpr bool is_checked = false;
template <class T>
constexpr bool is_checked<Checked<T>> = true;

template <class T>
struct CheckedOf {
    using type = Checked<T>;
};
template <class T>
struct CheckedOf<Checked<T>> {
    using type = Checked<T>;
};

/// An argument as the control takes it. Texts stay where Python has them.
template <class T>
T read(py::handle value, Place const& place) {
    if constexpr (is_checked<T> || std::integral<T>) {
        using Number = typename CheckedOf<T>::type;
        if (auto const whole = whole_of_python(value)) return Number(*whole);
        return Number(number_of_python(value, place));
    } else if constexpr (std::is_same_v<T, double>) {
        return number_of_python(value, place);
    } else if constexpr (std::is_same_v<T, ColorValue>) {
        return color_of_python(value, place);
    } else if constexpr (std::is_same_v<T, std::string> || std::is_same_v<T, std::string_view>) {
        return T(text_of_python(value, place));
    } else if constexpr (std::is_same_v<T, Point>) {
        return point_of_python(value, place);
    } else if constexpr (std::is_same_v<T, Variant>) {
        return variant_of_python(value, place);
    } else {
        static_assert(std::is_same_v<T, AxisHandle> || std::is_same_v<T, DataHandle>);
        if (!py::isinstance<Held<T>>(value))
            raise_type_error(place, std::string("must be ")
                                        + (std::is_same_v<T, AxisHandle> ? "an Axis" : "a DataSet") + ", not "
                                        + Py_TYPE(value.ptr())->tp_name);
        return value.cast<Held<T> const&>().handle;
    }
}

py::object returned(Variant const& value);
py::object returned(PointValues const& values);

template <class T>
requires std::is_arithmetic_v<T> || std::is_same_v<T, std::string> || std::is_same_v<T, Box> py::object
returned(T const& value) {
    return py::cast(value);
}
inline py::object returned(TextList const& texts) {
    py::list list;
    for (std::string const& text : texts) list.append(text);
    return list;
}
inline py::object returned(std::optional<GraphOutline> const& outline) {
    return outline ? py::cast(*outline) : py::object(py::none());
}

} // namespace qv::python
