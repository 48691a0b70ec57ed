#include "document/column_extent.h"

#include <cmath>
#include <cstring>

namespace qv::document {
namespace {

using Pair = double __attribute__((vector_size(2 * sizeof(double))));

constexpr double infinity = std::numeric_limits<double>::infinity();

/// Two values side by side. A not-a-number is in no minimum and in every sum.
struct Lanes {
    Pair low{infinity, infinity};
    Pair high{-infinity, -infinity};
    Pair sum{0, 0};

    void take(double const* two) {
        Pair values;
        std::memcpy(&values, two, sizeof values);
        low = values < low ? values : low;
        high = values > high ? values : high;
        sum += values;
    }
};

} // namespace

ColumnExtent column_extent(std::span<double const> values) {
    Lanes even, odd; // so that neither waits for the other
    std::size_t i = 0;
    for (; i + 4 <= values.size(); i += 4) {
        even.take(&values[i]);
        odd.take(&values[i + 2]);
    }
    ColumnExtent found;
    double sum = 0;
    for (; i < values.size(); ++i) {
        found.extent.include(values[i]);
        sum += values[i];
    }
    for (Lanes const& lanes : {even, odd})
        for (int lane = 0; lane < 2; ++lane) {
            found.extent.low = std::fmin(found.extent.low, lanes.low[lane]);
            found.extent.high = std::fmax(found.extent.high, lanes.high[lane]);
            sum += lanes.sum[lane];
        }
    found.all_finite =
        !std::isnan(sum) && std::isfinite(found.extent.low) && std::isfinite(found.extent.high);
    return found;
}

} // namespace qv::document
