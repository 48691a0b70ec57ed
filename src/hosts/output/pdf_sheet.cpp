#include "hosts/output/pdf_sheet.h"

#include "qvgraph/fault.h"
#include "raster/file_replacement.h"
#include "vector/pdf_document.h"

#include <utility>

namespace qv::output {
namespace {

constexpr double largest_side = 200 * twips_per_inch; // what PDF readers are bound to show

bool is_a_side(double twips) {
    return twips > 0 && twips <= largest_side;
}

std::unique_ptr<vector::PdfDocument> blank_sheet(host::PaperSize const& paper) {
    return std::make_unique<vector::PdfDocument>(paper.width / twips_per_point,
                                                 paper.height / twips_per_point, FaultNumber::PrinterError);
}

} // namespace

PdfSheet::PdfSheet(std::string file, host::PaperSize const& upright)
    : file_(std::move(file)), upright_(upright) {
    if (!is_a_side(upright.width) || !is_a_side(upright.height))
        raise_fault(FaultNumber::PrinterError, "The sides of a sheet must be above 0 and at most 200 inches");
}

PdfSheet::~PdfSheet() = default;

void PdfSheet::set_orientation(host::PageOrientation orientation) {
    orientation_ = orientation;
}

void PdfSheet::draw_picture(DrawSurface const& picture, Box const& place) {
    bool const lies = orientation_ == host::PageOrientation::Landscape;
    if (!document_)
        document_ = blank_sheet(lies ? host::PaperSize{upright_.height, upright_.width} : upright_);
    document_->draw(static_cast<raster::RasterSurface const&>(picture),
                    {place.left / twips_per_point, place.top / twips_per_point, place.width / twips_per_point,
                     place.height / twips_per_point});
}

void PdfSheet::end_document() {
    if (!document_) document_ = blank_sheet(upright_);
    raster::replace_file(file_, document_->finish());
    document_.reset();
}

} // namespace qv::output
