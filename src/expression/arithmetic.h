// Arithmetic and comparison of operands of any kind. An operation that is not defined gives a faulted
// operand; none computes infinity or not-a-number.
#pragma once

#include "expression/operand.h"

#include <compare>

namespace qv::expression {

/// Numbers add (an integer sum that overflows its width widens), texts concatenate, a text that reads as a
/// number adds to a number; empty is 0, or "" next to a text.
Operand sum(Operand const& a, Operand const& b);
Operand difference(Operand const& a, Operand const& b);
Operand product(Operand const& a, Operand const& b);
Operand negated(Operand const& b);

/// The text forms joined; a result above 16 Mi characters throws fault 7.
Operand concatenated(Operand const& a, Operand const& b);

/// These keep the kind of an integer; the magnitude of the smallest integer of its kind is faulted.
Operand absolute_value(Operand const& b);
Operand largest_whole(Operand const& b);
Operand truncated(Operand const& b);
/// -1, 0 or 1 as a 16-bit integer.
Operand sign_of(Operand const& b);

/// Numbers compare as numbers, texts without regard to letter case; a number is less than any text; empty
/// is 0 or "". Unordered when a number is not one. Neither operand may be a variable reference.
std::partial_ordering compare(Operand const& a, Operand const& b);
bool is_true(Operand const& value);

} // namespace qv::expression
