// From the command line's options to a drawn page.
#pragma once

#include "qvgraph/qvGraph.h"
#include "qvplot/options.h"
#include "qvplot/page.h"
#include "qvplot/series.h"

namespace qv::plot {

/// Reads what the options name, and tells on standard error which points cannot be shown.
PlotData read_data(PlotOptions const& options);

/// Draws data; what the control reports meanwhile is a PlotError.
void draw_whole_page(qvGraph& page, PlotData data, PlotOptions const& options, AfterDrawing after);

/// Draws data into the file that the options name.
void write_page(PlotData data, PlotOptions const& options, AfterDrawing after);

/// What each column was taken for, on standard output or, where the page goes there, on standard error.
void tell_explanation(PlotData const& data, PlotOptions const& options);

} // namespace qv::plot
