#include "graph/model/trap.h"

#include "base/fault.h"

namespace qv::graph {

void ReportError(ControlState& state, std::string_view source, std::exception_ptr const& failure) {
    ++state.failures;
    if (auto report = fault_report(source, failure))
        state.events->ErrorMsg(report->Source, report->Description);
}

} // namespace qv::graph
