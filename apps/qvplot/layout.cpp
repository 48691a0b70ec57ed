#include "qvplot/layout.h"

#include "qvplot/date_axis.h"
#include "qvplot/look.h"
#include "qvplot/number_axis.h"
#include "qvplot/ruler.h"
#include "scale/number_format.h"

#include <algorithm>
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

Extent y_extent(PlotData const& data, bool on_second_axis) {
    Extent extent;
    for (Series const& series : data.series)
        if (series.on_second_axis == on_second_axis)
            for (double const y : series.y) extent.include(y);
    return extent;
}

bool has_axis(PlotData const& data, bool second) {
    return std::ranges::any_of(data.series, [&](Series const& s) { return s.on_second_axis == second; });
}

// The least distance between two bars of one series; 0 when no series has two.
double bar_distance(PlotData const& data) {
    double least = std::numeric_limits<double>::infinity();
    for (Series const& series : data.series) {
        std::vector<double> x = series.x;
        std::ranges::sort(x);
        for (std::size_t i = 1; i < x.size(); ++i)
            if (x[i] > x[i - 1]) least = std::min(least, x[i] - x[i - 1]);
    }
    return std::isfinite(least) ? least : 0;
}

void pad(Extent& extent, double by) {
    extent = {extent.low - by, extent.high + by};
}

// Values that are all on one side of zero stay there.
void pad_for_symbols(Extent& extent, double share) {
    const Extent data = extent;
    pad(extent, share * data.span());
    if (data.low >= 0) extent.low = std::max(extent.low, 0.0);
    if (data.high <= 0) extent.high = std::min(extent.high, 0.0);
}

Extent x_range_to_show(PlotData const& data, PlotOptions const& options) {
    Extent extent = x_extent(data);
    if (options.log.x) return extent;
    if (options.bars) pad(extent, bar_distance(data) / 2);
    if (options.symbols) pad_for_symbols(extent, symbol_pad_share / 2);
    return extent;
}

Extent y_range_to_show(PlotData const& data, PlotOptions const& options, bool second) {
    Extent extent = y_extent(data, second);
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

class PagePlanner {
public:
    PagePlanner(qvGraph const& page, PlotData const& data, PlotOptions const& options)
        : ruler_(page), data_(data), options_(options), width_(page_width(page)), height_(page_height(page)) {
    }

    PageLayout plan() {
        PageLayout layout;
        layout.top =
            options_.title.empty() ? free_margin : page_margin + ruler_.height(title_font) + 2 * title_gap;
        layout.bottom =
            label_gap + ruler_.height(label_font) + title_gap + ruler_.height(axis_title_font) + page_margin;
        lay_out_y_axes(layout, height_ - layout.top - layout.bottom);
        lay_out_x_axis(layout);
        // Half of a label may stand beyond either end of the axis.
        double const half_label = widest_label(ruler_, layout.x.plan) / 2 + 1;
        layout.left = std::max(layout.left, half_label);
        layout.right = std::max(layout.right, half_label);
        lay_out_x_axis(layout);
        if (options_.bars) layout.bar_width = bar_width(layout);
        return layout;
    }

private:
    void lay_out_y_axes(PageLayout& layout, double plot_height) const {
        layout.y_room.labels = std::clamp(static_cast<int>(plot_height / y_label_distance), 2, 8);
        // A page may have its only columns on the right.
        bool const left = has_axis(data_, false);
        layout.y.plan = own_y_axis(layout.y_room, !left);
        if (left) layout.y.title = given_or(options_.y_title, column_names(false));
        layout.left = margin_beside(layout.y);
        layout.right = free_margin;
        if (!has_axis(data_, true)) return;
        layout.y2 = {own_y_axis(layout.y_room, true), given_or(options_.y2_title, column_names(true))};
        layout.right = margin_beside(*layout.y2);
    }

    // As many columns as the page is high enough to name.
    std::string column_names(bool second) const {
        for (std::size_t most_named = 6; most_named > 1; --most_named) {
            const std::string names = name_columns(data_, second, most_named);
            if (ruler_.width(axis_title_font, names) < height_ - 2 * page_margin) return names;
        }
        return name_columns(data_, second, 1);
    }

    AxisPlan own_y_axis(LabelRoom const& room, bool second) const {
        return plan_y_axis(second ? options_.log.y2 : options_.log.y,
                           y_range_to_show(data_, options_, second), room);
    }

    double margin_beside(AxisLayout const& axis) const {
        double const title = axis.title.empty() ? 0 : title_gap + ruler_.height(axis_title_font);
        return label_gap + widest_label(ruler_, axis.plan) + title + page_margin;
    }

    void lay_out_x_axis(PageLayout& layout) const {
        layout.plot_width = std::max(width_ - layout.left - layout.right, 1.0);
        layout.x_room.labels = 10;
        layout.x_room.characters = layout.plot_width / ruler_.width(label_font, "0");
        layout.plot_height = std::max(height_ - layout.top - layout.bottom, 1.0);
        layout.x.plan = plan_x_axis(data_, options_, x_range_to_show(data_, options_), layout.x_room);
        layout.x.title = given_or(options_.x_title, data_.x_name);
        if (!layout.x.plan.left_out.empty()) layout.x.title += " (" + layout.x.plan.left_out + ")";
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
    double width_; // of the page, millimetres
    double height_;
};

} // namespace

AxisPlan plan_x_axis(PlotData const& data, PlotOptions const& options, Extent range, LabelRoom const& room) {
    if (data.x_is_date) return plan_date_axis(range, room);
    return options.log.x ? plan_log_axis(range, room) : plan_number_axis(range, room, RoundTo::FifthOfTick);
}

AxisPlan plan_y_axis(bool is_log, Extent range, LabelRoom const& room) {
    return is_log ? plan_log_axis(range, room) : plan_number_axis(range, room, RoundTo::Tick);
}

PageLayout lay_out_page(qvGraph const& page, PlotData const& data, PlotOptions const& options) {
    return PagePlanner(page, data, options).plan();
}

} // namespace qv::plot
