#include "render/kinds/pie_shapes.h"

#include "document/selection.h"
#include "qvgraph/system_color.h"
#include "render/arcs.h"
#include "render/grids/oklab.h"
#include "render/pen.h"
#include "surface/whole_pixel.h"

#include <algorithm>
#include <array>
#include <span>

namespace qv::render {
namespace {

using document::ControlState;

using Slices = std::vector<Slice>;

constexpr double pixels_told_apart = 0.5; // narrower slices are drawn with the next
constexpr std::size_t many = 200;
constexpr std::uint8_t opaque = 255;

/// What is drawn in one colour: a slice, or several that no pixel tells apart.
struct Piece {
    double from = 0, to = 0; // shares
    std::size_t slice = 0;   // the last of them
};

std::vector<Piece> pieces_of(DrawSurface const& surface, PieFrame const& frame, Slices const& slices) {
    double const least = pixels_told_apart * surface.TwipsPerPixelX() / (PieFrame::whole_turn * frame.outer);
    std::vector<Piece> pieces;
    double from = 0;
    for (std::size_t i = 0; i < slices.size(); ++i) {
        bool const is_last = i + 1 == slices.size();
        double const to = is_last ? 1 : slices[i].before + slices[i].share;
        if (!is_last && to - from < least) continue;
        pieces.push_back({from, to, i});
        from = to;
    }
    return pieces;
}

void fill_piece(DrawSurface& surface, PieFrame const& frame, Piece const& piece, Color color) {
    fill_outline(surface, slice_outline(frame, piece.from, piece.to, surface.TwipsPerPixelX()), color);
}

// Each reaches a pixel below the next, the first one also below the last, so that no ground shows between two
// edges; where the ground is to be seen through them, none does.
void fill_neighbours(ControlState const& state, DrawSurface& surface, PieFrame const& frame,
                     std::vector<Piece> const& pieces, std::size_t count) {
    double const pixel = surface.TwipsPerPixelX() / (PieFrame::whole_turn * frame.outer);
    bool const is_opaque = surface.state.alpha == opaque;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        Piece piece = pieces[i];
        auto const under = [&](Piece const& other) {
            return is_opaque ? std::min(pixel, other.to - other.from) : 0;
        };
        if (i == 0 && pieces.size() > 1) piece.from -= under(pieces.back());
        if (i + 1 < pieces.size()) piece.to += under(pieces[i + 1]);
        fill_piece(surface, frame, piece, slice_color(state, piece.slice, count));
    }
}

// One shape a colour.
void fill_by_color(ControlState const& state, DrawSurface& surface, PieFrame const& frame,
                   std::vector<Piece> pieces, std::size_t count) {
    auto const color = [&](Piece const& piece) { return slice_color(state, piece.slice, count); };
    std::ranges::stable_sort(pieces, {}, color);
    for (std::size_t first = 0; first < pieces.size();) {
        const ShapeScope one_shape(surface);
        Color const shared = color(pieces[first]);
        for (; first < pieces.size() && color(pieces[first]) == shared; ++first)
            fill_piece(surface, frame, pieces[first], shared);
    }
}

/// How much light of each colour a pie sends up to some share of it.
class LightOfSlices {
public:
    LightOfSlices(ControlState const& state, Slices const& slices) : sums_(steps + 1) {
        std::size_t step = 0;
        Light sum{};
        for (std::size_t i = 0; i < slices.size(); ++i) {
            const Light light = to_light(slice_color(state, i, slices.size()));
            double const end = i + 1 == slices.size() ? 1 : slices[i].before + slices[i].share;
            double from = slices[i].before;
            for (; step < steps && share_of(step + 1) <= end; ++step) {
                add(sum, light, share_of(step + 1) - from);
                from = share_of(step + 1);
                sums_[step + 1] = sum;
            }
            add(sum, light, std::max(0.0, end - from));
        }
        for (; step < steps; ++step) sums_[step + 1] = sum;
    }

    /// The mean colour between two shares, the first one not below -1, of which the second lies in (0, 1]
    /// more.
    std::uint32_t between(double from, double to) const {
        const Light low = at(from), high = at(to);
        double const per_share = 1 / (to - from);
        std::uint32_t pixel = 0;
        for (std::size_t i = 0; i < low.size(); ++i) {
            pixel = pixel << 8 | to_stored((high[i] - low[i]) * per_share);
        }
        return pixel;
    }

private:
    using Light = std::array<double, 3>;
    static constexpr std::size_t steps = 1 << 14; // each far below a pixel
    static constexpr std::size_t levels = 1 << 12;

    static double share_of(std::size_t step) { return static_cast<double>(step) / steps; }
    static void add(Light& sum, Light const& light, double share) {
        for (std::size_t i = 0; i < sum.size(); ++i) sum[i] += light[i] * share;
    }
    static Light to_light(Color color) {
        static const std::array<double, 256> table = [] {
            std::array<double, 256> made{};
            for (std::size_t i = 0; i < made.size(); ++i)
                made[i] = light_of_stored(static_cast<double>(i) / (made.size() - 1));
            return made;
        }();
        Color const plain = plain_color(color);
        return {table[plain & 0xFF], table[plain >> 8 & 0xFF], table[plain >> 16 & 0xFF]};
    }
    static std::uint32_t to_stored(double light) {
        static const std::array<std::uint8_t, levels + 1> table = [] {
            std::array<std::uint8_t, levels + 1> made{};
            for (std::size_t i = 0; i <= levels; ++i)
                made[i] = static_cast<std::uint8_t>(
                    std::lround(255 * stored_of_light(static_cast<double>(i) / levels)));
            return made;
        }();
        return table[static_cast<std::size_t>(std::clamp(light, 0.0, 1.0) * levels + 0.5)];
    }
    Light at(double share) const {
        double const turns = std::floor(share), place = (share - turns) * steps;
        auto const step = std::min(static_cast<std::size_t>(place), steps - 1);
        double const part = place - static_cast<double>(step);
        Light light{};
        for (std::size_t i = 0; i < light.size(); ++i)
            light[i] =
                turns * sums_.back()[i] + sums_[step][i] + part * (sums_[step + 1][i] - sums_[step][i]);
        return light;
    }

