// The smallest and the largest of a column of values, faster than they are stored.
#pragma once

#include "document/PointStore.h"

#include <span>

namespace qv::document {

struct ColumnExtent {
    Extent extent;
    bool all_finite = false; // false also where only the sum of the values is not
};

ColumnExtent column_extent(std::span<double const> values);

} // namespace qv::document
