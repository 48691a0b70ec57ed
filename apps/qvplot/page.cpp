#include "qvplot/page.h"

#include "qvplot/plot_error.h"
#include "table/text.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace qv::plot {
namespace {

constexpr std::int16_t first_shape = 3; // circle, square, diamond, two triangles
constexpr std::size_t shapes = 5;
constexpr std::size_t dashes = 5;
constexpr float least_margin_mm = 3; // so that a small page is plot area above all
constexpr double letter_mm = 2;      // most are narrower
constexpr double page_percent = 100;

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
    bool before = false, here = series.x.size() > 0 && series.has_point(0);
    for (std::size_t i = 0; i < series.x.size(); ++i) {
        bool const after = i + 1 < series.x.size() && series.has_point(i + 1);
        if (here && !before && !after) {
            lone.x.push_back(series.x[i]);
            lone.y.push_back(series.y[i]);
        }
        before = here;
        here = after;
    }
    return lone;
}

std::string given_or(std::string const& given, std::string const& own) {
    return given.empty() ? own : given;
}

std::string with_unit(std::string const& name, std::string const& unit) {
    return unit.empty() ? name : name + " (" + unit + ")";
}

/// The columns of an axis, the first few of many.
std::string name_columns(PlotData const& data, bool second, std::size_t most_named, bool with_units) {
    std::string names;
    std::size_t named = 0, unnamed = 0;
    for (Series const& series : data.series) {
        if (series.on_second_axis != second) continue;
        if (named < most_named)
            names += (named++ == 0 ? "" : ", ") + with_unit(series.name, with_units ? series.unit : "");
        else
            ++unnamed;
    }
    return unnamed == 0 ? names : names + " and " + std::to_string(unnamed) + " more";
}

// The unit that all columns of an axis have.
std::string common_unit(PlotData const& data, bool second) {
    std::string unit;
    bool first = true;
    for (Series const& series : data.series) {
        if (series.on_second_axis != second) continue;
        if (!first && series.unit != unit) return {};
        unit = series.unit;
        first = false;
    }
    return unit;
}

/// As many columns as have room beside a plot area of this height.
std::string column_names(PlotData const& data, bool second, double height_mm) {
    const std::string unit = common_unit(data, second);
    auto const names_of = [&](std::size_t most_named) {
        return with_unit(name_columns(data, second, most_named, unit.empty()), unit);
    };
    for (std::size_t most_named = 6; most_named > 1; --most_named) {
        std::string names = names_of(most_named);
        if (letter_mm * static_cast<double>(names.size()) < height_mm) return names;
    }
    return names_of(1);
}

/// True when it was another.
bool retitle(AxisHandle const& axis, std::string const& title) {
    if (axis.title() == title) return false;
    axis.title(title);
    return true;
}

// "Arial|9|Bold" in another font, its size times `scale`.
std::string font_like(std::string const& font, std::string const& name, double scale) {
    auto const first = font.find('|');
    auto const second = std::min(font.find('|', first + 1), font.size());
    double const size = table::finite_number(font.substr(first + 1, second - first - 1)).value_or(9);
    return "Font=" + given_or(name, font.substr(0, first)) + "|" + table::shortest(std::round(size * scale))
           + font.substr(second);
}

struct FontRow {
    char const *property, *font;
};
constexpr FontRow fonts[] = {{"AxisLabelFont", "Arial|9"},
                             {"AxisTitleFont", "Arial|10"},
                             {"GraphTitleFont", "Arial|12|Bold"},
                             {"LegendFont", "Arial|9"},
                             {"DataTextFont", "Arial|9"}};
constexpr double label_points = 9;

Look look_for(PlotOptions const& options) {
    Look look = qv::look(options.look);
    if (!options.font.empty() || options.font_size > 0) {
        double const scale = options.font_size > 0 ? options.font_size / label_points : 1;
        for (FontRow const& row : fonts) look.values[row.property] = font_like(row.font, options.font, scale);
    }
    if (options.line_width > 0) look.values["DataLineThickness"] = options.line_width;
    if (!options.colors.empty()) {
        look.palette = options.colors;
        look.fills.clear();
    }
    return look;
}

