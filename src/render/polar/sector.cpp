#include "render/polar/sector.h"

#include "render/arcs.h"

#include <algorithm>
#include <cmath>

namespace qv::render {
namespace {

constexpr double turn = 2 * std::numbers::pi;

bool is_ring(Sector const& sector) {
    return std::abs(sector.to - sector.from) >= turn;
}

/// How far a direction lies past the beginning of a sector, 0 to a turn, the way the sector goes.
double past_start(Sector const& sector, double direction) {
    double const way = sector.to >= sector.from ? direction - sector.from : sector.from - direction;
    return way - turn * std::floor(way / turn);
}

} // namespace

std::optional<Sector> sector_between(PolarMap const& map, SectorValues const& values) {
    if (!std::isfinite(values.x1) || !std::isfinite(values.x2)) return std::nullopt;
    double const y1 = map.clamped_distance(values.y1), y2 = map.clamped_distance(values.y2);
    auto const [inner, outer] = std::minmax({y1, y2});
    if (!(outer > inner)) return std::nullopt; // all of it lies on one side, or a value is none
    auto const [low, high] = std::minmax({values.x1, values.x2});
    double const from = map.direction(low), way = map.per_unit * (high - low);
    return Sector{from, from + std::clamp(way, -turn, turn), inner, outer};
}

std::vector<Point> arc_points(PolarMap const& map, double from, double to, double distance,
                              double twips_per_pixel) {
    std::vector<Point> points;
    for_each_on_arc(from, to, arc_step(distance, twips_per_pixel),
                    [&](double direction) { points.push_back(map.at(direction, distance)); });
    return points;
}

std::vector<Point> sector_outline(PolarMap const& map, Sector const& sector, double twips_per_pixel) {
    std::vector<Point> outline = arc_points(map, sector.from, sector.to, sector.outer, twips_per_pixel);
    if (sector.inner > 0) {
        auto const back = arc_points(map, sector.to, sector.from, sector.inner, twips_per_pixel);
        outline.insert(outline.end(), back.begin(), back.end());
    } else if (!is_ring(sector)) {
        outline.push_back(map.centre);
    }
    return outline;
}

bool sector_holds(PolarMap const& map, Sector const& sector, Point place, double reach) {
    double const distance = map.distance_of(place);
    if (distance < sector.inner - reach || distance > sector.outer + reach) return false;
    if (is_ring(sector) || distance <= reach) return true;
    double const past = past_start(sector, map.direction_of(place)), way = std::abs(sector.to - sector.from);
    double const beside = std::min(past - way, turn - past); // negative inside
    return beside <= 0 || beside * distance <= reach;
}

Box sector_box(PolarMap const& map, Sector const& sector) {
    constexpr double pixel = 15;
    auto const outline = sector_outline(map, sector, pixel);
    auto const [left, right] = std::ranges::minmax_element(outline, {}, &Point::x);
    auto const [top, bottom] = std::ranges::minmax_element(outline, {}, &Point::y);
    return {left->x, top->y, right->x - left->x, bottom->y - top->y};
}

} // namespace qv::render
