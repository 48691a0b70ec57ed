#include "scale/time_ticks.h"

#include "base/text.h"
#include "scale/time_text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <set>
#include <utility>

namespace qv::scale {
namespace {

using namespace std::chrono;

constexpr std::size_t most_labels = 12;
constexpr double fewest_labels = 2;
constexpr double shortest_span = 2e-6; // seconds

// A month may be so much shorter than the mean one, and a day on which clocks are put forward than a day.
constexpr double shortest_share = 0.92;

constexpr CalendarStep microseconds_(std::int64_t count) {
    return {CalendarUnit::Microsecond, count};
}
constexpr CalendarStep milliseconds_(std::int64_t count) {
    return microseconds_(1000 * count);
}
constexpr CalendarStep seconds_(std::int64_t count) {
    return milliseconds_(1000 * count);
}
constexpr CalendarStep minutes_(std::int64_t count) {
    return seconds_(60 * count);
}
constexpr CalendarStep hours_(std::int64_t count) {
    return minutes_(60 * count);
}
constexpr CalendarStep days_(std::int64_t count) {
    return {CalendarUnit::Day, count};
}
constexpr CalendarStep weeks_(std::int64_t count) {
    return {CalendarUnit::Week, count};
}
constexpr CalendarStep months_(std::int64_t count) {
    return {CalendarUnit::Month, count};
}
constexpr CalendarStep years_(std::int64_t count) {
    return months_(12 * count);
}

struct StepRow {
    CalendarStep major;
    CalendarStep minor; // equal to the major one: no minor ticks
};

// From fine to coarse.
constexpr std::array step_rows{
    StepRow{microseconds_(1), microseconds_(1)},
    StepRow{microseconds_(2), microseconds_(1)},
    StepRow{microseconds_(5), microseconds_(1)},
    StepRow{microseconds_(10), microseconds_(2)},
    StepRow{microseconds_(20), microseconds_(5)},
    StepRow{microseconds_(50), microseconds_(10)},
    StepRow{microseconds_(100), microseconds_(20)},
    StepRow{microseconds_(200), microseconds_(50)},
    StepRow{microseconds_(500), microseconds_(100)},
    StepRow{milliseconds_(1), microseconds_(200)},
    StepRow{milliseconds_(2), microseconds_(500)},
    StepRow{milliseconds_(5), milliseconds_(1)},
    StepRow{milliseconds_(10), milliseconds_(2)},
    StepRow{milliseconds_(20), milliseconds_(5)},
    StepRow{milliseconds_(50), milliseconds_(10)},
    StepRow{milliseconds_(100), milliseconds_(20)},
    StepRow{milliseconds_(200), milliseconds_(50)},
    StepRow{milliseconds_(500), milliseconds_(100)},
    StepRow{seconds_(1), milliseconds_(200)},
    StepRow{seconds_(2), milliseconds_(500)},
    StepRow{seconds_(5), seconds_(1)},
    StepRow{seconds_(10), seconds_(2)},
    StepRow{seconds_(15), seconds_(5)},
    StepRow{seconds_(30), seconds_(5)},
    StepRow{minutes_(1), seconds_(15)},
    StepRow{minutes_(2), seconds_(30)},
    StepRow{minutes_(5), minutes_(1)},
    StepRow{minutes_(10), minutes_(2)},
    StepRow{minutes_(15), minutes_(5)},
    StepRow{minutes_(30), minutes_(5)},
    StepRow{hours_(1), minutes_(15)},
    StepRow{hours_(2), minutes_(30)},
    StepRow{hours_(3), hours_(1)},
    StepRow{hours_(6), hours_(1)},
    StepRow{hours_(12), hours_(3)},
    StepRow{days_(1), hours_(6)},
    StepRow{days_(2), days_(1)},
    StepRow{weeks_(1), days_(1)},
    StepRow{weeks_(2), weeks_(1)},
    StepRow{months_(1), months_(1)},
    StepRow{months_(2), months_(1)},
    StepRow{months_(3), months_(1)},
    StepRow{months_(6), months_(1)},
    StepRow{years_(1), months_(3)},
    StepRow{years_(2), months_(6)},
    StepRow{years_(5), years_(1)},
    StepRow{years_(10), years_(2)},
    StepRow{years_(20), years_(5)},
    StepRow{years_(50), years_(10)},
    StepRow{years_(100), years_(20)},
    StepRow{years_(200), years_(50)},
    StepRow{years_(500), years_(100)},
    StepRow{years_(1000), years_(200)},
    StepRow{years_(2000), years_(500)},
    StepRow{years_(5000), years_(1000)},
};

// What automatic ranges are rounded to, from fine to coarse.
constexpr std::array rounding_steps{
    microseconds_(1),   microseconds_(10), microseconds_(100), milliseconds_(1), milliseconds_(10),
    milliseconds_(100), seconds_(1),       seconds_(5),        seconds_(15),     minutes_(1),
    minutes_(5),        minutes_(15),      hours_(1),          hours_(3),        days_(1),
    months_(1),         years_(1),         years_(10),         years_(100),
};

/// The widest line of a text, or whatever it takes along the axis.
double extent_of(TimeScale const& scale, std::string_view text) {
    double extent = 0;
    for (std::string_view const line : lines_of(text)) extent = std::max(extent, scale.size_along(line));
    return extent;
}

double span_of(TimeScale const& scale) {
    return scale.high - scale.low;
}

std::string label_text(TimeScale const& scale, LocalTime time, TimeLabelStyle style) {
    return pattern_text(time, scale.pattern).value_or(fine_text(time, style));
}

// Between labels of a step, at the least: their usual size, found for times of all months, so that it does
// not depend on what is seen just now. In one line a label may have its coarser part beside it.
double needed_room(TimeScale const& scale, CalendarStep step) {
    const TimeLabelStyle style = label_style(step);
    std::set<std::string> texts;
    double with_coarse = 0;
    std::optional<LocalTime> before;
    for (unsigned m = 1; m <= 12; ++m) {
        const LocalTime time = local_days{year{2028} / month{m} / 28} + 20h + 58min + 58s + 888888us;
        texts.insert(label_text(scale, time, style));
        if (before && scale.lines == TimeLabelLines::One && scale.pattern.empty() && m == 9)
            with_coarse = scale.size_along(
                joined_text(fine_text(time, style), coarse_text(time, before, style.detail), style.detail));
        before = time;
    }
    double widest = 0;
    for (std::string const& text : texts) widest = std::max(widest, extent_of(scale, text));
    return std::max(widest, (widest + with_coarse) / 2) + scale.gap;
}

// Whether the host's pattern has another text for each step.
bool tells_steps_apart(TimeScale const& scale, CalendarStep step) {
    if (scale.pattern.empty()) return true;
    const std::int64_t index = step.index(local_days{year{2028} / March / 1});
    std::array<std::optional<std::string>, 3> texts;
    for (std::int64_t i = 0; i < 3; ++i)
        texts[static_cast<std::size_t>(i)] = pattern_text(step.begin(index + i), scale.pattern);
    return texts[0] != texts[1] && texts[1] != texts[2];
}

// By which two values may come nearer to one another than the moments that they stand for.
double rounding_of_values(TimeScale const& scale) {
    double const largest = std::max(std::abs(scale.low), std::abs(scale.high));
    return 2 * (std::nextafter(largest, HUGE_VAL) - largest);
}

struct Choice {
    StepRow const* row;
    bool hides_repeats = false; // a coarser step would tell labels apart, but has too few
};

Choice choose_step(TimeScale const& scale) {
    double const span = span_of(scale);
    auto const fits = [&](StepRow const& row) {
        double const number = span / row.major.seconds();
        double const share = row.major.unit < CalendarUnit::Day ? 1 : shortest_share;
        double const shortest = row.major.seconds() * share - rounding_of_values(scale);
        return number < most_labels && shortest * scale.length / span >= needed_room(scale, row.major);
    };
    auto const apart = [&](StepRow const& row) { return tells_steps_apart(scale, row.major); };
    auto const found =
        std::ranges::find_if(step_rows, [&](StepRow const& row) { return fits(row) && apart(row); });
    bool const can_tell = found != step_rows.end();
    auto row = can_tell ? found : std::ranges::find_if(step_rows, fits);
    if (row == step_rows.end()) --row;
    while (row != step_rows.begin() && span / row->major.seconds() < fewest_labels) --row;
    return {row, can_tell && row != found && !apart(*row)};
}

/// A label while it is decided what of it is shown. Extents are along the axis, from the low end.
struct Label {
    std::size_t tick = 0;
    double middle = 0;
    LocalTime time;
    std::string fine;
    std::string coarse;
};

class LabelRow {
public:
    LabelRow(TimeScale const& scale, Choice const& choice)
        : scale_(scale), style_(label_style(choice.row->major)), hides_repeats_(choice.hides_repeats) {}

