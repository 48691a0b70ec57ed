// EventSink: the nine classic events a control raises, in the order of their dispatch identifiers, and
// MarkMoved.
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

    /// 1: the left button was pressed and released at one place of a plot area.
    virtual void Click(double& /*X*/, double& /*Y*/) {}
    /// 2: a double click of the left button, anywhere on the page.
    virtual void DblClick(double& /*X*/, double& /*Y*/) {}
    /// 3: the mouse has moved over the page.
    virtual void MouseMove(double& /*X*/, double& /*Y*/) {}
    /// 4: a key with a character, one of UTF-16; a handler that leaves 0 in KeyAscii has used it up.
    virtual void KeyPress(std::int16_t& /*KeyAscii*/, double& /*X*/, double& /*Y*/) {}
    /// 5: another graph has come to the front.
    virtual void NewGraphInFront() {}
    /// 6: an axis is new, or a range has changed.
    virtual void GraphScaleChanged() {}
    /// 7: a person has moved or resized a graph.
    virtual void GraphPositionChanged() {}
    /// 8: a person has moved a legend.
    virtual void LegendPositionChanged() {}
    /// A person has dragged a mark to these values; graph and data set are counted from 0.
    virtual void MarkMoved(std::int16_t& /*Graph*/, std::int16_t& /*DataSet*/, double& /*X1*/, double& /*Y1*/,
                           double& /*X2*/, double& /*Y2*/) {}
    /// 9: a procedure has failed. Source ends with its name, Description says what was wrong.
    virtual void ErrorMsg(std::string& /*Source*/, std::string& /*Description*/) {}
};

} // namespace qv::host
