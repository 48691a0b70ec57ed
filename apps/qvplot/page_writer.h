// The page as a file, on standard output, or wherever a name leads.
#pragma once

#include "qvgraph/HeadlessHost.h"
#include "qvgraph/page_file.h"
#include "qvplot/options.h"

#include <string>

namespace qv::plot {

/// A page in memory that is written when it is finished.
class PageWriter : public headless::HeadlessHost {
public:
    /// Of size and format that the options ask for.
    explicit PageWriter(PlotOptions const& options);

    /// Writes the page as it was last shown. A file keeps what it had until the new content is whole. A
    /// PlotError where it cannot be written.
    void write();

    void save_picture(std::string const& file, host::PagePicture const& picture) override;

private:
    std::string out_;
    std::string media_type_;
    std::shared_ptr<raster::FontLibrary> fonts_;
};

/// The media type of the page's format; a PlotError for a name that tells none.
std::string media_type_of(PlotOptions const& options);

} // namespace qv::plot
