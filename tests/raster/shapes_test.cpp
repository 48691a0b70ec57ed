#include "platform/raster/RasterSurface.h"
#include <doctest/doctest.h>
