// Random inputs and calls on pages of every kind: nothing fails, and the same seed leads to the same page.
#include "Monkey.h"

#include <doctest/doctest.h>

#include <random>

using namespace qv;
using namespace qv::testing;

TEST_CASE("any member with any value, also from inside an event, does no harm") {
    for (unsigned seed = 1; seed <= 5; ++seed) {
        CAPTURE(seed);
        std::mt19937 random(seed);
        WildHost host([&random] { return static_cast<std::uint32_t>(random()); });
        for (int i = 0; i < 2000; ++i) host.act();
        CHECK(host.page_is_well());
    }
}

TEST_CASE("ten thousand random inputs do no harm, and one seed leads to one page") {
    constexpr int inputs = 10000;
    Monkey first(std::mt19937{17}), second(std::mt19937{17});
    for (int i = 0; i < inputs; ++i) {
        CAPTURE(i);
        first.act();
        second.act();
        REQUIRE(first.ranges_are_sound());
        const std::string heard = first.heard.errors.empty() ? "" : first.heard.errors.front();
        REQUIRE(heard == "");
    }
    CHECK(first.pixels() == second.pixels());
    CHECK(first.heard.names == second.heard.names);
    CHECK(first.state.HScroll1 == second.state.HScroll1);
}
