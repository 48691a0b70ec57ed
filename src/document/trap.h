// The error trap: a failing procedure stops, tells the host through ErrorMsg and returns normally.
#pragma once

#include "document/ControlState.h"

#include <exception>
#include <string_view>

namespace qv::document {

/// Raises ErrorMsg for a failure: Source is "Error 9 has occured in qvGraph.ocx, " + procedure. Fault 94 is
/// passed over. Takes no memory, which may have ended.
void ReportError(ControlState& state, std::string_view procedure, std::exception_ptr const& failure);

/// Counts the procedures that hold references into the document; the outermost frees what was discarded.
class CallInProgress {
public:
    explicit CallInProgress(ControlState& state) : state_(state) { ++state_.calls_in_progress; }
    ~CallInProgress() {
        if (--state_.calls_in_progress == 0) state_.discarded_graphs.clear();
    }
    CallInProgress(CallInProgress const&) = delete;
    CallInProgress& operator=(CallInProgress const&) = delete;

private:
    ControlState& state_;
};

/// Runs `body`; a failure in it skips its rest, is reported under "qvGraph.ocx, " + `procedure`, and the
/// call returns normally.
template <class Body>
void trapped(ControlState& state, std::string_view procedure, Body&& body) {
    const CallInProgress call(state);
    try {
        body();
    } catch (...) {
        ReportError(state, procedure, std::current_exception());
    }
}

} // namespace qv::document
