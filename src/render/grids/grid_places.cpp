#include "render/grids/grid_places.h"

#include "surface/whole_pixel.h"

#include <algorithm>
#include <cstdlib>
#include <functional>

namespace qv::render {

double place_of_edge(scale::AxisMap const& map, double edge) {
    if (!map.is_log || edge > 0 || !map.valid) return map(edge);
    return map.factor > 0 ? -scale::AxisMap::farthest : scale::AxisMap::farthest;
}

std::optional<std::size_t> cell_at(std::span<double const> edges, double value) {
    if (edges.size() < 2) return std::nullopt;
    bool const rises = edges.front() < edges.back();
    auto const behind = rises ? std::ranges::upper_bound(edges, value)
                              : std::ranges::upper_bound(edges, value, std::greater());
    auto index = behind - edges.begin();
    if (value == edges.back()) --index;
    if (index < 1 || index >= static_cast<std::ptrdiff_t>(edges.size())) return std::nullopt;
    return static_cast<std::size_t>(index - 1);
}

CellPixels::CellPixels(scale::AxisMap const& map, std::span<double const> edges, double twips_per_pixel,
                       PixelSpan window)
    : window_(window) {
    edges_.reserve(edges.size());
    for (double const edge : edges) edges_.push_back(whole_pixel(place_of_edge(map, edge) / twips_per_pixel));
    if (edges_.empty()) return;
    int& last = edges_.front() < edges_.back() ? edges_.back() : edges_.front();
    if (last == window.end - 1) last = window.end;
}

PixelSpan CellPixels::of(std::size_t cell) const {
    auto [first, end] = std::minmax({edges_[cell], edges_[cell + 1]});
    end = std::max(end, first + 1);
    // The outermost pixels lie below the frame: a cell that has one alone of them has its neighbour too.
    bool const is_single = end - first == 1;
    if (is_single && first == window_.first)
        ++end;
    else if (is_single && end == window_.end)
        --first;
    return {std::max(first, window_.first), std::min(end, window_.end)};
}

std::vector<CellPixels::Cells> CellPixels::cells_of_pixels() const {
    std::vector<Cells> cells(static_cast<std::size_t>(window_.size()));
    for (std::size_t cell = 0; cell + 1 < edges_.size(); ++cell) {
        const PixelSpan pixels = of(cell);
        for (int pixel = pixels.first; pixel < pixels.end; ++pixel) {
            Cells& there = cells[static_cast<std::size_t>(pixel - window_.first)];
            if (there.last < there.first) there.first = static_cast<std::int32_t>(cell);
            there.last = static_cast<std::int32_t>(cell);
        }
    }
    return cells;
}

CellPixels::Seen CellPixels::seen() const {
    Seen seen;
    for (std::size_t cell = 0; cell + 1 < edges_.size(); ++cell) {
        if (of(cell).size() == 0) continue;
        ++seen.count;
        seen.are_apart &= std::abs(edges_[cell] - edges_[cell + 1]) > 1;
    }
    return seen;
}

} // namespace qv::render
