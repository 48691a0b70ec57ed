// From the command line's options to a drawn page.
#pragma once

#include "qvgraph/qvGraph.h"
#include "qvplot/options.h"
#include "qvplot/series.h"

namespace qv::plot {

/// Reads what the options name, and tells on standard error which points cannot be shown.
PlotData read_data(PlotOptions const& options);

/// Reads the data and draws them; what the control reports meanwhile is a PlotError.
void draw_whole_page(qvGraph& page, PlotOptions const& options);

} // namespace qv::plot
