// Symbol sprites: the coverage of a symbol at each of a few places within a pixel, stamped for each centre.
#pragma once

#include "raster/coverage_mask.h"
#include "raster/polygon.h"
#include "raster/stroke.h"

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace qv::raster {

/// A symbol in pixels. Its outline is drawn with the pen in the colour of its inside.
struct Symbol {
    SymbolShape shape = SymbolShape::Circle;
    double half_width = 0;
    double half_height = 0;
    Pen pen;
    bool operator==(Symbol const&) const = default;
};

/// Covers one symbol around a finite centre.
void draw_symbol(CoverageMask& mask, PixelBox const& clip, Symbol const& symbol, PixelPoint centre,
                 PolygonFiller& filler);

/// Where a clip is crowded with symbols, remembers the places that have one, a few within each pixel.
class TakenPlaces {
public:
    static constexpr int phase_bits = 2;

    /// Forgets all; places are then counted inside this box.
    void start(PixelBox const& box);
    void stop() { taken_.clear(); }
    bool is_started() const { return !taken_.empty(); }
    /// Whether the place was free. The pixel must lie in the box; phase is 0 to 15.
    bool take(int x, int y, int phase) {
        std::uint16_t& pixel =
            taken_[static_cast<std::size_t>((y - box_.top) * box_.width() + x - box_.left)];
        auto const bit = static_cast<std::uint16_t>(1 << phase);
        bool const free = (pixel & bit) == 0;
        pixel |= bit;
        return free;
    }

private:
    PixelBox box_;
    std::vector<std::uint16_t> taken_; // a bit a phase
};

/// Covers many symbols of one kind. From one batch to the next it keeps the sprites and, while the mask is
/// not emptied, the places that need no other symbol.
class SymbolStamper {
public:
    /// Covers a symbol around each centre, up to an eighth of a pixel off its place (with whole edges on the
    /// nearest pixel). Centres that are not finite are left out.
    void stamp(CoverageMask& mask, PixelBox const& clip, Symbol const& symbol,
               std::span<PixelPoint const> centres, PolygonFiller& filler);

private:
    /// Coverage of a symbol; `box` is where it has any, around the pixel of the centre.
    struct Sprite {
        PixelBox box;
        int stride = 0;
        std::vector<std::uint8_t> bytes;
    };
    /// Where the places are taken.
    struct Ground {
        CoverageMask const* mask = nullptr;
        std::uint64_t generation = 0;
        PixelBox clip;
        bool operator==(Ground const&) const = default;
    };

    void follow(Symbol const& symbol, Ground const& ground);
    Sprite const& sprite(int phase, int phases, PolygonFiller& filler);

    std::optional<Symbol> symbol_;
    std::optional<PixelBox> frame_; // of every sprite: one size makes stamping predictable
    std::array<std::optional<Sprite>, 1 << 2 * TakenPlaces::phase_bits> sprites_;
    Ground ground_;
    TakenPlaces taken_;
    std::size_t stamped_ = 0; // on this ground
};

} // namespace qv::raster
