// The kinds of data sets, by DataKind.
#include "render/candles.h"
#include "render/series_kind.h"

#include <array>

namespace qv::render {

SeriesKind const* series_kind(document::DataSet const& set) {
    static const CandleKind candles;
    static auto const kinds = [] {
        std::array<SeriesKind const*, 9> by_number{}; // none of points
        by_number[static_cast<std::size_t>(DataKind::Candles)] = &candles;
        return by_number;
    }();
    return set.DataKind < kinds.size() ? kinds[set.DataKind] : nullptr;
}

} // namespace qv::render
