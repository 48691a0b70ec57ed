// A command line read into options, by the program and by its module alike.
#pragma once

#include "qvplot/formula.h"
#include "qvplot/options.h"

#include <optional>

namespace qv::plot {

struct Command {
    PlotOptions plot;
    EvalOptions eval;
    bool is_eval = false;
    std::optional<int> status = {}; // where nothing is left to do: help was given, or the line is wrong
};

/// Reads it; help, and what is wrong, is told at once.
Command read_command(int argc, char const* const* argv);

} // namespace qv::plot
