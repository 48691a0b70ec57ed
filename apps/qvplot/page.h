// Draws series of points on a page of the control.
#pragma once

#include "graph/qvGraph.h"
#include "qvplot/options.h"
#include "qvplot/series.h"

namespace qv::plot {

/// Draws one graph of all series over the whole page, in place of what was on it. Failures are reported
/// through the control's event ErrorMsg.
void draw_page(qvGraph& page, PlotData const& data, PlotOptions const& options);

/// Lays a drawn page out anew for the control's present size and draws it; every range is whole again.
void fit_page(qvGraph& page, PlotData const& data, PlotOptions const& options);

/// Gives the axes of a drawn page the ticks that suit the ranges they show now.
void follow_zoom(qvGraph& page, PlotData const& data, PlotOptions const& options);

} // namespace qv::plot
