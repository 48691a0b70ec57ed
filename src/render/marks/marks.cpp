#include "render/marks/marks.h"

#include "base/text.h"
#include "document/selection.h"
#include "render/dashes.h"
#include "render/data_sets.h"
#include "render/pen.h"
#include "render/plot_geometry.h"
#include "render/text.h"
#include "surface/whole_pixel.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <optional>
#include <utility>

namespace qv::render {
namespace {

using document::ControlState;
using document::DataSet;
using document::GraphText;
using scale::AxisMap;

constexpr double no_place = std::numeric_limits<double>::quiet_NaN();
constexpr double farthest =
    1e12; // twips; further away is drawn as if it were there, to a thousandth of a twip
constexpr double reach_mm = 0.9; // of a person's hand
constexpr double label_gap_mm = 0.8;
constexpr double head_length_mm = 2.6;
constexpr double head_half_width_mm = 0.9;
constexpr double sample_head_share = 0.45; // of the sample's height

MarkShape shape_of(DataSet const& set) {
    return set.MarkShape <= static_cast<std::uint8_t>(MarkShape::Rectangle)
               ? static_cast<MarkShape>(set.MarkShape)
               : MarkShape::LevelLine;
}

/// Which of its values a shape has, and what it is made of.
struct ShapeTraits {
    std::uint8_t parts = MarkPart::none;
    bool has_inside = false;
};

ShapeTraits traits(MarkShape shape) {
    static constexpr std::array<ShapeTraits, 6> table{{
        {MarkPart::y1, false},     // level line
        {MarkPart::x1, false},     // upright line
        {MarkPart::along_y, true}, // level band
        {MarkPart::along_x, true}, // upright band
        {MarkPart::all, false},    // arrow
        {MarkPart::all, true},     // rectangle
    }};
    return table[static_cast<std::size_t>(shape)];
}

bool is_straight_line(MarkShape shape) {
    return shape == MarkShape::LevelLine || shape == MarkShape::UprightLine;
}

/// From the values of a mark to the page: its axes, or percent of the plot area.
struct MarkMaps {
    AxisMap x, y;
};

AxisMap percent_map(double start, double length) {
    AxisMap map;
    map.start = start;
    map.length = length;
    map.last = 100;
    map.factor = length / map.last;
    map.off_page = no_place;
    map.valid = length != 0;
    return map;
}

MarkMaps maps_of(SeriesView const& view) {
    if (!view.set.MarkPercent) return {view.x, view.y};
    return {percent_map(view.plot.left, view.plot.width), percent_map(view.plot.bottom(), -view.plot.height)};
}

/// Not-a-number where the value has no place.
double place_of(AxisMap const& map, double value) {
    bool const has_place = map.valid && std::isfinite(value) && !(map.is_log && value <= 0);
    return has_place ? std::clamp(map(value), -farthest, farthest) : no_place;
}

/// The same of an edge, which may lie infinitely far away; on a logarithmic axis that is where 0 and all
/// below are.
double edge_of(AxisMap const& map, double value) {
    if (!map.valid || std::isnan(value)) return no_place;
    if (map.is_log && value <= 0) return map.factor > 0 ? -farthest : farthest;
    return std::clamp(map(value), -farthest, farthest);
}

/// The two corners, or ends, of a mark on the page. What its shape has no value for reaches across the plot
/// area.
struct Ends {
    Point first, second;
    bool are_there() const { return std::isfinite(first.x + first.y + second.x + second.y); }
};

Ends ends_of(SeriesView const& view) {
    const MarkMaps maps = maps_of(view);
    MarkShape const shape = shape_of(view.set);
    const ShapeTraits has = traits(shape);
    const MarkValues values = mark_values(view.set);
    auto const place = [&](AxisMap const& map, std::size_t index, double otherwise) {
        if ((has.parts >> index & 1) == 0) return otherwise;
        return has.has_inside ? edge_of(map, values[index]) : place_of(map, values[index]);
    };
    Box const& plot = view.plot;
    Ends ends;
    ends.first = {place(maps.x, 0, plot.left), place(maps.y, 1, plot.top)};
    ends.second = {place(maps.x, 2, plot.right()), place(maps.y, 3, plot.bottom())};
    if (shape == MarkShape::LevelLine) ends.second.y = ends.first.y;
    if (shape == MarkShape::UprightLine) ends.second.x = ends.first.x;
    return ends;
}

Box spanned(Ends const& ends) {
    auto const [left, right] = std::minmax(ends.first.x, ends.second.x);
    auto const [top, bottom] = std::minmax(ends.first.y, ends.second.y);
    return {left, top, right - left, bottom - top};
}

bool meet(Box const& one, Box const& other) {
    return one.left <= other.right() && other.left <= one.right() && one.top <= other.bottom()
           && other.top <= one.bottom();
}

Box widened(Box const& box, double by) {
    return {box.left - by, box.top - by, box.width + 2 * by, box.height + 2 * by};
}

/// The part of a segment that lies in a box; none where they do not meet.
std::optional<Ends> cut_to(Box const& box, Ends const& segment) {
    double from = 0, to = 1;
    const Point way{segment.second.x - segment.first.x, segment.second.y - segment.first.y};
    auto const cut = [&](double start, double step, double low, double high) {
        if (step == 0) return start >= low && start <= high;
        auto const [enters, leaves] = std::minmax({(low - start) / step, (high - start) / step});
        from = std::max(from, enters);
        to = std::min(to, leaves);
        return from <= to;
    };
    if (!cut(segment.first.x, way.x, box.left, box.right())
        || !cut(segment.first.y, way.y, box.top, box.bottom()))
        return std::nullopt;
    auto const at_share = [&](double share) {
        return Point{segment.first.x + share * way.x, segment.first.y + share * way.y};
    };
    return Ends{from == 0 ? segment.first : at_share(from), to == 1 ? segment.second : at_share(to)};
}

double half_pen(DrawSurface const& surface, DataSet const& set) {
    return whole_pen(surface.pen_pixels(set.DataLineThickness)) * surface.TwipsPerPixelX() / 2;
}

/// \name Drawing
/// \{

void fill_inside(DrawSurface& surface, DataSet const& set, Box const& box) {
    if (set.DataSymbolFill.Transparent) return;
    const document::RestoreScope drawing(surface.state);
    surface.state.alpha = set.DataFillAlpha;
    fill_box(surface, box, set.DataSymbolFill.Color1);
}

void draw_edges(DrawSurface& surface, DataSet const& set, Ends const& ends, Box const& page_part) {
    if (set.DataLineStyle <= line_none) return;
    const Box box = spanned(ends);
    auto const edge = [&](Point from, Point to) {
        const Box line{from.x, from.y, to.x - from.x, to.y - from.y};
        if (!meet(line, page_part)) return;
        auto const shown = cut_to(page_part, {from, to});
        if (shown) surface.Line(shown->first, shown->second, LineShape::Segment, set.DataLineColor);
    };
    std::uint8_t const parts = traits(shape_of(set)).parts;
    if ((parts & MarkPart::along_y) != 0) {
        edge({box.left, box.top}, {box.right(), box.top});
        edge({box.left, box.bottom()}, {box.right(), box.bottom()});
    }
    if ((parts & MarkPart::along_x) != 0) {
        edge({box.left, box.top}, {box.left, box.bottom()});
        edge({box.right(), box.top}, {box.right(), box.bottom()});
    }
}

/// An arrow's direction; none where it has no length.
std::optional<Point> direction(Ends const& ends) {
    const Point way{ends.second.x - ends.first.x, ends.second.y - ends.first.y};
    double const length = std::hypot(way.x, way.y);
    if (!(length > 0) || !std::isfinite(length)) return std::nullopt;
    return Point{way.x / length, way.y / length};
}

void draw_head(DrawSurface& surface, Color color, Point tip, Point along, Point size) {
    auto const corner = [&](double back, double aside) {
        return in_pixels(
            surface, {tip.x - back * along.x - aside * along.y, tip.y - back * along.y + aside * along.x});
    };
    const std::array<PixelPoint, 3> corners{corner(0, 0), corner(size.x, size.y), corner(size.x, -size.y)};
    const document::RestoreScope drawing(surface.state);
    surface.state.ForeColor = surface.state.FillColor = color;
    surface.state.fill_style = FillStyle::Solid;
    surface.state.draw_style = DrawStyle::None;
    surface.Polygon(corners);
}

// The shaft ends inside the head, so that a thick one does not blunt the tip.
void draw_arrow(DrawSurface& surface, DrawSurface& lines, DataSet const& set, Ends const& ends,
                Box const& page_part, Point head) {
    auto const along = direction(ends);
    if (!along) return;
    double const length = std::hypot(ends.second.x - ends.first.x, ends.second.y - ends.first.y);
    double const into_head = std::min(head.x * 0.8, length);
    const Point neck{ends.second.x - into_head * along->x, ends.second.y - into_head * along->y};
    const ShapeScope one_shape(surface);
    surface.state.ForeColor = set.DataLineColor;
    if (auto const shaft = cut_to(page_part, {ends.first, neck}))
        lines.Polyline(std::array<Point, 2>{shaft->first, shaft->second});
    if (holds(widened(page_part, head.x), ends.second))
        draw_head(surface, set.DataLineColor, ends.second, *along, head);
}

Point head_size(ControlState const& state, DrawSurface const& surface, DataSet const& set) {
    double const pen = 2 * half_pen(surface, set);
    return {head_length_mm * state.UnitsPerMmX + pen, head_half_width_mm * state.UnitsPerMmX + pen};
}

void draw_shape(SeriesView const& view, DrawSurface& surface, Ends const& ends) {
    DataSet const& set = view.set;
    MarkShape const shape = shape_of(set);
    // Lines a little beyond the plot area are cut by the clip, those far away here.
    const Box page_part = widened(view.plot, 4 * half_pen(surface, set) + 2 * surface.TwipsPerPixelX());
    if (traits(shape).has_inside) {
        if (meet(spanned(ends), view.plot)) fill_inside(surface, set, common_part(spanned(ends), page_part));
    }
    const PenScope pen(surface, set.DataLineThickness, point_line_style(set));
    const document::RestoreScope alpha(surface.state.alpha, set.DataLineAlpha);
    draw_with_dashes(surface, dashes_of(set), page_part, [&](DrawSurface& lines) {
        if (shape == MarkShape::Arrow)
            draw_arrow(surface, lines, set, ends, page_part, head_size(view.state, surface, set));
        else if (!is_straight_line(shape))
            draw_edges(lines, set, ends, page_part);
        else if (meet(spanned(ends), view.plot))
            lines.Line(ends.first, ends.second, LineShape::Segment, set.DataLineColor);
    });
}
/// \}

/// \name Label
/// \{

// Where along and across a mark its label stands, as DataTextOri says.
struct LabelWish {
    double along = 0; // 0 start, 0.5 middle, 1 end
    int across = 0;   // 0 above or to the right, 1 on it, 2 below or to the left
};

LabelWish label_wish(GraphText const& text) {
    return {(text.DataTextOri % 3) * 0.5, text.DataTextOri / 3 % 3};
}

/// A start between two ends that leaves a gap to both.
double start_between(double low, double high, double extent, double gap, double share) {
    return low + gap + share * std::max(0.0, high - low - extent - 2 * gap);
}

/// Beside a line on the wished side, or the other where that would leave the plot area.
double start_beside(double line, double extent, double room, int across, std::pair<double, double> limits) {
    if (across == 1) return line - extent / 2;
    double const before = line - room - extent, behind = line + room;
    bool const wants_before = across == 0;
    bool const fits = wants_before ? before >= limits.first : behind + extent <= limits.second;
    return wants_before == fits ? before : behind;
}

struct LabelSize {
    double width = 0;
    double height = 0;
};

struct LabelRoom {
    double gap = 0;  // to the plot area's and the mark's edges
    double line = 0; // from the middle of a line, past it
};

Point label_by_line(MarkShape shape, Point at, Box const& plot, LabelSize size, LabelWish wish,
                    LabelRoom room) {
    if (shape == MarkShape::LevelLine)
        return {start_between(plot.left, plot.right(), size.width, room.gap, wish.along),
                start_beside(at.y, size.height, room.line, wish.across, {plot.top, plot.bottom()})};
    // To the right is behind.
    int const across = wish.across == 1 ? 1 : 2 - wish.across;
    return {start_beside(at.x, size.width, room.line, across, {plot.left, plot.right()}),
            start_between(plot.top, plot.bottom(), size.height, room.gap, 1 - wish.along)};
}

Point label_inside(MarkShape shape, Box const& box, LabelSize size, LabelWish wish, LabelRoom room) {
    bool const upright = shape == MarkShape::UprightBand;
    double const across = wish.across * 0.5;
    return {start_between(box.left, box.right(), size.width, room.gap, upright ? 1 - across : wish.along),
            start_between(box.top, box.bottom(), size.height, room.gap, upright ? 1 - wish.along : across)};
}

/// Beyond the end that it belongs to, or above the middle.
Point label_by_arrow(Ends const& ends, LabelSize size, LabelWish wish, LabelRoom room) {
    Point away = direction(ends).value_or(Point{1, 0});
    Point anchor = ends.second;
    if (wish.along == 0) {
        away = {-away.x, -away.y};
        anchor = ends.first;
    } else if (wish.along < 1) {
        anchor = {(ends.first.x + ends.second.x) / 2, (ends.first.y + ends.second.y) / 2};
        away = away.x >= 0 ? Point{away.y, -away.x} : Point{-away.y, away.x};
    }
    // As far that the box of the text, seen in this direction, ends a gap before the anchor.
    double const far = std::min(away.x == 0 ? HUGE_VAL : size.width / 2 / std::abs(away.x),
                                away.y == 0 ? HUGE_VAL : size.height / 2 / std::abs(away.y))
                       + room.line;
    return {anchor.x + far * away.x - size.width / 2, anchor.y + far * away.y - size.height / 2};
}

bool is_label_seen(MarkShape shape, Ends const& ends, Box const& plot) {
    if (shape != MarkShape::Arrow) return meet(spanned(ends), plot);
    return cut_to(plot, ends).has_value();
}

Box label_box(MarkShape shape, Ends const& ends, Box const& plot, LabelSize size, LabelWish wish,
              LabelRoom room) {
    Point corner;
    if (is_straight_line(shape))
        corner = label_by_line(shape, ends.first, plot, size, wish, room);
    else if (shape == MarkShape::Arrow)
        corner = label_by_arrow(ends, size, wish, room);
    else
        corner = label_inside(shape, common_part(spanned(ends), plot), size, wish, room);
    auto const inside = [](double start, double extent, double low, double high) {
        return std::max(low, std::min(start, high - extent));
    };
    return {inside(corner.x, size.width, plot.left, plot.right()),
            inside(corner.y, size.height, plot.top, plot.bottom()), size.width, size.height};
}

LabelSize turned_size(TextBlock const& block, double degrees) {
    double const angle = degrees * std::numbers::pi / 180;
    double const sine = std::abs(std::sin(angle)), cosine = std::abs(std::cos(angle));
    return {block.width * cosine + block.height * sine, block.width * sine + block.height * cosine};
}

// The last of a mark, and from a copy of its text: a font that cannot be read raises ErrorMsg, whose handler
// may drop the data set.
void draw_label(SeriesView const& view, DrawSurface& surface, Ends const& ends) {
    MarkShape const shape = shape_of(view.set);
    if (view.set.DataText.empty() || !is_label_seen(shape, ends, view.plot)) return;
    const GraphText text = view.set;
    ControlState& state = view.state;
    double const gap = label_gap_mm * state.UnitsPerMmX;
    const LabelRoom room{gap, gap + half_pen(surface, view.set)};
    const Box plot = view.plot;
    SetGraphFont(state, surface, text.DataTextFont);
    const LabelSize size =
        turned_size(text_block(surface, text.DataText, markup_of_host_texts(state)), text.DataTextAngle);
    const Box box = label_box(shape, ends, plot, size, label_wish(text), room);
    PrintText(state, surface, text.DataText,
              {{box.left + box.width / 2, box.top + box.height / 2},
               Align::Centre,
               Align::Centre,
               text.DataTextAngle,
               true},
              {text.DataTextFont, text.DataTextColor});
}
/// \}

/// \name Taking hold
/// \{

double distance_to(Ends const& segment, Point place) {
    const Point way{segment.second.x - segment.first.x, segment.second.y - segment.first.y};
    double const square = way.x * way.x + way.y * way.y;
    double const along = (place.x - segment.first.x) * way.x + (place.y - segment.first.y) * way.y;
    double const share = square > 0 ? std::clamp(along / square, 0.0, 1.0) : 0;
    return std::hypot(segment.first.x + share * way.x - place.x, segment.first.y + share * way.y - place.y);
}

std::uint8_t arrow_part_at(Ends const& ends, Box const& plot, Point place, double reach) {
    auto const is_at = [&](Point end) { return std::hypot(end.x - place.x, end.y - place.y) <= 1.5 * reach; };
    if (is_at(ends.second)) return MarkPart::x2 | MarkPart::y2;
    if (is_at(ends.first)) return MarkPart::x1 | MarkPart::y1;
    auto const shown = cut_to(widened(plot, reach), ends);
    return shown && distance_to(*shown, place) <= reach ? MarkPart::all : MarkPart::none;
}

/// Which of two edges, if any, a position is at. A narrow mark keeps half of its width for being moved whole.
std::uint8_t edge_at(double position, double first, double second, double reach, std::uint8_t first_bit,
                     std::uint8_t second_bit) {
    bool const inside = (position >= first) != (position > second);
    double const near = inside ? std::min(reach, std::abs(second - first) / 4) : reach;
    double const to_first = std::abs(position - first), to_second = std::abs(position - second);
    if (std::min(to_first, to_second) > near) return MarkPart::none;
    return to_second < to_first ? second_bit : first_bit;
}

std::uint8_t inside_part_at(SeriesView const& view, Ends const& ends, Point place, double reach) {
    MarkShape const shape = shape_of(view.set);
    if (!holds(widened(spanned(ends), reach), place)) return MarkPart::none;
    std::uint8_t const x = edge_at(place.x, ends.first.x, ends.second.x, reach, MarkPart::x1, MarkPart::x2);
    std::uint8_t const y = edge_at(place.y, ends.first.y, ends.second.y, reach, MarkPart::y1, MarkPart::y2);
    std::uint8_t const parts = traits(shape).parts;
    bool const is_rectangle = shape == MarkShape::Rectangle;
    if (is_rectangle && x != 0 && y != 0) return x | y;
    std::uint8_t const edge = (x | y) & parts;
    if (!is_rectangle && edge != 0) return edge;
    bool const is_solid = !view.set.DataSymbolFill.Transparent;
    return is_solid || edge != 0 ? parts : MarkPart::none;
}

double reach_of(SeriesView const& view) {
    constexpr double twips_at_96 = twips_per_inch / 96;
    return std::max(reach_mm * view.state.UnitsPerMmX, view.set.DataLineThickness * twips_at_96 / 2);
}
/// \}

std::string percent_text(double value) {
    return number_text(value) + " %";
}

class Marks : public SeriesKind {
public:
    bool widens_axes() const override { return false; }

