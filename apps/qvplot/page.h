// Draws series of points on a page of the control.
#pragma once

#include "qvgraph/qvGraph.h"
#include "qvplot/layout.h"
#include "qvplot/options.h"
#include "qvplot/series.h"

#include <optional>
#include <vector>

namespace qv::plot {

/// One graph of all series over the whole page of a control, which must outlive it. Failures are reported
/// through the control's event ErrorMsg.
class PlotPage {
public:
    PlotPage(qvGraph& page, PlotData data, PlotOptions options);

    /// Draws the graph in place of what was on the page.
    void draw();
    /// Lays the page out anew for the control's present size. Axes stay zoomed, and a legend that a person
    /// has moved stays there.
    void fit();
    /// Where axes show other ranges than before, gives them the ticks that suit and draws the page.
    void follow_zoom();

private:
    ZoomedRanges zoomed_ranges() const;
    void arrange(ZoomedRanges const& zoomed);
    void place_legend(bool stays);

    qvGraph& page_;
    PlotData data_;
    PlotOptions options_;
    PageLayout layout_;
    std::vector<Extent> shown_;         // by the axes when their ticks were chosen
    std::optional<Point> legend_place_; // that was found for it, percent of the page
};

/// Draws one graph of all series over the whole page, in place of what was on it.
void draw_page(qvGraph& page, PlotData const& data, PlotOptions const& options);

} // namespace qv::plot