    // A label beside those before it, with its coarser part where that is another. A change of the coarser
    // part is worth more than the part at the beginning, which the change tells as well, and than a label
    // without one.
    void add(std::size_t tick, double middle, LocalTime time) {
        Label label{tick, middle, time, label_text(scale_, time, style_), {}};
        if (hides_repeats_ && !labels_.empty() && labels_.back().fine == label.fine) return;
        label.coarse = coarse(time, context());
        if (add_if_free(label)) return;
        if (!label.coarse.empty() && add_instead_of_first_coarse(label)) return;
        if (!label.coarse.empty() && add_instead_of_plain(label)) return;
        label.coarse.clear();
        add_if_free(label);
    }

    void write(std::vector<TimeTick>& ticks) const {
        for (Label const& label : labels_) ticks[label.tick].label = text_of(label);
    }

private:
    std::optional<LocalTime> context() const {
        for (auto label = labels_.rbegin(); label != labels_.rend(); ++label)
            if (!label->coarse.empty()) return label->time;
        return std::nullopt;
    }

    std::string coarse(LocalTime time, std::optional<LocalTime> before) const {
        return scale_.pattern.empty() ? coarse_text(time, before, style_.detail) : std::string();
    }

    bool one_line() const { return scale_.lines == TimeLabelLines::One; }

