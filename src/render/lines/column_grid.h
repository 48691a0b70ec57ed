// The columns of pixels of a page, as far as they can be seen.
#pragma once

#include "surface/whole_pixel.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace qv::render {

/// Columns are whole pixels; what lies left and right of the visible range is one column each.
class ColumnGrid {
public:
    /// The visible range in twips.
    ColumnGrid(double twips_per_pixel, double low, double high)
        : twips_per_pixel_(twips_per_pixel), first_(whole_pixel(low / twips_per_pixel) - 1),
          last_(whole_pixel(high / twips_per_pixel) + 1) {}

    /// Column of a page coordinate. A pixel's column begins half a pixel before its centre, as the rounding
    /// to whole pixels has it.
    std::int64_t column(double x) const {
        return std::clamp<std::int64_t>(whole_pixel(x / twips_per_pixel_), first_, last_);
    }
    /// Page coordinate at which a column begins.
    double start(std::int64_t column) const {
        if (column <= first_) return -HUGE_VAL;
        if (column > last_) return HUGE_VAL;
        return (static_cast<double>(column) - 0.5) * twips_per_pixel_;
    }
    double centre(std::int64_t column) const { return static_cast<double>(column) * twips_per_pixel_; }
    /// The column with this number, or the one nearest to it that can be seen.
    std::int64_t nearest_visible(double number) const {
        double const first = static_cast<double>(first_) + 1, last = static_cast<double>(last_) - 1;
        return static_cast<std::int64_t>(std::max(first, std::min(number, last)));
    }
    bool is_visible(std::int64_t column) const { return column > first_ && column < last_; }

private:
    double twips_per_pixel_;
    std::int64_t first_;
    std::int64_t last_;
};

} // namespace qv::render
