#include "qvplot/options.h"

#include "qvplot/formula.h"
#include "qvplot/plot_error.h"
#include "table/dates.h"
#include "table/text.h"

#include <CLI/CLI.hpp>

#include <cctype>
#include <charconv>
#include <optional>
#include <string_view>

namespace qv::plot {
namespace {

constexpr std::int32_t smallest_side = 64; // pixels
constexpr std::int32_t largest_side = 8192;

std::optional<std::int32_t> side(std::string_view text) {
    std::int32_t pixels = 0;
    auto const result = std::from_chars(text.data(), text.data() + text.size(), pixels);
    if (result.ec != std::errc() || result.ptr != text.data() + text.size()) return std::nullopt;
    if (pixels < smallest_side || pixels > largest_side) return std::nullopt;
    return pixels;
}

PixelSize parse_size(std::string const& text) {
    auto const cross = text.find('x');
    if (cross != std::string::npos) {
        auto const width = side(std::string_view(text).substr(0, cross));
        auto const height = side(std::string_view(text).substr(cross + 1));
        if (width && height) return {*width, *height};
    }
    throw CLI::ValidationError("--size", "\"" + text
                                             + "\" is not a width and a height of 64 to 8192 pixels, "
                                               "such as 1200x800");
}

void add_definitions(CLI::App& app, std::vector<std::string>& definitions) {
    app.add_option("--define", definitions,
                   "function that formulas may use, such as \"f(a) = a^2\", may be repeated")
        ->type_name("FUNCTION")
        ->allow_extra_args(false);
}

void add_columns(CLI::App& app, PlotOptions& options) {
    // One value an option: a file name that follows is not a column.
    auto const add_list = [&](char const* name, std::vector<std::string>& columns, char const* help) {
        app.add_option(name, columns, help)->type_name("COLUMN")->allow_extra_args(false);
    };
    app.add_option("DATA", options.files,
                   "CSV files, separated by comma, semicolon or tab; a first row of numbers is no header")
        ->type_name("FILE");
    app.add_option("--x", options.x,
                   "column along the page: numbers, or ISO dates and times; default: the first")
        ->type_name("COLUMN");
    add_list("--y", options.y, "column to draw, may be repeated; default: all whose first value is a number");
    add_list("--y2", options.y2, "column to draw against an axis on the right, may be repeated");
    app.add_option("--function", options.functions, "formula in x to draw, may be repeated")
        ->type_name("FORMULA")
        ->allow_extra_args(false);
    app.add_option_function<std::string>(
           "--x-range", [&](std::string const& text) { options.x_range = parse_x_range(text); },
           "numbers or dates between which data and formulas are drawn; default: all data, else -10:10")
        ->type_name("FROM:TO");
    add_definitions(app, options.definitions);
}

void add_look(CLI::App& app, PlotOptions& options) {
    app.add_flag("--lines", options.lines, "draw lines (the default); goes with --symbols");
    app.add_flag("--symbols", options.symbols, "draw symbols");
    app.add_flag("--bars", options.bars, "draw bars")->excludes("--lines")->excludes("--symbols");
    app.add_flag("--log-x", options.log.x, "logarithmic x axis");
    app.add_flag("--log-y", options.log.y, "logarithmic y axis");
    app.add_flag("--log-y2", options.log.y2, "logarithmic axis on the right");
    app.add_flag("--no-legend", options.no_legend,
                 "leave out the legend, which pages of several columns have");
    app.add_option("--title", options.title,
                   "title of the page; x^{2} and CO_{2} are raised and lowered, in other titles too")
        ->type_name("TEXT");
    app.add_option("--x-title", options.x_title, "title of the x axis; default: its column")
        ->type_name("TEXT");
    app.add_option("--y-title", options.y_title, "title of the y axis; default: its columns")
        ->type_name("TEXT");
    app.add_option("--y2-title", options.y2_title, "title of the axis on the right; default: its columns")
        ->type_name("TEXT");
}

void add_output(CLI::App& app, PlotOptions& options) {
    app.add_option_function<std::string>(
           "--size", [&](std::string const& text) { options.size = parse_size(text); },
           "size of the picture in pixels; default: 1200x800")
        ->type_name("WxH");
    app.add_option("--out", options.out, "file to write: .png, .svg, .pdf or .bmp")->type_name("FILE");
    app.add_flag("--show", options.show, "show a window (the default without --out and --print)");
    app.add_flag("--print", options.print, "print the page on one sheet");
    app.add_option("--printer", options.printer, "printer; default: the system's default one")
        ->type_name("NAME")
        ->needs("--print");
    app.add_flag("--landscape", options.landscape, "print on the sheet held sideways")->needs("--print");
}

} // namespace

XRange parse_x_range(std::string_view text) {
    // Times hold colons too.
    for (auto colon = text.find(':'); colon != std::string_view::npos; colon = text.find(':', colon + 1)) {
        const std::string_view first = text.substr(0, colon), second = text.substr(colon + 1);
        auto const from = table::finite_number(first), to = table::finite_number(second);
        if (from && to && *from < *to) return {*from, *to};
        auto const first_date = table::utc_seconds(first), second_date = table::utc_seconds(second);
        if (first_date && second_date && *first_date < *second_date) return {*first_date, *second_date, true};
    }
    throw PlotError("--x-range: \"" + std::string(text)
                    + "\" is not FROM:TO, the smaller number or date first, such as 0:10 or "
                      "2010-01-01:2010-12-31");
}

namespace {

/// "-x^2" and "--2", but neither "--define" nor "-h": an option has letters alone behind two minus signs.
bool is_negative_formula(CLI::App const& eval, std::string const& argument) {
    if (argument.size() < 2 || argument[0] != '-') return false;
    std::string const name = argument.substr(0, argument.find('='));
    if (eval.get_option_no_throw(name)) return false;
    return argument[1] != '-'
           || (argument.size() > 2 && std::isalpha(static_cast<unsigned char>(argument[2])) == 0);
}

bool takes_value(CLI::App const& eval, std::string const& argument) {
    CLI::Option const* const option = eval.get_option_no_throw(argument);
    return option && option->get_items_expected_min() > 0;
}

} // namespace

std::vector<std::string> with_formula_last(CLI::App const& eval, std::vector<std::string> arguments) {
    if (arguments.empty() || arguments[0] != eval.get_name()) return arguments;
    for (std::size_t i = 1; i < arguments.size() && arguments[i] != "--"; ++i) {
        if (takes_value(eval, arguments[i])) {
            ++i;
        } else if (is_negative_formula(eval, arguments[i])) {
            std::string formula = std::move(arguments[i]);
            arguments.erase(arguments.begin() + static_cast<std::ptrdiff_t>(i));
            arguments.insert(arguments.end(), {"--", std::move(formula)});
            break;
        }
    }
    return arguments;
}

void add_eval_options(CLI::App& app, EvalOptions& options) {
    app.add_option("FORMULA", options.formula, "formula, in x or without a variable")->required();
    app.add_option("--x", options.x, "values of x; without a step there are eleven")
        ->type_name("VALUE|FROM:TO[:STEP]");
    add_definitions(app, options.definitions);
}

void add_plot_options(CLI::App& app, PlotOptions& options) {
    add_columns(app, options);
    add_look(app, options);
    add_output(app, options);
}

} // namespace qv::plot
