#include "render/polar/polar_bars.h"

#include "document/selection.h"
#include "render/arcs.h"
#include "render/bars/bars.h"
#include "render/pen.h"
#include "scale/mapping.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace qv::render {
namespace {

using document::DataSet;
using document::PointBlock;

/// What of a bar is known before it is on the page: its values across and along.
struct BarValues {
    Point value;     // of its point
    BarEnds ends;    // along it; from may be nowhere
    Interval across; // of bars as wide as values say
};

/// From values to the bars of one data set.
class BarMaker {
public:
    BarMaker(SeriesView const& view, PolarMap const& map, bool has_values_across)
        : set_(view.set), map_(map), by_values_(has_values_across),
          half_width_(half_width_of_bars(view.set.DataSymbolSize)),
          aside_(view.set.BarOffset * view.state.UnitsPerMmX) {}

    std::optional<PolarBar> make(BarValues const& bar) const {
        return set_.BarHoriz ? lying(bar) : upright(bar);
    }

private:
    std::optional<PolarBar> upright(BarValues const& bar) const {
        double const start = std::isnan(bar.ends.from) ? 0 : map_.clamped_distance(bar.ends.from);
        double const end = map_.clamped_distance(bar.ends.to);
        if (start == end || std::isnan(start + end) || !std::isfinite(bar.value.x)) return std::nullopt;
        PolarBar made;
        made.sector.inner = std::min(start, end);
        made.sector.outer = std::max(start, end);
        made.leads_out = end >= start;
        if (by_values_) {
            constexpr double turn = 2 * std::numbers::pi;
            double const way = map_.per_unit * (bar.across.high - bar.across.low);
            made.sector.from = map_.direction(bar.across.low);
            made.sector.to = made.sector.from + std::clamp(way, -turn, turn);
        } else {
            made.sector.from = made.sector.to = map_.direction(bar.value.x);
            made.half_width = half_width_;
            made.aside = aside_;
        }
        return made;
    }

    // Without a base they begin where x is 0.
    std::optional<PolarBar> lying(BarValues const& bar) const {
        double const start = std::isnan(bar.ends.from) ? 0 : bar.ends.from;
        if (!std::isfinite(start + bar.ends.to)) return std::nullopt;
        PolarBar made;
        if (by_values_) {
            auto const sector = sector_between(map_, {start, bar.ends.to, bar.across.low, bar.across.high});
            if (!sector) return std::nullopt;
            made.sector = *sector;
            return made;
        }
        double const distance = map_.distance(bar.value.x, bar.value.y) + aside_;
        auto const sector = sector_between(
            map_, {start, bar.ends.to, map_.along.first, map_.along.last}); // its directions alone count
        if (!sector || !(distance + half_width_ > 0) || distance - half_width_ > map_.radius)
            return std::nullopt;
        made.sector = *sector;
        made.sector.inner = std::max(0.0, distance - half_width_);
        made.sector.outer = std::min(distance + half_width_, map_.radius);
        return made;
    }

