// Points at categories: texts or moments that an axis numbers.
#pragma once

#include "control/point_entry.h"
#include "qvgraph/variant.h"

#include <span>
#include <string_view>

namespace qv::control {

/// Gives an axis these categories; an automatic one shows them all at its next drawing.
void take_categories(Axis& axis, document::CategoryList categories);
/// The same with moments, on an axis of time; fault 5 for one that is not finite.
void take_category_times(Axis& axis, std::span<double const> times);
/// The same for the selected axis.
void SetAxisCategoryTimes(ControlState& state, std::span<double const> times);

/// Appends a point to a data set, numbered as in AddDataPoint, at a category that is added where it is not
/// there yet. Failures are reported through ErrorMsg.
void AddCategoryPoint(ControlState& state, std::string_view category, double y, std::int16_t data_set);

/// The same on a data set of any graph, with failures thrown. Unequal lengths are fault 5.
void add_category_points(ControlState& state, Graph& graph, DataSet& set, TextList const& categories,
                         std::span<double const> values);
void add_category_point(ControlState& state, Graph& graph, DataSet& set, std::string_view category,
                        double value);
/// At moments, which become the categories of an axis of time.
void add_points_at_times(ControlState& state, Graph& graph, DataSet& set, std::span<double const> times,
                         PointColumns const& points);

/// The columns of candles; the volumes may be missing. On an axis whose categories are times, or become them,
/// `x` are moments.
struct CandleColumns {
    std::span<double const> x, open, high, low, close, volume;
};
void add_candles(ControlState& state, Graph& graph, DataSet& set, CandleColumns const& candles);

} // namespace qv::control
