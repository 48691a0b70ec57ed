// The demo page: sixty years of carbon dioxide measurements.
#pragma once

#include "graph/qvGraph.h"

#include <filesystem>

namespace qv::demo {

/// Draws the measurements in the folder of data files onto the control's page.
void draw_carbon_dioxide(qvGraph& page, std::filesystem::path const& data);

} // namespace qv::demo
