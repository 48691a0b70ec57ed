#include "table/dates.h"

#include "table/table_error.h"
#include "table/text.h"

#include <date/tz.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace qv::table {

class TimeZone {
public:
    explicit TimeZone(date::time_zone const* zone) : zone_(zone) {}
    /// The first of two moments where clocks are put back; where they are put forward, the moment of it.
    double utc(double local_seconds) const {
        double const whole = std::floor(local_seconds);
        const date::local_seconds local{std::chrono::seconds(static_cast<std::int64_t>(whole))};
        auto const moment = zone_->to_sys(local, date::choose::earliest).time_since_epoch();
        return static_cast<double>(std::chrono::duration_cast<std::chrono::seconds>(moment).count())
               + (local_seconds - whole);
    }

private:
    date::time_zone const* zone_;
};

namespace {

using namespace std::chrono;

constexpr double seconds_a_day = 86400;

struct NamedNumber {
    std::string_view name; // small letters, the first three are enough
    int number;
};
constexpr std::array months{
    NamedNumber{"january", 1},  NamedNumber{"february", 2},  NamedNumber{"march", 3},
    NamedNumber{"april", 4},    NamedNumber{"may", 5},       NamedNumber{"june", 6},
    NamedNumber{"july", 7},     NamedNumber{"august", 8},    NamedNumber{"september", 9},
    NamedNumber{"october", 10}, NamedNumber{"november", 11}, NamedNumber{"december", 12}};
constexpr std::array weekdays{NamedNumber{"monday", 1},    NamedNumber{"tuesday", 2},
                              NamedNumber{"wednesday", 3}, NamedNumber{"thursday", 4},
                              NamedNumber{"friday", 5},    NamedNumber{"saturday", 6},
                              NamedNumber{"sunday", 7}};

template <std::size_t count>
std::optional<int> number_named(std::array<NamedNumber, count> const& rows, std::string_view word) {
    if (word.size() < 3) return std::nullopt;
    const std::string name = lowered(word);
    for (NamedNumber const& row : rows)
        if (row.name.starts_with(name)) return row.number;
    return std::nullopt;
}

bool is_letter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

struct Digits {
    int value = 0;
    int count = 0;
};

// Takes a text apart from its front.
struct Scanner {
    std::string_view rest;