bool is_filled(Kind kind) {
    return kind == Kind::Bars || kind == Kind::Histogram || kind == Kind::Area || kind == Kind::Box;
}

// Edges halfway between places, for cells around them.
std::vector<double> edges_about(std::vector<double> const& places) {
    std::vector<double> edges;
    if (places.size() == 1) return {places[0] - 0.5, places[0] + 0.5};
    edges.push_back(places[0] - (places[1] - places[0]) / 2);
    for (std::size_t i = 1; i < places.size(); ++i) edges.push_back((places[i - 1] + places[i]) / 2);
    edges.push_back(places.back() + (places.back() - places[places.size() - 2]) / 2);
    return edges;
}

std::vector<double> counted_edges(std::size_t count) {
    std::vector<double> edges;
    for (std::size_t i = 0; i <= count; ++i) edges.push_back(static_cast<double>(i) - 0.5);
    return edges;
}

bool all_rise(std::vector<double> const& values) {
    for (std::size_t i = 1; i < values.size(); ++i)
        if (!(values[i] > values[i - 1])) return false;
    return true;
}

} // namespace

PlotPage::PlotPage(qvGraph& page, PlotData data, PlotOptions options, AfterDrawing after)
    : page_(page), data_(std::move(data)), options_(std::move(options)), after_(after) {}

void PlotPage::set_look() {
    look_ = look_for(options_);
    page_.UseLook(look_);
    // What a page of data needs whatever it looks like.
    for (std::string const& name : qv::look("light").switches) page_.Let(name, true);
}

void PlotPage::draw() {
    page_.Reset();
    set_look();
    for (std::string const& definition : options_.definitions) page_.DefineFunction(definition);
    divide();
    std::vector<std::array<std::optional<Extent>, 3>> ranges;
    for (std::size_t i = 0; i < panels_.size(); ++i) {
        add_panel(i);
        add_axes(panels_[i]);
        ranges.push_back(ranges_of(panels_[i]));
        add_series(panels_[i]);
        add_marks(panels_[i]);
    }
    add_points();
    for (std::size_t i = 0; i < panels_.size(); ++i) show_ranges(panels_[i], ranges[i]);
    name_axes();
    show_legends();
    page_.Refresh();
}

void PlotPage::replace(PlotData data) {
    data_ = std::move(data);
    draw();
}

void PlotPage::follow() {
    bool const renamed = name_axes(), legend_changed = show_legends();
    if (renamed || legend_changed) page_.Refresh();
}

// Which series share a graph: all, or with --panels each its own.
void PlotPage::divide() {
    panels_.clear();
    if (!options_.panels) panels_.emplace_back();
    for (std::size_t i = 0; i < data_.series.size(); ++i) {
        if (options_.panels) panels_.emplace_back();
        panels_.back().series.push_back(i);
    }
    for (Panel& panel : panels_) {
        Series const& first = data_.series[panel.series.front()];
        panel.kind = first.style.kind.value_or(options_.page_kind());
    }
}

void PlotPage::add_panel(std::size_t number) {
    Panel& panel = panels_[number];
    bool const titled = !options_.title.empty() && number == 0;
    GraphOptions graph{.show_title = titled,
                       .bar_arrangement = static_cast<std::uint8_t>(options_.stacked ? 2 : 1),
                       .border_left = least_margin_mm,
                       .border_right = least_margin_mm,
                       .border_top = least_margin_mm,
                       .border_bottom = least_margin_mm};
    if (options_.panels) {
        const std::size_t across = std::min(static_cast<std::size_t>(*options_.panels), panels_.size());
        const std::size_t down = (panels_.size() + across - 1) / across;
        const std::size_t column = number % across, row = number / across;
        double const width = page_percent / static_cast<double>(across),
                     height = page_percent / static_cast<double>(down);
        graph.whole_page = false;
        graph.left = static_cast<float>(width * static_cast<double>(column));
        graph.top = static_cast<float>(height * static_cast<double>(row));
        graph.width = static_cast<float>(width);
        graph.height = static_cast<float>(height);
    }
    panel.graph = page_.graph(titled ? options_.title : "", graph);
}

