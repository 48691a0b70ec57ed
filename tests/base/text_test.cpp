#include "base/text.h"

#include <doctest/doctest.h>

#include <cmath>

using namespace qv;

TEST_CASE("a leading number is read up to the first character that cannot belong to it") {
    struct Row {
        char const* text;
        double value;
    };
    for (auto const& [text, value] :
         {Row{"12", 12}, Row{"-3.5pt", -3.5}, Row{"+.5", 0.5}, Row{"1.2.3", 1.2}, Row{"Bold", 0}, Row{"", 0},
          Row{"-", 0}, Row{".", 0}, Row{" 7", 0}, Row{"1e5", 1}, Row{"007", 7}}) {
        CAPTURE(text);
        CHECK(leading_number(text) == value);
    }
    CHECK(std::isinf(leading_number(std::string(400, '9'))));
}

TEST_CASE("numbers as general text") {
    struct Row {
        double value;
        char const* text;
    };
    for (auto const& [value, text] :
         {Row{0, "0"}, Row{-0.0, "0"}, Row{0.1, "0.1"}, Row{-2.5, "-2.5"}, Row{123456, "123456"},
          Row{1e14, "100000000000000"}, Row{1e15, "1E+15"}, Row{1e20, "1E+20"},
          Row{1e-15, "0.000000000000001"}, Row{1e-16, "1E-16"}, Row{1.5e300, "1.5E+300"},
          Row{1.0 / 3, "0.333333333333333"}, Row{0.1 + 0.2, "0.3"}}) {
        CAPTURE(value);
        CHECK(number_text(value) == text);
    }
}

TEST_CASE("splitting keeps empty parts and replacing scans once") {
    CHECK(split("a||b|", "|").size() == 4);
    CHECK(split("", "|").size() == 1);
    CHECK(replace_all("a\r\nb\r\n", "\r\n", " ") == "a b ");
    CHECK(replace_all("aaa", "aa", "a") == "aa");
    CHECK(trim("  x y ") == "x y");
    CHECK(trim("   ").empty());
}

TEST_CASE("lines end with a line feed, with or without a carriage return") {
    using Lines = std::vector<std::string_view>;
    CHECK(lines_of("") == Lines{""});
    CHECK(lines_of("one") == Lines{"one"});
    CHECK(lines_of("one\ntwo\r\nthree\n") == Lines{"one", "two", "three", ""});
    CHECK(lines_of("\r\n\n") == Lines{"", "", ""});
}
