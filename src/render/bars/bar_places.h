// Where the bars of a graph stand: in values under BarArrangement, and on the page.
#pragma once

#include "document/ControlState.h"
#include "render/bars/bar_stack.h"
#include "render/bars/bars.h"
#include "render/kinds/series_kind.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace qv::render {

/// Whether a data set is shown as bars.
bool are_bars(document::DataSet const& set);

/// Where one bar begins and ends, in values.
struct BarEnds {
    double from = 0; // not-a-number: beyond the edge of the plot area
    double to = 0;
};

/// How the bars of a graph's data sets share the room of their values, beside each other or upon each other,
/// if BarArrangement says so. The sets that share have the same axes and lie the same way.
class BarPlan {
public:
    explicit BarPlan(document::Graph const& graph);

    bool holds(std::int16_t set) const { return share_of(set).has_value(); }

    /// Across its bars, on the axis's own scale: from the bar's value to its middle, and half its width.
    struct Share {
        double offset = 0;
        double half_width = 0;
    };
    std::optional<Share> share_of(std::int16_t set) const;
    /// Of a point by its order of arrival and its value along the bar; nowhere where it was added meanwhile.
    BarEnds ends(std::int16_t set, std::size_t point, double value) const;
    /// Whether bars stand upon each other, so that nothing is free at their ends.
    bool stacks() const { return stacks_; }
    bool in_percent() const { return in_percent_; }

private:
    struct Entry {
        std::optional<Share> share;
        double base = 0;           // of bars beside each other
        std::vector<BarEnds> ends; // of those upon each other
    };
    void plan_group(document::Graph const& graph, std::vector<std::int16_t> const& members);
    void stack_group(document::Graph const& graph, std::vector<std::int16_t> const& members,
                     std::vector<double> const& places);

    std::vector<Entry> entries_; // by data set; none where bars are as set
    bool stacks_ = false;
    bool in_percent_ = false;
};

/// A bar on the page.
struct PlacedBar {
    std::size_t point = 0;
    double shown = 0; // the value that its length stands for: its own, or its share in percent
    BarBox box;       // from where it begins to its end (x2 of lying bars, else y2)
};

/// Calls `take` for the bars of a data set that lie in the plot area, wholly or in part. Of bars that are
/// arranged as set, `stack` holds those below them and takes theirs.
void for_each_bar(SeriesView const& view, BarPlan const& plan, BarStack& stack,
                  std::function<void(PlacedBar const&)> const& take);

/// The bar that a place lies on, the last drawn of several, and where the bar of a point is; only of bars
/// that are arranged.
std::optional<std::size_t> arranged_bar_at(SeriesView const& view, BarPlan const& plan, Point place);
std::optional<Box> arranged_bar_of(SeriesView const& view, BarPlan const& plan, std::size_t point);

/// The rectangle that a bar covers.
Box extent_of(BarBox const& box);

} // namespace qv::render