void PlotPage::describe_axis(AxisHandle const& axis, AxisContent const& content) const {
    if (!axis) return;
    if (content.is_time) axis.time(true);
    if (content.is_time_of_day) axis.text_labels("hh:mm"); // of no day
    if (content.is_time && !content.is_time_of_day && !options_.reading.time_zone.empty())
        axis.time_zone(options_.reading.time_zone);
    if (content.texts.empty()) return;
    TextList texts;
    for (std::string const& text : content.texts) texts.push_back(as_it_stands(text));
    axis.set_categories(texts);
}

// A page may have its only columns on the right.
void PlotPage::add_axes(Panel& panel) {
    auto const has_axis = [&](bool second) {
        return std::ranges::any_of(panel.series,
                                   [&](std::size_t i) { return data_.series[i].on_second_axis == second; });
    };
    bool const has_right = has_axis(true);
    panel.x = panel.graph.x_axis({.log = options_.log.x});
    if (has_axis(false)) panel.y = panel.graph.y_axis({.log = options_.log.y});
    if (has_right) {
        panel.y2 = panel.y ? panel.graph.add_y_axis() : panel.graph.y_axis();
        panel.y2.set({.far_side = true, .log = options_.log.y2});
    }
    AxisContent x = data_.x;
    x.is_time = x.is_time || data_.x_is_date;
    if (panel.kind == Kind::Histogram) x = data_.y[0];
    if (panel.kind == Kind::Box && x.texts.empty()) {
        x = {};
        for (std::size_t const i : panel.series) x.texts.push_back(data_.series[i].name);
    }
    describe_axis(panel.x, x);
    if (options_.panels && panel.kind != Kind::Histogram && panel.kind != Kind::Box) panel.x.link("x");
    if (panel.kind == Kind::Histogram) return;
    describe_axis(panel.y, data_.y[0]);
    describe_axis(panel.y2, data_.y[1]);
}

void PlotPage::add_series(Panel& panel) {
    panel.sets.clear();
    if (panel.kind == Kind::Heat && panel.series.size() > 1) return add_matrix(panel);
    for (std::size_t const i : panel.series) {
        Series const& series = data_.series[i];
        panel.sets.push_back(add_set(panel, series, options_.panels ? i : panel.sets.size()));
        if (options_.latest > 0) panel.sets.back().keep_latest(options_.latest);
    }
    for (std::size_t k = 0; k < panel.series.size(); ++k)
        add_lone_points(panel, data_.series[panel.series[k]], panel.sets[k]);
    if (!panel.y || !panel.y2) return;
    for (bool const second : {false, true}) color_axis(panel, second);
}

