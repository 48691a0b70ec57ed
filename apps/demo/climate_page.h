// The demo page: four graphs of real measurements.
#pragma once

#include "qvgraph/qvGraph.h"

#include <filesystem>

namespace qv::demo {

/// Draws the measurements in the folder of data files onto the control's page: carbon dioxide, yearly
/// temperature anomalies, a year of weather, and hourly temperatures.
void draw_climate_page(qvGraph& page, std::filesystem::path const& data);

} // namespace qv::demo
