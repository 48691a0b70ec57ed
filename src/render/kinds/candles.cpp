#include "render/kinds/candles.h"

#include "render/pen.h"
#include "surface/whole_pixel.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <span>

namespace qv::render {
namespace {

using document::Axis;
using document::AxisKind;
using document::DataSet;
using document::Extent;
using document::Graph;
using document::PointBlock;

constexpr double nothing = std::numeric_limits<double>::quiet_NaN();
constexpr double body_share = 0.7;         // of the room of a candle
constexpr double least_body_pixels = 3;    // of the room, below which candles are lines
constexpr double volume_share = 1.0 / 3;   // of the plot area
constexpr double pointer_reach_twips = 45; // beside a candle, that still counts as pointing at it
constexpr std::uint8_t ohlc_bars = 1;      // CandleStyle

enum Column : std::size_t { OpenColumn, HighColumn, LowColumn, VolumeColumn };

/// One candle. What was not given of it follows from the rest: a missing open is the close, a missing high or
/// low the farther of both. Without a close there is none.
struct Candle {
    double x = nothing, open = nothing, high = nothing, low = nothing, close = nothing, volume = nothing;

    bool is_there() const { return std::isfinite(x) && std::isfinite(close); }
    bool rises() const { return close >= open; }
    void complete() {
        if (!std::isfinite(open)) open = close;
        if (!std::isfinite(high)) high = std::max(open, close);
        if (!std::isfinite(low)) low = std::min(open, close);
    }
};

/// The columns of a block.
class Candles {
public:
    explicit Candles(PointBlock const& block) : x_(block.x()), close_(block.y()) {
        for (std::size_t i = 0; i < extra_.size(); ++i) extra_[i] = block.extra(i);
    }
    std::size_t size() const { return x_.size(); }
    Candle operator[](std::size_t i) const {
        Candle candle{x_[i],     value(OpenColumn, i),  value(HighColumn, i), value(LowColumn, i),
                      close_[i], value(VolumeColumn, i)};
        candle.complete();
        return candle;
    }

private:
    double value(Column column, std::size_t i) const {
        return extra_[column].empty() ? nothing : extra_[column][i];
    }

    std::span<double const> x_, close_;
    document::ExtraColumns extra_;
};

/// What is known of all candles of a data set.
struct CandleMeasures : document::DerivedData {
    std::size_t size = 0, dropped = 0; // of the points they belong to
    bool is_log = false;
    double room = HUGE_VAL; // of a candle, on the x axis's own scale: the way to the nearest one
    double last_x = nothing;
    Extent x, y, positive_y, volume;

