#include "expression/mathematics.h"

namespace qv::expression::mathematics {
namespace {

constexpr int largest_factorial = 169;

constexpr auto factorials = [] {
    std::array<double, largest_factorial + 1> table{};
    table[0] = 1;
    for (std::size_t n = 1; n < table.size(); ++n) table[n] = table[n - 1] * static_cast<double>(n);
    return table;
}();

constexpr double largest_negative_base_exponent = 100;

double power_of_negative(double base, double exponent) {
    if (exponent != std::floor(exponent) || std::fabs(exponent) > largest_negative_base_exponent)
        return undefined;
    double const magnitude = std::pow(-base, exponent);
    return std::fmod(exponent, 2) == 0 ? magnitude : -magnitude;
}

// Whether both are whole numbers of 32 bits; the quotient of the smallest by -1 is not.
bool fit_32_bits(double a, double b) {
    constexpr double low = std::numeric_limits<std::int32_t>::min();
    constexpr double high = std::numeric_limits<std::int32_t>::max();
    return a >= low && a <= high && b >= low && b <= high;
}

} // namespace

double power(double base, double exponent) {
    if (exponent == 2) return base * base;
    if (!finite(base) || !finite(exponent)) return undefined;
    return base < 0 ? power_of_negative(base, exponent) : std::pow(base, exponent);
}

double integer_quotient(double a, double b) {
    double const dividend = round_half_even(a);
    double const divisor = round_half_even(b);
    if (divisor == 0 || !fit_32_bits(dividend, divisor)) return undefined;
    double const quotient = std::trunc(dividend / divisor) + 0.0;
    return fit_32_bits(quotient, quotient) ? quotient : undefined;
}

double remainder(double a, double b) {
    double const dividend = round_half_even(a);
    double const divisor = round_half_even(b);
    if (divisor == 0 || !fit_32_bits(dividend, divisor)) return undefined;
    return std::fmod(dividend, divisor) + 0.0;
}

double arcsine(double b) {
    if (std::fabs(b) == 1) return b * pi / 2;
    return std::atan(b / std::sqrt(1 - b * b));
}

double arccosine(double b) {
    if (b == 1) return 0;
    if (b == -1) return pi;
    return std::atan(-b / std::sqrt(1 - b * b)) + 2 * std::atan(1.0);
}

double hyperbolic_tangent(double b) {
    double const rising = std::exp(b);
    double const falling = std::exp(-b);
    return (rising - falling) / (rising + falling);
}

double area_tangent(double b) {
    double const ratio = (1 + b) / (1 - b);
    return ratio > 0 ? std::log(ratio) / 2 : undefined;
}

double factorial(double x) {
    if (!(x >= 0 && x <= largest_factorial)) return undefined;
    return factorials[static_cast<std::size_t>(round_half_even(x))];
}

double combinations(double n, double r) {
    return factorial(n) / (factorial(r) * factorial(n - r));
}

double permutations(double n, double r) {
    return factorial(n) / factorial(n - r);
}

} // namespace qv::expression::mathematics
