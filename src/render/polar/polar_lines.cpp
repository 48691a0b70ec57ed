#include "render/polar/polar_lines.h"

#include "document/selection.h"
#include "render/data_sets.h"
#include "surface/whole_pixel.h"

#include <algorithm>
#include <array>

namespace qv::render {
namespace {

using document::DataSet;

constexpr std::size_t most_points = 4096; // of a line handed over at once

bool is_there(Point place) {
    return std::isfinite(place.x) && std::isfinite(place.y);
}

/// Where along a segment, as shares of it, it enters and leaves a circle about the origin; none where it
/// passes outside.
struct Shares {
    double from = 0, to = 1;
};
std::optional<Shares> inside_circle(Point from, Point to, double radius) {
    const Point way{to.x - from.x, to.y - from.y};
    double const a = way.x * way.x + way.y * way.y, half_b = from.x * way.x + from.y * way.y;
    double const c = from.x * from.x + from.y * from.y - radius * radius;
    if (a == 0) return c <= 0 ? std::optional(Shares{}) : std::nullopt;
    double const discriminant = half_b * half_b - a * c;
    if (discriminant <= 0) return std::nullopt;
    double const root = std::sqrt(discriminant);
    // An end on the circle lies inside, however it is rounded.
    constexpr double slack = 1e-9;
    double const enters = (-half_b - root) / a, leaves = (-half_b + root) / a;
    const Shares cut{enters < slack ? 0 : enters, leaves > 1 - slack ? 1 : leaves};
    return cut.from < cut.to ? std::optional(cut) : std::nullopt;
}

Point between(Point from, Point to, double share) {
    if (share == 0 || share == 1) return share == 0 ? from : to;
    return {from.x + share * (to.x - from.x), from.y + share * (to.y - from.y)};
}

/// What lies between the line and the centre, one polygon for at most a whole turn, so that what is covered
/// twice is filled once.
class PolarArea {
public:
    PolarArea(DrawSurface& surface, PolarMap const& map, Color color)
        : surface_(surface), map_(map), color_(color) {}

    void add(double x, double y) {
        const Point place = map_(x, y);
        if (!is_there(place)) return finish();
        const Point point{place.x - map_.centre.x, place.y - map_.centre.y};
        if (last_) add_chord(*last_, point);
        last_ = point;
    }

    void finish() {
        close();
        last_.reset();
    }

private:
    // The parts beyond the outermost circle run along it.
    void add_chord(Point from, Point to) {
        std::vector<double> shares{0};
        if (auto const inside = inside_circle(from, to, map_.radius)) {
            if (inside->from > 0) shares.push_back(inside->from);
            if (inside->to < 1) shares.push_back(inside->to);
        }
        shares.push_back(1);
        add(onto_disc(from));
        for (std::size_t i = 1; i < shares.size(); ++i) {
            const Point begin = between(from, to, shares[i - 1]), end = between(from, to, shares[i]);
            const Point middle = between(begin, end, 0.5);
            if (std::hypot(middle.x, middle.y) > map_.radius) add_arc(begin, end);
            add(onto_disc(end));
        }
        turned_ += std::abs(
            std::remainder(std::atan2(to.y, to.x) - std::atan2(from.y, from.x), 2 * std::numbers::pi));
        if (turned_ >= 2 * std::numbers::pi) close();
    }

    void add_arc(Point from, Point to) {
        constexpr double step = 0.02;
        double const start = std::atan2(from.y, from.x);
        double const way = std::remainder(std::atan2(to.y, to.x) - start, 2 * std::numbers::pi);
        int const pieces = static_cast<int>(std::ceil(std::abs(way) / step));
        for (int i = 1; i < pieces; ++i) {
            double const angle = start + way * i / pieces;
            add({map_.radius * std::cos(angle), map_.radius * std::sin(angle)});
        }
    }

    Point onto_disc(Point point) const {
        double const distance = std::hypot(point.x, point.y);
        double const share = distance > map_.radius ? map_.radius / distance : 1;
        return {point.x * share, point.y * share};
    }

    void add(Point point) {
        corners_.push_back(in_pixels(surface_, {map_.centre.x + point.x, map_.centre.y + point.y}));
    }

    void close() {
        turned_ = 0;
        if (corners_.empty()) return;
        corners_.push_back(in_pixels(surface_, map_.centre));
        const document::RestoreScope drawing(surface_.state);
        surface_.state.FillColor = surface_.state.ForeColor = color_;
        surface_.state.fill_style = FillStyle::Solid;
        surface_.state.draw_style = DrawStyle::None;
        surface_.Polygon(corners_);
        corners_.clear();
    }

    DrawSurface& surface_;
    PolarMap const& map_;
    Color color_;
    std::optional<Point> last_; // from the centre
    double turned_ = 0;
    std::vector<PixelPoint> corners_;
};

void add_points(DataSet const& set, auto& shape) {
    for (document::PointBlock const& block : set.points.blocks())
        for (std::size_t i = 0; i < block.size(); ++i) shape.add(block.x()[i], block.y()[i]);
    shape.finish();
}

} // namespace

void PolarLine::add(double x, double y) {
    const Point place = map_(x, y);
    if (!is_there(place)) return finish();
    if (last_) add_piece(*last_, place);
    last_ = place;
}

void PolarLine::finish() {
    hand_over();
    last_.reset();
}

void PolarLine::add_piece(Point from, Point to) {
    auto const from_centre = [&](Point place) {
        return Point{place.x - map_.centre.x, place.y - map_.centre.y};
    };
    auto const inside = inside_circle(from_centre(from), from_centre(to), map_.radius);
    if (!inside) return hand_over();
    if (inside->from > 0 || piece_.empty()) {
        hand_over();
        piece_.push_back(between(from, to, inside->from));
    }
    piece_.push_back(between(from, to, inside->to));
    if (inside->to < 1) return hand_over();
    if (piece_.size() < most_points) return;
    hand_over();
    piece_.push_back(to);
}

void PolarLine::hand_over() {
    if (piece_.size() > 1) surface_.Polyline(piece_);
    piece_.clear();
}

void draw_polar_line(DrawSurface& surface, DataSet const& set, PolarMap const& map) {
    if (!(map.radius > 0)) return;
    if (is_area(set)) {
        PolarArea area(surface, map, set.DataSymbolFill.Color1);
        const ShapeScope one_shape(surface);
        add_points(set, area);
    }
    PolarLine line(surface, map);
    const ShapeScope one_shape(surface);
    add_points(set, line);
}

} // namespace qv::render
