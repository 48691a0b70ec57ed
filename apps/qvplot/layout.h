// Layout of a page: margins from the texts that stand in them, and the axes that fit between.
#pragma once

#include "graph/qvGraph.h"
#include "qvplot/axis_plan.h"
#include "qvplot/options.h"
#include "qvplot/series.h"

#include <optional>

namespace qv::plot {

struct AxisLayout {
    AxisPlan plan;
    std::string title;
};

struct PageLayout {
    AxisLayout x;
    AxisLayout y;
    std::optional<AxisLayout> y2;
    double left = 0; // margins between the page's edge and the plot area, millimetres
    double top = 0;
    double right = 0;
    double bottom = 0;
    double bar_width = 0;  // millimetres, 0 without bars
    double plot_width = 0; // of the plot area, millimetres
    double plot_height = 0;
    LabelRoom x_room;
    LabelRoom y_room;
};

/// Plans axes that show a range of values.
AxisPlan plan_x_axis(PlotData const& data, PlotOptions const& options, Extent range, LabelRoom const& room);
AxisPlan plan_y_axis(bool is_log, Extent range, LabelRoom const& room);

/// Lays out a page of the control's present size. Texts are measured as the control draws them.
PageLayout lay_out_page(qvGraph const& page, PlotData const& data, PlotOptions const& options);

} // namespace qv::plot
