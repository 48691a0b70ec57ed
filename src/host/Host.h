// Host: what a control asks of the program or widget that holds it.
#pragma once

#include "render/DrawSurface.h"

#include <memory>
#include <string>

namespace qv::host {

class Host {
public:
    virtual ~Host() = default;

    /// A new surface of one pixel, to be resized by the control. The control owns it.
    virtual std::unique_ptr<DrawSurface> make_surface() = 0;
    /// Thickness of the scroll bars in twips.
    virtual double scroll_bar_thickness() const { return 255; }
    /// Height of the coordinate read-out in twips.
    virtual double label_height() const { return 255; }
    /// The visible page shows a new picture.
    virtual void page_shown() {}
    /// A person has gone to a data point by keys; for those who hear the page instead of seeing it.
    virtual void point_read(std::string const& /*text*/) {}
    /// Position, state or text of the scroll bars, the label or the tooltip, or the pointer's shape, may have
    /// changed.
    virtual void child_controls_changed() {}
};

} // namespace qv::host
