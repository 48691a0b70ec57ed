#include "qvplot/options.h"

#include "qvgraph/looks.h"
#include "qvplot/formula.h"
#include "qvplot/plot_error.h"
#include "table/dates.h"
#include "table/text.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <functional>
#include <optional>
#include <string_view>

namespace qv::plot {
namespace {

constexpr std::int32_t smallest_side = 64; // pixels
constexpr std::int32_t largest_side = 8192;

// The topics of the help, which are groups of options.
constexpr char const *data = "data", *columns = "columns", *looks = "looks", *axes = "axes",
                     *output = "output", *window = "window";

struct LengthUnit {
    std::string_view name;
    double inches;
};
constexpr std::array length_units{LengthUnit{"mm", 1 / 25.4}, LengthUnit{"cm", 1 / 2.54},
                                  LengthUnit{"in", 1}};

std::optional<std::int32_t> side(double pixels) {
    if (!(pixels >= smallest_side && pixels <= largest_side)) return std::nullopt;
    return static_cast<std::int32_t>(std::lround(pixels));
}

// "1200x800" in pixels, or "16x10cm" at the dots per inch.
PixelSize parse_size(std::string const& text, double dpi) {
    std::string_view numbers = text;
    double scale = 1;
    bool whole = true;
    for (LengthUnit const& unit : length_units)
        if (numbers.ends_with(unit.name)) {
            numbers.remove_suffix(unit.name.size());
            scale = unit.inches * dpi;
            whole = false;
        }
    auto const cross = numbers.find('x');
    if (cross != std::string_view::npos) {
        auto const width = table::finite_number(numbers.substr(0, cross)),
                   height = table::finite_number(numbers.substr(cross + 1));
        bool const fits =
            width && height && (!whole || (*width == std::floor(*width) && *height == std::floor(*height)));
        auto const across = fits ? side(*width * scale) : std::nullopt,
                   down = fits ? side(*height * scale) : std::nullopt;
        if (across && down) return {*across, *down};
    }
    throw PlotError("--size: \"" + text
                    + "\" is not a width and a height of 64 to 8192 pixels, such as 1200x800 or 16x10cm");
}

/// One character, or its name.
char parse_mark(std::string const& option, std::string const& text) {
    struct Name {
        std::string_view name;
        char mark;
    };
    constexpr std::array names{Name{"comma", ','}, Name{"semicolon", ';'}, Name{"tab", '\t'},
                               Name{"\\t", '\t'},  Name{"blank", ' '},     Name{"space", ' '},
                               Name{"bar", '|'},   Name{"point", '.'},     Name{"none", '\0'}};
    for (Name const& row : names)
        if (table::equal_letters(row.name, text)) return row.mark;
    if (text.size() != 1 || text[0] == '"' || text[0] == '\n')
        throw PlotError(option + ": \"" + text + "\" is not one character; give , or ; or tab, blank");
    return text[0];
}

/// A number that an option needs between two ends.
double number_between(char const* option, std::string const& text, double least, double most) {
    auto const number = table::finite_number(text);
    if (!number || *number < least || *number > most)
        throw PlotError(std::string(option) + ": \"" + text + "\" is no number from " + table::shortest(least)
                        + " to " + table::shortest(most));
    return *number;
}

template <typename Value>
struct Choice {
    std::string_view name;
    Value value;
};

template <typename Value, std::size_t count>
Value chosen(char const* option, std::string const& text, std::array<Choice<Value>, count> const& rows) {
    std::string names;
    for (auto const& row : rows) {
        if (row.name == text) return row.value;
        names += (names.empty() ? "" : ", ") + std::string(row.name);
    }
    throw PlotError(std::string(option) + ": \"" + text + "\" is none of " + names);
}

/// Declares options of one topic.
class Topic {
public:
    Topic(CLI::App& app, char const* group) : app_(app), group_(group) {}

