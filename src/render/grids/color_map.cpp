#include "render/grids/color_map.h"

#include "base/text.h"
#include "qvgraph/fault.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace qv::render {
namespace {

/// A place through which a map leads.
struct Stop {
    double lightness, chroma, hue_degrees;
};

// As strong as it may be and still be shown.
Oklab shown(Stop const& stop) {
    const Oklab wanted = of_hue(stop.lightness, stop.chroma, stop.hue_degrees);
    if (can_be_shown(wanted)) return wanted;
    double low = 0, high = stop.chroma;
    constexpr int halvings = 30;
    for (int i = 0; i < halvings; ++i) {
        double const middle = (low + high) / 2;
        (can_be_shown(of_hue(stop.lightness, middle, stop.hue_degrees)) ? low : high) = middle;
    }
    return of_hue(stop.lightness, low, stop.hue_degrees);
}

Stop between(Stop const& one, Stop const& other, double share) {
    return {std::lerp(one.lightness, other.lightness, share), std::lerp(one.chroma, other.chroma, share),
            std::lerp(one.hue_degrees, other.hue_degrees, share)};
}

/// A way without the bends at its stops and at the limits of what can be shown, which the eye would take for
/// lines in a picture. Its ends stay: beyond them it goes on as it came.
std::vector<Oklab> smoothed(std::vector<Oklab> way) {
    constexpr std::ptrdiff_t reach = 80;
    constexpr int rounds = 2;
    auto const last = static_cast<std::ptrdiff_t>(way.size()) - 1;
    for (int round = 0; round < rounds; ++round) {
        auto const at = [&](std::ptrdiff_t i) {
            if (i >= 0 && i <= last) return way[static_cast<std::size_t>(i)];
            const Oklab end = way[static_cast<std::size_t>(i < 0 ? 0 : last)];
            const Oklab mirrored = way[static_cast<std::size_t>(i < 0 ? -i : 2 * last - i)];
            return between(mirrored, end, 2);
        };
        std::vector<Oklab> smooth;
        for (std::ptrdiff_t i = 0; i <= last; ++i) {
            Oklab sum;
            for (std::ptrdiff_t j = i - reach; j <= i + reach; ++j) {
                const Oklab near = at(j);
                sum = {sum.lightness + near.lightness, sum.a + near.a, sum.b + near.b};
            }
            constexpr double count = 2 * reach + 1;
            smooth.push_back({sum.lightness / count, sum.a / count, sum.b / count});
        }
        way = std::move(smooth);
    }
    return way;
}

/// Many colours along a way whose stops are equally far from one another in the way's own measure.
std::vector<Oklab> way_through(std::span<Stop const> stops) {
    constexpr int pieces = 256; // between two stops
    std::vector<Oklab> way{shown(stops.front())};
    for (std::size_t i = 1; i < stops.size(); ++i)
        for (int piece = 1; piece <= pieces; ++piece)
            way.push_back(shown(between(stops[i - 1], stops[i], static_cast<double>(piece) / pieces)));
    return smoothed(std::move(way));
}

/// Lengths from a way's first place to each, in straight pieces.
std::vector<double> lengths_of(std::span<Oklab const> way) {
    std::vector<double> lengths{0};
    for (std::size_t i = 1; i < way.size(); ++i)
        lengths.push_back(lengths.back() + distance(way[i - 1], way[i]));
    return lengths;
}

/// Where between rising numbers a number lies, as the index before it and a share.
double index_in(std::span<double const> rising, double number) {
    std::size_t next = 1;
    while (next + 1 < rising.size() && rising[next] < number) ++next;
    double const span = rising[next] - rising[next - 1];
    return static_cast<double>(next - 1) + (span > 0 ? (number - rising[next - 1]) / span : 0);
}

template <class Value>
Value at_index(std::span<Value const> values, double index, auto const& mix) {
    auto const before = std::min(static_cast<std::size_t>(std::max(index, 0.0)), values.size() - 2);
    return mix(values[before], values[before + 1], index - static_cast<double>(before));
}

/// `to.size()` colours on a way from its first to its last, each as far from the next.
void divide_evenly(std::span<Oklab const> way, std::span<Oklab> to) {
    auto const mix = [](Oklab const& a, Oklab const& b, double share) { return between(a, b, share); };
    auto const mix_numbers = [](double a, double b, double share) { return std::lerp(a, b, share); };
    const std::vector<double> along = lengths_of(way);
    std::vector<double> places; // on the way, as indexes
    for (std::size_t i = 0; i < to.size(); ++i)
        places.push_back(
            index_in(along, along.back() * static_cast<double>(i) / static_cast<double>(to.size() - 1)));
    // The way bends, and cuts across a bend are shorter than it: what is even are the steps themselves.
    constexpr int rounds = 8;
    for (int round = 0; round < rounds; ++round) {
        for (std::size_t i = 0; i < to.size(); ++i) to[i] = at_index<Oklab>(way, places[i], mix);
        const std::vector<double> steps = lengths_of(to);
        std::vector<double> moved;
        for (std::size_t i = 0; i < to.size(); ++i) {
            double const length = steps.back() * static_cast<double>(i) / static_cast<double>(to.size() - 1);
            moved.push_back(at_index<double>(places, index_in(steps, length), mix_numbers));
        }
        places = std::move(moved);
    }
}

ColorMap finished(ColorMap map) {
    std::ranges::transform(map.seen, map.colors.begin(), color_of);
    return map;
}

ColorMap sequential(std::span<Stop const> stops) {
    ColorMap map;
    divide_evenly(way_through(stops), map.seen);
    return finished(map);
}

/// Two arms of one lightness and chroma each side of the middle, which can be shown in both hues.
ColorMap diverging(double first_hue, double last_hue) {
    constexpr double darkest = 0.42, lightest = 0.965, strongest = 0.19;
    constexpr int pieces = 512;
    std::vector<Oklab> arms[2];
    for (int piece = 0; piece <= pieces; ++piece) {
        double const share = static_cast<double>(piece) / pieces; // from the middle outwards
        double const lightness = std::lerp(lightest, darkest, share);
        double chroma = strongest * std::sin(std::numbers::pi / 2 * std::min(1.0, 1.5 * share));
        for (double const hue : {first_hue, last_hue}) {
            const Oklab strongest_shown = shown({lightness, chroma, hue});
            chroma = std::hypot(strongest_shown.a, strongest_shown.b);
        }
        arms[0].push_back(of_hue(lightness, chroma, first_hue));
        arms[1].push_back(of_hue(lightness, chroma, last_hue));
    }
    ColorMap map{ColorOrder::Diverging, {}, {}};
    constexpr std::size_t half = ColorMap::size / 2;
    // An even number of colours has its middle between two, so each arm begins half a step beside it.
    std::array<Oklab, 2 * half> fine;
    for (int side = 0; side < 2; ++side) {
        divide_evenly(smoothed(std::move(arms[side])), fine);
        for (std::size_t i = 0; i < half; ++i)
            map.seen[side == 0 ? half - 1 - i : half + i] = fine[2 * i + 1];
    }
    return finished(map);
}

ColorMap cyclic() {
    constexpr double lightness = 0.74, red_hue = 25;
    constexpr int hues = 360;
    double chroma = 0.2; // as strong as all hues may be
    for (int hue = 0; hue < hues; ++hue) {
        const Oklab strongest = shown({lightness, chroma, 1.0 * hue});
        chroma = std::hypot(strongest.a, strongest.b);
    }
    ColorMap map{ColorOrder::Cyclic, {}, {}};
    for (std::size_t i = 0; i < map.seen.size(); ++i)
        map.seen[i] = of_hue(lightness, chroma, red_hue + 360.0 * static_cast<double>(i) / ColorMap::size);
    return finished(map);
}

ColorMap made(std::string_view name) {
    if (name == "night") {
        constexpr Stop stops[]{{0.20, 0.10, 290}, {0.38, 0.13, 275}, {0.55, 0.11, 225},
                               {0.72, 0.13, 165}, {0.86, 0.16, 125}, {0.97, 0.12, 105}};
        return sequential(stops);
    }
    if (name == "ember") {
        constexpr Stop stops[]{{0.10, 0.00, -20}, {0.28, 0.11, -20}, {0.45, 0.17, 15},
                               {0.62, 0.20, 35},  {0.80, 0.16, 70},  {0.98, 0.05, 100}};
        return sequential(stops);
    }
    constexpr Stop stops[]{
        {0.28, 0.06, 240}, {0.45, 0.09, 205}, {0.62, 0.12, 165}, {0.80, 0.14, 135}, {0.97, 0.05, 115}};
    return sequential(stops); // meadow
}

std::optional<ColorMap> named(std::string_view name) {
    static const std::array sequential_maps{made("night"), made("ember"), made("meadow")};
    constexpr double blue = 258, red = 27, green = 150, purple = 320;
    static const std::array other_maps{diverging(blue, red), diverging(green, purple), cyclic()};
    constexpr std::array<std::string_view, 3> names{"night", "ember", "meadow"},
        others{"tide", "moor", "dial"};
    if (name.empty()) return sequential_maps[0];
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (name == names[i]) return sequential_maps[i];
        if (name == others[i]) return other_maps[i];
    }
    return std::nullopt;
}

