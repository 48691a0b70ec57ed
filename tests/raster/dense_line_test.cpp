// A line of many points covers what its segments cover, each drawn on its own.
#include "RecordingSurface.h"
#include "raster/coverage_mask.h"
#include "raster/stroke.h"
#include "render/data_line.h"

#include <doctest/doctest.h>

#include <array>
#include <cmath>
#include <limits>
#include <random>

using namespace qv;
using namespace qv::raster;
using namespace qv::render;

namespace {

constexpr int width = 70, height = 60;
constexpr PixelBox plot{5, 4, 65, 57};

/// Lines as coverage.
class MaskSurface : public qv::testing::RecordingSurface {
public:
    MaskSurface() { mask.resize(width, height); }
    bool ShowsPixels() const override { return true; }
    void Polyline(std::span<Point const> points) override {
        std::vector<PixelPoint> places;
        for (const Point point : points) places.push_back({point.x / 15, point.y / 15});
        const Pen pen{pen_pixels(state.DrawWidth), state.draw_style,
                      state.Smooth ? Edge::Smooth : Edge::Whole};
        stroke_polyline(mask, plot, places, pen, band_);
    }
    CoverageMask mask;

private:
    ColumnBand band_;
};

/// How the x and the y of a series run.
enum class Spacing { Even, Uneven, Falling, Trembling, Scattered };
enum class Values { Noise, Constant, Spikes, Ramp, Walk, Mixed };

struct Series {
    Spacing spacing = Spacing::Even;
    Values values = Values::Noise;
    std::size_t count = 0;
    bool has_gaps = false;
};

double value_of(Values values, double x, double noise, double& walk) {
    walk += 0.01 * noise;
    switch (values) {
    case Values::Noise: return 5 + 4 * noise;
    case Values::Constant: return 5.037;
    case Values::Spikes: return std::abs(noise) > 0.995 ? 5 + 9 * noise : 4.2;
    case Values::Ramp: return 1 + 0.8 * x + 0.0001 * noise;
    case Values::Walk: return 5 + walk;
    case Values::Mixed: break;
    }
    auto const stretch = static_cast<Values>(static_cast<int>(x * 0.7) % 5);
    return value_of(stretch, x, noise * (x < 5 ? 0.02 : 0.5), walk);
}

document::PointStore points_of(Series const& series, std::mt19937& random) {
    std::uniform_real_distribution<double> noise(-1, 1);
    document::PointStore store;
    double walk = 0, uneven = 0;
    for (std::size_t i = 0; i < series.count; ++i) {
        double const part = static_cast<double>(i) / static_cast<double>(series.count);
        double x = -1 + 12 * part;
        uneven += std::pow(std::abs(noise(random)), 9) * 120 / static_cast<double>(series.count);
        if (series.spacing == Spacing::Uneven) x = -1 + uneven;
        if (series.spacing == Spacing::Falling) x = 11 - 12 * part;
        if (series.spacing == Spacing::Trembling) x += 0.05 * noise(random);
        if (series.spacing == Spacing::Scattered) x = 5 + 6 * noise(random);
        double y = value_of(series.values, std::abs(x), noise(random), walk);
        if (series.has_gaps && random() % 97 == 0) y = std::numeric_limits<double>::quiet_NaN();
        store.append({x, y, 0, {}});
    }
    return store;
}

/// An axis of 0 to 10, or from 0.1 to 10 on a logarithmic scale, between two places.
scale::AxisMap axis(double start, double end, bool is_log) {
    double const low = is_log ? 0.1 : 0;
    return {.start = start,
            .length = end - start,
            .first = low,
            .last = 10,
            .factor = (end - start) / scale::ScaleFrom{low, is_log}(10),
            .is_log = is_log,
            .valid = true,
            .off_page = start - (end - start)};
}

struct Difference {
    int largest = 0;
    int slit = 0; // the most that is missing where a row of three pixels is covered in full
};

Difference difference(document::PointStore const& store, LineMapping const& map, int pen, bool smooth) {
    MaskSurface thinned, plain;
    for (MaskSurface* surface : {&thinned, &plain}) {
        surface->state.DrawWidth = pen;
        surface->state.Smooth = smooth;
    }
    draw_data_line(thinned, store, map);
    for (std::size_t i = 1; i < store.size(); ++i) {
        auto const from = store.at(i - 1), to = store.at(i);
        if (std::isfinite(from.Y) && std::isfinite(to.Y))
            plain.Polyline(std::array{Point{map.x(from.X), map.y(from.Y)}, Point{map.x(to.X), map.y(to.Y)}});
    }
    Difference found;
    for (int y = 0; y < height; ++y)
        for (int x = 1; x + 1 < width; ++x) {
            std::uint8_t const* const whole = plain.mask.row(y) + x;
            int const now = thinned.mask.row(y)[x];
            found.largest = std::max(found.largest, std::abs(now - whole[0]));
            if (std::min({whole[-1], whole[0], whole[1]}) > 250) found.slit = std::max(found.slit, 255 - now);
        }
    return found;
}

} // namespace

TEST_CASE("a dense line of whole pixels covers what its segments cover, each drawn singly") {
    std::mt19937 random(11);
    for (const Spacing spacing :
         {Spacing::Even, Spacing::Uneven, Spacing::Falling, Spacing::Trembling, Spacing::Scattered})
        for (const Values values :
             {Values::Noise, Values::Constant, Values::Spikes, Values::Ramp, Values::Walk, Values::Mixed})
            for (std::size_t const count : {300, 2000, 30000}) {
                const Series series{spacing, values, spacing == Spacing::Scattered ? count / 10 : count,
                                    random() % 3 == 0};
                const document::PointStore store = points_of(series, random);
                bool const reversed_x = random() % 3 == 0, reversed_y = random() % 3 == 0;
                bool const log_x = random() % 4 == 0, log_y = random() % 4 == 0;
                int const pen = std::array{1, 1, 2, 3, 6}[random() % 5];
                CAPTURE(static_cast<int>(spacing));
                CAPTURE(static_cast<int>(values));
                CAPTURE(series.count);
                CAPTURE(series.has_gaps);
                CAPTURE(log_x);
                CAPTURE(log_y);
                CAPTURE(reversed_x);
                CAPTURE(pen);
                const LineMapping map{axis(reversed_x ? 960.5 : 80.25, reversed_x ? 80.25 : 960.5, log_x),
                                      axis(reversed_y ? 65.3 : 850, reversed_y ? 850 : 65.3, log_y),
                                      {(plot.left - pen) * 15.0, (plot.top - pen) * 15.0,
                                       (plot.width() + 2 * pen) * 15.0, (plot.height() + 2 * pen) * 15.0}};
                CHECK(difference(store, map, pen, false).largest == 0);
                // Smooth columns are drawn by their extremes: nothing that is full gets a slit.
                if (spacing == Spacing::Even && values == Values::Noise && count == 30000)
                    CHECK(difference(store, map, pen, true).slit <= 20);
            }
}

TEST_CASE("a column of noise whose first and last points are its extremes is full") {
    std::mt19937 random(2);
    std::uniform_real_distribution<double> noise(0, 1);
    document::PointStore store;
    for (int i = 0; i < 1000; ++i)
        store.append({i * 0.001, i == 0 ? 0 : i == 999 ? 1 : noise(random), 0, {}});
    const LineMapping map{axis(293, 438, false), axis(750, -5250, false), {75, 60, 900, 795}};
    MaskSurface surface;
    draw_data_line(surface, store, map);
    for (int y = 14; y < 47; ++y) CHECK(surface.mask.row(y)[20] > 240);
}
