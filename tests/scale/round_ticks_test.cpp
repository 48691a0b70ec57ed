#include "scale/round_ticks.h"

#include "qvgraph/fault.h"
#include "scale/decimal_step.h"
#include "scale/number_form.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <map>
#include <optional>
#include <random>
#include <set>

using namespace qv::scale;

namespace {

std::string replaced(std::string text, std::string_view from, std::string_view to) {
    for (auto place = text.find(from); place != std::string::npos; place = text.find(from, place + to.size()))
        text.replace(place, from.size(), to);
    return text;
}

/// A number as its label tells it.
double number_in(std::string label) {
    for (auto const& [from, to] : {std::pair{"\u2212", "-"}, {"\u2009", ""}, {"}", ""}, {"\u00D710^{", "e"}})
        label = replaced(label, from, to);
    if (label.starts_with("10^{")) label = "1e" + label.substr(4);
    double number = 0;
    auto const end = std::from_chars(label.data(), label.data() + label.size(), number).ptr;
    CHECK_MESSAGE(end == label.data() + label.size(), label);
    return number;
}

/// Letters of 5 units each, raised ones of 3.5; a line is 11 units high.
double width_of(std::string_view label) {
    double width = 0, letter = 5;
    for (char const c : label) {
        if (c == '{')
            letter = 3.5;
        else if (c != '^' && c != '}' && (static_cast<unsigned char>(c) & 0xC0U) != 0x80U)
            width += letter;
    }
    return width;
}

LabelRoom beside_x_axis(double length, double margin = 40) {
    return {length, margin, margin, 11, 5.5, 37, width_of};
}
LabelRoom beside_y_axis(double length, double margin = 20) {
    return {length, margin, margin, 11, 0, 24, [](std::string_view) { return 11.0; }};
}

std::vector<RoundTick> labelled(RoundTicks const& chosen) {
    std::vector<RoundTick> ticks;
    std::ranges::copy_if(chosen.ticks, std::back_inserter(ticks),
                         [](RoundTick const& tick) { return !tick.label.empty(); });
    return ticks;
}

std::string labels(RoundTicks const& chosen) {
    std::string text;
    for (RoundTick const& tick : labelled(chosen)) text += (text.empty() ? "" : " ") + tick.label;
    return replaced(replaced(text, "\u2212", "-"), "\u2009", "'");
}

std::string labels(double first, double last, bool is_log = false, double length = 400,
                   NumberStyle const& style = {}) {
    return labels(round_ticks({first, last, is_log}, beside_x_axis(length), style));
}

double place_on(TickSpan const& span, double length, double value) {
    auto const [low, high] = std::minmax(span.first, span.last);
    if (!span.is_log) return (value - low) / (high - low) * length;
    return (std::log10(value) - std::log10(low)) / (std::log10(high) - std::log10(low)) * length;
}

/// What is wrong with a choice of ticks; empty for nothing.
std::string complaint(TickSpan const& span, LabelRoom const& room, RoundTicks const& chosen) {
    auto const numbers = labelled(chosen);
    if (numbers.size() < 2 || numbers.size() > 12) return std::to_string(numbers.size()) + " numbers";
    std::set<std::string> texts;
    double reached = -room.before_low - room.gap;
    for (RoundTick const& tick : numbers) {
        double const place = place_on(span, room.length, tick.value), half = room.extent(tick.label) / 2;
        if (place < -1e-6 * room.length || place > (1 + 1e-6) * room.length)
            return tick.label + " is outside";
        if (place - half < reached + room.gap - 1e-9) return tick.label + " overlaps or is cut";
        if (place + half > room.length + room.beyond_high) return tick.label + " is cut";
        if (number_in(tick.label) != tick.value) return tick.label + " is not its value";
        if (!texts.insert(tick.label).second) return tick.label + " is there twice";
        reached = place + half;
    }
    return {};
}

std::optional<double> common_step(RoundTicks const& chosen) {
    std::vector<double> majors;
    for (RoundTick const& tick : chosen.ticks)
        if (tick.is_major) majors.push_back(tick.value);
    return majors.size() < 2 ? std::nullopt : std::optional(majors[1] - majors[0]);
}

} // namespace

