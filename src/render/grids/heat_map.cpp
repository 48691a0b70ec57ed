// Heat maps: cells in the colours of their values.
#include "base/convert.h"
#include "render/grids/color_scale.h"
#include "render/grids/grid_cells.h"
#include "render/grids/grid_places.h"
#include "render/kinds/series_kind.h"
#include "render/pen.h"
#include "render/plot_geometry.h"
#include "render/text.h"
#include "scale/number_format.h"
#include "surface/whole_pixel.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace qv::render {
namespace {

using document::ControlState;
using document::DataSet;
using document::Grid;

GridScales scales_of(SeriesView const& view) {
    return {view.x.is_log, view.y.is_log};
}

Color color_of_pixel(std::uint32_t pixel) {
    return rgb(static_cast<int>(pixel >> 16 & 0xFF), static_cast<int>(pixel >> 8 & 0xFF),
               static_cast<int>(pixel & 0xFF));
}

std::uint32_t pixel_of_missing(DataSet const& set) {
    if (set.MissingColor == -1) return 0;
    const Color color = color_of(oklab(set.MissingColor)); // a system colour becomes a plain one
    return 0xFF000000U
           | static_cast<std::uint32_t>((color & 0xFF) << 16 | (color & 0xFF00) | (color >> 16 & 0xFF));
}

/// The pixels of a surface from one place to another along an axis, both included.
PixelSpan pixels_between(double from, double to, double twips_per_pixel, int size) {
    return {std::clamp(whole_pixel(from / twips_per_pixel), 0, size),
            std::clamp(whole_pixel(to / twips_per_pixel) + 1, 0, size)};
}

/// A heat map being drawn.
class Drawing {
public:
    Drawing(SeriesView const& view, DrawSurface& surface)
        : view_(view), surface_(surface), grid_(*grid_memory(view.set, scales_of(view)).cells),
          scale_(color_axis_of(view.graph, view.set), grid_.extent),
          ranks_(scale_, pixel_of_missing(view.set)),
          across_(pixels_between(view.plot.left, view.plot.right(), surface.TwipsPerPixelX(),
                                 surface.GetClientRect().width)),
          down_(pixels_between(view.plot.top, view.plot.bottom(), surface.TwipsPerPixelY(),
                               surface.GetClientRect().height)),
          columns_(view.x, grid_.x_edges, surface.TwipsPerPixelX(), across_),
          rows_(view.y, grid_.y_edges, surface.TwipsPerPixelY(), down_) {}

    void draw() {
        if (grid_.values.empty() || across_.size() == 0 || down_.size() == 0) return;
        if (!surface_.ShowsPixels() && has_few_cells())
            draw_boxes();
        else
            draw_pixels();
        if (view_.set.CellValues) write_values();
    }

private:
    // Shapes are kept as shapes while they are few; very many cells are a picture.
    bool has_few_cells() const {
        constexpr double most = 10000;
        const CellPixels::Seen columns = columns_.seen(), rows = rows_.seen();
        return columns.are_apart && rows.are_apart
               && static_cast<double>(columns.count) * static_cast<double>(rows.count) <= most;
    }

    std::uint16_t rank_of(double value) const { return ranks_.rank(scale_.level(value)); }

    void draw_boxes() {
        // Neighbours of one colour in a row are one box; boxes of one colour come one after the other.
        std::map<std::uint32_t, std::vector<Box>> boxes;
        double const dx = surface_.TwipsPerPixelX(), dy = surface_.TwipsPerPixelY();
        for (std::size_t row = 0; row < grid_.rows(); ++row) {
            const PixelSpan down = rows_.of(row);
            if (down.size() == 0) continue;
            for (std::size_t column = 0; column < grid_.columns();) {
                PixelSpan across = columns_.of(column);
                std::uint32_t const pixel = ranks_.pixel(rank_of(grid_.row(row)[column]));
                while (++column < grid_.columns() && across.size() > 0
                       && ranks_.pixel(rank_of(grid_.row(row)[column])) == pixel) {
                    const PixelSpan next = columns_.of(column);
                    if (next.size() == 0) break;
                    across = {std::min(across.first, next.first), std::max(across.end, next.end)};
                }
                if (across.size() == 0 || pixel == 0) continue;
                boxes[pixel].push_back(
                    {across.first * dx, down.first * dy, (across.size() - 1) * dx, (down.size() - 1) * dy});
            }
        }
        for (auto const& [pixel, its_boxes] : boxes)
            for (Box const& box : its_boxes) fill_box(surface_, box, color_of_pixel(pixel));
    }

