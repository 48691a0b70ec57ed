#include "qvplot/legend_place.h"

#include "qvplot/look.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace qv::plot {
namespace {

constexpr double most_share = 0.4;           // of the plot area
constexpr double free_space = 1;             // millimetres around a legend
constexpr std::size_t strokes_seen = 20'000; // of a series, evenly picked from a longer one

struct Candidate {
    Point corner;
    std::size_t strokes_hidden = 0;
};

// Best liked first: corners, then the middles of the sides.
std::array<Candidate, 8> candidates(PageLayout const& layout, LegendRoom const& legend) {
    double const left = layout.left + legend_gap, top = layout.top + legend_gap;
    double const right = layout.left + layout.plot_width - legend_gap - legend.width;
    double const bottom = layout.top + layout.plot_height - legend_gap - legend.height;
    double const middle = (left + right) / 2, half_way = (top + bottom) / 2;
    return {{{{right, top}},
             {{left, top}},
             {{right, bottom}},
             {{left, bottom}},
             {{middle, top}},
             {{middle, bottom}},
             {{right, half_way}},
             {{left, half_way}}}};
}

// From an axis's values to millimetres on the page.
class AxisScale {
public:
    AxisScale(AxisPlan const& plan, double at_low, double at_high)
        : is_log_(plan.is_log), low_(evenly(plan.range.low)), at_low_(at_low),
          per_unit_((at_high - at_low) / (evenly(plan.range.high) - low_)) {}
    double operator()(double value) const { return at_low_ + (evenly(value) - low_) * per_unit_; }

private:
    double evenly(double value) const { return is_log_ ? std::log(value) : value; }
    bool is_log_;
    double low_, at_low_, per_unit_;
};

// What is drawn of a series, as straight strokes between places in millimetres: bars, pieces of a line, or
// symbols, which are strokes of no length.
class Strokes {
public:
    Strokes(Series const& series, PageLayout const& layout, PlotOptions const& options)
        : series_(series), bars_(options.bars), lines_(options.draws_lines()),
          bottom_(layout.top + layout.plot_height),
          x_(layout.x.plan, layout.left, layout.left + layout.plot_width),
          y_(series.on_second_axis ? layout.y2->plan : layout.y.plan, bottom_, layout.top) {}

    template <class Visit>
    void for_each(Visit visit) const {
        std::size_t const step = series_.x.size() / strokes_seen + 1;
        for (std::size_t i = 0; i < series_.x.size(); i += step)
            if (series_.has_point(i)) visit(start_of(i, step), place(series_.x[i], series_.y[i]));
    }

private:
    Point place(double x, double y) const { return {x_(x), y_(y)}; }
    Point start_of(std::size_t i, std::size_t step) const {
        if (bars_) return {x_(series_.x[i]), std::min(y_(0), bottom_)};
        bool const goes_on = lines_ && i > 0 && series_.has_point(i - step);
        std::size_t const from = goes_on ? i - step : i;
        return place(series_.x[from], series_.y[from]);
    }

    Series const& series_;
    bool bars_, lines_;
    double bottom_;
    AxisScale x_, y_;
};

bool meet(Box const& box, Point a, Point b) {
    if (std::max(a.x, b.x) < box.left || std::min(a.x, b.x) > box.right() || std::max(a.y, b.y) < box.top
        || std::min(a.y, b.y) > box.bottom())
        return false;
    // Otherwise they are apart only where all corners lie on one side of the stroke.
    auto const side = [&](double x, double y) { return (b.x - a.x) * (y - a.y) - (b.y - a.y) * (x - a.x); };
    auto const [least, most] = std::minmax({side(box.left, box.top), side(box.right(), box.top),
                                            side(box.left, box.bottom()), side(box.right(), box.bottom())});
    return least <= 0 && most >= 0;
}

} // namespace

std::optional<Point> find_legend_place(PlotData const& data, PageLayout const& layout,
                                       PlotOptions const& options, LegendRoom const& legend) {
    double const room_across = layout.plot_width - 2 * legend_gap;
    double const room_down = layout.plot_height - 2 * legend_gap;
    if (legend.width > room_across || legend.height > room_down
        || legend.width * legend.height > most_share * layout.plot_width * layout.plot_height)
        return std::nullopt;
    // Bars of one value stand side by side, on either side of it.
    double const beside = free_space + layout.bar_width * static_cast<double>(data.series.size()) / 2;
    auto places = candidates(layout, legend);
    for (Series const& series : data.series)
        Strokes(series, layout, options).for_each([&](Point from, Point to) {
            for (auto& [corner, hidden] : places)
                hidden += meet({corner.x - beside, corner.y - free_space, legend.width + 2 * beside,
                                legend.height + 2 * free_space},
                               from, to);
        });
    return std::ranges::min_element(places, {}, &Candidate::strokes_hidden)->corner;
}

} // namespace qv::plot
