#include "qvplot/formula.h"

#include "qvgraph/render_error.h"
#include "qvplot/report.h"
#include "qvplot/shown_range.h"
#include "table/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <span>

namespace qv::plot {
namespace {

using table::shortest;

constexpr char const* variable = "x";
constexpr double most_rows = 1e7;
constexpr double default_steps = 10;       // of FROM:TO
constexpr std::size_t block_rows = 4096;   // evaluated at a time
constexpr std::size_t page_samples = 2001; // of a function on a page
constexpr XRange default_range{-10, 10};

/// The numbers between colons; a part that is none is a PlotError.
std::vector<double> numbers(std::string const& option, std::string_view text, char const* form) {
    std::vector<double> values;
    for (std::size_t begin = 0; begin <= text.size();) {
        std::size_t const end = std::min(text.find(':', begin), text.size());
        auto const value = table::finite_number(text.substr(begin, end - begin));
        if (!value)
            throw PlotError(option + ": \"" + std::string(text) + "\" is not " + form
                            + ", all of them numbers");
        values.push_back(*value);
        begin = end + 1;
    }
    return values;
}

/// The number as a person would have written it, of at most 15 digits: 0.3 for 0.1 + 2 * 0.1.
double without_rounding_error(double value) {
    std::array<char, 32> text{};
    auto const [end, error] =
        std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::scientific, 14);
    std::from_chars(text.data(), end, value);
    return value;
}

/// Evenly spaced x, each worked out by itself, so that no error adds up.
struct Steps {
    double from = 0;
    double step = 0;
    std::size_t count = 1;
    double at(std::size_t i) const {
        double const x = from + static_cast<double>(i) * step;
        if (i == 0) return from;
        return std::abs(x) < 1e-9 * std::abs(step) ? 0 : without_rounding_error(x);
    }
};

Steps parse_steps(std::string const& text) {
    std::vector<double> const parts = numbers("--x", text, "VALUE, FROM:TO or FROM:TO:STEP");
    if (parts.size() == 1) return {parts[0], 0, 1};
    if (parts.size() > 3) throw PlotError("--x: \"" + text + "\" has more parts than FROM:TO:STEP");
    double const way = parts[1] - parts[0];
    double const step = parts.size() == 3 ? parts[2] : way / default_steps;
    if (way == 0) return {parts[0], 0, 1};
    if (step == 0 || (step > 0) != (way > 0))
        throw PlotError("--x: the step of \"" + text
                        + "\" does not lead from the first number to the second");
    // The end counts where it falls on a step but for rounding.
    double const rows = std::floor(way / step * (1 + 1e-12) + 1e-9) + 1;
    if (!(rows <= most_rows))
        throw PlotError("--x: \"" + text + "\" asks for more than ten million rows; take a larger step");
    return {parts[0], step, static_cast<std::size_t>(rows)};
}

/// Compiled once, with the definitions it may use.
class Formula {
public:
    Formula(std::string const& text, std::vector<std::string> const& definitions) {
        engine_.RaiseErrors = false; // what cannot be computed, such as SQR(-2), fails
        engine_.Variable(variable, 0.0);
        engine_.AutoCreateVariables = false;
        for (std::string const& definition : definitions) {
            engine_.UserFunc(definition);
            if (engine_.ErrorCode() != 0) throw FormulaError(render_definition_error(definition, engine_));
        }
        if (text.find_first_not_of(" \t") == std::string::npos) throw PlotError("the formula is empty");
        engine_.Compile(text, 0);
        if (engine_.ErrorCode() != 0) throw FormulaError(render_error(engine_));
    }

    /// Whether its value needs an x: without that variable it cannot be compiled.
    bool uses_x() {
        engine_.ResetVariables();
        engine_.Compile(engine_.ExpressionText(std::int16_t{1}), 0);
        bool const needed = engine_.ErrorCode() != 0;
        engine_.ClearError();
        return needed;
    }
    /// What the engine says, without the line that names its procedure.
    std::string error() const {
        std::string const& text = engine_.ErrorDescription();
        auto const line_end = text.find("\r\n");
        return line_end == std::string::npos ? text : text.substr(line_end + 2);
    }
    bool failed() const { return engine_.ErrorCode() != 0; }

