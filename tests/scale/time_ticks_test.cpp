#include "scale/time_ticks.h"

#include "base/text.h"
#include "qvgraph/fault.h"
#include "scale/time_text.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <random>

using namespace qv::scale;
using namespace std::chrono;

namespace {

double const width_of_character = 6;
double const gap = 12;

double width(std::string_view text) {
    return width_of_character * static_cast<double>(text.size());
}

/// Seconds since 1970 of a time in UTC.
double utc(int y, unsigned m, unsigned d, double hour = 0) {
    auto const day = sys_days{year{y} / month{m} / std::chrono::day{d}};
    return static_cast<double>(sys_seconds(day).time_since_epoch().count()) + hour * 3600;
}

TimeScale scale_of(double low, double high, std::string_view zone, double length = 1000) {
    return {.low = low,
            .high = high,
            .zone = TimeZone::named(zone),
            .pattern = {},
            .lines = TimeLabelLines::CoarseBelow,
            .length = length,
            .room_before = 60,
            .room_after = 60,
            .gap = gap,
            .minor_gap = 4,
            .size_along = width};
}

std::vector<TimeTick> majors(TimeScale const& scale) {
    auto ticks = time_ticks(scale);
    REQUIRE(ticks.has_value());
    std::erase_if(*ticks, [](TimeTick const& tick) { return !tick.is_major; });
    return *ticks;
}

/// Labels with "|" between lines and ", " between ticks.
std::string labels(TimeScale const& scale) {
    std::string text;
    for (TimeTick const& tick : majors(scale)) text += ", " + tick.label;
    text.erase(0, 2);
    std::ranges::replace(text, '\n', '|');
    return text;
}

std::vector<double> steps(TimeScale const& scale) {
    std::vector<double> found;
    const std::vector<TimeTick> ticks = majors(scale);
    for (std::size_t i = 1; i < ticks.size(); ++i) found.push_back(ticks[i].value - ticks[i - 1].value);
    return found;
}

std::string read_out(double value, double step, std::string_view zone = "UTC",
                     std::string_view pattern = "") {
    return time_at_pixel(value, step, TimeZone::named(zone), pattern).value_or("none");
}

int random_number(std::mt19937& random, int from, int to) {
    return std::uniform_int_distribution(from, to)(random);
}

/// Whether a tick stands where ticks this far apart may: on years, months, Mondays, days, hours, ...
bool is_on_boundary(double value, double spacing, TimeZone const& zone) {
    constexpr double day_length = 86400, shortest_day = 82800;
    const Instant time = *instant_of(value);
    const LocalTime shown = zone.local(time);
    auto const today = floor<days>(shown);
    const year_month_day date(today);
    bool const day_begins = zone.first_instant(today) == time;
    if (spacing >= 300 * day_length) return day_begins && date.month() == January && date.day() == day{1};
    if (spacing >= 27 * day_length) return day_begins && date.day() == day{1};
    if (spacing >= 6.9 * day_length) return day_begins && weekday(today) == Monday;
    if (spacing >= 1.9 * day_length) return day_begins && static_cast<unsigned>(date.day()) % 2 == 1;
    if (spacing >= shortest_day) return day_begins;
    auto const since_midnight = shown - today;
    for (auto const& unit :
         {microseconds(3h), microseconds(1h), microseconds(15min), microseconds(1min), microseconds(10s),
          microseconds(1s), microseconds(100ms), microseconds(1ms), microseconds(100us), microseconds(10us)})
        // Where clocks are changed by an hour the spacing is another than the step.
        if (spacing >= duration<double>(unit).count() * 0.999 && unit <= 1h)
            return day_begins || since_midnight % unit == 0us || since_midnight % (unit / 2) == 0us;
    return true;
}

} // namespace

