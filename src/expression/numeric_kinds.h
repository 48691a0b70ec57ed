// What is known of a value before it is computed: its kind and, for integers, the bounds it stays within.
// Integers that might outgrow their width have no known kind.
#pragma once

#include "expression/numeric_operations.h"

#include <optional>
#include <span>

namespace qv::expression {

struct ValueBounds {
    std::optional<Kind> kind;
    double low = 0, high = 0; ///< of integers only

    bool is_integer() const { return kind == Kind::Int16 || kind == Kind::Int32; }
    bool is_double() const { return kind == Kind::Double; }
};

ValueBounds bounds_of_double();
/// A constant of this kind.
ValueBounds bounds_of(Kind kind, double value);
/// The bounds of a result by the rule of its operation.
ValueBounds result_bounds(KindRule rule, std::span<ValueBounds const> operands);

} // namespace qv::expression
