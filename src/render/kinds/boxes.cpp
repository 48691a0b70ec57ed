#include "qvgraph/system_color.h"
#include "render/bars/bar_batch.h"
#include "render/color_table.h"
#include "render/kinds/box_statistics.h"
#include "render/kinds/derived.h"
#include "render/kinds/distributions.h"
#include "render/kinds/groups.h"
#include "render/kinds/turned_view.h"
#include "render/pen.h"
#include "render/plot_geometry.h"
#include "render/symbols.h"
#include "surface/whole_pixel.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

namespace qv::render {
namespace {

using document::DataSet;
using document::PointBlock;

/// One box. Without a count its numbers were given, and it has neither notches nor outliers.
struct BoxItem {
    double position = 0;
    BoxStatistics numbers;
};

struct BoxRow {
    std::vector<BoxItem> boxes; // in rising order
    Gaps gaps;
};

struct BoxSettings {
    bool lies = false;
    double reach = 0;
    bool operator==(BoxSettings const&) const = default;
};

/// The extra columns of a point, in this order.
enum Column { LowerWhisker, LowerQuartile, UpperQuartile, UpperWhisker };
using GivenNumbers = std::array<double, 4>;

GivenNumbers numbers_given(PointBlock const& block, std::size_t index) {
    GivenNumbers numbers{};
    for (std::size_t column = 0; column < numbers.size(); ++column)
        numbers[column] = block.extra(column).empty() ? std::nan("") : block.extra(column)[index];
    return numbers;
}

/// Collects points by their position.
class BoxMaker {
public:
    explicit BoxMaker(BoxSettings const& settings) : settings_(settings) {}

    void add(PointBlock const& block) {
        auto const positions = settings_.lies ? block.y() : block.x();
        auto const values = settings_.lies ? block.x() : block.y();
        bool const plain = block.extra(LowerWhisker).empty() && block.extra(LowerQuartile).empty()
                           && block.extra(UpperQuartile).empty() && block.extra(UpperWhisker).empty();
        for (std::size_t i = 0; i < positions.size(); ++i) {
            if (!std::isfinite(positions[i]) || !std::isfinite(values[i])) continue;
            const GivenNumbers given = plain ? GivenNumbers{} : numbers_given(block, i);
            if (!plain && !std::ranges::all_of(given, [](double number) { return std::isnan(number); }))
                add_given(positions[i], values[i], given);
            else
                add_value(positions[i], values[i]);
        }
    }

    BoxRow finish() {
        sort_values();
        std::vector<double> const& positions = index_.positions();
        for (std::size_t group = 0; group < positions.size(); ++group) {
            const std::span<double const> values(values_.data() + starts_[group],
                                                 starts_[group + 1] - starts_[group]);
            row_.boxes.push_back({positions[group], box_statistics(values, settings_.reach)});
        }
        std::ranges::stable_sort(row_.boxes, {}, &BoxItem::position);
        std::vector<double> all;
        all.reserve(row_.boxes.size());
        for (BoxItem const& box : row_.boxes) all.push_back(box.position);
        row_.gaps = gaps_between(std::move(all));
        return std::move(row_);
    }

private:
    void add_value(double position, double value) {
        groups_.push_back(static_cast<std::uint32_t>(index_.of(position)));
        arrived_.push_back(value);
    }

    // A missing quartile leaves nothing of a box, a missing whisker only that.
    void add_given(double position, double median, GivenNumbers const& given) {
        if (!std::isfinite(given[LowerQuartile]) || !std::isfinite(given[UpperQuartile])) return;
        BoxItem box{position, {}};
        auto const whisker = [](double end) { return std::isfinite(end) ? end : std::nan(""); };
        static_cast<BoxNumbers&>(box.numbers) = {whisker(given[LowerWhisker]), given[LowerQuartile], median,
                                                 given[UpperQuartile], whisker(given[UpperWhisker])};
        row_.boxes.push_back(std::move(box));
    }

    /// Puts the values of each group together, those of group i from starts_[i] on.
    void sort_values() {
        starts_.assign(index_.positions().size() + 1, 0);
        for (std::uint32_t const group : groups_) ++starts_[group + 1];
        std::partial_sum(starts_.begin(), starts_.end(), starts_.begin());
        values_.resize(arrived_.size());
        std::vector<std::size_t> next = starts_;
        for (std::size_t i = 0; i < arrived_.size(); ++i) values_[next[groups_[i]]++] = arrived_[i];
    }

