// The kinds of data sets, by DataKind.
#include "render/kinds/candles.h"
#include "render/kinds/distributions.h"
#include "render/kinds/pie.h"
#include "render/kinds/series_kind.h"
#include "render/marks/marks.h"

#include <array>

namespace qv::render {

SeriesKind const* series_kind(document::DataSet const& set) {
    static const CandleKind candles;
    static const std::array<SeriesKind const*, 9> kinds{
        nullptr, // points
        &histogram_kind(), &boxes_kind(), &strip_kind(), &heat_map_kind(),
        &contours_kind(),  &candles,      pie_kind(),    mark_kind(),
    };
    return set.DataKind < kinds.size() ? kinds[set.DataKind] : nullptr;
}

} // namespace qv::render
