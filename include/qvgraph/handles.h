// Handles: a page in terms of graphs, axes, legends and data sets as values of their own, beside the members
// of qvGraph that act on what is selected. Both change the same document.
//
//   auto graph = page.graph("Weather");
//   auto celsius = graph.y_axis({.title = "°C"});
//   auto high = graph.line("high", {.axis = celsius, .color = 0x2850C8});
//   high.add(day, temperature);
//
// Handles select nothing and bring nothing to the front. They throw what fails, and raise GraphScaleChanged
// where the same change by the members of qvGraph does.
#pragma once

#include "qvgraph/geometry.h"
#include "qvgraph/options.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace qv {

class GraphHandle;

/// An axis of a graph. Its range is `from` and `to`; setting them makes an automatic axis fixed.
class QV_EXPORT AxisHandle : public AxisProperties {
public:
    bool is_x() const;         ///< an x axis, or else a y axis
    GraphHandle graph() const; ///< that it belongs to
    /// Puts the ticks at these values, as SetAxisTicks does; without major ones the axis is divided evenly
    /// again.
    void ticks(std::span<double const> major, std::span<double const> minor = {}) const;
};

/// The legend table of a graph.
class QV_EXPORT LegendHandle : public LegendProperties {};

/// A data set: points, a function, a text, or several of these. Its points widen the axes that it lies on.
class QV_EXPORT DataHandle : public DataProperties {
public:
    /// Appends a point. One that is not finite is kept, breaks a line and widens nothing.
    void add(double x, double y) const;
    /// `error` is half the length of its error bar, `id` a text at the point.
    void add(double x, double y, double error, std::string_view id = {}) const;
    /// Many points at once: columns of equal length, errors may be left out. GraphScaleChanged comes at most
    /// once.
    void add(std::span<double const> x, std::span<double const> y, std::span<double const> errors = {}) const;
    /// The same with up to four more columns, whose meaning is that of the data set's kind: for points the
    /// lengths of their error bars below, above, left and right of them. Columns left out say nothing.
    void add_columns(std::span<double const> x, std::span<double const> y, std::span<double const> extra1,
                     std::span<double const> extra2 = {}, std::span<double const> extra3 = {},
                     std::span<double const> extra4 = {}) const;
    /// Many values at one place, as histograms, box plots and strips take them: y at one x, where bars lie x
    /// at one y. A histogram needs no place. Values that are not finite are kept but counted nowhere.
    void add_values(std::span<double const> values, double at = 0) const;
    /// The edges between a histogram's bins, two or more finite values in rising order, fault 5 else; none
    /// let histogram_bin_width and histogram_bins decide again.
    void histogram_edges(std::span<double const> edges) const;
    /// From now on there are never more than this many points: after each addition, whoever makes it, the
    /// oldest are forgotten. 0 keeps all again. No axis changes.
    void keep_latest(Checked<std::int32_t> count) const;
    void clear() const;                           ///< forgets all points; no axis changes
    void drop(Checked<std::int32_t> count) const; ///< forgets this many of the oldest; no axis changes
    std::int32_t size() const;                    ///< number of points

    AxisHandle x_axis() const; ///< that it lies on
    AxisHandle y_axis() const; ///< that it lies on
    GraphHandle graph() const; ///< that it belongs to
};

/// A graph. What it makes goes on from nothing made before but for the next colour; the options say the rest.
class QV_EXPORT GraphHandle : public GraphProperties {
public:
    std::string title() const;                ///< its name
    void title(std::string_view title) const; ///< renames it
    /// Where its plot area lies on the page, twips, as it was drawn last; FitMargins decides it at drawing.
    Box plot_area() const;
    /// Fits its automatic axes to the data there are now, as FitAxes does: with `margin`, a share of the
    /// range, free at either end.
    void fit(double margin = 0.05) const;

    /// \name Axes and legend
    /// \{
    AxisHandle x_axis() const;                                    ///< the first x axis
    AxisHandle x_axis(AxisOptions const& options) const;          ///< the same, with this set
    AxisHandle y_axis() const;                                    ///< the first y axis
    AxisHandle y_axis(AxisOptions const& options) const;          ///< the same, with this set
    AxisHandle add_x_axis(AxisOptions const& options = {}) const; ///< one more
    AxisHandle add_y_axis(AxisOptions const& options = {}) const; ///< one more
    std::vector<AxisHandle> axes() const;                    ///< all, in the order in which they were made
    LegendHandle legend() const;                             ///< of the graph
    LegendHandle legend(LegendOptions const& options) const; ///< the same, with this set
    /// \}

    /// \name Data sets
    /// Each has a row in the legend table, unless its name is empty.
    /// \{

    DataHandle line(std::string_view name, DataOptions const& options = {}) const; ///< straight lines
    /// Symbols alone, of a shape of their own.
    DataHandle symbols(std::string_view name, DataOptions const& options = {}) const;
    /// Bars from 0 (bar_base_value), as wide as bar_width or, in millimetres, symbol_size says.
    DataHandle bars(std::string_view name, DataOptions const& options = {}) const;
    /// How the values of the column y are distributed: bars over bins along x, with .bar_horiz along y. Bins
    /// go by the rule of Freedman and Diaconis (On the Histogram as a Density Estimator, 1981), or as
    /// histogram_bins, histogram_bin_width or histogram_edges say; a bin holds its lower edge, the last one
    /// both.
    DataHandle histogram(std::string_view name, DataOptions const& options = {}) const;
    /// A box plot of the points of each x, with .bar_horiz of each y: quartiles with linear interpolation,
    /// whiskers to the last value within box_whiskers (1.5) times their distance, values beyond as symbols
    /// (Tukey, Exploratory Data Analysis, 1977). `add_columns` gives boxes whose numbers are known, each a
    /// point at its median with lower whisker, lower quartile, upper quartile and upper whisker.
    DataHandle boxes(std::string_view name, DataOptions const& options = {}) const;
    /// A symbol for each point, moved aside from its x, with .bar_horiz from its y, so that equal ones do not
    /// hide one another; how far follows from the point's number, at most half of group_width.
    DataHandle strip(std::string_view name, DataOptions const& options = {}) const;
    /// A line and what lies below it, filled.
    DataHandle area(std::string_view name, DataOptions const& options = {}) const;
    /// The curve of a formula in x, along the whole x axis or from formula_from to formula_to.
    DataHandle function(std::string_view name, std::string_view formula,
                        DataOptions const& options = {}) const;
    /// A text at a place: values on its axes or, with text_percent, percent of the plot area. No legend row.
    DataHandle text(std::string_view text, double x, double y, DataOptions const& options = {}) const;
    std::vector<DataHandle> data_sets() const; ///< all, in the order in which they were made
    /// The first data set of this legend text; an empty handle where there is none.
    DataHandle find(std::string_view legend) const;
    /// \}
};

} // namespace qv
