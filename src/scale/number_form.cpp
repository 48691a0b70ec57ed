#include "scale/number_form.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string_view>

namespace qv::scale {
namespace {

constexpr std::string_view minus = "\u2212";
constexpr std::string_view times_ten = "\u00D710";
constexpr std::string_view thin_space = "\u2009";

constexpr int longest_fixed = 7;     // characters, signs and groups not counted
constexpr int power_characters = 4;  // that "×10" and an exponent take
constexpr int first_grouped = 4;     // exponent of the smallest number because of which all are grouped
constexpr int smallest_prefix = -30; // exponents of the prefixes
constexpr int largest_prefix = 30;

constexpr std::array<std::string_view, 21> prefixes{"q", "r", "y", "z", "a", "f", "p", "n", "\u00B5", "m", "",
                                                    "k", "M", "G", "T", "P", "E", "Z", "Y", "R",      "Q"};

int exponent_of(double largest) {
    return largest > 0 ? decimal_exponent(largest) : 0;
}

std::string whole_text(std::string const& digits, bool grouped) {
    if (!grouped) return digits;
    std::string text;
    for (std::size_t i = 0; i < digits.size(); ++i) {
        if (i > 0 && (digits.size() - i) % 3 == 0) text += thin_space;
        text += digits[i];
    }
    return text;
}

// digits x 10^exponent, all digits written.
std::string fixed_text(Decimal number, int decimals, bool grouped) {
    if (number.digits == 0) number.exponent = -decimals;
    std::string digits = std::to_string(std::abs(number.digits));
    int places = -number.exponent; // of the digits, behind the point
    for (; places < decimals; ++places) digits += '0';
    for (; places > decimals && digits.size() > 1 && digits.back() == '0'; --places) digits.pop_back();
    auto const behind = static_cast<std::size_t>(std::max(places, 0));
    if (digits.size() <= behind) digits.insert(0, behind + 1 - digits.size(), '0');
    std::string text = whole_text(digits.substr(0, digits.size() - behind), grouped);
    if (behind > 0) text += "." + digits.substr(digits.size() - behind);
    return number.digits < 0 ? std::string(minus) + text : text;
}

std::string raised(int exponent) {
    return "^{" + fixed_text({exponent, 0}, 0, false) + "}";
}

} // namespace

std::string NumberForm::text(Decimal number) const {
    if (number.digits == 0 && notation != Notation::Fixed) return "0";
    number.exponent -= exponent;
    std::string const text = fixed_text(number, decimals, groups_thousands);
    if (notation == Notation::Scientific) return text + std::string(times_ten) + raised(exponent);
    if (notation == Notation::SIPrefix)
        return text + std::string(thin_space)
               + std::string(prefixes[static_cast<std::size_t>((exponent - smallest_prefix) / 3)]);
    return text;
}

NumberForm number_form(double largest, int last_place) {
    int const power = exponent_of(largest);
    auto const length = [](int whole, int decimals) { return whole + (decimals > 0 ? decimals + 1 : 0); };
    const NumberForm fixed{Notation::Fixed, 0, std::max(-last_place, 0), power >= first_grouped};
    const NumberForm scientific{Notation::Scientific, power, std::max(power - last_place, 0), false};
    int const fixed_length = length(std::max(power, 0) + 1, fixed.decimals);
    int const scientific_length = length(1, scientific.decimals) + power_characters;
    return fixed_length > longest_fixed && scientific_length < fixed_length ? scientific : fixed;
}

NumberForm si_form(double largest, int last_place) {
    int const power = exponent_of(largest);
    int const prefix =
        std::clamp(3 * static_cast<int>(std::floor(power / 3.0)), smallest_prefix, largest_prefix);
    if (prefix == 0) return number_form(largest, last_place);
    return {Notation::SIPrefix, prefix, std::max(prefix - last_place, 0), power - prefix >= first_grouped};
}

std::string power_text(int digit, int exponent) {
    std::string const power = "10" + raised(exponent);
    return digit == 1 ? power : std::to_string(digit) + "\u00D7" + power;
}

std::string shortest_text(double value) {
    std::array<char, 64> buffer;
    char* const end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), std::abs(value)).ptr;
    std::string text(buffer.data(), end);
    if (auto const mark = text.find('e'); mark != std::string::npos)
        text = text.substr(0, mark) + std::string(times_ten) + raised(std::stoi(text.substr(mark + 1)));
    return value < 0 ? std::string(minus) + text : text;
}

} // namespace qv::scale
