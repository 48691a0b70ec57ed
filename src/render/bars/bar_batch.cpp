#include "render/bars/bar_batch.h"

#include "surface/whole_pixel.h"

#include <algorithm>

namespace qv::render {
inline BarBatch::Span BarBatch::pixels(double from, double to, double twips_per_pixel, Span const& within) {
    if (std::isnan(from) || std::isnan(to)) return {};
    auto const [low, high] = std::minmax(from, to);
    const Span span{std::max(whole_pixel(low / twips_per_pixel), within.first),
                    std::min(whole_pixel(high / twips_per_pixel), within.last)};
    return span.empty() ? Span{} : span;
}

bool BarBatch::pays(std::size_t bars, DrawSurface const& surface, Box const& visible, bool horizontal) {
    double const across =
        horizontal ? visible.height / surface.TwipsPerPixelY() : visible.width / surface.TwipsPerPixelX();
    return static_cast<double>(bars) > 2 * across;
}

BarBatch::BarBatch(DrawSurface& surface, Box const& visible, bool horizontal)
    : surface_(surface), horizontal_(horizontal), x_unit_(surface.TwipsPerPixelX()),
      y_unit_(surface.TwipsPerPixelY()) {
    const PixelSize size = surface.GetClientRect();
    const Span columns = pixels(visible.left, visible.right(), x_unit_, {0, size.width - 1});
    const Span rows = pixels(visible.top, visible.bottom(), y_unit_, {0, size.height - 1});
    across_ = horizontal ? rows : columns;
    along_ = horizontal ? columns : rows;
    auto const length = [](Span const& span) { return static_cast<std::size_t>(span.last - span.first) + 1; };
    changes_.resize(length(across_) * (length(along_) + 1));
}

void BarBatch::add(BarBox const& box) {
    const Span columns = pixels(box.x1, box.x2, x_unit_, horizontal_ ? along_ : across_);
    const Span rows = pixels(box.y1, box.y2, y_unit_, horizontal_ ? across_ : along_);
    Span const& across = horizontal_ ? rows : columns;
    Span const& along = horizontal_ ? columns : rows;
    if (across.empty() || along.empty()) return;
    if (across == pending_across_ && along.touches(pending_along_)) {
        pending_along_.first = std::min(pending_along_.first, along.first);
        pending_along_.last = std::max(pending_along_.last, along.last);
        return;
    }
    count_pending();
    pending_across_ = across;
    pending_along_ = along;
}

void BarBatch::count_pending() {
    std::size_t const row = static_cast<std::size_t>(along_.last - along_.first) + 2;
    for (int i = pending_across_.first; i <= pending_across_.last; ++i) {
        int* const changes = &changes_[static_cast<std::size_t>(i - across_.first) * row];
        ++changes[pending_along_.first - along_.first];
        --changes[pending_along_.last - along_.first + 1];
    }
    pending_across_ = {};
}

void BarBatch::paint(int across, Span along, Color color) {
    auto const corner = [&](int place_along) -> Point {
        int const column = horizontal_ ? place_along : across;
        int const row = horizontal_ ? across : place_along;
        return {column * x_unit_, row * y_unit_};
    };
    surface_.Line(corner(along.first), corner(along.last), LineShape::FilledBox, color);
}

void BarBatch::draw(Color color) {
    count_pending();
    auto change = changes_.begin();
    for (int across = across_.first; across <= across_.last; ++across) {
        int bars = 0;
        int begin = along_.first;
        for (int along = along_.first; along <= along_.last + 1; ++along, ++change) {
            int const before = bars;
            bars += *change;
            if (before == 0 && bars > 0) begin = along;
            if (before > 0 && bars == 0) paint(across, {begin, along - 1}, color);
        }
    }
}

} // namespace qv::render
