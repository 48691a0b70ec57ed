// A PDF document of one page that is being drawn.
#pragma once

#include "qvgraph/RasterSurface.h"
#include "qvgraph/fault.h"

#include <cairo.h>

#include <cstdint>
#include <memory>
#include <vector>

namespace qv::vector {

/// Releases a C library's object.
template <auto release>
struct Release {
    void operator()(auto* object) const { release(object); }
};
using CairoSurface = std::unique_ptr<cairo_surface_t, Release<cairo_surface_destroy>>;

class PdfDocument {
public:
    /// Sides in points (72 an inch). `fault` is what failures are reported as.
    PdfDocument(double width, double height, FaultNumber fault);

    /// One unit is a point, from the page's left top corner.
    cairo_t* drawing() { return drawing_.get(); }
    /// Draws a picture without loss into a box in the drawing's units.
    void draw(raster::RasterSurface const& picture, Box const& place);
    /// Ends the page and gives the file's bytes.
    std::vector<std::uint8_t> finish();
    /// Turns what has failed in drawing into a fault.
    void check() const;

private:
    FaultNumber fault_;
    /// What the library writes to. It does not pass every failure on.
    struct File {
        std::vector<std::uint8_t> bytes;
        bool is_cut = false; // memory has ended
    };
    static cairo_status_t append_bytes(void* file, unsigned char const* data, unsigned int length) noexcept;

    File file_; // outlives the surface that writes to it
    CairoSurface surface_;
    std::unique_ptr<cairo_t, Release<cairo_destroy>> drawing_;
};

} // namespace qv::vector
