// The pages whose redraws are measured: 1200 x 800 white pixels, axes with ticks, labels and the titles x and
// y, no grid, no legend, automatic ranges.
#pragma once

#include "qvgraph/HeadlessHost.h"

#include <cstddef>
#include <memory>

namespace qv::bench {

using Page = std::unique_ptr<headless::HeadlessHost>;

enum class Drawing { Smooth, Flat };

constexpr std::size_t set_count = 100;
constexpr std::size_t points_per_set = 10000;
constexpr std::size_t points_per_graph = 1000;

/// A blue one-pixel line of this many points.
Page line_page(std::size_t count, Drawing drawing);

/// Blue filled circles 6 pixels wide, one a point.
Page symbols_page(std::size_t count, Drawing drawing);

/// The points of `line_page` as an area, filled pale blue below a blue line, and as a smooth curve.
Page area_page(std::size_t count, Drawing drawing);
Page spline_page(std::size_t count, Drawing drawing);

/// As many bars without edge, half of them standing on the other half.
Page stacked_bars_page(std::size_t count, Drawing drawing);

/// A histogram of the values of `line_page`, box plots and a strip of them in ten groups.
Page histogram_page(std::size_t count, Drawing drawing);
Page boxes_page(std::size_t count, Drawing drawing);
Page strip_page(std::size_t count, Drawing drawing);

/// 100 lines of 10 000 points, each set in a colour of its own and 0.05 above the one before.
Page many_sets_page(Drawing drawing);

/// The line of `line_page` with x from 49.5 to 50.5; the y range is that of all points.
Page zoomed_page(std::size_t count, Drawing drawing);

/// Twelve graphs of 1000 points in four columns and three rows.
Page twelve_graphs_page(Drawing drawing);

} // namespace qv::bench
