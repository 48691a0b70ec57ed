// The fault that something throws.
#pragma once

#include "qvgraph/fault.h"

#include <string>

namespace qv::test {

/// Number 0 and no text where nothing is thrown.
inline Fault fault_of(auto&& action) {
    try {
        action();
    } catch (Fault const& fault) {
        return fault;
    }
    Fault none(FaultNumber::InternalError, "");
    none.number = 0;
    return none;
}

inline int fault_number(auto&& action) {
    return fault_of(action).number;
}

} // namespace qv::test
