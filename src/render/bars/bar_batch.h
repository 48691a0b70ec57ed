// Very many bars of one colour: what they cover together, painted once.
#pragma once

#include "qvgraph/DrawSurface.h"
#include "qvgraph/geometry.h"
#include "render/bars/bars.h"

#include <vector>

namespace qv::render {

/// Counts for each pixel of a box on the page how many bars begin and end there, so that the cost of a bar is
/// its width in pixels, whatever its length, and no pixel is painted twice.
class BarBatch {
public:
    /// Whether so many bars are better drawn together: they must share the pixels across them.
    static bool pays(std::size_t bars, DrawSurface const& surface, Box const& visible, bool horizontal);

    BarBatch(DrawSurface& surface, Box const& visible, bool horizontal);

    void add(BarBox const& box);
    /// Paints all that was added.
    void draw(Color color);

private:
    /// Whole pixels, both ends included.
    struct Span {
        int first = 0, last = -1;
        bool empty() const { return last < first; }
        bool touches(Span const& other) const { return first <= other.last + 1 && other.first <= last + 1; }
        bool operator==(Span const&) const = default;
    };
    static Span pixels(double from, double to, double twips_per_pixel, Span const& within);
    void count_pending();
    void paint(int across, Span along, Color color);

    DrawSurface& surface_;
    bool horizontal_;
    double x_unit_, y_unit_; // twips per pixel
    Span across_;            // the visible pixels across the bars, and along them
    Span along_;
    std::vector<int> changes_; // in the number of bars from one pixel to the next, one row a pixel across
    Span pending_across_;      // neighbouring bars in the same pixels that are still growing together
    Span pending_along_;
};

} // namespace qv::render
