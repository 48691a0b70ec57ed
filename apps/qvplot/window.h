// Showing the page in a window, through a module of its own that is loaded only then.
#pragma once

namespace qv::plot {

struct Arguments {
    int count = 0;
    char const* const* values = nullptr;
};

/// Shows the window until it is closed and returns the exit status. Without a display or without the module
/// it is a PlotError.
int show_window(Arguments const& arguments);

} // namespace qv::plot

/// The module's entry: reads what the arguments name, shows it, returns the exit status and reports its own
/// errors. It gets arguments and no objects, because module and program each hold their own code.
extern "C" int qvplot_show(int argc, char const* const* argv);
