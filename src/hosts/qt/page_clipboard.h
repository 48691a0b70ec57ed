// The desktop's clipboard.
#pragma once

#include "qvgraph/RasterSurface.h"
#include "qvgraph/Services.h"

#include <memory>

namespace qv::qt {

/// Offers the page in several formats at once. Where another program cannot be asked to let go of the
/// clipboard, the operations are fault 521.
class PageClipboard final : public host::Clipboard {
public:
    explicit PageClipboard(std::shared_ptr<raster::FontLibrary> fonts) : fonts_(std::move(fonts)) {}
    void clear() override;
    void set_picture(host::PagePicture const& picture) override;

private:
    std::shared_ptr<raster::FontLibrary> fonts_;
};

} // namespace qv::qt