    std::vector<Light> sums_;
};

/// A pixel of a pie: what of it is covered, and which share of the whole it shows.
void fill_pixels(ControlState const& state, DrawSurface& surface, PieFrame const& frame,
                 Slices const& slices) {
    double const unit = surface.TwipsPerPixelX();
    double const outer = frame.outer / unit, inner = frame.inner / unit;
    const PixelPoint centre = in_pixels(surface, frame.centre);
    const PixelSize page = surface.GetClientRect();
    auto const first = [&](double middle) { return std::max(0, whole_pixel(middle - outer - 1)); };
    auto const past = [&](double middle, int limit) {
        return std::min(limit, whole_pixel(middle + outer + 1) + 1);
    };
    int const left = first(centre.x), top = first(centre.y);
    const PixelSize size{past(centre.x, page.width) - left, past(centre.y, page.height) - top};
    if (size.width <= 0 || size.height <= 0) return;
    const LightOfSlices light(state, slices);
    bool const smooth = surface.state.Smooth;
    auto const covered = [&](double distance) {
        if (!smooth) return distance <= outer && distance >= inner ? 1.0 : 0.0;
        double const in_rim = std::clamp(outer - distance + 0.5, 0.0, 1.0);
        return inner > 0 ? std::min(in_rim, std::clamp(distance - inner + 0.5, 0.0, 1.0)) : in_rim;
    };
    const PieFrame in_pixels_of_it{{0, 0}, outer, inner, frame.start, frame.sense};
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(size.width)
                                      * static_cast<std::size_t>(size.height));
    auto pixel = pixels.begin();
    for (int y = 0; y < size.height; ++y)
        for (int x = 0; x < size.width; ++x, ++pixel) {
            const Point away{left + x - centre.x, top + y - centre.y};
            double const distance = std::sqrt(away.x * away.x + away.y * away.y);
            double const coverage = covered(distance);
            if (coverage == 0) continue;
            double const half = std::min(0.5, 0.5 / (PieFrame::whole_turn * std::max(distance, 1e-9)));
            double const share = in_pixels_of_it.share_at(away);
            *pixel = static_cast<std::uint32_t>(std::lround(coverage * opaque)) << 24
                     | light.between(share - half, share + half);
        }
    surface.Pixels({static_cast<double>(left), static_cast<double>(top)}, size, pixels);
}

} // namespace

std::vector<Point> slice_outline(PieFrame const& frame, double from, double to, double twips_per_pixel) {
    double const step = arc_step(frame.outer, twips_per_pixel);
    std::vector<Point> outline;
    auto const add_arc = [&](double begin, double end, double radius) {
        for_each_on_arc(frame.angle(begin), frame.angle(end), step,
                        [&](double angle) { outline.push_back(frame.at(angle, radius)); });
    };
    add_arc(from, to, frame.outer);
    if (frame.inner > 0)
        add_arc(to, from, frame.inner);
    else if (to - from < 1)
        outline.push_back(frame.centre);
    return outline;
}

Color slice_color(ControlState const& state, std::size_t slice, std::size_t count) {
    static constexpr std::array<Color, 6> classic{0xFF0000, 0x0000FF, 0x00FF00, 0x00FFFF, 0xFF00FF, 0xFFFF00};
    std::span<Color const> colors = state.slice_colors;
    if (colors.empty()) colors = classic;
    // The last lies beside the first.
    bool const meets_itself = slice > 0 && slice + 1 == count && slice % colors.size() == 0;
    return colors[(slice + (meets_itself ? colors.size() / 2 : 0)) % colors.size()];
}

void fill_slices(ControlState const& state, DrawSurface& surface, PieFrame const& frame,
                 Slices const& slices) {
    bool const copies = surface.state.draw_mode == DrawMode::Copy;
    if (slices.size() > many && surface.ShowsPixels() && copies)
        return fill_pixels(state, surface, frame, slices);
    auto pieces = pieces_of(surface, frame, slices);
    if (pieces.size() > many)
        fill_by_color(state, surface, frame, std::move(pieces), slices.size());
    else
        fill_neighbours(state, surface, frame, pieces, slices.size());
}

void edge_slices(DrawSurface& surface, PieFrame const& frame, Slices const& slices,
                 document::FillSpec const& fill) {
    if (fill.EdgeThickness == 0) return;
    const PenScope pen(surface, fill.EdgeThickness);
    surface.state.ForeColor = fill.EdgeColor;
    const ShapeScope one_shape(surface);
    for (Piece const& piece : pieces_of(surface, frame, slices)) {
        auto outline = slice_outline(frame, piece.from, piece.to, surface.TwipsPerPixelX());
        outline.push_back(outline.front());
        surface.Polyline(outline);
    }
}

} // namespace qv::render
