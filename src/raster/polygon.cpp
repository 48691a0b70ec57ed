#include "raster/polygon.h"

#include <cstring>
#include <limits>

namespace qv::raster {

// An edge running down from y = top to bottom, x = at(y). In pixels from the box's corner, where whole
// numbers are the borders of pixels.
struct PolygonFiller::Slope {
    double x, top, bottom, per_row;
    double direction; // 1 or -1: whether the outline runs down or up here

    double at(double y) const { return x + (y - top) * per_row; }
    Slope part(double from, double to) const { return {at(from), from, to, per_row, direction}; }
    Slope upright(double where, double from, double to) const { return {where, from, to, 0, direction}; }
};

namespace {

PixelBox box_around(std::span<PixelPoint const> corners) {
    double left = std::numeric_limits<double>::max(), top = left, right = -left, bottom = -left;
    for (PixelPoint const corner : corners) {
        left = std::min(left, corner.x), right = std::max(right, corner.x);
        top = std::min(top, corner.y), bottom = std::max(bottom, corner.y);
    }
    return {whole_pixel(left), whole_pixel(top), whole_pixel(right) + 1, whole_pixel(bottom) + 1};
}

// Even-odd: coverage rises to one layer, falls to none at two, rises again.
float folded(float layers) {
    float const depth = std::abs(layers);
    if (depth <= 1) return depth;
    float const rest = std::fmod(depth, 2.0F);
    return rest <= 1 ? rest : 2 - rest;
}

// The first place from `i` on where coverage changes, or the end; mostly that is the next one or far away.
int next_change(float const* changes, int i, int end) {
    constexpr int at_once = 8;
    for (; i + at_once <= end; i += at_once) {
        int changed = 0;
        for (int k = 0; k < at_once; ++k) changed |= changes[i + k] != 0;
        if (changed != 0) break;
    }
    while (i < end && changes[i] == 0) ++i;
    return i;
}

void raise_run(std::uint8_t* bytes, int count, std::uint8_t coverage) {
    if (coverage == 255)
        std::memset(bytes, 255, static_cast<std::size_t>(count));
    else if (coverage != 0)
        for (int i = 0; i < count; ++i) bytes[i] = std::max(bytes[i], coverage);
}

} // namespace

void PolygonFiller::fill(CoverageMask& mask, PixelBox const& clip, std::span<PixelPoint const> corners,
                         Edge edge) {
    if (corners.size() < 3) return;
    box_ = intersection(clip, box_around(corners));
    if (box_.empty()) return;
    // Two more a row, for what an edge at the right border gives to the pixels beyond it.
    changes_.assign(static_cast<std::size_t>(box_.width() + 2) * static_cast<std::size_t>(box_.height()), 0);
    for (std::size_t i = 0; i < corners.size(); ++i)
        add_edge(corners[i], corners[i + 1 < corners.size() ? i + 1 : 0], edge);
    raise(mask);
}

void PolygonFiller::add_edge(PixelPoint from, PixelPoint to, Edge edge) {
    auto const local = [this](PixelPoint p) {
        return PixelPoint{std::clamp(p.x, -farthest_pixel, farthest_pixel) + 0.5 - box_.left,
                          std::clamp(p.y, -farthest_pixel, farthest_pixel) + 0.5 - box_.top};
    };
    PixelPoint high = local(from), low = local(to);
    double const direction = high.y < low.y ? 1 : -1;
    if (high.y > low.y) std::swap(high, low);
    double const top = std::max(high.y, 0.0);
    double const bottom = std::min(low.y, static_cast<double>(box_.height()));
    if (!(top < bottom)) return;
    const Slope slope{high.x, high.y, low.y, (low.x - high.x) / (low.y - high.y), direction};
    if (edge == Edge::Smooth)
        add_share(slope.part(top, bottom));
    else
        add_centres(slope.part(top, bottom));
}

// Cuts the edge at the left border: left of the box it counts in full from the border on.
void PolygonFiller::add_share(Slope const& slope) {
    double const end = slope.at(slope.bottom);
    if ((slope.x < 0) == (end < 0))
        return add_rows(end < 0 ? slope.upright(0, slope.top, slope.bottom) : slope);
    double const cut = std::clamp(slope.top - slope.x / slope.per_row, slope.top, slope.bottom);
    if (slope.x < 0) {
        add_rows(slope.upright(0, slope.top, cut));
        add_rows(slope.part(cut, slope.bottom));
    } else {
        add_rows(slope.part(slope.top, cut));
        add_rows(slope.upright(0, cut, slope.bottom));
    }
}

void PolygonFiller::add_rows(Slope const& slope) {
    double const width = box_.width();
    double x = std::max(0.0, slope.x);
    float* row = changes_.data() + static_cast<std::ptrdiff_t>(slope.top) * (box_.width() + 2);
    double y = slope.top;
    for (int past = static_cast<int>(slope.top) + 1; y < slope.bottom; ++past, row += box_.width() + 2) {
        double const next_y = std::min<double>(past, slope.bottom);
        double const next_x = std::max(0.0, slope.at(next_y));
        // Right of the box it changes nothing that shows.
        if (std::min(x, next_x) < width)
            add_row_share(row, std::min(x, width), std::min(next_x, width), (next_y - y) * slope.direction);
        x = next_x;
        y = next_y;
    }
}

// One row's piece of an edge, from x to next_x, `height` rows high: the pixels right of it gain `height`,
// those it crosses the part of that lies right of it.
void PolygonFiller::add_row_share(float* row, double x, double next_x, double height) {
    double const left = std::min(x, next_x), right = std::max(x, next_x);
    auto const first = static_cast<int>(left);
    int const last = static_cast<int>(right);
    int const past = std::max(first + 1, last + (right > last ? 1 : 0));
    if (past == first + 1) {
        double const beyond = height * ((left + right) / 2 - first);
        row[first] += static_cast<float>(height - beyond);
        row[first + 1] += static_cast<float>(beyond);
        return;
    }
    // The integral of the covered part up to each pixel's right border; its second differences are the
    // changes.
    double const per_pixel = height / (right - left);
    double before = 0, share_before = 0;
    for (int i = first; i < past; ++i) {
        double const begin = std::max<double>(i, left), end = std::min<double>(i + 1, right);
        double const reached = per_pixel * (end - left);
        double const share = (before + reached) / 2 * (end - begin) + reached * (i + 1 - end);
        row[i] += static_cast<float>(share - share_before);
        before = reached;
        share_before = share;
    }
    row[past] += static_cast<float>(height - share_before);
}

void PolygonFiller::add_centres(Slope const& slope) {
    auto const first = static_cast<int>(std::ceil(slope.top - 0.5));
    auto const past = static_cast<int>(std::ceil(slope.bottom - 0.5));
    for (int y = first; y < past; ++y) {
        double const x = std::clamp(slope.at(y + 0.5), 0.0, static_cast<double>(box_.width()));
        auto const column = static_cast<std::ptrdiff_t>(std::ceil(x - 0.5));
        changes_[static_cast<std::size_t>(y * static_cast<std::ptrdiff_t>(box_.width() + 2) + column)] +=
            static_cast<float>(slope.direction);
    }
}

void PolygonFiller::raise(CoverageMask& mask) const {
    int const stride = box_.width() + 2;
    float const* changes = changes_.data();
    for (int y = box_.top; y < box_.bottom; ++y, changes += stride) {
        std::uint8_t* const row = mask.row(y) + box_.left;
        float layers = 0;
        for (int i = 0; i < box_.width();) {
            layers += changes[i];
            auto const coverage = static_cast<std::uint8_t>(static_cast<int>(folded(layers) * 255 + 0.5F));
            int const past = next_change(changes, i + 1, box_.width());
            raise_run(row + i, past - i, coverage);
            i = past;
        }
        mask.touch(y, box_.left, box_.right);
    }
}

} // namespace qv::raster