TEST_CASE("a zone is known by its name") {
    try {
        TimeZone::named("Europe/Berln");
        FAIL("an unknown zone was taken");
    } catch (qv::Fault const& fault) {
        CHECK(fault.number == 5);
        CHECK(fault.description.find("\"Europe/Berln\"") != std::string::npos);
    }
    CHECK_THROWS_AS(TimeZone::named(""), qv::Fault);
    CHECK_NOTHROW(TimeZone::named("local"));
    auto const offset = [](std::string_view zone, double value) {
        return TimeZone::named(zone).stretch(*instant_of(value)).offset;
    };
    CHECK(offset("UTC", utc(2024, 7, 1)) == 0h);
    CHECK(offset("Europe/Berlin", utc(2024, 7, 1)) == 2h);
    CHECK(offset("Asia/Kolkata", utc(2024, 7, 1)) == 5h + 30min);
    // Beyond the changes that the zone data list one by one.
    CHECK(offset("Europe/Berlin", utc(2038, 1, 1)) == 1h);
    CHECK(offset("Europe/Berlin", utc(2040, 7, 1)) == 2h);
    CHECK(offset("Europe/Moscow", utc(2040, 7, 1)) == 3h);
    CHECK(offset("America/New_York", utc(9999, 7, 1)) == -4h);
}

TEST_CASE("the beginning of summer time: an hour is missing, no place") {
    const TimeScale hourly = scale_of(utc(2024, 3, 30, 22), utc(2024, 3, 31, 5), "Europe/Berlin");
    CHECK(labels(hourly) == "23:00|30 Mar 2024, 00:00|31 Mar, 01:00, 03:00, 04:00, 05:00, 06:00, 07:00");
    for (double const step : steps(hourly)) CHECK(step == 3600);
    // Of steps of two hours one begins in the missing hour, and has no place.
    CHECK(labels(scale_of(utc(2024, 3, 30, 21), utc(2024, 3, 31, 7), "Europe/Berlin", 400))
          == "22:00|30 Mar 2024, 00:00|31 Mar, 04:00, 06:00, 08:00");
    const TimeScale daily = scale_of(utc(2024, 3, 28, 23), utc(2024, 4, 2, 22), "Europe/Berlin", 400);
    CHECK(labels(daily) == "29|Mar 2024, 30, 31, 1|Apr, 2, 3");
    CHECK(steps(daily) == std::vector<double>{86400, 86400, 82800, 86400, 86400});
}

TEST_CASE("the end of summer time: an hour comes twice, in two places") {
    const TimeScale hourly = scale_of(utc(2024, 10, 26, 22), utc(2024, 10, 27, 4), "Europe/Berlin");
    CHECK(labels(hourly) == "00:00|27 Oct 2024, 01:00, 02:00, 02:00, 03:00, 04:00, 05:00");
    for (double const step : steps(hourly)) CHECK(step == 3600);
    // Of steps of two hours the second place would be too near to the first.
    const TimeScale coarser = scale_of(utc(2024, 10, 26, 20), utc(2024, 10, 27, 7), "Europe/Berlin", 400);
    CHECK(labels(coarser) == "22:00|26 Oct 2024, 00:00|27 Oct, 02:00, 04:00, 06:00, 08:00");
    CHECK(steps(coarser) == std::vector<double>{7200, 7200, 10800, 7200, 7200});
}

TEST_CASE("days that do not begin at midnight") {
    // Clocks go from 0:00 to 1:00.
    const TimeScale brazil = scale_of(utc(2017, 10, 14, 3), utc(2017, 10, 16, 3), "America/Sao_Paulo", 300);
    CHECK(steps(scale_of(brazil.low, brazil.high + 86400, "America/Sao_Paulo", 200))
          == std::vector<double>{86400, 82800, 86400});
    CHECK(labels(scale_of(utc(2017, 10, 15, 1), utc(2017, 10, 15, 7), "America/Sao_Paulo"))
          == "22:00|14 Oct 2017, 23:00, 01:00|15 Oct, 02:00, 03:00, 04:00, 05:00");
    // The 30th of December 2011 did not take place.
    const TimeScale samoa = scale_of(utc(2011, 12, 28), utc(2012, 1, 2), "Pacific/Apia", 400);
    CHECK(labels(samoa) == "28|Dec 2011, 29, 31, 1|Jan 2012, 2");
    for (double const step : steps(samoa)) CHECK(step == 86400);
}

