#include "qvplot/series.h"

#include "temporary_folder.h"

#include <doctest/doctest.h>

using namespace qv::plot;
using qv::test::TemporaryFolder;
using Values = std::vector<double>;

TEST_CASE("rows without x or y are skipped, column by column") {
    const TemporaryFolder folder;
    PlotOptions options;
    options.files = {folder.file("a.csv", "t,u,v\n1,10,\n,20,30\n3,,50\n4,60,70\n")};
    const PlotData data = read_series(options);
    CHECK(data.x_name == "t");
    CHECK_FALSE(data.x_is_date);
    REQUIRE(data.series.size() == 1); // v does not begin with a number
    options.y = {"u", "v"};
    auto const both = read_series(options).series;
    CHECK(both[0].x == Values{1, 4});
    CHECK(both[1].y == Values{50, 70});
}

TEST_CASE("several files: each has the columns it has, named apart where the names meet") {
    const TemporaryFolder folder;
    PlotOptions options;
    options.files = {folder.file("a.csv", "day,n\n2020-01-01,1\n"),
                     folder.file("b.csv", "n;m;day\n2;3;2020-01-02\n")};
    options.x = "day";
    options.y = {"n"};
    options.y2 = {"m"};
    const PlotData data = read_series(options);
    CHECK(data.x_is_date);
    REQUIRE(data.series.size() == 3);
    CHECK(data.series[0].name == "n in a");
    CHECK(data.series[1].name == "n in b");
    CHECK(data.series[2].name == "m");
    CHECK(data.series[2].on_second_axis);
    CHECK(data.series[2].x == data.series[1].x);
}

TEST_CASE("points without a logarithm are taken out, and told of") {
    PlotData data{"x", false, {{"a", {-1, 1, 2, 3}, {1, 0, 5, 6}, false}, {"b", {1, 2}, {-1, -2}, true}}};
    auto const notes = drop_points_without_logarithm(data, {.x = true, .y = true, .y2 = false});
    REQUIRE(notes.size() == 1);
    CHECK(notes[0] == "left out of \"a\" on a logarithmic axis: 2 points without a positive value");
    CHECK(data.series[0].x == Values{2, 3});
    CHECK(data.series[0].y == Values{5, 6});
    CHECK(data.series[1].y == Values{-1, -2});
}

TEST_CASE("reading tells of each million rows of a large file and of its end") {
    const TemporaryFolder folder;
    std::string content = "x,y\n";
    for (int i = 0; i < 1000001; ++i) content += "1,2\n";
    PlotOptions options;
    options.files = {folder.file("large.csv", content), folder.file("small.csv", "x,y\n1,2\n")};
    std::string told;
    read_series(options, [&](Progress const& progress) {
        told += std::to_string(progress.rows) + (progress.done ? " done " : " ");
        CHECK(progress.part > 0.99);
    });
    CHECK(told == "1000000 1000001 done ");
}
