// A range that holds data with some room about them.
#pragma once

#include "document/PointStore.h"

#include <optional>

namespace qv::scale {

/// What is known of data along an axis, and the room they are to have.
struct FitWish {
    double low = 0;
    double high = 0;
    bool is_log = false;
    double margin = 0;        // at each end, as a share of the way from low to high
    bool stands_low = false;  // nothing is added below: bars stand there
    bool stands_high = false; // or hang from there
    double room_low = 0;      // at least this share of the axis lies below `low`
    double room_high = 0;
    double single_pad = 0; // what one value alone gets to either side; 0 for what is usual
};

/// The range; all shares are of the axis's own scale. One value alone gets a twentieth of it to either side,
/// 0 one unit, on a logarithmic axis half a power of ten. None where the ends are too far apart for a number,
/// or have no logarithm. Shares of which little is left for the data are passed over.
std::optional<document::Extent> fitted_range(FitWish const& wish);

} // namespace qv::scale