    DataSet const& set_;
    PolarMap const& map_;
    bool by_values_;
    double half_width_, aside_; // twips
};

bool is_there(Point value) {
    return std::isfinite(value.x) && std::isfinite(value.y);
}

void for_each_arranged(SeriesView const& view, PolarMap const& map, BarPlan const& plan, auto const& take) {
    DataSet const& set = view.set;
    const BarPlan::Share share = *plan.share_of(view.index);
    const BarMaker maker(view, map, true);
    bool const is_log = set.BarHoriz && view.y.is_log;
    std::size_t point = 0;
    for (PointBlock const& block : set.points.blocks())
        for (std::size_t i = 0; i < block.size(); ++i, ++point) {
            const Point value{block.x()[i], block.y()[i]};
            double const across = set.BarHoriz ? value.y : value.x;
            if (!is_there(value) || (is_log && across <= 0)) continue;
            const scale::ScaleFrom from{across, is_log};
            const BarEnds ends = plan.ends(view.index, point, set.BarHoriz ? value.x : value.y);
            auto bar = maker.make({value,
                                   ends,
                                   {from.value_at(share.offset - share.half_width),
                                    from.value_at(share.offset + share.half_width)}});
            if (!bar) continue;
            bar->point = point;
            bar->shown = plan.stacks() ? ends.to - ends.from : ends.to;
            take(*bar);
        }
}

void for_each_as_set(SeriesView const& view, PolarMap const& map, BarStack& stack, auto const& take) {
    constexpr double nowhere = std::numeric_limits<double>::quiet_NaN();
    DataSet const& set = view.set;
    bool const by_values = has_value_width(set);
    const BarMaker maker(view, map, by_values);
    if (!set.BarStacked) stack.ends.clear();
    stack.position = 0;
    std::size_t point = 0;
    for (PointBlock const& block : set.points.blocks())
        for (std::size_t i = 0; i < block.size(); ++i, ++point) {
            const Point value{block.x()[i], block.y()[i]};
            const StackedBar placed = stacked(stack, set, value);
            if (!placed.is_finite()) continue;
            double const base = set.BarHoriz ? placed.base.x : placed.base.y;
            double const without = set.BarBase ? set.BarBaseValue : nowhere;
            const BarEnds ends{set.BarStacked ? base : without, set.BarHoriz ? placed.end.x : placed.end.y};
            const Interval across =
                by_values ? values_across_bar(set, set.BarHoriz ? value.y : value.x) : Interval{};
            auto bar = maker.make({value, ends, across});
            if (!bar) continue;
            bar->point = point;
            bar->shown = set.BarHoriz ? value.x : value.y;
            take(*bar);
        }
}

/// \name Drawing
/// \{

double angle_of(PolarBar const& bar) {
    return (bar.sector.from + bar.sector.to) / 2;
}

/// How wide a bar is where it is widest.
double width_of(PolarBar const& bar) {
    return bar.is_ray() ? 2 * bar.half_width : std::abs(bar.sector.to - bar.sector.from) * bar.sector.outer;
}

/// Bars of one data set being drawn.
class Drawing {
public:
    Drawing(SeriesView const& view, DrawSurface& surface, PolarMap const& map)
        : set_(view.set), surface_(surface), map_(map), pixel_(surface.TwipsPerPixelX()) {}

    void draw(std::vector<PolarBar> const& bars) {
        document::FillSpec const& fill = set_.DataSymbolFill;
        if (fill.Transparent) return;
        const document::RestoreScope alpha(surface_.state.alpha, set_.DataFillAlpha);
        if (fill.EdgeThickness > 0) {
            for (PolarBar const& bar : bars) fill_bar(bar), edge_bar(bar);
            return;
        }
        const ShapeScope one_shape(surface_);
        constexpr std::size_t many = 4000;
        if (bars.size() <= many)
            for (PolarBar const& bar : bars) fill_bar(bar);
        else
            fill_joined(bars);
    }

private:
    void fill_bar(PolarBar const& bar) {
        if (width_of(bar) < pixel_)
            draw_line(bar);
        else
            fill_outline(surface_, bar_outline(map_, bar, pixel_), set_.DataSymbolFill.Color1);
    }

    // A bar is at least as wide as a pixel; ends of lines are round and reach half of one further.
    void draw_line(PolarBar const& bar) {
        const PenScope pen(surface_, 1);
        surface_.state.ForeColor = set_.DataSymbolFill.Color1;
        double const angle = angle_of(bar), half = pixel_ / 2;
        double const inner = std::min(bar.sector.inner + half, (bar.sector.inner + bar.sector.outer) / 2);
        double const outer = std::max(bar.sector.outer - half, inner);
        surface_.Polyline(std::array<Point, 2>{map_.at(angle, inner), map_.at(angle, outer)});
    }

    void edge_bar(PolarBar const& bar) {
        const PenScope pen(surface_, set_.DataSymbolFill.EdgeThickness);
        surface_.state.ForeColor = set_.DataSymbolFill.EdgeColor;
        auto outline = bar_outline(map_, bar, pixel_);
        outline.push_back(outline.front());
        surface_.Polyline(outline);
    }

    // Bars of about one place are drawn as one as far as they reach together, unless a gap lies between them.
    void fill_joined(std::vector<PolarBar> const& bars) {
        constexpr double turn = 2 * std::numbers::pi, parts = 8; // of a bar's width told apart
        double const all = set_.BarHoriz ? map_.radius : turn;
        double const widest =
            set_.BarHoriz ? bars.front().sector.outer - bars.front().sector.inner : width_of(bars.front());
        double const step = std::max(pixel_ / 4, widest / parts) / (set_.BarHoriz ? 1 : map_.radius);
        auto const count = static_cast<std::size_t>(std::clamp(all / step, 1.0, 1e5)) + 1;
        std::vector<std::optional<PolarBar>> joined(count);
        for (PolarBar const& bar : bars) {
            double const across = set_.BarHoriz ? (bar.sector.inner + bar.sector.outer) / 2
                                                : angle_of(bar) - turn * std::floor(angle_of(bar) / turn);
            auto& waiting = joined[std::min(static_cast<std::size_t>(across / step), count - 1)];
            if (waiting && join(*waiting, bar)) continue;
            if (waiting) fill_bar(*waiting);
            waiting = bar;
        }
        for (auto const& bar : joined)
            if (bar) fill_bar(*bar);
    }

