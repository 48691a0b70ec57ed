#include "render/lines/lone_points.h"

#include "base/convert.h"
#include "document/selection.h"
#include "render/pen.h"
#include "render/symbols.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

namespace qv::render {
namespace {

using document::PointBlock;

constexpr double radius_in_pens = 0.9;
constexpr double twips_per_pen = 15;

class LonePoints {
public:
    explicit LonePoints(LineMapping const& mapping) : mapping_(mapping) {}

    void add(PointBlock const& block) {
        bool const may_fail = mapping_.x.is_log || mapping_.y.is_log || !block.all_finite();
        if (!may_fail && block.size() > 1) return join();
        for (std::size_t i = 0; i < block.size(); ++i) add({block.x()[i], block.y()[i]});
    }
    std::vector<Point> const& finish() {
        keep_waiting();
        return found_;
    }

private:
    static bool has_place(scale::AxisMap const& map, double value) {
        return std::isfinite(value) && (!map.is_log || value > 0);
    }
    void add(Point value) {
        if (!has_place(mapping_.x, value.x) || !has_place(mapping_.y, value.y))
            keep_waiting();
        else if (waiting_ || in_line_)
            join();
        else
            waiting_ = Point{mapping_.x(value.x), mapping_.y(value.y)};
    }
    void join() {
        waiting_.reset();
        in_line_ = true;
    }
    // At a gap, what came alone before it stays alone.
    void keep_waiting() {
        if (waiting_ && is_visible(*waiting_)) found_.push_back(whole_twips(*waiting_));
        waiting_.reset();
        in_line_ = false;
    }
    bool is_visible(Point place) const {
        Box const& box = mapping_.visible;
        return place.x >= box.left && place.x <= box.right() && place.y >= box.top && place.y <= box.bottom();
    }

    LineMapping const& mapping_;
    std::optional<Point> waiting_; // behind a gap; what follows tells whether it is alone
    bool in_line_ = false;
    std::vector<Point> found_;
};

} // namespace

void draw_lone_points(DrawSurface& surface, document::PointStore const& points, LineMapping const& mapping) {
    LonePoints lone(mapping);
    for (PointBlock const& block : points.blocks()) lone.add(block);
    auto const& centres = lone.finish();
    if (centres.empty()) return;
    double const radius = radius_in_pens * twips_per_pen * std::max<double>(1, surface.state.DrawWidth);
    const document::RestoreScope fill(surface.state.fill_style, FillStyle::Solid);
    const PenScope thin(surface, 1, DrawStyle::Solid);
    surface.state.FillColor = surface.state.ForeColor;
    surface.Symbols({SymbolShape::Circle, to_i32(radius), centres});
}

} // namespace qv::render
