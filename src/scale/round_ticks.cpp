#include "scale/round_ticks.h"

#include "scale/decimal_step.h"
#include "scale/number_form.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <set>
#include <utility>

namespace qv::scale {
namespace {

constexpr double tolerance = 1e-9;              // of the span: a tick this far beyond an end stands on it
constexpr double most_steps = 10;               // within the span
constexpr double fewest_steps = 2;              // so that two ticks are in sight wherever it lies
constexpr double least_minor_spacing = 0.4;     // heights of a line
constexpr double least_log_minor_spacing = 0.2; // of the narrowest, between 9 and 10
constexpr double powers_only = 2;   // powers of ten in sight from which on their multiples have no label
constexpr double digits_only = 0.8; // and below which 1, 2 and 5 times one may be too few

// A tick that is to have a label.
struct Candidate {
    double value = 0;
    double place = 0; // along the axis, from the end with the lower value
    std::string label;
    double extent = 0;
};

double reach_low(Candidate const& tick) {
    return tick.place - tick.extent / 2;
}
double reach_high(Candidate const& tick) {
    return tick.place + tick.extent / 2;
}

struct Values {
    std::vector<Decimal> numbers;
    std::vector<std::string> labels;
};

class SeenAxis {
public:
    SeenAxis(TickSpan const& span, LabelRoom const& given_room)
        : low(std::min(span.first, span.last)), high(std::max(span.first, span.last)), is_log(span.is_log),
          room(given_room) {}

    double const low, high;
    bool const is_log;
    LabelRoom const& room;

