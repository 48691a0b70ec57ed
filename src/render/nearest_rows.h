// How far the rows of a column of pixels lie from a line, as far as it is known, and what that covers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace qv::render {

/// A place in pixels, across from the middle of some column, down from the first row.
struct RowPlace {
    double x, y;
};

/// Rows of a column of pixels; the first is row 0.
class NearestRows {
public:
    /// As many rows, further from a line than any pen reaches.
    void resize(int rows);
    /// Brings rows from `first` to `past` - 1 as near as a segment is; the column's middle lies at `x`.
    void approach(RowPlace from, RowPlace to, double x, int first, int past);

    /// The same for an upright line at a distance across, from `top` to `bottom`.
    void approach(double away, double top, double bottom, int first, int past);
    /// Whether any of these rows is farther than this squared distance.
    bool is_any_farther(int first, int past, float squared) const;

    /// The rows that something has come near to.
    int first() const { return first_; }
    int past() const { return past_; }
    bool empty() const { return first_ >= past_; }
    /// Appends the coverage of these rows by a pen that covers nothing at `reach` pixels, and forgets them.
    void take_coverage(double reach, std::vector<std::uint8_t>& coverage);

private:
    void touch(int first, int past);

    int rows_ = 0;
    int first_ = 0, past_ = 0;
    std::vector<float> squared_; // distances; more than there are rows, as they are computed in groups
};

} // namespace qv::render
