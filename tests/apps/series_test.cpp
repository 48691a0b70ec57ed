#include "qvplot/series.h"

#include "base/text.h"
#include "qvplot/plot_error.h"
#include "temporary_folder.h"

#include <doctest/doctest.h>

using namespace qv::plot;
using qv::test::TemporaryFolder;
using Values = std::vector<double>;

namespace {

// The series as the command line names them, "name x,y x,y | x,y", a bar where the line breaks.
std::string shown(PlotData const& data) {
    std::string text;
    for (Series const& series : data.series) {
        text += (text.empty() ? "" : "; ") + series.name;
        bool broken = true; // a gap at the front, and each one after the first row of it, goes unsaid
        for (std::size_t i = 0; i < series.x.size(); ++i) {
            if (series.has_point(i))
                text += " " + qv::number_text(series.x[i]) + "," + qv::number_text(series.y[i]);
            else if (!broken)
                text += " |";
            broken = !series.has_point(i);
        }
    }
    return text;
}

std::string read(PlotOptions options) {
    PlotData data = read_series(options);
    leave_out_points(data, options);
    std::string text = shown(data);
    for (std::string const& note : notes_of_what_is_left_out(data)) text += "\n" + note;
    return text;
}

std::string refusal(PlotOptions const& options) {
    try {
        return read(options);
    } catch (std::runtime_error const& error) {
        return error.what();
    }
}

} // namespace

TEST_CASE("a file shows what it says") {
    struct {
        char const* content;
        std::vector<std::string> y;
        char const* shown;
    } const table[]{
        // Missing values break the line; an empty first cell does not make a column a text.
        {"t,u,v\n1,10,\n2,,20\n3,30,30\n,40,40\n5,50,\n",
         {},
         "u 1,10 | 3,30 | 5,50; v 2,20 3,30 |\n"
         "left out of \"u\": 1 row without a value, 1 value without an x\n"
         "left out of \"v\": 2 rows without a value, 1 value without an x"},
        {"t,u\n1,NA\n2,1\n3,null\n4,n/a\n5,NaN\n6,2\n",
         {},
         "u 2,1 | 6,2\nleft out of \"u\": 4 rows without a value"},
        {"t,u,w\n1,2,\n3,4,\n,,\n", {}, "u 1,2 3,4 |"},
        // Columns of one name, or of none.
        {"t,n,n,\n1,2,3,4\n", {}, "n (column 2) 1,2; n (column 3) 1,3; column 4 1,4"},
        {"t,n,n\n1,2,3\n", {"n"}, "n (column 2) 1,2; n (column 3) 1,3"},
        {"n,m,n\n1,2,3\n", {"n"}, "n (column 3) 1,3"}, // the first is x
        {"t,n,n\n1,2,3\n", {"n (column 3)"}, "n (column 3) 1,3"},
        // A first line of numbers is no header.
        {"1,2\n3,4\n", {}, "column 2 1,2 3,4"},
        {"1;2,5\n", {}, "column 2 1,2.5"},
        {"2020-01-01,2,\n2020-01-02,3,\n", {}, "column 2 1577836800,2 1577923200,3"},
        {"1,2,3\n4,5,6\n", {"column 3"}, "column 3 1,3 4,6"},
        {"country,1990,1991\n1,2,3\n", {}, "1990 1,2; 1991 1,3"},
        // What is no number is told of.
        {"t,u,place,unit\n1,2,here,m\n",
         {},
         "u 1,2\nleft out of FILE: 2 columns that hold no numbers, \"place\", \"unit\""},
    };
    for (auto const& row : table) {
        const TemporaryFolder folder;
        PlotOptions options;
        options.files = {folder.file("a.csv", row.content)};
        options.y = row.y;
        CAPTURE(row.content);
        const std::string text = qv::replace_all(refusal(options), options.files[0].string(), "FILE");
        CHECK(text == row.shown);
    }
}

