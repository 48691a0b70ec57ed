// Tick values: where the major and minor ticks of an axis lie on its scale.
#pragma once

#include <span>
#include <vector>

namespace qv::render {

enum class TickKind { Major, Minor };

struct Tick {
    double value = 0;
    TickKind kind = TickKind::Major;
};

struct TickScale {
    double low = 0;
    double high = 0;
    int major_divs = 0;
    int minor_divs = 0; // minor divisions of a major one; 1 gives no minor ticks
    bool is_log = false;
    /// The major ticks of a logarithmic axis are the powers of ten and nothing else, for labels counted off.
    bool majors_are_powers = false;
    /// Share of the axis that one pixel covers: minor ticks closer than this fall into one.
    double pixel_share = 0;
    /// Values given by the host; with major ones the scale is not divided.
    std::span<double const> given_majors = {};
    std::span<double const> given_minors = {};
};

/// The ticks in drawing order: each major tick, then the minor ones that follow it. A linear axis has one
/// major tick more than it has divisions and one beyond. A logarithmic axis has a major tick at each power of
/// ten from the one at or below its low end, and minor ones at its multiples; where there are more powers
/// than divisions, at each second, third, ... power; where fewer than two powers lie in the range, at 1, 2
/// and 5 times a power or at round steps, so that there are always two. Given ticks come as they are, the
/// major ones first. Ticks outside the range are included as far as their labels count; the drawing leaves
/// them out.
std::vector<Tick> axis_ticks(TickScale const& scale);

} // namespace qv::render
