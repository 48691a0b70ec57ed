#include "graph/model/trap.h"

#include "base/fault.h"

namespace qv::graph {

void ReportError(ControlState& state, std::string_view source, std::exception_ptr const& failure) {
    Fault fault = as_fault(failure);
    if (fault.number == static_cast<std::int32_t>(FaultNumber::InvalidUseOfNull)) return;
    std::string message = "Error " + std::to_string(fault.number) + " has occured in " + std::string(source);
    state.events->ErrorMsg(message, fault.description);
}

} // namespace qv::graph