    std::string text_of(Label const& label) const {
        if (label.coarse.empty() || one_line()) return joined_text(label.fine, label.coarse, style_.detail);
        return scale_.lines == TimeLabelLines::CoarseAbove ? label.coarse + "\n" + label.fine
                                                           : label.fine + "\n" + label.coarse;
    }

    // Lines beside each other: the fine ones, or the whole labels, and the coarse ones.
    std::array<std::string, 2> lines(Label const& label) const {
        if (one_line()) return {text_of(label), ""};
        return {label.fine, label.coarse};
    }

    bool is_cut(Label const& label) const {
        return std::ranges::any_of(lines(label), [&](std::string const& line) {
            double const half = extent_of(scale_, line) / 2;
            return label.middle - half < -scale_.room_before
                   || label.middle + half > scale_.length + scale_.room_after;
        });
    }

    bool touch(Label const& a, Label const& b) const {
        const std::array<std::string, 2> of_a = lines(a), of_b = lines(b);
        for (std::size_t i = 0; i < 2; ++i) {
            if (of_a[i].empty() || of_b[i].empty()) continue;
            double const room = std::abs(a.middle - b.middle);
            if (room < (extent_of(scale_, of_a[i]) + extent_of(scale_, of_b[i])) / 2 + scale_.gap)
                return true;
        }
        return false;
    }

