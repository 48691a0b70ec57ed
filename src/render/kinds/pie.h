// Pies and rings: the share of each of a data set's values in their sum, with labels round it.
#pragma once

#include "render/kinds/series_kind.h"

#include <string>
#include <vector>

namespace qv::render {

/// The kind of pies and rings.
SeriesKind const* pie_kind();

/// What PieLabels says; other values mean the first.
enum class PieLabels : std::uint8_t {
    NameAndPercent = 0,
    NameAndValue = 1,
    Percent = 2,
    Value = 3,
    Name = 4,
    Nothing = 5
};

/// A part of the whole. Points whose y is not above 0, or not finite, have none.
struct Slice {
    std::string name; // the point's DataID, or its number
    double value = 0;
    double share = 0;  // of the whole
    double before = 0; // the shares of all slices before it
};

/// The slices of a data set in order. Two or more below PieGather percent are one, the last.
std::vector<Slice> slices_of(document::DataSet const& set);

/// A share of the whole with a decimal where it has one; never 0 % or 100 % of what is more or less.
std::string percent_of(double share);

} // namespace qv::render
