#include "platform/output/pdf_sheet.h"

#include "base/fault.h"
#include "platform/raster/RasterSurface.h"
#include "platform/raster/file_replacement.h"

#include <cairo-pdf.h>
#include <cairo.h>

#include <utility>

namespace qv::output {
namespace {

constexpr double twips_per_point = 20;
constexpr double largest_side = 200 * twips_per_inch; // what PDF readers are bound to show

template <auto destroy>
struct Destroy {
    void operator()(auto* object) const { destroy(object); }
};
using Surface = std::unique_ptr<cairo_surface_t, Destroy<cairo_surface_destroy>>;
using Drawing = std::unique_ptr<cairo_t, Destroy<cairo_destroy>>;

// Called from C, through which no exception may pass.
cairo_status_t append_bytes(void* bytes, unsigned char const* data, unsigned int length) noexcept {
    try {
        auto& target = *static_cast<std::vector<std::uint8_t>*>(bytes);
        target.insert(target.end(), data, data + length);
        return CAIRO_STATUS_SUCCESS;
    } catch (std::exception const&) {
        return CAIRO_STATUS_WRITE_ERROR;
    }
}

void check(cairo_status_t status) {
    if (status == CAIRO_STATUS_SUCCESS) return;
    raise_fault(FaultNumber::PrinterError,
                std::string("The sheet cannot be drawn: ") + cairo_status_to_string(status));
}

bool is_a_side(double twips) {
    return twips > 0 && twips <= largest_side;
}

} // namespace

struct PdfSheet::Document {
    std::vector<std::uint8_t> bytes; // outlives the surface that writes to it
    Surface surface;

    explicit Document(host::PaperSize const& paper)
        : surface(cairo_pdf_surface_create_for_stream(append_bytes, &bytes, paper.width / twips_per_point,
                                                      paper.height / twips_per_point)) {
        check(cairo_surface_status(surface.get()));
    }
};

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
    auto const& pixels = static_cast<raster::RasterSurface const&>(picture);
    bool const lies = orientation_ == host::PageOrientation::Landscape;
    if (!document_)
        document_ =
            std::make_unique<Document>(lies ? host::PaperSize{upright_.height, upright_.width} : upright_);
    // The image is only read, although the interface cannot say so.
    auto* data = const_cast<unsigned char*>(reinterpret_cast<unsigned char const*>(pixels.pixels().data()));
    const Surface image(cairo_image_surface_create_for_data(data, CAIRO_FORMAT_RGB24, pixels.width(),
                                                            pixels.height(), pixels.stride() * 4));
    const Drawing drawing(cairo_create(document_->surface.get()));
    cairo_translate(drawing.get(), place.left / twips_per_point, place.top / twips_per_point);
    cairo_scale(drawing.get(), place.width / twips_per_point / pixels.width(),
                place.height / twips_per_point / pixels.height());
    cairo_set_source_surface(drawing.get(), image.get(), 0, 0);
    cairo_paint(drawing.get());
    check(cairo_status(drawing.get()));
}

void PdfSheet::end_document() {
    if (!document_) document_ = std::make_unique<Document>(upright_); // a blank sheet
    cairo_surface_finish(document_->surface.get());
    check(cairo_surface_status(document_->surface.get()));
    raster::replace_file(file_, document_->bytes);
    document_.reset();
}

} // namespace qv::output
