#include "platform/raster/symbol_sprites.h"

#include "platform/raster/round_shapes.h"

#include <array>

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

struct Sprite {
    int reach = 0;
    int stride = 0;
    std::vector<std::uint8_t> bytes;

    int side() const { return 2 * reach + 1; }
};

Sprite make_sprite(Symbol const& symbol, PixelPoint phase, PolygonFiller& filler) {
    Sprite sprite;
    sprite.reach = reach_of(symbol);
    CoverageMask mask;
    mask.resize(sprite.side(), sprite.side());
    double const middle = sprite.reach;
    draw_symbol(mask, {0, 0, mask.width(), mask.height()}, symbol, {middle + phase.x, middle + phase.y},
                filler);
    sprite.stride = (sprite.side() + block - 1) / block * block;
    sprite.bytes.resize(static_cast<std::size_t>(sprite.stride) * static_cast<std::size_t>(sprite.side()));
    for (int y = 0; y < sprite.side(); ++y)
        std::copy_n(mask.row(y), sprite.side(),
                    sprite.bytes.begin() + static_cast<std::ptrdiff_t>(y) * sprite.stride);
    return sprite;
}

class Stamper {
public:
    Stamper(CoverageMask& mask, PixelBox const& clip, Symbol const& symbol, PolygonFiller& filler)
        : mask_(mask), clip_(clip), symbol_(symbol), filler_(filler), phases_(is_snapped(symbol) ? 1 : 4) {}

    void stamp(PixelPoint centre) {
        double const scaled_x = std::floor(centre.x * phases_ + 0.5),
                     scaled_y = std::floor(centre.y * phases_ + 0.5);
        int const x = static_cast<int>(std::floor(scaled_x / phases_));
        int const y = static_cast<int>(std::floor(scaled_y / phases_));
        int const phase_x = static_cast<int>(scaled_x) - x * phases_;
        int const phase_y = static_cast<int>(scaled_y) - y * phases_;
        stamp(sprite(phase_x, phase_y), x, y);
    }

private:
    Sprite const& sprite(int phase_x, int phase_y) {
        Sprite& found = sprites_[static_cast<std::size_t>(phase_y * phases_ + phase_x)];
        if (found.bytes.empty())
            found = make_sprite(
                symbol_, {phase_x / static_cast<double>(phases_), phase_y / static_cast<double>(phases_)},
                filler_);
        return found;
    }

    void stamp(Sprite const& sprite, int x, int y) {
        const PixelBox box{x - sprite.reach, y - sprite.reach, x + sprite.reach + 1, y + sprite.reach + 1};
        if (clip_.contains(box))
            stamp_whole(sprite, box);
        else
            stamp_cut(sprite, box);
    }

    void stamp_whole(Sprite const& sprite, PixelBox const& box) {
        std::uint8_t const* from = sprite.bytes.data();
        for (int y = box.top; y < box.bottom; ++y) {
            std::uint8_t* const to = mask_.row(y) + box.left;
            for (int i = 0; i < sprite.stride; i += block, from += block)
                for (int k = 0; k < block; ++k) to[i + k] = std::max(to[i + k], from[k]);
        }
        mask_.touch(box);
    }

    void stamp_cut(Sprite const& sprite, PixelBox const& box) {
        const PixelBox shown = intersection(box, clip_);
        for (int y = shown.top; y < shown.bottom && !shown.empty(); ++y) {
            std::uint8_t const* const from =
                sprite.bytes.data() + static_cast<std::ptrdiff_t>(y - box.top) * sprite.stride;
            for (int x = shown.left; x < shown.right; ++x)
                mask_.row(y)[x] = std::max(mask_.row(y)[x], from[x - box.left]);
            mask_.touch(y, shown.left, shown.right);
        }
    }

    CoverageMask& mask_;
    PixelBox clip_;
    Symbol const& symbol_;
    PolygonFiller& filler_;
    int phases_; // places within a pixel, along each axis
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
    Stamper stamper(mask, clip, symbol, filler);
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