TEST_CASE("leap days") {
    auto const end_of_february = [](int y) {
        return labels(scale_of(utc(y, 2, 27), utc(y, 3, 2), "UTC", 160));
    };
    CHECK(end_of_february(2024) == "27|Feb 2024, 28, 29, 1|Mar, 2");
    CHECK(end_of_february(2023) == "27|Feb 2023, 28, 1|Mar, 2");
    CHECK(end_of_february(2000) == "27|Feb 2000, 28, 29, 1|Mar, 2");
    CHECK(end_of_february(1900) == "27|Feb 1900, 28, 1|Mar, 2");
    CHECK(labels(scale_of(utc(2024, 2, 24), utc(2024, 3, 6), "UTC", 200)) == "25|Feb 2024, 27, 1|Mar, 3, 5");
}

TEST_CASE("labels of all spans") {
    struct Row {
        double low, span, length;
        char const* text;
    };
    double const spring = utc(2024, 5, 30, 21.5);
    for (Row const& row : {
             Row{spring, 5e-6, 400, "00.000000 s|30 May 2024 21:30, 00.000002 s, 00.000004 s"},
             {spring + 59.9, 0.5, 500,
              "59.9 s|30 May 2024 21:30, 00.0 s|21:31, 00.1 s, 00.2 s, 00.3 s, 00.4 s"},
             {spring, 30, 500,
              "21:30:00|30 May 2024, 21:30:05, 21:30:10, 21:30:15, 21:30:20, 21:30:25, 21:30:30"},
             {spring, 3600, 400, "21:30|30 May 2024, 21:40, 21:50, 22:00, 22:10, 22:20, 22:30"},
             {spring, 86400, 200, "00:00|31 May 2024, 06:00, 12:00, 18:00"},
             {spring, 3 * 86400, 500, "00:00|31 May 2024, 12:00, 00:00|1 Jun, 12:00, 00:00|2 Jun, 12:00"},
             {spring, 30 * 86400, 400, "3|Jun 2024, 10, 17, 24"},
             {utc(2023, 12, 1), 100 * 86400, 120, "Dec|2023, Jan|2024, Feb, Mar"},
             {utc(2024, 1, 1), 365 * 86400, 700,
              "Jan|2024, Feb, Mar, Apr, May, Jun, Jul, Aug, Sep, Oct, Nov, Dec"},
             {utc(2024, 1, 1), 731 * 86400, 400,
              "Jan|2024, Apr, Jul, Oct, Jan|2025, Apr, Jul, Oct, Jan|2026"},
             {utc(2024, 1, 1), 10 * 365.25 * 86400, 300, "2024, 2026, 2028, 2030, 2032"},
             {utc(1790, 7, 1), 300 * 365.25 * 86400, 500, "1800, 1850, 1900, 1950, 2000, 2050"},
             {utc(-50, 1, 1), 100 * 365.25 * 86400, 500, "-50, -40, -30, -20, -10, 0, 10, 20, 30, 40, 50"},
         }) {
        CAPTURE(row.span);
        CHECK(labels(scale_of(row.low, row.low + row.span, "UTC", row.length)) == row.text);
    }
}

