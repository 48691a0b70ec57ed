#include "render/steps.h"

#include <algorithm>
#include <optional>

namespace qv::render {
namespace {

using document::PointBlock;

class StepLine {
public:
    StepLine(DrawSurface& surface, Steps steps, LineMapping const& mapping)
        : steps_(steps), mapping_(mapping), line_(surface, mapping.visible) {}

    void add(PointBlock const& block) {
        if (block.size() == 0) return;
        auto const x = block.x(), y = block.y();
        if (block.all_finite() && is_beside(block)) {
            add({x.front(), y.front()});
            add({x.back(), y.back()});
        } else {
            for (std::size_t i = 0; i < x.size(); ++i) add({x[i], y[i]});
        }
    }

    void finish() {
        line_.finish();
        last_.reset();
    }

private:
    // Wholly left or right of what can be seen. What lies above or below is joined by the visible columns.
    bool is_beside(PointBlock const& block) const {
        scale::AxisMap const& map = mapping_.x;
        if (!map.valid || (map.is_log && block.x_extent().low <= 0)) return false;
        auto const [from, to] = std::minmax({map(block.x_extent().low), map(block.x_extent().high)});
        return to < mapping_.visible.left || from > mapping_.visible.right();
    }

    void add(Point value) {
        if (!std::isfinite(value.x) || !std::isfinite(value.y)) return finish();
        if (last_) for_each_corner(steps_, *last_, value, [this](Point corner) { put(corner); });
        put(value);
        last_ = value;
    }

    void put(Point value) { line_.add({mapping_.x(value.x), mapping_.y(value.y)}); }

    Steps steps_;
    LineMapping const& mapping_;
    ThinnedPolyline line_;
    std::optional<Point> last_;
};

} // namespace

void draw_step_line(DrawSurface& surface, document::PointStore const& points, Steps steps,
                    LineMapping const& mapping) {
    const ShapeScope one_shape(surface);
    StepLine line(surface, steps, mapping);
    for (PointBlock const& block : points.blocks()) line.add(block);
    line.finish();
}

} // namespace qv::render
