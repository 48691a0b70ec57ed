#include "render/lines/rising_line.h"

#include <algorithm>
#include <cmath>

namespace qv::render {

LineInPixels::PixelMap::PixelMap(scale::AxisMap const& axis, double pixels_per_twip_, double origin_)
    : map(&axis), start(axis.start * pixels_per_twip_ - origin_), factor(axis.factor * pixels_per_twip_),
      pixels_per_twip(pixels_per_twip_), origin(origin_), is_linear(!axis.is_log) {}

LineInPixels::LineInPixels(RisingLine const& line, PixelGrid const& grid)
    : is_mirrored_(line.x_map.factor < 0),
      across_(line.x_map, is_mirrored_ ? -grid.columns_per_twip : grid.columns_per_twip, 0),
      down_(line.y_map, grid.rows_per_twip, grid.first_row) {
    stretches_.reserve(line.stretches.size());
    for (PointStretch const& stretch : line.stretches) stretches_.push_back(lay_out(stretch));
}

LineInPixels::Stretch LineInPixels::lay_out(PointStretch const& stretch) const {
    constexpr double nearly = 1.0 / 4096; // pixels
    Stretch laid_out{stretch, 0, 0, false};
    if (!stretch.spacing || !across_.is_linear) return laid_out;
    laid_out.step = stretch.spacing->step * across_.factor;
    laid_out.start =
        across_(stretch.spacing->first) + static_cast<double>(stretch.summary_place) * laid_out.step;
    laid_out.is_even = std::abs(stretch.spacing->deviation * across_.factor) < nearly
                       && std::isfinite(laid_out.start) && std::isfinite(laid_out.step);
    return laid_out;
}

void LineInPixels::append_places(Stretch const& stretch, std::size_t first, std::size_t past,
                                 std::vector<double>& across, std::vector<double>& down) const {
    auto const append = [&](auto const& values, PixelMap map, std::vector<double>& places) {
        std::size_t const begin = places.size(), count = past - first;
        places.resize(begin + count);
        double const* const from = values.data() + first;
        double* const to = places.data() + begin;
        if (map.is_linear)
            for (std::size_t k = 0; k < count; ++k)
                to[k] = map.start + map.factor * (from[k] - map.map->first);
        else
            for (std::size_t k = 0; k < count; ++k) to[k] = map(from[k]);
    };
    append(stretch.y, down_, down);
    if (!stretch.is_even) return append(stretch.x, across_, across);
    for (std::size_t i = first; i < past; ++i) across.push_back(x(stretch, i));
}

PointIndex LineInPixels::before(PointIndex index) const {
    if (index.point > 0) return {index.stretch, index.point - 1};
    return {index.stretch - 1, stretches_[index.stretch - 1].x.size() - 1};
}

PointIndex LineInPixels::after(PointIndex index) const {
    if (index.point + 1 < stretches_[index.stretch].x.size()) return {index.stretch, index.point + 1};
    return {index.stretch + 1, 0};
}

std::size_t LineInPixels::count(PointIndex from, PointIndex to) const {
    std::size_t points = to.point;
    for (std::size_t k = from.stretch; k < to.stretch; ++k) points += stretches_[k].x.size();
    return points - from.point;
}

PointIndex LineInPixels::first_at(double position, PointIndex from) const {
    double const limit = across_.value_at(position);
    auto const is_passed = [&](Stretch const& stretch) {
        std::size_t const last = stretch.x.size() - 1;
        return stretch.is_even ? x(stretch, last) < position : stretch.x[last] < limit;
    };
    while (!is_end(from) && is_passed(stretches_[from.stretch])) from = {from.stretch + 1, 0};
    if (is_end(from)) return from;
    Stretch const& stretch = stretches_[from.stretch];
    auto const values = stretch.x;
    if (stretch.is_even) {
        double const point = stretch.step == 0 ? 0 : std::ceil((position - stretch.start) / stretch.step);
        if (point > static_cast<double>(from.point))
            from.point = std::min(values.size() - 1, static_cast<std::size_t>(point));
        return from;
    }
    if (!(values[from.point] < limit)) return from;
    std::size_t low = from.point, step = 1; // never there
    for (; low + step < values.size() && values[low + step] < limit; step *= 2) low += step;
    auto const begin = values.begin();
    auto const found =
        std::lower_bound(begin + static_cast<std::ptrdiff_t>(low) + 1,
                         begin + static_cast<std::ptrdiff_t>(std::min(low + step, values.size())), limit);
    return {from.stretch, static_cast<std::size_t>(found - begin)};
}

} // namespace qv::render