TEST_CASE("round ticks: as many digits as the step needs, on all labels of an axis") {
    CHECK(labels(0, 1) == "0.0 0.1 0.2 0.3 0.4 0.5 0.6 0.7 0.8 0.9 1.0");
    CHECK(labels(0, 1, false, 250) == "0.0 0.2 0.4 0.6 0.8 1.0");
    CHECK(labels(1, 0, false, 250) == "0.0 0.2 0.4 0.6 0.8 1.0");
    CHECK(labels(0, 10, false, 160) == "0.0 2.5 5.0 7.5 10.0");
    // Where steps of 5 are enough, 2.5 and its decimal are none too few.
    CHECK(labels(0, 22, false, 250) == "0 5 10 15 20");
    CHECK(labels(0, 220, false, 400) == "0 25 50 75 100 125 150 175 200");
    CHECK(labels(313, 417) == "320 340 360 380 400");
    CHECK(labels(-0.73, 2.19, false, 250) == "-0.5 0.0 0.5 1.0 1.5 2.0");
    CHECK(labels(0, 12345, false, 300) == "0 2'000 4'000 6'000 8'000 10'000 12'000");
    CHECK(labels(1990, 2024) == "1990 1995 2000 2005 2010 2015 2020");
    CHECK(labels(0, 3e10)
          == "0 0.5\u00D710^{10} 1.0\u00D710^{10} 1.5\u00D710^{10} 2.0\u00D710^{10} "
             "2.5\u00D710^{10} 3.0\u00D710^{10}");
    CHECK(labels(0, 7e-6, false, 250) == "0 2\u00D710^{-6} 4\u00D710^{-6} 6\u00D710^{-6}");
    CHECK(labels(17.201, 17.209, false, 250) == "17.202 17.204 17.206 17.208");
}

TEST_CASE("round ticks: powers, digits or steps on logarithmic axes") {
    CHECK(labels(1, 1000, true) == "10^{0} 10^{1} 10^{2} 10^{3}");
    CHECK(labels(1e-9, 1e12, true) == "10^{-9} 10^{-6} 10^{-3} 10^{0} 10^{3} 10^{6} 10^{9} 10^{12}");
    CHECK(labels(1e-200, 1e200, true)
          == "10^{-200} 10^{-150} 10^{-100} 10^{-50} 10^{0} 10^{50} 10^{100} "
             "10^{150} 10^{200}");
    CHECK(labels(3, 80, true) == "5 10 20 50");
    CHECK(labels(0.3, 8, true) == "0.5 1.0 2.0 5.0");
    CHECK(labels(2e7, 5e8, true) == "2\u00D710^{7} 5\u00D710^{7} 10^{8} 2\u00D710^{8} 5\u00D710^{8}");
    CHECK(labels(2.1, 3.3, true, 250) == "2.2 2.4 2.6 2.8 3.0 3.2");
    CHECK(labels(20, 20000, true, 400, {.si_prefix = true}) == "100 1'k 10'k");
}

TEST_CASE("round ticks: prefixes, offsets and formats where the host asks") {
    CHECK(labels(0, 48000, false, 250, {.si_prefix = true}) == "0 10'k 20'k 30'k 40'k");
    CHECK(labels(0, 4e-6, false, 250, {.si_prefix = true}) == "0 1'\u00B5 2'\u00B5 3'\u00B5 4'\u00B5");
    CHECK(labels(0, 400, false, 250, {.si_prefix = true}) == labels(0, 400, false, 250));
    const RoundTicks chosen =
        round_ticks({101324.1, 101325.7, false}, beside_x_axis(250), {.with_offset = true});
    CHECK(replaced(chosen.offset, "\u2009", "'") == "+101'320");
    CHECK(labels(chosen) == "4.25 4.50 4.75 5.00 5.25 5.50");
    CHECK(round_ticks({0, 10, false}, beside_x_axis(250), {.with_offset = true}).offset.empty());
    const RoundTicks own = round_ticks({0, 1, false}, beside_x_axis(400),
                                       {.text = [](double value) { return value < 0.5 ? "<" : ">"; }});
    CHECK(labels(own) == "< >"); // a format too short for more
    CHECK_FALSE(own.marked_up);
}

TEST_CASE("round ticks: minor ticks divide a step into round parts") {
    std::map<double, int> const parts{{0.1, 5}, {0.2, 4}, {0.25, 5}, {0.5, 5}};
    for (auto const& [span, length] : {std::pair{1.0, 400.0}, {1.0, 250.0}, {1.0, 160.0}, {2.0, 160.0}}) {
        const RoundTicks chosen = round_ticks({0, span, false}, beside_x_axis(length), {});
        double const step = *common_step(chosen);
        auto const within = std::ranges::count_if(chosen.ticks, [&](RoundTick const& tick) {
            return !tick.is_major && tick.value > 0 && tick.value < step;
        });
        REQUIRE_MESSAGE(parts.contains(step), step);
        CHECK_MESSAGE(within + 1 == parts.at(step), step);
    }
}

TEST_CASE("round ticks: two to twelve numbers, apart, whole and exact, on 2000 axes of any range and size") {
    std::mt19937 random(20241);
    auto const uniform = [&](double from, double to) {
        return from + (to - from) * (static_cast<double>(random()) / 4294967296.0);
    };
    int wrong = 0;
    for (int i = 0; i < 2000; ++i) {
        TickSpan span;
        span.is_log = i % 4 == 3;
        if (span.is_log) {
            span.first = std::pow(10, uniform(-12, 12));
            span.last = span.first * std::pow(10, std::pow(10, uniform(-1.5, 1.4)));
        } else {
            double const size = std::pow(10, uniform(-9, 9));
            span.first = uniform(-2, 2) * size * (i % 3 == 0 ? std::pow(10, uniform(0, 4)) : 1);
            span.last = span.first + size * uniform(0.1, 1);
        }
        if (i % 5 == 0) std::swap(span.first, span.last);
        double const length = std::pow(10, uniform(2.2, 3.2));
        const LabelRoom room =
            i % 2 == 0 ? beside_x_axis(length, uniform(15, 60)) : beside_y_axis(length / 2);
        const std::string fault = complaint(span, room, round_ticks(span, room, {}));
        if (fault.empty()) continue;
        ++wrong;
        CHECK_MESSAGE(fault.empty(), span.first, " .. ", span.last, span.is_log ? " log" : "", " on ",
                      room.length, ": ", fault);
    }
    CHECK(wrong == 0);
}

