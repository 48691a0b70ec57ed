#include "scale/fitted_range.h"

#include <doctest/doctest.h>

#include <cmath>
#include <limits>

using namespace qv;
using namespace qv::scale;

namespace {

constexpr double largest = std::numeric_limits<double>::max();

} // namespace

TEST_CASE("a fitted range has its margin at both ends, none where bars stand, and room for their width") {
    struct Row {
        FitWish wish;
        double low, high;
    };
    for (Row const& row : {
             Row{{.low = 0, .high = 10, .margin = 0.05}, -0.5, 10.5},
             {{.low = -3, .high = 7}, -3, 7},
             {{.low = 0, .high = 10, .margin = 0.1, .stands_low = true}, 0, 11},
             {{.low = -10, .high = 0, .margin = 0.1, .stands_high = true}, -11, 0},
             {{.low = 1, .high = 100, .is_log = true, .margin = 0.5}, 0.1, 1000},
             {{.low = 5, .high = 5, .stands_low = true}, 5, 5.25},
             {{.low = 0, .high = 0, .stands_low = true, .stands_high = true}, 0, 1},
             {{.low = 4, .high = 4, .is_log = true}, 4 / std::sqrt(10), 4 * std::sqrt(10)},
             // A tenth of the axis on either side leaves four fifths for the data; less than the margin
             // counts not.
             {{.low = 0, .high = 8, .margin = 0.05, .room_low = 0.1, .room_high = 0.1}, -1, 9},
             {{.low = 0, .high = 9, .room_low = 0.1}, -1, 9},
             {{.low = 0, .high = 10, .margin = 0.05, .room_low = 0.01, .room_high = -0.2}, -0.5, 10.5},
             {{.low = 0, .high = 10, .margin = 0.05, .room_low = 0.5, .room_high = 0.5}, -0.5, 10.5},
             {{.low = -largest / 4, .high = largest / 4, .margin = 5}, -largest / 4, largest / 4},
         }) {
        auto const range = fitted_range(row.wish);
        CAPTURE(row.low);
        CAPTURE(row.high);
        REQUIRE(range);
        CHECK(range->low == doctest::Approx(row.low).epsilon(1e-12));
        CHECK(range->high == doctest::Approx(row.high).epsilon(1e-12));
    }
    CHECK(fitted_range({.low = 0.1, .high = 0.3})->low == 0.1); // exactly
    CHECK_FALSE(fitted_range({.low = -largest, .high = largest}));
    CHECK_FALSE(fitted_range({.low = 0, .high = 1, .is_log = true}));
}
