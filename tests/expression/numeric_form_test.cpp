// The numeric form gives what the general evaluator gives, to the bit, the kind and the error.
#include "expression/compiler.h"
#include "expression/evaluator.h"
#include "expression/mathematics.h"
#include "expression/numeric_form.h"

#include <doctest/doctest.h>

#include <array>
#include <bit>
#include <limits>
#include <random>

using namespace qv;
using namespace qv::expression;

namespace {

class FormulaMaker {
public:
    explicit FormulaMaker(unsigned seed) : random_(seed) {}

    std::string formula(int depth) {
        if (depth == 0 || pick(6) == 0) return leaf();
        switch (pick(8)) {
        case 0: return "-" + formula(depth - 1);
        case 1: return "(" + formula(depth - 1) + ")";
        case 2: return std::string(one_of(functions)) + "(" + formula(depth - 1) + ")";
        case 3: return std::string(one_of(pairs)) + "(" + list(2, depth - 1) + ")";
        case 4: return pick(2) ? "IIF(" + list(3, depth - 1) + ")" : "(NOT " + formula(depth - 1) + ")";
        default: return formula(depth - 1) + std::string(one_of(operators)) + formula(depth - 1);
        }
    }

    double value() {
        constexpr std::array special{0.0,   -0.0,  1.0,    -1.0,   0.5, 2.0,      100.0,
                                     169.4, 1e308, -1e308, 1e-320, 3e9, -32768.0, 1.5};
        if (pick(3) == 0) return special[pick(special.size())];
        return std::uniform_real_distribution(-20.0, 20.0)(random_);
    }

    std::size_t pick(std::size_t count) { return random_() % count; }

private:
    static constexpr std::array operators{" + ",  " - ",   "*",    "/",   "^",    "\\",  " MOD ",
                                          " = ",  " <> ",  " <= ", " < ", " >= ", " > ", " AND ",
                                          " OR ", " XOR ", "*",    " + ", " - ",  "/"};
    static constexpr std::array functions{"ABS",  "INT",   "FIX",  "SGN",   "SQR",  "LOG", "LN",   "EXP",
                                          "SIN",  "ASIN",  "COS",  "ACOS",  "TAN",  "ATN", "SINH", "ASINH",
                                          "COSH", "ACOSH", "TANH", "ATANH", "FACT", "SIN", "COS"};
    static constexpr std::array pairs{"MIN", "MAX", "NCR", "NPR"};
    static constexpr std::array leaves{"x",  "x",   "x",          "a",     "0",   "1",
                                       "2",  "3",   "PI",         "DEG",   "0.0", "2.5",
                                       "10", "100", "2147483647", "1e300", "-1",  "65536"};

    template <class Table>
    std::string_view one_of(Table const& table) {
        return table[pick(table.size())];
    }
    std::string leaf() { return std::string(one_of(leaves)); }
    std::string list(int count, int depth) {
        std::string text = formula(depth);
        for (int i = 1; i < count; ++i) text += ", " + formula(depth);
        return text;
    }

    std::mt19937 random_;
};

struct Outcome {
    Variant value;
    ErrorNumber code = ErrorNumber::None;
    std::string description;
    bool operator==(Outcome const&) const = default;
};

bool same_bits(Variant const& a, Variant const& b) {
    double const* const first = std::get_if<double>(&a);
    double const* const second = std::get_if<double>(&b);
    if (!first || !second) return a == b;
    return std::bit_cast<std::uint64_t>(*first) == std::bit_cast<std::uint64_t>(*second);
}

Outcome outcome(Engine& engine, Variant (*evaluation)(Engine&, std::int32_t&)) {
    engine.error = {};
    std::int32_t slot = -1;
    Variant const value = evaluation(engine, slot);
    return {value, engine.error.code, engine.error.description};
}

void check_agreement(Engine& engine) {
    Outcome const quick = outcome(engine, evaluate);
    Outcome const general = outcome(engine, evaluate_generally);
    CHECK(same_bits(quick.value, general.value));
    CHECK(quick.value.index() == general.value.index());
    CHECK(quick.code == general.code);
    CHECK(quick.description == general.description);
}

bool runs_numerically(Engine& engine) {
    NumericForm* const form = engine.compiled.back().numeric.get();
    return form && load_variables(*form) && mathematics::finite(run(*form));
}

} // namespace

TEST_CASE("numeric form and general evaluator agree on generated formulas and values") {
    FormulaMaker maker(20240817);
    int numeric = 0;
    int declined = 0;
    for (int i = 0; i < 6000; ++i) {
        Engine engine;
        engine.RaiseErrors = i % 4 != 0;
        engine.DefaultValue = -1;
        std::string const text = maker.formula(1 + i % 5);
        std::int16_t slot = 0;
        Compile(engine, text, slot);
        CAPTURE(text);
        REQUIRE(engine.error.code == ErrorNumber::None);
        for (int sample = 0; sample < 6; ++sample) {
            set_variable(engine, "x", maker.value());
            set_variable(engine, "a", maker.value());
            check_agreement(engine);
            (runs_numerically(engine) ? numeric : declined) += 1;
        }
    }
    CHECK(numeric > 5000);
    CHECK(declined > 5000);
}