    double span() const { return high - low; }
    double powers() const { return std::log10(high) - std::log10(low); }
    double largest() const { return std::max(std::abs(low), std::abs(high)); }
    double place(double value) const {
        double const share =
            is_log ? (std::log10(value) - std::log10(low)) / powers() : (value - low) / span();
        return share * room.length;
    }
    bool holds(double value) const {
        if (!std::isfinite(value) || (is_log && !(value > 0))) return false;
        double const along = place(value), slack = tolerance * room.length;
        return along >= -slack && along <= room.length + slack;
    }
    Candidate candidate(double value, std::string label) const {
        double const extent = room.extent(label);
        return {value, place(value), std::move(label), extent};
    }
    bool is_cut(Candidate const& tick) const {
        return reach_low(tick) < -room.before_low || reach_high(tick) > room.length + room.beyond_high;
    }
    bool apart(Candidate const& low_tick, Candidate const& high_tick) const {
        return reach_low(high_tick) - reach_high(low_tick) >= room.gap;
    }
};

using Candidates = std::vector<Candidate>;

// A whole number as such, as far as doubles count one by one.
std::int64_t whole_number(double number) {
    constexpr double most = 9e15;
    return std::isnan(number) ? 0 : static_cast<std::int64_t>(std::clamp(number, -most, most));
}

// Whether all labels have room beside each other and differ, and two or more are inside the room.
bool fits(SeenAxis const& axis, Candidates const& ticks) {
    std::set<std::string_view> texts;
    std::ptrdiff_t whole = 0;
    for (std::size_t i = 0; i < ticks.size(); ++i) {
        if (i > 0 && !axis.apart(ticks[i - 1], ticks[i])) return false;
        if (!texts.insert(ticks[i].label).second) return false;
        whole += !axis.is_cut(ticks[i]);
    }
    return whole >= 2;
}

std::vector<RoundTick> with_labels(SeenAxis const& axis, Candidates ticks) {
    std::vector<RoundTick> labelled;
    for (Candidate& tick : ticks)
        labelled.push_back({tick.value, true, axis.is_cut(tick) ? "" : std::move(tick.label)});
    return labelled;
}

// The outermost two labels that have room; empty where no two have.
std::vector<RoundTick> with_outermost_labels(SeenAxis const& axis, Candidates const& ticks) {
    auto const whole = [&](Candidate const& tick) { return !axis.is_cut(tick); };
    auto const first = std::ranges::find_if(ticks, whole);
    auto const last = std::find_if(ticks.rbegin(), ticks.rend(), whole);
    if (first == ticks.end() || &*first == &*last) return {};
    if (!axis.apart(*first, *last) || first->label == last->label) return {};
    std::vector<RoundTick> labelled;
    for (Candidate const& tick : ticks)
        labelled.push_back({tick.value, true, &tick == &*first || &tick == &*last ? tick.label : ""});
    return labelled;
}

// The one label that keeps inside, if one does.
std::vector<RoundTick> with_one_label(SeenAxis const& axis, Candidates const& ticks) {
    bool labelled = false;
    std::vector<RoundTick> result;
    for (Candidate const& tick : ticks) {
        bool const labels = !labelled && !axis.is_cut(tick);
        labelled = labelled || labels;
        result.push_back({tick.value, true, labels ? tick.label : ""});
    }
    return result;
}

// For an axis that has no room for the labels of any regular choice: the first choice of two labels.
std::vector<RoundTick> crowded(SeenAxis const& axis, std::vector<Candidates> const& choices) {
    for (Candidates const& ticks : choices)
        if (auto labelled = with_outermost_labels(axis, ticks); !labelled.empty()) return labelled;
    for (Candidates const& ticks : choices)
        if (ticks.size() >= 2) return with_one_label(axis, ticks);
    return choices.empty() ? std::vector<RoundTick>() : with_one_label(axis, choices.front());
}

std::vector<Decimal> multiples(SeenAxis const& axis, DecimalStep step) {
    constexpr double most = 1000; // more would be no ticks
    double const size = step.size();
    double const first = std::floor(axis.low / size), last = std::ceil(axis.high / size);
    std::vector<Decimal> numbers;
    if (!(last - first < most)) return numbers;
    for (auto count = whole_number(first); count <= whole_number(last); ++count)
        if (const Decimal number = step.times(count); axis.holds(number.value())) numbers.push_back(number);
    return numbers;
}

void add_minors(SeenAxis const& axis, RoundTicks& chosen, std::vector<Decimal> const& numbers) {
    std::vector<double> places;
    for (RoundTick const& tick : chosen.ticks) places.push_back(tick.value);
    std::vector<RoundTick> minors;
    double const least =
        (axis.is_log ? least_log_minor_spacing : least_minor_spacing) * axis.room.line_height;
    for (Decimal const& number : numbers) {
        double const value = number.value();
        if (!axis.holds(value) || std::ranges::find(places, value) != places.end()) continue;
        if (!minors.empty() && axis.place(value) - axis.place(minors.back().value) < least) return;
        minors.push_back({value, false, {}});
    }
    chosen.ticks.insert(chosen.ticks.end(), minors.begin(), minors.end());
}

// What all numbers of a span share, in whole units of a power of ten: nothing where it saves few digits.
Decimal shared_part(SeenAxis const& axis) {
    constexpr double worth_it = 1000; // times the span
    if (!(axis.largest() > worth_it * axis.span())) return {};
    const DecimalStep unit(4 * (decimal_exponent(axis.span()) + 1));
    return unit.times(whole_number(std::floor(axis.low / unit.size())));
}

/// Writes the numbers of a linear axis.
class NumberWriter {
public:
    NumberWriter(SeenAxis const& axis, NumberStyle const& style) : axis_(axis), style_(style) {
        if (style.with_offset && !style.text && !axis.is_log) shared_ = shared_part(axis);
        largest_ = axis.largest();
        if (shared_.digits == 0) return;
        double const shared = shared_.value();
        largest_ = std::max(std::abs(axis.low - shared), std::abs(axis.high - shared));
    }

    void use(DecimalStep step) {
        last_place_ = step.times(1).exponent;
        form_ = style_.si_prefix ? si_form(largest_, last_place_) : number_form(largest_, last_place_);
    }
    std::string text(Decimal number) const {
        return style_.text ? style_.text(number.value()) : form_.text(reduced(number));
    }
    /// What any label takes at most while the axis is moved by up to its own span.
    double widest_extent(DecimalStep step) const {
        if (style_.text) return 0;
        auto const count = whole_number(std::ceil((largest_ + axis_.span()) / step.size()));
        return axis_.room.extent(form_.text(step.times(-count)));
    }
    std::string offset() const {
        if (shared_.digits == 0) return {};
        const std::string text = number_form(std::abs(shared_.value()), shared_.exponent).text(shared_);
        return shared_.digits > 0 ? "+" + text : text;
    }

private:
    Decimal reduced(Decimal number) const {
        Decimal shared = shared_;
        for (; shared.digits != 0 && shared.exponent > number.exponent; --shared.exponent)
            shared.digits *= 10;
        return {number.digits - shared.digits, number.exponent};
    }