TEST_CASE("round ticks: where there is hardly room, fewer labels, never any that overlap or are cut") {
    for (double length = 4; length < 160; length += 3) {
        for (bool const is_log : {false, true}) {
            const TickSpan span{1234, 98765, is_log};
            const LabelRoom room = beside_x_axis(length, 8);
            auto const chosen = round_ticks(span, room, {});
            auto const numbers = labelled(chosen);
            CHECK(chosen.ticks.size() >= 1);
            if (numbers.size() >= 2) CHECK(complaint(span, room, chosen) == "");
        }
    }
}

TEST_CASE("round ticks: stay where they are while an axis is moved") {
    for (double const span : {1.0, 7.3, 104.0, 0.03}) {
        const LabelRoom room = beside_x_axis(400);
        auto const step = common_step(round_ticks({0, span, false}, room, {}));
        for (int i = -40; i <= 40; ++i) {
            double const low = span * i / 13;
            const RoundTicks chosen = round_ticks({low, low + span, false}, room, {});
            CHECK(*common_step(chosen) == doctest::Approx(*step));
            CHECK(std::abs(std::remainder(chosen.ticks[0].value, *step)) < 1e-9 * span);
        }
    }
}

TEST_CASE("round ticks: at the ends of arithmetic") {
    constexpr double largest = std::numeric_limits<double>::max();
    constexpr double infinite = std::numeric_limits<double>::infinity();
    const LabelRoom room = beside_x_axis(600, 100);
    for (TickSpan const& span : {TickSpan{-largest, largest},
                                 {1, std::nextafter(1, 2)},
                                 {0, 5e-324},
                                 {1e15, 1e15 + 1},
                                 {5e-324, largest, true},
                                 {1, std::nextafter(1, 2), true},
                                 {1e300, largest},
                                 {-1e-310, 1e-310}}) {
        auto const numbers = labelled(round_ticks(span, room, {}));
        CHECK_MESSAGE(numbers.size() >= 2, span.first);
        for (RoundTick const& tick : numbers) CHECK(number_in(tick.label) == tick.value);
    }
    for (double const far : {1e300, 0.9 * largest, 1e-310})
        for (TickSpan const& span : {TickSpan{far, 1.0001 * far}, {-far, 0}, {far, 1.1 * far, true}})
            for (NumberStyle const& style : {NumberStyle{true, false}, {false, true}, {true, true}})
                for (RoundTick const& tick : round_ticks(span, room, style).ticks)
                    CHECK(std::isfinite(tick.value));
    CHECK(labelled(round_ticks({3, 3, false}, room, {})).size() == 1);
    for (TickSpan const& span : {TickSpan{0, infinite}, {std::nan(""), 1}, {0, 1, true}, {-1, 1, true}})
        CHECK(round_ticks(span, room, {}).ticks.empty());
    CHECK(round_ticks({0, 1, false}, beside_x_axis(0), {}).ticks.empty());
}

TEST_CASE("round ranges: outwards to a part of a tick step") {
    struct {
        RoundRange data, range;
    } const cases[]{{{313, 417}, {310, 420}},
                    {{3, 97}, {0, 100}},
                    {{0.2, 9.8}, {0, 10}},
                    {{0, 10}, {0, 10}},
                    {{-0.98, 0.99}, {-1, 1}},
                    {{97, 3}, {0, 100}},
                    {{0, 0}, {-1, 1}},
                    {{3, 800, true}, {2, 1000, true}},
                    {{1e-7, 3e12, true}, {1e-7, 5e12, true}},
                    {{21, 33, true}, {21, 33, true}},
                    {{-5, 1000, true}, {10, 1000, true}},
                    {{-5, -1, true}, {-5, -1}}};
    for (auto const& row : cases) {
        RoundRange const &data = row.data, &range = row.range;
        const RoundRange rounded = round_range(data);
        CHECK_MESSAGE(rounded.low == range.low, data.low, " .. ", data.high);
        CHECK_MESSAGE(rounded.high == range.high, data.low, " .. ", data.high);
        CHECK(rounded.is_log == range.is_log);
    }
    CHECK_THROWS_AS(round_range({0, std::numeric_limits<double>::infinity()}), qv::Fault);
    for (double const value : {1e300, -5e-324, 1.7e308, 42.0}) {
        const RoundRange around = round_range({value, value});
        CHECK(around.low < value);
        CHECK(around.high > value);
    }
}
