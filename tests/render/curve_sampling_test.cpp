// Adaptive sampling against the functions themselves.
#include "render/curve_sampling.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <limits>

using namespace qv;
using namespace qv::render;

namespace {

constexpr double pixel = 15;
constexpr Box page{0, 0, 1200 * pixel, 800 * pixel};

struct Plot {
    double x_from, x_to, y_from, y_to;
    std::function<double(double)> function;

    CurveFrame frame() const {
        auto const map = [](double start, double length, double from, double to) {
            return scale::AxisMap{.start = start,
                                  .length = length,
                                  .first = from,
                                  .last = to,
                                  .factor = length / (to - from),
                                  .valid = true};
        };
        const scale::AxisMap x = map(0, page.width, x_from, x_to);
        const scale::AxisMap y = map(page.height, -page.height, y_from, y_to);
        return {{x, y, page}, x_from, x_to, pixel};
    }
    std::vector<Point> sample() const {
        return sample_curve([&](std::span<double const> x,
                                std::span<double> y) { std::ranges::transform(x, y.begin(), function); },
                            frame());
    }
    Point place(double x) const { return {frame().mapping.x(x), frame().mapping.y(function(x))}; }
};

double distance(Point from, Point to, Point point) {
    double const dx = to.x - from.x, dy = to.y - from.y, square = dx * dx + dy * dy;
    double const along = ((point.x - from.x) * dx + (point.y - from.y) * dy) / square;
    double const t = square == 0 ? 0 : std::clamp(along, 0.0, 1.0);
    return std::hypot(from.x + t * dx - point.x, from.y + t * dy - point.y);
}

// Of a place to the nearest segment that begins within two pixels of it across.
double distance_to(std::vector<Point> const& curve, Point point) {
    auto i = std::ranges::lower_bound(curve, point.x - 2 * pixel, {}, &Point::x);
    double nearest = HUGE_VAL;
    for (; i != curve.end() && std::next(i) != curve.end() && i->x < point.x + 2 * pixel; ++i)
        if (!std::isnan(i->y) && !std::isnan(std::next(i)->y))
            nearest = std::min(nearest, distance(*i, *std::next(i), point));
    return nearest;
}

} // namespace

TEST_CASE("no segment crosses a pole of the tangent, and both branches reach the page's edges") {
    for (double const y_end : {1.0, 10.0, 1e6}) {
        CAPTURE(y_end);
        const Plot plot{-10, 10, -y_end, y_end, [](double x) { return std::tan(x); }};
        auto const curve = plot.sample();
        auto const map = plot.frame().mapping.x;
        for (double pole = -5 * M_PI / 2; pole < 10; pole += M_PI) {
            double highest = HUGE_VAL, lowest = -HUGE_VAL; // beside the pole
            for (std::size_t i = 1; i < curve.size(); ++i) {
                const Point from = curve[i - 1], to = curve[i];
                bool const connected = !std::isnan(from.y) && !std::isnan(to.y);
                CHECK_FALSE(
                    (connected && map.value_at(from.x) < pole - 1e-9 && map.value_at(to.x) > pole + 1e-9));
                if (std::abs(from.x - map(pole)) > pixel || std::isnan(from.y)) continue;
                highest = std::min(highest, from.y);
                lowest = std::max(lowest, from.y);
            }
            CHECK(highest <= page.top);
            CHECK(lowest >= page.bottom());
        }
        CHECK(std::ranges::count_if(curve, [](Point p) { return std::isnan(p.y); }) == 6);
    }
}

TEST_CASE("sin(1/x) lies within a pixel of much denser sampling") {
    for (double const end : {10.0, 1.0, 0.1}) {
        CAPTURE(end);
        const Plot plot{-end, end, -1, 1, [](double x) { return x == 0 ? std::nan("") : std::sin(1 / x); }};
        auto const curve = plot.sample();
        CHECK(curve.size() < 200000);
        double worst = 0;
        int const samples = 400000;
        for (int i = 0; i <= samples; ++i) {
            double const x = 0.0100001 + (end - 0.0100001) * i / samples;
            worst = std::max(worst, distance_to(curve, plot.place(x)));
        }
        CHECK(worst < pixel);
    }
}

TEST_CASE("smooth curves take few samples, steep ones stay whole, domains end where they end") {
    const Plot line{0, 10, 0, 10, [](double x) { return x; }};
    CHECK(line.sample().size() == 4801);

    const Plot steep{-1, 1, -1, 1, [](double x) { return std::tanh(1e9 * x); }};
    auto const curve = steep.sample();
    CHECK(std::ranges::none_of(curve, [](Point p) { return std::isnan(p.y); }));

    const Plot step{-1, 1, -1, 2, [](double x) { return x < 0.3 ? 0.0 : 1.0; }};
    CHECK(std::ranges::count_if(step.sample(), [](Point p) { return std::isnan(p.y); }) == 1);

    const Plot root{-1, 1, -1, 1, [](double x) { return std::sqrt(x - 0.25); }};
    auto const rooted = root.sample();
    auto const first = std::ranges::find_if(rooted, [](Point p) { return !std::isnan(p.y); });
    CHECK(first->y == doctest::Approx(root.frame().mapping.y(0)).epsilon(1e-6));

    const Plot nowhere{-1, 1, -1, 1, [](double) { return std::nan(""); }};
    CHECK(std::ranges::all_of(nowhere.sample(), [](Point p) { return std::isnan(p.y); }));
    const Plot huge{-1, 1, -1, 1, [](double x) { return 1e300 * x; }};
    CHECK(std::ranges::none_of(huge.sample(), [](Point p) { return std::isinf(p.y); }));
}
