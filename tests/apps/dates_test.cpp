#include "table/dates.h"

#include <doctest/doctest.h>

using namespace qv::table;

TEST_CASE("ISO dates and times become days since 1899-12-30") {
    struct {
        char const* text;
        double days;
    } const table[]{
        {"1899-12-30", 0},
        {"1900-03-01", 61}, // 1900 was no leap year
        {"2000-02-29", 36585},
        {"2000-02", 36557},
        {"2000-01-01T12:00", 36526.5},
        {"2000-01-01 06:00:00Z", 36526.25},
        {"2000-01-01T24:00:00", 36527},
        {"1899-12-29T18:00", -0.25},
    };
    for (auto const& row : table) {
        CAPTURE(row.text);
        REQUIRE(iso_date(row.text));
        CHECK(*iso_date(row.text) == row.days);
    }
    CHECK(*iso_date("2000-01-01T00:00:01.50") == doctest::Approx(36526 + 1.5 / 86400).epsilon(1e-15));
}

TEST_CASE("what is no date is none") {
    for (char const* text :
         {"", "2000", "2000-13-01", "1900-02-29", "2000-1-1", "2000-01-01T", "2000-01-01T25:00",
          "2000-01-01T24:01", "2000-01-01T12:60", "2000-01-01T12:00:nan", "2000-01-01T12:00:5",
          "2000-01-01T12:00+01:00", "2000-01-01x", "20000101", "2000-01-01T-1:00", "1.5"}) {
        CAPTURE(text);
        CHECK_FALSE(iso_date(text));
    }
}

TEST_CASE("moments are seconds since 1970, exact to the microsecond") {
    CHECK(utc_seconds("1970-01-01") == 0);
    CHECK(utc_seconds("2024-03-31T01:00:00Z") == 1711846800);
    CHECK(utc_seconds("2024-03-31 01:00:00.123456") == 1711846800.123456);
    CHECK(utc_seconds("1969-12-31T23:59:59") == -1);
    CHECK(utc_seconds("0000-01-01") == -62167219200);
    CHECK_FALSE(utc_seconds("12"));
}

TEST_CASE("a decimal year counts the days of its own year") {
    CHECK(decimal_year(*iso_date("2001-01-01")) == 2001);
    CHECK(decimal_year(*iso_date("2000-12-31")) == doctest::Approx(2000 + 365.0 / 366));
    CHECK(decimal_year(*iso_date("1850-07-02T12:00")) == 1850.5);
}
