// Printing the page.
#pragma once

#include "qvplot/options.h"

namespace qv::plot {

/// Prints one sheet on the printer that the options name, or on the default one. A printer that is not there
/// or fails is a PlotError. A QGuiApplication must exist.
void print_page(PlotOptions const& options);

} // namespace qv::plot
