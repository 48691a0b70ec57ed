#include "raster/symbol_sprites.h"

#include "raster/round_shapes.h"
#include "surface/symbol_form.h"

#include <array>
#include <cstring>

namespace qv::raster {
namespace {

constexpr int block = 16; // bytes raised at once
static_assert(block <= CoverageMask::row_padding);

// Pixels that a symbol can cover, around its centre.
int reach_of(Symbol const& symbol) {
    return static_cast<int>(std::ceil(farthest_corner * std::max(symbol.half_width, symbol.half_height)
                                      + symbol.pen.width / 2 + 2));
}

// Whether the symbol lies on whole pixels wherever its centre is.
bool is_snapped(Symbol const& symbol) {
    if (symbol.pen.edge == Edge::Whole) return true;
    const SymbolForm form = symbol_form(symbol.shape);
    switch (form.kind) {
    case SymbolForm::Kind::Box: return true;
    case SymbolForm::Kind::Lines: return is_along_pixels(form.places[0], form.places[1]);
    case SymbolForm::Kind::Dot: return whole_pen(symbol.pen.width) == 1;
    default: return false;
    }
}

struct SymbolPainter {
    CoverageMask& mask;
    PixelBox clip;
    Symbol const& symbol;
    PixelPoint centre;
    PolygonFiller& filler;

