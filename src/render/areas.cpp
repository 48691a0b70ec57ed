#include "render/areas.h"

#include "render/column_thinner.h"
#include "render/finite_runs.h"

#include <algorithm>
#include <vector>

namespace qv::render {
namespace {

/// The top of a stretch of pieces whose x all run the same way, thinned, on the page.
using Top = std::vector<Point>;

class AreaTops {
public:
    AreaTops(LineMapping const& mapping, EntryRanges const& ranges, double twips_per_pixel)
        : mapping_(mapping), ranges_(ranges),
          thinner_({twips_per_pixel, mapping.visible.left, mapping.visible.right()}, top_) {}

    void add(std::span<Point const> run) {
        Point from = run[0];
        if (from.y >= ranges_.y_max) from.y = ranges_.y_max;
        for (const Point to : run.subspan(1)) {
            add_piece(from, to);
            from = to;
        }
        end_stretch();
    }

    std::vector<Top> const& tops() const { return tops_; }

private:
    bool is_left_out(Point from, Point to) const {
        return (to.x <= ranges_.x_min && from.x <= ranges_.x_min)
               || (to.x >= ranges_.x_max && from.x >= ranges_.x_max)
               || (to.y <= ranges_.y_min && from.y <= ranges_.y_min);
    }

    void add_piece(Point from, Point to) {
        if (is_left_out(from, to)) return end_stretch();
        if (is_open_ && to.x != from.x && (to.x > from.x) != rightward_) end_stretch();
        if (!is_open_) {
            rightward_ = to.x >= from.x;
            thinner_.add(place(from));
        }
        is_open_ = true;
        thinner_.add(place(to));
    }

    void end_stretch() {
        thinner_.flush();
        if (top_.size() > 1) tops_.push_back(top_);
        top_.clear();
        is_open_ = false;
    }

    Point place(Point value) const { return {mapping_.x(value.x), mapping_.y(value.y)}; }

    LineMapping const& mapping_;
    EntryRanges const& ranges_;
    Top top_;
    ColumnThinner thinner_;
    std::vector<Top> tops_;
    bool is_open_ = false;
    bool rightward_ = true;
};

void fill(DrawSurface& surface, std::vector<Top> const& tops, double base, Color color) {
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

void draw_area(DrawSurface& surface, graph::DataSet const& set, LineMapping const& mapping,
               EntryRanges const& ranges, bool outlined) {
    AreaTops area(mapping, ranges, surface.TwipsPerPixelX());
    for_each_finite_run(set.points, [&](std::span<Point const> run) { area.add(run); });
    double const base = mapping.y(ranges.y_min);
    int const width = surface.state.DrawWidth;
    surface.state.DrawWidth = 1;
    fill(surface, area.tops(), base, set.DataSymbolFill.Color1);
    surface.state.DrawWidth = width;
    surface.state.ForeColor = set.DataLineColor;
    const ShapeScope one_shape(surface);
    for (Top const& top : area.tops()) {
        if (outlined) outline(surface, top, base);
        surface.Polyline(top);
    }
}

} // namespace qv::render
