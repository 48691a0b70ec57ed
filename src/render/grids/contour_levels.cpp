#include "render/grids/contour_levels.h"

#include "qvgraph/fault.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>
#include <string>

namespace qv::render {
namespace {

constexpr int usual_count = 8, most_levels = 1000;

[[noreturn]] void raise_unreadable(std::string_view text) {
    raise_fault(
        FaultNumber::InvalidProcedureCall,
        "\"" + std::string(text)
            + "\" names no levels: give how many there shall be, 1 to 1000, or a list such as 1; 2.5; 5.");
}

std::optional<double> number_in(std::string_view text) {
    auto const first = text.find_first_not_of(" \t+");
    if (first == std::string_view::npos) return std::nullopt;
    text = text.substr(first, text.find_last_not_of(" \t") + 1 - first);
    double value = 0;
    auto const [end, failure] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (failure != std::errc() || end != text.data() + text.size() || !std::isfinite(value))
        return std::nullopt;
    return value;
}

/// 1, 2 or 5 times a power of ten, the nearest to a rough step from below.
double round_step(double rough) {
    double const power = std::pow(10, std::floor(std::log10(rough)));
    double const leading = rough / power;
    return power * (leading < 2 ? 1 : leading < 5 ? 2 : 5);
}

std::vector<double> even_levels(document::Extent const& range, int count) {
    double const span = range.high - range.low;
    std::vector<double> levels;
    if (!(span > 0) || !std::isfinite(span)) return levels;
    // The step that gives the number nearest to the one asked for.
    double step = round_step(span / count);
    for (double const factor : {2.0, 2.5, 5.0})
        if (double const wider = round_step(step * factor * (1 + 1e-9));
            std::abs(span / wider - count) < std::abs(span / step - count))
            step = wider;
    double const first = std::ceil(range.low / step);
    for (int i = 0; i <= most_levels; ++i) {
        double const level = (first + i) * step;
        if (!(level < range.high)) break;
        if (level > range.low && (levels.empty() || level > levels.back())) levels.push_back(level);
    }
    return levels;
}

std::vector<double> powers(document::Extent const& range) {
    std::vector<double> levels;
    for (int power = static_cast<int>(std::ceil(std::log10(range.low)));
         power <= static_cast<int>(std::floor(std::log10(range.high))); ++power)
        levels.push_back(std::pow(10, power));
    return levels;
}

} // namespace

LevelChoice level_choice(std::string_view text) {
    constexpr std::string_view blanks = " \t", separators = ";,";
    if (text.find_first_not_of(blanks) == std::string_view::npos) return {usual_count, {}};
    if (text.find_first_of(separators) == std::string_view::npos) {
        auto const count = number_in(text);
        if (!count || !(*count >= 1 && *count <= most_levels) || *count != std::floor(*count))
            raise_unreadable(text);
        return {static_cast<int>(*count), {}};
    }
    LevelChoice choice;
    for (std::string_view rest = text; !rest.empty();) {
        auto const end = rest.find_first_of(separators);
        std::string_view const token = rest.substr(0, end);
        rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
        if (token.find_first_not_of(blanks) == std::string_view::npos && rest.empty()) break;
        auto const level = number_in(token);
        if (!level || choice.values.size() == most_levels) raise_unreadable(text);
        choice.values.push_back(*level);
    }
    if (choice.values.empty()) raise_unreadable(text);
    std::ranges::sort(choice.values);
    choice.values.erase(std::unique(choice.values.begin(), choice.values.end()), choice.values.end());
    return choice;
}

std::vector<double> contour_levels(LevelChoice const& choice, document::Extent const& range, bool is_log) {
    if (!choice.values.empty()) return choice.values;
    if (range.empty()) return {};
    if (is_log && range.low > 0) {
        std::vector<double> const all = powers(range);
        if (all.size() > 2) return all;
    }
    return even_levels(range, choice.count);
}

} // namespace qv::render
