#include "qvplot/date_axis.h"

#include "base/picture_format.h"
#include "table/dates.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <set>

using namespace qv;
using namespace qv::plot;

namespace {

std::vector<std::string> labels(AxisPlan const& plan) {
    std::vector<std::string> texts;
    for (double const value : plan.major) texts.push_back(picture_format(value, plan.format));
    return texts;
}

std::string joined(AxisPlan const& plan) {
    std::string text;
    for (std::string const& label : labels(plan)) text += (text.empty() ? "" : ", ") + label;
    return text + (plan.left_out.empty() ? "" : " (" + plan.left_out + ")");
}

AxisPlan plan(char const* first, char const* last, double characters = 140) {
    LabelRoom room;
    room.labels = 10;
    room.characters = characters;
    return plan_date_axis({*table::iso_date(first), *table::iso_date(last)}, room);
}

// A tick lies on a whole unit when the text to the second ends like this.
bool on_whole_unit(double value, std::string const& format) {
    const std::string text = picture_format(value, "yyyy-mm-dd hh:mm:ss");
    std::string const end = format == "yyyy"                         ? "-01-01 00:00:00"
                            : format == "mmm yyyy"                   ? "-01 00:00:00"
                            : format == "d mmm"                      ? " 00:00:00"
                            : format.find("ss") == std::string::npos ? ":00"
                                                                     : "";
    return text.ends_with(end);
}

} // namespace

TEST_CASE("spans from seconds to centuries and the labels they get") {
    struct {
        char const* first;
        char const* last;
        char const* labels;
    } const table[]{
        {"2024-02-29T23:59:58", "2024-03-01T00:00:02",
         "29 Feb 23:59:58, 29 Feb 23:59:59, 1 Mar 00:00:00, 1 Mar 00:00:01, 1 Mar 00:00:02 (2024)"},
        {"2024-05-01T10:00", "2024-05-01T10:05", "10:00, 10:01, 10:02, 10:03, 10:04, 10:05 (1 May 2024)"},
        // The midnight that ends a day is no second 00:00.
        {"2024-05-01", "2024-05-01T23:30",
         "00:00, 03:00, 06:00, 09:00, 12:00, 15:00, 18:00, 21:00 (1 May 2024)"},
        {"2023-12-30T06:00", "2024-01-01T18:00",
         "30 Dec 12:00, 31 Dec 00:00, 31 Dec 12:00, 1 Jan 00:00, 1 Jan 12:00 (2023 to 2024)"},
        {"2024-02-26", "2024-03-02", "26 Feb, 27 Feb, 28 Feb, 29 Feb, 1 Mar, 2 Mar (2024)"},
        {"2023-02-01", "2023-04-01", // Mondays
         "6 Feb, 13 Feb, 20 Feb, 27 Feb, 6 Mar, 13 Mar, 20 Mar, 27 Mar (2023)"},
        {"2012-01-01", "2012-12-31", "Jan 2012, Mar 2012, May 2012, Jul 2012, Sep 2012, Nov 2012"},
        {"2012-01-01", "2015-12-31",
         "Jan 2012, Jul 2012, Jan 2013, Jul 2013, Jan 2014, Jul 2014, Jan 2015, Jul 2015"},
        {"1958-03-01", "2020-04-01", "1960, 1970, 1980, 1990, 2000, 2010, 2020"},
        {"0100-01-01", "9999-12-31", "1000, 2000, 3000, 4000, 5000, 6000, 7000, 8000, 9000"},
        {"2024-05-01T10:00", "2024-05-01T10:00", // one moment
         "1 May 00:00, 1 May 03:00, 1 May 06:00, 1 May 09:00, 1 May 12:00, 1 May 15:00, 1 May 18:00, 1 May "
         "21:00 (2024)"},
    };
    for (auto const& row : table) {
        CAPTURE(row.first);
        CAPTURE(row.last);
        CHECK(joined(plan(row.first, row.last)) == row.labels);
    }
}

TEST_CASE("ticks of any span rise, lie on whole units inside the range, and no label comes twice") {
    std::mt19937 random(11);
    std::uniform_real_distribution<double> logarithm(std::log10(2.0 / 86400), std::log10(365.25 * 9000));
    std::uniform_real_distribution<double> part(0, 1);
    double const first_day = *table::iso_date("0100-01-01"), last_day = *table::iso_date("9999-12-31");
    for (int i = 0; i < 3000; ++i) {
        double const span = std::pow(10, logarithm(random));
        double const low = first_day + part(random) * (last_day - first_day - span);
        LabelRoom room;
        room.labels = 10;
        room.characters = 30 + 150 * part(random);
        const AxisPlan axis = plan_date_axis({low, low + span}, room);
        CAPTURE(picture_format(low, "yyyy-mm-dd hh:mm:ss"));
        CAPTURE(span);
        CAPTURE(joined(axis));
        double const millisecond = 1e-3 / 86400;
        REQUIRE(axis.range.low <= low + millisecond);
        REQUIRE(axis.range.high >= low + span - millisecond);
        REQUIRE(axis.range.span() <= 2 * span + 1); // little room is wasted
        REQUIRE(!axis.major.empty());
        REQUIRE(std::ranges::adjacent_find(axis.major, std::ranges::greater_equal()) == axis.major.end());
        REQUIRE(axis.major.front() >= axis.range.low);
        REQUIRE(axis.major.back() <= axis.range.high);
        for (double const value : axis.major) REQUIRE(on_whole_unit(value, axis.format));
        const std::vector<std::string> texts = labels(axis);
        REQUIRE(std::set<std::string>(texts.begin(), texts.end()).size() == texts.size());
        for (double const value : axis.minor) REQUIRE(!std::ranges::binary_search(axis.major, value));
    }
}

TEST_CASE("narrow axes get fewer labels") {
    auto const wide = plan("2012-01-01", "2015-12-31", 140), narrow = plan("2012-01-01", "2015-12-31", 40);
    CHECK(narrow.major.size() < wide.major.size());
    CHECK(narrow.major.size() >= 2);
}

TEST_CASE("a zoomed axis of dates keeps its ends, and says when where seconds are too coarse for labels") {
    LabelRoom room;
    room.characters = 80;
    double const day = *table::iso_date("2024-02-29");
    const Extent shown{day + 0.3, day + 2.8};
    const AxisPlan days = plan_date_axis(shown, room, RoundTo::Nothing);
    CHECK(days.range == shown);
    CHECK(joined(days) == "29 Feb 12:00, 1 Mar 00:00, 1 Mar 12:00, 2 Mar 00:00, 2 Mar 12:00 (2024)");
    double const second = 1.0 / 86400;
    const AxisPlan moment =
        plan_date_axis({day + 5.25 * second, day + 5.75 * second}, room, RoundTo::Nothing);
    CHECK(moment.left_out == "29 February 2024, 00:00:05.250 to 00:00:05.750");
    CHECK(moment.major.size() == 1); // before the range
    CHECK(moment.major[0] < moment.range.low);
    // Far beyond any date.
    CHECK(plan_date_axis({-1, 1.79e308}, room, RoundTo::Nothing).major.size() > 1);
}
