// How far what a graph's data sets show reaches along its axes.
#pragma once

#include "document/ControlState.h"

#include <cmath>
#include <cstdint>
#include <vector>

namespace qv::render {

/// Along one axis.
struct Reach {
    document::Extent extent;   // of points, error bars, bars and functions; positive on a logarithmic axis
    std::vector<double> bases; // values at which bars begin
    double room_low = 0; // how much of the axis, as a share, bars need beside their points for their width
    double room_high = 0;

    bool has_base_at(double value) const;
    void join(Reach const& other);
};

/// One of the two axes of a data set, and what of it is to be shown. Values without a place on the axis do
/// not count.
struct AxisReach {
    document::Axis const& axis;
    Reach& reach;

    bool has_place(double value) const { return std::isfinite(value) && (!axis.AxisLog || value > 0); }
    bool has_place(document::Extent const& extent) const { return !axis.AxisLog || extent.low > 0; }
    void include(double value) const {
        if (has_place(value)) reach.extent.include(value);
    }
    /// The same, and no room is left beyond this value.
    void stand_on(double base) const {
        include(base);
        reach.bases.push_back(base);
    }
};

/// Of all data sets that are not hidden, by axis. A point counts where both its coordinates
/// have a place, stacked bars with their stacked ends. Bars without a base value count from 0 where none is
/// negative.
std::vector<Reach> reaches_of_points(document::ControlState const& state, document::Graph const& graph);

/// Takes in the functions drawn on an axis: on an x axis their ends, on a y axis their values along the full
/// range of their x axis.
void include_functions(document::ControlState& state, document::Graph const& graph, std::int16_t axis,
                       Reach& reach);

} // namespace qv::render
