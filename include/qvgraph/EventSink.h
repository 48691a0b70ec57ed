// EventSink: the nine events a control raises, in the order of their dispatch identifiers.
#pragma once

#include "qvgraph/export.h"

#include <cstdint>
#include <string>

namespace qv::host {

/// A host overrides what it wants to hear. Events come synchronously, on the thread of the member or input
/// handler that causes them; X and Y are the pointer's data coordinates in the graph under it.
class QV_EXPORT EventSink {
public:
    virtual ~EventSink() = default;

    virtual void Click(double& /*X*/, double& /*Y*/) {}                                // 1
    virtual void DblClick(double& /*X*/, double& /*Y*/) {}                             // 2
    virtual void MouseMove(double& /*X*/, double& /*Y*/) {}                            // 3
    virtual void KeyPress(std::int16_t& /*KeyAscii*/, double& /*X*/, double& /*Y*/) {} // 4
    virtual void NewGraphInFront() {}                                                  // 5
    virtual void GraphScaleChanged() {}                                                // 6
    virtual void GraphPositionChanged() {}                                             // 7
    virtual void LegendPositionChanged() {}                                            // 8
    virtual void ErrorMsg(std::string& /*Source*/, std::string& /*Description*/) {}    // 9
};

} // namespace qv::host