    SeenAxis const& axis_;
    NumberStyle const& style_;
    Decimal shared_;
    double largest_ = 0;
    int last_place_ = 0;
    NumberForm form_;
};

Candidates candidates(SeenAxis const& axis, std::vector<Decimal> const& numbers, auto const& text) {
    Candidates ticks;
    for (Decimal const& number : numbers) ticks.push_back(axis.candidate(number.value(), text(number)));
    return ticks;
}

Candidates stepped(SeenAxis const& axis, NumberWriter& writer, DecimalStep step) {
    writer.use(step);
    return candidates(axis, multiples(axis, step),
                      [&](Decimal const& number) { return writer.text(number); });
}

// On a linear axis all labels are apart if the widest fits between two ticks.
bool has_room(SeenAxis const& axis, NumberWriter& writer, DecimalStep step) {
    if (axis.is_log) return true;
    writer.use(step);
    return writer.widest_extent(step) + axis.room.gap <= step.size() / axis.span() * axis.room.length;
}

// Whether the next step, twice a 2.5, saves the labels a decimal and still has several of them in sight.
bool has_digit_to_spare(SeenAxis const& axis, DecimalStep step) {
    constexpr double several = 4; // steps within the span
    int const last_place = step.times(1).exponent;
    return last_place < 0 && step.coarser().times(1).exponent > last_place
           && step.coarser().size() * several <= axis.span() * (1 + tolerance);
}

// The finest step whose labels have room, in the span of a linear axis or the narrow one of a logarithmic
// one.
RoundTicks choose_step(SeenAxis const& axis, NumberStyle const& style) {
    NumberWriter writer(axis, style);
    double const spacing =
        std::max(axis.span() / most_steps, axis.span() * std::min(1.0, axis.room.spacing / axis.room.length));
    const DecimalStep coarsest = DecimalStep::at_most(axis.span() / fewest_steps);
    RoundTicks chosen{{}, writer.offset(), !style.text};
    for (auto step = std::min(DecimalStep::at_least(spacing), coarsest); step <= coarsest;
         step = step.coarser()) {
        if (!has_room(axis, writer, step)) continue;
        if (!style.text && has_digit_to_spare(axis, step)) continue;
        Candidates ticks = stepped(axis, writer, step);
        if (!fits(axis, ticks)) continue;
        chosen.ticks = with_labels(axis, std::move(ticks));
        add_minors(axis, chosen, multiples(axis, step.minor()));
        return chosen;
    }
    std::vector<Candidates> choices;
    for (auto step = coarsest; step.size() >= axis.span() / most_steps; step = step.finer())
        choices.push_back(stepped(axis, writer, step));
    chosen.ticks = crowded(axis, choices);
    return chosen;
}

int lowest_power(SeenAxis const& axis) {
    return static_cast<int>(std::floor(std::log10(axis.low)));
}
int highest_power(SeenAxis const& axis) {
    return static_cast<int>(std::ceil(std::log10(axis.high)));
}

std::vector<Decimal> powers(SeenAxis const& axis, int stride) {
    std::vector<Decimal> numbers;
    for (int power = lowest_power(axis); power <= highest_power(axis); ++power)
        if (power % stride == 0 && axis.holds(Decimal{1, power}.value())) numbers.push_back({1, power});
    return numbers;
}

std::vector<Decimal> digits_of_powers(SeenAxis const& axis, std::vector<int> const& digits) {
    std::vector<Decimal> numbers;
    for (int power = lowest_power(axis); power <= highest_power(axis); ++power)
        for (int const digit : digits)
            if (axis.holds(Decimal{digit, power}.value())) numbers.push_back({digit, power});
    return numbers;
}

RoundTicks choose_powers(SeenAxis const& axis, NumberStyle const& style) {
    auto const text = [&](Decimal const& number) {
        if (style.text) return style.text(number.value());
        if (style.si_prefix) return si_form(number.value(), number.exponent).text(number);
        return power_text(1, number.exponent);
    };
    RoundTicks chosen{{}, {}, !style.text};
    double const a_power = axis.room.length / axis.powers();
    std::vector<Candidates> choices;
    for (int const stride : {1, 2, 3, 5, 10, 20, 30, 50, 100, 200, 300}) {
        bool const spaced = stride * a_power >= axis.room.spacing && axis.powers() <= stride * most_steps;
        Candidates ticks = candidates(axis, powers(axis, stride), text);
        if (!spaced || !fits(axis, ticks)) {
            choices.insert(choices.begin(), std::move(ticks));
            continue;
        }
        chosen.ticks = with_labels(axis, std::move(ticks));
        bool const minors_have_room =
            a_power * std::log10(10.0 / 9) >= least_log_minor_spacing * axis.room.line_height;
        if (stride == 1 && minors_have_room)
            add_minors(axis, chosen, digits_of_powers(axis, {2, 3, 4, 5, 6, 7, 8, 9}));
        else
            add_minors(axis, chosen, powers(axis, 1));
        return chosen;
    }
    std::erase_if(choices, [](Candidates const& ticks) { return ticks.size() < 2; });
    chosen.ticks = crowded(axis, choices);
    return chosen;
}

// 1, 2 and 5 times the powers of ten, or less of them; empty where no two of them have room.
std::optional<RoundTicks> choose_digits(SeenAxis const& axis, NumberStyle const& style) {
    constexpr double smallest_fixed = 1e-3, first_scientific = 1e5;
    bool const fixed = axis.low >= smallest_fixed && axis.high < first_scientific;
    for (std::vector<int> const& digits : {std::vector{1, 2, 5}, {1, 5}, {1, 3}, {1}}) {
        const std::vector<Decimal> numbers = digits_of_powers(axis, digits);
        if (numbers.size() < 2) continue;
        const NumberForm form = number_form(axis.high, numbers.front().exponent);
        auto const text = [&](Decimal const& number) {
            if (style.text) return style.text(number.value());
            if (style.si_prefix) return si_form(number.value(), number.exponent).text(number);
            return fixed ? form.text(number) : power_text(static_cast<int>(number.digits), number.exponent);
        };
        Candidates ticks = candidates(axis, numbers, text);
        if (!fits(axis, ticks)) continue;
        RoundTicks chosen{with_labels(axis, std::move(ticks)), {}, !style.text};
        add_minors(axis, chosen, digits_of_powers(axis, {1, 2, 3, 4, 5, 6, 7, 8, 9}));
        return chosen;
    }
    return std::nullopt;
}

// Where the arithmetic ends, nothing round can be found.
bool has_round_values(SeenAxis const& axis) {
    return std::isfinite(axis.span()) && axis.span() > std::max(1e-300, axis.largest() * 1e-14);
}

RoundTicks ticks_at_ends(SeenAxis const& axis, NumberStyle const& style) {
    auto const text = [&](double value) { return style.text ? style.text(value) : shortest_text(value); };
    Candidates ticks{{axis.low, 0, text(axis.low), 0}, {axis.high, axis.room.length, text(axis.high), 0}};
    if (axis.low == axis.high) ticks.pop_back();
    for (Candidate& tick : ticks) tick.extent = axis.room.extent(tick.label);
    return {crowded(axis, {ticks}), {}, !style.text};
}

RoundTicks choose_on_log(SeenAxis const& axis, NumberStyle const& style) {
    if (axis.powers() >= powers_only) return choose_powers(axis, style);
    if (axis.powers() >= digits_only)
        if (auto const chosen = choose_digits(axis, style)) return *chosen;
    return has_round_values(axis) ? choose_step(axis, style) : ticks_at_ends(axis, style);
}

} // namespace

RoundTicks round_ticks(TickSpan const& span, LabelRoom const& room, NumberStyle const& style) {
    if (!std::isfinite(span.first) || !std::isfinite(span.last) || !(room.length > 0)) return {};
    if (span.is_log && !(span.first > 0 && span.last > 0)) return {};
    const SeenAxis axis(span, room);
    if (axis.is_log && axis.powers() > 0) return choose_on_log(axis, style);
    return has_round_values(axis) ? choose_step(axis, style) : ticks_at_ends(axis, style);
}

} // namespace qv::scale