DataHandle PlotPage::add_set(Panel const& panel, Series const& series, std::size_t number) const {
    // The axis names the unit where all columns have the same.
    bool const unit_here = common_unit(data_, series.on_second_axis).empty();
    std::string const name = as_it_stands(with_unit(series.name, unit_here ? series.unit : ""));
    SeriesStyle const& own = series.style;
    Kind const kind = own.kind.value_or(options_.page_kind());
    bool const log_y = series.on_second_axis ? options_.log.y2 : options_.log.y;
    DataOptions style{.axis = panel.axis(series)};
    if (own.color) {
        style.color = *own.color;
    } else if (options_.panels) {
        // Each graph would begin with the first colour.
        std::vector<Color> const& colors =
            is_filled(kind) && !look_.fills.empty() ? look_.fills : look_.palette;
        if (!colors.empty()) style.color = colors[number % colors.size()];
    }
    if (!series.function.empty()) {
        style.formula_from = series.function_range.from;
        style.formula_to = series.function_range.to;
        return panel.graph.function(name, series.function, style);
    }
    if (own.line_width) style.line_thickness = static_cast<std::uint8_t>(*own.line_width);
    switch (kind) {
    case Kind::Bars: style.bar_base = !log_y; return panel.graph.bars(name, style);
    case Kind::Histogram: return panel.graph.histogram(name, style);
    case Kind::Box: return panel.graph.boxes(name, style);
    case Kind::Heat: {
        const DataHandle map = panel.graph.heat_map(name, style);
        panel.graph.color_axis({.title = "number of points", .show_title = true});
        return map;
    }
    default: break;
    }
    // More columns than the look has colours differ in dashes and shapes too.
    std::size_t const round = look_.palette.empty() ? 0 : number / look_.palette.size();
    std::size_t const points = series.number_of_points();
    style.symbol_size = symbol_size(points);
    bool const lines_asked = own.kind.has_value() && !own.symbols_alone;
    bool const symbols = own.symbols.value_or(options_.symbols && !own.kind);
    if (symbols)
        style.symbol =
            static_cast<std::int16_t>(own.symbol.value_or(static_cast<int>(first_shape + round % shapes)));
    bool const symbols_alone =
        own.symbols_alone || (!options_.draws_lines() && !lines_asked && kind == Kind::Lines);
    if (symbols_alone) return panel.graph.symbols(name, style);
    style.line_dash = static_cast<std::uint8_t>(own.dash.value_or(static_cast<int>(round % dashes)));
    if (kind == Kind::Steps) style.steps = 2;
    if (kind != Kind::Area) return panel.graph.line(name, style);
    constexpr std::uint8_t see_through = 110;
    if (options_.stacked)
        style.area_stacked = 1;
    else if (data_.series.size() > 1)
        style.fill_alpha = see_through;
    if (!log_y) style.area_base = true;
    return panel.graph.area(name, style);
}

// Points that a line alone would hardly show, because those beside them are missing. They get a data set of
// their own, without a row in the legend.
void PlotPage::add_lone_points(Panel const& panel, Series const& series, DataHandle const& set) const {
    Kind const kind = series.style.kind.value_or(options_.page_kind());
    if (!series.function.empty() || kind != Kind::Lines || set.symbol() != 0 || options_.follow) return;
    const std::size_t points = series.number_of_points();
    if (points == series.x.size() && points > 1) return; // none is missing
    const LonePoints lone = find_lone_points(series);
    if (lone.x.empty()) return;
    panel.graph
        .symbols(as_it_stands(series.name), {.axis = panel.axis(series),
                                             .color = set.line_color(),
                                             .in_legend_table = false,
                                             .symbol = first_shape,
                                             .symbol_size = symbol_size(points)})
        .add(lone.x, lone.y);
}

// Several columns as the rows of a matrix, upwards, over x.
void PlotPage::add_matrix(Panel& panel) {
    std::vector<double> values, x;
    TextList names;
    Series const& first = data_.series[panel.series.front()];
    for (double const place : first.x) x.push_back(place);
    for (std::size_t const i : panel.series) {
        Series const& series = data_.series[i];
        if (series.y.size() != x.size())
            throw PlotError("--heat: the columns have different numbers of rows; draw the files one by one");
        names.push_back(as_it_stands(series.name));
        for (double const value : series.y) values.push_back(value);
    }
    const DataHandle set = panel.graph.heat_map("", {.in_legend_table = false});
    bool const in_places = data_.x.texts.empty() && all_rise(x);
    set.grid(values, in_places ? edges_about(x) : counted_edges(x.size()), counted_edges(names.size()));
    panel.y.set_categories(names);
    panel.sets.push_back(set);
}

void PlotPage::add_values(Panel& panel, DataHandle const& set, Series const& series,
                          std::size_t place) const {
    switch (series.style.kind.value_or(panel.kind)) {
    case Kind::Histogram:
        for (std::size_t b = 0; b < series.y.blocks(); ++b) set.add_values(series.y.block(b));
        break;
    case Kind::Box:
        for (std::size_t b = 0; b < series.y.blocks(); ++b) {
            if (data_.x.texts.empty())
                set.add_values(series.y.block(b), static_cast<double>(place));
            else
                set.add(series.x.block(b), series.y.block(b));
        }
        break;
    default: break;
    }
}

