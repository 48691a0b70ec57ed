#include "scale/category_text.h"

#include "scale/number_format.h"
#include "scale/time_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace qv::scale {
namespace {

using document::Axis;
using document::Extent;

// To the nearer neighbour; without one, a day.
double seconds_to_neighbour(std::span<double const> times, std::size_t index) {
    constexpr double day = 86400;
    double least = HUGE_VAL;
    for (std::size_t const other :
         {index - 1, index + 1}) // before the first it wraps round to beyond the last
        if (other < times.size() && times[other] != times[index])
            least = std::min(least, std::abs(times[other] - times[index]));
    return std::isfinite(least) ? least : day;
}

std::string number_text(double number) {
    return EasyFormat(number, 15, "");
}

/// A field of a date: digits, and what stands before them.
struct Field {
    std::string_view before;
    std::size_t digits;
    int least, most;
};
constexpr std::array date_fields{Field{"", 4, 100, 9999}, Field{"-", 2, 1, 12}, Field{"-", 2, 1, 31},
                                 Field{"T ", 2, 0, 23},   Field{":", 2, 0, 59}, Field{":", 2, 0, 59}};
constexpr std::size_t fields_of_day = 3, fields_of_minute = 5;

/// Takes a field off the beginning of a text.
std::optional<int> taken(std::string_view& text, Field const& field) {
    std::size_t const skipped = field.before.empty() ? 0 : 1;
    if (text.size() < skipped + field.digits) return std::nullopt;
    if (skipped != 0 && field.before.find(text[0]) == std::string_view::npos) return std::nullopt;
    char const* const begin = text.data() + skipped;
    char const* const end = begin + field.digits;
    int number = 0;
    if (*begin == '-' || std::from_chars(begin, end, number).ptr != end) return std::nullopt;
    if (number < field.least || number > field.most) return std::nullopt;
    text.remove_prefix(skipped + field.digits);
    return number;
}

} // namespace

std::optional<double> category_at(Axis const& axis, double value) {
    double const number = std::floor(value + 0.5);
    if (!std::isfinite(number)) return std::nullopt;
    auto const count = static_cast<double>(axis.categories.size());
    if (count == 0) return number;
    if (number < 0 || value > count - 0.5) return std::nullopt;
    return std::min(number, count - 1); // at the very end of the last one
}

std::optional<std::string> category_text(Axis const& axis, double value) {
    auto const number = category_at(axis, value);
    if (!number) return std::nullopt;
    if (axis.categories.empty()) return number_text(*number);
    auto const index = static_cast<std::size_t>(*number);
    if (!axis.categories.are_times()) return axis.categories.texts()[index];
    auto const times = axis.categories.times();
    if (auto text = time_at_pixel(times[index], seconds_to_neighbour(times, index),
                                  TimeZone::named(axis.AxisTimeZone), axis.AxisTextLabels))
        return text;
    return number_text(times[index]);
}

Extent category_range(Axis const& axis, Extent const& data) {
    Extent range = data;
    if (!axis.categories.empty() || range.empty() || !std::isfinite(range.high - range.low)) {
        range.include(0);
        range.include(std::max(1.0, static_cast<double>(axis.categories.size())) - 1);
    }
    return {std::floor(range.low + 0.5) - 0.5, std::floor(range.high + 0.5) + 0.5};
}

std::optional<double> time_of_text(std::string_view text, std::string_view time_zone) {
    std::array<int, date_fields.size()> numbers{};
    std::size_t count = 0;
    for (; count < date_fields.size() && !text.empty(); ++count) {
        auto const number = taken(text, date_fields[count]);
        if (!number) return std::nullopt;
        numbers[count] = *number;
    }
    if (!text.empty() || (count != fields_of_day && count < fields_of_minute)) return std::nullopt;
    using namespace std::chrono;
    const year_month_day date{year{numbers[0]}, month{static_cast<unsigned>(numbers[1])},
                              day{static_cast<unsigned>(numbers[2])}};
    if (!date.ok()) return std::nullopt;
    const LocalTime local = local_days{date} + hours{numbers[3]} + minutes{numbers[4]} + seconds{numbers[5]};
    return seconds_of(TimeZone::named(time_zone).first_instant(local));
}

} // namespace qv::scale
