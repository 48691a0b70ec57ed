#include "table/dates.h"

#include <doctest/doctest.h>

using namespace qv::table;

namespace {

double seconds(std::string_view text, DateForm const& form = {}) {
    auto const moment = read_moment(text, form);
    return moment && !moment->is_time_alone ? moment->seconds : -1;
}

} // namespace

TEST_CASE("moments are read however they are written") {
    constexpr double first_of_may = 1714521600; // 2024
    constexpr double hour = 3600;
    struct {
        char const* text;
        double after; // the first of May 2024 in UTC
    } const table[]{
        {"2024-05-01", 0},
        {"2024-5-1", 0},
        {"2024/05/01", 0},
        {"2024.05.01", 0},
        {"2024-05", 0},
        {"2024-122", 0},
        {"2024-W18-3", 0},
        {"2024-W18", -48 * hour},
        {"1 May 2024", 0},
        {"01-May-24", 0},
        {"May 1, 2024", 0},
        {"Wednesday, May 1, 2024", 0},
        {"2024-May-01", 0},
        {"20240501T0630", 6.5 * hour},
        {"2024-05-01T24:00:00", 24 * hour},
        {"2024-05-01 06:30:00.25", 6.5 * hour + 0.25},
        {"2024-05-01T06:30:00,25", 6.5 * hour + 0.25},
        {"2024-05-01 6:30 pm", 18.5 * hour},
        {"2024-05-01 12:30 AM", 0.5 * hour},
        {"2024-05-01 12:30 p.m.", 12.5 * hour},
        {"2024-05-01T06:30Z", 6.5 * hour},
        {"2024-05-01 06:30 UTC", 6.5 * hour},
        {"2024-05-01T06:30+02:00", 4.5 * hour},
        {"2024-05-01T06:30-0330", 10 * hour},
        {"2024-05-01T06:30+02", 4.5 * hour},
        {"2024-05-01 06:30 Europe/Berlin", 4.5 * hour},
        {"2024-05-01T06:30+02:00[Europe/Berlin]", 4.5 * hour},
        {"2024-05-01T06:30[Europe/Berlin]", 4.5 * hour},
        {"Wed, 01 May 2024 06:30:00 GMT", 6.5 * hour},
        {"01/May/2024:06:30:00 +0000", 6.5 * hour},
    };
    for (auto const& row : table) {
        CAPTURE(row.text);
        CHECK(seconds(row.text) == first_of_may + row.after);
    }
    CHECK(seconds("1969-12-31T23:59:59") == -1 + 0);
    CHECK(*utc_seconds("0000-01-01") == -62167219200);
    CHECK(*utc_seconds("2024-03-31 01:00:00.123456") == 1711846800.123456);
    CHECK(seconds("1969-07-20") == seconds("20.7.69"));
}

TEST_CASE("the order of numbers decides, but where a year or a dot leaves no question") {
    CHECK(seconds("05/01/24", {DateOrder::DayFirst}) == seconds("2024-01-05"));
    CHECK(seconds("05/01/24", {DateOrder::MonthFirst}) == seconds("2024-05-01"));
    CHECK(seconds("05/01/24", {DateOrder::YearFirst}) == seconds("2005-01-24"));
    CHECK(seconds("05.01.24", {DateOrder::MonthFirst}) == seconds("2024-01-05"));
    CHECK(seconds("2024/05/01", {DateOrder::MonthFirst}) == seconds("2024-05-01"));
    CHECK(seconds("17/01/24", {DateOrder::MonthFirst}) == -1);
    CHECK_FALSE(utc_seconds("05/01/24"));
    CHECK(utc_seconds("17/01/2024") == std::nullopt);
}

TEST_CASE("times without an offset are those of the zone that is told") {
    const DateForm berlin{DateOrder::DayFirst, time_zone("Europe/Berlin")};
    CHECK(seconds("2024-05-01 06:30", berlin) == seconds("2024-05-01T04:30Z"));
    CHECK(seconds("2024-01-01 06:30", berlin) == seconds("2024-01-01T05:30Z"));
    CHECK(seconds("2024-05-01 06:30Z", berlin) == seconds("2024-05-01T06:30Z"));
    CHECK_THROWS_WITH(
        time_zone("Mars/Olympus"),
        "there is no time zone \"Mars/Olympus\"; give a name such as Europe/Berlin, UTC or local");
}

