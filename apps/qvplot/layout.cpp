#include "qvplot/layout.h"

#include "qvplot/date_axis.h"
#include "qvplot/look.h"
#include "qvplot/number_axis.h"
#include "qvplot/ruler.h"
#include "scale/number_format.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace qv::plot {
namespace {

constexpr double bar_share = 0.8;         // of the room between two bars
constexpr double symbol_pad_share = 0.02; // of the range, so that symbols at its ends are whole
constexpr double y_label_distance = 11;   // millimetres, at least
constexpr std::int16_t label_digits = 6;  // as the control labels its ticks

double widest_label(Ruler const& ruler, AxisPlan const& plan) {
    double widest = 0;
    for (double const value : plan.major)
        widest =
            std::max(widest, ruler.width(label_font, scale::EasyFormat(value, label_digits, plan.format)));
    return widest;
}

Extent x_extent(PlotData const& data) {
    Extent extent;
    for (Series const& series : data.series)
        for (double const x : series.x) extent.include(x);
    return extent;
}

// How values lie along an axis.
double evenly(double value, bool is_log) {
    return is_log ? std::log(value) : value;
}

// Takes in what a series shows between two ends of x, the line that crosses them included.
class ExtentWithin {
public:
    ExtentWithin(Series const& series, XRange const& range, PlotOptions const& options)
        : series_(series), range_(range), log_x_(options.log.x),
          log_y_(series.on_second_axis ? options.log.y2 : options.log.y),
          has_line_(options.draws_lines() && series.function.empty()) {}

    void add_to(Extent& extent) const {
        for (std::size_t i = 0; i < series_.x.size(); ++i) {
            if (!series_.has_point(i)) continue;
            if (series_.x[i] >= range_.from && series_.x[i] <= range_.to) extent.include(series_.y[i]);
            if (!has_line_ || i == 0 || !series_.has_point(i - 1)) continue;
            for (double const end : {range_.from, range_.to}) add_crossing(extent, i, end);
        }
    }

private:
    void add_crossing(Extent& extent, std::size_t i, double end) const {
        auto const [low, high] = std::minmax(series_.x[i - 1], series_.x[i]);
        if (!(low < end && end < high)) return;
        double const from = evenly(series_.x[i - 1], log_x_);
        double const share = (evenly(end, log_x_) - from) / (evenly(series_.x[i], log_x_) - from);
        double const first = evenly(series_.y[i - 1], log_y_), last = evenly(series_.y[i], log_y_);
        double const place = first * (1 - share) + last * share;
        double const value = log_y_ ? std::exp(place) : place;
        if (std::isfinite(value) && (value > 0 || !log_y_)) extent.include(value);
    }

    Series const& series_;
    XRange const& range_;
    bool log_x_, log_y_, has_line_;
};

Extent y_extent(PlotData const& data, PlotOptions const& options, bool on_second_axis) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    const XRange range = options.x_range.value_or(XRange{-infinity, infinity});
    Extent extent;
    for (Series const& series : data.series)
        if (series.on_second_axis == on_second_axis) ExtentWithin(series, range, options).add_to(extent);
    return extent;
}

bool has_axis(PlotData const& data, bool second) {
    return std::ranges::any_of(data.series, [&](Series const& s) { return s.on_second_axis == second; });
}

// The least distance between two bars of one series; 0 when no series has two.
double bar_distance(PlotData const& data) {
    double least = std::numeric_limits<double>::infinity();
    for (Series const& series : data.series) {
        std::vector<double> x;
        std::ranges::copy_if(series.x, std::back_inserter(x),
                             [](double value) { return std::isfinite(value); });
        std::ranges::sort(x);
        for (std::size_t i = 1; i < x.size(); ++i)
            if (x[i] > x[i - 1]) least = std::min(least, x[i] - x[i - 1]);
    }
    return std::isfinite(least) ? least : 0;
}

void pad(Extent& extent, double by) {
    const Extent padded{extent.low - by, extent.high + by};
    if (std::isfinite(padded.span())) extent = padded;
}

// Values that are all on one side of zero stay there.
void pad_for_symbols(Extent& extent, double share) {
    const Extent data = extent;
    pad(extent, share * data.span());
    if (data.low >= 0) extent.low = std::max(extent.low, 0.0);
    if (data.high <= 0) extent.high = std::min(extent.high, 0.0);
}

