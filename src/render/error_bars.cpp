#include "render/error_bars.h"

#include "document/selection.h"
#include "document/trap.h"
#include "render/bands.h"
#include "render/pen.h"
#include "render/steps.h"
#include "surface/whole_pixel.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <optional>
#include <vector>

namespace qv::render {
namespace {

using document::ControlState;
using document::DataSet;
using document::PointBlock;
using document::PointStore;
using document::trapped;

double on_whole_pixel(double twips, double twips_per_pixel) {
    return whole_pixel(twips / twips_per_pixel) * twips_per_pixel;
}

/// An error bar on the page: its ends, and half a cap. Without a length caps are left out.
struct BarLines {
    Point from, to;
    Point cap;
    bool caps_at_from = true, caps_at_to = true;
};

void draw_lines(DrawSurface& surface, BarLines const& bar) {
    auto const line = [&](Point a, Point b) {
        surface.Line(a, b, LineShape::Segment, surface.state.ForeColor);
    };
    line(bar.from, bar.to);
    auto const cap = [&](Point end) {
        line({end.x - bar.cap.x, end.y - bar.cap.y}, {end.x + bar.cap.x, end.y + bar.cap.y});
    };
    if (bar.cap == Point{}) return;
    if (bar.caps_at_from) cap(bar.from);
    if (bar.caps_at_to) cap(bar.to);
}

void draw_bar(DrawSurface& surface, DataSet const& set, Color color, BarLines const& bar) {
    surface.state.ForeColor = color;
    const PenScope pen(surface, set.ErrorBarThickness);
    const document::RestoreScope alpha(surface.state.alpha, set.DataLineAlpha);
    const ShapeScope one_shape(surface);
    draw_lines(surface, bar);
}

double half_cap(DataSet const& set, double units_per_mm) {
    return std::max(0.0F, set.ErrorBarCap) / 2 * units_per_mm;
}

/// What values on one axis come to on the page.
struct Side {
    scale::AxisMap map;
    double shift;     // twips, of bars beside their points
    double pixel;     // twips
    double half_cap;  // twips, of a cap along this axis
    double low, high; // what can be seen, twips

    bool has_place(double value) const { return std::isfinite(value) && (!map.is_log || value > 0); }
    double place(double value) const { return map(value) + shift; }
    bool shows(double from, double to) const {
        return std::max(from, to) >= low && std::min(from, to) <= high;
    }
};

enum class Direction : std::uint8_t { Upright, Lying };

/// A point's value along its error bar and across it, and its errors to both sides.
struct Ends {
    double along, across;
    double less, more;
};

/// The lines of an error bar; none where nothing of it can be seen.
std::optional<BarLines> bar_lines(Side const& along, Side const& across, Ends const& ends,
                                  Direction direction) {
    if (!(ends.less > 0 || ends.more > 0)) return std::nullopt;
    double const middle = on_whole_pixel(across.place(ends.across), across.pixel);
    double const cap = on_whole_pixel(across.half_cap, across.pixel);
    double const from = along.place(ends.along - ends.less), to = along.place(ends.along + ends.more);
    if (!across.shows(middle - cap, middle + cap) || !along.shows(from, to)) return std::nullopt;
    auto const point = [&](double along_bar, double across_bar) {
        return direction == Direction::Upright ? Point{across_bar, along_bar} : Point{along_bar, across_bar};
    };
    return BarLines{point(from, middle), point(to, middle), point(0, cap), ends.less > 0, ends.more > 0};
}

/// What of the error bars one way is painted, in whole pixels: of very many bars most lie on others.
class PaintedBars {
public:
    /// So many bars and so few pixels that looking is cheaper than painting.
    static bool pays(std::size_t bars, Side const& along, Side const& across) {
        constexpr std::size_t many = 10000;
        constexpr double most_pixels = 1 << 26;
        return bars > many && count(along) * count(across) < most_pixels;
    }

    PaintedBars(Side const& along, Side const& across)
        : along_(along), across_(across), spans_(static_cast<std::size_t>(count(across))),
          caps_(spans_.size() * static_cast<std::size_t>(count(along))) {}

    /// Whether anything of a bar is not painted yet; from now on it is.
    bool take(double middle, double from, double to, BarLines const& bar) {
        std::size_t const column = number(across_, middle);
        auto const [low, high] = std::minmax({number(along_, from), number(along_, to)});
        Span& span = spans_[column];
        bool is_new = low < span.low || high > span.high;
        bool const touches = span.low <= high && low <= span.high;
        if (is_new)
            span = touches ? Span{std::min(low, span.low), std::max(high, span.high)} : Span{low, high};
        auto const cap = [&](double end) {
            auto painted = caps_[column * static_cast<std::size_t>(count(along_)) + number(along_, end)];
            is_new |= !painted;
            painted = true;
        };
        if (bar.caps_at_from) cap(from);
        if (bar.caps_at_to) cap(to);
        return is_new;
    }

private:
    struct Span {
        std::size_t low = 1, high = 0;
    };
    // What can be seen, what a cap reaches into it, and a pixel beyond at either end for all that lies there.
    static double first(Side const& side) { return std::floor((side.low - side.half_cap) / side.pixel) - 2; }
    static double count(Side const& side) {
        return std::ceil((side.high + side.half_cap) / side.pixel) + 3 - first(side);
    }
    static std::size_t number(Side const& side, double twips) {
        double const pixel = std::floor(twips / side.pixel + 0.5) - first(side);
        return static_cast<std::size_t>(std::clamp(pixel, 0.0, count(side) - 1));
    }

