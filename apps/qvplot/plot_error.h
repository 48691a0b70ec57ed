// PlotError: what stops a plot; its text is one line that says what is wrong and what to do.
#pragma once

#include <stdexcept>

namespace qv::plot {

struct PlotError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

} // namespace qv::plot
