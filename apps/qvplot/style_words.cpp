// The words in which a person says how a column is drawn, and the names of colours.
#include "qvplot/options.h"
#include "qvplot/plot_error.h"
#include "table/text.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace qv::plot {
namespace {

struct StyleWord {
    std::string_view word;
    SeriesStyle style;
};

SeriesStyle of_kind(Kind kind) {
    return {.kind = kind};
}
SeriesStyle of_dash(int dash) {
    return {.dash = dash};
}
SeriesStyle of_symbol(int symbol) {
    return {.symbols = true, .symbol = symbol};
}

std::vector<StyleWord> const& words() {
    static const std::vector<StyleWord> rows{
        {"lines", of_kind(Kind::Lines)},
        {"symbols", {.kind = Kind::Lines, .symbols = true, .symbols_alone = true}},
        {"bars", of_kind(Kind::Bars)},
        {"steps", of_kind(Kind::Steps)},
        {"area", of_kind(Kind::Area)},
        {"hist", of_kind(Kind::Histogram)},
        {"heat", of_kind(Kind::Heat)},
        {"box", of_kind(Kind::Box)},
        {"solid", of_dash(0)},
        {"dashed", of_dash(1)},
        {"dotted", of_dash(2)},
        {"dashdot", of_dash(3)},
        {"thin", {.line_width = 1}},
        {"thick", {.line_width = 4}},
        {"circles", of_symbol(3)},
        {"squares", of_symbol(4)},
        {"diamonds", of_symbol(5)},
        {"triangles", of_symbol(6)},
        {"plus", of_symbol(10)},
        {"crosses", of_symbol(11)},
        {"left", {.on_second_axis = false}},
        {"right", {.on_second_axis = true}},
    };
    return rows;
}

struct NamedColor {
    std::string_view name;
    Color color;
};
constexpr std::array colors{NamedColor{"black", rgb(0, 0, 0)},       NamedColor{"grey", rgb(128, 128, 128)},
                            NamedColor{"gray", rgb(128, 128, 128)},  NamedColor{"white", rgb(255, 255, 255)},
                            NamedColor{"red", rgb(200, 30, 30)},     NamedColor{"orange", rgb(245, 117, 16)},
                            NamedColor{"yellow", rgb(230, 190, 0)},  NamedColor{"green", rgb(37, 139, 92)},
                            NamedColor{"teal", rgb(0, 140, 140)},    NamedColor{"cyan", rgb(0, 170, 200)},
                            NamedColor{"blue", rgb(11, 107, 203)},   NamedColor{"navy", rgb(30, 62, 120)},
                            NamedColor{"purple", rgb(120, 60, 160)}, NamedColor{"magenta", rgb(190, 50, 150)},
                            NamedColor{"pink", rgb(230, 120, 170)},  NamedColor{"brown", rgb(130, 80, 40)}};

std::optional<Color> color_in(std::string_view text) {
    constexpr std::size_t digits = 6;
    constexpr int base = 16;
    auto const named =
        std::ranges::find_if(colors, [&](auto const& row) { return table::equal_letters(row.name, text); });
    if (named != colors.end()) return named->color;
    if (text.size() != digits + 1 || text[0] != '#') return std::nullopt;
    int value = 0;
    auto const result = std::from_chars(text.data() + 1, text.data() + text.size(), value, base);
    if (result.ec != std::errc() || result.ptr != text.data() + text.size() || value < 0) return std::nullopt;
    return rgb(value >> 16, value >> 8 & 0xFF, value & 0xFF);
}

// "width=3": pixels.
std::optional<int> width_in(std::string_view word) {
    constexpr std::string_view start = "width=";
    constexpr int widest = 50;
    if (!word.starts_with(start)) return std::nullopt;
    int width = 0;
    auto const result = std::from_chars(word.data() + start.size(), word.data() + word.size(), width);
    bool const whole = result.ec == std::errc() && result.ptr == word.data() + word.size();
    return whole && width >= 1 && width <= widest ? std::optional(width) : std::nullopt;
}

void add(SeriesStyle& style, SeriesStyle const& word) {
    auto const take = [](auto& target, auto const& given) {
        if (given) target = given;
    };
    take(style.kind, word.kind);
    take(style.symbols, word.symbols);
    take(style.dash, word.dash);
    take(style.line_width, word.line_width);
    take(style.symbol, word.symbol);
    take(style.on_second_axis, word.on_second_axis);
    style.symbols_alone = style.symbols_alone || word.symbols_alone;
}

} // namespace

Color parse_color(std::string const& text, char const* option) {
    if (auto const color = color_in(text)) return *color;
    throw PlotError(std::string(option) + ": \"" + text
                    + "\" is no colour; give one such as blue or #0B6BCB");
}

std::vector<std::string> style_words() {
    std::vector<std::string> names;
    for (StyleWord const& row : words()) names.emplace_back(row.word);
    return names;
}

// The last colon, since a column's name may have some.
StyleRule parse_style(std::string const& text) {
    auto const colon = text.rfind(':');
    StyleRule rule{text.substr(0, colon), {}};
    if (colon == std::string::npos || colon == 0)
        throw PlotError("--style: \"" + text + "\" is not COLUMN:WORDS, such as wind:steps,dotted");
    for (std::size_t begin = colon + 1; begin <= text.size();) {
        std::size_t const end = std::min(text.find(',', begin), text.size());
        const std::string word = text.substr(begin, end - begin);
        auto const row = std::ranges::find(words(), word, &StyleWord::word);
        if (row != words().end())
            add(rule.style, row->style);
        else if (auto const width = width_in(word))
            rule.style.line_width = width;
        else if (auto const color = color_in(word))
            rule.style.color = color;
        else
            throw PlotError("--style: \"" + word + "\" is no style; there are "
                            + table::quoted_list(style_words()) + ", \"width=3\" and colours");
        begin = end + 1;
    }
    return rule;
}

} // namespace qv::plot
