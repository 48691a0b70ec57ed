#include "base/convert.h"
#include "render/kinds/derived.h"
#include "render/kinds/distributions.h"
#include "render/kinds/groups.h"
#include "render/kinds/turned_view.h"
#include "render/pen.h"
#include "render/plot_geometry.h"
#include "render/symbols.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

namespace qv::render {
namespace {

using document::DataSet;
using document::PointBlock;

constexpr std::int16_t circle = 3;

/// What is known of all points together.
struct StripPoints {
    Gaps gaps;
    std::vector<double> positions; // each once
    std::vector<std::uint32_t>
        places;            // of the points that can be drawn, in order of arrival; none where all can
    std::size_t count = 0; // of those

    std::size_t place_of(std::size_t item) const { return places.empty() ? item : places[item]; }
};

struct StripSettings {
    bool lies = false;
    bool operator==(StripSettings const&) const = default;
};

StripPoints look_through(document::PointStore const& points, StripSettings const& settings) {
    StripPoints strip;
    PositionIndex index;
    std::vector<std::uint32_t> places;
    std::uint32_t place = 0;
    for (PointBlock const& block : points.blocks())
        for (std::size_t i = 0; i < block.size(); ++i, ++place) {
            if (!std::isfinite(block.x()[i]) || !std::isfinite(block.y()[i])) continue;
            places.push_back(place);
            index.of(settings.lies ? block.y()[i] : block.x()[i]);
        }
    strip.count = places.size();
    if (strip.count < points.size()) strip.places = std::move(places);
    strip.positions = index.positions();
    strip.gaps = gaps_between(strip.positions);
    return strip;
}

StripPoints const& strip_of(DataSet const& set) {
    return derived_of<StripPoints>(set, StripSettings{set.BarHoriz}, [&](StripSettings const& settings) {
        return look_through(set.points, settings);
    });
}

/// From -1 to 1, evenly: the finishing steps of Steele, Lea and Flood's generator (Fast Splittable
/// Pseudorandom Number Generators, 2014) scatter the bits of the point's number.
double jitter_of(std::size_t number) {
    std::uint64_t bits = (static_cast<std::uint64_t>(number) + 1) * 0x9E3779B97F4A7C15ULL;
    bits = (bits ^ bits >> 30) * 0xBF58476D1CE4E5B9ULL;
    bits = (bits ^ bits >> 27) * 0x94D049BB133111EBULL;
    bits ^= bits >> 31;
    return static_cast<double>(bits >> 11) * 0x1p-52 - 1;
}

/// Where the points of a strip stand on the page.
class Strip {
public:
    explicit Strip(SeriesView const& view) : set_(view.set), turned_(view) {
        document::Axis const& axis = at(view.graph.Axes, turned_.lies ? set_.yAxisIndex : set_.xAxisIndex);
        half_width_ = turned_.position.factor * half_width_of_groups(set_, strip_of(set_).gaps, axis);
    }

    TurnedView const& turned() const { return turned_; }

    Point place(double position, double value, std::size_t index) const {
        double const aside = half_width_ * jitter_of(set_.points.dropped() + index);
        return whole_twips(turned_.at(turned_.position(position) + aside, turned_.value(value)));
    }

    /// Calls `take(Point, index)` for the points whose symbols touch a box.
    void for_each_in(Box const& box, auto const& take) const {
        if (!turned_.valid()) return;
        double const half = set_.DataSymbolSize, across = half + std::abs(half_width_);
        auto const values = reach(turned_.value, turned_.value_of({box.left, box.top}) - half,
                                  turned_.value_of({box.right(), box.bottom()}) + half);
        auto const positions = reach(turned_.position, turned_.position_of({box.left, box.top}) - across,
                                     turned_.position_of({box.right(), box.bottom()}) + across);
        auto const holds = [](document::Extent const& range, double value) {
            return value >= range.low && value <= range.high;
        };
        std::size_t first = 0;
        for (PointBlock const& block : set_.points.blocks()) {
            auto const position = turned_.lies ? block.y() : block.x(),
                       value = turned_.lies ? block.x() : block.y();
            for (std::size_t i = 0; i < block.size(); ++i)
                if (holds(values, value[i]) && holds(positions, position[i]))
                    take(place(position[i], value[i], first + i), first + i);
            first += block.size();
        }
    }

private:
    // Finite, so that no infinite value is held.
    static document::Extent reach(scale::AxisMap const& map, double from, double to) {
        constexpr double most = std::numeric_limits<double>::max();
        auto const [low, high] = std::minmax({map.value_at(from), map.value_at(to)});
        return {std::max(low, map.is_log ? std::numeric_limits<double>::denorm_min() : -most),
                std::min(high, most)};
    }

