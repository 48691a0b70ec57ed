#include "vector/symbol_cloud.h"

#include <algorithm>

namespace qv::vector {
namespace {

constexpr std::size_t few = 5000;

} // namespace

void SymbolCloud::add(PixelPoint centre) {
    if (!raster::is_finite(centre) || !visible_.contains(whole_pixel(centre.x), whole_pixel(centre.y)))
        return;
    if (!pixels_.empty()) return mark(centre);
    centres_.push_back(centre);
    if (centres_.size() > few) count_by_pixel();
}

void SymbolCloud::count_by_pixel() {
    pixels_.assign(static_cast<std::size_t>(visible_.width()) * static_cast<std::size_t>(visible_.height()),
                   false);
    for (const PixelPoint centre : centres_) mark(centre);
    centres_.clear();
}

void SymbolCloud::mark(PixelPoint centre) {
    auto const x = static_cast<std::size_t>(whole_pixel(centre.x) - visible_.left);
    auto const y = static_cast<std::size_t>(whole_pixel(centre.y) - visible_.top);
    pixels_[y * static_cast<std::size_t>(visible_.width()) + x] = true;
}

std::vector<SymbolRun> SymbolCloud::runs(RunLimits const& limits) const {
    if (pixels_.empty()) {
        std::vector<SymbolRun> single;
        for (const PixelPoint centre : centres_) single.push_back({centre});
        return single;
    }
    std::vector<SymbolRun> found = rows(1, limits.gap);
    for (int step = 2; step <= limits.coarsest && found.size() > limits.welcome; step *= 2)
        found = rows(step, std::max(limits.gap, step * 1.0));
    return found;
}

// Every step-th row and column stands for those up to the next.
std::vector<SymbolRun> SymbolCloud::rows(int step, double gap) const {
    std::vector<SymbolRun> found;
    auto const is_marked = [&](int x, int y) {
        for (int j = y; j < std::min(y + step, visible_.height()); ++j)
            for (int i = x; i < std::min(x + step, visible_.width()); ++i)
                if (pixels_[static_cast<std::size_t>(j) * static_cast<std::size_t>(visible_.width())
                            + static_cast<std::size_t>(i)])
                    return true;
        return false;
    };
    for (int y = 0; y < visible_.height(); y += step) {
        SymbolRun* last = nullptr;
        for (int x = 0; x < visible_.width(); x += step) {
            if (!is_marked(x, y)) continue;
            const PixelPoint place{static_cast<double>(visible_.left + x),
                                   static_cast<double>(visible_.top + y)};
            if (last && place.x - last->centre.x - last->length <= gap) {
                last->length = place.x - last->centre.x;
            } else {
                found.push_back({place});
                last = &found.back();
            }
        }
    }
    return found;
}

} // namespace qv::vector
