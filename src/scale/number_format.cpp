#include "scale/number_format.h"

#include "base/convert.h"
#include "base/picture_format.h"
#include "base/text.h"
#include "scale/numeric.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace qv::scale {
namespace {

constexpr std::int16_t fixed_style = 0;
constexpr std::int16_t scientific_style = 1;
constexpr std::int16_t automatic_style = 2;

// Fixed notation never shows more digits than this.
constexpr int most_digits = 9;

std::string picture_text(double x, std::string_view picture) {
    bool const without_hours =
        starts_with_ignoring_case(picture, "m:s") || starts_with_ignoring_case(picture, "mm:s");
    if (!without_hours) return picture_format(x, picture);
    const std::string text = picture_format(x, "hh:" + std::string(picture));
    // A value beyond the calendar is shown as a plain number, which has no hours to drop.
    return text.size() > 2 && text[2] == ':' ? text.substr(3) : text;
}

std::string scientific_text(double x, int decimals) {
    constexpr std::string_view mantissa = "0.0000000000000000";
    auto const length = static_cast<std::size_t>(decimals) + 2;
    return picture_format(x, std::string(mantissa.substr(0, length)) + "e+000");
}

std::string fixed_text(double x, int decimals) {
    constexpr std::string_view picture = "##########0.0000000000000000";
    int const length = Max(decimals + 12, 1);
    return picture_format(x, picture.substr(0, static_cast<std::size_t>(length)));
}

// Power of ten in a scientific text; 0 when it has none, as in "Infinity".
int exponent_of(std::string_view text) {
    auto const mark = text.find('e');
    if (mark == std::string_view::npos) return 0;
    std::string_view digits = text.substr(mark + 1);
    if (digits.starts_with('+')) digits.remove_prefix(1);
    int exponent = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), exponent);
    return exponent;
}

void replace_until_gone(std::string& text, std::string_view from, std::string_view to) {
    for (auto place = text.find(from); place != std::string::npos; place = text.find(from))
        text.replace(place, from.size(), to);
}

std::string shorten_exponent(std::string text, bool drop_zeros) {
    replace_until_gone(text, "+", "");
    replace_until_gone(text, "e0", "e");
    replace_until_gone(text, "e-0", "e-");
    if (text.ends_with('e')) text.pop_back();
    if (drop_zeros) replace_until_gone(text, "0e", "e");
    return text;
}

std::string tidied(std::string text, bool drop_zeros) {
    bool const has_decimals = text.find('.') != std::string::npos && text.find('e') == std::string::npos;
    while (drop_zeros && has_decimals && text.ends_with('0')) text.pop_back();
    if (auto const place = text.find(".e"); place != std::string::npos) text.erase(place, 1);
    if (text.starts_with('.')) text.insert(0, 1, '0');
    if (text.ends_with('.')) text.pop_back();
    return text;
}

// Whether a text reads back as a number within the tolerance; a number that is not finite has only one text.
bool is_within(std::string const& text, ShownNumber const& number) {
    double read = 0;
    auto const result = std::from_chars(text.data(), text.data() + text.size(), read);
    return result.ec != std::errc() || !std::isfinite(number.value)
           || !(std::abs(read - number.value) > number.tolerance);
}

std::string written(double x, std::chars_format form, int decimals) {
    std::array<char, 64> buffer;
    auto const end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), x, form, decimals).ptr;
    return {buffer.data(), end};
}

// A number rounded at the decimal place that keeps it within the tolerance, fixed or scientific as
// Format_Real chooses, but fixed for larger numbers too.
std::string text_within(ShownNumber const& number) {
    constexpr int longest_fixed = 16; // digits before the point
    constexpr int most_decimals = 19; // of the mantissa: a hundredth of the least step between doubles
    double const x = number.value;
    int const exponent = exponent_of(written(x, std::chars_format::scientific, most_decimals));
    double const place = number.tolerance > 0 ? std::ceil(-std::log10(2 * number.tolerance)) : HUGE_VAL;
    int const decimals =
        static_cast<int>(std::clamp(place + exponent, 0.0, static_cast<double>(most_decimals)));
    if (exponent < -1 || exponent >= longest_fixed)
        return tidied(shorten_exponent(written(x, std::chars_format::scientific, decimals), true), true);
    const std::string text =
        tidied(written(x, std::chars_format::fixed, std::max(decimals - exponent, 0)), true);
    return text == "-0" ? "0" : text;
}

} // namespace

std::string Format_Real(double x, std::int16_t DP, std::int16_t& Style, std::int16_t Mode,
                        std::string_view Fmt) {
    if (!Fmt.empty()) return picture_text(x, Fmt);
    int decimals = Max<int>(DP, 0);
    std::string text = scientific_text(x, decimals);
    int const exponent = exponent_of(text);
    if (Style == automatic_style && exponent >= -1 && exponent <= decimals + 1) {
        Style = fixed_style;
        if (exponent > 0) decimals = Max(decimals - exponent, 0);
    }
    if (Style == fixed_style && exponent >= most_digits) Style = scientific_style;
    bool const drop_zeros = Mode == 1;
    if (Style == fixed_style) {
        if (exponent > 0) decimals = decimals - exponent + 1;
        if (decimals + exponent >= most_digits) decimals = Max(most_digits - exponent, 0);
        text = fixed_text(x, decimals);
    } else {
        text = shorten_exponent(std::move(text), drop_zeros);
    }
    text = tidied(std::move(text), drop_zeros);
    return Mode >= 2 && x >= 0 ? text + " " : text;
}

std::string EasyFormat(double x, std::int16_t DP, std::string_view Fmt) {
    std::int16_t style = automatic_style;
    return Format_Real(x, DP, style, 1, Fmt);
}

std::vector<std::string> number_texts(std::span<ShownNumber const> numbers, std::int16_t DP) {
    std::vector<std::string> texts;
    bool all_within = true;
    for (ShownNumber const& number : numbers) {
        texts.push_back(EasyFormat(number.value, DP, ""));
        all_within = all_within && is_within(texts.back(), number);
    }
    if (!all_within) std::ranges::transform(numbers, texts.begin(), text_within);
    return texts;
}

std::string text_at_pixel(double x, std::int16_t DP, double pixel_step) {
    if (!(pixel_step > 0)) return EasyFormat(x, DP, "");
    const ShownNumber number{x, pixel_step / 4};
    return number_texts({&number, 1}, DP)[0];
}

std::int16_t AxisDPx(double End1, double End2) {
    double const larger = Max(std::abs(End1), std::abs(End2));
    double const whole_digits = Max(0.0, Log10(larger));
    double const span = End2 - End1;
    double const decimals = span != 0 ? Max(0.0, Log10(round_half_even(std::abs(1 / span)))) : 0.0;
    auto const digits = static_cast<float>(whole_digits + decimals + 3);
    return to_i16(MinMax(digits, 3.0F, 9.0F));
}

} // namespace qv::scale
