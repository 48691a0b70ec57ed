// Where the cells of a grid lie on the page, along one axis.
#pragma once

#include "scale/mapping.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace qv::render {

/// A position on the page, twips; a value that is not positive lies beyond the lower end of a logarithmic
/// axis.
double place_of_edge(scale::AxisMap const& map, double edge);

/// The cell whose edges hold a value; a value on an edge belongs to the cell that begins there.
std::optional<std::size_t> cell_at(std::span<double const> edges, double value);

/// Pixels `first` to `end - 1` of a surface.
struct PixelSpan {
    int first = 0;
    int end = 0;
    int size() const { return end > first ? end - first : 0; }
};

/// The pixels of each cell between a grid's edges: from the pixel of one edge to that before the next, and at
/// least one inside the window's outermost ones, which the plot area's frame covers, so that none vanishes.
/// `window` is what can be seen; a last edge on its last pixel takes that in.
class CellPixels {
public:
    CellPixels(scale::AxisMap const& map, std::span<double const> edges, double twips_per_pixel,
               PixelSpan window);

    PixelSpan of(std::size_t cell) const;
    /// The cells of each pixel of the window, from the first to the last; first above last for none.
    struct Cells {
        std::int32_t first = 0;
        std::int32_t last = -1;
        bool operator==(Cells const&) const = default;
    };
    std::vector<Cells> cells_of_pixels() const;
    /// How many cells can be seen, and whether no two of them share a pixel.
    struct Seen {
        std::size_t count = 0;
        bool are_apart = true;
    };
    Seen seen() const;

private:
    std::vector<int> edges_;
    PixelSpan window_;
};

} // namespace qv::render
