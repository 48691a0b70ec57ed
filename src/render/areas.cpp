#include "render/areas.h"

#include "render/column_thinner.h"
#include "render/finite_runs.h"
#include "render/pen.h"

#include <algorithm>
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

} // namespace

void draw_area(DrawSurface& surface, document::DataSet const& set, LineMapping const& mapping,
               bool outlined) {
    AreaTops area(mapping, surface.TwipsPerPixelX());
    for_each_finite_run(set.points, [&](std::span<Point const> run) { area.add(run); });
    double const base = mapping.y.start;
    fill(surface, area.tops(), base, set.DataSymbolFill.Color1);
    surface.state.ForeColor = set.DataLineColor;
    const ShapeScope one_shape(surface);
    for (Top const& top : area.tops()) {
        if (outlined) outline(surface, top, base);
        surface.Polyline(top);
    }
}

} // namespace qv::render