    void take(Candle const& candle) {
        room = std::min(room, way_to(candle.x));
        last_x = candle.x;
        x.include(candle.x);
        for (double const price : {candle.open, candle.high, candle.low, candle.close}) {
            y.include(price);
            if (price > 0) positive_y.include(price);
        }
        if (std::isfinite(candle.volume)) volume.include(candle.volume);
    }

private:
    double way_to(double next) const {
        if (is_log && !(last_x > 0 && next > 0)) return HUGE_VAL;
        double const way = std::abs(scale::ScaleFrom{last_x, is_log}(next));
        return way > 0 ? way : HUGE_VAL;
    }
};

/// Points that were added since the last time are taken in, where none was dropped.
CandleMeasures const& measures_of(DataSet const& set, Axis const& x_axis) {
    auto* known = dynamic_cast<CandleMeasures*>(set.derived.get());
    bool const goes_on = known && known->size <= set.points.size() && known->dropped == set.points.dropped()
                         && known->is_log == x_axis.AxisLog;
    if (!goes_on) {
        set.derived = std::make_unique<CandleMeasures>();
        known = static_cast<CandleMeasures*>(set.derived.get());
        known->dropped = set.points.dropped();
        known->is_log = x_axis.AxisLog;
    }
    std::size_t start = 0;
    for (PointBlock const& block : set.points.blocks()) {
        const Candles candles(block);
        for (std::size_t i = known->size - std::min(known->size, start); i < candles.size(); ++i)
            if (const Candle candle = candles[i]; candle.is_there()) known->take(candle);
        start += candles.size();
    }
    known->size = set.points.size();
    return *known;
}

double room_of(DataSet const& set, Axis const& x_axis) {
    if (x_axis.AxisCategories) return 1;
    double const room = measures_of(set, x_axis).room;
    return std::isfinite(room) ? room : 1;
}

Axis const& x_axis_of(SeriesView const& view) {
    return at(view.graph.Axes, view.set.xAxisIndex, "axis");
}

/// Twips across the page that belong to one candle.
double slot_of(SeriesView const& view) {
    return std::abs(view.x.factor) * room_of(view.set, x_axis_of(view));
}

/// Calls `take(index, candle)` for the candles whose x may lie between two values, in order of arrival.
void for_each_between(DataSet const& set, double low, double high, auto const& take) {
    std::size_t start = 0;
    for (PointBlock const& block : set.points.blocks()) {
        auto const x = block.x();
        std::size_t first = 0, end = x.size();
        if (block.x_rising()) {
            first = static_cast<std::size_t>(std::ranges::lower_bound(x, low) - x.begin());
            end = static_cast<std::size_t>(std::ranges::upper_bound(x, high) - x.begin());
        }
        const Candles candles(block);
        for (std::size_t i = first; i < end; ++i)
            if (x[i] >= low && x[i] <= high)
                if (const Candle candle = candles[i]; candle.is_there()) take(start + i, candle);
        start += x.size();
    }
}

/// The values between two places, and a candle's room beyond them.
void for_each_between_places(SeriesView const& view, double left, double right, auto const& take) {
    double const slot = slot_of(view);
    auto const [low, high] = std::minmax({view.x.value_at(left - slot), view.x.value_at(right + slot)});
    if (!std::isnan(low) && !std::isnan(high)) for_each_between(view.set, low, high, take);
}

Color color_of(DataSet const& set, bool rises) {
    return rises ? set.CandleRisingColor : set.CandleFallingColor;
}

/// Draws candles whose rooms are so and so wide, on whole pixels.
class CandlePainter {
public:
    CandlePainter(DrawSurface& surface, DataSet const& set, double slot)
        : surface_(surface), set_(set), pixel_(surface.TwipsPerPixelX()),
          half_(std::max(1.0, std::floor((body_share * slot / pixel_ - 1) / 2))) {}

    /// Prices in twips on the page.
    struct Prices {
        double open, high, low, close;
    };

    void paint(double middle, Prices const& prices, bool rises) const {
        Color const color = color_of(set_, rises);
        double const x = column(middle);
        const PenScope pen(surface_, 1);
        surface_.Line({x, prices.high}, {x, prices.low}, LineShape::Segment, color);
        double const left = x - half_ * pixel_, right = x + half_ * pixel_;
        if (set_.CandleStyle == ohlc_bars) {
            surface_.Line({left, prices.open}, {x, prices.open}, LineShape::Segment, color);
            surface_.Line({x, prices.close}, {right, prices.close}, LineShape::Segment, color);
        } else {
            surface_.Line({left, prices.open}, {right, prices.close}, LineShape::FilledBox, color);
        }
    }

    /// A box as wide as a body.
    void paint_column(double middle, double from, double to, bool rises) const {
        double const x = column(middle);
        surface_.Line({x - half_ * pixel_, from}, {x + half_ * pixel_, to}, LineShape::FilledBox,
                      color_of(set_, rises));
    }

private:
    double column(double place) const { return whole_pixel(place / pixel_) * pixel_; }

    DrawSurface& surface_;
    DataSet const& set_;
    double pixel_;
    double half_; // of a body, pixels beside the middle one
};

/// Candles that fall into one column of pixels, joined to one from the first open to the last close.
class ColumnJoiner {
public:
    ColumnJoiner(DrawSurface& surface, DataSet const& set) : surface_(surface), set_(set) {}

