// ColumnBand: a strip of a coverage mask stored column by column, where steep lines are long runs of
// neighbouring bytes. A noisy curve of a million points is made of such lines.
#pragma once

#include "raster/capsule.h"
#include "raster/coverage_mask.h"

#include <array>
#include <span>
#include <vector>

namespace qv::raster {

/// Part of a steep line away from its ends: coverage = clamp(reach - distance, 0, 1).
struct SteepLine {
    double x, y;             // a point of the line, pixels
    double along_x, along_y; // unit vector
    double reach;            // at most `largest_reach`
    int top, bottom;         // rows from top to bottom - 1

    static constexpr double largest_reach = 4; // pixels, so that distances fit 16 bits
    static constexpr double flattest = 4;      // rows down for one pixel across, at least
};

/// An upright line with round ends.
struct UprightLine {
    double x, top, bottom; // pixels
    double reach;          // at most `SteepLine::largest_reach`
};

class ColumnBand {
public:
    /// Collects lines for this mask and clip until `flush`.
    void begin(CoverageMask& mask, PixelBox const& clip);
    /// The pixels of a line within a box, which lies in the clip. False, with nothing done, when the whole
    /// line spans more columns than the band has.
    bool cover(SteepLine const& line, PixelBox const& box);
    void cover(UprightLine const& line, PixelBox const& box);
    /// For boxes that the line crosses in a few columns.
    void cover(Capsule const& line, PixelBox const& box);
    /// Pixels of a column from `top` on.
    void cover(int x, int top, std::span<std::uint8_t const> coverage);
    /// Raises the mask to what was collected.
    void flush();

private:
    static constexpr int columns = 64;
    static constexpr int group = 16; // columns and rows that move to the mask together
    using Block = std::array<std::uint8_t, std::size_t{group} * group>;

    struct Rows {
        int top;
        int bottom;
    };
    std::uint8_t* column(int x) {
        return bytes_.data() + static_cast<std::ptrdiff_t>(x - first_column_) * height_;
    }
    void move_to(int left, int right);
    void touch(int left, int right, Rows rows);
    void flush_group(int group_column, Rows rows);
    void raise_block(int x, int top, Block const& block);

    CoverageMask* mask_ = nullptr;
    PixelBox clip_;
    int first_column_ = 0;
    int height_ = 0; // bytes a column: rows from clip_.top on, and room for whole groups
    std::vector<std::uint8_t> bytes_;
    std::array<Rows, columns / group> touched_{}; // from clip_.top on
};

} // namespace qv::raster
