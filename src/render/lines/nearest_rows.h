// How far the rows of a column of pixels lie from a line, as far as it is known, and what that covers.
#pragma once

#include "render/lines/rising_line.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace qv::render {

/// Rows of a column of pixels; the first is row 0. Places are given across from the middle of the column.
class NearestRows {
public:
    /// As many rows, further from a line than a pen of this reach, at which it covers nothing.
    NearestRows(int rows, double reach);

    /// Brings rows as near as a segment is: all, or those below (above) a level that was reached before.
    void approach(RowPlace from, RowPlace to);
    void approach_below(double level, RowPlace from, RowPlace to);
    void approach_above(double level, RowPlace from, RowPlace to);
    /// The same for an upright line at a distance across, from level to level.
    void approach_bar(double away, double top, double bottom);
    void approach_bar_below(double level, double away, double bottom);
    void approach_bar_above(double level, double away, double top);

    /// The rows that something has come near to.
    int first() const { return first_; }
    int past() const { return past_; }
    bool empty() const { return first_ >= past_; }
    /// Appends the coverage of these rows, and forgets them.
    void take_coverage(std::vector<std::uint8_t>& coverage);

private:
    /// Rows from `first` to `past` - 1.
    struct Rows {
        int first, past;
        bool empty() const { return first >= past; }
    };
    Rows seen(Rows rows) const;
    void approach(Rows rows, RowPlace from, RowPlace to);
    void approach_bar(Rows rows, double away, double top, double bottom);
    void touch(Rows rows);

    int rows_;
    double reach_;
    int first_, past_ = 0;
    std::vector<float> squared_; // distances; more than there are rows, as they are computed in groups
};

} // namespace qv::render
