// The command that draws a page, from the command line to an exit status.
#pragma once

namespace qv::plot {

/// Runs the program: 0, or 2 after one line on standard error that says what is wrong.
int run(int argc, char const* const* argv);

} // namespace qv::plot