TEST_CASE("every file named contributes") {
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder.path() / "b");
    auto const one = folder.file("one.csv", "t,n\n1,2\n"), other = folder.file("other.csv", "t,m\n3,4\n"),
               twin = folder.file("b/one.csv", "t,n\n5,6\n");
    PlotOptions options;
    options.files = {one, other};
    CHECK(read(options) == "n 1,2; m 3,4");
    options.files = {one, one, other, twin};
    CHECK(qv::replace_all(read(options), folder.path().string(), "")
          == "n in /one.csv 1,2; n in /one.csv (2) 1,2; m 3,4; n in /b/one.csv 5,6");
    options.files = {one, other};
    options.y = {"n"};
    CHECK(refusal(options) == other.string() + ": has no column \"n\"; its columns are \"t\", \"m\"");
    options.y = {"n", "k"};
    CHECK(refusal(options) == one.string() + ": has no column \"k\"; its columns are \"t\", \"n\"");
    options.y = {"n", "m", "k"};
    CHECK(refusal(options) == one.string() + ": has no column \"k\"; its columns are \"t\", \"n\"");
    options.y = {"n", "m"};
    CHECK(read(options) == "n 1,2; m 3,4");
    auto const words = folder.file("words.csv", "t,n\n1,a\n");
    options = {};
    options.files = {one, words};
    CHECK(refusal(options)
          == words.string() + ": has no column of numbers beside x; name one with --y, or see --explain");
}

TEST_CASE("a range of x holds for data") {
    const TemporaryFolder folder;
    PlotOptions options;
    options.files = {folder.file("a.csv", "t,n,m\n1,2,3\n2,3,\n3,4,5\n")};
    options.x_range = parse_range("1.5:9");
    CHECK(read(options).ends_with("\nleft out of \"n\": 1 point outside --x-range"
                                  "\nleft out of \"m\": 1 row without a value, 1 point outside --x-range"));
    options.x_range = parse_range("4:5");
    CHECK(refusal(options) == "column \"n\" has no point within --x-range");
    options.x_range = parse_range("0:5");
    options.log.x = true;
    CHECK(refusal(options) == "--x-range: a logarithmic axis begins above 0");
    options.log.x = false;
    options.x_range = parse_range("2020-01-01:2020-02-01");
    CHECK(refusal(options) == "--x-range: \"t\" holds numbers; give two such as 0:10");
    options.files = {folder.file("d.csv", "t,n\n2020-01-01T12:00,2\n2020-03-02,3\n")};
    CHECK(read(options).ends_with("1 point outside --x-range"));
    options.x_range = parse_range("2020-01-01T11:59:2020-01-01T12:01");
    CHECK(read(options).ends_with("1 point outside --x-range"));
    options.x_range = parse_range("-1:1.79e308");
    CHECK(refusal(options) == "--x-range: \"t\" holds dates; give two such as 2010-01-01:2010-12-31");
    for (char const* range : {"1", "1:0", "0:0", "0:1:2", "a:b", "0:inf", "nan:1", "2020-01-02:2020-01-01",
                              "2020-01-01:5", "99-01-01:2000-01-01"})
        CHECK_THROWS_AS(parse_range(range), PlotError);
}

TEST_CASE("values so far apart that no axis has places for them are refused") {
    const TemporaryFolder folder;
    PlotOptions options;
    options.files = {folder.file("a.csv", "t,n\n1,1.7976931348623157e308\n2,-1e308\n")};
    CHECK(
        refusal(options)
        == "the values of one axis reach from -1e+308 to 1.7976931348623157e+308, too far apart to be drawn");
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

TEST_CASE("points without a logarithm break the line and are told of") {
    const TemporaryFolder folder;
    PlotOptions options;
    options.files = {folder.file("a.csv", "x,a,b\n-1,1,-1\n1,0,-2\n2,5,-3\n3,-6,-4\n4,7,-5\n")};
    options.y = {"a"};
    options.y2 = {"b"};
    options.log.x = options.log.y = true;
    CHECK(read(options)
          == "a 2,5 | 4,7; b 1,-2 2,-3 3,-4 4,-5\n"
             "left out of \"a\": 3 points without a positive value for a logarithmic axis\n"
             "left out of \"b\": 1 point without a positive value for a logarithmic axis");
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
