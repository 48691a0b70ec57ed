#include "table/dates.h"

#include <charconv>
#include <chrono>
#include <cmath>

namespace qv::table {
namespace {

using namespace std::chrono;

constexpr sys_days day_zero{year{1899} / December / 30};

// Reads digits off the front of `text`, as many as asked for.
std::optional<int> take_digits(std::string_view& text, std::size_t count) {
    if (text.size() < count) return std::nullopt;
    int value = 0;
    auto const result = std::from_chars(text.data(), text.data() + count, value);
    if (result.ec != std::errc() || result.ptr != text.data() + count || value < 0) return std::nullopt;
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
    if (!m || !take(text, '-')) return std::nullopt;
    auto const d = take_digits(text, 2);
    if (!d) return std::nullopt;
    const year_month_day date{year{*y}, month{static_cast<unsigned>(*m)}, day{static_cast<unsigned>(*d)}};
    if (!date.ok()) return std::nullopt;
    return static_cast<double>((sys_days{date} - day_zero).count());
}

// "12:30", "12:30:05" or "12:30:05.25", with a "Z" for universal time, as a share of the day.
std::optional<double> time_of_day(std::string_view text) {
    auto const h = take_digits(text, 2);
    if (!h || *h > 24 || !take(text, ':')) return std::nullopt;
    auto const m = take_digits(text, 2);
    if (!m || *m > 59) return std::nullopt;
    double s = 0;
    if (take(text, ':')) {
        auto const result = std::from_chars(text.data(), text.data() + text.size(), s);
        if (result.ec != std::errc() || s < 0 || s > 60) return std::nullopt;
        text.remove_prefix(static_cast<std::size_t>(result.ptr - text.data()));
    }
    if (!text.empty() && text != "Z") return std::nullopt;
    return (*h * 3600.0 + *m * 60.0 + s) / 86400.0;
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

double decimal_year(double days_since_zero) {
    const sys_days date = day_zero + days{static_cast<int>(std::floor(days_since_zero))};
    const year y = year_month_day{date}.year();
    const sys_days start{y / January / 1};
    double const length = static_cast<double>((sys_days{(y + years{1}) / January / 1} - start).count());
    double const passed = days_since_zero - static_cast<double>((start - day_zero).count());
    return static_cast<int>(y) + passed / length;
}

} // namespace qv::table
