#include "qvplot/shown_range.h"

#include <algorithm>
#include <cmath>

namespace qv::plot {
namespace {

constexpr double margin = 0.05; // of the values, at each end of a y axis
constexpr double infinity = std::numeric_limits<double>::infinity();

// How values lie along an axis.
double evenly(double value, bool is_log) {
    return is_log ? std::log(value) : value;
}
double value_at(double place, bool is_log) {
    return is_log ? std::exp(place) : place;
}

// Takes in what a series shows between two ends of x, the line that crosses them included.
class ExtentWithin {
public:
    ExtentWithin(Series const& series, XRange const& range, PlotOptions const& options)
        : series_(series), range_(range), log_x_(options.log.x),
          log_y_(series.on_second_axis ? options.log.y2 : options.log.y),
          has_line_(options.draws_lines() && series.function.empty()) {}

    void add_to(Extent& extent) const {
        for (std::size_t i = 0; i < series_.x.size(); ++i) {
            if (!series_.has_point(i)) continue;
            if (series_.x[i] >= range_.from && series_.x[i] <= range_.to) extent.include(series_.y[i]);
            if (!has_line_ || i == 0 || !series_.has_point(i - 1)) continue;
            for (double const end : {range_.from, range_.to}) add_crossing(extent, i, end);
        }
    }

private:
    void add_crossing(Extent& extent, std::size_t i, double end) const {
        auto const [low, high] = std::minmax({series_.x[i - 1], series_.x[i]});
        if (!(low < end && end < high)) return;
        double const from = evenly(series_.x[i - 1], log_x_);
        double const share = (evenly(end, log_x_) - from) / (evenly(series_.x[i], log_x_) - from);
        double const first = evenly(series_.y[i - 1], log_y_), last = evenly(series_.y[i], log_y_);
        double const value = value_at(first * (1 - share) + last * share, log_y_);
        if (std::isfinite(value) && (value > 0 || !log_y_)) extent.include(value);
    }

    Series const& series_;
    XRange const& range_;
    bool log_x_, log_y_, has_line_;
};

Extent y_extent(PlotData const& data, PlotOptions const& options, bool second) {
    const XRange range = options.x_range.value_or(XRange{-infinity, infinity});
    Extent extent;
    for (Series const& series : data.series)
        if (series.on_second_axis == second) ExtentWithin(series, range, options).add_to(extent);
    return extent;
}

Extent widened(Extent const& values, double low_by, double high_by, bool is_log) {
    const Extent wider{value_at(evenly(values.low, is_log) - low_by, is_log),
                       value_at(evenly(values.high, is_log) + high_by, is_log)};
    bool const is_range = std::isfinite(wider.span()) && wider.low < wider.high && (!is_log || wider.low > 0);
    return is_range ? wider : values;
}

// One value alone stands in the middle; bars stand on their base without a gap.
Extent with_margin(Extent const& values, bool is_log, bool has_bars) {
    double const span = evenly(values.high, is_log) - evenly(values.low, is_log);
    double const one_value =
        is_log ? 0.5 * std::log(10.0) : std::max(margin * std::abs(values.low), values.low == 0 ? 1 : 0.0);
    double const by = span > 0 ? margin * span : one_value;
    auto const room = [&](double end) { return has_bars && !is_log && end == 0 && span > 0 ? 0 : by; };
    return widened(values, room(values.low), room(values.high), is_log);
}

} // namespace

double bar_distance(PlotData const& data) {
    double least = infinity;
    for (Series const& series : data.series) {
        std::vector<double> x;
        std::ranges::copy_if(series.x, std::back_inserter(x),
                             [](double value) { return std::isfinite(value); });
        std::ranges::sort(x);
        for (std::size_t i = 1; i < x.size(); ++i)
            if (x[i] > x[i - 1]) least = std::min(least, x[i] - x[i - 1]);
    }
    return std::isfinite(least) ? least : 0;
}

std::optional<Extent> x_range_to_show(PlotData const& data, PlotOptions const& options) {
    if (options.x_range) return Extent{options.x_range->from, options.x_range->to};
    bool const has_points =
        std::ranges::any_of(data.series, [](Series const& series) { return series.function.empty(); });
    if (!has_points) {
        XRange const& range = data.series.front().function_range;
        return Extent{range.from, range.to};
    }
    bool const has_bars = options.bars && !options.log.x && data.x.texts.empty();
    if (!data.x_is_date && !has_bars) return std::nullopt;
    Extent extent;
    for (Series const& series : data.series)
        for (double const x : series.x) extent.include(x);
    // Beyond it an axis of time has no dates.
    constexpr double end_of_9999 = 253402300799;
    if (data.x_is_date && extent.high + std::max(extent.span(), 86400.0) > end_of_9999)
        return Extent{extent.low - (extent.span() > 0 ? 0 : 86400), std::min(extent.high, end_of_9999)};
    if (!has_bars) return std::nullopt;
    double const distance = bar_distance(data);
    const Extent padded = widened(extent, distance / 2, distance / 2, false);
    return padded.low < padded.high ? std::optional(padded) : std::nullopt;
}

std::optional<Extent> y_range_to_show(PlotData const& data, PlotOptions const& options, bool second) {
    bool const is_log = second ? options.log.y2 : options.log.y;
    bool const has_function = std::ranges::any_of(data.series, [&](Series const& series) {
        return series.on_second_axis == second && !series.function.empty();
    });
    if ((!options.x_range && !has_function) || options.stacked) return std::nullopt;
    Extent extent = y_extent(data, options, second);
    if (!(extent.low <= extent.high)) return std::nullopt;
    bool const has_base = std::ranges::any_of(data.series, [&](Series const& series) {
        Kind const kind = series.style.kind.value_or(options.page_kind());
        return series.on_second_axis == second && (kind == Kind::Bars || kind == Kind::Area);
    });
    if (has_base && !is_log) extent.include(0);
    return with_margin(extent, is_log, has_base);
}

} // namespace qv::plot
