#include "render/curve_sampling.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace qv::render {
namespace {

constexpr double samples_a_pixel = 4;
constexpr int halvings = 5; // to 128 samples a pixel
constexpr double most_samples_at_first = 1e5;
constexpr double steep_pixels = 0.5;     // a climb between neighbours that asks for more samples
constexpr double jump_pixels = 1;        // a climb between the closest neighbours that may be a jump
constexpr std::size_t most_jumps = 1024; // searched for, the largest first
constexpr int bisections = 60;
constexpr double not_a_number = std::numeric_limits<double>::quiet_NaN();

struct Sample {
    double x = 0;
    Point place; // y is not a number where the function fails
    bool fails() const { return std::isnan(place.y); }
};

class Sampler {
public:
    Sampler(EvaluateOver const& evaluate, CurveFrame const& frame) : evaluate_(evaluate), frame_(frame) {}

    std::vector<Point> run() {
        sample_evenly();
        for (int i = 0; i < halvings; ++i)
            if (!halve_steep_intervals()) break;
        open_jumps();
        std::vector<Point> places;
        places.reserve(samples_.size());
        for (Sample const& sample : samples_) places.push_back(sample.place);
        return places;
    }

private:
    double page_y(double value) const {
        if (!std::isfinite(value) || (frame_.mapping.y.is_log && !(value > 0))) return not_a_number;
        // Beyond this no pixel can tell, and drawing reckons with smaller numbers.
        double const reach = 1000 * (frame_.mapping.visible.height + frame_.pixel);
        return std::clamp(frame_.mapping.y(value), frame_.mapping.visible.top - reach,
                          frame_.mapping.visible.bottom() + reach);
    }

    void evaluate(std::span<Sample> samples) {
        x_.clear();
        for (Sample const& sample : samples) x_.push_back(sample.x);
        y_.resize(x_.size());
        evaluate_(x_, y_);
        for (std::size_t i = 0; i < samples.size(); ++i) samples[i].place.y = page_y(y_[i]);
    }

    Sample sample_at(double x) {
        Sample sample{x, {frame_.mapping.x(x), 0}};
        evaluate({&sample, 1});
        return sample;
    }

    void sample_evenly() {
        double const from = frame_.mapping.x(frame_.x_from), to = frame_.mapping.x(frame_.x_to);
        double const wanted = std::abs(to - from) / frame_.pixel * samples_a_pixel;
        auto const count = static_cast<std::size_t>(std::clamp(wanted, 1.0, most_samples_at_first));
        samples_.push_back({frame_.x_from, {from, 0}});
        for (std::size_t i = 1; i < count; ++i) {
            double const position = from + (to - from) * static_cast<double>(i) / static_cast<double>(count);
            samples_.push_back({frame_.mapping.x.value_at(position), {position, 0}});
        }
        samples_.push_back({frame_.x_to, {to, 0}});
        evaluate(samples_);
    }

    /// How far the curve climbs between two samples, in pixels, as far as it can be seen; infinite where one
    /// of them fails.
    double climb(Sample const& from, Sample const& to) const {
        if (from.fails() && to.fails()) return 0;
        if (from.fails() || to.fails()) return std::numeric_limits<double>::infinity();
        double const top = frame_.mapping.visible.top - frame_.mapping.visible.height;
        double const bottom = frame_.mapping.visible.bottom() + frame_.mapping.visible.height;
        return std::abs(std::clamp(from.place.y, top, bottom) - std::clamp(to.place.y, top, bottom))
               / frame_.pixel;
    }

    std::vector<bool> steep_intervals() const {
        std::vector<bool> steep(samples_.size() + 1); // interval i ends at sample i
        for (std::size_t i = 1; i < samples_.size(); ++i)
            if (climb(samples_[i - 1], samples_[i]) > steep_pixels)
                steep[i - 1] = steep[i] = steep[i + 1] = true;
        return steep;
    }

    bool halve_steep_intervals() {
        const std::vector<bool> steep = steep_intervals();
        std::vector<Sample> middles;
        for (std::size_t i = 1; i < samples_.size(); ++i) {
            if (!steep[i]) continue;
            double const position = (samples_[i - 1].place.x + samples_[i].place.x) / 2;
            middles.push_back({frame_.mapping.x.value_at(position), {position, 0}});
        }
        if (middles.empty()) return false;
        evaluate(middles);
        std::vector<Sample> all;
        all.reserve(samples_.size() + middles.size());
        auto middle = middles.begin();
        all.push_back(samples_[0]);
        for (std::size_t i = 1; i < samples_.size(); ++i) {
            if (steep[i]) all.push_back(*middle++);
            all.push_back(samples_[i]);
        }
        samples_ = std::move(all);
        return true;
    }

    struct Ends {
        Sample from, to;
    };
    /// The two neighbours, as close as numbers can be, between which the curve climbs most.
    Ends close_in(Ends ends) {
        for (int i = 0; i < bisections; ++i) {
            double const x = ends.from.x + (ends.to.x - ends.from.x) / 2;
            if (x == ends.from.x || x == ends.to.x) break;
            const Sample middle = sample_at(x);
            if (climb(ends.from, middle) >= climb(middle, ends.to))
                ends.to = middle;
            else
                ends.from = middle;
        }
        return ends;
    }

    std::vector<std::size_t> suspects() const {
        std::vector<std::size_t> found; // intervals, named by their second sample
        for (std::size_t i = 1; i < samples_.size(); ++i)
            if (climb(samples_[i - 1], samples_[i]) > jump_pixels) found.push_back(i);
        if (found.size() <= most_jumps) return found;
        auto const larger = [&](std::size_t a, std::size_t b) {
            return climb(samples_[a - 1], samples_[a]) > climb(samples_[b - 1], samples_[b]);
        };
        std::ranges::nth_element(found, found.begin() + most_jumps, larger);
        found.resize(most_jumps);
        std::ranges::sort(found);
        return found;
    }

    void open_jumps() {
        std::vector<Sample> all;
        std::size_t copied = 0;
        auto const copy_up_to = [&](std::size_t end) {
            for (; copied < end; ++copied) all.push_back(samples_[copied]);
        };
        for (std::size_t const i : suspects()) {
            copy_up_to(i);
            double const before = climb(samples_[i - 1], samples_[i]);
            const Ends ends = close_in({samples_[i - 1], samples_[i]});
            // A curve that is merely steep has flattened out between so close neighbours.
            if (climb(ends.from, ends.to) < before / 2) continue;
            all.push_back(ends.from);
            all.push_back({ends.from.x, {ends.from.place.x, not_a_number}});
            all.push_back(ends.to);
        }
        copy_up_to(samples_.size());
        samples_ = std::move(all);
    }

    EvaluateOver const& evaluate_;
    CurveFrame const& frame_;
    std::vector<Sample> samples_;
    std::vector<double> x_, y_;
};

} // namespace

std::vector<Point> sample_curve(EvaluateOver const& evaluate, CurveFrame const& frame) {
    return Sampler(evaluate, frame).run();
}

} // namespace qv::render
