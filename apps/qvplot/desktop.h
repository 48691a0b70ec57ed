// Printing the page and showing it in a window, through a module of its own that is loaded only then.
#pragma once

#include "qvgraph/export.h"

namespace qv::plot {

struct Arguments {
    int count = 0;
    char const* const* values = nullptr;
};

/// Prints what is to be printed, shows the window, if any, until it is closed, and returns the exit status.
/// Without the module, or without a display for a window, it is a PlotError.
int use_desktop(Arguments const& arguments, bool shows_window);

} // namespace qv::plot

/// The module's entry: reads what the arguments name, prints or shows it, returns the exit status and reports
/// its own errors. It gets arguments and no objects, because module and program each hold their own code.
extern "C" QV_EXPORT int qvplot_desktop(int argc, char const* const* argv);
