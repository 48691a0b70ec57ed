#include "platform/raster/symbol_sprites.h"

#include "platform/raster/round_shapes.h"

#include <array>
#include <cstring>

namespace qv::raster {
namespace {

constexpr int block = 16; // bytes raised at once
static_assert(block <= CoverageMask::row_padding);

// Pixels that a symbol can cover, around its centre.
int reach_of(Symbol const& symbol) {
    // A triangle's apex lies one and a half half-heights away, a wide rectangle's end 1.3.
    return static_cast<int>(
        std::ceil(1.5 * std::max(symbol.half_width, symbol.half_height) + symbol.pen.width / 2 + 2));
}

// Whether the symbol lies on whole pixels wherever its centre is.
bool is_snapped(Symbol const& symbol) {
    switch (symbol.shape) {
    case SymbolShape::Square:
    case SymbolShape::WideRectangle:
    case SymbolShape::TallRectangle:
    case SymbolShape::Plus: return true;
    case SymbolShape::Dot: return symbol.pen.edge == Edge::Whole || symbol.pen.width <= 1;
    default: return symbol.pen.edge == Edge::Whole;
    }
}

struct SymbolPainter {
    CoverageMask& mask;
    PixelBox clip;
    Symbol const& symbol;
    PixelPoint centre;
    PolygonFiller& filler;

    PixelPoint at(double right, double down) const {
        return {centre.x + right * symbol.half_width, centre.y + down * symbol.half_height};
    }
    void outline(std::span<PixelPoint const> corners) const {
        filler.fill(mask, clip, corners, symbol.pen.edge);
        for (std::size_t i = 0; i < corners.size(); ++i)
            line(corners[i], corners[i + 1 < corners.size() ? i + 1 : 0]);
    }
    void oval() const {
        fill_oval(mask, clip, {centre, symbol.half_width, symbol.half_height}, symbol.pen.edge);
        stroke_oval(mask, clip, {centre, symbol.half_width, symbol.half_height}, symbol.pen);
    }
    // On whole pixels, as boxes and upright lines are everywhere.
    PixelBox snapped(double wide, double tall) const {
        const PixelPoint first = at(-wide, -tall), last = at(wide, tall);
        return {whole_pixel(first.x), whole_pixel(first.y), whole_pixel(last.x) + 1, whole_pixel(last.y) + 1};
    }
    void rectangle(double wide, double tall) const {
        const PixelBox box = snapped(wide, tall);
        int const width = static_cast<int>(symbol.pen.width);
        mask.fill(intersection({box.left - width / 2, box.top - width / 2, box.right - width / 2 + width - 1,
                                box.bottom - width / 2 + width - 1},
                               clip));
    }
    void plus() const {
        stroke_snapped(mask, clip, snapped(1, 0), symbol.pen);
        stroke_snapped(mask, clip, snapped(0, 1), symbol.pen);
    }
    void triangle(double direction) const {
        outline(std::array{at(0, -1.5 * direction), at(-1, direction / 2), at(1, direction / 2)});
    }
    void dot() const {
        double const radius = symbol.pen.width / 2;
        if (radius < 1)
            mask.fill(intersection(snapped(0, 0), clip));
        else
            fill_oval(mask, clip, {centre, radius, radius}, symbol.pen.edge);
    }
    void line(PixelPoint from, PixelPoint to) const { stroke_segment(mask, clip, {from, to}, symbol.pen); }
};

// Coverage of a symbol; `box` is where it has any, around the pixel of the centre.
struct Sprite {
    PixelBox box;
    int stride = 0;
    std::vector<std::uint8_t> bytes;
    bool made = false;
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

Sprite make_sprite(Symbol const& symbol, PixelBox const& frame, PixelPoint phase, PolygonFiller& filler) {
    int const reach = reach_of(symbol);
    const CoverageMask mask = mask_at(symbol, phase, filler);
    Sprite sprite{moved(frame, -reach, -reach), (frame.width() + block - 1) / block * block, {}, true};
    sprite.bytes.resize(static_cast<std::size_t>(sprite.stride) * static_cast<std::size_t>(frame.height()));
    for (int y = 0; y < frame.height(); ++y)
        std::copy_n(mask.row(frame.top + y) + frame.left, frame.width(),
                    sprite.bytes.begin() + static_cast<std::ptrdiff_t>(y) * sprite.stride);
    return sprite;
}

// Through copies, which the compiler keeps in a vector register and knows not to overlap.
void raise_block(std::uint8_t* to, std::uint8_t const* from) {
    std::array<std::uint8_t, block> raised, other;
    std::memcpy(raised.data(), to, block);
    std::memcpy(other.data(), from, block);
    for (std::size_t k = 0; k < block; ++k) raised[k] = std::max(raised[k], other[k]);
    std::memcpy(to, raised.data(), block);
}

class Stamper {
public:
    // Where there are many symbols, they are touched as one box.
    Stamper(CoverageMask& mask, PixelBox const& clip, Symbol const& symbol, PolygonFiller& filler,
            std::size_t count)
        : mask_(mask), clip_(clip), symbol_(symbol), filler_(filler), phase_bits_(is_snapped(symbol) ? 0 : 2),
          dense_(count > 2000) {}
    ~Stamper() {
        if (dense_ && !all_.empty()) mask_.touch(all_);
    }
    Stamper(Stamper const&) = delete;
    Stamper& operator=(Stamper const&) = delete;

