// Formulas on the command line: ranges of x, evaluation into a table, functions as series of a page.
#pragma once

#include "qvgraph/qvExpression.h"
#include "qvplot/options.h"
#include "qvplot/plot_error.h"
#include "qvplot/series.h"

#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace qv::plot {

/// A formula that cannot be compiled; the text is the formula, a caret under the mistake, and what it is.
struct FormulaError : PlotError {
    using PlotError::PlotError;
};

struct EvalOptions {
    std::string formula;
    std::optional<std::string> x; // VALUE, FROM:TO or FROM:TO:STEP
    std::vector<std::string> definitions;
};

/// Writes a line "x tab value" for each x, or the value alone where no x is given. Where the formula fails,
/// the value is empty; the first failure is told on standard error. Returns the exit status: 1 after a
/// failure.
int evaluate(EvalOptions const& options, std::ostream& out);

/// Adds the functions asked for to a page's series, sampled over `--x-range`, else the range of the data,
/// else -10 to 10. Values far outside the bulk, as beside a pole, are left out of the samples, so that the
/// axis does not reach for them.
void add_functions(PlotData& data, PlotOptions const& options);

} // namespace qv::plot