    BoxSettings settings_;
    PositionIndex index_;
    std::vector<std::uint32_t> groups_; // of each value
    std::vector<double> arrived_, values_;
    std::vector<std::size_t> starts_;
    BoxRow row_;
};

BoxRow const& boxes_of(DataSet const& set) {
    return derived_of<BoxRow>(set, BoxSettings{set.BarHoriz, set.BoxWhiskers},
                              [&](BoxSettings const& settings) {
                                  BoxMaker maker(settings);
                                  for (PointBlock const& block : set.points.blocks()) maker.add(block);
                                  return maker.finish();
                              });
}

/// How far a box and its whiskers reach.
document::Extent reach_of(BoxNumbers const& box) {
    document::Extent reach;
    for (double const value : {box.lower_whisker, box.lower_quartile, box.upper_quartile, box.upper_whisker})
        reach.include(value);
    return reach;
}

struct Span {
    double from = 0, to = 0;
};

/// The boxes of a data set on the page.
class Row {
public:
    explicit Row(SeriesView const& view) : Row(view, boxes_of(view.set)) {}

    TurnedView const& turned() const { return turned_; }
    std::size_t first() const { return first_; }
    std::size_t end() const { return end_; }
    std::size_t size() const { return end_ - first_; }
    BoxItem const& operator[](std::size_t item) const { return row_.boxes[item]; }

    double middle(std::size_t item) const { return turned_.position(row_.boxes[item].position); }
    /// Across a box, or a share of its width about its middle.
    Span sides(std::size_t item, double share = 1) const {
        double const centre = middle(item);
        return {centre - share * half_width_, centre + share * half_width_};
    }
    double value(double number) const { return turned_.value(number); }
    double width() const { return 2 * std::abs(half_width_); } // twips
    Box box(std::size_t item) const {
        document::Extent const reach = reach_of(row_.boxes[item].numbers);
        Span const across = sides(item);
        return turned_.box(across.from, across.to, value(reach.low), value(reach.high));
    }
    /// The items whose boxes a place along the positions may lie on.
    std::pair<std::size_t, std::size_t> items_between(document::Extent const& positions) const {
        auto const index = [&](auto place) { return static_cast<std::size_t>(place - row_.boxes.begin()); };
        return {index(std::ranges::lower_bound(row_.boxes, positions.low, {}, &BoxItem::position)),
                index(std::ranges::upper_bound(row_.boxes, positions.high, {}, &BoxItem::position))};
    }

private:
    Row(SeriesView const& view, BoxRow const& row) : row_(row), turned_(view) {
        if (!turned_.valid()) return;
        document::Axis const& axis =
            at(view.graph.Axes, turned_.lies ? view.set.yAxisIndex : view.set.xAxisIndex);
        half_width_ = turned_.position.factor * half_width_of_groups(view.set, row.gaps, axis);
        double const symbol = view.set.DataSymbolSize + 2 * view.state.UnitsPerMmX;
        std::tie(first_, end_) =
            items_between(turned_.visible_positions(std::max(std::abs(half_width_), symbol)));
    }

    BoxRow const& row_;
    TurnedView turned_;
    double half_width_ = 0; // twips, negative where positions rise leftward or upward
    std::size_t first_ = 0, end_ = 0;
};

// Where the lines of a box would be drawn in the colour of its face, that is paler, so that the median shows.
Color face_color(SeriesView const& view) {
    constexpr int steps = 10, way = 6;
    Color const face = plain_color(view.set.DataSymbolFill.Color1);
    if (face != plain_color(view.set.DataLineColor)) return face;
    return color_table({.from = face, .to = plain_color(view.graph.PlotAreaFill.Color1)}, steps)[way];
}

/// Draws the lines of boxes along both ways.
class BoxLines {
public:
    BoxLines(DrawSurface& surface, TurnedView const& turned, Color color)
        : surface_(surface), turned_(turned), color_(color) {}

    void along_value(double position, double from, double to) const {
        line(turned_.at(position, from), turned_.at(position, to));
    }
    void across(Span const& positions, double value) const {
        line(turned_.at(positions.from, value), turned_.at(positions.to, value));
    }
    void outline(Span const& positions, Span const& values) const {
        Box const box = turned_.box(positions.from, positions.to, values.from, values.to);
        surface_.Line({box.left, box.top}, {box.right(), box.bottom()}, LineShape::Box, color_);
    }

private:
    void line(Point from, Point to) const { surface_.Line(from, to, LineShape::Segment, color_); }

