// Evaluating compiled programs on a value stack.
#pragma once

#include "expression/engine.h"

#include <cstdint>
#include <span>
#include <string>

namespace qv::expression {

/// The value of a slot; a number below 0 stands for the highest slot and becomes its number. Empty while an
/// error is pending.
Variant evaluate(Engine& engine, std::int32_t& number);
/// The same without the numeric form.
Variant evaluate_generally(Engine& engine, std::int32_t& number);

/// Evaluates a slot for each value of `x`, put into `variable`, into `y` as doubles. Each sample starts from
/// a cleared error; one with an error gives not-a-number, and the first of these errors is kept. Spans of
/// different length are error 11; an error pending before gives not-a-number everywhere.
void evaluate_over(Engine& engine, qvVariable& variable, std::span<double const> x, std::span<double> y,
                   std::int32_t& number);

/// The postfix program of the current slot as text, each step after a blank. An array step is fault 9, which
/// reaches the caller.
std::string RPNExpression(Engine& engine);

} // namespace qv::expression