// Parts that are shared between a costly function, a product joined to a sum, and others.
constexpr std::array shared_parts{"EXP(2*x)*4 + 2*x",       "EXP(2*x) + 3*(2*x)",
                                  "SIN(x*a)*x + x*a",       "1 - SIN(x)*COS(x)",
                                  "EXP(x/3)*(x/3) - x/3",   "SQR(ABS(x))*ABS(x) + 1",
                                  "4*x - SQR(ABS(x))*a",    "EXP(-x/10)*EXP(-x/10) - -x/10",
                                  "LN(ABS(x)) * ABS(x)",    "(2*x + a)*(2*x) - 2*x",
                                  "COS(x) + SIN(x)*SIN(x)", "SIN(x)/COS(x) - TAN(a)",
                                  "x*x - x*x*x + (x*x)*a",  "SIN(x)*3*a + COS(3*x)*a*x",
                                  "SIN(x)*SIN(x)"};

TEST_CASE("values over an array are those of single evaluations") {
    FormulaMaker maker(7);
    for (std::size_t i = 0; i < 1500; ++i) {
        Engine engine;
        std::int16_t slot = 0;
        std::string const text =
            i < shared_parts.size() ? shared_parts[i] : maker.formula(1 + static_cast<int>(i % 6));
        Compile(engine, text, slot);
        CAPTURE(text);
        set_variable(engine, "a", maker.value());
        set_variable(engine, "x", 0);
        std::vector<double> x(maker.pick(400));
        for (double& each : x) each = maker.value();
        std::vector<double> y(x.size());
        qvVariable& variable = *engine.m_Variables.find("x");
        std::int32_t number = -1;
        evaluate_over(engine, variable, x, y, number);
        ErrorState const first = engine.error;

        ErrorState expected_first;
        for (std::size_t k = 0; k < x.size(); ++k) {
            variable.Value = x[k];
            Outcome const single = outcome(engine, evaluate_generally);
            if (single.code == ErrorNumber::None) {
                double const expected = number_in(operand_of(single.value)).value;
                if (!same_bits(y[k], expected))
                    FAIL_CHECK("x = " << x[k] << ": " << y[k] << " and " << expected);
            } else {
                if (!std::isnan(y[k])) FAIL_CHECK("x = " << x[k] << " should fail");
                if (expected_first.code == ErrorNumber::None) expected_first = engine.error;
            }
        }
        CHECK(first.code == expected_first.code);
        CHECK(first.description == expected_first.description);
    }
}

TEST_CASE("only programs of numbers and known kinds have a numeric form") {
    struct {
        char const* text;
        Kind kind;
    } const rows[] = {
        {"x^2*SIN(x)+3*x-1", Kind::Double},
        {"x > 1", Kind::Int16},
        {"(x > 1) * 100 + 3", Kind::Int32},
        {"SGN(x)", Kind::Int16},
        {"x \\ 3", Kind::Int32},
        {"IIF(x > 1, 10, 20)", Kind::Int32},
        {"IIF(x > 1, 10, x)", Kind::Empty}, // the kind depends on x, the values do not
        {"2 * PI * x + 30 * DEG", Kind::Double},
    };
    for (auto const& row : rows) {
        CAPTURE(row.text);
        Engine engine;
        std::int16_t slot = 0;
        Compile(engine, row.text, slot);
        REQUIRE(engine.compiled.back().numeric);
        CHECK(engine.compiled.back().numeric->result_kind == row.kind);
    }
    for (char const* text :
         {"x", "1", "x & \"\"", "RND(x)", "x + 1/0", "USER1 + x", "LEN(x)", "ARRAY(1,2,3)+x"}) {
        CAPTURE(text);
        Engine engine;
        std::int16_t slot = 0;
        Compile(engine, text, slot);
        CHECK_FALSE(engine.compiled.back().numeric);
    }
}

TEST_CASE("repeated parts are computed once, a sine and a cosine of one angle together") {
    Engine engine;
    std::int16_t slot = 0;
    Compile(engine, "SIN(x)*COS(x) + SIN(x)*COS(x)", slot);
    CHECK(engine.compiled.back().numeric->code.size() == 3); // both functions, product, sum
}

TEST_CASE("sine and cosine keep their bits when they are computed together") {
    Engine engine;
    std::int16_t slot = 0;
    Compile(engine, "SIN(x) - 2*COS(x)", slot);
    std::mt19937 random(1);
    for (int i = 0; i < 20000; ++i) {
        double const x = std::uniform_real_distribution(-1.0, 1.0)(random) * std::pow(10.0, i % 12);
        set_variable(engine, "x", x);
        if (!same_bits(outcome(engine, evaluate).value, std::sin(x) - 2 * std::cos(x))) FAIL_CHECK(x);
    }
}

TEST_CASE("variables that hold no finite double are left to the general evaluator") {
    for (Variant const& held : {Variant(), Variant(3), Variant("2"), Variant(std::int16_t{7}), Variant(true),
                                Variant(std::numeric_limits<double>::infinity()), Variant("abc")}) {
        Engine engine;
        std::int16_t slot = 0;
        Compile(engine, "x + 1 > x / 2", slot);
        engine.m_Variables.item(1)->Value = held;
        check_agreement(engine);
    }
}

TEST_CASE("the numeric form follows recompiled and reset slots") {
    Engine engine;
    std::int16_t slot = 0;
    std::int32_t number = 1;
    Compile(engine, "x + 1", slot);
    set_variable(engine, "x", 1);
    CHECK(evaluate(engine, number) == Variant(2.0));
    Compile(engine, "x + 2", slot);
    CHECK(evaluate(engine, number) == Variant(3.0));
    ResetCompiledExpressions(engine);
    CHECK(evaluate(engine, number).is_empty());
    slot = 0;
    Compile(engine, "x + 3", slot);
    ResetVariables(engine);
    set_variable(engine, "x", 100);
    CHECK(evaluate(engine, number) == Variant(4.0)); // bound to the variable it was compiled with
}
