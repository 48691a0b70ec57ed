// A page that is drawn anew while its data come.
#pragma once

#include "qvplot/options.h"

#include <chrono>
#include <string>

namespace qv::plot {

/// Rewrites the picture at most once a second while standard input or a file grows; ends with the input, or
/// when it is interrupted.
int follow_into_file(PlotOptions const& options);

/// Rewrites the picture when a file it is drawn of changes, until it is interrupted.
int watch_into_file(PlotOptions const& options);

/// What is followed, between its pieces.
class FollowedInput {
public:
    explicit FollowedInput(std::string file) : file_(std::move(file)) {}
    /// Whether it has an end, as standard input and pipes have, and is no file that may grow.
    bool has_end() const;
    /// Waits until there may be something to read, or so long.
    bool wait(std::chrono::milliseconds longest) const;
    /// Waits until a file has any content; false when interrupted.
    bool wait_for_content() const;

private:
    std::string file_;
};

} // namespace qv::plot
