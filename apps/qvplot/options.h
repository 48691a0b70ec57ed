// What the command line asks for.
#pragma once

#include "qvgraph/geometry.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace CLI {
class App;
}

namespace qv::plot {

/// Which axes are logarithmic.
struct LogAxes {
    bool x = false;
    bool y = false;
    bool y2 = false;
};

/// Values of x, the smaller first.
struct XRange {
    double from = 0;
    double to = 0;
    bool is_date = false; // both are seconds since 1970 in UTC
};

/// Reads FROM:TO, two numbers or two dates, the smaller first; anything else is a PlotError.
XRange parse_x_range(std::string_view text);

struct PlotOptions {
    std::vector<std::filesystem::path> files;
    std::string x;                        // column; empty: the first one
    std::vector<std::string> y;           // columns; both lists empty: all that begin with a number
    std::vector<std::string> y2;          // columns on the axis to the right
    std::vector<std::string> functions;   // formulas in x
    std::vector<std::string> definitions; // functions that they use
    std::optional<XRange> x_range;        // what the x axis shows
    bool lines = false;
    bool symbols = false;
    bool bars = false;
    LogAxes log;
    std::string title, x_title, y_title, y2_title; // empty: no title, axes named after their columns
    bool no_legend = false;
    PixelSize size{1200, 800}; // of the picture
    std::filesystem::path out; // empty: no file is written
    bool show = false;
    bool print = false;
    std::string printer; // empty: the default one
    bool landscape = false;

    bool draws_lines() const { return !bars && (lines || !symbols); }
    /// A window is shown when it is asked for, or nothing else is.
    bool shows_window() const { return show || (out.empty() && !print); }
};

/// The arguments of a command line in the order in which the parser takes a formula that begins with a minus
/// sign, such as "-x^2", for a formula: behind "--". Such a formula stands where `eval` expects one.
std::vector<std::string> with_formula_last(CLI::App const& eval, std::vector<std::string> arguments);

struct EvalOptions;
/// Declares the options of evaluating a formula.
void add_eval_options(CLI::App& app, EvalOptions& options);

/// Declares the options of drawing a page; parsing fills `options`, which must outlive the parsing.
void add_plot_options(CLI::App& app, PlotOptions& options);

} // namespace qv::plot
