// Order statistics of columns of values, without sorting them. Values that are not finite do not count.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace qv::render {

/// A column in pieces, as the blocks of a data set keep it.
using Pieces = std::span<std::span<double const> const>;

/// How many finite values there are and between which two they lie.
struct ColumnExtent {
    std::size_t count = 0;
    double least = 0;
    double largest = 0;
};
ColumnExtent extent_of(Pieces column);

/// The quantiles of a column for shares from 0 to 1, linear between the two values next to share * (count -
/// 1) in rising order (the seventh definition of Hyndman and Fan, Sample Quantiles in Statistical Packages,
/// 1996). `count` is that of the finite values, at least one.
std::vector<double> quantiles(Pieces column, std::size_t count, std::span<double const> shares);

} // namespace qv::render