// Block by block, so that what the control has by then can be given up here.
void PlotPage::add_points() {
    std::size_t blocks = 0;
    for (Series const& series : data_.series) blocks = std::max(blocks, series.y.blocks());
    auto const for_each_set = [&](auto const& visit) {
        for (Panel& panel : panels_) {
            if (panel.kind == Kind::Heat && panel.series.size() > 1) continue;
            for (std::size_t k = 0; k < panel.series.size(); ++k)
                visit(panel, k, data_.series[panel.series[k]]);
        }
    };
    auto const is_distribution = [&](Panel const& panel, Series const& series) {
        Kind const kind = series.style.kind.value_or(panel.kind);
        return kind == Kind::Histogram || kind == Kind::Box;
    };
    for_each_set([&](Panel& panel, std::size_t k, Series const& series) {
        if (is_distribution(panel, series)) add_values(panel, panel.sets[k], series, k);
    });
    for (std::size_t b = 0; b < blocks; ++b) {
        for_each_set([&](Panel const& panel, std::size_t k, Series const& series) {
            if (b >= series.y.blocks() || !series.function.empty() || is_distribution(panel, series)) return;
            panel.sets[k].add(series.x.block(b), series.y.block(b));
        });
        if (after_ == AfterDrawing::Keep) continue;
        for (Series& series : data_.series) {
            if (b < series.x.blocks()) series.x.give_up(b);
            if (b < series.y.blocks()) series.y.give_up(b);
        }
    }
}

void PlotPage::append(std::vector<Series> const& more) {
    for (Panel const& panel : panels_)
        for (std::size_t k = 0; k < panel.series.size(); ++k) {
            Series const& series = more[panel.series[k]];
            for (std::size_t b = 0; b < series.y.blocks(); ++b)
                panel.sets[k].add(series.x.block(b), series.y.block(b));
        }
}

void PlotPage::add_marks(Panel const& panel) const {
    constexpr std::uint8_t above_at_start = 0;
    for (Mark const& mark : options_.marks) {
        DataOptions style{.in_legend_table = false, .text_ori = above_at_start};
        if (!mark.label.empty()) style.text = mark.label;
        bool const line = mark.from == mark.to;
        DataHandle const set = mark.along_x ? (line ? panel.graph.vertical_line(mark.from, style)
                                                    : panel.graph.vertical_band(mark.from, mark.to, style))
                                            : (line ? panel.graph.horizontal_line(mark.from, style)
                                                    : panel.graph.horizontal_band(mark.from, mark.to, style));
        if (!line) continue;
        constexpr Color grey = rgb(120, 120, 120);
        set.set({.line_dash = 1, .line_color = grey, .line_thickness = 1});
    }
}

// On a page with an axis on either side, one that has one column alone takes its colour.
void PlotPage::color_axis(Panel const& panel, bool second) const {
    std::size_t columns = 0, last = 0;
    for (std::size_t k = 0; k < panel.series.size(); ++k)
        if (data_.series[panel.series[k]].on_second_axis == second) {
            ++columns;
            last = k;
        }
    if (columns != 1) return;
    Kind const kind = data_.series[panel.series[last]].style.kind.value_or(options_.page_kind());
    const Color color = kind == Kind::Bars ? panel.sets[last].symbol_color() : panel.sets[last].line_color();
    (second ? panel.y2 : panel.y).set({.label_color = color, .title_color = color});
}

PlotData PlotPage::part_of(Panel const& panel) const {
    PlotData part{data_.x_name, data_.x_is_date, {}};
    for (std::size_t const i : panel.series) part.series.push_back(data_.series[i]);
    part.x = data_.x;
    part.y = data_.y;
    return part;
}

// Of x, y and y2. Distributions and heat maps know theirs.
std::array<std::optional<Extent>, 3> PlotPage::ranges_of(Panel const& panel) const {
    auto const given = [](std::optional<XRange> const& range) {
        return range ? std::optional(Extent{range->from, range->to}) : std::nullopt;
    };
    std::array<std::optional<Extent>, 3> ranges;
    if (panel.kind == Kind::Histogram || panel.kind == Kind::Box || panel.kind == Kind::Heat) {
        ranges = {given(options_.x_range), {}, {}};
        bool const is_matrix = panel.kind == Kind::Heat && panel.series.size() > 1;
        if (is_matrix) ranges[1] = Extent{-0.5, static_cast<double>(panel.series.size()) - 0.5};
    } else {
        const PlotData part = part_of(panel);
        ranges = {x_range_to_show(part, options_), y_range_to_show(part, options_, false),
                  y_range_to_show(part, options_, true)};
    }
    if (options_.y_range) ranges[1] = given(options_.y_range);
    if (options_.y2_range) ranges[2] = given(options_.y2_range);
    return ranges;
}

