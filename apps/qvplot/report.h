// Turning what went wrong into one line on standard error and an exit status.
#pragma once

#include "qvgraph/EventSink.h"

#include <functional>
#include <string>

namespace qv::plot {

constexpr int success = 0;
constexpr int partly_failed = 1; // some values are missing
constexpr int failure = 2;

/// Writes "qvplot: " and a line.
void tell(std::string const& line);

/// Runs `body` and returns its status, or `failure` after telling of the exception that ended it.
int reported(std::function<int()> const& body);

/// Hears what a control reports, which is missing from its page.
class FirstError : public host::EventSink {
public:
    void ErrorMsg(std::string& Source, std::string& Description) override;
    /// Throws a PlotError when there was a report.
    void raise() const;

private:
    std::string text_;
};

} // namespace qv::plot
