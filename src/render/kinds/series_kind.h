// A kind of data set beyond points on two axes: what it draws, how far it reaches, and what of it can be
// pointed at. Whoever draws, fits axes, reads out or makes a legend asks the kind, so that a new one is
// written in one place.
#pragma once

#include "document/ControlState.h"
#include "document/selection.h"
#include "qvgraph/DrawSurface.h"
#include "render/data_reach.h"
#include "scale/mapping.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace qv::render {

class SeriesKind;
SeriesKind const& heat_map_kind();
SeriesKind const& contours_kind();

/// What DataKind says; other values mean points.
enum class DataKind : std::uint8_t {
    Points = 0,
    Histogram = 1,
    Boxes = 2,
    Strip = 3,
    HeatMap = 4,
    Contours = 5,
    Candles = 6,
    Pie = 7,
    Mark = 8
};

/// A data set where it is drawn, its own axes being the selected ones of its graph.
struct SeriesView {
    document::ControlState& state;
    document::Graph& graph;
    document::DataSet const& set;
    std::int16_t index = 0; // of the set in its graph
    scale::AxisMap x, y;    // from values to twips on the page
    Box plot;               // the plot area, twips
};

/// One thing that is told of an item: "median", its value, and the axis whose digits and dates it has.
struct Fact {
    enum class Of : std::uint8_t { Nothing, XAxis, YAxis, Text };
    std::string name; // may be empty
    double value = 0;
    Of of = Of::Nothing;
    std::string text; // in place of the value, of `Text`
};

/// What a kind of data set does. Items are what a person points at and reads by keys: bars of a histogram,
/// boxes, cells, candles, slices.
class SeriesKind {
public:
    virtual ~SeriesKind() = default;

    /// Draws the data set, clipped to the plot area by the caller.
    virtual void draw(SeriesView const& view, DrawSurface& surface) const = 0;
    /// Tells its axes what they must show.
    virtual void include_reach(document::ControlState const& state, document::DataSet const& set,
                               AxisReach const& x, AxisReach const& y) const = 0;
    /// The axis beside its own two that it needs, such as a colour bar, by its number among all; -1 for none.
    virtual std::int16_t third_axis(document::Graph const& graph, document::DataSet const& set) const;
    /// Tells that one what it must show, after include_reach.
    virtual void include_third(document::DataSet const& set, AxisReach const& axis) const;
    /// Draws what stands for it in the legend into a box.
    virtual void draw_sample(SeriesView const& view, DrawSurface& surface, Box const& box) const = 0;

    /// Whether it stands on values of its axes; else it has the plot area for itself, and hides axes that
    /// nothing else lies on.
    virtual bool lies_on_axes() const { return true; }
    /// Whether automatic axes are to show all of it.
    virtual bool widens_axes() const { return lies_on_axes(); }

    /// The texts of its rows in the legend, none for no row, and what stands before each.
    virtual std::vector<std::string> legend_texts(document::DataSet const& set) const;
    virtual void draw_row_sample(SeriesView const& view, DrawSurface& surface, Box const& box,
                                 std::size_t row) const;

    /// How many items there are now.
    virtual std::size_t item_count(document::DataSet const& set) const = 0;
    /// Where an item is on the page, twips; not-a-number where it has no place.
    virtual Box item_box(SeriesView const& view, std::size_t item) const = 0;
    /// The item that a place lies on, the last drawn of several. Without a better way each item is asked.
    virtual std::optional<std::size_t> item_at(SeriesView const& view, Point place) const;
    /// What is told of an item.
    virtual std::vector<Fact> item_facts(document::DataSet const& set, std::size_t item) const = 0;
};

/// The kind of a data set; nullptr for points, functions and texts.
SeriesKind const* series_kind(document::DataSet const& set);

/// A data set of a graph on the axes that it lies on, which are the selected ones as long as this lives.
class SeriesScope {
public:
    enum class Maps : std::uint8_t { BeingDrawn, AsShown };
    SeriesScope(document::ControlState& state, document::Graph& graph, std::int16_t index, Maps maps);
    SeriesView const& view() const { return view_; }

private:
    document::SelectedAxesScope selection_;
    SeriesView view_;
};

/// Whether a graph shows its axes as lines beside the plot area: not where it is polar, or holds nothing but
/// what does not lie on axes.
bool shows_axes(document::Graph const& graph);
/// Whether a kind can be shown in a graph; straight axes do not lie in a polar one.
inline bool can_be_drawn(document::Graph const& graph, SeriesKind const& kind) {
    return !graph.GraphPolar || !kind.lies_on_axes();
}
/// Whether there is anything to zoom, and the host allows it.
inline bool may_be_zoomed(document::Graph const& graph) {
    return graph.GraphAllowZoom && shows_axes(graph);
}

/// A box is on the page only where all of it is a number.
bool is_finite(Box const& box);

} // namespace qv::render
