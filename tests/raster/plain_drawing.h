// What a gradient should show: numbered one-pixel lines drawn the plain way, and where parallel lines lie.
#pragma once

#include "pictures.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <utility>
#include <vector>

namespace qv::raster::test {

/// Lines numbered by table entry, drawn one pixel after the other; what none reaches has the first entry.
class PlainDrawing {
public:
    explicit PlainDrawing(PixelSize size)
        : size_(size), entries_(static_cast<std::size_t>(size.width * size.height)) {}

    void line(double x0, double y0, double x1, double y1, int entry) {
        bool const flat = std::abs(x1 - x0) >= std::abs(y1 - y0);
        if (flat ? x0 > x1 : y0 > y1) std::swap(x0, x1), std::swap(y0, y1);
        double const length = flat ? x1 - x0 : y1 - y0, rise = flat ? y1 - y0 : x1 - x0;
        for (double step = 0; step <= length; ++step) {
            double const aside = length == 0 ? 0 : std::floor((2 * rise * step + length) / (2 * length));
            put(x0 + (flat ? step : aside), y0 + (flat ? aside : step), entry);
        }
    }
    void closed(std::array<PixelPoint, 4> corners, int entry) {
        for (PixelPoint& c : corners) c = {std::nearbyint(c.x), std::nearbyint(c.y)};
        for (std::size_t i = 0; i < 4; ++i)
            line(corners[i].x, corners[i].y, corners[(i + 1) % 4].x, corners[(i + 1) % 4].y, entry);
    }
    // A device rectangle: its right and bottom pixels are left out.
    void rectangle(double left, double top, double right, double bottom, int entry) {
        left = std::nearbyint(left), top = std::nearbyint(top);
        right = std::nearbyint(right) - 1, bottom = std::nearbyint(bottom) - 1;
        if (right >= left && bottom >= top)
            closed({{{left, top}, {right, top}, {right, bottom}, {left, bottom}}}, entry);
    }
    Picture in_colors(std::vector<Color> const& table) const {
        Picture picture;
        for (int const entry : entries_)
            picture.push_back(pixel_value(table.at(static_cast<std::size_t>(entry))));
        return picture;
    }

private:
    void put(double x, double y, int entry) {
        if (x >= 0 && y >= 0 && x < size_.width && y < size_.height)
            entries_[static_cast<std::size_t>(y * size_.width + x)] = entry;
    }
    PixelSize size_;
    std::vector<int> entries_;
};

/// The line of a linear gradient that goes through a pixel's centre, as a fraction, and how many there are.
struct LinePlaces {
    double slope, reach; // across the movement: pixels a row, pixels at the end of a line
    bool sideways, forward;
    PixelSize size;

    LinePlaces(double angle_degrees, PixelSize in) : size(in) {
        double const angle = angle_degrees * std::numbers::pi / 180;
        double const half = (std::sqrt(2.0) * std::max(in.width, in.height) + 2) / 2;
        double const s = std::sin(angle), c = std::cos(angle);
        sideways = std::abs(s) < std::abs(c) - 1e-9;
        forward = sideways ? c > 0 : s < 0;
        slope = sideways ? s / c : c / s;
        reach = half * std::abs(sideways ? s : c);
    }
    int side() const { return sideways ? size.width : size.height; }
    double count() const { return side() + 2 * reach + 1; }
    double at(int x, int y) const {
        double const aside = sideways ? y - (size.height - 1) / 2.0 : x - (size.width - 1) / 2.0;
        double const place = (sideways ? x : y) - aside * slope;
        return (forward ? place : side() - 1 - place) + reach;
    }
};

} // namespace qv::raster::test