    bool is_free(Label const& label) const {
        return labels_.size() < most_labels && !is_cut(label)
               && std::ranges::none_of(labels_, [&](Label const& other) { return touch(label, other); });
    }

    bool add_if_free(Label const& label) {
        if (!is_free(label)) return false;
        labels_.push_back(label);
        return true;
    }

    bool add_instead_of_first_coarse(Label label) {
        auto const has_coarse = [](Label const& l) { return !l.coarse.empty(); };
        if (std::ranges::count_if(labels_, has_coarse) != 1) return false;
        auto const first = std::ranges::find_if(labels_, has_coarse);
        label.coarse = coarse(label.time, std::nullopt);
        const std::string kept = std::exchange(first->coarse, {});
        if (add_if_free(label)) return true;
        first->coarse = kept;
        return false;
    }

    bool add_instead_of_plain(Label const& label) {
        if (labels_.empty() || !labels_.back().coarse.empty()) return false;
        const Label kept = std::move(labels_.back());
        labels_.pop_back();
        if (add_if_free(label)) return true;
        labels_.push_back(kept);
        return false;
    }

    TimeScale const& scale_;
    TimeLabelStyle style_;
    bool hides_repeats_;
    std::vector<Label> labels_;
};

double along(TimeScale const& scale, double value) {
    return (value - scale.low) / span_of(scale) * scale.length;
}

void add_minors(TimeScale const& scale, CalendarStep step, Instant low, Instant high,
                std::vector<TimeTick>& ticks) {
    double const number = span_of(scale) / step.seconds();
    if (!(scale.length >= number * scale.minor_gap)) return;
    std::vector<TimeTick> minors;
    for (const Instant place : step_places(step, low, high, scale.zone))
        minors.push_back({seconds_of(place), false, {}});
    std::vector<TimeTick> all;
    // Of equal ones the first range's comes first.
    std::ranges::merge(ticks, minors, std::back_inserter(all), {}, &TimeTick::value, &TimeTick::value);
    auto const same_place = [](TimeTick const& a, TimeTick const& b) { return a.value == b.value; };
    all.erase(std::unique(all.begin(), all.end(), same_place), all.end());
    ticks = std::move(all);
}

/// Moments that stand at 0, 1, 2, ... on a scale, and which of them it shows.
class TimeCategories {
public:
    TimeCategories(TimeScale const& scale, std::span<double const> times) : scale_(scale), times_(times) {
        double const last = static_cast<double>(times.size()) - 1;
        first_ = static_cast<std::size_t>(std::clamp(std::ceil(scale.low), 0.0, last + 1));
        end_ = static_cast<std::size_t>(std::clamp(std::floor(scale.high), -1.0, last) + 1);
    }

