// What assistive programs read of the page: its graphs, their axes with ranges, their data sets with counts
// and extremes, and as the page's value the point that a person reads by keys.
#pragma once

namespace qv::qt {

/// Makes every QvGraphWidget known to QAccessible; may be called again.
void make_pages_accessible();

} // namespace qv::qt
