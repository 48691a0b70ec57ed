// The kinds of data sets, by DataKind.
#include "render/distributions.h"
#include "render/series_kind.h"

#include <array>

namespace qv::render {

SeriesKind const* series_kind(document::DataSet const& set) {
    static const std::array<SeriesKind const*, 9> kinds{
        nullptr, // points
        &histogram_kind(),
        &boxes_kind(),
        &strip_kind(),
    };
    return set.DataKind < kinds.size() ? kinds[set.DataKind] : nullptr;
}

} // namespace qv::render