    bool at_end() const { return rest.empty(); }
    char next() const { return rest.empty() ? '\0' : rest.front(); }
    bool take(char wanted) {
        if (next() != wanted || rest.empty()) return false;
        rest.remove_prefix(1);
        return true;
    }
    bool take_any(std::string_view wanted) {
        if (rest.empty() || wanted.find(next()) == std::string_view::npos) return false;
        rest.remove_prefix(1);
        return true;
    }
    void skip_blanks() {
        while (next() == ' ' || next() == '\t') rest.remove_prefix(1);
    }
    Digits digits(int most) {
        Digits found;
        while (found.count < most && is_digit(next())) {
            found.value = 10 * found.value + (next() - '0');
            ++found.count;
            rest.remove_prefix(1);
        }
        return found;
    }
    std::optional<int> exactly(int count) {
        const Digits found = digits(count);
        return found.count == count ? std::optional(found.value) : std::nullopt;
    }
    std::size_t digits_ahead() const {
        return static_cast<std::size_t>(std::ranges::find_if_not(rest, is_digit) - rest.begin());
    }
    std::string_view word() {
        auto const end = std::ranges::find_if_not(rest, is_letter);
        const std::string_view found = rest.substr(0, static_cast<std::size_t>(end - rest.begin()));
        rest.remove_prefix(found.size());
        return found;
    }
};

// Days since 1970.
std::optional<std::int64_t> day_of(int y, int m, int d) {
    const year_month_day date{year{y}, month{static_cast<unsigned>(m)}, day{static_cast<unsigned>(d)}};
    if (!date.ok()) return std::nullopt;
    return sys_days{date}.time_since_epoch().count();
}

std::optional<std::int64_t> day_of_year(int y, int number) {
    bool const is_leap = year{y}.is_leap();
    if (number < 1 || number > (is_leap ? 366 : 365)) return std::nullopt;
    return sys_days{year{y} / January / 1}.time_since_epoch().count() + number - 1;
}

// The Monday of week 1 is that of the week with 4 January (ISO 8601).
std::optional<std::int64_t> day_of_week(int y, int week, int weekday_number) {
    if (week < 1 || week > 53 || weekday_number < 1 || weekday_number > 7) return std::nullopt;
    const sys_days fourth{year{y} / January / 4};
    unsigned const since_monday = weekday{fourth}.iso_encoding() - 1;
    const sys_days found = fourth - days{since_monday} + days{7 * (week - 1) + weekday_number - 1};
    return found.time_since_epoch().count();
}

// 69 is 1969 and 68 is 2068, as POSIX has it.
int whole_year(Digits const& year) {
    if (year.count > 2) return year.value;
    return year.value + (year.value < 69 ? 2000 : 1900);
}

// Behind "2024" and its separator.
std::optional<std::int64_t> day_in_year(Scanner& text, int y, char separator) {
    if (separator == '-' && text.take('W')) {
        auto const week = text.exactly(2);
        if (!week) return std::nullopt;
        text.take('-');
        const Digits number = text.digits(1);
        return day_of_week(y, *week, number.count == 0 ? 1 : number.value);
    }
    if (separator == '-' && text.digits_ahead() == 3) return day_of_year(y, text.digits(3).value);
    if (is_letter(text.next())) {
        auto const m = number_named(months, text.word());
        if (!m || !text.take(separator)) return std::nullopt;
        return day_of(y, *m, text.digits(2).value);
    }
    const Digits m = text.digits(2);
    if (m.count == 0) return std::nullopt;
    if (!text.take(separator)) return day_of(y, m.value, 1);
    const Digits d = text.digits(2);
    return d.count == 0 ? std::nullopt : day_of(y, m.value, d.value);
}

std::optional<std::int64_t> ordered_day(Digits first, Digits second, Digits third, DateOrder order) {
    switch (order) {
    case DateOrder::DayFirst: return day_of(whole_year(third), second.value, first.value);
    case DateOrder::MonthFirst: return day_of(whole_year(third), first.value, second.value);
    case DateOrder::YearFirst: return day_of(whole_year(first), second.value, third.value);
    }
    return std::nullopt;
}

// A year of two or four digits, which no digit follows.
std::optional<Digits> take_year(Scanner& text) {
    const std::size_t count = text.digits_ahead();
    if (count != 2 && count != 4) return std::nullopt;
    return text.digits(4);
}

// Behind "1" or "01": "/05/24", ".05.2024", " May 2024", "-May-2024", "May2024".
std::optional<std::int64_t> day_after_number(Scanner& text, Digits const& first, DateOrder order) {
    char const separator = text.next();
    if (separator == '/' || separator == '.' || separator == '-') text.take(separator);
    text.skip_blanks();
    if (is_letter(text.next())) {
        auto const m = number_named(months, text.word());
        if (!m) return std::nullopt;
        text.take_any(".-/,");
        text.skip_blanks();
        auto const y = take_year(text);
        return y ? day_of(whole_year(*y), *m, first.value) : std::nullopt;
    }
    const Digits second = text.digits(2);
    if (second.count == 0 || !text.take(separator)) return std::nullopt;
    text.skip_blanks();
    auto const third = take_year(text);
    if (!third) return std::nullopt;
    if (third->count == 4 && order == DateOrder::YearFirst) order = DateOrder::DayFirst;
    return ordered_day(first, second, *third,
                       separator == '.' && order == DateOrder::MonthFirst ? DateOrder::DayFirst : order);
}

// "May 1, 2024" and "May 2024"; the text begins with the month.
std::optional<std::int64_t> day_after_month(Scanner& text, int m) {
    text.take('.');
    if (!text.take('-')) text.skip_blanks();
    if (text.digits_ahead() == 4) return day_of(text.digits(4).value, m, 1);
    const Digits d = text.digits(2);
    if (d.count == 0) return std::nullopt;
    text.take(',');
    text.skip_blanks();
    return text.digits_ahead() == 4 ? day_of(text.digits(4).value, m, d.value) : std::nullopt;
}

std::optional<std::int64_t> take_date(Scanner& text, DateOrder order) {
    if (is_letter(text.next())) {
        const std::string_view word = text.word();
        if (number_named(weekdays, word)) {
            text.take_any(".,");
            text.skip_blanks();
            if (!is_letter(text.next())) return take_date(text, order);
            auto const m = number_named(months, text.word());
            return m ? day_after_month(text, *m) : std::nullopt;
        }
        auto const m = number_named(months, word);
        return m ? day_after_month(text, *m) : std::nullopt;
    }
    const std::size_t count = text.digits_ahead();
    if (count == 8) { // 20240501
        int const y = text.digits(4).value, m = text.digits(2).value, d = text.digits(2).value;
        return day_of(y, m, d);
    }
    if (count == 4) {
        int const y = text.digits(4).value;
        char const separator = text.next();
        return text.take_any("-/.") ? day_in_year(text, y, separator) : std::nullopt;
    }
    if (count == 0 || count > 2) return std::nullopt;
    const Digits first = text.digits(2);
    return day_after_number(text, first, order);
}

double take_fraction(Scanner& text) {
    double fraction = 0, weight = 0.1;
    while (is_digit(text.next())) {
        fraction += weight * (text.next() - '0');
        weight /= 10;
        text.rest.remove_prefix(1);
    }
    return fraction;
}

// "PM" behind a time, or nothing: the hours to add. Nothing for a word that does not belong to the hour.
std::optional<int> hours_of_half(Scanner& text, int hour) {
    const Scanner before = text;
    text.skip_blanks();
    char const half = text.next();
    const std::size_t length = text.rest.starts_with("a.m.") || text.rest.starts_with("p.m.") ? 4 : 2;
    const std::string word = lowered(text.rest.substr(0, length));
    bool const is_half = word == "am" || word == "pm" || word == "a.m." || word == "p.m.";
    if (!is_half || (text.rest.size() > length && is_letter(text.rest[length]))) {
        text = before;
        return 0;
    }
    if (hour < 1 || hour > 12) return std::nullopt;
    text.rest.remove_prefix(length);
    bool const after_noon = half == 'p' || half == 'P';
    return after_noon ? (hour == 12 ? 0 : 12) : (hour == 12 ? -12 : 0);
}

// Seconds since midnight: "9:30", "09:30:05.25", "1:30 PM", "T0930"; compact only behind a date.
std::optional<double> take_time(Scanner& text, bool compact) {
    bool const is_compact = compact && (text.digits_ahead() == 4 || text.digits_ahead() == 6);
    const Digits h = text.digits(2);
    if (h.count == 0 || h.value > 24) return std::nullopt;
    if (!is_compact && !text.take(':')) {
        auto const half = hours_of_half(text, h.value); // "1 PM"
        return half && *half != 0 ? std::optional((h.value + *half) * 3600.0) : std::nullopt;
    }
    auto const m = text.exactly(2);
    if (!m || *m > 59) return std::nullopt;
    double s = 0;
    if (is_compact ? is_digit(text.next()) : text.take(':')) {
        auto const whole = text.exactly(2);
        if (!whole || *whole > 60) return std::nullopt; // 60 is a leap second
        s = *whole;
        if (text.take_any(".,")) s += take_fraction(text);
    }
    auto const half = hours_of_half(text, h.value);
    if (!half) return std::nullopt;
    double const seconds = (h.value + *half) * 3600.0 + *m * 60.0 + s;
    return seconds <= seconds_a_day ? std::optional(seconds) : std::nullopt;
}

struct Offset {
    bool known = false;
    double seconds = 0; // ahead of UTC
    std::shared_ptr<TimeZone const> zone = {};
};

std::optional<double> numeric_offset(Scanner& text) {
    double const sign = text.next() == '-' ? -1 : 1;
    if (!text.take_any("+-")) return std::nullopt;
    auto const h = text.exactly(2);
    if (!h || *h > 26) return std::nullopt;
    bool const colon = text.take(':');
    auto const m = colon || is_digit(text.next()) ? text.exactly(2) : std::optional(0);
    return m && *m < 60 ? std::optional(sign * (*h * 3600.0 + *m * 60.0)) : std::nullopt;
}

// A zone's name up to the end or a bracket: it has a slash, or is short.
std::shared_ptr<TimeZone const> named_zone(Scanner& text) {
    bool const bracket = text.take('[');
    auto const length = std::min(text.rest.find(']'), text.rest.size());
    const std::string name(text.rest.substr(0, length));
    text.rest.remove_prefix(length);
    if (bracket && !text.take(']')) return nullptr;
    if (name.find('/') == std::string::npos || name.empty()) return nullptr;
    try {
        return time_zone(name);
    } catch (TableError const&) {
        return nullptr;
    }
}

// Nothing for what is no offset; the text must be at its end afterwards.
std::optional<Offset> take_offset(Scanner& text) {
    text.skip_blanks();
    if (text.at_end()) return Offset{};
    for (std::string_view const name : {"Z", "z", "UTC", "GMT"})
        if (text.rest == name) {
            text.rest = {};
            return Offset{true, 0};
        }
    if (text.next() == '+' || text.next() == '-') {
        auto const seconds = numeric_offset(text);
        if (!seconds) return std::nullopt;
        // "+01:00[Europe/Berlin]": the offset says it all.
        if (text.next() == '[' && text.rest.ends_with(']')) text.rest = {};
        return Offset{true, *seconds};
    }
    if (!is_letter(text.next()) && text.next() != '[') return std::nullopt;
    auto zone = named_zone(text);
    return zone ? std::optional(Offset{true, 0, std::move(zone)}) : std::nullopt;
}

double utc_of(double local, Offset const& offset, DateForm const& form) {
    if (offset.zone) return offset.zone->utc(local);
    if (offset.known) return local - offset.seconds;
    return form.zone ? form.zone->utc(local) : local;
}

// Finer than a microsecond a number of our time is not kept.
double to_microseconds(double seconds) {
    constexpr double parts = 1e6;
    return std::round(seconds * parts) / parts;
}

double moment_of(std::int64_t day, double seconds) {
    return static_cast<double>(day) * seconds_a_day + to_microseconds(seconds);
}

// What a pattern has found so far.
struct Found {
    std::optional<int> year, month, day, yearday, hour, minute;
    bool after_noon = false, has_half = false;
    double seconds = 0;
    std::optional<double> unix_seconds;
    Offset offset;
};

bool take_field(char field, Scanner& text, Found& found) {
    auto const number = [&](std::optional<int>& target, int most_digits) {
        const Digits digits = text.digits(most_digits);
        if (digits.count > 0) target = digits.value;
        return digits.count > 0;
    };
    switch (field) {
    case 'Y': return number(found.year, 4);
    case 'y': {
        const Digits digits = text.digits(2);
        found.year = whole_year(digits);
        return digits.count == 2;
    }
    case 'm': return number(found.month, 2);
    case 'd': return number(found.day, 2);
    case 'j': return number(found.yearday, 3);
    case 'H':
    case 'I': return number(found.hour, 2);
    case 'M': return number(found.minute, 2);
    case 'S': {
        const Digits digits = text.digits(2);
        found.seconds += digits.value;
        return digits.count > 0 && digits.value <= 60;
    }
    case 'f':
        if (!is_digit(text.next())) return false;
        found.seconds += take_fraction(text);
        return true;
    case 'p': {
        const std::string word = lowered(text.word());
        found.has_half = word == "am" || word == "pm";
        found.after_noon = word == "pm";
        return found.has_half;
    }
    case 'b':
    case 'B': return (found.month = number_named(months, text.word())).has_value();
    case 'a':
    case 'A': return number_named(weekdays, text.word()).has_value();
    case 'z':
    case 'Z': {
        auto offset = take_offset(text);
        if (offset) found.offset = std::move(*offset);
        return offset.has_value();
    }
    case 's': {
        auto const length = text.rest.find_first_not_of("0123456789.-");
        found.unix_seconds = finite_number(text.rest.substr(0, length));
        text.rest.remove_prefix(std::min(length, text.rest.size()));
        return found.unix_seconds.has_value();
    }
    case '%': return text.take('%');
    default: return false;
    }
}

std::optional<Moment> moment_found(Found const& found, DateForm const& form) {
    if (found.unix_seconds) return Moment{*found.unix_seconds};
    int hour = found.hour.value_or(0);
    if (found.has_half) hour = hour % 12 + (found.after_noon ? 12 : 0);
    double const seconds = hour * 3600.0 + found.minute.value_or(0) * 60.0 + found.seconds;
    if (seconds > seconds_a_day || found.minute.value_or(0) > 59) return std::nullopt;
    if (!found.year && !found.month && !found.day && !found.yearday)
        return Moment{to_microseconds(seconds), true};
    int const y = found.year.value_or(1970);
    auto const date = found.yearday ? day_of_year(y, *found.yearday)
                                    : day_of(y, found.month.value_or(1), found.day.value_or(1));
    if (!date) return std::nullopt;
    return Moment{utc_of(moment_of(*date, seconds), found.offset, form)};
}

} // namespace

