// The kinds of value that cross the public interface: how each is returned, taken, and read from a Variant.
#pragma once

#include "qvgraph/checked.h"
#include "qvgraph/variant.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace qv::control {

/// What a property or parameter takes when it is given by name.
enum class Accepts : std::uint8_t { Number, Text, Anything, Texts, Numbers };

/// The names of the kinds are used in properties.def and styles.def. Each kind says what a Get returns
/// (`value`), what a Let takes (`argument`) and what a style method's aggregate holds (`parameter`).
namespace kind {

template <Number T>
struct NumberKind {
    using value = T;
    using argument = Checked<T>;
    using parameter = Checked<T>;
    static constexpr Accepts accepts = Accepts::Number;
    static T from(Variant const& given) { return number_of<T>(given); }
};

using boolean = NumberKind<bool>;
using uint8 = NumberKind<std::uint8_t>;
using int16 = NumberKind<std::int16_t>;
using int32 = NumberKind<std::int32_t>;
using float32 = NumberKind<float>;
using float64 = NumberKind<double>;

struct color {
    using value = Color;
    using argument = ColorValue;
    using parameter = ColorValue;
    static constexpr Accepts accepts = Accepts::Number;
    static Color from(Variant const& given) { return ColorValue(number_of<double>(given)); }
};

struct text {
    using value = std::string;
    using argument = std::string_view;
    using parameter = std::string;
    static constexpr Accepts accepts = Accepts::Text;
    static std::string from(Variant const& given) { return text_of(given); }
};

/// Takes numbers too; what is stored and returned is text.
struct any {
    using value = std::string;
    using argument = Variant const&;
    static constexpr Accepts accepts = Accepts::Anything;
    static Variant from(Variant const& given) { return given; }
};

} // namespace kind
} // namespace qv::control
