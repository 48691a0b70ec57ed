#include "scale/number_format.h"

#include "scale/numeric.h"

#include <doctest/doctest.h>

#include <charconv>
#include <cmath>
#include <limits>
#include <random>

using namespace qv::scale;

TEST_CASE("automatic style picks the notation by size") {
    struct Row {
        double x;
        std::int16_t digits;
        char const* text;
    };
    for (Row const& row : {Row{0, 6, "0"},
                           {1.5, 6, "1.5"},
                           {-0.25, 6, "-0.25"},
                           {1234.567, 6, "1234.6"},
                           {123.4567, 6, "123.457"},
                           {1234567, 6, "1234567"},
                           {123456789, 6, "1.234568e8"},
                           {0.001234, 6, "1.234e-3"},
                           {0.05, 6, "5e-2"},
                           {0.5, 6, "0.5"},
                           {1e20, 3, "1e20"},
                           {-1e-20, 3, "-1e-20"},
                           {250, 3, "250"},
                           {100, 3, "100"},
                           {2.675, 2, "2.68"},
                           {9.9999999, 6, "10"},
                           {99999999.9, 6, "1e8"},
                           {0.09999999, 6, "9.999999e-2"},
                           {0.099999999, 6, "0.1"},
                           {-1e-320, 0, "-1e-320"},
                           {7, -5, "7"},
                           {7.25, 32767, "7.25"},
                           {std::numeric_limits<double>::max(), 3, "1.798e308"},
                           {HUGE_VAL, 6, "Infinity"},
                           {std::nan(""), 6, "NaN"}}) {
        CAPTURE(row.x);
        CHECK(EasyFormat(row.x, row.digits, "") == row.text);
    }
}

TEST_CASE("style and mode") {
    struct Row {
        double x;
        std::int16_t digits, style, mode;
        char const* text;
        std::int16_t style_after;
    };
    for (Row const& row : {Row{3, 2, 2, 2, "3.00 ", 0},
                           {-3, 2, 2, 2, "-3.00", 0},
                           {3, 2, 1, 2, "3.00 ", 1},
                           {1234, 2, 1, 1, "1.23e3", 1},
                           {1200, 3, 1, 2, "1.200e3 ", 1},
                           {0.0001234, 2, 0, 1, "0", 0},
                           {-0.0001, 2, 0, 2, "0.00", 0}, // a hidden sign counts as negative for the blank
                           {1e9, 2, 0, 1, "1e9", 1},
                           {1e-9, 2, 2, 1, "1e-9", 2},
                           {2, 20, 0, 1, "2", 0}}) {
        CAPTURE(row.x);
        std::int16_t style = row.style;
        CHECK(Format_Real(row.x, row.digits, style, row.mode, "") == row.text);
        CHECK(style == row.style_after);
    }
}

TEST_CASE("a picture overrules the rest, and minutes lose their hours") {
    struct Row {
        double x;
        char const* picture;
        char const* text;
    };
    for (Row const& row : {Row{0.5 / 1440, "mm:ss", "00:30"},
                           {90.5 / 1440, "m:s", "30:30"},
                           {0.5, "hh:mm", "12:00"},
                           {0.5, "M:S", "0:0"},
                           {1e300, "mm:ss", "1E+300"},
                           {1234.5, "#,##0.00", "1,234.50"}}) {
        CAPTURE(row.picture);
        CHECK(EasyFormat(row.x, 3, row.picture) == row.text);
    }
}

TEST_CASE("a text has the digits it promises") {
    std::mt19937_64 random(17);
    std::uniform_real_distribution<double> power(-300, 300);
    for (int i = 0; i < 20000; ++i) {
        double const x = std::pow(10, power(random) / (i % 2 == 0 ? 1 : 50)) * (i % 3 == 0 ? -1 : 1);
        auto const digits = static_cast<std::int16_t>(3 + i % 6);
        const std::string text = EasyFormat(x, digits, "");
        CAPTURE(text);
        double read = 0;
        auto const result = std::from_chars(text.data(), text.data() + text.size(), read);
        REQUIRE(result.ptr == text.data() + text.size());
        // Decimals are taken off twice above 10, so that half of the digits are sure.
        REQUIRE(std::abs(read - x) <= std::abs(x) * std::pow(10, -(digits + 1) / 2.0 + 1));
        REQUIRE(text.size() <= 18);
        REQUIRE(text.find('+') == std::string::npos);
    }
}