std::shared_ptr<TimeZone const> time_zone(std::string const& name) {
    try {
        return std::make_shared<TimeZone>(name == "local" ? date::current_zone() : date::locate_zone(name));
    } catch (std::bad_alloc const&) {
        throw;
    } catch (std::exception const&) {
        throw TableError("there is no time zone \"" + name
                         + "\"; give a name such as Europe/Berlin, UTC or local");
    }
}

std::optional<Moment> read_moment(std::string_view whole, DateForm const& form) {
    Scanner text{trimmed(whole)};
    const std::size_t digits = text.digits_ahead();
    bool const is_time =
        digits > 0 && digits < 3
        && (text.rest.substr(digits).starts_with(':')
            || lowered(text.rest.substr(digits)).find_first_not_of(" apm.") == std::string::npos);
    if (is_time) {
        auto const time = take_time(text, false);
        if (!time || !text.at_end()) return std::nullopt;
        return Moment{to_microseconds(*time), true};
    }
    auto const day = take_date(text, form.order);
    if (!day) return std::nullopt;
    bool const compact_date = digits == 8;
    if (text.at_end()) {
        // A number of eight digits alone is no date.
        if (compact_date) return std::nullopt;
        return Moment{utc_of(moment_of(*day, 0), {}, form)};
    }
    bool const marked = text.take_any("Tt");
    if (!marked) {
        if (!text.take_any(" ,_\t") && !(text.next() == ':')) return std::nullopt;
        if (text.next() == ':') text.take(':'); // 01/May/2024:12:30:05, as servers write it
        text.skip_blanks();
        text.take('-');
        text.skip_blanks();
    }
    auto const time = take_time(text, true);
    if (!time) return std::nullopt;
    auto const offset = take_offset(text);
    if (!offset || !text.at_end()) return std::nullopt;
    return Moment{utc_of(moment_of(*day, *time), *offset, form)};
}