    void draw_pixels() {
        auto const columns = columns_.cells_of_pixels(), rows = rows_.cells_of_pixels();
        // In strips that stay in the processor's memory; on a surface of shapes they are one picture.
        int const strip = surface_.ShowsPixels() ? 32 : down_.size();
        auto const width = static_cast<std::size_t>(across_.size());
        std::vector<std::uint32_t> pixels(width * static_cast<std::size_t>(std::min(strip, down_.size())));
        find_seen_columns(columns);
        for (int top = 0; top < down_.size(); top += strip) {
            int const height = std::min(strip, down_.size() - top);
            for (int y = 0; y < height; ++y) {
                std::uint32_t* const line = pixels.data() + static_cast<std::size_t>(y) * width;
                CellPixels::Cells const cells =
                    rows[static_cast<std::size_t>(top) + static_cast<std::size_t>(y)];
                if (y > 0 && cells == rows[static_cast<std::size_t>(top + y - 1)])
                    std::copy_n(line - width, width, line);
                else
                    fill_line(line, cells, columns);
            }
            surface_.Pixels({1.0 * across_.first, 1.0 * (down_.first + top)}, {across_.size(), height},
                            std::span(pixels).first(width * static_cast<std::size_t>(height)));
        }
    }

    void find_seen_columns(std::vector<CellPixels::Cells> const& columns) {
        seen_ = {static_cast<std::int32_t>(grid_.columns()), -1};
        for (CellPixels::Cells const& cells : columns) {
            if (cells.last < cells.first) continue;
            seen_.first = std::min(seen_.first, cells.first);
            seen_.last = std::max(seen_.last, cells.last);
        }
        line_ranks_.resize(grid_.columns());
        row_ranks_.resize(grid_.columns());
    }

    void rank_row(std::size_t row, std::vector<std::uint16_t>& ranks) const {
        std::span<double const> const values = grid_.row(row);
        for (std::int32_t i = seen_.first; i <= seen_.last; ++i)
            ranks[static_cast<std::size_t>(i)] = rank_of(values[static_cast<std::size_t>(i)]);
    }

    // Of the cells in a pixel the one of highest rank is shown.
    void fill_line(std::uint32_t* line, CellPixels::Cells rows,
                   std::vector<CellPixels::Cells> const& columns) {
        if (rows.last < rows.first) {
            std::fill_n(line, columns.size(), 0U);
            return;
        }
        rank_row(static_cast<std::size_t>(rows.first), line_ranks_);
        for (std::int32_t row = rows.first + 1; row <= rows.last; ++row) {
            rank_row(static_cast<std::size_t>(row), row_ranks_);
            for (std::size_t i = 0; i < line_ranks_.size(); ++i)
                line_ranks_[i] = std::max(line_ranks_[i], row_ranks_[i]);
        }
        for (CellPixels::Cells const& cells : columns) {
            std::uint16_t rank = 0;
            for (std::int32_t i = cells.first; i <= cells.last; ++i)
                rank = std::max(rank, line_ranks_[static_cast<std::size_t>(i)]);
            *line++ = cells.last < cells.first ? 0 : ranks_.pixel(rank);
        }
    }

    void write_values() {
        SetGraphFont(view_.state, surface_, view_.set.DataTextFont);
        std::vector<scale::ShownNumber> numbers;
        std::vector<Point> middles;
        std::vector<Box> boxes;
        document::Extent const& extent = grid_.extent;
        constexpr double finest = 500; // parts of the range of values that are told apart
        double const tolerance = extent.empty() ? 0 : (extent.high / finest - extent.low / finest);
        double const high = surface_.TextHeight("0"), wide = surface_.TextWidth("0");
        for_each_seen_box([&](Box const& box, double value) {
            if (box.width < wide || box.height < high || !std::isfinite(value)) return;
            numbers.push_back({value, tolerance});
            boxes.push_back(box);
        });
        constexpr std::int16_t digits = 2;
        std::vector<std::string> texts = scale::number_texts(numbers, digits);
        use_minus_of_page(view_.state, texts);
        for (std::size_t i = 0; i < texts.size(); ++i) write_value(texts[i], numbers[i].value, boxes[i]);
    }

    template <class Take>
    void for_each_seen_box(Take const& take) const {
        for (std::size_t row = 0; row < grid_.rows(); ++row) {
            if (rows_.of(row).size() == 0) continue;
            for (std::size_t column = 0; column < grid_.columns(); ++column)
                if (columns_.of(column).size() > 0) take(box_of(column, row), grid_.row(row)[column]);
        }
    }

    Box box_of(std::size_t column, std::size_t row) const {
        double const dx = surface_.TwipsPerPixelX(), dy = surface_.TwipsPerPixelY();
        const PixelSpan across = columns_.of(column), down = rows_.of(row);
        return {across.first * dx, down.first * dy, across.size() * dx, down.size() * dy};
    }

    void write_value(std::string const& text, double value, Box const& box) {
        std::uint16_t const level = scale_.level(value);
        if (level == ColorScale::no_color) return;
        double const room = 2 * surface_.TwipsPerPixelX();
        const TextBlock size = text_block(surface_, text, Markup::Ignored);
        if (size.width + 2 * room > box.width || size.height > box.height) return;
        constexpr double middle_lightness = 0.62;
        bool const on_light = scale_.map().seen[level].lightness > middle_lightness;
        surface_.state.ForeColor = on_light ? rgb(0, 0, 0) : rgb(255, 255, 255);
        surface_.Text(
            {text, {box.left + (box.width - size.width) / 2, box.top + (box.height - size.height) / 2}, 0});
    }