std::string_view trimmed(std::string_view text) {
    auto const first = text.find_first_not_of(" \t"), last = text.find_last_not_of(" \t");
    return first == std::string_view::npos ? "" : text.substr(first, last - first + 1);
}

std::optional<Color> color_from(std::string_view text) {
    if (text.size() != 7 || text[0] != '#') return std::nullopt;
    int value = 0;
    for (char const digit : text.substr(1)) {
        auto const place =
            std::string_view("0123456789abcdef")
                .find(static_cast<char>(digit >= 'A' && digit <= 'F' ? digit - 'A' + 'a' : digit));
        if (place == std::string_view::npos) return std::nullopt;
        value = 16 * value + static_cast<int>(place);
    }
    return rgb(value >> 16, value >> 8 & 0xFF, value & 0xFF);
}

std::optional<ColorMap> listed(std::string_view text) {
    std::vector<Oklab> way;
    while (true) {
        auto const end = text.find_first_of(";,");
        auto const color = color_from(trimmed(text.substr(0, end)));
        if (!color) return std::nullopt;
        way.push_back(oklab(*color));
        if (end == std::string_view::npos) break;
        text.remove_prefix(end + 1);
    }
    if (way.size() < 2) return std::nullopt;
    // The host's own distances: each colour has the same share of the range.
    ColorMap map;
    for (std::size_t i = 0; i < map.seen.size(); ++i) {
        double const place =
            static_cast<double>(i * (way.size() - 1)) / static_cast<double>(map.seen.size() - 1);
        auto const before = std::min(static_cast<std::size_t>(place), way.size() - 2);
        map.seen[i] = between(way[before], way[before + 1], place - static_cast<double>(before));
    }
    return finished(map);
}

} // namespace

ColorMap color_map(std::string_view text) {
    std::string_view name = trimmed(text);
    bool const turned = name.starts_with('-');
    if (turned) name = trimmed(name.substr(1));
    std::optional<ColorMap> map = named(name);
    if (!map) map = listed(name);
    if (!map)
        raise_fault(
            FaultNumber::InvalidProcedureCall,
            "\"" + std::string(text)
                + "\" names no colours: take night, ember, meadow, tide, moor or dial, or two or more "
                  "colours such as #000000; #FF8000; #FFFFFF.");
    if (turned) {
        std::ranges::reverse(map->seen);
        std::ranges::reverse(map->colors);
    }
    return *map;
}

} // namespace qv::render
