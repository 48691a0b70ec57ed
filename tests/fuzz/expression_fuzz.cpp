// Hostile text for the expression engine. Each line is a definition ("@" before a user function, "#" before
// an array) or a formula, which is compiled, shown as postfix and evaluated in every way there is. What must
// hold is checked here; crashes, leaks and undefined behaviour are the sanitizers' to find.
#include "base/text.h"
#include "expression/arrays.h"
#include "expression/characters.h"
#include "expression/compiler.h"
#include "expression/evaluator.h"
#include "expression/user_functions.h"
#include "qvgraph/qvExpression.h"
#include "qvgraph/render_error.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>

namespace {

using namespace qv;

void require(bool holds) {
    if (!holds) std::abort();
}

bool is_random(std::string const& text) {
    return to_upper(text).find("RND") != std::string::npos;
}

bool is_same(Variant const& a, Variant const& b) {
    double const* const first = std::get_if<double>(&a);
    double const* const second = std::get_if<double>(&b);
    if (!first || !second) return a == b;
    return std::bit_cast<std::uint64_t>(*first) == std::bit_cast<std::uint64_t>(*second);
}

// No evaluation computes infinity or not-a-number.
void require_finite(Variant const& value) {
    if (double const* const number = std::get_if<double>(&value)) require(std::isfinite(*number));
}

void show_postfix(qvExpression& engine) {
    try {
        engine.RPNExpression();
    } catch (Fault const&) { // an array element has no text
    }
}

// One line in both spellings of the engine: the class that users have, and its state with the functions
// that work on it, which lets the two evaluators be called apart.
struct Engines {
    qvExpression engine;
    expression::Engine twin;
    bool random_functions = false;
};

struct Outcome {
    Variant value;
    std::string error;
};

Outcome outcome(expression::Engine& engine, double x,
                Variant (*evaluation)(expression::Engine&, std::int32_t&)) {
    std::int32_t slot = -1;
    engine.error = {};
    set_variable(engine, "x", x);
    Variant const value = evaluation(engine, slot);
    return {value, engine.error.description};
}

constexpr std::array samples{-1.0, 0.0, 1.0, 2.5, 1e10, 1e300, -0.0, 169.5};

void compare_evaluators(Engines& engines, std::string const& formula) {
    expression::Engine& twin = engines.twin;
    std::int16_t slot = 0;
    expression::Compile(twin, formula, slot);
    std::array<double, samples.size()> y{};
    twin.error = {};
    std::int32_t number = -1;
    evaluate_over(twin, *find_variable(twin, "x", expression::WhenMissing::Create), samples, y, number);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        Outcome const quick = outcome(twin, samples[i], expression::evaluate);
        Outcome const general = outcome(twin, samples[i], expression::evaluate_generally);
        require(is_same(quick.value, general.value) && quick.error == general.error);
        double const* const number_found = std::get_if<double>(&quick.value);
        if (!quick.error.empty())
            require(std::isnan(y[i]));
        else if (number_found)
            require(is_same(*number_found, y[i]));
    }
}

// What is stated of errors: a place inside the text, a description with every code, no value while pending.
void check_errors(qvExpression& engine) {
    std::string const text = engine.ExpressionText(engine.NumExpressions() - 1);
    auto const length = static_cast<std::int32_t>(expression::character_count(text));
    require(engine.ErrorPos() >= 0 && engine.ErrorPos() <= length + 1);
    require((engine.ErrorCode() == 0) == engine.ErrorDescription().empty());
    if (engine.ErrorCode() != 0) require(engine.Value(-1).is_empty());
    render_error(engine);
}

void evaluate(Engines& engines, std::string const& formula) {
    qvExpression& engine = engines.engine;
    engine.Compile(formula);
    check_errors(engine);
    show_postfix(engine);
    engine.ClearError(); // a program that was cut short runs too
    for (double const x : samples) {
        engine.Variable("x", x);
        require_finite(engine.Value(-1));
        engine.ClearError();
    }
    // A random factor tells one evaluation from the next.
    if (!is_random(formula) && !engines.random_functions) compare_evaluators(engines, formula);
}

void run_line(Engines& engines, std::string const& line) {
    std::string const rest = line.substr(line.empty() ? 0 : 1);
    if (line.starts_with('@')) {
        engines.engine.UserFunc(rest);
        std::string definition = rest;
        expression::UserFunc(engines.twin, definition);
        engines.random_functions = engines.random_functions || is_random(rest);
        auto const length = static_cast<std::int32_t>(expression::character_count(rest));
        require(engines.engine.DefinitionErrorPos() >= 0
                && engines.engine.DefinitionErrorPos() <= length + 2);
        render_definition_error(rest, engines.engine);
    } else if (line.starts_with('#')) {
        engines.engine.DefineArray(rest);
        DefineArray(engines.twin, rest);
    } else {
        evaluate(engines, line);
    }
    engines.engine.ClearError();
    engines.twin.error = {};
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    if (size == 0) return 0;
    Engines engines;
    engines.engine.RaiseErrors = engines.twin.RaiseErrors = (data[0] & 1) != 0;
    engines.engine.CaseSensitiveVariables = engines.twin.CaseSensitiveVariables = (data[0] & 2) != 0;
    engines.engine.AutoCreateVariables = engines.twin.AutoCreateVariables = (data[0] & 4) == 0;
    std::string_view const text(reinterpret_cast<char const*>(data + 1), size - 1);
    for (std::string_view const line : split(text, "\n")) run_line(engines, std::string(line));
    return 0;
}
