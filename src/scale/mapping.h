// Frame layout, and the way from data values to page positions and back.
#pragma once

#include "document/ControlState.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace qv::scale {

/// Lays out the current graph's frame and the position of its legend.
void CalcBorders(document::ControlState& state);

/// An axis's own scale reckoned from one of its values: the way from there to another value, on a logarithmic
/// axis the ln of their ratio. Narrow ranges of large values stay exact.
struct ScaleFrom {
    double reference = 0;
    bool is_log = false;

    double operator()(double value) const { return is_log ? log_of_ratio(value) : value - reference; }
    double value_at(double way) const {
        if (!is_log) return reference + way;
        double const ratio = std::exp(way);
        return std::isfinite(ratio) ? reference * ratio : std::exp(std::log(reference) + way);
    }

private:
    double log_of_ratio(double value) const {
        constexpr double least = 1e-300, largest = 1e300; // beyond them a ratio loses digits
        double const ratio = value / reference;
        return ratio > least && ratio < largest ? std::log(ratio) : std::log(value) - std::log(reference);
    }
};

/// The straight line between values on the axis's own scale (ln on a logarithmic axis) and page positions in
/// twips, both ways. What PosX and PosY compute, ready for loops.
struct AxisMap {
    double start = 0;  // position of `first`
    double length = 0; // twips from there to the position of `last`; negative leftward and upward
    double first = 0;  // the axis's range
    double last = 0;
    double factor = 0; // twips a unit of the scale
    bool is_log = false;
    bool valid = false;  // false: no value can be mapped (empty range, or a logarithmic one not positive)
    double off_page = 0; // where a value lands that cannot be mapped, one that is not a number included

    static constexpr double farthest = 1e300; // an overflowing product is still a place, to which lines lead

    double operator()(double value) const {
        if (!valid || (is_log && !(value > 0))) return off_page;
        double const position = start + factor * ScaleFrom{first, is_log}(value);
        if (std::isnan(position)) return off_page;
        return std::clamp(position, -farthest, farthest);
    }

    /// Where between the two ends a position lies: 0 at `first`, 1 at `last`.
    double share_at(double position) const { return (position - start) / length; }

    /// The value at a position, in double precision and exact at both ends; not a finite number where there
    /// is none.
    double value_at(double position) const {
        if (!valid) return std::numeric_limits<double>::quiet_NaN();
        double const share = share_at(position);
        double const span = length / factor;
        return share <= 0.5 ? ScaleFrom{first, is_log}.value_at(share * span)
                            : ScaleFrom{last, is_log}.value_at((share - 1) * span);
    }
};
AxisMap x_map(document::Graph const& graph, document::Axis const& axis);
AxisMap y_map(document::Graph const& graph, document::Axis const& axis);

/// Remembers the scales on which the page shows the axes of a graph that is being drawn.
void keep_shown_scales(document::Graph& graph);
/// The map of the page as it is shown, whatever was changed since; of an axis that was never drawn, the map
/// it would be drawn with. What a place on the page stands for is told by this one alone.
AxisMap shown_map(document::Graph const& graph, document::Axis const& axis);

/// Page position in twips of a value on the current graph's selected x (y) axis, as a 32-bit float. A value
/// that cannot be mapped lies one axis length outside the plot area; an x position beyond 1e10 becomes 10000.
void PosX(document::ControlState& state, double value, float& position);
void PosY(document::ControlState& state, double value, float& position);

/// The data value at a page position, on the given graph's selected x (y) axis; reversed axes are read the
/// way they are drawn. The y value has the precision of a 32-bit float, unless the axis's range does not
/// fit into one. An axis without length is fault 11; a failure is reported and leaves `value` alone.
void GetXCoord(document::ControlState& state, std::int16_t graph, float position, double& value);
void GetYCoord(document::ControlState& state, std::int16_t graph, float position, double& value);

/// How far the values of two places on an axis are apart that lie this many twips from one another, one of
/// them that of `value` and the other towards zero where the axis is logarithmic; 0 where there is no scale.
double step_at(document::Axis const& axis, double value, double twips);

} // namespace qv::scale
