#include "qvplot/date_axis.h"

#include "base/picture_format.h"
#include "table/dates.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdint>

namespace qv::plot {
namespace {

using namespace std::chrono;
using Time = sys_time<milliseconds>;

constexpr Time first_time = sys_days{year{100} / January / 1};
constexpr Time last_time = sys_days{year{9999} / December / 31};
constexpr double milliseconds_a_day = 86400000;

Time time_of(double days) {
    // Far beyond the years shown, but not beyond what milliseconds can count.
    constexpr double most_days = 1e7;
    return table::day_zero
           + milliseconds{std::llround(std::clamp(days, -most_days, most_days) * milliseconds_a_day)};
}

double days_of(Time time) {
    return static_cast<double>((time - Time(table::day_zero)).count()) / milliseconds_a_day;
}

std::int64_t floor_divide(std::int64_t a, std::int64_t b) {
    return a / b - (a % b < 0 ? 1 : 0);
}

enum class Unit { Second, Day, Month };

// Steps of so many units. Those of several days begin on Mondays, those of months in January of a year that
// divides.
struct CalendarStep {
    Unit unit = Unit::Day;
    int count = 1;

    /// Number of the step that holds a time.
    std::int64_t index(Time time) const { return floor_divide(units(time), count); }
    Time begin(std::int64_t step) const {
        const std::int64_t at = step * count;
        if (unit == Unit::Second) return Time(seconds{at});
        if (unit == Unit::Day) return Time(first_monday + days{at});
        const year y{static_cast<int>(floor_divide(at, 12))};
        const month m{static_cast<unsigned>(at - floor_divide(at, 12) * 12 + 1)};
        return sys_days{y / m / 1};
    }
    std::int64_t index_from(Time time) const {
        const std::int64_t step = index(time);
        return begin(step) == time ? step : step + 1;
    }
    Time round_down(Time time) const { return begin(index(time)); }
    Time round_up(Time time) const { return begin(index_from(time)); }
    /// Beginnings of steps from `low` to `high`.
    std::vector<Time> times(Time low, Time high) const {
        std::vector<Time> found;
        for (std::int64_t i = index_from(low), last = index(high); i <= last; ++i) found.push_back(begin(i));
        return found;
    }
    std::int64_t number_of_times(Time low, Time high) const { return index(high) - index_from(low) + 1; }

private:
    static constexpr sys_days first_monday{year{1970} / January / 5};

