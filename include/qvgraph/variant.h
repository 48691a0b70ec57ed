// Variant: a value of one of the kinds that members take and return when they are called by name.
#pragma once

#include "qvgraph/checked.h"

#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace qv {

using TextList = std::vector<std::string>;
using NumberList = std::vector<double>;

/// Empty, a boolean, a number, a text or a list.
struct Variant : std::variant<std::monostate, bool, std::uint8_t, std::int16_t, std::int32_t, float, double,
                              std::string, TextList, NumberList> {
    using variant::variant;
    using variant::operator=;
    Variant(char const* text) : variant(std::string(text)) {}      ///< a copy of a text
    Variant(std::string_view text) : variant(std::string(text)) {} ///< a copy of a text
    /// Becomes a copy of a text.
    Variant& operator=(char const* text) {
        emplace<std::string>(text);
        return *this;
    }

    bool is_empty() const { return index() == 0; } ///< whether it holds nothing
    bool operator==(Variant const&) const = default;
};

/// The value as a number of type `T`: numbers and booleans (True is -1) convert with checks (fault 6);
/// empty is 0; text and lists are fault 13.
template <Number T>
T number_of(Variant const& value) {
    return std::visit(
        [](auto const& held) -> T {
            using Held = std::remove_cvref_t<decltype(held)>;
            if constexpr (std::is_same_v<Held, std::monostate>)
                return T{};
            else if constexpr (std::is_same_v<Held, bool>)
                return checked<T>(held ? -1 : 0);
            else if constexpr (Number<Held>)
                return checked<T>(held);
            else
                raise_fault(FaultNumber::TypeMismatch);
        },
        static_cast<Variant::variant const&>(value));
}

/// The value as text: numbers in their general text form, booleans as "True" and "False", empty as "";
/// a list is fault 13.
QV_EXPORT std::string text_of(Variant const& value);

} // namespace qv
