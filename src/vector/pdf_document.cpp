#include "vector/pdf_document.h"

#include <cairo-pdf.h>

namespace qv::vector {

// Called from C, through which no exception may pass.
cairo_status_t PdfDocument::append_bytes(void* file, unsigned char const* data,
                                         unsigned int length) noexcept {
    auto& target = *static_cast<File*>(file);
    try {
        target.bytes.insert(target.bytes.end(), data, data + length);
    } catch (std::exception const&) {
        target.is_cut = true;
    }
    return target.is_cut ? CAIRO_STATUS_NO_MEMORY : CAIRO_STATUS_SUCCESS;
}

PdfDocument::PdfDocument(double width, double height, FaultNumber fault)
    : fault_(fault), surface_(cairo_pdf_surface_create_for_stream(append_bytes, &file_, width, height)),
      drawing_(cairo_create(surface_.get())) {
    cairo_pdf_surface_set_metadata(surface_.get(), CAIRO_PDF_METADATA_CREATE_DATE, "");
    check();
}

void PdfDocument::check() const {
    cairo_status_t status = cairo_status(drawing_.get());
    if (status == CAIRO_STATUS_SUCCESS) status = cairo_surface_status(surface_.get());
    if (file_.is_cut || status == CAIRO_STATUS_NO_MEMORY) raise_fault(FaultNumber::OutOfMemory);
    if (status != CAIRO_STATUS_SUCCESS)
        raise_fault(fault_, std::string("The PDF page cannot be drawn: ") + cairo_status_to_string(status));
}

void PdfDocument::draw(raster::RasterSurface const& picture, Box const& place) {
    // The pixels are only read, although the interface cannot say so.
    auto* const pixels =
        const_cast<unsigned char*>(reinterpret_cast<unsigned char const*>(picture.pixels().data()));
    const CairoSurface image(cairo_image_surface_create_for_data(pixels, CAIRO_FORMAT_RGB24, picture.width(),
                                                                 picture.height(), picture.stride() * 4));
    cairo_save(drawing());
    cairo_translate(drawing(), place.left, place.top);
    cairo_scale(drawing(), place.width / picture.width(), place.height / picture.height());
    cairo_set_source_surface(drawing(), image.get(), 0, 0);
    cairo_paint(drawing());
    cairo_restore(drawing());
    check();
}

std::vector<std::uint8_t> PdfDocument::finish() {
    check();
    cairo_surface_finish(surface_.get());
    check();
    return std::move(file_.bytes);
}

} // namespace qv::vector