std::optional<Moment> read_moment_by(std::string_view whole, std::string_view pattern, DateForm const& form) {
    Scanner text{trimmed(whole)};
    Found found;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        if (pattern[i] == '%' && i + 1 < pattern.size()) {
            if (!take_field(pattern[++i], text, found)) return std::nullopt;
        } else if (pattern[i] == ' ') {
            text.skip_blanks();
        } else if (!text.take(pattern[i])) {
            return std::nullopt;
        }
    }
    return text.at_end() ? moment_found(found, form) : std::nullopt;
}

std::string fault_of_pattern(std::string_view pattern) {
    constexpr std::string_view fields = "YymdjHIMSfpbBaAzZs%";
    bool any = false;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        if (pattern[i] != '%') continue;
        any = true;
        if (i + 1 == pattern.size()) return "ends with a %";
        if (fields.find(pattern[++i]) == std::string_view::npos)
            return std::string("has %") + pattern[i]
                   + ", which is none of %Y %y %m %d %j %H %I %M %S %f %p %b %a %z %s";
    }
    return any ? "" : "has no part such as %Y";
}

std::optional<double> utc_seconds(std::string_view text) {
    // What could be read in two ways leaves a question.
    auto const first = read_moment(text, {DateOrder::DayFirst}),
               other = read_moment(text, {DateOrder::MonthFirst});
    if (!first || first->is_time_alone || !other || first->seconds != other->seconds) return std::nullopt;
    return first->seconds;
}