TEST_CASE("the coarser part goes where there is room for it") {
    double const evening = utc(2024, 5, 30, 22);
    TimeScale scale = scale_of(evening + 1800, evening + 6 * 3600, "UTC", 320);
    // At the beginning there is none beside that of the next day.
    CHECK(labels(scale) == "23:00, 00:00|31 May 2024, 01:00, 02:00, 03:00, 04:00");
    scale.lines = TimeLabelLines::CoarseAbove;
    CHECK(labels(scale).find("31 May 2024|00:00") != std::string::npos);
    scale.lines = TimeLabelLines::One;
    scale.length = 450;
    CHECK(labels(scale) == "23:00, 31 May 2024 00:00, 01:00, 02:00, 03:00, 04:00");
    // A label that would be cut is left out, and a part of one.
    TimeScale narrow = scale_of(utc(2024, 5, 30), utc(2024, 5, 31), "UTC", 300);
    narrow.room_before = narrow.room_after = 0;
    CHECK(labels(narrow) == ", 06:00|30 May 2024, 12:00, 18:00, ");
    narrow.room_before = narrow.room_after = 20;
    CHECK(labels(narrow) == "00:00, 06:00|30 May 2024, 12:00, 18:00, 00:00|31 May");
}

TEST_CASE("patterns of the host") {
    auto const with = [](TimeScale scale, std::string_view pattern) {
        scale.pattern = pattern;
        return labels(scale);
    };
    const TimeScale week = scale_of(utc(2024, 5, 30), utc(2024, 6, 6), "Europe/Berlin", 600);
    CHECK(with(week, "d mmm yyyy")
          == "31 May 2024, 1 Jun 2024, 2 Jun 2024, 3 Jun 2024, 4 Jun 2024, 5 Jun 2024, 6 Jun 2024");
    // Ticks have texts of their own, so the ticks of a few hours stand on days; where there are fewer than
    // two, a text is shown once.
    CHECK(with(scale_of(utc(2024, 5, 30), utc(2024, 6, 2), "UTC"), "ddd d mmm")
          == "Thu 30 May, Fri 31 May, Sat 1 Jun, Sun 2 Jun");
    CHECK(with(scale_of(utc(2024, 5, 30, 20), utc(2024, 5, 31, 8), "UTC", 500), "d mmm") == "31 May, ");
    // Half a second is not a second.
    CHECK(with(scale_of(utc(2024, 5, 30) + 0.7, utc(2024, 5, 30) + 1.9, "UTC", 300), "hh:mm:ss").find("02")
          == std::string::npos);
    CHECK(with(scale_of(utc(40, 1, 1), utc(60, 1, 1), "UTC", 1000), "yyyy").starts_with("40, 42, "));
}

TEST_CASE("ticks of random ranges in random zones") {
    constexpr std::array zones{"UTC",          "Europe/Berlin",       "America/New_York",
                               "Asia/Kolkata", "Australia/Lord_Howe", "America/Sao_Paulo",
                               "Pacific/Apia", "Africa/Cairo",        "Asia/Kathmandu"};
    std::mt19937 random(20240229);
    for (int i = 0; i < 4000; ++i) {
        const TimeZone zone = TimeZone::named(zones[static_cast<std::size_t>(random_number(random, 0, 8))]);
        double const span = std::pow(10, std::uniform_real_distribution(-4.5, 10.8)(random));
        bool const around_now = span < 1e8 || i % 2 == 0;
        double const middle = around_now ? std::uniform_real_distribution(-1e9, 6e9)(random)
                                         : std::uniform_real_distribution(-1.6e11, 1.6e11)(random);
        TimeScale scale =
            scale_of(middle - span / 2, middle + span / 2, "UTC", random_number(random, 320, 1600));
        scale.zone = zone;
        scale.lines = static_cast<TimeLabelLines>(random_number(random, 0, 1));
        CAPTURE(i);
        CAPTURE(span);
        CAPTURE(scale.low);
        auto const ticks = time_ticks(scale);
        REQUIRE(ticks.has_value());
        CHECK(std::ranges::is_sorted(*ticks, std::ranges::less_equal(), &TimeTick::value));
        const std::vector<TimeTick> found = majors(scale);
        double spacing = span;
        for (std::size_t k = 1; k < found.size(); ++k)
            spacing = std::min(spacing, found[k].value - found[k - 1].value);
        std::array<double, 2> ends{-HUGE_VAL, -HUGE_VAL};
        int count = 0;
        for (TimeTick const& tick : found) {
            CHECK(is_on_boundary(tick.value, spacing, zone));
            CHECK((tick.value >= scale.low && tick.value <= scale.high));
            if (tick.label.empty()) continue;
            ++count;
            auto lines = qv::lines_of(tick.label);
            if (scale.lines == TimeLabelLines::CoarseAbove) std::ranges::reverse(lines);
            for (std::size_t line = 0; line < lines.size(); ++line) {
                double const at = (tick.value - scale.low) / (scale.high - scale.low) * scale.length,
                             half = width(lines[line]) / 2;
                CHECK(at - half >= ends[line] + gap - 1e-6);
                CHECK((at - half >= -60 && at + half <= scale.length + 60));
                ends[line] = at + half;
            }
        }
        CHECK((count >= 2 && count <= 12));
    }
}

