#include "qvgraph/RasterSurface.h"

#include "qvgraph/fault.h"
#include "raster/blend.h"
#include "raster/canvas.h"
#include "raster/round_shapes.h"
#include "raster/stroke.h"
#include "raster/symbol_sprites.h"
#include "raster/whole_line.h"

#include <array>
#include <cstring>
#include <limits>

namespace qv::raster {
namespace {

constexpr int longest_side = 32767;
constexpr double most_pixels = 1 << 28;

int side_in_pixels(double twips, double twips_per_pixel) {
    if (std::isnan(twips)) raise_fault(FaultNumber::InvalidProcedureCall);
    int const side = std::max(1, whole_pixel(twips / twips_per_pixel));
    if (side > longest_side) raise_fault(FaultNumber::OutOfMemory);
    return side;
}

// Copying a row stores many pixels at a time, which a loop over single ones may not.
void fill_pixels(PixelBuffer& buffer, PixelBox const& box, std::uint32_t value) {
    if (box.empty()) return;
    std::uint32_t const* const first =
        std::fill_n(buffer.row(box.top) + box.left, box.width(), value) - box.width();
    for (int y = box.top + 1; y < box.bottom; ++y)
        std::memcpy(buffer.row(y) + box.left, first, static_cast<std::size_t>(box.width()) * sizeof value);
}

// The four sides of a box of pixels. `InsideSolid` keeps a wide pen within the box.
void stroke_box(auto fill, PixelBox const& clip, PixelBox box, Pen const& pen) {
    if (pen.style == DrawStyle::InsideSolid) {
        int const width = whole_pen(pen.width);
        box = {box.left + width / 2, box.top + width / 2, box.right - (width - 1) / 2,
               box.bottom - (width - 1) / 2};
        if (box.empty()) return;
    }
    auto const side = [&](int left, int top, int right, int bottom) {
        stroke_snapped(fill, clip, {left, top, right, bottom}, pen);
    };
    side(box.left, box.top, box.right, box.top + 1);
    side(box.left, box.bottom - 1, box.right, box.bottom);
    side(box.left, box.top, box.left + 1, box.bottom);
    side(box.right - 1, box.top, box.right, box.bottom);
}

// What `InsideSolid` does to an ellipse.
Oval pen_oval(Oval oval, Pen const& pen) {
    if (pen.style != DrawStyle::InsideSolid) return oval;
    double const inset = (pen.width - 1) / 2;
    oval.radius_x = std::max(0.0, oval.radius_x - inset);
    oval.radius_y = std::max(0.0, oval.radius_y - inset);
    return oval;
}

} // namespace

RasterSurface::RasterSurface(double twips_per_pixel_x, double twips_per_pixel_y,
                             std::shared_ptr<FontLibrary> fonts)
    : fonts_(std::move(fonts)), canvas_(std::make_unique<Canvas>()) {
    set_twips_per_pixel(twips_per_pixel_x, twips_per_pixel_y);
    Cls();
}

RasterSurface::~RasterSurface() = default;
RasterSurface::RasterSurface(RasterSurface&&) noexcept = default;
RasterSurface& RasterSurface::operator=(RasterSurface&&) noexcept = default;

void RasterSurface::set_twips_per_pixel(double x, double y) {
    if (!(x > 0 && y > 0 && std::isfinite(x) && std::isfinite(y)))
        raise_fault(FaultNumber::InvalidProcedureCall, "Twips per pixel must be positive numbers");
    twips_per_pixel_x_ = x;
    twips_per_pixel_y_ = y;
}

std::span<std::uint32_t const> RasterSurface::pixels() const {
    return canvas_->pixels.read().pixels;
}

std::shared_ptr<std::uint32_t const> RasterSurface::snapshot() const {
    return canvas_->pixels.hold();
}

int RasterSurface::width() const {
    return canvas_->pixels.read().width;
}

int RasterSurface::height() const {
    return canvas_->pixels.read().height;
}

PixelSize RasterSurface::GetClientRect() const {
    return {width(), height()};
}

void RasterSurface::Move(double width_twips, double height_twips) {
    int const new_width = side_in_pixels(width_twips, twips_per_pixel_x_);
    int const new_height = side_in_pixels(height_twips, twips_per_pixel_y_);
    if (static_cast<double>(new_width) * new_height > most_pixels) raise_fault(FaultNumber::OutOfMemory);
    if (new_width == width() && new_height == height()) return;
    canvas_->paint_open_shapes();
    PixelBuffer resized{
        new_width, new_height,
        std::vector<std::uint32_t>(static_cast<std::size_t>(new_width) * static_cast<std::size_t>(new_height),
                                   pixel_value(state.BackColor))};
    PixelBuffer const& before = canvas_->pixels.read();
    const PixelBox kept = intersection(resized.bounds(), before.bounds());
    for (int y = 0; y < kept.bottom; ++y) std::copy_n(before.row(y), kept.right, resized.row(y));
    canvas_->clip = resized.bounds();
    canvas_->pixels.replace(std::move(resized));
}

void RasterSurface::Cls() {
    canvas_->paint_open_shapes();
    PixelBuffer& buffer = canvas_->pixels.write_all();
    fill_pixels(buffer, buffer.bounds(), pixel_value(state.BackColor));
}

void RasterSurface::SelectClipPath(Box const& box) {
    canvas_->drop_what_failed();
    const PixelBox pixels = spanned({box.left / twips_per_pixel_x_, box.top / twips_per_pixel_y_},
                                    {box.right() / twips_per_pixel_x_, box.bottom() / twips_per_pixel_y_});
    canvas_->clip = intersection(pixels, canvas_->pixels.read().bounds());
}

void RasterSurface::BitBlt(PixelPoint target, PixelSize size, DrawSurface const& source, PixelPoint origin) {
    auto const* const other = dynamic_cast<RasterSurface const*>(&source);
    if (other == nullptr)
        raise_fault(FaultNumber::InvalidProcedureCall,
                    "A block can only be copied from another raster surface");
    canvas_->paint_open_shapes();
    int const dx = whole_pixel(target.x) - whole_pixel(origin.x);
    int const dy = whole_pixel(target.y) - whole_pixel(origin.y);
    int const left = whole_pixel(target.x), top = whole_pixel(target.y);
    auto const far = static_cast<int>(farthest_pixel);
    const PixelBox block{left, top, left + std::clamp(size.width, 0, far),
                         top + std::clamp(size.height, 0, far)};
    const PixelBox box = intersection(intersection(block, canvas_->clip),
                                      moved(other->canvas_->pixels.read().bounds(), dx, dy));
    if (box.empty()) return;
    PixelBox const whole = canvas_->pixels.read().bounds();
    if (dx == 0 && dy == 0 && box == whole && whole == other->canvas_->pixels.read().bounds())
        return canvas_->pixels.share(other->canvas_->pixels);
    PixelBuffer& to = canvas_->pixels.write();
    PixelBuffer const& from = other->canvas_->pixels.read();
    // Within one surface, rows are taken in the order in which none is overwritten before it is read.
    for (int i = 0; i < box.height(); ++i) {
        int const y = dy > 0 ? box.bottom - 1 - i : box.top + i;
        std::memmove(to.row(y) + box.left, from.row(y - dy) + box.left - dx,
                     static_cast<std::size_t>(box.width()) * sizeof(std::uint32_t));
    }
}

void RasterSurface::Line(Point from, Point to, LineShape shape, Color color) {
    const PixelPoint a{from.x / twips_per_pixel_x_, from.y / twips_per_pixel_y_};
    const PixelPoint b{to.x / twips_per_pixel_x_, to.y / twips_per_pixel_y_};
    if (!is_finite(a) || !is_finite(b)) return;
    const Pen pen = pen_of(*this);
    bool const is_slanted = shape == LineShape::Segment && from.x != to.x && from.y != to.y;
    auto const draw_boxes = [&](auto fill) {
        if (shape == LineShape::FilledBox)
            fill(intersection(spanned(a, b), canvas_->clip));
        else if (shape == LineShape::Box)
            stroke_box(fill, canvas_->clip, spanned(a, b), pen);
        else
            stroke_snapped(fill, canvas_->clip, spanned(a, b), pen);
    };
    if (!is_slanted && canvas_->paints_at_once(state)) {
        PixelBuffer& buffer = canvas_->pixels.write();
        return draw_boxes(
            [&, value = pixel_value(color)](PixelBox const& box) { fill_pixels(buffer, box, value); });
    }
    CoverageMask& mask = canvas_->mask(state, color);
    if (is_slanted)
        stroke_segment(mask, canvas_->clip, {a, b}, pen);
    else
        draw_boxes([&](PixelBox const& box) { mask.fill(box); });
    canvas_->finish();
}

void RasterSurface::PSet(Point point) {
    const PixelPoint place{point.x / twips_per_pixel_x_, point.y / twips_per_pixel_y_};
    if (!is_finite(place)) return;
    const Pen pen = pen_of(*this);
    CoverageMask& mask = canvas_->mask(state, state.ForeColor);
    if (whole_pen(pen.width) == 1)
        mask.fill(intersection(spanned(place, place), canvas_->clip));
    else
        fill_oval(mask, canvas_->clip, {place, pen.width / 2, pen.width / 2}, pen.edge);
    canvas_->finish();
}

void RasterSurface::Circle(Point centre, double radius_twips) {
    double const radius = std::abs(radius_twips);
    const PixelPoint place{centre.x / twips_per_pixel_x_, centre.y / twips_per_pixel_y_};
    const PixelPoint radii{radius / twips_per_pixel_x_, radius / twips_per_pixel_y_};
    if (!is_finite(place) || !is_finite(radii)) return;
    const Oval oval{place, radii.x, radii.y};
    const Pen pen = pen_of(*this);
    if (state.fill_style == FillStyle::Solid)
        fill_oval(canvas_->mask(state, state.FillColor), canvas_->clip, oval, pen.edge);
    stroke_oval(canvas_->mask(state, state.ForeColor), canvas_->clip, pen_oval(oval, pen), pen);
    canvas_->finish();
}

void RasterSurface::Polygon(std::span<PixelPoint const> corners) {
    if (corners.empty() || !std::ranges::all_of(corners, is_finite)) return;
    const Pen pen = pen_of(*this);
    if (state.fill_style == FillStyle::Solid)
        canvas_->filler.fill(canvas_->mask(state, state.FillColor), canvas_->clip, corners, pen.edge);
    CoverageMask& mask = canvas_->mask(state, state.ForeColor);
    stroke_polyline(mask, canvas_->clip, corners, pen, canvas_->band);
    stroke_segment(mask, canvas_->clip, {corners.back(), corners.front()}, pen);
    canvas_->finish();
}

void RasterSurface::Rectangle(PixelPoint left_top, PixelPoint right_bottom) {
    if (!is_finite(left_top) || !is_finite(right_bottom)) return;
    PixelBox box = spanned(left_top, right_bottom);
    --box.right, --box.bottom;
    if (box.empty()) return;
    if (state.fill_style == FillStyle::Solid)
        canvas_->mask(state, state.FillColor).fill(intersection(box, canvas_->clip));
    CoverageMask& mask = canvas_->mask(state, state.ForeColor);
    stroke_box([&](PixelBox const& side) { mask.fill(side); }, canvas_->clip, box, pen_of(*this));
    canvas_->finish();
}

void RasterSurface::Ellipse(PixelPoint left_top, PixelPoint right_bottom) {
    if (!is_finite(left_top) || !is_finite(right_bottom)) return;
    PixelBox box = spanned(left_top, right_bottom);
    --box.right, --box.bottom;
    if (box.empty()) return;
    const Oval oval{{(box.left + box.right - 1) / 2.0, (box.top + box.bottom - 1) / 2.0},
                    (box.width() - 1) / 2.0,
                    (box.height() - 1) / 2.0};
    const Pen pen = pen_of(*this);
    if (state.fill_style == FillStyle::Solid)
        fill_oval(canvas_->mask(state, state.FillColor), canvas_->clip, oval, pen.edge);
    stroke_oval(canvas_->mask(state, state.ForeColor), canvas_->clip, pen_oval(oval, pen), pen);
    canvas_->finish();
}

void RasterSurface::LineTo(PixelPoint from, PixelPoint to, Color color) {
    if (!is_finite(from) || !is_finite(to)) return;
    if (!canvas_->paints_at_once(state)) {
        const Pen pen{1, DrawStyle::Solid, Edge::Whole};
        stroke_segment(canvas_->mask(state, color), canvas_->clip, {from, to}, pen);
        return canvas_->finish();
    }
    // Copies, which a store to a pixel cannot have changed.
    const std::uint32_t value = pixel_value(color);
    PixelBuffer& buffer = canvas_->pixels.write();
    std::uint32_t* const pixels = buffer.pixels.data();
    std::ptrdiff_t const width = buffer.width;
    walk_whole_line(canvas_->clip, {from, to}, [=](int x, int y) { pixels[y * width + x] = value; });
}

void RasterSurface::Polyline(std::span<Point const> points) {
    std::vector<PixelPoint>& places = canvas_->points;
    places.resize(points.size());
    std::ranges::transform(points, places.begin(), [&](Point p) {
        return PixelPoint{p.x / twips_per_pixel_x_, p.y / twips_per_pixel_y_};
    });
    stroke_polyline(canvas_->mask(state, state.ForeColor), canvas_->clip, places, pen_of(*this),
                    canvas_->band);
    canvas_->finish();
}

void RasterSurface::LineParts(std::span<LinePart const> parts) {
    std::vector<SegmentPart>& segments = canvas_->parts;
    segments.resize(parts.size());
    std::ranges::transform(parts, segments.begin(), [&](LinePart const& part) {
        return SegmentPart{{{part.from.x / twips_per_pixel_x_, part.from.y / twips_per_pixel_y_},
                            {part.to.x / twips_per_pixel_x_, part.to.y / twips_per_pixel_y_}},
                           {part.left, part.top, part.right, part.bottom}};
    });
    stroke_parts(canvas_->mask(state, state.ForeColor), canvas_->clip, segments, pen_of(*this),
                 canvas_->band);
    canvas_->finish();
}

void RasterSurface::CoverColumns(std::span<PixelColumn const> columns,
                                 std::span<std::uint8_t const> coverage) {
    cover_columns(canvas_->mask(state, state.ForeColor), canvas_->clip, columns, coverage, canvas_->band);
    canvas_->finish();
}

void RasterSurface::Symbols(SymbolBatch const& batch) {
    bool const lines = batch.shape == SymbolShape::Dot || batch.shape == SymbolShape::Plus
                       || batch.shape == SymbolShape::Cross;
    double const half_size = std::abs(static_cast<double>(batch.half_size));
    Pen pen = pen_of(*this);
    pen.style = DrawStyle::Solid;
    const Symbol symbol{batch.shape, half_size / twips_per_pixel_x_, half_size / twips_per_pixel_y_, pen};
    std::vector<PixelPoint>& places = canvas_->points;
    places.resize(batch.centres.size());
    std::ranges::transform(batch.centres, places.begin(), [&](Point p) {
        return PixelPoint{p.x / twips_per_pixel_x_, p.y / twips_per_pixel_y_};
    });
    canvas_->stamper.stamp(canvas_->mask(state, lines ? state.ForeColor : state.FillColor), canvas_->clip,
                           symbol, places, canvas_->filler);
    canvas_->finish();
}

void RasterSurface::Pixels(PixelPoint left_top, PixelSize size, std::span<std::uint32_t const> pixels) {
    if (state.draw_mode != DrawMode::Copy || !is_finite(left_top)) return;
    canvas_->paint_open_shapes();
    int const left = whole_pixel(left_top.x), top = whole_pixel(left_top.y);
    const PixelBox block{left, top, left + std::max(size.width, 0), top + std::max(size.height, 0)};
    const PixelBox box = intersection(block, canvas_->clip);
    PixelBuffer& buffer = canvas_->pixels.write();
    for (int y = box.top; y < box.bottom; ++y) {
        std::uint32_t const* from = pixels.data() + static_cast<std::ptrdiff_t>(y - top) * size.width;
        from += box.left - left;
        std::uint32_t* const to = buffer.row(y) + box.left;
        for (int x = 0; x < box.width(); ++x) {
            const std::uint32_t opacity = (from[x] >> 24) * state.alpha / 255;
            if (opacity == 255)
                to[x] = from[x];
            else if (opacity != 0)
                to[x] = LinearMixer(from[x] | 0xFF000000U).mix(to[x], opacity);
        }
    }
}

void RasterSurface::BeginShape() {
    canvas_->drop_what_failed();
    ++canvas_->open_shapes;
}

void RasterSurface::EndShape() {
    canvas_->open_shapes = std::max(0, canvas_->open_shapes - 1);
    canvas_->finish();
}

void RasterSurface::DropShape() noexcept {
    canvas_->open_shapes = std::max(0, canvas_->open_shapes - 1);
    if (canvas_->open_shapes == 0) canvas_->layers.drop();
}

} // namespace qv::raster
