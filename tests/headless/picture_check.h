// Comparing a page with a picture kept in tests/pictures.
#pragma once

#include "qvgraph/RasterSurface.h"

#include <string>

namespace qv::testing {

/// Whether the surface shows exactly the stored picture. If not, or if there is none, NAME-expected.png,
/// NAME-actual.png and NAME-difference.png are left in the working directory.
bool shows_picture(raster::RasterSurface const& surface, std::string const& name);

} // namespace qv::testing
