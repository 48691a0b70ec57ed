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

inline Variant number_variant(Kind kind, double value) {
    if (kind == Kind::Double) return value;
    if (kind == Kind::Int16) return static_cast<std::int16_t>(value);
    return static_cast<std::int32_t>(value);
}

/// The numeric form to evaluate a slot by, which becomes the current one, or none.
inline NumericForm* ready_form(Engine& engine, std::int32_t number) {
    engine.error.source = number;
    engine.current_slot = number;
    return engine.ready_form;
}
NumericForm* made_ready(Engine& engine, std::int32_t& number);

/// The value of a slot as `evaluate_generally` gives it, by the numeric form when there is one.
inline Variant evaluate(Engine& engine, std::int32_t& number) {
    bool const is_ready = number == engine.ready_slot && engine.error.code == ErrorNumber::None && number > 0;
    NumericForm* const form = is_ready ? ready_form(engine, number) : made_ready(engine, number);
    if (form && load_variables(*form)) {
        double const value = run(*form);
        if (value - value == 0) return number_variant(form->result_kind, value);
    }
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