    Side const& along_;
    Side const& across_;
    std::vector<Span> spans_;
    std::vector<bool> caps_;
};

bool has_error_columns(PointBlock const& block) {
    for (std::size_t column = 0; column < document::extra_column_count; ++column)
        if (!block.extra(column).empty()) return true;
    return false;
}

/// What the errors of a point span, in values.
struct Spanned {
    double x, low, high;
};

DataSet const& data_set_of(ControlState& state, std::int16_t data_set) {
    return at(document::current_graph(state).DataSets, data_set);
}

} // namespace

void ErrorBar(ControlState& state, DrawSurface& surface, std::int16_t data_set, ErrorBarPlace place) {
    trapped(state, "ErrorBar", [&] {
        const double pixel = surface.TwipsPerPixelX();
        const double x = on_whole_pixel(place.across, pixel);
        DataSet const& set = data_set_of(state, data_set);
        const double cap = on_whole_pixel(half_cap(set, state.UnitsPerMmX), pixel);
        draw_bar(surface, set, set.ErrorBarColor, {{x, place.low}, {x, place.high}, {cap, 0}});
    });
}

void HorizErrorBar(ControlState& state, DrawSurface& surface, std::int16_t data_set, ErrorBarPlace place) {
    trapped(state, "HorizErrorBar", [&] {
        DataSet const& set = data_set_of(state, data_set);
        draw_bar(
            surface, set, set.DataSymbolFill.EdgeColor,
            {{place.low, place.across}, {place.high, place.across}, {0, half_cap(set, state.UnitsPerMmY)}});
    });
}

PointErrors errors_of(PointBlock const& block, std::size_t index) {
    double const e = block.e().empty() ? 0 : block.e()[index];
    auto const error = [&](std::size_t column, double without) {
        auto const values = block.extra(column);
        double const given = values.empty() || std::isnan(values[index]) ? without : values[index];
        return std::isfinite(given) && given > 0 ? given : 0;
    };
    return {error(0, e), error(1, e), error(2, -e), error(3, -e)};
}

PointErrors errors_of(PointStore const& points, std::size_t index) {
    for (PointBlock const& block : points.blocks()) {
        if (index < block.size()) return errors_of(block, index);
        index -= block.size();
    }
    return {};
}

bool has_errors(PointBlock const& block) {
    return !block.e().empty() || has_error_columns(block);
}

bool draws_errors_together(DataSet const& set) {
    return shows_error_band(set)
           || (set.ShowErrorBar && std::ranges::any_of(set.points.blocks(), has_error_columns));
}

void draw_error_band(DrawSurface& surface, DataSet const& set, PointStore const& points,
                     LineMapping const& mapping) {
    constexpr double nowhere = std::numeric_limits<double>::quiet_NaN();
    constexpr BandPlace gap{nowhere, nowhere, nowhere};
    Steps const steps = steps_of(set);
    BandFill band(surface, mapping);
    Spanned last{};
    bool has_last = false;
    auto const add = [&](double x, Spanned const& values) {
        band.add({mapping.x(x), mapping.y(values.high), mapping.y(values.low)});
    };
    for (PointBlock const& block : points.blocks())
        for (std::size_t i = 0; i < block.size(); ++i) {
            double const x = block.x()[i], y = block.y()[i];
            if (!std::isfinite(x) || !std::isfinite(y)) {
                band.add(gap);
                has_last = false;
                continue;
            }
            const PointErrors errors = errors_of(block, i);
            const Spanned now{x, y - errors.below, y + errors.above};
            if (has_last)
                for_each_step(steps, last.x, x, [&](double corner, bool has_next_value) {
                    add(corner, has_next_value ? now : last);
                });
            add(x, now);
            last = now;
            has_last = true;
        }
    const document::RestoreScope alpha(surface.state.alpha, set.ErrorBandAlpha);
    band.draw(set.ErrorBarColor, set.ErrorBarColor);
}

void draw_error_bars(ControlState& state, DrawSurface& surface, DataSet const& set, PointStore const& points,
                     LineMapping const& mapping, Point shift) {
    surface.state.ForeColor = set.ErrorBarColor;
    const PenScope pen(surface, set.ErrorBarThickness);
    const document::RestoreScope alpha(surface.state.alpha, set.DataLineAlpha);
    const ShapeScope one_shape(surface);
    Box const& box = mapping.visible;
    const Side x{mapping.x, shift.x,    surface.TwipsPerPixelX(), half_cap(set, state.UnitsPerMmX),
                 box.left,  box.right()};
    const Side y{mapping.y, shift.y,     surface.TwipsPerPixelY(), half_cap(set, state.UnitsPerMmY),
                 box.top,   box.bottom()};
    std::optional<PaintedBars> upright, lying;
    if (PaintedBars::pays(points.size(), y, x)) {
        upright.emplace(y, x);
        lying.emplace(x, y);
    }
    for (PointBlock const& block : points.blocks()) {
        if (!has_errors(block)) continue;
        for (std::size_t i = 0; i < block.size(); ++i) {
            const Point value{block.x()[i], block.y()[i]};
            if (!x.has_place(value.x) || !y.has_place(value.y)) continue;
            const PointErrors errors = errors_of(block, i);
            if (auto const bar =
                    bar_lines(y, x, {value.y, value.x, errors.below, errors.above}, Direction::Upright);
                bar && (!upright || upright->take(bar->from.x, bar->from.y, bar->to.y, *bar)))
                draw_lines(surface, *bar);
            if (auto const bar =
                    bar_lines(x, y, {value.x, value.y, errors.left, errors.right}, Direction::Lying);
                bar && (!lying || lying->take(bar->from.y, bar->from.x, bar->to.x, *bar)))
                draw_lines(surface, *bar);
        }
    }
}

} // namespace qv::render
