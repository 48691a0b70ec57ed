// Operands: the values that programs push and operations compute.
#pragma once

#include "qvgraph/variant.h"

#include <string>
#include <string_view>

namespace qv {
struct qvVariable;
}

namespace qv::expression {

/// Number kinds stand in the order of their width. `Faulted` marks an operation that could not be done.
enum class Kind : std::uint8_t { Empty, Int16, Int32, Single, Double, Text, Variable, Faulted };

constexpr bool is_number(Kind kind) {
    return kind >= Kind::Int16 && kind <= Kind::Double;
}

/// Every number kind is exact in a double, so `number` holds the value whatever the kind.
struct Operand {
    Kind kind = Kind::Empty;
    double number = 0;
    qvVariable const* variable = nullptr;
    std::string text;
};

Operand faulted();
/// A double; faulted when it is not finite.
Operand double_operand(double value);
Operand int16_operand(int value);
Operand int32_operand(std::int32_t value);
Operand text_operand(std::string text);
Operand variable_operand(qvVariable const* variable);

/// The value a variant holds: booleans are -1 and 0, bytes 16-bit; a list is faulted.
Operand operand_of(Variant const& value);
/// The value as a variant; a variable reference gives the variable's present value.
Variant variant_of(Operand operand);
/// The operand itself, or for a variable reference its present value, which is put into `storage`.
Operand const& resolved(Operand const& operand, Operand& storage);

/// A number as it enters arithmetic: empty is a 16-bit 0, a text that reads as a number is a double, any
/// other text is faulted.
struct Number {
    Kind kind = Kind::Int16;
    double value = 0;
    bool faulted() const { return kind == Kind::Faulted; }
};
Number number_in(Operand const& operand);

/// Bytes of the text that the operand holds or refers to, 0 for one that is no text.
std::size_t text_bytes(Operand const& operand);
/// The general text form of an operand, its own text or one that is put into `storage`.
std::string_view text_view(Operand const& operand, std::string& storage);
/// The general text form: "" for empty, seven digits for a single.
std::string text_in(Operand const& operand);

} // namespace qv::expression
