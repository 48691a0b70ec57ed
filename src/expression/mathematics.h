// The engine's mathematics on doubles, shared by the general evaluator and the numeric form so that both
// give the same bits. Not-a-number or infinity as a result means that the operation is not defined there;
// an operand that is not finite always gives such a result, so one look at the end of a formula tells
// whether every step of it was defined.
#pragma once

#include "base/convert.h"

#include <array>
#include <cmath>
#include <limits>

namespace qv::expression::mathematics {

constexpr double undefined = std::numeric_limits<double>::quiet_NaN();
constexpr double pi = 3.14159265358979; // as the language has it: 15 digits, not the nearest double
constexpr double degree = 0.017453292519943295;
constexpr double natural_log_of_10 = 2.302585092994046;

inline bool finite(double x) {
    return x - x == 0;
}
/// `result` where every operand is finite.
inline double where_finite(double result, double a) {
    return a - a == 0 ? result : undefined;
}
inline double where_finite(double result, double a, double b) {
    return (a - a) + (b - b) == 0 ? result : undefined;
}

inline double negate(double b) {
    return -b;
}
inline double add(double a, double b) {
    return a + b;
}
inline double subtract(double a, double b) {
    return a - b;
}
inline double multiply(double a, double b) {
    return a * b;
}
inline double divide(double a, double b) {
    return where_finite(a / b, b);
}
/// A product in a sum, each rounded on its own.
inline double product_plus(double a, double b, double c) {
    return a * b + c;
}
inline double product_minus(double a, double b, double c) {
    return a * b - c;
}
inline double minus_product(double a, double b, double c) {
    return c - a * b;
}
/// Integers have no negative zero, which doubles would give for -0 and 0 * -1.
inline double negate_integer(double b) {
    return 0 - b;
}
inline double multiply_integers(double a, double b) {
    return a * b + 0.0;
}

/// Exponent 2 is one multiplication, which is rounded correctly. A negative base takes whole exponents up
/// to 100.
double power(double base, double exponent);
inline double square(double a) {
    return a * a;
}
double integer_quotient(double a, double b);
double remainder(double a, double b);

inline double equal(double a, double b) {
    return where_finite(a == b ? 1 : 0, a, b);
}
inline double not_equal(double a, double b) {
    return where_finite(a == b ? 0 : 1, a, b);
}
inline double less(double a, double b) {
    return where_finite(a < b ? 1 : 0, a, b);
}
inline double less_or_equal(double a, double b) {
    return where_finite(a <= b ? 1 : 0, a, b);
}
inline double greater(double a, double b) {
    return where_finite(a > b ? 1 : 0, a, b);
}
inline double greater_or_equal(double a, double b) {
    return where_finite(a >= b ? 1 : 0, a, b);
}
inline double logical_not(double b) {
    return where_finite(b <= 0 ? 1 : 0, b);
}
inline double logical_and(double a, double b) {
    return where_finite(((a > 0) & (b > 0)) ? 1 : 0, a, b);
}
inline double logical_or(double a, double b) {
    return where_finite(((a > 0) | (b > 0)) ? 1 : 0, a, b);
}
inline double logical_xor(double a, double b) {
    return where_finite(((a > 0) != (b > 0)) ? 1 : 0, a, b);
}

inline double absolute(double b) {
    return std::fabs(b);
}
inline double floor(double b) {
    return std::floor(b);
}
inline double truncate(double b) {
    return std::trunc(b);
}
inline double sign(double b) {
    return where_finite(static_cast<double>((b > 0) - (b < 0)), b);
}
inline double square_root(double b) {
    return std::sqrt(b);
}
inline double log10(double b) {
    return std::log(b) / natural_log_of_10;
}
inline double ln(double b) {
    return std::log(b);
}
inline double exponential(double b) {
    return where_finite(std::exp(b), b);
}
inline double sine(double b) {
    return std::sin(b);
}
inline double cosine(double b) {
    return std::cos(b);
}
inline double tangent(double b) {
    return std::tan(b);
}
inline double arctangent(double b) {
    return where_finite(std::atan(b), b);
}
double arcsine(double b);
double arccosine(double b);
inline double hyperbolic_sine(double b) {
    return (std::exp(b) - std::exp(-b)) / 2;
}
inline double hyperbolic_cosine(double b) {
    return (std::exp(b) + std::exp(-b)) / 2;
}
double hyperbolic_tangent(double b);
inline double area_sine(double b) {
    return std::log(b + std::sqrt(b * b + 1));
}
inline double area_cosine(double b) {
    return b >= 1 ? std::log(b + std::sqrt(b * b - 1)) : undefined;
}
double area_tangent(double b);

/// 1 x 2 x ... x n for n = x rounded to the nearest whole number; undefined below 0 and above 169.
double factorial(double x);
double combinations(double n, double r);
double permutations(double n, double r);

inline double minimum(double a, double b) {
    return where_finite(a < b ? a : b, a, b);
}
inline double maximum(double a, double b) {
    return where_finite(a > b ? a : b, a, b);
}
inline double choose(double condition, double yes, double no) {
    return where_finite(where_finite(condition > 0 ? yes : no, yes, no), condition);
}

} // namespace qv::expression::mathematics
