// Candles: open, high, low and close of prices, with their volumes. Y is the close; the extra columns are
// open, high, low and volume.
#pragma once

#include "render/kinds/series_kind.h"

namespace qv::render {

class CandleKind : public SeriesKind {
public:
    void draw(SeriesView const& view, DrawSurface& surface) const override;
    void include_reach(document::ControlState const& state, document::DataSet const& set, AxisReach const& x,
                       AxisReach const& y) const override;
    std::int16_t third_axis(document::Graph const& graph, document::DataSet const& set) const override;
    void include_third(document::DataSet const& set, AxisReach const& axis) const override;
    void draw_sample(SeriesView const& view, DrawSurface& surface, Box const& box) const override;
    std::size_t item_count(document::DataSet const& set) const override;
    Box item_box(SeriesView const& view, std::size_t item) const override;
    std::optional<std::size_t> item_at(SeriesView const& view, Point place) const override;
    std::vector<Fact> item_facts(document::DataSet const& set, std::size_t item) const override;
};

} // namespace qv::render
