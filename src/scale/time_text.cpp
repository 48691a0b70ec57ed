#include "scale/time_text.h"

#include "base/picture_format.h"

#include <algorithm>
#include <cmath>

namespace qv::scale {
namespace {

using namespace std::chrono;

constexpr int most_decimals = 6;

/// A time in its parts.
struct Shown {
    year_month_day date;
    hh_mm_ss<microseconds> clock;

    explicit Shown(LocalTime time) : date(floor<days>(time)), clock(time - floor<days>(time)) {}
};

std::string padded(std::int64_t number, std::size_t width) {
    const std::string digits = std::to_string(number);
    return digits.size() < width ? std::string(width - digits.size(), '0') + digits : digits;
}

std::string year_text(Shown const& shown) {
    return std::to_string(static_cast<int>(shown.date.year()));
}

std::string day_text(Shown const& shown) {
    return std::to_string(static_cast<unsigned>(shown.date.day()));
}

std::string month_text(Shown const& shown) {
    constexpr std::string_view names = "JanFebMarAprMayJunJulAugSepOctNovDec";
    std::size_t const month = static_cast<unsigned>(shown.date.month());
    return std::string(names.substr(3 * (month - 1), 3));
}

std::string minute_text(Shown const& shown) {
    return padded(shown.clock.hours().count(), 2) + ":" + padded(shown.clock.minutes().count(), 2);
}

// Cut off, not rounded: a clock shows a second until it is over.
std::string second_text(Shown const& shown, int decimals) {
    std::string text = padded(shown.clock.seconds().count(), 2);
    if (decimals == 0) return text;
    const std::string fraction = padded(shown.clock.subseconds().count(), most_decimals);
    return text + "." + fraction.substr(0, static_cast<std::size_t>(decimals));
}

std::string clock_text(Shown const& shown, TimeLabelStyle style) {
    if (style.detail == TimeDetail::Minute) return minute_text(shown);
    return minute_text(shown) + ":" + second_text(shown, style.decimals);
}

std::string both(std::string const& first, std::string const& second) {
    return first.empty() || second.empty() ? first + second : first + " " + second;
}

// What of a date is another than before.
std::string changed_date(Shown const& now, std::optional<Shown> const& before, bool with_day) {
    bool const year = !before || before->date.year() != now.date.year();
    bool const month = year || before->date.month() != now.date.month();
    bool const day = month || before->date.day() != now.date.day();
    if (with_day ? !day : !month) return {};
    std::string text = with_day ? both(day_text(now), month_text(now)) : month_text(now);
    return year ? both(text, year_text(now)) : text;
}

std::string full_text(LocalTime time, TimeLabelStyle style) {
    return joined_text(fine_text(time, style), coarse_text(time, std::nullopt, style.detail), style.detail);
}

TimeLabelStyle style_for_pixel(double step) {
    constexpr double day = 86400, month = 31 * day, year = 366 * day;
    if (step >= year) return {TimeDetail::Year};
    if (step >= month) return {TimeDetail::Month};
    if (step >= day) return {TimeDetail::Day};
    if (step >= 60) return {TimeDetail::Minute};
    if (step >= 1) return {TimeDetail::Second};
    if (!(step > 0)) return {TimeDetail::Fraction, most_decimals};
    double const places = std::ceil(-std::log10(step));
    return {TimeDetail::Fraction, static_cast<int>(std::clamp(places, 1.0, 1.0 * most_decimals))};
}

} // namespace

TimeLabelStyle label_style(CalendarStep step) {
    constexpr std::int64_t second = 1'000'000;
    switch (step.unit) {
    case CalendarUnit::Month: return {step.count % 12 == 0 ? TimeDetail::Year : TimeDetail::Month};
    case CalendarUnit::Week:
    case CalendarUnit::Day: return {TimeDetail::Day};
    case CalendarUnit::Microsecond: break;
    }
    if (step.count % (60 * second) == 0) return {TimeDetail::Minute};
    int decimals = 0;
    for (std::int64_t unit = second; step.count % unit != 0; unit /= 10) ++decimals;
    return {decimals == 0 ? TimeDetail::Second : TimeDetail::Fraction, decimals};
}

std::string fine_text(LocalTime time, TimeLabelStyle style) {
    const Shown shown(time);
    switch (style.detail) {
    case TimeDetail::Year: return year_text(shown);
    case TimeDetail::Month: return month_text(shown);
    case TimeDetail::Day: return day_text(shown);
    case TimeDetail::Minute:
    case TimeDetail::Second: return clock_text(shown, style);
    case TimeDetail::Fraction: return second_text(shown, style.decimals) + " s";
    }
    return {};
}

std::string coarse_text(LocalTime time, std::optional<LocalTime> before, TimeDetail detail) {
    const Shown now(time);
    const std::optional<Shown> earlier = before ? std::optional<Shown>(*before) : std::nullopt;
    switch (detail) {
    case TimeDetail::Year: return {};
    case TimeDetail::Month:
        return earlier && earlier->date.year() == now.date.year() ? std::string() : year_text(now);
    case TimeDetail::Day: return changed_date(now, earlier, false);
    case TimeDetail::Minute:
    case TimeDetail::Second: return changed_date(now, earlier, true);
    case TimeDetail::Fraction: break;
    }
    if (before && floor<minutes>(*before) == floor<minutes>(time)) return {};
    return both(changed_date(now, earlier, true), minute_text(now));
}

std::string joined_text(std::string_view fine, std::string_view coarse, TimeDetail detail) {
    if (coarse.empty()) return std::string(fine);
    if (detail == TimeDetail::Fraction) // its unit is told by the place behind the minutes
        return std::string(coarse) + ":" + std::string(fine.substr(0, fine.find(' ')));
    bool const clock = detail == TimeDetail::Minute || detail == TimeDetail::Second;
    return clock ? both(std::string(coarse), std::string(fine))
                 : both(std::string(fine), std::string(coarse));
}

std::optional<std::string> pattern_text(LocalTime time, std::string_view pattern) {
    constexpr local_days first = local_days{year{100} / January / 1},
                         end = local_days{year{10000} / January / 1};
    constexpr local_days day_zero = local_days{year{1899} / December / 30};
    if (pattern.empty() || time < first || time >= end) return std::nullopt;
    constexpr double seconds_a_day = 86400;
    auto const since = static_cast<double>((floor<seconds>(time) - day_zero).count());
    return picture_format(since / seconds_a_day, pattern);
}

std::optional<std::string> time_at_pixel(double value, double pixel_step, TimeZone const& zone,
                                         std::string_view pattern) {
    auto const time = instant_of(value);
    if (!time) return std::nullopt;
    if (auto const text = pattern_text(zone.local(*time), pattern)) return text;
    const TimeLabelStyle style = style_for_pixel(pixel_step);
    std::string text = full_text(zone.local(*time), style);
    if (!(pixel_step > 0)) {
        text.erase(text.find_last_not_of('0') + 1);
        if (text.ends_with('.')) text.pop_back();
    }
    bool const tells_hours = style.detail >= TimeDetail::Minute;
    return tells_hours && zone.is_repeated(*time) ? text + " " + zone.stretch(*time).abbreviation : text;
}

} // namespace qv::scale
