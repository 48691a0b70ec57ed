#include "qvplot/command.h"

#include "qvgraph/HeadlessHost.h"
#include "qvplot/desktop.h"
#include "qvplot/formula.h"
#include "qvplot/options.h"
#include "qvplot/plot_error.h"
#include "qvplot/report.h"
#include "qvplot/whole_page.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <array>
#include <iostream>

namespace qv::plot {
namespace {

void write_page(PlotOptions const& options) {
    headless::HeadlessHost host(options.size);
    draw_whole_page(host.control(), options);
    host.save(options.out);
}

void check_output(std::filesystem::path const& out) {
    constexpr std::array endings{"", ".png", ".svg", ".pdf", ".bmp"};
    if (std::ranges::find(endings, out.extension()) == endings.end()
        || (out.extension().empty() && !out.empty()))
        throw PlotError(out.string() + ": no such format; give it a name ending in .png, .svg, .pdf or .bmp");
}

int plot(PlotOptions const& options, Arguments const& arguments) {
    if (options.files.empty() && options.functions.empty())
        throw PlotError("no data file is named; qvplot --help shows how");
    check_output(options.out);
    if (!options.out.empty()) write_page(options);
    return !options.print && !options.shows_window() ? success
                                                     : use_desktop(arguments, options.shows_window());
}

} // namespace

int run(int argc, char const* const* argv) {
    CLI::App app("Draws columns of CSV files, and functions, as a graph", "qvplot");
    PlotOptions options;
    add_plot_options(app, options);
    CLI::App& eval =
        *app.add_subcommand("eval", "Evaluates a formula and prints a table of x and its values");
    EvalOptions eval_options;
    add_eval_options(eval, eval_options);
    try {
        std::vector<std::string> arguments = with_formula_last(eval, {argv + std::min(argc, 1), argv + argc});
        std::ranges::reverse(arguments); // as the parser takes them
        app.parse(std::move(arguments));
    } catch (CLI::Success const& help) {
        return app.exit(help);
    } catch (PlotError const& error) {
        tell(error.what());
        return failure;
    } catch (CLI::ParseError const& error) {
        const std::string text = error.what();
        tell(text.substr(0, text.find('\n')) + "; qvplot --help shows the options");
        return failure;
    }
    return reported([&] {
        return eval.parsed() ? evaluate(eval_options, std::cout) : plot(options, {argc, argv});
    });
}

} // namespace qv::plot
