// The cells of a data set: a matrix that the host has given, or bins in which its points are counted.
#pragma once

#include "document/ControlState.h"
#include "render/data_reach.h"
#include "render/grids/contour_lines.h"
#include "render/kinds/series_kind.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace qv::render {

/// Which axes of a data set are logarithmic; there bins are even on the logarithmic scale.
struct GridScales {
    bool x_is_log = false;
    bool y_is_log = false;
    bool operator==(GridScales const&) const = default;
};

/// What is kept of a data set as long as its points or its matrix stay.
struct GridMemory : document::DerivedData {
    std::shared_ptr<document::Grid const> cells;
    // Of bins: what they were counted from.
    bool are_bins = false;
    GridScales scales;
    std::size_t size = 0;
    std::size_t dropped = 0;
    std::int16_t bins_x = 0;
    std::int16_t bins_y = 0;
    // Of contours: the lines of the cells at these levels.
    std::vector<double> levels;
    bool levels_are_log = false;
    bool has_lines = false;
    std::vector<ContourLine> lines;
};

/// The memory of a data set, its cells up to date.
GridMemory& grid_memory(document::DataSet const& set, GridScales const& scales);
/// The same with the scales that the data set was last asked for with.
GridMemory& grid_memory(document::DataSet const& set);

/// Counts the points in cells between the smallest and the largest that have a place: a point on an edge
/// belongs to the cell that begins there, one on the last edge to the last cell. With a first extra column
/// its values are added up in place of ones. As many cells along an axis as asked for; 0 is the cube root of
/// the number of points, 5 to 256, with which a cell has in the mean as many points as there are cells along
/// an axis.
document::Grid binned(document::PointStore const& points, GridScales const& scales, std::int16_t bins_x,
                      std::int16_t bins_y);

/// What heat maps and contours of a grid have in common: the colour bar.
class GridKind : public SeriesKind {
public:
    std::int16_t third_axis(document::Graph const& graph, document::DataSet const& set) const override;
    void include_third(document::DataSet const& set, AxisReach const& colors) const override;
};

/// Has an axis show a range without room beside it; about one value alone there is some.
void include_range(AxisReach const& along, document::Extent const& range);

/// Numbers in the picture have the minus sign of the labels at round ticks, where there are such.
void use_minus_of_page(document::PageSettings const& page, std::vector<std::string>& numbers);

/// The middle of a cell on the scale of its axis; not-a-number where it has none.
double middle_of(double edge, double other_edge, bool is_log);

} // namespace qv::render