    std::int64_t units(Time time) const {
        if (unit == Unit::Second) return floor<seconds>(time).time_since_epoch().count();
        const sys_days day = floor<days>(time);
        if (unit == Unit::Day) return (day - first_monday).count();
        const year_month_day date{day};
        return static_cast<int>(date.year()) * std::int64_t{12} + static_cast<unsigned>(date.month()) - 1;
    }
};

constexpr CalendarStep seconds_(int count) {
    return {Unit::Second, count};
}
constexpr CalendarStep minutes_(int count) {
    return {Unit::Second, 60 * count};
}
constexpr CalendarStep hours_(int count) {
    return {Unit::Second, 3600 * count};
}
constexpr CalendarStep days_(int count) {
    return {Unit::Day, count};
}
constexpr CalendarStep months_(int count) {
    return {Unit::Month, count};
}
constexpr CalendarStep years_(int count) {
    return {Unit::Month, 12 * count};
}

struct StepRow {
    CalendarStep major;
    CalendarStep minor;    // equal to the major one: no minor ticks
    CalendarStep rounding; // of the range's ends
    char const* format;
};

constexpr char const* to_the_second = "hh:mm:ss";
constexpr char const* to_the_minute = "hh:mm";
constexpr char const* to_the_day = "d mmm";
constexpr char const* to_the_month = "mmm yyyy";
constexpr char const* to_the_year = "yyyy";

// From fine to coarse.
constexpr std::array step_rows{
    StepRow{seconds_(1), seconds_(1), seconds_(1), to_the_second},
    StepRow{seconds_(2), seconds_(1), seconds_(1), to_the_second},
    StepRow{seconds_(5), seconds_(1), seconds_(1), to_the_second},
    StepRow{seconds_(10), seconds_(5), seconds_(5), to_the_second},
    StepRow{seconds_(15), seconds_(5), seconds_(5), to_the_second},
    StepRow{seconds_(30), seconds_(10), seconds_(10), to_the_second},
    StepRow{minutes_(1), seconds_(30), seconds_(30), to_the_minute},
    StepRow{minutes_(2), minutes_(1), minutes_(1), to_the_minute},
    StepRow{minutes_(5), minutes_(1), minutes_(1), to_the_minute},
    StepRow{minutes_(10), minutes_(5), minutes_(5), to_the_minute},
    StepRow{minutes_(15), minutes_(5), minutes_(5), to_the_minute},
    StepRow{minutes_(30), minutes_(10), minutes_(10), to_the_minute},
    StepRow{hours_(1), minutes_(30), minutes_(30), to_the_minute},
    StepRow{hours_(2), hours_(1), hours_(1), to_the_minute},
    StepRow{hours_(3), hours_(1), hours_(1), to_the_minute},
    StepRow{hours_(6), hours_(1), hours_(1), to_the_minute},
    StepRow{hours_(12), hours_(3), hours_(1), to_the_minute},
    StepRow{days_(1), hours_(6), hours_(1), to_the_day},
    StepRow{days_(2), days_(1), hours_(6), to_the_day},
    StepRow{days_(7), days_(1), days_(1), to_the_day},
    StepRow{days_(14), days_(7), days_(1), to_the_day},
    StepRow{months_(1), months_(1), days_(1), to_the_month},
    StepRow{months_(2), months_(1), days_(1), to_the_month},
    StepRow{months_(3), months_(1), days_(1), to_the_month},
    StepRow{months_(6), months_(1), days_(1), to_the_month},
    StepRow{years_(1), months_(3), months_(1), to_the_year},
    StepRow{years_(2), years_(1), months_(1), to_the_year},
    StepRow{years_(5), years_(1), months_(6), to_the_year},
    StepRow{years_(10), years_(2), years_(1), to_the_year},
    StepRow{years_(20), years_(5), years_(1), to_the_year},
    StepRow{years_(50), years_(10), years_(5), to_the_year},
    StepRow{years_(100), years_(20), years_(10), to_the_year},
    StepRow{years_(200), years_(50), years_(10), to_the_year},
    StepRow{years_(500), years_(100), years_(50), to_the_year},
    StepRow{years_(1000), years_(200), years_(100), to_the_year},
};

struct TimeRange {
    Time low;
    Time high;
    sys_days first_day() const { return floor<days>(low); }
    // A range that ends at midnight does not reach into the next day.
    sys_days last_day() const { return floor<days>(std::max(low, high - milliseconds{1})); }
    bool one_day() const { return first_day() == last_day(); }
};

TimeRange rounded(TimeRange const& data, CalendarStep const& step) {
    return {std::max(first_time, step.round_down(data.low)), std::min(last_time, step.round_up(data.high))};
}

// What is to be shown, and whether its ends move outwards to whole units.
struct Wanted {
    TimeRange times;
    bool rounds = true;
    TimeRange range(StepRow const& row) const { return rounds ? rounded(times, row.rounding) : times; }
    std::int64_t labels(StepRow const& row) const {
        const TimeRange shown = range(row);
        return row.major.number_of_times(shown.low, shown.high);
    }
};

// Times of several days need the day beside them.
std::string label_format(StepRow const& row, TimeRange const& range) {
    if (row.major.unit != Unit::Second || range.one_day()) return row.format;
    return std::string(to_the_day) + " " + row.format;
}

bool fits(StepRow const& row, Wanted const& wanted, LabelRoom const& room) {
    auto const count = std::max<std::int64_t>(wanted.labels(row), 0);
    return room.holds(static_cast<std::size_t>(count), label_format(row, wanted.range(row)).size());
}

// The finest step whose labels have room, unless it leaves fewer than two of them: then a finer one, of
// whose labels the drawing leaves out what does not fit.
StepRow const& choose_step(Wanted const& wanted, LabelRoom const& room) {
    auto row = std::ranges::find_if(step_rows, [&](StepRow const& r) { return fits(r, wanted, room); });
    if (row == step_rows.end()) --row;
    while (row != step_rows.begin() && wanted.labels(*row) < 2) --row;
    return *row;
}

std::string left_out(StepRow const& row, TimeRange const& data) {
    auto const text = [](sys_days day, char const* format) { return picture_format(days_of(day), format); };
    if (row.major.unit == Unit::Month) return {};
    if (row.major.unit == Unit::Second && data.one_day()) return text(data.first_day(), "d mmmm yyyy");
    const std::string first = text(data.first_day(), "yyyy"), last = text(data.last_day(), "yyyy");
    return first == last ? first : first + " to " + last;
}

// To the millisecond, for a range too short for labels of whole seconds.
std::string time_text(Time time, char const* format) {
    const Time second = floor<seconds>(time);
    const std::string fraction = std::to_string((time - second).count());
    return picture_format(days_of(second), format) + "." + std::string(3 - fraction.size(), '0') + fraction;
}

AxisPlan plan_moment(Extent data, TimeRange const& times) {
    const Time second = floor<seconds>(times.low);
    AxisPlan plan{data, {}, {}, to_the_second, {}};
    // One before the range too, for no ticks at all would be even ones.
    for (Time tick = second; tick <= times.high; tick += seconds{1}) plan.major.push_back(days_of(tick));
    plan.left_out =
        time_text(times.low, "d mmmm yyyy, hh:mm:ss") + " to " + time_text(times.high, to_the_second);
    return plan;
}

std::vector<double> day_numbers(std::vector<Time> const& times) {
    std::vector<double> numbers;
    std::ranges::transform(times, std::back_inserter(numbers), days_of);
    return numbers;
}

} // namespace

AxisPlan plan_date_axis(Extent data, LabelRoom const& room, RoundTo rounding) {
    Wanted wanted{{time_of(data.low), time_of(data.high)}, rounding != RoundTo::Nothing};
    TimeRange& times = wanted.times;
    if (times.low == times.high) times = {times.low - hours{12}, times.high + hours{12}};
    StepRow const& row = choose_step(wanted, room);
    const TimeRange range = wanted.range(row);
    if (!wanted.rounds && wanted.labels(row) < 2) return plan_moment(data, times);
    std::vector<Time> majors = row.major.times(range.low, range.high);
    std::vector<Time> minors = row.minor.times(range.low, range.high);
    // On an axis of times of one day the midnight at its end would be a second 00:00.
    if (row.major.unit == Unit::Second && range.one_day() && majors.size() > 1
        && floor<days>(majors.back()) != range.first_day())
        majors.pop_back();
    std::erase_if(minors, [&](Time time) { return std::ranges::binary_search(majors, time); });
    return {wanted.rounds ? Extent{days_of(range.low), days_of(range.high)} : data, day_numbers(majors),
            day_numbers(minors), label_format(row, range), left_out(row, times)};
}

} // namespace qv::plot
