#include "base/variant.h"

#include "base/text.h"

namespace qv {

std::string text_of(Variant const& value) {
    return std::visit(
        [](auto const& held) -> std::string {
            using Held = std::remove_cvref_t<decltype(held)>;
            if constexpr (std::is_same_v<Held, std::monostate>) return {};
            else if constexpr (std::is_same_v<Held, bool>) return held ? "True" : "False";
            else if constexpr (Number<Held>) return number_text(static_cast<double>(held));
            else if constexpr (std::is_same_v<Held, std::string>) return held;
            else raise_fault(FaultNumber::TypeMismatch);
        },
        static_cast<Variant::variant const&>(value));
}

} // namespace qv
