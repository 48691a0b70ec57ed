#include "qvplot/page.h"

#include "qvgraph/looks.h"

#include <algorithm>
#include <cmath>

namespace qv::plot {
namespace {

constexpr char const* look_of_page = "light";
constexpr std::int16_t first_shape = 3; // circle, square, diamond, two triangles
constexpr std::size_t shapes = 5;
constexpr std::size_t dashes = 5;
constexpr float least_margin_mm = 3;      // so that a small page is plot area above all
constexpr double letter_mm = 2;           // most are narrower
constexpr double bar_share = 0.8;         // of the room between two bars
constexpr double bar_share_of_size = 0.9; // the control's bars are narrower than their size
constexpr double bars_across_page = 22;   // where no distance between them says how wide they are

/// The text as RichText shows it letter by letter: what a file names x_1 is not lowered.
std::string as_it_stands(std::string const& text) {
    std::string escaped;
    for (char const letter : text) {
        if (letter == '\\' || letter == '^' || letter == '_' || letter == '{' || letter == '}')
            escaped += '\\';
        escaped += letter;
    }
    return escaped;
}

// Millimetres: smaller the more there are.
float symbol_size(std::size_t points) {
    return points <= 200 ? 2 : points <= 2000 ? 1.4F : points <= 20000 ? 1 : 0.6F;
}

/// Points of a line whose neighbours are missing.
struct LonePoints {
    std::vector<double> x;
    std::vector<double> y;
};

LonePoints find_lone_points(Series const& series) {
    LonePoints lone;
    for (std::size_t i = 0; i < series.x.size(); ++i) {
        bool const joined =
            (i > 0 && series.has_point(i - 1)) || (i + 1 < series.x.size() && series.has_point(i + 1));
        if (joined || !series.has_point(i)) continue;
        lone.x.push_back(series.x[i]);
        lone.y.push_back(series.y[i]);
    }
    return lone;
}

std::string given_or(std::string const& given, std::string const& own) {
    return given.empty() ? own : given;
}

/// The columns of an axis, the first few of many.
std::string name_columns(PlotData const& data, bool second, std::size_t most_named) {
    std::string names;
    std::size_t named = 0, unnamed = 0;
    for (Series const& series : data.series) {
        if (series.on_second_axis != second) continue;
        if (named < most_named)
            names += (named++ == 0 ? "" : ", ") + series.name;
        else
            ++unnamed;
    }
    return unnamed == 0 ? names : names + " and " + std::to_string(unnamed) + " more";
}

/// As many columns as have room beside a plot area of this height.
std::string column_names(PlotData const& data, bool second, double height_mm) {
    for (std::size_t most_named = 6; most_named > 1; --most_named) {
        std::string names = name_columns(data, second, most_named);
        if (letter_mm * static_cast<double>(names.size()) < height_mm) return names;
    }
    return name_columns(data, second, 1);
}

DataHandle add_points(GraphHandle const& graph, Series const& series, std::size_t number,
                      PlotOptions const& options, AxisHandle const& axis) {
    // More columns than the look has colours differ in dashes and shapes too.
    std::size_t const round = number / look(look_of_page).palette.size();
    std::string const name = as_it_stands(series.name);
    if (options.bars)
        return graph.bars(
            name, {.axis = axis, .bar_base = !(series.on_second_axis ? options.log.y2 : options.log.y)});
    std::size_t const points = series.number_of_points();
    DataOptions style{.axis = axis, .symbol_size = symbol_size(points)};
    // A line of lone points would not be seen.
    if (options.symbols || find_lone_points(series).x.size() == points)
        style.symbol = static_cast<std::int16_t>(first_shape + round % shapes);
    if (!options.draws_lines()) return graph.symbols(name, style);
    style.line_dash = static_cast<std::uint8_t>(round % dashes);
    return graph.line(name, style);
}

/// True when it was another.
bool retitle(AxisHandle const& axis, std::string const& title) {
    if (axis.title() == title) return false;
    axis.title(title);
    return true;
}

} // namespace

PlotPage::PlotPage(qvGraph& page, PlotData data, PlotOptions options)
    : page_(page), data_(std::move(data)), options_(std::move(options)) {}

bool PlotPage::has_axis(bool second) const {
    return std::ranges::any_of(data_.series,
                               [&](Series const& series) { return series.on_second_axis == second; });
}

void PlotPage::draw() {
    page_.Reset();
    page_.UseLook(look_of_page);
    for (std::string const& definition : options_.definitions) page_.DefineFunction(definition);
    graph_ = page_.graph(options_.title, {.show_title = !options_.title.empty(),
                                          .border_left = least_margin_mm,
                                          .border_right = least_margin_mm,
                                          .border_top = least_margin_mm,
                                          .border_bottom = least_margin_mm});
    add_axes();
    add_series();
    widen_bars();
    add_lone_points();
    show_ranges();
    name_axes();
    show_legend();
    page_.Refresh();
}

void PlotPage::follow() {
    bool const renamed = name_axes(), legend_changed = show_legend();
    if (renamed || legend_changed) page_.Refresh();
}

// A page may have its only columns on the right.
void PlotPage::add_axes() {
    x_ = graph_.x_axis({.log = options_.log.x, .time = data_.x_is_date});
    if (has_axis(false)) y_ = graph_.y_axis({.log = options_.log.y});
    if (!has_axis(true)) return;
    y2_ = y_ ? graph_.add_y_axis() : graph_.y_axis();
    y2_.set({.far_side = true, .log = options_.log.y2});
}

void PlotPage::add_series() {
    sets_.clear();
    for (Series const& series : data_.series) {
        AxisHandle const& axis = axis_of(series);
        if (series.function.empty()) {
            sets_.push_back(add_points(graph_, series, sets_.size(), options_, axis));
            sets_.back().add(series.x, series.y);
        } else {
            XRange const& range = series.function_range;
            sets_.push_back(
                graph_.function(as_it_stands(series.name), series.function,
                                {.axis = axis, .formula_from = range.from, .formula_to = range.to}));
        }
    }
    if (!y_ || !y2_) return;
    for (bool const second : {false, true}) color_axis(second);
}

// Points that a line alone would not show, because those beside them are missing. They get a data set of
// their own, without a row in the legend.
void PlotPage::add_lone_points() {
    if (!options_.draws_lines() || options_.symbols) return;
    for (std::size_t i = 0; i < data_.series.size(); ++i) {
        Series const& series = data_.series[i];
        if (!series.function.empty()) continue;
        const LonePoints lone = find_lone_points(series);
        std::size_t const points = series.number_of_points();
        if (lone.x.empty() || lone.x.size() == points) continue;
        graph_
            .symbols(as_it_stands(series.name), {.axis = axis_of(series),
                                                 .color = sets_[i].line_color(),
                                                 .in_legend_table = false,
                                                 .symbol = first_shape,
                                                 .symbol_size = symbol_size(points)})
            .add(lone.x, lone.y);
    }
}

// On a page with an axis on either side, one that has one column alone takes its colour.
void PlotPage::color_axis(bool second) const {
    std::size_t columns = 0, last = 0;
    for (std::size_t i = 0; i < data_.series.size(); ++i)
        if (data_.series[i].on_second_axis == second) {
            ++columns;
            last = i;
        }
    if (columns != 1) return;
    const Color color = options_.bars ? sets_[last].symbol_color() : sets_[last].line_color();
    (second ? y2_ : y_).set({.label_color = color, .title_color = color});
}

// After the data, which widen a range.
void PlotPage::show_ranges() const {
    auto const show = [](AxisHandle const& axis, std::optional<Extent> const& range) {
        if (axis && range) axis.set({.from = range->low, .to = range->high});
    };
    show(x_, x_range_to_show(data_, options_));
    show(y_, y_range_to_show(data_, options_, false));
    show(y2_, y_range_to_show(data_, options_, true));
}

bool PlotPage::name_axes() {
    double const height_mm = page_.PageHeight() / static_cast<double>(page_.UnitsPerMmY());
    auto const title = [&](std::string const& given, bool second) {
        return given_or(given, as_it_stands(column_names(data_, second, height_mm)));
    };
    bool changed = retitle(x_, given_or(options_.x_title, as_it_stands(data_.x_name)));
    if (y_) changed |= retitle(y_, title(options_.y_title, false));
    if (y2_) changed |= retitle(y2_, title(options_.y2_title, true));
    return changed;
}

// The axis title names a lone column, and a page too small for a legend has none. True when it comes or goes.
bool PlotPage::show_legend() {
    constexpr double row_mm = 4.2, edges_mm = 4, key_mm = 14, most_of_width = 0.6, most_of_height = 0.9;
    std::size_t longest = 0;
    for (Series const& series : data_.series) longest = std::max(longest, series.name.size());
    double const rows = static_cast<double>(data_.series.size());
    bool const has_room = row_mm * rows + edges_mm < most_of_height * page_.PageHeight() / page_.UnitsPerMmY()
                          && letter_mm * static_cast<double>(longest) + key_mm
                                 < most_of_width * page_.PageWidth() / page_.UnitsPerMmX();
    bool const shown = !options_.no_legend && data_.series.size() > 1 && has_room;
    LegendHandle const legend = graph_.legend();
    if (legend.show() == shown) return false;
    legend.show(shown);
    return true;
}

// Bars of several series stand side by side, as wide as their distance lets them; on a logarithmic axis, or
// with one bar each, a share of the page.
void PlotPage::widen_bars() {
    if (!options_.bars) return;
    auto const columns =
        std::ranges::count_if(data_.series, [](Series const& series) { return series.function.empty(); });
    double const distance = options_.log.x ? 0 : bar_distance(data_);
    double const page_mm = page_.PageWidth() / static_cast<double>(page_.UnitsPerMmX());
    double const room = distance > 0 ? distance : page_mm / bars_across_page;
    double const width = bar_share * room / static_cast<double>(columns);
    double place = -(static_cast<double>(columns) - 1) / 2;
    for (std::size_t i = 0; i < sets_.size(); ++i) {
        if (!data_.series[i].function.empty()) continue;
        auto const offset = static_cast<float>(place++ * width);
        if (distance > 0)
            sets_[i].set({.bar_offset = offset, .bar_width = width});
        else
            sets_[i].set(
                {.symbol_size = static_cast<float>(width / bar_share_of_size), .bar_offset = offset});
    }
}

void draw_page(qvGraph& page, PlotData const& data, PlotOptions const& options) {
    PlotPage(page, data, options).draw();
}

} // namespace qv::plot
