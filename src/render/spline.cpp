#include "render/spline.h"

#include "base/convert.h"
#include "render/finite_runs.h"

#include <algorithm>
#include <cmath>

namespace qv::render {
namespace {

constexpr double twips_a_step = 50;
constexpr double most_steps = 100;

double CubicWeight(double t) {
    return t * t * t - t;
}

class SplineCurve {
public:
    SplineCurve(DrawSurface& surface, document::DataSet const& set, LineMapping const& mapping)
        : set_(set), mapping_(mapping), line_(surface, mapping.visible) {}

    void add(std::span<Point const> run) {
        Point from = place(run[0]);
        line_.add(from);
        for (std::size_t i = 0; i + 1 < run.size(); ++i) {
            const Point to = place(run[i + 1]);
            if (run[i + 1].x == run[i].x)
                line_.finish();
            else if (int const steps = steps_between(from, to); steps > 1)
                add_inner(run, i, steps);
            line_.add(to);
            from = to;
        }
        line_.finish();
        first_of_run_ += run.size();
    }

private:
    Point place(Point value) const { return {mapping_.x(value.x), mapping_.y(value.y)}; }

    // An interval beside the visible box shows as little as a straight line there.
    int steps_between(Point from, Point to) const {
        auto const [left, right] = std::minmax(from.x, to.x);
        if (right < mapping_.visible.left || left > mapping_.visible.right()) return 1;
        return static_cast<int>(
            round_half_even(std::min(most_steps, std::max(1.0, (right - left) / twips_a_step))));
    }

    void add_inner(std::span<Point const> run, std::size_t i, int steps) {
        std::vector<double> const& second = second_derivatives(set_);
        const SplineStretch stretch{run[i], run[i + 1], second[first_of_run_ + i],
                                    second[first_of_run_ + i + 1]};
        for (int j = 1; j < steps; ++j) line_.add(place(stretch.at(static_cast<double>(j) / steps)));
    }

    document::DataSet const& set_;
    LineMapping const& mapping_;
    ThinnedPolyline line_;
    std::size_t first_of_run_ = 0;
};

} // namespace

std::vector<double> SplineCoefficients(std::span<Point const> points) {
    std::size_t const count = points.size();
    std::vector<double> second(count, 0.0);
    if (count < 3) return second;
    std::size_t const last = count - 2; // of the inner points
    std::vector<double> diagonal(count);
    std::vector<double>& right = second; // solved in place
    auto const width = [&](std::size_t i) { return points[i + 1].x - points[i].x; };
    auto const slope = [&](std::size_t i) { return (points[i + 1].y - points[i].y) / width(i); };
    for (std::size_t i = 1; i <= last; ++i) {
        diagonal[i] = 2 * (points[i + 1].x - points[i - 1].x);
        bool const flat = width(i) == 0 || width(i - 1) == 0;
        right[i] = flat ? 1000.0 : 6 * (slope(i) - slope(i - 1));
    }
    for (std::size_t i = 1; i < last; ++i) {
        if (diagonal[i] == 0) continue;
        right[i + 1] -= width(i) * right[i] / diagonal[i];
        diagonal[i + 1] -= width(i) * width(i) / diagonal[i];
    }
    for (std::size_t i = last; i >= 1; --i)
        second[i] = diagonal[i] == 0 ? second[i + 1] : (right[i] - width(i) * second[i + 1]) / diagonal[i];
    return second;
}

std::vector<double> const& second_derivatives(document::DataSet const& set) {
    document::CurveMemory& memory = set.curve;
    bool const known = !memory.second_derivatives.empty() && memory.size == set.points.size()
                       && memory.dropped == set.points.dropped();
    if (known) return memory.second_derivatives;
    memory = {{}, set.points.size(), set.points.dropped()};
    for_each_finite_run(set.points, [&](std::span<Point const> run) {
        auto const of_run = SplineCoefficients(run);
        memory.second_derivatives.insert(memory.second_derivatives.end(), of_run.begin(), of_run.end());
    });
    return memory.second_derivatives;
}

Point SplineStretch::at(double share) const {
    double const width = to.x - from.x;
    double const straight = share * to.y + (1 - share) * from.y;
    double const bend = CubicWeight(share) * at_to + CubicWeight(1 - share) * at_from;
    double const y = straight + width * width * bend / 6;
    return {from.x + width * share, std::isfinite(y) ? y : straight};
}

void draw_spline(DrawSurface& surface, document::DataSet const& set, LineMapping const& mapping) {
    const ShapeScope one_shape(surface);
    SplineCurve curve(surface, set, mapping);
    for_each_finite_run(set.points, [&](std::span<Point const> run) { curve.add(run); });
}

} // namespace qv::render
