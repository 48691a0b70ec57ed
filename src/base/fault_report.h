// What becomes of an exception: a fault, and the report of a failed procedure.
#pragma once

#include "qvgraph/fault.h"

#include <cstdint>
#include <exception>
#include <string>
#include <string_view>

namespace qv {

/// Turns any exception into a Fault: `std::bad_alloc` is 7, a foreign exception 5 with its own text.
Fault as_fault(std::exception_ptr const& failure);

/// What is told of a failed procedure.
struct FaultReport {
    std::string Source; // "Error 9 has occured in qvGraph.ocx, DrawXAxis"
    std::string Description;

    /// With room for what is usually told, so that writing it takes no memory.
    static FaultReport with_room();
};

/// Writes what is told of a failure in a procedure of a library such as "qvGraph.ocx"; where memory ends over
/// it, the report is that of fault 7. Returns the fault's number, or 0 for fault 94, which is passed over.
std::int32_t write_report(FaultReport& report, std::string_view library, std::string_view procedure,
                          std::exception_ptr const& failure) noexcept;

} // namespace qv
