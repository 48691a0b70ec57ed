// What levels a line has in upright bars much narrower than a pixel.
#pragma once

#include "render/lines/nearest_rows.h"
#include "render/lines/rising_line.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace qv::render {

/// Some columns of a page, each cut into 160 bars. Of a line that rises in x a bar keeps the lowest and the
/// highest level, so no place of the line is off by more than half a bar: that changes no coverage by more
/// than 1 of 255.
class FineColumns {
public:
    static constexpr int bars_per_pixel = 160;
    /// Points that lie as close together across may share one place in the middle of them.
    static constexpr double narrow = 0.006; // pixels

    /// Forgets all; the bars begin at a whole or half pixel.
    void start(double left, int columns);
    /// What follows is not linked with what came before.
    void end_line();
    /// A piece of the line, x rising.
    void add_segment(RowPlace from, RowPlace to);
    /// The lowest and highest level of points close together, to which the line leads on.
    void add_range(double x, double low, double high) {
        double const place = (x - left_) * bars_per_pixel;
        // Between two ranges that share no level lies a segment.
        if (place >= 0 && place < count_)
            extend(static_cast<int>(place), std::min(low, last_high_), std::max(high, last_low_));
        last_low_ = low;
        last_high_ = high;
    }
    /// What was added last is among the bars only after this.
    void finish() { put_current(); }

    /// Brings rows as near as the line is to the middle of a column, within `reach`.
    void approach(NearestRows& rows, double middle, double reach) const;

private:
    void extend(int bar, double low, double high) {
        if (bar != current_) {
            put_current();
            current_ = bar;
            current_low_ = low;
            current_high_ = high;
            return;
        }
        current_low_ = std::min(current_low_, low);
        current_high_ = std::max(current_high_, high);
    }
    void put_current();

    double left_ = 0;
    int count_ = 0;
    std::vector<float> low_, high_;       // of each bar; the other way round where nothing is
    double last_low_ = 0, last_high_ = 0; // to which a range is linked
    int current_ = -1;                    // the bar that the line has come to, and its levels
    double current_low_ = 0, current_high_ = 0;
};

} // namespace qv::render
