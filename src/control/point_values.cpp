#include "control/point_values.h"

#include <limits>
#include <span>

namespace qv::control {
namespace {

/// Appends a column of a block; one that the block does not keep stands for `nothing` at each of its points.
void append(std::vector<double>& column, std::span<double const> values, std::size_t count, double nothing) {
    if (values.empty())
        column.resize(column.size() + count, nothing);
    else
        column.insert(column.end(), values.begin(), values.end());
}

template <class Column>
bool any_block(document::PointStore const& points, Column column) {
    for (document::PointBlock const& block : points.blocks())
        if (!column(block).empty()) return true;
    return false;
}

template <class Column>
std::vector<double> whole_column(document::PointStore const& points, Column column, double nothing) {
    std::vector<double> whole;
    if (!any_block(points, column)) return whole;
    whole.reserve(points.size());
    for (document::PointBlock const& block : points.blocks())
        append(whole, column(block), block.size(), nothing);
    return whole;
}

} // namespace

PointValues point_values(document::PointStore const& points) {
    using Block = document::PointBlock;
    PointValues columns;
    columns.x = whole_column(
        points, [](Block const& block) { return block.x(); }, 0);
    columns.y = whole_column(
        points, [](Block const& block) { return block.y(); }, 0);
    columns.error = whole_column(
        points, [](Block const& block) { return block.e(); }, 0);
    for (std::size_t i = 0; i < columns.extra.size(); ++i)
        columns.extra[i] = whole_column(
            points, [i](Block const& block) { return block.extra(i); },
            std::numeric_limits<double>::quiet_NaN());
    return columns;
}

} // namespace qv::control
