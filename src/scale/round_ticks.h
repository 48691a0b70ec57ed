// Ticks at round values, chosen so that their labels have room and say no more digits than they need.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace qv::scale {

/// What is shown of an axis; the ends in any order.
struct TickSpan {
    double first = 0;
    double last = 0;
    bool is_log = false;
    bool operator==(TickSpan const&) const = default;
};

/// The room for labels along an axis. All lengths in one unit, whichever.
struct LabelRoom {
    double length = 0;      // of the axis
    double before_low = 0;  // how far labels may reach beyond the end with the lower value
    double beyond_high = 0; // and beyond the other
    double line_height = 1; // of the labels' font
    double gap = 0;         // between labels, at least
    double spacing = 0;     // from one tick to the next, at least, where there is room for two
    /// How much of the axis a label takes.
    std::function<double(std::string_view label)> extent;
};

/// How numbers are written.
struct NumberStyle {
    bool si_prefix = false;   // 20 k for 20000
    bool with_offset = false; // what all numbers share is taken out of them
    /// Writes them in place of all that, if there is such a function.
    std::function<std::string(double value)> text = {};
};

struct RoundTick {
    double value = 0;
    bool is_major = true;
    std::string label; // empty: none
};

struct RoundTicks {
    std::vector<RoundTick> ticks; // major ones first, each kind ascending
    std::string offset;           // is to be added to every label; empty: nothing
    bool marked_up = false;       // labels and offset hold markup (10^{3}), as written here
};

/// Chooses the ticks: on a linear axis at multiples of 1, 2, 2.5 or 5 times a power of ten; on a logarithmic
/// one at every or every n-th power of ten, over less than two powers at 1, 2 and 5 times a power, over less
/// than one at round steps. Two to eleven of them have labels, which keep apart and inside their room and
/// differ; where there is room for less, the outermost two that have some, or one. The step of a linear axis
/// follows from its span and the room, so ticks stay while the axis is moved, until the numbers outgrow it.
/// A span too narrow for round numbers has ticks at its ends.
RoundTicks round_ticks(TickSpan const& span, LabelRoom const& room, NumberStyle const& style);

struct RoundRange {
    double low = 0;
    double high = 0;
    bool is_log = false;
};

/// Widens the extent of data to a fraction of a tick step; over several powers of ten, on a logarithmic axis,
/// to 1, 2 or 5 times one. Equal ends get some span. A logarithmic range that is not positive at its upper
/// end becomes linear, one that is not at its lower end begins two powers of ten below the upper. Ends that
/// are not finite, or too far apart to be told, are fault 6.
RoundRange round_range(RoundRange data);

} // namespace qv::scale
