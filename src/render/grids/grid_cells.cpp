#include "render/grids/grid_cells.h"

#include "render/grids/color_scale.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace qv::render {
namespace {

using document::DataSet;
using document::Extent;
using document::Grid;
using document::PointBlock;
using document::PointStore;

bool counts(double value, bool is_log) {
    return std::isfinite(value) && (!is_log || value > 0);
}

struct Extents {
    Extent x, y;
};

void include(Extent& extent, Extent const& other) {
    extent.include(other.low);
    extent.include(other.high);
}

Extents extents_of(PointStore const& points, GridScales const& scales) {
    Extents found;
    for (PointBlock const& block : points.blocks()) {
        if (block.size() == 0 || block.x_extent().empty()) continue;
        bool const positive =
            (!scales.x_is_log || block.x_extent().low > 0) && (!scales.y_is_log || block.y_extent().low > 0);
        if (positive && !block.was_cut()) {
            include(found.x, block.x_extent());
            include(found.y, block.y_extent());
            continue;
        }
        for (std::size_t i = 0; i < block.size(); ++i)
            if (counts(block.x()[i], scales.x_is_log) && counts(block.y()[i], scales.y_is_log)) {
                found.x.include(block.x()[i]);
                found.y.include(block.y()[i]);
            }
    }
    return found;
}

/// The bins along one axis.
class Bins {
public:
    Bins(Extent extent, bool is_log, std::size_t count) : is_log_(is_log), last_(count - 1) {
        constexpr double half_a_unit = 0.5, half_a_decade = 3.1622776601683795;
        if (extent.low == extent.high && is_log) {
            extent = {extent.low / half_a_decade, extent.high * half_a_decade};
        } else if (!(extent.low < std::nextafter(extent.high, extent.low))) {
            double const room = std::max(half_a_unit, std::abs(extent.low) * 1e-9);
            extent = {extent.low - room, extent.high + room};
        }
        edges.resize(count + 1);
        double const low = on_scale(extent.low), high = on_scale(extent.high);
        for (std::size_t i = 0; i <= count; ++i) {
            double const share = static_cast<double>(i) / static_cast<double>(count);
            double const place = low * (1 - share) + high * share;
            edges[i] = is_log ? std::exp(place) : place;
        }
        edges.front() = extent.low;
        edges.back() = extent.high;
        start_ = low;
        // Halves, because their difference may be more than there is.
        factor_ = static_cast<double>(count) / 2 / (high / 2 - low / 2);
    }

    bool holds(double value) const { return value >= edges.front() && value <= edges.back(); }
    // The product may be off by a rounding; the edges decide.
    std::size_t at(double value) const {
        double const place = (on_scale(value) - start_) * factor_;
        std::size_t index = std::min(static_cast<std::size_t>(std::max(place, 0.0)), last_);
        if (value < edges[index])
            --index;
        else if (index < last_ && value >= edges[index + 1])
            ++index;
        return index;
    }

    std::vector<double> edges;

private:
    double on_scale(double value) const { return is_log_ ? std::log(value) : value; }

    bool is_log_;
    std::size_t last_;
    double start_ = 0;
    double factor_ = 0;
};

std::size_t bin_count(std::int16_t asked, std::size_t points) {
    constexpr std::size_t fewest = 5, most = 256, most_asked = 4096;
    if (asked > 0) return std::min(static_cast<std::size_t>(asked), most_asked);
    return std::clamp(static_cast<std::size_t>(std::lround(std::cbrt(static_cast<double>(points)))), fewest,
                      most);
}

bool are_up_to_date(GridMemory const& memory, DataSet const& set, GridScales const& scales) {
    if (set.grid) return !memory.are_bins && memory.cells == set.grid;
    return memory.cells && memory.are_bins && memory.scales == scales && memory.size == set.points.size()
           && memory.dropped == set.points.dropped() && memory.bins_x == set.GridBinsX
           && memory.bins_y == set.GridBinsY;
}

GridMemory* known_memory(DataSet const& set) {
    return dynamic_cast<GridMemory*>(set.derived.get());
}

} // namespace

std::int16_t GridKind::third_axis(document::Graph const& graph, document::DataSet const& set) const {
    return color_axis_of(graph, set) ? set.ColorAxisIndex : std::int16_t{-1};
}

void GridKind::include_third(document::DataSet const& set, AxisReach const& colors) const {
    document::Extent const& extent = grid_memory(set).cells->extent_on(colors.axis.AxisLog);
    if (!extent.empty()) include_range(colors, extent);
}

void include_range(AxisReach const& along, Extent const& range) {
    for (double const end : {range.low, range.high}) {
        along.include(end);
        if (range.low != range.high) along.stand_on(end);
    }
}

void use_minus_of_page(document::PageSettings const& page, std::vector<std::string>& numbers) {
    if (!page.RoundTicks) return;
    constexpr char const* minus = "\u2212";
    for (std::string& number : numbers)
        if (number.starts_with('-')) number.replace(0, 1, minus);
}

double middle_of(double edge, double other_edge, bool is_log) {
    if (!is_log) return edge / 2 + other_edge / 2;
    if (!(edge > 0 && other_edge > 0)) return std::numeric_limits<double>::quiet_NaN();
    return std::sqrt(edge) * std::sqrt(other_edge);
}

Grid binned(PointStore const& points, GridScales const& scales, std::int16_t bins_x, std::int16_t bins_y) {
    Grid grid;
    const Extents extents = extents_of(points, scales);
    if (extents.x.empty()) return grid;
    Bins x(extents.x, scales.x_is_log, bin_count(bins_x, points.size()));
    Bins y(extents.y, scales.y_is_log, bin_count(bins_y, points.size()));
    std::size_t const columns = x.edges.size() - 1;
    grid.values.assign(columns * (y.edges.size() - 1), 0);
    for (PointBlock const& block : points.blocks()) {
        auto const xs = block.x(), ys = block.y(), weights = block.extra(0);
        for (std::size_t i = 0; i < xs.size(); ++i) {
            if (!x.holds(xs[i]) || !y.holds(ys[i])) continue; // nor are those that are not finite
            bool const weighs = !weights.empty() && !std::isnan(weights[i]);
            grid.values[y.at(ys[i]) * columns + x.at(xs[i])] += weighs ? weights[i] : 1;
        }
    }
    grid.x_edges = std::move(x.edges);
    grid.y_edges = std::move(y.edges);
    grid.measure();
    return grid;
}

GridMemory& grid_memory(DataSet const& set, GridScales const& scales) {
    GridMemory* memory = known_memory(set);
    if (memory && are_up_to_date(*memory, set, scales)) return *memory;
    auto made = std::make_unique<GridMemory>();
    made->scales = scales;
    if (set.grid) {
        made->cells = set.grid;
    } else {
        made->are_bins = true;
        made->size = set.points.size();
        made->dropped = set.points.dropped();
        made->bins_x = set.GridBinsX;
        made->bins_y = set.GridBinsY;
        made->cells = std::make_shared<Grid>(binned(set.points, scales, set.GridBinsX, set.GridBinsY));
    }
    memory = made.get();
    set.derived = std::move(made);
    return *memory;
}

GridMemory& grid_memory(DataSet const& set) {
    GridMemory const* const memory = known_memory(set);
    return grid_memory(set, memory ? memory->scales : GridScales{});
}

} // namespace qv::render
