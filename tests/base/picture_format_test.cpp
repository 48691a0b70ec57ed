#include "base/picture_format.h"

#include <doctest/doctest.h>

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <random>

using namespace qv;

namespace {

struct Row {
    double value;
    char const* pattern;
    char const* text;
};

void check_rows(std::initializer_list<Row> rows) {
    for (Row const& row : rows) {
        CAPTURE(row.value);
        CAPTURE(row.pattern);
        CHECK(picture_format(row.value, row.pattern) == row.text);
    }
}

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double second = 1.0 / 86400;

} // namespace

TEST_CASE("digit placeholders, the point and rounding") {
    check_rows({{5, "0.00", "5.00"},
                {5, "0.###", "5."},
                {5.25, "0.###", "5.25"},
                {0, "#", ""},
                {0, "#.0", ".0"},
                {0.5, ".00", ".50"},
                {1234.5, ".0", "1234.5"},
                {1234567, "0", "1234567"},
                {7, "000", "007"},
                {7, "#0#", "07"},
                {2.675, "0.00", "2.68"}, // the binary value is below the half
                {1.005, "0.00", "1.01"},
                {-2.5, "0", "-3"},
                {0.5, "0", "1"},
                {0.4999, "0", "0"},
                {999.96, "##0.0", "1000.0"},
                {-0.001, "0.00", "0.00"},
                {-0.0, "0.0", "0.0"},
                {-0.25, "0.0#", "-0.25"},
                {1e22, "0", "10000000000000000000000"},
                {1e-300, "0.00", "0.00"},
                {0.3, "0.0000000000000000", "0.3000000000000000"}});
    CHECK(picture_format(1.7976931348623157e308, "0").size() == 309);
}

TEST_CASE("scientific form") {
    check_rows({{1234.5, "0.000000e+000", "1.234500e+003"},
                {9.9999996, "0.000000e+000", "1.000000e+001"},
                {1234567, "0.###E+##", "1.235E+6"},
                {0.0001, "0.###E+##", "1.E-4"},
                {5, "0.###E+##", "5.E+0"},
                {0, "0.00e+000", "0.00e+000"},
                {-1e20, "0.e+000", "-1.e+020"},
                {1e20, "0.0e-0", "1.0e20"},
                {1e-300, "0.0E+0", "1.0E-300"},
                {5e-324, "0.000e+000", "5.000e-324"},
                {0.25, "0.0E+00 V", "2.5E-01 V"},
                {7, "e+00", "e+07"}}); // no mantissa before it: letters and two digits
}

TEST_CASE("thousands, percent and text inside number patterns") {
    check_rows({{1234567.891, "#,##0.00", "1,234,567.89"},
                {123, "#,##0", "123"},
                {1000, "0,000", "1,000"},
                {12, "0,000", "0,012"},
                {1234, "0,", "1234,"}, // a trailing comma has no meaning
                {0.125, "0.0%", "12.5%"},
                {2, "0 \"mm\"", "2 mm"},
                {-3, "$0.0", "-$3.0"},
                {2, "\\d0", "d2"},
                {2, "\"0\"0", "02"},
                {2.5, "0.0 dB", "2.5 dB"},
                {1.5, "0.0.0", "1.5.0"}});
}

TEST_CASE("times and dates") {
    check_rows({{0.5, "hh:mm:ss", "12:00:00"},
                {0.5 / 1440, "hh:mm:ss", "00:00:30"},
                {61 * second, "m:s", "1:1"},
                {61 * second, "h:m", "0:1"},
                {0.99999999, "hh:mm:ss", "00:00:00"},
                {0.99999999, "d.m.yyyy", "31.12.1899"},
                {59.6 * second, "mm:ss", "01:00"},
                {45292.75, "dd/mm/yyyy hh:mm", "01/01/2024 18:00"}, // month between day and year, then minute
                {45351, "d mmm yy", "29 Feb 24"},
                {45351, "dddd, d. mmmm", "Thursday, 29. February"},
                {45351, "ddd", "Thu"},
                {45351.5, "mm", "02"},
                {45351.5, "h \"o'clock\"", "12 o'clock"},
                {45351.5, "hh:00", "12:00"},
                {0.0, "h:mm AM/PM", "12:00 AM"},
                {0.75, "h:mm am/pm", "6:00 pm"},
                {0.25, "HH:MM", "06:00"},
                {-1.25, "d.m.yyyy hh:mm", "28.12.1899 18:00"},
                {-657434, "yyyy-mm-dd", "0100-01-01"},
                {2958465, "yyyy-mm-dd", "9999-12-31"},
                {2958466, "yyyy-mm-dd", "2958466"},
                {1e300, "hh:mm", "1E+300"},
                {-1e19, "ss", "-1E+19"}});
}

TEST_CASE("values and patterns that mean nothing still give a text") {
    check_rows({{1.5, "", "1.5"},
                {1.5, "kg", "kg"},
                {1.5, "\"unclosed 0", "unclosed 0"},
                {1.5, "\\", "\\"},
                {infinity, "0.00", "Infinity"},
                {-infinity, "hh:mm", "-Infinity"},
                {std::nan(""), "0e+0", "NaN"}});
}

TEST_CASE("random patterns and values stay within bounds") {
    constexpr std::string_view alphabet = "00##..,,%eE+-\"\\dmyhs:/ apAPM";
    constexpr std::array values{0.0, -1.5, 9.9999999e15, 1e308, -5e-324, 45292.123456, infinity, -657434.5};
    std::mt19937 random(7);
    for (int round = 0; round < 20000; ++round) {
        std::string pattern;
        for (auto n = random() % 24; n > 0; --n) pattern += alphabet[random() % alphabet.size()];
        double const value = values[random() % values.size()];
        CAPTURE(pattern);
        CAPTURE(value);
        // A digit run of 309, its separators, and what each pattern character may grow to.
        CHECK(picture_format(value, pattern).size() <= 450 + 12 * pattern.size());
    }
    CHECK(picture_format(1, std::string(100000, '%') + "0").size() == 300001);
}

TEST_CASE("seventeen significant digits read back as the number") {
    std::mt19937_64 random(11);
    std::uniform_real_distribution<double> exponent(-300, 300);
    for (int i = 0; i < 5000; ++i) {
        double const value = std::pow(10, exponent(random)) * (i % 2 == 0 ? 1 : -1);
        const std::string text = picture_format(value, "0.0000000000000000e-0");
        double read = 0;
        std::from_chars(text.data(), text.data() + text.size(), read);
        CHECK(read == value);
    }
}
