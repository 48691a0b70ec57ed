// The ranges that axes show where they are not simply those of all data.
#pragma once

#include "qvplot/options.h"
#include "qvplot/series.h"

#include <limits>
#include <optional>

namespace qv::plot {

struct Extent {
    double low = std::numeric_limits<double>::infinity();
    double high = -std::numeric_limits<double>::infinity();

    void include(double value) {
        if (value < low) low = value;
        if (value > high) high = value;
    }
    double span() const { return high - low; }
    bool operator==(Extent const&) const = default;
};

/// The least distance between two bars of one series; 0 when no series has two.
double bar_distance(PlotData const& data);

/// What the x axis shows: what is asked for, the whole range of functions alone, or bars with half their
/// distance at each end. Nothing where the axis fits its data by itself.
std::optional<Extent> x_range_to_show(PlotData const& data, PlotOptions const& options);

/// What a y axis shows where that is not all that its data sets hold: the part that a range of x leaves, or
/// the part of functions without their poles. Nothing where the axis fits its data by itself.
std::optional<Extent> y_range_to_show(PlotData const& data, PlotOptions const& options, bool second);

} // namespace qv::plot
