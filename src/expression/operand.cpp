#include "expression/operand.h"

#include "base/text.h"
#include "expression/decimal.h"
#include "qvgraph/variables.h"

#include <array>
#include <charconv>
#include <cmath>

namespace qv::expression {
namespace {

Operand number_operand(Kind kind, double value) {
    Operand result;
    result.kind = kind;
    result.number = value;
    return result;
}

// Shortest digits of the 32-bit value: its double would show digits the value never had.
std::string single_text(double value) {
    std::array<char, 64> buffer;
    auto const end =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), static_cast<float>(value)).ptr;
    double shortest = value;
    std::from_chars(buffer.data(), end, shortest);
    return number_text(shortest);
}

} // namespace

Operand faulted() {
    return number_operand(Kind::Faulted, 0);
}

Operand double_operand(double value) {
    return number_operand(std::isfinite(value) ? Kind::Double : Kind::Faulted, value);
}

Operand int16_operand(int value) {
    return number_operand(Kind::Int16, value);
}

Operand int32_operand(std::int32_t value) {
    return number_operand(Kind::Int32, value);
}

Operand text_operand(std::string text) {
    Operand result;
    result.kind = Kind::Text;
    result.text = std::move(text);
    return result;
}

Operand variable_operand(qvVariable const* variable) {
    Operand result;
    result.kind = Kind::Variable;
    result.variable = variable;
    return result;
}

Operand operand_of(Variant const& value) {
    return std::visit(
        [](auto const& held) -> Operand {
            using Held = std::remove_cvref_t<decltype(held)>;
            if constexpr (std::is_same_v<Held, std::monostate>)
                return {};
            else if constexpr (std::is_same_v<Held, bool>)
                return int16_operand(held ? -1 : 0);
            else if constexpr (std::is_same_v<Held, std::int32_t>)
                return int32_operand(held);
            else if constexpr (std::is_integral_v<Held>)
                return int16_operand(held);
            else if constexpr (std::is_same_v<Held, float>)
                return number_operand(Kind::Single, held);
            else if constexpr (std::is_same_v<Held, double>)
                return number_operand(Kind::Double, held);
            else if constexpr (std::is_same_v<Held, std::string>)
                return text_operand(held);
            else
                return faulted();
        },
        static_cast<Variant::variant const&>(value));
}

Variant variant_of(Operand operand) {
    switch (operand.kind) {
    case Kind::Int16: return static_cast<std::int16_t>(operand.number);
    case Kind::Int32: return static_cast<std::int32_t>(operand.number);
    case Kind::Single: return static_cast<float>(operand.number);
    case Kind::Double: return operand.number;
    case Kind::Text: return std::move(operand.text);
    case Kind::Variable: return operand.variable->Value;
    case Kind::Empty:
    case Kind::Faulted: break;
    }
    return {};
}

Operand const& resolved(Operand const& operand, Operand& storage) {
    if (operand.kind != Kind::Variable) return operand;
    storage = operand_of(operand.variable->Value);
    return storage;
}

Number number_in(Operand const& operand) {
    if (is_number(operand.kind)) return {operand.kind, operand.number};
    if (operand.kind == Kind::Empty) return {};
    if (operand.kind == Kind::Variable) return number_in(operand_of(operand.variable->Value));
    if (operand.kind == Kind::Text)
        if (auto const value = numeric_text(operand.text)) return {Kind::Double, *value};
    return {Kind::Faulted, 0};
}

std::size_t text_bytes(Operand const& operand) {
    if (operand.kind == Kind::Text) return operand.text.size();
    if (operand.kind != Kind::Variable) return 0;
    auto const* const text = std::get_if<std::string>(&operand.variable->Value);
    return text ? text->size() : 0;
}

std::string_view text_view(Operand const& operand, std::string& storage) {
    if (operand.kind == Kind::Text) return operand.text;
    storage = text_in(operand);
    return storage;
}

std::string text_in(Operand const& operand) {
    if (operand.kind == Kind::Text) return operand.text;
    if (operand.kind == Kind::Variable) return text_in(operand_of(operand.variable->Value));
    if (operand.kind == Kind::Single) return single_text(operand.number);
    return is_number(operand.kind) ? number_text(operand.number) : std::string();
}

} // namespace qv::expression
