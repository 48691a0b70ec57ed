// Services: what the control asks of the machine around it when a picture leaves the page.
#pragma once

#include "qvgraph/DrawSurface.h"
#include "qvgraph/export.h"
#include "qvgraph/geometry.h"

#include <functional>
#include <memory>

namespace qv::host {

using SurfaceMaker = std::function<std::unique_ptr<DrawSurface>()>;

/// The page on its way out of the control.
class QV_EXPORT PagePicture {
public:
    virtual ~PagePicture() = default;
    /// The pixels as they were last shown.
    virtual DrawSurface const& pixels() const = 0;
    /// The page as the document stands now, drawn on surfaces of another make; the finished one is returned.
    /// The document stays as it is and no event is raised.
    virtual std::unique_ptr<DrawSurface> redrawn(SurfaceMaker const& make_surface) const = 0;
};

enum class PageOrientation { Portrait = 1, Landscape = 2 };

/// Width and height of a sheet in twips.
struct PaperSize {
    double width = 0;  ///< twips
    double height = 0; ///< twips
};

/// One sheet of a printer. Every operation may fail with fault 482; a sheet that is a file also as files do.
class QV_EXPORT Printer {
public:
    virtual ~Printer() = default;
    /// The sheet held upright.
    virtual PaperSize paper() = 0;
    /// Before anything is drawn; without it the sheet is upright.
    virtual void set_orientation(PageOrientation orientation) = 0;
    /// Draws the pixels scaled into a box in twips from the sheet's left top corner.
    virtual void draw_picture(DrawSurface const& picture, Box const& place) = 0;
    /// Lets the sheet be printed.
    virtual void end_document() = 0;
};

/// The system's clipboard, opened. Every operation may fail with fault 521.
class QV_EXPORT Clipboard {
public:
    virtual ~Clipboard() = default;
    virtual void clear() = 0;                                 ///< takes away what is there
    virtual void set_picture(PagePicture const& picture) = 0; ///< puts the page there
};

} // namespace qv::host
