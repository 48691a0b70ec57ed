#include "expression/numeric_kinds.h"

#include <algorithm>
#include <limits>

namespace qv::expression {
namespace {

struct Range {
    double low = 0, high = 0;
    bool holds(Range inner) const { return low <= inner.low && inner.high <= high; }
};

constexpr Range range_16{std::numeric_limits<std::int16_t>::min(), std::numeric_limits<std::int16_t>::max()};
constexpr Range range_32{std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()};

ValueBounds integer(Kind kind, Range range) {
    return {kind, range.low, range.high};
}

Range sum(Range a, Range b) {
    return {a.low + b.low, a.high + b.high};
}

Range negated(Range a) {
    return {-a.high, -a.low};
}

Range product(Range a, Range b) {
    auto const [low, high] = std::minmax({a.low * b.low, a.low * b.high, a.high * b.low, a.high * b.high});
    return {low, high};
}

Range range_of(ValueBounds const& bounds) {
    return {bounds.low, bounds.high};
}

// The kind is known when every possible result fits the width of the operands.
ValueBounds within_width(Kind width, Range range) {
    Range const& limits = width == Kind::Int16 ? range_16 : range_32;
    return limits.holds(range) ? integer(width, range) : ValueBounds{};
}

ValueBounds arithmetic_bounds(KindRule rule, ValueBounds const& a, ValueBounds const& b) {
    if (a.is_double() || b.is_double()) return bounds_of_double();
    if (!a.is_integer() || !b.is_integer()) return {};
    const Kind width = std::max(*a.kind, *b.kind);
    if (rule == KindRule::Product) return within_width(width, product(range_of(a), range_of(b)));
    const Range right = rule == KindRule::Sum ? range_of(b) : negated(range_of(b));
    return within_width(width, sum(range_of(a), right));
}

ValueBounds either_bounds(ValueBounds const& a, ValueBounds const& b) {
    if (!a.kind || a.kind != b.kind) return {};
    return {a.kind, std::min(a.low, b.low), std::max(a.high, b.high)};
}

} // namespace

ValueBounds bounds_of_double() {
    return {Kind::Double, 0, 0};
}

ValueBounds bounds_of(Kind kind, double value) {
    return {kind, value, value};
}

ValueBounds result_bounds(KindRule rule, std::span<ValueBounds const> operands) {
    ValueBounds const& first = operands.front();
    switch (rule) {
    case KindRule::Double: return bounds_of_double();
    case KindRule::Truth: return integer(Kind::Int16, {0, 1});
    case KindRule::Sign: return integer(Kind::Int16, {-1, 1});
    case KindRule::Whole: return integer(Kind::Int32, range_32);
    case KindRule::Sum:
    case KindRule::Difference:
    case KindRule::Product: return arithmetic_bounds(rule, first, operands[1]);
    case KindRule::Negation:
        return first.is_integer() ? within_width(*first.kind, negated(range_of(first))) : first;
    case KindRule::Kept: {
        // Magnitudes of negative integers stay within the mirrored bounds.
        const Range range{std::min(first.low, -first.high), std::max(first.high, -first.low)};
        return first.is_integer() ? integer(*first.kind, range) : first;
    }
    case KindRule::Either: return either_bounds(operands[operands.size() - 2], operands.back());
    }
    return {};
}

} // namespace qv::expression
