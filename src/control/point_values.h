// The points of a data set as those who read them back get them.
#pragma once

#include "document/PointStore.h"
#include "qvgraph/handles.h"

namespace qv::control {

PointValues point_values(document::PointStore const& points);

} // namespace qv::control
