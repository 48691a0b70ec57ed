// The line that tells on a terminal how far the reading of a large file is.
#pragma once

#include "qvplot/series.h"

namespace qv::plot {

/// Writes and rewrites one line on standard error where that is a terminal, and removes it at the end.
class ProgressLine {
public:
    ProgressLine();
    void operator()(Progress const& progress) const;

private:
    bool on_terminal_;
};

} // namespace qv::plot
