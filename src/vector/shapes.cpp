#include "vector/shapes.h"

namespace qv::vector {
namespace {

constexpr auto far = static_cast<int>(farthest_pixel);
constexpr PixelBox nothing{};
constexpr PixelBox everything{-far, -far, far, far};

PixelBox united(PixelBox const& a, PixelBox const& b) {
    if (a.empty()) return b;
    if (b.empty()) return a;
    return {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
            std::max(a.bottom, b.bottom)};
}

PixelBox around(PixelPoint point, double margin) {
    auto const whole = [](double v) { return static_cast<int>(std::clamp(v, -1.0 * far, 1.0 * far)); };
    return {whole(std::floor(point.x - margin)), whole(std::floor(point.y - margin)),
            whole(std::ceil(point.x + margin)), whole(std::ceil(point.y + margin))};
}

PixelBox around(std::vector<Contour> const& contours, double margin) {
    PixelBox box = nothing;
    for (Contour const& contour : contours)
        for (const PixelPoint point : contour) box = united(box, around(point, margin));
    return box;
}

struct Reach {
    PixelBox operator()(Boxes const& shape) const {
        PixelBox reach = nothing;
        for (PixelBox const& box : shape.boxes) reach = united(reach, box);
        return reach;
    }
    PixelBox operator()(Fill const& shape) const { return around(shape.contours, shape.outline / 2 + 1); }
    PixelBox operator()(Stroke const& shape) const { return around(shape.lines, shape.width / 2 + 1); }
    PixelBox operator()(Oval const& shape) const {
        return around(shape.centre, std::max(shape.radius_x, shape.radius_y) + shape.width / 2 + 1);
    }
    // Letters may reach beyond their line, but not by more than another line's height.
    PixelBox operator()(Text const& shape) const {
        return around(shape.corner, shape.width + 2 * shape.em + shape.baseline);
    }
    PixelBox operator()(Picture const& shape) const {
        return raster::moved({0, 0, shape.pixels->width(), shape.pixels->height()},
                             static_cast<int>(shape.place.x), static_cast<int>(shape.place.y));
    }
    PixelBox operator()(Copy const&) const { return everything; }
};

struct Length {
    std::size_t operator()(Boxes const& shape) const {
        return length_of_element + shape.boxes.size() * (shape.height > 0 ? 8 : 14);
    }
    std::size_t operator()(Fill const& shape) const { return of(shape.contours); }
    std::size_t operator()(Stroke const& shape) const { return of(shape.lines); }
    std::size_t operator()(Oval const&) const { return 48; }
    std::size_t operator()(Text const& shape) const { return length_of_element + shape.text.size(); }
    std::size_t operator()(auto const&) const { return 0; }

private:
    static std::size_t of(std::vector<Contour> const& contours) {
        constexpr std::size_t corner = 8;
        std::size_t length = length_of_element;
        for (Contour const& contour : contours) length += corner * contour.size();
        return length;
    }
};

} // namespace

PixelBox reach_of(Shape const& shape) {
    return std::visit(Reach(), shape);
}

std::size_t length_as_text(Shape const& shape) {
    return std::visit(Length(), shape);
}

} // namespace qv::vector
