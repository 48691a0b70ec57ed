// Steps of 1, 2, 2.5 and 5 times a power of ten, and their multiples, exact to the last bit.
#pragma once

#include <compare>
#include <cstdint>

namespace qv::scale {

/// A decimal number: digits times ten to the exponent.
struct Decimal {
    std::int64_t digits = 0;
    int exponent = 0;

    /// The double nearest to it; infinite beyond the largest.
    double value() const;
    bool operator==(Decimal const&) const = default;
};

/// A step on the ladder ..., 0.5, 1, 2, 2.5, 5, 10, ..., whose rung 0 is 1.
class DecimalStep {
public:
    explicit DecimalStep(int rung = 0) : rung_(rung) {}
    /// The smallest step of at least `size`, which is positive and finite.
    static DecimalStep at_least(double size);
    /// The largest step of at most `size`.
    static DecimalStep at_most(double size);

    DecimalStep coarser() const { return DecimalStep(rung_ + 1); }
    DecimalStep finer() const { return DecimalStep(rung_ - 1); }
    Decimal times(std::int64_t count) const;
    double size() const { return times(1).value(); }
    /// A fifth of 1, 2.5 and 5, a quarter of 2: again a step of the ladder.
    DecimalStep minor() const;
    auto operator<=>(DecimalStep const&) const = default;

private:
    int rung_; // four to a power of ten
};

/// The exponent of the power of ten at or below a positive value, one that rounding has put just below a
/// power counts as standing on it.
int decimal_exponent(double value);

} // namespace qv::scale
