// Layout of a page: margins from the texts that stand in them, and the axes that fit between.
#pragma once

#include "qvgraph/qvGraph.h"
#include "qvplot/axis_plan.h"
#include "qvplot/options.h"
#include "qvplot/series.h"

#include <optional>

namespace qv::plot {

struct AxisLayout {
    AxisPlan plan; // for the range that is shown
    Extent full;   // the range that can be shown
    std::string title;
    double widest_full_label = 0; // of a y axis at its full range, millimetres
};

/// The ranges that zoomed axes show; nothing for one that shows all it has.
struct ZoomedRanges {
    std::optional<Extent> x;
    std::optional<Extent> y;
    std::optional<Extent> y2;
};

struct PageLayout {
    AxisLayout x;
    AxisLayout y;
    std::optional<AxisLayout> y2;
    double left = 0; // margins between the page's edge and the plot area, millimetres
    double top = 0;
    double right = 0;
    double bottom = 0;
    bool shows_title = false;
    bool shows_labels = true;
    double bar_width = 0;  // millimetres, 0 without bars
    double plot_width = 0; // of the plot area, millimetres
    double plot_height = 0;
};

/// Lays out a page of the control's present size. Texts are measured as the control draws them; on a page
/// too small for them and the data, titles are left out, and at last the labels.
PageLayout lay_out_page(qvGraph const& page, PlotData const& data, PlotOptions const& options,
                        ZoomedRanges const& zoomed = {});

} // namespace qv::plot
