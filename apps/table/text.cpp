#include "table/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace qv::table {
namespace {

char small(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

} // namespace

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n\v\f";
    auto const first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::optional<double> finite_number(std::string_view text) {
    double value = 0;
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    bool const whole = error == std::errc() && end == text.data() + text.size();
    return whole && std::isfinite(value) ? std::optional(value) : std::nullopt;
}

std::string shortest(double value) {
    std::array<char, 32> text{};
    auto const [end, error] = std::to_chars(text.data(), text.data() + text.size(), value);
    return {text.data(), end};
}

std::string lowered(std::string_view text) {
    std::string result(text);
    std::ranges::transform(result, result.begin(), small);
    return result;
}

bool equal_letters(std::string_view first, std::string_view second) {
    return std::ranges::equal(first, second, {}, small, small);
}

std::string one_line(std::string_view text) {
    constexpr std::size_t most = 60;
    std::string shown(text.substr(0, most));
    for (char& c : shown)
        if (static_cast<unsigned char>(c) < ' ') c = ' ';
    return "\"" + shown + (text.size() > most ? "...\"" : "\"");
}

std::string quoted_list(std::vector<std::string> const& names) {
    constexpr std::size_t most = 30;
    std::string list;
    for (std::size_t i = 0; i < std::min(names.size(), most); ++i)
        list += (list.empty() ? "" : ", ") + one_line(names[i]);
    return names.size() <= most ? list : list + " and " + std::to_string(names.size() - most) + " more";
}

std::string counted(std::size_t count, std::string const& things) {
    return std::to_string(count) + " " + things + (count == 1 ? "" : "s");
}

} // namespace qv::table
