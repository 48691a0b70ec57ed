#include "qvgraph/variant.h"

#include "base/text.h"

#include <array>
#include <charconv>
#include <cmath>

namespace qv {

namespace {

// The double with the fewest digits that is this float: 0.1, not 0.100000001490116.
double shortest_double(float value) {
    if (!std::isfinite(value)) return value;
    std::array<char, 32> text;
    char const* const end = std::to_chars(text.data(), text.data() + text.size(), value).ptr;
    double result = 0;
    std::from_chars(text.data(), end, result);
    return result;
}

} // namespace

std::string text_of(Variant const& value) {
    return std::visit(
        [](auto const& held) -> std::string {
            using Held = std::remove_cvref_t<decltype(held)>;
            if constexpr (std::is_same_v<Held, std::monostate>)
                return {};
            else if constexpr (std::is_same_v<Held, bool>)
                return held ? "True" : "False";
            else if constexpr (std::is_same_v<Held, float>)
                return number_text(shortest_double(held));
            else if constexpr (Number<Held>)
                return number_text(static_cast<double>(held));
            else if constexpr (std::is_same_v<Held, std::string>)
                return held;
            else
                raise_fault(FaultNumber::TypeMismatch);
        },
        static_cast<Variant::variant const&>(value));
}

} // namespace qv
