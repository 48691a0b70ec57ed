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
    bool is_x() const;         ///< an x axis, or else a y axis or a colour bar
    bool is_color_bar() const; ///< a colour bar
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
    /// For a heat map or contours: a matrix with one value a cell, row by row, the first row at y1. Cells
    /// divide x1 to x2 and y1 to y2 evenly; where both ends are 0, their middles stand at 0, 1, 2, ...
    /// Not-a-number is a cell without a value. Fault 5 for another number of values than there are cells.
    void grid(std::span<double const> values, Checked<std::int32_t> columns, Checked<std::int32_t> rows,
              double x1 = 0, double x2 = 0, double y1 = 0, double y2 = 0) const;
    /// The same for cells of unequal widths and heights: edges that all rise or all fall, one more than there
    /// are columns and one more than there are rows; anything else is fault 5.
    void grid(std::span<double const> values, std::span<double const> x_edges,
              std::span<double const> y_edges) const;
    /// Shares the matrix that another data set has now, such as a heat map's for contours over it. One
    /// without a matrix takes this one's away.
    void grid(DataHandle const& other) const;
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

    /// \name Axes and legend
    /// \{
    AxisHandle x_axis() const;                                    ///< the first x axis
    AxisHandle x_axis(AxisOptions const& options) const;          ///< the same, with this set
    AxisHandle y_axis() const;                                    ///< the first y axis
    AxisHandle y_axis(AxisOptions const& options) const;          ///< the same, with this set
    AxisHandle add_x_axis(AxisOptions const& options = {}) const; ///< one more
    AxisHandle add_y_axis(AxisOptions const& options = {}) const; ///< one more
    AxisHandle color_axis() const; ///< the first colour bar; where there is none yet, it is made
    AxisHandle color_axis(AxisOptions const& options) const;          ///< the same, with this set
    AxisHandle add_color_axis(AxisOptions const& options = {}) const; ///< one more
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
    /// Bars from 0 (bar_base_value), as wide as symbol_size says.
    DataHandle bars(std::string_view name, DataOptions const& options = {}) const;
    /// A line and what lies below it, filled.
    DataHandle area(std::string_view name, DataOptions const& options = {}) const;
    /// The curve of a formula in x, along the whole x axis or from formula_from to formula_to.
    DataHandle function(std::string_view name, std::string_view formula,
                        DataOptions const& options = {}) const;
    /// A text at a place: values on its axes or, with text_percent, percent of the plot area. No legend row.
    DataHandle text(std::string_view text, double x, double y, DataOptions const& options = {}) const;
    /// The cells of a matrix (DataHandle::grid), or of points counted in cells (grid_bins_x, grid_bins_y;
    /// with a first extra column the sums of its values), in the colours of a colour bar: that of the
    /// options, else the graph's first, which is made where there is none.
    DataHandle heat_map(std::string_view name, DataOptions const& options = {}) const;
    /// Lines of equal value on the same, between the middles of the cells; in their own colour, or in those
    /// of the colour bar that the options name.
    DataHandle contours(std::string_view name, DataOptions const& options = {}) const;
    std::vector<DataHandle> data_sets() const; ///< all, in the order in which they were made
    /// The first data set of this legend text; an empty handle where there is none.
    DataHandle find(std::string_view legend) const;
    /// \}
};

} // namespace qv
