#include "base/convert.h"
#include "base/picture_format.h"
#include "base/text.h"
#include "expression/engine.h"
#include "expression/mathematics.h"

#include <algorithm>
#include <cmath>

namespace qv::expression {
namespace {

constexpr std::string_view fixed_pattern = "##########0.################";
constexpr std::size_t fixed_pattern_stem = 12; // up to and with the decimal point

// Natural logarithm over that of 10 at 15 digits, as everywhere in number formatting.
double Log10(double x) {
    return x > 0 ? std::log(x) / 2.30258509299405 : 0;
}

// About five significant digits from 10 upwards; negative numbers keep three decimals whatever their size.
std::size_t shown_decimals(double x) {
    if (x < 10) return 3;
    return static_cast<std::size_t>(std::max(1.0, 4 - round_half_even(Log10(x))));
}

} // namespace

std::string FormatReal(double x) {
    if (x == 0) return "0";
    if (!mathematics::finite(x)) return number_text(x);
    double const magnitude = std::fabs(x);
    if (!(magnitude > 0.001 && magnitude <= 1000000)) return picture_format(x, "0.###E+##");
    std::string text = picture_format(x, fixed_pattern.substr(0, fixed_pattern_stem + shown_decimals(x)));
    if (text.ends_with('.')) text.pop_back();
    return text;
}

} // namespace qv::expression
