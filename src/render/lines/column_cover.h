// What a smooth line without gaps covers, computed column of pixels by column.
#pragma once

#include "qvgraph/DrawSurface.h"
#include "render/lines/column_grid.h"
#include "render/lines/fine_columns.h"
#include "render/lines/nearest_rows.h"
#include "render/lines/rising_line.h"

#include <cstdint>
#include <vector>

namespace qv::render {

/// What of a page can be seen, in rows of pixels.
struct SeenRows {
    int first, count;
};

/// Seen from the centre of a pixel, the nearest place of a line in any row is where the line, followed away
/// from that centre, reaches the row for the first time. So from the middle of each column the line is
/// followed to both sides, the nearer side first, and only what leaves the levels reached brings rows nearer.
/// Where very many points lie in a column, what is followed are narrow bars of it.
class ColumnCover {
public:
    static constexpr double widest_reach = 8; // pixels; beyond, too many columns see each segment

    /// A pen covers nothing any more at `reach` pixels.
    ColumnCover(DrawSurface& surface, ColumnGrid const& grid, SeenRows rows, double reach);
    /// Draws a line of at least one point.
    void draw(RisingLine const& line);

private:
    /// Columns of a line in pixels, which may be seen in a mirror.
    struct Columns {
        std::int64_t first, past;
    };
    Columns columns_of(LineInPixels const& line) const;
    void draw_points(LineInPixels const& line, Columns const& columns, PointIndex from, PointIndex to);
    void draw_bars(LineInPixels const& line, Columns const& columns, PointIndex from, PointIndex to);
    void follow(std::size_t ahead, double middle);
    void hand_over(std::int64_t column);
    void hand_over_all();

    DrawSurface& surface_;
    ColumnGrid const& grid_;
    PixelGrid pixels_;
    double reach_;
    NearestRows nearest_;
    FineColumns bars_;
    std::vector<double> across_, down_; // places of points in pixels
    std::vector<PixelColumn> columns_;
    std::vector<std::uint8_t> coverage_;
};

} // namespace qv::render
