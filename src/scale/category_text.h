// The categories of an axis as text, and the range that shows them.
#pragma once

#include "document/records.h"

#include <optional>
#include <string>
#include <string_view>

namespace qv::scale {

/// The number of the category that a value falls to; none beside them. An axis without texts or times has a
/// category at each whole number.
std::optional<double> category_at(document::Axis const& axis, double value);

/// Its text; a time down to the unit that tells it from its neighbours, or through the host's pattern.
std::optional<std::string> category_text(document::Axis const& axis, double value);

/// All categories and these data, with half a category beyond either end; 0 alone where there is nothing.
document::Extent category_range(document::Axis const& axis, document::Extent const& data);

/// A date and perhaps a time of day in a time zone, "2026-03-14", "2026-03-14 09:30" or "...T09:30:15", in
/// seconds since 1970; none for any other text.
std::optional<double> time_of_text(std::string_view text, std::string_view time_zone);

} // namespace qv::scale
