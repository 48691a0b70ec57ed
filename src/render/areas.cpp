#include "render/areas.h"

#include "document/selection.h"
#include "render/bands.h"
#include "render/finite_runs.h"
#include "render/lines/column_thinner.h"
#include "render/pen.h"
#include "render/stacked_areas.h"
#include "render/steps.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>
#include <vector>

namespace qv::render {
namespace {

/// The top of a stretch of pieces whose x all run the same way, thinned, on the page.
using Top = std::vector<Point>;

/// The piece of a segment between two x on the page. Reckoned from the end that stays, so that it is exact
/// however far away the other lies.
Point cut_at(double x, Point stays, Point goes) {
    return {x, stays.y + (x - stays.x) / (goes.x - stays.x) * (goes.y - stays.y)};
}

class AreaTops {
public:
    AreaTops(LineMapping const& mapping, double twips_per_pixel)
        : mapping_(mapping), grid_(twips_per_pixel, mapping.visible.left, mapping.visible.right()),
          thinner_(grid_, top_) {}

    void add(std::span<Point const> run) {
        Point from = place(run[0]);
        for (const Point value : run.subspan(1)) {
            const Point to = place(value);
            add_piece(from, to);
            from = to;
        }
        end_stretch();
    }

    std::vector<Top> const& tops() const { return tops_; }

private:
    /// Both ends beside the visible box, or beyond the side from which the area is filled.
    bool is_left_out(Point from, Point to) const {
        Box const& box = mapping_.visible;
        bool const from_below = mapping_.y.off_page > mapping_.y.start;
        return std::max(from.x, to.x) < box.left || std::min(from.x, to.x) > box.right()
               || (from_below ? std::min(from.y, to.y) > box.bottom() : std::max(from.y, to.y) < box.top);
    }

    /// Corners of a polygon may not lie too far away.
    Point near_enough(Point point, Point other) const {
        Box const& box = mapping_.visible;
        double const least = box.left - box.width, most = box.right() + box.width;
        if (point.x < least) return cut_at(least, other, point);
        if (point.x > most) return cut_at(most, other, point);
        return point;
    }

    void add_piece(Point far_from, Point far_to) {
        if (is_left_out(far_from, far_to)) return end_stretch();
        const Point from = near_enough(far_from, far_to), to = near_enough(far_to, far_from);
        if (is_open_ && to.x != from.x && (to.x > from.x) != rightward_) end_stretch();
        if (!is_open_) {
            rightward_ = to.x >= from.x;
            thinner_.add(from);
        }
        is_open_ = true;
        thinner_.add(to);
    }

    void end_stretch() {
        thinner_.flush();
        if (top_.size() > 1) tops_.push_back(top_);
        top_.clear();
        is_open_ = false;
    }

    Point place(Point value) const { return {mapping_.x(value.x), mapping_.y(value.y)}; }