TEST_CASE("ticks stay where they are while the range moves") {
    for (double const span : {0.02, 90.0, 40000.0, 1e6, 3e7, 1e9}) {
        auto const first = time_ticks(scale_of(1.7e9, 1.7e9 + span, "Europe/Berlin", 500));
        for (int i = 1; i < 40; ++i) {
            double const low = 1.7e9 + i * span / 40;
            auto const moved = time_ticks(scale_of(low, low + span, "Europe/Berlin", 500));
            std::vector<double> before, after;
            for (TimeTick const& tick : *first)
                if (tick.value >= low) before.push_back(tick.value);
            for (TimeTick const& tick : *moved)
                if (tick.value <= 1.7e9 + span) after.push_back(tick.value);
            CHECK(before == after);
        }
    }
}

TEST_CASE("minor ticks divide major ones on the calendar, as far as there is room") {
    auto const minors_between_majors = [](double low, double high, double length) {
        auto const ticks = *time_ticks(scale_of(low, high, "UTC", length));
        auto const is_major = [](TimeTick const& tick) { return tick.is_major; };
        auto const first = std::ranges::find_if(ticks, is_major);
        auto const second = std::find_if(first + 1, ticks.end(), is_major);
        return second - first - 1;
    };
    CHECK(minors_between_majors(utc(2024, 1, 1), utc(2024, 1, 2), 1000) == 2); // hours of three
    CHECK(minors_between_majors(utc(2024, 1, 1), utc(2024, 1, 31), 500) == 6); // days of weeks
    CHECK(minors_between_majors(utc(2024, 1, 1), utc(2034, 1, 1), 500) == 3);  // half years
    CHECK(minors_between_majors(utc(1900, 1, 1), utc(2000, 1, 1), 100) == 3);
    CHECK(minors_between_majors(utc(1900, 1, 1), utc(2000, 1, 1), 12) == 0);
}

TEST_CASE("what is no stretch of the calendar has no ticks, and its borders have") {
    double const nan = std::nan("");
    for (auto const& [low, high] : {std::pair(0.0, 0.0),
                                    {1.0, 0.0},
                                    {nan, 1.0},
                                    {0.0, HUGE_VAL},
                                    {1.7e9, 1.7e9 + 1e-6},
                                    {0.0, 1e15},
                                    {-1e300, 1e300},
                                    {0.0, 1e-300}})
        CHECK_FALSE(time_ticks(scale_of(low, high, "Europe/Berlin")).has_value());
    CHECK(labels(scale_of(utc(-4000, 1, 1), utc(9999, 12, 31), "Europe/Berlin"))
          == "-2000, 0, 2000, 4000, 6000, 8000");
    CHECK(labels(scale_of(utc(-9999, 1, 1), utc(-9999, 1, 1, 5), "America/New_York", 300)).size() > 10);
    CHECK(time_ticks(scale_of(utc(9999, 12, 31), utc(9999, 12, 31, 23.99), "Asia/Tokyo", 300)).has_value());
    TimeScale tiny = scale_of(0, 1, "UTC", 1);
    tiny.room_before = tiny.room_after = 0;
    CHECK(labels(tiny) == ", , "); // no room for any
}

