#include "table/dates.h"

#include <cmath>

namespace qv::table {
namespace {

using namespace std::chrono;

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

// Reads digits off the front of `text`, as many as asked for.
std::optional<int> take_digits(std::string_view& text, std::size_t count) {
    if (text.size() < count) return std::nullopt;
    int value = 0;
    for (std::size_t i = 0; i < count; ++i) {
        if (!is_digit(text[i])) return std::nullopt;
        value = 10 * value + (text[i] - '0');
    }
    text.remove_prefix(count);
    return value;
}

bool take(std::string_view& text, char expected) {
    if (text.empty() || text.front() != expected) return false;
    text.remove_prefix(1);
    return true;
}

std::optional<double> day_number(std::string_view& text) {
    auto const y = take_digits(text, 4);
    if (!y || !take(text, '-')) return std::nullopt;
    auto const m = take_digits(text, 2);
    if (!m) return std::nullopt;
    auto const d = take(text, '-') ? take_digits(text, 2) : std::optional(1);
    if (!d) return std::nullopt;
    const year_month_day date{year{*y}, month{static_cast<unsigned>(*m)}, day{static_cast<unsigned>(*d)}};
    if (!date.ok()) return std::nullopt;
    return static_cast<double>((sys_days{date} - day_zero).count());
}

// The digits of "05" or "05.25" and what follows the second point off the front of `text`.
std::optional<double> take_seconds(std::string_view& text) {
    auto const whole = take_digits(text, 2);
    if (!whole || *whole > 60) return std::nullopt; // 60 is a leap second
    double fraction = 0;
    double weight = 0.1;
    if (take(text, '.'))
        for (; !text.empty() && is_digit(text.front()); text.remove_prefix(1)) {
            fraction += weight * (text.front() - '0');
            weight /= 10;
        }
    return *whole + fraction;
}

// "12:30", "12:30:05" or "12:30:05.25", with a "Z" for universal time, as a share of the day.
std::optional<double> time_of_day(std::string_view text) {
    auto const h = take_digits(text, 2);
    if (!h || *h > 24 || !take(text, ':')) return std::nullopt;
    auto const m = take_digits(text, 2);
    if (!m || *m > 59) return std::nullopt;
    auto const s = take(text, ':') ? take_seconds(text) : std::optional(0.0);
    if (!s || (!text.empty() && text != "Z")) return std::nullopt;
    double const seconds = *h * 3600.0 + *m * 60.0 + *s;
    if (seconds > 86400) return std::nullopt;
    return seconds / 86400;
}

} // namespace

std::optional<double> iso_date(std::string_view text) {
    auto const days = day_number(text);
    if (!days || text.empty()) return days;
    if (!take(text, 'T') && !take(text, ' ')) return std::nullopt;
    auto const time = time_of_day(text);
    if (!time) return std::nullopt;
    return *days + *time;
}

std::optional<double> utc_seconds(std::string_view text) {
    constexpr double seconds_a_day = 86400;
    constexpr double microseconds = 1e6; // finer than that a share of the day is not kept
    auto const number = iso_date(text);
    if (!number) return std::nullopt;
    double const days_since_1970 = *number - static_cast<double>((sys_days{} - day_zero).count());
    double const day = std::floor(days_since_1970);
    return day * seconds_a_day
           + std::round((days_since_1970 - day) * seconds_a_day * microseconds) / microseconds;
}

double decimal_year(double days_since_zero) {
    const sys_days date = day_zero + days{static_cast<int>(std::floor(days_since_zero))};
    const year y = year_month_day{date}.year();
    const sys_days start{y / January / 1};
    double const length = static_cast<double>((sys_days{(y + years{1}) / January / 1} - start).count());
    double const passed = days_since_zero - static_cast<double>((start - day_zero).count());
    return static_cast<int>(y) + passed / length;
}

} // namespace qv::table