Extent x_range_to_show(PlotData const& data, PlotOptions const& options) {
    if (options.x_range) return {options.x_range->from, options.x_range->to};
    Extent extent = x_extent(data);
    if (options.log.x) return extent;
    if (options.bars) pad(extent, bar_distance(data) / 2);
    if (options.symbols) pad_for_symbols(extent, symbol_pad_share / 2);
    return extent;
}

Extent y_range_to_show(PlotData const& data, PlotOptions const& options, bool second) {
    Extent extent = y_extent(data, options, second);
    if (second ? options.log.y2 : options.log.y) return extent;
    if (options.bars) extent.include(0);
    if (options.symbols) pad_for_symbols(extent, symbol_pad_share);
    return extent;
}

// The columns of an axis.
std::string name_columns(PlotData const& data, bool second, std::size_t most_named) {
    std::string names;
    std::size_t named = 0, unnamed = 0;
    for (Series const& series : data.series) {
        if (series.on_second_axis != second) continue;
        if (named == most_named) {
            ++unnamed;
            continue;
        }
        names += (named++ == 0 ? "" : ", ") + series.name;
    }
    return unnamed == 0 ? names : names + " and " + std::to_string(unnamed) + " more";
}

std::string given_or(std::string const& given, std::string const& own) {
    return given.empty() ? own : given;
}

// The full range may have been rounded otherwise when the axis was zoomed.
Extent within(Extent zoomed, Extent full) {
    const Extent cut{std::max(zoomed.low, full.low), std::min(zoomed.high, full.high)};
    return cut.low < cut.high ? cut : zoomed;
}

// What stands around the plot area.
struct Dress {
    bool title, axis_titles, labels;
    double free_margin; // millimetres, where nothing stands
};

// From the fullest to the barest.
constexpr std::array dresses{
    Dress{true, true, true, free_margin},
    Dress{true, false, true, 4},
    Dress{false, false, true, 3},
    Dress{false, false, false, 1},
};
constexpr double least_plot_share = 0.4; // of the page, either way

class PagePlanner {
public:
    PagePlanner(qvGraph const& page, PlotData const& data, PlotOptions const& options,
                ZoomedRanges const& zoomed)
        : ruler_(page), data_(data), options_(options), zoomed_(zoomed), width_(page_width(page)),
          height_(page_height(page)), x_range_(x_range_to_show(data, options)) {}

    PageLayout plan() const {
        PageLayout layout;
        for (Dress const& dress : dresses) {
            layout = plan(dress);
            if (layout.plot_width >= least_plot_share * width_
                && layout.plot_height >= least_plot_share * height_)
                break;
        }
        if (options_.bars) layout.bar_width = bar_width(layout);
        return layout;
    }

private:
    PageLayout plan(Dress const& dress) const {
        PageLayout layout;
        layout.shows_title = dress.title && !options_.title.empty();
        layout.shows_labels = dress.labels;
        layout.top =
            layout.shows_title ? page_margin + ruler_.height(title_font) + 2 * title_gap : dress.free_margin;
        layout.bottom = dress.free_margin;
        if (dress.labels) layout.bottom = label_gap + ruler_.height(label_font) + page_margin / 2;
        if (dress.axis_titles) layout.bottom += title_gap + ruler_.height(axis_title_font) + page_margin / 2;
        layout.plot_height = std::max(height_ - layout.top - layout.bottom, 1.0);
        lay_out_y_axes(layout, dress);
        lay_out_x_axis(layout, dress);
        if (!dress.labels) return layout;
        // Half of a label may stand beyond either end of the axis.
        double const half_label = widest_label(ruler_, layout.x.plan) / 2 + 1;
        layout.left = std::max(layout.left, half_label);
        layout.right = std::max(layout.right, half_label);
        lay_out_x_axis(layout, dress);
        return layout;
    }

