// Draws series of points on a page of the control.
#pragma once

#include "qvgraph/qvGraph.h"
#include "qvplot/options.h"
#include "qvplot/series.h"
#include "qvplot/shown_range.h"

#include <vector>

namespace qv::plot {

/// One graph of all series over the whole page of a control, which must outlive it. Failures are reported
/// through the control's event ErrorMsg.
class PlotPage {
public:
    PlotPage(qvGraph& page, PlotData data, PlotOptions options);

    /// Draws the graph in place of what was on the page.
    void draw();
    /// Follows the control's present size: titles name as many columns as have room. All else the control
    /// does by itself.
    void follow();

private:
    void add_axes();
    void add_series();
    void add_lone_points();
    void color_axis(bool second) const;
    void show_ranges() const;
    bool name_axes();
    bool show_legend();
    void widen_bars();
    AxisHandle const& axis_of(Series const& series) const { return series.on_second_axis ? y2_ : y_; }
    bool has_axis(bool second) const;

    qvGraph& page_;
    PlotData data_;
    PlotOptions options_;
    GraphHandle graph_;
    AxisHandle x_, y_, y2_;
    std::vector<DataHandle> sets_; // of the series, in their order
};

/// Draws one graph of all series over the whole page, in place of what was on it.
void draw_page(qvGraph& page, PlotData const& data, PlotOptions const& options);

} // namespace qv::plot
