#include "scale/decimal_step.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>

namespace qv::scale {
namespace {

// A value this close below a step lies on it.
constexpr double tolerance = 1e-9;

struct Rung {
    int power = 0;
    int place = 0; // 0 to 3
};

Rung rung_parts(int rung) {
    int const place = ((rung % 4) + 4) % 4;
    return {(rung - place) / 4, place};
}

} // namespace

// Read from its digits, because products with powers of ten are off by a bit where reading is not.
double Decimal::value() const {
    if (digits == 0) return 0;
    const std::string text = std::to_string(digits) + "e" + std::to_string(exponent);
    double number = 0;
    if (std::from_chars(text.data(), text.data() + text.size(), number).ec == std::errc()) return number;
    if (exponent < 0) return 0;
    return std::copysign(std::numeric_limits<double>::infinity(), static_cast<double>(digits));
}

DecimalStep DecimalStep::at_least(double size) {
    DecimalStep step(4 * decimal_exponent(size));
    while (step.size() < size * (1 - tolerance)) step = step.coarser();
    return step;
}

DecimalStep DecimalStep::at_most(double size) {
    const DecimalStep step = at_least(size);
    return step.size() <= size * (1 + tolerance) ? step : step.finer();
}

Decimal DecimalStep::times(std::int64_t count) const {
    static constexpr std::array<Decimal, 4> leading{{{1, 0}, {2, 0}, {25, -1}, {5, 0}}};
    auto const [power, place] = rung_parts(rung_);
    Decimal const& first = leading[static_cast<std::size_t>(place)];
    return {count * first.digits, first.exponent + power};
}

DecimalStep DecimalStep::minor() const {
    static constexpr std::array<int, 4> fifths_and_quarters{1 - 4, 3 - 4, 3 - 4, 0};
    auto const [power, place] = rung_parts(rung_);
    return DecimalStep(4 * power + fifths_and_quarters[static_cast<std::size_t>(place)]);
}

int decimal_exponent(double value) {
    return static_cast<int>(std::floor(std::log10(value) + tolerance));
}

} // namespace qv::scale