    void lay_out_y_axes(PageLayout& layout, Dress const& dress) const {
        LabelRoom room;
        room.labels = std::clamp(static_cast<int>(layout.plot_height / y_label_distance), 2, 8);
        // A page may have its only columns on the right; its left axis has their range and no title.
        bool const left = has_axis(data_, false);
        layout.y = y_axis(room, !left, zoomed_.y);
        if (dress.axis_titles && left)
            layout.y.title = given_or(options_.y_title, column_names(layout, false));
        layout.left = margin_beside(layout.y, dress);
        layout.right = dress.free_margin;
        if (!has_axis(data_, true)) return;
        layout.y2 = y_axis(room, true, zoomed_.y2);
        if (dress.axis_titles) layout.y2->title = given_or(options_.y2_title, column_names(layout, true));
        layout.right = margin_beside(*layout.y2, dress);
    }

    AxisLayout y_axis(LabelRoom const& room, bool second, std::optional<Extent> const& zoomed) const {
        bool const is_log = second ? options_.log.y2 : options_.log.y;
        auto const plan = [&](Extent range, RoundTo rounding) {
            return is_log ? plan_log_axis(range, room, rounding) : plan_number_axis(range, room, rounding);
        };
        const AxisPlan full = plan(y_range_to_show(data_, options_, second), RoundTo::Tick);
        return {zoomed ? plan(within(*zoomed, full.range), RoundTo::Nothing) : full,
                full.range,
                {},
                widest_label(ruler_, full)};
    }

    // Wide enough for the labels of the whole range too, so that zooming seldom moves the plot area.
    double margin_beside(AxisLayout const& axis, Dress const& dress) const {
        if (!dress.labels) return dress.free_margin;
        double const labels = std::max(axis.widest_full_label, widest_label(ruler_, axis.plan));
        double const title = axis.title.empty() ? 0 : title_gap + ruler_.height(axis_title_font);
        return label_gap + labels + title + (dress.axis_titles ? page_margin : page_margin / 2);
    }

    // As many columns as the page is high enough to name beside the middle of the plot area.
    std::string column_names(PageLayout const& layout, bool second) const {
        double const middle = layout.top + layout.plot_height / 2;
        double const room = 2 * std::min(middle, height_ - middle) - page_margin;
        for (std::size_t most_named = 6; most_named > 1; --most_named) {
            const std::string names = name_columns(data_, second, most_named);
            if (ruler_.width(axis_title_font, names) < room) return names;
        }
        return name_columns(data_, second, 1);
    }

    void lay_out_x_axis(PageLayout& layout, Dress const& dress) const {
        layout.plot_width = std::max(width_ - layout.left - layout.right, 1.0);
        LabelRoom room;
        room.labels = 10;
        room.characters = layout.plot_width / ruler_.width(label_font, "0");
        const AxisPlan full = plan_x(x_range_, room, RoundTo::FifthOfTick);
        layout.x.full = full.range;
        layout.x.plan = zoomed_.x ? plan_x(within(*zoomed_.x, full.range), room, RoundTo::Nothing) : full;
        if (!dress.axis_titles) return;
        layout.x.title = given_or(options_.x_title, data_.x_name);
        if (!layout.x.plan.left_out.empty()) layout.x.title += " (" + layout.x.plan.left_out + ")";
    }

    // What is asked for is shown as it is.
    AxisPlan plan_x(Extent range, LabelRoom const& room, RoundTo rounding) const {
        if (options_.x_range) rounding = RoundTo::Nothing;
        if (data_.x_is_date) return plan_date_axis(range, room, rounding);
        return options_.log.x ? plan_log_axis(range, room, rounding)
                              : plan_number_axis(range, room, rounding);
    }

    // Bars of several series stand side by side.
    double bar_width(PageLayout const& layout) const {
        double const distance = bar_distance(data_);
        double const room = distance > 0 && !layout.x.plan.is_log
                                ? layout.plot_width * distance / layout.x.plan.range.span()
                                : layout.plot_width / 20;
        return bar_share * room / static_cast<double>(data_.series.size());
    }

    Ruler ruler_;
    PlotData const& data_;
    PlotOptions const& options_;
    ZoomedRanges const& zoomed_;
    double width_; // of the page, millimetres
    double height_;
    Extent x_range_;
};

} // namespace

PageLayout lay_out_page(qvGraph const& page, PlotData const& data, PlotOptions const& options,
                        ZoomedRanges const& zoomed) {
    return PagePlanner(page, data, options, zoomed).plan();
}

} // namespace qv::plot
