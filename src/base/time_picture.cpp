#include "base/picture.h"

#include "base/text.h"

#include <array>
#include <chrono>
#include <cmath>
#include <cstdint>

namespace qv {
namespace {

constexpr std::int64_t seconds_a_day = 86400;

constexpr std::array<std::string_view, 12> month_names{"January",   "February", "March",    "April",
                                                       "May",       "June",     "July",     "August",
                                                       "September", "October",  "November", "December"};
constexpr std::array<std::string_view, 7> day_names{"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                    "Thursday", "Friday", "Saturday"};

struct CalendarTime {
    int year = 0;
    unsigned month = 1;
    unsigned day = 1;
    unsigned weekday = 0; // 0 is Sunday
    int hour = 0;
    int minute = 0;
    int second = 0;
};

// Whole seconds are split, so a time that rounds up to midnight carries into the date.
CalendarTime calendar_time(double days) {
    constexpr std::chrono::sys_days epoch = std::chrono::year(1899) / 12 / 30;
    auto const total = static_cast<std::int64_t>(std::floor(days * seconds_a_day + 0.5));
    const std::chrono::seconds since_epoch(total);
    auto const whole_days = std::chrono::floor<std::chrono::days>(since_epoch);
    const std::chrono::sys_days date = epoch + whole_days;
    const std::chrono::year_month_day ymd(date);
    auto const second = static_cast<int>((since_epoch - whole_days).count());
    return {.year = static_cast<int>(ymd.year()),
            .month = static_cast<unsigned>(ymd.month()),
            .day = static_cast<unsigned>(ymd.day()),
            .weekday = std::chrono::weekday(date).c_encoding(),
            .hour = second / 3600,
            .minute = second / 60 % 60,
            .second = second % 60};
}

char lower(Symbol symbol) {
    if (symbol.literal) return 0;
    char const c = symbol.character;
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// A stretch of the pattern: a run of one code letter, the half-day mark 'a', or text (letter 0).
struct Code {
    char letter = 0;
    std::size_t length = 0;
    char character = 0; // its first
};

struct LetterRow {
    char letter;
    std::size_t longest; // a longer run is read as several codes
};
constexpr std::array letter_rows{LetterRow{'d', 4}, LetterRow{'m', 4}, LetterRow{'y', 4}, LetterRow{'h', 2},
                                 LetterRow{'s', 2}};

std::size_t longest_run(char letter) {
    for (LetterRow const& row : letter_rows)
        if (row.letter == letter) return row.longest;
    return 0;
}

bool begins_half_day(Picture const& picture, std::size_t i) {
    constexpr std::string_view mark = "am/pm";
    if (i + mark.size() > picture.size()) return false;
    for (std::size_t k = 0; k < mark.size(); ++k)
        if (lower(picture[i + k]) != mark[k]) return false;
    return true;
}

Code code_at(Picture const& picture, std::size_t i) {
    if (begins_half_day(picture, i)) return {.letter = 'a', .length = 5, .character = picture[i].character};
    char const letter = lower(picture[i]);
    const std::size_t longest = longest_run(letter);
    if (longest == 0) return {.length = 1, .character = picture[i].character};
    std::size_t length = 1;
    while (length < longest && i + length < picture.size() && lower(picture[i + length]) == letter) ++length;
    return {.letter = letter, .length = length};
}

// A short run of "m" is a minute ('n' from here on) when the code before it is an hour or the code after it
// a second; text between them does not count.
void tell_minutes_from_months(std::vector<Code>& codes) {
    char before = 0;
    Code* undecided = nullptr;
    for (Code& code : codes) {
        if (code.letter == 0) continue;
        if (undecided != nullptr && code.letter == 's') undecided->letter = 'n';
        undecided = nullptr;
        if (code.letter == 'm' && code.length <= 2) {
            if (before == 'h')
                code.letter = 'n';
            else
                undecided = &code;
        }
        before = code.letter;
    }
}

std::vector<Code> read_codes(Picture const& picture) {
    std::vector<Code> codes;
    for (std::size_t i = 0; i < picture.size(); i += codes.back().length)
        codes.push_back(code_at(picture, i));
    tell_minutes_from_months(codes);
    return codes;
}

std::string padded(int number, std::size_t width) {
    const std::string digits = std::to_string(number);
    return digits.size() < width ? std::string(width - digits.size(), '0') + digits : digits;
}

// Runs of one or two letters are numbers, three the short name, four the whole one.
std::string number_or_name(int number, std::string_view name, std::size_t length) {
    if (length <= 2) return padded(number, length);
    return std::string(length == 3 ? name.substr(0, 3) : name);
}

std::string half_day_text(int hour, bool lower_case) {
    if (lower_case) return hour < 12 ? "am" : "pm";
    return hour < 12 ? "AM" : "PM";
}

std::string code_text(Code const& code, CalendarTime const& time, bool half_days) {
    switch (code.letter) {
    case 'd': return number_or_name(static_cast<int>(time.day), day_names[time.weekday], code.length);
    case 'm': return number_or_name(static_cast<int>(time.month), month_names[time.month - 1], code.length);
    case 'y': return code.length <= 2 ? padded(time.year % 100, 2) : padded(time.year, 4);
    case 'h': return padded(half_days ? (time.hour + 11) % 12 + 1 : time.hour, code.length);
    case 'n': return padded(time.minute, code.length);
    case 's': return padded(time.second, code.length);
    case 'a': return half_day_text(time.hour, code.character == 'a');
    default: return {code.character};
    }
}

} // namespace

bool is_time_code(Symbol symbol) {
    return longest_run(lower(symbol)) > 0;
}

bool is_calendar_value(double days) {
    constexpr double year_100 = -657434;
    constexpr double year_10000 = 2958466;
    return days >= year_100 && days < year_10000;
}

std::string time_picture_text(double days, Picture const& picture) {
    const CalendarTime time = calendar_time(days);
    const std::vector<Code> codes = read_codes(picture);
    bool half_days = false;
    for (Code const& code : codes) half_days = half_days || code.letter == 'a';
    std::string text;
    for (Code const& code : codes) text += code_text(code, time, half_days);
    return text;
}

} // namespace qv
