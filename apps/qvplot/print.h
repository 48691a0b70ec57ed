// Printing the page.
#pragma once

#include "qvplot/options.h"
#include "qvplot/series.h"

namespace qv::plot {

/// Prints one sheet of the data on the printer that the options name, or on the default one. A printer that
/// is not there or fails is a PlotError. A QGuiApplication must exist.
void print_page(PlotData const& data, PlotOptions const& options);

} // namespace qv::plot