TEST_CASE("digits that an axis needs") {
    struct Row {
        double from, to;
        int digits;
    };
    for (Row const& row : {Row{100, 0, 5},
                           {0.01, 0, 5},
                           {5, 5, 4},
                           {1e12, 0, 9},
                           {0.5, 0, 3},
                           {0, 0, 3},
                           {-1000, 1000, 6},
                           {1e-310, 0, 9},
                           {1, std::nextafter(1, 2), 9},
                           {-1e308, 1.7e308, 9},
                           {HUGE_VAL, 0, 9}}) {
        CAPTURE(row.from);
        CAPTURE(row.to);
        CHECK(AxisDPx(row.from, row.to) == row.digits);
    }
    CHECK(AxisDPx(std::nan(""), 1) >= 3);
}

TEST_CASE("small numeric functions at their edges") {
    CHECK(Frac(-2.25F) == 0.25F);
    CHECK(Frac(HUGE_VALF) == 0);
    CHECK(Log10(-1) == 0);
    CHECK(Log10(1000) == doctest::Approx(3));
    CHECK(MinMax(5, 7, 3) == 7);         // the lower limit wins
    CHECK(std::signbit(Max(0.0, -0.0))); // equal: the second
    CHECK(MaxInt(-3, 2) == 2);
    CHECK_THROWS(xxLog(0, true));
    CHECK(xxLog(-1, false) == -1);
    CHECK_THROWS(xxExp(1000, true));
    CHECK(xxExp(xxLog(7, true), true) == doctest::Approx(7));
}

TEST_CASE("numbers side by side are written alike, with as many digits as their tolerance takes") {
    using Texts = std::vector<std::string>;
    struct Row {
        std::vector<ShownNumber> numbers;
        Texts texts;
    };
    double const inf = std::numeric_limits<double>::infinity();
    for (Row const& row : {Row{{}, {}},
                           {{{0, 0.01}, {0.5, 0.01}}, {"0", "0.5"}},
                           {{{10000, 0.005}, {10000.5, 0.005}}, {"10000", "10000.5"}},
                           {{{1e9, 0.01}, {1e9 + 1, 0.01}}, {"1000000000", "1000000001"}},
                           {{{-1e9 - 0.25, 0.001}, {0, 0.001}}, {"-1000000000.25", "0"}},
                           {{{1e15 + 0.125, 0.001}}, {"1000000000000000.125"}},
                           {{{1e17, 0.1}, {1e17 + 16, 0.1}}, {"1e17", "1.00000000000000016e17"}},
                           {{{1.0000000025e-5, 1e-16}}, {"1.0000000025e-5"}},
                           {{{-1e-9, 0.01}, {10000.5, 0.01}}, {"-1e-9", "10000.5"}},
                           {{{inf, 0.01}, {1, 0.01}}, {EasyFormat(inf, 6, ""), "1"}}}) {
        CHECK(number_texts(row.numbers, 6) == row.texts);
    }
}

TEST_CASE("no two pixels have the same text") {
    CHECK(text_at_pixel(2.5, 4, 0.01) == "2.5");
    CHECK(text_at_pixel(10001.3, 7, 0.004) == "10001.3");
    CHECK(text_at_pixel(10001.3, 7, 0) == EasyFormat(10001.3, 7, ""));
    std::mt19937_64 random(11);
    std::uniform_real_distribution<double> share(-1, 1), magnitude(-290, 290), narrowness(-12, 1);
    for (int i = 0; i < 5000; ++i) {
        double const value = share(random) * std::pow(10, magnitude(random));
        double const step = std::abs(value) * std::pow(10, narrowness(random));
        std::int16_t const digits = AxisDPx(value, value + 500 * step);
        CAPTURE(value);
        CAPTURE(step);
        REQUIRE(text_at_pixel(value, digits, step) != text_at_pixel(value + step, digits, step));
    }
}
