// Contours: lines of equal value, with their values along them.
#include "base/convert.h"
#include "render/dashes.h"
#include "render/data_sets.h"
#include "render/grids/color_scale.h"
#include "render/grids/contour_labels.h"
#include "render/grids/contour_levels.h"
#include "render/grids/grid_cells.h"
#include "render/kinds/series_kind.h"
#include "render/pen.h"
#include "render/plot_geometry.h"
#include "render/text.h"
#include "scale/number_format.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace qv::render {
namespace {

using document::ControlState;
using document::DataSet;
using document::Grid;

constexpr double hit_mm = 1;
constexpr double not_a_number = std::numeric_limits<double>::quiet_NaN();

/// The memory of a data set with the lines of its levels.
GridMemory& line_memory(DataSet const& set, GridScales const& scales, bool levels_are_log) {
    GridMemory& memory = grid_memory(set, scales);
    Grid const& grid = *memory.cells;
    std::vector<double> levels =
        contour_levels(level_choice(set.ContourLevels), grid.extent_on(levels_are_log), levels_are_log);
    if (memory.has_lines && memory.levels == levels && memory.levels_are_log == levels_are_log) return memory;
    memory.lines = contour_lines(grid, levels, levels_are_log);
    memory.levels = std::move(levels);
    memory.levels_are_log = levels_are_log;
    memory.has_lines = true;
    return memory;
}
/// The same as it was last asked for.
GridMemory& line_memory(DataSet const& set) {
    GridMemory const& memory = grid_memory(set);
    return line_memory(set, memory.scales, memory.levels_are_log);
}

GridMemory& line_memory(SeriesView const& view) {
    document::Axis const* const bar = color_axis_of(view.graph, view.set);
    return line_memory(view.set, {view.x.is_log, view.y.is_log}, bar && bar->AxisLog);
}

std::vector<double> middles_of(std::vector<double> const& edges, bool is_log) {
    std::vector<double> middles;
    for (std::size_t i = 1; i < edges.size(); ++i)
        middles.push_back(middle_of(edges[i - 1], edges[i], is_log));
    return middles;
}

/// From column and row numbers to the page: straight between the middles of neighbouring cells.
class PlaceOnPage {
public:
    explicit PlaceOnPage(SeriesView const& view, Grid const& grid)
        : x_(places(view.x, grid.x_edges)), y_(places(view.y, grid.y_edges)) {}

    Point operator()(Point numbers) const { return {along(x_, numbers.x), along(y_, numbers.y)}; }

    /// Whether a line can be in a box, for lines of which nothing can be seen.
    bool can_reach(ContourLine const& line, Box const& box) const {
        return can_reach(x_, line.low.x, line.high.x, box.left, box.right())
               && can_reach(y_, line.low.y, line.high.y, box.top, box.bottom());
    }

private:
    static std::vector<double> places(scale::AxisMap const& map, std::vector<double> const& edges) {
        std::vector<double> places = middles_of(edges, map.is_log);
        for (double& place : places) place = std::isnan(place) ? not_a_number : map(place);
        return places;
    }
    static double along(std::vector<double> const& places, double number) {
        auto const before = static_cast<std::size_t>(number);
        double const share = number - static_cast<double>(before);
        return share == 0 ? places[before] : std::lerp(places[before], places[before + 1], share);
    }
    static bool can_reach(std::vector<double> const& places, double low, double high, double from,
                          double to) {
        double const a = along(places, low), b = along(places, high);
        return !(std::max(a, b) < from || std::min(a, b) > to); // true where one has no place
    }