TEST_CASE("times alone") {
    CHECK(read_moment("9:30")->is_time_alone);
    CHECK(read_moment("9:30")->seconds == 34200);
    CHECK(read_moment("09:30:05.5")->seconds == 34205.5);
    CHECK(read_moment("1:15 PM")->seconds == 47700);
    CHECK(read_moment("11 pm")->seconds == 82800);
}

TEST_CASE("what is no moment is none") {
    for (char const* text : {"",
                             "2000",
                             "20000101",
                             "2000-13-01",
                             "1900-02-29",
                             "2000-01-01T",
                             "2000-01-01T25:00",
                             "2000-01-01T24:01",
                             "2000-01-01T12:60",
                             "2000-01-01T12:00:nan",
                             "2000-01-01T12:00:5",
                             "2000-01-01x",
                             "2000-01-01T-1:00",
                             "1.5",
                             "1",
                             "12",
                             "-5",
                             "2000-366x",
                             "2001-366",
                             "2024-W54",
                             "May",
                             "Monday",
                             "12:30 America",
                             "13:00 pm",
                             "5/6",
                             "1/2/3",
                             "1.2.3",
                             "2024-05-01 06:30 Nowhere/There",
                             "2024-05-01T06:30+2",
                             "10.0.0.1",
                             "1-2"}) {
        CAPTURE(text);
        CHECK_FALSE(read_moment(text));
    }
}

TEST_CASE("patterns of one's own") {
    struct {
        char const *text, *pattern, *same;
    } const table[]{
        {"01.05.2024 06-30", "%d.%m.%Y %H-%M", "2024-05-01 06:30"},
        {"24|122|6 PM", "%y|%j|%I %p", "2024-05-01 18:00"},
        {"Wed May  1 06:30:05.5 2024", "%a %b %d %H:%M:%S.%f %Y", "2024-05-01 06:30:05.5"},
        {"2024 05 01 06:30 +0200", "%Y %m %d %H:%M %z", "2024-05-01 04:30"},
        {"@1714521600", "@%s", "2024-05-01"},
    };
    for (auto const& row : table) {
        CAPTURE(row.text);
        auto const moment = read_moment_by(row.text, row.pattern, {});
        REQUIRE(moment);
        CHECK(moment->seconds == seconds(row.same));
    }
    CHECK_FALSE(read_moment_by("01.05.2024 x", "%d.%m.%Y", {}));
    CHECK_FALSE(read_moment_by("31.02.2024", "%d.%m.%Y", {}));
    CHECK(read_moment_by("6:30", "%H:%M", {})->is_time_alone);
    CHECK(fault_of_pattern("%d.%m.%Y") == "");
    CHECK(fault_of_pattern("%Q").starts_with("has %Q, which is none of"));
    CHECK(fault_of_pattern("%Y%") == "ends with a %");
    CHECK(fault_of_pattern("yyyy") == "has no part such as %Y");
}

TEST_CASE("a decimal year counts the days of its own year") {
    CHECK(decimal_year(seconds("2001-01-01")) == 2001);
    CHECK(decimal_year(seconds("2000-12-31")) == doctest::Approx(2000 + 365.0 / 366));
    CHECK(decimal_year(seconds("1850-07-02T12:00")) == 1850.5);
}

TEST_CASE("counts from 1970 in the unit that fits our time") {
    CHECK(seconds_in(unix_unit_of(1.7e9)) == 1);
    CHECK(seconds_in(unix_unit_of(1.7e12)) == 1e-3);
    CHECK(seconds_in(unix_unit_of(1.7e15)) == 1e-6);
    CHECK(seconds_in(unix_unit_of(1.7e18)) == 1e-9);
    CHECK(unix_unit_named("us") == UnixUnit::Microseconds);
    CHECK_FALSE(unix_unit_named("years"));
}
