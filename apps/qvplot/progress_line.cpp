#include "qvplot/progress_line.h"

#include <unistd.h>

#include <iostream>

namespace qv::plot {
namespace {

constexpr char const* clear_line = "\r\x1b[K";

} // namespace

ProgressLine::ProgressLine() : on_terminal_(isatty(STDERR_FILENO) == 1) {}

void ProgressLine::operator()(Progress const& progress) const {
    if (!on_terminal_) return;
    std::cerr << clear_line;
    if (!progress.done)
        std::cerr << progress.file << ": " << progress.rows / 1000000 << " million rows, "
                  << static_cast<int>(100 * progress.part) << " %";
    std::cerr << std::flush;
}

} // namespace qv::plot