    void draw(SeriesView const& view, DrawSurface& surface) const override {
        const Ends ends = ends_of(view);
        if (!ends.are_there()) return;
        draw_shape(view, surface, ends);
        draw_label(view, surface, ends);
    }

    void include_reach(ControlState const& /*state*/, DataSet const& /*set*/, AxisReach const& /*x*/,
                       AxisReach const& /*y*/) const override {}

    void draw_sample(SeriesView const& view, DrawSurface& surface, Box const& box) const override {
        DataSet const& set = view.set;
        MarkShape const shape = shape_of(set);
        const Point middle{box.left + box.width / 2, box.top + box.height / 2};
        if (traits(shape).has_inside) fill_inside(surface, set, box);
        const PenScope pen(surface, set.DataLineThickness, point_line_style(set));
        const Box around = widened(box, box.width);
        draw_with_dashes(surface, dashes_of(set), around, [&](DrawSurface& lines) {
            if (shape == MarkShape::UprightLine)
                lines.Line({middle.x, box.top}, {middle.x, box.bottom()}, LineShape::Segment,
                           set.DataLineColor);
            else if (shape == MarkShape::LevelLine)
                lines.Line({box.left, middle.y}, {box.right(), middle.y}, LineShape::Segment,
                           set.DataLineColor);
            else if (shape == MarkShape::Arrow)
                draw_arrow(surface, lines, set, {{box.left, middle.y}, {box.right(), middle.y}}, around,
                           {box.height * 2 * sample_head_share, box.height * sample_head_share});
            else
                draw_edges(lines, set, {{box.left, box.top}, {box.right(), box.bottom()}}, around);
        });
    }

