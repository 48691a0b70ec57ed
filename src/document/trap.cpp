#include "document/trap.h"

#include "base/fault_report.h"

#include <utility>

namespace qv::document {
namespace {

/// The texts that the control has kept for a report. A failure told from inside ErrorMsg finds none.
class ReportRoom {
public:
    explicit ReportRoom(ControlState& state)
        : report(std::exchange(state.report_room, FaultReport())), state_(state) {}
    ~ReportRoom() { state_.report_room = std::move(report); }
    ReportRoom(ReportRoom const&) = delete;
    ReportRoom& operator=(ReportRoom const&) = delete;

    FaultReport report;

private:
    ControlState& state_;
};

} // namespace

void ReportError(ControlState& state, std::string_view procedure, std::exception_ptr const& failure) {
    ++state.failures;
    ReportRoom room(state);
    const std::int32_t number = write_report(room.report, "qvGraph.ocx", procedure, failure);
    if (number == 0) return;
    if (number == static_cast<std::int32_t>(FaultNumber::OutOfMemory)) state.memory_has_ended = true;
    state.events->ErrorMsg(room.report.Source, room.report.Description);
}

} // namespace qv::document
