// A line of many points covers what its segments cover, each drawn on its own.
#include "RecordingSurface.h"
#include "raster/coverage_mask.h"
#include "raster/stroke.h"
#include "render/lines/data_line.h"

#include <doctest/doctest.h>

#include <array>
#include <cmath>
#include <limits>
#include <optional>
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
        stroke_polyline(mask, plot, places, pen(), band_);
    }
    void LineParts(std::span<LinePart const> parts) override {
        std::vector<SegmentPart> segments;
        for (LinePart const& part : parts)
            segments.push_back({{{part.from.x / 15, part.from.y / 15}, {part.to.x / 15, part.to.y / 15}},
                                {part.left, part.top, part.right, part.bottom}});
        stroke_parts(mask, plot, segments, pen(), band_);
    }
    void CoverColumns(std::span<PixelColumn const> columns, std::span<std::uint8_t const> coverage) override {
        cover_columns(mask, plot, columns, coverage, band_);
    }
    CoverageMask mask;

private:
    Pen pen() const {
        return {pen_pixels(state.DrawWidth), state.draw_style, state.Smooth ? Edge::Smooth : Edge::Whole};
    }
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

/// An axis from `low` to `high` between two places.
scale::AxisMap axis(double start, double end, double low, double high, bool is_log) {
    return {.start = start,
            .length = end - start,
            .first = low,
            .last = high,
            .factor = (end - start) / scale::ScaleFrom{low, is_log}(high),
            .is_log = is_log,
            .valid = true,
            .off_page = start - (end - start)};
}

/// A line to be drawn in both ways.
struct Case {
    document::PointStore store;
    LineMapping map;
    int pen = 1;
    DrawStyle style = DrawStyle::Solid;
    bool smooth = true;
};

scale::AxisMap random_axis(double start, double end, std::mt19937& random) {
    bool const is_log = random() % 4 == 0;
    if (random() % 3 == 0) std::swap(start, end);
    // Zoomed, often to nothing but a few points.
    double const zoom = std::pow(10, -static_cast<double>(random() % 5) / 2 + 0.0);
    double const part = random() % 3 == 0 ? zoom : 1,
                 shift = (1 - part) * static_cast<double>(random() % 100) / 100;
    double const low = is_log ? 0.1 * std::pow(100, shift) : 10 * shift;
    double const high = is_log ? low * std::pow(100, part) : low + 10 * part;
    return axis(start, end, low, high, is_log);
}

Case random_case(unsigned seed) {
    std::mt19937 random(seed);
    auto const one_of = [&](auto... values) { return std::array{values...}[random() % sizeof...(values)]; };
    Series series{
        one_of(Spacing::Even, Spacing::Uneven, Spacing::Falling, Spacing::Trembling, Spacing::Scattered),
        one_of(Values::Noise, Values::Constant, Values::Spikes, Values::Ramp, Values::Walk, Values::Mixed),
        static_cast<std::size_t>(
            one_of(3, 30, 200, 500, 1000, 4000, 20000, random() % 8 == 0 ? 150000 : 2000)),
        random() % 3 == 0};
    if (series.spacing == Spacing::Scattered) series.count /= 3;
    int const pen = 1 + static_cast<int>(random() % 8);
    Case drawn{points_of(series, random),
               {random_axis(80.25, 960.5, random),
                random_axis(850, 65.3, random),
                {(plot.left - pen) * 15.0, (plot.top - pen) * 15.0, (plot.width() + 2 * pen) * 15.0,
                 (plot.height() + 2 * pen) * 15.0}},
               random() % 2 == 0 ? 1 : pen,
               random() % 3 == 0 ? DrawStyle::Dot : DrawStyle::Solid,
               random() % 3 != 0};
    return drawn;
}

/// The largest difference of coverage between the thinned line and its segments, each drawn on its own.
int largest_difference(Case const& drawn) {
    MaskSurface thinned, plain;
    for (MaskSurface* surface : {&thinned, &plain}) {
        surface->state.DrawWidth = drawn.pen;
        surface->state.draw_style = drawn.style;
        surface->state.Smooth = drawn.smooth;
    }
    draw_data_line(thinned, drawn.store, drawn.map);
    auto const finite = [](document::PointEntry const& point) { return std::isfinite(point.Y); };
    auto const place = [&](document::PointEntry const& point) {
        return Point{drawn.map.x(point.X), drawn.map.y(point.Y)};
    };
    std::optional<Point> last;
    for (document::PointBlock const& block : drawn.store.blocks())
        for (std::size_t i = 0; i < block.size(); ++i) {
            auto const entry = block.entry(i);
            if (last && finite(entry)) plain.Polyline(std::array{*last, place(entry)});
            last = finite(entry) ? std::optional(place(entry)) : std::nullopt;
        }
    int largest = 0;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            largest = std::max(largest, std::abs(thinned.mask.row(y)[x] - plain.mask.row(y)[x]));
    return largest;
}

void check_cases(unsigned first, unsigned past) {
    for (unsigned seed = first; seed < past; ++seed) {
        CAPTURE(seed);
        const Case drawn = random_case(seed);
        CAPTURE(drawn.pen);
        CAPTURE(drawn.smooth);
        CAPTURE(static_cast<int>(drawn.style));
        CHECK(largest_difference(drawn) <= (drawn.smooth ? 2 : 0));
    }
}

} // namespace

TEST_CASE("a line of many points covers what its segments cover, each drawn singly") {
    check_cases(0, 200);
}

TEST_CASE("ten thousand lines cover what their segments cover" * doctest::skip()) {
    check_cases(200, 10200);
}

TEST_CASE("what is known of the points stays right while some come and others go") {
    std::mt19937 random(5);
    std::uniform_real_distribution<double> noise(-1, 1);
    Case drawn{document::PointStore(),
               {axis(80.25, 960.5, 0, 10, false), axis(850, 65.3, 0, 10, false), {75, 60, 900, 795}}};
    double x = 0;
    for (int step = 0; step < 30; ++step) {
        std::vector<double> xs(random() % 3000), ys(xs.size());
        for (std::size_t i = 0; i < xs.size(); ++i) {
            xs[i] = x += 0.0003;
            ys[i] = 5 + 3 * std::sin(x) + noise(random);
        }
        if (step % 2 == 0)
            drawn.store.append(xs, ys, {});
        else
            for (std::size_t i = 0; i < xs.size(); ++i) drawn.store.append({xs[i], ys[i], 0, {}});
        if (step % 3 == 2) drawn.store.drop_oldest(random() % 5000);
        CAPTURE(step);
        CHECK(largest_difference(drawn) <= 2);
    }
}

TEST_CASE("a column of noise whose first and last points are its extremes is full") {
    std::mt19937 random(2);
    std::uniform_real_distribution<double> noise(0, 1);
    document::PointStore store;
    for (int i = 0; i < 1000; ++i)
        store.append({i * 0.001, i == 0 ? 0 : i == 999 ? 1 : noise(random), 0, {}});
    const LineMapping map{axis(293, 438, 0, 10, false), axis(750, -5250, 0, 10, false), {75, 60, 900, 795}};
    MaskSurface surface;
    draw_data_line(surface, store, map);
    for (int y = 14; y < 47; ++y) CHECK(surface.mask.row(y)[20] > 240);
}
