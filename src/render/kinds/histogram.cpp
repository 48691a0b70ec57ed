#include "render/bars/bar_batch.h"
#include "render/kinds/derived.h"
#include "render/kinds/distributions.h"
#include "render/kinds/histogram_bins.h"
#include "render/kinds/turned_view.h"
#include "render/pen.h"
#include "render/plot_geometry.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

namespace qv::render {
namespace {

using document::DataSet;
using document::FillSpec;

BinRule rule_of(DataSet const& set) {
    return {set.histogram_edges, set.HistogramBinWidth, set.HistogramBins};
}

Bins const& bins_of(DataSet const& set) {
    return derived_of<Bins>(set, rule_of(set), [&](BinRule const& rule) {
        std::vector<std::span<double const>> column;
        column.reserve(set.points.blocks().size());
        for (document::PointBlock const& block : set.points.blocks()) column.push_back(block.y());
        return histogram_bins(column, rule);
    });
}

double height(DataSet const& set, Bins const& bins, std::size_t bin) {
    return bins.height(bin, static_cast<HistogramMeasure>(set.HistogramMeasure), set.HistogramCumulative);
}

/// The bars of a histogram on the page.
class Bars {
public:
    explicit Bars(SeriesView const& view)
        : set_(view.set), bins_(bins_of(view.set)), turned_(view), base_(turned_.value(0)) {
        if (bins_.size() == 0 || !turned_.valid()) return;
        auto const [low, high] =
            turned_.visible_positions(view.state.UnitsPerMmX); // edges are as wide at most
        auto const index = [&](auto place) { return static_cast<std::size_t>(place - bins_.edges.begin()); };
        first_ = index(std::ranges::lower_bound(bins_.edges, low));
        first_ -= first_ > 0 ? 1 : 0;
        end_ = std::min(index(std::ranges::upper_bound(bins_.edges, high)), bins_.size());
    }

    /// How many can be seen, empty ones included.
    std::size_t size() const { return end_ > first_ ? end_ - first_ : 0; }
    TurnedView const& turned() const { return turned_; }

    Box box(std::size_t bin) const {
        return turned_.box(turned_.position(bins_.edges[bin]), turned_.position(bins_.edges[bin + 1]), base_,
                           turned_.value(height(set_, bins_, bin)));
    }
    /// Calls `take(Box)` for each bar that can be seen.
    void for_each(auto const& take) const {
        for (std::size_t bin = first_; bin < end_; ++bin)
            if (height(set_, bins_, bin) > 0) take(box(bin));
    }
    /// Calls `take(Point, Point)` for the lines round all bars together: up or down at each edge, and along
    /// the top of each bar that is not empty.
    void for_each_outline(auto const& take) const {
        auto const end_of = [&](std::size_t bin) {
            return bin < end_ ? turned_.value(height(set_, bins_, bin)) : base_;
        };
        double before = first_ > 0 ? end_of(first_ - 1) : base_;
        for (std::size_t bin = first_; bin <= end_; ++bin) {
            double const edge = turned_.position(bins_.edges[bin]);
            double const end = bin == end_ && end_ < bins_.size() ? before : end_of(bin);
            if (end != before) take(turned_.at(edge, before), turned_.at(edge, end));
            before = end;
            if (bin < end_ && height(set_, bins_, bin) > 0)
                take(turned_.at(edge, end), turned_.at(turned_.position(bins_.edges[bin + 1]), end));
        }
    }
    /// Twips, of a bar that can be seen, on average.
    double width() const {
        double const from = turned_.position(bins_.edges[first_]), to = turned_.position(bins_.edges[end_]);
        return std::abs(to - from) / static_cast<double>(size());
    }

private:
    DataSet const& set_;
    Bins const& bins_;
    TurnedView turned_;
    double base_; // twips along the value axis, where bars begin
    std::size_t first_ = 0, end_ = 0;
};

void fill_bars(Bars const& bars, DrawSurface& surface, Color color) {
    TurnedView const& turned = bars.turned();
    const ShapeScope one_shape(surface); // neighbours share a column of pixels
    if (!BarBatch::pays(bars.size(), surface, turned.plot, turned.lies))
        return bars.for_each([&](Box const& box) { fill_box(surface, box, color); });
    BarBatch batch(surface, turned.plot, turned.lies);
    bars.for_each([&](Box const& box) { batch.add({box.left, box.top, box.right(), box.bottom()}); });
    batch.draw(color);
}

void draw_outline(DrawSurface& surface, Box const& box, Color color) {
    surface.Line({box.left, box.top}, {box.right(), box.bottom()}, LineShape::Box, color);
}

// Edges closer together would hide what they enclose.
bool has_room_for_edges(Bars const& bars, DrawSurface const& surface, FillSpec const& fill) {
    constexpr double least_width = 3; // of a bar, in widths of its edge
    double const edge = surface.pen_pixels(fill.EdgeThickness) * bars.turned().twips_per_pixel(surface);
    return bars.width() >= least_width * edge;
}

void draw_outline_of_all(Bars const& bars, DrawSurface& surface, DataSet const& set) {
    const PenScope pen(surface, set.DataLineThickness);
    const ShapeScope one_shape(surface);
    bars.for_each_outline(
        [&](Point from, Point to) { surface.Line(from, to, LineShape::Segment, set.DataLineColor); });
}

std::string_view measure_name(DataSet const& set) {
    constexpr std::array<std::string_view, 3> names{"count", "share", "density"};
    return names[set.HistogramMeasure < names.size() ? set.HistogramMeasure : 0];
}

class Histogram : public SeriesKind {
public:
    void draw(SeriesView const& view, DrawSurface& surface) const override {
        const Bars bars(view);
        if (bars.size() == 0) return;
        FillSpec const& fill = view.set.DataSymbolFill;
        if (fill.Transparent) return draw_outline_of_all(bars, surface, view.set);
        fill_bars(bars, surface, fill.Color1);
        if (fill.EdgeThickness == 0 || !has_room_for_edges(bars, surface, fill)) return;
        const PenScope pen(surface, fill.EdgeThickness);
        const ShapeScope one_shape(surface);
        bars.for_each([&](Box const& box) { draw_outline(surface, box, fill.EdgeColor); });
    }