    /// In place of prices a volume goes from 0 to it.
    void add(int column, Candle const& candle) {
        if (column != column_) {
            paint();
            column_ = column;
            joined_ = candle;
            return;
        }
        joined_.high = std::max(joined_.high, candle.high);
        joined_.low = std::min(joined_.low, candle.low);
        joined_.close = candle.close;
        if (!(joined_.volume >= candle.volume)) joined_.volume = candle.volume;
    }
    void finish() { paint(); }

    /// Prices on one scale, volumes on another.
    scale::AxisMap prices;
    std::optional<scale::AxisMap> volumes;

private:
    void paint() {
        if (!joined_.is_there()) return;
        double const x = column_ * surface_.TwipsPerPixelX();
        Color const color = color_of(set_, joined_.rises());
        if (!volumes)
            surface_.Line({x, prices(joined_.high)}, {x, prices(joined_.low)}, LineShape::FilledBox, color);
        else if (std::isfinite(joined_.volume))
            surface_.Line({x, (*volumes)(0)}, {x, (*volumes)(joined_.volume)}, LineShape::FilledBox, color);
        joined_ = {};
    }

    DrawSurface& surface_;
    DataSet const& set_;
    int column_ = std::numeric_limits<int>::min();
    Candle joined_;
};

void draw_joined(SeriesView const& view, DrawSurface& surface, std::optional<scale::AxisMap> const& volumes) {
    ColumnJoiner joiner(surface, view.set);
    joiner.prices = view.y;
    joiner.volumes = volumes;
    double const pixel = surface.TwipsPerPixelX();
    for_each_between_places(view, view.plot.left, view.plot.right(), [&](std::size_t, Candle const& candle) {
        joiner.add(whole_pixel(view.x(candle.x) / pixel), candle);
    });
    joiner.finish();
}

void draw_each(SeriesView const& view, DrawSurface& surface, std::optional<scale::AxisMap> const& volumes) {
    const CandlePainter painter(surface, view.set, slot_of(view));
    for_each_between_places(view, view.plot.left, view.plot.right(), [&](std::size_t, Candle const& candle) {
        double const x = view.x(candle.x);
        if (!volumes)
            painter.paint(
                x, {view.y(candle.open), view.y(candle.high), view.y(candle.low), view.y(candle.close)},
                candle.rises());
        else if (std::isfinite(candle.volume))
            painter.paint_column(x, (*volumes)(0), (*volumes)(candle.volume), candle.rises());
    });
}

std::optional<scale::AxisMap> volume_map(SeriesView const& view, CandleKind const& kind) {
    std::int16_t const index = kind.third_axis(view.graph, view.set);
    if (index < 0) return std::nullopt;
    return scale::y_map(view.graph, at(view.graph.Axes, index));
}

Candle candle_at(DataSet const& set, std::size_t item) {
    document::PointStore const& points = set.points;
    const document::PointEntry point = points.at(item);
    return {point.X,
            points.extra_at(OpenColumn, item),
            points.extra_at(HighColumn, item),
            points.extra_at(LowColumn, item),
            point.Y,
            points.extra_at(VolumeColumn, item)};
}

Box box_of(SeriesView const& view, Candle const& candle) {
    double const x = view.x(candle.x), half = body_share * slot_of(view) / 2;
    auto const [top, bottom] = std::minmax({view.y(candle.high), view.y(candle.low)});
    return {x - half, top, 2 * half, bottom - top};
}

} // namespace

void CandleKind::draw(SeriesView const& view, DrawSurface& surface) const {
    if (!view.x.valid || !view.y.valid) return;
    bool const has_bodies = slot_of(view) >= least_body_pixels * surface.TwipsPerPixelX();
    auto const draw_all = has_bodies ? draw_each : draw_joined;
    if (auto const volumes = volume_map(view, *this); volumes && volumes->valid) {
        constexpr std::uint8_t half_seen = 128;
        const document::RestoreScope lighter(surface.state.alpha, half_seen);
        draw_all(view, surface, volumes);
    }
    draw_all(view, surface, std::nullopt);
}

void CandleKind::include_reach(document::ControlState const&, DataSet const& set, AxisReach const& x,
                               AxisReach const& y) const {
    CandleMeasures const& measures = measures_of(set, x.axis);
    if (measures.x.empty()) return;
    double const half = x.axis.AxisCategories ? 0 : room_of(set, x.axis) / 2;
    for (double const end : {measures.x.low, measures.x.high})
        for (double const way : {-half, half})
            if (x.has_place(end)) x.include(scale::ScaleFrom{end, x.axis.AxisLog}.value_at(way));
    if (const Extent prices = y.axis.AxisLog ? measures.positive_y : measures.y; !prices.empty()) {
        y.include(prices.low);
        y.include(prices.high);
    }
    // The columns of volumes stand below the prices.
    if (set.CandleVolumeAxis > 0) y.reach.room_low = std::max(y.reach.room_low, volume_share);
}

std::int16_t CandleKind::third_axis(Graph const& graph, DataSet const& set) const {
    std::int16_t left = set.CandleVolumeAxis;
    for (std::int16_t i = 0; left > 0 && i < graph.NumAxes(); ++i)
        if (at(graph.Axes, i).AxisXY == AxisKind::Y && --left == 0) return i;
    return -1;
}

void CandleKind::include_third(DataSet const& set, AxisReach const& axis) const {
    auto const* known = dynamic_cast<CandleMeasures const*>(set.derived.get());
    const Extent volume = known ? known->volume : Extent{};
    if (volume.empty()) return;
    axis.stand_on(0);
    axis.include(volume.high);
    axis.reach.room_high = std::max(axis.reach.room_high, 1 - volume_share);
}

void CandleKind::draw_sample(SeriesView const& view, DrawSurface& surface, Box const& box) const {
    CandlePainter const painter(surface, view.set, box.width / 3);
    double const top = box.top, bottom = box.bottom(), third = box.height / 4;
    painter.paint(box.left + box.width / 4, {bottom - third, top, bottom, top + third}, true);
    painter.paint(box.left + box.width * 3 / 4, {top + third, top, bottom, bottom - third}, false);
}

std::size_t CandleKind::item_count(DataSet const& set) const {
    return set.points.size();
}

Box CandleKind::item_box(SeriesView const& view, std::size_t item) const {
    Candle candle = candle_at(view.set, item);
    if (!candle.is_there()) return {nothing, nothing, nothing, nothing};
    candle.complete();
    return box_of(view, candle);
}

std::optional<std::size_t> CandleKind::item_at(SeriesView const& view, Point place) const {
    std::optional<std::size_t> nearest;
    double least = HUGE_VAL;
    for_each_between_places(view, place.x - pointer_reach_twips, place.x + pointer_reach_twips,
                            [&](std::size_t item, Candle const& candle) {
                                const Box box = box_of(view, candle);
                                double const reach = pointer_reach_twips;
                                double const distance = std::abs(view.x(candle.x) - place.x);
                                bool const is_on = distance <= box.width / 2 + reach
                                                   && place.y >= box.top - reach
                                                   && place.y <= box.bottom() + reach;
                                if (!is_on || distance >= least) return;
                                least = distance;
                                nearest = item;
                            });
    return nearest;
}

std::vector<Fact> CandleKind::item_facts(DataSet const& set, std::size_t item) const {
    const Candle candle = candle_at(set, item);
    std::vector<Fact> facts;
    if (std::isfinite(candle.x)) facts.push_back({"", candle.x, Fact::Of::XAxis, {}});
    auto const add = [&](char const* name, double value, Fact::Of of) {
        if (std::isfinite(value)) facts.push_back({name, value, of, {}});
    };
    add("O", candle.open, Fact::Of::YAxis);
    add("H", candle.high, Fact::Of::YAxis);
    add("L", candle.low, Fact::Of::YAxis);
    add("C", candle.close, Fact::Of::YAxis);
    add("V", candle.volume, Fact::Of::Nothing);
    if (!candle.is_there()) facts.push_back({"", 0, Fact::Of::Text, "no candle"});
    return facts;
}

} // namespace qv::render