    /// A value that is stored as it is.
    template <typename Value>
    CLI::Option* value(char const* name, Value& target, char const* type, char const* help) const {
        return app_.add_option(name, target, help)->type_name(type)->group(group_);
    }
    /// A text that `take` reads.
    CLI::Option* text(char const* name, char const* type, char const* help,
                      std::function<void(std::string const&)> const& take) const {
        return app_.add_option_function<std::string>(name, take, help)->type_name(type)->group(group_);
    }
    /// Texts that `take` reads, one an option.
    CLI::Option* texts(char const* name, char const* type, char const* help,
                       std::function<void(std::string const&)> take) const {
        auto const all = [take = std::move(take)](std::vector<std::string> const& given) {
            for (std::string const& one : given) take(one);
        };
        return app_.add_option_function<std::vector<std::string>>(name, all, help)
            ->type_name(type)
            ->allow_extra_args(false)
            ->group(group_);
    }
    // One value an option: a file name that follows is not a column.
    CLI::Option* list(char const* name, std::vector<std::string>& target, char const* type,
                      char const* help) const {
        return app_.add_option(name, target, help)->type_name(type)->allow_extra_args(false)->group(group_);
    }
    CLI::Option* flag(char const* name, bool& target, char const* help) const {
        return app_.add_flag(name, target, help)->group(group_);
    }

private:
    CLI::App& app_;
    char const* group_;
};

void add_definitions(CLI::App& app, std::vector<std::string>& definitions, char const* group) {
    app.add_option("--define", definitions,
                   "function that formulas may use, such as \"f(a) = a^2\", may be repeated")
        ->type_name("FUNCTION")
        ->allow_extra_args(false)
        ->group(group);
}

void add_reading(CLI::App& app, PlotOptions& options) {
    const Topic topic(app, data);
    table::ReadOptions& reading = options.reading;
    topic.text("--separator", "MARK",
               "what stands between cells: a character, tab, blank or none; default: found by looking",
               [&](std::string const& text) { reading.separator = parse_mark("--separator", text); });
    topic.text("--decimal", "MARK", "decimal mark, point or comma; default: found by looking",
               [&](std::string const& text) { reading.decimal = parse_mark("--decimal", text); });
    topic.text("--thousands", "MARK", "mark that groups the digits of numbers, such as , or .",
               [&](std::string const& text) { reading.thousands = parse_mark("--thousands", text); });
    topic.value("--comment", reading.comment, "TEXT", "what lines begin with that are no rows; default: #");
    topic.text("--encoding", "utf-8|latin-1|utf-16le|utf-16be",
               "how letters are written; default: found by looking", [&](std::string const& text) {
                   reading.encoding = table::encoding_named(text);
                   if (!reading.encoding)
                       throw PlotError("--encoding: \"" + text
                                       + "\" is none of utf-8, latin-1, utf-16le, utf-16be");
               });
    app.add_flag_callback(
           "--header", [&] { reading.header = true; }, "the first row names the columns")
        ->group(data);
    app.add_flag_callback(
           "--no-header", [&] { reading.header = false; }, "the first row is one of data")
        ->excludes("--header")
        ->group(data);
    topic.text("--skip", "LINES", "lines at the front that are passed over", [&](std::string const& text) {
        constexpr double most = 1e9;
        reading.skip = static_cast<std::size_t>(number_between("--skip", text, 0, most));
    });
    topic.text("--date-order", "dmy|mdy|ymd",
               "which number of 05/01/24 is what; default: found where it can be",
               [&](std::string const& text) {
                   using enum table::DateOrder;
                   constexpr std::array<Choice<table::DateOrder>, 3> orders{
                       {{"dmy", DayFirst}, {"mdy", MonthFirst}, {"ymd", YearFirst}}};
                   reading.date_order = chosen("--date-order", text, orders);
               });
    topic.text("--date-format", "PATTERN",
               "dates as %d.%m.%Y %H:%M and the like: %Y %y %m %d %j %H %I %M %S %f %p %b %a %z %s",
               [&](std::string const& text) {
                   reading.date_format = text;
                   if (const std::string fault = table::fault_of_pattern(text); !fault.empty())
                       throw PlotError("--date-format: \"" + text + "\" " + fault);
               });
    topic.text("--time-zone", "ZONE",
               "zone of times that say none, and of the axis, such as Europe/Berlin; default: UTC",
               [&](std::string const& text) {
                   reading.time_zone = text;
                   table::time_zone(text);
               });
    app.add_option_function<std::string>(
           "--x-time",
           [&](std::string const& text) {
               options.x_time = true;
               options.x_time_unit = table::unix_unit_named(text);
               if (!options.x_time_unit && text != "found")
                   throw PlotError("--x-time: \"" + text + "\" is none of s, ms, us, ns, found");
           },
           "numbers of x count from 1970: seconds to nanoseconds, or found by their size")
        ->type_name("s|ms|us|ns|found")
        ->group(data);
    topic.flag("--explain", options.explain, "print what each column was taken for");
}

void add_columns(CLI::App& app, PlotOptions& options) {
    const Topic topic(app, columns);
    app.add_option(
           "DATA", options.files,
           "tables of text, JSON lines and .npy arrays, packed by gzip or zstd or not; - is standard input")
        ->type_name("FILE")
        ->group(columns);
    topic.value("--x", options.x, "COLUMN",
                "column along the page, by name or number; 0 is the row's number; default: the first");
    topic.list("--y", options.y, "COLUMN",
               "columns to draw, such as wind or 3,5-7, may be repeated; default: all of numbers");
    topic.list("--y2", options.y2, "COLUMN", "columns to draw against an axis on the right, may be repeated");
    topic.list("--function", options.functions, "FORMULA", "formula in x to draw, may be repeated");
    add_definitions(app, options.definitions, columns);
    app.add_option_function<std::string>(
           "--panels",
           [&](std::string const& text) {
               constexpr double most = 20;
               options.panels = static_cast<int>(number_between("--panels", text, 1, most));
           },
           "a graph for each column, so many side by side")
        ->type_name("ACROSS")
        ->group(columns);
}

void add_kinds(CLI::App& app, PlotOptions& options) {
    const Topic topic(app, looks);
    topic.flag("--lines", options.lines, "draw lines (the default); goes with --symbols");
    topic.flag("--symbols", options.symbols, "draw symbols");
    topic.flag("--bars", options.bars, "draw bars")->excludes("--lines")->excludes("--symbols");
    struct Row {
        char const* name;
        Kind kind;
        char const* help;
    };
    constexpr std::array rows{
        Row{"--steps", Kind::Steps, "draw lines in steps: a value holds until the next"},
        Row{"--area", Kind::Area, "draw lines and fill what is below them"},
        Row{"--hist", Kind::Histogram, "draw how the values of each column are distributed"},
        Row{"--heat", Kind::Heat,
            "draw a heat map: of one column how many points there are, of several their values"},
        Row{"--box", Kind::Box, "draw box plots: of each text of x, else of each column"}};
    std::vector<char const*> earlier{"--bars"};
    for (Row const& row : rows) {
        CLI::Option* const option =
            app.add_flag_callback(
                   row.name, [&options, kind = row.kind] { options.kind = kind; }, row.help)
                ->group(looks);
        for (char const* other : earlier) option->excludes(other);
        earlier.push_back(row.name);
    }
    topic.flag("--stacked", options.stacked, "put bars or areas upon each other");
    topic.texts("--style", "COLUMN:WORDS",
                "how a column is drawn, such as wind:steps,dotted,red; --help styles lists the words",
                [&](std::string const& text) { options.styles.push_back(parse_style(text)); });
}

void add_looks(CLI::App& app, PlotOptions& options) {
    const Topic topic(app, looks);
    topic.text("--look", "light|dark|print|classic", "look of the page; default: light",
               [&](std::string const& text) {
                   auto const names = look_names();
                   if (std::ranges::find(names, text) == names.end()) {
                       std::string list;
                       for (std::string_view const name : names)
                           list += (list.empty() ? "" : ", ") + std::string(name);
                       throw PlotError("--look: \"" + text + "\" is none of " + list);
                   }
                   options.look = text;
               });
    topic.value("--font", options.font, "NAME", "font of all texts, such as \"DejaVu Serif\"");
    topic.text("--font-size", "POINTS", "size of the labels; titles go with it; default: 9",
               [&](std::string const& text) {
                   constexpr double least = 3, most = 100;
                   options.font_size = number_between("--font-size", text, least, most);
               });
    topic.text("--line-width", "PIXELS", "width of lines; default: 2", [&](std::string const& text) {
        constexpr double most = 50;
        options.line_width = static_cast<int>(number_between("--line-width", text, 1, most));
    });
    topic.text("--colors", "COLOR,...", "colours of columns in turn, such as blue,#F57510",
               [&](std::string const& text) {
                   for (std::size_t begin = 0; begin <= text.size();) {
                       std::size_t const end = std::min(text.find(',', begin), text.size());
                       options.colors.push_back(parse_color(text.substr(begin, end - begin), "--colors"));
                       begin = end + 1;
                   }
               });
    topic.flag("--no-legend", options.no_legend, "leave out the legend, which pages of several columns have");
}

/// "5=limit" or, for a band, "5:6=limit"; dates are values too.
Mark parse_mark_line(char const* option, std::string const& text, bool along_x, bool band) {
    auto const sign = text.find('=');
    const std::string values = text.substr(0, sign);
    Mark mark{.along_x = along_x, .label = sign == std::string::npos ? "" : text.substr(sign + 1)};
    if (band) {
        const XRange range = parse_range(values, option);
        mark.from = range.from;
        mark.to = range.to;
        return mark;
    }
    auto const number = table::finite_number(values), date = table::utc_seconds(values);
    if (!number && !date)
        throw PlotError(std::string(option) + ": \"" + text
                        + "\" is not VALUE or VALUE=TEXT, such as 5=limit");
    mark.from = mark.to = number ? *number : *date;
    return mark;
}

void add_axes(CLI::App& app, PlotOptions& options) {
    const Topic topic(app, axes);
    struct Range {
        char const* name;
        std::optional<XRange>* target;
        char const* help;
    };
    for (Range const& row :
         {Range{"--x-range", &options.x_range,
                "numbers or dates between which data and formulas are drawn; default: all data, else -10:10"},
          Range{"--y-range", &options.y_range, "what the y axis shows; default: all data"},
          Range{"--y2-range", &options.y2_range, "what the axis on the right shows"}})
        topic.text(row.name, "FROM:TO", row.help,
                   [row](std::string const& text) { *row.target = parse_range(text, row.name); });
    topic.flag("--log-x", options.log.x, "logarithmic x axis");
    topic.flag("--log-y", options.log.y, "logarithmic y axis");
    topic.flag("--log-y2", options.log.y2, "logarithmic axis on the right");
    topic.value("--title", options.title, "TEXT",
                "title of the page; x^{2} and CO_{2} are raised and lowered, in other titles too");
    topic.value("--x-title", options.x_title, "TEXT", "title of the x axis; default: its column");
    topic.value("--y-title", options.y_title, "TEXT", "title of the y axis; default: its columns");
    topic.value("--y2-title", options.y2_title, "TEXT",
                "title of the axis on the right; default: its columns");
    struct MarkRow {
        char const *name, *type, *help;
        bool along_x, band;
    };
    for (MarkRow const& row :
         {MarkRow{"--hline", "VALUE[=TEXT]", "level line at a value of y, may be repeated", false, false},
          MarkRow{"--vline", "VALUE[=TEXT]", "upright line at a value or date of x", true, false},
          MarkRow{"--hband", "FROM:TO[=TEXT]", "level band between two values of y", false, true},
          MarkRow{"--vband", "FROM:TO[=TEXT]", "upright band between two values or dates of x", true, true}})
        topic.texts(row.name, row.type, row.help, [row, &options](std::string const& text) {
            options.marks.push_back(parse_mark_line(row.name, text, row.along_x, row.band));
        });
}

void add_output(CLI::App& app, PlotOptions& options) {
    const Topic topic(app, output);
    topic.value("--out", options.out, "FILE",
                "file to write: .png, .svg, .pdf or .bmp; - is standard output");
    topic.text("--format", "png|svg|pdf|bmp", "format of the file; default: as its name ends, png for -",
               [&](std::string const& text) {
                   constexpr std::array<Choice<char const*>, 4> formats{
                       {{"png", "png"}, {"svg", "svg"}, {"pdf", "pdf"}, {"bmp", "bmp"}}};
                   options.format = chosen("--format", text, formats);
               });
    topic.text("--dpi", "DOTS", "dots per inch: how large texts and lines are in pixels; default: 96",
               [&](std::string const& text) {
                   constexpr double least = 20, most = 1200;
                   options.dpi = number_between("--dpi", text, least, most);
               });
    // The size in pixels depends on the dots per inch, which may stand behind it.
    topic.text("--size", "WxH",
               "size of the picture in pixels, or such as 16x10cm, mm, in; default: 1200x800",
               [&app, &options](std::string const& text) {
                   auto const* const dpi = app.get_option("--dpi");
                   if (dpi->count() > 0) {
                       constexpr double least = 20, most = 1200;
                       options.dpi = number_between("--dpi", dpi->results().back(), least, most);
                   }
                   options.size = parse_size(text, options.dpi);
               });
    topic.flag("--print", options.print, "print the page on one sheet");
    topic.value("--printer", options.printer, "NAME", "printer; default: the system's default one")
        ->needs("--print");
    topic.flag("--landscape", options.landscape, "print on the sheet held sideways")->needs("--print");
    app.set_config("--options", "", "file of options, one a line: name = value")
        ->type_name("FILE")
        ->group(output);
}

void add_window(CLI::App& app, PlotOptions& options) {
    const Topic topic(app, window);
    topic.flag("--show", options.show, "show a window (the default without --out and --print)");
    topic.flag("--watch", options.watch, "draw the page anew when a file changes");
    topic.flag("--follow", options.follow, "draw standard input, or a growing file, as it comes")
        ->excludes("--watch");
    topic
        .text("--latest", "ROWS", "keep so many of the latest rows; default: all",
              [&](std::string const& text) {
                  constexpr double most = 1e9;
                  options.latest = static_cast<std::int32_t>(number_between("--latest", text, 1, most));
              })
        ->needs("--follow");
}

} // namespace

XRange parse_range(std::string_view text, char const* option) {
    // Times hold colons too.
    for (auto colon = text.find(':'); colon != std::string_view::npos; colon = text.find(':', colon + 1)) {
        const std::string_view first = text.substr(0, colon), second = text.substr(colon + 1);
        auto const from = table::finite_number(first), to = table::finite_number(second);
        if (from && to && *from < *to) return {*from, *to};
        auto const first_date = table::utc_seconds(first), second_date = table::utc_seconds(second);
        if (first_date && second_date && *first_date < *second_date) return {*first_date, *second_date, true};
    }
    throw PlotError(std::string(option) + ": \"" + std::string(text)
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
    add_definitions(app, options.definitions, "Options");
}

void add_plot_options(CLI::App& app, PlotOptions& options) {
    add_columns(app, options);
    add_reading(app, options);
    add_kinds(app, options);
    add_looks(app, options);
    add_axes(app, options);
    add_output(app, options);
    add_window(app, options);
}

void check_options(PlotOptions& options) {
    if (options.files.empty() && options.functions.empty())
        throw PlotError("no data file is named; qvplot --help shows how");
    if (options.files.size() > 1 && std::ranges::count(options.files, "-") > 1)
        throw PlotError("-: standard input can be read once");
    bool const from_input = std::ranges::find(options.files, "-") != options.files.end();
    if (options.watch && from_input)
        throw PlotError("--watch: standard input does not change; --follow draws it as it comes");
    if (!options.follow) return;
    if (options.files.size() != 1 || !options.functions.empty())
        throw PlotError("--follow: one file or - can be followed, without functions");
    Kind const kind = options.page_kind();
    if (kind == Kind::Heat || kind == Kind::Box || kind == Kind::Histogram)
        throw PlotError("--follow: lines, symbols, bars, steps and areas can be followed");
    if (options.out == "-")
        throw PlotError("--follow: a file is rewritten as data come; name one with --out");
    options.reading.early = true;
}

} // namespace qv::plot