    bool join(PolarBar& bar, PolarBar const& other) const {
        Sector& one = bar.sector;
        Sector const& two = other.sector;
        if (!set_.BarHoriz) {
            if (two.inner > one.outer || one.inner > two.outer) return false;
            one.inner = std::min(one.inner, two.inner);
            one.outer = std::max(one.outer, two.outer);
            return true;
        }
        // Lying ones mostly begin at one angle.
        if (one.from != two.from || (one.to - one.from) * (two.to - two.from) < 0) return false;
        if (std::abs(two.to - two.from) > std::abs(one.to - one.from)) one.to = two.to;
        return true;
    }

    DataSet const& set_;
    DrawSurface& surface_;
    PolarMap const& map_;
    double pixel_; // twips
};
/// \}

} // namespace

PolarMap polar_map_of(SeriesView const& view) {
    return polar_map(view.graph, at(view.graph.Axes, view.set.yAxisIndex, "axis"), view.y);
}

std::vector<Point> bar_outline(PolarMap const& map, PolarBar const& bar, double twips_per_pixel) {
    if (!bar.is_ray()) return sector_outline(map, bar.sector, twips_per_pixel);
    double const sine = std::sin(bar.sector.from), cosine = std::cos(bar.sector.from);
    auto const corner = [&](double out, double aside) {
        return Point{map.centre.x + out * cosine + aside * sine, map.centre.y - out * sine + aside * cosine};
    };
    double const left = bar.aside - bar.half_width, right = bar.aside + bar.half_width;
    return {corner(bar.sector.inner, left), corner(bar.sector.outer, left), corner(bar.sector.outer, right),
            corner(bar.sector.inner, right)};
}

Point end_of_bar(PolarMap const& map, PolarBar const& bar, bool horizontal) {
    Sector const& sector = bar.sector;
    if (horizontal) return map.at(sector.to, (sector.inner + sector.outer) / 2);
    double const out = bar.leads_out ? sector.outer : sector.inner, angle = angle_of(bar);
    const Point end = map.at(angle, out);
    return {end.x + bar.aside * std::sin(angle), end.y + bar.aside * std::cos(angle)};
}

void for_each_polar_bar(SeriesView const& view, BarPlan const& plan, BarStack& stack,
                        std::function<void(PolarBar const&)> const& take) {
    const PolarMap map = polar_map_of(view);
    if (!(map.radius > 0) || !map.along.valid) return;
    if (plan.holds(view.index))
        for_each_arranged(view, map, plan, take);
    else
        for_each_as_set(view, map, stack, take);
}

void draw_polar_bars(SeriesView const& view, DrawSurface& surface, BarPlan const& plan, BarStack& stack) {
    std::vector<PolarBar> bars;
    for_each_polar_bar(view, plan, stack, [&](PolarBar const& bar) { bars.push_back(bar); });
    if (!bars.empty()) Drawing(view, surface, polar_map_of(view)).draw(bars);
}

std::optional<std::size_t> polar_bar_at(SeriesView const& view, BarPlan const& plan, Point place) {
    constexpr double reach = 30; // twips, so that a narrow bar can be pointed at
    std::optional<std::size_t> found;
    if (!plan.holds(view.index)) return found;
    const PolarMap map = polar_map_of(view);
    BarStack stack;
    for_each_polar_bar(view, plan, stack, [&](PolarBar const& bar) {
        if (sector_holds(map, bar.sector, place, reach)) found = bar.point;
    });
    return found;
}

std::optional<Box> polar_bar_of(SeriesView const& view, BarPlan const& plan, std::size_t point) {
    std::optional<Box> found;
    if (!plan.holds(view.index)) return found;
    const PolarMap map = polar_map_of(view);
    BarStack stack;
    for_each_polar_bar(view, plan, stack, [&](PolarBar const& bar) {
        if (bar.point == point) found = sector_box(map, bar.sector);
    });
    return found;
}

} // namespace qv::render
