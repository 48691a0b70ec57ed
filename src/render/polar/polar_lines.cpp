#include "render/polar/polar_lines.h"

#include "render/arcs.h"
#include "render/data_sets.h"
#include "render/finite_runs.h"
#include "render/spline.h"
#include "render/stacked_areas.h"
#include "render/steps.h"
#include "surface/whole_pixel.h"

#include <algorithm>
#include <array>

namespace qv::render {
namespace {

using document::DataSet;
using document::Graph;
using document::PointStore;

constexpr std::size_t most_points = 4096; // of a line handed over at once
constexpr double turn = 2 * std::numbers::pi;

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
    double const square = radius * radius;
    double const begin = from.x * from.x + from.y * from.y, end = to.x * to.x + to.y * to.y;
    if (begin <= square && end <= square) return Shares{};
    double const a = way.x * way.x + way.y * way.y, half_b = from.x * way.x + from.y * way.y;
    double const c = begin - square;
    if (a == 0) return std::nullopt;
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

Point from_centre(double direction, double distance) {
    return {distance * std::cos(direction), -distance * std::sin(direction)};
}

void add_points(PointStore const& points, PolarLine& line) {
    for (document::PointBlock const& block : points.blocks())
        for (std::size_t i = 0; i < block.size(); ++i) line.add(block.x()[i], block.y()[i]);
    line.finish();
}

void add_in_steps(PointStore const& points, Steps steps, PolarLine& line) {
    std::optional<Point> last;
    auto const go_to = [&](Point from, Point to) {
        to.y == from.y ? line.go_round(from, to.x) : line.add(to.x, to.y);
    };
    for (document::PointBlock const& block : points.blocks())
        for (std::size_t i = 0; i < block.size(); ++i) {
            const Point value{block.x()[i], block.y()[i]};
            if (!is_there(value)) {
                line.finish();
                last.reset();
                continue;
            }
            if (!last) {
                line.add(value.x, value.y);
            } else {
                Point at = *last;
                for_each_corner(steps, *last, value, [&](Point corner) {
                    go_to(at, corner);
                    at = corner;
                });
                go_to(at, value);
            }
            last = value;
        }
    line.finish();
}

void add_smooth(DataSet const& set, PolarMap const& map, PolarLine& line) {
    constexpr double twips_a_step = 50, most_steps = 100;
    auto const steps_between = [&](Point from, Point to) {
        double const near = map.clamped_distance(from.y), far = map.clamped_distance(to.y);
        double const round = std::abs(map.per_unit * (to.x - from.x)) * std::max(near, far);
        return static_cast<int>(std::clamp(std::hypot(round, far - near) / twips_a_step, 1.0, most_steps));
    };
    std::vector<double> const& second = second_derivatives(set);
    std::size_t first = 0;
    for_each_finite_run(set.points, [&](std::span<Point const> run) {
        line.add(run[0].x, run[0].y);
        for (std::size_t i = 0; i + 1 < run.size(); ++i) {
            const SplineStretch stretch{run[i], run[i + 1], second[first + i], second[first + i + 1]};
            int const steps = steps_between(stretch.from, stretch.to);
            if (stretch.from.x == stretch.to.x) line.finish();
            for (int j = 1; j < steps && stretch.from.x != stretch.to.x; ++j) {
                const Point value = stretch.at(static_cast<double>(j) / steps);
                line.add(value.x, value.y);
            }
            line.add(stretch.to.x, stretch.to.y);
        }
        line.finish();
        first += run.size();
    });
}

void fill_area(DrawSurface& surface, Graph const& graph, DataSet const& set, PolarMap const& map) {
    const ShapeScope one_shape(surface);
    PolarBand band(surface, map, set.DataSymbolFill.Color1);
    if (is_stacked_area(set)) {
        for (BandPlace const& place : stacked_area(graph, set))
            band.add(map.direction(place.x), map.distance(place.x, place.edge),
                     map.clamped_distance(place.base));
    } else {
        for (document::PointBlock const& block : set.points.blocks())
            for (std::size_t i = 0; i < block.size(); ++i) {
                double const x = block.x()[i];
                band.add(map.direction(x), map.distance(x, block.y()[i]), 0);
            }
    }
    band.finish();
}

} // namespace

void PolarLine::add(double x, double y) {
    double const distance = map_.distance(x, y);
    if (std::isnan(distance)) return finish();
    thinner_.add({map_.direction(x), distance});
}

void PolarLine::go_round(Point from, double x) {
    double const distance = map_.along(from.y), y = from.y;
    if (!(distance >= 0) || distance > map_.radius) { // unseen
        finish();
        return add(x, y);
    }
    // More than a turn looks like one.
    double const turns = std::trunc((x - from.x) / map_.whole_turn);
    double const way = x - from.x - (turns == 0 ? 0 : turns - std::copysign(1, turns)) * map_.whole_turn;
    double const step = arc_step(distance, surface_.TwipsPerPixelX()) / std::abs(map_.per_unit);
    int const pieces = static_cast<int>(std::ceil(std::abs(way) / step));
    for (int i = 1; i < pieces; ++i) add(x - way + way * i / pieces, y);
    add(x, y);
}

void PolarLine::finish() {
    thinner_.end();
    hand_over();
    last_.reset();
}

void PolarLine::go_to(PolarPlace const& place) {
    const Point to = from_centre(place.direction, place.distance);
    if (last_) add_piece(*last_, to);
    last_ = to;
}

void PolarLine::add_piece(Point from, Point to) {
    auto const inside = inside_circle(from, to, map_.radius);
    if (!inside) return hand_over();
    auto const on_page = [&](Point place) { return Point{map_.centre.x + place.x, map_.centre.y + place.y}; };
    if (inside->from > 0 || piece_.empty()) {
        hand_over();
        piece_.push_back(on_page(between(from, to, inside->from)));
    }
    piece_.push_back(on_page(between(from, to, inside->to)));
    if (inside->to < 1) return hand_over();
    if (piece_.size() < most_points) return;
    hand_over();
    piece_.push_back(on_page(to));
}

void PolarLine::hand_over() {
    if (piece_.size() > 1) surface_.Polyline(piece_);
    piece_.clear();
}

PolarBand::PolarBand(DrawSurface& surface, PolarMap const& map, Color color)
    : surface_(surface), map_(map), color_(color) {
    columns_per_radian_ = std::max(1.0, map.radius / surface.TwipsPerPixelX());
}

void PolarBand::add(double direction, double edge, double base) {
    if (!std::isfinite(direction) || std::isnan(edge) || std::isnan(base)) return finish();
    const Places places{direction, edge, base};
    double const column = std::floor(direction * columns_per_radian_);
    if (in_column_ == 0 || column != column_) {
        end_column();
        column_ = column;
        first_in_column_ = extremes_ = places;
    }
    extremes_.edge = std::max(extremes_.edge, edge);
    extremes_.base = std::min(extremes_.base, base);
    last_in_column_ = places;
    ++in_column_;
}

// Of more than two in a column of a pixel those inside count by how far they reach.
void PolarBand::end_column() {
    if (in_column_ > 0) go_to(first_in_column_);
    extremes_.direction = (first_in_column_.direction + last_in_column_.direction) / 2;
    if (in_column_ > 2) go_to(extremes_);
    if (in_column_ > 1) go_to(last_in_column_);
    in_column_ = 0;
}

void PolarBand::finish() {
    end_column();
    close();
    last_.reset();
}

void PolarBand::go_to(Places const& to) {
    if (last_) {
        Places const& from = *last_;
        add_chord(edge_, from_centre(from.direction, from.edge), from_centre(to.direction, to.edge));
        add_chord(base_, from_centre(from.direction, from.base), from_centre(to.direction, to.base));
        base_.leaves_centre |= from.base > 0 || to.base > 0;
        turned_ += std::abs(std::remainder(to.direction - from.direction, turn));
    }
    last_ = to;
    if (turned_ >= turn) close();
}

// The parts beyond the outermost circle run along it.
void PolarBand::add_chord(Side& side, Point from, Point to) const {
    auto const onto_disc = [&](Point place) {
        double const distance = std::hypot(place.x, place.y);
        double const share = distance > map_.radius ? map_.radius / distance : 1;
        return Point{place.x * share, place.y * share};
    };
    auto const add_arc = [&](Point begin, Point end) {
        constexpr double step = 0.02;
        double const start = std::atan2(begin.y, begin.x);
        double const way = std::remainder(std::atan2(end.y, end.x) - start, turn);
        for_each_on_arc(start, start + way, step, [&](double angle) {
            add_corner(side, {map_.radius * std::cos(angle), map_.radius * std::sin(angle)});
        });
    };
    std::array<double, 4> shares{0, 1, 1, 1};
    if (auto const inside = inside_circle(from, to, map_.radius)) shares = {0, inside->from, inside->to, 1};
    add_corner(side, onto_disc(from));
    for (std::size_t i = 1; i < shares.size(); ++i) {
        if (shares[i] == shares[i - 1]) continue;
        const Point begin = between(from, to, shares[i - 1]), end = between(from, to, shares[i]);
        const Point middle = between(begin, end, 0.5);
        if (std::hypot(middle.x, middle.y) > map_.radius) add_arc(begin, end);
        add_corner(side, onto_disc(end));
    }
}

void PolarBand::add_corner(Side& side, Point from_centre) const {
    const PixelPoint corner =
        in_pixels(surface_, {map_.centre.x + from_centre.x, map_.centre.y + from_centre.y});
    if (side.corners.empty() || !(side.corners.back() == corner)) side.corners.push_back(corner);
}

void PolarBand::close() {
    turned_ = 0;
    std::vector<PixelPoint> corners = std::move(edge_.corners);
    if (base_.leaves_centre)
        corners.insert(corners.end(), base_.corners.rbegin(), base_.corners.rend());
    else
        corners.push_back(in_pixels(surface_, map_.centre));
    edge_ = base_ = {};
    if (corners.size() < 3) return;
    fill_polygon(surface_, corners, color_);
}

void draw_polar_line(DrawSurface& surface, Graph const& graph, DataSet const& set, PolarMap const& map) {
    if (!(map.radius > 0)) return;
    if (is_area(set)) fill_area(surface, graph, set, map);
    PolarLine line(surface, map);
    const ShapeScope one_shape(surface);
    if (set.DataLineStyle == line_smooth) return add_smooth(set, map, line);
    PointStore const& points = shown_points(graph, set);
    if (Steps const steps = steps_of(set); steps != Steps::None && !is_area(set))
        add_in_steps(points, steps, line);
    else
        add_points(points, line);
}

} // namespace qv::render
