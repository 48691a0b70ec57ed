// Evaluating compiled programs on a value stack.
#pragma once

#include "expression/engine.h"

#include <cstdint>
#include <span>
#include <string>

namespace qv::expression {

/// The value of a slot without the numeric form. A number below 0 stands for the highest slot and becomes
/// its number. Empty while an error is pending.
Variant evaluate_generally(Engine& engine, std::int32_t& number);

/// The value of a program by its numeric form, or none.
inline std::optional<Variant> numeric_value(NumericForm* form) {
    if (!form || form->result_kind == Kind::Empty || !load_variables(*form)) return std::nullopt;
    double const value = run(*form);
    if (value - value != 0) return std::nullopt;
    if (form->result_kind == Kind::Double) return value;
    if (form->result_kind == Kind::Int16) return static_cast<std::int16_t>(value);
    return static_cast<std::int32_t>(value);
}

/// The value of a slot as `evaluate_generally` gives it, by the numeric form when there is one.
inline Variant evaluate(Engine& engine, std::int32_t& number) {
    if (number >= 1 && engine.error.code == ErrorNumber::None)
        if (auto value = numeric_value(select_slot(engine, number).numeric.get())) return *std::move(value);
    return evaluate_generally(engine, number);
}

/// Evaluates a slot for each value of `x`, put into `variable`, into `y` as doubles. Each sample starts from
/// a cleared error; one with an error gives not-a-number, and the first of these errors is kept. Spans of
/// different length are error 11; an error pending before gives not-a-number everywhere.
void evaluate_over(Engine& engine, qvVariable& variable, std::span<double const> x, std::span<double> y,
                   std::int32_t& number);

/// The postfix program of the current slot as text, each step after a blank. An array step is fault 9, which
/// reaches the caller.
std::string RPNExpression(Engine& engine);

} // namespace qv::expression