    void include_reach(document::ControlState const&, DataSet const& set, AxisReach const& x,
                       AxisReach const& y) const override {
        Bins const& bins = bins_of(set);
        if (bins.size() == 0) return;
        auto const [along, up] = turned_reach(set, x, y);
        // Without those below zero, where the axis is logarithmic.
        for (double const edge : bins.edges) along.include(edge);
        double least = HUGE_VAL, largest = 0;
        for (std::size_t bin = 0; bin < bins.size(); ++bin) {
            double const high = height(set, bins, bin);
            largest = std::max(largest, high);
            if (high > 0) least = std::min(least, high);
        }
        up.include(largest);
        up.stand_on(up.axis.AxisLog ? least / 2 : 0); // so that the lowest bar can be seen
    }

    void draw_sample(SeriesView const& view, DrawSurface& surface, Box const& box) const override {
        FillSpec const& fill = view.set.DataSymbolFill;
        constexpr std::array heights{0.55, 1.0, 0.35};
        double const width = box.width / heights.size();
        double left = box.left;
        for (double const share : heights) {
            const Box bar{left, box.bottom() - share * box.height, width, share * box.height};
            left += width;
            const PenScope pen(surface, 1);
            if (fill.Transparent) {
                draw_outline(surface, bar, view.set.DataLineColor);
                continue;
            }
            fill_box(surface, bar, fill.Color1);
            if (fill.EdgeThickness > 0) draw_outline(surface, bar, fill.EdgeColor);
        }
    }

    std::size_t item_count(DataSet const& set) const override { return bins_of(set).size(); }

    Box item_box(SeriesView const& view, std::size_t item) const override { return Bars(view).box(item); }

    std::optional<std::size_t> item_at(SeriesView const& view, Point place) const override {
        Bins const& bins = bins_of(view.set);
        const TurnedView turned(view);
        double const value = turned.position.value_at(turned.position_of(place));
        auto const after = std::ranges::upper_bound(bins.edges, value);
        if (after == bins.edges.begin() || after == bins.edges.end()) return std::nullopt;
        auto const bin = static_cast<std::size_t>(after - bins.edges.begin()) - 1;
        // The lowest bars are hard to meet.
        double const slack = view.state.UnitsPerMmX / 2;
        Box const bar = Bars(view).box(bin);
        return holds({bar.left - slack, bar.top - slack, bar.width + 2 * slack, bar.height + 2 * slack},
                     place)
                   ? std::optional(bin)
                   : std::nullopt;
    }

    std::vector<Fact> item_facts(DataSet const& set, std::size_t item) const override {
        Bins const& bins = bins_of(set);
        std::vector<Fact> facts{{"from", bins.edges[item], position_axis(set), {}},
                                {"to", bins.edges[item + 1], position_axis(set), {}},
                                {"count", static_cast<double>(bins.count(item)), Fact::Of::Nothing, {}}};
        std::string_view const name = measure_name(set);
        bool const is_count = name == "count";
        if (is_count && !set.HistogramCumulative) return facts;
        facts.push_back({(set.HistogramCumulative ? "cumulative " : "") + std::string(name),
                         height(set, bins, item),
                         is_count ? Fact::Of::Nothing : value_axis(set),
                         {}});
        return facts;
    }
};

} // namespace

SeriesKind const& histogram_kind() {
    static const Histogram kind;
    return kind;
}

} // namespace qv::render
