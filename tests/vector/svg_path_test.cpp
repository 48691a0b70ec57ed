#include "vector/svg_path.h"

#include <doctest/doctest.h>

#include <limits>

using namespace qv;
using namespace qv::vector;

TEST_CASE("numbers are as short as two decimals allow") {
    struct Row {
        double value;
        char const* text;
    };
    for (Row const& row : {Row{0, "0"}, Row{-0.001, "0"}, Row{0.5, ".5"}, Row{-0.25, "-.25"}, Row{12, "12"},
                           Row{3.999, "4"}, Row{-7.1, "-7.1"}, Row{100.05, "100.05"},
                           Row{std::numeric_limits<double>::infinity(), "1000000000"}})
        CHECK(svg_number(row.value) == row.text);
}

TEST_CASE("paths go from place to place in relative steps, whose roundings do not add up") {
    SvgPath path;
    path.move({10, 20});
    path.line({15, 20});
    path.line({15, 18.5});
    path.line({16, 19});
    path.line({17.25, 18});
    path.close();
    path.move({11, 21});
    path.line({12, 22});
    CHECK(path.text() == "m10 20h5v-1.5l1 .5 1.25-1zm1 1 1 1");

    SvgPath thirds;
    thirds.move({0, 0});
    for (int i = 1; i <= 300; ++i) thirds.line({i / 3.0, 1.0 * i});
    std::size_t const before = thirds.text().size();
    thirds.line({100, 301}); // straight down: the place is exact after 300 steps
    CHECK(thirds.text().substr(before) == "v1");
}