    std::vector<double> x_, y_;
};

double distance_to_segment(Point place, Point a, Point b) {
    double const dx = b.x - a.x, dy = b.y - a.y, length = dx * dx + dy * dy;
    double share = length > 0 ? ((place.x - a.x) * dx + (place.y - a.y) * dy) / length : 0;
    share = std::clamp(share, 0.0, 1.0);
    return std::hypot(place.x - a.x - share * dx, place.y - a.y - share * dy);
}

/// The values of levels as texts that tell them apart.
std::vector<std::string> level_texts(std::vector<double> const& levels) {
    std::vector<scale::ShownNumber> numbers;
    for (std::size_t i = 0; i < levels.size(); ++i) {
        double nearest = HUGE_VAL;
        if (i > 0) nearest = levels[i] - levels[i - 1];
        if (i + 1 < levels.size()) nearest = std::min(nearest, levels[i + 1] - levels[i]);
        constexpr double part = 0.01;
        numbers.push_back({levels[i], part * (std::isfinite(nearest) ? nearest : std::abs(levels[i]))});
    }
    constexpr std::int16_t digits = 5;
    return scale::number_texts(numbers, digits);
}

/// Contours being drawn.
class Drawing {
public:
    Drawing(SeriesView const& view, DrawSurface& surface)
        : view_(view), surface_(surface), memory_(line_memory(view)), place_(view, *memory_.cells),
          bar_(color_axis_of(view.graph, view.set)), colors_(bar_, memory_.cells->extent) {}

    void draw() {
        std::vector<std::vector<Point>> shapes(
            memory_.levels.size()); // lines apart by a place without numbers
        for (ContourLine const& line : memory_.lines)
            if (place_.can_reach(line, view_.plot)) append(line, shapes[line.level]);
        std::vector<ContourLabel> labels;
        if (view_.set.ContourLabels) labels = cut_gaps(shapes);
        {
            const PenScope pen(surface_, view_.set.DataLineThickness, point_line_style(view_.set));
            draw_with_dashes(surface_, dashes_of(view_.set), view_.plot, [&](DrawSurface& lines) {
                for (std::size_t level = 0; level < shapes.size(); ++level) {
                    surface_.state.ForeColor = color_of_level(level);
                    lines.Polyline(shapes[level]);
                }
            });
        }
        for (ContourLabel const& label : labels) write(label);
    }

private:
    Color color_of_level(std::size_t level) const {
        if (!bar_) return view_.set.DataLineColor;
        std::uint16_t const number = colors_.level(memory_.levels[level]);
        return number == ColorScale::no_color ? view_.set.DataLineColor : colors_.map().colors[number];
    }

    // Places nearer than can be seen are left out.
    void append(ContourLine const& line, std::vector<Point>& shape) const {
        double const least = surface_.TwipsPerPixelX() / 4;
        if (!shape.empty()) shape.push_back({not_a_number, not_a_number});
        for (std::size_t i = 0; i < line.places.size(); ++i) {
            const Point place = place_(line.places[i]);
            bool const is_end = i == 0 || i + 1 == line.places.size();
            if (!is_end && std::abs(place.x - shape.back().x) < least
                && std::abs(place.y - shape.back().y) < least)
                continue;
            shape.push_back(place);
        }
    }

    std::vector<ContourLabel> cut_gaps(std::vector<std::vector<Point>>& shapes) {
        SetGraphFont(view_.state, surface_, view_.set.DataTextFont);
        texts_ = level_texts(memory_.levels);
        use_minus_of_page(view_.state, texts_);
        LabelPlaces places(view_.plot, surface_.TextHeight("0"));
        std::vector<ContourLabel> labels;
        for (std::size_t level = 0; level < shapes.size(); ++level)
            places.put(shapes[level], level, surface_.TextWidth(texts_[level]), labels);
        return labels;
    }

    void write(ContourLabel const& label) {
        PrintText(view_.state, surface_, texts_[label.level], // numbers, which hold no markup
                  {label.middle, Align::Centre, Align::Centre, label.angle_degrees, true},
                  {view_.set.DataTextFont, color_of_level(label.level), true});
    }