    bool empty() const { return first_ >= end_; }
    /// From the first moment shown to the last.
    std::optional<std::pair<Instant, Instant>> span() const {
        auto const low = instant_of(times_[first_]), high = instant_of(times_[end_ - 1]);
        return low && high ? std::optional(std::pair(*low, *high)) : std::nullopt;
    }
    /// The first of each step, as far as they are shown.
    std::vector<std::size_t> at_steps(CalendarStep step) const {
        std::vector<std::size_t> found;
        auto const ends = span();
        for (const Instant place :
             step_places(step, round_down(step, ends->first, scale_.zone), ends->second, scale_.zone)) {
            auto const time = std::ranges::lower_bound(times_, seconds_of(place));
            auto const number = static_cast<std::size_t>(time - times_.begin());
            bool const is_new = found.empty() || found.back() != number;
            if (number >= first_ && number < end_ && is_new) found.push_back(number);
        }
        return found;
    }
    bool has_too_many(CalendarStep step) const {
        constexpr double most_places = 4096;
        return (times_[end_ - 1] - times_[first_]) / step.seconds() > most_places;
    }
    std::size_t count() const { return end_ - first_; }
    LocalTime local(std::size_t number) const { return scale_.zone.local(*instant_of(times_[number])); }

private:
    TimeScale const& scale_;
    std::span<double const> times_;
    std::size_t first_ = 0, end_ = 0;
};

/// The finest step whose labels have room, and of several that lead to the same categories the coarsest; if
/// it has fewer than two labels, a finer one some of whose labels are left out.
struct CategoryChoice {
    Choice choice{&step_rows.back()};
    std::vector<std::size_t> numbers;
};
CategoryChoice choose_step(TimeScale const& scale, TimeCategories const& categories) {
    CategoryChoice chosen;
    for (auto row = step_rows.rbegin(); row != step_rows.rend() && !categories.has_too_many(row->major);
         ++row) {
        if (!tells_steps_apart(scale, row->major) && !chosen.numbers.empty()) continue;
        std::vector<std::size_t> numbers = categories.at_steps(row->major);
        if (numbers.size() <= chosen.numbers.size()) continue;
        bool const is_each = numbers.size() == categories.count();
        double const apart = scale.length / span_of(scale) * static_cast<double>(categories.count())
                             / static_cast<double>(numbers.size()) * (is_each ? 1 : shortest_share);
        bool const fits = numbers.size() <= most_labels && apart >= needed_room(scale, row->major);
        if (!fits && static_cast<double>(chosen.numbers.size()) >= fewest_labels) break;
        chosen = {{&*row}, std::move(numbers)};
        if (is_each) break;
    }
    return chosen;
}

} // namespace

std::optional<std::vector<TimeTick>> category_time_ticks(TimeScale const& scale,
                                                         std::span<double const> times) {
    const TimeCategories categories(scale, times);
    if (categories.empty() || !(span_of(scale) > 0)) return std::vector<TimeTick>();
    if (!categories.span()) return std::nullopt;
    const CategoryChoice chosen = choose_step(scale, categories);
    std::vector<TimeTick> ticks;
    LabelRow labels(scale, chosen.choice);
    for (std::size_t const number : chosen.numbers) {
        auto const value = static_cast<double>(number);
        ticks.push_back({value, true, {}});
        labels.add(ticks.size() - 1, along(scale, value), categories.local(number));
    }
    labels.write(ticks);
    return ticks;
}

std::optional<std::vector<TimeTick>> time_ticks(TimeScale const& scale) {
    auto const low = instant_of(scale.low), high = instant_of(scale.high);
    if (!low || !high || !(span_of(scale) >= shortest_span)) return std::nullopt;
    const Choice choice = choose_step(scale);
    std::vector<TimeTick> ticks;
    LabelRow labels(scale, choice);
    for (const Instant place : step_places(choice.row->major, *low, *high, scale.zone)) {
        double const value = seconds_of(place);
        if (value < scale.low || value > scale.high) continue; // by less than a microsecond
        ticks.push_back({value, true, {}});
        labels.add(ticks.size() - 1, along(scale, value), scale.zone.local(place));
    }
    labels.write(ticks);
    if (choice.row->minor != choice.row->major) add_minors(scale, choice.row->minor, *low, *high, ticks);
    return ticks;
}

std::optional<TimeRange> automatic_time_range(double low, double high, TimeZone const& zone) {
    constexpr double least_parts = 20;
    constexpr double half_a_day = 43200;
    if (high < low) std::swap(low, high);
    if (low == high) low -= half_a_day, high += half_a_day;
    auto const first = instant_of(low), last = instant_of(high);
    if (!first || !last) return std::nullopt;
    CalendarStep step = rounding_steps.front();
    for (CalendarStep const& coarser : rounding_steps)
        if (coarser.seconds() * least_parts <= high - low) step = coarser;
    const TimeRange range{std::min(low, seconds_of(round_down(step, *first, zone))),
                          std::max(high, seconds_of(round_up(step, *last, zone)))};
    return range;
}

} // namespace qv::scale
