#include "render/bands.h"

#include "render/pen.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

namespace qv::render {
namespace {

using document::PointBlock;
using document::PointStore;

constexpr double nowhere = std::numeric_limits<double>::quiet_NaN();

/// The corners of a line in order of arrival, by way of `place`.
template <class Place>
class Corners {
public:
    Corners(Steps steps, Place place) : steps_(steps), place_(place) {}

    void add(Point value) {
        if (!std::isfinite(value.x) || !std::isfinite(value.y)) return end();
        if (last_)
            for_each_corner(steps_, *last_, value,
                            [this](Point corner) { curve_.push_back(place_(corner)); });
        else if (!curve_.empty())
            curve_.push_back({place_(value).x, nowhere});
        curve_.push_back(place_(value));
        last_ = value;
    }

    void end() {
        if (last_) curve_.push_back({curve_.back().x, nowhere});
        last_.reset();
    }

    std::vector<Point> take() { return std::move(curve_); }

private:
    Steps steps_;
    Place place_;
    Curve curve_;
    std::optional<Point> last_;
};

Curve sorted(std::vector<Point> line) {
    auto const lies_left = [](Point a, Point b) { return a.x < b.x; };
    if (line.size() > 1 && line.back().x < line.front().x) std::ranges::reverse(line);
    if (!std::ranges::is_sorted(line, lies_left)) std::ranges::stable_sort(line, lies_left);
    return line;
}

template <class Place>
std::vector<Point> whole_line(PointStore const& points, Steps steps, Place place) {
    Corners<Place> corners(steps, place);
    for (PointBlock const& block : points.blocks())
        for (std::size_t i = 0; i < block.size(); ++i) corners.add({block.x()[i], block.y()[i]});
    return corners.take();
}

/// The values of x that can be seen.
document::Extent visible_values(LineMapping const& mapping) {
    document::Extent values;
    for (double const edge : {mapping.visible.left, mapping.visible.right()})
        values.include(mapping.x.value_at(edge));
    return values;
}

/// The first and the last but one index of the points of a block that can be seen, and one more at either
/// end.
struct Part {
    std::size_t first, past;
};
Part visible_part(PointBlock const& block, document::Extent const& visible) {
    auto const x = block.x();
    auto const low = std::ranges::lower_bound(x, visible.low) - x.begin();
    auto const high = std::ranges::upper_bound(x, visible.high) - x.begin();
    return {static_cast<std::size_t>(std::max<std::ptrdiff_t>(low - 1, 0)),
            std::min(static_cast<std::size_t>(high) + 1, x.size())};
}

// The piece of a segment between two x on the page. Reckoned from the end that stays, so that it is exact
// however far away the other lies.
BandPlace cut_at(double x, BandPlace const& stays, BandPlace const& goes) {
    double const share = (x - stays.x) / (goes.x - stays.x);
    return {x, stays.edge + share * (goes.edge - stays.edge), stays.base + share * (goes.base - stays.base)};
}

// Corners of a polygon may not lie too far away.
BandPlace near_enough(Box const& box, BandPlace const& place, BandPlace const& other) {
    double const least = box.left - box.width, most = box.right() + box.width;
    if (place.x < least) return cut_at(least, other, place);
    if (place.x > most) return cut_at(most, other, place);
    return place;
}

bool is_out_of_sight(Box const& box, BandPlace const& from, BandPlace const& to) {
    auto const [left, right] = std::minmax(from.x, to.x);
    auto const [top, bottom] = std::minmax({from.edge, from.base, to.edge, to.base});
    return right < box.left || left > box.right() || bottom < box.top || top > box.bottom();
}

} // namespace

std::vector<Point> line_on_page(PointStore const& points, Steps steps, LineMapping const& mapping) {
    auto const place = [&](Point value) { return Point{mapping.x(value.x), mapping.y(value.y)}; };
    if (!mapping.x.valid || !points.x_rising()) return whole_line(points, steps, place);
    const document::Extent visible = visible_values(mapping);
    Corners<decltype(place)> corners(steps, place);
    for (PointBlock const& block : points.blocks()) {
        if (block.size() == 0) continue;
        // Of a block out of sight its last point leads in, or its first one out.
        const Part part = visible_part(block, visible);
        for (std::size_t i = part.first; i < part.past; ++i) corners.add({block.x()[i], block.y()[i]});
    }
    return corners.take();
}

Curve curve_on_page(PointStore const& points, Steps steps, LineMapping const& mapping) {
    return sorted(line_on_page(points, steps, mapping));
}

Curve curve_of_values(PointStore const& points, Steps steps) {
    return sorted(whole_line(points, steps, [](Point value) { return value; }));
}

detail::Limits detail::limits(Curve const& curve, std::size_t first, std::size_t past, double x) {
    if (first < past)
        return {first == 0 ? nowhere : curve[first].y, past == curve.size() ? nowhere : curve[past - 1].y};
    if (first == 0 || first == curve.size()) return {nowhere, nowhere};
    const Point from = curve[first - 1], to = curve[first];
    double const between = from.y + (to.y - from.y) * ((x - from.x) / (to.x - from.x));
    return {between, between};
}

BandFill::BandFill(DrawSurface& surface, LineMapping const& mapping)
    : surface_(surface), visible_(mapping.visible), upward_(mapping.y.factor < 0 ? -1 : 1) {}

double BandFill::height(BandPlace const& place) const {
    return (place.edge - place.base) * upward_;
}

void BandFill::add(BandPlace const& place) {
    if (!std::isfinite(place.x + place.edge + place.base)) {
        end_column();
        return break_off();
    }
    double const column = std::floor(place.x / surface_.TwipsPerPixelX() + 0.5);
    if (column != column_) end_column();
    column_ = column;
    keep(place);
}

void BandFill::keep(BandPlace const& place) {
    const Kept now{place, arrivals_};
    if (arrivals_ == 0) kept_.fill(now);
    if (place.edge < kept_[1].place.edge) kept_[1] = now;
    if (place.edge > kept_[2].place.edge) kept_[2] = now;
    if (place.base < kept_[3].place.base) kept_[3] = now;
    if (place.base > kept_[4].place.base) kept_[4] = now;
    kept_[5] = now;
    ++arrivals_;
}

void BandFill::end_column() {
    if (arrivals_ == 0) return;
    std::ranges::sort(kept_, {}, &Kept::arrival);
    go_to(kept_[0].place);
    for (std::size_t i = 1; i < kept_.size(); ++i)
        if (kept_[i].arrival != kept_[i - 1].arrival) go_to(kept_[i].place);
    arrivals_ = 0;
}

void BandFill::break_off() {
    above_.end();
    below_.end();
    last_.reset();
}

void BandFill::go_to(BandPlace const& place) {
    auto const add_to = [&](double side, BandPlace const& from, BandPlace const& to) {
        (side >= 0 ? below_ : above_).end();
        (side >= 0 ? above_ : below_).add(visible_, from, to);
    };
    if (last_) {
        double const from = height(*last_), to = height(place);
        if ((from < 0 && to > 0) || (from > 0 && to < 0)) {
            double const share = from / (from - to);
            double const y = last_->base + share * (place.base - last_->base);
            const BandPlace crossing{last_->x + share * (place.x - last_->x), y, y};
            add_to(from, *last_, crossing);
            add_to(to, crossing, place);
        } else {
            add_to(from != 0 ? from : to, *last_, place);
        }
    }
    last_ = place;
}

void BandFill::Side::add(Box const& visible, BandPlace const& far_from, BandPlace const& far_to) {
    if (is_out_of_sight(visible, far_from, far_to)) return end();
    const BandPlace from = near_enough(visible, far_from, far_to),
                    to = near_enough(visible, far_to, far_from);
    bool const turns = is_open_ && to.x != from.x && (to.x > from.x) != stretches_.back().rightward;
    if (!is_open_ || turns)
        stretches_.push_back({{{from.x, from.edge}}, {{from.x, from.base}}, to.x >= from.x});
    is_open_ = true;
    stretches_.back().edge.push_back({to.x, to.edge});
    stretches_.back().base.push_back({to.x, to.base});
}

void BandFill::Side::fill(DrawSurface& surface) const {
    std::vector<PixelPoint> corners;
    for (Stretch const& stretch : stretches_) {
        corners.clear();
        auto const add = [&](Point place) {
            const PixelPoint corner{place.x / surface.TwipsPerPixelX(), place.y / surface.TwipsPerPixelY()};
            // A base that runs level needs its ends only.
            if (corners.size() > 1 && corners.back().y == corner.y
                && corners[corners.size() - 2].y == corner.y)
                corners.back() = corner;
            else
                corners.push_back(corner);
        };
        for (const Point place : stretch.edge) add(place);
        for (auto place = stretch.base.rbegin(); place != stretch.base.rend(); ++place) add(*place);
        surface.Polygon(corners);
    }
}

void BandFill::Side::outline(DrawSurface& surface) const {
    for (Stretch const& stretch : stretches_) {
        for (std::size_t i = 0; i < stretch.edge.size(); ++i)
            surface.Polyline(std::array{stretch.base[i], stretch.edge[i]});
        surface.Polyline(stretch.base);
    }
}

void BandFill::draw_outline() const {
    above_.outline(surface_);
    below_.outline(surface_);
}

void BandFill::draw(Color above, Color below) {
    end_column();
    break_off();
    // Without an outline, so that translucent bands which touch do not lie over each other.
    const PenScope pen(surface_, 1, DrawStyle::None);
    surface_.state.fill_style = FillStyle::Solid;
    auto const fill = [&](Side const& side, Color color) {
        if (side.empty()) return;
        surface_.state.ForeColor = surface_.state.FillColor = color;
        const ShapeScope one_shape(surface_);
        side.fill(surface_);
    };
    fill(above_, above);
    fill(below_, below);
    surface_.state.fill_style = FillStyle::Transparent;
}

} // namespace qv::render