    /// A sample that fails becomes not-a-number.
    void evaluate(std::span<double const> x, std::span<double> y) {
        engine_.ClearError();
        engine_.ValueOver(variable, x, y);
    }

private:
    qvExpression engine_;
};

/// Where a formula failed first.
struct Failure {
    double x = 0;
    std::string text;
};

int tell_of(std::optional<Failure> const& failure, bool has_x) {
    if (!failure) return success;
    tell((has_x ? "at x = " + shortest(failure->x) + ": " : "") + failure->text);
    return partly_failed;
}

int print_value(Formula& formula, std::ostream& out) {
    double const x = 0;
    double y = 0;
    formula.evaluate({&x, 1}, {&y, 1});
    std::optional<Failure> failure;
    if (std::isnan(y)) failure = Failure{x, formula.error()};
    out << (failure ? "" : shortest(y)) << "\n";
    return tell_of(failure, false);
}

int print_table(Formula& formula, Steps const& steps, std::ostream& out) {
    std::optional<Failure> failure;
    std::vector<double> x, y;
    for (std::size_t begin = 0; begin < steps.count; begin += block_rows) {
        x.clear();
        for (std::size_t i = begin; i < std::min(begin + block_rows, steps.count); ++i)
            x.push_back(steps.at(i));
        y.resize(x.size());
        formula.evaluate(x, y);
        for (std::size_t i = 0; i < x.size(); ++i) {
            if (std::isnan(y[i]) && !failure) failure = Failure{x[i], formula.error()};
            out << shortest(x[i]) << "\t" << (std::isnan(y[i]) ? "" : shortest(y[i])) << "\n";
        }
    }
    return tell_of(failure, true);
}

XRange range_of(PlotData const& data, PlotOptions const& options) {
    if (options.x_range) return *options.x_range;
    Extent extent;
    for (Series const& series : data.series)
        for (double const x : series.x) extent.include(x);
    return extent.span() > 0 ? XRange{extent.low, extent.high} : default_range;
}

/// Values that a picture of a function shows: all, unless a few are far outside the bulk.
Extent values_to_show(std::vector<double> values) {
    constexpr double tail = 0.03; // share of the values at either end
    constexpr double wild = 3;    // times the bulk's span
    std::ranges::sort(values);
    auto const at = [&](double share) {
        return values[static_cast<std::size_t>(share * static_cast<double>(values.size() - 1))];
    };
    const Extent all{values.front(), values.back()}, bulk{at(tail), at(1 - tail)};
    return all.span() > wild * bulk.span() && bulk.span() > 0 ? bulk : all;
}

Series sample(std::string const& text, XRange const& range, PlotOptions const& options) {
    Formula formula(text, options.definitions);
    Series series;
    series.name = series.function = text;
    series.function_range = range;
    std::vector<double> x, y(page_samples), finite;
    for (std::size_t i = 0; i < page_samples; ++i) {
        double const share = static_cast<double>(i) / (page_samples - 1);
        x.push_back(options.log.x && range.from > 0 && range.to > 0
                        ? range.from * std::pow(range.to / range.from, share)
                        : range.from + (range.to - range.from) * share);
    }
    formula.evaluate(x, y);
    std::ranges::copy_if(y, std::back_inserter(finite), [](double value) { return std::isfinite(value); });
    if (finite.empty())
        throw PlotError("\"" + text + "\" has no value from " + shortest(range.from) + " to "
                        + shortest(range.to) + (formula.failed() ? ": " + formula.error() : ""));
    const Extent shown = values_to_show(std::move(finite));
    for (std::size_t i = 0; i < page_samples; ++i) {
        if (!(y[i] >= shown.low && y[i] <= shown.high)) continue;
        series.x.push_back(x[i]);
        series.y.push_back(y[i]);
    }
    return series;
}

} // namespace

int evaluate(EvalOptions const& options, std::ostream& out) {
    Formula formula(options.formula, options.definitions);
    if (!options.x && formula.uses_x())
        throw PlotError("\"" + options.formula + "\" uses x; give its values with --x FROM:TO:STEP");
    int const status =
        options.x ? print_table(formula, parse_steps(*options.x), out) : print_value(formula, out);
    if (!out.flush()) throw PlotError("the table cannot be written; is the disk full?");
    return status;
}

void add_functions(PlotData& data, PlotOptions const& options) {
    const XRange range = range_of(data, options);
    for (std::string const& function : options.functions)
        data.series.push_back(sample(function, range, options));
    if (data.x_name.empty()) data.x_name = variable;
}

} // namespace qv::plot