// After the data, which widen a range.
void PlotPage::show_ranges(Panel const& panel, std::array<std::optional<Extent>, 3> const& ranges) const {
    std::array const axes{&panel.x, &panel.y, &panel.y2};
    for (std::size_t i = 0; i < axes.size(); ++i)
        if (*axes[i] && ranges[i]) axes[i]->set({.from = ranges[i]->low, .to = ranges[i]->high});
}

bool PlotPage::name_axes() {
    bool changed = false;
    for (Panel const& panel : panels_) changed |= name_axes(panel);
    return changed;
}

bool PlotPage::name_axes(Panel const& panel) const {
    PlotData part;
    for (std::size_t const i : panel.series) {
        Series const& series = data_.series[i];
        part.series.push_back({series.name, {}, {}, series.on_second_axis});
        part.series.back().unit = series.unit;
    }
    double const height_mm =
        page_.PageHeight() / static_cast<double>(page_.UnitsPerMmY())
        * (options_.panels ? static_cast<double>(panel.graph.height()) / page_percent : 1);
    auto const columns = [&](bool second) { return as_it_stands(column_names(part, second, height_mm)); };
    bool const is_matrix = panel.kind == Kind::Heat && panel.series.size() > 1;
    std::string x = as_it_stands(with_unit(data_.x_name, data_.x_unit)), y = columns(false);
    if (panel.kind == Kind::Histogram) x = std::exchange(y, "number of values");
    if (panel.kind == Kind::Box && data_.x.texts.empty()) x.clear();
    // Panels below say it for those above.
    const std::size_t number = static_cast<std::size_t>(&panel - panels_.data());
    bool const is_above =
        options_.panels && number + static_cast<std::size_t>(*options_.panels) < panels_.size();
    if (is_above && panel.kind != Kind::Histogram) x.clear();
    if (is_matrix) y.clear();
    bool changed = retitle(panel.x, is_above ? x : given_or(options_.x_title, x));
    if (panel.y) changed |= retitle(panel.y, given_or(options_.y_title, y));
    if (panel.y2) changed |= retitle(panel.y2, given_or(options_.y2_title, columns(true)));
    return changed;
}

bool PlotPage::show_legends() {
    bool changed = false;
    for (Panel const& panel : panels_) changed |= show_legend(panel);
    return changed;
}

// The axis title names a lone column, and a page too small for a legend has none. True when it comes or goes.
bool PlotPage::show_legend(Panel const& panel) const {
    constexpr double row_mm = 4.2, edges_mm = 4, key_mm = 14, most_of_width = 0.6, most_of_height = 0.9;
    std::size_t longest = 0;
    for (std::size_t const i : panel.series) longest = std::max(longest, data_.series[i].name.size());
    double const rows = static_cast<double>(panel.series.size());
    bool const has_room = row_mm * rows + edges_mm < most_of_height * page_.PageHeight() / page_.UnitsPerMmY()
                          && letter_mm * static_cast<double>(longest) + key_mm
                                 < most_of_width * page_.PageWidth() / page_.UnitsPerMmX();
    bool const tells_rows_apart =
        panel.kind != Kind::Heat && !(panel.kind == Kind::Box && data_.x.texts.empty());
    bool const shown = !options_.no_legend && panel.series.size() > 1 && has_room && tells_rows_apart;
    LegendHandle const legend = panel.graph.legend();
    if (legend.show() == shown) return false;
    legend.show(shown);
    return true;
}

void draw_page(qvGraph& page, PlotData const& data, PlotOptions const& options) {
    PlotPage(page, data, options).draw();
}

} // namespace qv::plot