double decimal_year(double seconds) {
    double const days_passed = seconds / seconds_a_day;
    const sys_days date{days{static_cast<int>(std::floor(days_passed))}};
    const year y = year_month_day{date}.year();
    const sys_days start{y / January / 1};
    double const length = static_cast<double>((sys_days{(y + years{1}) / January / 1} - start).count());
    return static_cast<int>(y)
           + (days_passed - static_cast<double>(start.time_since_epoch().count())) / length;
}

double seconds_in(UnixUnit unit) {
    constexpr std::array units{1.0, 1e-3, 1e-6, 1e-9};
    return units[static_cast<std::size_t>(unit)];
}

UnixUnit unix_unit_of(double number) {
    double const size = std::abs(number);
    return size < 1e11   ? UnixUnit::Seconds
           : size < 1e14 ? UnixUnit::Milliseconds
           : size < 1e17 ? UnixUnit::Microseconds
                         : UnixUnit::Nanoseconds;
}

std::optional<UnixUnit> unix_unit_named(std::string_view name) {
    constexpr std::array<std::string_view, 4> names{"s", "ms", "us", "ns"};
    auto const found = std::ranges::find(names, name);
    if (found == names.end()) return std::nullopt;
    return static_cast<UnixUnit>(found - names.begin());
}

} // namespace qv::table
