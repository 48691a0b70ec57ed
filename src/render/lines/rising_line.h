// A line whose x never falls, as it lies in memory, and in pixels.
#pragma once

#include "document/RangeSummary.h"
#include "scale/mapping.h"

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

namespace qv::render {

/// Consecutive points of a line that lie next to one another in memory, at least one. Values are finite and
/// have places on the page.
struct PointStretch {
    std::span<double const> x;
    std::span<double const> y;
    document::RangeSummary const* summary = nullptr; // of the y, if there is one
    std::size_t summary_place = 0;                   // of the first of them
    std::optional<document::EvenSpacing> spacing;    // of the x, if it is known
};

/// Points in their order; x never falls, from one stretch to the next either.
struct RisingLine {
    std::span<PointStretch const> stretches;
    scale::AxisMap const& x_map;
    scale::AxisMap const& y_map;
};

/// A place in pixels: across, and down from the first row seen.
struct RowPlace {
    double x, y;
};

/// How a surface counts pixels.
struct PixelGrid {
    double columns_per_twip, rows_per_twip;
    int first_row; // the first one seen
};

/// Which point of which stretch; behind the last one the stretch that there is none of.
struct PointIndex {
    std::size_t stretch = 0, point = 0;
    bool operator==(PointIndex const&) const = default;
};

/// The points of a rising line in pixels. Where its axis runs leftward the page is seen in a mirror, column n
/// as column -n, so that x rises here too.
class LineInPixels {
public:
    /// A stretch, and how it lies on the page if its points are evenly spaced there.
    struct Stretch : PointStretch {
        double start = 0, step = 0; // pixels
        bool is_even = false;
    };

    LineInPixels(RisingLine const& line, PixelGrid const& grid);

    bool is_mirrored() const { return is_mirrored_; }
    std::vector<Stretch> const& stretches() const { return stretches_; }
    bool is_end(PointIndex index) const { return index.stretch == stretches_.size(); }
    PointIndex before(PointIndex index) const;
    PointIndex after(PointIndex index) const;
    std::size_t count(PointIndex from, PointIndex to) const;
    double first_x() const { return x(stretches_.front(), 0); }
    double last_x() const { return x(stretches_.back(), stretches_.back().x.size() - 1); }

    /// Calls part(stretch, first, past) for the points from one to before another.
    template <class Part>
    void for_each_part(PointIndex from, PointIndex to, Part const& part) const {
        for (std::size_t k = from.stretch; k <= to.stretch && k < stretches_.size(); ++k)
            part(stretches_[k], k == from.stretch ? from.point : 0,
                 k == to.stretch ? to.point : stretches_[k].x.size());
    }

    /// The first point from one on that lies at or behind a position across.
    PointIndex first_at(double position, PointIndex from) const;

    double x(Stretch const& stretch, std::size_t point) const {
        return stretch.is_even ? stretch.start + static_cast<double>(point) * stretch.step
                               : across_(stretch.x[point]);
    }
    double y(double value) const { return down_(value); }
    RowPlace place(Stretch const& stretch, std::size_t point) const {
        return {x(stretch, point), y(stretch.y[point])};
    }
    void append_places(Stretch const& stretch, std::size_t first, std::size_t past,
                       std::vector<double>& across, std::vector<double>& down) const;
    RowPlace place(PointIndex index) const { return place(stretches_[index.stretch], index.point); }

private:
    /// From values on an axis to pixels.
    struct PixelMap {
        scale::AxisMap const* map = nullptr;
        double start = 0, factor = 0, pixels_per_twip = 1, origin = 0;
        bool is_linear = false;

        PixelMap(scale::AxisMap const& axis, double pixels_per_twip, double origin);
        double operator()(double value) const {
            return is_linear ? start + factor * (value - map->first) : (*map)(value)*pixels_per_twip - origin;
        }
        double value_at(double position) const {
            return map->value_at((position + origin) / pixels_per_twip);
        }
    };

    Stretch lay_out(PointStretch const& stretch) const;

    bool is_mirrored_;
    PixelMap across_, down_;
    std::vector<Stretch> stretches_;
};

} // namespace qv::render