    PixelPoint at(PixelPoint point) const {
        return {centre.x + point.x * symbol.half_width, centre.y + point.y * symbol.half_height};
    }
    void polygon(std::span<PixelPoint const> points) const {
        std::array<PixelPoint, SymbolForm::most_points> places{};
        std::ranges::transform(points, places.begin(), [this](PixelPoint point) { return at(point); });
        const std::span<PixelPoint const> corners = std::span(places).first(points.size());
        filler.fill(mask, clip, corners, symbol.pen.edge);
        for (std::size_t i = 0; i < corners.size(); ++i)
            line(corners[i], corners[i + 1 < corners.size() ? i + 1 : 0]);
    }
    void oval() const {
        fill_oval(mask, clip, {centre, symbol.half_width, symbol.half_height}, symbol.pen.edge);
        stroke_oval(mask, clip, {centre, symbol.half_width, symbol.half_height}, symbol.pen);
    }
    // On whole pixels, as boxes and upright lines are everywhere. Middle and half sides are each rounded, so
    // that the symbols of a series have one size.
    PixelBox snapped(double wide, double tall) const {
        int const x = whole_pixel(centre.x), across = whole_pixel(wide * symbol.half_width);
        int const y = whole_pixel(centre.y), down = whole_pixel(tall * symbol.half_height);
        return {x - across, y - down, x + across + 1, y + down + 1};
    }
    void rectangle(PixelPoint corner) const {
        const PixelBox box = snapped(corner.x, corner.y);
        int const width = whole_pen(symbol.pen.width);
        mask.fill(intersection({box.left - width / 2, box.top - width / 2, box.right - width / 2 + width - 1,
                                box.bottom - width / 2 + width - 1},
                               clip));
    }
    void lines(std::span<PixelPoint const> ends) const {
        for (std::size_t i = 0; i + 1 < ends.size(); i += 2)
            if (is_along_pixels(ends[i], ends[i + 1]))
                stroke_snapped([&](PixelBox const& box) { mask.fill(box); }, clip,
                               snapped(std::abs(ends[i].x), std::abs(ends[i].y)), symbol.pen);
            else
                line(at(ends[i]), at(ends[i + 1]));
    }
    void dot() const {
        double const radius = symbol.pen.width / 2;
        if (whole_pen(symbol.pen.width) == 1)
            mask.fill(intersection(snapped(0, 0), clip));
        else
            fill_oval(mask, clip, {centre, radius, radius}, symbol.pen.edge);
    }
    void line(PixelPoint from, PixelPoint to) const { stroke_segment(mask, clip, {from, to}, symbol.pen); }
};

PixelBox touched_box(CoverageMask const& mask) {
    PixelBox box{mask.width(), mask.height(), 0, 0};
    for (int y = 0; y < mask.height(); ++y)
        for (int x = 0; x < mask.width(); ++x)
            if (mask.row(y)[x] != 0)
                box = {std::min(box.left, x), std::min(box.top, y), std::max(box.right, x + 1),
                       std::max(box.bottom, y + 1)};
    return box.empty() ? PixelBox{} : box;
}

// The symbol drawn at this place within the pixel (reach, reach).
CoverageMask mask_at(Symbol const& symbol, PixelPoint phase, PolygonFiller& filler) {
    int const reach = reach_of(symbol);
    CoverageMask mask;
    mask.resize(2 * reach + 1, 2 * reach + 1);
    const PixelPoint centre{reach + phase.x, reach + phase.y};
    draw_symbol(mask, {0, 0, mask.width(), mask.height()}, symbol, centre, filler);
    return mask;
}

// The pixels of the symbol at any place within its pixel. One size for all makes stamping predictable.
PixelBox frame_of(Symbol const& symbol, PolygonFiller& filler) {
    const CoverageMask mask = mask_at(symbol, {0, 0}, filler);
    PixelBox frame = touched_box(mask);
    if (frame.empty()) return frame;
    frame.right = std::min(frame.right + (is_snapped(symbol) ? 0 : 1), mask.width());
    frame.bottom = std::min(frame.bottom + (is_snapped(symbol) ? 0 : 1), mask.height());
    return frame;
}

// Through copies, which the compiler keeps in a vector register and knows not to overlap.
void raise_block(std::uint8_t* to, std::uint8_t const* from) {
    std::array<std::uint8_t, block> raised, other;
    std::memcpy(raised.data(), to, block);
    std::memcpy(other.data(), from, block);
    for (std::size_t k = 0; k < block; ++k) raised[k] = std::max(raised[k], other[k]);
    std::memcpy(to, raised.data(), block);
}

void raise_rows(CoverageMask& mask, PixelBox const& box, std::span<std::uint8_t const> sprite, int stride) {
    std::uint8_t const* from = sprite.data();
    std::uint8_t* to = mask.row(box.top) + box.left;
    for (int rows = box.height(); rows > 0; --rows, to += mask.stride())
        for (int i = 0; i < stride; i += block, from += block) raise_block(to + i, from);
}

void raise_shown(CoverageMask& mask, PixelBox const& box, PixelBox const& shown,
                 std::span<std::uint8_t const> sprite, int stride) {
    for (int y = shown.top; y < shown.bottom && !shown.empty(); ++y) {
        std::uint8_t const* const from = sprite.data() + static_cast<std::ptrdiff_t>(y - box.top) * stride;
        for (int x = shown.left; x < shown.right; ++x)
            mask.row(y)[x] = std::max(mask.row(y)[x], from[x - box.left]);
    }
}

PixelBox joined(PixelBox const& a, PixelBox const& b) {
    return {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
            std::max(a.bottom, b.bottom)};
}

} // namespace

void draw_symbol(CoverageMask& mask, PixelBox const& clip, Symbol const& symbol, PixelPoint centre,
                 PolygonFiller& filler) {
    const SymbolPainter painter{mask, clip, symbol, centre, filler};
    const SymbolForm form = symbol_form(symbol.shape);
    switch (form.kind) {
    case SymbolForm::Kind::Dot: painter.dot(); break;
    case SymbolForm::Kind::Oval: painter.oval(); break;
    case SymbolForm::Kind::Box: painter.rectangle(form.places[1]); break;
    case SymbolForm::Kind::Polygon: painter.polygon(form.points()); break;
    case SymbolForm::Kind::Lines: painter.lines(form.points()); break;
    }
}

void TakenPlaces::start(PixelBox const& box) {
    box_ = box;
    taken_.assign(static_cast<std::size_t>(box.width()) * static_cast<std::size_t>(box.height()), 0);
}

void SymbolStamper::stamp(CoverageMask& mask, PixelBox const& clip, Symbol const& symbol,
                          std::span<PixelPoint const> centres, PolygonFiller& filler) {
    // Above this size sprites cost more memory than they save time.
    constexpr int largest_sprite = 64;
    // From here on symbols are likely to lie on others, and remembering places costs less than they do.
    constexpr std::size_t crowd = 5000;
    follow(symbol, {&mask, mask.generation(), clip});
    int const reach = reach_of(symbol);
    const PixelBox near = grown(clip, reach);
    stamped_ += centres.size();
    if (stamped_ > crowd && !taken_.is_started() && reach <= largest_sprite)
        taken_.start({near.left, near.top, near.right + 1, near.bottom + 1});

    int const phase_bits = is_snapped(symbol) ? 0 : TakenPlaces::phase_bits;
    int const phases = 1 << phase_bits; // places within a pixel, along each axis
    PixelBox touched{clip.right, clip.bottom, clip.left, clip.top};
    for (PixelPoint const centre : centres) {
        // Written so that not-a-number fails.
        if (!(centre.x >= near.left && centre.x <= near.right && centre.y >= near.top
              && centre.y <= near.bottom))
            continue;
        if (reach > largest_sprite) {
            draw_symbol(mask, clip, symbol, centre, filler);
            continue;
        }
        int const fine_x = floor_int(centre.x * phases + 0.5), fine_y = floor_int(centre.y * phases + 0.5);
        int const x = fine_x >> phase_bits, y = fine_y >> phase_bits; // rounds down
        int const phase = (fine_y & (phases - 1)) * phases + (fine_x & (phases - 1));
        if (taken_.is_started() && !taken_.take(x, y, phase)) continue;
        Sprite const& stamp = sprite(phase, phases, filler);
        const PixelBox box = moved(stamp.box, x, y), shown = intersection(box, clip);
        if (shown.empty()) continue;
        if (shown == box)
            raise_rows(mask, box, stamp.bytes, stamp.stride);
        else
            raise_shown(mask, box, shown, stamp.bytes, stamp.stride);
        if (taken_.is_started())
            touched = joined(touched, shown); // in a crowd all are touched as one box
        else
            mask.touch(shown);
    }
    if (!touched.empty()) mask.touch(touched);
}

void SymbolStamper::follow(Symbol const& symbol, Ground const& ground) {
    if (symbol_ == symbol && ground_ == ground) return;
    if (symbol_ != symbol) {
        symbol_ = symbol;
        frame_.reset();
        sprites_.fill(std::nullopt);
    }
    ground_ = ground;
    taken_.stop();
    stamped_ = 0;
}

SymbolStamper::Sprite const& SymbolStamper::sprite(int phase, int phases, PolygonFiller& filler) {
    std::optional<Sprite>& found = sprites_[static_cast<std::size_t>(phase)];
    if (found) return *found;
    if (!frame_) frame_ = frame_of(*symbol_, filler);
    int const reach = reach_of(*symbol_);
    int const column = phase % phases, row = phase / phases;
    const CoverageMask mask = mask_at(*symbol_, {1.0 * column / phases, 1.0 * row / phases}, filler);
    Sprite drawn{moved(*frame_, -reach, -reach), (frame_->width() + block - 1) / block * block, {}};
    drawn.bytes.resize(static_cast<std::size_t>(drawn.stride) * static_cast<std::size_t>(frame_->height()));
    for (int y = 0; y < frame_->height(); ++y)
        std::copy_n(mask.row(frame_->top + y) + frame_->left, frame_->width(),
                    drawn.bytes.begin() + static_cast<std::ptrdiff_t>(y) * drawn.stride);
    found = std::move(drawn);
    return *found;
}

} // namespace qv::raster