    void stamp(PixelPoint centre) {
        int const fine_x = floor_int(centre.x * phases_ + 0.5), fine_y = floor_int(centre.y * phases_ + 0.5);
        int const x = fine_x >> phase_bits_, y = fine_y >> phase_bits_; // rounds down
        stamp(sprite(fine_x & (phases_ - 1), fine_y & (phases_ - 1)), x, y);
    }

private:
    Sprite const& sprite(int phase_x, int phase_y) {
        Sprite& found = sprites_[static_cast<std::size_t>(phase_y * phases_ + phase_x)];
        if (found.made) return found;
        if (!frame_) frame_ = frame_of(symbol_, filler_);
        double const step = 1.0 / phases_;
        found = make_sprite(symbol_, *frame_, {phase_x * step, phase_y * step}, filler_);
        return found;
    }

    void stamp(Sprite const& sprite, int x, int y) {
        const PixelBox box = moved(sprite.box, x, y);
        if (clip_.contains(box))
            stamp_whole(sprite, box);
        else
            stamp_cut(sprite, box);
    }

    void stamp_whole(Sprite const& sprite, PixelBox const& box) {
        std::uint8_t const* from = sprite.bytes.data();
        std::uint8_t* to = mask_.row(box.top) + box.left;
        const std::ptrdiff_t stride = mask_.stride();
        int const width = sprite.stride;
        for (int rows = box.height(); rows > 0; --rows, to += stride)
            for (int i = 0; i < width; i += block, from += block) raise_block(to + i, from);
        touch(box);
    }

    void touch(PixelBox const& box) {
        if (!dense_) return mask_.touch(box);
        all_ = {std::min(all_.left, box.left), std::min(all_.top, box.top), std::max(all_.right, box.right),
                std::max(all_.bottom, box.bottom)};
    }

    void stamp_cut(Sprite const& sprite, PixelBox const& box) {
        const PixelBox shown = intersection(box, clip_);
        for (int y = shown.top; y < shown.bottom && !shown.empty(); ++y) {
            std::uint8_t const* const from =
                sprite.bytes.data() + static_cast<std::ptrdiff_t>(y - box.top) * sprite.stride;
            for (int x = shown.left; x < shown.right; ++x)
                mask_.row(y)[x] = std::max(mask_.row(y)[x], from[x - box.left]);
        }
        if (!shown.empty()) touch(shown);
    }

    CoverageMask& mask_;
    PixelBox clip_;
    Symbol const& symbol_;
    PolygonFiller& filler_;
    int phase_bits_;
    int phases_ = 1 << phase_bits_; // places within a pixel, along each axis
    std::optional<PixelBox> frame_;
    bool dense_;
    PixelBox all_{clip_.right, clip_.bottom, clip_.left, clip_.top};
    std::array<Sprite, 16> sprites_;
};

} // namespace

void draw_symbol(CoverageMask& mask, PixelBox const& clip, Symbol const& symbol, PixelPoint centre,
                 PolygonFiller& filler) {
    const SymbolPainter painter{mask, clip, symbol, centre, filler};
    switch (symbol.shape) {
    case SymbolShape::Dot: painter.dot(); break;
    case SymbolShape::Circle: painter.oval(); break;
    case SymbolShape::Square: painter.rectangle(1, 1); break;
    case SymbolShape::Diamond:
        painter.outline(std::array{painter.at(0, -1), painter.at(-1, 0), painter.at(0, 1), painter.at(1, 0)});
        break;
    case SymbolShape::TriangleUp: painter.triangle(1); break;
    case SymbolShape::TriangleDown: painter.triangle(-1); break;
    case SymbolShape::WideRectangle: painter.rectangle(1.3, 1 / 1.3); break;
    case SymbolShape::TallRectangle: painter.rectangle(1 / 1.3, 1.3); break;
    case SymbolShape::Plus: painter.plus(); break;
    case SymbolShape::Cross:
        painter.line(painter.at(-1, -1), painter.at(1, 1));
        painter.line(painter.at(-1, 1), painter.at(1, -1));
        break;
    }
}

void stamp_symbols(CoverageMask& mask, PixelBox const& clip, Symbol const& symbol,
                   std::span<PixelPoint const> centres, PolygonFiller& filler) {
    // Above this size sprites cost more memory than they save time.
    constexpr int largest_sprite = 64;
    int const reach = reach_of(symbol);
    const PixelBox near = grown(clip, reach);
    Stamper stamper(mask, clip, symbol, filler, centres.size());
    for (PixelPoint const centre : centres) {
        // Written so that not-a-number fails.
        if (!(centre.x >= near.left && centre.x <= near.right && centre.y >= near.top
              && centre.y <= near.bottom))
            continue;
        if (reach > largest_sprite)
            draw_symbol(mask, clip, symbol, centre, filler);
        else
            stamper.stamp(centre);
    }
}

} // namespace qv::raster
