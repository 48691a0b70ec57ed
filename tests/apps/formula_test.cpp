#include "qvplot/formula.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <iostream>
#include <sstream>

using namespace qv::plot;

namespace {

struct Table {
    int status = 0;
    std::string text;
};

Table eval(std::string const& formula, std::optional<std::string> x = {},
           std::vector<std::string> definitions = {}) {
    std::ostringstream out;
    int const status = evaluate({formula, std::move(x), std::move(definitions)}, out);
    return {status, out.str()};
}

std::string refusal(std::string const& formula, std::optional<std::string> x = {},
                    std::vector<std::string> definitions = {}) {
    try {
        eval(formula, std::move(x), std::move(definitions));
    } catch (PlotError const& error) {
        return error.what();
    }
    return "";
}

} // namespace

TEST_CASE("a table of x and values, its ends included, without sums of rounding errors") {
    CHECK(eval("x^2", "0:1:0.5").text == "0\t0\n0.5\t0.25\n1\t1\n");
    CHECK(eval("x", "0.1:0.3:0.1").text == "0.1\t0.1\n0.2\t0.2\n0.3\t0.3\n");
    CHECK(eval("2*x", "1:-1:-1").text == "1\t2\n0\t0\n-1\t-2\n");
    CHECK(eval("x", "0:1:0.4").text == "0\t0\n0.4\t0.4\n0.8\t0.8\n");
    CHECK(eval("x", "-0.2:0.2:0.2").text == "-0.2\t-0.2\n0\t0\n0.2\t0.2\n");
    CHECK(eval("x", "5").text == "5\t5\n");
    CHECK(eval("2^10").text == "1024\n");
    CHECK(eval("f(x)", "3:3", {"f(a) = a^2 + 1"}).text == "3\t10\n");
    auto const long_table = eval("x", "0:1:0.0001").text;
    CHECK(std::ranges::count(long_table, '\n') == 10001);
    CHECK(long_table.ends_with("\n1\t1\n"));
}

TEST_CASE("a value that fails is empty, and the status tells") {
    auto const [status, text] = eval("1/x", "-1:1:1");
    CHECK(status == 1);
    CHECK(text == "-1\t-1\n0\t\n1\t1\n");
    for (char const* formula : {"1/0", "SQR(-2)", "exp(710)", "5 MOD 0", "\"text\""}) {
        CAPTURE(formula);
        CHECK(eval(formula).status == 1);
        CHECK(eval(formula).text == "\n");
    }
}

TEST_CASE("a value that fails inside a function of one's own is empty too, and the reason is the true one") {
    auto const [status, text] = eval("f(x)", "0:3:0.5", {"f(a)=1/(a-1)"});
    CHECK(status == 1);
    CHECK(text == "0\t-1\n0.5\t-2\n1\t\n1.5\t2\n2\t1\n2.5\t0.6666666666666666\n3\t0.5\n");
    const struct {
        char const *formula, *reason;
    } rows[] = {{"1/0", "qvplot: Div by zero\n"},
                {"f(1)", "qvplot: Div by zero in User Function 'f'\n"},
                {"1 + SQR(-2)", "qvplot: SQR has no value here"},
                {"\"text\"", "qvplot: Type mismatch: the value is a text"}};
    for (auto const& row : rows) {
        CAPTURE(row.formula);
        std::ostringstream told;
        std::streambuf* const before = std::cerr.rdbuf(told.rdbuf());
        CHECK(eval(row.formula, {}, {"f(a)=1/(a-1)"}).status == 1);
        std::cerr.rdbuf(before);
        CHECK(told.str().starts_with(row.reason));
    }
}

TEST_CASE("what cannot be evaluated is refused with a reason") {
    CHECK(refusal("f(1)", {}, {"f(a)=1/(a-)1"})
          == "f(a)=1/(a-)1\n          ^\nSyntax Error: Unknown symbol in User Function 'f'");
    CHECK(refusal("f(1)", {}, {"f(a) a"}) == "f(a) a\n     ^\nInvalid User Function Definition: f");
    CHECK(refusal("f(1)", {}, {"f(a) = a*speed"}).find("Undefined variable: speed") != std::string::npos);
    CHECK(refusal("x^2 + sin(", "0:1")
          == "x^2 + sin(\n          ^\nSyntax Error: Unexpected end of expression");
    CHECK(refusal("x + y", "0:1").find("Undefined variable: y") != std::string::npos);
    CHECK(refusal(" ") == "the formula is empty");
    CHECK(refusal("x").find("--x FROM:TO:STEP") != std::string::npos);
    for (char const* x :
         {"a", "", "1:", "0:1:0", "0:1:-1", "0:1:1:1", "0:1e9:1", "nan:1", "0:inf", "0x1:2"}) {
        CAPTURE(x);
        CHECK(refusal("x", x).starts_with("--x"));
    }
}

TEST_CASE("functions become series along the data, and poles do not stretch the axis") {
    PlotOptions options;
    options.functions = {"tan(x)", "x^2"};
    PlotData data;
    add_functions(data, options);
    REQUIRE(data.series.size() == 2);
    CHECK(data.series[0].function_range.from == -10);
    auto const [low, high] = std::ranges::minmax(data.series[0].y);
    CHECK(high < 20);
    CHECK(low > -20);
    CHECK(std::ranges::max(data.series[1].y) == 100);

    PlotData measured{"t", false, {}};
    measured.series.emplace_back().x = {3, 7};
    options.functions = {"1/(x-5)"};
    add_functions(measured, options);
    CHECK(measured.x_name == "t");
    CHECK(measured.series[1].function_range.to == 7);
    options.functions = {"1/(x-x)"};
    CHECK_THROWS_AS(add_functions(measured, options), PlotError);
    options.functions = {"2 +"};
    CHECK_THROWS_AS(add_functions(measured, options), FormulaError);
}
