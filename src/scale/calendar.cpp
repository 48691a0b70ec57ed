#include "scale/calendar.h"

#include <algorithm>
#include <cmath>

namespace qv::scale {
namespace {

using namespace std::chrono;

constexpr local_days first_monday = local_days{year{1970} / January / 5};
constexpr int most_pairs = 15; // of days in a month

std::int64_t floor_divide(std::int64_t a, std::int64_t b) {
    return a / b - (a % b < 0 ? 1 : 0);
}

std::int64_t month_number(year_month_day const& date) {
    return static_cast<int>(date.year()) * std::int64_t{12} + static_cast<unsigned>(date.month()) - 1;
}

local_days first_of_month(std::int64_t number) {
    const year y{static_cast<int>(floor_divide(number, 12))};
    const month m{static_cast<unsigned>(number - floor_divide(number, 12) * 12 + 1)};
    return local_days{y / m / 1};
}

// Steps of two days in a month; the last one may have a third day.
std::int64_t pairs_in_month(std::int64_t number) {
    return (first_of_month(number + 1) - first_of_month(number)).count() / 2;
}

bool holds_midnight(LocalTime from, LocalTime end) {
    return ceil<days>(from) < end;
}

// Within a day clocks run evenly between two changes of a zone's offset, so places are found from one to the
// next.
std::vector<Instant> places_within_days(CalendarStep step, Instant low, Instant high, TimeZone const& zone) {
    std::vector<Instant> places;
    LocalTime last = LocalTime::min();
    auto const add = [&](Instant place, LocalTime shown) {
        bool const too_near =
            !places.empty() && shown <= last && place - places.back() < microseconds{step.count};
        if (too_near || (!places.empty() && place == places.back())) return;
        places.push_back(place);
        last = shown;
    };
    ZoneStretch before = zone.stretch(low - microseconds{1});
    for (ZoneStretch now = zone.stretch(low); now.begin <= high; before = now, now = zone.stretch(now.end)) {
        auto const shown = [&](Instant time) { return LocalTime(time.time_since_epoch() + now.offset); };
        const LocalTime jump_from(now.begin.time_since_epoch() + before.offset);
        if (now.begin >= low && holds_midnight(jump_from, shown(now.begin))) add(now.begin, shown(now.begin));
        const LocalTime first = shown(std::max(low, now.begin));
        std::int64_t index = step.index(first);
        if (step.begin(index) < first) ++index;
        for (;; ++index) {
            const Instant place(step.begin(index).time_since_epoch() - now.offset);
            if (place > high || place >= now.end) break;
            add(place, step.begin(index));
        }
        if (now.end > high) break;
    }
    return places;
}

std::vector<Instant> places_of_days(CalendarStep step, Instant low, Instant high, TimeZone const& zone) {
    std::vector<Instant> places;
    for (std::int64_t index = step.index(zone.local(low));; ++index) {
        const Instant place = zone.first_instant(step.begin(index));
        if (place > high) return places;
        if (place >= low && (places.empty() || place > places.back())) places.push_back(place);
    }
}

} // namespace

std::optional<Instant> instant_of(double value) {
    constexpr sys_days first = year{-9999} / January / 1, end = year{10000} / January / 1;
    double const whole = std::floor(value);
    auto const at = [](sys_days day) {
        return static_cast<double>(sys_seconds(day).time_since_epoch().count());
    };
    if (!(whole >= at(first) && whole < at(end))) return std::nullopt;
    return Instant(seconds{static_cast<std::int64_t>(whole)}
                   + microseconds{std::llround((value - whole) * 1e6)});
}

double seconds_of(Instant time) {
    auto const whole = floor<seconds>(time);
    return static_cast<double>(whole.time_since_epoch().count())
           + static_cast<double>((time - whole).count()) / 1e6;
}

std::int64_t CalendarStep::index(LocalTime time) const {
    if (unit == CalendarUnit::Microsecond) return floor_divide(time.time_since_epoch().count(), count);
    const local_days day = floor<days>(time);
    if (unit == CalendarUnit::Week) return floor_divide((day - first_monday).count(), 7 * count);
    const year_month_day date{day};
    if (unit == CalendarUnit::Month) return floor_divide(month_number(date), count);
    if (count == 1) return day.time_since_epoch().count();
    std::int64_t const number = month_number(date), pair = (static_cast<unsigned>(date.day()) - 1) / 2;
    return number * most_pairs + std::min(pair, pairs_in_month(number) - 1);
}

LocalTime CalendarStep::begin(std::int64_t index) const {
    switch (unit) {
    case CalendarUnit::Microsecond: return LocalTime(microseconds{index * count});
    case CalendarUnit::Week: return first_monday + days{index * 7 * count};
    case CalendarUnit::Month: return first_of_month(index * count);
    case CalendarUnit::Day: break;
    }
    if (count == 1) return local_days(days{index});
    std::int64_t const number = floor_divide(index, most_pairs), pair = index - number * most_pairs;
    // A short month has none of the last number: it begins with the next month.
    return pair < pairs_in_month(number) ? first_of_month(number) + days{2 * pair}
                                         : first_of_month(number + 1);
}

double CalendarStep::seconds() const {
    constexpr double day = 86400, month = 365.2425 / 12 * day;
    double const number = static_cast<double>(count);
    switch (unit) {
    case CalendarUnit::Microsecond: return number / 1e6;
    case CalendarUnit::Day: return number * day;
    case CalendarUnit::Week: return number * 7 * day;
    case CalendarUnit::Month: return number * month;
    }
    return 0;
}

std::vector<Instant> step_places(CalendarStep step, Instant low, Instant high, TimeZone const& zone) {
    return step.unit == CalendarUnit::Microsecond ? places_within_days(step, low, high, zone)
                                                  : places_of_days(step, low, high, zone);
}

Instant round_down(CalendarStep step, Instant time, TimeZone const& zone) {
    for (std::int64_t index = step.index(zone.local(time));; --index) {
        const Instant place = zone.first_instant(step.begin(index));
        if (place <= time) return place;
    }
}

Instant round_up(CalendarStep step, Instant time, TimeZone const& zone) {
    for (std::int64_t index = step.index(zone.local(time));; ++index) {
        const Instant place = zone.first_instant(step.begin(index));
        if (place >= time) return place;
    }
}

} // namespace qv::scale