    DrawSurface& surface_;
    TurnedView const& turned_;
    Color color_;
};

constexpr double cap_share = 0.5; // of the width of a box
constexpr double waist_share = 0.5;

void draw_whiskers(Row const& row, std::size_t item, BoxLines const& lines) {
    BoxNumbers const& box = row[item].numbers;
    double const middle = row.middle(item);
    for (auto const& [quartile, whisker] : {std::pair{box.lower_quartile, box.lower_whisker},
                                            std::pair{box.upper_quartile, box.upper_whisker}}) {
        if (std::isnan(whisker)) continue;
        lines.along_value(middle, row.value(quartile), row.value(whisker));
        lines.across(row.sides(item, cap_share), row.value(whisker));
    }
}

/// The ends of a notch; none where a logarithmic axis has no place for one of them.
std::optional<Span> notch_of(SeriesView const& view, Row const& row, std::size_t item) {
    BoxStatistics const& box = row[item].numbers;
    double const low = box.median - box.notch, high = box.median + box.notch;
    if (!view.set.BoxNotches || box.count == 0 || (row.turned().value.is_log && !(low > 0)))
        return std::nullopt;
    return Span{row.value(low), row.value(high)};
}

/// The corners of a box with a waist at its median.
std::array<PixelPoint, 10> notched_corners(DrawSurface const& surface, Row const& row, std::size_t item,
                                           Span const& notch) {
    BoxNumbers const& box = row[item].numbers;
    Span const wide = row.sides(item), waist = row.sides(item, waist_share);
    double const low = row.value(box.lower_quartile), middle = row.value(box.median),
                 high = row.value(box.upper_quartile);
    auto const corner = [&](double position, double value) {
        return pixel_at(surface, row.turned().at(position, value));
    };
    return {corner(wide.from, low),       corner(wide.to, low),        corner(wide.to, notch.from),
            corner(waist.to, middle),     corner(wide.to, notch.to),   corner(wide.to, high),
            corner(wide.from, high),      corner(wide.from, notch.to), corner(waist.from, middle),
            corner(wide.from, notch.from)};
}

void draw_face(SeriesView const& view, DrawSurface& surface, Row const& row, std::size_t item, Color color) {
    BoxNumbers const& box = row[item].numbers;
    if (auto const notch = notch_of(view, row, item)) {
        const document::RestoreScope style(surface.state.fill_style, FillStyle::Solid);
        const document::RestoreScope pen(surface.state.draw_style, DrawStyle::None);
        surface.state.FillColor = color;
        return surface.Polygon(notched_corners(surface, row, item, *notch));
    }
    Span const across = row.sides(item);
    fill_box(surface,
             row.turned().box(across.from, across.to, row.value(box.lower_quartile),
                              row.value(box.upper_quartile)),
             color);
}

void draw_frame(SeriesView const& view, DrawSurface& surface, Row const& row, std::size_t item,
                BoxLines const& lines) {
    BoxNumbers const& box = row[item].numbers;
    auto const notch = notch_of(view, row, item);
    if (notch) {
        const document::RestoreScope style(surface.state.fill_style, FillStyle::Transparent);
        surface.state.ForeColor = view.set.DataLineColor;
        surface.Polygon(notched_corners(surface, row, item, *notch));
    } else {
        lines.outline(row.sides(item), {row.value(box.lower_quartile), row.value(box.upper_quartile)});
    }
    const PenScope thicker(surface, std::max<int>(view.set.DataLineThickness, 1) + 1);
    lines.across(row.sides(item, notch ? waist_share : 1), row.value(box.median));
}

/// Of boxes narrower than a pixel nothing shows but how far they reach.
void draw_hairlines(SeriesView const& view, DrawSurface& surface, Row const& row) {
    BarBatch batch(surface, row.turned().plot, row.turned().lies);
    for (std::size_t item = row.first(); item < row.end(); ++item) {
        document::Extent const reach = reach_of(row[item].numbers);
        Box const box =
            row.turned().box(row.middle(item), row.middle(item), row.value(reach.low), row.value(reach.high));
        batch.add({box.left, box.top, box.right(), box.bottom()});
    }
    batch.draw(view.set.DataLineColor);
}

void draw_boxes(SeriesView const& view, DrawSurface& surface, Row const& row) {
    const PenScope pen(surface, view.set.DataLineThickness);
    const BoxLines lines(surface, row.turned(), view.set.DataLineColor);
    auto const for_each = [&](auto const& draw) {
        const ShapeScope one_shape(surface);
        for (std::size_t item = row.first(); item < row.end(); ++item) draw(item);
    };
    for_each([&](std::size_t item) { draw_whiskers(row, item, lines); });
    if (!view.set.DataSymbolFill.Transparent)
        for_each(
            [&, color = face_color(view)](std::size_t item) { draw_face(view, surface, row, item, color); });
    for_each([&](std::size_t item) { draw_frame(view, surface, row, item, lines); });
}

void draw_outliers(SeriesView const& view, DrawSurface& surface, Row const& row) {
    std::vector<Point> centres;
    for (std::size_t item = row.first(); item < row.end(); ++item)
        for (double const value : row[item].numbers.outliers)
            if (!row.turned().value.is_log || value > 0)
                centres.push_back(whole_twips(row.turned().at(row.middle(item), row.value(value))));
    if (centres.empty()) return;
    const PenScope pen(surface, 1);
    surface.state.FillColor = surface.state.ForeColor = view.set.DataLineColor;
    const document::RestoreScope style(surface.state.fill_style, FillStyle::Solid);
    const ShapeScope one_shape(surface);
    surface.Symbols(
        {symbol_shape(view.set.DataSymbol).value_or(SymbolShape::Circle), view.set.DataSymbolSize, centres});
}

class Boxes : public SeriesKind {
public:
    void draw(SeriesView const& view, DrawSurface& surface) const override {
        const Row row(view);
        if (row.size() == 0) return;
        if (row.width() < row.turned().twips_per_pixel(surface))
            draw_hairlines(view, surface, row);
        else
            draw_boxes(view, surface, row);
        draw_outliers(view, surface, row);
    }

