#include "expression/arithmetic.h"

#include "base/text.h"
#include "expression/mathematics.h"
#include "expression/text_functions.h"

#include <algorithm>
#include <limits>

namespace qv::expression {
namespace {

template <class Integer>
bool fits(double value) {
    return value >= std::numeric_limits<Integer>::min() && value <= std::numeric_limits<Integer>::max();
}

// The value in the narrowest kind from `kind` upwards that holds it.
Operand widened(Kind kind, double value) {
    if (kind == Kind::Int16 && fits<std::int16_t>(value)) return int16_operand(static_cast<int>(value));
    if (kind <= Kind::Int32 && fits<std::int32_t>(value))
        return int32_operand(static_cast<std::int32_t>(value));
    Operand result = double_operand(value);
    if (kind == Kind::Single && std::fabs(value) <= std::numeric_limits<float>::max()) {
        result.kind = Kind::Single;
        result.number = static_cast<float>(value);
    }
    return result;
}

// A single holds every 16-bit integer but not every 32-bit one, so those two meet as doubles.
Kind common_kind(Kind a, Kind b) {
    auto const [narrow, wide] = std::minmax(a, b);
    return narrow == Kind::Int32 && wide == Kind::Single ? Kind::Double : wide;
}

template <double (*Function)(double, double)>
Operand arithmetic(Operand const& left, Operand const& right) {
    const Number a = number_in(left);
    const Number b = number_in(right);
    if (a.faulted() || b.faulted()) return faulted();
    return widened(common_kind(a.kind, b.kind), Function(a.value, b.value));
}

template <double (*Function)(double)>
Operand kept_kind(Operand const& operand) {
    const Number b = number_in(operand);
    if (b.faulted()) return faulted();
    Operand result = widened(b.kind, Function(b.value));
    return result.kind == b.kind ? result : faulted();
}

Operand text_or_number(Operand const& operand) {
    return operand.kind == Kind::Empty ? text_operand({}) : operand;
}

} // namespace

Operand sum(Operand const& a, Operand const& b) {
    auto const textual = [](Operand const& x) { return x.kind == Kind::Text || x.kind == Kind::Empty; };
    bool const any_text = a.kind == Kind::Text || b.kind == Kind::Text;
    if (any_text && textual(a) && textual(b)) return concatenated(a, b);
    return arithmetic<mathematics::add>(a, b);
}

Operand difference(Operand const& a, Operand const& b) {
    return arithmetic<mathematics::subtract>(a, b);
}

Operand product(Operand const& a, Operand const& b) {
    return arithmetic<mathematics::multiply>(a, b);
}

Operand negated(Operand const& operand) {
    const Number b = number_in(operand);
    return b.faulted() ? faulted() : widened(b.kind, -b.value);
}

Operand concatenated(Operand const& a, Operand const& b) {
    std::string a_storage, b_storage;
    return joined_text(text_view(a, a_storage), text_view(b, b_storage));
}

Operand absolute_value(Operand const& b) {
    return kept_kind<mathematics::absolute>(b);
}

Operand largest_whole(Operand const& b) {
    return kept_kind<mathematics::floor>(b);
}

Operand truncated(Operand const& b) {
    return kept_kind<mathematics::truncate>(b);
}

Operand sign_of(Operand const& operand) {
    const Number b = number_in(operand);
    return b.faulted() ? faulted() : int16_operand((b.value > 0) - (b.value < 0));
}

std::partial_ordering compare(Operand const& a, Operand const& b) {
    bool const a_is_text = a.kind == Kind::Text;
    bool const b_is_text = b.kind == Kind::Text;
    if (!a_is_text && !b_is_text) return a.number <=> b.number;
    if (a.kind == Kind::Empty || b.kind == Kind::Empty) return compare(text_or_number(a), text_or_number(b));
    if (a_is_text != b_is_text)
        return a_is_text ? std::partial_ordering::greater : std::partial_ordering::less;
    return to_upper(a.text).compare(to_upper(b.text)) <=> 0;
}

bool is_true(Operand const& value) {
    return value.kind == Kind::Text || (value.kind != Kind::Empty && value.number > 0);
}

} // namespace qv::expression
