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
#include "qvgraph/variant.h"

#include <array>
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
    /// Makes it an axis of these categories: value n is the n-th of them, from 0 on.
    void set_categories(TextList const& texts) const;
    /// The same with moments, in seconds since 1970, on an axis of time; fault 5 for one that is not finite.
    void set_category_times(std::span<double const> times) const;
};

/// The legend table of a graph.
class QV_EXPORT LegendHandle : public LegendProperties {};

/// The points of a data set as columns, in order of arrival. Where no point has an error, or an extra value,
/// such a column is empty.
struct PointValues {
    std::vector<double> x;                    ///< along the x axis
    std::vector<double> y;                    ///< along the y axis
    std::vector<double> error;                ///< half the lengths of the error bars
    std::array<std::vector<double>, 4> extra; ///< what add_columns takes beside x and y
};

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
    /// A point at a category, which is added to those of the axis where it is not there yet. The x axis, of
    /// lying bars the y axis, becomes one of categories, unless one of the two is. Where categories are
    /// times, the text is a date such as "2026-03-14" or "2026-03-14 09:30"; fault 5 for another.
    void add(std::string_view category, double value) const;
    /// The same for columns of equal length.
    void add(TextList const& categories, std::span<double const> values) const;
    /// Points at moments, in seconds since 1970, that stand side by side as the categories of an axis of
    /// time: what lies between them, such as weekends, takes no room. Fault 5 for a moment that is not
    /// finite.
    void add_at_times(std::span<double const> times, std::span<double const> values) const;
    /// Candles: columns of equal length, volumes may be left out. Where the x axis has categories and is one
    /// of time, `x` are moments as in add_at_times, else values of the axis.
    void add_candles(std::span<double const> x, std::span<double const> open, std::span<double const> high,
                     std::span<double const> low, std::span<double const> close,
                     std::span<double const> volume = {}) const;
    /// Shows the volumes of candles as columns in the lower third of the plot area, on a y axis of their own
    /// at the right, which is made and returned.
    AxisHandle show_volume(AxisOptions const& options = {}) const;
    /// Many values at one place, as histograms, box plots and strips take them: y at one x, where bars lie x
    /// at one y. A histogram needs no place. Values that are not finite are kept but counted nowhere.
    void add_values(std::span<double const> values, double at = 0) const;
    /// The edges between a histogram's bins, two or more finite values in rising order, fault 5 else; none
    /// let histogram_bin_width and histogram_bins decide again.
    void histogram_edges(std::span<double const> edges) const;
    /// Appends a slice to a pie.
    void add_slice(std::string_view name, double value) const;
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
    PointValues points() const;                   ///< a copy of all points there are

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
    /// Bars from 0 (bar_base_value), as wide as bar_width or, in millimetres, symbol_size says.
    DataHandle bars(std::string_view name, DataOptions const& options = {}) const;
    /// Candles of prices: bodies from open to close, wicks to high and low. On an axis of time whose
    /// categories are the candles' moments, x_axis({.time = true, .categories = true}), there are no gaps.
    DataHandle candles(std::string_view name, DataOptions const& options = {}) const;
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
    /// A pie of the values of its slices (`DataHandle::add_slice`), a ring with a pie_hole. It fills the plot
    /// area; the legend lists its slices. Values that are not above 0 have no slice.
    DataHandle pie(std::string_view name, DataOptions const& options = {}) const;
    /// \}

    /// \name Marks
    /// At values on their axes or, with mark_percent, percent of the plot area, y from the bottom. `text` is
    /// their label, placed inside the plot area; text_ori says where. No axis changes, and a row in the
    /// legend table have only those with a `legend`. Bands and rectangles are seen through unless fill_alpha
    /// says otherwise. With mark_dragging a person may move them (`MarkMoved`).
    /// \{

    DataHandle horizontal_line(double y,
                               DataOptions const& options = {}) const;         ///< across the plot area at y
    DataHandle vertical_line(double x, DataOptions const& options = {}) const; ///< up the plot area at x
    /// Filled between two y; an end may be infinite.
    DataHandle horizontal_band(double from, double to, DataOptions const& options = {}) const;
    /// Filled between two x; an end may be infinite.
    DataHandle vertical_band(double from, double to, DataOptions const& options = {}) const;
    /// From a place, where its label stands, to its tip.
    DataHandle arrow(Point from, Point tip, DataOptions const& options = {}) const;
    DataHandle rectangle(Point corner, Point opposite, DataOptions const& options = {}) const; ///< filled
    /// \}

    /// \name Those there are
    /// \{

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