    SeriesView const& view_;
    DrawSurface& surface_;
    Grid const& grid_;
    ColorScale scale_;
    ColorRanks ranks_;
    PixelSpan across_, down_;
    CellPixels columns_, rows_;
    CellPixels::Cells seen_; // columns
    std::vector<std::uint16_t> line_ranks_, row_ranks_;
};

class HeatMap final : public GridKind {
public:
    void draw(SeriesView const& view, DrawSurface& surface) const override {
        if (view.x.valid && view.y.valid) Drawing(view, surface).draw();
    }

    void include_reach(ControlState const&, DataSet const& set, AxisReach const& x,
                       AxisReach const& y) const override {
        Grid const& grid = *grid_memory(set, {x.axis.AxisLog, y.axis.AxisLog}).cells;
        reach_ends(x, grid.x_edges);
        reach_ends(y, grid.y_edges);
    }

    void draw_sample(SeriesView const& view, DrawSurface& surface, Box const& box) const override {
        document::Axis const* const bar = color_axis_of(view.graph, view.set);
        const ColorMap map = color_map(bar ? bar->AxisColors : "");
        constexpr int steps = 32;
        double const step = box.width / steps;
        for (int i = 0; i < steps; ++i) {
            auto const level = static_cast<std::size_t>(i) * (ColorMap::size - 1) / (steps - 1);
            fill_box(surface, {box.left + i * step, box.top, box.width - i * step, box.height},
                     map.colors[level]);
        }
    }

    std::size_t item_count(DataSet const& set) const override {
        return grid_memory(set).cells->values.size();
    }

    Box item_box(SeriesView const& view, std::size_t item) const override {
        Grid const& grid = *grid_memory(view.set, scales_of(view)).cells;
        if (item >= grid.values.size()) return {std::nan(""), 0, 0, 0};
        auto const along = [](scale::AxisMap const& map, std::vector<double> const& edges, std::size_t cell,
                              double low, double high) {
            auto const [from, to] =
                std::minmax({place_of_edge(map, edges[cell]), place_of_edge(map, edges[cell + 1])});
            // What of it can be seen; nothing of a cell beside the plot area.
            return from > high || to < low ? std::pair(std::nan(""), std::nan(""))
                                           : std::pair(std::max(from, low), std::min(to, high));
        };
        Box const& plot = view.plot;
        auto const [left, right] =
            along(view.x, grid.x_edges, item % grid.columns(), plot.left, plot.right());
        auto const [top, bottom] =
            along(view.y, grid.y_edges, item / grid.columns(), plot.top, plot.bottom());
        return {left, top, right - left, bottom - top};
    }

    std::optional<std::size_t> item_at(SeriesView const& view, Point place) const override {
        Grid const& grid = *grid_memory(view.set, scales_of(view)).cells;
        auto const column = cell_at(grid.x_edges, view.x.value_at(place.x));
        auto const row = cell_at(grid.y_edges, view.y.value_at(place.y));
        if (!column || !row) return std::nullopt;
        return *row * grid.columns() + *column;
    }

    // A cell of a matrix is told by its middle, a bin by its edges, between which its points lie.
    std::vector<Fact> item_facts(DataSet const& set, std::size_t item) const override {
        GridMemory const& memory = grid_memory(set);
        Grid const& grid = *memory.cells;
        std::vector<Fact> facts;
        auto const tell = [&](std::vector<double> const& edges, std::size_t cell, bool is_log,
                              Fact::Of axis) {
            double const middle = middle_of(edges[cell], edges[cell + 1], is_log);
            if (!memory.are_bins && std::isfinite(middle)) {
                facts.push_back({"", middle, axis, ""});
                return;
            }
            facts.push_back({"from", edges[cell], axis, ""});
            facts.push_back({"to", edges[cell + 1], axis, ""});
        };
        tell(grid.x_edges, item % grid.columns(), memory.scales.x_is_log, Fact::Of::XAxis);
        tell(grid.y_edges, item / grid.columns(), memory.scales.y_is_log, Fact::Of::YAxis);
        if (std::isnan(grid.values[item]))
            facts.push_back({"", 0, Fact::Of::Text, "no value"});
        else
            facts.push_back({"value", grid.values[item], Fact::Of::Nothing, ""});
        return facts;
    }

private:
    // Cells fill the plot area to its edges.
    static void reach_ends(AxisReach const& along, std::vector<double> const& edges) {
        document::Extent ends;
        for (double const edge : edges)
            if (along.has_place(edge)) ends.include(edge);
        if (!ends.empty()) include_range(along, ends);
    }
};

} // namespace

SeriesKind const& heat_map_kind() {
    static const HeatMap kind;
    return kind;
}

} // namespace qv::render
