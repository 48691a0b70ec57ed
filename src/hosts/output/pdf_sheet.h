// A printer whose sheet is a PDF file: for machines without a printer and for tests.
#pragma once

#include "qvgraph/Services.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace qv::vector {
class PdfDocument;
}

namespace qv::output {

/// The sheet is written, whole and without loss, when the document ends.
class PdfSheet final : public host::Printer {
public:
    /// `upright` is the paper in twips; both sides must be positive and at most 200 inches, else fault 482.
    PdfSheet(std::string file, host::PaperSize const& upright);
    ~PdfSheet() override;

    host::PaperSize paper() override { return upright_; }
    void set_orientation(host::PageOrientation orientation) override;
    void draw_picture(DrawSurface const& picture, Box const& place) override;
    void end_document() override;

private:
    std::string file_;
    host::PaperSize upright_;
    host::PageOrientation orientation_ = host::PageOrientation::Portrait;
    std::unique_ptr<vector::PdfDocument> document_;
};

} // namespace qv::output