TEST_CASE("the read-out tells neighbouring pixels apart") {
    double const value = utc(2024, 5, 30, 21.5) + 7.0625;
    struct Row {
        double step;
        char const* text;
    };
    for (Row const& row : {Row{1e9, "2024"},
                           {40 * 86400, "May 2024"},
                           {100000, "30 May 2024"},
                           {86399, "30 May 2024 21:30"},
                           {59, "30 May 2024 21:30:07"},
                           {0.9, "30 May 2024 21:30:07.0"},
                           {0.02, "30 May 2024 21:30:07.06"},
                           {1e-6, "30 May 2024 21:30:07.062500"},
                           {1e-9, "30 May 2024 21:30:07.062500"},
                           {0, "30 May 2024 21:30:07.0625"}}) {
        CAPTURE(row.step);
        CHECK(read_out(value, row.step) == row.text);
    }
    CHECK(read_out(0, 0) == "1 Jan 1970 00:00:00");
    CHECK(
        read_out(1.7e9 + 0.1, 1e-6).ends_with(".100000")); // what a double comes nearest to is a little less
    CHECK(read_out(utc(2024, 10, 27, 0.5), 60, "Europe/Berlin") == "27 Oct 2024 02:30 CEST");
    CHECK(read_out(utc(2024, 10, 27, 1.5), 60, "Europe/Berlin") == "27 Oct 2024 02:30 CET");
    CHECK(read_out(utc(2024, 10, 27, 2.5), 60, "Europe/Berlin") == "27 Oct 2024 03:30");
    CHECK(read_out(value, 1, "Asia/Kolkata", "d/m/yyyy hh:mm") == "31/5/2024 03:00");
    CHECK(read_out(1e13, 1) == "none");
    std::mt19937 random(7);
    for (int i = 0; i < 2000; ++i) {
        double const step = std::pow(10, std::uniform_real_distribution(-6.0, 9.0)(random));
        double const first = std::uniform_real_distribution(0.0, 4e9)(random);
        CHECK(read_out(first, step, "Europe/Berlin") != read_out(first + step, step, "Europe/Berlin"));
    }
}

TEST_CASE("automatic ranges are rounded outwards on the calendar") {
    struct Row {
        double low, high;
        char const *first, *last;
    };
    double const noon = utc(2024, 3, 31, 10); // of a day of 23 hours
    for (Row const& row : {Row{noon, noon, "30 Mar 2024 23:00:00", "1 Apr 2024 00:00:00"},
                           {noon + 12.3, noon + 14.9, "31 Mar 2024 12:00:12.3", "31 Mar 2024 12:00:14.9"},
                           {noon + 1, noon + 3601, "31 Mar 2024 12:00:00", "31 Mar 2024 13:01:00"},
                           {noon, noon + 30 * 86400, "31 Mar 2024 00:00:00", "1 May 2024 00:00:00"},
                           {noon, noon + 9e7, "1 Mar 2024 00:00:00", "1 Mar 2027 00:00:00"},
                           {noon + 1e9, noon, "1 Jan 2024 00:00:00", "1 Jan 2056 00:00:00"}}) {
        auto const range = automatic_time_range(row.low, row.high, TimeZone::named("Europe/Berlin"));
        REQUIRE(range.has_value());
        CHECK(read_out(range->low, 0, "Europe/Berlin") == row.first);
        CHECK(read_out(range->high, 0, "Europe/Berlin") == row.last);
    }
    CHECK_FALSE(automatic_time_range(0, 1e14, TimeZone()).has_value());
    CHECK_FALSE(automatic_time_range(std::nan(""), 1, TimeZone()).has_value());
}
