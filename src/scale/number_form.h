// How the numbers of one axis are written: all with the same decimals and the same power of ten.
#pragma once

#include "scale/decimal_step.h"

#include <string>

namespace qv::scale {

enum class Notation { Fixed, Scientific, SIPrefix };

struct NumberForm {
    Notation notation = Notation::Fixed;
    int exponent = 0; // of the power or prefix behind the numbers
    int decimals = 0;
    bool groups_thousands = false;

    /// With a real minus sign; a power of ten as markup, 2×10^{6}. A zero has no power and no prefix.
    std::string text(Decimal number) const;
};

/// The form of numbers up to `largest` in size that differ in multiples of ten to the `last_place`: fixed
/// where that is not too long, else scientific; with thousands in groups where one has five digits or more.
NumberForm number_form(double largest, int last_place);
/// The same with a prefix of the SI where it takes one.
NumberForm si_form(double largest, int last_place);

/// 10^{3}, 2×10^{−6}.
std::string power_text(int digit, int exponent);

/// The shortest text that reads back as this number.
std::string shortest_text(double value);

} // namespace qv::scale