    DataSet const& set_;
    TurnedView turned_;
    double half_width_ = 0; // twips
};

/// Symbols without an edge go to the surface together.
bool are_plain(DataSet const& set) {
    return set.DataSymbolFill.EdgeThickness == 0
           && (set.DataSymbol == symbol_none || set.DataSymbol == symbol_bar || symbol_shape(set.DataSymbol));
}

std::int16_t symbol_of(DataSet const& set) {
    return set.DataSymbol == symbol_none || set.DataSymbol == symbol_bar ? circle : set.DataSymbol;
}

class Strips : public SeriesKind {
public:
    void draw(SeriesView const& view, DrawSurface& surface) const override {
        DataSet const& set = view.set;
        if (set.DataSymbolFill.Transparent) return;
        std::vector<Point> centres;
        Strip(view).for_each_in(view.plot, [&](Point centre, std::size_t) { centres.push_back(centre); });
        draw_symbols(view, surface, centres, set.DataSymbolSize);
    }

    void include_reach(document::ControlState const&, DataSet const& set, AxisReach const& x,
                       AxisReach const& y) const override {
        StripPoints const& strip = strip_of(set);
        auto const [across, along] = turned_reach(set, x, y);
        double const half = half_width_of_groups(set, strip.gaps, across.axis);
        for (double const position : strip.positions)
            for (double const way : {-half, half})
                if (across.has_place(position))
                    across.include(position_beside(position, way, across.axis.AxisLog));
        for (PointBlock const& block : set.points.blocks()) {
            if (block.all_finite() && !block.was_cut() && x.has_place(block.x_extent())
                && y.has_place(block.y_extent())) {
                document::Extent const& values = set.BarHoriz ? block.x_extent() : block.y_extent();
                along.include(values.low);
                along.include(values.high);
                continue;
            }
            for (std::size_t i = 0; i < block.size(); ++i)
                if (x.has_place(block.x()[i]) && y.has_place(block.y()[i]))
                    along.include(set.BarHoriz ? block.x()[i] : block.y()[i]);
        }
    }

    void draw_sample(SeriesView const& view, DrawSurface& surface, Box const& box) const override {
        constexpr std::array places{Point{0.15, 0.65}, Point{0.5, 0.25}, Point{0.85, 0.75}};
        std::vector<Point> centres;
        centres.reserve(places.size());
        for (Point const& place : places)
            centres.push_back({box.left + place.x * box.width, box.top + place.y * box.height});
        constexpr double most_half = 0.25; // of the height
        draw_symbols(view, surface, centres,
                     std::min<std::int32_t>(view.set.DataSymbolSize, to_i32(most_half * box.height)));
    }

    std::size_t item_count(DataSet const& set) const override { return strip_of(set).count; }

    Box item_box(SeriesView const& view, std::size_t item) const override {
        std::size_t const index = strip_of(view.set).place_of(item);
        const document::PointEntry point = view.set.points.at(index);
        const Strip strip(view);
        bool const lies = strip.turned().lies;
        const Point centre = strip.place(lies ? point.Y : point.X, lies ? point.X : point.Y, index);
        double const half = std::max<double>(view.set.DataSymbolSize, view.state.UnitsPerMmX);
        return {centre.x - half, centre.y - half, 2 * half, 2 * half};
    }

    std::optional<std::size_t> item_at(SeriesView const& view, Point place) const override {
        StripPoints const& strip = strip_of(view.set);
        double const half = std::max<double>(view.set.DataSymbolSize, view.state.UnitsPerMmX);
        std::optional<std::size_t> found;
        Strip(view).for_each_in({place.x - half, place.y - half, 2 * half, 2 * half},
                                [&](Point centre, std::size_t index) {
                                    if (std::hypot(centre.x - place.x, centre.y - place.y) <= half)
                                        found = index;
                                });
        if (!found || strip.places.empty()) return found;
        return static_cast<std::size_t>(std::ranges::lower_bound(strip.places, *found)
                                        - strip.places.begin());
    }

    std::vector<Fact> item_facts(DataSet const& set, std::size_t item) const override {
        const document::PointEntry point = set.points.at(strip_of(set).place_of(item));
        std::vector<Fact> facts{{"", point.X, Fact::Of::XAxis, {}}, {"", point.Y, Fact::Of::YAxis, {}}};
        if (!point.DataID.empty())
            facts.insert(facts.begin(), {"", 0, Fact::Of::Text, std::string(point.DataID)});
        return facts;
    }

private:
    static void draw_symbols(SeriesView const& view, DrawSurface& surface, std::vector<Point> const& centres,
                             std::int32_t half_size) {
        DataSet const& set = view.set;
        if (are_plain(set)) {
            const PenScope pen(surface, 1);
            surface.state.FillColor = surface.state.ForeColor = set.DataSymbolFill.Color1;
            const document::RestoreScope style(surface.state.fill_style, FillStyle::Solid);
            const ShapeScope one_shape(surface);
            return surface.Symbols({*symbol_shape(symbol_of(set)), half_size, centres});
        }
        // Copies, because a handler of ErrorMsg, raised for a font, may drop the data set.
        document::ControlState& state = view.state;
        document::Graph& graph = view.graph;
        std::int16_t const index = view.index, symbol = symbol_of(set);
        state.PointCounter = 0;
        for (Point const& centre : centres) {
            if (!is_current(state, graph)) return;
            ++state.PointCounter;
            DataPoint(state, surface, {index, symbol, centre, {}, half_size, false, {}, {}});
        }
    }
};

} // namespace

SeriesKind const& strip_kind() {
    static const Strips kind;
    return kind;
}

} // namespace qv::render