    SeriesView const& view_;
    DrawSurface& surface_;
    GridMemory const& memory_;
    PlaceOnPage place_;
    document::Axis const* bar_;
    ColorScale colors_;
    std::vector<std::string> texts_;
};

/// Items are levels.
class Contours final : public GridKind {
public:
    void draw(SeriesView const& view, DrawSurface& surface) const override {
        if (view.x.valid && view.y.valid) Drawing(view, surface).draw();
    }

    // Lines lie between the middles of the outermost cells.
    void include_reach(ControlState const&, DataSet const& set, AxisReach const& x,
                       AxisReach const& y) const override {
        Grid const& grid = *grid_memory(set, {x.axis.AxisLog, y.axis.AxisLog}).cells;
        reach_middles(x, grid.x_edges);
        reach_middles(y, grid.y_edges);
    }

    void draw_sample(SeriesView const& view, DrawSurface& surface, Box const& box) const override {
        document::Axis const* const bar = color_axis_of(view.graph, view.set);
        const PenScope pen(surface, view.set.DataLineThickness, point_line_style(view.set));
        draw_with_dashes(surface, dashes_of(view.set), box, [&](DrawSurface& lines) {
            auto const draw = [&](double y, Color color) {
                lines.Line({box.left, y}, {box.right(), y}, LineShape::Segment, color);
            };
            if (!bar) return draw(box.top + box.height / 2, view.set.DataLineColor);
            // One line above the other, from the last colour to the first.
            const ColorMap map = color_map(bar->AxisColors);
            constexpr std::size_t count = 3;
            for (std::size_t i = 0; i < count; ++i) {
                std::size_t const level = ColorMap::size * (2 * (count - i) - 1) / (2 * count);
                draw(box.top + box.height * (static_cast<double>(i) + 0.5) / count, map.colors[level]);
            }
        });
    }

    std::size_t item_count(DataSet const& set) const override { return line_memory(set).levels.size(); }

    Box item_box(SeriesView const& view, std::size_t item) const override {
        GridMemory const& memory = line_memory(view);
        const PlaceOnPage place(view, *memory.cells);
        document::Extent x, y;
        for (ContourLine const& line : memory.lines) {
            if (line.level != item || !place.can_reach(line, view.plot)) continue;
            for (Point const numbers : line.places) {
                const Point seen = place(numbers);
                if (!holds(view.plot, seen)) continue;
                x.include(seen.x);
                y.include(seen.y);
            }
        }
        if (x.empty()) return {not_a_number, 0, 0, 0};
        return {x.low, y.low, x.high - x.low, y.high - y.low};
    }

    std::optional<std::size_t> item_at(SeriesView const& view, Point place) const override {
        double nearest = hit_mm * view.state.UnitsPerMmX;
        const Box around{place.x - nearest, place.y - nearest, 2 * nearest, 2 * nearest};
        GridMemory const& memory = line_memory(view);
        const PlaceOnPage on_page(view, *memory.cells);
        std::optional<std::size_t> found;
        for (ContourLine const& line : memory.lines) {
            if (!on_page.can_reach(line, around)) continue;
            Point last = on_page(line.places.front());
            for (Point const numbers : line.places) {
                const Point next = on_page(numbers);
                if (double const away = distance_to_segment(place, last, next); away <= nearest) {
                    nearest = away;
                    found = line.level;
                }
                last = next;
            }
        }
        return found;
    }

    std::vector<Fact> item_facts(DataSet const& set, std::size_t item) const override {
        return {{"level", line_memory(set).levels.at(item), Fact::Of::Nothing, ""}};
    }

private:
    static void reach_middles(AxisReach const& along, std::vector<double> const& edges) {
        document::Extent ends;
        for (double const middle : middles_of(edges, along.axis.AxisLog))
            if (along.has_place(middle)) ends.include(middle);
        if (!ends.empty()) include_range(along, ends);
    }
};

} // namespace

SeriesKind const& contours_kind() {
    static const Contours kind;
    return kind;
}

} // namespace qv::render