    LineMapping const& mapping_;
    Top top_;
    ColumnGrid grid_;
    ColumnThinner thinner_;
    std::vector<Top> tops_;
    bool is_open_ = false;
    bool rightward_ = true;
};

void fill(DrawSurface& surface, std::vector<Top> const& tops, double base, Color color) {
    const PenScope pen(surface, 1);
    surface.state.fill_style = FillStyle::Solid;
    surface.state.ForeColor = surface.state.FillColor = color;
    const ShapeScope one_shape(surface);
    std::vector<PixelPoint> corners;
    for (Top const& top : tops) {
        corners.clear();
        auto const add = [&](double x, double y) {
            corners.push_back({x / surface.TwipsPerPixelX(), y / surface.TwipsPerPixelY()});
        };
        add(top.front().x, base);
        for (const Point point : top) add(point.x, point.y);
        add(top.back().x, base);
        surface.Polygon(corners);
    }
    surface.state.fill_style = FillStyle::Transparent;
}

void outline(DrawSurface& surface, Top const& top, double base) {
    for (const Point point : top) surface.Polyline(std::vector<Point>{{point.x, base}, point});
    surface.Polyline(std::vector<Point>{{top.front().x, base}, {top.back().x, base}});
}

void draw_from_axis(DrawSurface& surface, document::DataSet const& set, LineMapping const& mapping,
                    bool outlined) {
    AreaTops area(mapping, surface.TwipsPerPixelX());
    for_each_finite_run(set.points, [&](std::span<Point const> run) { area.add(run); });
    double const base = mapping.y.start;
    {
        const document::RestoreScope alpha(surface.state.alpha, set.DataFillAlpha);
        fill(surface, area.tops(), base, set.DataSymbolFill.Color1);
    }
    surface.state.ForeColor = set.DataLineColor;
    const ShapeScope one_shape(surface);
    for (Top const& top : area.tops()) {
        if (outlined) outline(surface, top, base);
        surface.Polyline(top);
    }
}

bool begins_at_axis(AreaView const& area) {
    document::DataSet const& set = area.set;
    return !is_stacked_area(set) && !begins_at(area.graph, set) && !set.AreaBase
           && steps_of(set) == Steps::None;
}

LineMapping mapping_of(AreaView const& area, document::DataSet const& set) {
    bool const as_shown = area.maps == SeriesScope::Maps::AsShown;
    auto const x = as_shown ? &scale::shown_map : &scale::x_map;
    auto const y = as_shown ? &scale::shown_map : &scale::y_map;
    return {x(area.graph, at(area.graph.Axes, set.xAxisIndex, "axis")),
            y(area.graph, at(area.graph.Axes, set.yAxisIndex, "axis")), area.mapping.visible};
}

/// Those places of a stacked area that can be seen, and one more at either end.
template <class Take>
void for_each_stacked_place(AreaView const& area, Take const& take) {
    auto const& [x, y, visible] = area.mapping;
    std::vector<BandPlace> const& places = stacked_area(area.graph, area.set);
    auto const [low, high] = std::minmax({x.value_at(visible.left), x.value_at(visible.right())});
    auto first = places.begin(), past = places.end();
    if (x.valid) {
        first = std::ranges::lower_bound(places, low, {}, &BandPlace::x);
        past = std::ranges::upper_bound(places, high, {}, &BandPlace::x);
        if (first != places.begin()) --first;
        if (past != places.end()) ++past;
    }
    for (BandPlace const& place : std::span(first, past))
        take(BandPlace{x(place.x), std::isnan(place.edge) ? place.edge : y(place.edge), y(place.base)});
}

template <class Take>
void for_each_place(AreaView const& area, Take const& take) {
    document::DataSet const& set = area.set;
    if (is_stacked_area(set)) return for_each_stacked_place(area, take);
    if (document::DataSet const* const other = begins_at(area.graph, set))
        return walk_together(
            curve_on_page(set.points, steps_of(set), area.mapping),
            curve_on_page(shown_points(area.graph, *other), steps_of(*other), mapping_of(area, *other)),
            [&](double x, double edge, double base) {
                take(BandPlace{x, edge, base});
            });
    double const base = set.AreaBase ? area.mapping.y(set.AreaBaseValue) : area.mapping.y.start;
    for (const Point place : line_on_page(set.points, steps_of(set), area.mapping))
        take(BandPlace{place.x, place.y, base});
}

// The top of a stack has corners where those below it have; other areas end in their own line.
void draw_edge(DrawSurface& surface, AreaView const& area) {
    if (!is_stacked_area(area.set)) {
        if (Steps const steps = steps_of(area.set); steps != Steps::None)
            return draw_step_line(surface, area.set.points, steps, area.mapping);
        return draw_data_line(surface, area.set.points, area.mapping);
    }
    ThinnedPolyline line(surface, area.mapping.visible);
    for_each_place(area, [&](BandPlace const& place) {
        if (std::isnan(place.edge))
            line.finish();
        else
            line.add({place.x, place.edge});
    });
    line.finish();
}

} // namespace

document::DataSet const* begins_at(document::Graph const& graph, document::DataSet const& set) {
    if (set.AreaTo < 0 || set.AreaTo >= graph.NumDataSets()) return nullptr;
    document::DataSet const& other = at(graph.DataSets, set.AreaTo);
    return &other == &set ? nullptr : &other;
}

void draw_area(DrawSurface& surface, AreaView const& area, bool outlined) {
    document::DataSet const& set = area.set;
    if (begins_at_axis(area)) return draw_from_axis(surface, set, area.mapping, outlined);
    BandFill band(surface, area.mapping);
    for_each_place(area, [&](BandPlace const& place) { band.add(place); });
    Color const above = set.DataSymbolFill.Color1;
    {
        const document::RestoreScope alpha(surface.state.alpha, set.DataFillAlpha);
        band.draw(above, set.AreaBelowColor == -1 ? above : set.AreaBelowColor);
    }
    surface.state.ForeColor = set.DataLineColor;
    const ShapeScope one_shape(surface);
    if (outlined) band.draw_outline();
    draw_edge(surface, area);
}

bool area_holds(AreaView const& area, Point place) {
    constexpr double sliver = 1; // twip: curves are looked at this far to either side
    Box const plot = area.mapping.visible;
    if (place.x < plot.left || place.x > plot.right() || place.y < plot.top || place.y > plot.bottom())
        return false;
    const LineMapping narrow{
        area.mapping.x, area.mapping.y, {place.x - sliver, plot.top, 2 * sliver, plot.height}};
    bool holds = false;
    std::optional<BandPlace> last;
    for_each_place({area.graph, area.set, narrow, area.maps}, [&](BandPlace const& next) {
        bool const is_place = std::isfinite(next.x + next.edge + next.base);
        if (is_place && last && std::min(last->x, next.x) <= place.x
            && place.x <= std::max(last->x, next.x)) {
            double const share = next.x == last->x ? 0 : (place.x - last->x) / (next.x - last->x);
            auto const [top, bottom] = std::minmax({last->edge + share * (next.edge - last->edge),
                                                    last->base + share * (next.base - last->base)});
            holds |= top <= place.y && place.y <= bottom;
        }
        last = is_place ? std::optional(next) : std::nullopt;
    });
    return holds;
}

} // namespace qv::render
