// Areas upon areas: what each of them covers, in data values.
#pragma once

#include "document/records.h"
#include "render/bands.h"

#include <vector>

namespace qv::render {

/// Whether a data set is an area upon those of the data sets before.
bool is_stacked_area(document::DataSet const& set);

/// Where a stacked area lies: values in place of twips, x never falling. Kept while points and settings that
/// it depends on stay.
std::vector<BandPlace> const& stacked_area(document::Graph const& graph, document::DataSet const& set);

/// Points with what they have beside x and y, each where `place(Point, number)` puts it.
template <class Place>
document::PointStore points_at(document::PointStore const& points, Place const& place);

/// The points of a data set where they are shown: those of a stacked area upon what is below them.
document::PointStore const& shown_points(document::Graph const& graph, document::DataSet const& set);

template <class Place>
document::PointStore points_at(document::PointStore const& points, Place const& place) {
    document::PointStore moved;
    std::vector<double> x, y;
    for (document::PointBlock const& block : points.blocks()) {
        x.clear();
        y.clear();
        for (std::size_t i = 0; i < block.size(); ++i) {
            const Point to = place(Point{block.x()[i], block.y()[i]}, moved.size() + i);
            x.push_back(to.x);
            y.push_back(to.y);
        }
        if (!block.has_data_ids()) {
            moved.append(x, y, block.e(), {block.extra(0), block.extra(1), block.extra(2), block.extra(3)});
            continue;
        }
        for (std::size_t i = 0; i < block.size(); ++i) {
            const document::PointEntry point = block.entry(i);
            moved.append({x[i], y[i], point.E, point.DataID});
        }
    }
    return moved;
}

} // namespace qv::render
