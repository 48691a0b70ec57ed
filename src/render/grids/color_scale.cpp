#include "render/grids/color_scale.h"

#include "base/convert.h"
#include "qvgraph/system_color.h"
#include "scale/drawn_range.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace qv::render {
namespace {

using document::Axis;

std::uint32_t opaque_pixel(Color color) {
    auto const bgr = static_cast<std::uint32_t>(plain_color(color));
    return 0xFF000000U | (bgr & 0xFF) << 16 | (bgr & 0xFF00) | (bgr >> 16 & 0xFF);
}

} // namespace

Axis const* color_axis_of(document::Graph const& graph, document::DataSet const& set) {
    if (set.ColorAxisIndex <= 0 || set.ColorAxisIndex >= graph.NumAxes()) return nullptr;
    Axis const& axis = at(graph.Axes, set.ColorAxisIndex);
    return axis.AxisXY == document::AxisKind::Color ? &axis : nullptr;
}

ColorScale::ColorScale(Axis const* bar, document::Extent const& values)
    : map_(color_map(bar ? bar->AxisColors : "")), is_log_(bar && bar->AxisLog) {
    double first = values.empty() ? 0 : values.low, last = values.empty() ? 1 : values.high;
    if (bar) {
        const scale::DrawnRange range = scale::drawn_range(*bar);
        first = range.first;
        last = range.last;
    }
    is_log_ = is_log_ && first > 0 && last > 0;
    start_ = on_scale(first);
    double const span = on_scale(last) / 2 - start_ / 2; // the whole may be more than there is
    if (span != 0 && std::isfinite(span))
        factor_ = ColorMap::size / span / 2;
    else
        start_ -= 0.5, factor_ = ColorMap::size; // one value has the colour of the middle
}

ColorRanks::ColorRanks(ColorScale const& scale, std::uint32_t missing_pixel) {
    std::array<std::uint16_t, ColorMap::size> by_rank{}; // levels from the least
    std::iota(by_rank.begin(), by_rank.end(), std::uint16_t{0});
    if (scale.falls()) std::ranges::reverse(by_rank);
    if (scale.map().order == ColorOrder::Diverging) {
        auto const from_middle = [](std::uint16_t level) {
            return std::abs(2 * level - (static_cast<int>(ColorMap::size) - 1));
        };
        std::ranges::stable_sort(by_rank, {}, from_middle);
    }
    pixels_[0] = missing_pixel;
    for (std::size_t i = 0; i < by_rank.size(); ++i) {
        ranks_[by_rank[i]] = static_cast<std::uint16_t>(i + 1);
        pixels_[i + 1] = opaque_pixel(scale.map().colors[by_rank[i]]);
    }
}

} // namespace qv::render