    std::size_t item_count(DataSet const& /*set*/) const override { return 1; }

    Box item_box(SeriesView const& view, std::size_t /*item*/) const override {
        const Ends ends = ends_of(view);
        if (!ends.are_there() || !meet(spanned(ends), view.plot)) return {no_place, no_place, 0, 0};
        return common_part(widened(spanned(ends), reach_of(view)), view.plot);
    }

    std::optional<std::size_t> item_at(SeriesView const& view, Point place) const override {
        if (mark_part_at(view, place) == MarkPart::none) return std::nullopt;
        return 0;
    }

    std::vector<Fact> item_facts(DataSet const& set, std::size_t /*item*/) const override {
        static constexpr std::array names{"x", "y", "to x", "to y"};
        std::vector<Fact> facts;
        if (!set.DataText.empty()) facts.push_back({"", 0, Fact::Of::Text, set.DataText});
        const MarkValues values = mark_values(set);
        for (std::size_t i = 0; i < values.size(); ++i) {
            if ((traits(shape_of(set)).parts >> i & 1) == 0) continue;
            Fact::Of const axis = i % 2 == 0 ? Fact::Of::XAxis : Fact::Of::YAxis;
            facts.push_back({names[i], values[i], set.MarkPercent ? Fact::Of::Text : axis,
                             set.MarkPercent ? percent_text(values[i]) : std::string()});
        }
        return facts;
    }
};

} // namespace

SeriesKind const* mark_kind() {
    static const Marks marks;
    return &marks;
}

MarkValues mark_values(DataSet const& set) {
    return {set.MarkX1, set.MarkY1, set.MarkX2, set.MarkY2};
}

void set_mark_values(DataSet& set, MarkValues const& values) {
    set.MarkX1 = values[0];
    set.MarkY1 = values[1];
    set.MarkX2 = values[2];
    set.MarkY2 = values[3];
}

std::uint8_t mark_part_at(SeriesView const& view, Point place) {
    const Ends ends = ends_of(view);
    if (!ends.are_there() || !holds(view.plot, place)) return MarkPart::none;
    MarkShape const shape = shape_of(view.set);
    double const reach = reach_of(view);
    if (shape == MarkShape::Arrow) return arrow_part_at(ends, view.plot, place, reach);
    if (traits(shape).has_inside) return inside_part_at(view, ends, place, reach);
    return holds(widened(spanned(ends), reach), place) ? traits(shape).parts : MarkPart::none;
}

MarkValues moved_mark(SeriesView const& view, MarkValues const& values, std::uint8_t moves, Point way) {
    const MarkMaps maps = maps_of(view);
    MarkValues moved = values;
    for (std::size_t i = 0; i < moved.size(); ++i) {
        bool const is_x = i % 2 == 0;
        double const by = is_x ? way.x : way.y;
        double const place = place_of(is_x ? maps.x : maps.y, values[i]);
        if ((moves >> i & 1) == 0 || by == 0 || !std::isfinite(place)) continue;
        double const value = (is_x ? maps.x : maps.y).value_at(place + by);
        if (std::isfinite(value)) moved[i] = value;
    }
    return moved;
}

} // namespace qv::render
