// What the command line asks for.
#pragma once

#include "qvgraph/geometry.h"
#include "qvgraph/system_color.h"
#include "table/table.h"

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

/// Values of an axis, the smaller first.
struct XRange {
    double from = 0;
    double to = 0;
    bool is_date = false; // both are seconds since 1970 in UTC
};

/// Reads FROM:TO, two numbers or two dates, the smaller first; anything else is a PlotError that names the
/// option.
XRange parse_range(std::string_view text, char const* option = "--x-range");

/// What becomes of a column.
enum class Kind { Lines, Bars, Steps, Area, Histogram, Heat, Box };

/// How columns are drawn; what is not said is as the page has it.
struct SeriesStyle {
    std::optional<Kind> kind = {};
    std::optional<bool> symbols = {}; // beside a line
    bool symbols_alone = false;
    std::optional<int> dash = {};
    std::optional<int> line_width = {};
    std::optional<Color> color = {};
    std::optional<int> symbol = {};
    std::optional<bool> on_second_axis = {};
};

/// A style for the columns of that name, title or number.
struct StyleRule {
    std::string column;
    SeriesStyle style;
};

/// Reads "COLUMN:WORD,WORD"; anything else is a PlotError that lists the words.
StyleRule parse_style(std::string const& text);
/// The words of a style, for help and completion.
std::vector<std::string> style_words();

/// A colour by its name or as #RRGGBB; a PlotError for another text.
Color parse_color(std::string const& text, char const* option);

/// A line or band across the page that no data have drawn.
struct Mark {
    bool along_x = false;    // at a value of x, upright
    double from = 0, to = 0; // the same for a line
    std::string label = {};
};

struct PlotOptions {
    std::vector<std::filesystem::path> files;
    std::string x;               // column; empty: the first one
    std::vector<std::string> y;  // columns; both lists empty: all of numbers
    std::vector<std::string> y2; // columns on the axis to the right
    table::ReadOptions reading;
    bool x_time = false; // numbers of x count from 1970
    std::optional<table::UnixUnit> x_time_unit;
    std::vector<std::string> functions;   // formulas in x
    std::vector<std::string> definitions; // functions that they use
    std::optional<XRange> x_range;        // what the axes show
    std::optional<XRange> y_range, y2_range;

    bool lines = false;
    bool symbols = false;
    bool bars = false;
    bool stacked = false;
    std::optional<Kind> kind = {}; // but for lines and bars
    std::vector<StyleRule> styles;
    std::string look = "light";
    std::string font;     // empty: the look's
    double font_size = 0; // points; 0: the look's
    int line_width = 0;   // pixels at 96 to the inch; 0: the look's
    std::vector<Color> colors;
    std::vector<Mark> marks;
    std::optional<int> panels; // graphs of their own for columns, so many side by side
    LogAxes log;
    std::string title, x_title, y_title, y2_title; // empty: no title, axes named after their columns
    bool no_legend = false;

    PixelSize size{1200, 800}; // of the picture
    double dpi = 96;
    std::filesystem::path out; // empty: no file is written; "-": standard output
    std::string format;        // empty: as the file's name says
    bool show = false;
    bool print = false;
    std::string printer; // empty: the default one
    bool landscape = false;
    bool explain = false;
    bool watch = false;
    bool follow = false;
    std::int32_t latest = 0; // points to keep of each column; 0: all

    /// What the page as a whole is drawn as.
    Kind page_kind() const { return bars ? Kind::Bars : kind.value_or(Kind::Lines); }
    bool draws_lines() const { return !bars && (lines || !symbols); }
    /// A window is shown when it is asked for, or nothing else is.
    bool shows_window() const { return show || (out.empty() && !print && !explain); }
};

/// The arguments of a command line in the order in which the parser takes a formula that begins with a minus
/// sign, such as "-x^2", for a formula: behind "--". Such a formula stands where `eval` expects one.
std::vector<std::string> with_formula_last(CLI::App const& eval, std::vector<std::string> arguments);

struct EvalOptions;
/// Declares the options of evaluating a formula.
void add_eval_options(CLI::App& app, EvalOptions& options);

/// Declares the options of drawing a page; parsing fills `options`, which must outlive the parsing.
void add_plot_options(CLI::App& app, PlotOptions& options);

/// What the options say together, once they are all read; a PlotError where that does not go.
void check_options(PlotOptions& options);

} // namespace qv::plot
