// What lies over the visible page in invert mode: the cross-hair, the rubber band of a zoom, and the frame
// around the point that a person reads by keys. What was drawn is remembered shape by shape, so that taking
// it away depends on nothing that has changed since.
#pragma once

#include "document/ControlState.h"

#include <cstddef>
#include <optional>

namespace qv::render {

struct PointBeingRead {
    document::Graph& graph;
    document::DataSet const& set;
    std::size_t index; // among the points that the data set has now
};

/// Nothing when no point is read, or when it has gone or is hidden since.
std::optional<PointBeingRead> point_being_read(document::ControlState& state);

/// \name One mark brought to where it belongs now
/// The page is shown when that changes it. During a redraw nothing happens: its end does the same.
/// \{

/// The lines through the pointer, while it drags nothing, over the plot area of the graph there.
void update_cross_hair(document::ControlState& state);
/// The box that a zoom has reached.
void update_zoom_box(document::ControlState& state);
/// A square frame of two millimetres around the point that is read, cut at its plot area.
void update_read_mark(document::ControlState& state);
/// \}

bool is_marked(document::ControlState const& state, document::Mark mark);

/// The visible page has been painted over, and its marks with it.
void forget_marks(document::ControlState& state);
/// Brings all marks to where they belong; the page is not shown yet.
void mark_page(document::ControlState& state);
/// Takes all marks off the page, as before it changes its size; it is not shown yet.
void erase_marks(document::ControlState& state);

/// Shows what was drawn on the visible page.
void show_page(document::ControlState& state);

/// Keeps all marks off the visible page while it is copied or drawn on.
class MarksLifted {
public:
    explicit MarksLifted(document::ControlState& state);
    ~MarksLifted();
    MarksLifted(MarksLifted const&) = delete;
    MarksLifted& operator=(MarksLifted const&) = delete;

private:
    document::ControlState& state_;
    bool lifts_; // false inside another one
};

} // namespace qv::render
