#include "scale/zone_rule.h"

#include <doctest/doctest.h>

using namespace qv::scale;
using namespace std::chrono;

TEST_CASE("rules of clocks") {
    struct Row {
        char const* rule;
        int month, day, hour; // of 2041, UTC
        seconds offset;
        char const* abbreviation;
    };
    for (Row const& row : {Row{"CET-1CEST,M3.5.0,M10.5.0/3", 3, 31, 0, 1h, "CET"},
                           {"CET-1CEST,M3.5.0,M10.5.0/3", 3, 31, 1, 2h, "CEST"},
                           {"CET-1CEST,M3.5.0,M10.5.0/3", 10, 27, 0, 2h, "CEST"},
                           {"CET-1CEST,M3.5.0,M10.5.0/3", 10, 27, 1, 1h, "CET"},
                           {"EST5EDT,M3.2.0,M11.1.0", 3, 10, 6, -5h, "EST"},
                           {"EST5EDT,M3.2.0,M11.1.0", 3, 10, 7, -4h, "EDT"},
                           {"AEST-10AEDT,M10.1.0,M4.1.0/3", 1, 1, 0, 11h, "AEDT"}, // summer across new year
                           {"AEST-10AEDT,M10.1.0,M4.1.0/3", 7, 1, 0, 10h, "AEST"},
                           {"<+1030>-10:30<+11>-11,M10.1.0,M4.1.0", 1, 1, 0, 11h, "+11"},
                           {"IST-1GMT0,M10.5.0,M3.5.0/1", 1, 1, 0, 0h, "GMT"}, // winter time is the exception
                           {"IST-1GMT0,M10.5.0,M3.5.0/1", 7, 1, 0, 1h, "IST"},
                           {"<-02>2<-01>,M3.5.0/-1,M10.5.0/0", 3, 31, 0, -2h, "-02"},
                           {"<-02>2<-01>,M3.5.0/-1,M10.5.0/0", 3, 31, 1, -1h, "-01"},
                           {"EET-2EEST,M3.4.4/50,M10.4.4/50", 3, 29, 23, 2h, "EET"},
                           {"EET-2EEST,M3.4.4/50,M10.4.4/50", 3, 30, 0, 3h, "EEST"},
                           {"X0Y,J60/0,J300/0", 3, 1, 0, 1h, "Y"},
                           {"X0Y,59/0,300/0", 2, 28, 23, 0h, "X"},
                           {"MSK-3", 7, 1, 0, 3h, "MSK"},
                           {"<+0545>-5:45", 7, 1, 0, 5h + 45min, "+0545"}}) {
        CAPTURE(row.rule);
        CAPTURE(row.hour);
        auto const rule = ZoneRule::read(row.rule);
        REQUIRE(rule.has_value());
        const sys_seconds time = sys_days{year{2041} / row.month / row.day} + hours(row.hour);
        auto const found = rule->stretch(time);
        CHECK(found.setting->offset == row.offset);
        CHECK(found.setting->abbreviation == row.abbreviation);
        CHECK((found.begin <= time && time < found.end));
    }
}

TEST_CASE("what is no rule is none") {
    for (char const* text :
         {"", "CET", "-1", "CET-1CEST", "CET-1CEST,M3.5.0", "CET-1CEST,M13.5.0,M10.5.0",
          "CET-1CEST,M3.6.0,M10.5.0", "CET-1CEST,M3.5.7,M10.5.0", "<CET-1", "CET-1x", "CET999999999999"})
        CHECK_FALSE(ZoneRule::read(text).has_value());
}
