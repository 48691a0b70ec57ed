// Draws series of points on a page of the control.
#pragma once

#include "qvgraph/looks.h"
#include "qvgraph/qvGraph.h"
#include "qvplot/options.h"
#include "qvplot/series.h"
#include "qvplot/shown_range.h"

#include <vector>

namespace qv::plot {

/// What becomes of a page's data once they are drawn.
enum class AfterDrawing {
    Keep,
    GiveUp, // the control has them; nobody else keeps them in memory
};

/// One graph of all series over the whole page of a control, which must outlive it, or several beside and
/// below each other. Failures are reported through the control's event ErrorMsg.
class PlotPage {
public:
    PlotPage(qvGraph& page, PlotData data, PlotOptions options, AfterDrawing after = AfterDrawing::Keep);

    /// Draws the graph in place of what was on the page.
    void draw();
    /// Follows the control's present size: titles name as many columns as have room. All else the control
    /// does by itself.
    void follow();
    /// Adds points to the series, which are those of the page; nothing is drawn.
    void append(std::vector<Series> const& more);
    /// Draws other data in place of those there were.
    void replace(PlotData data);

private:
    /// One graph with its series.
    struct Panel {
        std::vector<std::size_t> series; // numbers
        GraphHandle graph;
        AxisHandle x, y, y2;
        std::vector<DataHandle> sets; // of the series, in their order
        Kind kind = Kind::Lines;      // what decides its axes

        AxisHandle const& axis(Series const& one) const { return one.on_second_axis ? y2 : y; }
    };

    void set_look();
    void divide();
    void add_panel(std::size_t number);
    void add_axes(Panel& panel);
    void describe_axis(AxisHandle const& axis, AxisContent const& content) const;
    void add_series(Panel& panel);
    DataHandle add_set(Panel const& panel, Series const& series, std::size_t number) const;
    void add_lone_points(Panel const& panel, Series const& series, DataHandle const& set) const;
    void add_matrix(Panel& panel);
    void add_values(Panel& panel, DataHandle const& set, Series const& series, std::size_t place) const;
    void add_points();
    void add_marks(Panel const& panel) const;
    void color_axis(Panel const& panel, bool second) const;
    void show_ranges(Panel const& panel, std::array<std::optional<Extent>, 3> const& ranges) const;
    std::array<std::optional<Extent>, 3> ranges_of(Panel const& panel) const;
    PlotData part_of(Panel const& panel) const;
    bool name_axes();
    bool name_axes(Panel const& panel) const;
    bool show_legends();
    bool show_legend(Panel const& panel) const;

    qvGraph& page_;
    PlotData data_;
    PlotOptions options_;
    AfterDrawing after_;
    Look look_;
    std::vector<Panel> panels_;
};

/// Draws one graph of all series over the whole page, in place of what was on it.
void draw_page(qvGraph& page, PlotData const& data, PlotOptions const& options);

} // namespace qv::plot