    void include_reach(document::ControlState const&, DataSet const& set, AxisReach const& x,
                       AxisReach const& y) const override {
        BoxRow const& row = boxes_of(set);
        auto const [across, along] = turned_reach(set, x, y);
        double const half = half_width_of_groups(set, row.gaps, across.axis);
        for (BoxItem const& box : row.boxes) {
            if (!across.has_place(box.position)) continue;
            for (double const way : {-half, half})
                across.include(position_beside(box.position, way, across.axis.AxisLog));
            for (double const value :
                 {box.numbers.lower_whisker, box.numbers.lower_quartile, box.numbers.median,
                  box.numbers.upper_quartile, box.numbers.upper_whisker})
                along.include(value);
            for (double const value : box.numbers.outliers) along.include(value);
        }
    }

    void draw_sample(SeriesView const& view, DrawSurface& surface, Box const& box) const override {
        const Box face{box.left + box.width / 4, box.top, box.width / 2, box.height};
        double const middle = box.top + box.height / 2;
        Color const color = view.set.DataLineColor;
        const PenScope pen(surface, 1);
        surface.Line({box.left, middle}, {box.right(), middle}, LineShape::Segment, color);
        if (!view.set.DataSymbolFill.Transparent) fill_box(surface, face, face_color(view));
        surface.Line({face.left, face.top}, {face.right(), face.bottom()}, LineShape::Box, color);
        double const median = face.left + face.width / 2;
        surface.Line({median, face.top}, {median, face.bottom()}, LineShape::Segment, color);
    }

    std::size_t item_count(DataSet const& set) const override { return boxes_of(set).boxes.size(); }

    Box item_box(SeriesView const& view, std::size_t item) const override { return Row(view).box(item); }

    std::optional<std::size_t> item_at(SeriesView const& view, Point place) const override {
        const Row row(view);
        double const position = row.turned().position_of(place), half = row.width() / 2;
        auto const [low, high] = std::minmax({row.turned().position.value_at(position - half),
                                              row.turned().position.value_at(position + half)});
        auto const [first, end] = row.items_between({low, high});
        for (std::size_t item = end; item-- > first;)
            if (holds(row.box(item), place)) return item;
        return std::nullopt;
    }

    std::vector<Fact> item_facts(DataSet const& set, std::size_t item) const override {
        BoxItem const& box = boxes_of(set).boxes[item];
        std::vector<Fact> facts{{"", box.position, position_axis(set), {}}};
        auto const tell = [&](char const* name, double value) {
            if (!std::isnan(value)) facts.push_back({name, value, value_axis(set), {}});
        };
        tell("lower whisker", box.numbers.lower_whisker);
        tell("lower quartile", box.numbers.lower_quartile);
        tell("median", box.numbers.median);
        tell("upper quartile", box.numbers.upper_quartile);
        tell("upper whisker", box.numbers.upper_whisker);
        if (box.numbers.count == 0) return facts;
        auto const count = [&](char const* name, std::size_t number) {
            facts.push_back({name, static_cast<double>(number), Fact::Of::Nothing, {}});
        };
        count("count", box.numbers.count);
        count("outliers", box.numbers.outliers.size());
        return facts;
    }
};

} // namespace

SeriesKind const& boxes_kind() {
    static const Boxes kind;
    return kind;
}

} // namespace qv::render
